#include "model/def_document_manager.h"

#include "model/document_error.h"
#include "sample_documents.h"
#include "testutil/temp_dir.h"

#include "base/log.h"

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <cstring>

using namespace QorBorder;
namespace fs = boost::filesystem;

TEST(DefDocumentManager, IsOneObjectForTheProcess) {
    EXPECT_EQ(&DefDocumentManager(), &DefDocumentManager());
}

TEST(DefDocumentManager, InfoLogIsTheLibrarysNamedLogger) {
    EXPECT_EQ(info_log().name(), "qorborder.info");
    EXPECT_EQ(&info_log(), &info_log());
}

TEST(DefDocumentManager, GetDocumentTwiceReturnsTheSameObject) {
    TestUtil::TempDir dir;
    const fs::path file = ModelTest::saveSmallDocument(dir.path(), "a.fordef");
    DefDocumentManagerImpl manager;
    const auto first = manager.getDocument(file);
    const auto second = manager.getDocument(file);
    ASSERT_TRUE(first);
    EXPECT_EQ(first, second);
    first->getBlockLayout("TITLE")->description = "seen through both";
    EXPECT_EQ(second->getBlockLayout("TITLE")->description, "seen through both");
}

TEST(DefDocumentManager, OtherSpellingsOfAPathNameTheSameDocument) {
    TestUtil::TempDir dir;
    const fs::path file = ModelTest::saveSmallDocument(dir.path(), "a.fordef");
    dir.mkdir("sub");
    DefDocumentManagerImpl manager;
    const auto document = manager.getDocument(file);
    EXPECT_EQ(manager.getDocument(dir.path() / "sub" / ".." / "a.fordef"), document);
    EXPECT_TRUE(manager.hasDocument(dir.path() / "." / "a.fordef"));
}

TEST(DefDocumentManager, GetDocumentReadsAndRegistersTheFile) {
    TestUtil::TempDir dir;
    const fs::path file = ModelTest::saveSmallDocument(dir.path(), "a.fordef");
    DefDocumentManagerImpl manager;
    EXPECT_FALSE(manager.hasDocument(file));
    const auto document = manager.getDocument(file);
    EXPECT_TRUE(manager.hasDocument(file));
    EXPECT_FALSE(document->modified);
    EXPECT_EQ(document->filename(), file.string());
    EXPECT_TRUE(document->getBlockLayout("TITLE"));
}

TEST(DefDocumentManager, MissingFileThrowsNamingItAndRegistersNothing) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "missing.fordef";
    DefDocumentManagerImpl manager;
    try {
        manager.getDocument(file);
        FAIL() << "no exception";
    } catch (const DocumentError& error) {
        EXPECT_NE(std::string(error.what()).find(file.string()), std::string::npos);
        EXPECT_NE(error.reason().find("No such file"), std::string::npos) << error.what();
    }
    EXPECT_FALSE(manager.hasDocument(file));
    EXPECT_TRUE(manager.documents().empty());
}

TEST(DefDocumentManager, MalformedFileThrowsAStdExceptionAndRegistersNothing) {
    TestUtil::TempDir dir;
    const fs::path file = dir.write("bad.fordef", "<fordef version=\"1\">\n<border>\n</fordef>\n");
    DefDocumentManagerImpl manager;
    EXPECT_THROW(manager.getDocument(file), std::exception);
    EXPECT_FALSE(manager.hasDocument(file));
}

TEST(DefDocumentManager, AddDocumentRegistersUnderItsFileName) {
    TestUtil::TempDir dir;
    DefDocumentManagerImpl manager;
    auto document = ModelTest::makeSmallDocument("");
    const fs::path file = dir.path() / "saved-as.fordef";
    document->save(file);
    manager.addDocument(document);
    EXPECT_TRUE(manager.hasDocument(file));
    EXPECT_EQ(manager.getDocument(file), document);
    manager.addDocument(document); // the same object again changes nothing
    EXPECT_EQ(manager.documents().size(), 1u);
}

