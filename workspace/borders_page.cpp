#include "workspace/borders_page.h"

#include "model/definition_document.h"
#include "workspace/main_dialog_names.h"

namespace Names = QorBorderConf::MainDialogNames;

namespace QorBorderConf {

BordersPage::BordersPage(MainDialog& mainDialog)
    : LayoutListPage(mainDialog, {Names::BORDERLIST, Names::NEWBORDER, Names::EDITBORDER,
                                  Names::COPYBORDER, Names::COPYBORDERFROM, Names::DELETEBORDER}) {}

BordersPage::Rows BordersPage::documentRows(const QorBorder::DefinitionDocument& document) const {
    return document.borderLayoutTypes(QorBorder::AllUnits);
}

void BordersPage::deleteLayout(QorBorder::DefinitionDocument& document, const std::string& id) {
    document.deleteBorderLayout(id);
}

} // namespace QorBorderConf
