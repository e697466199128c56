#pragma once

#include <string>

namespace KivNX {
namespace UI {

/// Shows a modal error message box; returns when the user has closed it.
void errorDialog(const std::string& title, const std::string& message);

/// Shows a modal information message box; returns when the user has closed it.
void informationDialog(const std::string& title, const std::string& message);

} // namespace UI
} // namespace KivNX
