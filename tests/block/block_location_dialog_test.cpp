// The block location dialog, end to end: opened from the locations page of the configurator
// library as NX runs it, and shown on its own where the page cannot reach a state.

#include "main_dialog_run.h"
#include "styled_blocks.h"

#include "block/block_location_dialog.h"
#include "block/block_location_dialog_names.h"
#include "model/def_document_manager.h"
#include "testutil/journal.h"

#include <nxsim/platform.h>
#include <uf.h>

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using QorBorder::BlockLocation;
using TestUtil::kOpenDocA;

BlockLocation location(const std::string& blockId, const std::string& id,
                       const std::string& styleId, const std::string& associatedBlockId = "") {
    BlockLocation result;
    result.blockId = blockId;
    result.id = id;
    result.styleId = styleId;
    result.associatedBlockId = associatedBlockId;
    result.dialogText = "Location " + id;
    return result;
}

/// docA with styled blocks; TB's locations are L1 (any style), L2 (S1), L3 (any style) and L4
/// (FOLLOW, placed relative to PL, with every other value set).
class BlockLocationDialog : public TestUtil::MainDialogRun {
protected:
    BlockLocationDialog() {
        BlockLocation l4 = location("TB", "L4", "FOLLOW", "PL");
        l4.dialogText = "Title block";
        l4.offsetX = "-10";
        l4.offsetY = "5.5";
        l4.attachCorner = 3;
        l4.associatedCorner = 1;
        l4.overflowDirection = 2;
        TestUtil::giveBlocksStylesAndFields(site.document("docA.fordef"), {l4});
    }

    /// The locations of `blockId` in docA as saved.
    std::vector<BlockLocation> savedLocations(const std::string& blockId) const {
        std::vector<BlockLocation> result;
        for (const auto& saved : onDisk("docA.fordef")->blockLocations(blockId, "")) {
            result.push_back(*saved);
        }
        return result;
    }

    /// Shows the dialog in this process on `shown`, with docA open in the document manager.
    nxsim::JournalResult showAlone(const std::string& journal,
                                   const boost::shared_ptr<BlockLocation>& shown, bool editMode) {
        UF_initialize();
        QorBorder::DefDocumentManager().getDocument(site.document("docA.fordef"));
        const auto result = TestUtil::runJournal(journal, [&] {
            QorBorderConf::BlockLocationDialog dialog(shown, editMode);
            response = dialog.show();
        });
        UF_terminate();
        return result;
    }

    NXOpen::UIStyler::DialogResponse response = NXOpen::UIStyler::DialogResponseCancel;
};

TEST_F(BlockLocationDialog, EditShowsEveryStoredValue) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select LOCATION_LIST 3
  press EDIT_LOC
    dialog qorborder_config_block_location
    expect title "Block Location"
    expect value ID "L4"
    expect value DIALOG_TEXT "Title block"
    expect items BLOCK_ID ["TB", "PL"]
    expect value BLOCK_ID "TB"
    expect items BLOCK_STYLE ["Any Style", "S1", "FOLLOW"]
    expect value BLOCK_STYLE "FOLLOW"
    expect items ASSOCIATE_TO ["Drawing", "PL"]
    expect value ASSOCIATE_TO "PL"
    expect value ATTACH_CORNER "Bottom right"
    expect value ASSOCIATED_CORNER "Top right"
    expect value OFFSET_X "-10"
    expect value OFFSET_Y "5.5"
    expect value OVERFLOW_DIRECTION "Left"
    cancel
  cancel
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

TEST_F(BlockLocationDialog, OkWritesEveryControlIntoTheLocation) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select LOCATION_LIST 0
  press EDIT_LOC
    dialog qorborder_config_block_location
    set ID "L1B"
    set DIALOG_TEXT "Bottom right of the frame"
    choose BLOCK_STYLE "S1"
    choose ASSOCIATE_TO "PL"
    choose ATTACH_CORNER "Bottom right"
    choose ASSOCIATED_CORNER "Bottom left"
    set OFFSET_X "not a number"
    set OFFSET_Y ""
    choose OVERFLOW_DIRECTION "Down"
    ok
  expect items LOCATION_LIST ["L1B(Style ID: S1)", "L2(Style ID: S1)", "L3(Style ID: Any Style)", "L4(Style ID: FOLLOW)"]
  expect sensitive SAVE_FILE yes
  press SAVE_FILE
  cancel
)J"));
    BlockLocation expected = location("TB", "L1B", "S1", "PL");
    expected.dialogText = "Bottom right of the frame";
    expected.offsetX = "not a number";
    expected.attachCorner = 3;
    expected.associatedCorner = 2;
    expected.overflowDirection = 1;
    EXPECT_EQ(savedLocations("TB").at(0), expected);
}

