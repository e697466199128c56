#include "block/symbol_type_dialog.h"

#include "block/add_menu.h"
#include "block/symbol_type_dialog_names.h"
#include "model/symbol_type.h"
#include "ui/dialog_binder.h"
#include "ui/message_dialogs.h"
#include "ui/option_menu.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"
#include "ui/string_item.h"

#include <cassert>
#include <utility>

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace Names = QorBorderConf::SymbolTypeDialogNames;

namespace QorBorderConf {

namespace {

constexpr int kIdSymbol = 0;

} // namespace

SymbolTypeDialog::SymbolTypeDialog(const boost::shared_ptr<QorBorder::SymbolType>& symbolType,
                                   const std::vector<std::string>& fieldIds)
    : NXDialogBase(Names::kResourceFile, Names::kDialogName), m_symbolType(symbolType),
      m_fieldIds(fieldIds) {}

void SymbolTypeDialog::initializeDialog() {
    using Self = SymbolTypeDialog;
    KivNX::UI::DialogBinder bind(*this, *this);
    bind.onConstruct(&Self::onConstruct);
    bind.onOkay(&Self::onOk);

    m_dialogText = bind.control<KivNX::UI::StringItem>(Names::DIALOG_TEXT);
    m_type = bind.control<KivNX::UI::OptionMenu>(Names::TYPE);
    bind.onActivate(*m_type, &Self::onTypeActivated, OpensDialog::No);
    m_layer = bind.control<IntegerItem>(Names::LAYER);
    m_color = bind.control<ColorTool>(Names::COLOR);
    m_fontName = bind.control<KivNX::UI::StringItem>(Names::FONTNAME);
    m_symbolSize = bind.control<RealItem>(Names::SYMBOLSIZE);
    m_textSize = bind.control<RealItem>(Names::TEXTSIZE);
    m_textAspect = bind.control<RealItem>(Names::TEXTASPECT);
    m_line1Scale = bind.control<RealItem>(Names::LINE1_SCALE);
    m_line2Scale = bind.control<RealItem>(Names::LINE2_SCALE);
    m_customSymbolName = bind.control<KivNX::UI::StringItem>(Names::CUSTOMSYMBOLNAME);
    m_idSymbolGroup = bind.control<GroupBox>(Names::IDSYMBOL_GROUP);
    m_customSymbolGroup = bind.control<GroupBox>(Names::CUSTOMSYMBOL_GROUP);
    m_line2FieldsGroup = bind.control<GroupBox>(Names::LINE2FIELDS_GROUP);

    m_line1.list = bind.control<KivNX::UI::SingleSelectList>(Names::LINE1FIELDS_LIST);
    m_line2.list = bind.control<KivNX::UI::SingleSelectList>(Names::LINE2FIELDS_LIST);
    m_line1.toAdd = bind.control<KivNX::UI::OptionMenu>(Names::LINE1FIELDS_TO_ADD);
    m_line2.toAdd = bind.control<KivNX::UI::OptionMenu>(Names::LINE2FIELDS_TO_ADD);
    for (LineControls* line : {&m_line1, &m_line2}) {
        bind.onActivate(*line->list, &Self::onSelectionActivated, OpensDialog::No);
        bind.onActivate(*line->toAdd, &Self::onSelectionActivated, OpensDialog::No);
    }

    bindLineButtons<&Self::m_line1>(bind, {Names::ADD_LINE1FIELD, Names::MOVEUP_LINE1FIELD,
                                           Names::MOVEDOWN_LINE1FIELD, Names::DELETE_LINE1FIELD});
    bindLineButtons<&Self::m_line2>(bind, {Names::ADD_LINE2FIELD, Names::MOVEUP_LINE2FIELD,
                                           Names::MOVEDOWN_LINE2FIELD, Names::DELETE_LINE2FIELD});
}

template <SymbolTypeDialog::Line line>
void SymbolTypeDialog::bindLineButtons(KivNX::UI::DialogBinder<SymbolTypeDialog>& bind,
                                       const LineButtonNames& names) {
    using Self = SymbolTypeDialog;
    LineControls& controls = this->*line;
    controls.add = bind.control<PushButton>(names.add);
    bind.onActivate(*controls.add, &Self::onAddFieldActivated<line>, OpensDialog::No);
    bind.update(*controls.add, &Self::updateAddFieldSensitivity<line>);
    controls.moveUp = bind.control<PushButton>(names.moveUp);
    bind.onActivate(*controls.moveUp, &Self::onMoveUpFieldActivated<line>, OpensDialog::No);
    bind.update(*controls.moveUp, &Self::updateMoveUpFieldSensitivity<line>);
    controls.moveDown = bind.control<PushButton>(names.moveDown);
    bind.onActivate(*controls.moveDown, &Self::onMoveDownFieldActivated<line>, OpensDialog::No);
    bind.update(*controls.moveDown, &Self::updateMoveDownFieldSensitivity<line>);
    controls.remove = bind.control<PushButton>(names.remove);
    bind.onActivate(*controls.remove, &Self::onDeleteFieldActivated<line>, OpensDialog::No);
    bind.update(*controls.remove, &Self::updateDeleteFieldSensitivity<line>);
}

DialogState SymbolTypeDialog::onConstruct(StylerEvent* /*event*/) {
    assert(m_dialogText && m_type && m_line1.list && m_line2.list);
    const QorBorder::SymbolType& symbol = *m_symbolType;
    m_dialogText->SetItemValue(symbol.dialogText);
    m_type->SetItemValue(static_cast<int>(symbol.type));
    m_color->SetItemValue(symbol.color);
    m_layer->SetItemValue(symbol.layer);
    m_fontName->SetItemValue(symbol.fontName);
    m_symbolSize->SetItemValue(symbol.symbolSize);
    m_textSize->SetItemValue(symbol.textSize);
    m_textAspect->SetItemValue(symbol.textAspect);
    m_line1Scale->SetItemValue(symbol.line1Scale);
    m_line2Scale->SetItemValue(symbol.line2Scale);
    m_customSymbolName->SetItemValue(symbol.customSymbolName);
    m_line1.list->SetListItems(symbol.line1FieldIds);
    m_line2.list->SetListItems(symbol.line2FieldIds);
    rebuildAddMenu(m_line1);
    rebuildAddMenu(m_line2);
    applyType();
    return DialogStateContinueDialog;
}

DialogState SymbolTypeDialog::onOk(StylerEvent* /*event*/) {
    if (m_dialogText->ItemValue().empty()) {
        return KivNX::UI::refuse(*m_dialogText, KivNX::UI::kValidationError,
                                 "Dialog text must not be empty.");
    }

    // The values of the hidden group are written too.
    QorBorder::SymbolType& symbol = *m_symbolType;
    symbol.dialogText = m_dialogText->ItemValue();
    symbol.type = m_type->ItemValue();
    symbol.color = m_color->ItemValue();
    symbol.layer = m_layer->ItemValue();
    symbol.line1FieldIds = m_line1.list->ListItems();
    symbol.line2FieldIds = m_line2.list->ListItems();
    symbol.fontName = m_fontName->ItemValue();
    symbol.symbolSize = m_symbolSize->ItemValue();
    symbol.textSize = m_textSize->ItemValue();
    symbol.textAspect = m_textAspect->ItemValue();
    symbol.line1Scale = m_line1Scale->ItemValue();
    symbol.line2Scale = m_line2Scale->ItemValue();
    symbol.customSymbolName = m_customSymbolName->ItemValue();
    return DialogStateExitDialog;
}

DialogState SymbolTypeDialog::onTypeActivated(StylerEvent* /*event*/) {
    applyType();
    return DialogStateContinueDialog;
}

DialogState SymbolTypeDialog::onSelectionActivated(StylerEvent* /*event*/) {
    return DialogStateContinueDialog;
}

template <SymbolTypeDialog::Line line>
DialogState SymbolTypeDialog::onAddFieldActivated(StylerEvent* /*event*/) {
    addField(this->*line);
    return DialogStateContinueDialog;
}

template <SymbolTypeDialog::Line line>
DialogState SymbolTypeDialog::onMoveUpFieldActivated(StylerEvent* /*event*/) {
    moveField(this->*line, -1);
    return DialogStateContinueDialog;
}

template <SymbolTypeDialog::Line line>
DialogState SymbolTypeDialog::onMoveDownFieldActivated(StylerEvent* /*event*/) {
    moveField(this->*line, 1);
    return DialogStateContinueDialog;
}

template <SymbolTypeDialog::Line line>
DialogState SymbolTypeDialog::onDeleteFieldActivated(StylerEvent* /*event*/) {
    deleteField(this->*line);
    return DialogStateContinueDialog;
}

template <SymbolTypeDialog::Line line>
void SymbolTypeDialog::updateAddFieldSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, canAdd(this->*line));
}

