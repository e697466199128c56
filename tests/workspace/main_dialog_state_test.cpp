// Main dialog behaviours that depend on states a journal cannot produce: they are driven by a
// presenter of the test's own that acts on the shown dialogs directly.

#include "workspace_site.h"

#include "model/def_document_manager.h"
#include "model/definition_document.h"
#include "testutil/journal.h"
#include "testutil/test_presenter.h"
#include "workspace/file_select_dialog_names.h"
#include "workspace/main_dialog.h"
#include "workspace/main_dialog_names.h"

#include <nxsim/platform.h>
#include <nxsim/presenter.h>
#include <nxsim/runtime.h>
#include <uf.h>

#include <gtest/gtest.h>

#include <deque>
#include <functional>

namespace {

namespace Main = QorBorderConf::MainDialogNames;
namespace FileSelect = QorBorderConf::FileSelectDialogNames;

class MainDialogState : public ::testing::Test {
protected:
    MainDialogState() : presenter(&script) {
        nxsim::reset();
        nxsim::setResourcePath({TestUtil::productResources()});
        UF_initialize();
    }
    ~MainDialogState() override { UF_terminate(); }

    static void openDocA(nxsim::RuntimeDialog& fileSelect) {
        fileSelect.select(FileSelect::FILE_LIST, 0);
        fileSelect.ok();
    }

    TestUtil::WorkspaceSite site;
    TestUtil::TestPresenter script;
    nxsim::ScopedPresenter presenter;
};

TEST_F(MainDialogState, SavingANeverSavedDocumentBehavesExactlyLikeSaveAs) {
    QorBorderConf::MainDialog mainDialog;
    script.scriptDialogs({
        [&](nxsim::RuntimeDialog& main) {
            main.press(Main::NEW_FILE);
            // An edit in place, as the page dialogs make them; any event then brings the
            // buttons up to date.
            mainDialog.activeDocument()->modified = true;
            main.press(Main::FILE_SUMMARY);
            main.press(Main::SAVE_FILE);
            EXPECT_EQ(main.item(Main::FILENAME)->label(), "fresh.fordef");
            main.cancel();
        },
        [](nxsim::RuntimeDialog& saveAs) {
            EXPECT_EQ(saveAs.title(), "Save As File");
            saveAs.setValue(FileSelect::FILE_SELECTION, "fresh");
            saveAs.ok();
        },
    });
    mainDialog.show();
    EXPECT_TRUE(script.scriptsLeft().empty());
    EXPECT_TRUE(QorBorder::DefDocumentManager().hasDocument(site.document("fresh.fordef")));
    EXPECT_EQ(nxsim::takeStoplightToggles(), (std::vector<int>{1, 0}));
}

TEST_F(MainDialogState, MoveWithABlockAndABorderSelectedMovesTheBlock) {
    QorBorderConf::MainDialog mainDialog;
    script.scriptDialogs({
        [&](nxsim::RuntimeDialog& main) {
            main.press(Main::OPEN_FILE);
            // Both lists selected at once, which the lists' own handlers never leave.
            main.item(Main::BORDERLIST)->setSelected(0);
            main.item(Main::BLOCKLIST)->setSelected(0);
            main.press(Main::FILE_SUMMARY);
            main.press(Main::MOVE_ITEMS);
            EXPECT_EQ(main.item(Main::BLOCKLIST)->entries(), (std::vector<std::string>{"PL"}));
            EXPECT_EQ(main.item(Main::BORDERLIST)->entries(),
                      (std::vector<std::string>{"A3", "A4"}));
            main.cancel();
        },
        openDocA,
        [](nxsim::RuntimeDialog& target) {
            target.select(FileSelect::FILE_LIST, 0);
            target.ok();
        },
    });
    mainDialog.show();
    EXPECT_TRUE(script.scriptsLeft().empty());
    const auto target = QorBorder::DefDocumentManager().getDocument(site.document("docB.fordef"));
    EXPECT_TRUE(target->getBlockLayout("TB"));
    EXPECT_FALSE(target->getBorderLayout("A3"));
    EXPECT_TRUE(target->modified) << "the target is modified, not saved";
}

TEST_F(MainDialogState, EveryShowStartsWithoutAnActiveDocument) {
    QorBorderConf::MainDialog mainDialog;
    script.scriptDialogs({
        [](nxsim::RuntimeDialog& main) {
            main.press(Main::OPEN_FILE);
            main.cancel();
        },
        openDocA,
        [](nxsim::RuntimeDialog& main) {
            EXPECT_EQ(main.item(Main::FILENAME)->label(), "No active file");
            main.cancel();
        },
    });
    mainDialog.show();
    EXPECT_TRUE(mainDialog.activeDocument());
    mainDialog.show();
    EXPECT_FALSE(mainDialog.activeDocument());
}

} // namespace
