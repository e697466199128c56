#include "host_test_support.h"

#include "list_picker.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

using namespace HostTest;
using QorfmtHost::ListPicker;

namespace {
class ListPickerTest : public Fixture {};
} // namespace

TEST_F(ListPickerTest, ShowsTitlePromptAndItemsWithNothingPreselected) {
    ListPicker picker("Frame Templates", "Select template from list", {"a3.prt", "a4.prt"}, -1);
    EXPECT_EQ(picker.windowTitle(), "Frame Templates");
    ASSERT_EQ(picker.list()->count(), 2);
    EXPECT_EQ(picker.list()->item(1)->text(), "a4.prt");
    EXPECT_EQ(picker.list()->currentRow(), -1);
}

TEST_F(ListPickerTest, DoubleClickChoosesTheRowAndCancelGivesMinusOne) {
    ListPicker picker("T", "P", {"a", "b", "c"}, 0);
    QTimer::singleShot(0, &picker, [&picker] {
        picker.list()->setCurrentRow(2);
        emit picker.list()->itemDoubleClicked(picker.list()->item(2));
    });
    picker.exec();
    EXPECT_EQ(picker.chosenRow(), 2);

    ListPicker cancelled("T", "P", {"a", "b"}, 1);
    QTimer::singleShot(0, &cancelled, &QDialog::reject);
    cancelled.exec();
    EXPECT_EQ(cancelled.chosenRow(), -1);
}

TEST_F(ListPickerTest, WithNoEntriesItShowsTitlePromptAndTheEmptyListWithCancelOnly) {
    ListPicker picker("Frame Templates", "Select template from list", {}, 0);
    picker.show();
    EXPECT_EQ(picker.windowTitle(), "Frame Templates");
    bool promptShown = false;
    for (QLabel* label : picker.findChildren<QLabel*>()) {
        promptShown =
            promptShown || (label->isVisible() && label->text() == "Select template from list");
    }
    EXPECT_TRUE(promptShown);
    EXPECT_TRUE(picker.list()->isVisible());
    EXPECT_EQ(picker.list()->count(), 0);
    auto* buttons = picker.findChild<QDialogButtonBox*>();
    ASSERT_NE(buttons, nullptr);
    EXPECT_FALSE(buttons->button(QDialogButtonBox::Ok)->isVisible());
    QPushButton* cancel = buttons->button(QDialogButtonBox::Cancel);
    ASSERT_TRUE(cancel->isVisible());
    QTimer::singleShot(0, cancel, &QPushButton::click);
    picker.exec();
    EXPECT_EQ(picker.chosenRow(), -1);
}
