#pragma once

#include <NXOpen/UIStyler_StylerItem.hxx>

namespace KivNX {
namespace UI {

/// Makes a whole item sensitive or not, whatever its class; for the update functions, which get
/// their item as a StylerItem.
void setSensitivity(NXOpen::UIStyler::StylerItem* item, bool sensitive);

} // namespace UI
} // namespace KivNX
