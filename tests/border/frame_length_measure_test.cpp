// The drawing size dialog's frame length measurement: its button is hidden on purpose, but it
// stays bound with its handler. Shown again here, the measurement works as NX users of the
// button knew it.

#include "border/drawing_size_dialog.h"
#include "border/drawing_size_dialog_names.h"
#include "model/drawing_size.h"
#include "testutil/journal.h"
#include "testutil/temp_dir.h"
#include "testutil/test_presenter.h"

#include <NXOpen/PartCollection.hxx>
#include <NXOpen/PartLoadStatus.hxx>
#include <NXOpen/Session.hxx>
#include <nxsim/dlg.h>
#include <nxsim/platform.h>
#include <uf.h>

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace {

namespace Names = QorBorderConf::DrawingSizeDialogNames;

class FrameLengthMeasure : public ::testing::Test {
protected:
    FrameLengthMeasure() {
        nxsim::reset();
        nxsim::setResourcePath({TestUtil::productResources()});
        nxsim::setPresenter(&presenter);
        UF_initialize();
        dir.write("frame.prt", "qorfmt-part 1\n"
                               "drawing SHEET1 metric A3\n"
                               "line 13 20 10 0 20 287 0\n"
                               "line 14 410 10 0 410 287 0\n");
        NXOpen::PartLoadStatus* status = nullptr;
        NXOpen::Session::GetSession()->Parts()->OpenDisplay((dir.path() / "frame.prt").string(),
                                                            &status);
        std::unique_ptr<NXOpen::PartLoadStatus> owned(status);
        presenter.object = [this](const std::string& title) {
            titles.push_back(title);
            if (answers.empty()) {
                return nxsim::ObjectAnswer{nxsim::ObjectAnswer::Cancel, 0};
            }
            const unsigned int tag = answers.front();
            answers.pop_front();
            return nxsim::ObjectAnswer{nxsim::ObjectAnswer::Selected, tag};
        };
    }
    ~FrameLengthMeasure() override {
        UF_terminate();
        nxsim::setPresenter(nullptr);
        nxsim::reset();
    }

    /// Shows the dialog on `size`, shows the hidden button, presses it and ends with OK.
    void measure(QorBorder::DrawingSize& size) {
        presenter.scriptDialogs({[](nxsim::RuntimeDialog& dialog) {
            EXPECT_FALSE(dialog.item(Names::PK_FRAME_LENGTH)->visible());
            dialog.item(Names::PK_FRAME_LENGTH)->setVisible(true);
            dialog.press(Names::PK_FRAME_LENGTH);
            dialog.ok();
        }});
        QorBorderConf::DrawingSizeDialog(size).show();
    }

    TestUtil::TempDir dir;
    TestUtil::TestPresenter presenter;
    std::deque<unsigned int> answers;
    std::vector<std::string> titles;
};

QorBorder::DrawingSize namedSize() {
    QorBorder::DrawingSize size;
    size.name = "A3";
    size.description = "A3 landscape";
    size.frameLength = 1.0;
    return size;
}

TEST_F(FrameLengthMeasure, TheMinimumDistanceBetweenTwoSelectedObjectsBecomesTheFrameLength) {
    answers = {13, 14};
    QorBorder::DrawingSize size = namedSize();
    measure(size);
    EXPECT_EQ(size.frameLength, 390.0);
    EXPECT_EQ(titles, (std::vector<std::string>{"First object", "Second object"}));
    // Each selected object's highlight is switched off again.
    EXPECT_FALSE(nxsim::highlighted(13));
    EXPECT_FALSE(nxsim::highlighted(14));
}

TEST_F(FrameLengthMeasure, ACancelledSelectionEndsTheMeasurementSilently) {
    answers = {13};
    QorBorder::DrawingSize size = namedSize();
    measure(size);
    EXPECT_EQ(size.frameLength, 1.0);
    EXPECT_EQ(titles, (std::vector<std::string>{"First object", "Second object"}));
}

TEST_F(FrameLengthMeasure, AnErrorFromTheDistanceQueryChangesNothing) {
    answers = {13, 14};
    nxsim::injectFault("UF_MODL_ask_minimum_dist", 3520013);
    QorBorder::DrawingSize size = namedSize();
    measure(size);
    EXPECT_EQ(size.frameLength, 1.0);
}

} // namespace