TEST(DefDocumentManager, AddDocumentRefusesUntitledAndSecondDocumentForAFile) {
    TestUtil::TempDir dir;
    DefDocumentManagerImpl manager;
    EXPECT_THROW(manager.addDocument(boost::make_shared<DefinitionDocument>("")), DocumentError);
    const fs::path file = ModelTest::saveSmallDocument(dir.path(), "a.fordef");
    manager.getDocument(file);
    EXPECT_THROW(manager.addDocument(boost::make_shared<DefinitionDocument>(file.string())),
                 DocumentError);
    EXPECT_EQ(manager.documents().size(), 1u);
}

TEST(DefDocumentManager, SaveAsFlowKeepsThePreviousDocumentUnchanged) {
    TestUtil::TempDir dir;
    DefDocumentManagerImpl manager;
    const auto original = manager.getDocument(ModelTest::saveSmallDocument(dir.path(), "a.fordef"));
    original->getBlockLayout("TITLE")->description = "edited";
    original->modified = true;
    // Save as onto the document's own name is refused by the caller through hasDocument.
    EXPECT_TRUE(manager.hasDocument(original->filename()));
    const fs::path target = dir.path() / "b.fordef";
    ASSERT_FALSE(manager.hasDocument(target));
    auto copy = boost::make_shared<DefinitionDocument>(*original);
    copy->save(target);
    manager.addDocument(copy);
    EXPECT_TRUE(original->modified);
    EXPECT_EQ(original->filename(), (dir.path() / "a.fordef").string());
    EXPECT_FALSE(copy->modified);
    EXPECT_EQ(manager.getDocument(target), copy);
    EXPECT_NE(copy->getBlockLayout("TITLE").get(), original->getBlockLayout("TITLE").get());
}

TEST(DefDocumentManager, IsAnyModifiedIsFalseRightAfterSaveAll) {
    TestUtil::TempDir dir;
    DefDocumentManagerImpl manager;
    const auto a = manager.getDocument(ModelTest::saveSmallDocument(dir.path(), "a.fordef"));
    const auto b = manager.getDocument(ModelTest::saveSmallDocument(dir.path(), "b.fordef"));
    EXPECT_FALSE(manager.isAnyModified());
    a->addBorderLayout(boost::make_shared<BorderLayout>());
    EXPECT_TRUE(manager.isAnyModified());
    manager.saveAll();
    EXPECT_FALSE(manager.isAnyModified());
    DefDocumentManagerImpl fresh;
    EXPECT_EQ(fresh.getDocument(a->filename())->borderLayoutTypes(AllUnits).size(), 2u);
}

TEST(DefDocumentManager, UntitledModifiedDocumentDoesNotCountAsModified) {
    DefDocumentManagerImpl manager;
    DefinitionDocument untitled("");
    untitled.addBorderLayout(boost::make_shared<BorderLayout>());
    EXPECT_TRUE(untitled.modified);
    EXPECT_FALSE(manager.isAnyModified());
}

TEST(DefDocumentManager, SaveAllSavesTheOthersWhenOneFailsAndNamesIt) {
    TestUtil::TempDir dir;
    DefDocumentManagerImpl manager;
    const auto good = manager.getDocument(ModelTest::saveSmallDocument(dir.path(), "good.fordef"));
    const fs::path doomedFolder = dir.mkdir("doomed");
    const auto doomed =
        manager.getDocument(ModelTest::saveSmallDocument(dir.path(), "doomed/bad.fordef"));
    fs::remove_all(doomedFolder);
    good->modified = true;
    doomed->modified = true;
    try {
        manager.saveAll();
        FAIL() << "no exception";
    } catch (const DocumentError& error) {
        EXPECT_NE(std::string(error.what()).find("bad.fordef"), std::string::npos);
    }
    EXPECT_FALSE(good->modified);
    EXPECT_TRUE(doomed->modified);
    EXPECT_TRUE(manager.isAnyModified());
}

