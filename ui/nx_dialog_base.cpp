#include "ui/nx_dialog_base.h"

#include "ui/message_dialogs.h"
#include "ui/no_such_entry_error.h"

#include <NXOpen/NXException.hxx>
#include <NXOpen/UI.hxx>
#include <NXOpen/UIStyler_Styler.hxx>

#include <cassert>

using namespace NXOpen::UIStyler;

namespace KivNX {
namespace UI {

/// The callback NX holds for one handler: it runs the handler, then the update functions. NX
/// keeps clones of it; every clone calls back into the same dialog controller.
class NXDialogBase::HandlerCallback : public NXOpen::Callback1<DialogState, StylerEvent*> {
public:
    HandlerCallback(NXDialogBase* dialog, StylerHandler handler)
        : m_dialog(dialog), m_handler(std::move(handler)) {}

    DialogState operator()(StylerEvent* event) const override {
        return m_dialog->dispatch(m_handler, event);
    }
    NXOpen::BaseCallback* Clone() const override { return new HandlerCallback(*this); }
    bool Equals(const NXOpen::BaseCallback& other) const override { return &other == this; }

private:
    NXDialogBase* m_dialog;
    StylerHandler m_handler;
};

NXDialogBase::NXDialogBase(const std::string& dialogResourceFile, const std::string& dialogName)
    : m_dialogResourceFile(dialogResourceFile), m_dialogName(dialogName) {}

NXDialogBase::~NXDialogBase() = default;

void NXDialogBase::checkShowPreconditions() const {}

DialogResponse NXDialogBase::show() {
    checkShowPreconditions();
    std::unique_ptr<Dialog> dialog(
        NXOpen::UI::GetUI()->Styler()->CreateStylerDialog(m_dialogResourceFile));
    m_dialog = dialog.get();
    m_callbacks.clear();
    m_updates.clear();
    struct Release {
        NXDialogBase& base;
        ~Release() {
            base.m_dialogItem.reset();
            base.m_dialog = nullptr;
        }
    } release{*this};
    m_dialogItem.reset(new DialogItem(*dialog->GetDialogIndex("UF_STYLER_DIALOG_INDEX")));
    initializeDialog();
    return dialog->Show();
}

Dialog& NXDialogBase::openDialog() const {
    assert(m_dialog && "controls exist only while the dialog is shown");
    return *m_dialog;
}

boost::shared_ptr<DialogItem> NXDialogBase::dialogItem() const {
    assert(m_dialogItem && "the dialog item exists only while the dialog is shown");
    return m_dialogItem;
}

const NXOpen::Callback1<DialogState, StylerEvent*>&
NXDialogBase::registerStylerCB(const StylerHandler& handler) {
    m_callbacks.push_back(std::make_unique<HandlerCallback>(this, handler));
    return *m_callbacks.back();
}

void NXDialogBase::addUpdateHandler(StylerItem* item, const UpdateFunction& update) {
    m_updates.push_back({item, update});
}

void NXDialogBase::runUpdateHandlers() {
    for (const Update& entry : m_updates) {
        entry.update(entry.item);
    }
}

DialogState NXDialogBase::dispatch(const StylerHandler& handler, StylerEvent* event) {
    DialogState state = DialogStateContinueDialog;
    try {
        state = handler(event);
    } catch (const NoSuchEntryError& error) {
        // A control refused a value the handler gave it: the rest of that handler is skipped,
        // and the dialog stays open with everything the user entered, so the user can choose
        // again or cancel. Ending the dialog, or the whole run, would lose that input.
        errorDialog(kControlError, error.what());
    }
    runUpdateHandlers();
    return state;
}

} // namespace UI
} // namespace KivNX
