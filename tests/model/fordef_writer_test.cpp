#include "model/definition_document.h"
#include "model/document_error.h"
#include "model/fordef_writer.h"

#include "sample_documents.h"
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace QorBorder;
namespace fs = boost::filesystem;

namespace {

// Runs `check` in a child process, as an unprivileged user when `dropRoot` (root writes into
// read-only folders) and with the file size limited to `maxFileSize` bytes when not 0 (the
// kernel then fails writes as on a full disk; SIGXFSZ is ignored unless `sizeSignalKills`, when
// it keeps the default action of ending the process). Returns the child's message, "" on
// success, or "killed by signal N".
std::string inChild(const std::function<std::string()>& check, bool dropRoot,
                    rlim_t maxFileSize = 0, bool sizeSignalKills = false) {
    int pipeFds[2];
    if (::pipe(pipeFds) != 0) {
        return "pipe failed";
    }
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::close(pipeFds[0]);
        std::string message;
        if (dropRoot && ::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) {
            message = "cannot drop root";
        }
        if (message.empty() && maxFileSize != 0) {
            std::signal(SIGXFSZ, sizeSignalKills ? SIG_DFL : SIG_IGN);
            struct rlimit limit {};
            ::getrlimit(RLIMIT_FSIZE, &limit);
            limit.rlim_cur = maxFileSize;
            ::setrlimit(RLIMIT_FSIZE, &limit);
        }
        if (message.empty()) {
            try {
                message = check();
            } catch (const std::exception& error) {
                message = std::string("unexpected exception: ") + error.what();
            }
        }
        if (!message.empty()) {
            const ssize_t ignored = ::write(pipeFds[1], message.data(), message.size());
            (void)ignored;
        }
        ::_exit(message.empty() ? 0 : 1);
    }
    ::close(pipeFds[1]);
    std::string message;
    char buffer[256];
    ssize_t got = 0;
    while ((got = ::read(pipeFds[0], buffer, sizeof buffer)) > 0) {
        message.append(buffer, static_cast<std::size_t>(got));
    }
    ::close(pipeFds[0]);
    int status = 0;
    ::waitpid(pid, &status, 0);
    if (WIFSIGNALED(status)) {
        message = "killed by signal " + std::to_string(WTERMSIG(status));
    } else if (message.empty() && !(WIFEXITED(status) && WEXITSTATUS(status) == 0)) {
        message = "child failed";
    }
    return message;
}

// Saves a changed document (the full sample unless one is given) over `file` and expects the
// failure to leave everything as it was.
std::string expectFailedSave(const fs::path& file, const std::string& reasonPart,
                             boost::shared_ptr<DefinitionDocument> document = nullptr) {
    const std::string before = TestUtil::readFile(file);
    if (!document) {
        document = ModelTest::makeFullDocument(file.string());
    }
    document->modified = true;
    try {
        document->save();
        return "save did not fail";
    } catch (const DocumentError& error) {
        const std::string what = error.what();
        if (what.find(file.string()) == std::string::npos) {
            return "message does not name the file: " + what;
        }
        if (what.find(reasonPart) == std::string::npos) {
            return "message does not give the reason '" + reasonPart + "': " + what;
        }
    }
    if (!document->modified) {
        return "modified was cleared";
    }
    if (TestUtil::readFile(file) != before) {
        return "the old file changed";
    }
    for (fs::directory_iterator it(file.parent_path()), end; it != end; ++it) {
        if (it->path() != file) {
            return "a file was left beside it: " + it->path().string();
        }
    }
    return "";
}

// Gives the calling process a mount namespace of its own whose mounts nobody else sees.
bool ownMountNamespace() {
    if (::unshare(CLONE_NEWNS) != 0) {
        const uid_t uid = ::geteuid();
        const gid_t gid = ::getegid();
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
            return false;
        }
        // Be the same user inside, so that files can be made on the new file system.
        const auto put = [](const char* file, const std::string& text) {
            std::ofstream out(file);
            out << text;
            return static_cast<bool>(out.flush());
        };
        if (!put("/proc/self/setgroups", "deny") ||
            !put("/proc/self/uid_map", std::to_string(uid) + " " + std::to_string(uid) + " 1") ||
            !put("/proc/self/gid_map", std::to_string(gid) + " " + std::to_string(gid) + " 1")) {
            return false;
        }
    }
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

