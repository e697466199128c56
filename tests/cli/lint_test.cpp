// The lint command: the site it reads, its output and exit codes, and the example site with one
// fault of each rule planted in a copy.
#include "lint.h"

#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
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

    // A copy of the example site in `dir` with a document the reader refuses, and the options
    // that lint it (a configuration of its own, so that no other site's settings come in).
    LintOptions siteWithABrokenDocument(TestUtil::TempDir& dir) {
        copyTree(kExamples / "site", dir.path() / "site");
        dir.write("site/format_defs/broken.fordef", "<fordef version=\"1\"><x/></fordef>\n");
        dir.mkdir("configurations/none");
        LintOptions options;
        options.site.site = (dir.path() / "site").string();
        options.site.configuration = "none";
        return options;
    }
    static constexpr const char* kBrokenFinding =
        "broken.fordef:1: error: unexpected element 'x' in 'fordef' [unreadable]\n";

    TestUtil::ScopedEnvironment m_environment;
    std::ostringstream m_out;
    std::ostringstream m_err;
};

} // namespace

TEST(Lint, JsonHasTheSameFieldsAsTheText) {
    const std::vector<Finding> findings = {
        {"dir/a \"b\".fordef", 12, Severity::Warning, "line\nbreak \\ \x01", "zone-count"},
        {"b.fordef", 3, Severity::Error, "x", "id-underscore"}};
    EXPECT_EQ(formatJson(findings),
              "[\n  {\"file\":\"dir/a \\\"b\\\".fordef\",\"line\":12,\"severity\":"
              "\"warning\",\"message\":\"line\\nbreak \\\\ \\u0001\",\"rule\":"
              "\"zone-count\"},\n"
              "  {\"file\":\"b.fordef\",\"line\":3,\"severity\":\"error\",\"message\":\"x\","
              "\"rule\":\"id-underscore\"}\n]\n");
    EXPECT_EQ(formatJson({}), "[]\n");
}

TEST(Lint, JsonReplacesBytesThatAreNotUtf8) {
    const std::string json = formatJson({{"a.fordef", 1, Severity::Error,
                                          "Gr\xc3\xb6\xc3\x9f"
                                          "e \xff",
                                          "r"}});
    EXPECT_NE(json.find("\"Gr\xc3\xb6\xc3\x9f"
                        "e \xef\xbf\xbd\""),
              std::string::npos)
        << json;
}

TEST(Lint, SarifIsALogOfOneRunWithRulesResultsAndLocations) {
    const std::vector<LintRule> rules = {{"zone-count", "zones"}, {"unreadable", "cannot read"}};
    const std::vector<Finding> findings = {
        {"site/format_defs/a b.fordef", 13, Severity::Warning, "0 zones", "zone-count"},
        {"/abs/broken.fordef", 0, Severity::Error, "cannot open", "unreadable"},
        {"c.fordef", 2, Severity::Error, "other", "not-listed"}};
    const nlohmann::json log = nlohmann::json::parse(formatSarif(findings, rules, "1.2.3"));
    EXPECT_EQ(log["version"], "2.1.0");
    EXPECT_EQ(log["$schema"], "https://json.schemastore.org/sarif-2.1.0.json");
    ASSERT_EQ(log["runs"].size(), 1U);
    const nlohmann::json& run = log["runs"][0];
    EXPECT_EQ(run["tool"]["driver"]["name"], "qorfmt");
    EXPECT_EQ(run["tool"]["driver"]["version"], "1.2.3");
    ASSERT_EQ(run["tool"]["driver"]["rules"].size(), 2U);
    EXPECT_EQ(run["tool"]["driver"]["rules"][1]["id"], "unreadable");
    EXPECT_EQ(run["tool"]["driver"]["rules"][1]["shortDescription"]["text"], "cannot read");
    ASSERT_EQ(run["results"].size(), 3U);
    const nlohmann::json& warning = run["results"][0];
    EXPECT_EQ(warning["ruleId"], "zone-count");
    EXPECT_EQ(warning["ruleIndex"], 0);
    EXPECT_EQ(warning["level"], "warning");
    EXPECT_EQ(warning["message"]["text"], "0 zones");
    const nlohmann::json& location = warning["locations"][0]["physicalLocation"];
    EXPECT_EQ(location["artifactLocation"]["uri"], "site/format_defs/a%20b.fordef");
    EXPECT_EQ(location["region"]["startLine"], 13);
    const nlohmann::json& error = run["results"][1];
    EXPECT_EQ(error["level"], "error");
    EXPECT_EQ(error["ruleIndex"], 1);
    EXPECT_EQ(error["locations"][0]["physicalLocation"]["artifactLocation"]["uri"],
              "file:///abs/broken.fordef");
    EXPECT_FALSE(error["locations"][0]["physicalLocation"].contains("region"))
        << "SARIF lines start at 1: no line, no region";
    EXPECT_FALSE(run["results"][2].contains("ruleIndex"));
}

