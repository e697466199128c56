#pragma once

#include <NXOpen/UIStyler_SingleSelectList.hxx>

#include <string>
#include <vector>

namespace KivNX {
namespace UI {

/// A single-select list handled with narrow strings.
class SingleSelectList : public NXOpen::UIStyler::SingleSelectList {
public:
    explicit SingleSelectList(const NXOpen::UIStyler::SingleSelectList& item);

    using NXOpen::UIStyler::SingleSelectList::Append;
    using NXOpen::UIStyler::SingleSelectList::SetListItems;

    /// Appends one row.
    void Append(const std::string& row);
    /// Removes every row.
    void ClearList();
    /// Replaces every row, in order; nothing is selected afterwards.
    void SetListItems(const std::vector<std::string>& rows);
    std::vector<std::string> ListItems();
    bool HasSelection();
    /// The selected row from 0, or a negative value when nothing is selected.
    int SelectedIndexValue();
    /// The selected row's text; empty when nothing is selected.
    std::string SelectedString();
};

} // namespace UI
} // namespace KivNX
