#pragma once

#include <boost/filesystem/path.hpp>

#include <string>

namespace Kiv {

/// Facts about the installation: the site directory (QORFMT_SITE) and its settings.
class SystemInformation {
public:
    /// Reads the site settings; throws ConfigurationError for a malformed site.conf.
    SystemInformation();

    /// The site directory, absolute; empty when QORFMT_SITE is not set.
    boost::filesystem::path installPath() const { return m_installPath; }

    /// The folder of a configuration directory that holds its format_defs/ ("nx" by default).
    std::string configurationSubdirectory() const { return m_configurationSubdirectory; }

private:
    boost::filesystem::path m_installPath;
    std::string m_configurationSubdirectory;
};

} // namespace Kiv
