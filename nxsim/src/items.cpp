// The NX Open UIStyler item classes of the stand-in (PushButton, SingleSelectList, OptionMenu,
// ...) and the dialog that hands them out. Each class is a thin face over the runtime's item, a
// few lines a method; they stay in one file, in the order of the item kinds, because together
// they are the one list of what the product may call on an item, and each is too small for a
// file of its own.
#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/UI.hxx>
#include <NXOpen/UIStyler_Dialog.hxx>
#include <NXOpen/UIStyler_Styler.hxx>
#include <NXOpen/UIStyler_StylerEvent.hxx>

#include "internal.h"
#include "platform_state.h"

#include <nxsim/error_codes.h>
#include <nxsim/presenter.h>
#include <nxsim/runtime.h>

namespace NXOpen::UIStyler {

using nxsim::EventKind;
using nxsim::ItemKind;

namespace {

std::vector<std::string> texts(const std::vector<NXString>& strings) {
    std::vector<std::string> result;
    result.reserve(strings.size());
    for (const NXString& s : strings) {
        result.emplace_back(s.GetText());
    }
    return result;
}

std::vector<NXString> nxStrings(const std::vector<std::string>& strings) {
    return std::vector<NXString>(strings.begin(), strings.end());
}

nxsim::RuntimeItem& live(nxsim::RuntimeItem& item) {
    item.dialog(); // throws once the dialog has been deleted
    return item;
}

} // namespace

// ---- StylerItem ----

StylerItem::StylerItem(void* ptr) : m_item(nxsim::itemForHandle(ptr)) {
    if (!m_item) {
        nxsim::detail::raise(nxsim::ErrorCode::InvalidArgument, "no dialog item has this handle");
    }
}

StylerItem::StylerItem(void* ptr, ItemKind kind) : StylerItem(ptr) {
    if (m_item->kind() != kind) {
        nxsim::detail::raise(nxsim::ErrorCode::WrongItemKind,
                             m_item->describe() + " is not " +
                                 nxsim::detail::withArticle(nxsim::kindDescription(kind)));
    }
}

StylerItem::~StylerItem() = default;

void* StylerItem::GetHandle() const {
    return m_item.get();
}

nxsim::RuntimeItem& StylerItem::nxsimItem() const {
    return live(*m_item);
}

// ---- StylerEvent ----

StylerEvent::StylerEvent(std::unique_ptr<StylerItem> item, Reason reason)
    : m_item(std::move(item)), m_reason(reason) {}

StylerEvent::~StylerEvent() = default;

StylerItem* StylerEvent::GetStylerItem() {
    return m_item.get();
}

StylerEvent::Reason StylerEvent::GetReason() {
    return m_reason;
}

// ---- DialogItem ----

DialogItem::DialogItem(void* ptr) : StylerItem(ptr, ItemKind::Dialog) {}

void DialogItem::AddConstructHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                                     bool isDialogLaunchingEvent) {
    nxsimItem().addHandler(EventKind::Construct, handler, isDialogLaunchingEvent);
}

void DialogItem::AddOkayHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                                bool isDialogLaunchingEvent) {
    nxsimItem().addHandler(EventKind::Okay, handler, isDialogLaunchingEvent);
}

void DialogItem::AddCancelHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                                  bool isDialogLaunchingEvent) {
    nxsimItem().addHandler(EventKind::Cancel, handler, isDialogLaunchingEvent);
}

void DialogItem::SetTitle(const NXString& title) {
    nxsimItem().dialog().setTitle(title.GetText());
}

void DialogItem::SetNavigationSensitivity(DialogItemIndex button, bool sensitive) {
    nxsimItem().dialog().setNavigationSensitive(static_cast<int>(button), sensitive);
}

// ---- PushButton ----

PushButton::PushButton(void* ptr) : StylerItem(ptr, ItemKind::PushButton) {}

void PushButton::AddActivateHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                                    bool isDialogLaunchingEvent) {
    nxsimItem().addHandler(EventKind::Activate, handler, isDialogLaunchingEvent);
}

void PushButton::SetLabel(const NXString& label) {
    nxsimItem().setLabel(label.GetText());
}

