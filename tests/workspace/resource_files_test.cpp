// Every control a dialog binds must exist in its resource file with the kind it is bound as:
// showing a dialog binds all of its controls, and a missing or mistyped one throws.

#include "workspace_site.h"

#include "testutil/journal.h"
#include "workspace/file_select_dialog.h"
#include "workspace/main_dialog.h"

#include <nxsim/platform.h>
#include <uf.h>

#include <gtest/gtest.h>

namespace {

class ResourceFiles : public ::testing::Test {
protected:
    ResourceFiles() {
        nxsim::reset();
        UF_initialize();
    }
    ~ResourceFiles() override { UF_terminate(); }

    TestUtil::WorkspaceSite site;
};

TEST_F(ResourceFiles, MainDialogFileHoldsEveryControlTheDialogBinds) {
    QorBorderConf::MainDialog dialog;
    EXPECT_JOURNAL_PASSES(TestUtil::runJournal("run\ndialog qorborder_config_main\ncancel\n",
                                               [&] { dialog.show(); }));
}

TEST_F(ResourceFiles, FileSelectDialogFileHoldsEveryControlTheDialogBindsInEveryMode) {
    for (int mode = 0; mode <= 4; ++mode) {
        QorBorderConf::FileSelectDialog dialog({}, mode);
        EXPECT_JOURNAL_PASSES(TestUtil::runJournal(
            "run\ndialog qorfmt_config_selectfile.dlg\ncancel\n", [&] { dialog.show(); }));
    }
}

} // namespace
