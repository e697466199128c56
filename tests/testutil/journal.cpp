#include "testutil/journal.h"

#include <nxsim/dlg.h>
#include <nxsim/journal.h>

namespace TestUtil {

boost::filesystem::path productResources() {
    return QORFMT_PRODUCT_RESOURCES;
}

nxsim::JournalResult runJournal(const std::string& text, const std::function<void()>& entry,
                                const boost::filesystem::path& site,
                                const boost::filesystem::path& extraResources,
                                const std::string& name) {
    std::vector<boost::filesystem::path> resources{productResources()};
    if (!extraResources.empty()) {
        resources.push_back(extraResources);
    }
    nxsim::setResourcePath(resources);
    nxsim::JournalRunner runner(nxsim::parseJournal(text, name), site);
    return runner.run(entry);
}

} // namespace TestUtil
