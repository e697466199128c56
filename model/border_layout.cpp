#include "model/border_layout.h"

#include "model/list_util.h"

#include <sstream>

namespace QorBorder {

namespace {

using ListUtil::checkedIndex;

std::string joined(const std::vector<std::string>& items) {
    std::string text;
    for (const std::string& item : items) {
        text += text.empty() ? "" : ", ";
        text += item;
    }
    return text.empty() ? "(none)" : text;
}

} // namespace

bool Point3::operator==(const Point3& other) const {
    return x == other.x && y == other.y && z == other.z;
}

bool DrawingSize::operator==(const DrawingSize& other) const {
    return templateFile == other.templateFile && name == other.name &&
           description == other.description && label == other.label && height == other.height &&
           length == other.length && frameLength == other.frameLength &&
           horizontalZones == other.horizontalZones && verticalZones == other.verticalZones;
}

std::string BorderLayout::informationString() const {
    std::ostringstream out;
    out << "Border " << id << ": " << description << "\n";
    out << "  Category: " << category << "\n";
    out << "  Units: " << units << ", layer: " << layer << "\n";
    out << "  Frame corners: (" << bottomLeft.x << ", " << bottomLeft.y << ") to (" << topRight.x
        << ", " << topRight.y << ") from the top right\n";
    out << "  Zones: horizontal type " << horizontalZoneType << ", vertical type "
        << verticalZoneType << ", start " << zoneStart << "\n";
    out << "  Core required blocks: " << joined(coreRequiredBlocks) << "\n";
    out << "  Sheet 1 required blocks: " << joined(sheet1RequiredBlocks) << "\n";
    out << "  Second languages: " << joined(secondLanguages) << "\n";
    out << "  Drawing sizes: " << m_drawingSizes.size();
    for (const DrawingSize& size : m_drawingSizes) {
        out << "\n    " << size.name << " (" << size.description << "): " << size.length << " x "
            << size.height << ", template " << size.templateFile;
    }
    return out.str();
}

void BorderLayout::addDrawingSize(const DrawingSize& size) {
    m_drawingSizes.push_back(size);
}

DrawingSize& BorderLayout::getDrawingSize(int index) {
    return m_drawingSizes[checkedIndex(index, m_drawingSizes.size(), "getDrawingSize")];
}

const DrawingSize& BorderLayout::getDrawingSize(int index) const {
    return m_drawingSizes[checkedIndex(index, m_drawingSizes.size(), "getDrawingSize")];
}

void BorderLayout::deleteDrawingSize(int index) {
    const std::size_t at = checkedIndex(index, m_drawingSizes.size(), "deleteDrawingSize");
    m_drawingSizes.erase(m_drawingSizes.begin() + static_cast<long>(at));
}

std::vector<std::string> BorderLayout::drawingSizeDescriptions() const {
    std::vector<std::string> descriptions;
    descriptions.reserve(m_drawingSizes.size());
    for (const DrawingSize& size : m_drawingSizes) {
        descriptions.push_back(size.description);
    }
    return descriptions;
}

bool BorderLayout::operator==(const BorderLayout& other) const {
    return id == other.id && description == other.description && category == other.category &&
           coreRequiredBlocks == other.coreRequiredBlocks &&
           sheet1RequiredBlocks == other.sheet1RequiredBlocks &&
           secondLanguages == other.secondLanguages && units == other.units &&
           layer == other.layer && bottomLeft == other.bottomLeft && topRight == other.topRight &&
           horizontalZoneType == other.horizontalZoneType &&
           verticalZoneType == other.verticalZoneType && zoneStart == other.zoneStart &&
           m_drawingSizes == other.m_drawingSizes;
}

} // namespace QorBorder
