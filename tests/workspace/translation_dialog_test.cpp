// The translation dialog, end to end through the translations page of the configurator library
// as NX runs it.

#include "main_dialog_run.h"
#include "styled_blocks.h"

#include "model/definition_document.h"
#include "workspace/translation_dialog.h"

#include <nxsim/platform.h>

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

using TestUtil::kOpenDocA;
using Translations = std::map<std::string, std::string>;

/// docA with styled blocks (TB: TITLE, DOCTYPE; PL: ITEM) and its two translations,
/// DE_TB_TITLE_Drawing = "Zeichnung" and FR_TB_TITLE_Drawing = "Dessin".
class TranslationDialog : public TestUtil::MainDialogRun {
protected:
    explicit TranslationDialog(const Translations& more = {}) {
        TestUtil::giveBlocksStylesAndFields(site.document("docA.fordef"), {}, more);
    }

    Translations saved() const {
        Translations translations;
        onDisk("docA.fordef")->fieldTranslations(translations);
        return translations;
    }
};

TEST(TranslationKey, SplitsAtEveryUnderscore) {
    using Dialog = QorBorderConf::TranslationDialog;
    EXPECT_EQ(Dialog::splitKey("DE_TB_TITLE_Drawing"),
              (std::vector<std::string>{"DE", "TB", "TITLE", "Drawing"}));
    EXPECT_EQ(Dialog::splitKey(""), (std::vector<std::string>{""}));
    EXPECT_EQ(Dialog::splitKey("_a__"), (std::vector<std::string>{"", "a", "", ""}));
}

TEST_F(TranslationDialog, EditShowsTheFourPartsOfTheKeyAndTheText) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect items TRANSLATION_LIST ["DE_TB_TITLE_Drawing", "FR_TB_TITLE_Drawing"]
  select TRANSLATION_LIST 1
  press EDIT_TRANSLATION
    dialog qorborder_config_translation
    expect title "Translation"
    expect value LANGUAGE "FR"
    expect items BLOCK_ID ["TB", "PL"]
    expect value BLOCK_ID "TB"
    expect items FIELD_ID ["TITLE", "DOCTYPE"]
    expect value FIELD_ID "TITLE"
    expect value LOOKUP_KEY "Drawing"
    expect value TRANSLATION "Dessin"
    cancel
  expect sensitive SAVE_FILE no
  cancel
)J"));
}

TEST_F(TranslationDialog, NewTranslationOpensEmptyAndIsStoredInTheDocument) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press NEW_TRANSLATION
    dialog qorborder_config_translation
    expect value LANGUAGE ""
    expect value BLOCK_ID "TB"
    expect items FIELD_ID ["TITLE", "DOCTYPE"]
    expect value LOOKUP_KEY ""
    expect value TRANSLATION ""
    set LANGUAGE "IT"
    choose FIELD_ID "DOCTYPE"
    set LOOKUP_KEY "ASSY"
    set TRANSLATION "Disegno di assieme"
    ok
  expect items TRANSLATION_LIST ["DE_TB_TITLE_Drawing", "FR_TB_TITLE_Drawing", "IT_TB_DOCTYPE_ASSY"]
  expect selected TRANSLATION_LIST -1
  expect sensitive SAVE_FILE yes
  press SAVE_FILE
  cancel
)J"));
    EXPECT_EQ(saved().at("IT_TB_DOCTYPE_ASSY"), "Disegno di assieme");
}

TEST_F(TranslationDialog, TranslationOfSeveralLinesSavesAndReadsBackEqual) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press NEW_TRANSLATION
    dialog qorborder_config_translation
    set LANGUAGE "EN"
    set LOOKUP_KEY "Drawing"
    set TRANSLATION "Assembly\n\n  drawing, sheet 1 "
    ok
  press SAVE_FILE
  cancel
)J"));
    EXPECT_EQ(saved().at("EN_TB_TITLE_Drawing"), "Assembly\n\n  drawing, sheet 1 ");
    // And it shows again as it was typed.
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select TRANSLATION_LIST 1
  press EDIT_TRANSLATION
    dialog qorborder_config_translation
    expect value LANGUAGE "EN"
    expect value TRANSLATION "Assembly\n\n  drawing, sheet 1 "
    cancel
  cancel
)J"));
}

