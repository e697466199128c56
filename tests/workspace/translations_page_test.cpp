#include "main_dialog_run.h"

#include "model/definition_document.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

using TranslationsPage = TestUtil::MainDialogRun;
using TestUtil::kOpenDocA;

TEST_F(TranslationsPage, WithoutActiveDocumentTheListIsEmptyAndEveryControlInsensitive) {
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  expect items TRANSLATION_LIST []
  expect sensitive TRANSLATION_LIST no
  expect sensitive NEW_TRANSLATION no
  expect sensitive EDIT_TRANSLATION no
  expect sensitive DELETE_TRANSLATION no
  cancel
)J"));
}

TEST_F(TranslationsPage, DocumentWithoutTranslationsShowsAnEmptyListAndNoEditOrDelete) {
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  press NEW_FILE
  expect sensitive TRANSLATION_LIST yes
  expect items TRANSLATION_LIST []
  expect sensitive EDIT_TRANSLATION no
  expect sensitive DELETE_TRANSLATION no
  cancel
)J"));
}

TEST_F(TranslationsPage, DeletingATranslationRemovesItAndWritesTheDocument) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect sensitive DELETE_TRANSLATION no
  select TRANSLATION_LIST 0
  expect sensitive DELETE_TRANSLATION yes
  press DELETE_TRANSLATION
  expect items TRANSLATION_LIST ["FR_TB_TITLE_Drawing"]
  expect sensitive SAVE_FILE yes
  press SAVE_FILE
  cancel
)J"));
    std::map<std::string, std::string> translations;
    onDisk("docA.fordef")->fieldTranslations(translations);
    EXPECT_EQ(translations,
              (std::map<std::string, std::string>{{"FR_TB_TITLE_Drawing", "Dessin"}}));
}

TEST_F(TranslationsPage, NewFollowsTheDocumentAndEditTheSelection) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect sensitive NEW_TRANSLATION yes
  expect sensitive EDIT_TRANSLATION no
  select TRANSLATION_LIST 1
  expect sensitive EDIT_TRANSLATION yes
  select LOCATION_LIST 0
  expect selected TRANSLATION_LIST -1
  expect sensitive EDIT_TRANSLATION no
  cancel
)J"));
}

} // namespace
