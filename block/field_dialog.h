#pragma once

#include "model/choice.h"
#include "ui/nx_dialog_base.h"

#include <NXOpen/UIStyler_GroupBox.hxx>
#include <NXOpen/UIStyler_PushButton.hxx>
#include <NXOpen/UIStyler_Toggle.hxx>

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace QorBorder {
class Field;
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

/// Edits one field of a block layout or of a table row type: its ID, type and input control,
/// defaults, text choices (each in the text choice dialog), prefix and suffix, broadcast and
/// second-language settings. The field is written only on OK; the text choices are edited on a
/// working copy until then. A changed ID is written as it is: a caller that must pass a rename
/// on keeps the old ID itself.
class FieldDialog : public KivNX::UI::NXDialogBase {
public:
    /// For a field of a row type: the second-language menu offers "None" only.
    explicit FieldDialog(const boost::shared_ptr<QorBorder::Field>& field);
    /// For a field of a block layout: the menu offers `secondLanguageFieldIds`, then "None".
    FieldDialog(const boost::shared_ptr<QorBorder::Field>& field,
                const std::vector<std::string>& secondLanguageFieldIds);

private:
    void initializeDialog() override;

    DialogState onConstruct(StylerEvent* event);
    DialogState onOk(StylerEvent* event);
    DialogState onTypeActivated(StylerEvent* event);
    DialogState onChoiceListActivated(StylerEvent* event);
    DialogState onAddChoiceActivated(StylerEvent* event);
    DialogState onEditChoiceActivated(StylerEvent* event);
    DialogState onCopyChoiceActivated(StylerEvent* event);
    DialogState onDeleteChoiceActivated(StylerEvent* event);
    DialogState onDefaultChoiceActivated(StylerEvent* event);
    void updateChoiceButtonSensitivity(StylerItem* item);

    /// Shows and hides the controls that the type shown in "TYPE" uses and narrows
    /// "CONTROL_TYPE" to the input controls that fit it.
    void applyTypeRules();
    /// Rebuilds "CHOICE_LIST" from the working choices, marking the default one.
    void showChoices();
    /// The selected choice's index, or -1.
    int selectedChoice();

    boost::shared_ptr<QorBorder::Field> m_field;
    std::vector<QorBorder::Choice> m_choices;
    std::vector<std::string> m_secondLanguageItems;
    std::int32_t m_defaultChoice = -1;

    boost::shared_ptr<KivNX::UI::StringItem> m_id;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_type;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_controlType;
    boost::shared_ptr<KivNX::UI::MultiTextBox> m_defaultString;
    boost::shared_ptr<NXOpen::UIStyler::Toggle> m_defaultToCurrentDate;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_secondLanguageField;
    boost::shared_ptr<NXOpen::UIStyler::Toggle> m_collapseNoValue;
    boost::shared_ptr<NXOpen::UIStyler::Toggle> m_syncField;
    boost::shared_ptr<KivNX::UI::StringItem> m_prefix;
    boost::shared_ptr<KivNX::UI::StringItem> m_suffix;
    boost::shared_ptr<KivNX::UI::StringItem> m_attrTitle;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_broadcastType;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_broadcastValueType;
    boost::shared_ptr<KivNX::UI::StringItem> m_broadcastTitle;
    boost::shared_ptr<NXOpen::UIStyler::GroupBox> m_controlledSettings;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_choiceList;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_addChoice;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_editChoice;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_copyChoice;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_deleteChoice;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_defaultChoiceButton;
};

} // namespace QorBorderConf
