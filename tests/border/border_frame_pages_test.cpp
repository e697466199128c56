// The border layout dialog's frame pages: drawing sizes, the frame template and corner picks.

#include "border_site.h"

#include "model/border_layout.h"

#include <nxsim/error_codes.h>
#include <nxsim/platform.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using BorderFramePages = TestUtil::BorderDialogRun;
using TestUtil::editBorder;
using TestUtil::kOpenDocA;

bool isLoaded(const boost::filesystem::path& file) {
    const auto loaded = nxsim::loadedPartFiles();
    return std::find(loaded.begin(), loaded.end(), file.string()) != loaded.end();
}

TEST_F(BorderFramePages, TheCornerPickButtonsAreInsensitiveUntilATemplateHasBeenOpened) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    expect sensitive PK_BL_CORNER no
    expect sensitive PK_TR_CORNER no
    expect sensitive OPEN_TEMPLATE no
    select FRAME_SIZES 0
    expect sensitive PK_BL_CORNER no
    expect sensitive OPEN_TEMPLATE yes
    press OPEN_TEMPLATE
    expect sensitive PK_BL_CORNER yes
    expect sensitive PK_TR_CORNER yes
    expect sensitive OPEN_TEMPLATE no
    deselect FRAME_SIZES
    select FRAME_SIZES 1
    expect sensitive OPEN_TEMPLATE no
    expect sensitive PK_TR_CORNER yes
    cancel
  cancel
)J"));
}

TEST_F(BorderFramePages, PickingTheTopRightCornerAtTheSheetCornerIsStoredAsZeros) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    select FRAME_SIZES 0
    press OPEN_TEMPLATE
    press PK_TR_CORNER
    point 420 297
    expect cue "Select corner point"
    expect value TR_X_LOC 0
    expect value TR_Y_LOC 0
    ok
  press SAVE_FILE
  cancel
)J"));
    EXPECT_EQ(onDisk("docA.fordef")->getBorderLayout("A3")->topRight, (QorBorder::Point3{0, 0, 0}));
}

TEST_F(BorderFramePages, PickedCornersAreTheFramePointsInSheetCoordinates) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    select FRAME_SIZES 0
    press OPEN_TEMPLATE
    press PK_BL_CORNER
    point 20 10
    expect value BL_X_LOC 20
    expect value BL_Y_LOC 10
    press PK_TR_CORNER
    point 410 287
    expect value TR_X_LOC 10
    expect value TR_Y_LOC 10
    ok
  press SAVE_FILE
  cancel
)J"));
    const auto a3 = onDisk("docA.fordef")->getBorderLayout("A3");
    EXPECT_EQ(a3->bottomLeft, (QorBorder::Point3{20, 10, 0}));
    EXPECT_EQ(a3->topRight, (QorBorder::Point3{10, 10, 0}));
}

TEST_F(BorderFramePages, ACancelledCornerPickChangesNothing) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    set BL_X_LOC 5
    set TR_Y_LOC 6
    select FRAME_SIZES 0
    press OPEN_TEMPLATE
    press PK_BL_CORNER
    point cancel
    expect value BL_X_LOC 5
    expect value BL_Y_LOC 0
    press PK_TR_CORNER
    point cancel
    expect value TR_X_LOC 0
    expect value TR_Y_LOC 6
    cancel
  cancel
)J"));
}

TEST_F(BorderFramePages, OpeningATemplateThatIsNotFoundSaysTemplateNotFoundAndOpensNothing) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    select FRAME_SIZES 1
    press OPEN_TEMPLATE
    message error "Template Not Found" "Template file 'missing.prt' was not found."
    expect sensitive OPEN_TEMPLATE yes
    expect sensitive PK_BL_CORNER no
    cancel
  cancel
)J"));
    EXPECT_TRUE(nxsim::loadedPartFiles().empty());
}

TEST_F(BorderFramePages, TheDisplayPartIsRestoredAndTheTemplateClosedWhenTheDialogEnds) {
    displayUserPart();
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    select FRAME_SIZES 0
    press OPEN_TEMPLATE
    cancel
  cancel
)J"));
    EXPECT_EQ(nxsim::displayPartFile(), userPart().string());
    EXPECT_EQ(nxsim::workPartFile(), userPart().string());
    EXPECT_FALSE(isLoaded(frameTemplate("a3.prt")));
}

TEST_F(BorderFramePages, TheDisplayPartIsRestoredWhenTheDialogEndsWithOkToo) {
    displayUserPart();
    nxsim::JournalResult result = run(std::string(kOpenDocA) + editBorder(0) + R"J(
    select FRAME_SIZES 0
    press OPEN_TEMPLATE
    press PK_BL_CORNER
    point 20 10
    ok
  cancel
)J");
    EXPECT_JOURNAL_PASSES(result);
    EXPECT_EQ(nxsim::displayPartFile(), userPart().string());
}

// Drawing size changes go to the layout at once; cancelling the border dialog keeps them, as
// intended. The cancelled edit does not mark the document modified, so the size is saved with a
// later OK.
TEST_F(BorderFramePages, CancelAfterAddingADrawingSizeKeepsTheNewSize) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(1) + R"J(
    press ADD_FRAME_SIZE
      dialog qorborder_config_drawing_size
      expect value NAME ""
      expect value HEIGHT 0
      set NAME "A4"
      set DESC "A4 landscape"
      ok
    expect items FRAME_SIZES ["A4 landscape"]
    cancel
  select BORDERLIST 1
  press EDITBORDER
    dialog qorborder_config_border
    expect items FRAME_SIZES ["A4 landscape"]
    ok
  press SAVE_FILE
  cancel
)J"));
    EXPECT_EQ(onDisk("docA.fordef")->getBorderLayout("A4")->drawingSizeDescriptions(),
              (std::vector<std::string>{"A4 landscape"}));
}

