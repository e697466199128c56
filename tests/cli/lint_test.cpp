// The lint command: the site it reads, its output and exit codes, and the example site with one
// fault of each rule planted in a copy.
#include "lint.h"

#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

using namespace QorfmtCli;
using namespace QorLint;
namespace fs = boost::filesystem;

namespace {

const fs::path kLintData = fs::path(QORFMT_TEST_DATA) / "lint";
const fs::path kExamples = fs::path(QORFMT_EXAMPLES_DIR);

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
    replaceOnce(site / "iso7200_blocks.fordef", "lookupKey=\"QA\"", "lookupKey=\"ENG\"");
    replaceOnce(common / "company_blocks.fordef",
                "<choice lookupKey=\"COLOUR\" shortValue=\"Colour\" fullValue=\"Nordwerk\"/>", "");
    replaceOnce(common / "company_blocks.fordef",
                "<choice lookupKey=\"MONO\" shortValue=\"Monochrome\" fullValue=\"NORDWERK\"/>",
                "");
    replaceOnce(site / "asme_y14_1_borders.fordef", "height=\"17\" length=\"22\"",
                "height=\"-17\" length=\"22\"");

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
