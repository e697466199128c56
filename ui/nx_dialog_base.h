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
#include <tuple>
#include <type_traits>
#include <vector>

namespace KivNX {
namespace UI {

template <class Controller>
class DialogBinder;

using StylerHandler = Base::Functor<NXOpen::UIStyler::DialogState, NXOpen::UIStyler::StylerEvent*>;
using UpdateFunction = Base::Functor<void, NXOpen::UIStyler::StylerItem*>;

namespace detail {
/// A `T` bound to the item called `name` of `dialog`, found through the dialog's getter of the NX
/// item class that `T` is or derives from (a wrapper finds the getter of its NX class).
template <class T>
boost::shared_ptr<T> lookUp(NXOpen::UIStyler::Dialog& dialog, const std::string& name) {
    using D = NXOpen::UIStyler::Dialog;
    constexpr auto getters = std::make_tuple(
        &D::GetPushButton, &D::GetSingleSelectList, &D::GetOptionMenu, &D::GetStringItem,
        &D::GetWideString, &D::GetMultiTextBox, &D::GetRadioBox, &D::GetIntegerItem,
        &D::GetRealItem, &D::GetToggle, &D::GetColorTool, &D::GetGroupBox, &D::GetLabelItem);
    constexpr bool isItem = std::apply(
        [](auto... get) {
            return (std::is_base_of_v<std::remove_pointer_t<decltype((std::declval<D&>().*get)(
                                          std::declval<const std::string&>()))>,
                                      T> ||
                    ...);
        },
        getters);
    static_assert(isItem, "a control is bound as an NX item class or a wrapper derived from one");
    boost::shared_ptr<T> found;
    std::apply(
        [&](auto... getter) {
            const auto tryGetter = [&](auto get) {
                using Item = std::remove_pointer_t<decltype((dialog.*get)(name))>;
                if constexpr (std::is_base_of_v<Item, T>) {
                    found.reset(new T(*(dialog.*get)(name)));
                }
            };
            (tryGetter(getter), ...);
        },
        getters);
    return found;
}
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
    /// ended (2 for OK). Exceptions from handlers pass out of it, except NoSuchEntryError: that
    /// one is shown in an error message box titled "Error" with its text, the rest of the
    /// handler is skipped and the dialog stays open.
    NXOpen::UIStyler::DialogResponse show();

    const std::string& dialogResourceFile() const { return m_dialogResourceFile; }
    const std::string& dialogName() const { return m_dialogName; }

protected:
    // The names every controller's handlers and update functions are declared with.
    using DialogState = NXOpen::UIStyler::DialogState;
    using StylerEvent = NXOpen::UIStyler::StylerEvent;
    using StylerItem = NXOpen::UIStyler::StylerItem;

    NXDialogBase(const std::string& dialogResourceFile, const std::string& dialogName);

    /// Binds the controls and registers the handlers; runs once per show(), after the dialog has
    /// been created.
    virtual void initializeDialog() = 0;

    /// The control called `name` of the shown dialog, as a `T` bound to that item. T is an NX item
    /// class or a KivNX::UI wrapper. Throws NXOpen::NXException when the dialog holds no such item
    /// or holds it as another kind.
    template <class T>
    boost::shared_ptr<T> getControl(const std::string& name) {
        return detail::lookUp<T>(openDialog(), name);
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
