#include "nxsim_test_support.h"

#include <nxsim/error_codes.h>

#include <NXOpen/LoadOptions.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Session.hxx>

#include <uf.h>
#include <uf_disp.h>
#include <uf_draw.h>
#include <uf_modl.h>
#include <uf_ui.h>

#include "testutil/temp_dir.h"
#include "testutil/test_presenter.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace NXOpen;

class UfFunctions : public NxsimTest::Fixture {
protected:
    void SetUp() override {
        Fixture::SetUp();
        ASSERT_EQ(UF_initialize(), 0);
    }
    Part* open(const std::string& name) {
        PartLoadStatus* status = nullptr;
        Part* p = Session::GetSession()->Parts()->OpenDisplay(part(name), &status);
        delete status;
        return p;
    }
    std::vector<UF_DRAW_info_t> drawingInfos() {
        int count = -1;
        EXPECT_EQ(UF_DRAW_ask_num_drawings(&count), 0);
        tag_t* tags = nullptr;
        int n = -1;
        EXPECT_EQ(UF_DRAW_ask_drawings(&n, &tags), 0);
        EXPECT_EQ(n, count);
        std::vector<UF_DRAW_info_t> infos;
        for (int i = 0; i < n; ++i) {
            UF_DRAW_info_t info;
            EXPECT_EQ(UF_DRAW_ask_drawing_info(tags[i], &info), 0);
            infos.push_back(info);
        }
        UF_free(tags);
        return infos;
    }
};

TEST_F(UfFunctions, A3MetricDrawing) {
    open("a3_metric.prt");
    auto infos = drawingInfos();
    ASSERT_EQ(infos.size(), 1u);
    EXPECT_EQ(infos[0].size_state, UF_DRAW_METRIC_SIZE);
    EXPECT_EQ(infos[0].size.metric_size_code, UF_DRAW_A3);
    EXPECT_EQ(infos[0].units, UF_PART_METRIC);
    EXPECT_EQ(infos[0].drawing_scale, 1.0);
    Drawings::DrawingSheet* sheet =
        Session::GetSession()->Parts()->Work()->DrawingSheets()->CurrentDrawingSheet();
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->Height(), 297);
    EXPECT_EQ(sheet->Length(), 420);
}

TEST_F(UfFunctions, DEnglishDrawing) {
    open("d_english.prt");
    auto infos = drawingInfos();
    ASSERT_EQ(infos.size(), 1u);
    EXPECT_EQ(infos[0].size_state, UF_DRAW_ENGLISH_SIZE);
    EXPECT_EQ(infos[0].size.english_size_code, UF_DRAW_D);
    EXPECT_EQ(infos[0].size.english_size_code - 1, 3) << "index of D in the A..J table";
    EXPECT_EQ(infos[0].units, UF_PART_ENGLISH);
    EXPECT_EQ(infos[0].drawing_scale, 0.5);
    EXPECT_EQ(infos[0].projection_angle, UF_DRAW_FIRST_ANGLE_PROJECTION);
}

TEST_F(UfFunctions, CustomDrawingGivesHeightThenLength) {
    open("custom.prt");
    auto infos = drawingInfos();
    ASSERT_EQ(infos.size(), 1u);
    EXPECT_EQ(infos[0].size_state, UF_DRAW_CUSTOM_SIZE);
    EXPECT_EQ(infos[0].size.custom_size[0], 500);
    EXPECT_EQ(infos[0].size.custom_size[1], 1000);
}

TEST_F(UfFunctions, TwoDrawingPart) {
    open("two_drawings.prt");
    auto infos = drawingInfos();
    ASSERT_EQ(infos.size(), 2u);
    EXPECT_EQ(infos[0].size.metric_size_code, UF_DRAW_A4);
    EXPECT_EQ(infos[1].size.metric_size_code, UF_DRAW_A2);
    Drawings::DrawingSheet* sheet =
        Session::GetSession()->Parts()->Work()->DrawingSheets()->CurrentDrawingSheet();
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->Length(), 594) << "SHEET2 is current";
}

TEST_F(UfFunctions, DrawingCallsNeedAWorkPartAndADrawingTag) {
    int n = 0;
    EXPECT_EQ(UF_DRAW_ask_num_drawings(&n), nxsim::ErrorCode::NoWorkPart);
    open("a3_metric.prt");
    UF_DRAW_info_t info;
    EXPECT_EQ(UF_DRAW_ask_drawing_info(12, &info), nxsim::ErrorCode::NotADrawing);
    EXPECT_EQ(UF_DRAW_ask_drawing_info(4242, &info), nxsim::ErrorCode::InvalidTag);
}

