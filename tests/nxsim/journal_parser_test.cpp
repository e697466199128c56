#include <nxsim/journal.h>

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

namespace {

using nxsim::Journal;
using nxsim::JournalStep;
using nxsim::StepKind;

const char* const kEveryLine = R"(# a comment; blank lines and leading blanks are ignored

run
dialog qorborder_config_main
  press NEW_FILE
  select BORDERLIST 2
  deselect BORDERLIST
  double-click FILE_LIST 0
  choose UNITS 1
  choose UNITS "Inches"
  set NAME "Frame \"A\"\n2"
  set COUNT 12
  enter NAME
  toggle ENABLED on
  ok
  cancel
  close
  message error "Validation Error" "Name must not be empty."
  pick "Frame Templates" 3
  pick "Frame Templates" cancel
  point 10.5 -20
  point cancel
  object 12
  object cancel
  expect value NAME "Frame A"
  expect value COUNT 12
  expect index UNITS 0
  expect label LOCATION "C:\\x"
  expect items BORDERLIST ["A", "B"]
  expect items BORDERLIST []
  expect selected BORDERLIST -1
  expect sensitive TYPE[3] no
  expect sensitive OK yes
  expect visible OBJECT_GROUP no
  expect focus NAME
  expect title "Open File"
  expect cue "Select file to open"
  expect listing "a\tb\n"
  expect file format_defs/new.fordef exists
  expect stoplight "1 0 1 0"
)";

TEST(JournalParser, ReadsEveryLineKindOfVersion1) {
    Journal j = nxsim::parseJournal(kEveryLine, "all.journal");
    ASSERT_EQ(j.steps.size(), 38u);
    EXPECT_EQ(j.file, "all.journal");
    const JournalStep& dialog = j.steps[1];
    EXPECT_EQ(dialog.kind, StepKind::Dialog);
    EXPECT_EQ(dialog.item, "qorborder_config_main");
    EXPECT_EQ(dialog.line, 4);
    EXPECT_EQ(j.steps[3].number, 2);
    EXPECT_EQ(j.steps[5].kind, StepKind::DoubleClick);
    EXPECT_FALSE(j.steps[6].byText);
    EXPECT_TRUE(j.steps[7].byText);
    EXPECT_EQ(j.steps[7].text, "Inches");
    EXPECT_EQ(j.steps[8].text, "Frame \"A\"\n2");
    EXPECT_TRUE(j.steps[8].quoted);
    EXPECT_EQ(j.steps[9].text, "12");
    EXPECT_FALSE(j.steps[9].quoted);
    EXPECT_TRUE(j.steps[11].flag);
    EXPECT_EQ(j.steps[15].word, "error");
    EXPECT_EQ(j.steps[15].title, "Validation Error");
    EXPECT_EQ(j.steps[15].text, "Name must not be empty.");
    EXPECT_EQ(j.steps[16].number, 3);
    EXPECT_TRUE(j.steps[17].cancel);
    EXPECT_DOUBLE_EQ(j.steps[18].x, 10.5);
    EXPECT_DOUBLE_EQ(j.steps[18].y, -20);
    EXPECT_TRUE(j.steps[19].cancel);
    EXPECT_EQ(j.steps[20].number, 12);
    EXPECT_EQ(j.steps[25].text, "C:\\x");
    EXPECT_EQ(j.steps[26].list, (std::vector<std::string>{"A", "B"}));
    EXPECT_TRUE(j.steps[27].list.empty());
    EXPECT_EQ(j.steps[28].number, -1);
    EXPECT_EQ(j.steps[29].item, "TYPE");
    EXPECT_EQ(j.steps[29].entry, 3);
    EXPECT_FALSE(j.steps[29].flag);
    EXPECT_EQ(j.steps[30].entry, -1);
    EXPECT_EQ(j.steps[35].text, "a\tb\n");
    EXPECT_EQ(j.steps[36].item, "format_defs/new.fordef");
    EXPECT_TRUE(j.steps[36].flag);
    EXPECT_EQ(j.steps[37].text, "1 0 1 0");
    EXPECT_EQ(j.lineCount, 40);
}

TEST(JournalParser, FormattingAndParsingAgainGivesTheSameSteps) {
    Journal j = nxsim::parseJournal(kEveryLine, "all.journal");
    std::ostringstream text;
    nxsim::JournalWriter writer(text);
    for (const JournalStep& s : j.steps) {
        writer.write(s, s.kind == StepKind::Run ? 0 : 1);
    }
    Journal again = nxsim::parseJournal(text.str(), "again.journal");
    ASSERT_EQ(again.steps.size(), j.steps.size());
    for (std::size_t i = 0; i < j.steps.size(); ++i) {
        EXPECT_EQ(nxsim::formatStep(again.steps[i]), nxsim::formatStep(j.steps[i]));
    }
    EXPECT_EQ(text.str().substr(0, 30), "run\n  dialog qorborder_config_");
}

