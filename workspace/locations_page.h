#pragma once

#include "workspace/page_host.h"

#include <NXOpen/UIStyler_PushButton.hxx>
#include <NXOpen/UIStyler_StylerEvent.hxx>

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace QorBorder {
class BlockLocation;
}
namespace KivNX {
namespace UI {
class NXDialogBase;
class OptionMenu;
class SingleSelectList;
} // namespace UI
} // namespace KivNX

namespace QorBorderConf {

/// The main dialog's page of block locations, one block layout at a time. New, edit and copy
/// open the block location dialog.
class LocationsPage {
public:
    explicit LocationsPage(PageHost& host) : m_host(host) {}

    void bindControls(KivNX::UI::NXDialogBase& dialog);
    /// Offers the IDs of every known block layout in "BLOCK_FILTER"; with none known, the menu
    /// keeps what it had.
    void refreshFilter();
    /// Rebuilds the list from the active document's locations of the filter's block.
    void refreshList();

    /// The row text of a location: "L1(Style ID: Any Style)".
    static std::string rowText(const QorBorder::BlockLocation& location);

    /// The block ID the filter shows.
    std::string filterBlockId() const;
    const boost::shared_ptr<KivNX::UI::SingleSelectList>& list() const { return m_list; }

private:
    using DialogState = NXOpen::UIStyler::DialogState;
    using StylerEvent = NXOpen::UIStyler::StylerEvent;
    using StylerItem = NXOpen::UIStyler::StylerItem;

    DialogState onBlockFilterActivated(StylerEvent* event);
    DialogState onLocationListActivated(StylerEvent* event);
    DialogState onNewLocationActivated(StylerEvent* event);
    DialogState onEditLocationActivated(StylerEvent* event);
    DialogState onCopyLocationActivated(StylerEvent* event);
    DialogState onDeleteLocationActivated(StylerEvent* event);
    DialogState onMoveLocationUpActivated(StylerEvent* event);
    DialogState onMoveLocationDownActivated(StylerEvent* event);
    void updateListSensitivity(StylerItem* item);
    void updateNewLocationSensitivity(StylerItem* item);
    /// Edit, copy and delete: they act on the selected location.
    void updateSelectedLocationSensitivity(StylerItem* item);
    void updateMoveUpSensitivity(StylerItem* item);
    void updateMoveDownSensitivity(StylerItem* item);

    /// Exchanges the values of the locations at rows `a` and `b`; both stay where they are in
    /// the document, so their order changes.
    void swapLocations(int a, int b);
    /// Shows the block location dialog on a location that is not in the document yet and adds
    /// it at the end of its block's list on OK.
    void addThroughDialog(const boost::shared_ptr<QorBorder::BlockLocation>& location);
    /// The entries of "BLOCK_FILTER", read from the menu once and then kept with it: the update
    /// functions ask for the filter's block after every event, and the menu holds every block
    /// of every open document.
    const std::vector<std::string>& filterEntries() const;

    PageHost& m_host;
    /// The locations shown, row i being element i.
    std::vector<boost::shared_ptr<const QorBorder::BlockLocation>> m_rows;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_blockFilter;
    mutable std::vector<std::string> m_filterEntries;
    mutable bool m_filterEntriesRead = false;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_list;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_newLocation;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_editLocation;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_copyLocation;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_deleteLocation;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_moveUp;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_moveDown;
};

} // namespace QorBorderConf
