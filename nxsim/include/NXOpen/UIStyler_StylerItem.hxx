#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.
// The numeric values of the dialog states and responses are fixed here, once.

#include <NXOpen/Callback.hxx>
#include <NXOpen/NXString.hxx>

#include <memory>

namespace nxsim {
class RuntimeItem;
enum class ItemKind;
} // namespace nxsim

namespace NXOpen::UIStyler {

/// What a handler asks of its dialog.
enum DialogState { DialogStateContinueDialog = 0, DialogStateExitDialog = 1 };

/// How Dialog::Show() ended.
enum DialogResponse {
    DialogResponsePickResponse = 1,
    DialogResponseOk = 2,
    DialogResponseCancel = 3,
    DialogResponseBack = 4,
    DialogResponseApply = 5,
    DialogResponseHelp = 6,
    DialogResponseObjectSelected = 7,
    DialogResponseObjectSelectedByName = 8,
    DialogResponseCbTerminate = 9 ///< a handler other than OK returned DialogStateExitDialog
};

class StylerEvent;

/// One item of a dialog. Every copy, and every object built from the same handle, acts on the same
/// item of the dialog; once the dialog is deleted, every operation throws NXException.
class StylerItem {
public:
    /// Binds to the item whose handle is `ptr` (GetHandle()); throws NXException for a handle that
    /// names no live item.
    explicit StylerItem(void* ptr);
    virtual ~StylerItem();
    StylerItem(const StylerItem&) = default;
    StylerItem& operator=(const StylerItem&) = default;

    void* GetHandle() const;

protected:
    /// Binds to `ptr`, which must be an item of `kind`; throws NXException naming both kinds if
    /// not.
    StylerItem(void* ptr, nxsim::ItemKind kind);
    nxsim::RuntimeItem& nxsimItem() const;

private:
    std::shared_ptr<nxsim::RuntimeItem> m_item;
};

} // namespace NXOpen::UIStyler
