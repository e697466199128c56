#pragma once

#include <NXOpen/UIStyler_MultiTextBox.hxx>

#include <string>
#include <vector>

namespace KivNX {
namespace UI {

/// A multi-line text field, handled as one text with "\n" between lines or as lines.
class MultiTextBox : public NXOpen::UIStyler::MultiTextBox {
public:
    explicit MultiTextBox(const NXOpen::UIStyler::MultiTextBox& item);

    /// The whole text: the lines joined with "\n".
    std::string ItemValue();
    std::vector<std::string> ItemValues();
    /// Sets the text; each "\n" starts a new line.
    void SetItemValue(const std::string& text);
    void SetItemValue(const std::vector<std::string>& lines);
};

} // namespace UI
} // namespace KivNX
