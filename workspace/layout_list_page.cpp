#include "workspace/layout_list_page.h"

#include "model/definition_document.h"
#include "ui/dialog_binder.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"
#include "workspace/blocks_page.h"
#include "workspace/borders_page.h"

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;

namespace QorBorderConf {

template <class Traits>
void LayoutListPage<Traits>::bindControls(KivNX::UI::NXDialogBase& dialog) {
    KivNX::UI::DialogBinder bind(dialog, *this);
    const LayoutPageNames& names = Traits::kNames;
    m_list = bind.template control<KivNX::UI::SingleSelectList>(names.list);
    bind.onActivate(*m_list, &LayoutListPage::onListActivated, OpensDialog::No);
    bind.update(*m_list, &LayoutListPage::updateListSensitivity);
    m_newButton = bind.template control<PushButton>(names.newButton);
    m_editButton = bind.template control<PushButton>(names.editButton);
    m_copyButton = bind.template control<PushButton>(names.copyButton);
    m_copyFromButton = bind.template control<PushButton>(names.copyFromButton);
    m_deleteButton = bind.template control<PushButton>(names.deleteButton);
    bind.onActivate(*m_deleteButton, &LayoutListPage::onDeleteActivated, OpensDialog::No);
    bind.update(*m_deleteButton, &LayoutListPage::updateDeleteSensitivity);
}

template <class Traits>
void LayoutListPage<Traits>::refreshList() {
    m_list->ClearList();
    m_rows.clear();
    const auto& document = m_host.activeDocument();
    if (!document) {
        return;
    }
    m_rows = (document.get()->*Traits::documentRows)(QorBorder::AllUnits);
    std::vector<std::string> ids;
    for (const auto& layout : m_rows) {
        ids.push_back(layout->id);
    }
    m_list->SetListItems(ids);
}

template <class Traits>
DialogState LayoutListPage<Traits>::onListActivated(StylerEvent* /*event*/) {
    m_host.deselectListsOtherThan(m_list.get());
    return DialogStateContinueDialog;
}

template <class Traits>
DialogState LayoutListPage<Traits>::onDeleteActivated(StylerEvent* /*event*/) {
    const auto& document = m_host.activeDocument();
    const int row = m_list->SelectedIndexValue();
    if (!document || row < 0) {
        return DialogStateContinueDialog;
    }
    (document.get()->*Traits::deleteLayout)(m_rows.at(static_cast<std::size_t>(row))->id);
    refreshList();
    Traits::layoutsChanged(m_host);
    return DialogStateContinueDialog;
}

template <class Traits>
void LayoutListPage<Traits>::updateListSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_host.activeDocument() != nullptr);
}

template <class Traits>
void LayoutListPage<Traits>::updateDeleteSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_host.activeDocument() && m_list->HasSelection());
}

template class LayoutListPage<BorderPageTraits>;
template class LayoutListPage<BlockPageTraits>;

} // namespace QorBorderConf
