#pragma once

#include "ui/nx_dialog_base.h"

#include <boost/shared_ptr.hpp>

#include <string>

namespace QorBorder {
class DrawingSize;
}

namespace KivNX {
namespace UI {
class StringItem;
}
} // namespace KivNX

namespace QorBorderConf {

/// Edits one drawing size of a border layout: its texts, its frame template part, the sheet
/// size (which it can read from the template) and the frame length and zone counts.
class DrawingSizeDialog : public KivNX::UI::NXDialogBase {
public:
    /// Edits `size` in place on OK; the caller keeps it alive until show() returns.
    explicit DrawingSizeDialog(QorBorder::DrawingSize& size);

private:
    void initializeDialog() override;

    DialogState onConstruct(StylerEvent* event);
    DialogState onOk(StylerEvent* event);
    DialogState onTemplateFileActivated(StylerEvent* event);
    DialogState onBrowseTemplateActivated(StylerEvent* event);
    DialogState onExtractDimsActivated(StylerEvent* event);
    DialogState onPickFrameLengthActivated(StylerEvent* event);
    void updateExtractDimsSensitivity(StylerItem* item);
    void updatePickFrameLengthSensitivity(StylerItem* item);

    /// Reads the sheet size of the work part's only drawing into "HEIGHT" and "LENGTH", or
    /// tells the user that the template has not exactly one drawing.
    void extractSheetSize();

    QorBorder::DrawingSize* m_size;

    boost::shared_ptr<KivNX::UI::StringItem> m_name;
    boost::shared_ptr<KivNX::UI::StringItem> m_description;
    boost::shared_ptr<KivNX::UI::StringItem> m_label;
    boost::shared_ptr<KivNX::UI::StringItem> m_templateFile;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_browseTemplate;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_extractDims;
    boost::shared_ptr<NXOpen::UIStyler::RealItem> m_height;
    boost::shared_ptr<NXOpen::UIStyler::RealItem> m_length;
    boost::shared_ptr<NXOpen::UIStyler::RealItem> m_frameLength;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_pickFrameLength;
    boost::shared_ptr<NXOpen::UIStyler::IntegerItem> m_horizontalZones;
    boost::shared_ptr<NXOpen::UIStyler::IntegerItem> m_verticalZones;
};

} // namespace QorBorderConf
