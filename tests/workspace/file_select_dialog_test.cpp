#include "workspace_site.h"

#include "base/log.h"
#include "model/block_layout.h"
#include "model/border_layout.h"
#include "model/document_error.h"
#include "testutil/journal.h"
#include "workspace/file_select_dialog.h"

#include <nxsim/platform.h>
#include <uf.h>

#include <gtest/gtest.h>

namespace fs = boost::filesystem;
using QorBorderConf::FileSelectDialog;

namespace {

/// The file select dialog alone, shown by the test on a fresh workspace site.
class FileSelect : public ::testing::Test {
protected:
    // The dialog's UF_ calls need an initialized Open API, as inside NX.
    FileSelect() {
        nxsim::reset();
        UF_initialize();
    }
    ~FileSelect() override { UF_terminate(); }

    /// Shows a dialog of `mode` (start path `start`) while `journal` (the dialog's own lines)
    /// runs, and returns its response.
    int show(int mode, const std::string& journal, const fs::path& start = {}) {
        dialog.reset(new FileSelectDialog(start, mode));
        int response = -1;
        const auto result = TestUtil::runJournal(
            "run\ndialog qorfmt_config_selectfile.dlg\n" + journal,
            [&] { response = dialog->show(); }, site.site());
        EXPECT_TRUE(result.passed) << result.message;
        return response;
    }