// The move-up rule reads the selection of the menu of addable fields, not of the list: that is
// the rule the dialog has always had, kept as it is.
template <SymbolTypeDialog::Line line>
void SymbolTypeDialog::updateMoveUpFieldSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, (this->*line).toAdd->ItemValue() >= 1);
}

template <SymbolTypeDialog::Line line>
void SymbolTypeDialog::updateMoveDownFieldSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, canMoveDown(this->*line));
}

template <SymbolTypeDialog::Line line>
void SymbolTypeDialog::updateDeleteFieldSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, (this->*line).list->HasSelection());
}

void SymbolTypeDialog::applyType() {
    const bool idSymbol = m_type->ItemValue() == kIdSymbol;
    m_idSymbolGroup->SetVisibility(idSymbol);
    m_line2FieldsGroup->SetVisibility(idSymbol);
    m_customSymbolGroup->SetVisibility(!idSymbol);
}

void SymbolTypeDialog::rebuildAddMenu(LineControls& line) {
    line.toAdd->SetItems(AddMenu::entries(m_fieldIds, line.list->ListItems()));
}

void SymbolTypeDialog::addField(LineControls& line) {
    line.list->Append(line.toAdd->ItemValueString());
    rebuildAddMenu(line);
}

void SymbolTypeDialog::moveField(LineControls& line, int step) {
    const int from = line.list->SelectedIndexValue();
    std::vector<std::string> items = line.list->ListItems();
    const int to = from + step;
    if (from < 0 || to < 0 || to >= static_cast<int>(items.size())) {
        return; // the move-up rule lets the button be pressed with nothing to move
    }
    std::swap(items[static_cast<std::size_t>(from)], items[static_cast<std::size_t>(to)]);
    line.list->SetListItems(items);
    line.list->SetSelected(to);
}

void SymbolTypeDialog::deleteField(LineControls& line) {
    const int selected = line.list->SelectedIndexValue();
    std::vector<std::string> items = line.list->ListItems();
    if (selected < 0 || selected >= static_cast<int>(items.size())) {
        return;
    }
    items.erase(items.begin() + selected);
    line.list->SetListItems(items);
    rebuildAddMenu(line);
}

bool SymbolTypeDialog::canAdd(LineControls& line) {
    return AddMenu::offersAnId(line.toAdd->Items());
}

bool SymbolTypeDialog::canMoveDown(LineControls& line) {
    return line.list->SelectedIndexValue() < static_cast<int>(line.list->ListItems().size()) - 1;
}

} // namespace QorBorderConf
