// Saving on a site shared by several administrators, as a user of the main dialog sees it: a
// document that someone else changed on disk since it was opened is not saved over their work.
#include "main_dialog_run.h"

#include "model/def_document_manager.h"

#include <nxsim/journal.h>

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

namespace {

using QorBorder::DefinitionDocument;

// Opens docA, deletes its first border and closes the main dialog: docA stays open and modified.
const char* const kEditDocA = R"J(run
dialog qorborder_config_main
  press OPEN_FILE
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    ok
  expect label FILENAME "docA.fordef"
  select BORDERLIST 0
  press DELETEBORDER
  cancel
)J";

using TestUtil::borderIds;

class MainDialogSave : public TestUtil::MainDialogRun {
protected:
    // Another administrator, in a CAD session of their own, adds a border and saves.
    void changedBySomeoneElse(const std::string& name) {
        QorBorder::DefDocumentManagerImpl otherSession;
        const auto theirs = otherSession.getDocument(site.document(name));
        auto border = boost::make_shared<QorBorder::BorderLayout>();
        border->id = "THEIRS";
        theirs->addBorderLayout(border);
        theirs->save();
    }

    std::string changedText(const std::string& name) const {
        return site.document(name).string() +
               ": the file was changed by someone else since it was opened or last saved here; "
               "nothing was saved. Save the document under another name to keep your changes, "
               "and compare the two files.";
    }
};

// The refusal leaves the main dialog open with the changes, so that they can be saved under
// another name at once.
TEST_F(MainDialogSave, SaveOverADocumentSomeoneElseChangedShowsOneErrorAndKeepsTheChanges) {
    EXPECT_JOURNAL_PASSES(run(kEditDocA));
    changedBySomeoneElse("docA.fordef");
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  press OPEN_FILE
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    ok
  expect items BORDERLIST ["A4"]
  press SAVE_FILE
  message error "Error" )J" + nxsim::quoteJournalText(changedText("docA.fordef")) +
                              R"J(
  expect stoplight "1 0"
  expect label FILENAME "docA.fordef"
  expect items BORDERLIST ["A4"]
  expect sensitive SAVE_FILE yes
  press SAVEAS_FILE
    dialog qorfmt_config_selectfile.dlg
    set FILE_SELECTION "docA-mine"
    ok
  expect label FILENAME "docA-mine.fordef"
  cancel
)J"));
    EXPECT_EQ(nxsim::shownMessages().size(), 1u);
    EXPECT_EQ(borderIds(*DefinitionDocument::load(site.document("docA.fordef"))),
              (std::vector<std::string>{"A3", "A4", "THEIRS"}));
    EXPECT_EQ(borderIds(*DefinitionDocument::load(site.document("docA-mine.fordef"))),
              (std::vector<std::string>{"A4"}));
}

TEST_F(MainDialogSave, SaveAllSavesTheOthersAndNamesTheRefusedDocumentInOneError) {
    EXPECT_JOURNAL_PASSES(run(kEditDocA));
    // docB gets a change of this session too: the first block moved to it from docA.
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  press OPEN_FILE
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    ok
  select BLOCKLIST 0
  press MOVE_ITEMS
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    ok
  cancel
)J"));
    changedBySomeoneElse("docB.fordef");
    EXPECT_JOURNAL_PASSES(
        run(R"J(run
dialog qorborder_config_main
  expect sensitive SAVE_ALL yes
  press SAVE_ALL
  message error "Error" )J" +
            nxsim::quoteJournalText("This document was not saved:\n" + changedText("docB.fordef")) +
            R"J(
  expect stoplight "1 0"
  expect sensitive SAVE_ALL yes
  cancel
)J"));
    // docA, which nobody else touched, was saved; docB holds the other administrator's work.
    EXPECT_EQ(borderIds(*DefinitionDocument::load(site.document("docA.fordef"))),
              (std::vector<std::string>{"A4"}));
    EXPECT_EQ(borderIds(*DefinitionDocument::load(site.document("docB.fordef"))),
              (std::vector<std::string>{"B1", "THEIRS"}));
}

} // namespace
