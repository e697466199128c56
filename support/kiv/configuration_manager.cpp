#include "kiv/configuration_manager.h"

#include "kiv/settings_file.h"

#include "kiv/site.h"

#include "base/visible_text.h"

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>

#include <algorithm>
#include <cstdlib>

namespace fs = boost::filesystem;

namespace Kiv {

Configuration::Configuration(std::string name, fs::path path, fs::path commonConfigPath)
    : m_name(std::move(name)), m_path(std::move(path)),
      m_commonConfigPath(std::move(commonConfigPath)) {}

ConfigurationManager::ConfigurationManager() {
    const fs::path site = siteDirectoryFromEnvironment();
    if (site.empty()) {
        return;
    }
    const SiteSettings settings = SiteSettings::read(site);
    m_configurationsDirectory = settings.configurationsDirectory;
    const char* named = std::getenv("QORFMT_CONFIGURATION");
    m_currentName = (named && *named) ? named : settings.defaultConfiguration;
}

boost::shared_ptr<const Configuration> ConfigurationManager::currentConfiguration() const {
    if (m_currentName.empty()) {
        return boost::make_shared<const Configuration>();
    }
    return configuration(m_currentName);
}

std::vector<std::string> ConfigurationManager::configurationNames() const {
    std::vector<std::string> names;
    boost::system::error_code ec;
    if (m_configurationsDirectory.empty()) {
        return names;
    }
    for (fs::directory_iterator it(m_configurationsDirectory, ec), end; !ec && it != end;
         it.increment(ec)) {
        boost::system::error_code statusError;
        if (fs::is_directory(it->path(), statusError)) {
            names.push_back(it->path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

boost::shared_ptr<const Configuration>
ConfigurationManager::configuration(const std::string& name) const {
    boost::system::error_code ec;
    if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos) {
        throw ConfigurationError("configuration name '" + name +
                                 "' is not the name of a directory");
    }
    const fs::path path = (m_configurationsDirectory / name).lexically_normal();
    if (m_configurationsDirectory.empty() || !fs::is_directory(path, ec)) {
        throw ConfigurationError("configuration '" + name + "' not found: " + path.string() +
                                 " is not a directory");
    }
    fs::path common;
    const fs::path file = path / "configuration.conf";
    for (const SettingsEntry& entry : readSettingsFile(file)) {
        const std::string where = file.string() + ":" + std::to_string(entry.line) + ": ";
        if (entry.key != "common") {
            throw ConfigurationError(where + "unknown key '" + Base::visibleText(entry.key) + "'");
        }
        common = fs::path(entry.value).is_absolute() ? fs::path(entry.value)
                                                     : m_configurationsDirectory / entry.value;
        if (entry.value.empty() || !fs::is_directory(common, ec)) {
            throw ConfigurationError(where + "common configuration '" +
                                     Base::visibleText(entry.value) +
                                     "' not found: " + common.string() + " is not a directory");
        }
        common = common.lexically_normal();
    }
    return boost::make_shared<const Configuration>(name, path, common);
}

} // namespace Kiv
