#pragma once

#include "model/block_layout.h"
#include "model/block_location.h"
#include "model/border_layout.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// The .fordef format's vocabulary, shared by the reader and the writer so that the order and the
// names of the attributes are written down once.
namespace QorBorder {
namespace Fordef {

constexpr const char* kRootElement = "fordef";
constexpr int kFormatVersion = 1;
/// Child element carrying a string attribute whose bytes XML text cannot hold, in hex.
constexpr const char* kRawElement = "raw";

enum class Kind { String, Int, Double, Bool };

/// One scalar member of T written as an XML attribute.
template <class T>
struct Attribute {
    const char* name;
    Kind kind;
    std::size_t nameLength = std::char_traits<char>::length(name);
    std::string T::*text = nullptr;
    int T::*integer = nullptr;
    double T::*real = nullptr;
    bool T::*flag = nullptr;
};

template <class T>
Attribute<T> attribute(const char* name, std::string T::*member) {
    Attribute<T> a{name, Kind::String};
    a.text = member;
    return a;
}
template <class T>
Attribute<T> attribute(const char* name, int T::*member) {
    Attribute<T> a{name, Kind::Int};
    a.integer = member;
    return a;
}
template <class T>
Attribute<T> attribute(const char* name, double T::*member) {
    Attribute<T> a{name, Kind::Double};
    a.real = member;
    return a;
}
template <class T>
Attribute<T> attribute(const char* name, bool T::*member) {
    Attribute<T> a{name, Kind::Bool};
    a.flag = member;
    return a;
}

/// Attribute tables, in the order written.
const std::vector<Attribute<BorderLayout>>& borderAttributes();
const std::vector<Attribute<Point3>>& pointAttributes();
const std::vector<Attribute<DrawingSize>>& drawingSizeAttributes();
const std::vector<Attribute<BlockLayout>>& blockAttributes();
const std::vector<Attribute<Field>>& fieldAttributes();
const std::vector<Attribute<Choice>>& choiceAttributes();
const std::vector<Attribute<BlockStyle>>& styleAttributes();
const std::vector<Attribute<FieldPlacement>>& placementAttributes();
const std::vector<Attribute<RowType>>& rowTypeAttributes();
const std::vector<Attribute<TypeManagerChoiceSettings>>& typeManagerChoiceAttributes();
const std::vector<Attribute<SymbolType>>& symbolTypeAttributes();
const std::vector<Attribute<BlockLocation>>& locationAttributes();

/// The most zones a drawing can show along one edge: `qorfmt render` draws no more, and lint
/// reports a drawing size with more (or fewer than 0).
constexpr int kMaxZones = 1000;
/// A zone count above this is no drawing's at all: the reader refuses it, and a save does not
/// write it. It lies far above kMaxZones because the dialogs take any count the user types, and
/// a count that is merely unreasonable is lint's to report, not a reason to refuse the save.
constexpr int kMaxStoredZones = 1000000;

/// What makes a drawing size one no drawing can have: a size that is not finite or a zone count
/// above kMaxStoredZones. `attribute` is null when there is nothing.
struct ImpossibleValue {
    const char* attribute = nullptr;
    std::string reason;
};
ImpossibleValue impossibleValue(const DrawingSize& size);

/// Whether XML 1.0 text can carry `value` unchanged: valid UTF-8 of characters XML allows (the
/// writer escapes tab, line feed and carriage return).
bool isXmlSafe(const std::string& value);
std::string toHex(const std::string& bytes);
/// Decodes hex; false when `hex` is not an even number of hex digits.
bool fromHex(const char* hex, std::string& bytes);

/// The shortest text that reads back as exactly `value` (INF, -INF and NaN for the specials).
std::string formatDouble(double value);
void appendDouble(std::string& out, double value);
void appendInt(std::string& out, long value);
bool parseDouble(const char* text, double& value);
bool parseInt(const char* text, int& value);
bool parseBool(const char* text, bool& value);

} // namespace Fordef
} // namespace QorBorder
