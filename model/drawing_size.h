#pragma once

#include <string>

namespace QorBorder {

/// One sheet format of a border layout; held by value inside its BorderLayout.
class DrawingSize {
public:
    std::string templateFile; ///< frame template part, looked up in format_defs/frame_templates
    std::string name;
    std::string description; ///< the text shown in the border's list of sizes
    std::string label;
    double height = 0.0; ///< sheet height in the border's units
    double length = 0.0; ///< sheet length in the border's units
    double frameLength = 0.0;
    int horizontalZones = 0; ///< number of zones along the length
    int verticalZones = 0;   ///< number of zones along the height

    bool operator==(const DrawingSize& other) const;
    bool operator!=(const DrawingSize& other) const { return !(*this == other); }
};

} // namespace QorBorder
