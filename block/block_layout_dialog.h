#pragma once

#include "block/list_editor.h"
#include "ui/nx_dialog_base.h"

#include <NXOpen/UIStyler_GroupBox.hxx>
#include <NXOpen/UIStyler_IntegerItem.hxx>
#include <NXOpen/UIStyler_PushButton.hxx>
#include <NXOpen/UIStyler_RadioBox.hxx>
#include <NXOpen/UIStyler_RealItem.hxx>
#include <NXOpen/UIStyler_Toggle.hxx>

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace QorBorder {
class BlockLayout;
class BlockStyle;
class Field;
class RowType;
class SymbolType;
} // namespace QorBorder
namespace KivNX {
namespace UI {
class OptionMenu;
class SingleSelectList;
class StringItem;
class WideString;
} // namespace UI
} // namespace KivNX

namespace QorBorderConf {

/// Edits one block layout in place: its identity and general attributes, edit method, placement
/// and repeating, and its lists of styles, fields, table row types and symbol types. The
/// attributes are written only by OK; the lists change at once, and Cancel does not undo that.
class BlockLayoutDialog : public KivNX::UI::NXDialogBase {
public:
    /// `existingLayout` is true when the layout already belongs to a document; only a layout that
    /// is not (a new one or a copy) has its ID checked against every open document on OK.
    BlockLayoutDialog(const boost::shared_ptr<QorBorder::BlockLayout>& layout, bool existingLayout);

private:
    using StyleList = std::vector<boost::shared_ptr<const QorBorder::BlockStyle>>;
    using FieldList = std::vector<boost::shared_ptr<const QorBorder::Field>>;
    using RowTypeList = std::vector<boost::shared_ptr<const QorBorder::RowType>>;

    void initializeDialog() override;

    DialogState onConstruct(StylerEvent* event);
    DialogState onOk(StylerEvent* event);
    DialogState onEditMethodChanged(StylerEvent* event);
    DialogState onListActivated(StylerEvent* event);
    DialogState onAddStyleActivated(StylerEvent* event);
    DialogState onEditStyleActivated(StylerEvent* event);
    DialogState onCopyStyleActivated(StylerEvent* event);
    DialogState onDeleteStyleActivated(StylerEvent* event);
    DialogState onSetDefaultStyleActivated(StylerEvent* event);
    DialogState onAddFieldActivated(StylerEvent* event);
    DialogState onEditFieldActivated(StylerEvent* event);
    DialogState onCopyFieldActivated(StylerEvent* event);
    DialogState onDeleteFieldActivated(StylerEvent* event);
    DialogState onAddRowTypeActivated(StylerEvent* event);
    DialogState onEditRowTypeActivated(StylerEvent* event);
    DialogState onDeleteRowTypeActivated(StylerEvent* event);
    DialogState onAddSymbolTypeActivated(StylerEvent* event);
    DialogState onEditSymbolTypeActivated(StylerEvent* event);
    DialogState onDeleteSymbolTypeActivated(StylerEvent* event);
    void updateStyleButtonSensitivity(StylerItem* item);
    void updateFieldButtonSensitivity(StylerItem* item);
    void updateRowTypeButtonSensitivity(StylerItem* item);
    void updateSymbolTypeButtonSensitivity(StylerItem* item);
    void updateSymbolGroupSensitivity(StylerItem* item);

    /// Shows the dialog file's controls or the delegate functions' ones, as "EDIT_METHOD" says.
    void switchEditMethod();
    /// Rebuilds a list and its snapshot from the layout; nothing is selected afterwards.
    void refreshStyles();
    void refreshFields();
    void refreshRowTypes();
    void refreshSymbolTypes();
    void writeControls();
    /// The IDs of the first row type's fields: what a symbol type's lines may show.
    std::vector<std::string> symbolFieldIds() const;

    // The sub-dialogs: each edits the object it is given and returns the dialog's response.
    NXOpen::UIStyler::DialogResponse
    showStyleDialog(const boost::shared_ptr<QorBorder::BlockStyle>& style);
    NXOpen::UIStyler::DialogResponse
    showFieldDialog(const boost::shared_ptr<QorBorder::Field>& field);
    NXOpen::UIStyler::DialogResponse
    showRowTypeDialog(const boost::shared_ptr<QorBorder::RowType>& rowType);
    NXOpen::UIStyler::DialogResponse
    showSymbolTypeDialog(const boost::shared_ptr<QorBorder::SymbolType>& symbolType);

    boost::shared_ptr<QorBorder::BlockLayout> m_layout;
    bool m_existingLayout;
    StyleList m_styles;
    FieldList m_fields;
    RowTypeList m_rowTypes;
    ListEditor<QorBorder::BlockStyle> m_styleEditor;
    ListEditor<QorBorder::Field> m_fieldEditor;
    ListEditor<QorBorder::RowType> m_rowTypeEditor;
    ListEditor<QorBorder::SymbolType> m_symbolTypeEditor;

    boost::shared_ptr<KivNX::UI::StringItem> m_blockId;
    boost::shared_ptr<KivNX::UI::StringItem> m_description;
    boost::shared_ptr<KivNX::UI::StringItem> m_category;
    boost::shared_ptr<KivNX::UI::StringItem> m_dialogFileName;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_units;
    boost::shared_ptr<NXOpen::UIStyler::IntegerItem> m_layer;
    boost::shared_ptr<NXOpen::UIStyler::RadioBox> m_editMethod;
    boost::shared_ptr<KivNX::UI::StringItem> m_delegateLibrary;
    boost::shared_ptr<NXOpen::UIStyler::GroupBox> m_functionGroup;
    boost::shared_ptr<KivNX::UI::StringItem> m_setStyleDelegate;
    boost::shared_ptr<KivNX::UI::StringItem> m_editFieldsDelegate;
    boost::shared_ptr<NXOpen::UIStyler::Toggle> m_requiredBlockOnly;
    boost::shared_ptr<NXOpen::UIStyler::Toggle> m_repeating;
    boost::shared_ptr<KivNX::UI::WideString> m_repeatSpacing;
    boost::shared_ptr<NXOpen::UIStyler::IntegerItem> m_columnForRowNumber;
    boost::shared_ptr<NXOpen::UIStyler::Toggle> m_flip;
    boost::shared_ptr<NXOpen::UIStyler::RealItem> m_angle;
    boost::shared_ptr<NXOpen::UIStyler::RadioBox> m_sbfBase;
    boost::shared_ptr<KivNX::UI::StringItem> m_sbfFileName;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_styleList;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_addStyle;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_editStyle;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_copyStyle;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_deleteStyle;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_setDefaultStyle;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_fieldList;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_addField;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_editField;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_copyField;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_deleteField;
    boost::shared_ptr<NXOpen::UIStyler::GroupBox> m_rowTypeGroup;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_rowTypeList;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_addRowType;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_editRowType;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_deleteRowType;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_borderTransition;
    boost::shared_ptr<NXOpen::UIStyler::Toggle> m_rowsCreated;
    boost::shared_ptr<NXOpen::UIStyler::RealItem> m_maxHeightMargin;
    boost::shared_ptr<NXOpen::UIStyler::Toggle> m_allowOverride;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_symbolTypeList;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_addSymbolType;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_editSymbolType;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_deleteSymbolType;
    boost::shared_ptr<NXOpen::UIStyler::GroupBox> m_symbolGroup;
};

} // namespace QorBorderConf
