#include "model/definition_document.h"

#include "model/document_error.h"
#include "sample_documents.h"
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace QorBorder;

namespace {

boost::shared_ptr<BorderLayout> border(const std::string& id, int units = Inches) {
    auto b = boost::make_shared<BorderLayout>();
    b->id = id;
    b->units = units;
    return b;
}

boost::shared_ptr<BlockLayout> block(const std::string& id, int units = Inches) {
    auto b = boost::make_shared<BlockLayout>();
    b->id = id;
    b->units = units;
    return b;
}

boost::shared_ptr<BlockLocation> location(const std::string& blockId, const std::string& id,
                                          const std::string& styleId = "") {
    auto l = boost::make_shared<BlockLocation>();
    l->blockId = blockId;
    l->id = id;
    l->styleId = styleId;
    return l;
}

std::vector<std::string> locationIds(const DefinitionDocument& document, const std::string& blockId,
                                     const std::string& styleId = "") {
    std::vector<std::string> ids;
    for (const auto& l : document.blockLocations(blockId, styleId)) {
        ids.push_back(l->id);
    }
    return ids;
}

} // namespace

TEST(DefinitionDocument, NewDocumentIsUntitledEmptyAndUnmodified) {
    const DefinitionDocument document("");
    EXPECT_EQ(document.filename(), "");
    EXPECT_EQ(document.displayName(), "Untitled");
    EXPECT_EQ(document.displayLocation(), "");
    EXPECT_FALSE(document.modified);
    EXPECT_TRUE(document.borderLayoutTypes(AllUnits).empty());
    EXPECT_TRUE(document.blockLayouts(AllUnits).empty());
}

TEST(DefinitionDocument, ConstructorReadsNoFile) {
    const DefinitionDocument document("/no/such/folder/file.fordef");
    EXPECT_EQ(document.filename(), "/no/such/folder/file.fordef");
    EXPECT_TRUE(document.blockLayouts(AllUnits).empty());
}

TEST(DefinitionDocument, DisplayNameAndLocationSplitTheFileName) {
    const DefinitionDocument document("/site/format_defs/plant.fordef");
    EXPECT_EQ(document.displayName(), "plant.fordef");
    EXPECT_EQ(document.displayLocation(), "/site/format_defs");
}

TEST(DefinitionDocument, EveryAddDeleteAndTranslationChangeSetsModified) {
    DefinitionDocument document("");
    auto check = [&](const char* what, auto action) {
        document.modified = false;
        action();
        EXPECT_TRUE(document.modified) << what;
    };
    check("addBorderLayout", [&] { document.addBorderLayout(border("B")); });
    check("deleteBorderLayout", [&] { document.deleteBorderLayout("B"); });
    check("addBlockLayout", [&] { document.addBlockLayout(block("K")); });
    check("deleteBlockLayout", [&] { document.deleteBlockLayout("K"); });
    check("addBlockLocation", [&] { document.addBlockLocation(location("K", "L")); });
    check("deleteBlockLocation", [&] { document.deleteBlockLocation("K", 0); });
    check("setFieldTranslations", [&] { document.setFieldTranslations({}); });
}

TEST(DefinitionDocument, DeletingAnUnknownIdChangesNothing) {
    DefinitionDocument document("");
    document.addBorderLayout(border("B"));
    document.modified = false;
    document.deleteBorderLayout("X");
    document.deleteBlockLayout("X");
    EXPECT_FALSE(document.modified);
    EXPECT_EQ(document.borderLayoutTypes(AllUnits).size(), 1u);
}

TEST(DefinitionDocument, AddedLayoutIsHeldNotCopied) {
    DefinitionDocument document("");
    const auto layout = block("K");
    document.addBlockLayout(layout);
    EXPECT_EQ(document.getBlockLayout("K").get(), layout.get());
}

TEST(DefinitionDocument, GetterHandsOutTheDocumentsOwnObject) {
    DefinitionDocument document("");
    document.addBorderLayout(border("B"));
    document.getBorderLayout("B")->description = "edited in place";
    EXPECT_EQ(document.borderLayoutTypes(AllUnits)[0]->description, "edited in place");
}