TEST_F(BlockLocationDialog, CancelLeavesTheLocationUntouchedAndTheDocumentUnmodified) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select LOCATION_LIST 3
  press EDIT_LOC
    dialog qorborder_config_block_location
    set ID "CHANGED"
    choose BLOCK_ID "PL"
    message error "Error" "The menu has no entry 'PL' (its entries: 'Drawing', 'TB'); it keeps 'Drawing'."
    choose ATTACH_CORNER 0
    set OFFSET_X "1"
    cancel
  expect items LOCATION_LIST ["L1(Style ID: Any Style)", "L2(Style ID: S1)", "L3(Style ID: Any Style)", "L4(Style ID: FOLLOW)"]
  expect sensitive SAVE_FILE no
  select LOCATION_LIST 3
  press EDIT_LOC
    dialog qorborder_config_block_location
    expect value ID "L4"
    expect value BLOCK_ID "TB"
    expect value ATTACH_CORNER "Bottom right"
    expect value OFFSET_X "-10"
    cancel
  cancel
)J"));
}

TEST_F(BlockLocationDialog, EmptyIdIsRefusedBeforeEmptyDialogText) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press NEW_LOC
    dialog qorborder_config_block_location
    expect value ID ""
    ok
    message error "Validation Error" "ID must not be empty."
    expect focus ID
    set ID "L9"
    ok
    message error "Validation Error" "Dialog text must not be empty."
    expect focus DIALOG_TEXT
    set DIALOG_TEXT "Somewhere"
    ok
  expect items LOCATION_LIST ["L1(Style ID: Any Style)", "L2(Style ID: S1)", "L3(Style ID: Any Style)", "L4(Style ID: FOLLOW)", "L9(Style ID: Any Style)"]
  cancel
)J"));
}

TEST_F(BlockLocationDialog,
       NewLocationWithTheIdAndBlockOfOneInAnyOpenDocumentIsRefusedAsDuplicate) {
    // The new document is not docA, which holds L1 of TB: the check spans every open document.
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press NEW_FILE
  expect value BLOCK_FILTER "TB"
  press NEW_LOC
    dialog qorborder_config_block_location
    set ID "L1"
    set DIALOG_TEXT "Again"
    ok
    message error "Duplicate Error" "A location with same ID for block ID already exists."
    expect focus ID
    expect value ID "L1"
    expect value DIALOG_TEXT "Again"
    choose BLOCK_ID "PL"
    ok
  expect items LOCATION_LIST []
  choose BLOCK_FILTER "PL"
  expect items LOCATION_LIST ["L1(Style ID: Any Style)"]
  cancel
)J"));
}

TEST_F(BlockLocationDialog, EditedLocationKeepingItsIdAndBlockIsAccepted) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select LOCATION_LIST 1
  press EDIT_LOC
    dialog qorborder_config_block_location
    set DIALOG_TEXT "Same ID, new text"
    ok
  expect sensitive SAVE_FILE yes
  press SAVE_FILE
  cancel
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
    EXPECT_EQ(savedLocations("TB").at(1).dialogText, "Same ID, new text");
}

// Edit mode skips the duplicate check altogether, so an edit may even take the ID of another
// location of its block. Intended: only new and copied locations are checked.
TEST_F(BlockLocationDialog, EditModeAcceptsTheIdOfAnotherLocationOfItsBlock) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select LOCATION_LIST 0
  press EDIT_LOC
    dialog qorborder_config_block_location
    set ID "L2"
    ok
  expect items LOCATION_LIST ["L2(Style ID: Any Style)", "L2(Style ID: S1)", "L3(Style ID: Any Style)", "L4(Style ID: FOLLOW)"]
  cancel
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

TEST_F(BlockLocationDialog, CopyOpenedInNewModeIsRefusedUntilItsIdChanges) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select LOCATION_LIST 1
  press COPY_LOC
    dialog qorborder_config_block_location
    expect value ID "L2"
    expect value BLOCK_STYLE "S1"
    ok
    message error "Duplicate Error" "A location with same ID for block ID already exists."
    set ID "L2B"
    ok
  expect items LOCATION_LIST ["L1(Style ID: Any Style)", "L2(Style ID: S1)", "L3(Style ID: Any Style)", "L4(Style ID: FOLLOW)", "L2B(Style ID: S1)"]
  press SAVE_FILE
  cancel
)J"));
    const std::vector<BlockLocation> saved = savedLocations("TB");
    ASSERT_EQ(saved.size(), 5u);
    BlockLocation expected = saved.at(1);
    expected.id = "L2B";
    EXPECT_EQ(saved.at(4), expected) << "the copy keeps every other value";
}

