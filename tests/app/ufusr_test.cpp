#include "testutil/journal.h"
#include "testutil/temp_dir.h"

#include <nxsim/error_codes.h>
#include <nxsim/platform.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

/// The configurator library as NX loads it, on an empty site of its own.
class Ufusr : public ::testing::Test {
protected:
    Ufusr() : library(QORFMT_CONFIGURE_LIBRARY) {
        dir.mkdir("site/format_defs");
        env.set("QORFMT_SITE", (dir.path() / "site").string());
        env.set("QORFMT_CONFIGURATION", nullptr);
        env.set("QORFMT_SEARCH_PATH", nullptr);
        nxsim::reset();
    }

    nxsim::JournalResult run(const std::string& journal) {
        return TestUtil::runJournal(
            journal, [this] { library.callUfusr(); }, dir.path() / "site");
    }

    static bool called(const std::string& call) {
        const auto calls = nxsim::callLog();
        return std::find(calls.begin(), calls.end(), call) != calls.end();
    }

    TestUtil::TempDir dir;
    TestUtil::ScopedEnvironment env;
    nxsim::UserFunctionLibrary library;
};

TEST_F(Ufusr, ShowsTheMainDialogAndTerminatesAfterIt) {
    EXPECT_JOURNAL_PASSES(run("run\ndialog qorborder_config_main\ncancel\n"));
    EXPECT_TRUE(called("UF_initialize"));
    EXPECT_TRUE(called("UF_terminate"));
    EXPECT_EQ(nxsim::initializeDepth(), 0);
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

TEST_F(Ufusr, QuietEndCodeFromAHandlerEndsTheRunWithoutAnyMessage) {
    nxsim::injectFault("ListingWindow::WriteLine", nxsim::ErrorCode::InterruptedByUser);
    EXPECT_JOURNAL_PASSES(run(R"(run
dialog qorborder_config_main
  press NEW_FILE
  press FILE_SUMMARY
)"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
    EXPECT_EQ(nxsim::initializeDepth(), 0) << "UF_terminate runs after the quiet end too";
}

TEST_F(Ufusr, OtherNXExceptionShowsExactlyOneErrorDialogWithItsText) {
    nxsim::injectFault("ListingWindow::WriteLine", nxsim::ErrorCode::InvalidArgument);
    const std::string text = nxsim::errorMessage(nxsim::ErrorCode::InvalidArgument) +
                             ": injected fault of ListingWindow::WriteLine";
    EXPECT_JOURNAL_PASSES(run("run\ndialog qorborder_config_main\n  press NEW_FILE\n"
                              "  press FILE_SUMMARY\nmessage error \"Error\" " +
                              nxsim::quoteJournalText(text) + "\n"));
    ASSERT_EQ(nxsim::shownMessages().size(), 1u);
    EXPECT_EQ(nxsim::shownMessages()[0].title, "Error");
    EXPECT_EQ(nxsim::initializeDepth(), 0);
}

TEST_F(Ufusr, FailedInitializeShowsItsErrorAndDoesNotTerminate) {
    nxsim::injectFault("UF_initialize", nxsim::ErrorCode::NotInitialized, 1);
    EXPECT_JOURNAL_PASSES(
        run("run\nmessage error \"Error\" " +
            nxsim::quoteJournalText(nxsim::errorMessage(nxsim::ErrorCode::NotInitialized)) + "\n"));
    EXPECT_FALSE(called("UF_terminate"));
}

TEST_F(Ufusr, FailedInitializeWithQuietCodeShowsNothing) {
    nxsim::injectFault("UF_initialize", nxsim::ErrorCode::InterruptedByUser, 1);
    EXPECT_JOURNAL_PASSES(run("run\n"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
    EXPECT_FALSE(called("UF_terminate"));
}

TEST_F(Ufusr, FailedTerminateAfterAGoodRunShowsItsError) {
    nxsim::injectFault("UF_terminate", nxsim::ErrorCode::NotAllowedNow, 1);
    EXPECT_JOURNAL_PASSES(
        run("run\ndialog qorborder_config_main\n  ok\nmessage error \"Error\" " +
            nxsim::quoteJournalText(nxsim::errorMessage(nxsim::ErrorCode::NotAllowedNow)) + "\n"));
}

TEST_F(Ufusr, FailedTerminateDuringAFailedRunKeepsTheFirstError) {
    nxsim::injectFault("ListingWindow::WriteLine", nxsim::ErrorCode::InvalidArgument);
    nxsim::injectFault("UF_terminate", nxsim::ErrorCode::NotAllowedNow, 1);
    const std::string text = nxsim::errorMessage(nxsim::ErrorCode::InvalidArgument) +
                             ": injected fault of ListingWindow::WriteLine";
    EXPECT_JOURNAL_PASSES(run("run\ndialog qorborder_config_main\n  press NEW_FILE\n"
                              "  press FILE_SUMMARY\nmessage error \"Error\" " +
                              nxsim::quoteJournalText(text) + "\n"));
    EXPECT_EQ(nxsim::shownMessages().size(), 1u);
}

TEST_F(Ufusr, StandardExceptionShowsErrorWithItsText) {
    dir.write("site/format_defs/broken.fordef", "<fordef version=\"1\">");
    const auto result = run(R"(run
dialog qorborder_config_main
  press OPEN_FILE
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    ok
)");
    // The journal ends where the error box appears; the box itself is checked here.
    ASSERT_EQ(nxsim::shownMessages().size(), 1u) << result.message;
    EXPECT_EQ(nxsim::shownMessages()[0].title, "Error");
    EXPECT_NE(nxsim::shownMessages()[0].text.find("broken.fordef"), std::string::npos)
        << nxsim::shownMessages()[0].text;
}

TEST_F(Ufusr, SecondCallStartsWithNoActiveDocument) {
    EXPECT_JOURNAL_PASSES(run(R"(run
dialog qorborder_config_main
  press NEW_FILE
  expect sensitive FILEINFO yes
  cancel
run
dialog qorborder_config_main
  expect label FILENAME "No active file"
  expect label LOCATION "???"
  expect sensitive FILEINFO no
  cancel
)"));
}

TEST(UfusrLibrary, ExportsUfusrAndNothingElse) {
    const std::string command =
        std::string("nm -D --defined-only '") + QORFMT_CONFIGURE_LIBRARY + "'";
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    ASSERT_TRUE(pipe);
    std::vector<std::string> symbols;
    char line[512];
    while (fgets(line, sizeof line, pipe.get())) {
        std::string text = line;
        symbols.push_back(
            text.substr(text.rfind(' ') + 1, text.find_last_not_of("\n") - text.rfind(' ')));
    }
    EXPECT_EQ(symbols, (std::vector<std::string>{"ufusr"}));
}

} // namespace
