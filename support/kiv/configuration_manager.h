#pragma once

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace Kiv {

/// One configuration of the site: a directory, optionally built on a common configuration.
/// Its own settings come from DIR/configuration.conf (optional):
///   common = NAME     the common configuration, a directory beside this one (or a path)
class Configuration {
public:
    Configuration() = default;
    Configuration(std::string name, boost::filesystem::path path,
                  boost::filesystem::path commonConfigPath);

    /// Empty for the "no configuration" of a site that defines none.
    const std::string& name() const { return m_name; }
    const boost::filesystem::path& path() const { return m_path; }
    /// The common configuration's directory; empty when there is none.
    const boost::filesystem::path& commonConfigPath() const { return m_commonConfigPath; }
    bool hasCommonConfiguration() const { return !m_commonConfigPath.empty(); }

private:
    std::string m_name;
    boost::filesystem::path m_path;
    boost::filesystem::path m_commonConfigPath;
};

/// The configurations of the site. The current one is named by QORFMT_CONFIGURATION, else by the
/// site's default_configuration; with neither, the current configuration is the empty one.
class ConfigurationManager {
public:
    /// Reads the site settings; throws ConfigurationError for a malformed site.conf.
    ConfigurationManager();

    /// Throws ConfigurationError when the named configuration does not exist or its
    /// configuration.conf is malformed or names a common configuration that does not exist.
    boost::shared_ptr<const Configuration> currentConfiguration() const;

    /// The name of the current configuration, empty when none is chosen.
    const std::string& currentConfigurationName() const { return m_currentName; }

    /// The names of the configuration directories of the site, sorted.
    std::vector<std::string> configurationNames() const;

    /// The configuration of that name; throws ConfigurationError as currentConfiguration() does.
    boost::shared_ptr<const Configuration> configuration(const std::string& name) const;

private:
    boost::filesystem::path m_configurationsDirectory;
    std::string m_currentName;
};

} // namespace Kiv
