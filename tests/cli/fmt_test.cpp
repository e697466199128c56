// Canonical formatting: documents are rewritten as the model's writer writes them, and only when
// that changes their bytes.
#include "fmt.h"

#include "base/wildcard_filter.h"
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

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
