#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/UIStyler_StylerEvent.hxx>
#include <NXOpen/UIStyler_StylerItem.hxx>

namespace NXOpen::UIStyler {

class PushButton : public StylerItem {
public:
    explicit PushButton(void* ptr);

    void AddActivateHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                            bool isDialogLaunchingEvent);
    void SetLabel(const NXString& label);
    void SetSensitivity(bool sensitive);
    bool Sensitivity();
    void SetVisibility(bool visible);
    bool Visibility();
    void SetFocus();
};

} // namespace NXOpen::UIStyler
