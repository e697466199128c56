// qorfmt diff: what changed between two documents, element by element, with the lines in both.
#include "diff.h"

#include "document_edits.h"
#include "testutil/temp_dir.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <sstream>

using namespace QorfmtCli;
using namespace TestEdits;
namespace fs = boost::filesystem;

namespace {

const fs::path kBlocks = fs::path(QORFMT_EXAMPLES_DIR) / "site/format_defs/iso7200_blocks.fordef";
const fs::path kBorders = fs::path(QORFMT_EXAMPLES_DIR) / "site/format_defs/iso5457_borders.fordef";

struct DiffCase {
    const char* name;
    fs::path document;
    std::vector<Edit> edits; ///< B is A with these
    int exitCode;
    std::string output; ///< A and B stand for the files
};

std::string named(std::string text, const fs::path& a, const fs::path& b) {
    for (const auto& pair : {std::make_pair(std::string("A:"), a.string() + ":"),
                             std::make_pair(std::string("B:"), b.string() + ":")}) {
        for (std::string::size_type at = 0; (at = text.find(pair.first, at)) != std::string::npos;
             at += pair.second.size()) {
            text.replace(at, pair.first.size(), pair.second);
        }
    }
    return text;
}

class Diff : public ::testing::Test {
protected:
    int run(const DiffOptions& options) {
        m_out.str("");
        m_err.str("");
        return runDiff(options, m_out, m_err);
    }

    TestUtil::TempDir m_dir;
    std::ostringstream m_out;
    std::ostringstream m_err;
};

} // namespace