TEST(DefDocumentManager, LookupsSearchEveryRegisteredDocument) {
    TestUtil::TempDir dir;
    DefDocumentManagerImpl manager;
    const auto a = manager.getDocument(ModelTest::saveSmallDocument(dir.path(), "a.fordef"));
    auto other = boost::make_shared<DefinitionDocument>("");
    auto border = boost::make_shared<BorderLayout>();
    border->id = "ONLY IN B";
    other->addBorderLayout(border);
    auto block = boost::make_shared<BlockLayout>();
    block->id = "BLOCK IN B";
    other->addBlockLayout(block);
    auto location = boost::make_shared<BlockLocation>();
    location->blockId = "BLOCK IN B";
    location->id = "L";
    other->addBlockLocation(location);
    other->setFieldTranslations({{"German_BLOCK IN B_F_k", "Wert"}});
    other->save(dir.path() / "b.fordef");
    manager.addDocument(other);

    EXPECT_EQ(manager.getBorderLayout("ONLY IN B").get(), border.get());
    EXPECT_EQ(manager.getBlockLayout("TITLE").get(), a->getBlockLayout("TITLE").get());
    EXPECT_EQ(manager.getBlockLocation("BLOCK IN B", "L").get(), location.get());
    EXPECT_EQ(manager.getBlockLocation("TITLE", "BOTTOM_RIGHT").get(),
              a->getBlockLocation("TITLE", 0).get());
    EXPECT_EQ(manager.blockLayouts(AllUnits).size(), 2u);
    EXPECT_EQ(manager.fieldTranslation("German", "BLOCK IN B", "F", "k"), "Wert");
    EXPECT_EQ(manager.fieldTranslation("German", "TITLE", "DRAWN_BY", ""), "Gezeichnet");
}

TEST(DefDocumentManager, FailedLookupsReturnEmptyPointers) {
    DefDocumentManagerImpl manager;
    EXPECT_FALSE(manager.getBorderLayout("X"));
    EXPECT_FALSE(manager.getBlockLayout("X"));
    EXPECT_FALSE(manager.getBlockLocation("X", "Y"));
    EXPECT_TRUE(manager.blockLayouts(AllUnits).empty());
}

TEST(DefDocumentManager, FieldTranslationOfUnknownCombinationIsTheExactText) {
    DefDocumentManagerImpl manager;
    const std::string answer = manager.fieldTranslation("German", "T", "F", "k");
    EXPECT_EQ(answer, "No Translation Found.");
    EXPECT_EQ(answer.size(), 21u);
    EXPECT_EQ(std::strcmp(kNoTranslationFound, "No Translation Found."), 0);
}

TEST(DefDocumentManager, LookupsStayCorrectAfterAnIdChangedInPlace) {
    TestUtil::TempDir dir;
    DefDocumentManagerImpl manager;
    const auto a = manager.getDocument(ModelTest::saveSmallDocument(dir.path(), "a.fordef"));
    ASSERT_TRUE(manager.getBlockLayout("TITLE"));
    const auto layout = manager.getBlockLayout("TITLE");
    layout->id = "TITLE 2";
    EXPECT_FALSE(manager.getBlockLayout("TITLE"));
    EXPECT_EQ(manager.getBlockLayout("TITLE 2").get(), layout.get());
    manager.getBorderLayout("A3 frame")->id = "A3";
    EXPECT_FALSE(manager.getBorderLayout("A3 frame"));
    EXPECT_TRUE(manager.getBorderLayout("A3"));
    manager.getBlockLocation("TITLE", "BOTTOM_RIGHT")->id = "TOP";
    EXPECT_FALSE(manager.getBlockLocation("TITLE", "BOTTOM_RIGHT"));
    EXPECT_TRUE(manager.getBlockLocation("TITLE", "TOP"));
}

TEST(DefDocumentManager, DocumentsStayOpenAndModifiedUntilSaved) {
    TestUtil::TempDir dir;
    DefDocumentManagerImpl manager;
    const fs::path file = ModelTest::saveSmallDocument(dir.path(), "a.fordef");
    manager.getDocument(file)->deleteBlockLayout("TITLE");
    // A later run in the same process finds the document as it was left.
    const auto again = manager.getDocument(file);
    EXPECT_TRUE(again->modified);
    EXPECT_FALSE(again->getBlockLayout("TITLE"));
}

