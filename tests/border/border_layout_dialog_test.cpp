// The border layout dialog's main page: ID checks, required blocks and second languages.

#include "border_site.h"

#include "model/border_layout.h"

#include <nxsim/platform.h>

#include <gtest/gtest.h>

namespace {

using BorderLayoutDialog = TestUtil::BorderDialogRun;
using TestUtil::editBorder;
using TestUtil::kOpenDocA;

/// kOpenDocA with docB opened first, so that both documents are open and docA is active.
const char* const kOpenDocBThenDocA = R"J(run
dialog qorborder_config_main
  press OPEN_FILE
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 1
    ok
  press OPEN_FILE
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    ok
  expect label FILENAME "docA.fordef"
)J";

TEST_F(BorderLayoutDialog, FillShowsTheLayoutAndEveryBlockOfEveryOpenDocumentSorted) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocBThenDocA) + editBorder(0) + R"J(
    expect title "Border Layout"
    expect value FORMAT_ID "A3"
    expect value DESCRIPTION "Border A3"
    expect value SECOND_LANGUAGES "DE"
    expect items AVAIL_BLOCKS ["PL", "RB", "TB"]
    expect items CORE_REQUIRED ["TB"]
    expect items SH1_REQUIRED []
    expect sensitive MAKE_CORE no
    expect sensitive MAKE_SH1 no
    expect sensitive REMOVE_CORE no
    expect sensitive REMOVE_SH1 no
    cancel
  cancel
)J"));
}

TEST_F(BorderLayoutDialog, EmptyIdIsRefusedWithTheFocusOnTheId) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    set FORMAT_ID ""
    ok
    message error "Validation Error" "Border ID must not be empty."
    expect focus FORMAT_ID
    expect value FORMAT_ID ""
    cancel
  expect items BORDERLIST ["A3", "A4"]
  cancel
)J"));
}

TEST_F(BorderLayoutDialog, NewLayoutWithTheIdOfABorderInAnyOpenDocumentIsRefused) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocBThenDocA) + R"J(
  press NEWBORDER
    dialog qorborder_config_border
    set FORMAT_ID "B1"
    ok
    message error "Duplicate Error" "A border with ID was found. Border ID must be unique."
    expect focus FORMAT_ID
    cancel
  expect items BORDERLIST ["A3", "A4"]
  cancel
)J"));
}

// An existing layout is not checked for duplicates, on purpose: renaming it onto another
// border's ID is accepted.
TEST_F(BorderLayoutDialog, TheSameIdTypedIntoAnExistingLayoutIsAccepted) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocBThenDocA) + editBorder(1) + R"J(
    set FORMAT_ID "B1"
    ok
  expect items BORDERLIST ["A3", "B1"]
  cancel
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

TEST_F(BorderLayoutDialog, EmptySecondLanguagesAreStoredAsAnEmptyList) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    set SECOND_LANGUAGES ""
    ok
  press SAVE_FILE
  cancel
)J"));
    EXPECT_TRUE(onDisk("docA.fordef")->getBorderLayout("A3")->secondLanguages.empty());
}

TEST_F(BorderLayoutDialog, SecondLanguagesAreStoredOnePerLine) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(1) + R"J(
    set SECOND_LANGUAGES "FR\nIT"
    ok
  press SAVE_FILE
  cancel
)J"));
    EXPECT_EQ(onDisk("docA.fordef")->getBorderLayout("A4")->secondLanguages,
              (std::vector<std::string>{"FR", "IT"}));
}

// The available list is not filtered against the required lists, and moving checks nothing: a
// block made core twice is stored twice. Both are intended.
TEST_F(BorderLayoutDialog, ACoreBlockStillShowsAsAvailableAndMakingItCoreAgainStoresItTwice) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    expect items AVAIL_BLOCKS ["PL", "TB"]
    expect items CORE_REQUIRED ["TB"]
    select AVAIL_BLOCKS 1
    expect sensitive MAKE_CORE yes
    expect sensitive MAKE_SH1 yes
    press MAKE_CORE
    expect items CORE_REQUIRED ["TB", "TB"]
    expect items AVAIL_BLOCKS ["PL"]
    ok
  press SAVE_FILE
  cancel
)J"));
    EXPECT_EQ(onDisk("docA.fordef")->getBorderLayout("A3")->coreRequiredBlocks,
              (std::vector<std::string>{"TB", "TB"}));
}

TEST_F(BorderLayoutDialog, MovingBlocksChangesTheLayoutOnlyOnOk) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    select AVAIL_BLOCKS 0
    press MAKE_SH1
    expect items SH1_REQUIRED ["PL"]
    expect items AVAIL_BLOCKS ["TB"]
    select CORE_REQUIRED 0
    expect sensitive REMOVE_CORE yes
    press REMOVE_CORE
    expect items CORE_REQUIRED []
    expect items AVAIL_BLOCKS ["TB", "TB"]
    cancel
  select BORDERLIST 0
  press EDITBORDER
    dialog qorborder_config_border
    expect items CORE_REQUIRED ["TB"]
    expect items SH1_REQUIRED []
    select AVAIL_BLOCKS 0
    press MAKE_SH1
    select SH1_REQUIRED 0
    expect sensitive REMOVE_SH1 yes
    press REMOVE_SH1
    select AVAIL_BLOCKS 1
    press MAKE_SH1
    ok
  press SAVE_FILE
  cancel
)J"));
    const auto a3 = onDisk("docA.fordef")->getBorderLayout("A3");
    EXPECT_EQ(a3->coreRequiredBlocks, (std::vector<std::string>{"TB"}));
    EXPECT_EQ(a3->sheet1RequiredBlocks, (std::vector<std::string>{"PL"}));
}

TEST_F(BorderLayoutDialog, OkWritesEveryControlOfEveryPage) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(1) + R"J(
    set FORMAT_ID "A4M"
    set DESCRIPTION "ISO A4"
    set CATEGORY "ISO"
    choose UNITS "Millimeters"
    set LAYER 250
    set BL_X_LOC 20
    set BL_Y_LOC 10
    set TR_X_LOC 10.5
    set TR_Y_LOC 9.5
    choose HORZ_TYPE 1
    choose VERT_TYPE 2
    choose ZONE_START "Bottom right"
    ok
  press SAVE_FILE
  cancel
)J"));
    const auto a4 = onDisk("docA.fordef")->getBorderLayout("A4M");
    ASSERT_TRUE(a4);
    EXPECT_EQ(a4->description, "ISO A4");
    EXPECT_EQ(a4->category, "ISO");
    EXPECT_EQ(a4->units, QorBorder::Millimeters);
    EXPECT_EQ(a4->layer, 250);
    EXPECT_EQ(a4->bottomLeft, (QorBorder::Point3{20, 10, 0}));
    EXPECT_EQ(a4->topRight, (QorBorder::Point3{10.5, 9.5, 0}));
    EXPECT_EQ(a4->horizontalZoneType, 1);
    EXPECT_EQ(a4->verticalZoneType, 2);
    EXPECT_EQ(a4->zoneStart, 3);
}

TEST_F(BorderLayoutDialog, CancelWritesNothingButTheDrawingSizes) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    set DESCRIPTION "changed"
    choose UNITS 1
    set LAYER 7
    choose ZONE_START 2
    cancel
  select BORDERLIST 0
  press EDITBORDER
    dialog qorborder_config_border
    expect value DESCRIPTION "Border A3"
    expect index UNITS 0
    expect value LAYER 0
    expect index ZONE_START 0
    cancel
  expect sensitive SAVE_FILE no
  cancel
)J"));
}

} // namespace
