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
std::vector<SettingsEntry> readSettingsFile(const boost::filesystem::path& file);

} // namespace Kiv