TEST(DefinitionDocument, LookupOfUnknownIdIsEmpty) {
    DefinitionDocument document("");
    document.addBorderLayout(border("B"));
    EXPECT_FALSE(document.getBorderLayout("b"));
    EXPECT_FALSE(document.getBlockLayout("B"));
    EXPECT_FALSE(document.getBlockLocation("B", 0));
    EXPECT_FALSE(document.findBlockLocation("B", "L"));
}

TEST(DefinitionDocument, LookupFollowsAnIdChangedInPlaceThroughAGetter) {
    DefinitionDocument document("");
    for (int i = 0; i < 50; ++i) {
        document.addBlockLayout(block("K" + std::to_string(i)));
        document.addBorderLayout(border("B" + std::to_string(i)));
    }
    ASSERT_TRUE(document.getBlockLayout("K7")); // builds the index
    {
        const auto held = document.getBlockLayout("K7");
        held->id = "RENAMED";
        EXPECT_EQ(document.getBlockLayout("RENAMED").get(), held.get());
        EXPECT_FALSE(document.getBlockLayout("K7"));
        held->id = "AGAIN";
    }
    // The dialog has let go of the pointer; the last ID it wrote counts.
    EXPECT_TRUE(document.getBlockLayout("AGAIN"));
    EXPECT_FALSE(document.getBlockLayout("RENAMED"));
    document.getBorderLayout("B3")->id = "B3 renamed";
    EXPECT_TRUE(document.getBorderLayout("B3 renamed"));
    EXPECT_FALSE(document.getBorderLayout("B3"));
}

TEST(DefinitionDocument, LookupFollowsAnIdChangedThroughThePointerThatWasAdded) {
    DefinitionDocument document("");
    document.addBlockLayout(block("A"));
    ASSERT_TRUE(document.getBlockLayout("A"));
    const auto added = block("NEW");
    document.addBlockLayout(added);
    ASSERT_TRUE(document.getBlockLayout("NEW"));
    added->id = "CHANGED AFTER ADD";
    EXPECT_EQ(document.getBlockLayout("CHANGED AFTER ADD").get(), added.get());
    EXPECT_FALSE(document.getBlockLayout("NEW"));
}

// Regression: the index once recognised the objects it followed by their address, so an object
// built where a deleted one had lived was taken for it and never followed. Both objects are built
// in the same storage here, so the address is reused in every build.
TEST(DefinitionDocument, LookupFollowsAnObjectBuiltWhereADeletedOneLived) {
    alignas(BlockLayout) static unsigned char storage[sizeof(BlockLayout)];
    const auto inStorage = [](const std::string& id) {
        boost::shared_ptr<BlockLayout> layout(new (storage) BlockLayout(),
                                              [](BlockLayout* p) { p->~BlockLayout(); });
        layout->id = id;
        return layout;
    };
    DefinitionDocument document("");
    document.addBlockLayout(block("OTHER"));
    document.addBlockLayout(inStorage("OLD"));
    auto held = document.getBlockLayout("OLD");
    document.deleteBlockLayout("OLD");
    EXPECT_FALSE(document.getBlockLayout("OLD"));
    held.reset();

    const auto fresh = inStorage("FRESH");
    document.addBlockLayout(fresh);
    fresh->id = "RENAMED";
    EXPECT_EQ(document.getBlockLayout("RENAMED").get(), fresh.get());
    EXPECT_FALSE(document.getBlockLayout("FRESH"));
}

TEST(DefinitionDocument, IdTakenOverByRenameIsFoundAtItsNewOwner) {
    DefinitionDocument document("");
    document.addBorderLayout(border("A"));
    document.addBorderLayout(border("B"));
    ASSERT_TRUE(document.getBorderLayout("A"));
    document.getBorderLayout("A")->id = "gone";
    document.getBorderLayout("B")->id = "A";
    ASSERT_TRUE(document.getBorderLayout("A"));
    EXPECT_EQ(document.getBorderLayout("A"), document.getBorderLayout("A"));
    EXPECT_EQ(document.borderLayoutTypes(AllUnits)[1]->id, "A");
    EXPECT_EQ(document.getBorderLayout("A").get(), document.borderLayoutTypes(AllUnits)[1].get());
}

