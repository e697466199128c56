// The border dialogs in the desktop host, offscreen: the frame template opened from the border
// layout dialog is drawn in the graphics window, and a corner is picked by clicking on it.

#include "border_site.h"

#include "dialog_window.h"
#include "graphics_view.h"
#include "host_options.h"
#include "host_session.h"
#include "main_window.h"
#include "qt_presenter.h"

#include "border/border_layout_dialog_names.h"
#include "model/border_layout.h"
#include "model/definition_document.h"

#include <nxsim/dlg.h>
#include <nxsim/platform.h>
#include <nxsim/runtime.h>

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "testutil/journal.h"

#include <cstdlib>
#include <memory>
#include <string>

namespace {

using QorfmtHost::DialogWindow;

/// The one QApplication of the test program, on Qt's offscreen platform; never destroyed, as
/// Qt's own globals may be gone at exit.
QApplication& application() {
    static QApplication* app = nullptr;
    if (!app) {
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        QorfmtHost::quietPlatformNoise();
        static int argc = 1;
        static char name[] = "border_host_tests";
        static char* argv[] = {name, nullptr};
        app = new QApplication(argc, argv);
    }
    return *app;
}

QPushButton* button(DialogWindow& window, const char* name) {
    return qobject_cast<QPushButton*>(window.control(name));
}

QListWidget* list(DialogWindow& window, const char* name) {
    return qobject_cast<QListWidget*>(window.control(name));
}

double realValue(DialogWindow& window, const char* name) {
    return qobject_cast<QLineEdit*>(window.control(name))->text().toDouble();
}

class BorderHost : public ::testing::Test {
protected:
    BorderHost() {
        application();
        nxsim::reset();
        nxsim::setPresenter(nullptr);
        TestUtil::prepareBorderSite(site);
        options.site = site.site();
        options.library = QORFMT_CONFIGURE_LIBRARY;
        QorfmtHost::applySetup(options);
    }
    ~BorderHost() override {
        nxsim::setPresenter(nullptr);
        nxsim::reset();
    }

    TestUtil::WorkspaceSite site;
    QorfmtHost::HostOptions options;
    QorfmtHost::LibraryCache libraries;
};

TEST_F(BorderHost, TheOpenedTemplateIsDrawnAndTheFrameCornersArePickedByClicksOnIt) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    window.resize(1000, 760);
    window.show();
    QorfmtHost::GraphicsView& graphics = window.graphics();
    std::string drawnWhileOpen;
    bool pickWaited = false;
    // Clicks the graphics window at sheet coordinates once it waits for a pick.
    const auto clickAt = [&](double x, double y) {
        QTimer::singleShot(0, &graphics, [&, x, y] {
            pickWaited = graphics.pickMode() == QorfmtHost::GraphicsView::PickMode::Point;
            QTest::mouseClick(&graphics, Qt::LeftButton, Qt::NoModifier,
                              graphics.toScreen(x, y).toPoint());
        });
    };
    double bottomLeftX = -1, bottomLeftY = -1, topRightX = -1, topRightY = -1;
    bool pickInsensitiveBeforeOpening = false;
    int pages = 0;
    window.presenter().onDialogShown = [&](DialogWindow& shown) {
        QTimer::singleShot(0, &shown, [&, w = &shown] {
            const std::string name = w->dialog().journalName();
            if (name == "qorfmt_config_selectfile.dlg") {
                list(*w, "FILE_LIST")->setCurrentRow(0);
                w->navigationButton(0)->click();
            } else if (name == "qorborder_config_border") {
                if (auto* tabs = w->findChild<QTabWidget*>()) {
                    pages = tabs->count();
                }
                pickInsensitiveBeforeOpening = !button(*w, "PK_TR_CORNER")->isEnabled();
                list(*w, "FRAME_SIZES")->setCurrentRow(0);
                button(*w, "OPEN_TEMPLATE")->click();
                drawnWhileOpen = graphics.partFile();
                clickAt(20.0, 10.0);
                button(*w, "PK_BL_CORNER")->click();
                clickAt(410.0, 287.0);
                button(*w, "PK_TR_CORNER")->click();
                bottomLeftX = realValue(*w, "BL_X_LOC");
                bottomLeftY = realValue(*w, "BL_Y_LOC");
                topRightX = realValue(*w, "TR_X_LOC");
                topRightY = realValue(*w, "TR_Y_LOC");
                w->navigationButton(0)->click();
            } else if (name == "qorborder_config_main") {
                button(*w, "OPEN_FILE")->click();
                list(*w, "BORDERLIST")->setCurrentRow(0);
                button(*w, "EDITBORDER")->click();
                button(*w, "SAVE_FILE")->click();
                w->navigationButton(3)->click();
            }
        });
    };
    ASSERT_TRUE(window.runLibrary(options.library, false));