// Names of the entries of `folder`, sorted.
std::vector<std::string> entries(const fs::path& folder) {
    std::vector<std::string> names;
    for (fs::directory_iterator it(folder), end; it != end; ++it) {
        names.push_back(it->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

// In a child: a file system of 128 KiB mounted on `folder`, in a mount namespace of the child's
// own; "skip: WHY" where that is not allowed, else "".
std::string mountSmallFileSystem(const fs::path& folder) {
    if (!ownMountNamespace()) {
        return "skip: no mount namespace of its own: " + std::string(strerror(errno));
    }
    if (::mount("qorfmt-test", folder.c_str(), "tmpfs", 0, "size=128k") != 0) {
        return "skip: cannot mount a small file system: " + std::string(strerror(errno));
    }
    return "";
}

// Runs `body` in a child on a small file system mounted on `folder`: "" when it passed, its
// failure, or "skip: WHY" where the mount is not allowed.
std::string onSmallFileSystem(const fs::path& folder, const std::function<std::string()>& body) {
    return inChild(
        [&]() -> std::string {
            if (const std::string skip = mountSmallFileSystem(folder); !skip.empty()) {
                return skip;
            }
            return body();
        },
        false);
}

} // namespace

// A result of onSmallFileSystem: the test is skipped where the mount was not allowed.
#define EXPECT_PASSED_OR_SKIP(result)                                                              \
    do {                                                                                           \
        const std::string result_ = (result);                                                      \
        if (result_.rfind("skip: ", 0) == 0) {                                                     \
            GTEST_SKIP() << result_.substr(6);                                                     \
        }                                                                                          \
        EXPECT_EQ(result_, "");                                                                    \
    } while (false)

TEST(FordefWriter, SaveIntoAMissingFolderThrowsAndKeepsModified) {
    TestUtil::TempDir dir;
    DefinitionDocument document("");
    document.modified = true;
    const fs::path file = dir.path() / "no such folder" / "a.fordef";
    try {
        document.save(file);
        FAIL() << "no exception";
    } catch (const DocumentError& error) {
        EXPECT_NE(std::string(error.what()).find(file.string()), std::string::npos);
        EXPECT_NE(error.reason().find("No such file or directory"), std::string::npos)
            << error.what();
    }
    EXPECT_TRUE(document.modified);
    EXPECT_EQ(document.filename(), "");
}

TEST(FordefWriter, SaveIntoAReadOnlyFolderLeavesTheOldFileWhole) {
    TestUtil::TempDir dir;
    const fs::path folder = dir.mkdir("locked");
    const fs::path file = folder / "a.fordef";
    ModelTest::makeSmallDocument("")->save(file);
    fs::permissions(dir.path(), fs::perms(0755));
    fs::permissions(folder, fs::perms(0555));
    fs::permissions(file, fs::perms(0666));
    EXPECT_EQ(inChild([&] { return expectFailedSave(file, "Permission denied"); }, true), "");
}

TEST(FordefWriter, SaveBeyondTheFileSizeLimitLeavesTheOldFileWholeAndModifiedSet) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    ModelTest::makeSmallDocument("")->save(file);
    // The full document is far larger than 2000 bytes; its write fails half way.
    EXPECT_EQ(inChild(
                  [&] {
                      return expectFailedSave(
                          file, "cannot write: the file would exceed the largest size allowed");
                  },
                  false, 2000),
              "");
}

// A save that meets the file size limit must not end the process with SIGXFSZ (in NX that is
// the CAD session with every unsaved document): it is an ordinary failed save.
TEST(FordefWriter, SaveUnderAFileSizeLimitFailsWithItsMessageAndTheProcessLives) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    ModelTest::makeSmallDocument("")->save(file);
    EXPECT_EQ(inChild(
                  [&]() -> std::string {
                      const std::string result = expectFailedSave(
                          file, "cannot write: the file would exceed the largest size allowed");
                      sigset_t pending;
                      ::sigpending(&pending);
                      if (!result.empty()) {
                          return result;
                      }
                      // Nothing left to strike once the signal is unblocked again.
                      return ::sigismember(&pending, SIGXFSZ) ? "SIGXFSZ still pending" : "";
                  },
                  false, 2000, true),
              "");
}

// A file system of 128 KiB, in a mount namespace of the child's own (as root, or as an
// unprivileged user in a user namespace). Skipped where neither is allowed.
TEST(FordefWriter, SaveOnAFullDiskLeavesTheOldFileWholeAndModifiedSet) {
    TestUtil::TempDir dir;
    const fs::path folder = dir.mkdir("small");
    const fs::path file = folder / "a.fordef";
    EXPECT_PASSED_OR_SKIP(onSmallFileSystem(folder, [&] {
        ModelTest::makeSmallDocument("")->save(file);
        const auto large = boost::make_shared<DefinitionDocument>(file.string());
        for (int copy = 0; copy < 20; ++copy) {
            for (const auto& block : ModelTest::makeFullDocument("")->blockLayouts(AllUnits)) {
                large->addBlockLayout(boost::make_shared<BlockLayout>(*block));
            }
        }
        return expectFailedSave(file, "cannot write: the disk is full", large);
    }));
}

