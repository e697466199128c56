#include "nxsim_test_support.h"

#include <nxsim/error_codes.h>

#include <NXOpen/NXException.hxx>
#include <NXOpen/Session.hxx>
#include <NXOpen/UI.hxx>

#include "testutil/temp_dir.h"
#include "testutil/test_presenter.h"

#include <gtest/gtest.h>

namespace {

using namespace NXOpen;

class SessionTest : public NxsimTest::Fixture {
protected:
    Part* open(const std::string& file) {
        PartLoadStatus* status = nullptr;
        Part* p = Session::GetSession()->Parts()->OpenDisplay(file, &status);
        EXPECT_NE(status, nullptr);
        delete status;
        return p;
    }
};

TEST_F(SessionTest, SessionIsOnePerProcess) {
    EXPECT_EQ(Session::GetSession(), Session::GetSession());
    EXPECT_EQ(Session::GetSession()->Parts(), Session::GetSession()->Parts());
}

TEST_F(SessionTest, ListingWindowCollectsLinesOnceOpen) {
    ListingWindow* window = Session::GetSession()->ListingWindow();
    EXPECT_FALSE(window->IsOpen());
    EXPECT_THROW(window->WriteLine("lost"), NXException);
    window->Open();
    EXPECT_TRUE(window->IsOpen());
    window->WriteLine("first");
    window->WriteLine("two\nlines");
    EXPECT_EQ(nxsim::listingText(), "first\ntwo\nlines\n");
    window->Close();
    EXPECT_FALSE(nxsim::listingOpen());
}

TEST_F(SessionTest, OpenDisplayMakesTheDisplayAndWorkPart) {
    PartCollection* parts = Session::GetSession()->Parts();
    EXPECT_EQ(parts->Display(), nullptr);
    EXPECT_EQ(parts->Work(), nullptr);
    Part* a3 = open(part("a3_metric.prt"));
    EXPECT_EQ(parts->Display(), a3);
    EXPECT_EQ(parts->Work(), a3);
    EXPECT_EQ(parts->BaseDisplay(), a3);
    EXPECT_EQ(nxsim::displayPartFile(), part("a3_metric.prt"));
    EXPECT_EQ(std::string(a3->FullPath().GetText()), part("a3_metric.prt"));
    Part* custom = open(part("custom.prt"));
    EXPECT_EQ(parts->Display(), custom);
    EXPECT_EQ(open(part("a3_metric.prt")), a3) << "a loaded part is not loaded twice";
    EXPECT_EQ(nxsim::loadedPartFiles().size(), 2u);
}

TEST_F(SessionTest, RestoringTheDisplayAndClosingATemplate) {
    PartCollection* parts = Session::GetSession()->Parts();
    Part* drawing = open(part("a3_metric.prt"));
    Part* remembered = parts->Display();
    Part* templ = open(part("two_drawings.prt"));
    PartLoadStatus* status = nullptr;
    EXPECT_EQ(parts->SetDisplay(remembered, false, false, &status), PartCollection::SdpsStatusOk);
    delete status;
    EXPECT_EQ(parts->Display(), drawing);
    EXPECT_EQ(parts->Work(), drawing);
    templ->Close(BasePart::CloseWholeTreeFalse, BasePart::CloseModifiedDontCloseModified, nullptr);
    EXPECT_EQ(nxsim::loadedPartFiles(), (std::vector<std::string>{part("a3_metric.prt")}));
    EXPECT_EQ(parts->Display(), drawing);
    EXPECT_THROW(templ->Close(BasePart::CloseWholeTreeFalse,
                              BasePart::CloseModifiedDontCloseModified, nullptr),
                 NXException);
    drawing->Close(BasePart::CloseWholeTreeFalse, BasePart::CloseModifiedUseResponses, nullptr);
    EXPECT_EQ(parts->Display(), nullptr) << "closing the display part leaves none";
    EXPECT_EQ(parts->Work(), nullptr);
}

TEST_F(SessionTest, MissingOrForeignPartFilesRaiseNamingTheFile) {
    try {
        open("/nonexistent/frame.prt");
        FAIL();
    } catch (const NXException& e) {
        EXPECT_EQ(e.ErrorCode(), nxsim::ErrorCode::FileNotFound);
        EXPECT_EQ(std::string(e.what()), "File not found: /nonexistent/frame.prt");
    }
    try {
        open(part("vendor_binary.prt"));
        FAIL();
    } catch (const NXException& e) {
        EXPECT_EQ(e.ErrorCode(), nxsim::ErrorCode::NotAPartFile);
        EXPECT_NE(std::string(e.what()).find(part("vendor_binary.prt")), std::string::npos);
    }
    EXPECT_EQ(Session::GetSession()->Parts()->Display(), nullptr) << "nothing half-opened";
}

TEST_F(SessionTest, NoCurrentSheetGivesNull) {
    TestUtil::TempDir dir;
    Part* p =
        open(dir.write("n.prt", "qorfmt-part 1\ndrawing A metric A4\ncurrent none\n").string());
    EXPECT_EQ(p->DrawingSheets()->CurrentDrawingSheet(), nullptr);
}

TEST_F(SessionTest, ExceptionTextsComeFromOneTable) {
    NXException e = NXException::Create(1105003);
    EXPECT_EQ(e.ErrorCode(), 1105003);
    EXPECT_STREQ(e.Message(), "Operation interrupted by the user");
    EXPECT_STREQ(e.what(), e.Message());
    EXPECT_STREQ(NXException::Create(3520004).what(), "File not found");
    EXPECT_STREQ(NXException::Create(12345).what(), "NX error code 12345");
    EXPECT_EQ(nxsim::errorMessage(nxsim::ErrorCode::NoWorkPart), "There is no work part");
}

TEST_F(SessionTest, MessageBoxesAreRecordedAndNeedAPresenter) {
    EXPECT_THROW(UI::GetUI()->NXMessageBox()->Show("Error", NXMessageBox::DialogTypeError, "x"),
                 NXException);
    ASSERT_EQ(nxsim::shownMessages().size(), 1u);
    EXPECT_EQ(nxsim::shownMessages()[0].kind, nxsim::MessageKind::Error);
    EXPECT_EQ(nxsim::shownMessages()[0].title, "Error");
    EXPECT_EQ(nxsim::shownMessages()[0].text, "x");
}

// A test double answers only what its test scripts; anything else is refused aloud, naming the
// request, instead of being answered with some default the test never chose.
TEST_F(SessionTest, RequestsAPresenterDoesNotAnswerAreRefusedNamingTheRequest) {
    TestUtil::TestPresenter presenter;
    nxsim::ScopedPresenter scoped(&presenter);
    const auto refusal = [](const std::function<void()>& request) -> std::string {
        try {
            request();
        } catch (const NXException& e) {
            EXPECT_EQ(e.ErrorCode(), nxsim::ErrorCode::Unanswered);
            return e.what();
        }
        ADD_FAILURE() << "the request was answered";
        return {};
    };
    EXPECT_NE(refusal([] {
                  UI::GetUI()->NXMessageBox()->Show("Duplicate Error",
                                                    NXMessageBox::DialogTypeError, "x");
              }).find("error message \"Duplicate Error\": x"),
              std::string::npos);
    EXPECT_NE(refusal([] {
                  nxsim::pickFromList("Frame Templates", "Pick", {"a"}, -1);
              }).find("list picker \"Frame Templates\""),
              std::string::npos);

    presenter.message = [](nxsim::MessageKind, const std::string&, const std::string&) {};
    EXPECT_NO_THROW(
        UI::GetUI()->NXMessageBox()->Show("Error", NXMessageBox::DialogTypeError, "answered"));
}

TEST_F(SessionTest, ResetForgetsEverything) {
    open(part("a3_metric.prt"));
    Session::GetSession()->ListingWindow()->Open();
    Session::GetSession()->ListingWindow()->WriteLine("x");
    nxsim::injectFault("UF_initialize", 1);
    nxsim::reset();
    EXPECT_EQ(Session::GetSession()->Parts()->Display(), nullptr);
    EXPECT_EQ(nxsim::listingText(), "");
    EXPECT_FALSE(nxsim::listingOpen());
    EXPECT_TRUE(nxsim::callLog().empty());
    EXPECT_TRUE(nxsim::loadedPartFiles().empty());
}

} // namespace
