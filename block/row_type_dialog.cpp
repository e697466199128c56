#include "block/row_type_dialog.h"

#include "block/add_menu.h"
#include "block/field_dialog.h"
#include "block/row_type_dialog_names.h"
#include "model/block_layout.h"
#include "model/field.h"
#include "model/row_type.h"
#include "ui/dialog_binder.h"
#include "ui/message_dialogs.h"
#include "ui/option_menu.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"
#include "ui/string_item.h"
#include "ui/wide_string.h"

#include <cassert>
#include <utility>

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace Names = QorBorderConf::RowTypeDialogNames;

namespace QorBorderConf {

namespace {

constexpr char kNoChoices[] = "No Choices";
constexpr std::int32_t kTextChoiceField = 1;

} // namespace

RowTypeDialog::RowTypeDialog(const boost::shared_ptr<QorBorder::RowType>& rowType,
                             const boost::shared_ptr<QorBorder::BlockLayout>& blockLayout)
    : NXDialogBase(Names::kResourceFile, Names::kDialogName), m_rowType(rowType),
      m_blockLayout(blockLayout), m_zoneFieldId(m_rowType->zoneFieldId),
      m_typeManagerFieldId(m_rowType->typeManagerFieldId), m_keyFieldId(m_rowType->keyFieldId) {}

void RowTypeDialog::initializeDialog() {
    using Self = RowTypeDialog;
    KivNX::UI::DialogBinder bind(*this, *this);
    bind.onConstruct(&Self::onConstruct);
    bind.onOkay(&Self::onOk);

    m_id = bind.control<KivNX::UI::StringItem>(Names::ID);
    m_headerRow = bind.control<IntegerItem>(Names::HEADER_ROW);
    m_showBottomBorder = bind.control<Toggle>(Names::SHOW_BOTTOM_BORDER);
    m_listSeparator = bind.control<KivNX::UI::StringItem>(Names::LIST_SEPARATOR);
    m_fieldList = bind.control<KivNX::UI::SingleSelectList>(Names::FIELD_LIST);
    bind.onActivate(*m_fieldList, &Self::onSelectionActivated, OpensDialog::No);

    m_addField = bind.control<PushButton>(Names::ADD_FIELD);
    bind.onActivate(*m_addField, &Self::onAddFieldActivated, OpensDialog::Yes);
    m_copyField = bind.control<PushButton>(Names::COPY_FIELD);
    bind.onActivate(*m_copyField, &Self::onCopyFieldActivated, OpensDialog::No);
    bind.update(*m_copyField, &Self::updateFieldSelectionSensitivity);
    m_editField = bind.control<PushButton>(Names::EDIT_FIELD);
    bind.onActivate(*m_editField, &Self::onEditFieldActivated, OpensDialog::Yes);
    bind.update(*m_editField, &Self::updateFieldSelectionSensitivity);
    m_deleteField = bind.control<PushButton>(Names::DELETE_FIELD);
    bind.onActivate(*m_deleteField, &Self::onDeleteFieldActivated, OpensDialog::No);
    bind.update(*m_deleteField, &Self::updateFieldSelectionSensitivity);

    m_setZone = bind.control<PushButton>(Names::SET_ZONE);
    bind.onActivate(*m_setZone, &Self::onSetZoneActivated, OpensDialog::No);
    bind.update(*m_setZone, &Self::updateSetZoneSensitivity);
    m_setTypeManager = bind.control<PushButton>(Names::SET_TYPE_MANAGER);
    bind.onActivate(*m_setTypeManager, &Self::onSetTypeManagerActivated, OpensDialog::No);
    bind.update(*m_setTypeManager, &Self::updateSetTypeManagerSensitivity);
    m_setKeyField = bind.control<PushButton>(Names::SET_KEY_FIELD);
    bind.onActivate(*m_setKeyField, &Self::onSetKeyFieldActivated, OpensDialog::No);
    bind.update(*m_setKeyField, &Self::updateSetKeyFieldSensitivity);

    m_dialogFieldsList = bind.control<KivNX::UI::SingleSelectList>(Names::DIALOGFIELDS_LIST);
    bind.onActivate(*m_dialogFieldsList, &Self::onSelectionActivated, OpensDialog::No);
    m_dialogFieldsToAdd = bind.control<KivNX::UI::OptionMenu>(Names::DIALOGFIELDS_TO_ADD);
    bind.onActivate(*m_dialogFieldsToAdd, &Self::onSelectionActivated, OpensDialog::No);
    m_addDialogField = bind.control<PushButton>(Names::ADD_DIALOGFIELD);
    bind.onActivate(*m_addDialogField, &Self::onAddDialogFieldActivated, OpensDialog::No);
    bind.update(*m_addDialogField, &Self::updateAddDialogFieldSensitivity);
    m_moveUpDialogField = bind.control<PushButton>(Names::MOVEUP_DIALOGFIELD);
    bind.onActivate(*m_moveUpDialogField, &Self::onMoveUpDialogFieldActivated, OpensDialog::No);
    bind.update(*m_moveUpDialogField, &Self::updateMoveUpDialogFieldSensitivity);
    m_moveDownDialogField = bind.control<PushButton>(Names::MOVEDOWN_DIALOGFIELD);
    bind.onActivate(*m_moveDownDialogField, &Self::onMoveDownDialogFieldActivated, OpensDialog::No);
    bind.update(*m_moveDownDialogField, &Self::updateMoveDownDialogFieldSensitivity);
    m_deleteDialogField = bind.control<PushButton>(Names::DELETE_DIALOGFIELD);
    bind.onActivate(*m_deleteDialogField, &Self::onDeleteDialogFieldActivated, OpensDialog::No);
    bind.update(*m_deleteDialogField, &Self::updateDeleteDialogFieldSensitivity);

    m_typeManagerChoiceMenu = bind.control<KivNX::UI::OptionMenu>(Names::TYPE_MANAGER_CHOICE);
    bind.onActivate(*m_typeManagerChoiceMenu, &Self::onTypeManagerChoiceActivated, OpensDialog::No);
    bind.update(*m_typeManagerChoiceMenu, &Self::updateTypeManagerSettingsSensitivity);
    m_validSymbolList = bind.control<KivNX::UI::WideString>(Names::VALID_SYMBOL_LIST);
    bind.update(*m_validSymbolList, &Self::updateTypeManagerSettingsSensitivity);
    m_disabledFieldList = bind.control<KivNX::UI::WideString>(Names::DISABLED_FIELD_LIST);
    bind.update(*m_disabledFieldList, &Self::updateTypeManagerSettingsSensitivity);
}

DialogState RowTypeDialog::onConstruct(StylerEvent* /*event*/) {
    assert(m_id && m_fieldList && m_dialogFieldsList && m_typeManagerChoiceMenu);
    m_id->SetItemValue(m_rowType->id);
    m_headerRow->SetItemValue(m_rowType->headerRow);
    m_showBottomBorder->SetItemValue(m_rowType->showBottomBorder);
    m_listSeparator->SetItemValue(m_rowType->listSeparator);
    const std::vector<std::string> dialogFields = m_rowType->dialogListFields();
    if (!dialogFields.empty()) {
        m_dialogFieldsList->SetListItems(dialogFields);
    }
    showFields();
    fillTypeManagerChoices();
    return DialogStateContinueDialog;
}

DialogState RowTypeDialog::onOk(StylerEvent* /*event*/) {
    const std::string id = m_id->ItemValue();
    if (id.empty()) {
        return KivNX::UI::refuse(*m_id, KivNX::UI::kValidationError, "ID must not be empty.");
    }
    if (id.find('_') != std::string::npos) {
        return KivNX::UI::refuse(*m_id, KivNX::UI::kValidationError,
                                 "ID must not contain an underscore.");
    }

    // The roles are the dialog's working copies: a field renamed meanwhile keeps its old ID
    // here, as the list showed it.
    m_rowType->id = id;
    m_rowType->headerRow = m_headerRow->ItemValue();
    m_rowType->showBottomBorder = m_showBottomBorder->ItemValue();
    m_rowType->zoneFieldId = m_zoneFieldId;
    m_rowType->typeManagerFieldId = m_typeManagerFieldId;
    m_rowType->keyFieldId = m_keyFieldId;
    m_rowType->listSeparator = m_listSeparator->ItemValue();
    m_rowType->setDialogListFields(m_dialogFieldsList->ListItems());
    if (!m_typeManagerFieldId.empty()) {
        storeTypeManagerChoice();
    }
    return DialogStateExitDialog;
}

DialogState RowTypeDialog::onSelectionActivated(StylerEvent* /*event*/) {
    return DialogStateContinueDialog;
}

DialogState RowTypeDialog::onAddFieldActivated(StylerEvent* /*event*/) {
    const boost::shared_ptr<QorBorder::Field> field(new QorBorder::Field(true));
    FieldDialog dialog(field);
    if (dialog.show() == DialogResponseOk) {
        std::vector<boost::shared_ptr<QorBorder::BlockStyle>> styles = m_blockLayout->styles2();
        m_rowType->addField(field, styles);
        showFields();
    }
    return DialogStateContinueDialog;
}

DialogState RowTypeDialog::onCopyFieldActivated(StylerEvent* /*event*/) {
    const boost::shared_ptr<QorBorder::Field> source =
        m_rowType->getField(m_fieldList->SelectedIndexValue());
    if (!source) {
        return DialogStateContinueDialog;
    }
    // The copy is added at once, without the field dialog; its ID gets "copy" appended.
    const boost::shared_ptr<QorBorder::Field> copy(new QorBorder::Field(*source));
    copy->id += "copy";
    std::vector<boost::shared_ptr<QorBorder::BlockStyle>> styles = m_blockLayout->styles2();
    m_rowType->addField(copy, styles);
    showFields();
    return DialogStateContinueDialog;
}

DialogState RowTypeDialog::onEditFieldActivated(StylerEvent* /*event*/) {
    const int index = m_fieldList->SelectedIndexValue();
    const boost::shared_ptr<QorBorder::Field> field = m_rowType->getField(index);
    if (!field) {
        return DialogStateContinueDialog;
    }
    const std::string oldId = field->id;
    FieldDialog dialog(field);
    if (dialog.show() == DialogResponseOk) {
        if (field->id != oldId) {
            std::vector<boost::shared_ptr<QorBorder::BlockStyle>> styles = m_blockLayout->styles2();
            m_rowType->fieldRenamed(index, oldId, styles);
        }
        showFields();
    }
    return DialogStateContinueDialog;
}

DialogState RowTypeDialog::onDeleteFieldActivated(StylerEvent* /*event*/) {
    const int index = m_fieldList->SelectedIndexValue();
    if (index < 0) {
        return DialogStateContinueDialog;
    }
    std::vector<boost::shared_ptr<QorBorder::BlockStyle>> styles = m_blockLayout->styles2();
    m_rowType->deleteField(index, styles);
    showFields();
    return DialogStateContinueDialog;
}

DialogState RowTypeDialog::onSetZoneActivated(StylerEvent* /*event*/) {
    toggleRole(m_zoneFieldId);
    showFields();
    return DialogStateContinueDialog;
}

DialogState RowTypeDialog::onSetTypeManagerActivated(StylerEvent* /*event*/) {
    toggleRole(m_typeManagerFieldId);
    showFields();
    // The texts belong to the old type manager's choices; they go at once, also on Cancel.
    m_rowType->clearTypeManagerSettings();
    fillTypeManagerChoices();
    return DialogStateContinueDialog;
}

DialogState RowTypeDialog::onSetKeyFieldActivated(StylerEvent* /*event*/) {
    toggleRole(m_keyFieldId);
    showFields();
    return DialogStateContinueDialog;
}

DialogState RowTypeDialog::onAddDialogFieldActivated(StylerEvent* /*event*/) {
    m_dialogFieldsList->Append(m_dialogFieldsToAdd->ItemValueString());
    rebuildDialogFieldsToAdd();
    return DialogStateContinueDialog;
}

DialogState RowTypeDialog::onMoveUpDialogFieldActivated(StylerEvent* /*event*/) {
    moveDialogField(-1);
    return DialogStateContinueDialog;
}

DialogState RowTypeDialog::onMoveDownDialogFieldActivated(StylerEvent* /*event*/) {
    moveDialogField(1);
    return DialogStateContinueDialog;
}

DialogState RowTypeDialog::onDeleteDialogFieldActivated(StylerEvent* /*event*/) {
    // The handler has always cleared the list before reading its selection and rows, relying on
    // a list that still reports them after ClearList. Our list forgets them, so they are read
    // first; the list is then cleared and set in the same order.
    const int selected = m_dialogFieldsList->SelectedIndexValue();
    std::vector<std::string> items = m_dialogFieldsList->ListItems();
    m_dialogFieldsList->ClearList();
    if (selected >= 0 && selected < static_cast<int>(items.size())) {
        items.erase(items.begin() + selected);
    }
    m_dialogFieldsList->SetListItems(items);
    rebuildDialogFieldsToAdd();
    return DialogStateContinueDialog;
}

DialogState RowTypeDialog::onTypeManagerChoiceActivated(StylerEvent* /*event*/) {
    changeTypeManagerChoice();
    return DialogStateContinueDialog;
}

void RowTypeDialog::updateFieldSelectionSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_fieldList->HasSelection());
}