TEST_F(BlockLocationDialog, CopyOpenedInNewModeIsAcceptedOnceItsBlockChanges) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select LOCATION_LIST 0
  press COPY_LOC
    dialog qorborder_config_block_location
    ok
    message error "Duplicate Error" "A location with same ID for block ID already exists."
    choose BLOCK_ID "PL"
    ok
  expect items LOCATION_LIST ["L1(Style ID: Any Style)", "L2(Style ID: S1)", "L3(Style ID: Any Style)", "L4(Style ID: FOLLOW)"]
  choose BLOCK_FILTER "PL"
  expect items LOCATION_LIST ["P1(Style ID: Any Style)", "L1(Style ID: Any Style)"]
  expect sensitive SAVE_FILE yes
  cancel
)J"));
}

TEST_F(BlockLocationDialog, AssociateToNeverOffersTheBlockSelectedInBlockId) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press NEW_LOC
    dialog qorborder_config_block_location
    expect value BLOCK_ID "TB"
    expect items ASSOCIATE_TO ["Drawing", "PL"]
    choose BLOCK_ID "PL"
    expect items ASSOCIATE_TO ["Drawing", "TB"]
    expect items BLOCK_STYLE ["Any Style", "PS"]
    choose BLOCK_ID "TB"
    expect items ASSOCIATE_TO ["Drawing", "PL"]
    expect items BLOCK_STYLE ["Any Style", "S1", "FOLLOW"]
    cancel
  cancel
)J"));
}

TEST_F(BlockLocationDialog, EmptyStyleShowsAnyStyleAndChoosingAnyStyleStoresTheEmptyStyle) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select LOCATION_LIST 0
  press EDIT_LOC
    dialog qorborder_config_block_location
    expect value BLOCK_STYLE "Any Style"
    expect value ASSOCIATE_TO "Drawing"
    cancel
  select LOCATION_LIST 3
  press EDIT_LOC
    dialog qorborder_config_block_location
    choose BLOCK_STYLE "Any Style"
    choose ASSOCIATE_TO "Drawing"
    ok
  expect items LOCATION_LIST ["L1(Style ID: Any Style)", "L2(Style ID: S1)", "L3(Style ID: Any Style)", "L4(Style ID: Any Style)"]
  press SAVE_FILE
  cancel
)J"));
    EXPECT_EQ(savedLocations("TB").at(3).styleId, "");
    EXPECT_EQ(savedLocations("TB").at(3).associatedBlockId, "");
}

// Choosing a block selects the location's stored style and association again, not what the
// user chose before: intended, the stored values are the reference for every block.
TEST_F(BlockLocationDialog, ChangingTheBlockSelectsTheStoredStyleAndAssociationAgain) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select LOCATION_LIST 1
  press EDIT_LOC
    dialog qorborder_config_block_location
    choose BLOCK_STYLE "FOLLOW"
    choose ASSOCIATE_TO "PL"
    choose BLOCK_ID "TB"
    expect value BLOCK_STYLE "S1"
    expect value ASSOCIATE_TO "Drawing"
    cancel
  cancel
)J"));
}

// The stored style is not one of the newly chosen block's styles: the menu refuses it, the user
// reads why, and the dialog stays usable with everything typed; both menus offer the new block's
// entries.
TEST_F(BlockLocationDialog, StoredStyleTheChosenBlockLacksIsReportedAndTheDialogStaysUsable) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select LOCATION_LIST 1
  press EDIT_LOC
    dialog qorborder_config_block_location
    set DIALOG_TEXT "typed before"
    choose BLOCK_ID "PL"
    message error "Error" "The menu has no entry 'S1' (its entries: 'Any Style', 'PS'); it keeps 'Any Style'."
    expect value DIALOG_TEXT "typed before"
    expect items ASSOCIATE_TO ["Drawing", "TB"]
    expect items BLOCK_STYLE ["Any Style", "PS"]
    choose BLOCK_STYLE "PS"
    ok
  expect items LOCATION_LIST ["L1(Style ID: Any Style)", "L3(Style ID: Any Style)", "L4(Style ID: FOLLOW)"]
  choose BLOCK_FILTER "PL"
  expect items LOCATION_LIST ["L2(Style ID: PS)", "P1(Style ID: Any Style)"]
  cancel
)J"));
}