void PushButton::SetSensitivity(bool sensitive) {
    nxsimItem().setSensitive(sensitive);
}

void PushButton::SetVisibility(bool visible) {
    nxsimItem().setVisible(visible);
}

void PushButton::SetFocus() {
    nxsimItem().setFocus();
}

bool PushButton::Sensitivity() {
    return nxsimItem().sensitive();
}

bool PushButton::Visibility() {
    return nxsimItem().visible();
}

// ---- SingleSelectList ----

SingleSelectList::SingleSelectList(void* ptr) : StylerItem(ptr, ItemKind::SingleSelectList) {}

void SingleSelectList::AddActivateHandler(
    const NXOpen::Callback1<DialogState, StylerEvent*>& handler, bool isDialogLaunchingEvent) {
    nxsimItem().addHandler(EventKind::Activate, handler, isDialogLaunchingEvent);
}

void SingleSelectList::AddDoubleClickHandler(
    const NXOpen::Callback1<DialogState, StylerEvent*>& handler, bool isDialogLaunchingEvent) {
    nxsimItem().addHandler(EventKind::DoubleClick, handler, isDialogLaunchingEvent);
}

void SingleSelectList::SetSelected(int index) {
    nxsimItem().setSelected(index);
}

void SingleSelectList::SetListItems(std::vector<NXString>& items) {
    nxsimItem().setEntries(texts(items));
}

std::vector<NXString> SingleSelectList::GetListItems() {
    return nxStrings(nxsimItem().entries());
}

void SingleSelectList::Append(std::vector<NXString>& items) {
    nxsimItem().appendEntries(texts(items));
}

void SingleSelectList::DeselectSubItem(int index) {
    nxsim::RuntimeItem& list = nxsimItem();
    if (index < 0 || index >= static_cast<int>(list.entries().size())) {
        nxsim::detail::raise(nxsim::ErrorCode::InvalidArgument, "row " + std::to_string(index) +
                                                                    " of " + list.describe() +
                                                                    " is out of range");
    }
    if (list.selected() == index) {
        list.setSelected(-1);
    }
}

void SingleSelectList::DeleteSubItem(int index) {
    nxsimItem().deleteEntry(index);
}

int SingleSelectList::GetSelectedIndexValue() {
    return nxsimItem().selected();
}

NXString SingleSelectList::GetSelectedString() {
    nxsim::RuntimeItem& list = nxsimItem();
    return list.selected() < 0
               ? NXString()
               : NXString(list.entries()[static_cast<std::size_t>(list.selected())]);
}

void SingleSelectList::SetSensitivity(bool sensitive) {
    nxsimItem().setSensitive(sensitive);
}

void SingleSelectList::SetVisibility(bool visible) {
    nxsimItem().setVisible(visible);
}

void SingleSelectList::SetFocus() {
    nxsimItem().setFocus();
}

// ---- OptionMenu ----

OptionMenu::OptionMenu(void* ptr) : StylerItem(ptr, ItemKind::OptionMenu) {}

void OptionMenu::AddActivateHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                                    bool isDialogLaunchingEvent) {
    nxsimItem().addHandler(EventKind::Activate, handler, isDialogLaunchingEvent);
}

void OptionMenu::SetItems(std::vector<NXString>& items) {
    nxsimItem().setEntries(texts(items));
}

std::vector<NXString> OptionMenu::GetItems() {
    return nxStrings(nxsimItem().entries());
}

int OptionMenu::ItemValue() {
    return nxsimItem().intValue();
}

void OptionMenu::SetItemValue(int index) {
    nxsimItem().setCurrentEntry(index);
}

void OptionMenu::SetSensitivity(int subitemIndex, bool sensitive) {
    nxsimItem().setEntrySensitive(subitemIndex, sensitive);
}

bool OptionMenu::GetSensitivity() {
    return nxsimItem().sensitive();
}

void OptionMenu::SetLabel(const NXString& label) {
    nxsimItem().setLabel(label.GetText());
}

void OptionMenu::SetVisibility(bool visible) {
    nxsimItem().setVisible(visible);
}

// ---- StringItem ----

StringItem::StringItem(void* ptr) : StylerItem(ptr, ItemKind::StringItem) {}

