#pragma once

// What the rules of the checker share: the rules' names, the template folders, and how findings
// write names and numbers. Internal to model/lint/.

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace QorLint {
namespace detail {

inline constexpr const char* kMissingRequiredBlock = "missing-required-block";
inline constexpr const char* kLocationTarget = "location-target";
inline constexpr const char* kDefaultStyle = "default-style";
inline constexpr const char* kUnknownField = "unknown-field";
inline constexpr const char* kTranslationKey = "translation-key";
inline constexpr const char* kIdUnderscore = "id-underscore";
inline constexpr const char* kMissingTemplate = "missing-template";
inline constexpr const char* kDuplicateId = "duplicate-id";
inline constexpr const char* kZoneCount = "zone-count";
inline constexpr const char* kDuplicateInLayout = "duplicate-in-layout";
inline constexpr const char* kTextChoice = "text-choice";
inline constexpr const char* kDrawingSize = "drawing-size";

inline constexpr const char* kFrameTemplates = "format_defs/frame_templates";
inline constexpr const char* kBlockTemplates = "format_defs/block_templates";

inline std::string q(const std::string& text) {
    return "'" + text + "'";
}

inline bool contains(const std::vector<std::string>& list, const std::string& item) {
    return std::find(list.begin(), list.end(), item) != list.end();
}

// The parts of a translation key: split at every "_", as the translation dialog splits it.
inline std::vector<std::string> keyParts(const std::string& key) {
    std::vector<std::string> parts;
    std::string::size_type start = 0;
    while (true) {
        const auto underscore = key.find('_', start);
        parts.push_back(key.substr(start, underscore - start));
        if (underscore == std::string::npos) {
            return parts;
        }
        start = underscore + 1;
    }
}

inline std::string formatNumber(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

} // namespace detail
} // namespace QorLint
