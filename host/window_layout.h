#pragma once

#include <string>

class QWidget;

namespace QorfmtHost {

/// Where the user left each window: size and position per dialog name (and of the main and
/// listing windows), kept across runs in the host's settings. A disabled store keeps nothing,
/// so that replays and offscreen runs neither depend on nor change an earlier session.
class WindowLayout {
public:
    explicit WindowLayout(bool enabled = true) : m_enabled(enabled) {}

    bool enabled() const { return m_enabled; }
    /// Gives `window` the geometry kept under `name`; false when none is kept.
    bool restore(QWidget& window, const std::string& name) const;
    void save(const QWidget& window, const std::string& name) const;
    /// Forgets every kept geometry (--reset-layout).
    static void forget();

private:
    bool m_enabled;
};

/// Moves `dialog` beside `mainWindow` (right of it, else left of it) when the screen has room,
/// so that it does not cover the drawn sheet; else to the screen's right edge. `depth` shifts
/// nested dialogs down a little.
void placeBeside(QWidget& dialog, const QWidget& mainWindow, int depth);

} // namespace QorfmtHost
