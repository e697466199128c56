#pragma once

#include "model/definition_document.h"
#include "ui/dialog_binder.h"
#include "workspace/file_select_dialog.h"
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
    static constexpr boost::shared_ptr<Layout> (QorBorder::DefinitionDocument::*getLayout)(
        const std::string&) = &QorBorder::DefinitionDocument::getBlockLayout;
    static constexpr auto addLayout = &QorBorder::DefinitionDocument::addBlockLayout;
    static constexpr auto deleteLayout = &QorBorder::DefinitionDocument::deleteBlockLayout;

    /// Shows the block layout dialog on `layout`; returns its response (DialogResponseOk for OK).
    static int showDialog(const boost::shared_ptr<Layout>& layout, bool existingLayout);
    static constexpr int kCopyFromMode = FileSelectDialog::CopyBlockMode;
    static constexpr auto chosenLayout = &FileSelectDialog::selectedBlockLayout;
    static constexpr KivNX::UI::OpensDialog kCopyOpensDialog = KivNX::UI::OpensDialog::Yes;
    static constexpr bool kCopyFromShowsDialogTwice = false;
    static void layoutsChanged(PageHost& host) { host.blockLayoutsChanged(); }
};

/// The main dialog's page of block layouts.
using BlocksPage = LayoutListPage<BlockPageTraits>;

} // namespace QorBorderConf
