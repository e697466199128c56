// A site shared by several administrators: a document that someone else changed on disk since
// it was opened is not saved over their work.
#include "model/def_document_manager.h"
#include "model/document_error.h"
#include "model/fordef_writer.h"

#include "sample_documents.h"
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace QorBorder;
namespace fs = boost::filesystem;

namespace {

// Another administrator, in a CAD session of their own, opens the file, changes it and saves.
void changedBySomeoneElse(const fs::path& file, const std::string& description) {
    DefDocumentManagerImpl otherSession;
    const auto theirs = otherSession.getDocument(file);
    theirs->getBlockLayout("TITLE")->description = description;
    theirs->save();
}

std::size_t entryCount(const fs::path& folder) {
    std::size_t count = 0;
    for (fs::directory_iterator it(folder), end; it != end; ++it) {
        ++count;
    }
    return count;
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

} // namespace

TEST(ChangedOnDisk, SaveOverAFileSomeoneElseChangedIsRefusedAndWritesNothing) {
    TestUtil::TempDir dir;
    const fs::path file = ModelTest::saveSmallDocument(dir.path(), "plant.fordef");
    DefDocumentManagerImpl manager;
    const auto mine = manager.getDocument(file);
    mine->getBlockLayout("TITLE")->description = "mine";
    mine->modified = true;
    changedBySomeoneElse(file, "theirs");
    const std::string theirBytes = TestUtil::readFile(file);
    try {
        mine->save();
        FAIL() << "no exception";
    } catch (const FileChangedError& error) {
        const std::string what = error.what();
        EXPECT_TRUE(contains(what, file.string())) << what;
        EXPECT_TRUE(contains(what, "changed by someone else since it was opened")) << what;
    }
    EXPECT_TRUE(mine->modified);
    EXPECT_EQ(TestUtil::readFile(file), theirBytes);
    EXPECT_EQ(entryCount(dir.path()), 1u);
    // Refused again as long as the file holds their work.
    EXPECT_THROW(mine->save(file), FileChangedError);
    EXPECT_THROW(mine->save(dir.path() / "." / "plant.fordef"), FileChangedError);
}

// After a refusal the user keeps the changes under another name, to compare the two files.
TEST(ChangedOnDisk, RefusedDocumentCanBeSavedUnderAnotherName) {
    TestUtil::TempDir dir;
    const fs::path file = ModelTest::saveSmallDocument(dir.path(), "plant.fordef");
    DefDocumentManagerImpl manager;
    const auto mine = manager.getDocument(file);
    mine->getBlockLayout("TITLE")->description = "mine";
    mine->modified = true;
    changedBySomeoneElse(file, "theirs");
    ASSERT_THROW(mine->save(), FileChangedError);

    const fs::path copyFile = dir.path() / "plant-mine.fordef";
    const auto copy = boost::make_shared<DefinitionDocument>(*mine);
    copy->save(copyFile);
    manager.addDocument(copy);
    EXPECT_FALSE(copy->modified);
    EXPECT_EQ(DefDocumentManagerImpl().getDocument(copyFile)->getBlockLayout("TITLE")->description,
              "mine");
    EXPECT_EQ(DefDocumentManagerImpl().getDocument(file)->getBlockLayout("TITLE")->description,
              "theirs");
    EXPECT_TRUE(mine->modified);
}

TEST(ChangedOnDisk, DocumentNobodyElseTouchedSavesAgainAndAgain) {
    TestUtil::TempDir dir;
    const fs::path file = ModelTest::saveSmallDocument(dir.path(), "plant.fordef");
    DefDocumentManagerImpl manager;
    const auto mine = manager.getDocument(file);
    for (int i = 0; i < 3; ++i) {
        mine->getBlockLayout("TITLE")->description = "edit " + std::to_string(i);
        mine->modified = true;
        mine->save();
        EXPECT_FALSE(mine->modified);
    }
    EXPECT_EQ(DefDocumentManagerImpl().getDocument(file)->getBlockLayout("TITLE")->description,
              "edit 2");
}

TEST(ChangedOnDisk, FileTouchedOrRewrittenWithTheSameBytesStillSaves) {
    TestUtil::TempDir dir;
    const fs::path file = ModelTest::saveSmallDocument(dir.path(), "plant.fordef");
    DefDocumentManagerImpl manager;
    const auto mine = manager.getDocument(file);
    // Someone copies the file back over itself, as a backup restore or a checkout would.
    replaceFileAtomically(file, TestUtil::readFile(file));
    fs::last_write_time(file, fs::last_write_time(file) - 3600);
    mine->getBlockLayout("TITLE")->description = "mine";
    mine->save();
    EXPECT_EQ(DefDocumentManagerImpl().getDocument(file)->getBlockLayout("TITLE")->description,
              "mine");
}

TEST(ChangedOnDisk, FileRemovedBySomeoneElseIsWrittenAgain) {
    TestUtil::TempDir dir;
    const fs::path file = ModelTest::saveSmallDocument(dir.path(), "plant.fordef");
    DefDocumentManagerImpl manager;
    const auto mine = manager.getDocument(file);
    fs::remove(file);
    mine->save();
    EXPECT_TRUE(DefDocumentManagerImpl().getDocument(file)->getBlockLayout("TITLE"));
}

TEST(ChangedOnDisk, SaveAsToANewNameIsNotChecked) {
    TestUtil::TempDir dir;
    const fs::path file = ModelTest::saveSmallDocument(dir.path(), "plant.fordef");
    DefDocumentManagerImpl manager;
    const auto mine = manager.getDocument(file);
    changedBySomeoneElse(file, "theirs");
    const auto copy = boost::make_shared<DefinitionDocument>(*mine);
    EXPECT_NO_THROW(copy->save(dir.path() / "new.fordef"));
    // The copy now belongs to the new file: saving it again is checked against that file.
    EXPECT_NO_THROW(copy->save());
}

// The copy Save As makes still names the original file; saved there, it is checked like the
// document it was copied from.
TEST(ChangedOnDisk, CopyOfADocumentIsCheckedAgainstItsSourcesFile) {
    TestUtil::TempDir dir;
    const fs::path file = ModelTest::saveSmallDocument(dir.path(), "plant.fordef");
    DefDocumentManagerImpl manager;
    const auto copy = boost::make_shared<DefinitionDocument>(*manager.getDocument(file));
    changedBySomeoneElse(file, "theirs");
    EXPECT_THROW(copy->save(), FileChangedError);
}

TEST(ChangedOnDisk, SaveAllSavesTheOthersThenNamesEveryRefusedDocumentInOneMessage) {
    TestUtil::TempDir dir;
    DefDocumentManagerImpl manager;
    const auto first =
        manager.getDocument(ModelTest::saveSmallDocument(dir.path(), "first.fordef"));
    const auto untouched =
        manager.getDocument(ModelTest::saveSmallDocument(dir.path(), "untouched.fordef"));
    const auto third =
        manager.getDocument(ModelTest::saveSmallDocument(dir.path(), "third.fordef"));
    for (const auto& document : {first, untouched, third}) {
        document->getBlockLayout("TITLE")->description = "mine";
        document->modified = true;
    }
    changedBySomeoneElse(first->filename(), "theirs");
    changedBySomeoneElse(third->filename(), "theirs");
    try {
        manager.saveAll();
        FAIL() << "no exception";
    } catch (const DocumentsNotSavedError& error) {
        const std::string what = error.what();
        EXPECT_TRUE(contains(what, "These 2 documents were not saved")) << what;
        EXPECT_TRUE(contains(what, first->filename() + ": the file was changed by someone else"))
            << what;
        EXPECT_TRUE(contains(what, third->filename() + ": the file was changed by someone else"))
            << what;
        EXPECT_FALSE(contains(what, untouched->filename())) << what;
        ASSERT_EQ(error.failures().size(), 2u);
        EXPECT_EQ(error.failures()[0].file(), first->filename());
        EXPECT_EQ(error.failures()[1].file(), third->filename());
    }
    EXPECT_FALSE(untouched->modified);
    EXPECT_TRUE(first->modified);
    EXPECT_TRUE(third->modified);
    EXPECT_TRUE(manager.isAnyModified());
    DefDocumentManagerImpl fresh;
    EXPECT_EQ(fresh.getDocument(untouched->filename())->getBlockLayout("TITLE")->description,
              "mine");
    EXPECT_EQ(fresh.getDocument(first->filename())->getBlockLayout("TITLE")->description, "theirs");
    EXPECT_EQ(fresh.getDocument(third->filename())->getBlockLayout("TITLE")->description, "theirs");
}

// The file is checked a second time when the new file is complete, just before it replaces the
// old one: a change made while the save was writing is not replaced either.
TEST(ChangedOnDisk, ChangeMadeWhileTheSaveWasWritingIsNotReplaced) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "plant.fordef";
    const FileState known = replaceFileAtomically(file, "what I opened");
    const auto produce = [&](const ChunkSink& sink) {
        sink("my ", 3);
        replaceFileAtomically(file, "their save, made meanwhile");
        sink("changes", 7);
    };
    const auto refuseIfChanged = [&] {
        if (changedOnDisk(file, known)) {
            throw FileChangedError(file.string());
        }
    };
    EXPECT_THROW(replaceFileAtomically(file, produce, refuseIfChanged), FileChangedError);
    EXPECT_EQ(TestUtil::readFile(file), "their save, made meanwhile");
    EXPECT_EQ(entryCount(dir.path()), 1u);
}
