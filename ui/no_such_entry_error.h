#pragma once

#include <stdexcept>

namespace KivNX {
namespace UI {

/// Thrown by a control asked to make current an entry that it does not have (an option menu
/// given a text that is not among its entries). A handler may catch it; one that does not leaves
/// it to the dialog framework, which tells the user and keeps the dialog open (see
/// NXDialogBase).
class NoSuchEntryError : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

} // namespace UI
} // namespace KivNX