namespace {

std::vector<std::string> idsOf(const std::vector<boost::shared_ptr<const BlockLayout>>& layouts) {
    std::vector<std::string> ids;
    for (const auto& layout : layouts) {
        ids.push_back(layout->id);
    }
    return ids;
}

boost::shared_ptr<BlockLayout> blockWithId(const std::string& id, int units = Inches) {
    auto block = boost::make_shared<BlockLayout>();
    block->id = id;
    block->units = units;
    return block;
}

} // namespace

// The list of all block layouts is kept between calls; every add, delete and newly registered
// document still shows in the next answer, in registration and document order.
TEST(DefDocumentManager, BlockLayoutsFollowAddsDeletesAndNewDocuments) {
    TestUtil::TempDir dir;
    DefDocumentManagerImpl manager;
    auto first = boost::make_shared<DefinitionDocument>("");
    first->addBlockLayout(blockWithId("A"));
    first->save(dir.path() / "first.fordef");
    manager.addDocument(first);
    EXPECT_EQ(idsOf(manager.blockLayouts(AllUnits)), std::vector<std::string>({"A"}));

    first->addBlockLayout(blockWithId("B"));
    EXPECT_EQ(idsOf(manager.blockLayouts(AllUnits)), std::vector<std::string>({"A", "B"}));

    auto second = boost::make_shared<DefinitionDocument>("");
    second->addBlockLayout(blockWithId("C"));
    second->save(dir.path() / "second.fordef");
    manager.addDocument(second);
    EXPECT_EQ(idsOf(manager.blockLayouts(AllUnits)), std::vector<std::string>({"A", "B", "C"}));

    first->deleteBlockLayout("A");
    EXPECT_EQ(idsOf(manager.blockLayouts(AllUnits)), std::vector<std::string>({"B", "C"}));

    // A deleted and re-added layout of the same ID is the new object, at the end.
    const auto replacement = blockWithId("B");
    first->deleteBlockLayout("B");
    first->addBlockLayout(replacement);
    EXPECT_EQ(manager.blockLayouts(AllUnits).front().get(), replacement.get());

    const auto loaded = manager.getDocument(dir.path() / "second.fordef");
    EXPECT_EQ(loaded, second);
}

// An ID edited in place (as the block layout dialog does) shows at once: the list holds the
// documents' own layouts, not copies.
TEST(DefDocumentManager, BlockLayoutsShowALayoutEditedInPlace) {
    TestUtil::TempDir dir;
    DefDocumentManagerImpl manager;
    auto document = boost::make_shared<DefinitionDocument>("");
    const auto block = blockWithId("OLD");
    document->addBlockLayout(block);
    document->save(dir.path() / "a.fordef");
    manager.addDocument(document);
    EXPECT_EQ(idsOf(manager.blockLayouts(AllUnits)), std::vector<std::string>({"OLD"}));
    block->id = "NEW";
    EXPECT_EQ(idsOf(manager.blockLayouts(AllUnits)), std::vector<std::string>({"NEW"}));
}

// Units are edited in place too, unseen by the document: a list of some units is always fresh.
TEST(DefDocumentManager, BlockLayoutsOfSomeUnitsFollowUnitsEditedInPlace) {
    TestUtil::TempDir dir;
    DefDocumentManagerImpl manager;
    auto document = boost::make_shared<DefinitionDocument>("");
    const auto inches = blockWithId("INCHES", Inches);
    document->addBlockLayout(inches);
    document->addBlockLayout(blockWithId("MM", Millimeters));
    document->save(dir.path() / "a.fordef");
    manager.addDocument(document);
    EXPECT_EQ(idsOf(manager.blockLayouts(Millimeters)), std::vector<std::string>({"MM"}));
    inches->units = Millimeters;
    EXPECT_EQ(idsOf(manager.blockLayouts(Millimeters)), std::vector<std::string>({"INCHES", "MM"}));
    EXPECT_EQ(idsOf(manager.blockLayouts(AllUnits)), std::vector<std::string>({"INCHES", "MM"}));
}
