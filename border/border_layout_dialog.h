#pragma once

#include "ui/nx_dialog_base.h"

#include <boost/shared_ptr.hpp>

namespace NXOpen {
class BasePart;
}

namespace QorBorder {
class BorderLayout;
}

namespace KivNX {
namespace UI {
class MultiTextBox;
class OptionMenu;
class SingleSelectList;
class StringItem;
} // namespace UI
} // namespace KivNX

namespace QorBorderConf {

/// Edits one border layout: on its main page the ID, texts, required blocks and second
/// languages; on its frame pages units and layer, the frame corners, the zone numbering and the
/// drawing sizes. Everything but the drawing sizes is written to the layout only on OK; drawing
/// size changes go to the layout at once.
///
/// The frame pages are members of this class too, each in its own source file:
/// border_frame_sizes_page.cpp (units, layer, drawing sizes, the frame template),
/// border_corners_page.cpp and border_zones_page.cpp.
class BorderLayoutDialog : public KivNX::UI::NXDialogBase {
public:
    /// Works on `layout` itself. `existingLayout` is true when the layout already belongs to a
    /// document (its ID is then not checked for duplicates).
    BorderLayoutDialog(const boost::shared_ptr<QorBorder::BorderLayout>& layout,
                       bool existingLayout);
    /// Closes the frame template opened by "OPEN_TEMPLATE", if any, and makes the display part
    /// that was current before it the display part again.
    ~BorderLayoutDialog();

private:
    void initializeDialog() override;

    // The main page.
    DialogState onConstruct(StylerEvent* event);
    DialogState onOk(StylerEvent* event);
    DialogState onBlockListActivated(StylerEvent* event);
    DialogState onMakeCoreActivated(StylerEvent* event);
    DialogState onMakeSheet1Activated(StylerEvent* event);
    DialogState onRemoveCoreActivated(StylerEvent* event);
    DialogState onRemoveSheet1Activated(StylerEvent* event);
    void updateMakeRequiredSensitivity(StylerItem* item);
    void updateRemoveCoreSensitivity(StylerItem* item);
    void updateRemoveSheet1Sensitivity(StylerItem* item);
    void fillAvailableBlocks();

    // Frame sizes, units and layer (border_frame_sizes_page.cpp).
    void bindFrameSizesPage();
    void fillFrameSizesPage();
    void commitFrameSizesPage();
    void fillFrameSizeList();
    DialogState onFrameSizesActivated(StylerEvent* event);
    DialogState onAddFrameSizeActivated(StylerEvent* event);
    DialogState onCopyFrameSizeActivated(StylerEvent* event);
    DialogState onEditFrameSizeActivated(StylerEvent* event);
    DialogState onCutFrameSizeActivated(StylerEvent* event);
    DialogState onOpenTemplateActivated(StylerEvent* event);
    void updateFrameSizeActionSensitivity(StylerItem* item);
    void updateOpenTemplateSensitivity(StylerItem* item);

    // Corner points (border_corners_page.cpp).
    void bindCornersPage();
    void fillCornersPage();
    void commitCornersPage();
    DialogState onPickBottomLeftActivated(StylerEvent* event);
    DialogState onPickTopRightActivated(StylerEvent* event);
    void updatePickCornerSensitivity(StylerItem* item);

    // Zones (border_zones_page.cpp).
    void bindZonesPage();
    void fillZonesPage();
    void commitZonesPage();

    boost::shared_ptr<QorBorder::BorderLayout> m_layout;
    bool m_existingLayout;
    /// The frame template part opened by "OPEN_TEMPLATE"; null until then.
    NXOpen::BasePart* m_template = nullptr;
    /// The display part that was current when the frame template was opened.
    NXOpen::BasePart* m_previousDisplay = nullptr;

    boost::shared_ptr<KivNX::UI::StringItem> m_id;
    boost::shared_ptr<KivNX::UI::StringItem> m_description;
    boost::shared_ptr<KivNX::UI::StringItem> m_category;
    boost::shared_ptr<KivNX::UI::MultiTextBox> m_secondLanguages;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_coreRequired;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_sheet1Required;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_availableBlocks;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_makeCore;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_makeSheet1;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_removeCore;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_removeSheet1;

    boost::shared_ptr<KivNX::UI::OptionMenu> m_units;
    boost::shared_ptr<NXOpen::UIStyler::IntegerItem> m_layer;
    boost::shared_ptr<NXOpen::UIStyler::RealItem> m_bottomLeftX;
    boost::shared_ptr<NXOpen::UIStyler::RealItem> m_bottomLeftY;
    boost::shared_ptr<NXOpen::UIStyler::RealItem> m_topRightX;
    boost::shared_ptr<NXOpen::UIStyler::RealItem> m_topRightY;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_pickBottomLeft;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_pickTopRight;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_horizontalZoneType;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_verticalZoneType;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_zoneStart;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_frameSizes;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_addFrameSize;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_copyFrameSize;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_editFrameSize;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_cutFrameSize;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_openTemplate;
};

} // namespace QorBorderConf
