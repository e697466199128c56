// The borders page's New, Edit, Copy and Copy From Document, through the border layout dialog.

#include "border_site.h"

#include "model/border_layout.h"

#include <nxsim/platform.h>

#include <gtest/gtest.h>

namespace {

using BordersPageActions = TestUtil::BorderDialogRun;
using TestUtil::borderIds;
using TestUtil::kOpenDocA;

TEST_F(BordersPageActions, OkOfANewBorderAddsItAndMarksTheDocumentModified) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect sensitive SAVE_FILE no
  press NEWBORDER
    dialog qorborder_config_border
    expect value FORMAT_ID ""
    expect items FRAME_SIZES []
    set FORMAT_ID "NEWB"
    set DESCRIPTION "A new border"
    ok
  expect items BORDERLIST ["A3", "A4", "NEWB"]
  expect sensitive SAVE_FILE yes
  press SAVE_FILE
  cancel
)J"));
    const auto saved = onDisk("docA.fordef");
    EXPECT_EQ(borderIds(*saved), (std::vector<std::string>{"A3", "A4", "NEWB"}));
    EXPECT_EQ(saved->getBorderLayout("NEWB")->description, "A new border");
}

TEST_F(BordersPageActions, CancelOfANewBorderAddsNothing) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press NEWBORDER
    dialog qorborder_config_border
    set FORMAT_ID "NEWB"
    cancel
  expect items BORDERLIST ["A3", "A4"]
  expect sensitive SAVE_FILE no
  cancel
)J"));
}

TEST_F(BordersPageActions, CopyKeepsTheSourceIdAndIsRefusedUntilItIsChanged) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select BORDERLIST 0
  press COPYBORDER
    dialog qorborder_config_border
    expect value FORMAT_ID "A3"
    expect items FRAME_SIZES ["A3 landscape", "A3 from elsewhere"]
    ok
    message error "Duplicate Error" "A border with ID was found. Border ID must be unique."
    expect focus FORMAT_ID
    set FORMAT_ID "A3COPY"
    ok
  expect items BORDERLIST ["A3", "A4", "A3COPY"]
  press SAVE_FILE
  cancel
)J"));
    const auto saved = onDisk("docA.fordef");
    EXPECT_EQ(saved->getBorderLayout("A3COPY")->drawingSizeDescriptions(),
              saved->getBorderLayout("A3")->drawingSizeDescriptions());
}

TEST_F(BordersPageActions, EditChangesTheBorderInPlaceAndMarksTheDocumentModified) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + TestUtil::editBorder(1) + R"J(
    expect value FORMAT_ID "A4"
    set FORMAT_ID "A4NEW"
    ok
  expect items BORDERLIST ["A3", "A4NEW"]
  expect sensitive SAVE_FILE yes
  select BORDERLIST 1
  press EDITBORDER
    dialog qorborder_config_border
    expect value FORMAT_ID "A4NEW"
    cancel
  press SAVE_FILE
  cancel
)J"));
    EXPECT_EQ(borderIds(*onDisk("docA.fordef")), (std::vector<std::string>{"A3", "A4NEW"}));
}

// Copy From Document shows the border layout dialog twice on purpose, and only the second
// showing's OK adds the copy; an OK in the first showing already marks the document modified.
TEST_F(BordersPageActions, CopyFromDocumentShowsTheDialogTwiceAndCancellingTheSecondAddsNothing) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press COPYBORDERFROM
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    select OBJECT_LIST 0
    ok
    dialog qorborder_config_border
    expect value FORMAT_ID "B1"
    set FORMAT_ID "B1COPY"
    ok
    dialog qorborder_config_border
    expect value FORMAT_ID "B1COPY"
    cancel
  expect items BORDERLIST ["A3", "A4"]
  expect sensitive SAVE_FILE yes
  cancel
)J"));
}

TEST_F(BordersPageActions, CopyFromDocumentAddsTheCopyWhenTheSecondShowingEndsWithOk) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press COPYBORDERFROM
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    select OBJECT_LIST 0
    ok
    dialog qorborder_config_border
    cancel
    dialog qorborder_config_border
    expect value FORMAT_ID "B1"
    ok
    message error "Duplicate Error" "A border with ID was found. Border ID must be unique."
    set FORMAT_ID "B2"
    ok
  expect items BORDERLIST ["A3", "A4", "B2"]
  cancel
)J"));
}

// Copying from another document needs one of its borders: the file alone cannot be confirmed,
// and cancelling the file select dialog opens no border dialog.
TEST_F(BordersPageActions, CopyFromDocumentCannotBeConfirmedWithoutAChosenBorder) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press COPYBORDERFROM
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    expect items OBJECT_LIST ["B1"]
    expect sensitive OK no
    select OBJECT_LIST 0
    expect sensitive OK yes
    cancel
  expect items BORDERLIST ["A3", "A4"]
  expect sensitive SAVE_FILE no
  cancel
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

TEST_F(BordersPageActions, SelectingABorderDeselectsAnySelectedBlockLocationAndTranslation) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select BLOCKLIST 0
  select BORDERLIST 0
  expect selected BLOCKLIST -1
  select LOCATION_LIST 0
  select BORDERLIST 1
  expect selected LOCATION_LIST -1
  select TRANSLATION_LIST 0
  select BORDERLIST 0
  expect selected TRANSLATION_LIST -1
  expect selected BORDERLIST 0
  cancel
)J"));
}

} // namespace