void StringItem::AddActivateHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                                    bool isDialogLaunchingEvent) {
    nxsimItem().addHandler(EventKind::Activate, handler, isDialogLaunchingEvent);
}

NXString StringItem::ItemValue() {
    return NXString(nxsimItem().text());
}

void StringItem::SetItemValue(const NXString& value) {
    nxsimItem().setText(value.GetText());
}

void StringItem::SetLabel(const NXString& label) {
    nxsimItem().setLabel(label.GetText());
}

void StringItem::SetSensitivity(bool sensitive) {
    nxsimItem().setSensitive(sensitive);
}

void StringItem::SetVisibility(bool visible) {
    nxsimItem().setVisible(visible);
}

void StringItem::SetFocus() {
    nxsimItem().setFocus();
}

// ---- WideString ----

WideString::WideString(void* ptr) : StylerItem(ptr, ItemKind::WideString) {}

void WideString::AddActivateHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                                    bool isDialogLaunchingEvent) {
    nxsimItem().addHandler(EventKind::Activate, handler, isDialogLaunchingEvent);
}

NXString WideString::ItemValue() {
    return NXString(nxsimItem().text());
}

void WideString::SetItemValue(const NXString& value) {
    nxsimItem().setText(value.GetText());
}

void WideString::SetLabel(const NXString& label) {
    nxsimItem().setLabel(label.GetText());
}

void WideString::SetSensitivity(bool sensitive) {
    nxsimItem().setSensitive(sensitive);
}

void WideString::SetVisibility(bool visible) {
    nxsimItem().setVisible(visible);
}

void WideString::SetFocus() {
    nxsimItem().setFocus();
}

// ---- MultiTextBox ----

MultiTextBox::MultiTextBox(void* ptr) : StylerItem(ptr, ItemKind::MultiTextBox) {}

std::vector<NXString> MultiTextBox::GetItemValues() {
    return nxStrings(nxsimItem().lines());
}

void MultiTextBox::SetItemValues(std::vector<NXString>& values) {
    nxsimItem().setLines(texts(values));
}

void MultiTextBox::SetLabel(const NXString& label) {
    nxsimItem().setLabel(label.GetText());
}

void MultiTextBox::SetSensitivity(bool sensitive) {
    nxsimItem().setSensitive(sensitive);
}

void MultiTextBox::SetVisibility(bool visible) {
    nxsimItem().setVisible(visible);
}

void MultiTextBox::SetFocus() {
    nxsimItem().setFocus();
}

// ---- RadioBox ----

RadioBox::RadioBox(void* ptr) : StylerItem(ptr, ItemKind::RadioBox) {}

void RadioBox::AddValueChangedHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                                      bool isDialogLaunchingEvent) {
    nxsimItem().addHandler(EventKind::ValueChanged, handler, isDialogLaunchingEvent);
}

int RadioBox::ItemValue() {
    return nxsimItem().intValue();
}

void RadioBox::SetItemValue(int index) {
    nxsimItem().setCurrentEntry(index);
}

void RadioBox::SetSensitivity(int subitemIndex, bool sensitive) {
    nxsimItem().setEntrySensitive(subitemIndex, sensitive);
}

void RadioBox::SetVisibility(bool visible) {
    nxsimItem().setVisible(visible);
}

// ---- IntegerItem ----

IntegerItem::IntegerItem(void* ptr) : StylerItem(ptr, ItemKind::IntegerItem) {}

void IntegerItem::AddActivateHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                                     bool isDialogLaunchingEvent) {
    nxsimItem().addHandler(EventKind::Activate, handler, isDialogLaunchingEvent);
}

int IntegerItem::ItemValue() {
    return nxsimItem().intValue();
}

void IntegerItem::SetItemValue(int value) {
    nxsimItem().setInt(value);
}

void IntegerItem::SetLabel(const NXString& label) {
    nxsimItem().setLabel(label.GetText());
}

void IntegerItem::SetSensitivity(bool sensitive) {
    nxsimItem().setSensitive(sensitive);
}

void IntegerItem::SetVisibility(bool visible) {
    nxsimItem().setVisible(visible);
}

void IntegerItem::SetFocus() {
    nxsimItem().setFocus();
}

// ---- RealItem ----

