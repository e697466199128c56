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
    /// Makes the first entry with that text current; without such an entry nothing changes.
    void SetItemValue(const std::string& text);
};

} // namespace UI
} // namespace KivNX
