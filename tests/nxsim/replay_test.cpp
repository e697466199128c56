#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>

namespace {

namespace fs = boost::filesystem;

const std::string kJournals = std::string(NXSIM_TEST_DATA) + "/journals/";

struct ReplayRun {
    int exitCode;
    std::string output;
};

/// Runs qorfmt-replay with the test dialogs and parts reachable, in the parts directory.
ReplayRun replay(const std::string& arguments) {
    TestUtil::TempDir out;
    const std::string command = "cd '" + std::string(NXSIM_TEST_DATA) +
                                "/parts' && QORFMT_RESOURCE_PATH='" + std::string(NXSIM_TEST_DATA) +
                                "/dlg' '" + NXSIM_REPLAY + "' " + arguments + " > '" +
                                (out.path() / "out").string() + "' 2>&1";
    int status = std::system(command.c_str());
    return ReplayRun{WIFEXITED(status) ? WEXITSTATUS(status) : -1,
                     TestUtil::readFile(out.path() / "out")};
}

std::string library() {
    return std::string(" --library '") + NXSIM_TEST_UFUNC + "'";
}

TEST(Replay, JournalThatRunsToItsEndExitsWith0) {
    TestUtil::TempDir site;
    ReplayRun r = replay("'" + kJournals + "passes.journal' --site '" + site.path().string() + "'" +
                         library());
    EXPECT_EQ(r.exitCode, 0) << r.output;
    EXPECT_EQ(r.output, "");
}

TEST(Replay, SiteConfigurationAndSearchPathReachTheLibrary) {
    TestUtil::TempDir site;
    std::string text = TestUtil::readFile(kJournals + "environment.journal");
    text.replace(text.find("@SITE@"), 6, fs::canonical(site.path()).string());
    auto journal = site.write("env.journal", text);
    ReplayRun r =
        replay("'" + journal.string() + "' --site '" + fs::canonical(site.path()).string() +
               "' --configuration conf1 --search-path /a:/b" + library());
    EXPECT_EQ(r.exitCode, 0) << r.output;
}

TEST(Replay, FirstFailureExitsWith1AndFileLine) {
    TestUtil::TempDir site;
    ReplayRun r = replay("'" + kJournals + "fails.journal' --site '" + site.path().string() + "'" +
                         library());
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.output,
              kJournals + "fails.journal:4: the message box shown is `message information \"Info\" "
                          "\"Hello \"`, not `message information \"Info\" \"Hello there\"`\n");
}

TEST(Replay, SyntaxErrorExitsWith1AndFileLine) {
    ReplayRun r = replay("'" + kJournals + "syntax.journal'" + library());
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.output, kJournals + "syntax.journal:3: `press` needs an item name\n");
}

// A folder or a FIFO given as the journal is no journal that passed: it is refused at once.
TEST(Replay, AJournalThatIsNotARegularFileExitsWith2) {
    TestUtil::TempDir dir;
    ReplayRun r = replay("'" + dir.path().string() + "'" + library());
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.output,
              "qorfmt-replay: " + dir.path().string() + ": it is a folder, not a regular file\n");
    const fs::path fifo = dir.path() / "pipe.journal";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0644), 0);
    r = replay("'" + fifo.string() + "'" + library());
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.output, "qorfmt-replay: " + fifo.string() +
                            ": it is a FIFO (named pipe), not a regular file\n");
    r = replay("'" + (dir.path() / "none.journal").string() + "'" + library());
    EXPECT_EQ(r.exitCode, 2);
}

TEST(Replay, ControlCharactersInAJournalAreShownEscaped) {
    TestUtil::TempDir dir;
    const fs::path journal = dir.write("nul.journal", std::string("run\ndialog X\0Y\n", 15));
    ReplayRun r = replay("'" + journal.string() + "'" + library());
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.output.find("X\\x00Y"), std::string::npos) << r.output;
}

TEST(Replay, MissingLibraryIsASetupErrorNamingIt) {
    ReplayRun r =
        replay("'" + kJournals + "passes.journal' --library /nonexistent/libqorfmt_configure.so");
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.output, "qorfmt-replay: /nonexistent/libqorfmt_configure.so: the user-function "
                        "library does not exist (is it built?)\n");
}

TEST(Replay, DefaultLibraryIsTheOneBesideTheProgram) {
    // A copy of the runner in a folder of its own has no configurator beside it.
    TestUtil::TempDir dir;
    const fs::path copy = dir.path() / "qorfmt-replay";
    fs::copy_file(NXSIM_REPLAY, copy);
    fs::permissions(copy, fs::owner_all);
    TestUtil::TempDir out;
    const std::string command = "cd '" + std::string(NXSIM_TEST_DATA) + "/parts' && '" +
                                copy.string() + "' '" + kJournals + "passes.journal' > '" +
                                (out.path() / "out").string() + "' 2>&1";
    const int status = std::system(command.c_str());
    const std::string output = TestUtil::readFile(out.path() / "out");
    EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, 2) << output;
    EXPECT_NE(output.find((dir.path() / "libqorfmt_configure.so").string()), std::string::npos)
        << output;
}

TEST(Replay, LibraryWithoutUfusrIsASetupError) {
    ReplayRun r = replay("'" + kJournals + "passes.journal' --library '" + NXSIM_REPLAY + "'");
    EXPECT_EQ(r.exitCode, 2) << r.output;
}

TEST(Replay, UsageErrorsExitWith2) {
    EXPECT_EQ(replay("").exitCode, 2);
    EXPECT_EQ(replay("a.journal --frobnicate").exitCode, 2);
    EXPECT_EQ(replay("a.journal --site").exitCode, 2);
    ReplayRun missing = replay("/nonexistent/j.journal" + library());
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_EQ(missing.output,
              "qorfmt-replay: /nonexistent/j.journal: cannot open the file: No such "
              "file or directory\n");
}

TEST(Replay, HelpAndVersionExitWith0) {
    const ReplayRun help = replay("--help");
    EXPECT_EQ(help.exitCode, 0) << help.output;
    EXPECT_NE(help.output.find("JOURNAL"), std::string::npos) << help.output;
    EXPECT_NE(help.output.find("--search-path DIRS"), std::string::npos) << help.output;
    const ReplayRun version = replay("--version");
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_EQ(version.output.rfind("qorfmt-replay ", 0), 0u) << version.output;
}

TEST(Replay, MoreThanOneJournalIsAUsageError) {
    const ReplayRun r = replay("a.journal b.journal" + library());
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_NE(r.output.find("b.journal"), std::string::npos) << r.output;
}

} // namespace
