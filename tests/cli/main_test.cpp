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
         std::vector<std::vector<std::string>>{{"lint", "--help"},
                                               {"fmt", "--help"},
                                               {"diff", "--help"},
                                               {"merge", "--help"},
                                               {"render", "--help"},
                                               {"translations", "export", "--help"},
                                               {"translations", "import", "--help"},
                                               {"translations", "coverage", "--help"}}) {
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

TEST(QorfmtProgram, MistypedCommandSuggestsTheNearestOne) {
    const struct {
        std::vector<std::string> arguments;
        std::string message;
    } cases[] = {
        {{"lnit"}, "qorfmt: 'lnit' is not a command; did you mean 'lint'?\n"},
        {{"merg", "a", "b", "c"}, "qorfmt: 'merg' is not a command; did you mean 'merge'?\n"},
        {{"translations", "exprot", "x.fordef"},
         "qorfmt translations: 'exprot' is not a command; did you mean 'export'?\n"},
        {{"polish"},
         "qorfmt: 'polish' is not a command (the commands are lint, fmt, diff, merge, "
         "render, translations)\n"},
    };
    for (const auto& c : cases) {
        const Result result = qorfmt(c.arguments);
        EXPECT_EQ(result.exitCode, 2) << c.arguments[0];
        EXPECT_EQ(result.err, c.message);
        EXPECT_EQ(result.out, "");
    }
}

TEST(QorfmtProgram, DashReadsTheDocumentFromStandardInput) {
    const std::string blocks =
        (kExamples / "site" / "format_defs" / "iso7200_blocks.fordef").string();
    const std::string borders =
        (kExamples / "site" / "format_defs" / "iso5457_borders.fordef").string();
    const std::string feed = "cat " + quote(blocks) + " | ";

    const Result diff = qorfmt({"diff", blocks, "-"}, feed);
    EXPECT_EQ(diff.exitCode, 0) << diff.err;
    const Result changed = qorfmt({"diff", borders, "-"}, feed);
    EXPECT_EQ(changed.exitCode, 1) << changed.err;
    EXPECT_TRUE(contains(changed.out, borders + ":3 standard input:2: border \"ISO5457\": "
                                                "removed\n"))
        << changed.out;

    const Result fmt = qorfmt({"fmt", "-"}, feed);
    EXPECT_EQ(fmt.exitCode, 0) << fmt.err;
    EXPECT_EQ(fmt.out, TestUtil::readFile(blocks));

    const Result exported = qorfmt({"translations", "export", "-", "--language", "FR"}, feed);
    EXPECT_EQ(exported.exitCode, 0) << exported.err;
    EXPECT_TRUE(contains(exported.out, "msgstr \"Bureau d'études\"\n")) << exported.out;

    const Result coverage = qorfmt({"translations", "coverage", "-"}, feed);
    EXPECT_EQ(coverage.exitCode, 0) << coverage.err;

    TestUtil::TempDir dir;
    const fs::path svg = dir.path() / "a4.svg";
    const Result render =
        qorfmt({"render", "-", "--border", "ISO5457", "--size", "A4", "-o", svg.string()},
               "cat " + quote(borders) + " | ");
    EXPECT_EQ(render.exitCode, 0) << render.err;
    EXPECT_TRUE(contains(TestUtil::readFile(svg), "width=\"297mm\""));

    const Result broken = qorfmt({"fmt", "-"}, "printf '<fordef version=\"1\">\\n<x/>' | ");
    EXPECT_EQ(broken.exitCode, 2);
    EXPECT_TRUE(contains(broken.err, "qorfmt fmt: standard input:2: ")) << broken.err;
}

TEST(QorfmtProgram, TranslationsImportReadsTheCatalogFromStandardInput) {
    TestUtil::TempDir dir;
    const fs::path document =
        dir.write("blocks.fordef",
                  TestUtil::readFile(kExamples / "site" / "format_defs" / "iso7200_blocks.fordef"));
    const Result exported =
        qorfmt({"translations", "export", document.string(), "--language", "FR"});
    ASSERT_EQ(exported.exitCode, 0) << exported.err;
    std::string catalog = exported.out;
    const std::string from = "msgstr \"Bureau d'études\"";
    catalog.replace(catalog.find(from), from.size(), "msgstr \"Études\"");
    const fs::path po = dir.write("fr.po", catalog);
    const Result imported = qorfmt({"translations", "import", document.string(), "-"},
                                   "cat " + quote(po.string()) + " | ");
    EXPECT_EQ(imported.exitCode, 0) << imported.err;
    EXPECT_TRUE(contains(TestUtil::readFile(document), "text=\"Études\"")) << imported.out;

    const fs::path broken = dir.write("broken.po", "msgid \"x\"\nmsgstr \"y\"\nmsgid\n");
    const Result refused = qorfmt({"translations", "import", document.string(), "-"},
                                  "cat " + quote(broken.string()) + " | ");
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_TRUE(contains(refused.err, "standard input:")) << refused.err;
    EXPECT_FALSE(contains(refused.err, "/proc/")) << refused.err;
}

TEST(QorfmtProgram, TranslationsImportRefusesStandardInputAsTheDocument) {
    const Result result = qorfmt({"translations", "import", "-", "fr.po"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "qorfmt translations import: the document cannot be standard input: "
                          "import writes it back\n");
}

TEST(QorfmtProgram, TranslationsExportNeedsNoTemporaryFolder) {
    TestUtil::TempDir dir;
    const std::string document =
        (kExamples / "site" / "format_defs" / "iso7200_blocks.fordef").string();
    const std::string missing = "TMPDIR=" + quote((dir.path() / "missing").string()) + " ";
    const Result toOutput =
        qorfmt({"translations", "export", document, "--language", "DE"}, "export " + missing + ";");
    EXPECT_EQ(toOutput.exitCode, 0) << toOutput.err;
    EXPECT_TRUE(contains(toOutput.out, "\"Language: DE\\n\"")) << toOutput.out;
    const fs::path po = dir.path() / "de.po";
    const Result toFile =
        qorfmt({"translations", "export", document, "--language", "DE", "-o", po.string()},
               "export " + missing + ";");
    EXPECT_EQ(toFile.exitCode, 0) << toFile.err;
    EXPECT_TRUE(contains(TestUtil::readFile(po), "\"Language: DE\\n\""));
}

// Whatever escapes a command (here: memory running out while a device is read as a document)
// ends it with exit status 2 and a message naming the command, never with an abort.
TEST(QorfmtProgram, WhatEscapesACommandIsExitTwoNamingTheCommand) {
#ifdef QORFMT_SANITIZED
    GTEST_SKIP() << "the sanitizers need more address space than the limit leaves";
#endif
    TestUtil::TempDir dir;
    const fs::path link = dir.path() / "zero.fordef";
    fs::create_symlink("/dev/zero", link);
    const Result result = qorfmt({"fmt", link.string()}, "ulimit -v 400000; ");
    EXPECT_EQ(result.exitCode, 2) << result.err;
    EXPECT_EQ(result.err.rfind("qorfmt fmt: ", 0), 0U) << result.err;
}

TEST(QorfmtProgram, LintRefusesAFifoAtOnceInsteadOfWaitingForIt) {
    TestUtil::TempDir dir;
    const fs::path fifo = dir.path() / "pipe.fordef";
    const Result result = qorfmt({"lint", fifo.string()}, "mkfifo " + quote(fifo.string()) + "; ");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "qorfmt lint: " + fifo.string() +
                              ": it is a FIFO (named pipe), not a regular file\n");
}

TEST(QorfmtProgram, LintWritesSarifToTheNamedFile) {
    TestUtil::TempDir dir;
    const fs::path sarif = dir.path() / "lint.sarif";
    const Result result = qorfmt({"lint", "--site", (kExamples / "site").string(), "--format",
                                  "sarif", "-o", sarif.string()});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(contains(TestUtil::readFile(sarif), "\"version\": \"" QORFMT_VERSION "\""));
    EXPECT_TRUE(contains(TestUtil::readFile(sarif), "\"results\": []"));
}

TEST(QorfmtProgram, RenderWritesOneDrawingToStandardOutputWithDash) {
    const std::string borders =
        (kExamples / "site" / "format_defs" / "iso5457_borders.fordef").string();
    const Result pdf = qorfmt({"render", borders, "--border", "ISO5457", "-o", "-"});
    EXPECT_EQ(pdf.exitCode, 0) << pdf.err;
    EXPECT_EQ(pdf.out.rfind("%PDF-", 0), 0u);
    // Nothing else on standard output: no "FILE: N pages" line (the sanitizer build's leak
    // report may stand on standard error).
    EXPECT_FALSE(contains(pdf.out, " pages\n"));
    EXPECT_FALSE(contains(pdf.err, "qorfmt render")) << pdf.err;
    const Result svg = qorfmt(
        {"render", borders, "--border", "ISO5457", "--size", "A3", "-o", "-", "--format", "svg"});
    EXPECT_EQ(svg.exitCode, 0) << svg.err;
    EXPECT_TRUE(contains(svg.out, "width=\"420mm\"")) << svg.out.substr(0, 300);
    const Result several =
        qorfmt({"render", borders, "--border", "ISO5457", "-o", "-", "--format", "png"});
    EXPECT_EQ(several.exitCode, 2);
    EXPECT_EQ(several.out, "");
    EXPECT_TRUE(contains(several.err, "standard output takes one")) << several.err;
}
