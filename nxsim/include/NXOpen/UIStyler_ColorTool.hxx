#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/UIStyler_StylerEvent.hxx>
#include <NXOpen/UIStyler_StylerItem.hxx>

namespace NXOpen::UIStyler {

/// A colour chooser holding a colour number.
class ColorTool : public StylerItem {
public:
    explicit ColorTool(void* ptr);

    void AddValueChangedHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                                bool isDialogLaunchingEvent);
    int ItemValue();
    void SetItemValue(int value);
    void SetSensitivity(bool sensitive);
    void SetVisibility(bool visible);
};

} // namespace NXOpen::UIStyler
