#include "ui/string_item.h"

namespace KivNX {
namespace UI {

StringItem::StringItem(const NXOpen::UIStyler::StringItem& item)
    : NXOpen::UIStyler::StringItem(item) {}

std::string StringItem::ItemValue() {
    return NXOpen::UIStyler::StringItem::ItemValue().GetText();
}

void StringItem::SetItemValue(const std::string& text) {
    NXOpen::UIStyler::StringItem::SetItemValue(NXOpen::NXString(text));
}

} // namespace UI
} // namespace KivNX
