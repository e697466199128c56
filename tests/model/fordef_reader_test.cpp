#include "model/def_document_manager.h"
#include "model/document_error.h"
#include "model/fordef_reader.h"
#include "model/fordef_writer.h"

#include "sample_documents.h"
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <fstream>
#include <set>

using namespace QorBorder;
namespace fs = boost::filesystem;

namespace {

struct MalformedCase {
    std::string file;
    int line;
    std::string reason;
};

// tests/data/fordef/malformed/cases.txt: one case a line, "FILE|LINE|PART OF THE REASON".
std::vector<MalformedCase> malformedCases() {
    std::vector<MalformedCase> cases;
    std::ifstream table(std::string(QORFMT_MALFORMED_DIR) + "/cases.txt");
    std::string line;
    while (std::getline(table, line)) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        const std::size_t first = line.find('|');
        const std::size_t second = line.find('|', first + 1);
        cases.push_back({line.substr(0, first),
                         std::stoi(line.substr(first + 1, second - first - 1)),
                         line.substr(second + 1)});
    }
    return cases;
}

DocumentError readError(const fs::path& file) {
    try {
        FordefReader::read(file);
    } catch (const DocumentError& error) {
        return error;
    }
    return DocumentError(file.string(), -1, "read without an error");
}

} // namespace

TEST(FordefReader, EveryMalformedFileIsRefusedWithFileLineAndReason) {
    const std::vector<MalformedCase> cases = malformedCases();
    ASSERT_GE(cases.size(), 20u);
    for (const MalformedCase& c : cases) {
        const fs::path file = fs::path(QORFMT_MALFORMED_DIR) / c.file;
        ASSERT_TRUE(fs::exists(file)) << file;
        const DocumentError error = readError(file);
        EXPECT_EQ(error.file(), file.string()) << c.file;
        EXPECT_EQ(error.line(), c.line) << c.file << ": " << error.what();
        EXPECT_NE(error.reason().find(c.reason), std::string::npos)
            << c.file << ": " << error.what();
        EXPECT_EQ(
            std::string(error.what()).rfind(file.string() + ":" + std::to_string(c.line) + ": ", 0),
            0u)
            << error.what();
    }
}

TEST(FordefReader, EveryMalformedFileInTheFolderHasACase) {
    std::set<std::string> listed;
    for (const MalformedCase& c : malformedCases()) {
        listed.insert(c.file);
    }
    for (fs::directory_iterator it(QORFMT_MALFORMED_DIR), end; it != end; ++it) {
        if (it->path().extension() == ".fordef") {
            EXPECT_EQ(listed.count(it->path().filename().string()), 1u) << it->path();
        }
    }
}

TEST(FordefReader, ManagerRegistersNothingForAMalformedFile) {
    DefDocumentManagerImpl manager;
    for (const MalformedCase& c : malformedCases()) {
        const fs::path file = fs::path(QORFMT_MALFORMED_DIR) / c.file;
        EXPECT_THROW(manager.getDocument(file), DocumentError) << c.file;
        EXPECT_FALSE(manager.hasDocument(file));
    }
    EXPECT_TRUE(manager.documents().empty());
}

TEST(FordefReader, UnreadableFileIsRefusedWithTheReason) {
    TestUtil::TempDir dir;
    const fs::path folder = dir.mkdir("a folder.fordef");
    const DocumentError error = readError(folder);
    EXPECT_EQ(error.file(), folder.string());
    EXPECT_NE(error.reason().find("cannot read"), std::string::npos) << error.what();
}

