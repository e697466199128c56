#include "ui/wide_string.h"

namespace KivNX {
namespace UI {

WideString::WideString(const NXOpen::UIStyler::WideString& item)
    : NXOpen::UIStyler::WideString(item) {}

std::string WideString::ItemValue() {
    return NXOpen::UIStyler::WideString::ItemValue().GetText();
}

void WideString::SetItemValue(const std::string& text) {
    NXOpen::UIStyler::WideString::SetItemValue(NXOpen::NXString(text));
}

} // namespace UI
} // namespace KivNX