TEST(FordefWriter, SaveOverAReadOnlyFileIsRefused) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    ModelTest::makeSmallDocument("")->save(file);
    fs::permissions(dir.path(), fs::perms(0777));
    fs::permissions(file, fs::perms(0444));
    EXPECT_EQ(inChild([&] { return expectFailedSave(file, "read-only"); }, true), "");
}

// A file system mounted read-only is named as such, not taken for a read-only file.
TEST(FordefWriter, SaveOnAReadOnlyFileSystemSaysSo) {
    TestUtil::TempDir dir;
    const fs::path folder = dir.mkdir("mounted");
    const fs::path file = folder / "a.fordef";
    EXPECT_PASSED_OR_SKIP(onSmallFileSystem(folder, [&]() -> std::string {
        ModelTest::makeSmallDocument("")->save(file);
        if (::mount(nullptr, folder.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0) {
            return "skip: cannot mount it read-only: " + std::string(strerror(errno));
        }
        return expectFailedSave(file, "cannot save: the file system is read-only");
    }));
}

TEST(FordefWriter, SaveOverAFifoIsRefusedAtOnceWithItsKind) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    const auto document = ModelTest::makeSmallDocument("");
    document->save(file);
    fs::remove(file);
    ASSERT_EQ(::mkfifo(file.c_str(), 0644), 0);
    document->modified = true;
    try {
        document->save();
        FAIL() << "saved over a FIFO";
    } catch (const DocumentError& error) {
        EXPECT_EQ(std::string(error.what()),
                  file.string() + ": cannot save: it is a FIFO (named pipe), not a regular file");
    }
    EXPECT_TRUE(document->modified);
    EXPECT_TRUE(fs::symlink_status(file).type() == fs::fifo_file);
}

TEST(FordefWriter, SaveAsOntoAFifoIsRefusedAtOnce) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "pipe.fordef";
    ASSERT_EQ(::mkfifo(file.c_str(), 0644), 0);
    try {
        DefinitionDocument("").save(file);
        FAIL() << "saved over a FIFO";
    } catch (const DocumentError& error) {
        EXPECT_NE(error.reason().find("FIFO (named pipe), not a regular file"), std::string::npos)
            << error.what();
    }
}

TEST(FordefWriter, SaveThroughALinkWhoseTargetIsGoneCreatesTheTargetAndKeepsTheLink) {
    TestUtil::TempDir dir;
    const fs::path real = dir.mkdir("shared") / "real.fordef";
    const fs::path link = dir.path() / "link.fordef";
    fs::create_symlink("shared/real.fordef", link);
    const auto document = ModelTest::makeSmallDocument("");
    document->save(link);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(TestUtil::readFile(real), FordefWriter::toXml(*document));
    EXPECT_EQ(entries(dir.path()), (std::vector<std::string>{"link.fordef", "shared"}));
}

TEST(FordefWriter, SaveThroughAChainOfLinksReplacesTheLastFileAndKeepsEveryLink) {
    TestUtil::TempDir dir;
    const fs::path real = dir.path() / "real.fordef";
    ModelTest::makeSmallDocument("")->save(real);
    fs::create_symlink(real, dir.path() / "middle.fordef");
    fs::create_symlink("middle.fordef", dir.path() / "first.fordef");
    DefinitionDocument("").save(dir.path() / "first.fordef");
    EXPECT_TRUE(fs::is_symlink(dir.path() / "first.fordef"));
    EXPECT_TRUE(fs::is_symlink(dir.path() / "middle.fordef"));
    EXPECT_EQ(TestUtil::readFile(real), FordefWriter::toXml(DefinitionDocument("")));
}

