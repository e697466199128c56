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
/// per layout ID in the document's order, clearing the other pages' selections, and deleting the
/// selected layout at once. What differs between the two is in `Traits` (borders_page.h,
/// blocks_page.h): the layout class, the page's control names, the document's list, delete and
/// what else must follow a change. New, edit, copy and copy from another document come with the
/// layout dialogs: each adds the dialog class, the getter, the adder and the file select mode to
/// its traits; until then those buttons stay insensitive.
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
    DialogState onDeleteActivated(StylerEvent* event);
    void updateListSensitivity(StylerItem* item);
    void updateDeleteSensitivity(StylerItem* item);

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
