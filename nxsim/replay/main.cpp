// qorfmt-replay: replays a journal against a user-function library without any window.

#include <nxsim/dlg.h>
#include <nxsim/journal_runner.h>

#include <boost/filesystem/operations.hpp>

#include <cstdlib>
#include <iostream>
#include <string>

namespace fs = boost::filesystem;

namespace {

const char* const kUsage =
    "usage: qorfmt-replay JOURNAL [--site DIR] [--configuration NAME] [--search-path DIRS]\n"
    "                     [--library FILE]\n";

fs::path executableDirectory() {
    boost::system::error_code ec;
    fs::path self = fs::read_symlink("/proc/self/exe", ec);
    return ec ? fs::current_path() : self.parent_path();
}

} // namespace

int main(int argc, char** argv) {
    nxsim::ReplaySetup setup;
    setup.site = QORFMT_DEFAULT_SITE;
    setup.library = executableDirectory() / "libqorfmt_configure.so";
    bool journalGiven = false;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        auto value = [&](const char* option) -> std::string {
            if (i + 1 >= argc) {
                std::cerr << "qorfmt-replay: " << option << " needs a value\n" << kUsage;
                std::exit(2);
            }
            return argv[++i];
        };
        if (arg == "--site") {
            setup.site = value("--site");
        } else if (arg == "--configuration") {
            setup.configuration = value("--configuration");
        } else if (arg == "--search-path") {
            setup.searchPath = value("--search-path");
        } else if (arg == "--library") {
            setup.library = value("--library");
        } else if (arg == "--help" || arg == "-h") {
            std::cout << kUsage;
            return 0;
        } else if (!arg.empty() && arg[0] == '-') {
            std::cerr << "qorfmt-replay: unknown option " << arg << "\n" << kUsage;
            return 2;
        } else if (journalGiven) {
            std::cerr << "qorfmt-replay: more than one journal given\n" << kUsage;
            return 2;
        } else {
            setup.journal = arg;
            journalGiven = true;
        }
    }
    if (!journalGiven) {
        std::cerr << kUsage;
        return 2;
    }
    boost::system::error_code ec;
    if (!fs::is_directory(setup.site, ec)) {
        std::cerr << "qorfmt-replay: " << setup.site.string() << ": the site is not a directory\n";
        return 2;
    }
    setup.site = fs::absolute(setup.site);
    // The dialog resources: QORFMT_RESOURCE_PATH when set, else those of the source tree.
    const char* resources = std::getenv("QORFMT_RESOURCE_PATH");
    if (!resources || !*resources) {
        nxsim::setResourcePath({fs::path(QORFMT_DEFAULT_RESOURCES)});
    }
    nxsim::ReplayOutcome outcome = nxsim::replay(setup);
    if (outcome.exitCode != 0) {
        std::cerr << (outcome.exitCode == 2 ? "qorfmt-replay: " : "") << outcome.message << "\n";
    }
    return outcome.exitCode;
}
