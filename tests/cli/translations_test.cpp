// Translations to and from PO catalogs, and their coverage, on a copy of the example site's ISO
// title block document.
#include "translations.h"

#include "po_catalog.h"

#include "model/fordef_reader.h"
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

using namespace QorfmtCli;
namespace fs = boost::filesystem;

namespace {

const fs::path kSiteDocuments = fs::path(QORFMT_EXAMPLES_DIR) / "site" / "format_defs";

// Replaces the one occurrence of `from` in the text by `to`.
std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos) {
        text.replace(at, from.size(), to);
    }
    return text;
}

class Translations : public ::testing::Test {
protected:
    void SetUp() override {
        m_document = m_dir.path() / "iso7200_blocks.fordef";
        fs::copy_file(kSiteDocuments / "iso7200_blocks.fordef", m_document);
        m_original = TestUtil::readFile(m_document);
    }

    int exportTo(const std::string& language, const fs::path& catalog) {
        ExportOptions options;
        options.file = m_document.string();
        options.language = language;
        options.output = catalog.string();
        return runExport(options, out(), err());
    }
    int import(const fs::path& catalog) {
        ImportOptions options;
        options.file = m_document.string();
        options.catalog = catalog.string();
        return runImport(options, out(), err());
    }
    int coverage(const std::vector<std::string>& languages = {}, double minimum = -1) {
        CoverageOptions options;
        options.file = m_document.string();
        options.languages = languages;
        options.minimum = minimum;
        return runCoverage(options, out(), err());
    }
    std::ostream& out() {
        m_out.str("");
        return m_out;
    }
    std::ostream& err() {
        m_err.str("");
        return m_err;
    }

    TestUtil::TempDir m_dir;
    fs::path m_document;
    std::string m_original;
    std::ostringstream m_out;
    std::ostringstream m_err;
};

} // namespace

TEST(TranslatableTexts, AreTheChoicesAndTitledFieldsOfTheBlocksOwnFields) {
    QorBorder::SourceLines lines;
    const auto document =
        QorBorder::FordefReader::read(kSiteDocuments / "iso7200_blocks.fordef", &lines);
    const std::vector<TranslatableText> texts = translatableTexts(*document, lines);
    ASSERT_EQ(texts.size(), 27u);
    EXPECT_EQ(poContext(texts[0]), "ISO7200|RESPDEPT|ENG");
    EXPECT_EQ(texts[0].source, "Engineering");
    EXPECT_EQ(texts[0].line, 6);
    // A part attribute field without choices is translated by its title.
    const auto material = std::find_if(texts.begin(), texts.end(),
                                       [](const auto& text) { return text.fieldId == "MATERIAL"; });
    ASSERT_NE(material, texts.end());
    EXPECT_EQ(material->lookupKey, "");
    EXPECT_EQ(material->source, "MATERIAL");
    // Row type fields are not offered by the translation dialog, so they are not texts here.
    EXPECT_TRUE(std::none_of(texts.begin(), texts.end(),
                             [](const auto& text) { return text.blockId == "PARTSLIST"; }));
}

TEST_F(Translations, ExportWritesOneEntryPerTextWithItsTranslation) {
    const fs::path catalog = m_dir.path() / "DE.po";
    EXPECT_EQ(exportTo("DE", catalog), 0) << m_err.str();
    EXPECT_EQ(m_out.str(), catalog.string() + ": 27 texts of " + m_document.string() +
                               ", 18 translated into DE\n");
    const PoCatalog read = readPoFile(catalog);
    EXPECT_EQ(read.language, "DE");
    ASSERT_EQ(read.entries.size(), 27u);
    EXPECT_EQ(read.entries[0].context, "ISO7200|RESPDEPT|ENG");
    EXPECT_EQ(read.entries[0].source, "Engineering");
    EXPECT_EQ(read.entries[0].translation, "Konstruktion");
    EXPECT_EQ(TestUtil::readFile(m_document), m_original);
}

