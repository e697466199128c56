#include "block/block_layout_dialog.h"

#include "block/block_layout_dialog_names.h"
#include "block/block_style_dialog.h"
#include "block/field_dialog.h"
#include "block/list_editor.h"
#include "block/row_type_dialog.h"
#include "block/symbol_type_dialog.h"
#include "model/block_layout.h"
#include "model/def_document_manager.h"
#include "ui/dialog_binder.h"
#include "ui/message_dialogs.h"
#include "ui/option_menu.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"
#include "ui/string_item.h"
#include "ui/wide_string.h"

#include <cassert>
#include <map>

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace Names = QorBorderConf::BlockLayoutDialogNames;

namespace QorBorderConf {

namespace {

/// The "STYLES" row of a style: "* " marks the layout's default style.
std::string styleRow(const QorBorder::BlockStyle& style, const std::string& defaultStyleId) {
    return (style.id == defaultStyleId ? "* " : "  ") + style.id;
}

/// The template type of a style drawn without a tabular note: such a block has no table.
constexpr int kNonTabularTemplate = 1;

} // namespace

BlockLayoutDialog::BlockLayoutDialog(const boost::shared_ptr<QorBorder::BlockLayout>& layout,
                                     bool existingLayout)
    : NXDialogBase(Names::kResourceFile, Names::kDialogName), m_layout(layout),
      m_existingLayout(existingLayout),
      m_styleEditor({[this](int row) { return m_layout->getStyle(row); },
                     [this](const auto& style) { return showStyleDialog(style); },
                     [this](const auto& style) { m_layout->addStyle(style); },
                     [this](int row) { m_layout->deleteStyle(row); }, [this] { refreshStyles(); }}),
      m_fieldEditor({[this](int row) { return m_layout->getField(row); },
                     [this](const auto& field) { return showFieldDialog(field); },
                     [this](const auto& field) { m_layout->addField(field); },
                     [this](int row) { m_layout->deleteField(row); }, [this] { refreshFields(); }}),
      m_rowTypeEditor({[this](int row) { return m_layout->getTable().getRowType(row); },
                       [this](const auto& rowType) { return showRowTypeDialog(rowType); },
                       [this](const auto& rowType) { m_layout->getTable().addRowType(rowType); },
                       [this](int row) { m_layout->getTable().deleteRowType(row); },
                       [this] { refreshRowTypes(); }}),
      m_symbolTypeEditor({[this](int row) { return m_layout->getSymbolType(row); },
                          [this](const auto& symbol) { return showSymbolTypeDialog(symbol); },
                          [this](const auto& symbol) { m_layout->addSymbolType(symbol); },
                          [this](int row) { m_layout->deleteSymbolType(row); },
                          [this] { refreshSymbolTypes(); }}) {
    assert(m_layout);
}

void BlockLayoutDialog::initializeDialog() {
    KivNX::UI::DialogBinder bind(*this, *this);
    bind.onConstruct(&BlockLayoutDialog::onConstruct);
    bind.onOkay(&BlockLayoutDialog::onOk);

    m_blockId = bind.control<KivNX::UI::StringItem>(Names::BLOCK_ID);
    m_description = bind.control<KivNX::UI::StringItem>(Names::DESCRIPTION);
    m_category = bind.control<KivNX::UI::StringItem>(Names::CATEGORY);
    m_dialogFileName = bind.control<KivNX::UI::StringItem>(Names::DIALOG_FILENAME);
    m_units = bind.control<KivNX::UI::OptionMenu>(Names::UNITS);
    m_layer = bind.control<IntegerItem>(Names::LAYER);
    m_editMethod = bind.control<RadioBox>(Names::EDIT_METHOD);
    bind.onValueChanged(*m_editMethod, &BlockLayoutDialog::onEditMethodChanged, OpensDialog::No);
    m_delegateLibrary = bind.control<KivNX::UI::StringItem>(Names::DELEGATE_LIBRARY);
    m_functionGroup = bind.control<GroupBox>(Names::FUNCTION_GROUP);
    m_setStyleDelegate = bind.control<KivNX::UI::StringItem>(Names::SET_STYLE_DELEGATE);
    m_editFieldsDelegate = bind.control<KivNX::UI::StringItem>(Names::EDIT_FIELDS_DELEGATE);
    m_requiredBlockOnly = bind.control<Toggle>(Names::REQ_BLOCK_ONLY);
    m_repeating = bind.control<Toggle>(Names::REPEATING);
    m_repeatSpacing = bind.control<KivNX::UI::WideString>(Names::REPEAT_SPACING);
    m_columnForRowNumber = bind.control<IntegerItem>(Names::COL_FOR_ROW_NUM);
    m_flip = bind.control<Toggle>(Names::FLIP_BLOCK);
    m_angle = bind.control<RealItem>(Names::ANGLE);
    m_sbfBase = bind.control<RadioBox>(Names::SBF_BASE);
    m_sbfFileName = bind.control<KivNX::UI::StringItem>(Names::SBF_FILENAME);

    m_styleList = bind.control<KivNX::UI::SingleSelectList>(Names::STYLES);
    bind.onActivate(*m_styleList, &BlockLayoutDialog::onListActivated, OpensDialog::No);
    m_addStyle = bind.control<PushButton>(Names::ADD_STYLE);
    bind.onActivate(*m_addStyle, &BlockLayoutDialog::onAddStyleActivated, OpensDialog::Yes);
    m_editStyle = bind.control<PushButton>(Names::EDIT_STYLE);
    bind.onActivate(*m_editStyle, &BlockLayoutDialog::onEditStyleActivated, OpensDialog::Yes);
    bind.update(*m_editStyle, &BlockLayoutDialog::updateStyleButtonSensitivity);
    m_copyStyle = bind.control<PushButton>(Names::COPY_STYLE);
    bind.onActivate(*m_copyStyle, &BlockLayoutDialog::onCopyStyleActivated, OpensDialog::Yes);
    bind.update(*m_copyStyle, &BlockLayoutDialog::updateStyleButtonSensitivity);
    m_deleteStyle = bind.control<PushButton>(Names::DELETE_STYLE);
    bind.onActivate(*m_deleteStyle, &BlockLayoutDialog::onDeleteStyleActivated, OpensDialog::No);
    bind.update(*m_deleteStyle, &BlockLayoutDialog::updateStyleButtonSensitivity);
    m_setDefaultStyle = bind.control<PushButton>(Names::SET_DEFAULT_STYLE);
    bind.onActivate(*m_setDefaultStyle, &BlockLayoutDialog::onSetDefaultStyleActivated,
                    OpensDialog::No);
    bind.update(*m_setDefaultStyle, &BlockLayoutDialog::updateStyleButtonSensitivity);

    m_fieldList = bind.control<KivNX::UI::SingleSelectList>(Names::FIELDS);
    bind.onActivate(*m_fieldList, &BlockLayoutDialog::onListActivated, OpensDialog::No);
    m_addField = bind.control<PushButton>(Names::ADD_FIELD);
    bind.onActivate(*m_addField, &BlockLayoutDialog::onAddFieldActivated, OpensDialog::Yes);
    m_editField = bind.control<PushButton>(Names::EDIT_FIELD);
    bind.onActivate(*m_editField, &BlockLayoutDialog::onEditFieldActivated, OpensDialog::Yes);
    bind.update(*m_editField, &BlockLayoutDialog::updateFieldButtonSensitivity);
    m_copyField = bind.control<PushButton>(Names::COPY_FIELD);
    bind.onActivate(*m_copyField, &BlockLayoutDialog::onCopyFieldActivated, OpensDialog::Yes);
    bind.update(*m_copyField, &BlockLayoutDialog::updateFieldButtonSensitivity);
    m_deleteField = bind.control<PushButton>(Names::DELETE_FIELD);
    bind.onActivate(*m_deleteField, &BlockLayoutDialog::onDeleteFieldActivated, OpensDialog::No);
    bind.update(*m_deleteField, &BlockLayoutDialog::updateFieldButtonSensitivity);

    m_rowTypeGroup = bind.control<GroupBox>(Names::ROWTYPE_GROUP);
    m_rowTypeList = bind.control<KivNX::UI::SingleSelectList>(Names::ROWTYPES);
    bind.onActivate(*m_rowTypeList, &BlockLayoutDialog::onListActivated, OpensDialog::No);
    m_addRowType = bind.control<PushButton>(Names::ADD_ROWTYPE);
    bind.onActivate(*m_addRowType, &BlockLayoutDialog::onAddRowTypeActivated, OpensDialog::Yes);
    m_editRowType = bind.control<PushButton>(Names::EDIT_ROWTYPE);
    bind.onActivate(*m_editRowType, &BlockLayoutDialog::onEditRowTypeActivated, OpensDialog::Yes);
    bind.update(*m_editRowType, &BlockLayoutDialog::updateRowTypeButtonSensitivity);
    m_deleteRowType = bind.control<PushButton>(Names::DELETE_ROWTYPE);
    bind.onActivate(*m_deleteRowType, &BlockLayoutDialog::onDeleteRowTypeActivated,
                    OpensDialog::No);
    bind.update(*m_deleteRowType, &BlockLayoutDialog::updateRowTypeButtonSensitivity);

    m_borderTransition = bind.control<KivNX::UI::OptionMenu>(Names::BORDER_TRANSITION);
    m_rowsCreated = bind.control<Toggle>(Names::ROWS_CREATED);
    m_maxHeightMargin = bind.control<RealItem>(Names::MAXHEIGHT_MARGIN);
    m_allowOverride = bind.control<Toggle>(Names::ALLOW_OVERRIDE);

    m_symbolTypeList = bind.control<KivNX::UI::SingleSelectList>(Names::SYMBOLTYPES);
    bind.onActivate(*m_symbolTypeList, &BlockLayoutDialog::onListActivated, OpensDialog::No);
    m_addSymbolType = bind.control<PushButton>(Names::ADD_SYMBOLTYPE);
    bind.onActivate(*m_addSymbolType, &BlockLayoutDialog::onAddSymbolTypeActivated,
                    OpensDialog::Yes);
    m_editSymbolType = bind.control<PushButton>(Names::EDIT_SYMBOLTYPE);
    bind.onActivate(*m_editSymbolType, &BlockLayoutDialog::onEditSymbolTypeActivated,
                    OpensDialog::Yes);
    bind.update(*m_editSymbolType, &BlockLayoutDialog::updateSymbolTypeButtonSensitivity);
    m_deleteSymbolType = bind.control<PushButton>(Names::DELETE_SYMBOLTYPE);
    bind.onActivate(*m_deleteSymbolType, &BlockLayoutDialog::onDeleteSymbolTypeActivated,
                    OpensDialog::No);
    bind.update(*m_deleteSymbolType, &BlockLayoutDialog::updateSymbolTypeButtonSensitivity);
    m_symbolGroup = bind.control<GroupBox>(Names::SYMBOL_GROUP);
    bind.update(*m_symbolGroup, &BlockLayoutDialog::updateSymbolGroupSensitivity);
}

DialogState BlockLayoutDialog::onConstruct(StylerEvent* /*event*/) {
    const QorBorder::BlockLayout& layout = *m_layout;
    m_blockId->SetItemValue(layout.id);
    m_description->SetItemValue(layout.description);
    m_category->SetItemValue(layout.category);
    m_units->SetItemValue(layout.units - 1);
    m_layer->SetItemValue(layout.layer);
    m_editMethod->SetItemValue(layout.editMethod);
    switchEditMethod();
    m_dialogFileName->SetItemValue(layout.dialogFileName);
    m_delegateLibrary->SetItemValue(layout.delegateLibrary);
    m_setStyleDelegate->SetItemValue(layout.setStyleDelegate);
    m_editFieldsDelegate->SetItemValue(layout.editFieldsDelegate);
    m_requiredBlockOnly->SetItemValue(layout.requiredBlockOnly);
    m_repeating->SetItemValue(layout.repeating);
    m_repeatSpacing->SetItemValue(layout.repeatSpacing);
    m_columnForRowNumber->SetItemValue(layout.columnForRowNumber);
    m_sbfBase->SetItemValue(layout.sbfBase);
    m_sbfFileName->SetItemValue(layout.sbfFileName);
    m_flip->SetItemValue(layout.flip);
    m_angle->SetItemValue(layout.angle);
    m_borderTransition->SetItemValue(layout.borderTransition);
    m_rowsCreated->SetItemValue(m_layout->getTable().rowsCreated);
    m_allowOverride->SetItemValue(layout.allowOverride);
    m_maxHeightMargin->SetItemValue(layout.maxHeightMargin);

    refreshStyles();
    refreshFields();
    refreshRowTypes();
    refreshSymbolTypes();
    return DialogStateContinueDialog;
}

void BlockLayoutDialog::switchEditMethod() {
    // Hidden values are kept and still written on OK.
    const bool dialogFile = m_editMethod->ItemValue() == 0;
    m_dialogFileName->SetVisibility(dialogFile);
    m_delegateLibrary->SetVisibility(!dialogFile);
    m_functionGroup->SetVisibility(!dialogFile);
}

DialogState BlockLayoutDialog::onEditMethodChanged(StylerEvent* /*event*/) {
    switchEditMethod();
    return DialogStateContinueDialog;
}

// A change of selection only has to pass through the framework, which then brings the buttons'
// sensitivity up to date.
DialogState BlockLayoutDialog::onListActivated(StylerEvent* /*event*/) {
    return DialogStateContinueDialog;
}

void BlockLayoutDialog::refreshStyles() {
    m_styles = m_layout->styles();
    m_styleList->ClearList();
    std::vector<std::string> rows;
    rows.reserve(m_styles.size());
    for (const auto& style : m_styles) {
        rows.push_back(styleRow(*style, m_layout->defaultStyleId));
    }
    m_styleList->SetListItems(rows);

    // A block drawn without a tabular note has no table: its table settings do not apply.
    bool hasTable = true;
    for (const auto& style : m_styles) {
        if (style->templateType == kNonTabularTemplate) {
            hasTable = false;
            break;
        }
    }
    KivNX::UI::setSensitivity(m_repeating.get(), hasTable);
    KivNX::UI::setSensitivity(m_repeatSpacing.get(), hasTable);
    KivNX::UI::setSensitivity(m_columnForRowNumber.get(), hasTable);
    KivNX::UI::setSensitivity(m_rowsCreated.get(), hasTable);
    KivNX::UI::setSensitivity(m_rowTypeGroup.get(), hasTable);
    KivNX::UI::setSensitivity(m_symbolGroup.get(), hasTable);
}

void BlockLayoutDialog::refreshFields() {
    m_fields = m_layout->fields();
    m_fieldList->ClearList();
    std::vector<std::string> rows;
    rows.reserve(m_fields.size());
    for (const auto& field : m_fields) {
        rows.push_back(field->id);
    }
    m_fieldList->SetListItems(rows);
}

void BlockLayoutDialog::refreshRowTypes() {
    m_rowTypes = m_layout->getTable().rowTypes();
    m_rowTypeList->ClearList();
    std::vector<std::string> rows;
    rows.reserve(m_rowTypes.size());
    for (const auto& rowType : m_rowTypes) {
        rows.push_back(rowType->id);
    }
    m_rowTypeList->SetListItems(rows);
}

void BlockLayoutDialog::refreshSymbolTypes() {
    m_symbolTypeList->ClearList();
    const std::vector<std::string> names = m_layout->symbolTypesNames();
    if (!names.empty()) {
        m_symbolTypeList->SetListItems(names);
    }
}

std::vector<std::string> BlockLayoutDialog::symbolFieldIds() const {
    // Always the first row type's fields, whichever row type is selected: intended.
    std::vector<std::string> ids;
    if (!m_rowTypes.empty()) {
        for (const auto& field : m_rowTypes.front()->fields()) {
            ids.push_back(field->id);
        }
    }
    return ids;
}

DialogState BlockLayoutDialog::onAddStyleActivated(StylerEvent* /*event*/) {
    m_styleEditor.addNew();
    return DialogStateContinueDialog;
}

DialogState BlockLayoutDialog::onEditStyleActivated(StylerEvent* /*event*/) {
    m_styleEditor.edit(m_styleList->SelectedIndexValue());
    return DialogStateContinueDialog;
}

DialogState BlockLayoutDialog::onCopyStyleActivated(StylerEvent* /*event*/) {
    m_styleEditor.copy(m_styleList->SelectedIndexValue());
    return DialogStateContinueDialog;
}

DialogState BlockLayoutDialog::onDeleteStyleActivated(StylerEvent* /*event*/) {
    m_styleEditor.remove(m_styleList->SelectedIndexValue());
    return DialogStateContinueDialog;
}

DialogState BlockLayoutDialog::onSetDefaultStyleActivated(StylerEvent* /*event*/) {
    const int row = m_styleList->SelectedIndexValue();
    if (row >= 0 && static_cast<std::size_t>(row) < m_styles.size()) {
        m_layout->defaultStyleId = m_styles[static_cast<std::size_t>(row)]->id;
        refreshStyles();
    }
    return DialogStateContinueDialog;
}

DialogState BlockLayoutDialog::onAddFieldActivated(StylerEvent* /*event*/) {
    m_fieldEditor.addNew();
    return DialogStateContinueDialog;
}

DialogState BlockLayoutDialog::onEditFieldActivated(StylerEvent* /*event*/) {
    const int row = m_fieldList->SelectedIndexValue();
    const auto field = m_layout->getField(row);
    if (!field) {
        return DialogStateContinueDialog;
    }
    const std::string oldId = field->id;
    if (showFieldDialog(field) == DialogResponseOk) {
        if (field->id != oldId) {
            m_layout->fieldRenamed(row, oldId);
        }
        refreshFields();
    }
    return DialogStateContinueDialog;
}

DialogState BlockLayoutDialog::onCopyFieldActivated(StylerEvent* /*event*/) {
    m_fieldEditor.copy(m_fieldList->SelectedIndexValue());
    return DialogStateContinueDialog;
}

DialogState BlockLayoutDialog::onDeleteFieldActivated(StylerEvent* /*event*/) {
    m_fieldEditor.remove(m_fieldList->SelectedIndexValue());
    return DialogStateContinueDialog;
}

DialogState BlockLayoutDialog::onAddRowTypeActivated(StylerEvent* /*event*/) {
    m_rowTypeEditor.addNew();
    return DialogStateContinueDialog;
}

DialogState BlockLayoutDialog::onEditRowTypeActivated(StylerEvent* /*event*/) {
    const int row = m_rowTypeList->SelectedIndexValue();
    const auto rowType = m_layout->getTable().getRowType(row);
    if (!rowType) {
        return DialogStateContinueDialog;
    }
    const std::string oldId = rowType->id;
    // The row type dialog changes and renames the row's fields at once, whatever its response;
    // the symbol types' lines name the first row type's fields and must follow those renames.
    std::vector<std::pair<boost::shared_ptr<const QorBorder::Field>, std::string>> fieldIds;
    for (const auto& field : rowType->fields()) {
        fieldIds.emplace_back(field, field->id);
    }
    const DialogResponse response = showRowTypeDialog(rowType);
    if (row == 0) {
        std::map<std::string, std::string> renames;
        for (const auto& [field, idBefore] : fieldIds) {
            if (field->id != idBefore) {
                renames.emplace(idBefore, field->id);
            }
        }
        if (!renames.empty()) {
            m_layout->tableFieldsRenamed(renames);
        }
    }
    if (response == DialogResponseOk) {
        if (rowType->id != oldId) {
            m_layout->rowTypeRenamed(row, oldId);
        }
        refreshRowTypes();
    }
    return DialogStateContinueDialog;
}

DialogState BlockLayoutDialog::onDeleteRowTypeActivated(StylerEvent* /*event*/) {
    m_rowTypeEditor.remove(m_rowTypeList->SelectedIndexValue());
    return DialogStateContinueDialog;
}

DialogState BlockLayoutDialog::onAddSymbolTypeActivated(StylerEvent* /*event*/) {
    m_symbolTypeEditor.addNew();
    return DialogStateContinueDialog;
}

DialogState BlockLayoutDialog::onEditSymbolTypeActivated(StylerEvent* /*event*/) {
    // A changed name is only shown: nothing refers to a symbol type by its name.
    m_symbolTypeEditor.edit(m_symbolTypeList->SelectedIndexValue());
    return DialogStateContinueDialog;
}

DialogState BlockLayoutDialog::onDeleteSymbolTypeActivated(StylerEvent* /*event*/) {
    m_symbolTypeEditor.remove(m_symbolTypeList->SelectedIndexValue());
    return DialogStateContinueDialog;
}

DialogResponse
BlockLayoutDialog::showFieldDialog(const boost::shared_ptr<QorBorder::Field>& field) {
    FieldDialog dialog(field, m_layout->secondLanguageFieldIds());
    return dialog.show();
}

DialogResponse
BlockLayoutDialog::showStyleDialog(const boost::shared_ptr<QorBorder::BlockStyle>& style) {
    BlockStyleDialog dialog(style, m_layout);
    return dialog.show();
}

DialogResponse
BlockLayoutDialog::showRowTypeDialog(const boost::shared_ptr<QorBorder::RowType>& rowType) {
    RowTypeDialog dialog(rowType, m_layout);
    return dialog.show();
}

DialogResponse BlockLayoutDialog::showSymbolTypeDialog(
    const boost::shared_ptr<QorBorder::SymbolType>& symbolType) {
    SymbolTypeDialog dialog(symbolType, symbolFieldIds());
    return dialog.show();
}

void BlockLayoutDialog::updateStyleButtonSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_styleList->HasSelection());
}

