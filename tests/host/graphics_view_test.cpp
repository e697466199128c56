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
