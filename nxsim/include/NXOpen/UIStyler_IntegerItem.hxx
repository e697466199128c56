#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/UIStyler_StylerEvent.hxx>
#include <NXOpen/UIStyler_StylerItem.hxx>

namespace NXOpen::UIStyler {

class IntegerItem : public StylerItem {
public:
    explicit IntegerItem(void* ptr);

    void AddActivateHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                            bool isDialogLaunchingEvent);
    int ItemValue();
    void SetItemValue(int value);
    void SetLabel(const NXString& label);
    void SetSensitivity(bool sensitive);
    void SetVisibility(bool visible);
    void SetFocus();
};

} // namespace NXOpen::UIStyler
