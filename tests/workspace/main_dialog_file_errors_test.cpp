// A document that cannot be read or written, met by an action of the main dialog: the error is
// shown in the "Error" box, the main dialog stays open, and the active document, its lists and
// its unsaved changes are as they were before the action. Every case runs through the real
// resource files.
#include "main_dialog_run.h"

#include "model/document_error.h"

#include <nxsim/journal.h>
#include <nxsim/platform.h>

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <fstream>
#include <sched.h>
#include <string>
#include <sys/mount.h>

namespace {

using QorBorder::DefinitionDocument;
namespace fs = boost::filesystem;

// A document cut off in the middle of an element, as a full disk or a broken copy leaves one.
const char* const kTruncated = "<?xml version=\"1.0\"?>\n<fordef version=\"1\">\n  <border id=\"X";

// New document with one block "KEEP", not yet saved anywhere.
const char* const kNewDocumentWithABlock = R"J(run
dialog qorborder_config_main
  press NEW_FILE
  press NEWBLOCK
    dialog qorborder_config_block
    set BLOCK_ID "KEEP"
    ok
  expect items BLOCKLIST ["KEEP"]
)J";

class MainDialogFileErrors : public TestUtil::MainDialogRun {
protected:
    MainDialogFileErrors() {
        broken = site.dir().write("site/format_defs/unreadable.fordef", kTruncated);
    }

    // What the model says of reading `file`: the text the "Error" box must show.
    static std::string readError(const fs::path& file) {
        try {
            DefinitionDocument::load(file);
        } catch (const QorBorder::DocumentError& e) {
            return e.what();
        }
        ADD_FAILURE() << file << " could be read";
        return {};
    }

    // What the model says of saving a copy of docA to `file`.
    std::string saveError(const fs::path& file) const {
        DefinitionDocument copy(*onDisk("docA.fordef"));
        try {
            copy.save(file);
        } catch (const QorBorder::DocumentError& e) {
            return e.what();
        }
        ADD_FAILURE() << file << " could be saved";
        return {};
    }

    static std::string errorLine(const std::string& text) {
        return "message error \"Error\" " + nxsim::quoteJournalText(text) + "\n";
    }

    fs::path broken;
};

TEST_F(MainDialogFileErrors, OpeningAnUnreadableDocumentKeepsTheUnsavedNewDocumentActive) {
    EXPECT_JOURNAL_PASSES(run(std::string(kNewDocumentWithABlock) + R"J(
  press OPEN_FILE
    dialog qorfmt_config_selectfile.dlg
    expect items FILE_LIST ["docA.fordef", "docB.fordef", "unreadable.fordef"]
    select FILE_LIST 2
    ok
  )J" + errorLine(readError(broken)) +
                              R"J(
  expect label FILENAME "Untitled"
  expect items BLOCKLIST ["KEEP"]
  expect sensitive SAVEAS_FILE yes
  expect stoplight ""
  press SAVEAS_FILE
    dialog qorfmt_config_selectfile.dlg
    set FILE_SELECTION "kept"
    ok
  expect label FILENAME "kept.fordef"
  cancel
)J"));
    EXPECT_EQ(TestUtil::blockIds(*onDisk("kept.fordef")), (std::vector<std::string>{"KEEP"}));
}

TEST_F(MainDialogFileErrors, AFailedSaveAsKeepsTheOriginalActiveModifiedAndRegistersNothing) {
    // The folder of the new file is a regular file: the save cannot create anything there.
    const fs::path target = site.document("docA.fordef") / "copy.fordef";
    const std::string error = saveError(target);
    EXPECT_JOURNAL_PASSES(run(std::string(TestUtil::kOpenDocA) + R"J(
  select BORDERLIST 0
  press DELETEBORDER
  expect sensitive SAVE_FILE yes
  expect stoplight ""
  press SAVEAS_FILE
    dialog qorfmt_config_selectfile.dlg
    set FILE_SELECTION "docA.fordef/copy"
    ok
  )J" + errorLine(error) + R"J(
  expect stoplight "1 0"
  expect label FILENAME "docA.fordef"
  expect items BORDERLIST ["A4"]
  expect sensitive SAVE_FILE yes
  press OPEN_FILE
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    set FILE_SELECTION "docA.fordef/copy"
    ok
  )J" + errorLine(readError(target)) +
                              R"J(
  expect label FILENAME "docA.fordef"
  cancel
)J"));
    // Nothing was written, and docA on disk is as it was.
    EXPECT_EQ(TestUtil::borderIds(*onDisk("docA.fordef")), (std::vector<std::string>{"A3", "A4"}));
}

