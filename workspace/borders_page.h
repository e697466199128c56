#pragma once

#include <NXOpen/UIStyler_PushButton.hxx>
#include <NXOpen/UIStyler_StylerEvent.hxx>

#include <boost/shared_ptr.hpp>

#include <vector>

namespace QorBorder {
class BorderLayout;
}
namespace KivNX {
namespace UI {
class SingleSelectList;
}
} // namespace KivNX

namespace QorBorderConf {

class MainDialog;

/// The main dialog's page of border layouts. Editing a border needs the border layout dialog,
/// which this program does not have yet: its buttons stay insensitive until it does.
class BordersPage {
public:
    explicit BordersPage(MainDialog& mainDialog) : m_main(mainDialog) {}

    void bindControls();
    /// Rebuilds the list and the row vector from the active document.
    void refreshList();

    /// The layouts shown, row i being element i.
    const std::vector<boost::shared_ptr<const QorBorder::BorderLayout>>& rows() const {
        return m_rows;
    }
    const boost::shared_ptr<KivNX::UI::SingleSelectList>& list() const { return m_list; }

private:
    using DialogState = NXOpen::UIStyler::DialogState;
    using StylerEvent = NXOpen::UIStyler::StylerEvent;
    using StylerItem = NXOpen::UIStyler::StylerItem;

    DialogState onBorderListActivated(StylerEvent* event);
    DialogState onDeleteBorderActivated(StylerEvent* event);
    void updateListSensitivity(StylerItem* item);
    void updateDeleteBorderSensitivity(StylerItem* item);

    MainDialog& m_main;
    std::vector<boost::shared_ptr<const QorBorder::BorderLayout>> m_rows;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_list;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_newBorder;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_editBorder;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_copyBorder;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_copyBorderFrom;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_deleteBorder;
};

} // namespace QorBorderConf