TEST(FordefWriter, SaveRefusesADrawingSizeTheReaderWouldRefuse) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    const auto document = ModelTest::makeSmallDocument("");
    document->save(file);
    const std::string before = TestUtil::readFile(file);
    const auto border =
        document->getBorderLayout(document->borderLayoutTypes(AllUnits).front()->id);
    ASSERT_FALSE(border->drawingSizes().empty());
    border->getDrawingSize(0).horizontalZones = 1000001;
    document->modified = true;
    try {
        document->save();
        FAIL() << "saved 1000001 zones";
    } catch (const DocumentError& error) {
        EXPECT_NE(error.reason().find("'horizontalZones' of element 'drawingSize' must be a "
                                      "number of zones up to 1000000, not 1000001"),
                  std::string::npos)
            << error.what();
    }
    EXPECT_EQ(TestUtil::readFile(file), before);
}

// The dialogs take any zone count; one no drawing shows (negative, or more than render draws)
// is saved and read back as it is, for lint to report, rather than refused on save.
TEST(FordefWriter, ZoneCountsADrawingCannotShowAreSavedAndReadBack) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    const auto document = ModelTest::makeSmallDocument("");
    const auto border =
        document->getBorderLayout(document->borderLayoutTypes(AllUnits).front()->id);
    ASSERT_FALSE(border->drawingSizes().empty());
    border->getDrawingSize(0).horizontalZones = 5000;
    border->getDrawingSize(0).verticalZones = -5;
    document->save(file);
    const auto read = DefinitionDocument::load(file);
    const auto readBorder = read->getBorderLayout(border->id);
    EXPECT_EQ(readBorder->drawingSizes().at(0).horizontalZones, 5000);
    EXPECT_EQ(readBorder->drawingSizes().at(0).verticalZones, -5);
}

TEST(FordefWriter, SaveKeepsThePermissionsOfTheReplacedFile) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    ModelTest::makeSmallDocument("")->save(file);
    fs::permissions(file, fs::perms(0640));
    ModelTest::makeFullDocument("")->save(file);
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
}

TEST(FordefWriter, SaveReplacesTheFileAndLeavesNothingBeside) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    ModelTest::makeFullDocument("")->save(file);
    const auto small = ModelTest::makeSmallDocument("");
    small->save(file);
    EXPECT_EQ(TestUtil::readFile(file), FordefWriter::toXml(*small));
    int entries = 0;
    for (fs::directory_iterator it(dir.path()), end; it != end; ++it) {
        ++entries;
    }
    EXPECT_EQ(entries, 1);
}

TEST(FordefWriter, SaveThroughASymbolicLinkReplacesTheLinkedFile) {
    TestUtil::TempDir dir;
    const fs::path real = dir.path() / "real.fordef";
    ModelTest::makeSmallDocument("")->save(real);
    const fs::path link = dir.path() / "link.fordef";
    fs::create_symlink(real, link);
    DefinitionDocument("").save(link);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(TestUtil::readFile(real), FordefWriter::toXml(DefinitionDocument("")));
}

TEST(FordefWriter, SaveOntoAFolderIsRefused) {
    TestUtil::TempDir dir;
    DefinitionDocument document("");
    EXPECT_THROW(document.save(dir.mkdir("folder.fordef")), DocumentError);
}

TEST(FordefWriter, NewFileGetsThePermissionsTheUmaskAllows) {
    TestUtil::TempDir dir;
    const mode_t previous = ::umask(027);
    DefinitionDocument("").save(dir.path() / "new.fordef");
    ::umask(previous);
    EXPECT_EQ(fs::status(dir.path() / "new.fordef").permissions(), fs::perms(0640));
}

TEST(FordefWriter, NewFileHasNoNameInTheFolderWhileItIsWritten) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    replaceFileAtomically(file, "old");
    std::vector<std::string> whileWriting;
    replaceFileAtomically(file, [&](const ChunkSink& sink) {
        sink("new ", 4);
        whileWriting = entries(dir.path());
        sink("bytes", 5);
    });
    EXPECT_EQ(whileWriting, std::vector<std::string>{"a.fordef"});
    EXPECT_EQ(TestUtil::readFile(file), "new bytes");
    EXPECT_EQ(entries(dir.path()), std::vector<std::string>{"a.fordef"});
}

TEST(FordefWriter, RefusedReplacementLeavesTheOldFileAndNothingElse) {
    for (const TemporaryFile temporary : {TemporaryFile::Unnamed, TemporaryFile::Named}) {
        TestUtil::TempDir dir;
        const fs::path file = dir.path() / "a.fordef";
        replaceFileAtomically(file, "old");
        const auto produce = [](const ChunkSink& sink) { sink("new", 3); };
        const auto refuse = [] { throw std::runtime_error("refused"); };
        EXPECT_THROW(replaceFileAtomically(file, produce, refuse, temporary), std::runtime_error);
        EXPECT_EQ(TestUtil::readFile(file), "old");
        EXPECT_EQ(entries(dir.path()), std::vector<std::string>{"a.fordef"});
    }
}

