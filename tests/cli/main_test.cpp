// The qorfmt program as a user runs it: help, version, exit codes and what goes where.
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace fs = boost::filesystem;

namespace {

const fs::path kLintData = fs::path(QORFMT_TEST_DATA) / "lint";
const fs::path kExamples = fs::path(QORFMT_EXAMPLES_DIR);

struct Result {
    int exitCode = -1;
    std::string out;
    std::string err;
};

std::string quote(const std::string& argument) {
    std::string quoted = "'";
    for (const char c : argument) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

// Runs qorfmt with the arguments and without the site variables of the caller's environment,
// after the shell commands in `setup`.
Result qorfmt(const std::vector<std::string>& arguments, const std::string& setup = "") {
    TestUtil::TempDir dir;
    std::string command = setup +
                          "env -u QORFMT_SITE -u QORFMT_CONFIGURATION -u QORFMT_SEARCH_PATH " +
                          quote(QORFMT_PROGRAM);
    for (const std::string& argument : arguments) {
        command += " " + quote(argument);
    }
    command +=
        " >" + quote((dir.path() / "out").string()) + " 2>" + quote((dir.path() / "err").string());
    const int status = std::system(command.c_str());
    Result result;
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.out = TestUtil::readFile(dir.path() / "out");
    result.err = TestUtil::readFile(dir.path() / "err");
    return result;
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

} // namespace

TEST(QorfmtProgram, HelpNamesEveryCommandAndExitsZero) {
    const Result result = qorfmt({"--help"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(contains(result.out, "lint")) << result.out;
    EXPECT_TRUE(contains(result.out, "Exit status")) << result.out;
    EXPECT_EQ(result.err, "");
}

TEST(QorfmtProgram, EveryCommandHasItsHelp) {
    for (const std::vector<std::string>& command :
         std::vector<std::vector<std::string>>{{"lint", "--help"}}) {
        const Result result = qorfmt(command);
        std::string name;
        for (std::size_t i = 0; i + 1 < command.size(); ++i) {
            name += (i ? " " : "") + command[i];
        }
        EXPECT_EQ(result.exitCode, 0) << name;
        EXPECT_TRUE(contains(result.out, "Usage: qorfmt " + name)) << result.out;
    }
}

TEST(QorfmtProgram, VersionIsTheProjectVersion) {
    const Result result = qorfmt({"--version"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, std::string("qorfmt ") + QORFMT_VERSION + "\n");
}

TEST(QorfmtProgram, NoCommandOrAnUnknownOneIsAUsageError) {
    EXPECT_EQ(qorfmt({}).exitCode, 2);
    const Result unknown = qorfmt({"polish"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_NE(unknown.err, "");
    EXPECT_EQ(qorfmt({"lint", "--no-such-option"}).exitCode, 2);
    EXPECT_EQ(qorfmt({"lint", "--format", "xml", "x.fordef"}).exitCode, 2);
}

TEST(QorfmtProgram, LintExitsZeroOnTheExampleSite) {
    const Result result = qorfmt({"lint", "--site", (kExamples / "site").string()});
    EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
    EXPECT_EQ(result.out, "");
}

TEST(QorfmtProgram, LintExitsOneWithFindingsOnStandardOutput) {
    const Result result = qorfmt({"lint", "--search-path", kLintData.string(),
                                  (kLintData / "default-style" / "fail.fordef").string()});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(contains(result.out, ":10: error: block 'TB' has default style 'NARROW'"))
        << result.out;
    EXPECT_EQ(result.err, "");
}

TEST(QorfmtProgram, LintExitsTwoOnAnUnreadableDocument) {
    const Result result = qorfmt({"lint", (kLintData / "missing.fordef").string()});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(contains(result.err, "missing.fordef: cannot open the file")) << result.err;
    EXPECT_EQ(result.out, "");
}

// A full disk (here: a file size limit of 1 KiB) fails the save; the document keeps its bytes.
TEST(QorfmtProgram, FmtThatCannotWriteExitsTwoAndKeepsTheDocument) {
    TestUtil::TempDir dir;
    std::string spread = TestUtil::readFile(kLintData / "unknown-field" / "pass.fordef");
    for (std::string::size_type at = 0; (at = spread.find("\" ", at)) != std::string::npos;) {
        spread.replace(at, 2, "\"\n      ");
    }
    const fs::path file = dir.write("spread.fordef", spread);
    const Result result = qorfmt({"fmt", file.string()}, "trap '' XFSZ; ulimit -f 1; ");
    EXPECT_EQ(result.exitCode, 2) << result.out << result.err;
    EXPECT_TRUE(contains(result.err, file.string())) << result.err;
    EXPECT_EQ(TestUtil::readFile(file), spread);
}

TEST(QorfmtProgram, TranslationsExportWritesToStandardOutputByDefault) {
    const Result result =
        qorfmt({"translations", "export",
                (kExamples / "site" / "format_defs" / "iso7200_blocks.fordef").string(),
                "--language", "FR"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_TRUE(contains(result.out, "\"Language: FR\\n\"\n")) << result.out;
    EXPECT_TRUE(contains(result.out, "msgctxt \"ISO7200|RESPDEPT|ENG\"\nmsgid \"Engineering\"\n"
                                     "msgstr \"Bureau d'études\"\n"))
        << result.out;
}

TEST(QorfmtProgram, TranslationsCoverageBelowTheMinimumExitsOne) {
    const std::string document =
        (kExamples / "site" / "format_defs" / "iso7200_blocks.fordef").string();
    EXPECT_EQ(qorfmt({"translations", "coverage", document, "--min", "50"}).exitCode, 0);
    EXPECT_EQ(qorfmt({"translations", "coverage", document, "--min", "90"}).exitCode, 1);
    EXPECT_EQ(qorfmt({"translations", "coverage", document, "--min", "190"}).exitCode, 2);
}

TEST(QorfmtProgram, RenderWritesTheNamedFile) {
    TestUtil::TempDir dir;
    const fs::path svg = dir.path() / "a3.svg";
    const Result result =
        qorfmt({"render", (kExamples / "site" / "format_defs" / "iso5457_borders.fordef").string(),
                "--border", "ISO5457", "--size", "A3", "-o", svg.string()});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, svg.string() + ": A3\n");
    EXPECT_TRUE(contains(TestUtil::readFile(svg), "width=\"420mm\""));
    EXPECT_EQ(qorfmt({"render", svg.string() + ".none", "--border", "X"}).exitCode, 2);
    EXPECT_EQ(qorfmt({"render", svg.string()}).exitCode, 2) << "--border is required";
}