TEST_F(BlockLocationDialog, StoredAssociationWithTheChosenBlockItselfIsReportedAndTheStylesFollow) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select LOCATION_LIST 3
  press EDIT_LOC
    dialog qorborder_config_block_location
    choose BLOCK_ID "PL"
    message error "Error" "The menu has no entry 'PL' (its entries: 'Drawing', 'TB'); it keeps 'Drawing'."
    expect items BLOCK_STYLE ["Any Style", "PS"]
    expect value ASSOCIATE_TO "Drawing"
    cancel
  cancel
)J"));
}

TEST_F(BlockLocationDialog, StoredStyleItsBlockLacksIsReportedOnOpeningAndTheOtherValuesShow) {
    BlockLocation stale = location("TB", "L5", "OLD");
    stale.offsetX = "7";
    stale.overflowDirection = 3;
    auto docA = onDisk("docA.fordef");
    docA->addBlockLocation(boost::make_shared<BlockLocation>(stale));
    docA->save();
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select LOCATION_LIST 4
  press EDIT_LOC
    message error "Error" "The menu has no entry 'OLD' (its entries: 'Any Style', 'S1', 'FOLLOW'); it keeps 'Any Style'."
    dialog qorborder_config_block_location
    expect value ID "L5"
    expect value OFFSET_X "7"
    expect value OVERFLOW_DIRECTION "Right"
    expect value BLOCK_STYLE "Any Style"
    cancel
  cancel
)J"));
}

TEST_F(BlockLocationDialog, UnknownStoredBlockIdIsNamedInQuotesAndTheFirstBlockIsSelected) {
    const auto stale = boost::make_shared<BlockLocation>(location("GONE", "G1", ""));
    EXPECT_JOURNAL_PASSES(showAlone(R"J(run
message information "Information" "Block Layout with ID 'GONE' was not found. Setting Block ID to first entry."
dialog qorborder_config_block_location
  expect value BLOCK_ID "TB"
  expect items ASSOCIATE_TO ["Drawing", "PL"]
  ok
)J",
                                    stale, true));
    EXPECT_EQ(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(stale->blockId, "TB") << "OK writes the block the menu shows";
}

TEST_F(BlockLocationDialog, UnknownStoredBlockIdKeepsItsBlockUntilOk) {
    const auto stale = boost::make_shared<BlockLocation>(location("GONE", "G1", ""));
    EXPECT_JOURNAL_PASSES(showAlone(R"J(run
message information "Information" "Block Layout with ID 'GONE' was not found. Setting Block ID to first entry."
dialog qorborder_config_block_location
  cancel
)J",
                                    stale, true));
    EXPECT_EQ(stale->blockId, "GONE");
}

// The comparisons with "Any Style" and "Drawing" are exact: a style or a block really called so
// is stored as the empty string. Intended.
TEST_F(BlockLocationDialog, StyleNamedAnyStyleAndBlockNamedDrawingAreStoredEmpty) {
    const auto fresh = boost::make_shared<BlockLocation>(location("TB", "N1", ""));
    UF_initialize();
    const auto docA = QorBorder::DefDocumentManager().getDocument(site.document("docA.fordef"));
    auto style = boost::make_shared<QorBorder::BlockStyle>();
    style->id = "Any Style";
    docA->getBlockLayout("TB")->addStyle(style);
    auto drawing = boost::make_shared<QorBorder::BlockLayout>();
    drawing->id = "Drawing";
    docA->addBlockLayout(drawing);
    UF_terminate();
    EXPECT_JOURNAL_PASSES(showAlone(R"J(run
dialog qorborder_config_block_location
  expect items BLOCK_STYLE ["Any Style", "S1", "FOLLOW", "Any Style"]
  expect items ASSOCIATE_TO ["Drawing", "PL", "Drawing"]
  choose BLOCK_STYLE 3
  choose ASSOCIATE_TO 2
  ok
)J",
                                    fresh, false));
    EXPECT_EQ(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(fresh->styleId, "");
    EXPECT_EQ(fresh->associatedBlockId, "");
}

TEST_F(BlockLocationDialog, NewLocationStartsAtTheFirstEntryOfEveryMenu) {
    const auto fresh = boost::make_shared<BlockLocation>();
    fresh->blockId = "PL";
    EXPECT_JOURNAL_PASSES(showAlone(R"J(run
dialog qorborder_config_block_location
  expect value BLOCK_ID "PL"
  expect value BLOCK_STYLE "Any Style"
  expect value ASSOCIATE_TO "Drawing"
  expect value ATTACH_CORNER "Top left"
  expect value ASSOCIATED_CORNER "Top left"
  expect value OVERFLOW_DIRECTION "Up"
  cancel
)J",
                                    fresh, false));
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

} // namespace
