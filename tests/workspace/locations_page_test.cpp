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

} // namespace
