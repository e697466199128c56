#pragma once

#include <string>
#include <vector>

namespace QorBorder {

// What a border's zone settings mean. The border stores item indexes of three option menus
// (horizontalZoneType, verticalZoneType, zoneStart); the menus' texts and everything that draws or
// checks zones follow the definitions here, so that the two cannot drift apart.

/// How the zones along one edge are numbered (the item index of the zone type menu).
enum ZoneType {
    ZoneNumbers = 0, ///< 1, 2, 3, ...
    ZoneLetters = 1, ///< A, B, C, ... without I and O; after Z: AA, BB, ...
    ZoneNone = 2,    ///< the edge has no zones
};

/// The corner of the frame where the numbering of both edges starts (the item index of the zone
/// start menu).
enum ZoneStart {
    ZoneStartTopLeft = 0,
    ZoneStartTopRight = 1,
    ZoneStartBottomLeft = 2,
    ZoneStartBottomRight = 3,
};

/// The texts of the zone type menu, one per ZoneType, in index order.
const std::vector<std::string>& zoneTypeTexts();
/// The texts of the zone start menu, one per ZoneStart, in index order.
const std::vector<std::string>& zoneStartTexts();

/// The scheme a stored zone type stands for; an index outside the menu counts as ZoneNumbers,
/// the menu's first entry, which is what the menu shows for it.
ZoneType zoneTypeOf(int storedType);
/// Whether an edge with that stored zone type has numbered zones.
bool numbersZones(int storedType);

/// The label of the zone that is `ordinal`-th (from 0) counted from the start corner: "1", "2",
/// ... for numbers, "A" ... "Z" without I and O, then "AA", "BB", ... for letters; "" for no
/// zones or a negative ordinal.
std::string zoneLabel(int storedType, int ordinal);

/// Whether the zones along the length are counted from the left edge (else from the right). A
/// start outside the menu counts as ZoneStartTopLeft, the menu's first entry.
bool zonesCountFromLeft(int storedStart);
/// Whether the zones along the height are counted from the top edge (else from the bottom).
bool zonesCountFromTop(int storedStart);

/// Where the zones of an edge lie: the frame edge from `from` to `to` (drawing coordinates) is cut
/// into `count` equal zones. Returns the count + 1 boundaries from `from` to `to`; none for a
/// count below 1.
std::vector<double> zoneBoundaries(double from, double to, int count);

} // namespace QorBorder
