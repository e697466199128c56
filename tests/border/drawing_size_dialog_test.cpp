// The drawing size dialog: its OK order, the template browser and Extract Dimensions.

#include "border_site.h"

#include <boost/filesystem/operations.hpp>

#include "model/border_layout.h"

#include <nxsim/error_codes.h>
#include <nxsim/platform.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using DrawingSizeDialog = TestUtil::BorderDialogRun;
using TestUtil::editBorder;
using TestUtil::kOpenDocA;

/// Opens the drawing size dialog on a new size of border A4.
std::string addSizeToA4() {
    return std::string(kOpenDocA) + editBorder(1) +
           "    press ADD_FRAME_SIZE\n      dialog qorborder_config_drawing_size\n";
}

/// Ends the drawing size dialog, the border dialog and the main dialog with Cancel.
const char* const kCancelAll = "      cancel\n    cancel\n  cancel\n";

TEST_F(DrawingSizeDialog, ExtractDimensionsIsInsensitiveWhileTheTemplateFileIsEmpty) {
    EXPECT_JOURNAL_PASSES(run(addSizeToA4() + R"J(
      expect title "Drawing Size"
      expect sensitive EXTRACT_DIMS no
      set TEMPLATE_FILE "a3.prt"
      enter TEMPLATE_FILE
      expect sensitive EXTRACT_DIMS yes
      set TEMPLATE_FILE ""
      enter TEMPLATE_FILE
      expect sensitive EXTRACT_DIMS no
)J" + kCancelAll));
}

// The frame length measurement is bound with its handlers but hidden, on purpose.
TEST_F(DrawingSizeDialog, TheFrameLengthMeasurementIsHidden) {
    EXPECT_JOURNAL_PASSES(run(addSizeToA4() + R"J(
      expect visible PK_FRAME_LENGTH no
      expect visible FRAME_LENGTH yes
)J" + kCancelAll));
}

TEST_F(DrawingSizeDialog, AnA3TemplateGivesHeight297AndLength420) {
    EXPECT_JOURNAL_PASSES(run(addSizeToA4() + R"J(
      set TEMPLATE_FILE "a3.prt"
      enter TEMPLATE_FILE
      press EXTRACT_DIMS
      expect value HEIGHT 297
      expect value LENGTH 420
)J" + kCancelAll));
}

TEST_F(DrawingSizeDialog, ADSizeTemplateGivesHeight22AndLength34) {
    EXPECT_JOURNAL_PASSES(run(addSizeToA4() + R"J(
      set TEMPLATE_FILE "d_size.prt"
      enter TEMPLATE_FILE
      press EXTRACT_DIMS
      expect value HEIGHT 22
      expect value LENGTH 34
)J" + kCancelAll));
}

TEST_F(DrawingSizeDialog, ACustomSizeTemplateGivesItsOwnHeightAndLength) {
    EXPECT_JOURNAL_PASSES(run(addSizeToA4() + R"J(
      set TEMPLATE_FILE "portrait.prt"
      enter TEMPLATE_FILE
      press EXTRACT_DIMS
      expect value HEIGHT 297
      expect value LENGTH 210
)J" + kCancelAll));
}

TEST_F(DrawingSizeDialog, ATemplateWithTwoDrawingsIsRefusedAndLeavesHeightAndLengthUnchanged) {
    EXPECT_JOURNAL_PASSES(run(addSizeToA4() + R"J(
      set HEIGHT 1.5
      set LENGTH 2.5
      set TEMPLATE_FILE "two_sheets.prt"
      enter TEMPLATE_FILE
      press EXTRACT_DIMS
      message error "Error" "Template must have a drawing and only one drawing"
      expect value HEIGHT 1.5
      expect value LENGTH 2.5
)J" + kCancelAll));
}

TEST_F(DrawingSizeDialog, ATemplateWithoutDrawingIsRefusedAndTheDisplayPartRestored) {
    displayUserPart();
    EXPECT_JOURNAL_PASSES(run(addSizeToA4() + R"J(
      set TEMPLATE_FILE "no_sheet.prt"
      enter TEMPLATE_FILE
      press EXTRACT_DIMS
      message error "Error" "Template must have a drawing and only one drawing"
      expect value HEIGHT 0
)J" + kCancelAll));
    EXPECT_EQ(nxsim::displayPartFile(), userPart().string());
    const auto loaded = nxsim::loadedPartFiles();
    EXPECT_EQ(std::count(loaded.begin(), loaded.end(), frameTemplate("no_sheet.prt").string()), 0);
}

TEST_F(DrawingSizeDialog, ExtractDimensionsRestoresTheDisplayPartAndClosesTheTemplate) {
    displayUserPart();
    EXPECT_JOURNAL_PASSES(run(addSizeToA4() + R"J(
      set TEMPLATE_FILE "a3.prt"
      enter TEMPLATE_FILE
      press EXTRACT_DIMS
      expect value LENGTH 420
)J" + kCancelAll));
    EXPECT_EQ(nxsim::displayPartFile(), userPart().string());
    EXPECT_EQ(nxsim::loadedPartFiles(), (std::vector<std::string>{userPart().string()}));
    const auto calls = nxsim::callLog();
    EXPECT_NE(std::find(calls.begin(), calls.end(), "UF_free"), calls.end());
}

TEST_F(DrawingSizeDialog, ATemplateThatIsNotFoundGivesTemplateNotFound) {
    EXPECT_JOURNAL_PASSES(run(addSizeToA4() + R"J(
      set TEMPLATE_FILE "missing.prt"
      enter TEMPLATE_FILE
      press EXTRACT_DIMS
      message error "Template Not Found" "Template file 'missing.prt' was not found."
      expect value HEIGHT 0
)J" + kCancelAll));
    EXPECT_TRUE(nxsim::loadedPartFiles().empty());
}

TEST_F(DrawingSizeDialog, AnErrorCodeFromAskingTheDrawingInfoReachesUfusrsErrorMessage) {
    displayUserPart();
    nxsim::injectFault("UF_DRAW_ask_drawing_info", nxsim::ErrorCode::NotADrawing);
    EXPECT_JOURNAL_PASSES(run(addSizeToA4() + R"J(
      set TEMPLATE_FILE "a3.prt"
      enter TEMPLATE_FILE
      press EXTRACT_DIMS
message error "Error" "The object is not a drawing"
)J"));
    // The template is closed again on the way out.
    EXPECT_EQ(nxsim::displayPartFile(), userPart().string());
    EXPECT_EQ(nxsim::loadedPartFiles(), (std::vector<std::string>{userPart().string()}));
}

TEST_F(DrawingSizeDialog, BrowseOffersEachTemplateOnceSortedAndPutsTheChosenOneIntoTheField) {
    // The same template in a second searched folder is offered once.
    site.dir().write("configurations/common/nx/format_defs/frame_templates/a3.prt",
                     "qorfmt-part 1\ndrawing SHEET1 metric A3\n");
    EXPECT_JOURNAL_PASSES(run(addSizeToA4() + R"J(
      press BROWSE_TEMPLATE
      pick "Frame Templates" cancel
      expect value TEMPLATE_FILE ""
      press BROWSE_TEMPLATE
      pick "Frame Templates" 1
      expect value TEMPLATE_FILE "broken.prt"
      expect sensitive EXTRACT_DIMS yes
)J" + kCancelAll));
    const auto pickers = nxsim::shownPickers();
    ASSERT_EQ(pickers.size(), 2u);
    EXPECT_EQ(pickers[0].prompt, "Select template from list");
    EXPECT_EQ(pickers[0].items,
              (std::vector<std::string>{"a3.prt", "broken.prt", "d_size.prt", "no_sheet.prt",
                                        "portrait.prt", "two_sheets.prt"}));
}

// With no frame template along the search path the picker is still shown, empty, so that the
// button is seen to work; cancelling it changes nothing.
TEST_F(DrawingSizeDialog, AnEmptyTemplateSearchShowsTheEmptyListAndItsCancelChangesNothing) {
    boost::filesystem::remove_all(site.site() / "format_defs" / "frame_templates");
    EXPECT_JOURNAL_PASSES(run(addSizeToA4() + R"J(
      set TEMPLATE_FILE "typed.prt"
      press BROWSE_TEMPLATE
      pick "Frame Templates" cancel
      expect value TEMPLATE_FILE "typed.prt"
)J" + kCancelAll));
    const auto pickers = nxsim::shownPickers();
    ASSERT_EQ(pickers.size(), 1u);
    EXPECT_EQ(pickers[0].prompt, "Select template from list");
    EXPECT_TRUE(pickers[0].items.empty());
}

TEST_F(DrawingSizeDialog, AnEmptyNameIsRefusedAndNothingIsWritten) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    select FRAME_SIZES 0
    press EDIT_FRAME_SIZE
      dialog qorborder_config_drawing_size
      set NAME ""
      set DESC ""
      ok
      message error "Validation Error" "Name must not be empty."
      expect focus NAME
      cancel
    ok
  press SAVE_FILE
  cancel
)J"));
    const auto a3 = onDisk("docA.fordef")->getBorderLayout("A3");
    EXPECT_EQ(a3->getDrawingSize(0).name, "A3");
    EXPECT_EQ(a3->getDrawingSize(0).description, "A3 landscape");
}

// The name is written before the description is checked, on purpose: an edited size whose
// description was emptied keeps the new name even though the user then cancels.
TEST_F(DrawingSizeDialog, OkWithANameAndAnEmptyDescriptionWritesTheNameOnlyAndStaysOpen) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + editBorder(0) + R"J(
    select FRAME_SIZES 0
    press EDIT_FRAME_SIZE
      dialog qorborder_config_drawing_size
      set NAME "A3NEW"
      set DESC ""
      set LABEL "not written"
      ok
      message error "Validation Error" "Description must not be empty."
      expect focus DESC
      cancel
    ok
  press SAVE_FILE
  cancel
)J"));
    const auto a3 = onDisk("docA.fordef")->getBorderLayout("A3");
    EXPECT_EQ(a3->getDrawingSize(0).name, "A3NEW");
    EXPECT_EQ(a3->getDrawingSize(0).description, "A3 landscape");
    EXPECT_EQ(a3->getDrawingSize(0).label, "");
}

TEST_F(DrawingSizeDialog, OkWritesEveryControl) {
    EXPECT_JOURNAL_PASSES(run(addSizeToA4() + R"J(
      set NAME "A4"
      set DESC "A4 landscape"
      set LABEL "ISO A4"
      set TEMPLATE_FILE "a3.prt"
      set HEIGHT 210
      set LENGTH 297
      set FRAME_LENGTH 267
      set HORZ_ZONES 6
      set VERT_ZONES 4
      ok
    ok
  press SAVE_FILE
  cancel
)J"));
    const auto a4 = onDisk("docA.fordef")->getBorderLayout("A4");
    ASSERT_EQ(a4->drawingSizes().size(), 1u);
    const QorBorder::DrawingSize& size = a4->getDrawingSize(0);
    EXPECT_EQ(size.name, "A4");
    EXPECT_EQ(size.description, "A4 landscape");
    EXPECT_EQ(size.label, "ISO A4");
    EXPECT_EQ(size.templateFile, "a3.prt");
    EXPECT_EQ(size.height, 210);
    EXPECT_EQ(size.length, 297);
    EXPECT_EQ(size.frameLength, 267);
    EXPECT_EQ(size.horizontalZones, 6);
    EXPECT_EQ(size.verticalZones, 4);
}

} // namespace
