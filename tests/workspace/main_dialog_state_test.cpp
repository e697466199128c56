// Main dialog behaviours that depend on states a journal cannot produce: they are driven by a
// presenter of the test's own that acts on the shown dialogs directly.

#include "workspace_site.h"

#include "model/def_document_manager.h"
#include "model/definition_document.h"
#include "testutil/journal.h"
#include "workspace/main_dialog.h"

#include <nxsim/platform.h>
#include <nxsim/presenter.h>
#include <nxsim/runtime.h>
#include <uf.h>

#include <gtest/gtest.h>

#include <deque>
#include <functional>

namespace {

using DialogScript = std::function<void(nxsim::RuntimeDialog&)>;

/// Runs each dialog shown with the next script; the script must end the dialog.
class ScriptPresenter : public nxsim::Presenter {
public:
    std::deque<DialogScript> scripts;
    std::vector<std::string> dialogs;

    void runDialog(nxsim::RuntimeDialog& dialog) override {
        dialogs.push_back(dialog.journalName() + ": " + dialog.title());
        ASSERT_FALSE(scripts.empty()) << "no script for " << dialog.journalName();
        DialogScript script = scripts.front();
        scripts.pop_front();
        script(dialog);
        if (!dialog.ended()) {
            dialog.abort();
        }
    }
    void showMessage(nxsim::MessageKind, const std::string& title,
                     const std::string& text) override {
        dialogs.push_back("message: " + title + ": " + text);
    }
    int pickFromList(const std::string&, const std::string&, const std::vector<std::string>&,
                     int) override {
        return -1;
    }
    nxsim::PointAnswer indicatePoint(const std::string&) override { return {}; }
    nxsim::ObjectAnswer selectObject(const std::string&, const std::string&, int) override {
        return {};
    }
};

class MainDialogState : public ::testing::Test {
protected:
    MainDialogState() : presenter(&script) {
        nxsim::reset();
        nxsim::setResourcePath({TestUtil::productResources()});
        UF_initialize();
    }
    ~MainDialogState() override { UF_terminate(); }

    static void openDocA(nxsim::RuntimeDialog& fileSelect) {
        fileSelect.select("FILE_LIST", 0);
        fileSelect.ok();
    }

    TestUtil::WorkspaceSite site;
    ScriptPresenter script;
    nxsim::ScopedPresenter presenter;
};

TEST_F(MainDialogState, SavingANeverSavedDocumentBehavesExactlyLikeSaveAs) {
    QorBorderConf::MainDialog mainDialog;
    script.scripts = {
        [&](nxsim::RuntimeDialog& main) {
            main.press("NEW_FILE");
            // An edit in place, as the page dialogs make them; any event then brings the
            // buttons up to date.
            mainDialog.activeDocument()->modified = true;
            main.press("FILE_SUMMARY");
            main.press("SAVE_FILE");
            EXPECT_EQ(main.item("FILENAME")->label(), "fresh.fordef");
            main.cancel();
        },
        [](nxsim::RuntimeDialog& saveAs) {
            EXPECT_EQ(saveAs.title(), "Save As File");
            saveAs.setValue("FILE_SELECTION", "fresh");
            saveAs.ok();
        },
    };
    mainDialog.show();
    EXPECT_TRUE(script.scripts.empty());
    EXPECT_TRUE(QorBorder::DefDocumentManager().hasDocument(site.document("fresh.fordef")));
    EXPECT_EQ(nxsim::takeStoplightToggles(), (std::vector<int>{1, 0}));
}

TEST_F(MainDialogState, MoveWithABlockAndABorderSelectedMovesTheBlock) {
    QorBorderConf::MainDialog mainDialog;
    script.scripts = {
        [&](nxsim::RuntimeDialog& main) {
            main.press("OPEN_FILE");
            // Both lists selected at once, which the lists' own handlers never leave.
            main.item("BORDERLIST")->setSelected(0);
            main.item("BLOCKLIST")->setSelected(0);
            main.press("FILE_SUMMARY");
            main.press("MOVE_ITEMS");
            EXPECT_EQ(main.item("BLOCKLIST")->entries(), (std::vector<std::string>{"PL"}));
            EXPECT_EQ(main.item("BORDERLIST")->entries(), (std::vector<std::string>{"A3", "A4"}));
            main.cancel();
        },
        openDocA,
        [](nxsim::RuntimeDialog& target) {
            target.select("FILE_LIST", 0);
            target.ok();
        },
    };
    mainDialog.show();
    EXPECT_TRUE(script.scripts.empty());
    const auto target = QorBorder::DefDocumentManager().getDocument(site.document("docB.fordef"));
    EXPECT_TRUE(target->getBlockLayout("TB"));
    EXPECT_FALSE(target->getBorderLayout("A3"));
    EXPECT_TRUE(target->modified) << "the target is modified, not saved";
}

TEST_F(MainDialogState, EveryShowStartsWithoutAnActiveDocument) {
    QorBorderConf::MainDialog mainDialog;
    script.scripts = {
        [](nxsim::RuntimeDialog& main) {
            main.press("OPEN_FILE");
            main.cancel();
        },
        openDocA,
        [](nxsim::RuntimeDialog& main) {
            EXPECT_EQ(main.item("FILENAME")->label(), "No active file");
            main.cancel();
        },
    };
    mainDialog.show();
    EXPECT_TRUE(mainDialog.activeDocument());
    mainDialog.show();
    EXPECT_FALSE(mainDialog.activeDocument());
}

} // namespace