TEST_F(UfFunctions, MinimumDistanceBetweenPointsAndSegments) {
    open("a3_metric.prt");
    double d = -1;
    double p1[3], p2[3];
    ASSERT_EQ(UF_MODL_ask_minimum_dist(12, 13, 0, nullptr, 0, nullptr, &d, p1, p2), 0);
    EXPECT_DOUBLE_EQ(d, 20) << "parallel segments";
    ASSERT_EQ(UF_MODL_ask_minimum_dist(11, 12, 0, nullptr, 0, nullptr, &d, p1, p2), 0);
    EXPECT_DOUBLE_EQ(d, 10) << "point (10,10) above the segment on y = 0";
    EXPECT_DOUBLE_EQ(p2[0], 10);
    EXPECT_DOUBLE_EQ(p2[1], 0);
    ASSERT_EQ(UF_MODL_ask_minimum_dist(11, 11, 0, nullptr, 0, nullptr, &d, p1, p2), 0);
    EXPECT_DOUBLE_EQ(d, 0);
    EXPECT_EQ(UF_MODL_ask_minimum_dist(11, 999, 0, nullptr, 0, nullptr, &d, p1, p2),
              nxsim::ErrorCode::InvalidTag);
}

TEST_F(UfFunctions, MinimumDistanceOfSkewAndCrossingSegments) {
    TestUtil::TempDir dir;
    auto file = dir.write("g.prt", "qorfmt-part 1\n"
                                   "line 1 0 0 0 10 0 0\n"
                                   "line 2 5 -5 3 5 5 3\n"
                                   "line 3 20 0 0 30 0 0\n"
                                   "point 4 -3 4 0\n");
    PartLoadStatus* status = nullptr;
    Session::GetSession()->Parts()->OpenDisplay(file.string(), &status);
    delete status;
    double d = -1;
    double p1[3], p2[3];
    ASSERT_EQ(UF_MODL_ask_minimum_dist(1, 2, 0, nullptr, 0, nullptr, &d, p1, p2), 0);
    EXPECT_DOUBLE_EQ(d, 3) << "skew segments crossing above each other";
    EXPECT_DOUBLE_EQ(p1[0], 5);
    EXPECT_DOUBLE_EQ(p2[2], 3);
    ASSERT_EQ(UF_MODL_ask_minimum_dist(1, 3, 0, nullptr, 0, nullptr, &d, p1, p2), 0);
    EXPECT_DOUBLE_EQ(d, 10) << "collinear segments end to end";
    ASSERT_EQ(UF_MODL_ask_minimum_dist(4, 1, 0, nullptr, 0, nullptr, &d, p1, p2), 0);
    EXPECT_DOUBLE_EQ(d, 5) << "point beyond the segment's start";
}

TEST_F(UfFunctions, StoplightPromptAndHighlightAreObservable) {
    UF_UI_toggle_stoplight(1);
    UF_UI_toggle_stoplight(0);
    EXPECT_EQ(nxsim::stoplightToggles(), (std::vector<int>{1, 0}));
    EXPECT_EQ(nxsim::takeStoplightToggles(), (std::vector<int>{1, 0}));
    EXPECT_TRUE(nxsim::stoplightToggles().empty());
    char prompt[] = "Select file to open";
    UF_UI_set_prompt(prompt);
    EXPECT_EQ(nxsim::cueLine(), "Select file to open");
    open("a3_metric.prt");
    EXPECT_EQ(UF_DISP_set_highlight(11, 1), 0);
    EXPECT_TRUE(nxsim::highlighted(11));
    EXPECT_EQ(UF_DISP_set_highlight(11, 0), 0);
    EXPECT_FALSE(nxsim::highlighted(11));
    EXPECT_EQ(UF_DISP_set_highlight(77, 0), nxsim::ErrorCode::InvalidTag);
}

TEST_F(UfFunctions, CallsBeforeInitializeFail) {
    ASSERT_EQ(UF_terminate(), 0);
    EXPECT_EQ(UF_UI_toggle_stoplight(1), nxsim::ErrorCode::NotInitialized);
    EXPECT_TRUE(nxsim::stoplightToggles().empty());
}

