// libFuzzer target: site.conf and configuration.conf. The reader must refuse any input with a
// ConfigurationError that names the file and a line, or read it; what it reads has each key
// once, none empty, and no control character but tab in a key or value.
#include "kiv/settings_file.h"
#include "kiv/site.h"

#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>

namespace {

bool hasControl(const std::string& text) {
    for (const char c : text) {
        const unsigned char byte = static_cast<unsigned char>(c);
        if ((byte < 0x20 && c != '\t') || byte == 0x7F) {
            return true;
        }
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<Kiv::SettingsEntry> entries;
    try {
        entries =
            Kiv::parseSettings(std::string(reinterpret_cast<const char*>(data), size), "fuzz.conf");
    } catch (const Kiv::ConfigurationError& error) {
        if (std::string(error.what()).rfind("fuzz.conf:", 0) != 0) {
            std::abort();
        }
        return 0;
    }
    std::set<std::string> keys;
    for (const Kiv::SettingsEntry& entry : entries) {
        if (entry.key.empty() || !keys.insert(entry.key).second || hasControl(entry.key) ||
            hasControl(entry.value) || entry.line < 1) {
            std::abort();
        }
    }
    return 0;
}
