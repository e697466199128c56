#pragma once

#include "ui/nx_dialog_base.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace QorBorder {
class BlockLayout;
class Field;
class RowType;
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

/// Edits one row type of a block layout's table. Its own settings (ID, header row, bottom
/// border, separator, the three roles, the input dialog list) reach the row type on OK; its
/// fields, the clearing of the type manager settings and the texts of each type manager choice
/// go into the row type at once and stay after Cancel.
class RowTypeDialog : public KivNX::UI::NXDialogBase {
public:
    /// `rowType` is edited in place; `blockLayout` owns its table and supplies the styles that
    /// the row type's field operations keep in step.
    RowTypeDialog(const boost::shared_ptr<QorBorder::RowType>& rowType,
                  const boost::shared_ptr<QorBorder::BlockLayout>& blockLayout);

private:
    void initializeDialog() override;

    DialogState onConstruct(StylerEvent* event);
    DialogState onOk(StylerEvent* event);
    /// Does nothing: a new selection of a list or menu passes through the framework, which then
    /// brings the buttons' sensitivity up to date.
    DialogState onSelectionActivated(StylerEvent* event);
    DialogState onAddFieldActivated(StylerEvent* event);
    DialogState onCopyFieldActivated(StylerEvent* event);
    DialogState onEditFieldActivated(StylerEvent* event);
    DialogState onDeleteFieldActivated(StylerEvent* event);
    DialogState onSetZoneActivated(StylerEvent* event);
    DialogState onSetTypeManagerActivated(StylerEvent* event);
    DialogState onSetKeyFieldActivated(StylerEvent* event);
    DialogState onAddDialogFieldActivated(StylerEvent* event);
    DialogState onMoveUpDialogFieldActivated(StylerEvent* event);
    DialogState onMoveDownDialogFieldActivated(StylerEvent* event);
    DialogState onDeleteDialogFieldActivated(StylerEvent* event);
    DialogState onTypeManagerChoiceActivated(StylerEvent* event);

    void updateFieldSelectionSensitivity(StylerItem* item);
    void updateSetZoneSensitivity(StylerItem* item);
    void updateSetKeyFieldSensitivity(StylerItem* item);
    void updateSetTypeManagerSensitivity(StylerItem* item);
    void updateAddDialogFieldSensitivity(StylerItem* item);
    void updateMoveUpDialogFieldSensitivity(StylerItem* item);
    void updateMoveDownDialogFieldSensitivity(StylerItem* item);
    void updateDeleteDialogFieldSensitivity(StylerItem* item);
    /// The type manager's choice menu and its two texts: sensitive while a type manager is set.
    void updateTypeManagerSettingsSensitivity(StylerItem* item);

    /// Rebuilds "FIELD_LIST" from the row type with the role markers, keeping the selected
    /// row, then the menu of fields that the input dialog does not show yet.
    void showFields();
    void rebuildDialogFieldsToAdd();
    /// The menu of the type manager field's choices, then the texts of its first choice.
    void fillTypeManagerChoices();
    /// Stores the shown choice's texts into the row type, then shows the current choice's.
    void changeTypeManagerChoice();
    void storeTypeManagerChoice();
    /// Gives `role` the selected field's ID, or clears it when the field already holds it.
    void toggleRole(std::string& role);
    void moveDialogField(int step);
    /// The selected field of "FIELD_LIST", or an empty pointer.
    boost::shared_ptr<const QorBorder::Field> selectedField();

    boost::shared_ptr<QorBorder::RowType> m_rowType;
    boost::shared_ptr<QorBorder::BlockLayout> m_blockLayout;

    /// The row type's fields as last read; a row of "FIELD_LIST" indexes it.
    std::vector<boost::shared_ptr<const QorBorder::Field>> m_fields;
    /// Working copies of the roles, written to the row type on OK; empty when unassigned.
    std::string m_zoneFieldId;
    std::string m_typeManagerFieldId;
    std::string m_keyFieldId;
    /// The type manager choice whose texts the two boxes show; -1 when none is loaded.
    int m_typeManagerChoice = -1;

    boost::shared_ptr<KivNX::UI::StringItem> m_id;
    boost::shared_ptr<NXOpen::UIStyler::IntegerItem> m_headerRow;
    boost::shared_ptr<NXOpen::UIStyler::Toggle> m_showBottomBorder;
    boost::shared_ptr<KivNX::UI::StringItem> m_listSeparator;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_fieldList;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_addField;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_copyField;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_editField;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_deleteField;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_setZone;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_setTypeManager;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_setKeyField;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_dialogFieldsList;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_dialogFieldsToAdd;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_addDialogField;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_moveUpDialogField;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_moveDownDialogField;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_deleteDialogField;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_typeManagerChoiceMenu;
    boost::shared_ptr<KivNX::UI::WideString> m_validSymbolList;
    boost::shared_ptr<KivNX::UI::WideString> m_disabledFieldList;
};

} // namespace QorBorderConf
