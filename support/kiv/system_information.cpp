#include "kiv/system_information.h"

#include "kiv/site.h"

namespace Kiv {

SystemInformation::SystemInformation() : m_installPath(siteDirectoryFromEnvironment()) {
    m_configurationSubdirectory = m_installPath.empty()
                                      ? SiteSettings().configurationSubdirectory
                                      : SiteSettings::read(m_installPath).configurationSubdirectory;
}

} // namespace Kiv
