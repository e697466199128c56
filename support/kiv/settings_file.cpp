#include "kiv/settings_file.h"

#include "kiv/site.h"

#include "base/regular_file.h"
#include "base/visible_text.h"

#include <boost/filesystem/operations.hpp>

namespace fs = boost::filesystem;

namespace Kiv {

namespace {

std::string trim(const std::string& text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos) {
        return {};
    }
    const auto last = text.find_last_not_of(" \t\r");
    return text.substr(first, last - first + 1);
}

} // namespace

std::vector<SettingsEntry> readSettingsFile(const fs::path& file) {
    boost::system::error_code ec;
    if (!fs::exists(fs::symlink_status(file, ec))) {
        return {};
    }
    std::string content;
    try {
        content = Base::readRegularFile(file, Base::kMaxSettingsBytes, "a settings file");
    } catch (const Base::UnreadableFile& error) {
        throw ConfigurationError(file.string() + ": " + error.what());
    }
    return parseSettings(std::move(content), file);
}

std::vector<SettingsEntry> parseSettings(std::string content, const fs::path& file) {
    // Editors on some systems start a UTF-8 file with a byte order mark; it is no part of a key.
    if (content.compare(0, 3, "\xEF\xBB\xBF") == 0) {
        content.erase(0, 3);
    }
    std::vector<SettingsEntry> entries;
    int number = 0;
    std::size_t start = 0;
    while (start < content.size()) {
        std::size_t end = content.find('\n', start);
        if (end == std::string::npos) {
            end = content.size();
        }
        const std::string text = content.substr(start, end - start);
        start = end + 1;
        ++number;
        const std::string where = file.string() + ":" + std::to_string(number) + ": ";
        for (std::size_t i = 0; i < text.size(); ++i) {
            const char c = text[i];
            const unsigned char byte = static_cast<unsigned char>(c);
            // A carriage return ends a line written on Windows; anywhere else it hides text.
            const bool lineEnd = c == '\r' && i + 1 == text.size();
            if ((byte < 0x20 && c != '\t' && !lineEnd) || byte == 0x7F) {
                throw ConfigurationError(where + "a control character in the line '" +
                                         Base::visibleText(text) + "'");
            }
        }
        const std::string line = trim(text);
        if (line.empty() || line[0] == '#') {
            continue;
        }
        const auto equals = line.find('=');
        if (equals == std::string::npos) {
            throw ConfigurationError(where + "expected 'key = value', found '" +
                                     Base::visibleText(line) + "'");
        }
        SettingsEntry entry{trim(line.substr(0, equals)), trim(line.substr(equals + 1)), number};
        if (entry.key.empty()) {
            throw ConfigurationError(where + "missing key before '='");
        }
        for (const SettingsEntry& earlier : entries) {
            if (earlier.key == entry.key) {
                throw ConfigurationError(where + "key '" + Base::visibleText(entry.key) +
                                         "' already set on line " + std::to_string(earlier.line));
            }
        }
        entries.push_back(entry);
    }
    return entries;
}

} // namespace Kiv