TEST(FordefReader, BrokenReferencesAreReadAsTheyStand) {
    // Users repair references in the dialogs; a file is never refused for them.
    const std::string xml =
        "<?xml version=\"1.0\"?>\n"
        "<!-- written by hand -->\n"
        "<fordef version=\"1\">\n"
        "  <border id=\"B\" description=\"\" category=\"\" units=\"9\" layer=\"0\"\n"
        "          horizontalZoneType=\"0\" verticalZoneType=\"0\" zoneStart=\"0\">\n"
        "    <bottomLeft x=\"+1\" y=\" 2.5 \" z=\"-0\"/>\n"
        "    <topRight x=\"1E2\" y=\"INF\" z=\"NaN\"/>\n"
        "    <coreRequiredBlock id=\"NO SUCH BLOCK\"/>\n"
        "    <coreRequiredBlock id=\"NO SUCH BLOCK\"/>\n"
        "  </border>\n"
        "  <block id=\"K\" description=\"\" category=\"\" units=\"1\" layer=\"0\" "
        "editMethod=\"0\"\n"
        "         dialogFileName=\"\" delegateLibrary=\"\" setStyleDelegate=\"\"\n"
        "         editFieldsDelegate=\"\" requiredBlockOnly=\"1\" repeating=\"0\"\n"
        "         repeatSpacing=\"\" columnForRowNumber=\"0\" sbfBase=\"0\" sbfFileName=\"\"\n"
        "         flip=\"false\" angle=\"0\" borderTransition=\"0\" allowOverride=\"false\"\n"
        "         maxHeightMargin=\"0\" defaultStyleId=\"NO SUCH STYLE\">\n"
        "    <field id=\"F\" type=\"0\" isTableField=\"false\" secondLanguageFieldId=\"GONE\"\n"
        "           collapseNoValue=\"false\" prefix=\"\" suffix=\"\" broadcastType=\"0\"\n"
        "           broadcastValueType=\"0\" broadcastTitle=\"\" syncField=\"false\"\n"
        "           controlType=\"0\" defaultString=\"\" defaultToCurrentDate=\"false\"\n"
        "           defaultChoice=\"12\" attrTitle=\"\"/>\n"
        "    <table rowsCreated=\"false\"/>\n"
        "  </block>\n"
        "  <location id=\"L\" blockId=\"NO SUCH BLOCK\" styleId=\"S\" associatedBlockId=\"X\"\n"
        "            dialogText=\"\" offsetX=\"\" offsetY=\"\" attachCorner=\"0\"\n"
        "            associatedCorner=\"0\" overflowDirection=\"0\"/>\n"
        "</fordef>\n";
    const auto document = FordefReader::parse(xml.data(), xml.size(), "by hand.fordef");
    const auto border = document->getBorderLayout("B");
    ASSERT_TRUE(border);
    EXPECT_EQ(border->units, 9);
    EXPECT_EQ(border->bottomLeft.x, 1.0);
    EXPECT_EQ(border->bottomLeft.y, 2.5);
    EXPECT_EQ(border->coreRequiredBlocks.size(), 2u);
    const auto block = document->getBlockLayout("K");
    ASSERT_TRUE(block);
    EXPECT_TRUE(block->requiredBlockOnly);
    EXPECT_EQ(block->defaultStyleId, "NO SUCH STYLE");
    EXPECT_EQ(block->fields()[0]->secondLanguageFieldId, "GONE");
    EXPECT_EQ(block->fields()[0]->defaultChoice, 12);
    EXPECT_TRUE(document->getBlockLocation("NO SUCH BLOCK", 0));
    EXPECT_FALSE(document->modified);
    EXPECT_EQ(document->filename(), "by hand.fordef");
}

TEST(FordefReader, DocumentFromMemoryEqualsTheWrittenOne) {
    const auto original = ModelTest::makeFullDocument("");
    const std::string xml = FordefWriter::toXml(*original);
    const auto parsed = FordefReader::parse(xml.data(), xml.size(), "memory");
    EXPECT_TRUE(parsed->sameContents(*original));
}

TEST(FordefReader, ErrorInMemoryNamesTheGivenFileAndLine) {
    const std::string xml = "<fordef version=\"1\">\n\n  <border/>\n</fordef>\n";
    try {
        FordefReader::parse(xml.data(), xml.size(), "memory.fordef");
        FAIL() << "no exception";
    } catch (const DocumentError& error) {
        EXPECT_EQ(std::string(error.what()),
                  "memory.fordef:3: missing attribute 'id' of element 'border'");
    }
}
