#pragma once

#include "workspace/page_host.h"

#include <NXOpen/UIStyler_PushButton.hxx>
#include <NXOpen/UIStyler_StylerEvent.hxx>

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace KivNX {
namespace UI {
class NXDialogBase;
class SingleSelectList;
} // namespace UI
} // namespace KivNX

namespace QorBorderConf {

/// The control names of a layout page, in the order they are bound.
struct LayoutPageNames {
    const char* list;
    const char* newButton;
    const char* editButton;
    const char* copyButton;
    const char* copyFromButton;
    const char* deleteButton;
};

/// The borders page and the blocks page: the list of the active document's layouts, one row
/// per layout ID in the document's order, clearing the other pages' selections; new, edit, copy,
/// copy from another document through the layout's dialog; deleting the selected layout at once.
/// What differs between the two is in `Traits` (borders_page.h, blocks_page.h):
///
/// - `Layout`, `kNames`: the layout class and the page's control names;
/// - `documentRows`, `getLayout`, `addLayout`, `deleteLayout`: the document's members;
/// - `static int showDialog(const boost::shared_ptr<Layout>&, bool existingLayout)`: shows the
///   layout's dialog, returns its response (DialogResponseOk for OK);
/// - `kCopyFromMode`, `chosenLayout`: the file select dialog's mode and its chosen layout;
/// - `kCopyOpensDialog`: the flag the copy button's handler is registered with;
/// - `kCopyFromShowsDialogTwice`: copy from another document shows the dialog twice and adds
///   the copy only when the second showing ends with OK;
/// - `layoutsChanged(host)`: what else must follow an added, edited or deleted layout.
template <class Traits>
class LayoutListPage {
public:
    using Layout = typename Traits::Layout;
    using Rows = std::vector<boost::shared_ptr<const Layout>>;

    explicit LayoutListPage(PageHost& host) : m_host(host) {}

    void bindControls(KivNX::UI::NXDialogBase& dialog);
    /// Rebuilds the list and the row vector from the active document.
    void refreshList();

    /// The layouts shown, row i being element i.
    const Rows& rows() const { return m_rows; }
    const boost::shared_ptr<KivNX::UI::SingleSelectList>& list() const { return m_list; }

private:
    using DialogState = NXOpen::UIStyler::DialogState;
    using StylerEvent = NXOpen::UIStyler::StylerEvent;
    using StylerItem = NXOpen::UIStyler::StylerItem;

    DialogState onListActivated(StylerEvent* event);
    DialogState onNewActivated(StylerEvent* event);
    DialogState onEditActivated(StylerEvent* event);
    DialogState onCopyActivated(StylerEvent* event);
    DialogState onCopyFromActivated(StylerEvent* event);
    DialogState copyFromDocument();
    DialogState onDeleteActivated(StylerEvent* event);
    void updateListSensitivity(StylerItem* item);
    void updateSelectionSensitivity(StylerItem* item);

    /// The layout of the selected row as the document holds it; null without a selection.
    boost::shared_ptr<Layout> selectedLayout() const;
    /// Shows the layout's dialog; on OK marks the active document modified. Returns the response.
    int openDialog(const boost::shared_ptr<Layout>& layout, bool existingLayout);
    /// Adds a layout that its dialog accepted and shows it.
    void addAccepted(const boost::shared_ptr<Layout>& layout);

    PageHost& m_host;
    Rows m_rows;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_list;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_newButton;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_editButton;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_copyButton;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_copyFromButton;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_deleteButton;
};

} // namespace QorBorderConf