RealItem::RealItem(void* ptr) : StylerItem(ptr, ItemKind::RealItem) {}

void RealItem::AddActivateHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                                  bool isDialogLaunchingEvent) {
    nxsimItem().addHandler(EventKind::Activate, handler, isDialogLaunchingEvent);
}

double RealItem::ItemValue() {
    return nxsimItem().realValue();
}

void RealItem::SetItemValue(double value) {
    nxsimItem().setReal(value);
}

void RealItem::SetLabel(const NXString& label) {
    nxsimItem().setLabel(label.GetText());
}

void RealItem::SetSensitivity(bool sensitive) {
    nxsimItem().setSensitive(sensitive);
}

void RealItem::SetVisibility(bool visible) {
    nxsimItem().setVisible(visible);
}

void RealItem::SetFocus() {
    nxsimItem().setFocus();
}

// ---- Toggle ----

Toggle::Toggle(void* ptr) : StylerItem(ptr, ItemKind::Toggle) {}

void Toggle::AddValueChangedHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                                    bool isDialogLaunchingEvent) {
    nxsimItem().addHandler(EventKind::ValueChanged, handler, isDialogLaunchingEvent);
}

bool Toggle::ItemValue() {
    return nxsimItem().toggleValue();
}

void Toggle::SetItemValue(bool value) {
    nxsimItem().setToggle(value);
}

void Toggle::SetSensitivity(int subitemIndex, bool sensitive) {
    nxsim::RuntimeItem& toggle = nxsimItem();
    if (subitemIndex != -1 && subitemIndex != 0) {
        nxsim::detail::raise(nxsim::ErrorCode::InvalidArgument,
                             "entry " + std::to_string(subitemIndex) + " of " + toggle.describe() +
                                 " (a toggle has only entry 0)");
    }
    toggle.setSensitive(sensitive);
}

void Toggle::SetVisibility(bool visible) {
    nxsimItem().setVisible(visible);
}

void Toggle::SetFocus() {
    nxsimItem().setFocus();
}

// ---- ColorTool ----

ColorTool::ColorTool(void* ptr) : StylerItem(ptr, ItemKind::ColorTool) {}

void ColorTool::AddValueChangedHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                                       bool isDialogLaunchingEvent) {
    nxsimItem().addHandler(EventKind::ValueChanged, handler, isDialogLaunchingEvent);
}

int ColorTool::ItemValue() {
    return nxsimItem().intValue();
}

void ColorTool::SetItemValue(int value) {
    nxsimItem().setInt(value);
}

void ColorTool::SetSensitivity(bool sensitive) {
    nxsimItem().setSensitive(sensitive);
}

void ColorTool::SetVisibility(bool visible) {
    nxsimItem().setVisible(visible);
}

// ---- GroupBox ----

GroupBox::GroupBox(void* ptr) : StylerItem(ptr, ItemKind::GroupBox) {}

void GroupBox::SetLabel(const NXString& label) {
    nxsimItem().setLabel(label.GetText());
}

void GroupBox::SetSensitivity(bool sensitive) {
    nxsimItem().setSensitive(sensitive);
}

void GroupBox::SetVisibility(bool visible) {
    nxsimItem().setVisible(visible);
}

// ---- LabelItem ----

LabelItem::LabelItem(void* ptr) : StylerItem(ptr, ItemKind::LabelItem) {}

void LabelItem::SetLabel(const NXString& label) {
    nxsimItem().setLabel(label.GetText());
}

void LabelItem::SetSensitivity(bool sensitive) {
    nxsimItem().setSensitive(sensitive);
}

void LabelItem::SetVisibility(bool visible) {
    nxsimItem().setVisible(visible);
}

// ---- Dialog ----

Dialog::Dialog(std::shared_ptr<nxsim::RuntimeDialog> dialog) : m_dialog(std::move(dialog)) {}

Dialog::~Dialog() {
    m_items.clear();
    m_dialog.reset();
}

