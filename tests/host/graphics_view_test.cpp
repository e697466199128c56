#include "host_test_support.h"

#include "graphics_view.h"

#include <testutil/temp_dir.h>

#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

using namespace HostTest;
using QorfmtHost::GraphicsView;

namespace {

class GraphicsViewTest : public Fixture {
protected:
    void SetUp() override {
        Fixture::SetUp();
        owned = std::make_unique<GraphicsView>();
        view = owned.get();
        view->resize(600, 400);
        view->show();
        view->showPart((kNxsimData / "parts" / "a3_metric.prt").string());
    }
    std::unique_ptr<GraphicsView> owned;
    GraphicsView* view = nullptr;
};

// The mouse resting at `position`, delivered at once on every platform.
void hover(QWidget* widget, const QPoint& position) {
    QMouseEvent move(QEvent::MouseMove, QPointF(position), widget->mapToGlobal(QPointF(position)),
                     Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &move);
}

} // namespace

TEST_F(GraphicsViewTest, TheSheetOfTheDisplayPartFillsTheWindow) {
    ASSERT_TRUE(view->part().has_value());
    const QRectF bounds = view->partBounds();
    EXPECT_DOUBLE_EQ(bounds.left(), 0.0);
    EXPECT_DOUBLE_EQ(bounds.top(), 0.0);
    EXPECT_DOUBLE_EQ(bounds.width(), 420.0);
    EXPECT_DOUBLE_EQ(bounds.height(), 297.0);
    // y grows upwards: the sheet's origin is at the lower left.
    const QPointF origin = view->toScreen(0.0, 0.0);
    const QPointF far = view->toScreen(420.0, 297.0);
    EXPECT_LT(origin.y(), view->height());
    EXPECT_GT(origin.y(), far.y());
    EXPECT_LT(origin.x(), far.x());
    const QPointF back = view->toPart(view->toScreen(123.0, 45.0));
    EXPECT_NEAR(back.x(), 123.0, 1e-9);
    EXPECT_NEAR(back.y(), 45.0, 1e-9);
}

TEST_F(GraphicsViewTest, TheSheetsLowerCornersStayClearOfThePromptBarOfAPick) {
    const QPointF before = view->toScreen(0.0, 0.0);
    view->beginPick(GraphicsView::PickMode::Point, "Select corner point");
    // The bar is 28 pixels high along the bottom; the corner and its snap mark stay above it.
    EXPECT_LT(view->toScreen(0.0, 0.0).y() + 6.0, view->height() - 28.0);
    EXPECT_LT(view->toScreen(420.0, 0.0).y() + 6.0, view->height() - 28.0);
    EXPECT_EQ(view->toScreen(0.0, 0.0), before) << "the picture moved when the pick began";
}

TEST_F(GraphicsViewTest, AClickInPointModeAnswersThePointInPartCoordinates) {
    QSignalSpy picked(view, &GraphicsView::pointPicked);
    view->beginPick(GraphicsView::PickMode::Point, "Select corner point");
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, view->toScreen(100.0, 50.0).toPoint());
    ASSERT_EQ(picked.count(), 1);
    EXPECT_NEAR(picked.front()[0].toDouble(), 100.0, 2.0);
    EXPECT_NEAR(picked.front()[1].toDouble(), 50.0, 2.0);
}

TEST_F(GraphicsViewTest, AClickNearAnObjectSelectsItsTagAndFarFromAllSelectsNothing) {
    QSignalSpy picked(view, &GraphicsView::objectPicked);
    view->beginPick(GraphicsView::PickMode::Object, "Select an object");
    // The line of tag 13 runs at y = 20 across the sheet.
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, view->toScreen(200.0, 21.0).toPoint());
    ASSERT_EQ(picked.count(), 1);
    EXPECT_EQ(picked.front()[0].toUInt(), 13u);
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, view->toScreen(200.0, 200.0).toPoint());
    EXPECT_EQ(picked.count(), 1);
    const nxsim::SimObject* point = view->objectNear(view->toScreen(10.0, 10.0));
    ASSERT_NE(point, nullptr);
    EXPECT_EQ(point->tag, 11u);
}

