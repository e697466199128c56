// Canonical formatting: documents are rewritten as the model's writer writes them, and only when
// that changes their bytes.
#include "fmt.h"
#include "text_diff.h"

#include "base/wildcard_filter.h"
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <sstream>

using namespace QorfmtCli;
namespace fs = boost::filesystem;

namespace {

const fs::path kData = fs::path(QORFMT_TEST_DATA);
const fs::path kExamples = fs::path(QORFMT_EXAMPLES_DIR);

std::vector<fs::path> documentsBelow(const fs::path& folder) {
    std::vector<fs::path> files;
    const Base::WildcardFilter filter("*.fordef");
    for (fs::recursive_directory_iterator it(folder), end; it != end; ++it) {
        if (filter.matches(it->path())) {
            files.push_back(it->path());
        }
    }
    return files;
}

// The canonical document of the unknown-field case, spread out as a person might write it.
std::string handWritten(const std::string& canonical) {
    std::string text = canonical;
    for (std::string::size_type at = 0; (at = text.find("\" ", at)) != std::string::npos;) {
        text.replace(at, 2, "\"\n      ");
    }
    return text;
}

class Fmt : public ::testing::Test {
protected:
    int run(const FmtOptions& options) {
        m_out.str("");
        m_err.str("");
        return runFmt(options, m_out, m_err);
    }

    TestUtil::TempDir m_dir;
    std::ostringstream m_out;
    std::ostringstream m_err;
};

} // namespace

TEST_F(Fmt, ExampleAndTestDocumentsAreInCanonicalForm) {
    std::vector<fs::path> files = documentsBelow(kExamples);
    const std::vector<fs::path> lintCases = documentsBelow(kData / "lint");
    files.insert(files.end(), lintCases.begin(), lintCases.end());
    ASSERT_GT(files.size(), 20u);
    for (const fs::path& file : files) {
        EXPECT_TRUE(isCanonical(file.string())) << file;
    }
}

TEST_F(Fmt, ADocumentInAnotherLayoutIsRewrittenAsTheWriterWritesIt) {
    const std::string canonical =
        TestUtil::readFile(kData / "lint" / "unknown-field" / "pass.fordef");
    const fs::path file = m_dir.write("spread.fordef", handWritten(canonical));
    FmtOptions options;
    options.files = {file.string()};
    EXPECT_EQ(run(options), 0) << m_err.str();
    EXPECT_EQ(m_out.str(), file.string() + ": rewritten\n");
    EXPECT_EQ(TestUtil::readFile(file), canonical);
}

TEST_F(Fmt, ACanonicalDocumentIsNotWritten) {
    const fs::path file = m_dir.write(
        "same.fordef", TestUtil::readFile(kData / "lint" / "unknown-field" / "pass.fordef"));
    fs::permissions(file, fs::owner_read);
    FmtOptions options;
    options.files = {file.string()};
    EXPECT_EQ(run(options), 0) << m_err.str();
    EXPECT_EQ(m_out.str(), "");
}

TEST_F(Fmt, CheckNamesTheDocumentsThatWouldChangeAndWritesNothing) {
    const std::string canonical =
        TestUtil::readFile(kData / "lint" / "unknown-field" / "pass.fordef");
    const fs::path spread = m_dir.write("spread.fordef", handWritten(canonical));
    const fs::path same = m_dir.write("same.fordef", canonical);
    FmtOptions options;
    options.check = true;
    options.files = {spread.string(), same.string()};
    EXPECT_EQ(run(options), 1);
    EXPECT_EQ(m_out.str(), spread.string() + ": not in canonical form\n");
    EXPECT_EQ(TestUtil::readFile(spread), handWritten(canonical));

    options.files = {same.string()};
    EXPECT_EQ(run(options), 0);
    EXPECT_EQ(m_out.str(), "");
}

TEST_F(Fmt, AnUnreadableDocumentIsReportedAndTheOthersAreStillFormatted) {
    const std::string canonical =
        TestUtil::readFile(kData / "lint" / "unknown-field" / "pass.fordef");
    const fs::path broken = m_dir.write("broken.fordef", "<fordef version=\"2\"/>\n");
    const fs::path spread = m_dir.write("spread.fordef", handWritten(canonical));
    FmtOptions options;
    options.files = {broken.string(), spread.string()};
    EXPECT_EQ(run(options), 2);
    EXPECT_EQ(m_err.str(), "qorfmt fmt: " + broken.string() +
                               ":1: format version '2' is not supported (this program reads "
                               "version 1)\n");
    EXPECT_EQ(TestUtil::readFile(broken), "<fordef version=\"2\"/>\n");
    EXPECT_EQ(TestUtil::readFile(spread), canonical);
}

namespace {

// The canonical document with a comment put in before its second line's element.
std::string withComment(const std::string& canonical) {
    const std::string::size_type second = canonical.find('\n', canonical.find('\n') + 1) + 1;
    return canonical.substr(0, second) + "  <!-- kept by hand -->\n" + canonical.substr(second);
}

} // namespace

