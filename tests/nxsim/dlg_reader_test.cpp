#include "nxsim_test_support.h"

#include <nxsim/dlg.h>

#include "testutil/temp_dir.h"

#include <gtest/gtest.h>

namespace {

using nxsim::DialogLayout;
using nxsim::DlgError;
using nxsim::ItemKind;

const std::string kDataDir = std::string(NXSIM_TEST_DATA) + "/dlg/";

TEST(DlgReader, ReadsTitleNameNavigationAndEveryItemKind) {
    DialogLayout layout = nxsim::readDialogLayout(kDataDir + "nxsim_test_all.dlg");
    EXPECT_EQ(layout.name, "nxsim_test_all");
    EXPECT_EQ(layout.title, "All Items");
    EXPECT_EQ(layout.fileName, "nxsim_test_all.dlg");
    EXPECT_TRUE(layout.navigation.ok);
    EXPECT_TRUE(layout.navigation.apply);
    EXPECT_FALSE(layout.navigation.back);
    EXPECT_TRUE(layout.navigation.cancel);
    const std::pair<const char*, ItemKind> expected[] = {
        {"MAIN_GROUP", ItemKind::GroupBox},   {"PRESS_ME", ItemKind::PushButton},
        {"ROWS", ItemKind::SingleSelectList}, {"UNITS", ItemKind::OptionMenu},
        {"NAME", ItemKind::StringItem},       {"WIDE", ItemKind::WideString},
        {"NOTES", ItemKind::MultiTextBox},    {"PAGES", ItemKind::TabControl},
        {"PAGE_ONE", ItemKind::TabPage},      {"CORNER", ItemKind::RadioBox},
        {"COUNT", ItemKind::IntegerItem},     {"SCALE", ItemKind::RealItem},
        {"ENABLED", ItemKind::Toggle},        {"COLOUR", ItemKind::ColorTool},
        {"STATUS", ItemKind::LabelItem},      {"INNER_BUTTON", ItemKind::PushButton},
    };
    for (const auto& [name, kind] : expected) {
        const nxsim::DlgElement* e = layout.find(name);
        ASSERT_NE(e, nullptr) << name;
        EXPECT_EQ(e->kind, kind) << name;
    }
    EXPECT_EQ(layout.find("MISSING"), nullptr);
}

TEST(DlgReader, KeepsLabelsEntriesValuesFlagsAndLines) {
    DialogLayout layout = nxsim::readDialogLayout(kDataDir + "nxsim_test_all.dlg");
    const nxsim::DlgElement& units = *layout.find("UNITS");
    EXPECT_EQ(units.label, "Units");
    EXPECT_EQ(units.entries, (std::vector<std::string>{"Millimetres", "Inches", "Points"}));
    EXPECT_EQ(units.entrySensitive, (std::vector<bool>{true, true, false}));
    EXPECT_EQ(units.value, "1");
    EXPECT_FALSE(layout.find("HIDDEN_BUTTON")->visible);
    EXPECT_FALSE(layout.find("DISABLED_BUTTON")->sensitive);
    EXPECT_TRUE(layout.find("PRESS_ME")->sensitive);
    EXPECT_EQ(layout.find("NOTES")->entries, (std::vector<std::string>{"one", "two"}));
    EXPECT_EQ(layout.find("NOTES")->rows, 3);
    EXPECT_EQ(layout.find("NAME")->width, 20);
    EXPECT_EQ(layout.find("PRESS_ME")->line, 6);
    ASSERT_EQ(layout.elements.size(), 3u);
    EXPECT_EQ(layout.elements[0].children[0].kind, ItemKind::Row);
    EXPECT_EQ(layout.elements[0].children[0].children.size(), 3u);
}

TEST(DlgReader, DialogWithoutNameIsKnownByItsFileName) {
    DialogLayout layout = nxsim::readDialogLayout(kDataDir + "nxsim_test_child.dlg");
    EXPECT_EQ(layout.name, "");
    EXPECT_EQ(layout.journalName(), "nxsim_test_child.dlg");
}

TEST(DlgReader, NavigationButtonsDefaultToOkAndCancel) {
    DialogLayout layout = nxsim::parseDialogLayout("<dialog format=\"1\"/>", "d.dlg");
    EXPECT_TRUE(layout.navigation.ok);
    EXPECT_TRUE(layout.navigation.cancel);
    EXPECT_FALSE(layout.navigation.apply);
    EXPECT_FALSE(layout.navigation.back);
}

TEST(DlgReader, KeepsTooltipsOfItemsAndTheDialogsMinimumWidth) {
    DialogLayout layout = nxsim::parseDialogLayout(
        "<dialog format=\"1\" width=\"48\">"
        "<group label=\"G\" tooltip=\"Where it goes\">"
        "<option name=\"ZONE_START\" label=\"Start\" tooltip=\"First zone &amp; its corner\">"
        "<entry>A</entry></option>"
        "<button name=\"B\" label=\"b\"/></group></dialog>",
        "d.dlg");
    EXPECT_EQ(layout.width, 48);
    EXPECT_EQ(layout.elements.at(0).tooltip, "Where it goes");
    EXPECT_EQ(layout.find("ZONE_START")->tooltip, "First zone & its corner");
    EXPECT_EQ(layout.find("B")->tooltip, "");
    EXPECT_EQ(nxsim::parseDialogLayout("<dialog format=\"1\"/>", "d.dlg").width, 0);
}

struct Malformed {
    const char* text;
    const char* error;
};

TEST(DlgReader, ControlCharactersOfTheFileAreShownEscapedInItsErrors) {
    try {
        nxsim::parseDialogLayout(
            "<dialog format=\"1\"><integer name=\"N\" value=\"\x1b[2J\"/></dialog>", "bad\n.dlg");
        FAIL() << "no error";
    } catch (const DlgError& e) {
        EXPECT_EQ(std::string(e.what()), "bad\\n.dlg:1: value \"\\x1B[2J\" is not an integer");
    }
}

class DlgReaderMalformed : public ::testing::TestWithParam<Malformed> {};

TEST_P(DlgReaderMalformed, GivesFileLineAndReason) {
    try {
        nxsim::parseDialogLayout(GetParam().text, "bad.dlg");
        FAIL() << "no error for " << GetParam().text;
    } catch (const DlgError& e) {
        EXPECT_EQ(std::string(e.what()), GetParam().error);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Table, DlgReaderMalformed,
    ::testing::Values(
        Malformed{"<dialog format=\"1\">\n<button name=\"A\">\n</dialog>",
                  "bad.dlg:3: malformed XML: Start-end tags mismatch"},
        Malformed{"<dlg format=\"1\"/>", "bad.dlg:1: the root element must be <dialog>, not <dlg>"},
        Malformed{"<dialog/>", "bad.dlg:1: <dialog> needs format=\"1\""},
        Malformed{"<dialog format=\"2\"/>", "bad.dlg:1: unsupported format \"2\""},
        Malformed{"<dialog format=\"1\">\n\n<knob name=\"A\"/></dialog>",
                  "bad.dlg:3: unknown element <knob>"},
        Malformed{"<dialog format=\"1\">\n<button label=\"x\"/></dialog>",
                  "bad.dlg:2: <button> needs a name"},
        Malformed{"<dialog format=\"1\">\n<button name=\"A\"/>\n<string name=\"A\"/></dialog>",
                  "bad.dlg:3: the name A is used twice (first on line 2)"},
        Malformed{"<dialog format=\"1\"><button name=\"A\" colour=\"red\"/></dialog>",
                  "bad.dlg:1: <button> has no attribute colour"},
        Malformed{"<dialog format=\"1\"><button name=\"A\" sensitive=\"maybe\"/></dialog>",
                  "bad.dlg:1: attribute sensitive must be yes or no, not \"maybe\""},
        Malformed{"<dialog format=\"1\"><integer name=\"N\" value=\"x\"/></dialog>",
                  "bad.dlg:1: value \"x\" is not an integer"},
        Malformed{"<dialog format=\"1\"><real name=\"N\" value=\"1.5.2\"/></dialog>",
                  "bad.dlg:1: value \"1.5.2\" is not a number"},
        Malformed{"<dialog format=\"1\"><toggle name=\"T\" value=\"yes\"/></dialog>",
                  "bad.dlg:1: value of a toggle must be on or off, not \"yes\""},
        Malformed{"<dialog format=\"1\">\n<option name=\"O\" value=\"2\">"
                  "<entry>a</entry><entry>b</entry></option></dialog>",
                  "bad.dlg:2: value \"2\" is not the index of an entry (0 to 1)"},
        Malformed{"<dialog format=\"1\"><tabs name=\"T\"><button name=\"B\"/></tabs></dialog>",
                  "bad.dlg:1: a <tabs> element holds only <page> elements, not <button>"},
        Malformed{"<dialog format=\"1\"><page name=\"P\"/></dialog>",
                  "bad.dlg:1: <page> must be inside <tabs>"},
        Malformed{"<dialog format=\"1\"><button name=\"B\"><entry>x</entry></button></dialog>",
                  "bad.dlg:1: <entry> is not allowed inside <button>"},
        Malformed{"<dialog format=\"1\" buttons=\"ok help\"/>",
                  "bad.dlg:1: unknown navigation button \"help\" (ok, apply, back, cancel)"},
        Malformed{"<dialog format=\"1\"><list name=\"L\" rows=\"-1\"/></dialog>",
                  "bad.dlg:1: attribute rows must be a number from 0 to 10000, not \"-1\""},
        Malformed{"<dialog format=\"1\" width=\"wide\"/>",
                  "bad.dlg:1: attribute width must be a number from 0 to 10000, not \"wide\""},
        Malformed{"<dialog format=\"1\"><row tooltip=\"x\"/></dialog>",
                  "bad.dlg:1: <row> has no attribute tooltip"},
        Malformed{"", "bad.dlg:1: malformed XML: No document element found"}));

// Found with the fuzz target: thousands of nested elements exhausted the stack of the recursive
// reader.
TEST(DlgReader, ElementsNestedTooDeepAreRefusedWithTheLine) {
    std::string text = "<dialog format=\"1\">\n";
    for (int i = 0; i < 5000; ++i) {
        text += "<row>";
    }
    for (int i = 0; i < 5000; ++i) {
        text += "</row>";
    }
    text += "</dialog>";
    try {
        nxsim::parseDialogLayout(text, "deep.dlg");
        FAIL() << "no error";
    } catch (const DlgError& e) {
        EXPECT_EQ(std::string(e.what()), "deep.dlg:2: elements are nested more than 64 deep");
    }
    std::string deepest = "<dialog format=\"1\">";
    for (int i = 0; i < 63; ++i) {
        deepest += "<group>";
    }
    deepest += "<button name=\"B\"/>";
    for (int i = 0; i < 63; ++i) {
        deepest += "</group>";
    }
    deepest += "</dialog>";
    EXPECT_NE(nxsim::parseDialogLayout(deepest, "ok.dlg").find("B"), nullptr);
}

TEST(DlgReader, UnreadableFileIsNamed) {
    EXPECT_THROW(
        {
            try {
                nxsim::readDialogLayout("/nonexistent/x.dlg");
            } catch (const DlgError& e) {
                EXPECT_STREQ(
                    e.what(),
                    "/nonexistent/x.dlg:0: cannot open the file: No such file or directory");
                throw;
            }
        },
        DlgError);
}

TEST(DlgReader, ResourcesAreFoundAlongTheResourcePathInOrder) {
    TestUtil::TempDir first;
    TestUtil::TempDir second;
    second.write("a.dlg", "<dialog format=\"1\"/>");
    second.write("b.dlg", "<dialog format=\"1\"/>");
    first.write("b.dlg", "<dialog format=\"1\"/>");
    nxsim::setResourcePath({first.path(), second.path()});
    EXPECT_EQ(nxsim::findDialogResource("a.dlg"), second.path() / "a.dlg");
    EXPECT_EQ(nxsim::findDialogResource("b.dlg"), first.path() / "b.dlg");
    EXPECT_TRUE(nxsim::findDialogResource("c.dlg").empty());
    EXPECT_EQ(nxsim::findDialogResource((second.path() / "a.dlg").string()),
              second.path() / "a.dlg");
}

} // namespace
