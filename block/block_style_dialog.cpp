#include "block/block_style_dialog.h"

#include "base/wildcard_filter.h"
#include "block/block_style_dialog_names.h"
#include "kivug/search_file_list.h"
#include "model/block_layout.h"
#include "model/block_style.h"
#include "ui/dialog_binder.h"
#include "ui/message_dialogs.h"
#include "ui/option_menu.h"
#include "ui/single_select_dialog.h"
#include "ui/string_item.h"

#include <cassert>

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace fs = boost::filesystem;
namespace Names = QorBorderConf::BlockStyleDialogNames;

namespace QorBorderConf {

namespace {

constexpr char kBlockTemplateFolder[] = "format_defs/block_templates";
constexpr int kTabularNoteTemplate = 0;
constexpr int kGeneralTemplate = 1;

} // namespace

BlockStyleDialog::BlockStyleDialog(const boost::shared_ptr<QorBorder::BlockStyle>& style,
                                   const boost::shared_ptr<QorBorder::BlockLayout>& layout)
    : NXDialogBase(Names::kResourceFile, Names::kDialogName), m_style(style), m_layout(layout) {}

void BlockStyleDialog::initializeDialog() {
    KivNX::UI::DialogBinder bind(*this, *this);
    bind.onConstruct(&BlockStyleDialog::onConstruct);
    bind.onOkay(&BlockStyleDialog::onOk);

    m_id = bind.control<KivNX::UI::StringItem>(Names::ID);
    m_dialogText = bind.control<KivNX::UI::StringItem>(Names::DIALOG_TEXT);
    m_templateFile = bind.control<KivNX::UI::StringItem>(Names::TEMPLATE_FILE);
    bind.onActivate(*m_templateFile, &BlockStyleDialog::onTemplateFileActivated, OpensDialog::No);
    m_browseTemplate = bind.control<PushButton>(Names::BROWSE_TEMPLATE);
    bind.onActivate(*m_browseTemplate, &BlockStyleDialog::onBrowseTemplateActivated,
                    OpensDialog::Yes);
    m_templateType = bind.control<KivNX::UI::OptionMenu>(Names::TEMPLATE_TYPE);
    bind.onActivate(*m_templateType, &BlockStyleDialog::onTemplateTypeActivated, OpensDialog::No);
    m_tabularNoteSettings = bind.control<GroupBox>(Names::TABULAR_NOTE_SETTINGS);
    m_fieldSettings = bind.control<GroupBox>(Names::FIELD_SETTINGS);
    m_fieldList = bind.control<KivNX::UI::OptionMenu>(Names::FIELD_LIST);
    bind.onActivate(*m_fieldList, &BlockStyleDialog::onFieldListActivated, OpensDialog::No);
    m_rowLoc = bind.control<IntegerItem>(Names::ROW_LOC);
    m_colLoc = bind.control<IntegerItem>(Names::COL_LOC);
    m_inHeader = bind.control<Toggle>(Names::IN_HEADER);
    m_tableSettings = bind.control<GroupBox>(Names::TABLE_SETTINGS);
    m_rowType = bind.control<KivNX::UI::OptionMenu>(Names::ROW_TYPE);
    bind.onActivate(*m_rowType, &BlockStyleDialog::onRowTypeActivated, OpensDialog::No);
    m_tableField = bind.control<KivNX::UI::OptionMenu>(Names::TABLE_FIELD);
    bind.onActivate(*m_tableField, &BlockStyleDialog::onTableFieldActivated, OpensDialog::No);
    m_tableFieldColumn = bind.control<IntegerItem>(Names::TABLE_FIELD_COLUMN);
    m_generalSettings = bind.control<GroupBox>(Names::GENERAL_SETTINGS);
    m_fieldIndexList = bind.control<KivNX::UI::OptionMenu>(Names::FIELD_INDEX_LIST);
    bind.onActivate(*m_fieldIndexList, &BlockStyleDialog::onFieldIndexListActivated,
                    OpensDialog::No);
    m_fieldIndex = bind.control<IntegerItem>(Names::FIELD_INDEX);
}

DialogState BlockStyleDialog::onConstruct(StylerEvent* event) {
    assert(m_id && m_templateType && m_fieldList && m_rowType && m_fieldIndexList);
    m_id->SetItemValue(m_style->id);
    m_dialogText->SetItemValue(m_style->dialogText);
    m_templateFile->SetItemValue(m_style->templateFile);
    m_templateType->SetItemValue(static_cast<int>(m_style->templateType));

    const std::vector<std::string> rowTypeIds = m_layout->rowTypeIds();
    if (!rowTypeIds.empty()) {
        m_rowType->SetItems(rowTypeIds);
        onRowTypeActivated(event);
        // A layout with a table can only be drawn from a tabular note template.
        m_templateType->SetSensitivity(kGeneralTemplate, false);
    } else {
        m_tableSettings->SetVisibility(false);
    }

    const std::vector<std::string> fieldIds = m_layout->fieldIds();
    if (!fieldIds.empty()) {
        m_fieldList->SetItems(fieldIds);
        onFieldListActivated(event);
        m_fieldIndexList->SetItems(fieldIds);
        onFieldIndexListActivated(event);
    } else {
        m_fieldSettings->SetVisibility(false);
        m_generalSettings->SetVisibility(false);
    }

    m_id->SetFocus();
    applyTemplateType();
    return DialogStateContinueDialog;
}

DialogState BlockStyleDialog::onOk(StylerEvent* /*event*/) {
    // Only emptiness is checked: an ID of blanks passes, and a copied style may keep its
    // source's ID.
    if (m_id->ItemValue().empty()) {
        return KivNX::UI::refuse(*m_id, KivNX::UI::kValidationError, "Name must not be empty.");
    }

    m_style->id = m_id->ItemValue();
    m_style->dialogText = m_dialogText->ItemValue();
    m_style->templateFile = m_templateFile->ItemValue();
    m_style->templateType = m_templateType->ItemValue();
    saveFieldSettings();
    saveTableColumn();
    saveFieldIndex();
    return DialogStateExitDialog;
}

DialogState BlockStyleDialog::onTemplateFileActivated(StylerEvent* /*event*/) {
    return DialogStateContinueDialog;
}

DialogState BlockStyleDialog::onBrowseTemplateActivated(StylerEvent* /*event*/) {
    // Whether the chosen or typed file exists is not checked.
    // The same template in two searched folders is offered once.
    const std::vector<std::string> names =
        KivUg::NxSearchFileList(kBlockTemplateFolder).fileNames(Base::WildcardFilter("*.prt"));
    const int chosen = KivNX::UI::SingleSelectDialog::show("Block Templates",
                                                           "Select template from list", names, -1);
    if (chosen >= 0 && chosen < static_cast<int>(names.size())) {
        m_templateFile->SetItemValue(names[static_cast<std::size_t>(chosen)]);
    }
    return DialogStateContinueDialog;
}

DialogState BlockStyleDialog::onTemplateTypeActivated(StylerEvent* /*event*/) {
    applyTemplateType();
    return DialogStateContinueDialog;
}

DialogState BlockStyleDialog::onFieldListActivated(StylerEvent* /*event*/) {
    saveFieldSettings();
    m_currentField = m_fieldList->ItemValueString();
    m_rowLoc->SetItemValue(m_style->getRow(m_currentField));
    m_colLoc->SetItemValue(m_style->getColumn(m_currentField));
    m_inHeader->SetItemValue(m_style->isFieldInHeader(m_currentField));
    return DialogStateContinueDialog;
}

DialogState BlockStyleDialog::onRowTypeActivated(StylerEvent* event) {
    saveTableColumn();
    m_currentRowType = m_rowType->ItemValueString();
    m_currentTableField.clear();
    // A row type without table fields leaves the previous row type's fields in the menu, and
    // no column is stored until a table field is chosen again.
    const std::vector<std::string> tableFieldIds = m_layout->tableFieldIds(m_currentRowType);
    if (!tableFieldIds.empty()) {
        m_tableField->SetItems(tableFieldIds);
        onTableFieldActivated(event);
    }
    return DialogStateContinueDialog;
}

DialogState BlockStyleDialog::onTableFieldActivated(StylerEvent* /*event*/) {
    saveTableColumn();
    m_currentTableField = m_tableField->ItemValueString();
    m_tableFieldColumn->SetItemValue(
        m_style->getTableColumn(m_currentRowType, m_currentTableField));
    m_tableFieldColumn->SetFocus();
    return DialogStateContinueDialog;
}

DialogState BlockStyleDialog::onFieldIndexListActivated(StylerEvent* /*event*/) {
    saveFieldIndex();
    m_currentIndexField = m_fieldIndexList->ItemValueString();
    m_fieldIndex->SetItemValue(m_style->getFieldIndex(m_currentIndexField));
    return DialogStateContinueDialog;
}

void BlockStyleDialog::saveFieldSettings() {
    if (m_currentField.empty()) {
        return;
    }
    m_style->setRow(m_currentField, m_rowLoc->ItemValue());
    m_style->setColumn(m_currentField, m_colLoc->ItemValue());
    m_style->setFieldInHeader(m_currentField, m_inHeader->ItemValue());
}

void BlockStyleDialog::saveTableColumn() {
    if (m_currentRowType.empty() || m_currentTableField.empty()) {
        return;
    }
    m_style->setTableColumn(m_currentRowType, m_currentTableField, m_tableFieldColumn->ItemValue());
}

void BlockStyleDialog::saveFieldIndex() {
    if (m_currentIndexField.empty()) {
        return;
    }
    m_style->setFieldIndex(m_currentIndexField, m_fieldIndex->ItemValue());
}

void BlockStyleDialog::applyTemplateType() {
    if (m_templateType->ItemValue() == kTabularNoteTemplate) {
        m_tabularNoteSettings->SetVisibility(true);
        m_generalSettings->SetVisibility(false);
    } else {
        m_tabularNoteSettings->SetVisibility(false);
        m_generalSettings->SetVisibility(!m_layout->fields().empty());
    }
}

} // namespace QorBorderConf
