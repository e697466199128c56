// qorfmt installed like a tool: the program, a man page per command and the bash completion, in
// the places the README names.
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace fs = boost::filesystem;

namespace {

struct Shell {
    int exitCode = -1;
    std::string output;
};

Shell shell(const fs::path& dir, const std::string& script) {
    const fs::path file = dir / "script.sh";
    const fs::path log = dir / "script.log";
    {
        FILE* out = std::fopen(file.c_str(), "w");
        std::fputs(script.c_str(), out);
        std::fclose(out);
    }
    const std::string command =
        "cd '" + dir.string() + "' && bash '" + file.string() + "' >'" + log.string() + "' 2>&1";
    const int status = std::system(command.c_str());
    Shell result;
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.output = TestUtil::readFile(log);
    return result;
}

const std::vector<std::string> kCommandPages = {"qorfmt",
                                                "qorfmt-lint",
                                                "qorfmt-fmt",
                                                "qorfmt-diff",
                                                "qorfmt-merge",
                                                "qorfmt-render",
                                                "qorfmt-translations",
                                                "qorfmt-translations-export",
                                                "qorfmt-translations-template",
                                                "qorfmt-translations-import",
                                                "qorfmt-translations-coverage"};

} // namespace

TEST(Install, PutsTheProgramAManPagePerCommandAndTheCompletion) {
    TestUtil::TempDir dir;
    const fs::path prefix = dir.path() / "prefix";
    const Shell install =
        shell(dir.path(), std::string("'") + QORFMT_CMAKE + "' --install '" + QORFMT_BUILD_DIR +
                              "' --prefix '" + prefix.string() + "'\n");
    ASSERT_EQ(install.exitCode, 0) << install.output;
    const Shell version =
        shell(dir.path(), "'" + (prefix / "bin/qorfmt").string() + "' --version\n");
    EXPECT_EQ(version.output, std::string("qorfmt ") + QORFMT_VERSION + "\n");
    for (const std::string& page : kCommandPages) {
        const fs::path file = prefix / "share/man/man1" / (page + ".1");
        ASSERT_TRUE(fs::exists(file)) << file;
        const std::string text = TestUtil::readFile(file);
        std::string title = page;
        for (char& c : title) {
            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        }
        EXPECT_EQ(text.find(".TH " + title + " \"1\""), text.find(".TH ")) << page;
        EXPECT_NE(text.find("\n" + page + " \\- "), std::string::npos) << page;
    }
    const std::string lint = TestUtil::readFile(prefix / "share/man/man1/qorfmt-lint.1");
    EXPECT_NE(lint.find("max\\-warnings"), std::string::npos) << lint;
    EXPECT_TRUE(fs::exists(prefix / "share/bash-completion/completions/qorfmt"));
}

TEST(Install, BashCompletesCommandsOptionsValuesAndDocuments) {
    TestUtil::TempDir dir;
    dir.write("a.fordef");
    dir.write("b.po");
    dir.write("c.txt");
    dir.mkdir("sub");
    const struct {
        std::vector<std::string> words;
        std::string completions;
    } cases[] = {
        {{"qorfmt", "li"}, "lint"},
        {{"qorfmt", "d"}, "diff"},
        {{"qorfmt", "translations", "t"}, "template"},
        {{"qorfmt", "lint", "--format", "s"}, "sarif"},
        {{"qorfmt", "diff", "--format", ""}, "json text"},
        {{"qorfmt", "render", "--format", "p"}, "pdf png"},
        {{"qorfmt", "render", "--l"}, "--list"},
        {{"qorfmt", "lint", "--max"}, "--max-warnings"},
        {{"qorfmt", "fmt", "--d"}, "--diff --drop-comments"},
        {{"qorfmt", "lint", ""}, "a.fordef sub"},
        {{"qorfmt", "translations", "import", "a.fordef", ""}, "b.po sub"},
    };
    for (const auto& c : cases) {
        std::string words;
        for (const std::string& word : c.words) {
            words += " '" + word + "'";
        }
        const Shell result =
            shell(dir.path(), std::string("source '") + QORFMT_COMPLETION + "'\nCOMP_WORDS=(" +
                                  words + ")\nCOMP_CWORD=" + std::to_string(c.words.size() - 1) +
                                  "\n_qorfmt\nprintf '%s\\n' \"${COMPREPLY[@]}\" | sort | "
                                  "paste -sd ' '\n");
        EXPECT_EQ(result.output, c.completions + "\n") << words;
    }
}