TEST_F(Translations, AnExportedCatalogPassesMsgfmtCheck) {
    for (const std::string language : {"DE", "FR", "IT"}) {
        const fs::path catalog = m_dir.path() / (language + ".po");
        ASSERT_EQ(exportTo(language, catalog), 0) << m_err.str();
        const std::string command =
            std::string(QORFMT_MSGFMT) + " --check -o /dev/null '" + catalog.string() + "' 2>&1";
        EXPECT_EQ(std::system(command.c_str()), 0) << TestUtil::readFile(catalog);
    }
}

TEST_F(Translations, ExportThenImportChangesNothing) {
    const fs::path catalog = m_dir.path() / "FR.po";
    ASSERT_EQ(exportTo("FR", catalog), 0);
    EXPECT_EQ(import(catalog), 0) << m_err.str();
    EXPECT_EQ(m_out.str(), m_document.string() +
                               ": FR: 0 added, 0 changed, 18 unchanged (9 untranslated, 0 "
                               "fuzzy and 0 stale entries left out)\n");
    EXPECT_EQ(TestUtil::readFile(m_document), m_original);
}

TEST_F(Translations, ImportAddsAndChangesTranslationsAndSavesTheDocument) {
    const fs::path catalog = m_dir.path() / "DE.po";
    ASSERT_EQ(exportTo("DE", catalog), 0);
    std::string text = TestUtil::readFile(catalog);
    text = replaced(text, "msgstr \"Konstruktion\"", "msgstr \"Entwicklung\"");
    text = replaced(text, "msgid \"MATERIAL\"\nmsgstr \"\"",
                    "msgid \"MATERIAL\"\nmsgstr \"Werkstoff\"");
    m_dir.write("DE.po", text);
    EXPECT_EQ(import(catalog), 0) << m_err.str();
    EXPECT_EQ(m_out.str(), m_document.string() +
                               ": DE: 1 added, 1 changed, 17 unchanged (8 untranslated, 0 "
                               "fuzzy and 0 stale entries left out)\n");
    const auto document = QorBorder::FordefReader::read(m_document);
    const auto& translations = document->translations();
    EXPECT_EQ(translations.at("DE_ISO7200_RESPDEPT_ENG"), "Entwicklung");
    EXPECT_EQ(translations.at("DE_ISO7200_MATERIAL_"), "Werkstoff");
    EXPECT_EQ(translations.at("FR_ISO7200_RESPDEPT_ENG"), "Bureau d'études");
}

TEST_F(Translations, ImportLeavesOutFuzzyAndUntranslatedEntries) {
    const fs::path catalog = m_dir.path() / "DE.po";
    ASSERT_EQ(exportTo("DE", catalog), 0);
    std::string text = TestUtil::readFile(catalog);
    text = replaced(text,
                    "msgctxt \"ISO7200|RESPDEPT|ENG\"\nmsgid \"Engineering\"\nmsgstr "
                    "\"Konstruktion\"",
                    "#, fuzzy\nmsgctxt \"ISO7200|RESPDEPT|ENG\"\nmsgid \"Engineering\"\nmsgstr "
                    "\"Entwicklung\"");
    text = replaced(text, "msgstr \"Fertigungsplanung\"", "msgstr \"\"");
    m_dir.write("DE.po", text);
    EXPECT_EQ(import(catalog), 0) << m_err.str();
    EXPECT_EQ(m_out.str(), m_document.string() +
                               ": DE: 0 added, 0 changed, 16 unchanged (10 untranslated, 1 "
                               "fuzzy and 0 stale entries left out)\n");
    EXPECT_EQ(TestUtil::readFile(m_document), m_original);
}

