#include "model/def_document_manager.h"
#include "model/fordef_reader.h"
#include "model/fordef_writer.h"

#include "sample_documents.h"
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>

using namespace QorBorder;
namespace fs = boost::filesystem;

namespace {

// Validates a saved document against the format's schema with xmllint.
void expectValid(const fs::path& file) {
    const std::string command = std::string(QORFMT_XMLLINT) + " --noout --schema '" +
                                QORFMT_FORDEF_SCHEMA + "' '" + file.string() + "' 2>&1";
    FILE* pipe = ::popen(command.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string output;
    char buffer[512];
    while (std::fgets(buffer, sizeof buffer, pipe)) {
        output += buffer;
    }
    const int status = ::pclose(pipe);
    EXPECT_EQ(status, 0) << output;
}

boost::shared_ptr<DefinitionDocument> reloadInFreshManager(const fs::path& file) {
    DefDocumentManagerImpl fresh;
    return fresh.getDocument(file);
}

} // namespace

TEST(FordefRoundTrip, DocumentWithEveryMemberSetEqualsTheOriginalAfterReload) {
    TestUtil::TempDir dir;
    const auto original = ModelTest::makeFullDocument("");
    const fs::path file = dir.path() / "full.fordef";
    original->save(file);
    const auto loaded = reloadInFreshManager(file);
    EXPECT_TRUE(loaded->sameContents(*original));
    EXPECT_FALSE(loaded->modified);

    // Piecewise, so that a failure says where.
    const auto borders = original->borderLayoutTypes(AllUnits);
    const auto loadedBorders = loaded->borderLayoutTypes(AllUnits);
    ASSERT_EQ(loadedBorders.size(), borders.size());
    for (std::size_t i = 0; i < borders.size(); ++i) {
        EXPECT_EQ(*loadedBorders[i], *borders[i]) << "border " << i;
    }
    const auto blocks = original->blockLayouts(AllUnits);
    const auto loadedBlocks = loaded->blockLayouts(AllUnits);
    ASSERT_EQ(loadedBlocks.size(), blocks.size());
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        EXPECT_EQ(loadedBlocks[i]->fields().size(), blocks[i]->fields().size());
        for (std::size_t f = 0; f < blocks[i]->fields().size(); ++f) {
            EXPECT_EQ(*loadedBlocks[i]->fields()[f], *blocks[i]->fields()[f]);
        }
        for (std::size_t s = 0; s < blocks[i]->styles().size(); ++s) {
            EXPECT_EQ(*loadedBlocks[i]->styles()[s], *blocks[i]->styles()[s]);
        }
        EXPECT_EQ(loadedBlocks[i]->getTable(), blocks[i]->getTable());
        EXPECT_EQ(loadedBlocks[i]->symbolTypes().size(), blocks[i]->symbolTypes().size());
        EXPECT_EQ(*loadedBlocks[i], *blocks[i]) << "block " << i;
    }
    const auto locations = original->allBlockLocations();
    const auto loadedLocations = loaded->allBlockLocations();
    ASSERT_EQ(loadedLocations.size(), locations.size());
    for (std::size_t i = 0; i < locations.size(); ++i) {
        EXPECT_EQ(*loadedLocations[i], *locations[i]) << "location " << i;
    }
    EXPECT_EQ(loaded->translations(), original->translations());
}

TEST(FordefRoundTrip, SpecialDoublesKeepSignAndKind) {
    TestUtil::TempDir dir;
    DefinitionDocument document("");
    auto border = boost::make_shared<BorderLayout>();
    border->bottomLeft = {-0.0, std::numeric_limits<double>::quiet_NaN(),
                          -std::numeric_limits<double>::infinity()};
    border->topRight = {0.1 + 0.2, std::numeric_limits<double>::denorm_min(),
                        std::numeric_limits<double>::lowest()};
    document.addBorderLayout(border);
    const fs::path file = dir.path() / "doubles.fordef";
    document.save(file);
    const auto loaded = reloadInFreshManager(file)->borderLayoutTypes(AllUnits)[0];
    EXPECT_EQ(loaded->bottomLeft.x, 0.0);
    EXPECT_TRUE(std::signbit(loaded->bottomLeft.x));
    EXPECT_TRUE(std::isnan(loaded->bottomLeft.y));
    EXPECT_EQ(loaded->bottomLeft.z, -std::numeric_limits<double>::infinity());
    EXPECT_EQ(loaded->topRight, border->topRight);
    expectValid(file);
}

