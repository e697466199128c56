#pragma once

#include "base/functor.h"

#include <NXOpen/Callback.hxx>
#include <NXOpen/UIStyler_ColorTool.hxx>
#include <NXOpen/UIStyler_Dialog.hxx>
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
#include <NXOpen/UIStyler_StylerEvent.hxx>
#include <NXOpen/UIStyler_StylerItem.hxx>
#include <NXOpen/UIStyler_Toggle.hxx>
#include <NXOpen/UIStyler_WideString.hxx>

#include <boost/shared_ptr.hpp>

#include <memory>
#include <string>
#include <vector>

namespace KivNX {
namespace UI {

template <class Controller>
class DialogBinder;

using StylerHandler = Base::Functor<NXOpen::UIStyler::DialogState, NXOpen::UIStyler::StylerEvent*>;
using UpdateFunction = Base::Functor<void, NXOpen::UIStyler::StylerItem*>;

namespace detail {
// One overload per NX item class: a wrapper finds the getter of the class it derives from.
NXOpen::UIStyler::PushButton* lookUp(NXOpen::UIStyler::Dialog&, const std::string&,
                                     NXOpen::UIStyler::PushButton*);
NXOpen::UIStyler::SingleSelectList* lookUp(NXOpen::UIStyler::Dialog&, const std::string&,
                                           NXOpen::UIStyler::SingleSelectList*);
NXOpen::UIStyler::OptionMenu* lookUp(NXOpen::UIStyler::Dialog&, const std::string&,
                                     NXOpen::UIStyler::OptionMenu*);
NXOpen::UIStyler::StringItem* lookUp(NXOpen::UIStyler::Dialog&, const std::string&,
                                     NXOpen::UIStyler::StringItem*);
NXOpen::UIStyler::WideString* lookUp(NXOpen::UIStyler::Dialog&, const std::string&,
                                     NXOpen::UIStyler::WideString*);
NXOpen::UIStyler::MultiTextBox* lookUp(NXOpen::UIStyler::Dialog&, const std::string&,
                                       NXOpen::UIStyler::MultiTextBox*);
NXOpen::UIStyler::RadioBox* lookUp(NXOpen::UIStyler::Dialog&, const std::string&,
                                   NXOpen::UIStyler::RadioBox*);
NXOpen::UIStyler::IntegerItem* lookUp(NXOpen::UIStyler::Dialog&, const std::string&,
                                      NXOpen::UIStyler::IntegerItem*);
NXOpen::UIStyler::RealItem* lookUp(NXOpen::UIStyler::Dialog&, const std::string&,
                                   NXOpen::UIStyler::RealItem*);
NXOpen::UIStyler::Toggle* lookUp(NXOpen::UIStyler::Dialog&, const std::string&,
                                 NXOpen::UIStyler::Toggle*);
NXOpen::UIStyler::ColorTool* lookUp(NXOpen::UIStyler::Dialog&, const std::string&,
                                    NXOpen::UIStyler::ColorTool*);
NXOpen::UIStyler::GroupBox* lookUp(NXOpen::UIStyler::Dialog&, const std::string&,
                                   NXOpen::UIStyler::GroupBox*);
NXOpen::UIStyler::LabelItem* lookUp(NXOpen::UIStyler::Dialog&, const std::string&,
                                    NXOpen::UIStyler::LabelItem*);
} // namespace detail

/// The base of every dialog controller: creates the dialog from its resource file, lets the
/// controller bind its controls and handlers, shows it modally and keeps the controller's update
/// functions running after the construct handler and after every event handler.
class NXDialogBase {
public:
    // Dialogs live on their opener's stack and are always destroyed as their own class, so the
    // destructor is deliberately not virtual.
    ~NXDialogBase();
    NXDialogBase(const NXDialogBase&) = delete;
    NXDialogBase& operator=(const NXDialogBase&) = delete;

    /// Creates the dialog, calls initializeDialog(), shows it until it ends and returns how it
    /// ended (2 for OK). Exceptions from handlers pass out of it.
    NXOpen::UIStyler::DialogResponse show();

    const std::string& dialogResourceFile() const { return m_dialogResourceFile; }
    const std::string& dialogName() const { return m_dialogName; }

protected:
    NXDialogBase(const std::string& dialogResourceFile, const std::string& dialogName);

    /// Binds the controls and registers the handlers; runs once per show(), after the dialog has
    /// been created.
    virtual void initializeDialog() = 0;

    /// The control called `name` of the shown dialog, as a `T` bound to that item. T is an NX item
    /// class or a KivNX::UI wrapper. Throws NXOpen::NXException when the dialog holds no such item
    /// or holds it as another kind.
    template <class T>
    boost::shared_ptr<T> getControl(const std::string& name) {
        auto* item = detail::lookUp(openDialog(), name, static_cast<T*>(nullptr));
        return boost::shared_ptr<T>(new T(*item));
    }

    /// The dialog item of the shown dialog, where construct and OK handlers are registered.
    boost::shared_ptr<NXOpen::UIStyler::DialogItem> dialogItem() const;

    /// Wraps `handler` into a callback that NX can call; the base keeps it alive for the dialog's
    /// lifetime. After the handler returns, every update function runs.
    const NXOpen::Callback1<NXOpen::UIStyler::DialogState, NXOpen::UIStyler::StylerEvent*>&
    registerStylerCB(const StylerHandler& handler);

    /// Registers a function that brings `item` up to date; all run in registration order.
    void addUpdateHandler(NXOpen::UIStyler::StylerItem* item, const UpdateFunction& update);

    /// Runs every update function now, in registration order.
    void runUpdateHandlers();

private:
    // Binds pages that a dialog serves without making them friends of the dialog.
    template <class Controller>
    friend class DialogBinder;

    class HandlerCallback;
    struct Update {
        NXOpen::UIStyler::StylerItem* item;
        UpdateFunction update;
    };

    virtual void checkShowPreconditions() const;
    NXOpen::UIStyler::Dialog& openDialog() const;
    NXOpen::UIStyler::DialogState dispatch(const StylerHandler& handler,
                                           NXOpen::UIStyler::StylerEvent* event);

    std::string m_dialogResourceFile;
    std::string m_dialogName;
    NXOpen::UIStyler::Dialog* m_dialog = nullptr;
    boost::shared_ptr<NXOpen::UIStyler::DialogItem> m_dialogItem;
    std::vector<std::unique_ptr<HandlerCallback>> m_callbacks;
    std::vector<Update> m_updates;
};

} // namespace UI
} // namespace KivNX
