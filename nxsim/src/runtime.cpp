// The dialog runtime under the stand-in's item classes: items with their state, handlers and
// events, and dialogs that dispatch events, run a handler's returned state and end with a
// response. Items and dialogs are one file because every event goes from an item to its dialog
// and back (sensitivity through the parent group, focus, the end of the dialog), and each side
// needs the other's internals.
#include <nxsim/runtime.h>

#include "internal.h"

#include <nxsim/error_codes.h>

#include <NXOpen/UIStyler_StylerEvent.hxx>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <map>
#include <sstream>

namespace nxsim {

using NXOpen::UIStyler::DialogResponse;
using NXOpen::UIStyler::StylerEvent;

namespace {

// Never destroyed: items held by objects that outlive static destruction still unregister.
std::map<void*, std::weak_ptr<RuntimeItem>>& handles() {
    static auto* map = new std::map<void*, std::weak_ptr<RuntimeItem>>();
    return *map;
}

StylerEvent::Reason reasonFor(EventKind event) {
    switch (event) {
    case EventKind::Construct:
        return StylerEvent::ReasonConstruct;
    case EventKind::Okay:
        return StylerEvent::ReasonOkay;
    case EventKind::Cancel:
        return StylerEvent::ReasonCancel;
    case EventKind::Activate:
        return StylerEvent::ReasonActivate;
    case EventKind::DoubleClick:
        return StylerEvent::ReasonDoubleClick;
    case EventKind::ValueChanged:
        return StylerEvent::ReasonValueChanged;
    }
    return StylerEvent::ReasonActivate;
}

std::string formatReal(double value) {
    std::ostringstream out;
    out.precision(17);
    out << value;
    // Prefer the shortest text that reads back as the same value, without an exponent where one
    // is not needed: 420 shows as "420", not "4.2e+02".
    for (bool allowExponent : {false, true}) {
        for (int precision = 1; precision <= 17; ++precision) {
            std::ostringstream shorter;
            shorter.precision(precision);
            shorter << value;
            const std::string text = shorter.str();
            if ((allowExponent || text.find('e') == std::string::npos) &&
                std::strtod(text.c_str(), nullptr) == value) {
                return text;
            }
        }
    }
    return out.str();
}

std::vector<std::string> splitLines(const std::string& text) {
    std::vector<std::string> lines;
    if (text.empty()) {
        return lines;
    }
    std::size_t start = 0;
    while (true) {
        std::size_t nl = text.find('\n', start);
        if (nl == std::string::npos) {
            lines.push_back(text.substr(start));
            break;
        }
        lines.push_back(text.substr(start, nl - start));
        start = nl + 1;
    }
    return lines;
}

bool parseInt(const std::string& text, int& value) {
    if (text.empty()) {
        return false;
    }
    char* end = nullptr;
    errno = 0;
    long n = std::strtol(text.c_str(), &end, 10);
    if (*end != '\0' || errno != 0 || n < -2147483647L - 1 || n > 2147483647L) {
        return false;
    }
    value = static_cast<int>(n);
    return true;
}

bool parseReal(const std::string& text, double& value) {
    if (text.empty()) {
        return false;
    }
    char* end = nullptr;
    errno = 0;
    double d = std::strtod(text.c_str(), &end);
    if (*end != '\0' || errno != 0 || !std::isfinite(d)) {
        return false;
    }
    value = d;
    return true;
}

} // namespace

const char* eventDescription(EventKind kind) {
    switch (kind) {
    case EventKind::Construct:
        return "construct";
    case EventKind::Okay:
        return "OK";
    case EventKind::Cancel:
        return "cancel";
    case EventKind::Activate:
        return "activate";
    case EventKind::DoubleClick:
        return "double-click";
    case EventKind::ValueChanged:
        return "value changed";
    }
    return "?";
}

std::shared_ptr<RuntimeItem> itemForHandle(void* handle) {
    auto it = handles().find(handle);
    if (it == handles().end()) {
        return nullptr;
    }
    return it->second.lock();
}

// ---- RuntimeItem ----

RuntimeItem::RuntimeItem(RuntimeDialog* dialog, const DlgElement* element, RuntimeItem* parent)
    : m_dialog(dialog), m_element(element), m_parent(parent),
      m_kind(element ? element->kind : ItemKind::Dialog) {
    if (!element) {
        return;
    }
    m_name = element->name;
    m_label = element->label;
    m_sensitive = element->sensitive;
    m_visible = element->visible;
    const std::string& v = element->value;
    switch (m_kind) {
    case ItemKind::StringItem:
    case ItemKind::WideString:
        m_text = v;
        break;
    case ItemKind::MultiTextBox:
        m_lines = element->entries;
        break;
    case ItemKind::IntegerItem:
    case ItemKind::ColorTool:
        m_int = v.empty() ? 0 : std::atoi(v.c_str());
        break;
    case ItemKind::RealItem:
        m_real = v.empty() ? 0.0 : std::strtod(v.c_str(), nullptr);
        break;
    case ItemKind::Toggle:
        m_toggle = v == "on";
        break;
    case ItemKind::OptionMenu:
    case ItemKind::RadioBox:
        m_entries = element->entries;
        m_entrySensitive = element->entrySensitive;
        m_entrySensitive.resize(m_entries.size(), true);
        m_int = !v.empty() ? std::atoi(v.c_str()) : (m_entries.empty() ? -1 : 0);
        break;
    case ItemKind::SingleSelectList:
        m_entries = element->entries;
        m_entrySensitive.assign(m_entries.size(), true);
        break;
    default:
        break;
    }
}

RuntimeItem::~RuntimeItem() {
    handles().erase(this);
}

RuntimeDialog& RuntimeItem::dialog() const {
    if (!m_dialog) {
        detail::raise(ErrorCode::DialogDeleted,
                      std::string(kindDescription(m_kind)) + " " + m_name);
    }
    return *m_dialog;
}

std::string RuntimeItem::describe() const {
    std::string text = m_kind == ItemKind::Dialog ? "the dialog item"
                                                  : std::string(kindDescription(m_kind)) + " " +
                                                        (m_name.empty() ? "(unnamed)" : m_name);
    if (m_dialog) {
        text += " of dialog " + m_dialog->journalName();
    }
    return text;
}

bool RuntimeItem::effectivelySensitive() const {
    for (const RuntimeItem* i = this; i; i = i->m_parent) {
        if (!i->m_sensitive) {
            return false;
        }
    }
    return true;
}

bool RuntimeItem::effectivelyVisible() const {
    for (const RuntimeItem* i = this; i; i = i->m_parent) {
        if (!i->m_visible) {
            return false;
        }
    }
    return true;
}

bool RuntimeItem::focused() const {
    return m_dialog && m_dialog->focus() == this;
}

bool RuntimeItem::entrySensitive(int index) const {
    if (index < 0 || index >= static_cast<int>(m_entrySensitive.size())) {
        return false;
    }
    return m_entrySensitive[static_cast<std::size_t>(index)];
}

std::string RuntimeItem::valueText() const {
    switch (m_kind) {
    case ItemKind::StringItem:
    case ItemKind::WideString:
        return m_text;
    case ItemKind::MultiTextBox: {
        std::string text;
        for (std::size_t i = 0; i < m_lines.size(); ++i) {
            text += (i ? "\n" : "") + m_lines[i];
        }
        return text;
    }
    case ItemKind::IntegerItem:
    case ItemKind::ColorTool:
        return std::to_string(m_int);
    case ItemKind::RealItem:
        return formatReal(m_real);
    case ItemKind::Toggle:
        return m_toggle ? "on" : "off";
    case ItemKind::OptionMenu:
    case ItemKind::RadioBox:
        return m_int >= 0 && m_int < static_cast<int>(m_entries.size())
                   ? m_entries[static_cast<std::size_t>(m_int)]
                   : std::string();
    case ItemKind::SingleSelectList:
        return m_selected >= 0 ? m_entries[static_cast<std::size_t>(m_selected)] : std::string();
    default:
        return m_label;
    }
}

void RuntimeItem::changed() {
    if (m_dialog) {
        m_dialog->notifyItem(*this);
    }
}

void RuntimeItem::checkEntry(int index, const char* what) const {
    if (index < 0 || index >= static_cast<int>(m_entries.size())) {
        detail::raise(ErrorCode::InvalidArgument,
                      std::string(what) + " " + std::to_string(index) + " of " + describe() +
                          " is out of range (it has " + std::to_string(m_entries.size()) + ")");
    }
}

void RuntimeItem::setLabel(const std::string& label) {
    m_label = label;
    changed();
}

void RuntimeItem::setSensitive(bool sensitive) {
    m_sensitive = sensitive;
    changed();
}

void RuntimeItem::setVisible(bool visible) {
    m_visible = visible;
    changed();
}

void RuntimeItem::setEntrySensitive(int index, bool sensitive) {
    if (index == -1) {
        setSensitive(sensitive);
        return;
    }
    checkEntry(index, "entry");
    m_entrySensitive[static_cast<std::size_t>(index)] = sensitive;
    changed();
}

void RuntimeItem::setText(const std::string& text) {
    m_text = text;
    changed();
}

void RuntimeItem::setLines(const std::vector<std::string>& lines) {
    m_lines = lines;
    changed();
}

void RuntimeItem::setInt(int value) {
    m_int = value;
    changed();
}

void RuntimeItem::setReal(double value) {
    m_real = value;
    changed();
}

void RuntimeItem::setToggle(bool value) {
    m_toggle = value;
    changed();
}

void RuntimeItem::setEntries(const std::vector<std::string>& entries) {
    m_entries = entries;
    m_entrySensitive.assign(entries.size(), true);
    m_selected = -1;
    if (m_kind == ItemKind::OptionMenu || m_kind == ItemKind::RadioBox) {
        m_int = entries.empty() ? -1 : 0;
    }
    changed();
}

void RuntimeItem::appendEntries(const std::vector<std::string>& entries) {
    m_entries.insert(m_entries.end(), entries.begin(), entries.end());
    m_entrySensitive.resize(m_entries.size(), true);
    changed();
}

void RuntimeItem::deleteEntry(int index) {
    checkEntry(index, "row");
    m_entries.erase(m_entries.begin() + index);
    m_entrySensitive.erase(m_entrySensitive.begin() + index);
    if (m_selected == index) {
        m_selected = -1;
    } else if (m_selected > index) {
        --m_selected;
    }
    changed();
}

void RuntimeItem::setSelected(int row) {
    if (row != -1) {
        checkEntry(row, "row");
    }
    m_selected = row;
    changed();
}

void RuntimeItem::setCurrentEntry(int index) {
    checkEntry(index, "entry");
    m_int = index;
    changed();
}

void RuntimeItem::setFocus() {
    dialog().setFocus(this);
}

void RuntimeItem::addHandler(EventKind event, const StylerHandler& handler, bool launchesDialog) {
    std::unique_ptr<NXOpen::BaseCallback> copy(handler.Clone());
    auto* typed = dynamic_cast<StylerHandler*>(copy.get());
    if (!typed) {
        detail::raise(ErrorCode::InvalidArgument,
                      "the handler's Clone() is not a handler, for " + describe());
    }
    copy.release();
    m_handlers.push_back(Handler{event, std::unique_ptr<StylerHandler>(typed), launchesDialog});
}

int RuntimeItem::handlerCount(EventKind event) const {
    return static_cast<int>(std::count_if(m_handlers.begin(), m_handlers.end(),
                                          [event](const Handler& h) { return h.event == event; }));
}

bool RuntimeItem::launchesDialog(EventKind event) const {
    return std::any_of(m_handlers.begin(), m_handlers.end(),
                       [event](const Handler& h) { return h.event == event && h.launchesDialog; });
}

bool RuntimeItem::fire(EventKind event) {
    // Index-based: a handler may register further handlers while it runs.
    for (std::size_t i = 0; i < m_handlers.size(); ++i) {
        if (m_handlers[i].event != event) {
            continue;
        }
        StylerEvent styled(detail::makeItemObject(this), reasonFor(event));
        StylerHandler& handler = *m_handlers[i].callback;
        if (handler(&styled) == NXOpen::UIStyler::DialogStateExitDialog) {
            return true;
        }
    }
    return false;
}

// ---- RuntimeDialog ----

RuntimeDialog::RuntimeDialog(DialogLayout layout) : m_layout(std::move(layout)) {
    m_title = m_layout.title;
    auto dialogItem = std::make_shared<RuntimeItem>(this, nullptr, nullptr);
    handles()[dialogItem.get()] = dialogItem;
    m_items.push_back(dialogItem);
    build(m_layout.elements, nullptr);
}

RuntimeDialog::~RuntimeDialog() {
    if (m_shown) {
        finishShow();
    }
    for (const auto& item : m_items) {
        item->detach();
    }
}

void RuntimeDialog::build(const std::vector<DlgElement>& elements, RuntimeItem* parent) {
    for (const DlgElement& e : elements) {
        RuntimeItem* inner = parent;
        if (isBindable(e.kind)) {
            auto item = std::make_shared<RuntimeItem>(this, &e, parent);
            handles()[item.get()] = item;
            m_items.push_back(item);
            if (e.kind == ItemKind::GroupBox) {
                inner = item.get();
            }
        }
        build(e.children, inner);
    }
}

bool RuntimeDialog::navigationSensitive(int dialogItemIndex) const {
    if (dialogItemIndex < 0 || dialogItemIndex > 3) {
        return false;
    }
    return m_navigation[dialogItemIndex];
}

RuntimeItem* RuntimeDialog::item(const std::string& name) const {
    if (name.empty()) {
        return nullptr;
    }
    for (const auto& i : m_items) {
        if (i->name() == name && i->kind() != ItemKind::Dialog) {
            return i.get();
        }
    }
    return nullptr;
}

RuntimeItem* RuntimeDialog::itemFor(const DlgElement& element) const {
    for (const auto& i : m_items) {
        if (i->element() == &element) {
            return i.get();
        }
    }
    return nullptr;
}

void RuntimeDialog::addObserver(DialogObserver* observer) {
    if (std::find(m_observers.begin(), m_observers.end(), observer) == m_observers.end()) {
        m_observers.push_back(observer);
    }
}

void RuntimeDialog::removeObserver(DialogObserver* observer) {
    m_observers.erase(std::remove(m_observers.begin(), m_observers.end(), observer),
                      m_observers.end());
}

void RuntimeDialog::notifyItem(const RuntimeItem& changedItem) {
    std::vector<DialogObserver*> observers = m_observers;
    for (DialogObserver* o : observers) {
        o->itemChanged(changedItem);
    }
}

void RuntimeDialog::setTitle(const std::string& title) {
    m_title = title;
    std::vector<DialogObserver*> observers = m_observers;
    for (DialogObserver* o : observers) {
        o->dialogChanged(*this);
    }
}

void RuntimeDialog::setNavigationSensitive(int dialogItemIndex, bool sensitive) {
    if (dialogItemIndex < 0 || dialogItemIndex > 3) {
        detail::raise(ErrorCode::InvalidArgument, "navigation button " +
                                                      std::to_string(dialogItemIndex) +
                                                      " of dialog " + journalName());
    }
    m_navigation[dialogItemIndex] = sensitive;
    std::vector<DialogObserver*> observers = m_observers;
    for (DialogObserver* o : observers) {
        o->dialogChanged(*this);
    }
}

void RuntimeDialog::setFocus(RuntimeItem* focusItem) {
    m_focus = focusItem;
    std::vector<DialogObserver*> observers = m_observers;
    for (DialogObserver* o : observers) {
        o->dialogChanged(*this);
    }
}

void RuntimeDialog::refuse(const std::string& reason) const {
    throw ActionRefused(reason);
}

RuntimeItem& RuntimeDialog::actionTarget(const std::string& name, const char* action,
                                         std::initializer_list<ItemKind> kinds) {
    if (!m_shown || m_ended) {
        refuse(std::string("cannot ") + action + " " + name + ": dialog " + journalName() +
               " is not open");
    }
    RuntimeItem* target = item(name);
    if (!target) {
        refuse("dialog " + journalName() + " has no item " + name);
    }
    if (std::find(kinds.begin(), kinds.end(), target->kind()) == kinds.end()) {
        std::string wanted;
        for (ItemKind k : kinds) {
            wanted +=
                std::string(wanted.empty() ? "" : " or ") + detail::withArticle(kindDescription(k));
        }
        refuse(std::string("cannot ") + action + " " + name + " of dialog " + journalName() +
               ": it is " + detail::withArticle(kindDescription(target->kind())) + ", not " +
               wanted);
    }
    if (!target->effectivelyVisible()) {
        refuse(std::string("cannot ") + action + " " + name + " of dialog " + journalName() +
               ": it is hidden");
    }
    if (!target->effectivelySensitive()) {
        refuse(std::string("cannot ") + action + " " + name + " of dialog " + journalName() +
               ": it is insensitive");
    }
    return *target;
}

void RuntimeDialog::dispatch(RuntimeItem& target, EventKind event) {
    if (target.fire(event) && !m_ended) {
        end(event == EventKind::Okay ? NXOpen::UIStyler::DialogResponseOk
                                     : NXOpen::UIStyler::DialogResponseCbTerminate);
    }
}

void RuntimeDialog::end(DialogResponse response) {
    m_ended = true;
    m_response = response;
    std::vector<DialogObserver*> observers = m_observers;
    for (DialogObserver* o : observers) {
        o->dialogEnded(*this);
    }
}

void RuntimeDialog::press(const std::string& name) {
    dispatch(actionTarget(name, "press", {ItemKind::PushButton}), EventKind::Activate);
}

void RuntimeDialog::select(const std::string& name, int row) {
    RuntimeItem& list = actionTarget(name, "select a row of", {ItemKind::SingleSelectList});
    if (row < 0 || row >= static_cast<int>(list.entries().size())) {
        refuse("cannot select row " + std::to_string(row) + " of " + name + " of dialog " +
               journalName() + ": it has " + std::to_string(list.entries().size()) + " rows");
    }
    list.setSelected(row);
    dispatch(list, EventKind::Activate);
}

void RuntimeDialog::deselect(const std::string& name) {
    actionTarget(name, "deselect", {ItemKind::SingleSelectList}).setSelected(-1);
}

void RuntimeDialog::doubleClick(const std::string& name, int row) {
    RuntimeItem& list = actionTarget(name, "double-click", {ItemKind::SingleSelectList});
    if (row < 0 || row >= static_cast<int>(list.entries().size())) {
        refuse("cannot double-click row " + std::to_string(row) + " of " + name + " of dialog " +
               journalName() + ": it has " + std::to_string(list.entries().size()) + " rows");
    }
    list.setSelected(row);
    dispatch(list, EventKind::DoubleClick);
}

void RuntimeDialog::choose(const std::string& name, int index) {
    RuntimeItem& menu =
        actionTarget(name, "choose an entry of", {ItemKind::OptionMenu, ItemKind::RadioBox});
    if (index < 0 || index >= static_cast<int>(menu.entries().size())) {
        refuse("cannot choose entry " + std::to_string(index) + " of " + name + " of dialog " +
               journalName() + ": it has " + std::to_string(menu.entries().size()) + " entries");
    }
    if (!menu.entrySensitive(index)) {
        refuse("cannot choose entry " + std::to_string(index) + " (\"" +
               menu.entries()[static_cast<std::size_t>(index)] + "\") of " + name + " of dialog " +
               journalName() + ": the entry is insensitive");
    }
    menu.setCurrentEntry(index);
    dispatch(menu,
             menu.kind() == ItemKind::OptionMenu ? EventKind::Activate : EventKind::ValueChanged);
}

void RuntimeDialog::choose(const std::string& name, const std::string& entryText) {
    RuntimeItem& menu =
        actionTarget(name, "choose an entry of", {ItemKind::OptionMenu, ItemKind::RadioBox});
    const auto& entries = menu.entries();
    auto it = std::find(entries.begin(), entries.end(), entryText);
    if (it == entries.end()) {
        refuse("cannot choose \"" + entryText + "\" in " + name + " of dialog " + journalName() +
               ": there is no such entry");
    }
    choose(name, static_cast<int>(it - entries.begin()));
}

void RuntimeDialog::setValue(const std::string& name, const std::string& value) {
    RuntimeItem& target = actionTarget(name, "set",
                                       {ItemKind::StringItem, ItemKind::WideString,
                                        ItemKind::MultiTextBox, ItemKind::IntegerItem,
                                        ItemKind::RealItem, ItemKind::ColorTool, ItemKind::Toggle});
    const std::string where = name + " of dialog " + journalName();
    switch (target.kind()) {
    case ItemKind::StringItem:
    case ItemKind::WideString:
        target.setText(value);
        break;
    case ItemKind::MultiTextBox:
        target.setLines(splitLines(value));
        break;
    case ItemKind::IntegerItem:
    case ItemKind::ColorTool: {
        int n = 0;
        if (!parseInt(value, n)) {
            refuse("cannot set " + where + " to \"" + value + "\": not an integer");
        }
        target.setInt(n);
        break;
    }
    case ItemKind::RealItem: {
        double d = 0.0;
        if (!parseReal(value, d)) {
            refuse("cannot set " + where + " to \"" + value + "\": not a number");
        }
        target.setReal(d);
        break;
    }
    case ItemKind::Toggle:
        if (value != "on" && value != "off") {
            refuse("cannot set " + where + " to \"" + value + "\": a toggle is on or off");
        }
        target.setToggle(value == "on");
        break;
    default:
        break;
    }
}

void RuntimeDialog::enter(const std::string& name) {
    dispatch(actionTarget(name, "enter",
                          {ItemKind::StringItem, ItemKind::WideString, ItemKind::IntegerItem,
                           ItemKind::RealItem}),
             EventKind::Activate);
}

void RuntimeDialog::toggle(const std::string& name, bool on) {
    RuntimeItem& target = actionTarget(name, "toggle", {ItemKind::Toggle});
    target.setToggle(on);
    dispatch(target, EventKind::ValueChanged);
}

void RuntimeDialog::ok() {
    if (!m_shown || m_ended) {
        refuse("cannot press OK: dialog " + journalName() + " is not open");
    }
    if (!m_layout.navigation.ok) {
        refuse("dialog " + journalName() + " has no OK button");
    }
    if (!m_navigation[0]) {
        refuse("cannot press OK of dialog " + journalName() + ": it is insensitive");
    }
    RuntimeItem& self = *dialogItem();
    bool exit = self.fire(EventKind::Okay);
    if (!m_ended && (exit || self.handlerCount(EventKind::Okay) == 0)) {
        end(NXOpen::UIStyler::DialogResponseOk);
    }
}

void RuntimeDialog::cancel() {
    if (!m_shown || m_ended) {
        refuse("cannot press Cancel: dialog " + journalName() + " is not open");
    }
    if (!m_layout.navigation.cancel) {
        refuse("dialog " + journalName() + " has no Cancel button");
    }
    if (!m_navigation[3]) {
        refuse("cannot press Cancel of dialog " + journalName() + ": it is insensitive");
    }
    dialogItem()->fire(EventKind::Cancel);
    if (!m_ended) {
        end(NXOpen::UIStyler::DialogResponseCancel);
    }
}

void RuntimeDialog::close() {
    if (!m_shown || m_ended) {
        refuse("cannot close dialog " + journalName() + ": it is not open");
    }
    dialogItem()->fire(EventKind::Cancel);
    if (!m_ended) {
        end(NXOpen::UIStyler::DialogResponseCancel);
    }
}

void RuntimeDialog::abort() {
    if (m_shown && !m_ended) {
        end(NXOpen::UIStyler::DialogResponseCancel);
    }
}

void RuntimeDialog::beginShow() {
    m_shown = true;
    m_ended = false;
    m_response = NXOpen::UIStyler::DialogResponseCancel;
    detail::pushShown(this);
    dispatch(*dialogItem(), EventKind::Construct);
}

void RuntimeDialog::finishShow() {
    m_shown = false;
    detail::popShown(this);
}

} // namespace nxsim
