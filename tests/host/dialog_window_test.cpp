#include "host_test_support.h"

#include "dialog_window.h"
#include "session_recorder.h"

#include <testutil/temp_dir.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include <algorithm>
#include <fstream>
#include <set>
#include <stdexcept>

using namespace HostTest;
using nxsim::EventKind;
using QorfmtHost::DialogWindow;

namespace {

// A label as it reads, without its mnemonic mark.
std::string plain(const QString& text) {
    return QString(text).remove(QRegularExpression("&(?!&)")).toStdString();
}

class DialogWindowTest : public Fixture {
protected:
    void SetUp() override {
        Fixture::SetUp();
        dialog = shownDialog("nxsim_test_all.dlg");
        window = std::make_unique<DialogWindow>(*dialog, true);
        window->show();
    }
    void TearDown() override {
        window.reset();
        dialog.reset();
        Fixture::TearDown();
    }

    template <class T>
    T* control(const std::string& name) {
        auto* widget = qobject_cast<T*>(window->control(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    nxsim::RuntimeItem& item(const std::string& name) { return *dialog->item(name); }

    std::unique_ptr<nxsim::RuntimeDialog> dialog;
    std::unique_ptr<DialogWindow> window;
};

} // namespace

TEST_F(DialogWindowTest, EveryItemKindShowsItsInitialStateAsANativeWidget) {
    EXPECT_EQ(window->windowTitle(), "All Items");
    EXPECT_EQ(plain(control<QPushButton>("PRESS_ME")->text()), "Press");
    EXPECT_TRUE(window->container("HIDDEN_BUTTON")->isHidden());
    EXPECT_FALSE(window->container("DISABLED_BUTTON")->isEnabled());

    auto* rows = control<QListWidget>("ROWS");
    ASSERT_EQ(rows->count(), 3);
    EXPECT_EQ(rows->item(2)->text(), "gamma");
    EXPECT_TRUE(rows->selectedItems().isEmpty());
    EXPECT_EQ(plain(window->caption("ROWS")->text()), "Rows");

    auto* units = control<QComboBox>("UNITS");
    EXPECT_EQ(units->count(), 3);
    EXPECT_EQ(units->currentIndex(), 1);
    auto* model = qobject_cast<QStandardItemModel*>(units->model());
    ASSERT_NE(model, nullptr);
    EXPECT_TRUE(model->item(0)->isEnabled());
    EXPECT_FALSE(model->item(2)->isEnabled());

    EXPECT_EQ(control<QLineEdit>("NAME")->text(), "start");
    EXPECT_EQ(plain(window->caption("NAME")->text()), "Name");
    EXPECT_EQ(control<QLineEdit>("WIDE")->text(), "");
    EXPECT_EQ(control<QPlainTextEdit>("NOTES")->toPlainText(), "one\ntwo");

    auto* corner = control<QGroupBox>("CORNER");
    EXPECT_EQ(plain(corner->title()), "Corner");
    const auto radios = corner->findChildren<QRadioButton*>();
    ASSERT_EQ(radios.size(), 2);
    EXPECT_TRUE(radios[0]->isChecked());
    EXPECT_EQ(control<QLineEdit>("COUNT")->text(), "7");
    EXPECT_EQ(control<QLineEdit>("SCALE")->text(), "1.5");
    EXPECT_TRUE(control<QCheckBox>("ENABLED")->isChecked());
    EXPECT_EQ(plain(control<QCheckBox>("ENABLED")->text()), "Enabled");
    EXPECT_EQ(control<QSpinBox>("COLOUR")->value(), 186);
    EXPECT_FALSE(window->container("INNER")->isEnabled());
    EXPECT_FALSE(control<QPushButton>("INNER_BUTTON")->isEnabled());
    EXPECT_EQ(control<QLabel>("STATUS")->text(), "Ready");

    auto* tabs = window->findChild<QTabWidget*>();
    ASSERT_NE(tabs, nullptr);
    ASSERT_EQ(tabs->count(), 2);
    EXPECT_EQ(plain(tabs->tabText(0)), "Numbers");
    EXPECT_EQ(plain(tabs->tabText(1)), "Flags");

    ASSERT_NE(window->navigationButton(0), nullptr);
    EXPECT_EQ(plain(window->navigationButton(0)->text()), "OK");
    ASSERT_NE(window->navigationButton(1), nullptr);
    EXPECT_EQ(window->navigationButton(2), nullptr);
    ASSERT_NE(window->navigationButton(3), nullptr);
}

TEST_F(DialogWindowTest, ChangesMadeByTheProgramReachTheWidgets) {
    item("STATUS").setLabel("Changed");
    item("ROWS").setEntries({"one", "two"});
    item("ROWS").setSelected(1);
    item("UNITS").setEntrySensitive(0, false);
    item("UNITS").setCurrentEntry(2);
    item("NAME").setText("typed by code");
    item("NOTES").setLines({"a", "b", "c"});
    item("COUNT").setInt(-3);
    item("ENABLED").setToggle(false);
    item("PRESS_ME").setVisible(false);
    item("WIDE").setSensitive(false);
    item("WIDE").setLabel("Wider");
    dialog->setTitle("New Title");
    dialog->setNavigationSensitive(0, false);

    EXPECT_EQ(control<QLabel>("STATUS")->text(), "Changed");
    auto* rows = control<QListWidget>("ROWS");
    ASSERT_EQ(rows->count(), 2);
    EXPECT_EQ(rows->currentRow(), 1);
    EXPECT_TRUE(rows->item(1)->isSelected());
    auto* model = qobject_cast<QStandardItemModel*>(control<QComboBox>("UNITS")->model());
    EXPECT_FALSE(model->item(0)->isEnabled());
    EXPECT_EQ(control<QComboBox>("UNITS")->currentIndex(), 2);
    EXPECT_EQ(control<QLineEdit>("NAME")->text(), "typed by code");
    EXPECT_EQ(control<QPlainTextEdit>("NOTES")->toPlainText(), "a\nb\nc");
    EXPECT_EQ(control<QLineEdit>("COUNT")->text(), "-3");
    EXPECT_FALSE(control<QCheckBox>("ENABLED")->isChecked());
    EXPECT_TRUE(window->container("PRESS_ME")->isHidden());
    EXPECT_FALSE(window->container("WIDE")->isEnabled());
    EXPECT_EQ(plain(window->caption("WIDE")->text()), "Wider");
    EXPECT_EQ(window->windowTitle(), "New Title");
    EXPECT_FALSE(window->navigationButton(0)->isEnabled());
    EXPECT_TRUE(window->navigationButton(3)->isEnabled());
}

TEST_F(DialogWindowTest, FocusSetByTheProgramMovesToTheWidget) {
    item("COUNT").setFocus();
    EXPECT_EQ(window->focusWidget(), window->control("COUNT"));
    item("NAME").setFocus();
    EXPECT_EQ(window->focusWidget(), window->control("NAME"));
}

TEST_F(DialogWindowTest, ATitleChangeLeavesTheFocusWhereTheUserPutItASecondSetFocusMovesIt) {
    item("COUNT").setFocus();
    window->control("SCALE")->setFocus();
    dialog->setTitle("Another Title");
    dialog->setNavigationSensitive(0, false);
    EXPECT_EQ(window->focusWidget(), window->control("SCALE"));
    item("COUNT").setFocus();
    EXPECT_EQ(window->focusWidget(), window->control("COUNT"));
}

TEST_F(DialogWindowTest, ClickingAButtonRunsItsActivateHandlerOnce) {
    int calls = 0;
    item("PRESS_ME").addHandler(EventKind::Activate, counting(calls), false);
    QTest::mouseClick(control<QPushButton>("PRESS_ME"), Qt::LeftButton);
    EXPECT_EQ(calls, 1);
}

TEST_F(DialogWindowTest, ClickingARowSelectsItAndFiresActivateDoubleClickFiresDoubleClick) {
    int activates = 0;
    int doubleClicks = 0;
    item("ROWS").addHandler(EventKind::Activate, counting(activates), false);
    item("ROWS").addHandler(EventKind::DoubleClick, counting(doubleClicks), false);
    auto* rows = control<QListWidget>("ROWS");
    rows->setCurrentRow(2);
    EXPECT_EQ(item("ROWS").selected(), 2);
    EXPECT_EQ(activates, 1);
    emit rows->itemDoubleClicked(rows->item(1));
    EXPECT_EQ(item("ROWS").selected(), 1);
    EXPECT_EQ(doubleClicks, 1);
    rows->clearSelection();
    EXPECT_EQ(item("ROWS").selected(), -1);
}

TEST_F(DialogWindowTest, TypingSetsTheValueWithoutAnEventAndEnterFiresActivate) {
    int calls = 0;
    item("NAME").addHandler(EventKind::Activate, counting(calls), false);
    auto* name = control<QLineEdit>("NAME");
    name->setFocus();
    name->end(false);
    QTest::keyClicks(name, "X");
    EXPECT_EQ(item("NAME").text(), "startX");
    EXPECT_EQ(calls, 0);
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_EQ(calls, 1);

    auto* notes = control<QPlainTextEdit>("NOTES");
    notes->setPlainText("x\ny");
    EXPECT_EQ(item("NOTES").lines(), (std::vector<std::string>{"x", "y"}));
    auto* scale = control<QLineEdit>("SCALE");
    scale->clear();
    QTest::keyClicks(scale, "1.05");
    EXPECT_EQ(scale->text(), "1.05");
    EXPECT_DOUBLE_EQ(item("SCALE").realValue(), 1.05);
    auto* count = control<QLineEdit>("COUNT");
    count->clear();
    QTest::keyClicks(count, "42");
    EXPECT_EQ(item("COUNT").intValue(), 42);
    control<QSpinBox>("COLOUR")->setValue(12);
    EXPECT_EQ(item("COLOUR").intValue(), 12);
}

TEST_F(DialogWindowTest, ChoosingAnOptionOrRadioEntryFiresItsEvent) {
    int activates = 0;
    int changes = 0;
    int toggles = 0;
    item("UNITS").addHandler(EventKind::Activate, counting(activates), false);
    item("CORNER").addHandler(EventKind::ValueChanged, counting(changes), false);
    item("ENABLED").addHandler(EventKind::ValueChanged, counting(toggles), false);
    emit control<QComboBox>("UNITS")->activated(0);
    EXPECT_EQ(item("UNITS").intValue(), 0);
    EXPECT_EQ(activates, 1);
    control<QGroupBox>("CORNER")->findChildren<QRadioButton*>()[1]->click();
    EXPECT_EQ(item("CORNER").intValue(), 1);
    EXPECT_EQ(changes, 1);
    control<QCheckBox>("ENABLED")->click();
    EXPECT_FALSE(item("ENABLED").toggleValue());
    EXPECT_EQ(toggles, 1);
}

TEST_F(DialogWindowTest, AnInsensitiveEntryIsRefusedAndTheWidgetShowsTheValueInForce) {
    QSignalSpy notices(window.get(), &DialogWindow::notice);
    auto* units = control<QComboBox>("UNITS");
    units->setCurrentIndex(2);
    emit units->activated(2);
    EXPECT_EQ(item("UNITS").intValue(), 1);
    EXPECT_EQ(units->currentIndex(), 1);
    ASSERT_EQ(notices.count(), 1);
    EXPECT_TRUE(notices.front().front().toString().contains("insensitive"));
}

TEST_F(DialogWindowTest, OkCancelAndTheCloseBoxEndTheDialog) {
    QSignalSpy ended(window.get(), &DialogWindow::ended);
    int cancels = 0;
    dialog->dialogItem()->addHandler(EventKind::Cancel, counting(cancels), false);
    window->close();
    EXPECT_TRUE(dialog->ended());
    EXPECT_EQ(dialog->response(), NXOpen::UIStyler::DialogResponseCancel);
    EXPECT_EQ(cancels, 1);
    EXPECT_EQ(ended.count(), 1);

    auto second = shownDialog("nxsim_test_all.dlg");
    DialogWindow okWindow(*second, true);
    okWindow.show();
    okWindow.navigationButton(0)->click();
    EXPECT_TRUE(second->ended());
    EXPECT_EQ(second->response(), NXOpen::UIStyler::DialogResponseOk);
}

TEST_F(DialogWindowTest, InsensitiveOkButtonFollowsSetNavigationSensitivity) {
    dialog->setNavigationSensitive(0, false);
    EXPECT_FALSE(window->navigationButton(0)->isEnabled());
    dialog->setNavigationSensitive(0, true);
    EXPECT_TRUE(window->navigationButton(0)->isEnabled());
    dialog->setNavigationSensitive(3, false);
    EXPECT_FALSE(window->navigationButton(3)->isEnabled());
}

TEST_F(DialogWindowTest, AHandlerExceptionIsKeptForThePresenterAndStopsFurtherInput) {
    QSignalSpy failed(window.get(), &DialogWindow::failed);
    int calls = 0;
    item("PRESS_ME")
        .addHandler(EventKind::Activate,
                    LambdaCallback([&calls](auto*) -> NXOpen::UIStyler::DialogState {
                        ++calls;
                        throw std::runtime_error("handler broke");
                    }),
                    false);
    control<QPushButton>("PRESS_ME")->click();
    ASSERT_EQ(failed.count(), 1);
    control<QPushButton>("PRESS_ME")->click();
    EXPECT_EQ(calls, 1);
    std::exception_ptr error = window->takeError();
    ASSERT_TRUE(error);
    try {
        std::rethrow_exception(error);
    } catch (const std::runtime_error& e) {
        EXPECT_STREQ(e.what(), "handler broke");
    }
}

TEST_F(DialogWindowTest, AReplayWindowShowsStateButIgnoresInput) {
    auto replayed = shownDialog("nxsim_test_all.dlg");
    DialogWindow replayWindow(*replayed, false);
    replayWindow.show();
    int calls = 0;
    replayed->item("PRESS_ME")->addHandler(EventKind::Activate, counting(calls), false);
    qobject_cast<QPushButton*>(replayWindow.control("PRESS_ME"))->click();
    EXPECT_EQ(calls, 0);
    replayed->item("STATUS")->setLabel("from the journal");
    EXPECT_EQ(qobject_cast<QLabel*>(replayWindow.control("STATUS"))->text(), "from the journal");
}

TEST_F(DialogWindowTest, UserActionsAreRecordedAsJournalLinesTypingAsOneSetLine) {
    TestUtil::TempDir temp;
    QorfmtHost::SessionRecorder recorder(temp.path() / "session.journal");
    window->setRecorder(&recorder, 1);
    auto* name = control<QLineEdit>("NAME");
    name->clear();
    QTest::keyClicks(name, "Ann B");
    control<QPushButton>("PRESS_ME")->click();
    control<QListWidget>("ROWS")->setCurrentRow(1);
    emit control<QComboBox>("UNITS")->activated(0);
    control<QCheckBox>("ENABLED")->click();
    window->navigationButton(0)->click();
    EXPECT_EQ(recorder.text(), "# recorded by qorfmt-host\n"
                               "  set NAME \"Ann B\"\n"
                               "  press PRESS_ME\n"
                               "  select ROWS 1\n"
                               "  choose UNITS \"Millimetres\"\n"
                               "  toggle ENABLED off\n"
                               "  ok\n");
    EXPECT_EQ(TestUtil::readFile(temp.path() / "session.journal"), recorder.text());
}

TEST_F(DialogWindowTest, AChoiceIsRecordedByItsTextUnlessAnotherEntryHasTheSameText) {
    TestUtil::TempDir temp;
    QorfmtHost::SessionRecorder recorder(temp.path() / "session.journal");
    window->setRecorder(&recorder, 1);
    item("UNITS").setEntries({"mm", "mm", "in"});
    emit control<QComboBox>("UNITS")->activated(1);
    emit control<QComboBox>("UNITS")->activated(2);
    control<QGroupBox>("CORNER")->findChildren<QRadioButton*>()[1]->click();
    EXPECT_EQ(recorder.text(), "# recorded by qorfmt-host\n"
                               "  choose UNITS 1\n"
                               "  choose UNITS \"in\"\n"
                               "  choose CORNER \"Top right\"\n");
}

namespace {

const fs::path kResources = fs::path(QORFMT_SOURCE_DIR) / "resources";

// Every dialog resource file of the configurator.
std::vector<fs::path> resourceFiles() {
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(kResources)) {
        if (entry.path().extension() == ".dlg") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

// The tab pages that hold a widget: (tab widget, page index), outermost last.
std::vector<std::pair<QTabWidget*, int>> pagesOf(QWidget* widget) {
    std::vector<std::pair<QTabWidget*, int>> pages;
    for (QWidget* w = widget; w; w = w->parentWidget()) {
        QWidget* stack = w->parentWidget();
        auto* tabs = stack ? qobject_cast<QTabWidget*>(stack->parentWidget()) : nullptr;
        if (tabs && tabs->indexOf(w) >= 0) {
            pages.emplace_back(tabs, tabs->indexOf(w));
        }
    }
    return pages;
}

// Whether two mnemonic keys of a window can be seen at once: not on two pages of one tab widget.
bool shownTogether(const DialogWindow& window, const std::string& a, const std::string& b) {
    QWidget* wa = window.control(a);
    QWidget* wb = window.control(b);
    if (!wa || !wb) {
        return true; // navigation buttons and tab pages are always shown
    }
    for (const auto& pa : pagesOf(wa)) {
        for (const auto& pb : pagesOf(wb)) {
            if (pa.first == pb.first && pa.second != pb.second) {
                return false;
            }
        }
    }
    return true;
}

// Every pair of keys with one letter that can be seen at once, as "A/B".
std::vector<std::string> mnemonicClashes(const DialogWindow& window) {
    std::vector<std::string> clashes;
    for (const auto& a : window.mnemonics()) {
        for (const auto& b : window.mnemonics()) {
            if (a.first < b.first && a.second == b.second &&
                shownTogether(window, a.first, b.first)) {
                clashes.push_back(a.first + "/" + b.first);
            }
        }
    }
    return clashes;
}

std::unique_ptr<nxsim::RuntimeDialog> shownResource(const fs::path& file) {
    auto dialog = std::make_unique<nxsim::RuntimeDialog>(nxsim::readDialogLayout(file));
    dialog->beginShow();
    return dialog;
}

} // namespace

TEST_F(DialogWindowTest, OnShowTheFocusIsOnTheFirstFieldToTypeIntoNotOnAListOrMenuBeforeIt) {
    // ROWS and UNITS come first in the file; the first field to type into is NAME.
    EXPECT_EQ(window->focusWidget(), window->control("NAME"));
}

TEST_F(DialogWindowTest, OnShowTheFocusIsWhereTheProgramPutIt) {
    auto second = shownDialog("nxsim_test_all.dlg");
    second->item("SCALE")->setFocus();
    DialogWindow shown(*second, true);
    shown.show();
    EXPECT_EQ(shown.focusWidget(), shown.control("SCALE"));
}

TEST_F(DialogWindowTest, TheSaveAsDialogOpensWithTheFocusOnTheNameNotTheFolderMenu) {
    auto file = shownResource(kResources / "qorfmt_config_selectfile.dlg");
    DialogWindow shown(*file, true);
    shown.show();
    EXPECT_EQ(shown.focusWidget(), shown.control("FILE_SELECTION"));
}

TEST_F(DialogWindowTest, EveryDialogOpensWithTheFocusOnAControlOfTheShownPageNeverTheTabBar) {
    for (const fs::path& file : resourceFiles()) {
        auto resource = shownResource(file);
        DialogWindow shown(*resource, true);
        shown.show();
        QWidget* focus = shown.focusWidget();
        ASSERT_NE(focus, nullptr) << file;
        EXPECT_EQ(qobject_cast<QTabBar*>(focus), nullptr) << file;
        EXPECT_FALSE(focus->objectName().isEmpty())
            << file << ": " << focus->metaObject()->className();
        EXPECT_TRUE(focus->isVisibleTo(&shown)) << file;
    }
}

TEST_F(DialogWindowTest, TabLeavesAMultiLineFieldAndCtrlTabTypesATab) {
    QApplication::setActiveWindow(window.get());
    auto* notes = control<QPlainTextEdit>("NOTES");
    notes->setFocus();
    notes->moveCursor(QTextCursor::End);
    QTest::keyClick(notes, Qt::Key_Tab);
    EXPECT_NE(window->focusWidget(), notes);
    EXPECT_EQ(item("NOTES").lines(), (std::vector<std::string>{"one", "two"}));
    notes->setFocus();
    QTest::keyClick(notes, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(window->focusWidget(), notes);
    EXPECT_EQ(item("NOTES").lines(), (std::vector<std::string>{"one", "two\t"}));
}

TEST_F(DialogWindowTest, EnterOnAButtonPressesItAndInAStringFiresOnlyItsActivate) {
    int presses = 0;
    int activates = 0;
    item("PRESS_ME").addHandler(EventKind::Activate, counting(presses), false);
    item("NAME").addHandler(EventKind::Activate, counting(activates), false);
    QTest::keyClick(control<QPushButton>("PRESS_ME"), Qt::Key_Return);
    EXPECT_EQ(presses, 1);
    QTest::keyClick(control<QLineEdit>("NAME"), Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(activates, 1);
    EXPECT_EQ(presses, 1);
    EXPECT_FALSE(dialog->ended());
}

TEST_F(DialogWindowTest, EscapeAndTheCloseBoxTakeTheCancelButtonsPath) {
    TestUtil::TempDir temp;
    QorfmtHost::SessionRecorder recorder(temp.path() / "session.journal");
    window->setRecorder(&recorder, 1);
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_TRUE(dialog->ended());
    EXPECT_EQ(recorder.text(), "# recorded by qorfmt-host\n  cancel\n");

    auto second = shownDialog("nxsim_test_all.dlg");
    DialogWindow closed(*second, true);
    closed.setRecorder(&recorder, 1);
    closed.show();
    closed.close();
    EXPECT_TRUE(second->ended());
    EXPECT_EQ(recorder.text(), "# recorded by qorfmt-host\n  cancel\n  cancel\n");
}

TEST_F(DialogWindowTest, WithCancelInsensitiveTheCloseBoxIsTheWindowsClose) {
    TestUtil::TempDir temp;
    QorfmtHost::SessionRecorder recorder(temp.path() / "session.journal");
    window->setRecorder(&recorder, 1);
    dialog->setNavigationSensitive(3, false);
    window->close();
    EXPECT_TRUE(dialog->ended());
    EXPECT_EQ(recorder.text(), "# recorded by qorfmt-host\n  close\n");
}

TEST_F(DialogWindowTest, LabelledControlsGetMnemonicsFromTheirLabelsOKFirstAndAltUsesThem) {
    EXPECT_EQ(window->mnemonic("navigation:OK"), QChar('o'));
    EXPECT_EQ(window->navigationButton(0)->text(), "&OK");
    EXPECT_EQ(window->mnemonic("PRESS_ME"), QChar('p'));
    EXPECT_EQ(control<QPushButton>("PRESS_ME")->text(), "&Press");
    EXPECT_EQ(window->caption("ROWS")->text(), "&Rows");
    // "Notes": N is taken by the tab "Numbers", O by OK: the next letter of the label.
    EXPECT_EQ(window->caption("NOTES")->text(), "No&tes");
    // "Count" has only letters that others took first: one of them moves to another letter of
    // its label ("Name" from A to M), so that every control has one.
    EXPECT_EQ(window->caption("NAME")->text(), "Na&me");
    EXPECT_FALSE(window->mnemonic("COUNT").isNull());
    EXPECT_EQ(window->caption("NOTES")->buddy(), window->control("NOTES"));
    auto* tabs = window->findChild<QTabWidget*>();
    EXPECT_EQ(tabs->tabText(1), "&Flags");

    // Used as a user does: Alt+F shows the Flags page, Alt+R puts the focus in the list.
    QApplication::setActiveWindow(window.get());
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    QTest::keyClick(window.get(), Qt::Key_F, Qt::AltModifier);
    EXPECT_EQ(tabs->currentIndex(), 1);
    QTest::keyClick(window.get(), Qt::Key_R, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), window->control("ROWS"));
    int presses = 0;
    item("PRESS_ME").addHandler(EventKind::Activate, counting(presses), false);
    // A mnemonic clicks its button as a mouse would: pressed, then released a moment later.
    QTest::keyClick(window.get(), Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return presses == 1; }));
}

TEST_F(DialogWindowTest, ALabelChangedByTheProgramKeepsOrChangesItsMnemonicWithoutClashes) {
    item("PRESS_ME").setLabel("Push");
    EXPECT_EQ(control<QPushButton>("PRESS_ME")->text(), "&Push");
    item("PRESS_ME").setLabel("Zap & go");
    EXPECT_EQ(control<QPushButton>("PRESS_ME")->text(), "Za&p && go");
    EXPECT_EQ(mnemonicClashes(*window), std::vector<std::string>{});
}

TEST_F(DialogWindowTest,
       EveryLabelledControlOfEveryDialogHasAMnemonicMarkedInItsLabelWithoutClashes) {
    for (const fs::path& file : resourceFiles()) {
        auto resource = shownResource(file);
        DialogWindow shown(*resource, true);
        EXPECT_EQ(mnemonicClashes(shown), std::vector<std::string>{}) << file;
        for (const auto& item : resource->items()) {
            const QChar key = shown.mnemonic(item->name());
            const bool labelled = item->kind() != nxsim::ItemKind::GroupBox &&
                                  item->kind() != nxsim::ItemKind::LabelItem &&
                                  shown.control(item->name()) && !item->label().empty();
            EXPECT_TRUE(!labelled || !key.isNull()) << file << ": " << item->name();
            if (key.isNull()) {
                continue;
            }
            QWidget* control = shown.control(item->name());
            QString text = shown.caption(item->name()) ? shown.caption(item->name())->text()
                           : qobject_cast<QAbstractButton*>(control)
                               ? qobject_cast<QAbstractButton*>(control)->text()
                               : qobject_cast<QGroupBox*>(control)->title();
            EXPECT_TRUE(text.contains(QString("&") + key, Qt::CaseInsensitive))
                << file << ": " << item->name() << " " << text.toStdString();
        }
    }
}

TEST_F(DialogWindowTest, AListTakesTheExtraHeightOfADialogMadeTaller) {
    window->resize(window->width(), window->height());
    QApplication::processEvents();
    const int listHeight = control<QListWidget>("ROWS")->height();
    const int notesHeight = control<QPlainTextEdit>("NOTES")->height();
    const int nameHeight = control<QLineEdit>("NAME")->height();
    window->resize(window->width(), window->height() + 300);
    QApplication::processEvents();
    EXPECT_GT(control<QListWidget>("ROWS")->height(), listHeight + 100);
    EXPECT_GT(control<QPlainTextEdit>("NOTES")->height(), notesHeight + 50);
    EXPECT_EQ(control<QLineEdit>("NAME")->height(), nameHeight);
}

TEST_F(DialogWindowTest, ShowingOrHidingAControlLeavesTheDialogsWidth) {
    auto second = shownDialog("nxsim_test_all.dlg");
    second->item("HIDDEN_BUTTON")->setLabel("A button whose label is wider than all the others");
    DialogWindow shown(*second, true);
    shown.show();
    QApplication::processEvents();
    const int width = shown.width();
    second->item("HIDDEN_BUTTON")->setVisible(true);
    QApplication::processEvents();
    EXPECT_EQ(shown.width(), width);
    second->item("HIDDEN_BUTTON")->setVisible(false);
    second->item("ROWS")->setVisible(false);
    QApplication::processEvents();
    EXPECT_EQ(shown.width(), width);
}

TEST_F(DialogWindowTest, TooltipsOfTheResourceFileReachControlAndCaption) {
    TestUtil::TempDir temp;
    const fs::path file = temp.path() / "tips.dlg";
    std::ofstream(file.string())
        << "<dialog format=\"1\" name=\"tips\" width=\"70\">\n"
           "<option name=\"START\" label=\"Zone start\" tooltip=\"Corner where zone 1 is\">"
           "<entry>a</entry></option>\n"
           "<tabs><page label=\"P\" tooltip=\"The page\"><button name=\"B\" label=\"b\"/></page>"
           "</tabs></dialog>\n";
    auto tips = shownResource(file);
    DialogWindow shown(*tips, true);
    EXPECT_EQ(shown.control("START")->toolTip(), "Corner where zone 1 is");
    EXPECT_EQ(shown.caption("START")->toolTip(), "Corner where zone 1 is");
    EXPECT_TRUE(shown.control("B")->toolTip().isEmpty());
    EXPECT_EQ(shown.findChild<QTabWidget*>()->tabToolTip(0), "The page");
    EXPECT_GE(shown.minimumSizeHint().width(), shown.fontMetrics().averageCharWidth() * 70);
}

TEST_F(DialogWindowTest, ControlsOnDifferentTabPagesMayShareALetterButNotWithTheRest) {
    // A control on a page not shown takes no keys: "Count" (Numbers) and "Colour" (Flags) both
    // get C; "Name", outside the pages, cannot have the N of the tab "Numbers".
    EXPECT_EQ(window->mnemonic("COUNT"), QChar('c'));
    EXPECT_EQ(window->mnemonic("COLOUR"), QChar('c'));
    EXPECT_EQ(window->mnemonic("page:Numbers"), QChar('n'));
    EXPECT_NE(window->mnemonic("NAME"), QChar('n'));
    QApplication::setActiveWindow(window.get());
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    auto* tabs = window->findChild<QTabWidget*>();
    tabs->setCurrentIndex(1);
    QTest::keyClick(window.get(), Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), window->control("COLOUR"));
}

TEST_F(DialogWindowTest, EveryDialogResourceGivesAMinimumWidthThatTheWindowKeeps) {
    for (const fs::path& file : resourceFiles()) {
        auto resource = shownResource(file);
        EXPECT_GE(resource->layout().width, 40) << file;
        DialogWindow shown(*resource, true);
        shown.show();
        EXPECT_GE(shown.width(), shown.fontMetrics().averageCharWidth() * resource->layout().width)
            << file;
    }
}

// The field dialog once widened when its type became "Text choice" and its choices showed.
TEST_F(DialogWindowTest, TheFieldDialogKeepsItsWidthWhenItsTextChoicesShowOrHide) {
    auto field = shownResource(kResources / "qorfmt_config_fieldsettings.dlg");
    for (const char* name :
         {"CONTROLLED_SETTINGS", "ATTR_TITLE", "BROADCAST_VALUE_TYPE", "DEFAULT_TO_CURRENT_DATE"}) {
        field->item(name)->setVisible(false);
    }
    DialogWindow shown(*field, true);
    shown.show();
    QApplication::processEvents();
    const int width = shown.width();
    for (const char* name : {"CONTROLLED_SETTINGS", "ATTR_TITLE", "BROADCAST_VALUE_TYPE"}) {
        field->item(name)->setVisible(true);
        QApplication::processEvents();
        EXPECT_EQ(shown.width(), width) << name;
    }
    field->item("DEFAULT_STRING")->setVisible(false);
    QApplication::processEvents();
    EXPECT_EQ(shown.width(), width);
}
