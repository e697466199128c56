#pragma once

#include <cstdint>
#include <string>

namespace QorBorder {

/// One allowed placement of a block. Exchanging two locations is done by assignment.
class BlockLocation {
public:
    std::string id;
    std::string blockId;
    std::string styleId;           ///< empty: any style
    std::string associatedBlockId; ///< empty: the drawing itself
    std::string dialogText;
    std::string offsetX; ///< kept as text
    std::string offsetY; ///< kept as text
    std::int32_t attachCorner = 0;
    std::int32_t associatedCorner = 0;
    std::int32_t overflowDirection = 0;

    bool operator==(const BlockLocation& other) const {
        return id == other.id && blockId == other.blockId && styleId == other.styleId &&
               associatedBlockId == other.associatedBlockId && dialogText == other.dialogText &&
               offsetX == other.offsetX && offsetY == other.offsetY &&
               attachCorner == other.attachCorner && associatedCorner == other.associatedCorner &&
               overflowDirection == other.overflowDirection;
    }
    bool operator!=(const BlockLocation& other) const { return !(*this == other); }
};

} // namespace QorBorder
