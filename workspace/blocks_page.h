#pragma once

#include <NXOpen/UIStyler_PushButton.hxx>
#include <NXOpen/UIStyler_StylerEvent.hxx>

#include <boost/shared_ptr.hpp>

#include <vector>

namespace QorBorder {
class BlockLayout;
}
namespace KivNX {
namespace UI {
class SingleSelectList;
}
} // namespace KivNX

namespace QorBorderConf {

class MainDialog;

/// The main dialog's page of block layouts. Editing a block needs the block layout dialog,
/// which this program does not have yet: its buttons stay insensitive until it does.
class BlocksPage {
public:
    explicit BlocksPage(MainDialog& mainDialog) : m_main(mainDialog) {}

    void bindControls();
    /// Rebuilds the list and the row vector from the active document.
    void refreshList();

    /// The layouts shown, row i being element i.
    const std::vector<boost::shared_ptr<const QorBorder::BlockLayout>>& rows() const {
        return m_rows;
    }
    const boost::shared_ptr<KivNX::UI::SingleSelectList>& list() const { return m_list; }

private:
    using DialogState = NXOpen::UIStyler::DialogState;
    using StylerEvent = NXOpen::UIStyler::StylerEvent;
    using StylerItem = NXOpen::UIStyler::StylerItem;

    DialogState onBlockListActivated(StylerEvent* event);
    DialogState onDeleteBlockActivated(StylerEvent* event);
    void updateListSensitivity(StylerItem* item);
    void updateDeleteBlockSensitivity(StylerItem* item);

    MainDialog& m_main;
    std::vector<boost::shared_ptr<const QorBorder::BlockLayout>> m_rows;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_list;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_newBlock;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_editBlock;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_copyBlock;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_copyBlockFrom;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_deleteBlock;
};

} // namespace QorBorderConf