void RowTypeDialog::updateSetZoneSensitivity(StylerItem* item) {
    const auto field = selectedField();
    KivNX::UI::setSensitivity(item, field && field->id != m_keyFieldId &&
                                        field->id != m_typeManagerFieldId);
}

void RowTypeDialog::updateSetKeyFieldSensitivity(StylerItem* item) {
    const auto field = selectedField();
    KivNX::UI::setSensitivity(item, field && field->id != m_typeManagerFieldId &&
                                        field->id != m_zoneFieldId);
}

void RowTypeDialog::updateSetTypeManagerSensitivity(StylerItem* item) {
    const auto field = selectedField();
    KivNX::UI::setSensitivity(item, field && field->id != m_keyFieldId &&
                                        field->id != m_zoneFieldId &&
                                        field->type == kTextChoiceField);
}

void RowTypeDialog::updateAddDialogFieldSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, AddMenu::offersAnId(m_dialogFieldsToAdd->Items()));
}

void RowTypeDialog::updateMoveUpDialogFieldSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_dialogFieldsList->SelectedIndexValue() >= 1);
}

void RowTypeDialog::updateMoveDownDialogFieldSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item,
                              m_dialogFieldsList->SelectedIndexValue() <
                                  static_cast<int>(m_dialogFieldsList->ListItems().size()) - 1);
}

