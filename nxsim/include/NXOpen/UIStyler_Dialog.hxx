#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/NXString.hxx>
#include <NXOpen/UIStyler_ColorTool.hxx>
#include <NXOpen/UIStyler_DialogItem.hxx>
#include <NXOpen/UIStyler_GroupBox.hxx>
#include <NXOpen/UIStyler_IntegerItem.hxx>
#include <NXOpen/UIStyler_LabelItem.hxx>
#include <NXOpen/UIStyler_MultiTextBox.hxx>
#include <NXOpen/UIStyler_OptionMenu.hxx>
#include <NXOpen/UIStyler_PushButton.hxx>
#include <NXOpen/UIStyler_RadioBox.hxx>
#include <NXOpen/UIStyler_RealItem.hxx>
#include <NXOpen/UIStyler_SingleSelectList.hxx>
#include <NXOpen/UIStyler_StringItem.hxx>
#include <NXOpen/UIStyler_StylerItem.hxx>
#include <NXOpen/UIStyler_Toggle.hxx>
#include <NXOpen/UIStyler_WideString.hxx>

#include <map>
#include <memory>
#include <string>

namespace nxsim {
class RuntimeDialog;
}

namespace NXOpen::UIStyler {

/// A dialog created from its resource file. The getters return items that the dialog owns; each
/// throws NXException naming the dialog, the item and the kind when the file holds no item of
/// that name, or holds it as another kind.
class Dialog {
public:
    /// Created by Styler::CreateStylerDialog.
    explicit Dialog(std::shared_ptr<nxsim::RuntimeDialog> dialog);
    virtual ~Dialog();
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    /// The dialog itself, under the name "UF_STYLER_DIALOG_INDEX" (or the dialog's own name).
    DialogItem* GetDialogIndex(const NXString& name);
    PushButton* GetPushButton(const NXString& name);
    SingleSelectList* GetSingleSelectList(const NXString& name);
    OptionMenu* GetOptionMenu(const NXString& name);
    StringItem* GetStringItem(const NXString& name);
    WideString* GetWideString(const NXString& name);
    MultiTextBox* GetMultiTextBox(const NXString& name);
    RadioBox* GetRadioBox(const NXString& name);
    IntegerItem* GetIntegerItem(const NXString& name);
    RealItem* GetRealItem(const NXString& name);
    Toggle* GetToggle(const NXString& name);
    ColorTool* GetColorTool(const NXString& name);
    GroupBox* GetGroupBox(const NXString& name);
    LabelItem* GetLabelItem(const NXString& name);

    /// Runs the construct handlers, then hands the dialog to the active presenter until it ends.
    DialogResponse Show();

private:
    template <class T>
    T* get(const NXString& name, nxsim::ItemKind kind);

    std::shared_ptr<nxsim::RuntimeDialog> m_dialog;
    std::map<std::string, std::unique_ptr<StylerItem>> m_items;
};

} // namespace NXOpen::UIStyler
