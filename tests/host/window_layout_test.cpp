#include "host_test_support.h"

#include "window_layout.h"

#include <QScreen>
#include <QWidget>

using namespace HostTest;
using QorfmtHost::placeBeside;
using QorfmtHost::WindowLayout;

namespace {
class WindowLayoutTest : public Fixture {
protected:
    QRect screenArea() const { return QGuiApplication::primaryScreen()->availableGeometry(); }
};
} // namespace

TEST_F(WindowLayoutTest, AKeptGeometryComesBackUnderItsNameOnly) {
    QWidget window;
    window.setGeometry(110, 70, 300, 200);
    WindowLayout layout;
    layout.save(window, "qorborder_config_field");
    QWidget again;
    EXPECT_TRUE(layout.restore(again, "qorborder_config_field"));
    EXPECT_EQ(again.geometry(), QRect(110, 70, 300, 200));
    QWidget other;
    EXPECT_FALSE(layout.restore(other, "qorborder_config_choice"));
    WindowLayout::forget();
    EXPECT_FALSE(layout.restore(other, "qorborder_config_field"));
}

TEST_F(WindowLayoutTest, ADisabledLayoutKeepsAndRestoresNothing) {
    QWidget window;
    window.setGeometry(10, 20, 300, 200);
    WindowLayout(true).save(window, "main_window");
    WindowLayout off(false);
    QWidget again;
    EXPECT_FALSE(off.restore(again, "main_window"));
    window.setGeometry(50, 60, 300, 200);
    off.save(window, "main_window");
    EXPECT_TRUE(WindowLayout(true).restore(again, "main_window"));
    EXPECT_EQ(again.geometry(), QRect(10, 20, 300, 200));
}

TEST_F(WindowLayoutTest, ADialogGoesRightOfTheMainWindowElseLeftElseToTheScreensRightEdge) {
    const QRect area = screenArea();
    QWidget main;
    QWidget dialog;
    dialog.resize(200, 150);
    main.setGeometry(area.left(), area.top() + 10, 300, 300);
    placeBeside(dialog, main, 0);
    EXPECT_GT(dialog.x(), main.frameGeometry().right());
    EXPECT_EQ(dialog.y(), main.frameGeometry().top());

    main.setGeometry(area.right() - 300, area.top() + 10, 300, 300);
    placeBeside(dialog, main, 1);
    EXPECT_LE(dialog.x() + dialog.width(), main.frameGeometry().left());
    EXPECT_EQ(dialog.y(), main.frameGeometry().top() + 24);

    main.setGeometry(area.left() + 100, area.top(), area.width() - 200, 300);
    placeBeside(dialog, main, 0);
    EXPECT_EQ(dialog.frameGeometry().right(), area.right());
}
