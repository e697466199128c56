#pragma once

#include <NXOpen/UIStyler_StylerItem.hxx>

#include <string>

namespace KivNX {
namespace UI {

/// The titles of an OK handler's refusals: a missing or malformed value, an ID already used.
inline constexpr char kValidationError[] = "Validation Error";
inline constexpr char kDuplicateError[] = "Duplicate Error";
/// The title under which the dialog framework shows a control's refusal that no handler caught.
inline constexpr char kControlError[] = "Error";

/// Shows a modal error message box; returns when the user has closed it.
void errorDialog(const std::string& title, const std::string& message);

/// Shows a modal information message box; returns when the user has closed it.
void informationDialog(const std::string& title, const std::string& message);

/// The refusal every OK handler makes on its first failed check: the error message, then the
/// focus on the offending item; the returned state keeps the dialog open with its input.
template <class Item>
NXOpen::UIStyler::DialogState refuse(Item& offending, const std::string& title,
                                     const std::string& message) {
    errorDialog(title, message);
    offending.SetFocus();
    return NXOpen::UIStyler::DialogStateContinueDialog;
}

} // namespace UI
} // namespace KivNX
