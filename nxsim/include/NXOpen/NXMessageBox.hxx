#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/NXString.hxx>

namespace NXOpen {

/// NX's modal message box.
class NXMessageBox {
public:
    enum DialogType {
        DialogTypeError,
        DialogTypeWarning,
        DialogTypeInformation,
        DialogTypeQuestion
    };

    /// Shows the box and returns when it is closed; returns 1.
    int Show(const NXString& title, DialogType type, const NXString& message);
};

} // namespace NXOpen
