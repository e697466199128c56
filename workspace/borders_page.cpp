#include "workspace/borders_page.h"

#include "model/definition_document.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"
#include "workspace/main_dialog.h"
#include "workspace/main_dialog_names.h"

using namespace NXOpen::UIStyler;
namespace Names = QorBorderConf::MainDialogNames;

namespace QorBorderConf {

void BordersPage::bindControls() {
    m_list = m_main.getControl<KivNX::UI::SingleSelectList>(Names::BORDERLIST);
    m_list->AddActivateHandler(
        m_main.registerStylerCB(Base::makeFunctor(this, &BordersPage::onBorderListActivated)),
        false);
    m_main.addUpdateHandler(m_list.get(),
                            Base::makeFunctor(this, &BordersPage::updateListSensitivity));
    m_newBorder = m_main.getControl<PushButton>(Names::NEWBORDER);
    m_editBorder = m_main.getControl<PushButton>(Names::EDITBORDER);
    m_copyBorder = m_main.getControl<PushButton>(Names::COPYBORDER);
    m_copyBorderFrom = m_main.getControl<PushButton>(Names::COPYBORDERFROM);
    m_deleteBorder = m_main.getControl<PushButton>(Names::DELETEBORDER);
    m_deleteBorder->AddActivateHandler(
        m_main.registerStylerCB(Base::makeFunctor(this, &BordersPage::onDeleteBorderActivated)),
        false);
    m_main.addUpdateHandler(m_deleteBorder.get(),
                            Base::makeFunctor(this, &BordersPage::updateDeleteBorderSensitivity));
}

void BordersPage::refreshList() {
    m_list->ClearList();
    m_rows.clear();
    if (!m_main.m_activeDocument) {
        return;
    }
    m_rows = m_main.m_activeDocument->borderLayoutTypes(QorBorder::AllUnits);
    std::vector<std::string> texts;
    for (const auto& layout : m_rows) {
        texts.push_back(layout->id);
    }
    m_list->SetListItems(texts);
}

DialogState BordersPage::onBorderListActivated(StylerEvent* /*event*/) {
    m_main.deselectListsOtherThan(m_list.get());
    return DialogStateContinueDialog;
}

DialogState BordersPage::onDeleteBorderActivated(StylerEvent* /*event*/) {
    const int row = m_list->SelectedIndexValue();
    if (!m_main.m_activeDocument || row < 0) {
        return DialogStateContinueDialog;
    }
    m_main.m_activeDocument->deleteBorderLayout(m_rows.at(static_cast<std::size_t>(row))->id);
    refreshList();
    return DialogStateContinueDialog;
}

void BordersPage::updateListSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_main.m_activeDocument != nullptr);
}

void BordersPage::updateDeleteBorderSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_main.m_activeDocument && m_list->HasSelection());
}

} // namespace QorBorderConf