    EXPECT_EQ(pages, 4);
    EXPECT_TRUE(pickInsensitiveBeforeOpening);
    EXPECT_EQ(drawnWhileOpen, (site.site() / "format_defs/frame_templates/a3.prt").string());
    EXPECT_TRUE(pickWaited);
    // A click is as exact as a pixel of the window.
    EXPECT_NEAR(bottomLeftX, 20.0, 1.5);
    EXPECT_NEAR(bottomLeftY, 10.0, 1.5);
    EXPECT_NEAR(topRightX, 10.0, 1.5);
    EXPECT_NEAR(topRightY, 10.0, 1.5);
    // The template is closed with the dialog, and the picked corners are saved.
    EXPECT_TRUE(nxsim::displayPartFile().empty());
    const auto a3 =
        QorBorder::DefinitionDocument::load(site.document("docA.fordef"))->getBorderLayout("A3");
    EXPECT_NEAR(a3->bottomLeft.x, 20.0, 1.5);
    EXPECT_NEAR(a3->topRight.y, 10.0, 1.5);
    EXPECT_EQ(a3->topRight.z, 0.0);
}

} // namespace

namespace {

/// The border layout dialog as the runtime builds it from its resource file, shown.
std::unique_ptr<nxsim::RuntimeDialog> shownBorderDialog() {
    auto dialog = std::make_unique<nxsim::RuntimeDialog>(nxsim::readDialogLayout(
        TestUtil::productResources() / QorBorderConf::BorderLayoutDialogNames::kResourceFile));
    dialog->beginShow();
    return dialog;
}

// The pictures of a replay show the page a journal worked on: a changed value brings its page to
// the front; a change of sensitivity alone does not.
TEST_F(BorderHost, AReplayedChangeBringsItsTabPageToTheFront) {
    const auto dialog = shownBorderDialog();
    DialogWindow window(*dialog, false);
    auto* tabs = window.findChild<QTabWidget*>();
    ASSERT_NE(tabs, nullptr);
    EXPECT_EQ(tabs->currentIndex(), 0);
    dialog->item("BL_X_LOC")->setReal(5.0);
    EXPECT_EQ(tabs->tabText(tabs->currentIndex()).remove('&'), "Corners");
    dialog->item("OPEN_TEMPLATE")->setSensitive(true);
    EXPECT_EQ(tabs->tabText(tabs->currentIndex()).remove('&'), "Corners");
    dialog->item("ZONE_START")->setCurrentEntry(2);
    EXPECT_EQ(tabs->tabText(tabs->currentIndex()).remove('&'), "Zones");
    dialog->item("FRAME_SIZES")->setEntries({"A3"});
    EXPECT_EQ(tabs->tabText(tabs->currentIndex()).remove('&'), "Frame Sizes");
    dialog->item("FORMAT_ID")->setText("ISO");
    EXPECT_EQ(tabs->currentIndex(), 0);
}

TEST_F(BorderHost, AnInteractiveWindowLeavesTheTabPageToTheUser) {
    const auto dialog = shownBorderDialog();
    DialogWindow window(*dialog, true);
    auto* tabs = window.findChild<QTabWidget*>();
    ASSERT_NE(tabs, nullptr);
    dialog->item("BL_X_LOC")->setReal(5.0);
    EXPECT_EQ(tabs->currentIndex(), 0);
}

} // namespace
