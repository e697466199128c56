// Every control a dialog binds exists in its resource file with the kind it is bound as. One row
// per dialog: its names, the controls it binds with their kinds, and the ways it is shown; a new
// dialog is one more row.

#include "workspace_site.h"

#include "border/border_layout_dialog.h"
#include "border/border_layout_dialog_names.h"
#include "border/drawing_size_dialog.h"
#include "border/drawing_size_dialog_names.h"
#include "model/border_layout.h"
#include "testutil/journal.h"
#include "workspace/file_select_dialog.h"
#include "workspace/file_select_dialog_names.h"
#include "workspace/main_dialog.h"
#include "workspace/main_dialog_names.h"

#include <nxsim/dlg.h>
#include <nxsim/platform.h>
#include <uf.h>

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace {

using nxsim::ItemKind;
namespace Main = QorBorderConf::MainDialogNames;
namespace FileSelect = QorBorderConf::FileSelectDialogNames;
namespace Border = QorBorderConf::BorderLayoutDialogNames;
namespace DrawingSize = QorBorderConf::DrawingSizeDialogNames;

struct BoundControl {
    const char* name;
    ItemKind kind;
};

struct DialogResource {
    const char* dialogClass; ///< names the row in the test's name
    const char* resourceFile;
    const char* dialogName;
    std::vector<BoundControl> controls;
    /// Shows the dialog once in each of its modes; showing binds every control.
    std::vector<std::function<void()>> showings;

    /// How a journal names the dialog: its dialog name, else its resource file.
    std::string journalName() const { return *dialogName ? dialogName : resourceFile; }
};

/// Names the row in the test's output.
void PrintTo(const DialogResource& dialog, std::ostream* out) {
    *out << dialog.dialogClass;
}

std::vector<std::function<void()>> fileSelectDialogInEveryMode() {
    std::vector<std::function<void()>> showings;
    for (int mode = QorBorderConf::FileSelectDialog::OpenMode;
         mode <= QorBorderConf::FileSelectDialog::CopyLocationMode; ++mode) {
        showings.push_back([mode] {
            QorBorderConf::FileSelectDialog dialog({}, mode);
            dialog.show();
        });
    }
    return showings;
}

std::vector<DialogResource> dialogResources() {
    return {
        {"MainDialog",
         Main::kResourceFile,
         Main::kDialogName,
         {
             {Main::FILEINFO, ItemKind::GroupBox},
             {Main::LOCATION, ItemKind::LabelItem},
             {Main::FILENAME, ItemKind::LabelItem},
             {Main::NEW_FILE, ItemKind::PushButton},
             {Main::OPEN_FILE, ItemKind::PushButton},
             {Main::SAVE_FILE, ItemKind::PushButton},
             {Main::SAVEAS_FILE, ItemKind::PushButton},
             {Main::SAVE_ALL, ItemKind::PushButton},
             {Main::MOVE_ITEMS, ItemKind::PushButton},
             {Main::FILE_SUMMARY, ItemKind::PushButton},
             {Main::BORDERLIST, ItemKind::SingleSelectList},
             {Main::NEWBORDER, ItemKind::PushButton},
             {Main::EDITBORDER, ItemKind::PushButton},
             {Main::COPYBORDER, ItemKind::PushButton},
             {Main::COPYBORDERFROM, ItemKind::PushButton},
             {Main::DELETEBORDER, ItemKind::PushButton},
             {Main::BLOCKLIST, ItemKind::SingleSelectList},
             {Main::NEWBLOCK, ItemKind::PushButton},
             {Main::EDITBLOCK, ItemKind::PushButton},
             {Main::COPYBLOCK, ItemKind::PushButton},
             {Main::COPYBLOCKFROM, ItemKind::PushButton},
             {Main::DELETEBLOCK, ItemKind::PushButton},
             {Main::BLOCK_FILTER, ItemKind::OptionMenu},
             {Main::LOCATION_LIST, ItemKind::SingleSelectList},
             {Main::NEW_LOC, ItemKind::PushButton},
             {Main::EDIT_LOC, ItemKind::PushButton},
             {Main::COPY_LOC, ItemKind::PushButton},
             {Main::DELETE_LOC, ItemKind::PushButton},
             {Main::MOVE_LOC_UP, ItemKind::PushButton},
             {Main::MOVE_LOC_DOWN, ItemKind::PushButton},
             {Main::TRANSLATION_LIST, ItemKind::SingleSelectList},
             {Main::NEW_TRANSLATION, ItemKind::PushButton},
             {Main::EDIT_TRANSLATION, ItemKind::PushButton},
             {Main::DELETE_TRANSLATION, ItemKind::PushButton},
         },
         {[] {
             QorBorderConf::MainDialog dialog;
             dialog.show();
         }}},
        {"FileSelectDialog",
         FileSelect::kResourceFile,
         FileSelect::kDialogName,
         {
             {FileSelect::FILTER, ItemKind::OptionMenu},
             {FileSelect::FILE_LIST, ItemKind::SingleSelectList},
             {FileSelect::FILE_SELECTION, ItemKind::WideString},
             {FileSelect::OBJECT_GROUP, ItemKind::GroupBox},
             {FileSelect::OBJECT_LABEL, ItemKind::LabelItem},
             {FileSelect::OBJECT_LIST, ItemKind::SingleSelectList},
             {FileSelect::LOC_FILTER, ItemKind::OptionMenu},
         },
         fileSelectDialogInEveryMode()},
        {"BorderLayoutDialog",
         Border::kResourceFile,
         Border::kDialogName,
         {
             {Border::FORMAT_ID, ItemKind::StringItem},
             {Border::DESCRIPTION, ItemKind::StringItem},
             {Border::CATEGORY, ItemKind::StringItem},
             {Border::SECOND_LANGUAGES, ItemKind::MultiTextBox},
             {Border::CORE_REQUIRED, ItemKind::SingleSelectList},
             {Border::SH1_REQUIRED, ItemKind::SingleSelectList},
             {Border::AVAIL_BLOCKS, ItemKind::SingleSelectList},
             {Border::MAKE_CORE, ItemKind::PushButton},
             {Border::MAKE_SH1, ItemKind::PushButton},
             {Border::REMOVE_CORE, ItemKind::PushButton},
             {Border::REMOVE_SH1, ItemKind::PushButton},
             {Border::UNITS, ItemKind::OptionMenu},
             {Border::LAYER, ItemKind::IntegerItem},
             {Border::BL_X_LOC, ItemKind::RealItem},
             {Border::BL_Y_LOC, ItemKind::RealItem},
             {Border::TR_X_LOC, ItemKind::RealItem},
             {Border::TR_Y_LOC, ItemKind::RealItem},
             {Border::PK_BL_CORNER, ItemKind::PushButton},
             {Border::PK_TR_CORNER, ItemKind::PushButton},
             {Border::HORZ_TYPE, ItemKind::OptionMenu},
             {Border::VERT_TYPE, ItemKind::OptionMenu},
             {Border::ZONE_START, ItemKind::OptionMenu},
             {Border::FRAME_SIZES, ItemKind::SingleSelectList},
             {Border::ADD_FRAME_SIZE, ItemKind::PushButton},
             {Border::COPY_FRAME_SIZE, ItemKind::PushButton},
             {Border::EDIT_FRAME_SIZE, ItemKind::PushButton},
             {Border::CUT_FRAME_SIZE, ItemKind::PushButton},
             {Border::OPEN_TEMPLATE, ItemKind::PushButton},
         },
         {[] {
              QorBorderConf::BorderLayoutDialog dialog(
                  boost::make_shared<QorBorder::BorderLayout>(), false);
              dialog.show();
          },
          [] {
              QorBorderConf::BorderLayoutDialog dialog(
                  boost::make_shared<QorBorder::BorderLayout>(), true);
              dialog.show();
          }}},
        {"DrawingSizeDialog",
         DrawingSize::kResourceFile,
         DrawingSize::kDialogName,
         {
             {DrawingSize::NAME, ItemKind::StringItem},
             {DrawingSize::DESC, ItemKind::StringItem},
             {DrawingSize::LABEL, ItemKind::StringItem},
             {DrawingSize::TEMPLATE_FILE, ItemKind::StringItem},
             {DrawingSize::BROWSE_TEMPLATE, ItemKind::PushButton},
             {DrawingSize::EXTRACT_DIMS, ItemKind::PushButton},
             {DrawingSize::HEIGHT, ItemKind::RealItem},
             {DrawingSize::LENGTH, ItemKind::RealItem},
             {DrawingSize::FRAME_LENGTH, ItemKind::RealItem},
             {DrawingSize::PK_FRAME_LENGTH, ItemKind::PushButton},
             {DrawingSize::HORZ_ZONES, ItemKind::IntegerItem},
             {DrawingSize::VERT_ZONES, ItemKind::IntegerItem},
         },
         {[] {
             QorBorder::DrawingSize size;
             QorBorderConf::DrawingSizeDialog dialog(size);
             dialog.show();
         }}},
    };
}

/// Every named element of the file that a dialog could bind, anywhere in the tree.
void collectBindable(const std::vector<nxsim::DlgElement>& elements,
                     std::vector<const nxsim::DlgElement*>& found) {
    for (const nxsim::DlgElement& element : elements) {
        if (nxsim::isBindable(element.kind) && !element.name.empty()) {
            found.push_back(&element);
        }
        collectBindable(element.children, found);
    }
}

class ResourceFiles : public ::testing::TestWithParam<DialogResource> {
protected:
    ResourceFiles() {
        nxsim::reset();
        UF_initialize();
    }
    ~ResourceFiles() override { UF_terminate(); }

    nxsim::DialogLayout readLayout() const {
        return nxsim::readDialogLayout(TestUtil::productResources() / GetParam().resourceFile);
    }

    TestUtil::WorkspaceSite site;
};

TEST_P(ResourceFiles, FileHoldsEveryControlTheDialogBindsWithTheKindItBindsItAs) {
    const DialogResource& dialog = GetParam();
    const nxsim::DialogLayout layout = readLayout();
    EXPECT_EQ(layout.name, dialog.dialogName);
    for (const BoundControl& control : dialog.controls) {
        const nxsim::DlgElement* element = layout.find(control.name);
        if (!element) {
            ADD_FAILURE() << dialog.resourceFile << " has no " << control.name;
            continue;
        }
        EXPECT_EQ(element->kind, control.kind)
            << dialog.resourceFile << ":" << element->line << ": " << control.name << " is a "
            << nxsim::kindDescription(element->kind) << ", bound as a "
            << nxsim::kindDescription(control.kind);
    }
}

// A named control of the file that the row does not list is one the dialog binds without the row
// knowing it, or one the file holds for nothing: either way the row and the file part company.
TEST_P(ResourceFiles, FileHoldsNoNamedControlTheRowDoesNotList) {
    const DialogResource& dialog = GetParam();
    std::set<std::string> listed;
    for (const BoundControl& control : dialog.controls) {
        listed.insert(control.name);
    }
    const nxsim::DialogLayout layout = readLayout();
    std::vector<const nxsim::DlgElement*> bindable;
    collectBindable(layout.elements, bindable);
    for (const nxsim::DlgElement* element : bindable) {
        EXPECT_EQ(listed.count(element->name), 1u)
            << dialog.resourceFile << ":" << element->line << ": " << element->name
            << " is not in the row of " << dialog.dialogClass;
    }
}

TEST_P(ResourceFiles, ShowingTheDialogBindsEveryControl) {
    const DialogResource& dialog = GetParam();
    ASSERT_FALSE(dialog.showings.empty());
    for (const auto& show : dialog.showings) {
        EXPECT_JOURNAL_PASSES(
            TestUtil::runJournal("run\ndialog " + dialog.journalName() + "\ncancel\n", show));
    }
}

std::string dialogClassOf(const ::testing::TestParamInfo<DialogResource>& row) {
    return row.param.dialogClass;
}

INSTANTIATE_TEST_SUITE_P(Dialogs, ResourceFiles, ::testing::ValuesIn(dialogResources()),
                         dialogClassOf);

} // namespace
