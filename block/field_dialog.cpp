#include "block/field_dialog.h"

#include "block/field_dialog_names.h"
#include "block/text_choice_dialog.h"
#include "model/field.h"
#include "ui/dialog_binder.h"
#include "ui/message_dialogs.h"
#include "ui/multi_text_box.h"
#include "ui/option_menu.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"
#include "ui/string_item.h"

#include <algorithm>
#include <cassert>
#include <initializer_list>

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace Names = QorBorderConf::FieldDialogNames;

namespace QorBorderConf {

namespace {

constexpr int kLastType = 5;
constexpr int kControlTypeCount = 10;

/// What one field type shows, and which input controls fit it. Bit n of a mask is control type
/// n; control type 0 fits every type and is never made insensitive.
struct TypeRule {
    bool defaultString;
    bool defaultToCurrentDate;
    bool controlledSettings;
    bool attrTitle;
    bool broadcast; ///< "BROADCAST_TYPE", "BROADCAST_TITLE", "SYNC_FIELD"; the value type too for
                    ///< a table field
    unsigned selectableControlTypes;
    unsigned keptControlTypes;
};

constexpr unsigned bits(std::initializer_list<int> controlTypes) {
    unsigned mask = 0;
    for (const int controlType : controlTypes) {
        mask |= 1U << controlType;
    }
    return mask;
}

// Type 5 makes control type 5 selectable but does not keep it: a stored 5 is shown and written
// as 0 whenever the rules run. That is intended.
constexpr TypeRule kTypeRules[kLastType + 1] = {
    {true, false, false, false, true, bits({1, 2, 3, 8, 9}), bits({0, 1, 2, 3, 8, 9})},
    {false, false, true, false, true, bits({4, 5, 6}), bits({0, 4, 5, 6})},
    {false, true, false, false, true, bits({7}), bits({0, 7})},
    {false, false, false, false, false, 0U, bits({0})},
    {false, false, false, true, false, bits({1, 2, 3}), bits({0, 1, 2, 3})},
    {false, false, false, true, false, bits({1, 2, 3, 5}), bits({0, 1, 2, 3})},
};

} // namespace

FieldDialog::FieldDialog(const boost::shared_ptr<QorBorder::Field>& field)
    : FieldDialog(field, std::vector<std::string>()) {}

FieldDialog::FieldDialog(const boost::shared_ptr<QorBorder::Field>& field,
                         const std::vector<std::string>& secondLanguageFieldIds)
    : NXDialogBase(Names::kResourceFile, Names::kDialogName), m_field(field),
      m_secondLanguageItems(secondLanguageFieldIds) {
    assert(m_field);
    m_secondLanguageItems.push_back(Names::kNoSecondLanguageField);
}

void FieldDialog::initializeDialog() {
    // The working copy: choice edits reach the field only on OK.
    m_choices = m_field->textChoices();
    m_defaultChoice = m_field->defaultChoice;

    KivNX::UI::DialogBinder bind(*this, *this);
    bind.onConstruct(&FieldDialog::onConstruct);
    bind.onOkay(&FieldDialog::onOk);

    m_id = bind.control<KivNX::UI::StringItem>(Names::ID);
    m_type = bind.control<KivNX::UI::OptionMenu>(Names::TYPE);
    bind.onActivate(*m_type, &FieldDialog::onTypeActivated, OpensDialog::No);
    m_controlType = bind.control<KivNX::UI::OptionMenu>(Names::CONTROL_TYPE);
    m_defaultString = bind.control<KivNX::UI::MultiTextBox>(Names::DEFAULT_STRING);
    m_defaultToCurrentDate = bind.control<Toggle>(Names::DEFAULT_TO_CURRENT_DATE);
    m_secondLanguageField = bind.control<KivNX::UI::OptionMenu>(Names::SEC_LANG_FIELD);
    m_collapseNoValue = bind.control<Toggle>(Names::COLLAPSENOVALUE);
    m_syncField = bind.control<Toggle>(Names::SYNC_FIELD);
    m_prefix = bind.control<KivNX::UI::StringItem>(Names::PREFIX);
    m_suffix = bind.control<KivNX::UI::StringItem>(Names::SUFFIX);
    m_attrTitle = bind.control<KivNX::UI::StringItem>(Names::ATTR_TITLE);
    m_broadcastType = bind.control<KivNX::UI::OptionMenu>(Names::BROADCAST_TYPE);
    m_broadcastValueType = bind.control<KivNX::UI::OptionMenu>(Names::BROADCAST_VALUE_TYPE);
    m_broadcastTitle = bind.control<KivNX::UI::StringItem>(Names::BROADCAST_TITLE);
    m_controlledSettings = bind.control<GroupBox>(Names::CONTROLLED_SETTINGS);
    m_choiceList = bind.control<KivNX::UI::SingleSelectList>(Names::CHOICE_LIST);
    bind.onActivate(*m_choiceList, &FieldDialog::onChoiceListActivated, OpensDialog::No);
    m_addChoice = bind.control<PushButton>(Names::ADD_CHOICE);
    bind.onActivate(*m_addChoice, &FieldDialog::onAddChoiceActivated, OpensDialog::Yes);
    m_editChoice = bind.control<PushButton>(Names::EDIT_CHOICE);
    bind.onActivate(*m_editChoice, &FieldDialog::onEditChoiceActivated, OpensDialog::Yes);
    bind.update(*m_editChoice, &FieldDialog::updateChoiceButtonSensitivity);
    m_copyChoice = bind.control<PushButton>(Names::COPY_CHOICE);
    bind.onActivate(*m_copyChoice, &FieldDialog::onCopyChoiceActivated, OpensDialog::No);
    bind.update(*m_copyChoice, &FieldDialog::updateChoiceButtonSensitivity);
    m_deleteChoice = bind.control<PushButton>(Names::DELETE_CHOICE);
    bind.onActivate(*m_deleteChoice, &FieldDialog::onDeleteChoiceActivated, OpensDialog::No);
    bind.update(*m_deleteChoice, &FieldDialog::updateChoiceButtonSensitivity);
    m_defaultChoiceButton = bind.control<PushButton>(Names::DEFAULT_CHOICE);
    bind.onActivate(*m_defaultChoiceButton, &FieldDialog::onDefaultChoiceActivated,
                    OpensDialog::No);
    bind.update(*m_defaultChoiceButton, &FieldDialog::updateChoiceButtonSensitivity);
}

DialogState FieldDialog::onConstruct(StylerEvent* /*event*/) {
    const QorBorder::Field& field = *m_field;
    m_id->SetItemValue(field.id);
    m_type->SetItemValue(field.type);
    m_controlType->SetItemValue(field.controlType);
    m_defaultString->SetItemValue(field.defaultString);
    m_defaultToCurrentDate->SetItemValue(field.defaultToCurrentDate);

    m_secondLanguageField->SetItems(m_secondLanguageItems);
    // A field whose partner is not offered (none, or not a field of the layout) shows "None"
    // rather than the first field offered, which OK would then store.
    const bool partnerOffered =
        !field.secondLanguageFieldId.empty() &&
        std::find(m_secondLanguageItems.begin(), m_secondLanguageItems.end(),
                  field.secondLanguageFieldId) != m_secondLanguageItems.end();
    m_secondLanguageField->SetItemValue(
        partnerOffered ? field.secondLanguageFieldId : std::string(Names::kNoSecondLanguageField));

    m_prefix->SetItemValue(field.prefix);
    m_suffix->SetItemValue(field.suffix);
    m_attrTitle->SetItemValue(field.attrTitle);
    m_broadcastType->SetItemValue(field.broadcastType);
    m_broadcastValueType->SetItemValue(field.broadcastValueType);
    m_broadcastTitle->SetItemValue(field.broadcastTitle);

    applyTypeRules();

    // After the type rules, and winning over them.
    if (field.isTableField) {
        for (int type = 3; type <= kLastType; ++type) {
            m_type->SetSensitivity(type, false);
        }
        m_syncField->SetVisibility(false);
        m_collapseNoValue->SetVisibility(false);
    } else {
        m_broadcastValueType->SetVisibility(false);
        m_syncField->SetItemValue(field.syncField);
        m_collapseNoValue->SetItemValue(field.collapseNoValue);
    }
    return DialogStateContinueDialog;
}

void FieldDialog::applyTypeRules() {
    const int type = m_type->ItemValue();
    if (type < 0 || type > kLastType) {
        return;
    }
    const TypeRule& rule = kTypeRules[type];
    const bool tableField = m_field->isTableField;
    m_defaultString->SetVisibility(rule.defaultString);
    m_defaultToCurrentDate->SetVisibility(rule.defaultToCurrentDate);
    m_controlledSettings->SetVisibility(rule.controlledSettings);
    m_attrTitle->SetVisibility(rule.attrTitle);
    m_broadcastType->SetVisibility(rule.broadcast);
    m_broadcastValueType->SetVisibility(rule.broadcast && tableField);
    m_broadcastTitle->SetVisibility(rule.broadcast);
    // A table field does not synchronise; its toggle stays hidden whatever the type.
    m_syncField->SetVisibility(rule.broadcast && !tableField);
    if (rule.controlledSettings) {
        showChoices();
    }

    for (int controlType = 1; controlType < kControlTypeCount; ++controlType) {
        m_controlType->SetSensitivity(controlType,
                                      (rule.selectableControlTypes >> controlType) & 1U);
    }
    const int controlType = m_controlType->ItemValue();
    const bool kept = controlType >= 0 && controlType < kControlTypeCount &&
                      ((rule.keptControlTypes >> controlType) & 1U);
    if (!kept) {
        m_controlType->SetItemValue(0);
    }
}

void FieldDialog::showChoices() {
    std::vector<std::string> rows;
    rows.reserve(m_choices.size());
    for (std::size_t index = 0; index < m_choices.size(); ++index) {
        const bool isDefault =
            m_defaultChoice >= 0 && static_cast<std::size_t>(m_defaultChoice) == index;
        rows.push_back((isDefault ? "* " : "  ") + m_choices[index].shortValue);
    }
    m_choiceList->ClearList();
    m_choiceList->SetListItems(rows);
}

int FieldDialog::selectedChoice() {
    const int row = m_choiceList->SelectedIndexValue();
    return row >= 0 && static_cast<std::size_t>(row) < m_choices.size() ? row : -1;
}

DialogState FieldDialog::onTypeActivated(StylerEvent* /*event*/) {
    applyTypeRules();
    return DialogStateContinueDialog;
}

DialogState FieldDialog::onChoiceListActivated(StylerEvent* /*event*/) {
    return DialogStateContinueDialog;
}

DialogState FieldDialog::onAddChoiceActivated(StylerEvent* /*event*/) {
    QorBorder::Choice choice;
    TextChoiceDialog dialog(choice);
    if (dialog.show() == DialogResponseOk) {
        m_choices.push_back(choice);
        showChoices();
    }
    return DialogStateContinueDialog;
}

DialogState FieldDialog::onEditChoiceActivated(StylerEvent* /*event*/) {
    const int row = selectedChoice();
    if (row < 0) {
        return DialogStateContinueDialog;
    }
    // The dialog writes only on OK, so it may edit the working list's element itself.
    TextChoiceDialog dialog(m_choices[static_cast<std::size_t>(row)]);
    if (dialog.show() == DialogResponseOk) {
        showChoices();
    }
    return DialogStateContinueDialog;
}

DialogState FieldDialog::onCopyChoiceActivated(StylerEvent* /*event*/) {
    const int row = selectedChoice();
    if (row < 0) {
        return DialogStateContinueDialog;
    }
    QorBorder::Choice copy = m_choices[static_cast<std::size_t>(row)];
    copy.shortValue += " Copy";
    m_choices.push_back(copy);
    showChoices();
    return DialogStateContinueDialog;
}

DialogState FieldDialog::onDeleteChoiceActivated(StylerEvent* /*event*/) {
    const int row = selectedChoice();
    if (row < 0) {
        return DialogStateContinueDialog;
    }
    // The default index stays as it is, on purpose: the marker passes to the choice that moves
    // up into its place, or to none when the last choice was the default.
    m_choices.erase(m_choices.begin() + row);
    showChoices();
    return DialogStateContinueDialog;
}

DialogState FieldDialog::onDefaultChoiceActivated(StylerEvent* /*event*/) {
    const int row = selectedChoice();
    if (row < 0) {
        return DialogStateContinueDialog;
    }
    m_defaultChoice = row;
    showChoices();
    return DialogStateContinueDialog;
}

void FieldDialog::updateChoiceButtonSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_choiceList->HasSelection());
}

