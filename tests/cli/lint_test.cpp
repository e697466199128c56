// The checker: each rule on its passing and failing document under tests/data/lint/, references
// across documents, and the example site with one fault of each rule planted in a copy.
#include "lint.h"

#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <sstream>

using namespace QorfmtCli;
namespace fs = boost::filesystem;

namespace {

const fs::path kLintData = fs::path(QORFMT_TEST_DATA) / "lint";
const fs::path kExamples = fs::path(QORFMT_EXAMPLES_DIR);

// Templates as the search root tests/data/lint holds them.
bool templateInTestData(const std::string& name, const std::string& folder) {
    boost::system::error_code ec;
    return fs::is_regular_file(kLintData / folder / name, ec);
}

LintDocument read(const fs::path& file, const std::string& shownAs, bool checked = true) {
    LintDocument doc = readLintDocument(file, checked);
    doc.file = shownAs;
    return doc;
}

std::vector<Finding> lintOne(const fs::path& file) {
    std::vector<LintDocument> documents;
    documents.push_back(read(file, file.filename().string()));
    return lint(documents, templateInTestData);
}

std::string text(const std::vector<Finding>& findings) {
    return formatText(findings);
}

// Replaces the one occurrence of `from` in the file by `to`.
void replaceOnce(const fs::path& file, const std::string& from, const std::string& to) {
    std::string content = TestUtil::readFile(file);
    const auto at = content.find(from);
    ASSERT_NE(at, std::string::npos) << from << " not in " << file;
    ASSERT_EQ(content.find(from, at + 1), std::string::npos) << from << " twice in " << file;
    content.replace(at, from.size(), to);
    std::ofstream(file.string(), std::ios::binary | std::ios::trunc) << content;
}

void copyTree(const fs::path& from, const fs::path& to) {
    fs::create_directories(to);
    for (fs::recursive_directory_iterator it(from), end; it != end; ++it) {
        const fs::path target = to / it->path().lexically_relative(from);
        if (fs::is_directory(it->path())) {
            fs::create_directories(target);
        } else {
            fs::copy_file(it->path(), target);
        }
    }
}

// The environment that runLint sets, restored after each test.
class LintCommand : public ::testing::Test {
protected:
    void SetUp() override {
        m_environment.set("QORFMT_SITE", nullptr);
        m_environment.set("QORFMT_CONFIGURATION", nullptr);
        m_environment.set("QORFMT_SEARCH_PATH", nullptr);
    }

    int run(const LintOptions& options) {
        m_out.str("");
        m_err.str("");
        return runLint(options, m_out, m_err);
    }

    TestUtil::ScopedEnvironment m_environment;
    std::ostringstream m_out;
    std::ostringstream m_err;
};

} // namespace

