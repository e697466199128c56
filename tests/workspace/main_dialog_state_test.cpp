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

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>

#include <deque>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = boost::filesystem;
namespace Main = QorBorderConf::MainDialogNames;
namespace FileSelect = QorBorderConf::FileSelectDialogNames;

class MainDialogState : public ::testing::Test {
protected:
    MainDialogState() : presenter(&script) {
        nxsim::reset();
        nxsim::setResourcePath({TestUtil::productResources()});
        UF_initialize();
        // The manager is the process's: what an earlier test here left modified is not this
        // test's business.
        for (const auto& document : QorBorder::DefDocumentManager().documents()) {
            document->modified = false;
        }
    }
    ~MainDialogState() override { UF_terminate(); }

    static void openDocA(nxsim::RuntimeDialog& fileSelect) {
        fileSelect.select(FileSelect::FILE_LIST, 0);
        fileSelect.ok();
    }

    /// A change as a page's dialog makes it: an object added, the document marked modified.
    static void changeInPlace(QorBorder::DefinitionDocument& document) {
        auto border = boost::make_shared<QorBorder::BorderLayout>();
        border->id = "CHANGED";
        document.addBorderLayout(border);
        document.modified = true;
    }

    /// The names of the files in the installation's format_defs folder.
    std::set<std::string> installationFiles() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(site.site() / "format_defs")) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

    /// Keeps every message box shown from now on in `messages`, as "KIND TITLE: TEXT"; without
    /// it, a message box fails the test.
    void recordMessages() {
        script.message = [this](nxsim::MessageKind kind, const std::string& title,
                                const std::string& text) {
            messages.push_back(std::string(nxsim::messageKindWord(kind)) + " " + title + ": " +
                               text);
        };
    }
    std::vector<std::string> messages;

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

// The manager decides, not the disk: the name of a document the manager holds is refused even
// when its file has gone, and nothing is written in its place.
TEST_F(MainDialogState, SaveAsOntoAnOpenDocumentsNameIsRefusedEvenWhenItsFileIsGone) {
    const fs::path docA = site.document("docA.fordef");
    recordMessages();
    QorBorderConf::MainDialog mainDialog;
    script.scriptDialogs({
        [&](nxsim::RuntimeDialog& main) {
            main.press(Main::OPEN_FILE);
            const auto opened = mainDialog.activeDocument();
            ASSERT_TRUE(opened);
            ASSERT_TRUE(fs::remove(docA));
            main.press(Main::SAVEAS_FILE);
            EXPECT_EQ(mainDialog.activeDocument(), opened);
            EXPECT_EQ(main.item(Main::FILENAME)->label(), "docA.fordef");
            main.cancel();
        },
        openDocA,
        [](nxsim::RuntimeDialog& saveAs) {
            saveAs.setValue(FileSelect::FILE_SELECTION, "docA");
            saveAs.ok();
        },
    });
    mainDialog.show();
    EXPECT_TRUE(script.scriptsLeft().empty());
    EXPECT_EQ(messages, (std::vector<std::string>{"error Error: Document name already exists."}));
    EXPECT_FALSE(fs::exists(docA)) << "nothing is saved";
    EXPECT_TRUE(nxsim::takeStoplightToggles().empty());
}

// A document made with New belongs to no manager until Save As names it. That SAVE_ALL neither
// counts nor saves it, whatever was changed in it, is intended.
TEST_F(MainDialogState, ChangedUntitledDocumentLeavesSaveAllInsensitive) {
    QorBorderConf::MainDialog mainDialog;
    script.scriptDialogs({
        [&](nxsim::RuntimeDialog& main) {
            main.press(Main::NEW_FILE);
            changeInPlace(*mainDialog.activeDocument());
            main.press(Main::FILE_SUMMARY);
            EXPECT_TRUE(main.item(Main::SAVE_FILE)->sensitive()) << "the change is seen";
            EXPECT_FALSE(main.item(Main::SAVE_ALL)->sensitive());
            main.cancel();
        },
    });
    mainDialog.show();
    EXPECT_TRUE(script.scriptsLeft().empty());
    EXPECT_FALSE(QorBorder::DefDocumentManager().isAnyModified());
}

// As above, intended: SAVE_ALL saves the manager's documents only.
TEST_F(MainDialogState, SaveAllSavesNothingOfAChangedUntitledDocument) {
    recordMessages();
    QorBorderConf::MainDialog mainDialog;
    boost::shared_ptr<QorBorder::DefinitionDocument> untitled;
    script.scriptDialogs({
        [&](nxsim::RuntimeDialog& main) {
            main.press(Main::OPEN_FILE);
            main.select(Main::BORDERLIST, 0);
            main.press(Main::DELETEBORDER);
            main.press(Main::NEW_FILE);
            untitled = mainDialog.activeDocument();
            changeInPlace(*untitled);
            main.press(Main::FILE_SUMMARY);
            ASSERT_TRUE(main.item(Main::SAVE_ALL)->sensitive()) << "docA is modified";
            main.press(Main::SAVE_ALL);
            EXPECT_FALSE(main.item(Main::SAVE_ALL)->sensitive());
            main.cancel();
        },
        openDocA,
    });
    mainDialog.show();
    EXPECT_TRUE(script.scriptsLeft().empty());
    EXPECT_EQ(messages, std::vector<std::string>{});
    EXPECT_EQ(nxsim::takeStoplightToggles(), (std::vector<int>{1, 0}));
    ASSERT_TRUE(untitled);
    EXPECT_TRUE(untitled->modified);
    EXPECT_TRUE(untitled->filename().empty());
    EXPECT_EQ(installationFiles(), (std::set<std::string>{"docA.fordef", "docB.fordef"}));
    EXPECT_EQ(QorBorder::DefinitionDocument::load(site.document("docA.fordef"))
                  ->borderLayoutTypes(QorBorder::AllUnits)
                  .size(),
              1u)
        << "docA, the manager's modified document, is saved";
}

} // namespace