    TestUtil::WorkspaceSite site;
    std::unique_ptr<FileSelectDialog> dialog;
};

TEST(FileSelectDialogNames, PlainNameGetsTheExtensionInTheBaseDirectoriesFormatDefs) {
    const fs::path base = "/site";
    EXPECT_EQ(FileSelectDialog::pathForName(base, "plan"), "/site/format_defs/plan.fordef");
    EXPECT_EQ(FileSelectDialog::pathForName(base, "plan.fordef"), "/site/format_defs/plan.fordef");
    EXPECT_EQ(FileSelectDialog::pathForName(base, "A3-iso_2"), "/site/format_defs/A3-iso_2.fordef");
    EXPECT_TRUE(FileSelectDialog::pathForName(base, "").empty());
}

// The name rule only decides whether ".fordef" is added: a name with other characters is not
// refused, it gets the extension even when it already ends in one. Intended.
TEST(FileSelectDialogNames, NameWithOtherCharactersAlwaysGetsTheExtensionAppended) {
    const fs::path base = "/site";
    EXPECT_EQ(FileSelectDialog::pathForName(base, "my plan"), "/site/format_defs/my plan.fordef");
    EXPECT_EQ(FileSelectDialog::pathForName(base, "my plan.fordef"),
              "/site/format_defs/my plan.fordef.fordef");
    EXPECT_EQ(FileSelectDialog::pathForName(base, "plan.FORDEF"),
              "/site/format_defs/plan.FORDEF.fordef");
}

TEST_F(FileSelect, TypedNameInOpenModeGivesThePathInTheChosenBaseDirectory) {
    EXPECT_EQ(show(FileSelectDialog::OpenMode, R"J(
  select FILE_LIST 0
  expect value FILE_SELECTION "docA.fordef"
  set FILE_SELECTION "plan"
  ok
)J"),
              NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(dialog->selectedPath(), site.site() / "format_defs" / "plan.fordef");
}

TEST_F(FileSelect, TypedNameWithExtensionGivesTheSamePath) {
    show(FileSelectDialog::OpenMode,
         "select FILE_LIST 0\nset FILE_SELECTION \"plan.fordef\"\nok\n");
    EXPECT_EQ(dialog->selectedPath(), site.site() / "format_defs" / "plan.fordef");
}

TEST_F(FileSelect, NameWithABlankIsAcceptedWithoutAnError) {
    EXPECT_EQ(show(FileSelectDialog::SaveAsMode, "set FILE_SELECTION \"my plan\"\nok\n"),
              NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(dialog->selectedPath(), site.site() / "format_defs" / "my plan.fordef");
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

TEST_F(FileSelect, EmptyNameIsRefusedAndTheDialogStaysOpen) {
    EXPECT_EQ(show(FileSelectDialog::SaveAsMode, R"J(
  ok
  message error "Validation Error" "File must not be empty."
  expect title "Save As File"
  cancel
)J"),
              3);
}

TEST_F(FileSelect, OpenModeOkIsSensitiveOnlyWithAName) {
    show(FileSelectDialog::OpenMode, R"J(
  expect sensitive OK no
  select FILE_LIST 1
  expect sensitive OK yes
  cancel
)J");
}

TEST_F(FileSelect, FilterListsTheFilesOfEachBaseDirectory) {
    show(FileSelectDialog::OpenMode, R"J(
  expect items FILTER ["Installation", "Common configuration", "Current configuration"]
  expect items FILE_LIST ["docA.fordef", "docB.fordef"]
  choose FILTER 1
  expect items FILE_LIST ["company.fordef"]
  choose FILTER 2
  expect items FILE_LIST ["plant.fordef"]
  select FILE_LIST 0
  ok
)J");
    EXPECT_EQ(dialog->selectedPath(),
              site.root() / "configurations/plant/nx/format_defs/plant.fordef");
}

TEST_F(FileSelect, CommonEntryIsSensitiveWithACommonConfiguration) {
    show(FileSelectDialog::OpenMode, "expect sensitive FILTER[1] yes\ncancel\n");
}

TEST(FileSelectWithoutCommon, CommonEntryIsInsensitiveWithoutACommonConfiguration) {
    TestUtil::WorkspaceSite site(false);
    FileSelectDialog dialog({}, FileSelectDialog::OpenMode);
    EXPECT_JOURNAL_PASSES(TestUtil::runJournal(R"J(run
dialog qorfmt_config_selectfile.dlg
  expect sensitive FILTER[1] no
  expect sensitive FILTER[2] yes
  cancel
)J",
                                               [&] { dialog.show(); }));
}

TEST_F(FileSelect, StartPathIsLeftOutOfTheFiles) {
    show(FileSelectDialog::OpenMode, "expect items FILE_LIST [\"docB.fordef\"]\ncancel\n",
         site.document("docA.fordef"));
}

// The folder test is a plain substring search, on purpose: a folder whose path holds the base
// directory's text anywhere, not only at its start, lists its files under that base directory.
TEST_F(FileSelect, BaseDirectoryTextInsideAnotherPathAlsoListsThoseFiles) {
    // A search-path folder whose path repeats the installation's path after a start of its own.
    const fs::path mirror = fs::path("mirror") / site.site().relative_path();
    site.dir().write(mirror / "format_defs" / "mirrored.fordef", "");
    const std::string folder = (site.root() / mirror / "format_defs").string();
    const std::string installation = site.site().string();
    ASSERT_NE(folder.find(installation), std::string::npos);
    ASSERT_NE(folder.find(installation), 0u) << "the installation must not start the folder's path";
    site.environment().set("QORFMT_SEARCH_PATH", (site.root() / mirror).string());
    show(FileSelectDialog::OpenMode, R"J(
  expect items FILE_LIST ["mirrored.fordef", "docA.fordef", "docB.fordef"]
  cancel
)J");
}

TEST_F(FileSelect, OkLogsTheChosenFile) {
    const fs::path log = site.root() / "log.txt";
    Base::log::setDestination(log.string());
    show(FileSelectDialog::SaveAsMode, "set FILE_SELECTION \"cache\"\nok\n");
    Base::log::setDestination("");
    const std::string text = TestUtil::readFile(log);
    EXPECT_NE(text.find("Setting file cache to " +
                        (site.site() / "format_defs" / "cache.fordef").string() + "\n"),
              std::string::npos)
        << text;
}

TEST_F(FileSelect, CopyBlockModeListsTheBlocksOfThePickedFile) {
    EXPECT_EQ(show(FileSelectDialog::CopyBlockMode, R"J(
  expect title "Copy Block"
  expect label FILE_SELECTION "File To Open"
  expect cue "Select block to copy"
  expect label OBJECT_LABEL "Blocks"
  expect visible OBJECT_GROUP yes
  expect visible LOC_FILTER no
  expect sensitive OK no
  select FILE_LIST 0
  expect items OBJECT_LIST ["TB", "PL"]
  expect sensitive OK no
  select OBJECT_LIST 1
  expect sensitive OK yes
  ok
)J"),
              NXOpen::UIStyler::DialogResponseOk);
    ASSERT_TRUE(dialog->selectedBlockLayout());
    EXPECT_EQ(dialog->selectedBlockLayout()->id, "PL");
    EXPECT_FALSE(dialog->selectedBorderLayout());
}

TEST_F(FileSelect, CopyBorderModeEndsWithNineOnADoubleClickedBorder) {
    EXPECT_EQ(show(FileSelectDialog::CopyBorderMode, R"J(
  expect title "Copy Border"
  expect cue "Select border To copy"
  expect label OBJECT_LABEL "Borders"
  expect visible LOC_FILTER no
  select FILE_LIST 1
  expect items OBJECT_LIST ["B1"]
  double-click OBJECT_LIST 0
)J"),
              9);
    ASSERT_TRUE(dialog->selectedBorderLayout());
    EXPECT_EQ(dialog->selectedBorderLayout()->id, "B1");
    EXPECT_EQ(dialog->selectedPath(), site.document("docB.fordef"));
}

TEST_F(FileSelect, CopyLocationModeKeepsOkInsensitiveBecauseNothingIsListed) {
    show(FileSelectDialog::CopyLocationMode, R"J(
  expect title "Copy Location"
  expect cue "Select location To copy"
  expect label OBJECT_LABEL "Locations"
  expect visible LOC_FILTER yes
  select FILE_LIST 0
  expect items OBJECT_LIST []
  expect sensitive OK no
  cancel
)J");
}

TEST_F(FileSelect, UnknownModeSetsNoTextsAndNeverAllowsOk) {
    show(7, R"J(
  expect title "Select File"
  expect label OBJECT_LABEL "Objects"
  select FILE_LIST 0
  expect sensitive OK no
  cancel
)J");
}

TEST_F(FileSelect, DoubleClickOnAFileOpensOnlyInOpenMode) {
    EXPECT_EQ(show(FileSelectDialog::OpenMode, "double-click FILE_LIST 1\n"), 9);
    EXPECT_EQ(dialog->selectedPath(), site.document("docB.fordef"));
    EXPECT_EQ(show(FileSelectDialog::SaveAsMode, "double-click FILE_LIST 1\ncancel\n"), 3);
}

TEST_F(FileSelect, MalformedDocumentPickedInCopyModeLeavesShowWithTheReadError) {
    site.dir().write("site/format_defs/bad.fordef", "not a document");
    FileSelectDialog copy({}, FileSelectDialog::CopyBlockMode);
    std::string error;
    const auto result = TestUtil::runJournal(
        "run\ndialog qorfmt_config_selectfile.dlg\nselect FILE_LIST 0\n",
        [&] {
            try {
                copy.show();
            } catch (const std::exception& e) {
                error = e.what();
            }
        },
        site.site());
    EXPECT_JOURNAL_PASSES(result);
    EXPECT_NE(error.find(site.document("bad.fordef").string()), std::string::npos) << error;
}

} // namespace
