#include "model/fordef_format.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>

namespace QorBorder {
namespace Fordef {

const std::vector<Attribute<BorderLayout>>& borderAttributes() {
    using T = BorderLayout;
    static const std::vector<Attribute<T>> table = {
        attribute("id", &T::id),
        attribute("description", &T::description),
        attribute("category", &T::category),
        attribute("units", &T::units),
        attribute("layer", &T::layer),
        attribute("horizontalZoneType", &T::horizontalZoneType),
        attribute("verticalZoneType", &T::verticalZoneType),
        attribute("zoneStart", &T::zoneStart),
    };
    return table;
}

const std::vector<Attribute<Point3>>& pointAttributes() {
    using T = Point3;
    static const std::vector<Attribute<T>> table = {
        attribute("x", &T::x),
        attribute("y", &T::y),
        attribute("z", &T::z),
    };
    return table;
}

const std::vector<Attribute<DrawingSize>>& drawingSizeAttributes() {
    using T = DrawingSize;
    static const std::vector<Attribute<T>> table = {
        attribute("templateFile", &T::templateFile),
        attribute("name", &T::name),
        attribute("description", &T::description),
        attribute("label", &T::label),
        attribute("height", &T::height),
        attribute("length", &T::length),
        attribute("frameLength", &T::frameLength),
        attribute("horizontalZones", &T::horizontalZones),
        attribute("verticalZones", &T::verticalZones),
    };
    return table;
}

const std::vector<Attribute<BlockLayout>>& blockAttributes() {
    using T = BlockLayout;
    static const std::vector<Attribute<T>> table = {
        attribute("id", &T::id),
        attribute("description", &T::description),
        attribute("category", &T::category),
        attribute("units", &T::units),
        attribute("layer", &T::layer),
        attribute("editMethod", &T::editMethod),
        attribute("dialogFileName", &T::dialogFileName),
        attribute("delegateLibrary", &T::delegateLibrary),
        attribute("setStyleDelegate", &T::setStyleDelegate),
        attribute("editFieldsDelegate", &T::editFieldsDelegate),
        attribute("requiredBlockOnly", &T::requiredBlockOnly),
        attribute("repeating", &T::repeating),
        attribute("repeatSpacing", &T::repeatSpacing),
        attribute("columnForRowNumber", &T::columnForRowNumber),
        attribute("sbfBase", &T::sbfBase),
        attribute("sbfFileName", &T::sbfFileName),
        attribute("flip", &T::flip),
        attribute("angle", &T::angle),
        attribute("borderTransition", &T::borderTransition),
        attribute("allowOverride", &T::allowOverride),
        attribute("maxHeightMargin", &T::maxHeightMargin),
        attribute("defaultStyleId", &T::defaultStyleId),
    };
    return table;
}

const std::vector<Attribute<Field>>& fieldAttributes() {
    using T = Field;
    static const std::vector<Attribute<T>> table = {
        attribute("id", &T::id),
        attribute("type", &T::type),
        attribute("isTableField", &T::isTableField),
        attribute("secondLanguageFieldId", &T::secondLanguageFieldId),
        attribute("collapseNoValue", &T::collapseNoValue),
        attribute("prefix", &T::prefix),
        attribute("suffix", &T::suffix),
        attribute("broadcastType", &T::broadcastType),
        attribute("broadcastValueType", &T::broadcastValueType),
        attribute("broadcastTitle", &T::broadcastTitle),
        attribute("syncField", &T::syncField),
        attribute("controlType", &T::controlType),
        attribute("defaultString", &T::defaultString),
        attribute("defaultToCurrentDate", &T::defaultToCurrentDate),
        attribute("defaultChoice", &T::defaultChoice),
        attribute("attrTitle", &T::attrTitle),
    };
    return table;
}

const std::vector<Attribute<Choice>>& choiceAttributes() {
    using T = Choice;
    static const std::vector<Attribute<T>> table = {
        attribute("lookupKey", &T::lookupKey),
        attribute("shortValue", &T::shortValue),
        attribute("fullValue", &T::fullValue),
    };
    return table;
}

const std::vector<Attribute<BlockStyle>>& styleAttributes() {
    using T = BlockStyle;
    static const std::vector<Attribute<T>> table = {
        attribute("id", &T::id),
        attribute("dialogText", &T::dialogText),
        attribute("templateFile", &T::templateFile),
        attribute("templateType", &T::templateType),
    };
    return table;
}

const std::vector<Attribute<FieldPlacement>>& placementAttributes() {
    using T = FieldPlacement;
    static const std::vector<Attribute<T>> table = {
        attribute("row", &T::row),
        attribute("column", &T::column),
        attribute("inHeader", &T::inHeader),
        attribute("fieldIndex", &T::fieldIndex),
    };
    return table;
}

const std::vector<Attribute<RowType>>& rowTypeAttributes() {
    using T = RowType;
    static const std::vector<Attribute<T>> table = {
        attribute("id", &T::id),
        attribute("zoneFieldId", &T::zoneFieldId),
        attribute("listSeparator", &T::listSeparator),
        attribute("headerRow", &T::headerRow),
        attribute("showBottomBorder", &T::showBottomBorder),
        attribute("typeManagerFieldId", &T::typeManagerFieldId),
        attribute("keyFieldId", &T::keyFieldId),
    };
    return table;
}

const std::vector<Attribute<TypeManagerChoiceSettings>>& typeManagerChoiceAttributes() {
    using T = TypeManagerChoiceSettings;
    static const std::vector<Attribute<T>> table = {
        attribute("validSymbolIndices", &T::validSymbolIndices),
        attribute("disabledFieldIds", &T::disabledFieldIds),
    };
    return table;
}

const std::vector<Attribute<SymbolType>>& symbolTypeAttributes() {
    using T = SymbolType;
    static const std::vector<Attribute<T>> table = {
        attribute("dialogText", &T::dialogText),
        attribute("type", &T::type),
        attribute("color", &T::color),
        attribute("layer", &T::layer),
        attribute("fontName", &T::fontName),
        attribute("symbolSize", &T::symbolSize),
        attribute("textSize", &T::textSize),
        attribute("textAspect", &T::textAspect),
        attribute("line1Scale", &T::line1Scale),
        attribute("line2Scale", &T::line2Scale),
        attribute("customSymbolName", &T::customSymbolName),
    };
    return table;
}

const std::vector<Attribute<BlockLocation>>& locationAttributes() {
    using T = BlockLocation;
    static const std::vector<Attribute<T>> table = {
        attribute("id", &T::id),
        attribute("blockId", &T::blockId),
        attribute("styleId", &T::styleId),
        attribute("associatedBlockId", &T::associatedBlockId),
        attribute("dialogText", &T::dialogText),
        attribute("offsetX", &T::offsetX),
        attribute("offsetY", &T::offsetY),
        attribute("attachCorner", &T::attachCorner),
        attribute("associatedCorner", &T::associatedCorner),
        attribute("overflowDirection", &T::overflowDirection),
    };
    return table;
}

bool isXmlSafe(const std::string& value) {
    const auto* p = reinterpret_cast<const unsigned char*>(value.data());
    const auto* const end = p + value.size();
    while (p < end) {
        const unsigned char c = *p;
        if (c < 0x80) {
            if (c < 0x20 && c != '\t' && c != '\n' && c != '\r') {
                return false;
            }
            ++p;
            continue;
        }
        int length = 0;
        std::uint32_t code = 0;
        if ((c & 0xE0) == 0xC0) {
            length = 2;
            code = c & 0x1F;
        } else if ((c & 0xF0) == 0xE0) {
            length = 3;
            code = c & 0x0F;
        } else if ((c & 0xF8) == 0xF0) {
            length = 4;
            code = c & 0x07;
        } else {
            return false;
        }
        if (end - p < length) {
            return false;
        }
        for (int i = 1; i < length; ++i) {
            if ((p[i] & 0xC0) != 0x80) {
                return false;
            }
            code = (code << 6) | (p[i] & 0x3F);
        }
        const std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
        if (code < smallest[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF) ||
            code == 0xFFFE || code == 0xFFFF) {
            return false;
        }
        p += length;
    }
    return true;
}

std::string toHex(const std::string& bytes) {
    static const char digits[] = "0123456789abcdef";
    std::string hex;
    hex.reserve(bytes.size() * 2);
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        hex += digits[b >> 4];
        hex += digits[b & 0x0F];
    }
    return hex;
}

namespace {

int hexValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

// XML Schema numbers may carry surrounding blanks and a leading plus sign.
const char* trimmed(const char* text, const char*& end) {
    end = text + std::strlen(text);
    while (*text == ' ' || *text == '\t' || *text == '\n' || *text == '\r') {
        ++text;
    }
    while (end > text &&
           (end[-1] == ' ' || end[-1] == '\t' || end[-1] == '\n' || end[-1] == '\r')) {
        --end;
    }
    return text;
}

} // namespace

bool fromHex(const char* hex, std::string& bytes) {
    const std::size_t length = std::strlen(hex);
    if (length % 2 != 0) {
        return false;
    }
    bytes.clear();
    bytes.reserve(length / 2);
    for (std::size_t i = 0; i < length; i += 2) {
        const int high = hexValue(hex[i]);
        const int low = hexValue(hex[i + 1]);
        if (high < 0 || low < 0) {
            return false;
        }
        bytes += static_cast<char>(high * 16 + low);
    }
    return true;
}

void appendDouble(std::string& out, double value) {
    if (std::isnan(value)) {
        out += "NaN";
        return;
    }
    if (std::isinf(value)) {
        out += value < 0 ? "-INF" : "INF";
        return;
    }
    char buffer[32];
    const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr);
}

