#include "main_dialog_run.h"

#include "model/definition_document.h"

#include <nxsim/platform.h>

#include <gtest/gtest.h>

namespace {

using LocationsPage = TestUtil::MainDialogRun;
using TestUtil::kOpenDocA;

TEST_F(LocationsPage, WithoutActiveDocumentTheListIsEmptyAndEveryButtonInsensitive) {
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  expect items LOCATION_LIST []
  expect sensitive LOCATION_LIST no
  expect sensitive NEW_LOC no
  expect sensitive EDIT_LOC no
  expect sensitive COPY_LOC no
  expect sensitive DELETE_LOC no
  expect sensitive MOVE_LOC_UP no
  expect sensitive MOVE_LOC_DOWN no
  cancel
)J"));
}

TEST_F(LocationsPage, LocationOfAnyStyleShowsAnyStyle) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect value BLOCK_FILTER "TB"
  expect items LOCATION_LIST ["L1(Style ID: Any Style)", "L2(Style ID: S1)", "L3(Style ID: Any Style)"]
  cancel
)J"));
}

TEST_F(LocationsPage, ChangingTheFilterShowsOnlyThatBlocksLocationsInTheDocumentsOrder) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect items BLOCK_FILTER ["TB", "PL"]
  choose BLOCK_FILTER "PL"
  expect items LOCATION_LIST ["P1(Style ID: Any Style)"]
  choose BLOCK_FILTER 0
  expect items LOCATION_LIST ["L1(Style ID: Any Style)", "L2(Style ID: S1)", "L3(Style ID: Any Style)"]
  cancel
)J"));
}

TEST_F(LocationsPage, FirstLocationCannotMoveUpAndLastCannotMoveDown) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect sensitive MOVE_LOC_UP no
  expect sensitive MOVE_LOC_DOWN no
  select LOCATION_LIST 0
  expect sensitive MOVE_LOC_UP no
  expect sensitive MOVE_LOC_DOWN yes
  select LOCATION_LIST 2
  expect sensitive MOVE_LOC_UP yes
  expect sensitive MOVE_LOC_DOWN no
  cancel
)J"));
}

TEST_F(LocationsPage, MovingALocationSwapsValuesAndLeavesNoSelection) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select LOCATION_LIST 0
  press MOVE_LOC_DOWN
  expect items LOCATION_LIST ["L2(Style ID: S1)", "L1(Style ID: Any Style)", "L3(Style ID: Any Style)"]
  expect selected LOCATION_LIST -1
  expect sensitive SAVE_FILE yes
  select LOCATION_LIST 2
  press MOVE_LOC_UP
  expect items LOCATION_LIST ["L2(Style ID: S1)", "L3(Style ID: Any Style)", "L1(Style ID: Any Style)"]
  press SAVE_FILE
  cancel
)J"));
    std::vector<std::string> ids;
    for (const auto& location : onDisk("docA.fordef")->blockLocations("TB", "")) {
        ids.push_back(location->id);
    }
    EXPECT_EQ(ids, (std::vector<std::string>{"L2", "L3", "L1"}));
}

TEST_F(LocationsPage, DeletingALocationRemovesItAtOnce) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect sensitive DELETE_LOC no
  select LOCATION_LIST 1
  expect sensitive DELETE_LOC yes
  press DELETE_LOC
  expect items LOCATION_LIST ["L1(Style ID: Any Style)", "L3(Style ID: Any Style)"]
  expect sensitive DELETE_LOC no
  cancel
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

TEST_F(LocationsPage, NewMarksTheDocumentModifiedAndAddsTheLocationAtTheEndOfItsBlocksList) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect sensitive SAVE_FILE no
  expect sensitive NEW_LOC yes
  press NEW_LOC
    dialog qorborder_config_block_location
    expect value BLOCK_ID "TB"
    set ID "L9"
    set DIALOG_TEXT "Top left of the frame"
    set OFFSET_X "10"
    set OFFSET_Y "-10"
    ok
  expect items LOCATION_LIST ["L1(Style ID: Any Style)", "L2(Style ID: S1)", "L3(Style ID: Any Style)", "L9(Style ID: Any Style)"]
  expect selected LOCATION_LIST -1
  expect sensitive SAVE_FILE yes
  press SAVE_FILE
  cancel
)J"));
    const auto saved = onDisk("docA.fordef")->blockLocations("TB", "");
    ASSERT_EQ(saved.size(), 4u);
    EXPECT_EQ(saved[3]->id, "L9");
    EXPECT_EQ(saved[3]->blockId, "TB");
    EXPECT_EQ(saved[3]->dialogText, "Top left of the frame");
    EXPECT_EQ(saved[3]->offsetX, "10");
    EXPECT_EQ(saved[3]->offsetY, "-10");
}