template <class T>
T* Dialog::get(const NXString& name, ItemKind kind) {
    const std::string key = name.GetText();
    auto cached = m_items.find(key);
    if (cached != m_items.end()) {
        if (auto* typed = dynamic_cast<T*>(cached->second.get())) {
            return typed;
        }
    }
    nxsim::detail::state().boundControls.push_back({m_dialog->journalName(), key, kind});
    nxsim::RuntimeItem* item = m_dialog->item(key);
    const std::string where =
        "dialog " + m_dialog->journalName() + " (" + m_dialog->layout().fileName + ")";
    if (!item) {
        nxsim::detail::raise(nxsim::ErrorCode::NoSuchItem,
                             where + " has no " + nxsim::kindDescription(kind) + " named " + key);
    }
    if (item->kind() != kind) {
        nxsim::detail::raise(nxsim::ErrorCode::WrongItemKind,
                             "item " + key + " of " + where + " is " +
                                 nxsim::detail::withArticle(nxsim::kindDescription(item->kind())) +
                                 ", not " +
                                 nxsim::detail::withArticle(nxsim::kindDescription(kind)));
    }
    auto object = std::make_unique<T>(static_cast<void*>(item));
    T* result = object.get();
    m_items[key] = std::move(object);
    return result;
}

DialogItem* Dialog::GetDialogIndex(const NXString& name) {
    const std::string key = name.GetText();
    if (key != "UF_STYLER_DIALOG_INDEX" && (key.empty() || key != m_dialog->layout().name)) {
        nxsim::detail::raise(nxsim::ErrorCode::NoSuchItem, "dialog " + m_dialog->journalName() +
                                                               " (" + m_dialog->layout().fileName +
                                                               ") has no dialog item named " + key +
                                                               " (use UF_STYLER_DIALOG_INDEX)");
    }
    const std::string cacheKey; // no item has an empty name
    auto cached = m_items.find(cacheKey);
    if (cached == m_items.end()) {
        cached = m_items
                     .emplace(cacheKey, std::make_unique<DialogItem>(
                                            static_cast<void*>(m_dialog->dialogItem().get())))
                     .first;
    }
    return static_cast<DialogItem*>(cached->second.get());
}

PushButton* Dialog::GetPushButton(const NXString& name) {
    return get<PushButton>(name, ItemKind::PushButton);
}

SingleSelectList* Dialog::GetSingleSelectList(const NXString& name) {
    return get<SingleSelectList>(name, ItemKind::SingleSelectList);
}

OptionMenu* Dialog::GetOptionMenu(const NXString& name) {
    return get<OptionMenu>(name, ItemKind::OptionMenu);
}

StringItem* Dialog::GetStringItem(const NXString& name) {
    return get<StringItem>(name, ItemKind::StringItem);
}

WideString* Dialog::GetWideString(const NXString& name) {
    return get<WideString>(name, ItemKind::WideString);
}

MultiTextBox* Dialog::GetMultiTextBox(const NXString& name) {
    return get<MultiTextBox>(name, ItemKind::MultiTextBox);
}

RadioBox* Dialog::GetRadioBox(const NXString& name) {
    return get<RadioBox>(name, ItemKind::RadioBox);
}

IntegerItem* Dialog::GetIntegerItem(const NXString& name) {
    return get<IntegerItem>(name, ItemKind::IntegerItem);
}

RealItem* Dialog::GetRealItem(const NXString& name) {
    return get<RealItem>(name, ItemKind::RealItem);
}

Toggle* Dialog::GetToggle(const NXString& name) {
    return get<Toggle>(name, ItemKind::Toggle);
}

ColorTool* Dialog::GetColorTool(const NXString& name) {
    return get<ColorTool>(name, ItemKind::ColorTool);
}

GroupBox* Dialog::GetGroupBox(const NXString& name) {
    return get<GroupBox>(name, ItemKind::GroupBox);
}

LabelItem* Dialog::GetLabelItem(const NXString& name) {
    return get<LabelItem>(name, ItemKind::LabelItem);
}

