#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/UIStyler_StylerEvent.hxx>
#include <NXOpen/UIStyler_StylerItem.hxx>

#include <vector>

namespace NXOpen::UIStyler {

/// A drop-down menu of entries, one of them current; each entry has its own sensitivity.
class OptionMenu : public StylerItem {
public:
    explicit OptionMenu(void* ptr);

    void AddActivateHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                            bool isDialogLaunchingEvent);
    /// Replaces the entries (all sensitive); the first one becomes current, none if empty.
    void SetItems(std::vector<NXString>& items);
    std::vector<NXString> GetItems();
    /// The current entry, -1 when the menu is empty.
    int ItemValue();
    /// Makes entry `index` current; throws NXException for an index out of range.
    void SetItemValue(int index);
    /// Sensitivity of entry `subitemIndex`, or of the whole menu for -1.
    void SetSensitivity(int subitemIndex, bool sensitive);
    /// Sensitivity of the whole menu.
    bool GetSensitivity();
    void SetVisibility(bool visible);
    void SetLabel(const NXString& label);
};

} // namespace NXOpen::UIStyler