TEST_F(TranslationDialog, NewTranslationWhoseFourPartsAreKnownIsRefusedAsDuplicate) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press NEW_TRANSLATION
    dialog qorborder_config_translation
    set LANGUAGE "DE"
    choose FIELD_ID "TITLE"
    set LOOKUP_KEY "Drawing"
    set TRANSLATION "Zeichnung neu"
    ok
    message error "Duplicate Error" "A duplicate translation was found."
    expect focus LANGUAGE
    expect value TRANSLATION "Zeichnung neu"
    cancel
  expect sensitive SAVE_FILE no
  cancel
)J"));
    EXPECT_EQ(saved().at("DE_TB_TITLE_Drawing"), "Zeichnung");
}

TEST_F(TranslationDialog, DuplicateCheckSeesTheTranslationsOfEveryOpenDocument) {
    // docA is open and holds DE_TB_TITLE_Drawing; the new document does not.
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press NEW_FILE
  expect items TRANSLATION_LIST []
  press NEW_TRANSLATION
    dialog qorborder_config_translation
    set LANGUAGE "DE"
    set LOOKUP_KEY "Drawing"
    ok
    message error "Duplicate Error" "A duplicate translation was found."
    set LANGUAGE "NL"
    ok
  expect items TRANSLATION_LIST ["NL_TB_TITLE_Drawing"]
  cancel
)J"));
}

// An edit stores under the key it returns and never removes the old one: changing a part of the
// key leaves two entries. Intended.
TEST_F(TranslationDialog, EditingWithANewLanguageLeavesTwoEntries) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select TRANSLATION_LIST 1
  press EDIT_TRANSLATION
    dialog qorborder_config_translation
    set LANGUAGE "IT"
    set TRANSLATION "Disegno"
    ok
  expect items TRANSLATION_LIST ["DE_TB_TITLE_Drawing", "FR_TB_TITLE_Drawing", "IT_TB_TITLE_Drawing"]
  press SAVE_FILE
  cancel
)J"));
    EXPECT_EQ(saved(), (Translations{{"DE_TB_TITLE_Drawing", "Zeichnung"},
                                     {"FR_TB_TITLE_Drawing", "Dessin"},
                                     {"IT_TB_TITLE_Drawing", "Disegno"}}));
}

// Edit mode skips the duplicate check: an edit may take the key of another entry, whose text it
// then replaces. Intended.
TEST_F(TranslationDialog, EditTakingAnExistingKeyOverwritesThatEntrysText) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select TRANSLATION_LIST 1
  press EDIT_TRANSLATION
    dialog qorborder_config_translation
    set LANGUAGE "DE"
    ok
  expect items TRANSLATION_LIST ["DE_TB_TITLE_Drawing", "FR_TB_TITLE_Drawing"]
  press SAVE_FILE
  cancel
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
    EXPECT_EQ(saved(),
              (Translations{{"DE_TB_TITLE_Drawing", "Dessin"}, {"FR_TB_TITLE_Drawing", "Dessin"}}));
}

// The duplicate check asks the open documents; a document never saved is not one of them, so a
// second new entry with the same key there is not refused and replaces the first one's text.
TEST_F(TranslationDialog, NewEntryWithTheKeyOfOneTheCheckDoesNotSeeOverwritesItsText) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press NEW_FILE
  press NEW_TRANSLATION
    dialog qorborder_config_translation
    set LANGUAGE "NL"
    set TRANSLATION "Tekening"
    ok
  press NEW_TRANSLATION
    dialog qorborder_config_translation
    set LANGUAGE "NL"
    set TRANSLATION "Tekening 2"
    ok
  expect items TRANSLATION_LIST ["NL_TB_TITLE_"]
  select TRANSLATION_LIST 0
  press EDIT_TRANSLATION
    dialog qorborder_config_translation
    expect value TRANSLATION "Tekening 2"
    cancel
  cancel
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