// Where the file system has no unnamed files (O_TMPFILE), a hidden file beside the target takes
// their place; it is renamed over the old file when complete and removed on every failure.
TEST(FordefWriter, NamedTemporaryReplacesTheFileAndIsRemovedOnFailure) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    replaceFileAtomically(file, "old");
    std::vector<std::string> whileWriting;
    const auto produce = [&](const ChunkSink& sink) {
        sink("new", 3);
        whileWriting = entries(dir.path());
    };
    replaceFileAtomically(file, produce, CommitCheck(), TemporaryFile::Named);
    ASSERT_EQ(whileWriting.size(), 2u);
    EXPECT_EQ(whileWriting[0].rfind(".a.fordef.", 0), 0u) << whileWriting[0];
    EXPECT_EQ(TestUtil::readFile(file), "new");
    EXPECT_EQ(entries(dir.path()), std::vector<std::string>{"a.fordef"});

    const auto failing = [](const ChunkSink& sink) {
        sink("partial", 7);
        throw std::runtime_error("the producer failed");
    };
    EXPECT_THROW(replaceFileAtomically(file, failing, CommitCheck(), TemporaryFile::Named),
                 std::runtime_error);
    EXPECT_EQ(TestUtil::readFile(file), "new");
    EXPECT_EQ(entries(dir.path()), std::vector<std::string>{"a.fordef"});
}

TEST(FordefWriter, ReplacementReportsTheSizeAndHashOfTheNewFile) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    const FileState state = replaceFileAtomically(file, "some bytes");
    ContentHash hash;
    hash.update("some bytes", 10);
    EXPECT_TRUE(state.known);
    EXPECT_EQ(state.size, 10u);
    EXPECT_EQ(state.hash, hash.value());
    struct stat info {};
    ASSERT_EQ(::stat(file.c_str(), &info), 0);
    EXPECT_EQ(state.inode, static_cast<std::uint64_t>(info.st_ino));
    EXPECT_EQ(state.modifiedNs,
              static_cast<std::int64_t>(info.st_mtim.tv_sec) * 1000000000 + info.st_mtim.tv_nsec);
}

namespace {

// A document whose text is larger than `bytes`: the full sample's blocks, many times over.
boost::shared_ptr<DefinitionDocument> documentLargerThan(std::size_t bytes,
                                                         const std::string& name) {
    const auto large = boost::make_shared<DefinitionDocument>(name);
    const auto sample = ModelTest::makeFullDocument("");
    while (FordefWriter::toXml(*large).size() <= bytes) {
        for (int copy = 0; copy < 50; ++copy) {
            for (const auto& block : sample->blockLayouts(AllUnits)) {
                large->addBlockLayout(boost::make_shared<BlockLayout>(*block));
            }
        }
    }
    return large;
}

} // namespace

// A document of many pieces (each written while the next is built) is saved byte for byte as
// its text, and the state the save reports is that of those bytes.
TEST(FordefWriter, ADocumentOfManyPiecesIsSavedWhole) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "large.fordef";
    const auto large = documentLargerThan(5u << 20, file.string());
    large->save(file);
    const std::string text = FordefWriter::toXml(*large);
    EXPECT_TRUE(TestUtil::readFile(file) == text);
    EXPECT_FALSE(large->modified);
    // Touched but not changed, the file is compared by its hash: the one the save recorded of
    // what it wrote lets the next save through.
    const struct timespec times[2] = {{0, UTIME_NOW}, {0, UTIME_NOW}};
    ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
    large->modified = true;
    EXPECT_NO_THROW(large->save());
}

// A write that fails in an early piece, written on the writing thread, fails the save as one in
// the last piece does: its message, the old file whole, the process alive and no SIGXFSZ left.
TEST(FordefWriter, AFailedWriteOfAnEarlyPieceFailsTheSaveAndTheProcessLives) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    ModelTest::makeSmallDocument("")->save(file);
    const auto large = documentLargerThan(4u << 20, file.string());
    EXPECT_EQ(inChild(
                  [&]() -> std::string {
                      const std::string result = expectFailedSave(
                          file, "cannot write: the file would exceed the largest size allowed",
                          large);
                      sigset_t pending;
                      ::sigpending(&pending);
                      if (!result.empty()) {
                          return result;
                      }
                      return ::sigismember(&pending, SIGXFSZ) ? "SIGXFSZ still pending" : "";
                  },
                  false, 1u << 20, true),
              "");
}
