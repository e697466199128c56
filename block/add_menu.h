#pragma once

#include <string>
#include <vector>

namespace QorBorderConf {

/// The menus of IDs to add to a list (the row type dialog's input dialog fields, the symbol type
/// dialog's line fields): what is offered and not yet in the list, or "None" alone.
namespace AddMenu {

inline constexpr char kNone[] = "None";

/// The IDs of `offered` that `listed` does not hold yet, sorted by bytes; {"None"} when there
/// are none.
std::vector<std::string> entries(std::vector<std::string> offered, std::vector<std::string> listed);

/// Whether a menu built by entries() has an ID to add (it is not "None" alone).
bool offersAnId(const std::vector<std::string>& menuItems);

} // namespace AddMenu

} // namespace QorBorderConf
