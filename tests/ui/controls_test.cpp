#include "framework_dialog.h"

#include "testutil/journal.h"
#include "ui/no_such_entry_error.h"

#include <gtest/gtest.h>

namespace {

/// Runs `check` inside the BUTTON handler of the framework dialog, while its controls are bound.
class Controls : public ::testing::Test {
protected:
    void inHandler(const std::function<void(FrameworkDialog&)>& check,
                   const std::string& before = "", const std::string& after = "") {
        FrameworkDialog dialog;
        dialog.onButton = check;
        EXPECT_JOURNAL_PASSES(TestUtil::runJournal(
            "run\ndialog qorfmt_test_framework\n" + before + "press BUTTON\n" + after + "cancel\n",
            [&] { dialog.show(); }, {}, QORFMT_UI_TEST_RESOURCES));
    }
};

TEST_F(Controls, ListWithoutSelectionHasNegativeIndexAndNoSelection) {
    inHandler([](FrameworkDialog& d) {
        EXPECT_LT(d.list->SelectedIndexValue(), 0);
        EXPECT_FALSE(d.list->HasSelection());
        EXPECT_EQ(d.list->SelectedString(), "");
    });
}

TEST_F(Controls, ListReportsTheSelectedRow) {
    inHandler(
        [](FrameworkDialog& d) {
            EXPECT_EQ(d.list->SelectedIndexValue(), 2);
            EXPECT_TRUE(d.list->HasSelection());
            EXPECT_EQ(d.list->SelectedString(), "third");
        },
        "select LIST 2\n");
}

TEST_F(Controls, ListReplacesAppendsAndClearsRows) {
    inHandler(
        [](FrameworkDialog& d) {
            EXPECT_EQ(d.list->ListItems(), (std::vector<std::string>{"first", "second", "third"}));
            d.list->SetListItems({"x", "y"});
            d.list->Append("z with blank");
            EXPECT_EQ(d.list->ListItems(), (std::vector<std::string>{"x", "y", "z with blank"}));
            EXPECT_FALSE(d.list->HasSelection());
        },
        "", "expect items LIST [\"x\", \"y\", \"z with blank\"]\n");
    inHandler(
        [](FrameworkDialog& d) {
            d.list->ClearList();
            EXPECT_TRUE(d.list->ListItems().empty());
        },
        "", "expect items LIST []\n");
}

TEST_F(Controls, OptionMenuGivesTextsAndChoosesByText) {
    inHandler(
        [](FrameworkDialog& d) {
            EXPECT_EQ(d.menu->Items(), (std::vector<std::string>{"alpha", "beta", "gamma"}));
            EXPECT_EQ(d.menu->ItemValueString(), "alpha");
            d.menu->SetItemValue(std::string("gamma"));
            EXPECT_EQ(d.menu->ItemValue(), 2);
            d.menu->SetItems({"one", "two"});
            EXPECT_EQ(d.menu->ItemValueString(), "one");
        },
        "", "expect items MENU [\"one\", \"two\"]\n");
}

// A value never chosen is stored empty; the menu then shows its first entry.
TEST_F(Controls, OptionMenuGivenTheEmptyTextShowsItsFirstEntry) {
    inHandler(
        [](FrameworkDialog& d) {
            EXPECT_EQ(d.menu->ItemValueString(), "beta");
            d.menu->SetItemValue(std::string());
            EXPECT_EQ(d.menu->ItemValue(), 0);
            d.menu->SetItems({"", "x"});
            d.menu->SetItemValue(std::string("x"));
            d.menu->SetItemValue(std::string());
            EXPECT_EQ(d.menu->ItemValue(), 0) << "an empty entry is the one chosen";
            d.menu->SetItems({});
            EXPECT_NO_THROW(d.menu->SetItemValue(std::string()));
        },
        "choose MENU 1\n");
}

TEST_F(Controls, OptionMenuGivenAnUnknownTextThrowsAndKeepsItsEntry) {
    inHandler(
        [](FrameworkDialog& d) {
            d.menu->SetItemValue(std::string("gamma"));
            try {
                d.menu->SetItemValue(std::string("delta"));
                ADD_FAILURE() << "no exception";
            } catch (const KivNX::UI::NoSuchEntryError& error) {
                EXPECT_STREQ(error.what(), "The menu has no entry 'delta' (its entries: 'alpha', "
                                           "'beta', 'gamma'); it keeps 'gamma'.");
            }
            EXPECT_EQ(d.menu->ItemValueString(), "gamma");
            EXPECT_THROW(d.menu->SetItemValue(std::string("Gamma")), std::invalid_argument)
                << "texts compare exactly, and the error is a standard exception";
            d.menu->SetItems({});
            try {
                d.menu->SetItemValue(std::string("alpha"));
                ADD_FAILURE() << "no exception";
            } catch (const KivNX::UI::NoSuchEntryError& error) {
                EXPECT_STREQ(error.what(), "The menu has no entries, so it cannot show 'alpha'.");
            }
        },
        "", "expect items MENU []\n");
}

TEST_F(Controls, StringItemsReadAndWriteNarrowText) {
    inHandler(
        [](FrameworkDialog& d) {
            EXPECT_EQ(d.string->ItemValue(), "typed");
            d.string->SetItemValue("set by program");
            d.wide->SetItemValue("Gr\xc3\xb6\xc3\x9f"
                                 "e");
            EXPECT_EQ(d.wide->ItemValue(), "Gr\xc3\xb6\xc3\x9f"
                                           "e");
        },
        "set STRING \"typed\"\n", "expect value STRING \"set by program\"\n");
}

TEST_F(Controls, MultiTextBoxJoinsAndSplitsLines) {
    inHandler(
        [](FrameworkDialog& d) {
            EXPECT_EQ(d.multi->ItemValues(), (std::vector<std::string>{"one", "two"}));
            EXPECT_EQ(d.multi->ItemValue(), "one\ntwo");
            d.multi->SetItemValue(std::string("a\n\nc "));
            EXPECT_EQ(d.multi->ItemValues(), (std::vector<std::string>{"a", "", "c "}));
            EXPECT_EQ(d.multi->ItemValue(), "a\n\nc ");
            d.multi->SetItemValue(std::vector<std::string>{"x"});
            EXPECT_EQ(d.multi->ItemValue(), "x");
        },
        "", "expect value MULTI \"x\"\n");
}

} // namespace
