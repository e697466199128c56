#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/UIStyler_StylerEvent.hxx>
#include <NXOpen/UIStyler_StylerItem.hxx>

namespace NXOpen::UIStyler {

/// A one-line text field; Enter fires the activate event.
class WideString : public StylerItem {
public:
    explicit WideString(void* ptr);

    void AddActivateHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                            bool isDialogLaunchingEvent);
    NXString ItemValue();
    void SetItemValue(const NXString& value);
    void SetLabel(const NXString& label);
    void SetSensitivity(bool sensitive);
    void SetVisibility(bool visible);
    void SetFocus();
};

} // namespace NXOpen::UIStyler
