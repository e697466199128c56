#include "main_dialog_run.h"

#include "model/definition_document.h"
#include "workspace/main_dialog_names.h"

#include <nxsim/journal.h>
#include <nxsim/platform.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace {

namespace Main = QorBorderConf::MainDialogNames;
using MainDialog = TestUtil::MainDialogRun;
using TestUtil::blockIds;
using TestUtil::borderIds;
using TestUtil::kOpenDocA;

TEST_F(MainDialog, WithoutActiveDocumentLabelsReadNoActiveFileAndQuestionMarks) {
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  expect title "Format Definition Configurator"
  expect label FILENAME "No active file"
  expect label LOCATION "???"
  cancel
)J"));
}

TEST_F(MainDialog, WithoutActiveDocumentOnlyNewAndOpenAreUsable) {
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  expect sensitive NEW_FILE yes
  expect sensitive OPEN_FILE yes
  expect sensitive FILEINFO no
  expect sensitive SAVE_FILE no
  expect sensitive SAVEAS_FILE no
  expect sensitive SAVE_ALL no
  expect sensitive MOVE_ITEMS no
  cancel
)J"));
}

TEST_F(MainDialog, NewDocumentIsActiveUntitledAndEmpty) {
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  press NEW_FILE
  expect label FILENAME "Untitled"
  expect label LOCATION ""
  expect sensitive FILEINFO yes
  expect sensitive SAVEAS_FILE yes
  expect sensitive SAVE_FILE no
  expect sensitive BORDERLIST yes
  expect items BORDERLIST []
  expect items BLOCKLIST []
  expect items TRANSLATION_LIST []
  expect sensitive TRANSLATION_LIST yes
  expect sensitive DELETE_TRANSLATION no
  expect sensitive DELETE_LOC no
  cancel
)J"));
}

TEST_F(MainDialog, OpenShowsTheDocumentInLabelsAndLists) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect label FILENAME "docA.fordef"
  expect label LOCATION )J" + nxsim::quoteJournalText((site.site() / "format_defs").string()) +
                              R"J(
  expect items BORDERLIST ["A3", "A4"]
  expect items BLOCKLIST ["TB", "PL"]
  expect items BLOCK_FILTER ["TB", "PL"]
  expect value BLOCK_FILTER "TB"
  expect items LOCATION_LIST ["L1(Style ID: Any Style)", "L2(Style ID: S1)", "L3(Style ID: Any Style)"]
  expect items TRANSLATION_LIST ["DE_TB_TITLE_Drawing", "FR_TB_TITLE_Drawing"]
  expect sensitive SAVE_FILE no
  cancel
)J"));
}

TEST_F(MainDialog, OpenDialogShowsOpenModeTexts) {
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  press OPEN_FILE
    dialog qorfmt_config_selectfile.dlg
    expect title "Open File"
    expect label FILE_SELECTION "File To Open"
    expect cue "Select file to open"
    expect visible OBJECT_GROUP no
    expect items FILE_LIST ["docA.fordef", "docB.fordef"]
    expect sensitive OK no
    cancel
  expect label FILENAME "No active file"
  cancel
)J"));
}

TEST_F(MainDialog, CancelledOpenChangesNothing) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press OPEN_FILE
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 1
    cancel
  expect label FILENAME "docA.fordef"
  cancel
)J"));
}

TEST_F(MainDialog, OpenByDoubleClickIsAccepted) {
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  press OPEN_FILE
    dialog qorfmt_config_selectfile.dlg
    double-click FILE_LIST 1
  expect label FILENAME "docB.fordef"
  expect items BORDERLIST ["B1"]
  cancel
)J"));
}

TEST_F(MainDialog, SaveWritesTheDocumentUnderTheBusyIndicator) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select BORDERLIST 0
  press DELETEBORDER
  expect items BORDERLIST ["A4"]
  expect sensitive SAVE_FILE yes
  expect sensitive SAVE_ALL yes
  expect stoplight ""
  press SAVE_FILE
  expect stoplight "1 0"
  expect sensitive SAVE_FILE no
  expect sensitive SAVE_ALL no
  cancel
)J"));
    EXPECT_EQ(borderIds(*onDisk("docA.fordef")), (std::vector<std::string>{"A4"}));
}

TEST_F(MainDialog, SaveAsMakesTheCopyActiveAndLeavesThePreviousDocumentUnchanged) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select BORDERLIST 0
  press DELETEBORDER
  press SAVEAS_FILE
    dialog qorfmt_config_selectfile.dlg
    expect title "Save As File"
    expect label FILE_SELECTION "File To Save As"
    expect cue "Enter filename to save as"
    expect sensitive OK yes
    set FILE_SELECTION "docC"
    ok
  expect stoplight "1 0"
  expect label FILENAME "docC.fordef"
  expect sensitive SAVE_FILE no
  expect sensitive SAVE_ALL yes
  cancel
)J"));
    EXPECT_EQ(borderIds(*onDisk("docC.fordef")), (std::vector<std::string>{"A4"}));
    EXPECT_EQ(borderIds(*onDisk("docA.fordef")), (std::vector<std::string>{"A3", "A4"}))
        << "the previously active document is not saved by save-as";
}