// Found with the fuzz target: a quoted item name with an entry was written as "OPTION A"[2], which
// does not read back.
TEST(JournalParser, QuotedItemWithAnEntryIsWrittenAsOneQuotedWord) {
    Journal j = nxsim::parseJournal("expect sensitive \"OPTION A[2]\" no\n"
                                    "expect sensitive \"B#[3]\" yes\n",
                                    "entries.jnl");
    ASSERT_EQ(j.steps.size(), 2u);
    EXPECT_EQ(j.steps[0].item, "OPTION A");
    EXPECT_EQ(j.steps[0].entry, 2);
    EXPECT_EQ(nxsim::formatStep(j.steps[0]), "expect sensitive \"OPTION A[2]\" no");
    EXPECT_EQ(nxsim::formatStep(j.steps[1]), "expect sensitive \"B#[3]\" yes");
    for (const JournalStep& step : j.steps) {
        Journal again = nxsim::parseJournal(nxsim::formatStep(step), "again.jnl");
        ASSERT_EQ(again.steps.size(), 1u);
        EXPECT_EQ(again.steps[0].item, step.item);
        EXPECT_EQ(again.steps[0].entry, step.entry);
        EXPECT_EQ(again.steps[0].flag, step.flag);
    }
    EXPECT_EQ(nxsim::formatStep(nxsim::parseJournal("expect sensitive TYPE[3] no", "t").steps[0]),
              "expect sensitive TYPE[3] no");
}

TEST(JournalParser, BuilderProducesTheStepsAJournalFileGives) {
    nxsim::JournalBuilder b("built");
    b.run()
        .dialog("d")
        .press("A")
        .select("L", 1)
        .choose("U", "Inches")
        .set("N", "x y")
        .toggle("T", false)
        .message("information", "Info", "Hello")
        .pick("P", 0)
        .point(1, 2)
        .object(7)
        .expectSensitive("U", false, 2)
        .expectItems("L", {"a"})
        .expectStoplight("1 0")
        .ok();
    EXPECT_EQ(b.text(), "run\ndialog d\npress A\nselect L 1\nchoose U \"Inches\"\nset N \"x y\"\n"
                        "toggle T off\nmessage information \"Info\" \"Hello\"\npick \"P\" 0\n"
                        "point 1 2\nobject 7\nexpect sensitive U[2] no\n"
                        "expect items L [\"a\"]\nexpect stoplight \"1 0\"\nok\n");
    Journal parsed = nxsim::parseJournal(b.text(), "built");
    ASSERT_EQ(parsed.steps.size(), b.journal().steps.size());
    EXPECT_EQ(b.journal().steps[2].line, 3);
}

TEST(JournalParser, BuilderStepsEqualTheParsedStepsOfTheirLinesFieldByField) {
    nxsim::JournalBuilder b("built");
    b.dialog("a dialog")
        .doubleClick("L", 4)
        .choose("U", 2)
        .set("N", "")
        .enter("N")
        .toggle("T", true)
        .pickCancel("Pick \"one\"")
        .point(0.1, -2.5e7)
        .pointCancel()
        .objectCancel()
        .expectValue("N", "tab\there")
        .expectIndex("U", 0)
        .expectLabel("N", "Name:")
        .expectSelected("L", -1)
        .expectSensitive("name with blank", true, 1)
        .expectVisible("G", false)
        .expectFocus("N")
        .expectTitle("T")
        .expectCue("Select a point")
        .expectListing("line 1\nline 2")
        .expectFile("/tmp/x y.fordef", false)
        .deselect("L")
        .cancel()
        .close();
    const Journal parsed = nxsim::parseJournal(b.text(), "built");
    ASSERT_EQ(parsed.steps.size(), b.journal().steps.size());
    for (std::size_t i = 0; i < parsed.steps.size(); ++i) {
        const nxsim::JournalStep& built = b.journal().steps[i];
        const nxsim::JournalStep& read = parsed.steps[i];
        SCOPED_TRACE(nxsim::formatStep(built));
        EXPECT_EQ(built.kind, read.kind);
        EXPECT_EQ(built.line, read.line);
        EXPECT_EQ(built.item, read.item);
        EXPECT_EQ(built.entry, read.entry);
        EXPECT_EQ(built.number, read.number);
        EXPECT_EQ(built.byText, read.byText);
        EXPECT_EQ(built.cancel, read.cancel);
        EXPECT_EQ(built.flag, read.flag);
        EXPECT_EQ(built.quoted, read.quoted);
        EXPECT_EQ(built.x, read.x);
        EXPECT_EQ(built.y, read.y);
        EXPECT_EQ(built.word, read.word);
        EXPECT_EQ(built.title, read.title);
        EXPECT_EQ(built.text, read.text);
        EXPECT_EQ(built.list, read.list);
    }
    EXPECT_EQ(b.journal().steps[14].item, "name with blank");
    EXPECT_EQ(b.journal().steps[14].entry, 1);
    EXPECT_EQ(b.journal().steps[7].y, -2.5e7);
}

