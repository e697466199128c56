// The bad-input table: every case in tests/data/bad-input/cases.txt runs a real program (qorfmt
// or qorfmt-replay) on a file that it must refuse, and expects its exit code and message. No
// case may crash or hang, and none may change, add or remove a file in its working folder.
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace fs = boost::filesystem;

namespace {

const fs::path kData = fs::path(QORFMT_TEST_DATA) / "bad-input";

struct BadInput {
    std::string name;
    std::vector<std::pair<std::string, std::string>> files; ///< source, place in the folder
    std::string command;
    int exitCode = 0;
    std::string message;
};

void PrintTo(const BadInput& c, std::ostream* out) {
    *out << c.name;
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::string part;
    std::istringstream in(text);
    while (std::getline(in, part, separator)) {
        parts.push_back(part);
    }
    return parts;
}

// One case a line: NAME|FILES|COMMAND|EXIT CODE|MESSAGE (see the table's head).
std::vector<BadInput> cases() {
    std::vector<BadInput> all;
    std::ifstream table((kData / "cases.txt").string());
    std::string line;
    while (std::getline(table, line)) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        const std::vector<std::string> fields = split(line, '|');
        BadInput c;
        c.name = fields.at(0);
        for (const std::string& file : split(fields.at(1), ',')) {
            const auto arrow = file.find('>');
            c.files.emplace_back(file.substr(0, arrow), file.substr(arrow + 1));
        }
        c.command = fields.at(2);
        c.exitCode = std::stoi(fields.at(3));
        c.message = fields.size() > 4 ? fields.at(4) : "";
        all.push_back(c);
    }
    return all;
}

std::string replaceAll(std::string text, const std::string& what, const std::string& with) {
    for (auto at = text.find(what); at != std::string::npos;
         at = text.find(what, at + with.size())) {
        text.replace(at, what.size(), with);
    }
    return text;
}

std::string expand(std::string text, const fs::path& work) {
    text = replaceAll(text, "{qorfmt}", QORFMT_PROGRAM);
    text = replaceAll(text, "{replay}", QORFMT_REPLAY);
    text = replaceAll(text, "{ufunc}", QORFMT_TEST_UFUNC);
    text = replaceAll(text, "{testdlg}", QORFMT_NXSIM_TEST_DLG);
    text = replaceAll(text, "{work}", work.string());
    return text;
}

// Makes `source` at `place`: a file of the table's folder, or a special file.
void make(const std::string& source, const fs::path& place) {
    fs::create_directories(place.parent_path());
    if (source == "@fifo") {
        ASSERT_EQ(::mkfifo(place.c_str(), 0644), 0) << place;
    } else if (source == "@device") {
        fs::create_symlink("/dev/zero", place);
    } else if (source == "@folder") {
        fs::create_directories(place);
    } else if (source == "@dangling") {
        fs::create_symlink("gone", place);
    } else if (source == "@huge") {
        // Sparse: it takes no room on disk.
        std::ofstream(place.string()).flush();
        fs::resize_file(place, (std::uintmax_t(1) << 30) + 1);
    } else if (source == "@socket") {
        const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
        struct sockaddr_un address {};
        address.sun_family = AF_UNIX;
        place.string().copy(address.sun_path, sizeof address.sun_path - 1);
        ASSERT_EQ(
            ::bind(listener, reinterpret_cast<const struct sockaddr*>(&address), sizeof address),
            0);
        ::close(listener);
    } else {
        fs::copy_file(kData / source, place);
    }
}

// What the folder holds: each entry's kind, and a regular file's bytes or a link's target.
std::map<std::string, std::string> snapshot(const fs::path& folder) {
    std::map<std::string, std::string> state;
    for (fs::recursive_directory_iterator it(folder), end; it != end; ++it) {
        const fs::path path = it->path();
        const std::string name = path.lexically_relative(folder).string();
        const fs::file_status status = fs::symlink_status(path);
        if (status.type() == fs::symlink_file) {
            state[name] = "link to " + fs::read_symlink(path).string();
        } else if (status.type() == fs::regular_file) {
            // A sparse file of a gibibyte is only compared by size.
            state[name] = fs::file_size(path) > (1u << 20)
                              ? "file of " + std::to_string(fs::file_size(path)) + " bytes"
                              : "file " + TestUtil::readFile(path);
        } else {
            state[name] = "kind " + std::to_string(static_cast<int>(status.type()));
        }
    }
    return state;
}

class BadInputTable : public ::testing::TestWithParam<BadInput> {};

} // namespace

TEST_P(BadInputTable, IsRefusedWithItsExitCodeAndMessageAndChangesNothing) {
    const BadInput& c = GetParam();
    TestUtil::TempDir dir;
    const fs::path work = dir.mkdir("work");
    for (const auto& file : c.files) {
        make(file.first, work / file.second);
    }
    const std::map<std::string, std::string> before = snapshot(work);
    const fs::path out = dir.path() / "out";
    // Without the caller's site; a hang ends after a minute with 124.
    const std::string command = "cd '" + work.string() +
                                "' && env -u QORFMT_SITE -u QORFMT_CONFIGURATION "
                                "-u QORFMT_SEARCH_PATH timeout 60 env " +
                                expand(c.command, work) + " >'" + out.string() + "' 2>&1";
    const int status = std::system(command.c_str());
    ASSERT_TRUE(WIFEXITED(status)) << command;
    const int exitCode = WEXITSTATUS(status);
    const std::string output = TestUtil::readFile(out);
    EXPECT_NE(exitCode, 124) << "hung: " << command;
    EXPECT_LT(exitCode, 128) << "ended by a signal: " << output;
    EXPECT_EQ(exitCode, c.exitCode) << output;
    EXPECT_NE(output.find(expand(c.message, work)), std::string::npos)
        << "expected: " << expand(c.message, work) << "\nfound: " << output;
    EXPECT_EQ(snapshot(work), before) << "the folder changed";
}

INSTANTIATE_TEST_SUITE_P(Case, BadInputTable, ::testing::ValuesIn(cases()),
                         [](const ::testing::TestParamInfo<BadInput>& row) {
                             return row.param.name;
                         });

TEST(BadInputTable, EveryFileOfTheTableIsUsedByACase) {
    std::set<std::string> used;
    for (const BadInput& c : cases()) {
        for (const auto& file : c.files) {
            used.insert(file.first);
        }
    }
    for (fs::recursive_directory_iterator it(kData), end; it != end; ++it) {
        if (fs::is_regular_file(it->path()) && it->path().filename() != "cases.txt") {
            EXPECT_EQ(used.count(it->path().lexically_relative(kData).string()), 1u) << it->path();
        }
    }
}
