#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/UIStyler_StylerEvent.hxx>
#include <NXOpen/UIStyler_StylerItem.hxx>

namespace NXOpen::UIStyler {

/// The dialog itself: construct, OK and cancel handlers, title and navigation buttons.
class DialogItem : public StylerItem {
public:
    enum DialogItemIndex {
        DialogItemIndexOk,
        DialogItemIndexApply,
        DialogItemIndexBack,
        DialogItemIndexCancel
    };

    explicit DialogItem(void* ptr);

    void AddConstructHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                             bool isDialogLaunchingEvent);
    void AddOkayHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                        bool isDialogLaunchingEvent);
    void AddCancelHandler(const NXOpen::Callback1<DialogState, StylerEvent*>& handler,
                          bool isDialogLaunchingEvent);
    void SetTitle(const NXString& title);
    void SetNavigationSensitivity(DialogItemIndex button, bool sensitive);
};

} // namespace NXOpen::UIStyler
