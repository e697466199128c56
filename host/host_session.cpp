#include "host_session.h"

#include "qt_presenter.h"

#include <nxsim/dlg.h>

#include <boost/filesystem/operations.hpp>

#include <cstdlib>
#include <stdexcept>

namespace fs = boost::filesystem;

namespace QorfmtHost {

void applySetup(HostOptions& options) {
    boost::system::error_code ec;
    if (!fs::is_directory(options.site, ec)) {
        throw std::runtime_error(options.site.string() + ": the site is not a directory");
    }
    options.site = fs::absolute(options.site);
    nxsim::ReplaySetup setup;
    setup.site = options.site;
    setup.configuration = options.configuration;
    setup.searchPath = options.searchPath;
    nxsim::applyReplayEnvironment(setup);
    const char* resources = std::getenv("QORFMT_RESOURCE_PATH");
    if (!resources || !*resources) {
        nxsim::setResourcePath({fs::path(QORFMT_SOURCE_DIR) / "resources"});
    }
}

nxsim::UserFunctionLibrary& LibraryCache::library(const fs::path& file) {
    boost::system::error_code ec;
    const std::string key = fs::absolute(file, fs::current_path(ec)).string();
    auto it = m_libraries.find(key);
    if (it == m_libraries.end()) {
        if (!fs::is_regular_file(file, ec)) {
            throw std::runtime_error(file.string() +
                                     ": the user-function library does not exist (is it built?)");
        }
        it = m_libraries.emplace(key, std::make_unique<nxsim::UserFunctionLibrary>(file)).first;
    }
    return *it->second;
}

nxsim::ReplayOutcome replayInWindows(const HostOptions& options, LibraryCache& libraries,
                                     QtPresenter& presenter) {
    nxsim::Journal journal;
    try {
        journal = nxsim::readJournal(options.replay);
    } catch (const nxsim::JournalSyntaxError& e) {
        return nxsim::ReplayOutcome{1, e.what()};
    } catch (const std::exception& e) {
        return nxsim::ReplayOutcome{2, e.what()};
    }
    nxsim::UserFunctionLibrary* library = nullptr;
    try {
        library = &libraries.library(options.library);
    } catch (const std::exception& e) {
        return nxsim::ReplayOutcome{2, e.what()};
    }
    nxsim::JournalRunner runner(std::move(journal), options.site);
    const QtPresenter::Mode previousMode = presenter.mode();
    presenter.setMode(QtPresenter::Mode::Scripted);
    presenter.setScript(&runner);
    // The windows go in front of the runner: they draw each request and hand it on.
    nxsim::JournalResult result = runner.run([library] { library->callUfusr(); }, presenter);
    presenter.setScript(nullptr);
    presenter.setMode(previousMode);
    return nxsim::ReplayOutcome{result.passed ? 0 : 1, result.message};
}

} // namespace QorfmtHost