TEST(FordefRoundTrip, SavingAnUnchangedDocumentGivesTheSameBytes) {
    TestUtil::TempDir dir;
    const auto document = ModelTest::makeFullDocument("");
    document->save(dir.path() / "one.fordef");
    document->save(dir.path() / "two.fordef");
    const std::string first = TestUtil::readFile(dir.path() / "one.fordef");
    EXPECT_EQ(first, TestUtil::readFile(dir.path() / "two.fordef"));
    const auto loaded = reloadInFreshManager(dir.path() / "one.fordef");
    loaded->save();
    EXPECT_EQ(TestUtil::readFile(dir.path() / "one.fordef"), first);
}

TEST(FordefRoundTrip, SavedDocumentsValidateAgainstTheSchema) {
    TestUtil::TempDir dir;
    DefinitionDocument("").save(dir.path() / "empty.fordef");
    expectValid(dir.path() / "empty.fordef");
    ModelTest::makeSmallDocument("")->save(dir.path() / "small.fordef");
    expectValid(dir.path() / "small.fordef");
    ModelTest::makeFullDocument("")->save(dir.path() / "full.fordef");
    expectValid(dir.path() / "full.fordef");
}

TEST(FordefRoundTrip, BytesXmlCannotHoldAreWrittenAsHex) {
    DefinitionDocument document("");
    auto border = boost::make_shared<BorderLayout>();
    border->id = std::string("a\0b", 3);
    border->description = "\xff\xfe";
    document.addBorderLayout(border);
    const std::string xml = FordefWriter::toXml(document);
    EXPECT_NE(xml.find("<raw attribute=\"id\" hex=\"610062\"/>"), std::string::npos) << xml;
    EXPECT_NE(xml.find("<raw attribute=\"description\" hex=\"fffe\"/>"), std::string::npos);
    const auto loaded = FordefReader::parse(xml.data(), xml.size(), "memory");
    EXPECT_EQ(*loaded->borderLayoutTypes(AllUnits)[0], *border);
}

TEST(FordefRoundTrip, LineBreaksTabsAndBlanksInTextSurvive) {
    DefinitionDocument document("");
    auto block = boost::make_shared<BlockLayout>();
    block->description = "\n  two\tlines \r\n\n ";
    document.addBlockLayout(block);
    const std::string xml = FordefWriter::toXml(document);
    EXPECT_NE(xml.find("description=\"&#10;  two&#9;lines &#13;&#10;&#10; \""), std::string::npos)
        << xml;
    const auto loaded = FordefReader::parse(xml.data(), xml.size(), "memory");
    EXPECT_EQ(loaded->blockLayouts(AllUnits)[0]->description, block->description);
}

TEST(FordefRoundTrip, SmallDocumentIsWrittenInTheDocumentedLayout) {
    const std::string xml = FordefWriter::toXml(*ModelTest::makeSmallDocument(""));
    const std::string expected =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<fordef version=\"1\">\n"
        "  <border id=\"A3 frame\" description=\"Frame for A3 sheets\" category=\"\" units=\"1\" "
        "layer=\"0\" horizontalZoneType=\"0\" verticalZoneType=\"0\" zoneStart=\"0\">\n"
        "    <bottomLeft x=\"0\" y=\"0\" z=\"0\"/>\n"
        "    <topRight x=\"0\" y=\"0\" z=\"0\"/>\n"
        "    <drawingSize templateFile=\"a3.prt\" name=\"A3\" description=\"A3 landscape\" "
        "label=\"\" height=\"297\" length=\"420\" frameLength=\"0\" horizontalZones=\"0\" "
        "verticalZones=\"0\"/>\n"
        "  </border>\n";
    EXPECT_EQ(xml.substr(0, expected.size()), expected);
    EXPECT_NE(xml.find("  <translation key=\"German_TITLE_DRAWN_BY_\" text=\"Gezeichnet\"/>\n"
                       "</fordef>\n"),
              std::string::npos);
}

TEST(FordefRoundTrip, WriterOutputMatchesTheCommittedSeedDocuments) {
    // The seeds double as golden files: a change of the written bytes must be deliberate.
    const fs::path seeds(QORFMT_SEED_DIR);
    EXPECT_EQ(FordefWriter::toXml(*ModelTest::makeSmallDocument("")),
              TestUtil::readFile(seeds / "small.fordef"));
    EXPECT_EQ(FordefWriter::toXml(*ModelTest::makeFullDocument("")),
              TestUtil::readFile(seeds / "full.fordef"));
    EXPECT_EQ(FordefWriter::toXml(DefinitionDocument("")),
              TestUtil::readFile(seeds / "no_objects.fordef"));
}

TEST(FordefRoundTrip, EverySeedDocumentValidatesAndRewritesToTheSameBytes) {
    for (fs::directory_iterator it(QORFMT_SEED_DIR), end; it != end; ++it) {
        expectValid(it->path());
        const auto document = FordefReader::read(it->path());
        EXPECT_EQ(FordefWriter::toXml(*document), TestUtil::readFile(it->path())) << it->path();
    }
}
