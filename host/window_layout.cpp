#include "window_layout.h"

#include <QScreen>
#include <QSettings>
#include <QWidget>

#include <algorithm>

namespace QorfmtHost {

namespace {

QString keyOf(const std::string& name) {
    // Slashes would nest the settings' groups.
    return "layout/" + QString::fromStdString(name).replace('/', '_');
}

} // namespace

bool WindowLayout::restore(QWidget& window, const std::string& name) const {
    if (!m_enabled) {
        return false;
    }
    const QByteArray geometry = QSettings().value(keyOf(name)).toByteArray();
    return !geometry.isEmpty() && window.restoreGeometry(geometry);
}

void WindowLayout::save(const QWidget& window, const std::string& name) const {
    if (m_enabled) {
        QSettings().setValue(keyOf(name), window.saveGeometry());
    }
}

void WindowLayout::forget() {
    QSettings settings;
    settings.remove("layout");
}

void placeBeside(QWidget& dialog, const QWidget& mainWindow, int depth) {
    const QScreen* screen = mainWindow.screen();
    if (!screen) {
        return;
    }
    const QRect area = screen->availableGeometry();
    const QRect main = mainWindow.frameGeometry();
    const QSize size = dialog.frameGeometry().size().expandedTo(dialog.size());
    const int top = std::clamp(main.top() + 24 * depth, area.top(),
                               std::max(area.top(), area.bottom() - size.height()));
    if (main.right() + size.width() <= area.right()) {
        dialog.move(main.right() + 1, top);
    } else if (main.left() - size.width() >= area.left()) {
        dialog.move(main.left() - size.width(), top);
    } else {
        dialog.move(std::max(area.left(), area.right() + 1 - size.width()), top);
    }
}

} // namespace QorfmtHost
