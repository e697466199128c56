#pragma once

#include "data/test_dialog_names.h"

#include "ui/multi_text_box.h"
#include "ui/nx_dialog_base.h"
#include "ui/option_menu.h"
#include "ui/single_select_list.h"
#include "ui/string_item.h"
#include "ui/wide_string.h"

#include <functional>
#include <string>
#include <vector>

/// A dialog on the framework test resource that records what the framework calls, and lets a
/// test act from inside a handler.
class FrameworkDialog : public KivNX::UI::NXDialogBase {
public:
    explicit FrameworkDialog(
        const std::string& resourceFile = TestDialogNames::Framework::kResourceFile,
        const std::string& dialogName = TestDialogNames::Framework::kDialogName)
        : NXDialogBase(resourceFile, dialogName) {}

    std::vector<std::string> calls;
    /// Run inside the BUTTON handler.
    std::function<void(FrameworkDialog&)> onButton;

    boost::shared_ptr<NXOpen::UIStyler::PushButton> button;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> exitButton;
    boost::shared_ptr<KivNX::UI::SingleSelectList> list;
    boost::shared_ptr<KivNX::UI::OptionMenu> menu;
    boost::shared_ptr<KivNX::UI::StringItem> string;
    boost::shared_ptr<KivNX::UI::WideString> wide;
    boost::shared_ptr<KivNX::UI::MultiTextBox> multi;

    using NXDialogBase::dialogItem;
    using NXDialogBase::getControl;

private:
    using DialogState = NXOpen::UIStyler::DialogState;
    using StylerEvent = NXOpen::UIStyler::StylerEvent;
    using StylerItem = NXOpen::UIStyler::StylerItem;

    void initializeDialog() override {
        namespace Names = TestDialogNames::Framework;
        calls.push_back("initializeDialog");
        dialogItem()->AddConstructHandler(
            registerStylerCB(Base::makeFunctor(this, &FrameworkDialog::onConstruct)), false);
        dialogItem()->AddOkayHandler(
            registerStylerCB(Base::makeFunctor(this, &FrameworkDialog::onOk)), false);
        button = getControl<NXOpen::UIStyler::PushButton>(Names::BUTTON);
        button->AddActivateHandler(
            registerStylerCB(Base::makeFunctor(this, &FrameworkDialog::onButtonActivated)), false);
        exitButton = getControl<NXOpen::UIStyler::PushButton>(Names::EXIT_BUTTON);
        exitButton->AddActivateHandler(
            registerStylerCB(Base::makeFunctor(this, &FrameworkDialog::onExitActivated)), false);
        list = getControl<KivNX::UI::SingleSelectList>(Names::LIST);
        list->AddActivateHandler(
            registerStylerCB(Base::makeFunctor(this, &FrameworkDialog::onListActivated)), false);
        menu = getControl<KivNX::UI::OptionMenu>(Names::MENU);
        string = getControl<KivNX::UI::StringItem>(Names::STRING);
        wide = getControl<KivNX::UI::WideString>(Names::WIDE);
        multi = getControl<KivNX::UI::MultiTextBox>(Names::MULTI);
        addUpdateHandler(button.get(), Base::makeFunctor(this, &FrameworkDialog::updateButton));
        addUpdateHandler(list.get(), Base::makeFunctor(this, &FrameworkDialog::updateList));
    }

    DialogState onConstruct(StylerEvent*) {
        calls.push_back("construct");
        return NXOpen::UIStyler::DialogStateContinueDialog;
    }
    DialogState onOk(StylerEvent*) {
        calls.push_back("ok");
        return NXOpen::UIStyler::DialogStateExitDialog;
    }
    DialogState onButtonActivated(StylerEvent*) {
        calls.push_back("button");
        if (onButton) {
            onButton(*this);
        }
        return NXOpen::UIStyler::DialogStateContinueDialog;
    }
    DialogState onExitActivated(StylerEvent*) {
        calls.push_back("exit");
        return NXOpen::UIStyler::DialogStateExitDialog;
    }
    DialogState onListActivated(StylerEvent*) {
        calls.push_back("list");
        return NXOpen::UIStyler::DialogStateContinueDialog;
    }
    void updateButton(StylerItem* item) {
        calls.push_back(item == button.get() ? "update button" : "update button: wrong item");
    }
    void updateList(StylerItem* item) {
        calls.push_back(item == list.get() ? "update list" : "update list: wrong item");
    }
};
