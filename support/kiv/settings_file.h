#pragma once

#include <boost/filesystem/path.hpp>

#include <string>
#include <vector>

namespace Kiv {

struct SettingsEntry {
    std::string key;
    std::string value;
    int line = 0;
};

/// Reads a file of `key = value` lines; blank lines and lines starting with '#' are skipped and
/// blanks around keys and values are trimmed. A missing file has no entries. Throws
/// ConfigurationError naming the file and line for a line without '=', an empty key, a key given
/// twice, or an unreadable file.
/// The file must be a regular file of at most 1 MiB; a byte order mark at its start is skipped,
/// and a line with a control character other than tab is refused.
std::vector<SettingsEntry> readSettingsFile(const boost::filesystem::path& file);
/// The same for `content` read from `file`, which names it in errors.
std::vector<SettingsEntry> parseSettings(std::string content, const boost::filesystem::path& file);

} // namespace Kiv
