#include "widget_text.h"

#include <algorithm>

namespace QorfmtHost {

using nxsim::ItemKind;

QString qs(const std::string& text) {
    return QString::fromStdString(text);
}

std::string joinLines(const std::vector<std::string>& lines) {
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        text += (i ? "\n" : "") + lines[i];
    }
    return text;
}

QStringList toStringList(const std::vector<std::string>& entries) {
    QStringList list;
    for (const std::string& e : entries) {
        list << qs(e);
    }
    return list;
}

// Lists and multi-line texts take the extra height of a dialog made taller, and so does what
// holds them.
// Each in proportion to its rows, so that a long list keeps more of the height than a short one.
int growth(const nxsim::DlgElement& element) {
    if (element.kind == ItemKind::SingleSelectList || element.kind == ItemKind::MultiTextBox) {
        return std::max(1, element.rows);
    }
    int sum = 0;
    for (const nxsim::DlgElement& child : element.children) {
        sum += growth(child);
    }
    return sum;
}

// Lays out `widget` of `element` in a column: with stretch when it grows. The spacer at the end of
// the column takes the height only when nothing shown grows (a hidden widget has no share).
void addToColumn(QBoxLayout* layout, const nxsim::DlgElement& element, QWidget* widget) {
    layout->addWidget(widget, growth(element));
}

} // namespace QorfmtHost