TEST(Lint, GithubAnnotationsEscapeWhatWorkflowCommandsCannotCarry) {
    EXPECT_EQ(
        formatGithub({{"a,b:c.fordef", 7, Severity::Error, "100% wrong\nnext: line", "zone-count"},
                      {"d.fordef", 0, Severity::Warning, "w", "unreadable"}}),
        "::error file=a%2Cb%3Ac.fordef,line=7,title=qorfmt lint%3A zone-count::100%25 "
        "wrong%0Anext: line\n"
        "::warning file=d.fordef,title=qorfmt lint%3A unreadable::w\n");
    EXPECT_EQ(formatGithub({}), "");
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

TEST_F(LintCommand, AnUnreadableDocumentIsAFindingAndTheOthersAreStillChecked) {
    TestUtil::TempDir dir;
    const fs::path broken = dir.write("broken.fordef", "<fordef version=\"1\">\n<border/>\n");
    LintOptions options;
    options.files = {broken.string(), (kLintData / "zone-count" / "fail.fordef").string()};
    options.site.searchPath = kLintData.string();
    for (const std::string format : {"text", "json"}) {
        options.format = format;
        EXPECT_EQ(run(options), 1) << m_err.str();
        EXPECT_NE(m_out.str().find(broken.string()), std::string::npos) << m_out.str();
        EXPECT_NE(m_out.str().find("unreadable"), std::string::npos) << m_out.str();
        EXPECT_NE(m_out.str().find("zone-count"), std::string::npos) << m_out.str();
        EXPECT_EQ(m_err.str(), "");
    }
    options.format = "text";
    run(options);
    // The finding names the line where reading stopped (the lines are sorted by file name, and
    // where the test's folders lie decides which file comes first).
    EXPECT_NE(m_out.str().find(broken.string() + ":2: error: "), std::string::npos) << m_out.str();
}

TEST_F(LintCommand, AnUnreadableDocumentOfTheSiteIsAFinding) {
    TestUtil::TempDir dir;
    const LintOptions options = siteWithABrokenDocument(dir);
    EXPECT_EQ(run(options), 1) << m_err.str();
    EXPECT_NE(m_out.str().find(kBrokenFinding), std::string::npos) << m_out.str();
}

// A FIFO or a device in the site's folder is no document of the site: it is left out without
// being opened (lint does not wait on the FIFO), and the documents are checked.
TEST_F(LintCommand, ASiteFileThatIsNotARegularFileIsLeftOut) {
    TestUtil::TempDir dir;
    const LintOptions options = siteWithABrokenDocument(dir);
    const fs::path fifo = dir.path() / "site/format_defs/pipe.fordef";
    ASSERT_EQ(std::system(("mkfifo '" + fifo.string() + "'").c_str()), 0);
    fs::create_symlink("/dev/zero", dir.path() / "site/format_defs/zero.fordef");
    EXPECT_EQ(run(options), 1) << m_err.str();
    EXPECT_NE(m_out.str().find(kBrokenFinding), std::string::npos) << m_out.str();
    EXPECT_EQ(m_out.str().find("pipe.fordef"), std::string::npos) << m_out.str();
    EXPECT_EQ(m_out.str().find("zero.fordef"), std::string::npos) << m_out.str();
}

TEST_F(LintCommand, AFileThatIsNotARegularFileIsRefusedAtOnceNamingIt) {
    TestUtil::TempDir dir;
    const fs::path fifo = dir.path() / "pipe.fordef";
    ASSERT_EQ(std::system(("mkfifo '" + fifo.string() + "'").c_str()), 0);
    const fs::path device = dir.path() / "zero.fordef";
    fs::create_symlink("/dev/zero", device);
    const struct {
        fs::path file;
        std::string message;
    } cases[] = {
        {fifo, "it is a FIFO (named pipe), not a regular file"},
        {device, "it is a character device, not a regular file"},
        {dir.path(), "it is a folder, not a regular file"},
        {dir.path() / "missing.fordef", "cannot open the file: No such file or directory"},
    };
    for (const auto& c : cases) {
        LintOptions options;
        options.files = {(kLintData / "zone-count" / "fail.fordef").string(), c.file.string()};
        EXPECT_EQ(run(options), 2) << c.file;
        EXPECT_EQ(m_err.str(),
                  "qorfmt lint: " + c.file.string() + ": " + c.message +
                      (c.message.rfind("not", 0) == 0 ? "; only documents are read" : "") + "\n");
        EXPECT_EQ(m_out.str(), "");
    }
}

TEST_F(LintCommand, ASiteWithNoDocumentsIsExitTwoNamingWhereItLooked) {
    TestUtil::TempDir dir;
    dir.mkdir("empty/format_defs");
    LintOptions options;
    options.site.site = (dir.path() / "empty").string();
    EXPECT_EQ(run(options), 2);
    EXPECT_NE(m_err.str().find("qorfmt lint: no documents (*.fordef) to check in " +
                               (dir.path() / "empty" / "format_defs").string()),
              std::string::npos)
        << m_err.str();

    options.site.site = (dir.path() / "empty" / "format_defs").string();
    EXPECT_EQ(run(options), 2);
    EXPECT_NE(m_err.str().find("the site is the folder that holds format_defs/"), std::string::npos)
        << m_err.str();
    EXPECT_EQ(m_out.str(), "");
}

TEST_F(LintCommand, ASiteInTheEnvironmentThatIsNoDirectoryIsExitTwo) {
    m_environment.set("QORFMT_SITE", "/nonexistent");
    EXPECT_EQ(run(LintOptions()), 2);
    EXPECT_EQ(m_err.str(), "qorfmt lint: QORFMT_SITE=/nonexistent: the site is not a directory\n");
}

TEST_F(LintCommand, ErrorsFailTheRunAndWarningsOnlyAboveMaxWarnings) {
    // zone-count is a warning, default-style an error.
    const struct {
        const char* name;
        const char* document;
        int maxWarnings;
        int exitCode;
    } cases[] = {
        {"a warning alone", "zone-count", -1, 0},
        {"a warning within the limit", "zone-count", 1, 0},
        {"a warning over the limit", "zone-count", 0, 1},
        {"an error", "default-style", -1, 1},
        {"an error with room for warnings", "default-style", 10, 1},
        {"no findings", "zone-count/pass", 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        LintOptions options;
        const std::string folder = c.document;
        options.files = {
            (kLintData /
             (folder.find('/') == std::string::npos ? folder + "/fail.fordef" : folder + ".fordef"))
                .string()};
        options.site.searchPath = kLintData.string();
        options.maxWarnings = c.maxWarnings;
        EXPECT_EQ(run(options), c.exitCode) << m_out.str() << m_err.str();
        EXPECT_EQ(m_err.str().find("more than --max-warnings") != std::string::npos,
                  c.maxWarnings >= 0 && c.exitCode == 1 && folder == "zone-count");
    }
}

TEST_F(LintCommand, EachFormatGivesTheSameFindingsAndExitCode) {
    const struct {
        const char* format;
        const char* expected;
    } cases[] = {
        {"text", ":8: warning: drawing size 'A3' of border 'FRAME' has 0 "},
        {"json", "\"line\":8,\"severity\":\"warning\""},
        {"sarif", "\"startLine\": 8"},
        {"github", "::warning file="},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.format);
        LintOptions options;
        options.files = {(kLintData / "zone-count" / "fail.fordef").string()};
        options.site.searchPath = kLintData.string();
        options.format = c.format;
        EXPECT_EQ(run(options), 0) << m_err.str();
        EXPECT_NE(m_out.str().find(c.expected), std::string::npos) << m_out.str();
    }
}

TEST_F(LintCommand, OutputWritesTheReportToAFile) {
    TestUtil::TempDir dir;
    LintOptions options;
    options.files = {(kLintData / "default-style" / "fail.fordef").string()};
    options.site.searchPath = kLintData.string();
    options.format = "sarif";
    options.output = (dir.path() / "lint.sarif").string();
    EXPECT_EQ(run(options), 1);
    EXPECT_EQ(m_out.str(), "");
    const nlohmann::json log = nlohmann::json::parse(TestUtil::readFile(options.output));
    EXPECT_EQ(log["runs"][0]["results"][0]["ruleId"], "default-style");

    options.output = (dir.path() / "no folder" / "lint.sarif").string();
    EXPECT_EQ(run(options), 2);
    EXPECT_NE(m_err.str().find("no folder"), std::string::npos) << m_err.str();
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
    EXPECT_EQ(run(options), 0);
    EXPECT_EQ(m_out.str().rfind("[\n  {\"file\":", 0), 0u) << m_out.str();
    EXPECT_NE(m_out.str().find("\"rule\":\"zone-count\"}\n]\n"), std::string::npos);
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

// Paths are shown relative to the working folder when they lie below it, the same whether they
// are plain or hold "." or ".." parts or doubled separators; others as given.
TEST(DisplayPath, BelowTheWorkingFolderRelativeElseAsGiven) {
    const fs::path here = "/work/site";
    const struct {
        const char* path;
        const char* shown;
    } cases[] = {
        {"/work/site/format_defs/a.fordef", "format_defs/a.fordef"},
        {"/work/site/./format_defs/a.fordef", "format_defs/a.fordef"},
        {"/work/site/x/../format_defs/a.fordef", "format_defs/a.fordef"},
        {"/work/site//format_defs/a.fordef", "format_defs/a.fordef"},
        {"/work/site/.hidden.fordef", ".hidden.fordef"},
        {"/work/sites/a.fordef", "/work/sites/a.fordef"},
        {"/work/site/../other/a.fordef", "/work/site/../other/a.fordef"},
        {"/elsewhere/a.fordef", "/elsewhere/a.fordef"},
        {"relative/a.fordef", "relative/a.fordef"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(displayPath(c.path, here), c.shown) << c.path;
    }
    EXPECT_EQ(displayPath("/work/site/a.fordef", fs::path()), "/work/site/a.fordef");
}
