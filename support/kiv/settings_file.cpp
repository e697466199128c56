#include "kiv/settings_file.h"

#include "kiv/site.h"

#include <boost/filesystem/operations.hpp>

#include <cerrno>
#include <cstring>
#include <fstream>

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
    if (!fs::exists(file, ec)) {
        return {};
    }
    if (!fs::is_regular_file(file, ec)) {
        throw ConfigurationError(file.string() + ": not a regular file");
    }
    std::ifstream in(file.string(), std::ios::binary);
    if (!in) {
        throw ConfigurationError(file.string() + ": cannot be read: " + std::strerror(errno));
    }
    std::vector<SettingsEntry> entries;
    std::string text;
    int number = 0;
    while (std::getline(in, text)) {
        ++number;
        const std::string line = trim(text);
        if (line.empty() || line[0] == '#') {
            continue;
        }
        const auto equals = line.find('=');
        const std::string where = file.string() + ":" + std::to_string(number) + ": ";
        if (equals == std::string::npos) {
            throw ConfigurationError(where + "expected 'key = value', found '" + line + "'");
        }
        SettingsEntry entry{trim(line.substr(0, equals)), trim(line.substr(equals + 1)), number};
        if (entry.key.empty()) {
            throw ConfigurationError(where + "missing key before '='");
        }
        for (const SettingsEntry& earlier : entries) {
            if (earlier.key == entry.key) {
                throw ConfigurationError(where + "key '" + entry.key + "' already set on line " +
                                         std::to_string(earlier.line));
            }
        }
        entries.push_back(entry);
    }
    return entries;
}

} // namespace Kiv