std::string formatDouble(double value) {
    std::string text;
    appendDouble(text, value);
    return text;
}

void appendInt(std::string& out, long value) {
    char buffer[24];
    const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr);
}

bool parseDouble(const char* text, double& value) {
    const char* end = nullptr;
    const char* begin = trimmed(text, end);
    const std::string_view word(begin, static_cast<std::size_t>(end - begin));
    if (word == "INF" || word == "+INF") {
        value = std::numeric_limits<double>::infinity();
        return true;
    }
    if (word == "-INF") {
        value = -std::numeric_limits<double>::infinity();
        return true;
    }
    if (word == "NaN") {
        value = std::numeric_limits<double>::quiet_NaN();
        return true;
    }
    if (begin < end && *begin == '+') {
        ++begin;
    }
    // Only decimal notation: from_chars would also take "inf", "nan" and "0x..." spellings.
    for (const char* p = begin; p < end; ++p) {
        if (!((*p >= '0' && *p <= '9') || *p == '.' || *p == 'e' || *p == 'E' || *p == '-' ||
              *p == '+')) {
            return false;
        }
    }
    if (begin == end) {
        return false;
    }
    const std::from_chars_result result = std::from_chars(begin, end, value);
    return result.ec == std::errc() && result.ptr == end;
}

bool parseInt(const char* text, int& value) {
    const char* end = nullptr;
    const char* begin = trimmed(text, end);
    if (begin < end && *begin == '+') {
        ++begin;
        if (begin < end && *begin == '-') {
            return false;
        }
    }
    if (begin == end) {
        return false;
    }
    const std::from_chars_result result = std::from_chars(begin, end, value);
    return result.ec == std::errc() && result.ptr == end;
}

