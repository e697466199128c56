// Every control a dialog binds exists in its resource file with the kind it is bound as. One row
// per dialog: its names, the controls it binds with their kinds, and the ways it is shown; a new
// dialog is one more row.

#include "workspace_site.h"

#include "block/block_layout_dialog.h"
#include "block/block_layout_dialog_names.h"
#include "block/block_location_dialog.h"
#include "block/block_location_dialog_names.h"
#include "block/block_style_dialog.h"
#include "block/block_style_dialog_names.h"
#include "block/field_dialog.h"
#include "block/field_dialog_names.h"
#include "block/row_type_dialog.h"
#include "block/row_type_dialog_names.h"
#include "block/symbol_type_dialog.h"
#include "block/symbol_type_dialog_names.h"
#include "block/text_choice_dialog.h"
#include "block/text_choice_dialog_names.h"
#include "border/border_layout_dialog.h"
#include "border/border_layout_dialog_names.h"
#include "border/drawing_size_dialog.h"
#include "border/drawing_size_dialog_names.h"
#include "model/block_layout.h"
#include "model/block_location.h"
#include "model/block_style.h"
#include "model/border_layout.h"
#include "model/choice.h"
#include "model/row_type.h"
#include "model/symbol_type.h"
#include "testutil/journal.h"
#include "workspace/file_select_dialog.h"
#include "workspace/file_select_dialog_names.h"
#include "workspace/main_dialog.h"
#include "workspace/main_dialog_names.h"
#include "workspace/translation_dialog.h"
#include "workspace/translation_dialog_names.h"

#include <nxsim/dlg.h>
#include <nxsim/platform.h>
#include <uf.h>

#include <boost/filesystem/operations.hpp>
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
namespace BlockLayout = QorBorderConf::BlockLayoutDialogNames;
namespace FieldNames = QorBorderConf::FieldDialogNames;
namespace TextChoice = QorBorderConf::TextChoiceDialogNames;
namespace BlockLocation = QorBorderConf::BlockLocationDialogNames;
namespace Translation = QorBorderConf::TranslationDialogNames;
namespace BlockStyle = QorBorderConf::BlockStyleDialogNames;
namespace SymbolType = QorBorderConf::SymbolTypeDialogNames;
namespace RowType = QorBorderConf::RowTypeDialogNames;

/// Whether the dialog binds a control of its file, or only the file holds it.
enum class Binding { Bound, HeldOnly };