TEST_F(BorderFramePages, CuttingAFrameSizeRemovesItAtOnceWithoutAQuestion) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    expect sensitive CUT_FRAME_SIZE no
    select FRAME_SIZES 0
    expect sensitive CUT_FRAME_SIZE yes
    press CUT_FRAME_SIZE
    expect items FRAME_SIZES ["A3 from elsewhere"]
    expect sensitive CUT_FRAME_SIZE no
    cancel
  cancel
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

TEST_F(BorderFramePages, CopyAddsTheEditedCopyAtTheEndAndLeavesTheSourceUnchanged) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    select FRAME_SIZES 0
    press COPY_FRAME_SIZE
      dialog qorborder_config_drawing_size
      expect value NAME "A3"
      expect value TEMPLATE_FILE "a3.prt"
      set DESC "A3 copy"
      ok
    expect items FRAME_SIZES ["A3 landscape", "A3 from elsewhere", "A3 copy"]
    select FRAME_SIZES 1
    press COPY_FRAME_SIZE
      dialog qorborder_config_drawing_size
      set DESC "not added"
      cancel
    expect items FRAME_SIZES ["A3 landscape", "A3 from elsewhere", "A3 copy"]
    ok
  press SAVE_FILE
  cancel
)J"));
    const auto a3 = onDisk("docA.fordef")->getBorderLayout("A3");
    ASSERT_EQ(a3->drawingSizes().size(), 3u);
    EXPECT_EQ(a3->getDrawingSize(2).name, "A3");
    EXPECT_EQ(a3->getDrawingSize(2).templateFile, "a3.prt");
}

TEST_F(BorderFramePages, EditChangesTheSelectedSizeInPlaceOnOk) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    select FRAME_SIZES 1
    press EDIT_FRAME_SIZE
      dialog qorborder_config_drawing_size
      expect value DESC "A3 from elsewhere"
      set DESC "A3 renamed"
      cancel
    expect items FRAME_SIZES ["A3 landscape", "A3 from elsewhere"]
    select FRAME_SIZES 1
    press EDIT_FRAME_SIZE
      dialog qorborder_config_drawing_size
      set DESC "A3 renamed"
      set TEMPLATE_FILE "a3.prt"
      ok
    expect items FRAME_SIZES ["A3 landscape", "A3 renamed"]
    ok
  press SAVE_FILE
  cancel
)J"));
    EXPECT_EQ(onDisk("docA.fordef")->getBorderLayout("A3")->getDrawingSize(1).templateFile,
              "a3.prt");
}

TEST_F(BorderFramePages, MenusShowTheStoredUnitsAndZonesAsItemIndexes) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    expect items UNITS ["Inches", "Millimeters"]
    expect value UNITS "Inches"
    expect items HORZ_TYPE ["Numbers (1, 2, 3, ...)", "Letters (A, B, C, ... without I and O)", "None"]
    expect items ZONE_START ["Top left", "Top right", "Bottom left", "Bottom right"]
    choose UNITS "Millimeters"
    choose HORZ_TYPE "Letters (A, B, C, ... without I and O)"
    choose ZONE_START "Top right"
    ok
  select BORDERLIST 0
  press EDITBORDER
    dialog qorborder_config_border
    expect index UNITS 1
    expect index HORZ_TYPE 1
    expect index VERT_TYPE 0
    expect index ZONE_START 1
    cancel
  cancel
)J"));
}

} // namespace

namespace {

TEST_F(BorderFramePages, APointRequestThatNxRefusesChangesNothing) {
    nxsim::injectFault("uc1616", nxsim::ErrorCode::NotAllowedNow);
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    set BL_X_LOC 5
    select FRAME_SIZES 0
    press OPEN_TEMPLATE
    press PK_BL_CORNER
    press PK_TR_CORNER
    expect value BL_X_LOC 5
    expect value TR_X_LOC 0
    cancel
  cancel
)J"));
}

TEST_F(BorderFramePages, ATemplateThatNxCannotOpenReachesUfusrsErrorMessageAndOpensNothing) {
    nxsim::injectFault("OpenDisplay", nxsim::ErrorCode::NotAPartFile);
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    select FRAME_SIZES 0
    press OPEN_TEMPLATE
message error "Error" "File is not a part file: injected fault of OpenDisplay"
)J"));
    EXPECT_TRUE(nxsim::loadedPartFiles().empty());
}

TEST_F(BorderFramePages, APartFileOfAnotherFormatIsReportedNamingTheFile) {
    EXPECT_JOURNAL_PASSES(run(
        std::string(kOpenDocA) + editBorder(0) + R"J(
    select FRAME_SIZES 1
    press EDIT_FRAME_SIZE
      dialog qorborder_config_drawing_size
      set TEMPLATE_FILE "broken.prt"
      ok
    select FRAME_SIZES 1
    press OPEN_TEMPLATE
message error "Error" "File is not a part file: )J" +
        frameTemplate("broken.prt").string() +
        R"J(: not a part file of the simulated format (the first line must be \"qorfmt-part 1\")"
)J"));
    EXPECT_TRUE(nxsim::loadedPartFiles().empty());
}

} // namespace
