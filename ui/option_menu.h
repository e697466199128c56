#pragma once

#include <NXOpen/UIStyler_OptionMenu.hxx>

#include <string>
#include <vector>

namespace KivNX {
namespace UI {

/// An option menu handled with narrow strings.
class OptionMenu : public NXOpen::UIStyler::OptionMenu {
public:
    explicit OptionMenu(const NXOpen::UIStyler::OptionMenu& item);

    using NXOpen::UIStyler::OptionMenu::SetItems;
    using NXOpen::UIStyler::OptionMenu::SetItemValue;

    /// Replaces the entries; the first becomes current.
    void SetItems(const std::vector<std::string>& entries);
    std::vector<std::string> Items();
    /// The current entry's text; empty when the menu has no entries.
    std::string ItemValueString();
    /// Makes the first entry with that text current. The empty text, when no entry is empty,
    /// makes the first entry current (a menu whose value was never chosen shows its first
    /// entry). Any other text that is not an entry changes nothing and throws NoSuchEntryError,
    /// whose text names the text, the entries and the entry still shown.
    void SetItemValue(const std::string& text);
};

} // namespace UI
} // namespace KivNX