void RowTypeDialog::updateDeleteDialogFieldSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_dialogFieldsList->HasSelection());
}

void RowTypeDialog::showFields() {
    const int selected = m_fieldList->SelectedIndexValue();
    m_fields = m_rowType->fields();
    m_fieldList->ClearList();
    std::vector<std::string> rows;
    rows.reserve(m_fields.size());
    for (const auto& field : m_fields) {
        std::string row;
        if (field->id == m_zoneFieldId) {
            row += "* ";
        }
        if (field->id == m_typeManagerFieldId) {
            row += "- ";
        }
        row += field->id == m_keyFieldId ? "@ " : "  ";
        rows.push_back(row + field->id);
    }
    m_fieldList->SetListItems(rows);
    // After the last row was deleted its index is gone; nothing is selected then.
    if (selected >= 0 && selected < static_cast<int>(rows.size())) {
        m_fieldList->SetSelected(selected);
    }
    rebuildDialogFieldsToAdd();
}

void RowTypeDialog::rebuildDialogFieldsToAdd() {
    std::vector<std::string> all;
    for (const auto& field : m_fields) {
        all.push_back(field->id);
    }
    m_dialogFieldsToAdd->SetItems(AddMenu::entries(all, m_dialogFieldsList->ListItems()));
}

void RowTypeDialog::fillTypeManagerChoices() {
    std::vector<std::string> items;
    if (!m_typeManagerFieldId.empty()) {
        if (const auto field = m_rowType->getField(m_typeManagerFieldId)) {
            for (const QorBorder::Choice& choice : field->textChoices()) {
                items.push_back(choice.shortValue);
            }
        }
    }
    if (items.empty()) {
        items.push_back(kNoChoices);
    }
    m_typeManagerChoiceMenu->SetItems(items);
    m_typeManagerChoice = -1;
    changeTypeManagerChoice();
}

