#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/UIStyler_StylerItem.hxx>

#include <memory>

namespace NXOpen::UIStyler {

/// The event passed to a handler: the item it happened on and why.
class StylerEvent {
public:
    enum Reason {
        ReasonConstruct,
        ReasonOkay,
        ReasonCancel,
        ReasonActivate,
        ReasonDoubleClick,
        ReasonValueChanged
    };

    /// Built by the dialog runtime for each dispatched event.
    StylerEvent(std::unique_ptr<StylerItem> item, Reason reason);
    ~StylerEvent();
    StylerEvent(const StylerEvent&) = delete;
    StylerEvent& operator=(const StylerEvent&) = delete;

    /// The item, as an object of its own class (PushButton, SingleSelectList, ...); valid while
    /// the handler runs.
    StylerItem* GetStylerItem();
    Reason GetReason();

private:
    std::unique_ptr<StylerItem> m_item;
    Reason m_reason;
};

} // namespace NXOpen::UIStyler
