#pragma once

#include <NXOpen/NXString.hxx>

#include <string>
#include <vector>

namespace KivNX {
namespace UI {

std::vector<NXOpen::NXString> toNXStrings(const std::vector<std::string>& texts);
std::vector<std::string> toStrings(const std::vector<NXOpen::NXString>& texts);

} // namespace UI
} // namespace KivNX
