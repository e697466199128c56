#pragma once

namespace QorBorder {

/// Units of a border or block layout. The stored values start at 1 in the order of the dialogs'
/// units menu (menu index = value - 1); AllUnits (0) is only a query argument meaning "every
/// layout, whatever its units".
enum FrameUnitsType {
    AllUnits = 0,
    Inches = 1,
    Millimeters = 2,
};

} // namespace QorBorder
