#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/UIStyler_StylerEvent.hxx>
#include <NXOpen/UIStyler_StylerItem.hxx>

#include <vector>

namespace NXOpen::UIStyler {

/// A list of rows with at most one selected.
class SingleSelectList : public StylerItem {
public:
    explicit SingleSelectList(void* ptr);

    void AddActivateHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                            bool isDialogLaunchingEvent);
    void AddDoubleClickHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                               bool isDialogLaunchingEvent);
    /// Selects row `index`; -1 clears the selection; throws NXException for other rows.
    void SetSelected(int index);
    /// Replaces all rows; the selection is cleared.
    void SetListItems(std::vector<NXString>& items);
    std::vector<NXString> GetListItems();
    void Append(std::vector<NXString>& items);
    /// Clears the selection if row `index` is selected; throws NXException for a bad row.
    void DeselectSubItem(int index);
    /// Removes row `index`; a selection behind it moves up, a selection of it is cleared.
    void DeleteSubItem(int index);
    /// The selected row, -1 when none.
    int GetSelectedIndexValue();
    /// The selected row's text, empty when none.
    NXString GetSelectedString();
    void SetSensitivity(bool sensitive);
    void SetVisibility(bool visible);
    void SetFocus();
};

} // namespace NXOpen::UIStyler
