// Who may include whom. The product's folders must compile against the vendor's SDK, so they
// reach nothing of the stand-in, the host or Qt; the stand-in and the host never reach product
// code (the host loads the product at run time, as NX does); the model and the command line run
// without NX. Each file's includes are followed through the files of this tree, so that a header
// cannot carry a forbidden folder in for its includer.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path kSource = QORFMT_SOURCE_DIR;

// What an include can reach: a folder of this tree (the support libraries one by one, since the
// model may use Base alone), the NX Open API (NXOpen/ and the uf headers) or Qt.
using Part = std::string;
const Part kNxOpen = "NX Open";
const Part kQt = "Qt";

// The folders below the tree's top whose first path component names them in an include
// ("model/field.h", "kiv/site.h"), and where they lie.
const std::map<std::string, fs::path>& includeRoots() {
    static const std::map<std::string, fs::path> roots = {
        {"app", "app"},
        {"ui", "ui"},
        {"workspace", "workspace"},
        {"border", "border"},
        {"block", "block"},
        {"model", "model"},
        {"base", "support/base"},
        {"kiv", "support/kiv"},
        {"kivug", "support/kivug"},
        {"nxsim", "nxsim/include/nxsim"},
        {"host", "host"},
        {"cli", "cli"},
    };
    return roots;
}

// Each checked folder (as a path below the top) and the parts it may reach.
struct Row {
    const char* folder;
    const char* part; // the name its own includes use
    std::set<Part> may;
};

const std::vector<Row>& arrows() {
    static const std::set<Part> dialogs = {"ui",    "model",     "base",   "kiv",  "kivug",
                                           kNxOpen, "workspace", "border", "block"};
    static const std::vector<Row> rows = {
        // The model's logger is a Base logger; files are read and replaced with Base's help.
        {"model", "model", {"model", "base"}},
        {"support/base", "base", {"base"}},
        {"support/kiv", "kiv", {"base", "kiv"}},
        {"support/kivug", "kivug", {"base", "kiv", "kivug", kNxOpen}},
        {"ui", "ui", {"ui", "base", "kiv", "kivug", kNxOpen}},
        {"workspace", "workspace", dialogs},
        {"border", "border", dialogs},
        {"block", "block", dialogs},
        {"app", "app",
         [] {
             std::set<Part> app = dialogs;
             app.insert("app");
             return app;
         }()},
        {"nxsim", "nxsim", {"nxsim", kNxOpen}},
        {"host", "host", {"host", "nxsim", kNxOpen, kQt}},
        {"cli", "cli", {"cli", "model", "base", "kiv", "kivug"}},
    };
    return rows;
}

bool isSource(const fs::path& file) {
    static const std::set<std::string> extensions = {".h", ".hpp", ".hxx", ".cpp", ".cxx"};
    return extensions.count(file.extension().string()) != 0;
}

struct Include {
    bool quoted;
    std::string target;
    int line;
};

std::vector<Include> includesOf(const fs::path& file) {
    static const std::regex directive(R"(^\s*#\s*include\s*([<"])([^">]+)[">])");
    std::ifstream in(file);
    std::vector<Include> includes;
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        std::smatch match;
        if (std::regex_search(line, match, directive)) {
            includes.push_back({match[1] == "\"", match[2], number});
        }
    }
    return includes;
}

// The part an include names, or empty for a standard or third-party header.
Part partOf(const std::string& target) {
    const std::string first = target.substr(0, target.find('/'));
    if (first == "NXOpen" || (target.find('/') == std::string::npos && target.rfind("uf", 0) == 0 &&
                              target.size() > 2 && (target[2] == '.' || target[2] == '_'))) {
        return kNxOpen;
    }
    if (first.rfind("Qt", 0) == 0 ||
        (target.find('/') == std::string::npos && target.size() > 1 && target[0] == 'Q' &&
         std::isupper(static_cast<unsigned char>(target[1])))) {
        return kQt;
    }
    if (target.find('/') != std::string::npos && includeRoots().count(first) != 0) {
        return first;
    }
    return {};
}

// The file of this tree a quoted include names, if there is one: beside the includer first,
// then below an include root.
fs::path resolve(const fs::path& includer, const std::string& target) {
    const fs::path beside = includer.parent_path() / target;
    if (fs::is_regular_file(beside)) {
        return beside.lexically_normal();
    }
    const std::string first = target.substr(0, target.find('/'));
    const auto root = includeRoots().find(first);
    if (root != includeRoots().end()) {
        const fs::path below = kSource / root->second / target.substr(first.size() + 1);
        if (fs::is_regular_file(below)) {
            return below.lexically_normal();
        }
    }
    return {};
}