TEST_F(MainDialog, PreviousDocumentStaysModifiedAfterSaveAsAndSaveAllSavesIt) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select BORDERLIST 0
  press DELETEBORDER
  press SAVEAS_FILE
    dialog qorfmt_config_selectfile.dlg
    set FILE_SELECTION "docC"
    ok
  expect sensitive SAVE_ALL yes
  press SAVE_ALL
  expect stoplight "1 0 1 0"
  expect sensitive SAVE_ALL no
  cancel
)J"));
    EXPECT_EQ(borderIds(*onDisk("docA.fordef")), (std::vector<std::string>{"A4"}));
}

// Refusing a file that exists but that no open document holds is intended: saving over it would
// silently replace a document nobody has looked at.
TEST_F(MainDialog, SaveAsOntoAnExistingFileThatIsNotOpenIsRefused) {
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  press NEW_FILE
  press SAVEAS_FILE
    dialog qorfmt_config_selectfile.dlg
    set FILE_SELECTION "docB"
    ok
  message error "Error" "Document name already exists."
  expect label FILENAME "Untitled"
  cancel
)J"));
    EXPECT_EQ(borderIds(*onDisk("docB.fordef")), (std::vector<std::string>{"B1"}));
}

TEST_F(MainDialog, SaveAsCancelledSavesNothing) {
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  press NEW_FILE
  press SAVEAS_FILE
    dialog qorfmt_config_selectfile.dlg
    set FILE_SELECTION "never"
    cancel
  expect label FILENAME "Untitled"
  expect file "format_defs/never.fordef" missing
  cancel
)J"));
}

TEST_F(MainDialog, SaveAsWithEmptyNameAsksForAName) {
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  press NEW_FILE
  press SAVEAS_FILE
    dialog qorfmt_config_selectfile.dlg
    ok
    message error "Validation Error" "File must not be empty."
    set FILE_SELECTION "named"
    ok
  expect label FILENAME "named.fordef"
  expect file "format_defs/named.fordef" exists
  cancel
)J"));
}

TEST_F(MainDialog, FileSummaryWritesTheDocumentToTheListingWindow) {
    const auto document = onDisk("docA.fordef");
    std::string expected =
        "Contents of " + site.document("docA.fordef").string() + "\n \nBorders:\n \n";
    for (const auto& border : document->borderLayoutTypes(QorBorder::AllUnits)) {
        expected += border->informationString() + "\n";
    }
    expected += " \nBlocks:\n \n";
    for (const auto& block : document->blockLayouts(QorBorder::AllUnits)) {
        expected += block->informationString() + "\n";
    }
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + "  press FILE_SUMMARY\n  expect listing " +
                              nxsim::quoteJournalText(expected + "\n") + "\n  cancel\n"));
    EXPECT_TRUE(nxsim::listingOpen());
}

/// The main dialog's four lists, of which one at most has a selection.
const char* const kPageLists[] = {Main::BORDERLIST, Main::BLOCKLIST, Main::LOCATION_LIST,
                                  Main::TRANSLATION_LIST};

/// Journal lines for the open main dialog, each indented below its `dialog` line.
std::string mainDialogLines(std::initializer_list<std::string> lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += "  " + line + "\n";
    }
    return text;
}

TEST_F(MainDialog, MoveIsSensitiveExactlyWhileAListHasASelection) {
    std::string journal = kOpenDocA + mainDialogLines({"expect sensitive MOVE_ITEMS no"});
    for (const std::string list : kPageLists) {
        // `deselect` fires no event; pressing the summary runs the update functions.
        journal += mainDialogLines({"select " + list + " 0", "expect sensitive MOVE_ITEMS yes",
                                    "deselect " + list, "press FILE_SUMMARY",
                                    "expect sensitive MOVE_ITEMS no"});
    }
    EXPECT_JOURNAL_PASSES(run(journal + mainDialogLines({"cancel"})));
}

/// Selecting a row of `selected` must clear the selection of `cleared`.
struct ListPair {
    const char* selected;
    const char* cleared;
};

std::vector<ListPair> everyOrderedPairOfLists() {
    std::vector<ListPair> pairs;
    for (const char* selected : kPageLists) {
        for (const char* cleared : kPageLists) {
            if (selected != cleared) {
                pairs.push_back({selected, cleared});
            }
        }
    }
    return pairs;
}

void PrintTo(const ListPair& lists, std::ostream* out) {
    *out << lists.selected << " clears " << lists.cleared;
}

std::string namePair(const ::testing::TestParamInfo<ListPair>& row) {
    return std::string(row.param.selected) + "_clears_" + row.param.cleared;
}

class ListSelection : public TestUtil::MainDialogRun,
                      public ::testing::WithParamInterface<ListPair> {};

