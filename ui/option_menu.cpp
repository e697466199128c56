#include "ui/option_menu.h"

#include "ui/no_such_entry_error.h"
#include "ui/strings.h"

namespace KivNX {
namespace UI {

OptionMenu::OptionMenu(const NXOpen::UIStyler::OptionMenu& item)
    : NXOpen::UIStyler::OptionMenu(item) {}

void OptionMenu::SetItems(const std::vector<std::string>& entries) {
    std::vector<NXOpen::NXString> texts = toNXStrings(entries);
    NXOpen::UIStyler::OptionMenu::SetItems(texts);
}

std::vector<std::string> OptionMenu::Items() {
    return toStrings(GetItems());
}

std::string OptionMenu::ItemValueString() {
    const int current = ItemValue();
    const std::vector<std::string> entries = Items();
    if (current < 0 || static_cast<std::size_t>(current) >= entries.size()) {
        return {};
    }
    return entries[static_cast<std::size_t>(current)];
}

void OptionMenu::SetItemValue(const std::string& text) {
    const std::vector<std::string> entries = Items();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (entries[i] == text) {
            NXOpen::UIStyler::OptionMenu::SetItemValue(static_cast<int>(i));
            return;
        }
    }
    if (text.empty()) {
        if (!entries.empty()) {
            NXOpen::UIStyler::OptionMenu::SetItemValue(0);
        }
        return;
    }
    if (entries.empty()) {
        throw NoSuchEntryError("The menu has no entries, so it cannot show '" + text + "'.");
    }
    std::string listed;
    for (const std::string& entry : entries) {
        listed += (listed.empty() ? "'" : ", '") + entry + "'";
    }
    throw NoSuchEntryError("The menu has no entry '" + text + "' (its entries: " + listed +
                           "); it keeps '" + ItemValueString() + "'.");
}

} // namespace UI
} // namespace KivNX