TEST_F(Translations, ImportOfAnUnknownBlockOrFieldIsRefusedWithItsLineAndWritesNothing) {
    const fs::path catalog = m_dir.path() / "DE.po";
    ASSERT_EQ(exportTo("DE", catalog), 0);
    std::string text = TestUtil::readFile(catalog);
    text = replaced(text, "msgstr \"Konstruktion\"", "msgstr \"Entwicklung\"");
    text = replaced(text, "msgctxt \"ISO7200|DOCTYPE|PART\"", "msgctxt \"ISO7200|DOCKIND|PART\"");
    text = replaced(text, "msgctxt \"ISO7200|RESPDEPT|QA\"", "msgctxt \"ISO7300|RESPDEPT|QA\"");
    m_dir.write("DE.po", text);
    const auto lineOf = [&](const std::string& part) {
        const std::string before = text.substr(0, text.find(part));
        return std::to_string(1 + std::count(before.begin(), before.end(), '\n'));
    };
    EXPECT_EQ(import(catalog), 2);
    EXPECT_EQ(m_err.str(),
              "qorfmt translations import: " + catalog.string() + ":" +
                  lineOf("ISO7300|RESPDEPT|QA") +
                  ": msgctxt 'ISO7300|RESPDEPT|QA' names no text of " + m_document.string() +
                  ": the document has no block 'ISO7300'\n"
                  "qorfmt translations import: " +
                  catalog.string() + ":" + lineOf("ISO7200|DOCKIND|PART") +
                  ": msgctxt 'ISO7200|DOCKIND|PART' names no text of " + m_document.string() +
                  ": block 'ISO7200' has no field 'DOCKIND'\n"
                  "qorfmt translations import: " +
                  m_document.string() + " is left unchanged\n");
    EXPECT_EQ(m_out.str(), "");
    EXPECT_EQ(TestUtil::readFile(m_document), m_original);
}

TEST_F(Translations, ImportTakesTheLanguageFromTheCatalog) {
    const fs::path catalog = m_dir.path() / "DE.po";
    ASSERT_EQ(exportTo("DE", catalog), 0);
    m_dir.write("DE.po",
                replaced(TestUtil::readFile(catalog), "Language: DE\\n", "Language: IT\\n"));
    EXPECT_EQ(import(catalog), 0) << m_err.str();
    EXPECT_EQ(m_out.str(), catalog.string() + ": language 'IT' is new to the document\n" +
                               m_document.string() +
                               ": IT: 18 added, 0 changed, 0 unchanged (9 untranslated, 0 "
                               "fuzzy and 0 stale entries left out)\n");
    const auto document = QorBorder::FordefReader::read(m_document);
    EXPECT_EQ(document->translations().at("IT_ISO7200_RESPDEPT_ENG"), "Konstruktion");
}

TEST_F(Translations, ACatalogWithoutLanguageIsRefused) {
    const fs::path catalog = m_dir.write("none.po", "msgctxt \"ISO7200|RESPDEPT|ENG\"\n"
                                                    "msgid \"Engineering\"\nmsgstr \"x\"\n");
    EXPECT_EQ(import(catalog), 2);
    EXPECT_EQ(m_err.str(), "qorfmt translations import: " + catalog.string() +
                               ": the header names no Language\n");
    EXPECT_EQ(TestUtil::readFile(m_document), m_original);
}

TEST_F(Translations, ALanguageWithAnUnderscoreIsRefused) {
    EXPECT_EQ(exportTo("de_AT", m_dir.path() / "de_AT.po"), 2);
    EXPECT_NE(m_err.str().find("contains '_'"), std::string::npos) << m_err.str();
    EXPECT_FALSE(fs::exists(m_dir.path() / "de_AT.po"));
}

TEST_F(Translations, CoverageShowsBlocksByLanguages) {
    EXPECT_EQ(coverage(), 0) << m_err.str();
    EXPECT_EQ(m_out.str(), "Block              DE         FR\n"
                           "ISO7200     18/27 66%  18/27 66%\n"
                           "PARTSLIST           -          -\n"
                           "All blocks  18/27 66%  18/27 66%\n");
    EXPECT_EQ(coverage({"IT", "DE"}), 0);
    EXPECT_EQ(m_out.str(), "Block            IT         DE\n"
                           "ISO7200     0/27 0%  18/27 66%\n"
                           "PARTSLIST         -          -\n"
                           "All blocks  0/27 0%  18/27 66%\n");
}

