#pragma once

#include <nxsim/dlg.h>

#include <NXOpen/Callback.hxx>
#include <NXOpen/UIStyler_StylerItem.hxx>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace NXOpen::UIStyler {
class StylerEvent;
}

namespace nxsim {

class RuntimeDialog;

using StylerHandler =
    NXOpen::Callback1<NXOpen::UIStyler::DialogState, NXOpen::UIStyler::StylerEvent*>;

/// The events a handler can be registered for.
enum class EventKind { Construct, Okay, Cancel, Activate, DoubleClick, ValueChanged };
const char* eventDescription(EventKind kind);

/// A user action that the dialog refuses (insensitive or hidden item, unknown item, wrong kind,
/// row out of range, malformed value). what() says which dialog, item and why.
class ActionRefused : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One item of a dialog with its state and handlers. Read by presenters and tests; changed by the
/// UIStyler item classes and by the user actions of RuntimeDialog.
class RuntimeItem {
public:
    RuntimeItem(RuntimeDialog* dialog, const DlgElement* element, RuntimeItem* parent);
    ~RuntimeItem();
    RuntimeItem(const RuntimeItem&) = delete;
    RuntimeItem& operator=(const RuntimeItem&) = delete;

    ItemKind kind() const { return m_kind; }
    const std::string& name() const { return m_name; }
    /// The element of the resource file; null for the dialog item.
    const DlgElement* element() const { return m_element; }
    /// The enclosing group box, null at the top.
    RuntimeItem* parent() const { return m_parent; }
    /// The dialog, or throws NXException once the dialog has been deleted.
    RuntimeDialog& dialog() const;
    bool alive() const { return m_dialog != nullptr; }
    /// "push button NEW_FILE of dialog qorborder_config_main"
    std::string describe() const;

    const std::string& label() const { return m_label; }
    bool sensitive() const { return m_sensitive; }
    bool visible() const { return m_visible; }
    /// Own flag and that of every enclosing group.
    bool effectivelySensitive() const;
    bool effectivelyVisible() const;
    bool focused() const;

    /// Text of a string or wide-string item.
    const std::string& text() const { return m_text; }
    /// Lines of a multi-line text.
    const std::vector<std::string>& lines() const { return m_lines; }
    /// Integer, colour; current entry of an option menu or radio box (-1 for none).
    int intValue() const { return m_int; }
    double realValue() const { return m_real; }
    bool toggleValue() const { return m_toggle; }
    /// Rows of a list; entries of an option menu or radio box.
    const std::vector<std::string>& entries() const { return m_entries; }
    bool entrySensitive(int index) const;
    /// Selected row of a list, -1 for none.
    int selected() const { return m_selected; }
    /// The value as a journal writes it: text, lines joined with "\n", number, on/off, or the
    /// current entry's text of an option menu or radio box.
    std::string valueText() const;

    // Changes as the NX calls make them; each notifies the dialog's observers.
    void setLabel(const std::string& label);
    void setSensitive(bool sensitive);
    void setVisible(bool visible);
    void setEntrySensitive(int index, bool sensitive);
    void setText(const std::string& text);
    void setLines(const std::vector<std::string>& lines);
    void setInt(int value);
    void setReal(double value);
    void setToggle(bool value);
    void setEntries(const std::vector<std::string>& entries);
    void appendEntries(const std::vector<std::string>& entries);
    void deleteEntry(int index);
    void setSelected(int row);
    void setCurrentEntry(int index);
    void setFocus();

    void addHandler(EventKind event, const StylerHandler& handler, bool launchesDialog);
    /// Handlers registered for `event`.
    int handlerCount(EventKind event) const;
    /// True when a handler for `event` was registered as opening a dialog.
    bool launchesDialog(EventKind event) const;

    /// Runs the handlers of `event` in registration order, stopping at the first that asks to
    /// exit; returns whether one did.
    bool fire(EventKind event);

    void detach() { m_dialog = nullptr; }

private:
    struct Handler {
        EventKind event;
        std::unique_ptr<StylerHandler> callback;
        bool launchesDialog;
    };

    void changed();
    void checkEntry(int index, const char* what) const;