TEST_F(GraphicsViewTest, EscapeOrARightClickCancelsAPick) {
    QSignalSpy cancelled(view, &GraphicsView::pickCancelled);
    view->beginPick(GraphicsView::PickMode::Point, "cue");
    QTest::keyClick(view, Qt::Key_Escape);
    QTest::mouseClick(view, Qt::RightButton);
    EXPECT_EQ(cancelled.count(), 2);
    view->endPick();
    QTest::mouseClick(view, Qt::RightButton);
    EXPECT_EQ(cancelled.count(), 2);
}

TEST_F(GraphicsViewTest, APartFileThatCannotBeReadIsReportedNotDrawn) {
    view->showPart((kNxsimData / "parts" / "vendor_binary.prt").string());
    EXPECT_FALSE(view->part().has_value());
    view->showPart("");
    EXPECT_FALSE(view->part().has_value());
    EXPECT_TRUE(view->partFile().empty());
}

TEST_F(GraphicsViewTest, APositionPickNearAPointSnapsToItsExactCoordinates) {
    QSignalSpy picked(view, &GraphicsView::pointPicked);
    QSignalSpy hovered(view, &GraphicsView::hovered);
    view->beginPick(GraphicsView::PickMode::Point, "Select corner point");
    // Three pixels beside the point of tag 11 at (10, 10).
    const QPoint near = (view->toScreen(10.0, 10.0) + QPointF(3.0, -2.0)).toPoint();
    hover(view, near);
    ASSERT_TRUE(view->snapTarget().has_value());
    EXPECT_EQ(*view->snapTarget(), QPointF(10.0, 10.0));
    ASSERT_FALSE(hovered.isEmpty());
    EXPECT_TRUE(hovered.back()[0].toString().startsWith("Snap X 10  Y 10"))
        << hovered.back()[0].toString().toStdString();
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, near);
    ASSERT_EQ(picked.count(), 1);
    EXPECT_EQ(picked.front()[0].toDouble(), 10.0);
    EXPECT_EQ(picked.front()[1].toDouble(), 10.0);
}

TEST_F(GraphicsViewTest, APositionPickSnapsToALinesEndPoint) {
    QSignalSpy picked(view, &GraphicsView::pointPicked);
    view->beginPick(GraphicsView::PickMode::Point, "Select corner point");
    // The line of tag 13 ends at (420, 20).
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier,
                      (view->toScreen(420.0, 20.0) + QPointF(-2.0, 3.0)).toPoint());
    ASSERT_EQ(picked.count(), 1);
    EXPECT_EQ(picked.front()[0].toDouble(), 420.0);
    EXPECT_EQ(picked.front()[1].toDouble(), 20.0);
}

TEST_F(GraphicsViewTest, ShiftPicksTheFreePositionWithoutSnapping) {
    QSignalSpy picked(view, &GraphicsView::pointPicked);
    view->beginPick(GraphicsView::PickMode::Point, "Select corner point");
    const QPoint near = (view->toScreen(10.0, 10.0) + QPointF(4.0, 0.0)).toPoint();
    hover(view, near);
    QTest::keyPress(view, Qt::Key_Shift, Qt::ShiftModifier);
    EXPECT_FALSE(view->snapTarget().has_value());
    QTest::keyRelease(view, Qt::Key_Shift, Qt::NoModifier);
    EXPECT_TRUE(view->snapTarget().has_value());
    QTest::mouseClick(view, Qt::LeftButton, Qt::ShiftModifier, near);
    ASSERT_EQ(picked.count(), 1);
    EXPECT_NE(picked.front()[0].toDouble(), 10.0) << picked.front()[0].toDouble();
    EXPECT_NEAR(picked.front()[0].toDouble(), 10.0, 6.0);
}

TEST_F(GraphicsViewTest, FarFromEveryPointAPickIsNotSnapped) {
    view->beginPick(GraphicsView::PickMode::Point, "Select corner point");
    hover(view, view->toScreen(200.0, 150.0).toPoint());
    EXPECT_FALSE(view->snapTarget().has_value());
    EXPECT_FALSE(view->snapPointNear(view->toScreen(10.0, 10.0) + QPointF(20.0, 0.0)));
}