DialogResponse Dialog::Show() {
    nxsim::detail::enterMethod("Show");
    nxsim::RuntimeDialog& dialog = *m_dialog;
    if (dialog.shown()) {
        nxsim::detail::raise(nxsim::ErrorCode::NotAllowedNow,
                             "dialog " + dialog.journalName() + " is already shown");
    }
    nxsim::Presenter* presenter = nxsim::presenter();
    if (!presenter) {
        nxsim::detail::raise(nxsim::ErrorCode::NoPresenter,
                             "cannot show dialog " + dialog.journalName());
    }
    struct Finish {
        nxsim::RuntimeDialog& dialog;
        ~Finish() { dialog.finishShow(); }
    };
    dialog.beginShow();
    Finish finish{dialog};
    if (!dialog.ended()) {
        presenter->runDialog(dialog);
    }
    if (!dialog.ended()) {
        nxsim::detail::raise(nxsim::ErrorCode::NotAllowedNow,
                             "the presenter returned while dialog " + dialog.journalName() +
                                 " is still open");
    }
    return dialog.response();
}

// ---- Styler ----

Dialog* Styler::CreateStylerDialog(const NXString& file) {
    nxsim::detail::enterMethod("CreateStylerDialog");
    const std::string name = file.GetText();
    boost::filesystem::path path = nxsim::findDialogResource(name);
    if (path.empty()) {
        std::string searched;
        for (const auto& dir : nxsim::resourcePath()) {
            searched += (searched.empty() ? "" : ":") + dir.string();
        }
        nxsim::detail::raise(nxsim::ErrorCode::DialogResourceNotFound,
                             name + " (resource path: " +
                                 (searched.empty() ? std::string("empty") : searched) + ")");
    }
    try {
        return new Dialog(std::make_shared<nxsim::RuntimeDialog>(nxsim::readDialogLayout(path)));
    } catch (const nxsim::DlgError& e) {
        nxsim::detail::raise(nxsim::ErrorCode::InvalidDialogResource, e.what());
    }
}

} // namespace NXOpen::UIStyler

namespace NXOpen {

UI* UI::GetUI() {
    static UI* ui = new UI();
    return ui;
}

UIStyler::Styler* UI::Styler() {
    return &m_styler;
}

NXOpen::NXMessageBox* UI::NXMessageBox() {
    return &m_messageBox;
}

int NXMessageBox::Show(const NXString& title, DialogType type, const NXString& message) {
    nxsim::MessageKind kind = nxsim::MessageKind::Information;
    switch (type) {
    case DialogTypeError:
        kind = nxsim::MessageKind::Error;
        break;
    case DialogTypeWarning:
        kind = nxsim::MessageKind::Warning;
        break;
    case DialogTypeInformation:
        kind = nxsim::MessageKind::Information;
        break;
    case DialogTypeQuestion:
        kind = nxsim::MessageKind::Question;
        break;
    }
    nxsim::showMessageBox(kind, title.GetText(), message.GetText());
    return 1;
}

} // namespace NXOpen

namespace nxsim::detail {

std::unique_ptr<NXOpen::UIStyler::StylerItem> makeItemObject(RuntimeItem* item) {
    using namespace NXOpen::UIStyler;
    void* handle = item;
    switch (item->kind()) {

    case ItemKind::PushButton:
        return std::make_unique<PushButton>(handle);

    case ItemKind::SingleSelectList:
        return std::make_unique<SingleSelectList>(handle);

    case ItemKind::OptionMenu:
        return std::make_unique<OptionMenu>(handle);

    case ItemKind::StringItem:
        return std::make_unique<StringItem>(handle);

    case ItemKind::WideString:
        return std::make_unique<WideString>(handle);

    case ItemKind::MultiTextBox:
        return std::make_unique<MultiTextBox>(handle);

    case ItemKind::RadioBox:
        return std::make_unique<RadioBox>(handle);

    case ItemKind::IntegerItem:
        return std::make_unique<IntegerItem>(handle);

    case ItemKind::RealItem:
        return std::make_unique<RealItem>(handle);

    case ItemKind::Toggle:
        return std::make_unique<Toggle>(handle);

    case ItemKind::ColorTool:
        return std::make_unique<ColorTool>(handle);

    case ItemKind::GroupBox:
        return std::make_unique<GroupBox>(handle);

    case ItemKind::LabelItem:
        return std::make_unique<LabelItem>(handle);

    case ItemKind::Dialog:
        return std::make_unique<DialogItem>(handle);
    default:
        return std::make_unique<StylerItem>(handle);
    }
}

} // namespace nxsim::detail
