// After a save the configurator checks the saved document as `qorfmt lint FILE` checks it in the
// site, and writes what it finds to the listing window; nothing modal is added to the save.
#include "main_dialog_run.h"

#include <nxsim/journal.h>
#include <nxsim/platform.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

namespace {

using TestUtil::kOpenDocA;

class SaveReport : public TestUtil::MainDialogRun {
protected:
    // What `qorfmt lint FILE` prints for `file` in the workspace site.
    static std::string lintOutput(const boost::filesystem::path& file) {
        const std::string command =
            std::string(QORFMT_PROGRAM) + " lint '" + file.string() + "' 2>&1";
        std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(command.c_str(), "r"), ::pclose);
        std::string output;
        char buffer[4096];
        while (pipe && std::fgets(buffer, sizeof buffer, pipe.get())) {
            output += buffer;
        }
        return output;
    }

    // A new block of the active document, whose ID breaks translation keys and which has a
    // field defined twice.
    static constexpr const char* kFaultyBlock = R"J(
  press NEWBLOCK
    dialog qorborder_config_block
    set BLOCK_ID "MY_TITLE"
    press ADD_FIELD
      dialog qorborder_config_field
      set ID "NO"
      ok
    press ADD_FIELD
      dialog qorborder_config_field
      set ID "NO"
      ok
    ok
)J";

    // docA, which has three findings of its own, with the faulty block.
    static std::string addFaultyBlock() { return std::string(kOpenDocA) + kFaultyBlock; }
};

TEST_F(SaveReport, ASaveWithFindingsWritesThemToTheListingWindowInOneWrite) {
    const std::string file = site.document("faulty.fordef").string();
    EXPECT_JOURNAL_PASSES(
        run(std::string("run\ndialog qorborder_config_main\n  press NEW_FILE\n") + kFaultyBlock +
            R"J(
  press SAVEAS_FILE
    dialog qorfmt_config_selectfile.dlg
    set FILE_SELECTION "faulty"
    ok
  expect stoplight "1 0"
  expect listing )J" +
            nxsim::quoteJournalText("Lint of the saved document " + file + ": 2 findings\n" + file +
                                    ":3: error: block ID 'MY_TITLE' contains '_', which breaks "
                                    "translation keys [id-underscore]\n" +
                                    file +
                                    ":5: error: field 'NO' occurs twice in block 'MY_TITLE'; the "
                                    "first is at line 4 [duplicate-in-layout]\n") +
            R"J(
  cancel
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

TEST_F(SaveReport, TheListingShowsWhatTheCommandLineFindsInTheSavedFile) {
    EXPECT_JOURNAL_PASSES(run(addFaultyBlock() + R"J(
  press SAVE_FILE
  cancel
)J"));
    const std::string listing = nxsim::listingText();
    ASSERT_NE(listing.find('\n'), std::string::npos) << listing;
    EXPECT_EQ(listing.substr(listing.find('\n') + 1), lintOutput(site.document("docA.fordef")));
}

TEST_F(SaveReport, ACleanSaveWritesNothing) {
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  press NEW_FILE
  press NEWBLOCK
    dialog qorborder_config_block
    set BLOCK_ID "CLEAN"
    ok
  press SAVEAS_FILE
    dialog qorfmt_config_selectfile.dlg
    set FILE_SELECTION "clean"
    ok
  press NEWBLOCK
    dialog qorborder_config_block
    set BLOCK_ID "CLEANER"
    ok
  press SAVE_FILE
  expect stoplight "1 0 1 0"
  expect listing ""
  cancel
)J"));
    EXPECT_EQ(lintOutput(site.document("clean.fordef")), "");
}

TEST_F(SaveReport, SaveAsAndSaveAllReportEachSavedDocument) {
    const std::string copy = site.document("docA-copy.fordef").string();
    EXPECT_JOURNAL_PASSES(run(addFaultyBlock() + R"J(
  press SAVEAS_FILE
    dialog qorfmt_config_selectfile.dlg
    set FILE_SELECTION "docA-copy"
    ok
  expect label FILENAME "docA-copy.fordef"
  press SAVE_ALL
  cancel
)J"));
    const std::string listing = nxsim::listingText();
    const std::string original = site.document("docA.fordef").string();
    // Save As checks the copy, whose every border, block and location docA holds too: docA,
    // open with unsaved changes, is taken as it is in memory, where its objects have no line.
    EXPECT_EQ(listing.rfind("Lint of the saved document " + copy + ": 14 findings\n", 0), 0u)
        << listing;
    EXPECT_NE(listing.find(copy + ":17: error: block 'MY_TITLE' is also defined at " + original +
                           " [duplicate-id]\n"),
              std::string::npos)
        << listing;
    // Save All then saves docA, still modified, and checks it beside the copy read from its file.
    EXPECT_NE(listing.find("Lint of the saved document " + original + ": 14 findings\n"),
              std::string::npos)
        << listing;
    EXPECT_NE(listing.find(original + ":17: error: block 'MY_TITLE' is also defined at " + copy +
                           ":17 [duplicate-id]\n"),
              std::string::npos)
        << listing;
}

} // namespace