// Lines 21 and 22 cross at (80, 40); line 21's middle is (100, 50); line 24 ends at (300, 100)
// on line 23, whose middle that is too.
class GraphicsViewSnapTest : public GraphicsViewTest {
protected:
    void SetUp() override {
        GraphicsViewTest::SetUp();
        view->showPart((kNxsimData / "parts" / "crossing_lines.prt").string());
        view->beginPick(GraphicsView::PickMode::Point, "Select corner point");
    }
    // The snap point a little beside the part point (x, y), and the status bar's text there.
    std::optional<GraphicsView::SnapPoint> snapBeside(double x, double y, QString* status) {
        QSignalSpy hovered(view, &GraphicsView::hovered);
        hover(view, (view->toScreen(x, y) + QPointF(2.0, -3.0)).toPoint());
        if (status && !hovered.isEmpty()) {
            *status = hovered.back()[0].toString();
        }
        return view->snapNear(view->toScreen(x, y) + QPointF(2.0, -3.0));
    }
};

TEST_F(GraphicsViewSnapTest, APositionPickSnapsToWhereTwoLinesCross) {
    QString status;
    const auto snap = snapBeside(80.0, 40.0, &status);
    ASSERT_TRUE(snap.has_value());
    EXPECT_EQ(snap->kind, GraphicsView::SnapPoint::Intersection);
    EXPECT_NEAR(snap->at.x(), 80.0, 1e-9);
    EXPECT_NEAR(snap->at.y(), 40.0, 1e-9);
    EXPECT_TRUE(status.startsWith("Snap X 80  Y 40 (intersection)")) << status.toStdString();
    QSignalSpy picked(view, &GraphicsView::pointPicked);
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier,
                      (view->toScreen(80.0, 40.0) + QPointF(2.0, -3.0)).toPoint());
    ASSERT_EQ(picked.count(), 1);
    EXPECT_NEAR(picked.front()[0].toDouble(), 80.0, 1e-9);
    EXPECT_NEAR(picked.front()[1].toDouble(), 40.0, 1e-9);
}

TEST_F(GraphicsViewSnapTest, APositionPickSnapsToTheMiddleOfALine) {
    QString status;
    const auto snap = snapBeside(100.0, 50.0, &status);
    ASSERT_TRUE(snap.has_value());
    EXPECT_EQ(snap->kind, GraphicsView::SnapPoint::MidPoint);
    EXPECT_EQ(snap->at, QPointF(100.0, 50.0));
    EXPECT_TRUE(status.startsWith("Snap X 100  Y 50 (mid-point)")) << status.toStdString();
}

TEST_F(GraphicsViewSnapTest, WhereAnEndMeetsACrossingAndAMiddleTheEndPointIsShown) {
    QString status;
    const auto snap = snapBeside(300.0, 100.0, &status);
    ASSERT_TRUE(snap.has_value());
    EXPECT_EQ(snap->kind, GraphicsView::SnapPoint::EndPoint);
    EXPECT_EQ(snap->at, QPointF(300.0, 100.0));
    EXPECT_TRUE(status.startsWith("Snap X 300  Y 100 (end point)")) << status.toStdString();
}

TEST_F(GraphicsViewSnapTest, LinesThatDoNotReachEachOtherHaveNoCrossing) {
    // Lines 22 and 24 would cross if they were longer: at (50, 100) line 22 has its middle, not
    // a crossing; and far from every snap point nothing is snapped.
    const auto middle = snapBeside(50.0, 100.0, nullptr);
    ASSERT_TRUE(middle.has_value());
    EXPECT_EQ(middle->kind, GraphicsView::SnapPoint::MidPoint);
    EXPECT_FALSE(snapBeside(200.0, 160.0, nullptr).has_value());
}

TEST_F(GraphicsViewTest, AnObjectSelectionHighlightsTheObjectUnderTheCursorBeforeTheClick) {
    view->beginPick(GraphicsView::PickMode::Object, "Select an object");
    hover(view, view->toScreen(200.0, 21.0).toPoint());
    EXPECT_EQ(view->hoveredObject(), 13u);
    hover(view, view->toScreen(200.0, 150.0).toPoint());
    EXPECT_EQ(view->hoveredObject(), 0u);
    hover(view, view->toScreen(200.0, 21.0).toPoint());
    view->endPick();
    EXPECT_EQ(view->hoveredObject(), 0u);
}
