// The hidden temporaries of saves: named after the saving process, and removed by the next save
// or open in the folder once that process is gone, but only those of this exact shape and owner.
#include "model/def_document_manager.h"
#include "model/definition_document.h"
#include "model/file_replace.h"
#include "model/fordef_writer.h"

#include "sample_documents.h"
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace QorBorder;
namespace fs = boost::filesystem;

namespace {

std::vector<std::string> entries(const fs::path& folder) {
    std::vector<std::string> names;
    for (fs::directory_iterator it(folder), end; it != end; ++it) {
        names.push_back(it->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

// The ID of a process that has ended (and been reaped).
pid_t endedProcess() {
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return child;
}

// When process `pid` started, as /proc gives it; 0 when it cannot tell.
unsigned long long startOf(pid_t pid) {
    std::ifstream in("/proc/" + std::to_string(pid) + "/stat");
    std::string stat;
    std::getline(in, stat);
    const auto close = stat.rfind(')');
    if (close == std::string::npos) {
        return 0;
    }
    std::istringstream fields(stat.substr(close + 2));
    std::string field;
    for (int i = 3; i <= 22 && fields >> field; ++i) {
    }
    return std::stoull(field);
}

std::string thisHost() {
    char name[256] = {};
    ::gethostname(name, sizeof name - 1);
    std::string host = name;
    for (char& c : host) {
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '-' && c != '.') {
            c = '_';
        }
    }
    return host.empty() ? "localhost" : host;
}

std::string temporary(const std::string& leaf, pid_t pid, unsigned long long start,
                      const std::string& host = thisHost()) {
    return "." + leaf + ".qorfmt-" + std::to_string(pid) + "-" + std::to_string(start) + "-" +
           host + ".AbCd1234";
}

} // namespace

TEST(FileReplace, NamedTemporaryCarriesTheSavingProcessInItsName) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    std::vector<std::string> whileWriting;
    replaceFileAtomically(
        file,
        [&](const ChunkSink& sink) {
            sink("new", 3);
            whileWriting = entries(dir.path());
        },
        CommitCheck(), TemporaryFile::Named);
    ASSERT_EQ(whileWriting.size(), 1u);
    const std::string expected = ".a.fordef.qorfmt-" + std::to_string(::getpid()) + "-" +
                                 std::to_string(startOf(::getpid())) + "-" + thisHost() + ".";
    EXPECT_EQ(whileWriting[0].substr(0, expected.size()), expected);
    EXPECT_EQ(whileWriting[0].size(), expected.size() + 8);
}

TEST(FileReplace, SaveRemovesTheTemporariesOfSavesWhoseProcessIsGone) {
    TestUtil::TempDir dir;
    const pid_t ended = endedProcess();
    dir.write(temporary("a.fordef", ended, 12345), "half a save");
    dir.write(temporary("other.fordef", ended, 0), "half a save");
    replaceFileAtomically(dir.path() / "a.fordef", "saved");
    EXPECT_EQ(entries(dir.path()), std::vector<std::string>{"a.fordef"});
}

TEST(FileReplace, TemporaryOfAProcessThatStillRunsIsKept) {
    TestUtil::TempDir dir;
    const std::string mine = temporary("a.fordef", ::getpid(), startOf(::getpid()));
    dir.write(mine, "being written");
    replaceFileAtomically(dir.path() / "a.fordef", "saved");
    EXPECT_EQ(entries(dir.path()), (std::vector<std::string>{mine, "a.fordef"}));
}

// A process ID is reused in time; the start time in the name tells the later process apart.
TEST(FileReplace, TemporaryOfAReusedProcessIdIsRemoved) {
    TestUtil::TempDir dir;
    const unsigned long long start = startOf(::getpid());
    ASSERT_NE(start, 0u);
    dir.write(temporary("a.fordef", ::getpid(), start + 1), "half a save");
    EXPECT_EQ(removeAbandonedTemporaries(dir.path()), 1);
    EXPECT_TRUE(entries(dir.path()).empty());
}

TEST(FileReplace, OnlyFilesOfTheExactNameShapeAndOwnerAreRemoved) {
    TestUtil::TempDir dir;
    const pid_t ended = endedProcess();
    const std::string identity = std::to_string(ended) + "-0-" + thisHost();
    const std::vector<std::string> kept = {
        ".a.fordef.qorfmt-" + identity + ".AbCd123",                 // 7 letters
        "a.fordef.qorfmt-" + identity + ".AbCd1234",                 // not hidden
        ".a.fordef.AbCd1234",                                        // no process
        ".a.fordef.qorfmt-x" + identity + ".AbCd1234",               // not a number
        ".a.fordef.qorfmt-" + std::to_string(ended) + "-0.AbCd1234", // no machine
        ".qorfmt-" + identity + ".AbCd1234",                         // no file name
    };
    for (const std::string& name : kept) {
        dir.write(name, "not ours");
    }
    dir.mkdir(temporary("folder", ended, 0));
    // Written on another machine sharing the folder: its process IDs mean nothing here.
    dir.write(temporary("remote.fordef", ended, 0, "another-host"), "being written there");
    std::vector<std::string> expected = kept;
    expected.push_back(temporary("remote.fordef", ended, 0, "another-host"));
    expected.push_back(temporary("folder", ended, 0));
    if (::geteuid() == 0) {
        // Another user's file of the exact shape.
        const fs::path theirs = dir.write(temporary("theirs.fordef", ended, 0), "theirs");
        ASSERT_EQ(::chown(theirs.c_str(), 65534, 65534), 0);
        expected.push_back(theirs.filename().string());
    }
    EXPECT_EQ(removeAbandonedTemporaries(dir.path()), 0);
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(entries(dir.path()), expected);
}

TEST(FileReplace, OpeningADocumentRemovesTheTemporariesOfSavesWhoseProcessIsGone) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    ModelTest::makeSmallDocument("")->save(file);
    dir.write(temporary("b.fordef", endedProcess(), 0), "half a save");
    DefDocumentManagerImpl manager;
    manager.getDocument(file);
    EXPECT_EQ(entries(dir.path()), std::vector<std::string>{"a.fordef"});
}
