#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/UIStyler_StylerEvent.hxx>
#include <NXOpen/UIStyler_StylerItem.hxx>

namespace NXOpen::UIStyler {

/// A set of exclusive choices whose entries come from the resource file.
class RadioBox : public StylerItem {
public:
    explicit RadioBox(void* ptr);

    void AddValueChangedHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                                bool isDialogLaunchingEvent);
    /// The current entry, -1 when none.
    int ItemValue();
    /// Makes entry `index` current; throws NXException for an index out of range.
    void SetItemValue(int index);
    /// Sensitivity of entry `subitemIndex`, or of the whole box for -1.
    void SetSensitivity(int subitemIndex, bool sensitive);
    void SetVisibility(bool visible);
};

} // namespace NXOpen::UIStyler
