#include "ui/multi_text_box.h"

#include "ui/strings.h"

namespace KivNX {
namespace UI {

MultiTextBox::MultiTextBox(const NXOpen::UIStyler::MultiTextBox& item)
    : NXOpen::UIStyler::MultiTextBox(item) {}

std::string MultiTextBox::ItemValue() {
    std::string text;
    const std::vector<std::string> lines = ItemValues();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        text += (i ? "\n" : "") + lines[i];
    }
    return text;
}

std::vector<std::string> MultiTextBox::ItemValues() {
    return toStrings(GetItemValues());
}

void MultiTextBox::SetItemValue(const std::string& text) {
    std::vector<std::string> lines;
    std::string::size_type start = 0;
    for (;;) {
        const auto end = text.find('\n', start);
        lines.push_back(text.substr(start, end - start));
        if (end == std::string::npos) {
            break;
        }
        start = end + 1;
    }
    SetItemValue(lines);
}

void MultiTextBox::SetItemValue(const std::vector<std::string>& lines) {
    std::vector<NXOpen::NXString> texts = toNXStrings(lines);
    SetItemValues(texts);
}

} // namespace UI
} // namespace KivNX
