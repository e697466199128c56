#pragma once

#include <string>
#include <vector>

namespace KivNX {
namespace UI {

/// A small modal list picker.
class SingleSelectDialog {
public:
    /// Shows `items` under `title` and `prompt` with row `initialSelection` preselected (-1 for
    /// none); returns the row chosen from 0, or a negative value when the user cancels.
    static int show(const std::string& title, const std::string& prompt,
                    const std::vector<std::string>& items, int initialSelection);
};

} // namespace UI
} // namespace KivNX