TEST_F(UfFunctions, InjectedFaultsMakeCallsFailWithTheChosenCode) {
    nxsim::injectFault("UF_initialize", 1105003, 1);
    EXPECT_EQ(UF_initialize(), 1105003);
    EXPECT_EQ(UF_initialize(), 0) << "only one call was to fail";
    nxsim::injectFault("UF_terminate", 42);
    EXPECT_EQ(UF_terminate(), 42);
    EXPECT_EQ(UF_terminate(), 42) << "0 times means every call";
    nxsim::clearFaults();
    EXPECT_EQ(UF_terminate(), 0);
    nxsim::injectFault("UF_DRAW_ask_drawing_info", 7);
    open("a3_metric.prt");
    int n = 0;
    tag_t* tags = nullptr;
    ASSERT_EQ(UF_DRAW_ask_drawings(&n, &tags), 0);
    UF_DRAW_info_t info;
    EXPECT_EQ(UF_DRAW_ask_drawing_info(tags[0], &info), 7);
    UF_free(tags);
    nxsim::injectFault("OpenDisplay", 99, 1);
    try {
        open("custom.prt");
        FAIL();
    } catch (const NXException& e) {
        EXPECT_EQ(e.ErrorCode(), 99);
    }
    std::vector<std::string> log = nxsim::callLog();
    EXPECT_EQ(std::count(log.begin(), log.end(), "UF_initialize"), 3);
}

TEST_F(UfFunctions, MenuAnswersWithTheEntryFromFiveOrTwoForCancel) {
    TestUtil::TestPresenter presenter;
    nxsim::ScopedPresenter scoped(&presenter);
    presenter.pick = [&](const std::string&, const std::vector<std::string>& items) {
        EXPECT_EQ(items, (std::vector<std::string>{"A4", "A3"}));
        return 1;
    };
    char items[2][38] = {"A4", "A3"};
    char cue[] = "Select template from list";
    UF_UI_set_prompt(cue);
    EXPECT_EQ(uc1603("Frame Templates", 2, items, 2), 6);
    const auto pickers = nxsim::shownPickers();
    ASSERT_EQ(pickers.size(), 1u);
    EXPECT_EQ(pickers[0].title, "Frame Templates");
    EXPECT_EQ(pickers[0].prompt, "Select template from list");
    presenter.pick = [&](const std::string&, const std::vector<std::string>&) { return -1; };
    EXPECT_EQ(uc1603("Frame Templates", 0, items, 2), 2);
}

TEST_F(UfFunctions, MenuRefusesMoreThanFourteenEntries) {
    TestUtil::TestPresenter presenter;
    nxsim::ScopedPresenter scoped(&presenter);
    char items[15][38] = {};
    EXPECT_EQ(uc1603("T", 0, items, 15), 0);
    EXPECT_EQ(uc1603("T", 0, items, -1), 0);
    EXPECT_TRUE(nxsim::shownPickers().empty());
}

// A menu of no entries is shown with its title, and can only be cancelled.
TEST_F(UfFunctions, MenuWithNoEntriesIsShownAndCancelled) {
    TestUtil::TestPresenter presenter;
    nxsim::ScopedPresenter scoped(&presenter);
    std::vector<std::string> shown = {"not called"};
    presenter.pick = [&](const std::string&, const std::vector<std::string>& items) {
        shown = items;
        return -1;
    };
    char items[1][38] = {};
    EXPECT_EQ(uc1603("Block Templates", 0, items, 0), 2);
    EXPECT_TRUE(shown.empty());
    ASSERT_EQ(nxsim::shownPickers().size(), 1u);
    EXPECT_EQ(nxsim::shownPickers()[0].title, "Block Templates");
}

TEST_F(UfFunctions, SearchDirectoriesAreTheHostsSearchPathWithoutSubDirectories) {
    TestUtil::ScopedEnvironment environment;
    environment.set("QORFMT_SEARCH_PATH", "/sites/a::/sites/b");
    std::vector<NXString> directories;
    std::vector<bool> subDirectories;
    Session::GetSession()->Parts()->LoadOptions()->GetSearchDirectories(directories,
                                                                        subDirectories);
    ASSERT_EQ(directories.size(), 2u);
    EXPECT_STREQ(directories[0].GetText(), "/sites/a");
    EXPECT_STREQ(directories[1].GetText(), "/sites/b");
    EXPECT_EQ(subDirectories, (std::vector<bool>{false, false}));
    environment.set("QORFMT_SEARCH_PATH", nullptr);
    Session::GetSession()->Parts()->LoadOptions()->GetSearchDirectories(directories,
                                                                        subDirectories);
    EXPECT_TRUE(directories.empty());
    EXPECT_TRUE(subDirectories.empty());
}

} // namespace
