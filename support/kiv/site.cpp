#include "kiv/site.h"

#include "kiv/settings_file.h"

#include "base/visible_text.h"

#include <boost/filesystem/operations.hpp>

#include <cstdlib>

namespace fs = boost::filesystem;

namespace Kiv {

SiteSettings SiteSettings::read(const fs::path& site) {
    SiteSettings settings;
    settings.site = site;
    settings.configurationsDirectory = site / "configurations";
    const fs::path file = site / "site.conf";
    for (const SettingsEntry& entry : readSettingsFile(file)) {
        if (entry.key == "configuration_subdirectory") {
            settings.configurationSubdirectory = entry.value;
        } else if (entry.key == "configurations_directory") {
            settings.configurationsDirectory =
                fs::path(entry.value).is_absolute() ? fs::path(entry.value) : site / entry.value;
        } else if (entry.key == "default_configuration") {
            settings.defaultConfiguration = entry.value;
        } else {
            throw ConfigurationError(file.string() + ":" + std::to_string(entry.line) +
                                     ": unknown key '" + Base::visibleText(entry.key) + "'");
        }
    }
    return settings;
}

fs::path siteDirectoryFromEnvironment() {
    const char* value = std::getenv("QORFMT_SITE");
    if (!value || !*value) {
        return {};
    }
    return fs::absolute(fs::path(value)).lexically_normal();
}

} // namespace Kiv
