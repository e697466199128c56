#pragma once

#include "model/definition_document.h"
#include "ui/dialog_binder.h"
#include "workspace/file_select_dialog.h"
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
    static constexpr boost::shared_ptr<Layout> (QorBorder::DefinitionDocument::*getLayout)(
        const std::string&) = &QorBorder::DefinitionDocument::getBorderLayout;
    static constexpr auto addLayout = &QorBorder::DefinitionDocument::addBorderLayout;
    static constexpr auto deleteLayout = &QorBorder::DefinitionDocument::deleteBorderLayout;

    /// Shows the border layout dialog on `layout`; returns its response (DialogResponseOk for OK).
    static int showDialog(const boost::shared_ptr<Layout>& layout, bool existingLayout);
    static constexpr int kCopyFromMode = FileSelectDialog::CopyBorderMode;
    static constexpr auto chosenLayout = &FileSelectDialog::selectedBorderLayout;
    // Copy does open the dialog; its handler is registered as one that does not, as the program
    // has always had it.
    static constexpr KivNX::UI::OpensDialog kCopyOpensDialog = KivNX::UI::OpensDialog::No;
    // Copy from another document shows the dialog twice on purpose: only the second OK adds.
    static constexpr bool kCopyFromShowsDialogTwice = true;
    static void layoutsChanged(PageHost& /*host*/) {}
};

/// The main dialog's page of border layouts.
using BordersPage = LayoutListPage<BorderPageTraits>;

} // namespace QorBorderConf
