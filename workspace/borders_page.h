#pragma once

#include "model/definition_document.h"
#include "workspace/layout_list_page.h"
#include "workspace/main_dialog_names.h"

namespace QorBorderConf {

/// What the borders page does with border layouts; no other page shows them.
struct BorderPageTraits {
    using Layout = QorBorder::BorderLayout;
    static constexpr LayoutPageNames kNames = {
        MainDialogNames::BORDERLIST,     MainDialogNames::NEWBORDER,
        MainDialogNames::EDITBORDER,     MainDialogNames::COPYBORDER,
        MainDialogNames::COPYBORDERFROM, MainDialogNames::DELETEBORDER};
    static constexpr auto documentRows = &QorBorder::DefinitionDocument::borderLayoutTypes;
    static constexpr auto deleteLayout = &QorBorder::DefinitionDocument::deleteBorderLayout;
    static void layoutsChanged(PageHost& /*host*/) {}
};

/// The main dialog's page of border layouts.
using BordersPage = LayoutListPage<BorderPageTraits>;

} // namespace QorBorderConf
