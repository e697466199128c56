#pragma once

#include "ui/nx_dialog_base.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace QorBorder {
class BlockLocation;
}
namespace KivNX {
namespace UI {
class OptionMenu;
class StringItem;
} // namespace UI
} // namespace KivNX

namespace QorBorderConf {

/// Edits one block location in place: its ID and dialog text, the block and style it places,
/// what it is placed relative to (the drawing or another block) and at which corners, its
/// offsets and the direction in which it grows. Nothing reaches the location before OK.
class BlockLocationDialog : public KivNX::UI::NXDialogBase {
public:
    /// The menu entry that stands for the empty style ID.
    static constexpr const char* kAnyStyle = "Any Style";
    /// The menu entry that stands for the empty associated block ID: the drawing itself.
    static constexpr const char* kDrawing = "Drawing";

    /// `editMode` is true when the location already belongs to a document; a new or copied one
    /// (false) is refused when a location with its block and ID exists in any open document.
    BlockLocationDialog(const boost::shared_ptr<QorBorder::BlockLocation>& location, bool editMode);

private:
    void initializeDialog() override;

    DialogState onConstruct(StylerEvent* event);
    DialogState onOk(StylerEvent* event);
    DialogState onBlockIdActivated(StylerEvent* event);

    /// The IDs of every block layout the document manager knows, in its order.
    static std::vector<std::string> blockIds();
    void writeControls();

    boost::shared_ptr<QorBorder::BlockLocation> m_location;
    bool m_editMode;

    boost::shared_ptr<KivNX::UI::StringItem> m_dialogText;
    boost::shared_ptr<KivNX::UI::StringItem> m_id;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_blockId;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_blockStyle;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_attachCorner;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_associateTo;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_associatedCorner;
    boost::shared_ptr<KivNX::UI::StringItem> m_offsetX;
    boost::shared_ptr<KivNX::UI::StringItem> m_offsetY;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_overflowDirection;
};

} // namespace QorBorderConf