TEST_F(LocationsPage, NewLocationGivenAnotherBlockIsAddedToThatBlocksList) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press NEW_LOC
    dialog qorborder_config_block_location
    choose BLOCK_ID "PL"
    set ID "P2"
    set DIALOG_TEXT "Above the title block"
    choose ASSOCIATE_TO "TB"
    ok
  expect value BLOCK_FILTER "TB"
  expect items LOCATION_LIST ["L1(Style ID: Any Style)", "L2(Style ID: S1)", "L3(Style ID: Any Style)"]
  choose BLOCK_FILTER "PL"
  expect items LOCATION_LIST ["P1(Style ID: Any Style)", "P2(Style ID: Any Style)"]
  cancel
)J"));
}

TEST_F(LocationsPage, CancelledNewAddsNothingAndLeavesTheDocumentUnmodified) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press NEW_LOC
    dialog qorborder_config_block_location
    set ID "L9"
    set DIALOG_TEXT "Never added"
    cancel
  expect items LOCATION_LIST ["L1(Style ID: Any Style)", "L2(Style ID: S1)", "L3(Style ID: Any Style)"]
  expect sensitive SAVE_FILE no
  cancel
)J"));
}

TEST_F(LocationsPage, NewNeedsADocumentAndAKnownBlockLayout) {
    // Nothing is open: the new document knows no block layout, and neither does the manager.
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  expect sensitive NEW_LOC no
  press NEW_FILE
  expect sensitive LOCATION_LIST yes
  expect sensitive NEW_LOC no
  cancel
)J"));
}

// A new document reaches the document manager only through Save As: then, and not before, its
// blocks are offered in the filter, and their locations can be made, listed, edited and deleted.
TEST_F(LocationsPage, ABlockOfANewDocumentIsOfferedOnceSavedAndItsLocationsCanBeManaged) {
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  press NEW_FILE
  press NEWBLOCK
    dialog qorborder_config_block
    set BLOCK_ID "PB"
    ok
  expect items BLOCK_FILTER []
  expect sensitive NEW_LOC no
  press SAVEAS_FILE
    dialog qorfmt_config_selectfile.dlg
    set FILE_SELECTION "plantblocks"
    ok
  expect label FILENAME "plantblocks.fordef"
  expect items BLOCK_FILTER ["PB"]
  expect value BLOCK_FILTER "PB"
  expect sensitive NEW_LOC yes
  press NEW_LOC
    dialog qorborder_config_block_location
    expect value BLOCK_ID "PB"
    set ID "P1"
    set DIALOG_TEXT "Bottom right"
    set OFFSET_X "0"
    set OFFSET_Y "0"
    ok
  expect items LOCATION_LIST ["P1(Style ID: Any Style)"]
  select LOCATION_LIST 0
  press EDIT_LOC
    dialog qorborder_config_block_location
    expect value ID "P1"
    set DIALOG_TEXT "Bottom right corner"
    ok
  expect items LOCATION_LIST ["P1(Style ID: Any Style)"]
  press SAVE_FILE
  select LOCATION_LIST 0
  press DELETE_LOC
  expect items LOCATION_LIST []
  cancel
)J"));
    const auto saved = onDisk("plantblocks.fordef")->blockLocations("PB", "");
    ASSERT_EQ(saved.size(), 1u);
    EXPECT_EQ(saved[0]->dialogText, "Bottom right corner");
}

TEST_F(LocationsPage, EditAndCopyNeedASelectedLocation) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect sensitive EDIT_LOC no
  expect sensitive COPY_LOC no
  select LOCATION_LIST 2
  expect sensitive EDIT_LOC yes
  expect sensitive COPY_LOC yes
  select BORDERLIST 0
  expect selected LOCATION_LIST -1
  expect sensitive EDIT_LOC no
  expect sensitive COPY_LOC no
  cancel
)J"));
}

TEST_F(LocationsPage, EditConfirmedMarksTheDocumentModifiedAndCancelledDoesNot) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select LOCATION_LIST 0
  press EDIT_LOC
    dialog qorborder_config_block_location
    set DIALOG_TEXT "Changed, then cancelled"
    cancel
  expect sensitive SAVE_FILE no
  expect selected LOCATION_LIST -1
  select LOCATION_LIST 0
  press EDIT_LOC
    dialog qorborder_config_block_location
    set DIALOG_TEXT "Bottom right"
    ok
  expect sensitive SAVE_FILE yes
  cancel
)J"));
}

} // namespace
