#pragma once

#include <string>

namespace QorBorder {

/// One text choice of a field.
class Choice {
public:
    std::string lookupKey;
    std::string shortValue; ///< the menu text
    std::string fullValue;  ///< the text put into the drawing; may hold several lines

    bool operator==(const Choice& other) const {
        return lookupKey == other.lookupKey && shortValue == other.shortValue &&
               fullValue == other.fullValue;
    }
    bool operator!=(const Choice& other) const { return !(*this == other); }
};

} // namespace QorBorder