TEST_P(ListSelection, SelectingARowClearsTheOtherListsSelection) {
    const std::string selected = GetParam().selected;
    const std::string cleared = GetParam().cleared;
    const std::string journal =
        kOpenDocA +
        mainDialogLines({"select " + cleared + " 1", "expect selected " + cleared + " 1",
                         "select " + selected + " 0", "expect selected " + selected + " 0",
                         "expect selected " + cleared + " -1", "cancel"});
    EXPECT_JOURNAL_PASSES(run(journal));
}

INSTANTIATE_TEST_SUITE_P(EveryOrderedPair, ListSelection,
                         ::testing::ValuesIn(everyOrderedPairOfLists()), namePair);

TEST_F(MainDialog, MoveOffersEveryFileButTheActiveDocument) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select BLOCKLIST 0
  press MOVE_ITEMS
    dialog qorfmt_config_selectfile.dlg
    expect title "Open File"
    expect items FILE_LIST ["docB.fordef"]
    cancel
  expect items BLOCKLIST ["TB", "PL"]
  cancel
)J"));
}

TEST_F(MainDialog, MoveBlockAddsItToTheTargetAndRemovesItHere) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select BLOCKLIST 1
  press MOVE_ITEMS
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    ok
  expect items BLOCKLIST ["TB"]
  expect items BLOCK_FILTER ["TB", "RB", "PL"]
  press SAVE_ALL
  cancel
)J"));
    EXPECT_EQ(blockIds(*onDisk("docA.fordef")), (std::vector<std::string>{"TB"}));
    EXPECT_EQ(blockIds(*onDisk("docB.fordef")), (std::vector<std::string>{"RB", "PL"}));
}

TEST_F(MainDialog, MoveBorderAddsItToTheTargetAndRemovesItHere) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select BORDERLIST 0
  press MOVE_ITEMS
    dialog qorfmt_config_selectfile.dlg
    double-click FILE_LIST 0
  expect items BORDERLIST ["A4"]
  press SAVE_ALL
  cancel
)J"));
    EXPECT_EQ(borderIds(*onDisk("docA.fordef")), (std::vector<std::string>{"A4"}));
    EXPECT_EQ(borderIds(*onDisk("docB.fordef")), (std::vector<std::string>{"B1", "A3"}));
}

TEST_F(MainDialog, MoveLocationMovesTheSelectedLocationOfTheFilterBlock) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select LOCATION_LIST 1
  press MOVE_ITEMS
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    ok
  expect items LOCATION_LIST ["L1(Style ID: Any Style)", "L3(Style ID: Any Style)"]
  press SAVE_ALL
  cancel
)J"));
    const auto target = onDisk("docB.fordef")->blockLocations("TB", "");
    ASSERT_EQ(target.size(), 1u);
    EXPECT_EQ(target[0]->id, "L2");
    EXPECT_EQ(target[0]->styleId, "S1");
}

TEST_F(MainDialog, MovingATranslationTheTargetHasKeepsTheTargetsText) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select TRANSLATION_LIST 0
  press MOVE_ITEMS
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    ok
  expect items TRANSLATION_LIST ["FR_TB_TITLE_Drawing"]
  press SAVE_ALL
  cancel
)J"));
    std::map<std::string, std::string> source;
    std::map<std::string, std::string> target;
    onDisk("docA.fordef")->fieldTranslations(source);
    onDisk("docB.fordef")->fieldTranslations(target);
    EXPECT_EQ(source, (std::map<std::string, std::string>{{"FR_TB_TITLE_Drawing", "Dessin"}}));
    EXPECT_EQ(target, (std::map<std::string, std::string>{{"DE_TB_TITLE_Drawing", "Zeichnung B"}}));
}

TEST_F(MainDialog, MovingANewTranslationAddsItToTheTarget) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select TRANSLATION_LIST 1
  press MOVE_ITEMS
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    ok
  press SAVE_ALL
  cancel
)J"));
    std::map<std::string, std::string> target;
    onDisk("docB.fordef")->fieldTranslations(target);
    EXPECT_EQ(target, (std::map<std::string, std::string>{{"DE_TB_TITLE_Drawing", "Zeichnung B"},
                                                          {"FR_TB_TITLE_Drawing", "Dessin"}}));
}

TEST_F(MainDialog, DocumentsStayOpenAndModifiedForTheNextRun) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select BORDERLIST 0
  press DELETEBORDER
  cancel
run
dialog qorborder_config_main
  expect label FILENAME "No active file"
  expect sensitive SAVE_ALL yes
  press OPEN_FILE
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    ok
  expect items BORDERLIST ["A4"]
  cancel
)J"));
}

TEST_F(MainDialog, UnreadableDocumentEndsTheRunWithOneErrorNamingTheFile) {
    site.dir().write("site/format_defs/bad.fordef", "<fordef version=\"1\"><border>");
    const auto result = run(R"J(run
dialog qorborder_config_main
  press OPEN_FILE
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    ok
)J");
    const auto messages = nxsim::shownMessages();
    ASSERT_EQ(messages.size(), 1u) << result.message;
    EXPECT_EQ(messages[0].title, "Error");
    EXPECT_NE(messages[0].text.find(site.document("bad.fordef").string()), std::string::npos)
        << messages[0].text;
}

} // namespace