TEST(Lint, EveryRuleHasAPassingAndAFailingDocument) {
    ASSERT_EQ(lintRules().size(), 9u);
    for (const LintRule& rule : lintRules()) {
        const fs::path folder = kLintData / rule.name;
        EXPECT_EQ(text(lintOne(folder / "pass.fordef")), "") << rule.name;
        const std::vector<Finding> findings = lintOne(folder / "fail.fordef");
        ASSERT_EQ(findings.size(), 1u) << rule.name << ":\n" << text(findings);
        EXPECT_EQ(findings[0].rule, rule.name);
        EXPECT_GT(findings[0].line, 0) << rule.name;
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
    };
    for (const auto& entry : expected) {
        EXPECT_EQ(text(lintOne(kLintData / entry.first / "fail.fordef")), entry.second);
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

TEST(Lint, JsonHasTheSameFieldsAsTheText) {
    const std::vector<Finding> findings = {
        {"dir/a \"b\".fordef", 12, Severity::Warning, "line\nbreak \\ \x01", "zone-count"}};
    EXPECT_EQ(formatJson(findings),
              "[\n  {\"file\": \"dir/a \\\"b\\\".fordef\", \"line\": 12, \"severity\": "
              "\"warning\", \"message\": \"line\\nbreak \\\\ \\u0001\", \"rule\": "
              "\"zone-count\"}\n]\n");
    EXPECT_EQ(formatJson({}), "[]\n");
}

TEST(Lint, JsonReplacesBytesThatAreNotUtf8) {
    EXPECT_EQ(jsonString("Gr\xc3\xb6\xc3\x9f"
                         "e \xff"),
              "\"Gr\xc3\xb6\xc3\x9f"
              "e \\ufffd\"");
    EXPECT_EQ(jsonString("\xc0\xaf"), "\"\\ufffd\\ufffd\"");
}

TEST_F(LintCommand, TheExampleSiteIsClean) {
    LintOptions options;
    options.site.site = (kExamples / "site").string();
    EXPECT_EQ(run(options), 0) << m_out.str() << m_err.str();
    EXPECT_EQ(m_out.str(), "");
    EXPECT_EQ(m_err.str(), "");
}

TEST_F(LintCommand, OneFaultOfEachRulePlantedInTheSiteGivesOneFindingEach) {
    TestUtil::TempDir dir;
    copyTree(kExamples / "site", dir.path() / "site");
    copyTree(kExamples / "configurations", dir.path() / "configurations");
    const fs::path site = dir.path() / "site" / "format_defs";
    const fs::path common = dir.path() / "configurations" / "common" / "nx" / "format_defs";
    const fs::path plant = dir.path() / "configurations" / "plant_a" / "nx" / "format_defs";
    replaceOnce(plant / "plant_a.fordef", "<sheet1RequiredBlock id=\"REVTABLE\"/>",
                "<sheet1RequiredBlock id=\"REVTABLE\"/><sheet1RequiredBlock id=\"STAMP\"/>");
    replaceOnce(plant / "plant_a.fordef", "associatedBlockId=\"ISO7200\"",
                "associatedBlockId=\"TB\"");
    replaceOnce(common / "company_blocks.fordef", "defaultStyleId=\"COLOUR\"",
                "defaultStyleId=\"COLOR\"");
    replaceOnce(plant / "plant_a.fordef", "keyFieldId=\"REV\"", "keyFieldId=\"REVNO\"");
    replaceOnce(common / "company_blocks.fordef", "key=\"DE_PROTNOTE_NOTICE_CONF\"",
                "key=\"DE_PROTNOTE_NOTE_CONF\"");
    replaceOnce(site / "iso5457_borders.fordef", "<secondLanguage name=\"FR\"/>",
                "<secondLanguage name=\"FR_CA\"/>");
    replaceOnce(site / "asme_y14_1_borders.fordef", "templateFile=\"asme_y14_1_c.prt\"",
                "templateFile=\"asme_y14_1_c2.prt\"");
    replaceOnce(plant / "plant_a.fordef", "<border id=\"PLANTAISO\"", "<border id=\"ISO5457\"");
    replaceOnce(site / "iso5457_borders.fordef", "horizontalZones=\"6\" verticalZones=\"4\"",
                "horizontalZones=\"0\" verticalZones=\"4\"");

    LintOptions options;
    options.site.site = (dir.path() / "site").string();
    EXPECT_EQ(run(options), 1);
    std::vector<std::string> lines;
    std::istringstream report(m_out.str());
    for (std::string line; std::getline(report, line);) {
        lines.push_back(line);
    }
    std::multiset<std::string> rules;
    for (const std::string& line : lines) {
        rules.insert(line.substr(line.rfind('[') + 1, line.size() - line.rfind('[') - 2));
    }
    std::multiset<std::string> expected;
    for (const LintRule& rule : lintRules()) {
        expected.insert(rule.name);
    }
    EXPECT_EQ(rules, expected) << m_out.str();
    EXPECT_EQ(m_err.str(), "");
}

TEST_F(LintCommand, FilesAreCheckedInTheContextOfTheSite) {
    TestUtil::TempDir dir;
    // Requires the site's title block, which it does not define itself.
    const std::string document =
        TestUtil::readFile(kLintData / "missing-required-block" / "fail.fordef");
    std::string own = document;
    own.replace(own.find("id=\"LOGO\""), 9, "id=\"ISO7200\"");
    const fs::path file = dir.write("own.fordef", own);
    LintOptions options;
    options.files = {file.string()};
    options.site.searchPath = kLintData.string();
    EXPECT_EQ(run(options), 1);
    EXPECT_NE(m_out.str().find("requires block 'ISO7200' on sheet 1"), std::string::npos);

    options.site.site = (kExamples / "site").string();
    EXPECT_EQ(run(options), 0) << m_out.str() << m_err.str();
    EXPECT_EQ(m_out.str(), "");
}

TEST_F(LintCommand, AnUnreadableDocumentIsAnInputError) {
    TestUtil::TempDir dir;
    const fs::path file = dir.write("broken.fordef", "<fordef version=\"1\">\n<border/>\n");
    LintOptions options;
    options.files = {file.string(), (dir.path() / "missing.fordef").string()};
    EXPECT_EQ(run(options), 2);
    EXPECT_NE(m_err.str().find("broken.fordef:"), std::string::npos) << m_err.str();
    EXPECT_EQ(m_out.str(), "");
}

TEST_F(LintCommand, WithoutSiteOrFilesThereIsNothingToCheck) {
    EXPECT_EQ(run(LintOptions()), 2);
    EXPECT_NE(m_err.str().find("name a site"), std::string::npos);
}

TEST_F(LintCommand, ASiteThatIsNoDirectoryIsAnInputError) {
    LintOptions options;
    options.site.site = (kLintData / "no such site").string();
    EXPECT_EQ(run(options), 2);
    EXPECT_NE(m_err.str().find("the site is not a directory"), std::string::npos);
}

TEST_F(LintCommand, JsonFormatListsTheFindings) {
    LintOptions options;
    options.files = {(kLintData / "zone-count" / "fail.fordef").string()};
    options.site.searchPath = kLintData.string();
    options.format = "json";
    EXPECT_EQ(run(options), 1);
    EXPECT_EQ(m_out.str().rfind("[\n  {\"file\": ", 0), 0u) << m_out.str();
    EXPECT_NE(m_out.str().find("\"rule\": \"zone-count\"}\n]\n"), std::string::npos);
}

TEST_F(LintCommand, AConfigurationThatDoesNotExistIsAnInputError) {
    LintOptions options;
    options.site.site = (kExamples / "site").string();
    options.site.configuration = "nowhere";
    EXPECT_EQ(run(options), 2);
    EXPECT_NE(m_err.str().find("configuration 'nowhere' not found"), std::string::npos)
        << m_err.str();
    EXPECT_EQ(m_out.str(), "");
}
