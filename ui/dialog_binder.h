#pragma once

#include "ui/nx_dialog_base.h"

#include <boost/shared_ptr.hpp>

#include <string>

namespace KivNX {
namespace UI {

/// NX's flag on every Add...Handler call: whether the handler can open another dialog. Named so
/// that no registration reads as a bare true or false.
enum class OpensDialog { No, Yes };

/// What `initializeDialog` uses to bind one controller to the shown dialog: a dialog binds
/// itself, and a page that its dialog serves binds its own controls and member functions to the
/// same dialog. Each call is one of the framework's steps: `getControl`, `registerStylerCB` with
/// the item's `Add...Handler`, or `addUpdateHandler`.
template <class Controller>
class DialogBinder {
public:
    using DialogState = NXOpen::UIStyler::DialogState;
    using StylerEvent = NXOpen::UIStyler::StylerEvent;
    using StylerItem = NXOpen::UIStyler::StylerItem;
    using Handler = DialogState (Controller::*)(StylerEvent*);
    using Update = void (Controller::*)(StylerItem*);

    DialogBinder(NXDialogBase& dialog, Controller& controller)
        : m_dialog(dialog), m_controller(controller) {}

    /// The control called `name`, as a `T` (see NXDialogBase::getControl).
    template <class T>
    boost::shared_ptr<T> control(const std::string& name) {
        return m_dialog.template getControl<T>(name);
    }

    /// The dialog's construct handler: where the controller fills its controls.
    void onConstruct(Handler handler) {
        m_dialog.dialogItem()->AddConstructHandler(callback(handler), false);
    }
    /// The dialog's OK handler: validate in the fixed order, then write, then end.
    void onOkay(Handler handler) {
        m_dialog.dialogItem()->AddOkayHandler(callback(handler), false);
    }

    template <class Item>
    void onActivate(Item& item, Handler handler, OpensDialog opens) {
        item.AddActivateHandler(callback(handler), opens == OpensDialog::Yes);
    }
    template <class Item>
    void onDoubleClick(Item& item, Handler handler, OpensDialog opens) {
        item.AddDoubleClickHandler(callback(handler), opens == OpensDialog::Yes);
    }
    template <class Item>
    void onValueChanged(Item& item, Handler handler, OpensDialog opens) {
        item.AddValueChangedHandler(callback(handler), opens == OpensDialog::Yes);
    }

    /// An update function of `item` (in practice its sensitivity); runs after the construct
    /// handler and after every event.
    void update(StylerItem& item, Update function) {
        m_dialog.addUpdateHandler(&item, Base::makeFunctor(&m_controller, function));
    }
    /// The update function of the dialog's own item (its OK button's sensitivity).
    void updateDialog(Update function) { update(*m_dialog.dialogItem(), function); }

private:
    const NXOpen::Callback1<DialogState, StylerEvent*>& callback(Handler handler) {
        return m_dialog.registerStylerCB(Base::makeFunctor(&m_controller, handler));
    }

    NXDialogBase& m_dialog;
    Controller& m_controller;
};

} // namespace UI
} // namespace KivNX
