#include "model/def_document_manager.h"
#include "model/document_error.h"
#include "model/fordef_reader.h"
#include "model/fordef_writer.h"

#include "sample_documents.h"
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <set>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

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
    EXPECT_EQ(error.reason(), "it is a folder, not a regular file") << error.what();
}

TEST(FordefReader, AFifoIsRefusedAtOnceWithItsKind) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "pipe.fordef";
    ASSERT_EQ(::mkfifo(file.c_str(), 0644), 0);
    EXPECT_EQ(std::string(readError(file).what()),
              file.string() + ": it is a FIFO (named pipe), not a regular file");
}

TEST(FordefReader, ALinkToADeviceIsNotFollowedIntoTheDevice) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "zero.fordef";
    fs::create_symlink("/dev/zero", file);
    EXPECT_EQ(std::string(readError(file).what()),
              file.string() + ": it is a character device, not a regular file");
}

TEST(FordefReader, ASocketIsRefusedWithItsKind) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "s.fordef";
    const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(listener, 0);
    struct sockaddr_un address {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, file.c_str(), sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(listener, reinterpret_cast<const struct sockaddr*>(&address), sizeof address),
              0);
    EXPECT_EQ(readError(file).reason(), "it is a socket, not a regular file");
    ::close(listener);
}

// The limit is checked on the file's size before anything is read or allocated (the file here
// is sparse: it takes no room on disk).
TEST(FordefReader, ADocumentLargerThanOneGibibyteIsRefusedBeforeItIsRead) {
    TestUtil::TempDir dir;
    const fs::path file = dir.write("huge.fordef");
    fs::resize_file(file, (std::uintmax_t(1) << 30) + 1);
    EXPECT_EQ(std::string(readError(file).what()),
              file.string() + ": the file is larger than 1 GiB, the most allowed for a document");
}

TEST(FordefReader, ACharacterReferenceToNulIsRefusedNotCut) {
    const std::string xml = "<fordef version=\"1\">\n"
                            "  <translation key=\"AB&#0;CD\" text=\"x\"/>\n"
                            "</fordef>\n";
    try {
        FordefReader::parse(xml.data(), xml.size(), "nul.fordef");
        FAIL() << "read without an error";
    } catch (const DocumentError& error) {
        EXPECT_EQ(std::string(error.what()), "nul.fordef:2: character reference '&#0;' names a "
                                             "character XML does not allow");
    }
}

TEST(FordefReader, TheFirstForbiddenCharacterInTheFileIsNamed) {
    const std::string referenceFirst = "<fordef version=\"1\">\n"
                                       "  <translation key=\"&#x1F;\" text=\"a\x02\"/>\n"
                                       "</fordef>\n";
    const std::string controlFirst = "<fordef version=\"1\">\n"
                                     "  <translation key=\"\x02\"\n"
                                     "               text=\"&#0;\"/>\n"
                                     "</fordef>\n";
    try {
        FordefReader::parse(referenceFirst.data(), referenceFirst.size(), "a.fordef");
        FAIL() << "read without an error";
    } catch (const DocumentError& error) {
        EXPECT_EQ(std::string(error.what()), "a.fordef:2: character reference '&#x1F;' names a "
                                             "character XML does not allow");
    }
    try {
        FordefReader::parse(controlFirst.data(), controlFirst.size(), "b.fordef");
        FAIL() << "read without an error";
    } catch (const DocumentError& error) {
        EXPECT_EQ(std::string(error.what()),
                  "b.fordef:2: control character U+0002 is a character XML does not allow");
    }
}

TEST(FordefReader, ALineFeedByReferenceIsStillRead) {
    const std::string xml = "<fordef version=\"1\">\n"
                            "  <translation key=\"A&#10;B&#x9;C\" text=\"x\"/>\n"
                            "</fordef>\n";
    const auto document = FordefReader::parse(xml.data(), xml.size(), "ok.fordef");
    EXPECT_EQ(document->translations().count("A\nB\tC"), 1u);
}