TEST_F(Diff, TableOfChangesGivesEachChangeWithItsLinesAndExitCode) {
    const std::vector<DiffCase> cases = {
        {"equal documents", kBlocks, {}, 0, ""},
        {"an attribute changed",
         kBlocks,
         {replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\"")},
         1,
         "A:8 B:8: block \"ISO7200\" > field \"RESPDEPT\" > choice \"TOOL\": shortValue changed "
         "from \"Tooling\" to \"Tool shop\"\n"},
        {"a field removed",
         kBlocks,
         {removeLine("field id=\"TECHREF\"")},
         1,
         "A:11 B:3: block \"ISO7200\" > field \"TECHREF\": removed\n"},
        {"a field added",
         kBlocks,
         {insertLineBefore("    <field id=\"NEWFIELD\" type=\"0\" isTableField=\"false\" "
                           "secondLanguageFieldId=\"\" collapseNoValue=\"false\" prefix=\"\" "
                           "suffix=\"\" broadcastType=\"0\" broadcastValueType=\"0\" "
                           "broadcastTitle=\"\" syncField=\"false\" controlType=\"1\" "
                           "defaultString=\"\" defaultToCurrentDate=\"false\" defaultChoice=\"-1\" "
                           "attrTitle=\"\"/>",
                           "field id=\"TECHREF\"")},
         1,
         "A:3 B:11: block \"ISO7200\" > field \"NEWFIELD\": added\n"},
        {"a field moved up in its list",
         kBlocks,
         {moveLineBefore("field id=\"SCALE\"", "field id=\"LEGALOWNER\"")},
         1,
         "A:33 B:4: block \"ISO7200\" > field \"SCALE\": moved from row 11 to row 1\n"},
        {"a choice removed inside its field",
         kBlocks,
         {removeLine("lookupKey=\"WDN\"")},
         1,
         "A:23 B:19: block \"ISO7200\" > field \"DOCSTATUS\" > choice \"WDN\": removed\n"},
        {"a location changed, named by its block and ID",
         kBlocks,
         {replace("dialogText=\"Left of the title block\" offsetX=\"0\"",
                  "dialogText=\"Left of the title block\" offsetX=\"-5\"")},
         1,
         "A:165 B:165: location \"LEFTOFTB\" of block \"PARTSLIST\": offsetX changed from \"0\" "
         "to \"-5\"\n"},
        {"a translation changed, named by its key",
         kBlocks,
         {replace("text=\"Schaltplan\"", "text=\"Stromlaufplan\"")},
         1,
         "A:171 B:171: translation \"DE_ISO7200_DOCTYPE_DIAG\": text changed from \"Schaltplan\" "
         "to \"Stromlaufplan\"\n"},
        {"a drawing size changed inside its border",
         kBorders,
         {replace("height=\"420\" length=\"594\"", "height=\"421\" length=\"594\"")},
         1,
         "A:11 B:11: border \"ISO5457\" > drawing size \"A2\": height changed from \"420\" to "
         "\"421\"\n"},
        {"drawing sizes swapped",
         kBorders,
         {moveLineBefore("name=\"A1\"", "name=\"A0\"")},
         1,
         "A:9 B:10: border \"ISO5457\" > drawing size \"A0\": moved from row 1 to row 2\n"},
        {"a second language removed from its border",
         kBorders,
         {removeLine("secondLanguage name=\"FR\"")},
         1,
         "A:8 B:3: border \"ISO5457\" > second language \"FR\": removed\n"},
        {"placements reordered is no change: the model keeps them sorted",
         kBlocks,
         {moveLineBefore("placement field=\"LEGALOWNER\"", "placement field=\"APPROVER\"")},
         0,
         ""},
        {"a number written another way is no change",
         kBorders,
         {replace("height=\"841\"", "height=\"841.0\"")},
         0,
         ""},
        {"attributes spread over lines is no change, lines follow the file",
         kBlocks,
         {replace("<field id=\"TECHREF\" type=\"0\"", "<field id=\"TECHREF\"\n type=\"0\""),
          replace("field id=\"MASS\" type=\"4\"", "field id=\"MASS\" type=\"3\"")},
         1,
         "A:30 B:31: block \"ISO7200\" > field \"MASS\": type changed from \"4\" to \"3\"\n"},
    };
    const std::string original = TestUtil::readFile(kBlocks);
    for (const DiffCase& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string text = TestUtil::readFile(c.document);
        const fs::path a = m_dir.write("a.fordef", text);
        const fs::path b = m_dir.write("b.fordef", apply(text, c.edits));
        DiffOptions options;
        options.files = {a.string(), b.string()};
        EXPECT_EQ(run(options), c.exitCode) << m_err.str();
        EXPECT_EQ(m_out.str(), named(c.output, a, b));
        EXPECT_EQ(m_err.str(), "");
    }
}

TEST_F(Diff, JsonNamesTheChangeTheElementsAndBothValues) {
    const std::string text = TestUtil::readFile(kBlocks);
    const fs::path a = m_dir.write("a.fordef", text);
    const fs::path b = m_dir.write(
        "b.fordef", apply(text, {replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\""),
                                 removeLine("lookupKey=\"WDN\"")}));
    DiffOptions options;
    options.format = "json";
    options.files = {a.string(), b.string()};
    ASSERT_EQ(run(options), 1);
    const nlohmann::json json = nlohmann::json::parse(m_out.str());
    EXPECT_EQ(json["old"], a.string());
    EXPECT_EQ(json["new"], b.string());
    EXPECT_EQ(json["equal"], false);
    ASSERT_EQ(json["changes"].size(), 2U);
    const nlohmann::json& changed = json["changes"][0];
    EXPECT_EQ(changed["change"], "changed");
    EXPECT_EQ(changed["where"], "block \"ISO7200\" > field \"RESPDEPT\" > choice \"TOOL\"");
    EXPECT_EQ(changed["path"][2]["element"], "choice");
    EXPECT_EQ(changed["attribute"], "shortValue");
    EXPECT_EQ(changed["old"], "Tooling");
    EXPECT_EQ(changed["new"], "Tool shop");
    EXPECT_EQ(changed["oldLine"], 8);
    EXPECT_EQ(changed["newLine"], 8);
    const nlohmann::json& removed = json["changes"][1];
    EXPECT_EQ(removed["change"], "removed");
    EXPECT_EQ(removed["attributes"]["lookupKey"], "WDN");
    EXPECT_EQ(removed["oldLine"], 23);
}

