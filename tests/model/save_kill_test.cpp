// Saves killed with SIGKILL at random instants: the file must always be the old document or the
// new one, whole, with nothing else left in the folder. A child process saves in a loop and is
// killed after a random delay, many times: alone, or with its whole process group (as a crashing
// CAD session takes its helpers with it; the save's own helper process must survive that, or
// what it leaves must go at the next save). QORFMT_SAVE_KILLS=N sets the number of kills and
// QORFMT_SAVE_KILL_COPIES=N the size of the documents (the long run of bench/save-kill); the
// tests print their figures.
#include "model/definition_document.h"
#include "model/file_replace.h"
#include "model/fordef_writer.h"

#include "sample_documents.h"
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <random>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace QorBorder;
namespace fs = boost::filesystem;

namespace {

// A document of `copies` times the full sample; `variant` makes the contents differ. Small
// enough that flushing and replacing take a good part of each save, as they do for most
// documents.
boost::shared_ptr<DefinitionDocument> sizeableDocument(int copies, int variant) {
    const auto full = ModelTest::makeFullDocument("");
    auto document = boost::make_shared<DefinitionDocument>("");
    for (int copy = 0; copy < copies; ++copy) {
        for (const auto& block : full->blockLayouts(AllUnits)) {
            auto layout = boost::make_shared<BlockLayout>(*block);
            layout->id += " " + std::to_string(copy);
            layout->description = "variant " + std::to_string(variant);
            document->addBlockLayout(layout);
        }
        for (const auto& border : full->borderLayoutTypes(AllUnits)) {
            auto layout = boost::make_shared<BorderLayout>(*border);
            layout->id += " " + std::to_string(copy);
            document->addBorderLayout(layout);
        }
    }
    return document;
}

// Waits for every child of this process, including a save's commit step orphaned by a kill
// (this process is their subreaper).
void reapAll() {
    int status = 0;
    while (::waitpid(-1, &status, 0) > 0 || errno == EINTR) {
    }
}

int environmentNumber(const char* name, int fallback) {
    const char* value = std::getenv(name);
    return value && *value ? std::atoi(value) : fallback;
}

enum class Kill { Process, Group };

void killSavesAtRandom(Kill how) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "site.fordef";
    const int copies = environmentNumber("QORFMT_SAVE_KILL_COPIES", 4);
    const auto older = sizeableDocument(copies, 1);
    const auto newer = sizeableDocument(copies, 2);
    const std::string olderBytes = FordefWriter::toXml(*older);
    const std::string newerBytes = FordefWriter::toXml(*newer);
    ASSERT_NE(olderBytes, newerBytes);

    // How long one save takes here, so that the kills spread over whole saves.
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 3; ++i) {
        FordefWriter::write(i % 2 ? *older : *newer, file);
    }
    const auto oneSave = (std::chrono::steady_clock::now() - start) / 3;
    const long spreadUs =
        std::chrono::duration_cast<std::chrono::microseconds>(oneSave).count() * 5 / 2 + 100;

    ASSERT_EQ(::prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
    const unsigned seed = std::random_device()();
    std::mt19937 random(seed);
    std::uniform_int_distribution<long> delay(0, spreadUs);
    const int kills = environmentNumber("QORFMT_SAVE_KILLS", 400);
    int killedSaving = 0;
    int torn = 0;
    int leftOver = 0;
    int leftByKill = 0; ///< hidden temporaries that only the next save removed
    int sawOlder = 0;
    int sawNewer = 0;
    std::string firstProblem;
    bool fileIsOlder = TestUtil::readFile(file) == olderBytes;
    for (int kill = 0; kill < kills; ++kill) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            if (how == Kill::Group) {
                ::setpgid(0, 0);
            }
            // Saves the other document and the one the file holds in turn until it is killed.
            try {
                for (int i = fileIsOlder ? 0 : 1;; ++i) {
                    FordefWriter::write(i % 2 ? *older : *newer, file);
                }
            } catch (...) {
            }
            ::_exit(1);
        }
        if (how == Kill::Group) {
            ::setpgid(child, child); // whichever of the two runs first
        }
        std::this_thread::sleep_for(std::chrono::microseconds(delay(random)));
        ::kill(how == Kill::Group ? -child : child, SIGKILL);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        if (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) {
            ++killedSaving;
        }
        reapAll();

        int entries = 0;
        bool leftSome = false;
        for (fs::directory_iterator it(dir.path()), end; it != end; ++it) {
            ++entries;
            leftSome = leftSome || it->path() != file;
        }
        if (leftSome) {
            // What the next save (or open) in the folder removes does not stay behind.
            leftByKill += removeAbandonedTemporaries(dir.path());
            for (fs::directory_iterator it(dir.path()), end; it != end; ++it) {
                if (it->path() != file) {
                    ++leftOver;
                    if (firstProblem.empty()) {
                        firstProblem = "left over: " + it->path().string();
                    }
                    fs::remove(it->path());
                }
            }
        }
        const std::string bytes = TestUtil::readFile(file);
        fileIsOlder = bytes == olderBytes;
        if (bytes == olderBytes) {
            ++sawOlder;
        } else if (bytes == newerBytes) {
            ++sawNewer;
        } else {
            ++torn;
            if (firstProblem.empty()) {
                firstProblem = "torn file of " + std::to_string(bytes.size()) + " bytes (" +
                               std::to_string(entries) + " entries in the folder)";
            }
        }
    }
    ::prctl(PR_SET_CHILD_SUBREAPER, 0);
    std::cout << (how == Kill::Group ? "process groups" : "saves") << " killed " << killedSaving
              << " times, torn " << torn << ", files left over " << leftOver
              << " (removed by the next save " << leftByKill << "; old file " << sawOlder
              << " times, new file " << sawNewer << " times; documents of " << olderBytes.size()
              << " bytes, one save "
              << std::chrono::duration_cast<std::chrono::microseconds>(oneSave).count()
              << " us, seed " << seed << ")" << std::endl;
    EXPECT_EQ(torn, 0) << firstProblem;
    EXPECT_EQ(leftOver, 0) << firstProblem;
    EXPECT_EQ(killedSaving, kills) << "a saving child ended other than by the kill";
    // The kills fell before and after replacements, not all in one place.
    EXPECT_GT(sawNewer, 0);
    EXPECT_GT(sawOlder, 0);
}

} // namespace

TEST(SaveKill, SaveKilledAtAnyInstantLeavesOldOrNewFileAndNothingElse) {
    killSavesAtRandom(Kill::Process);
}

TEST(SaveKill, ProcessGroupKilledAtAnyInstantLeavesOldOrNewFileAndNothingElse) {
    killSavesAtRandom(Kill::Group);
}