TEST(FordefReader, AnAttributeGivenTwiceIsReportedOnTheLineOfTheSecond) {
    const std::string xml = "<fordef version=\"1\">\n"
                            "  <translation key=\"A\"\n"
                            "               text=\"x\"\n"
                            "               key=\"B\"/>\n"
                            "</fordef>\n";
    try {
        FordefReader::parse(xml.data(), xml.size(), "twice.fordef");
        FAIL() << "read without an error";
    } catch (const DocumentError& error) {
        EXPECT_EQ(error.line(), 4) << error.what();
    }
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

namespace {

// The line `number` (from 1) of `text` without its leading blanks.
std::string lineOfText(const std::string& text, int number) {
    std::size_t start = 0;
    for (int i = 1; i < number && start != std::string::npos; ++i) {
        start = text.find('\n', start);
        start = start == std::string::npos ? start : start + 1;
    }
    if (number < 1 || start == std::string::npos) {
        return "";
    }
    const std::string line = text.substr(start, text.find('\n', start) - start);
    return line.substr(std::min(line.size(), line.find_first_not_of(' ')));
}

} // namespace

TEST(FordefReader, GivesTheLineOfEveryElementWhenAsked) {
    const auto original = ModelTest::makeFullDocument("");
    const std::string xml = FordefWriter::toXml(*original);
    SourceLines lines;
    const auto document = FordefReader::parse(xml.data(), xml.size(), "memory", &lines);
    auto startsWith = [&](int line, const std::string& element) {
        return lineOfText(xml, line).rfind("<" + element + " ", 0) == 0;
    };
    int checked = 0;
    auto expectElement = [&](int line, const std::string& element) {
        ++checked;
        EXPECT_TRUE(startsWith(line, element))
            << element << " at line " << line << ": " << lineOfText(xml, line);
    };
    for (const auto& border : document->borderLayoutTypes(AllUnits)) {
        expectElement(lines.of(border.get()), "border");
        expectElement(lines.of(border.get(), "bottomLeft", ""), "bottomLeft");
        expectElement(lines.of(border.get(), "topRight", ""), "topRight");
        for (std::size_t i = 0; i < border->coreRequiredBlocks.size(); ++i) {
            expectElement(lines.of(border.get(), "coreRequiredBlock", std::to_string(i)),
                          "coreRequiredBlock");
        }
        for (std::size_t i = 0; i < border->sheet1RequiredBlocks.size(); ++i) {
            expectElement(lines.of(border.get(), "sheet1RequiredBlock", std::to_string(i)),
                          "sheet1RequiredBlock");
        }
        for (std::size_t i = 0; i < border->drawingSizes().size(); ++i) {
            expectElement(lines.of(border.get(), "drawingSize", std::to_string(i)), "drawingSize");
        }
    }
    for (const auto& block : document->blockLayouts(AllUnits)) {
        expectElement(lines.of(block.get()), "block");
        for (const auto& field : block->fields()) {
            expectElement(lines.of(field.get()), "field");
            for (std::size_t i = 0; i < field->choices().size(); ++i) {
                expectElement(lines.of(field.get(), "choice", std::to_string(i)), "choice");
            }
        }
        for (const auto& style : block->styles()) {
            expectElement(lines.of(style.get()), "style");
            for (const auto& placement : style->placements()) {
                expectElement(lines.of(style.get(), "placement", placement.first), "placement");
            }
            for (const auto& column : style->tableColumns()) {
                expectElement(lines.of(style.get(), "tableColumn",
                                       column.first.first + '\n' + column.first.second),
                              "tableColumn");
            }
        }
        for (const auto& rowType : block->getTable().rowTypes()) {
            expectElement(lines.of(rowType.get()), "rowType");
            for (const auto& field : rowType->fields()) {
                expectElement(lines.of(field.get()), "field");
            }
            for (std::size_t i = 0; i < rowType->dialogListFields().size(); ++i) {
                expectElement(lines.of(rowType.get(), "dialogField", std::to_string(i)),
                              "dialogField");
            }
        }
        for (const auto& symbol : block->symbolTypes()) {
            expectElement(lines.of(symbol.get()), "symbolType");
            for (std::size_t i = 0; i < symbol->line1FieldIds.size(); ++i) {
                expectElement(lines.of(symbol.get(), "line1Field", std::to_string(i)),
                              "line1Field");
            }
        }
    }
    for (const auto& location : document->allBlockLocations()) {
        expectElement(lines.of(location.get()), "location");
    }
    for (const auto& translation : document->translations()) {
        expectElement(lines.of(document.get(), "translation", translation.first), "translation");
    }
    EXPECT_GT(checked, 40);
}

TEST(FordefReader, ElementLinesCountTheLinesOfAttributesSpreadOverSeveralLines) {
    const std::string xml = "<?xml version=\"1.0\"?>\n"
                            "<fordef version=\"1\">\n"
                            "  <location id=\"L\" blockId=\"B\" styleId=\"\"\n"
                            "            associatedBlockId=\"\" dialogText=\"\" offsetX=\"\"\n"
                            "            offsetY=\"\" attachCorner=\"0\" associatedCorner=\"0\"\n"
                            "            overflowDirection=\"0\"/>\n"
                            "\n"
                            "  <location id=\"M\" blockId=\"B\" styleId=\"\" associatedBlockId=\"\""
                            " dialogText=\"a&#10;b\" offsetX=\"\" offsetY=\"\" attachCorner=\"0\""
                            " associatedCorner=\"0\" overflowDirection=\"0\"/>\n"
                            "  <translation key=\"k\" text=\"\"/>\n"
                            "</fordef>\n";
    SourceLines lines;
    const auto document = FordefReader::parse(xml.data(), xml.size(), "memory", &lines);
    EXPECT_EQ(lines.of(document->getBlockLocation("B", 0).get()), 3);
    EXPECT_EQ(lines.of(document->getBlockLocation("B", 1).get()), 8);
    EXPECT_EQ(lines.of(document.get(), "translation", "k"), 9);
    EXPECT_EQ(lines.of(document.get(), "translation", "other"), 0);
}

TEST(FordefReader, AskingForLinesReadsTheSameDocument) {
    const auto original = ModelTest::makeFullDocument("");
    const std::string xml = FordefWriter::toXml(*original);
    SourceLines lines;
    const auto withLines = FordefReader::parse(xml.data(), xml.size(), "memory", &lines);
    EXPECT_TRUE(withLines->sameContents(*original));
    EXPECT_EQ(FordefWriter::toXml(*withLines), xml);
}
