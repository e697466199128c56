#include "workspace/layout_list_page.h"

#include "model/definition_document.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"
#include "workspace/main_dialog.h"

using namespace NXOpen::UIStyler;

namespace QorBorderConf {

template <class Layout>
void LayoutListPage<Layout>::bindControls() {
    m_list = m_main.template getControl<KivNX::UI::SingleSelectList>(m_names.list);
    m_list->AddActivateHandler(
        m_main.registerStylerCB(Base::makeFunctor(this, &LayoutListPage::onListActivated)), false);
    m_main.addUpdateHandler(m_list.get(),
                            Base::makeFunctor(this, &LayoutListPage::updateListSensitivity));
    m_newButton = m_main.template getControl<PushButton>(m_names.newButton);
    m_editButton = m_main.template getControl<PushButton>(m_names.editButton);
    m_copyButton = m_main.template getControl<PushButton>(m_names.copyButton);
    m_copyFromButton = m_main.template getControl<PushButton>(m_names.copyFromButton);
    m_deleteButton = m_main.template getControl<PushButton>(m_names.deleteButton);
    m_deleteButton->AddActivateHandler(
        m_main.registerStylerCB(Base::makeFunctor(this, &LayoutListPage::onDeleteActivated)),
        false);
    m_main.addUpdateHandler(m_deleteButton.get(),
                            Base::makeFunctor(this, &LayoutListPage::updateDeleteSensitivity));
}

template <class Layout>
void LayoutListPage<Layout>::refreshList() {
    m_list->ClearList();
    m_rows.clear();
    if (!m_main.m_activeDocument) {
        return;
    }
    m_rows = documentRows(*m_main.m_activeDocument);
    std::vector<std::string> ids;
    for (const auto& layout : m_rows) {
        ids.push_back(layout->id);
    }
    m_list->SetListItems(ids);
}

template <class Layout>
DialogState LayoutListPage<Layout>::onListActivated(StylerEvent* /*event*/) {
    m_main.deselectListsOtherThan(m_list.get());
    return DialogStateContinueDialog;
}

template <class Layout>
DialogState LayoutListPage<Layout>::onDeleteActivated(StylerEvent* /*event*/) {
    const int row = m_list->SelectedIndexValue();
    if (!m_main.m_activeDocument || row < 0) {
        return DialogStateContinueDialog;
    }
    deleteLayout(*m_main.m_activeDocument, m_rows.at(static_cast<std::size_t>(row))->id);
    refreshList();
    layoutDeleted();
    return DialogStateContinueDialog;
}

template <class Layout>
void LayoutListPage<Layout>::updateListSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_main.m_activeDocument != nullptr);
}

template <class Layout>
void LayoutListPage<Layout>::updateDeleteSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_main.m_activeDocument && m_list->HasSelection());
}

template class LayoutListPage<QorBorder::BorderLayout>;
template class LayoutListPage<QorBorder::BlockLayout>;

} // namespace QorBorderConf
