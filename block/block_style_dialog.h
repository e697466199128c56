#pragma once

#include "ui/nx_dialog_base.h"

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace QorBorder {
class BlockLayout;
class BlockStyle;
} // namespace QorBorder

namespace KivNX {
namespace UI {
class OptionMenu;
class StringItem;
} // namespace UI
} // namespace KivNX

namespace QorBorderConf {

/// Edits one style of a block layout: its ID, dialog text, template part and template type, and
/// per field its placement in the template. The ID, texts and template type reach the style on
/// OK; the placement values of a field, table field or field index are written into the style
/// as soon as the user switches to another one, and stay after Cancel.
class BlockStyleDialog : public KivNX::UI::NXDialogBase {
public:
    /// `style` is edited in place; `layout` owns it (or will own it) and supplies the field,
    /// row type and table field IDs.
    BlockStyleDialog(const boost::shared_ptr<QorBorder::BlockStyle>& style,
                     const boost::shared_ptr<QorBorder::BlockLayout>& layout);

private:
    void initializeDialog() override;

    DialogState onConstruct(StylerEvent* event);
    DialogState onOk(StylerEvent* event);
    DialogState onTemplateFileActivated(StylerEvent* event);
    DialogState onBrowseTemplateActivated(StylerEvent* event);
    DialogState onTemplateTypeActivated(StylerEvent* event);
    DialogState onFieldListActivated(StylerEvent* event);
    DialogState onRowTypeActivated(StylerEvent* event);
    DialogState onTableFieldActivated(StylerEvent* event);
    DialogState onFieldIndexListActivated(StylerEvent* event);

    /// Writes the number controls into the style under their current keys, each only when its
    /// key is set.
    void saveFieldSettings();
    void saveTableColumn();
    void saveFieldIndex();
    void applyTemplateType();

    boost::shared_ptr<QorBorder::BlockStyle> m_style;
    boost::shared_ptr<QorBorder::BlockLayout> m_layout;

    /// The keys whose values the number controls show; empty while none is loaded.
    std::string m_currentField;
    std::string m_currentRowType;
    std::string m_currentTableField;
    std::string m_currentIndexField;

    boost::shared_ptr<KivNX::UI::StringItem> m_id;
    boost::shared_ptr<KivNX::UI::StringItem> m_dialogText;
    boost::shared_ptr<KivNX::UI::StringItem> m_templateFile;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_browseTemplate;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_templateType;
    boost::shared_ptr<NXOpen::UIStyler::GroupBox> m_tabularNoteSettings;
    boost::shared_ptr<NXOpen::UIStyler::GroupBox> m_fieldSettings;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_fieldList;
    boost::shared_ptr<NXOpen::UIStyler::IntegerItem> m_rowLoc;
    boost::shared_ptr<NXOpen::UIStyler::IntegerItem> m_colLoc;
    boost::shared_ptr<NXOpen::UIStyler::Toggle> m_inHeader;
    boost::shared_ptr<NXOpen::UIStyler::GroupBox> m_tableSettings;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_rowType;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_tableField;
    boost::shared_ptr<NXOpen::UIStyler::IntegerItem> m_tableFieldColumn;
    boost::shared_ptr<NXOpen::UIStyler::GroupBox> m_generalSettings;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_fieldIndexList;
    boost::shared_ptr<NXOpen::UIStyler::IntegerItem> m_fieldIndex;
};

} // namespace QorBorderConf
