#include "ui/single_select_list.h"

#include "ui/strings.h"

namespace KivNX {
namespace UI {

SingleSelectList::SingleSelectList(const NXOpen::UIStyler::SingleSelectList& item)
    : NXOpen::UIStyler::SingleSelectList(item) {}

void SingleSelectList::Append(const std::string& row) {
    std::vector<NXOpen::NXString> rows{NXOpen::NXString(row)};
    NXOpen::UIStyler::SingleSelectList::Append(rows);
}

void SingleSelectList::ClearList() {
    std::vector<NXOpen::NXString> none;
    NXOpen::UIStyler::SingleSelectList::SetListItems(none);
}

void SingleSelectList::SetListItems(const std::vector<std::string>& rows) {
    std::vector<NXOpen::NXString> texts = toNXStrings(rows);
    NXOpen::UIStyler::SingleSelectList::SetListItems(texts);
}

std::vector<std::string> SingleSelectList::ListItems() {
    return toStrings(GetListItems());
}

bool SingleSelectList::HasSelection() {
    return SelectedIndexValue() >= 0;
}

int SingleSelectList::SelectedIndexValue() {
    return GetSelectedIndexValue();
}

std::string SingleSelectList::SelectedString() {
    return GetSelectedString().GetText();
}

} // namespace UI
} // namespace KivNX