// A part holding "_" is stored as typed, but the key then no longer splits into four parts, and
// the next edit opens with the parts empty (the text is still shown). Intended: the key is split
// at every "_".
TEST_F(TranslationDialog, PartWithAnUnderscoreIsStoredButTheNextEditOpensWithoutTheParts) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press NEW_TRANSLATION
    dialog qorborder_config_translation
    set LANGUAGE "DE_CH"
    set LOOKUP_KEY "Drawing"
    set TRANSLATION "Zeichnig"
    ok
  expect items TRANSLATION_LIST ["DE_CH_TB_TITLE_Drawing", "DE_TB_TITLE_Drawing", "FR_TB_TITLE_Drawing"]
  select TRANSLATION_LIST 0
  press EDIT_TRANSLATION
    dialog qorborder_config_translation
    expect value LANGUAGE ""
    expect value BLOCK_ID "TB"
    expect value FIELD_ID "TITLE"
    expect value LOOKUP_KEY ""
    expect value TRANSLATION "Zeichnig"
    cancel
  cancel
)J"));
}

TEST_F(TranslationDialog, ChoosingAnotherBlockRefillsTheFieldMenu) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press NEW_TRANSLATION
    dialog qorborder_config_translation
    expect items FIELD_ID ["TITLE", "DOCTYPE"]
    choose BLOCK_ID "PL"
    expect items FIELD_ID ["ITEM"]
    set LANGUAGE "DE"
    set LOOKUP_KEY "1"
    ok
  expect items TRANSLATION_LIST ["DE_PL_ITEM_1", "DE_TB_TITLE_Drawing", "FR_TB_TITLE_Drawing"]
  cancel
)J"));
}

TEST_F(TranslationDialog, CancelStoresNothing) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press NEW_TRANSLATION
    dialog qorborder_config_translation
    set LANGUAGE "IT"
    cancel
  select TRANSLATION_LIST 0
  press EDIT_TRANSLATION
    dialog qorborder_config_translation
    set TRANSLATION "changed"
    cancel
  expect items TRANSLATION_LIST ["DE_TB_TITLE_Drawing", "FR_TB_TITLE_Drawing"]
  expect sensitive SAVE_FILE no
  cancel
)J"));
}

class TranslationOfAnUnknownBlock : public TranslationDialog {
protected:
    TranslationOfAnUnknownBlock() : TranslationDialog({{"DE_GONE_TITLE_Drawing", "Weg"}}) {}
};

// A key naming a block that no open document has: the block menu refuses it, the user reads why,
// and the dialog opens with the language, lookup key and text, ready to be given another block.
TEST_F(TranslationOfAnUnknownBlock, IsReportedAndOpensWithItsTextAndTypedParts) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect items TRANSLATION_LIST ["DE_GONE_TITLE_Drawing", "DE_TB_TITLE_Drawing", "FR_TB_TITLE_Drawing"]
  select TRANSLATION_LIST 0
  press EDIT_TRANSLATION
    message error "Error" "The menu has no entry 'GONE' (its entries: 'TB', 'PL'); it keeps 'TB'."
    dialog qorborder_config_translation
    expect value LANGUAGE "DE"
    expect value LOOKUP_KEY "Drawing"
    expect value TRANSLATION "Weg"
    expect items FIELD_ID ["TITLE", "DOCTYPE"]
    choose FIELD_ID "DOCTYPE"
    ok
  expect items TRANSLATION_LIST ["DE_GONE_TITLE_Drawing", "DE_TB_DOCTYPE_Drawing", "DE_TB_TITLE_Drawing", "FR_TB_TITLE_Drawing"]
  cancel
)J"));
}

} // namespace