TEST_F(Translations, CoverageBelowTheMinimumExitsOne) {
    EXPECT_EQ(coverage({"DE"}, 66), 0);
    EXPECT_EQ(coverage({"DE"}, 67), 1);
    EXPECT_EQ(m_err.str(), "qorfmt translations coverage: DE covers 18 of 27 texts, below 67%\n");
}

TEST_F(Translations, TemplateHasEveryTextWithoutTranslationOrLanguage) {
    const fs::path pot = m_dir.path() / "texts.pot";
    TemplateOptions options;
    options.file = m_document.string();
    options.output = pot.string();
    m_out.str("");
    ASSERT_EQ(runTemplate(options, m_out, m_err), 0) << m_err.str();
    EXPECT_EQ(m_out.str(), pot.string() + ": 27 texts of " + m_document.string() + "\n");
    const PoCatalog read = readPoFile(pot);
    EXPECT_EQ(read.language, "");
    ASSERT_EQ(read.entries.size(), 27u);
    for (const PoEntry& entry : read.entries) {
        EXPECT_EQ(entry.translation, "") << entry.context;
        EXPECT_NE(entry.source, "") << entry.context;
    }
    EXPECT_EQ(read.entries[0].context, "ISO7200|RESPDEPT|ENG");
    const std::string command =
        std::string(QORFMT_MSGFMT) + " --check -o /dev/null '" + pot.string() + "' 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << TestUtil::readFile(pot);
    EXPECT_EQ(TestUtil::readFile(m_document), m_original);
}

TEST_F(Translations, ImportMatchesTheLanguageWithoutRegardToCaseAndRegion) {
    const fs::path catalog = m_dir.path() / "DE.po";
    ASSERT_EQ(exportTo("DE", catalog), 0);
    const std::string exported = TestUtil::readFile(catalog);
    for (const std::string language : {"de", "de_DE", "DE", "de-AT", "de_CH.UTF-8"}) {
        SCOPED_TRACE(language);
        std::string text = replaced(exported, "Language: DE\\n", "Language: " + language + "\\n");
        text = replaced(text, "msgstr \"Konstruktion\"", "msgstr \"Entwicklung " + language + "\"");
        m_dir.write("DE.po", text);
        EXPECT_EQ(import(catalog), 0) << m_err.str();
        const std::string note = language == "DE" ? ""
                                                  : catalog.string() + ": language '" + language +
                                                        "' is the document's 'DE'\n";
        EXPECT_EQ(m_out.str(), note + m_document.string() +
                                   ": DE: 0 added, 1 changed, 17 unchanged (9 untranslated, 0 "
                                   "fuzzy and 0 stale entries left out)\n");
        const auto document = QorBorder::FordefReader::read(m_document);
        EXPECT_EQ(document->translations().at("DE_ISO7200_RESPDEPT_ENG"),
                  "Entwicklung " + language);
        for (const auto& entry : document->translations()) {
            EXPECT_TRUE(entry.first.rfind("DE_", 0) == 0 || entry.first.rfind("FR_", 0) == 0)
                << entry.first;
        }
    }
}

TEST_F(Translations, ImportOfANewLanguageWithARegionWritesItWithADash) {
    const fs::path catalog = m_dir.path() / "pt_BR.po";
    ASSERT_EQ(exportTo("DE", catalog), 0);
    m_dir.write("pt_BR.po",
                replaced(TestUtil::readFile(catalog), "Language: DE\\n", "Language: pt_BR\\n"));
    EXPECT_EQ(import(catalog), 0) << m_err.str();
    EXPECT_EQ(m_out.str().substr(0, m_out.str().find('\n') + 1),
              catalog.string() + ": language 'pt_BR' is new to the document, written 'pt-BR'\n");
    const auto document = QorBorder::FordefReader::read(m_document);
    EXPECT_EQ(document->translations().at("pt-BR_ISO7200_RESPDEPT_ENG"), "Konstruktion");
}