TEST(DefinitionDocument, DuplicateIdIsKeptAndLookupsFindTheFirst) {
    DefinitionDocument document("");
    auto first = border("B");
    auto second = border("B");
    document.addBorderLayout(first);
    document.addBorderLayout(second);
    EXPECT_EQ(document.borderLayoutTypes(AllUnits).size(), 2u);
    EXPECT_EQ(document.getBorderLayout("B").get(), first.get());
    document.deleteBorderLayout("B");
    EXPECT_EQ(document.getBorderLayout("B").get(), second.get());
}

TEST(DefinitionDocument, UnitsZeroListsEveryLayoutInDocumentOrder) {
    DefinitionDocument document("");
    document.addBorderLayout(border("Z", Millimeters));
    document.addBorderLayout(border("A", Inches));
    document.addBlockLayout(block("K2", Millimeters));
    document.addBlockLayout(block("K1", Inches));
    const auto borders = document.borderLayoutTypes(AllUnits);
    ASSERT_EQ(borders.size(), 2u);
    EXPECT_EQ(borders[0]->id, "Z");
    EXPECT_EQ(borders[1]->id, "A");
    EXPECT_EQ(document.blockLayouts(AllUnits).size(), 2u);
    ASSERT_EQ(document.blockLayouts(Inches).size(), 1u);
    EXPECT_EQ(document.blockLayouts(Inches)[0]->id, "K1");
    EXPECT_EQ(document.borderLayoutTypes(Millimeters)[0]->id, "Z");
}

TEST(DefinitionDocument, LocationsAreListedPerBlockInListOrder) {
    DefinitionDocument document("");
    document.addBlockLocation(location("A", "A1"));
    document.addBlockLocation(location("B", "B1"));
    document.addBlockLocation(location("A", "A2", "S"));
    document.addBlockLocation(location("A", "A3"));
    EXPECT_EQ(locationIds(document, "A"), (std::vector<std::string>{"A1", "A2", "A3"}));
    EXPECT_EQ(locationIds(document, "B"), std::vector<std::string>{"B1"});
    EXPECT_EQ(locationIds(document, "A", "S"), std::vector<std::string>{"A2"});
    EXPECT_TRUE(locationIds(document, "C").empty());
    EXPECT_EQ(document.getBlockLocation("A", 1)->id, "A2");
    EXPECT_FALSE(document.getBlockLocation("A", 3));
    EXPECT_FALSE(document.getBlockLocation("A", -1));
}

TEST(DefinitionDocument, DeleteBlockLocationRemovesTheIndexthOfThatBlock) {
    DefinitionDocument document("");
    document.addBlockLocation(location("A", "A1"));
    document.addBlockLocation(location("B", "B1"));
    document.addBlockLocation(location("A", "A2"));
    document.deleteBlockLocation("A", 1);
    EXPECT_EQ(locationIds(document, "A"), std::vector<std::string>{"A1"});
    EXPECT_EQ(locationIds(document, "B"), std::vector<std::string>{"B1"});
    EXPECT_THROW(document.deleteBlockLocation("A", 1), std::out_of_range);
    EXPECT_THROW(document.deleteBlockLocation("C", 0), std::out_of_range);
}

TEST(DefinitionDocument, SwappingTwoLocationsByAssignmentReordersTheList) {
    DefinitionDocument document("");
    document.addBlockLocation(location("A", "A1"));
    document.addBlockLocation(location("A", "A2"));
    ASSERT_TRUE(document.findBlockLocation("A", "A1"));
    const auto upper = document.getBlockLocation("A", 0);
    const auto lower = document.getBlockLocation("A", 1);
    const BlockLocation saved = *upper;
    *upper = *lower;
    *lower = saved;
    EXPECT_EQ(locationIds(document, "A"), (std::vector<std::string>{"A2", "A1"}));
    EXPECT_EQ(document.findBlockLocation("A", "A1").get(), lower.get());
    EXPECT_EQ(document.findBlockLocation("A", "A2").get(), upper.get());
}