// The builder is checked as a journal file is: a step no file could hold is refused with the
// line it would have had.
TEST(JournalParser, BuilderRefusesAStepAJournalLineCannotHold) {
    const auto refusal = [](const std::function<void(nxsim::JournalBuilder&)>& build) {
        nxsim::JournalBuilder b("built");
        b.run();
        try {
            build(b);
        } catch (const nxsim::JournalSyntaxError& e) {
            return std::string(e.what());
        }
        return std::string("(accepted)");
    };
    EXPECT_EQ(refusal([](nxsim::JournalBuilder& b) { b.press(""); }),
              "built:2: `press` needs an item name, found an empty text");
    EXPECT_EQ(refusal([](nxsim::JournalBuilder& b) { b.object(0); }),
              "built:2: `object` needs a positive tag, found \"0\"");
    EXPECT_EQ(refusal([](nxsim::JournalBuilder& b) { b.message("warning", "T", "X"); }),
              "built:2: `message` needs error or information, found \"warning\"");
    EXPECT_EQ(refusal([](nxsim::JournalBuilder& b) { b.expectStoplight("1 2"); }),
              "built:2: `expect stoplight` takes 1 and 0 only, found \"2\"");
}

struct BadLine {
    const char* text;
    const char* error;
};

class JournalParserErrors : public ::testing::TestWithParam<BadLine> {};

TEST_P(JournalParserErrors, ReportFileLineAndReason) {
    try {
        nxsim::parseJournal(GetParam().text, "bad.journal");
        FAIL() << GetParam().text;
    } catch (const nxsim::JournalSyntaxError& e) {
        EXPECT_EQ(std::string(e.what()), GetParam().error);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Table, JournalParserErrors,
    ::testing::Values(
        BadLine{"run\n\njump", "bad.journal:3: unknown line kind \"jump\" (run, dialog, press, "
                               "select, deselect, double-click, choose, set, enter, toggle, ok, "
                               "cancel, close, message, pick, point, object, expect)"},
        BadLine{"press", "bad.journal:1: `press` needs an item name"},
        BadLine{"press A B", "bad.journal:1: unexpected \"B\" after `press`"},
        BadLine{"select L x", "bad.journal:1: `select` needs a row number, found \"x\""},
        BadLine{"set N \"open", "bad.journal:1: a quoted text is not closed"},
        BadLine{"set N \"a\\qb\"",
                "bad.journal:1: unknown escape \\q in a quoted text (\\\" \\\\ \\n \\t)"},
        BadLine{"toggle T maybe", "bad.journal:1: `toggle` needs on or off, found \"maybe\""},
        BadLine{"message warning \"T\" \"X\"",
                "bad.journal:1: `message` needs error or information, found \"warning\""},
        BadLine{"message error Title \"X\"",
                "bad.journal:1: `message` needs a title in double quotes, found the word Title"},
        BadLine{"pick \"T\" first", "bad.journal:1: `pick` needs a row number or cancel, found "
                                    "\"first\""},
        BadLine{"point 1", "bad.journal:1: `point` needs Y"},
        BadLine{"object 0", "bad.journal:1: `object` needs a positive tag, found \"0\""},
        BadLine{"expect colour X red",
                "bad.journal:1: unknown expectation \"colour\" (value, index, label, items, "
                "selected, sensitive, visible, focus, title, cue, listing, file, stoplight)"},
        BadLine{"expect items L [A]",
                "bad.journal:1: malformed list: unexpected word \"A\" (quote entries)"},
        BadLine{"expect items L [\"A\",]", "bad.journal:1: a list entry is missing before ]"},
        BadLine{"expect items L [\"A\"", "bad.journal:1: `expect items` needs the rest of the list "
                                         "and ]"},
        BadLine{"expect visible U[1] no",
                "bad.journal:1: `expect visible` takes no entry index: U[1]"},
        BadLine{"expect sensitive U[x] no",
                "bad.journal:1: `expect sensitive` needs an index, found \"x\""},
        BadLine{"expect stoplight \"1 2\"",
                "bad.journal:1: `expect stoplight` takes 1 and 0 only, found \"2\""},
        BadLine{"expect file a.fordef here",
                "bad.journal:1: `expect file` needs exists or missing, found \"here\""},
        BadLine{"dialog \"\"",
                "bad.journal:1: `dialog` needs a dialog name, found an empty text"}));

TEST(JournalParser, UnreadableFileIsNamed) {
    EXPECT_THROW(nxsim::readJournal("/nonexistent/j.journal"), std::runtime_error);
}

} // namespace
