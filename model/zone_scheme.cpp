#include "model/zone_scheme.h"

namespace QorBorder {

const std::vector<std::string>& zoneTypeTexts() {
    static const std::vector<std::string> texts = {
        "Numbers (1, 2, 3, ...)", "Letters (A, B, C, ... without I and O)", "None"};
    return texts;
}

const std::vector<std::string>& zoneStartTexts() {
    static const std::vector<std::string> texts = {"Top left", "Top right", "Bottom left",
                                                   "Bottom right"};
    return texts;
}

ZoneType zoneTypeOf(int storedType) {
    switch (storedType) {
    case ZoneLetters:
        return ZoneLetters;
    case ZoneNone:
        return ZoneNone;
    default:
        return ZoneNumbers;
    }
}

bool numbersZones(int storedType) {
    return zoneTypeOf(storedType) != ZoneNone;
}

std::string zoneLabel(int storedType, int ordinal) {
    if (ordinal < 0) {
        return "";
    }
    switch (zoneTypeOf(storedType)) {
    case ZoneNumbers:
        return std::to_string(ordinal + 1);
    case ZoneLetters: {
        // I and O are left out: on a drawing they read as 1 and 0.
        static const std::string letters = "ABCDEFGHJKLMNPQRSTUVWXYZ";
        const int count = static_cast<int>(letters.size());
        return std::string(static_cast<std::size_t>(ordinal / count + 1),
                           letters[static_cast<std::size_t>(ordinal % count)]);
    }
    case ZoneNone:
        break;
    }
    return "";
}

bool zonesCountFromLeft(int storedStart) {
    return storedStart != ZoneStartTopRight && storedStart != ZoneStartBottomRight;
}

bool zonesCountFromTop(int storedStart) {
    return storedStart != ZoneStartBottomLeft && storedStart != ZoneStartBottomRight;
}

std::vector<double> zoneBoundaries(double from, double to, int count) {
    std::vector<double> boundaries;
    if (count < 1) {
        return boundaries;
    }
    for (int i = 0; i <= count; ++i) {
        boundaries.push_back(i == count ? to : from + (to - from) * i / count);
    }
    return boundaries;
}

} // namespace QorBorder
