// qorfmt-replay: replays a journal against a user-function library without any window.

#include <nxsim/dlg.h>
#include <nxsim/journal_runner.h>

#include <CLI/CLI.hpp>

#include <boost/filesystem/operations.hpp>

#include <cstdlib>
#include <iostream>
#include <string>

namespace fs = boost::filesystem;

namespace {

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
    std::string journal;
    std::string site;
    std::string library;

    CLI::App app("Replays a journal against a user-function library without any window. Exits 0 "
                 "when the journal ran to its end with every expectation met, 1 with "
                 "FILE:LINE: reason at the first failure, 2 on a usage or setup error.",
                 "qorfmt-replay");
    app.set_version_flag("--version", std::string("qorfmt-replay ") + QORFMT_VERSION);
    app.add_option("JOURNAL", journal, "the journal to replay")->required()->type_name("JOURNAL");
    CLI::Option* siteOption = app.add_option("--site", site,
                                             "installation directory of the configurator (default: "
                                             "examples/site of the source tree)")
                                  ->type_name("DIR");
    app.add_option("--configuration", setup.configuration,
                   "configuration of the in-house configuration library")
        ->type_name("NAME");
    app.add_option("--search-path", setup.searchPath,
                   "further root directories, separated by ':', each searched for format_defs/")
        ->type_name("DIRS");
    CLI::Option* libraryOption =
        app.add_option("--library", library,
                       "user-function library to replay against (default: libqorfmt_configure.so "
                       "beside qorfmt-replay)")
            ->type_name("FILE");
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& e) {
        return app.exit(e);
    } catch (const CLI::CallForVersion& e) {
        return app.exit(e);
    } catch (const CLI::ParseError& e) {
        std::cerr << "qorfmt-replay: " << e.what() << "\nRun with --help for more information.\n";
        return 2;
    }
    setup.journal = journal;
    if (siteOption->count() > 0) {
        setup.site = site;
    }
    if (libraryOption->count() > 0) {
        setup.library = library;
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
