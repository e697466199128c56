// The guide for a new dialog shows real code: every fenced block of docs/adding-a-dialog.md
// follows a line that names `FILE` and ends in a colon, and occurs, line for line, in that file
// as it stands. A guide whose example no longer compiles teaches the wrong thing.
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace {

const std::string kSource = QORFMT_SOURCE_DIR;

std::vector<std::string> linesOf(const std::string& path) {
    std::ifstream in(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        while (!line.empty() && (line.back() == ' ' || line.back() == '\r')) {
            line.pop_back();
        }
        lines.push_back(line);
    }
    return lines;
}

struct Snippet {
    std::size_t line; // of the opening fence in the guide, from 1
    std::string file; // empty: the line before names no file
    std::vector<std::string> lines;
};

// The file of each block is the last name in backquotes of the line of prose before it, which
// ends in a colon ("From `FILE`:", "From `FILE`, its start:"); "and a test reads:" goes on with
// the file of the block before.
std::vector<Snippet> snippetsOf(const std::vector<std::string>& guide) {
    static const std::regex naming(R"(`([^`]+)`[^`]*:$)");
    std::vector<Snippet> snippets;
    std::string prose;
    for (std::size_t i = 0; i < guide.size(); ++i) {
        if (guide[i].rfind("```", 0) != 0) {
            if (!guide[i].empty()) {
                prose = guide[i];
            }
            continue;
        }
        Snippet snippet{i + 1, {}, {}};
        std::smatch match;
        if (std::regex_search(prose, match, naming)) {
            snippet.file = match[1];
        } else if (prose == "and a test reads:" && !snippets.empty()) {
            snippet.file = snippets.back().file;
        }
        for (++i; i < guide.size() && guide[i] != "```"; ++i) {
            snippet.lines.push_back(guide[i]);
        }
        snippets.push_back(snippet);
        prose.clear();
    }
    return snippets;
}

bool occursIn(const std::vector<std::string>& snippet, const std::vector<std::string>& file) {
    if (snippet.empty() || snippet.size() > file.size()) {
        return false;
    }
    for (std::size_t start = 0; start + snippet.size() <= file.size(); ++start) {
        std::size_t k = 0;
        while (k < snippet.size() && file[start + k] == snippet[k]) {
            ++k;
        }
        if (k == snippet.size()) {
            return true;
        }
    }
    return false;
}

} // namespace

TEST(Guide, EveryCodeBlockIsTheCodeOfTheFileItNames) {
    const std::vector<std::string> guide = linesOf(kSource + "/docs/adding-a-dialog.md");
    ASSERT_FALSE(guide.empty());
    const std::vector<Snippet> snippets = snippetsOf(guide);
    ASSERT_GE(snippets.size(), 10u);
    for (const Snippet& snippet : snippets) {
        ASSERT_FALSE(snippet.file.empty()) << "adding-a-dialog.md:" << snippet.line
                                           << ": a code block without a file named before it";
        EXPECT_TRUE(occursIn(snippet.lines, linesOf(kSource + "/" + snippet.file)))
            << "adding-a-dialog.md:" << snippet.line << ": this block is not the code of "
            << snippet.file;
    }
}
