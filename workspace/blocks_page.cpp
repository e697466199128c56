#include "workspace/blocks_page.h"

#include "model/definition_document.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"
#include "workspace/main_dialog.h"
#include "workspace/main_dialog_names.h"

using namespace NXOpen::UIStyler;
namespace Names = QorBorderConf::MainDialogNames;

namespace QorBorderConf {

void BlocksPage::bindControls() {
    m_list = m_main.getControl<KivNX::UI::SingleSelectList>(Names::BLOCKLIST);
    m_list->AddActivateHandler(
        m_main.registerStylerCB(Base::makeFunctor(this, &BlocksPage::onBlockListActivated)), false);
    m_main.addUpdateHandler(m_list.get(),
                            Base::makeFunctor(this, &BlocksPage::updateListSensitivity));
    m_newBlock = m_main.getControl<PushButton>(Names::NEWBLOCK);
    m_editBlock = m_main.getControl<PushButton>(Names::EDITBLOCK);
    m_copyBlock = m_main.getControl<PushButton>(Names::COPYBLOCK);
    m_copyBlockFrom = m_main.getControl<PushButton>(Names::COPYBLOCKFROM);
    m_deleteBlock = m_main.getControl<PushButton>(Names::DELETEBLOCK);
    m_deleteBlock->AddActivateHandler(
        m_main.registerStylerCB(Base::makeFunctor(this, &BlocksPage::onDeleteBlockActivated)),
        false);
    m_main.addUpdateHandler(m_deleteBlock.get(),
                            Base::makeFunctor(this, &BlocksPage::updateDeleteBlockSensitivity));
}

void BlocksPage::refreshList() {
    m_list->ClearList();
    m_rows.clear();
    if (!m_main.m_activeDocument) {
        return;
    }
    m_rows = m_main.m_activeDocument->blockLayouts(QorBorder::AllUnits);
    std::vector<std::string> texts;
    for (const auto& layout : m_rows) {
        texts.push_back(layout->id);
    }
    m_list->SetListItems(texts);
}

DialogState BlocksPage::onBlockListActivated(StylerEvent* /*event*/) {
    m_main.deselectListsOtherThan(m_list.get());
    return DialogStateContinueDialog;
}

DialogState BlocksPage::onDeleteBlockActivated(StylerEvent* /*event*/) {
    const int row = m_list->SelectedIndexValue();
    if (!m_main.m_activeDocument || row < 0) {
        return DialogStateContinueDialog;
    }
    m_main.m_activeDocument->deleteBlockLayout(m_rows.at(static_cast<std::size_t>(row))->id);
    refreshList();
    m_main.m_locationsPage.refreshFilter();
    return DialogStateContinueDialog;
}

void BlocksPage::updateListSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_main.m_activeDocument != nullptr);
}

void BlocksPage::updateDeleteBlockSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_main.m_activeDocument && m_list->HasSelection());
}

} // namespace QorBorderConf
