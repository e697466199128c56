#pragma once

#include <boost/filesystem/path.hpp>

#include <stdexcept>
#include <string>

namespace Kiv {

/// A site or configuration file that cannot be used; the text names the file, the line and why.
class ConfigurationError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The settings of a site directory, read from SITE/site.conf when it exists (all keys optional):
///   configuration_subdirectory = nx          the folder of a configuration that holds format_defs/
///   configurations_directory = configurations  where the configurations live, relative to SITE
///   default_configuration = NAME             the configuration used when none is named
struct SiteSettings {
    boost::filesystem::path site;
    std::string configurationSubdirectory = "nx";
    boost::filesystem::path configurationsDirectory;
    std::string defaultConfiguration;

    /// Reads the settings of `site`; throws ConfigurationError for a malformed site.conf.
    static SiteSettings read(const boost::filesystem::path& site);
};

/// The site directory from QORFMT_SITE, made absolute; empty when the variable is unset or empty.
boost::filesystem::path siteDirectoryFromEnvironment();

} // namespace Kiv
