#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace QorBorder {

/// A symbol of a block layout: an ID symbol built from field values on one or two lines, or a
/// named custom symbol. Its name is its dialog text.
class SymbolType {
public:
    std::string dialogText;
    std::int32_t type = 0;  ///< 0 ID symbol, otherwise custom
    std::int32_t color = 0; ///< NX colour index
    std::int32_t layer = 0;
    std::vector<std::string> line1FieldIds;
    std::vector<std::string> line2FieldIds;
    std::string fontName;
    double symbolSize = 0.0;
    double textSize = 0.0;
    double textAspect = 0.0;
    double line1Scale = 0.0;
    double line2Scale = 0.0;
    std::string customSymbolName;

    bool operator==(const SymbolType& other) const;
    bool operator!=(const SymbolType& other) const { return !(*this == other); }
};

} // namespace QorBorder
