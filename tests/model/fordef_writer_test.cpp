#include "model/definition_document.h"
#include "model/document_error.h"
#include "model/fordef_writer.h"

#include "sample_documents.h"
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace QorBorder;
namespace fs = boost::filesystem;

namespace {

// Runs `check` in a child process, as an unprivileged user when `dropRoot` (root writes into
// read-only folders) and with the file size limited to `maxFileSize` bytes when not 0 (the
// kernel then fails writes as on a full disk). Returns the child's message, "" on success.
std::string inChild(const std::function<std::string()>& check, bool dropRoot,
                    rlim_t maxFileSize = 0) {
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
            std::signal(SIGXFSZ, SIG_IGN);
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
    if (message.empty() && !(WIFEXITED(status) && WEXITSTATUS(status) == 0)) {
        message = "child failed";
    }
    return message;
}

// Saves a changed document over `file` and expects the failure to leave everything as it was.
std::string expectFailedSave(const fs::path& file, const std::string& reasonPart) {
    const std::string before = TestUtil::readFile(file);
    const auto document = ModelTest::makeFullDocument(file.string());
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

} // namespace

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

TEST(FordefWriter, SaveOnAFullDiskLeavesTheOldFileWhole) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    ModelTest::makeSmallDocument("")->save(file);
    // The full document is far larger than 2000 bytes; its write fails half way.
    EXPECT_EQ(inChild([&] { return expectFailedSave(file, "cannot write"); }, false, 2000), "");
}

TEST(FordefWriter, SaveOverAReadOnlyFileIsRefused) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    ModelTest::makeSmallDocument("")->save(file);
    fs::permissions(dir.path(), fs::perms(0777));
    fs::permissions(file, fs::perms(0444));
    EXPECT_EQ(inChild([&] { return expectFailedSave(file, "read-only"); }, true), "");
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
