#include "ui/strings.h"

namespace KivNX {
namespace UI {

std::vector<NXOpen::NXString> toNXStrings(const std::vector<std::string>& texts) {
    return std::vector<NXOpen::NXString>(texts.begin(), texts.end());
}

std::vector<std::string> toStrings(const std::vector<NXOpen::NXString>& texts) {
    std::vector<std::string> result;
    result.reserve(texts.size());
    for (const NXOpen::NXString& text : texts) {
        result.emplace_back(text.GetText());
    }
    return result;
}

} // namespace UI
} // namespace KivNX