TEST_F(Fmt, ADocumentWithACommentIsRefusedNamingTheLineOfTheFirst) {
    const std::string canonical =
        TestUtil::readFile(kData / "lint" / "unknown-field" / "pass.fordef");
    const fs::path file = m_dir.write("commented.fordef", withComment(canonical));
    FmtOptions options;
    options.files = {file.string()};
    EXPECT_EQ(run(options), 2);
    EXPECT_EQ(m_err.str(), "qorfmt fmt: " + file.string() +
                               ":3: holds an XML comment, which the canonical form does not "
                               "keep; not rewritten (--diff shows the change, --drop-comments "
                               "rewrites it without its comments)\n");
    EXPECT_EQ(TestUtil::readFile(file), withComment(canonical));

    options.dropComments = true;
    EXPECT_EQ(run(options), 0) << m_err.str();
    EXPECT_EQ(m_out.str(), file.string() + ": rewritten\n");
    EXPECT_EQ(TestUtil::readFile(file), canonical);
}

TEST_F(Fmt, CheckCountsACommentedDocumentAsNotCanonical) {
    const std::string canonical =
        TestUtil::readFile(kData / "lint" / "unknown-field" / "pass.fordef");
    const fs::path file = m_dir.write("commented.fordef", withComment(canonical));
    FmtOptions options;
    options.check = true;
    options.files = {file.string()};
    EXPECT_EQ(run(options), 1);
    EXPECT_EQ(m_out.str(), file.string() + ": not in canonical form\n");
}

TEST_F(Fmt, DiffShowsWhatWouldChangeAndWritesNothing) {
    const std::string canonical =
        TestUtil::readFile(kData / "lint" / "unknown-field" / "pass.fordef");
    const fs::path file = m_dir.write("commented.fordef", withComment(canonical));
    const fs::path same = m_dir.write("same.fordef", canonical);
    FmtOptions options;
    options.diff = true;
    options.files = {file.string(), same.string()};
    EXPECT_EQ(run(options), 1) << m_err.str();
    const std::vector<std::string> lines = [&] {
        std::vector<std::string> all;
        std::istringstream in(canonical);
        for (std::string line; std::getline(in, line);) {
            all.push_back(line);
        }
        return all;
    }();
    EXPECT_EQ(m_out.str(), "--- " + file.string() + "\n+++ " + file.string() +
                               " (formatted)\n@@ -1,6 +1,5 @@\n " + lines[0] + "\n " + lines[1] +
                               "\n-  <!-- kept by hand -->\n " + lines[2] + "\n " + lines[3] +
                               "\n " + lines[4] + "\n");
    EXPECT_EQ(TestUtil::readFile(file), withComment(canonical));
    options.files = {same.string()};
    EXPECT_EQ(run(options), 0);
    EXPECT_EQ(m_out.str(), "");
}

TEST(TextDiff, FirstCommentLine) {
    EXPECT_EQ(firstCommentLine("<a/>\n"), 0);
    EXPECT_EQ(firstCommentLine("<!-- x -->\n<a/>"), 1);
    EXPECT_EQ(firstCommentLine("<a>\n\n  <!-- x -->\n<!-- y --></a>"), 3);
    EXPECT_EQ(firstCommentLine("<a b=\"&lt;!--\"/>"), 0);
}

// The diff is the one `patch` applies: for edits of every kind, patching the old text with it
// gives the new one.
TEST(TextDiff, PatchAppliesTheUnifiedDiffToGiveTheNewText) {
    TestUtil::TempDir dir;
    const std::string original = TestUtil::readFile(fs::path(QORFMT_EXAMPLES_DIR) /
                                                    "site/format_defs/iso7200_blocks.fordef");
    std::mt19937 random(20261124);
    for (int round = 0; round < 40; ++round) {
        std::vector<std::string> lines;
        std::istringstream in(original);
        for (std::string line; std::getline(in, line);) {
            lines.push_back(line);
        }
        const int edits = 1 + static_cast<int>(random() % (round < 30 ? 8 : 200));
        for (int e = 0; e < edits && !lines.empty(); ++e) {
            const std::size_t at = random() % lines.size();
            switch (random() % 3) {
            case 0:
                lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(at));
                break;
            case 1:
                lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at),
                             "new " + std::to_string(e));
                break;
            default:
                lines[at] += " changed";
            }
        }
        std::string edited;
        for (const std::string& line : lines) {
            edited += line + "\n";
        }
        if (round % 5 == 4) {
            edited.pop_back(); // no line feed at the end
        }
        const fs::path before = dir.write("before.fordef", original);
        const fs::path patchFile =
            dir.write("change.diff", unifiedDiff(original, edited, "before.fordef", "after"));
        const std::string command = "patch -s -o '" + (dir.path() / "patched").string() + "' '" +
                                    before.string() + "' < '" + patchFile.string() + "' 2>&1";
        ASSERT_EQ(std::system(command.c_str()), 0) << TestUtil::readFile(patchFile);
        EXPECT_EQ(TestUtil::readFile(dir.path() / "patched"), edited) << "round " << round;
    }
    EXPECT_EQ(unifiedDiff(original, original, "a", "b"), "");
}