// Every forbidden part a file reaches, with the chain of includes that reaches it.
void walk(const fs::path& file, const std::set<Part>& may, const std::string& chain,
          std::set<fs::path>& seen, std::vector<std::string>& faults) {
    if (!seen.insert(file).second) {
        return;
    }
    for (const Include& include : includesOf(file)) {
        const std::string here = chain + fs::relative(file, kSource).string() + ":" +
                                 std::to_string(include.line) + ": #include " +
                                 (include.quoted ? "\"" : "<") + include.target +
                                 (include.quoted ? "\"" : ">");
        const Part part = partOf(include.target);
        if (!part.empty() && may.count(part) == 0) {
            faults.push_back(here + " reaches " + part);
        }
        if (include.quoted) {
            const fs::path next = resolve(file, include.target);
            if (!next.empty()) {
                walk(next, may, here + " -> ", seen, faults);
            }
        }
    }
}

std::vector<std::string> faultsOf(const Row& row) {
    std::vector<std::string> faults;
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(kSource / row.folder)) {
        if (entry.is_regular_file() && isSource(entry.path())) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    for (const fs::path& file : files) {
        std::set<fs::path> seen;
        walk(file, row.may, "", seen, faults);
    }
    return faults;
}

// The first lines, enough to find the include; one forbidden header reached from many files
// would otherwise print a screenful for each.
std::string joined(const std::vector<std::string>& lines) {
    const std::size_t shown = std::min<std::size_t>(lines.size(), 10);
    std::string text;
    for (std::size_t i = 0; i < shown; ++i) {
        text += lines[i] + "\n";
    }
    if (shown < lines.size()) {
        text += "... and " + std::to_string(lines.size() - shown) + " more\n";
    }
    return text;
}

} // namespace

TEST(IncludeArrows, EachFolderReachesOnlyWhatItsRowAllows) {
    for (const Row& row : arrows()) {
        ASSERT_TRUE(fs::is_directory(kSource / row.folder)) << row.folder;
        const std::vector<std::string> faults = faultsOf(row);
        EXPECT_TRUE(faults.empty()) << row.folder << " may reach only its row:\n" << joined(faults);
    }
}

TEST(IncludeArrows, EveryFolderOfTheProgramHasARow) {
    // A new top folder of code needs a row before it can include anything.
    const std::set<std::string> notProgram = {"tests",     "bench",   "examples", "docs",
                                              "resources", "scripts", "cmake",    "support"};
    for (const auto& entry : fs::directory_iterator(kSource)) {
        const std::string name = entry.path().filename().string();
        if (!entry.is_directory() || name[0] == '.' || notProgram.count(name) != 0 ||
            name.rfind("build", 0) == 0) {
            continue;
        }
        bool hasCode = false;
        for (const auto& file : fs::recursive_directory_iterator(entry.path())) {
            hasCode = hasCode || (file.is_regular_file() && isSource(file.path()));
        }
        if (!hasCode) {
            continue;
        }
        const bool listed = std::any_of(arrows().begin(), arrows().end(),
                                        [&](const Row& row) { return name == row.folder; });
        EXPECT_TRUE(listed) << name << "/ holds code but has no row of include arrows";
    }
}

// The check itself: a forbidden include is found, also when a header of an allowed part carries
// it in.
TEST(IncludeArrows, AForbiddenIncludeIsFoundAlsoThroughAHeader) {
    EXPECT_EQ(partOf("NXOpen/Session.hxx"), kNxOpen);
    EXPECT_EQ(partOf("uf_ui.h"), kNxOpen);
    EXPECT_EQ(partOf("uf.h"), kNxOpen);
    EXPECT_EQ(partOf("QWidget"), kQt);
    EXPECT_EQ(partOf("QtWidgets/QDialog"), kQt);
    EXPECT_EQ(partOf("kivug/search_file_list.h"), "kivug");
    EXPECT_EQ(partOf("boost/filesystem.hpp"), "");
    EXPECT_EQ(partOf("unistd.h"), "");
    EXPECT_EQ(partOf("queue"), "");

    // A dialog file that may not reach NX Open would reach it through the dialog framework's
    // header: the chain names the header.
    std::set<fs::path> seen;
    std::vector<std::string> faults;
    walk(kSource / "block/text_choice_dialog.h", {"block", "ui", "model", "base"}, "", seen,
         faults);
    const bool throughAHeader =
        std::any_of(faults.begin(), faults.end(), [](const std::string& fault) {
            return fault.find("ui/nx_dialog_base.h -> ") != std::string::npos ||
                   fault.find(" -> ui/") != std::string::npos;
        });
    EXPECT_TRUE(throughAHeader) << joined(faults);
    for (const std::string& fault : faults) {
        EXPECT_NE(fault.find("reaches NX Open"), std::string::npos) << fault;
    }
}
