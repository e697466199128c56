#include "workspace/blocks_page.h"

#include "model/definition_document.h"
#include "workspace/main_dialog.h"
#include "workspace/main_dialog_names.h"

namespace Names = QorBorderConf::MainDialogNames;

namespace QorBorderConf {

BlocksPage::BlocksPage(MainDialog& mainDialog)
    : LayoutListPage(mainDialog, {Names::BLOCKLIST, Names::NEWBLOCK, Names::EDITBLOCK,
                                  Names::COPYBLOCK, Names::COPYBLOCKFROM, Names::DELETEBLOCK}) {}

BlocksPage::Rows BlocksPage::documentRows(const QorBorder::DefinitionDocument& document) const {
    return document.blockLayouts(QorBorder::AllUnits);
}

void BlocksPage::deleteLayout(QorBorder::DefinitionDocument& document, const std::string& id) {
    document.deleteBlockLayout(id);
}

void BlocksPage::layoutDeleted() {
    m_main.m_locationsPage.refreshFilter();
}

} // namespace QorBorderConf
