#include "workspace/layout_list_page.h"

#include "model/definition_document.h"
#include "ui/dialog_binder.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"
#include "workspace/blocks_page.h"
#include "workspace/borders_page.h"
#include "workspace/file_select_dialog.h"

#include <boost/make_shared.hpp>

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
    bind.onActivate(*m_newButton, &LayoutListPage::onNewActivated, OpensDialog::Yes);
    bind.update(*m_newButton, &LayoutListPage::updateListSensitivity);
    m_editButton = bind.template control<PushButton>(names.editButton);
    bind.onActivate(*m_editButton, &LayoutListPage::onEditActivated, OpensDialog::Yes);
    bind.update(*m_editButton, &LayoutListPage::updateSelectionSensitivity);
    m_copyButton = bind.template control<PushButton>(names.copyButton);
    bind.onActivate(*m_copyButton, &LayoutListPage::onCopyActivated, Traits::kCopyOpensDialog);
    bind.update(*m_copyButton, &LayoutListPage::updateSelectionSensitivity);
    m_copyFromButton = bind.template control<PushButton>(names.copyFromButton);
    bind.onActivate(*m_copyFromButton, &LayoutListPage::onCopyFromActivated, OpensDialog::Yes);
    bind.update(*m_copyFromButton, &LayoutListPage::updateListSensitivity);
    m_deleteButton = bind.template control<PushButton>(names.deleteButton);
    bind.onActivate(*m_deleteButton, &LayoutListPage::onDeleteActivated, OpensDialog::No);
    bind.update(*m_deleteButton, &LayoutListPage::updateSelectionSensitivity);
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
boost::shared_ptr<typename Traits::Layout> LayoutListPage<Traits>::selectedLayout() const {
    const auto& document = m_host.activeDocument();
    const int row = m_list->SelectedIndexValue();
    if (!document || row < 0) {
        return {};
    }
    // The rows may hold layouts the document has replaced since: look the layout up again.
    return (document.get()->*Traits::getLayout)(m_rows.at(static_cast<std::size_t>(row))->id);
}

template <class Traits>
int LayoutListPage<Traits>::openDialog(const boost::shared_ptr<Layout>& layout,
                                       bool existingLayout) {
    const int response = Traits::showDialog(layout, existingLayout);
    if (response == DialogResponseOk) {
        m_host.markActiveDocumentModified();
    }
    return response;
}

template <class Traits>
void LayoutListPage<Traits>::addAccepted(const boost::shared_ptr<Layout>& layout) {
    (m_host.activeDocument().get()->*Traits::addLayout)(layout);
    refreshList();
    Traits::layoutsChanged(m_host);
}

template <class Traits>
DialogState LayoutListPage<Traits>::onNewActivated(StylerEvent* /*event*/) {
    if (!m_host.activeDocument()) {
        return DialogStateContinueDialog;
    }
    const auto layout = boost::make_shared<Layout>();
    if (openDialog(layout, false) == DialogResponseOk) {
        addAccepted(layout);
    }
    return DialogStateContinueDialog;
}

template <class Traits>
DialogState LayoutListPage<Traits>::onEditActivated(StylerEvent* /*event*/) {
    const auto layout = selectedLayout();
    if (!layout) {
        return DialogStateContinueDialog;
    }
    // Edited in place: whatever the response, the list shows the layout as it is now.
    openDialog(layout, true);
    refreshList();
    Traits::layoutsChanged(m_host);
    return DialogStateContinueDialog;
}

template <class Traits>
DialogState LayoutListPage<Traits>::onCopyActivated(StylerEvent* /*event*/) {
    const auto source = selectedLayout();
    if (!source) {
        return DialogStateContinueDialog;
    }
    // The copy keeps the source's ID; the dialog refuses it as a duplicate until it is changed.
    const auto copy = boost::make_shared<Layout>(*source);
    if (openDialog(copy, false) == DialogResponseOk) {
        addAccepted(copy);
    }
    return DialogStateContinueDialog;
}

template <class Traits>
DialogState LayoutListPage<Traits>::onCopyFromActivated(StylerEvent* /*event*/) {
    // Choosing the source opens it: a source that cannot be read is reported, not fatal.
    return m_host.runFileAction([this] { return copyFromDocument(); });
}

template <class Traits>
DialogState LayoutListPage<Traits>::copyFromDocument() {
    const auto& document = m_host.activeDocument();
    if (!document) {
        return DialogStateContinueDialog;
    }
    boost::shared_ptr<Layout> copy;
    {
        FileSelectDialog fileSelect(document->filename(), Traits::kCopyFromMode);
        if (!fileSelect.chooseFile()) {
            return DialogStateContinueDialog;
        }
        const auto& chosen = (fileSelect.*Traits::chosenLayout)();
        // The dialog's OK needs a chosen layout; without one there would be nothing to copy.
        if (!chosen) {
            return DialogStateContinueDialog;
        }
        copy = boost::make_shared<Layout>(*chosen);
    }
    if constexpr (Traits::kCopyFromShowsDialogTwice) {
        // The first showing's response is not looked at; only the second one adds the copy.
        openDialog(copy, false);
    }
    if (openDialog(copy, false) == DialogResponseOk) {
        addAccepted(copy);
    }
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
void LayoutListPage<Traits>::updateSelectionSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_host.activeDocument() && m_list->HasSelection());
}

template class LayoutListPage<BorderPageTraits>;
template class LayoutListPage<BlockPageTraits>;

} // namespace QorBorderConf
