#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/UIStyler_StylerItem.hxx>

#include <vector>

namespace NXOpen::UIStyler {

/// A multi-line text field, handled as lines.
class MultiTextBox : public StylerItem {
public:
    explicit MultiTextBox(void* ptr);

    std::vector<NXString> GetItemValues();
    void SetItemValues(std::vector<NXString>& values);
    void SetLabel(const NXString& label);
    void SetSensitivity(bool sensitive);
    void SetVisibility(bool visible);
    void SetFocus();
};

} // namespace NXOpen::UIStyler
