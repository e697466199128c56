#pragma once

#include <NXOpen/UIStyler_StringItem.hxx>

#include <string>

namespace KivNX {
namespace UI {

/// A one-line text field handled with narrow strings.
class StringItem : public NXOpen::UIStyler::StringItem {
public:
    explicit StringItem(const NXOpen::UIStyler::StringItem& item);

    std::string ItemValue();
    void SetItemValue(const std::string& text);
};

} // namespace UI
} // namespace KivNX
