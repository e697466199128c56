#pragma once

#include <NXOpen/UIStyler_WideString.hxx>

#include <string>

namespace KivNX {
namespace UI {

/// NX's wide-string field handled with narrow (UTF-8) strings.
class WideString : public NXOpen::UIStyler::WideString {
public:
    explicit WideString(const NXOpen::UIStyler::WideString& item);

    std::string ItemValue();
    void SetItemValue(const std::string& text);
};

} // namespace UI
} // namespace KivNX
