#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/UIStyler_StylerItem.hxx>

namespace NXOpen::UIStyler {

/// A frame around other items; an insensitive or hidden group makes its items so too.
class GroupBox : public StylerItem {
public:
    explicit GroupBox(void* ptr);

    void SetLabel(const NXString& label);
    void SetSensitivity(bool sensitive);
    void SetVisibility(bool visible);
};

} // namespace NXOpen::UIStyler
