#pragma once

#include "model/definition_document.h"
#include "workspace/layout_list_page.h"
#include "workspace/main_dialog_names.h"

namespace QorBorderConf {

/// What the blocks page does with block layouts; the locations page offers them in its filter.
struct BlockPageTraits {
    using Layout = QorBorder::BlockLayout;
    static constexpr LayoutPageNames kNames = {
        MainDialogNames::BLOCKLIST, MainDialogNames::NEWBLOCK,      MainDialogNames::EDITBLOCK,
        MainDialogNames::COPYBLOCK, MainDialogNames::COPYBLOCKFROM, MainDialogNames::DELETEBLOCK};
    static constexpr auto documentRows = &QorBorder::DefinitionDocument::blockLayouts;
    static constexpr auto deleteLayout = &QorBorder::DefinitionDocument::deleteBlockLayout;
    static void layoutsChanged(PageHost& host) { host.blockLayoutsChanged(); }
};

/// The main dialog's page of block layouts.
using BlocksPage = LayoutListPage<BlockPageTraits>;

} // namespace QorBorderConf