void RowTypeDialog::changeTypeManagerChoice() {
    if (m_typeManagerFieldId.empty()) {
        m_validSymbolList->SetItemValue("");
        m_disabledFieldList->SetItemValue("");
        return;
    }
    storeTypeManagerChoice();
    const int index = m_typeManagerChoiceMenu->ItemValue();
    m_validSymbolList->SetItemValue(m_rowType->validSymbolIndices(index));
    m_disabledFieldList->SetItemValue(m_rowType->disabledFieldIds(index));
    m_typeManagerChoice = index;
}

void RowTypeDialog::storeTypeManagerChoice() {
    if (m_typeManagerChoice < 0) {
        return;
    }
    m_rowType->setValidSymbolIndices(m_typeManagerChoice, m_validSymbolList->ItemValue());
    m_rowType->setDisabledFieldIds(m_typeManagerChoice, m_disabledFieldList->ItemValue());
}

void RowTypeDialog::updateTypeManagerSettingsSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, !m_typeManagerFieldId.empty());
}

void RowTypeDialog::toggleRole(std::string& role) {
    const auto field = selectedField();
    if (!field) {
        return;
    }
    if (field->id == role) {
        role.clear();
    } else {
        role = field->id;
    }
}

void RowTypeDialog::moveDialogField(int step) {
    const int from = m_dialogFieldsList->SelectedIndexValue();
    std::vector<std::string> items = m_dialogFieldsList->ListItems();
    const int to = from + step;
    if (from < 0 || to < 0 || to >= static_cast<int>(items.size())) {
        return;
    }
    std::swap(items[static_cast<std::size_t>(from)], items[static_cast<std::size_t>(to)]);
    m_dialogFieldsList->SetListItems(items);
    m_dialogFieldsList->SetSelected(to);
}

boost::shared_ptr<const QorBorder::Field> RowTypeDialog::selectedField() {
    const int index = m_fieldList->SelectedIndexValue();
    if (index < 0 || index >= static_cast<int>(m_fields.size())) {
        return {};
    }
    return m_fields[static_cast<std::size_t>(index)];
}

} // namespace QorBorderConf