TEST_F(MainDialogFileErrors, ASaveOnAFullDiskKeepsTheDocumentModifiedAndTheDialogOpen) {
    // A file system of 64 KiB, filled up, in a mount namespace of this test process alone.
    if (::unshare(CLONE_NEWNS) != 0 ||
        ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
        GTEST_SKIP() << "no mount namespace for a full disk here";
    }
    const fs::path plant = site.root() / "configurations" / "plant" / "nx" / "format_defs";
    ASSERT_EQ(::mount("qorfmt-full", plant.c_str(), "tmpfs", 0, "size=64k"), 0);
    {
        std::ofstream filler((plant / "filler").string(), std::ios::binary);
        const std::string block(4096, 'x');
        while (filler.write(block.data(), static_cast<std::streamsize>(block.size()))) {
            filler.flush();
        }
    }
    const std::string error = saveError(plant / "full.fordef");
    EXPECT_NE(error.find("No space left on device"), std::string::npos) << error;
    const auto result = run(std::string(TestUtil::kOpenDocA) + R"J(
  select BORDERLIST 0
  press DELETEBORDER
  press SAVEAS_FILE
    dialog qorfmt_config_selectfile.dlg
    choose FILTER 2
    set FILE_SELECTION "full"
    ok
  )J" + errorLine(error) + R"J(
  expect stoplight "1 0"
  expect label FILENAME "docA.fordef"
  expect sensitive SAVE_FILE yes
  cancel
)J");
    ::umount2(plant.c_str(), MNT_DETACH);
    EXPECT_JOURNAL_PASSES(result);
    EXPECT_FALSE(fs::exists(plant / "full.fordef"));
}

TEST_F(MainDialogFileErrors, MovingToAnUnreadableDocumentMovesNothing) {
    // Move chooses the target in the file picker, where the active document is not offered.
    const std::string moveToUnreadable = R"J(
  press MOVE_ITEMS
    dialog qorfmt_config_selectfile.dlg
    expect items FILE_LIST ["docB.fordef", "unreadable.fordef"]
    select FILE_LIST 1
    ok
  )J" + errorLine(readError(broken));
    EXPECT_JOURNAL_PASSES(run(std::string(TestUtil::kOpenDocA) + "  select BLOCKLIST 0\n" +
                              moveToUnreadable + R"J(
  expect items BLOCKLIST ["TB", "PL"]
  expect sensitive SAVE_FILE no
  select TRANSLATION_LIST 0
)J" + moveToUnreadable + R"J(
  expect items TRANSLATION_LIST ["DE_TB_TITLE_Drawing", "FR_TB_TITLE_Drawing"]
  expect sensitive SAVE_FILE no
  cancel
)J"));
}

TEST_F(MainDialogFileErrors, CopyingFromAnUnreadableDocumentCopiesNothing) {
    EXPECT_JOURNAL_PASSES(run(std::string(TestUtil::kOpenDocA) + R"J(
  press COPYBLOCKFROM
    dialog qorfmt_config_selectfile.dlg
    expect items FILE_LIST ["docB.fordef", "unreadable.fordef"]
    select FILE_LIST 1
  )J" + errorLine(readError(broken)) +
                              R"J(
  expect items BLOCKLIST ["TB", "PL"]
  press COPYBORDERFROM
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 1
  )J" + errorLine(readError(broken)) +
                              R"J(
  expect items BORDERLIST ["A3", "A4"]
  expect sensitive SAVE_FILE no
  cancel
)J"));
}

// NX's own errors are not the user's file problem: they still end the run, and the entry point
// reports them. Here NX refuses the search path while the file picker lists the documents, with
// the code of a run ended on purpose, which ends it quietly: no "Error" box, no main dialog left.
TEST_F(MainDialogFileErrors, AnNXErrorDuringAFileActionStillEndsTheRun) {
    nxsim::injectFault("LoadOptions::GetSearchDirectories", 1105003);
    const auto result = run("run\ndialog qorborder_config_main\n  press OPEN_FILE\n");
    nxsim::clearFaults();
    EXPECT_JOURNAL_PASSES(result);
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

} // namespace
