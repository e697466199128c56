#pragma once

#include "model/drawing_size.h"
#include "model/frame_units_type.h"

#include <string>
#include <vector>

namespace QorBorder {

/// A point of a border layout's frame. z is kept only because the file carries it; the dialogs
/// always write 0.
struct Point3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    bool operator==(const Point3& other) const;
    bool operator!=(const Point3& other) const { return !(*this == other); }
};

/// One kind of drawing frame with the sheet formats it comes in. Copies are deep.
class BorderLayout {
public:
    std::string id; ///< unique across all open documents (checked by the dialogs, not here)
    std::string description;
    std::string category;
    std::vector<std::string> coreRequiredBlocks;   ///< block IDs required as core blocks
    std::vector<std::string> sheet1RequiredBlocks; ///< block IDs required on sheet 1
    std::vector<std::string> secondLanguages;
    int units = Inches; ///< a FrameUnitsType, 1-based
    int layer = 0;
    Point3 bottomLeft; ///< lower left frame corner, from the sheet origin
    Point3 topRight;   ///< upper right frame corner as distances from the right and top edges
    int horizontalZoneType = 0; ///< item index of the horizontal numbering scheme
    int verticalZoneType = 0;
    int zoneStart = 0; ///< index of the corner where zone numbering starts

    BorderLayout() = default;
    BorderLayout(const BorderLayout&) = default;
    BorderLayout& operator=(const BorderLayout&) = default;
    ~BorderLayout() = default;

    /// Several lines describing the layout, for the document summary.
    std::string informationString() const;

    /// Appends a copy of `size`.
    void addDrawingSize(const DrawingSize& size);
    /// The stored size itself; valid until the next add or delete. Throws std::out_of_range.
    DrawingSize& getDrawingSize(int index);
    const DrawingSize& getDrawingSize(int index) const;
    /// Removes the size; later ones move up. Throws std::out_of_range.
    void deleteDrawingSize(int index);
    /// One entry (the description) per size, in list order.
    std::vector<std::string> drawingSizeDescriptions() const;
    const std::vector<DrawingSize>& drawingSizes() const { return m_drawingSizes; }

    bool operator==(const BorderLayout& other) const;
    bool operator!=(const BorderLayout& other) const { return !(*this == other); }

private:
    std::vector<DrawingSize> m_drawingSizes;
};

} // namespace QorBorder