struct BoundControl {
    const char* name;
    ItemKind kind;
    Binding binding = Binding::Bound;
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
        {"BlockLayoutDialog",
         BlockLayout::kResourceFile,
         BlockLayout::kDialogName,
         {
             {BlockLayout::BLOCK_ID, ItemKind::StringItem},
             {BlockLayout::DESCRIPTION, ItemKind::StringItem},
             {BlockLayout::CATEGORY, ItemKind::StringItem},
             {BlockLayout::DIALOG_FILENAME, ItemKind::StringItem},
             {BlockLayout::UNITS, ItemKind::OptionMenu},
             {BlockLayout::LAYER, ItemKind::IntegerItem},
             {BlockLayout::EDIT_METHOD, ItemKind::RadioBox},
             {BlockLayout::DELEGATE_LIBRARY, ItemKind::StringItem},
             {BlockLayout::FUNCTION_GROUP, ItemKind::GroupBox},
             {BlockLayout::SET_STYLE_DELEGATE, ItemKind::StringItem},
             {BlockLayout::EDIT_FIELDS_DELEGATE, ItemKind::StringItem},
             {BlockLayout::REQ_BLOCK_ONLY, ItemKind::Toggle},
             {BlockLayout::REPEATING, ItemKind::Toggle},
             {BlockLayout::REPEAT_SPACING, ItemKind::WideString},
             {BlockLayout::COL_FOR_ROW_NUM, ItemKind::IntegerItem},
             {BlockLayout::FLIP_BLOCK, ItemKind::Toggle},
             {BlockLayout::ANGLE, ItemKind::RealItem},
             {BlockLayout::SBF_BASE, ItemKind::RadioBox},
             {BlockLayout::SBF_FILENAME, ItemKind::StringItem},
             {BlockLayout::STYLES, ItemKind::SingleSelectList},
             {BlockLayout::ADD_STYLE, ItemKind::PushButton},
             {BlockLayout::EDIT_STYLE, ItemKind::PushButton},
             {BlockLayout::COPY_STYLE, ItemKind::PushButton},
             {BlockLayout::DELETE_STYLE, ItemKind::PushButton},
             {BlockLayout::SET_DEFAULT_STYLE, ItemKind::PushButton},
             {BlockLayout::FIELDS, ItemKind::SingleSelectList},
             {BlockLayout::ADD_FIELD, ItemKind::PushButton},
             {BlockLayout::EDIT_FIELD, ItemKind::PushButton},
             {BlockLayout::COPY_FIELD, ItemKind::PushButton},
             {BlockLayout::DELETE_FIELD, ItemKind::PushButton},
             {BlockLayout::ROWTYPE_GROUP, ItemKind::GroupBox},
             {BlockLayout::ROWTYPES, ItemKind::SingleSelectList},
             {BlockLayout::ADD_ROWTYPE, ItemKind::PushButton},
             {BlockLayout::EDIT_ROWTYPE, ItemKind::PushButton},
             {BlockLayout::DELETE_ROWTYPE, ItemKind::PushButton},
             {BlockLayout::BORDER_TRANSITION, ItemKind::OptionMenu},
             {BlockLayout::ROWS_CREATED, ItemKind::Toggle},
             {BlockLayout::MAXHEIGHT_MARGIN, ItemKind::RealItem},
             {BlockLayout::ALLOW_OVERRIDE, ItemKind::Toggle},
             {BlockLayout::SYMBOLTYPES, ItemKind::SingleSelectList},
             {BlockLayout::ADD_SYMBOLTYPE, ItemKind::PushButton},
             {BlockLayout::EDIT_SYMBOLTYPE, ItemKind::PushButton},
             {BlockLayout::DELETE_SYMBOLTYPE, ItemKind::PushButton},
             {BlockLayout::SYMBOL_GROUP, ItemKind::GroupBox},
             // In the file but neither bound nor read by the dialog.
             // Held by the file for the layout's sake; the dialog neither binds nor reads it.
             {BlockLayout::UBM_FILENAME, ItemKind::StringItem, Binding::HeldOnly},
         },
         {[] {
              QorBorderConf::BlockLayoutDialog dialog(
                  boost::shared_ptr<QorBorder::BlockLayout>(new QorBorder::BlockLayout()), false);
              dialog.show();
          },
          [] {
              QorBorderConf::BlockLayoutDialog dialog(
                  boost::shared_ptr<QorBorder::BlockLayout>(new QorBorder::BlockLayout()), true);
              dialog.show();
          }}},
        {"FieldDialog",
         FieldNames::kResourceFile,
         FieldNames::kDialogName,
         {
             {FieldNames::ID, ItemKind::StringItem},
             {FieldNames::TYPE, ItemKind::OptionMenu},
             {FieldNames::CONTROL_TYPE, ItemKind::OptionMenu},
             {FieldNames::DEFAULT_STRING, ItemKind::MultiTextBox},
             {FieldNames::DEFAULT_TO_CURRENT_DATE, ItemKind::Toggle},
             {FieldNames::SEC_LANG_FIELD, ItemKind::OptionMenu},
             {FieldNames::COLLAPSENOVALUE, ItemKind::Toggle},
             {FieldNames::SYNC_FIELD, ItemKind::Toggle},
             {FieldNames::PREFIX, ItemKind::StringItem},
             {FieldNames::SUFFIX, ItemKind::StringItem},
             {FieldNames::ATTR_TITLE, ItemKind::StringItem},
             {FieldNames::BROADCAST_TYPE, ItemKind::OptionMenu},
             {FieldNames::BROADCAST_VALUE_TYPE, ItemKind::OptionMenu},
             {FieldNames::BROADCAST_TITLE, ItemKind::StringItem},
             {FieldNames::CONTROLLED_SETTINGS, ItemKind::GroupBox},
             {FieldNames::CHOICE_LIST, ItemKind::SingleSelectList},
             {FieldNames::ADD_CHOICE, ItemKind::PushButton},
             {FieldNames::EDIT_CHOICE, ItemKind::PushButton},
             {FieldNames::COPY_CHOICE, ItemKind::PushButton},
             {FieldNames::DELETE_CHOICE, ItemKind::PushButton},
             {FieldNames::DEFAULT_CHOICE, ItemKind::PushButton},
         },
         {[] {
              QorBorderConf::FieldDialog dialog(
                  boost::shared_ptr<QorBorder::Field>(new QorBorder::Field(true)));
              dialog.show();
          },
          [] {
              QorBorderConf::FieldDialog dialog(
                  boost::shared_ptr<QorBorder::Field>(new QorBorder::Field(false)), {"A", "B"});
              dialog.show();
          }}},
        {"TextChoiceDialog",
         TextChoice::kResourceFile,
         TextChoice::kDialogName,
         {
             {TextChoice::SHORT_VALUE, ItemKind::StringItem},
             {TextChoice::LOOKUP_KEY, ItemKind::StringItem},
             {TextChoice::FULL_VALUE, ItemKind::MultiTextBox},
         },
         {[] {
             QorBorder::Choice choice;
             QorBorderConf::TextChoiceDialog dialog(choice);
             dialog.show();
         }}},
        {"BlockLocationDialog",
         BlockLocation::kResourceFile,
         BlockLocation::kDialogName,
         {
             {BlockLocation::DIALOG_TEXT, ItemKind::StringItem},
             {BlockLocation::ID, ItemKind::StringItem},
             {BlockLocation::BLOCK_ID, ItemKind::OptionMenu},
             {BlockLocation::BLOCK_STYLE, ItemKind::OptionMenu},
             {BlockLocation::ATTACH_CORNER, ItemKind::OptionMenu},
             {BlockLocation::ASSOCIATE_TO, ItemKind::OptionMenu},
             {BlockLocation::ASSOCIATED_CORNER, ItemKind::OptionMenu},
             {BlockLocation::OFFSET_X, ItemKind::StringItem},
             {BlockLocation::OFFSET_Y, ItemKind::StringItem},
             {BlockLocation::OVERFLOW_DIRECTION, ItemKind::OptionMenu},
         },
         {[] {
              QorBorderConf::BlockLocationDialog dialog(
                  boost::make_shared<QorBorder::BlockLocation>(), false);
              dialog.show();
          },
          [] {
              QorBorderConf::BlockLocationDialog dialog(
                  boost::make_shared<QorBorder::BlockLocation>(), true);
              dialog.show();
          }}},
        {"TranslationDialog",
         Translation::kResourceFile,
         Translation::kDialogName,
         {
             {Translation::LANGUAGE, ItemKind::StringItem},
             {Translation::BLOCK_ID, ItemKind::OptionMenu},
             {Translation::FIELD_ID, ItemKind::OptionMenu},
             {Translation::LOOKUP_KEY, ItemKind::StringItem},
             {Translation::TRANSLATION, ItemKind::MultiTextBox},
         },
         {[] {
              QorBorderConf::TranslationDialog dialog("", "", false);
              dialog.show();
          },
          [] {
              QorBorderConf::TranslationDialog dialog("", "", true);
              dialog.show();
          }}},
        {"BlockStyleDialog",
         BlockStyle::kResourceFile,
         BlockStyle::kDialogName,
         {
             {BlockStyle::ID, ItemKind::StringItem},
             {BlockStyle::DIALOG_TEXT, ItemKind::StringItem},
             {BlockStyle::TEMPLATE_FILE, ItemKind::StringItem},
             {BlockStyle::BROWSE_TEMPLATE, ItemKind::PushButton},
             {BlockStyle::TEMPLATE_TYPE, ItemKind::OptionMenu},
             {BlockStyle::TABULAR_NOTE_SETTINGS, ItemKind::GroupBox},
             {BlockStyle::FIELD_SETTINGS, ItemKind::GroupBox},
             {BlockStyle::FIELD_LIST, ItemKind::OptionMenu},
             {BlockStyle::ROW_LOC, ItemKind::IntegerItem},
             {BlockStyle::COL_LOC, ItemKind::IntegerItem},
             {BlockStyle::IN_HEADER, ItemKind::Toggle},
             {BlockStyle::TABLE_SETTINGS, ItemKind::GroupBox},
             {BlockStyle::ROW_TYPE, ItemKind::OptionMenu},
             {BlockStyle::TABLE_FIELD, ItemKind::OptionMenu},
             {BlockStyle::TABLE_FIELD_COLUMN, ItemKind::IntegerItem},
             {BlockStyle::GENERAL_SETTINGS, ItemKind::GroupBox},
             {BlockStyle::FIELD_INDEX_LIST, ItemKind::OptionMenu},
             {BlockStyle::FIELD_INDEX, ItemKind::IntegerItem},
         },
         {[] {
             QorBorderConf::BlockStyleDialog dialog(boost::make_shared<QorBorder::BlockStyle>(),
                                                    boost::make_shared<QorBorder::BlockLayout>());
             dialog.show();
         }}},
        {"RowTypeDialog",
         RowType::kResourceFile,
         RowType::kDialogName,
         {
             {RowType::ID, ItemKind::StringItem},
             {RowType::HEADER_ROW, ItemKind::IntegerItem},
             {RowType::SHOW_BOTTOM_BORDER, ItemKind::Toggle},
             {RowType::LIST_SEPARATOR, ItemKind::StringItem},
             {RowType::FIELD_LIST, ItemKind::SingleSelectList},
             {RowType::ADD_FIELD, ItemKind::PushButton},
             {RowType::COPY_FIELD, ItemKind::PushButton},
             {RowType::EDIT_FIELD, ItemKind::PushButton},
             {RowType::DELETE_FIELD, ItemKind::PushButton},
             {RowType::SET_ZONE, ItemKind::PushButton},
             {RowType::SET_TYPE_MANAGER, ItemKind::PushButton},
             {RowType::SET_KEY_FIELD, ItemKind::PushButton},
             {RowType::DIALOGFIELDS_LIST, ItemKind::SingleSelectList},
             {RowType::DIALOGFIELDS_TO_ADD, ItemKind::OptionMenu},
             {RowType::ADD_DIALOGFIELD, ItemKind::PushButton},
             {RowType::MOVEUP_DIALOGFIELD, ItemKind::PushButton},
             {RowType::MOVEDOWN_DIALOGFIELD, ItemKind::PushButton},
             {RowType::DELETE_DIALOGFIELD, ItemKind::PushButton},
             {RowType::TYPE_MANAGER_CHOICE, ItemKind::OptionMenu},
             {RowType::VALID_SYMBOL_LIST, ItemKind::WideString},
             {RowType::DISABLED_FIELD_LIST, ItemKind::WideString},
         },
         {[] {
             QorBorderConf::RowTypeDialog dialog(boost::make_shared<QorBorder::RowType>(),
                                                 boost::make_shared<QorBorder::BlockLayout>());
             dialog.show();
         }}},
        {"SymbolTypeDialog",
         SymbolType::kResourceFile,
         SymbolType::kDialogName,
         {
             {SymbolType::DIALOG_TEXT, ItemKind::StringItem},
             {SymbolType::TYPE, ItemKind::OptionMenu},
             {SymbolType::LAYER, ItemKind::IntegerItem},
             {SymbolType::COLOR, ItemKind::ColorTool},
             {SymbolType::FONTNAME, ItemKind::StringItem},
             {SymbolType::SYMBOLSIZE, ItemKind::RealItem},
             {SymbolType::TEXTSIZE, ItemKind::RealItem},
             {SymbolType::TEXTASPECT, ItemKind::RealItem},
             {SymbolType::LINE1_SCALE, ItemKind::RealItem},
             {SymbolType::LINE2_SCALE, ItemKind::RealItem},
             {SymbolType::CUSTOMSYMBOLNAME, ItemKind::StringItem},
             {SymbolType::IDSYMBOL_GROUP, ItemKind::GroupBox},
             {SymbolType::CUSTOMSYMBOL_GROUP, ItemKind::GroupBox},
             {SymbolType::LINE2FIELDS_GROUP, ItemKind::GroupBox},
             {SymbolType::LINE1FIELDS_LIST, ItemKind::SingleSelectList},
             {SymbolType::LINE2FIELDS_LIST, ItemKind::SingleSelectList},
             {SymbolType::LINE1FIELDS_TO_ADD, ItemKind::OptionMenu},
             {SymbolType::LINE2FIELDS_TO_ADD, ItemKind::OptionMenu},
             {SymbolType::ADD_LINE1FIELD, ItemKind::PushButton},
             {SymbolType::MOVEUP_LINE1FIELD, ItemKind::PushButton},
             {SymbolType::MOVEDOWN_LINE1FIELD, ItemKind::PushButton},
             {SymbolType::DELETE_LINE1FIELD, ItemKind::PushButton},
             {SymbolType::ADD_LINE2FIELD, ItemKind::PushButton},
             {SymbolType::MOVEUP_LINE2FIELD, ItemKind::PushButton},
             {SymbolType::MOVEDOWN_LINE2FIELD, ItemKind::PushButton},
             {SymbolType::DELETE_LINE2FIELD, ItemKind::PushButton},
         },
         {[] {
             QorBorderConf::SymbolTypeDialog dialog(boost::make_shared<QorBorder::SymbolType>(),
                                                    {"A", "B"});
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

// The stand-in records every control a shown dialog is asked for: each control of the row must
// be among them, asked for as the kind the row says, in every way the dialog is shown.
TEST_P(ResourceFiles, ShowingTheDialogBindsEveryControl) {
    const DialogResource& dialog = GetParam();
    ASSERT_FALSE(dialog.showings.empty());
    for (std::size_t i = 0; i < dialog.showings.size(); ++i) {
        nxsim::reset();
        EXPECT_JOURNAL_PASSES(TestUtil::runJournal(
            "run\ndialog " + dialog.journalName() + "\ncancel\n", dialog.showings[i]));
        std::set<std::pair<std::string, ItemKind>> bound;
        for (const nxsim::BoundControl& control : nxsim::boundControls()) {
            if (control.dialog == dialog.journalName()) {
                bound.insert({control.name, control.kind});
            }
        }
        for (const BoundControl& control : dialog.controls) {
            if (control.binding == Binding::HeldOnly) {
                EXPECT_EQ(bound.count({control.name, control.kind}), 0u)
                    << dialog.dialogClass << " binds " << control.name << ", held only";
                continue;
            }
            EXPECT_EQ(bound.count({control.name, control.kind}), 1u)
                << dialog.dialogClass << " (showing " << i << ") does not bind " << control.name
                << " as " << nxsim::kindDescription(control.kind);
        }
    }
}

// A resource file without a row would go unchecked.
TEST(ResourceFileTable, EveryResourceFileHasARow) {
    std::set<std::string> rows;
    for (const DialogResource& dialog : dialogResources()) {
        rows.insert(dialog.resourceFile);
    }
    std::size_t files = 0;
    for (boost::filesystem::directory_iterator it(TestUtil::productResources()), end; it != end;
         ++it) {
        if (it->path().extension() == ".dlg") {
            ++files;
            EXPECT_EQ(rows.count(it->path().filename().string()), 1u)
                << it->path().filename().string() << " has no row in this table";
        }
    }
    EXPECT_EQ(files, rows.size());
}

std::string dialogClassOf(const ::testing::TestParamInfo<DialogResource>& row) {
    return row.param.dialogClass;
}

INSTANTIATE_TEST_SUITE_P(Dialogs, ResourceFiles, ::testing::ValuesIn(dialogResources()),
                         dialogClassOf);

} // namespace
