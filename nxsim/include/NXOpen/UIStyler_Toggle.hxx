#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/UIStyler_StylerEvent.hxx>
#include <NXOpen/UIStyler_StylerItem.hxx>

namespace NXOpen::UIStyler {

class Toggle : public StylerItem {
public:
    explicit Toggle(void* ptr);

    void AddValueChangedHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                                bool isDialogLaunchingEvent);
    bool ItemValue();
    void SetItemValue(bool value);
    /// A toggle has one entry: `subitemIndex` is -1 or 0; others throw NXException.
    void SetSensitivity(int subitemIndex, bool sensitive);
    void SetVisibility(bool visible);
    void SetFocus();
};

} // namespace NXOpen::UIStyler