DialogState FieldDialog::onOk(StylerEvent* /*event*/) {
    const std::string id = m_id->ItemValue();
    if (id.empty()) {
        return KivNX::UI::refuse(*m_id, KivNX::UI::kValidationError, "ID must not be empty.");
    }

    // Hidden controls are written too: whatever they hold is stored.
    QorBorder::Field& field = *m_field;
    field.id = id;
    field.type = m_type->ItemValue();
    field.controlType = m_controlType->ItemValue();
    field.defaultString = m_defaultString->ItemValue();
    field.defaultToCurrentDate = m_defaultToCurrentDate->ItemValue();
    field.prefix = m_prefix->ItemValue();
    field.suffix = m_suffix->ItemValue();
    field.attrTitle = m_attrTitle->ItemValue();
    field.broadcastType = m_broadcastType->ItemValue();
    field.broadcastValueType = m_broadcastValueType->ItemValue();
    field.broadcastTitle = m_broadcastTitle->ItemValue();
    if (!m_secondLanguageField->Items().empty()) {
        const std::string partner = m_secondLanguageField->ItemValueString();
        field.secondLanguageFieldId = partner == Names::kNoSecondLanguageField ? "" : partner;
    }
    field.setTextChoices(m_choices);
    field.defaultChoice = m_defaultChoice;
    if (!field.isTableField) {
        field.syncField = m_syncField->ItemValue();
        field.collapseNoValue = m_collapseNoValue->ItemValue();
    }
    return DialogStateExitDialog;
}

} // namespace QorBorderConf