bool parseBool(const char* text, bool& value) {
    const char* end = nullptr;
    const char* begin = trimmed(text, end);
    const std::string_view word(begin, static_cast<std::size_t>(end - begin));
    if (word == "true" || word == "1") {
        value = true;
        return true;
    }
    if (word == "false" || word == "0") {
        value = false;
        return true;
    }
    return false;
}

ImpossibleValue impossibleValue(const DrawingSize& size) {
    ImpossibleValue found;
    const auto finite = [&found](const char* name, double value) {
        if (!found.attribute && !std::isfinite(value)) {
            found.attribute = name;
            found.reason = "attribute '" + std::string(name) +
                           "' of element 'drawingSize' must be a finite number, not " +
                           formatDouble(value);
        }
    };
    const auto zones = [&found](const char* name, int value) {
        if (!found.attribute && value > kMaxStoredZones) {
            found.attribute = name;
            found.reason = "attribute '" + std::string(name) +
                           "' of element 'drawingSize' must be a number of zones up to " +
                           std::to_string(kMaxStoredZones) + ", not " + std::to_string(value);
        }
    };
    finite("height", size.height);
    finite("length", size.length);
    finite("frameLength", size.frameLength);
    zones("horizontalZones", size.horizontalZones);
    zones("verticalZones", size.verticalZones);
    return found;
}

} // namespace Fordef
} // namespace QorBorder