    RuntimeDialog* m_dialog;
    const DlgElement* m_element;
    RuntimeItem* m_parent;
    ItemKind m_kind;
    std::string m_name;
    std::string m_label;
    bool m_sensitive = true;
    bool m_visible = true;
    std::string m_text;
    std::vector<std::string> m_lines;
    int m_int = 0;
    double m_real = 0.0;
    bool m_toggle = false;
    std::vector<std::string> m_entries;
    std::vector<bool> m_entrySensitive;
    int m_selected = -1;
    std::vector<Handler> m_handlers;
};

/// Told about changes of a shown dialog, e.g. by a presenter that draws it.
class DialogObserver {
public:
    virtual ~DialogObserver() = default;
    virtual void itemChanged(const RuntimeItem& /*item*/) {}
    /// Title, navigation sensitivity or focus changed.
    virtual void dialogChanged(const RuntimeDialog& /*dialog*/) {}
    virtual void dialogEnded(const RuntimeDialog& /*dialog*/) {}
};

/// A dialog built from its resource file: the items with their state, event dispatch, and the
/// user actions that presenters inject. Actions throw ActionRefused when the user could not do
/// them; exceptions from handlers pass through unchanged.
class RuntimeDialog {
public:
    explicit RuntimeDialog(DialogLayout layout);
    ~RuntimeDialog();
    RuntimeDialog(const RuntimeDialog&) = delete;
    RuntimeDialog& operator=(const RuntimeDialog&) = delete;

    const DialogLayout& layout() const { return m_layout; }
    /// The name a journal uses: the dialog name, else the resource file name.
    std::string journalName() const { return m_layout.journalName(); }
    const std::string& title() const { return m_title; }
    bool navigationSensitive(int dialogItemIndex) const;
    /// The focused item, null for none.
    RuntimeItem* focus() const { return m_focus; }

    /// The bindable item with that resource name, null when none.
    RuntimeItem* item(const std::string& name) const;
    /// The item of `element`, null when none.
    RuntimeItem* itemFor(const DlgElement& element) const;
    /// Every item in file order (groups before their contents); the dialog item first.
    const std::vector<std::shared_ptr<RuntimeItem>>& items() const { return m_items; }
    /// The dialog item (construct, OK and cancel handlers).
    const std::shared_ptr<RuntimeItem>& dialogItem() const { return m_items.front(); }

    void addObserver(DialogObserver* observer);
    void removeObserver(DialogObserver* observer);

    // User actions (the journal's words).
    void press(const std::string& item);
    void select(const std::string& item, int row);
    void deselect(const std::string& item);
    void doubleClick(const std::string& item, int row);
    void choose(const std::string& item, int index);
    void choose(const std::string& item, const std::string& entryText);
    /// Sets a value as typing does, without an event; `value` as valueText() writes it.
    void setValue(const std::string& item, const std::string& value);
    void enter(const std::string& item);
    void toggle(const std::string& item, bool on);
    void ok();
    void cancel();
    void close();
    /// Ends a shown dialog with the cancel response without running any handler (for a presenter
    /// that must give up).
    void abort();

    bool shown() const { return m_shown; }
    bool ended() const { return m_ended; }
    NXOpen::UIStyler::DialogResponse response() const { return m_response; }

    /// Used by Dialog::Show(): runs the construct handlers and marks the dialog shown.
    void beginShow();
    /// Used by Dialog::Show(): the dialog is no longer shown.
    void finishShow();

    // Used by the item classes.
    void setTitle(const std::string& title);
    void setNavigationSensitive(int dialogItemIndex, bool sensitive);
    void setFocus(RuntimeItem* item);
    void notifyItem(const RuntimeItem& item);

private:
    void build(const std::vector<DlgElement>& elements, RuntimeItem* parent);
    RuntimeItem& actionTarget(const std::string& name, const char* action,
                              std::initializer_list<ItemKind> kinds);
    void dispatch(RuntimeItem& item, EventKind event);
    void end(NXOpen::UIStyler::DialogResponse response);
    [[noreturn]] void refuse(const std::string& reason) const;

    DialogLayout m_layout;
    std::string m_title;
    bool m_navigation[4] = {true, true, true, true};
    RuntimeItem* m_focus = nullptr;
    std::vector<std::shared_ptr<RuntimeItem>> m_items;
    std::vector<DialogObserver*> m_observers;
    bool m_shown = false;
    bool m_ended = false;
    NXOpen::UIStyler::DialogResponse m_response = NXOpen::UIStyler::DialogResponseCancel;
};

/// The live item whose handle is `handle`, or null.
std::shared_ptr<RuntimeItem> itemForHandle(void* handle);

} // namespace nxsim