TEST(DefinitionDocument, LocationWhoseBlockChangedInPlaceMovesToThatBlock) {
    DefinitionDocument document("");
    document.addBlockLocation(location("A", "L"));
    document.addBlockLocation(location("B", "M"));
    ASSERT_TRUE(document.findBlockLocation("A", "L"));
    document.getBlockLocation("A", 0)->blockId = "B";
    EXPECT_TRUE(locationIds(document, "A").empty());
    EXPECT_EQ(locationIds(document, "B"), (std::vector<std::string>{"L", "M"}));
    EXPECT_TRUE(document.findBlockLocation("B", "L"));
    EXPECT_FALSE(document.findBlockLocation("A", "L"));
    EXPECT_EQ(document.getBlockLocation("B", 0)->id, "L");
}

TEST(DefinitionDocument, FieldTranslationsReplacesTheOutArgument) {
    DefinitionDocument document("");
    document.setFieldTranslations({{"German_T_F_k", "Text"}});
    DefinitionDocument::TranslationMap out{{"stale", "entry"}};
    document.fieldTranslations(out);
    EXPECT_EQ(out, (DefinitionDocument::TranslationMap{{"German_T_F_k", "Text"}}));
    out["more"] = "x";
    DefinitionDocument::TranslationMap again;
    document.fieldTranslations(again);
    EXPECT_EQ(again.size(), 1u);
}

TEST(DefinitionDocument, TranslationKeyJoinsTheFourPartsWithUnderscores) {
    EXPECT_EQ(translationKey("German", "TITLE", "NAME", "k1"), "German_TITLE_NAME_k1");
    EXPECT_EQ(translationKey("", "", "", ""), "___");
}

TEST(DefinitionDocument, CopyIsDeepInEveryCollection) {
    const auto source = ModelTest::makeFullDocument("/x/source.fordef");
    DefinitionDocument copy(*source);
    EXPECT_TRUE(copy.sameContents(*source));
    EXPECT_EQ(copy.filename(), source->filename());
    copy.getBlockLayout("BLOCK 0")->getField(0)->id = "changed";
    copy.getBorderLayout("BORDER 9")->getDrawingSize(0).name = "changed";
    copy.getBlockLocation("BLOCK 0", 0)->offsetX = "changed";
    copy.setFieldTranslations({});
    EXPECT_EQ(source->getBlockLayout("BLOCK 0")->getField(0)->id, "F2");
    EXPECT_NE(source->getBorderLayout("BORDER 9")->getDrawingSize(0).name, "changed");
    EXPECT_EQ(source->getBlockLocation("BLOCK 0", 0)->offsetX, "-12.5");
    EXPECT_FALSE(source->translations().empty());
    EXPECT_FALSE(copy.sameContents(*source));
}

TEST(DefinitionDocument, SaveClearsModifiedAndSaveAsTakesTheNewName) {
    TestUtil::TempDir dir;
    DefinitionDocument document("");
    document.addBorderLayout(border("B"));
    const auto file = dir.path() / "new.fordef";
    document.save(file);
    EXPECT_FALSE(document.modified);
    EXPECT_EQ(document.filename(), file.string());
    EXPECT_TRUE(boost::filesystem::exists(file));
    document.addBorderLayout(border("C"));
    document.save();
    EXPECT_FALSE(document.modified);
}

TEST(DefinitionDocument, SaveOfUntitledDocumentThrowsAndKeepsModified) {
    DefinitionDocument document("");
    document.addBorderLayout(border("B"));
    EXPECT_THROW(document.save(), DocumentError);
    EXPECT_TRUE(document.modified);
    EXPECT_EQ(document.filename(), "");
}