TEST_F(Diff, JsonOfEqualDocumentsHasNoChanges) {
    DiffOptions options;
    options.format = "json";
    options.files = {kBlocks.string(), kBlocks.string()};
    ASSERT_EQ(run(options), 0);
    const nlohmann::json json = nlohmann::json::parse(m_out.str());
    EXPECT_EQ(json["equal"], true);
    EXPECT_TRUE(json["changes"].empty());
}

TEST_F(Diff, UnreadableDocumentIsExitTwoNamingFileAndLine) {
    const fs::path broken = m_dir.write("broken.fordef", "<fordef version=\"1\">\n<border/>\n");
    DiffOptions options;
    options.files = {kBlocks.string(), broken.string()};
    EXPECT_EQ(run(options), 2);
    EXPECT_EQ(m_out.str(), "");
    EXPECT_NE(m_err.str().find("qorfmt diff: " + broken.string() + ":2:"), std::string::npos)
        << m_err.str();
    options.files = {kBlocks.string(), (m_dir.path() / "missing.fordef").string()};
    EXPECT_EQ(run(options), 2);
    EXPECT_NE(m_err.str().find("missing.fordef"), std::string::npos) << m_err.str();
}

TEST_F(Diff, AsGitsDriverNamesThePathAndExitsZeroWhenDocumentsDiffer) {
    const std::string text = TestUtil::readFile(kBorders);
    const fs::path b = m_dir.write("new", apply(text, {replace("height=\"420\" length=\"594\"",
                                                               "height=\"421\" length=\"594\"")}));
    DiffOptions options;
    options.git = true;
    options.files = {"format_defs/iso.fordef",
                     kBorders.string(),
                     "0123",
                     "100644",
                     b.string(),
                     "4567",
                     "100644"};
    EXPECT_EQ(run(options), 0) << m_err.str();
    EXPECT_EQ(m_out.str(), "qorfmt diff a/format_defs/iso.fordef b/format_defs/iso.fordef\n"
                           "a/format_defs/iso.fordef:11 b/format_defs/iso.fordef:11: border "
                           "\"ISO5457\" > drawing size \"A2\": height changed from \"420\" to "
                           "\"421\"\n");
}

TEST_F(Diff, AsGitsDriverTakesDevNullAsAnEmptyDocumentForAnAddedFile) {
    DiffOptions options;
    options.git = true;
    options.files = {"new.fordef", "/dev/null", ".", ".", kBorders.string(), "4567", "100644"};
    EXPECT_EQ(run(options), 0) << m_err.str();
    EXPECT_EQ(m_out.str(), "qorfmt diff /dev/null b/new.fordef\n"
                           "/dev/null b/new.fordef:3: border \"ISO5457\": added\n");
}

TEST_F(Diff, AsGitsDriverRefusesAnotherNumberOfArguments) {
    DiffOptions options;
    options.git = true;
    options.files = {kBorders.string(), kBorders.string()};
    EXPECT_EQ(run(options), 2);
    EXPECT_NE(m_err.str().find("seven arguments"), std::string::npos) << m_err.str();
}

TEST(DiffMovedKeys, OnlyTheRowsOutsideTheLongestCommonOrderMoved) {
    EXPECT_EQ(movedKeys({"a", "b", "c"}, {"a", "b", "c"}), std::vector<std::string>());
    EXPECT_EQ(movedKeys({"a", "b", "c", "d"}, {"d", "a", "b", "c"}), std::vector<std::string>{"d"});
    EXPECT_EQ(movedKeys({"a", "b", "c"}, {"a", "x", "c"}), std::vector<std::string>());
    EXPECT_EQ(movedKeys({"a", "b", "c", "d"}, {"b", "a", "d", "c"}).size(), 2U);
}
