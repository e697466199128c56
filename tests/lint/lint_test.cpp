// The checker: each rule on its passing and failing documents under tests/data/lint/, and
// references across documents.
#include "model/lint/lint.h"
#include "model/lint/site_check.h"

#include "model/fordef_reader.h"

#include "testutil/temp_dir.h"

#include <gtest/gtest.h>

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>

#include <algorithm>
#include <map>

using namespace QorLint;
namespace fs = boost::filesystem;

namespace {

const fs::path kLintData = fs::path(QORFMT_TEST_DATA) / "lint";

// Templates as the search root tests/data/lint holds them.
bool templateInTestData(const std::string& name, const std::string& folder) {
    boost::system::error_code ec;
    return fs::is_regular_file(kLintData / folder / name, ec);
}

LintDocument read(const fs::path& file, const std::string& shownAs, bool checked = true) {
    return readLintDocument(file, shownAs, checked);
}

std::vector<Finding> lintOne(const fs::path& file) {
    std::vector<LintDocument> documents;
    documents.push_back(read(file, file.filename().string()));
    return lint(documents, templateInTestData);
}

std::string text(const std::vector<Finding>& findings) {
    return formatText(findings);
}

// The failing documents of a rule: fail.fordef and fail-WHAT.fordef, one fault each.
std::vector<fs::path> failingDocuments(const std::string& rule) {
    std::vector<fs::path> files;
    for (fs::directory_iterator it(kLintData / rule), end; it != end; ++it) {
        const std::string name = it->path().filename().string();
        if (name.rfind("fail", 0) == 0) {
            files.push_back(it->path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

TEST(Lint, EveryRuleHasAPassingAndAFailingDocument) {
    ASSERT_EQ(lintRules().size(), 12u);
    for (const LintRule& rule : lintRules()) {
        const fs::path folder = kLintData / rule.name;
        EXPECT_EQ(text(lintOne(folder / "pass.fordef")), "") << rule.name;
        const std::vector<fs::path> failing = failingDocuments(rule.name);
        EXPECT_FALSE(failing.empty()) << rule.name;
        for (const fs::path& file : failing) {
            const std::vector<Finding> findings = lintOne(file);
            ASSERT_EQ(findings.size(), 1u) << file << ":\n" << text(findings);
            EXPECT_EQ(findings[0].rule, rule.name);
            EXPECT_GT(findings[0].line, 0) << file;
        }
    }
}

// Each failing document's finding, as the report shows it: the line is that of the element
// that has the fault.
TEST(Lint, FindingsNameTheLineOfTheFaultyElementAndWhatIsWrong) {
    const std::map<std::string, std::string> expected = {
        {"missing-required-block",
         "fail.fordef:7: error: border 'FRAME' requires block 'LOGO' on sheet 1, which no "
         "document of the site defines [missing-required-block]\n"},
        {"location-target", "fail.fordef:35: error: location 'ANY' of block 'TB' names style "
                            "'NARROW', which the block does not have [location-target]\n"},
        {"default-style", "fail.fordef:10: error: block 'TB' has default style 'NARROW', which "
                          "is none of its styles [default-style]\n"},
        {"unknown-field", "fail.fordef:19: error: style 'FULL' of block 'TB' places field "
                          "'SUBTITLE', which the block does not have [unknown-field]\n"},
        {"translation-key", "fail.fordef:36: error: translation key 'DE_TB_SUBTITLE_' names "
                            "field 'SUBTITLE', which block 'TB' does not have [translation-key]\n"},
        {"id-underscore", "fail.fordef:17: error: field ID 'DRAWN_BY' of block 'TB' contains "
                          "'_', which breaks translation keys [id-underscore]\n"},
        {"missing-template",
         "fail.fordef:8: error: drawing size 'A3' of border 'FRAME': frame template "
         "'frame_a9.prt' is not found in format_defs/frame_templates along the search path "
         "[missing-template]\n"},
        {"duplicate-id", "fail.fordef:35: error: location 'BR' of block 'TB' is also defined at "
                         "fail.fordef:34 [duplicate-id]\n"},
        {"zone-count", "fail.fordef:8: warning: drawing size 'A3' of border 'FRAME' has 0 "
                       "vertical zones, but the border numbers its zones [zone-count]\n"},
        {"duplicate-in-layout", "fail.fordef:13: error: field 'TITLE2' occurs twice in block 'TB'; "
                                "the first is at line 12 [duplicate-in-layout]\n"},
        {"duplicate-in-layout/fail-style.fordef",
         "fail-style.fordef:22: error: style 'FULL' occurs twice in block 'TB'; the first is at "
         "line 17 [duplicate-in-layout]\n"},
        {"duplicate-in-layout/fail-row-type.fordef",
         "fail-row-type.fordef:29: error: row type 'ITEM' occurs twice in the table of block "
         "'TB'; the first is at line 23 [duplicate-in-layout]\n"},
        {"duplicate-in-layout/fail-row-type-field.fordef",
         "fail-row-type-field.fordef:26: error: field 'NAME' occurs twice in row type 'ITEM' of "
         "block 'TB'; the first is at line 25 [duplicate-in-layout]\n"},
        {"duplicate-in-layout/fail-symbol-type.fordef",
         "fail-symbol-type.fordef:33: error: symbol type 'Balloon' occurs twice in block 'TB'; "
         "the first is at line 30 [duplicate-in-layout]\n"},
        {"duplicate-in-layout/fail-drawing-size.fordef",
         "fail-drawing-size.fordef:9: error: drawing size 'A3' occurs twice in border 'FRAME'; "
         "the first is at line 8 [duplicate-in-layout]\n"},
        {"duplicate-in-layout/fail-lookup-key.fordef",
         "fail-lookup-key.fordef:15: error: lookup key 'ASSY' occurs twice in the choices of "
         "field 'KIND' of block 'TB'; the first is at line 14 [duplicate-in-layout]\n"},
        {"text-choice", "fail.fordef:13: error: field 'KIND' of block 'TB' is a text choice field "
                        "without choices [text-choice]\n"},
        {"text-choice/fail-default.fordef",
         "fail-default.fordef:13: warning: field 'KIND' of block 'TB' has default choice 2, but "
         "its 2 choices are numbered from 0 [text-choice]\n"},
        {"translation-key/fail-empty-part.fordef",
         "fail-empty-part.fordef:35: error: translation key '_TB_KIND_ASSY' has an empty "
         "language part [translation-key]\n"},
        {"drawing-size", "fail.fordef:8: error: drawing size 'A3' of border 'FRAME' has height "
                         "-5, which is not a positive number [drawing-size]\n"},
        {"drawing-size/fail-zones.fordef",
         "fail-zones.fordef:8: error: drawing size 'A3' of border 'FRAME' has 5000 horizontal "
         "zones; a drawing size has 0 to 1000 [drawing-size]\n"},
        {"drawing-size/fail-negative-zones.fordef",
         "fail-negative-zones.fordef:8: error: drawing size 'A3' of border 'FRAME' has -3 "
         "vertical zones; a drawing size has 0 to 1000 [drawing-size]\n"},
    };
    for (const auto& entry : expected) {
        const fs::path file = kLintData / entry.first;
        EXPECT_EQ(text(lintOne(file.extension() == ".fordef" ? file : file / "fail.fordef")),
                  entry.second)
            << entry.first;
    }
}

TEST(Lint, ReferencesResolveAcrossDocuments) {
    TestUtil::TempDir dir;
    const fs::path borders =
        dir.write("borders.fordef", "<?xml version=\"1.0\"?>\n"
                                    "<fordef version=\"1\">\n"
                                    "  <location id=\"LEFT\" blockId=\"TB\" "
                                    "styleId=\"FULL\" associatedBlockId=\"\" "
                                    "dialogText=\"\" offsetX=\"\" offsetY=\"\" "
                                    "attachCorner=\"0\" associatedCorner=\"0\" "
                                    "overflowDirection=\"0\"/>\n"
                                    "  <location id=\"UP\" blockId=\"TB\" "
                                    "styleId=\"\" associatedBlockId=\"NONE\" "
                                    "dialogText=\"\" offsetX=\"\" offsetY=\"\" "
                                    "attachCorner=\"0\" associatedCorner=\"0\" "
                                    "overflowDirection=\"0\"/>\n"
                                    "</fordef>\n");
    std::vector<LintDocument> documents;
    documents.push_back(read(borders, "borders.fordef"));
    // Alone, nothing defines block TB.
    EXPECT_EQ(text(lint(documents, templateInTestData)),
              "borders.fordef:3: error: location 'LEFT' of block 'TB': no document of the site "
              "defines the block [location-target]\n"
              "borders.fordef:4: error: location 'UP' of block 'TB' is placed relative to block "
              "'NONE', which no document of the site defines [location-target]\n"
              "borders.fordef:4: error: location 'UP' of block 'TB': no document of the site "
              "defines the block [location-target]\n");
    // Beside the document that defines it (only as context), one fault is left.
    documents.push_back(
        read(kLintData / "unknown-field" / "pass.fordef", "blocks.fordef", /*checked=*/false));
    EXPECT_EQ(text(lint(documents, templateInTestData)),
              "borders.fordef:4: error: location 'UP' of block 'TB' is placed relative to block "
              "'NONE', which no document of the site defines [location-target]\n");
}

TEST(Lint, ADuplicateInTwoDocumentsIsReportedOnceNamingBoth) {
    std::vector<LintDocument> documents;
    documents.push_back(read(kLintData / "unknown-field" / "pass.fordef", "first.fordef"));
    documents.push_back(read(kLintData / "missing-template" / "pass.fordef", "second.fordef"));
    EXPECT_EQ(text(lint(documents, templateInTestData)),
              "second.fordef:3: error: border 'FRAME' is also defined at first.fordef:3 "
              "[duplicate-id]\n"
              "second.fordef:10: error: block 'TB' is also defined at first.fordef:10 "
              "[duplicate-id]\n"
              "second.fordef:34: error: location 'BR' of block 'TB' is also defined at "
              "first.fordef:34 [duplicate-id]\n");
    // Checking only the first, the duplicate is reported there, naming the second.
    documents[1].checked = false;
    const std::vector<Finding> findings = lint(documents, templateInTestData);
    ASSERT_EQ(findings.size(), 3u);
    EXPECT_EQ(findings[0].file, "first.fordef");
    EXPECT_EQ(findings[0].message, "border 'FRAME' is also defined at second.fordef:3");
}

TEST(Lint, ContextDocumentsAreNotReported) {
    std::vector<LintDocument> documents;
    documents.push_back(read(kLintData / "default-style" / "fail.fordef", "context.fordef", false));
    EXPECT_TRUE(lint(documents, templateInTestData).empty());
}

TEST(Lint, FindingsAreSortedByFileLineAndRule) {
    std::vector<LintDocument> documents;
    documents.push_back(read(kLintData / "zone-count" / "fail.fordef", "b.fordef"));
    documents.push_back(read(kLintData / "default-style" / "fail.fordef", "a.fordef", false));
    documents.push_back(read(kLintData / "default-style" / "fail.fordef", "a.fordef"));
    const std::vector<Finding> findings =
        lint(documents, [](const std::string&, const std::string&) { return false; });
    ASSERT_FALSE(findings.empty());
    EXPECT_TRUE(std::is_sorted(findings.begin(), findings.end()));
    EXPECT_EQ(findings.front().file, "a.fordef");
    EXPECT_EQ(findings.back().file, "b.fordef");
}

// Many documents read on several threads (0: one per core) come back in the order they were
// given, each with the findings' name it was given, whatever order the threads finish them in.
TEST(LintReading, DocumentsReadOnThreadsKeepTheOrderOfTheSources) {
    std::vector<LintSource> sources;
    for (const LintRule& rule : lintRules()) {
        sources.push_back({kLintData / rule.name / "pass.fordef", rule.name, true});
        sources.push_back(
            {kLintData / rule.name / "fail.fordef", rule.name + std::string("!"), false});
    }
    for (unsigned threads : {0u, 1u, 2u, 7u, 64u}) {
        const std::vector<LintReading> readings = readLintDocuments(sources, threads);
        ASSERT_EQ(readings.size(), sources.size());
        for (std::size_t i = 0; i < sources.size(); ++i) {
            EXPECT_EQ(readings[i].error, "") << sources[i].file;
            EXPECT_EQ(readings[i].document.file, sources[i].shownAs) << threads;
            EXPECT_EQ(readings[i].document.checked, sources[i].checked);
            const LintDocument alone = read(sources[i].file, sources[i].shownAs);
            EXPECT_TRUE(readings[i].document.document->sameContents(*alone.document));
        }
    }
}

// A document that cannot be read is reported in its own reading, with the reader's message, and
// the documents before and after it are still read.
TEST(LintReading, UnreadableDocumentGivesItsErrorAndTheOthersAreRead) {
    TestUtil::TempDir dir;
    const fs::path broken = dir.write(
        "broken.fordef", "<fordef version=\"1\">\n<border id=\"A\" layer=\"abc\"/>\n</fordef>\n");
    const fs::path good = kLintData / "default-style" / "pass.fordef";
    const std::vector<LintReading> readings =
        readLintDocuments({{good, "first", true},
                           {broken, "broken", true},
                           {dir.path() / "missing.fordef", "missing", true},
                           {good, "last", true}},
                          2);
    ASSERT_EQ(readings.size(), 4u);
    EXPECT_EQ(readings[0].error, "");
    EXPECT_EQ(readings[3].error, "");
    EXPECT_EQ(readings[3].document.file, "last");
    EXPECT_NE(readings[1].error.find(broken.string() + ":2:"), std::string::npos)
        << readings[1].error;
    EXPECT_NE(readings[2].error.find("missing.fordef"), std::string::npos) << readings[2].error;
    EXPECT_FALSE(readings[1].document.document);
}

TEST(LintReading, NoSourcesGiveNoReadings) {
    EXPECT_TRUE(readLintDocuments({}, 2).empty());
}

namespace {

// Every document under tests/data/lint, in a fixed order: many define the same border, block and
// locations, so that checked together they find duplicates across documents as well.
std::vector<LintSource> everyLintDocument(bool checkedEveryOther) {
    std::vector<fs::path> files;
    for (fs::recursive_directory_iterator it(kLintData), end; it != end; ++it) {
        if (it->path().extension() == ".fordef") {
            files.push_back(it->path());
        }
    }
    std::sort(files.begin(), files.end());
    std::vector<LintSource> sources;
    for (std::size_t i = 0; i < files.size(); ++i) {
        sources.push_back({files[i], files[i].lexically_relative(kLintData).string(),
                           !checkedEveryOther || i % 2 == 0});
    }
    return sources;
}

// The findings of the documents read whole, each with its lines, context documents first.
std::vector<Finding> lintReadWhole(const std::vector<LintSource>& sources) {
    std::vector<LintDocument> documents;
    for (bool checked : {false, true}) {
        for (const LintSource& source : sources) {
            if (source.checked == checked) {
                documents.push_back(read(source.file, source.shownAs, source.checked));
            }
        }
    }
    return lint(documents, templateInTestData);
}

} // namespace

// Reading documents for their facts alone, without their lines, and then again only those the
// findings name, gives every finding, line and message that reading them whole gives: lines of
// faults, "the first is at line" in messages, and the other definition of a duplicate.
TEST(LintFiles, FindingsAreThoseOfDocumentsReadWholeWithTheirLines) {
    for (bool checkedEveryOther : {false, true}) {
        const std::vector<LintSource> sources = everyLintDocument(checkedEveryOther);
        const std::vector<Finding> whole = lintReadWhole(sources);
        ASSERT_GT(whole.size(), 30u);
        for (unsigned threads : {1u, 2u, 5u}) {
            const LintedFiles linted = lintFiles(sources, templateInTestData, threads);
            EXPECT_TRUE(linted.unreadable.empty());
            EXPECT_EQ(text(linted.findings), text(whole)) << threads;
        }
    }
}

// A context document is read again for its lines when only the message of a duplicate in a
// checked document names it.
TEST(LintFiles, ADuplicateNamesTheLineOfAContextDocumentWithoutFindings) {
    const std::vector<LintSource> sources = {
        {kLintData / "missing-template" / "pass.fordef", "checked.fordef", true},
        {kLintData / "unknown-field" / "pass.fordef", "context.fordef", false}};
    EXPECT_EQ(text(lintFiles(sources, templateInTestData).findings),
              "checked.fordef:3: error: border 'FRAME' is also defined at context.fordef:3 "
              "[duplicate-id]\n"
              "checked.fordef:10: error: block 'TB' is also defined at context.fordef:10 "
              "[duplicate-id]\n"
              "checked.fordef:34: error: location 'BR' of block 'TB' is also defined at "
              "context.fordef:34 [duplicate-id]\n");
}

TEST(LintFiles, ACleanSiteHasNoFindings) {
    const std::vector<LintSource> sources = {
        {kLintData / "unknown-field" / "pass.fordef", "a.fordef", true}};
    const LintedFiles linted = lintFiles(sources, templateInTestData);
    EXPECT_TRUE(linted.findings.empty());
    EXPECT_TRUE(linted.unreadable.empty());
}

// A document that cannot be read is given back by its index, with the line and reason; the
// others are still checked, and resolve references without it.
TEST(LintFiles, AnUnreadableDocumentIsGivenBackAndTheOthersAreChecked) {
    TestUtil::TempDir dir;
    const fs::path broken = dir.write(
        "broken.fordef", "<fordef version=\"1\">\n<border id=\"A\" layer=\"abc\"/>\n</fordef>\n");
    const std::vector<LintSource> sources = {
        {kLintData / "default-style" / "fail.fordef", "first.fordef", true},
        {broken, "broken.fordef", true},
        {dir.path() / "missing.fordef", "missing.fordef", false}};
    const LintedFiles linted = lintFiles(sources, templateInTestData, 2);
    ASSERT_EQ(linted.unreadable.size(), 2u);
    EXPECT_EQ(linted.unreadable[0].source, 1u);
    EXPECT_EQ(linted.unreadable[0].line, 2);
    EXPECT_NE(linted.unreadable[0].reason.find("layer"), std::string::npos)
        << linted.unreadable[0].reason;
    EXPECT_EQ(linted.unreadable[1].source, 2u);
    EXPECT_EQ(text(linted.findings), "first.fordef:10: error: block 'TB' has default style "
                                     "'NARROW', which is none of its styles [default-style]\n");
}

// The facts of a context document hold what it defines, and nothing to resolve of its own.
TEST(DocumentFacts, AContextDocumentKeepsWhatItDefinesOnly) {
    const DocumentFacts context =
        documentFacts(read(kLintData / "translation-key" / "fail.fordef", "c.fordef", false));
    EXPECT_FALSE(context.blocks.empty());
    EXPECT_FALSE(context.locations.empty());
    EXPECT_TRUE(context.findings.empty());
    EXPECT_TRUE(context.translations.empty());
    EXPECT_TRUE(context.templates.empty());
    const DocumentFacts checked =
        documentFacts(read(kLintData / "translation-key" / "fail.fordef", "c.fordef", true));
    EXPECT_FALSE(checked.translations.empty());
    EXPECT_FALSE(checked.templates.empty());
}

// Facts read on threads come back in the order of the sources, the same as taken one by one,
// with the lines when asked for and without them (0) when not.
TEST(DocumentFacts, ReadOnThreadsInTheOrderOfTheSourcesWithOrWithoutLines) {
    const std::vector<LintSource> sources = everyLintDocument(true);
    for (bool withLines : {true, false}) {
        const std::vector<FactsReading> readings = readDocumentFacts(sources, withLines, 3);
        ASSERT_EQ(readings.size(), sources.size());
        for (std::size_t i = 0; i < sources.size(); ++i) {
            ASSERT_EQ(readings[i].error, "") << sources[i].file;
            const DocumentFacts alone =
                documentFacts(read(sources[i].file, sources[i].shownAs, sources[i].checked));
            EXPECT_EQ(readings[i].facts.file, sources[i].shownAs);
            EXPECT_EQ(readings[i].facts.checked, sources[i].checked);
            ASSERT_EQ(readings[i].facts.blocks.size(), alone.blocks.size());
            for (std::size_t b = 0; b < alone.blocks.size(); ++b) {
                EXPECT_EQ(readings[i].facts.blocks[b].id, alone.blocks[b].id);
                EXPECT_EQ(readings[i].facts.blocks[b].fieldIds, alone.blocks[b].fieldIds);
                EXPECT_EQ(readings[i].facts.blocks[b].line, withLines ? alone.blocks[b].line : 0);
                EXPECT_GT(alone.blocks[b].line, 0);
            }
            EXPECT_EQ(text(readings[i].facts.findings).empty(), text(alone.findings).empty());
        }
    }
}

namespace {

// The line (from 1) of the first occurrence of `needle` in `text`.
int lineOf(const std::string& text, const std::string& needle) {
    const auto at = text.find(needle);
    return at == std::string::npos
               ? 0
               : 1 + static_cast<int>(std::count(text.begin(), text.begin() + at, '\n'));
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

} // namespace

// Of two row types of one ID, lookups find the first: a symbol type or table column naming a
// field that only the second has names a field the block does not have.
TEST(Lint, AFieldOnlyInTheSecondRowTypeOfAnIdIsNotTheBlocks) {
    std::string text =
        TestUtil::readFile(kLintData / "duplicate-in-layout" / "fail-row-type.fordef");
    const std::string second = text.substr(text.rfind("<rowType id=\"ITEM\""));
    text = text.substr(0, text.size() - second.size()) +
           replaced(second, "<field id=\"NAME\"", "<field id=\"EXTRA\"");
    text = replaced(text, "<dialogField id=\"NAME\"/>\n      </rowType>\n    </table>",
                    "<dialogField id=\"EXTRA\"/>\n      </rowType>\n    </table>");
    text = replaced(text, "<line1Field id=\"POS\"/>", "<line1Field id=\"EXTRA\"/>");
    text = replaced(text, "<tableColumn rowType=\"ITEM\" field=\"POS\"",
                    "<tableColumn rowType=\"ITEM\" field=\"EXTRA\"");
    TestUtil::TempDir dir;
    const fs::path file = dir.write("rows.fordef", text);
    const std::string found = formatText(lintOne(file));
    EXPECT_NE(found.find("rows.fordef:" + std::to_string(lineOf(text, "<line1Field")) +
                         ": error: symbol type 'Balloon' of block 'TB' shows field 'EXTRA' on "
                         "line 1, which the block does not have [unknown-field]\n"),
              std::string::npos)
        << found;
    EXPECT_NE(found.find("rows.fordef:" + std::to_string(lineOf(text, "<tableColumn")) +
                         ": error: style 'FULL' of block 'TB' gives a table column to field "
                         "'EXTRA' of row type 'ITEM', which the block does not have "
                         "[unknown-field]\n"),
              std::string::npos)
        << found;
    // Within the second row type, its own fields count.
    EXPECT_EQ(found.find("in its input dialog"), std::string::npos) << found;
}

// A long list (here 40 choices) finds its duplicate as a short one does, naming the first.
TEST(Lint, ADuplicateInALongListNamesTheFirstOccurrence) {
    std::string choices;
    for (int i = 0; i < 40; ++i) {
        const std::string key = "K" + std::to_string(i == 35 ? 3 : i);
        choices += "      <choice lookupKey=\"" + key + "\" shortValue=\"" + key +
                   "\" fullValue=\"" + key + "\"/>\n";
    }
    const std::string original =
        TestUtil::readFile(kLintData / "duplicate-in-layout" / "fail-row-type.fordef");
    const std::string text = replaced(
        original,
        "      <choice lookupKey=\"ASSY\" shortValue=\"Assembly\" fullValue=\"Assembly "
        "drawing\"/>\n"
        "      <choice lookupKey=\"PART\" shortValue=\"Part\" fullValue=\"Part drawing\"/>\n",
        choices);
    TestUtil::TempDir dir;
    const fs::path file = dir.write("long.fordef", text);
    const std::string found = formatText(lintOne(file));
    const int first = lineOf(text, "lookupKey=\"K3\"");
    EXPECT_NE(found.find("long.fordef:" + std::to_string(first + 32) +
                         ": error: lookup key 'K3' occurs twice in the choices of field 'KIND' "
                         "of block 'TB'; the first is at line " +
                         std::to_string(first) + " [duplicate-in-layout]\n"),
              std::string::npos)
        << found;
}

// A FIFO, a device or a folder is refused by its kind, and a file that is not there by the
// reason, each in its own reading; the others are read.
TEST(DocumentFacts, ASourceThatIsNotARegularFileIsRefusedByItsKind) {
    TestUtil::TempDir dir;
    const fs::path fifo = dir.path() / "pipe.fordef";
    ASSERT_EQ(std::system(("mkfifo '" + fifo.string() + "'").c_str()), 0);
    const fs::path device = dir.path() / "zero.fordef";
    fs::create_symlink("/dev/zero", device);
    const fs::path good = kLintData / "default-style" / "pass.fordef";
    const std::vector<FactsReading> readings =
        readDocumentFacts({{fifo, "pipe", true},
                           {device, "zero", true},
                           {dir.path(), "folder", true},
                           {dir.path() / "missing.fordef", "missing", true},
                           {good, "good", true}},
                          false, 2);
    ASSERT_EQ(readings.size(), 5u);
    EXPECT_EQ(readings[0].reason, "it is a FIFO (named pipe), not a regular file");
    EXPECT_EQ(readings[1].reason, "it is a character device, not a regular file");
    EXPECT_EQ(readings[2].reason, "it is a folder, not a regular file");
    EXPECT_EQ(readings[3].reason, "cannot open the file: No such file or directory");
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(readings[i].errorLine, 0);
        EXPECT_NE(readings[i].error, "");
    }
    EXPECT_EQ(readings[4].error, "");
    EXPECT_EQ(readings[4].facts.file, "good");
}

namespace {

std::string copyOf(const fs::path& file) {
    return TestUtil::readFile(file);
}

} // namespace

// The check after a save keeps what it needs of each site document and reads a document again
// only when its file changed: a duplicate names the other file's line, and is gone once that
// file no longer defines the ID; an open document with unsaved changes stands in for its file.
TEST(SiteCheck, ADuplicateNamesTheSiteDocumentAndGoesWhenItsFileChanges) {
    TestUtil::TempDir dir;
    const fs::path saved =
        dir.write("saved.fordef", copyOf(kLintData / "missing-template" / "pass.fordef"));
    const std::string other = copyOf(kLintData / "unknown-field" / "pass.fordef");
    const fs::path site = dir.write("other.fordef", other);
    const auto document = QorBorder::FordefReader::read(saved);
    SiteCheck check;
    const std::vector<fs::path> siteDocuments = {site, saved};
    EXPECT_EQ(formatText(check.check(saved, document, siteDocuments, {}, templateInTestData)),
              saved.string() + ":3: error: border 'FRAME' is also defined at " + site.string() +
                  ":3 [duplicate-id]\n" + saved.string() +
                  ":10: error: block 'TB' is also defined at " + site.string() +
                  ":10 [duplicate-id]\n" + saved.string() +
                  ":34: error: location 'BR' of block 'TB' is also defined at " + site.string() +
                  ":34 [duplicate-id]\n");

    // The other document, open with unsaved changes that rename its border, stands in for its
    // file; its objects have no line yet.
    const auto open = QorBorder::FordefReader::read(site);
    const auto border =
        boost::make_shared<QorBorder::BorderLayout>(*open->getBorderLayout("FRAME"));
    border->id = "RENAMED";
    open->deleteBorderLayout("FRAME");
    open->addBorderLayout(border);
    const std::vector<Finding> withOpen =
        check.check(saved, document, siteDocuments, {{site, open}}, templateInTestData);
    ASSERT_EQ(withOpen.size(), 2u) << formatText(withOpen);
    EXPECT_EQ(withOpen[0].message, "block 'TB' is also defined at " + site.string());

    // The file changed (its size too): read again, it defines the block under another ID.
    std::string renamed = other;
    renamed.replace(renamed.find("<block id=\"TB\""), 14, "<block id=\"TB2\"");
    renamed.replace(renamed.find("<location id=\"BR\""), 17, "<location id=\"BR2\"");
    renamed.replace(renamed.find("<border id=\"FRAME\""), 18, "<border id=\"FRAME2\"");
    dir.write("other.fordef", renamed);
    EXPECT_EQ(formatText(check.check(saved, document, siteDocuments, {}, templateInTestData)), "");
}