TEST_F(Translations, ImportLeavesOutStaleEntriesAndCountsThem) {
    const fs::path catalog = m_dir.path() / "DE.po";
    ASSERT_EQ(exportTo("DE", catalog), 0);
    std::string text = TestUtil::readFile(catalog);
    // The catalog was made when the text was another one.
    text = replaced(text, "msgid \"Engineering\"\nmsgstr \"Konstruktion\"",
                    "msgid \"Design office\"\nmsgstr \"Konstruktionsbüro\"");
    m_dir.write("DE.po", text);
    const std::string before = text.substr(0, text.find("msgid \"Design office\""));
    const std::string line = std::to_string(std::count(before.begin(), before.end(), '\n'));
    EXPECT_EQ(import(catalog), 0) << m_err.str();
    EXPECT_EQ(m_err.str(), "qorfmt translations import: " + catalog.string() + ":" + line +
                               ": stale: 'ISO7200|RESPDEPT|ENG' was translated from 'Design "
                               "office', but the document's text is now 'Engineering'; left "
                               "out\n");
    EXPECT_EQ(m_out.str(), m_document.string() +
                               ": DE: 0 added, 0 changed, 17 unchanged (9 untranslated, 0 "
                               "fuzzy and 1 stale entries left out)\n");
    EXPECT_EQ(TestUtil::readFile(m_document), m_original);
}

TEST_F(Translations, ImportAcceptsAByteOrderMark) {
    const fs::path catalog = m_dir.path() / "DE.po";
    ASSERT_EQ(exportTo("DE", catalog), 0);
    m_dir.write("DE.po",
                "\xEF\xBB\xBF" + replaced(TestUtil::readFile(catalog), "msgstr \"Konstruktion\"",
                                          "msgstr \"Entwicklung\""));
    EXPECT_EQ(import(catalog), 0) << m_err.str();
    EXPECT_EQ(m_out.str(), m_document.string() +
                               ": DE: 0 added, 1 changed, 17 unchanged (9 untranslated, 0 "
                               "fuzzy and 0 stale entries left out)\n");
    const auto document = QorBorder::FordefReader::read(m_document);
    EXPECT_EQ(document->translations().at("DE_ISO7200_RESPDEPT_ENG"), "Entwicklung");
}

TEST_F(Translations, ImportIntoADocumentWithACommentIsRefusedUnlessDropComments) {
    const fs::path catalog = m_dir.path() / "DE.po";
    ASSERT_EQ(exportTo("DE", catalog), 0);
    m_dir.write("DE.po", replaced(TestUtil::readFile(catalog), "msgstr \"Konstruktion\"",
                                  "msgstr \"Entwicklung\""));
    const std::string commented =
        replaced(m_original, "<fordef version=\"1\">\n", "<fordef version=\"1\">\n<!-- x -->\n");
    m_dir.write("iso7200_blocks.fordef", commented);
    EXPECT_EQ(import(catalog), 2);
    EXPECT_NE(m_err.str().find(m_document.string() +
                               ":3: holds an XML comment, which saving the document would drop"),
              std::string::npos)
        << m_err.str();
    EXPECT_EQ(TestUtil::readFile(m_document), commented);

    ImportOptions options;
    options.file = m_document.string();
    options.catalog = catalog.string();
    options.dropComments = true;
    m_out.str("");
    m_err.str("");
    EXPECT_EQ(runImport(options, m_out, m_err), 0) << m_err.str();
    EXPECT_EQ(TestUtil::readFile(m_document).find("<!--"), std::string::npos);
}