void BlockLayoutDialog::updateFieldButtonSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_fieldList->HasSelection());
}

void BlockLayoutDialog::updateRowTypeButtonSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_rowTypeList->HasSelection());
}

void BlockLayoutDialog::updateSymbolTypeButtonSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_symbolTypeList->HasSelection());
}

// Symbol types name the fields of the first row type, so there are none without a row type.
void BlockLayoutDialog::updateSymbolGroupSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, !m_rowTypes.empty());
}

DialogState BlockLayoutDialog::onOk(StylerEvent* /*event*/) {
    const std::string id = m_blockId->ItemValue();
    if (id.empty()) {
        return KivNX::UI::refuse(*m_blockId, KivNX::UI::kValidationError,
                                 "Block ID must not be empty.");
    }
    // Only a layout that is not in a document yet is checked: an edited layout may take the ID
    // of another one.
    if (!m_existingLayout && QorBorder::DefDocumentManager().getBlockLayout(id)) {
        return KivNX::UI::refuse(*m_blockId, KivNX::UI::kDuplicateError,
                                 "A block with ID was found. Block ID must be unique.");
    }

    writeControls();
    return DialogStateExitDialog;
}

void BlockLayoutDialog::writeControls() {
    QorBorder::BlockLayout& layout = *m_layout;
    layout.id = m_blockId->ItemValue();
    layout.description = m_description->ItemValue();
    layout.category = m_category->ItemValue();
    layout.dialogFileName = m_dialogFileName->ItemValue();
    layout.units = m_units->ItemValue() + 1;
    layout.layer = m_layer->ItemValue();
    layout.editMethod = m_editMethod->ItemValue();
    layout.delegateLibrary = m_delegateLibrary->ItemValue();
    layout.setStyleDelegate = m_setStyleDelegate->ItemValue();
    layout.editFieldsDelegate = m_editFieldsDelegate->ItemValue();
    layout.requiredBlockOnly = m_requiredBlockOnly->ItemValue();
    layout.repeating = m_repeating->ItemValue();
    layout.repeatSpacing = m_repeatSpacing->ItemValue();
    layout.columnForRowNumber = m_columnForRowNumber->ItemValue();
    layout.sbfBase = m_sbfBase->ItemValue();
    layout.sbfFileName = m_sbfFileName->ItemValue();
    layout.flip = m_flip->ItemValue();
    layout.angle = m_angle->ItemValue();
    layout.borderTransition = m_borderTransition->ItemValue();
    layout.getTable().rowsCreated = m_rowsCreated->ItemValue();
    layout.allowOverride = m_allowOverride->ItemValue();
    layout.maxHeightMargin = m_maxHeightMargin->ItemValue();
}

} // namespace QorBorderConf
