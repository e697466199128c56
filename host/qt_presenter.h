#pragma once

#include <nxsim/journal.h>
#include <nxsim/presenter.h>

#include "graphics_view.h"

#include <QObject>
#include <QPointer>
#include <QRect>

#include <functional>
#include <vector>

class QEventLoop;
class QWidget;

namespace nxsim {
class JournalRunner;
}

namespace QorfmtHost {

class DialogWindow;
class GraphicsView;
class Screenshots;
class SessionRecorder;
class WindowLayout;

/// The host's presenter: every dialog, message box, list picker and pick of the platform in Qt
/// windows. Who answers depends on the mode: the user (Interactive), a journal that the host
/// replays in its windows (Scripted), or nobody, offscreen without a journal (AutoClose: dialogs
/// are closed with the close box, boxes closed, pickers and picks cancelled).
class QtPresenter : public QObject, public nxsim::Presenter {
    Q_OBJECT

public:
    enum class Mode { Interactive, Scripted, AutoClose };

    /// The presenter belongs to `mainWindow`, which also parents its windows.
    explicit QtPresenter(QWidget* mainWindow = nullptr);
    ~QtPresenter() override;

    void setMode(Mode mode) { m_mode = mode; }
    Mode mode() const { return m_mode; }
    /// The journal that answers in Scripted mode; the caller keeps ownership.
    void setScript(nxsim::JournalRunner* script) { m_script = script; }
    void setRecorder(SessionRecorder* recorder) { m_recorder = recorder; }
    void setScreenshots(Screenshots* screenshots) { m_screenshots = screenshots; }
    void setGraphics(GraphicsView* graphics) { m_graphics = graphics; }
    /// Where dialogs open and what of their geometry is kept; null: where Qt puts them.
    void setLayout(const WindowLayout* layout) { m_layout = layout; }
    /// In Scripted mode on a display: how long each dialog, box and picker stays on screen
    /// before and after the journal acts on it, so that a watcher can follow.
    void setPause(int milliseconds) { m_pauseMs = milliseconds; }

    /// Called once a dialog window is shown (and its picture saved), and when its dialog ends
    /// while the window still exists.
    std::function<void(DialogWindow&)> onDialogShown;
    std::function<void(DialogWindow&)> onDialogEnded;

    /// Dialog windows open now, outermost first.
    const std::vector<DialogWindow*>& windows() const { return m_windows; }

    void runDialog(nxsim::RuntimeDialog& dialog) override;
    void showMessage(nxsim::MessageKind kind, const std::string& title,
                     const std::string& text) override;
    int pickFromList(const std::string& title, const std::string& prompt,
                     const std::vector<std::string>& items, int initialSelection) override;
    nxsim::PointAnswer indicatePoint(const std::string& cue) override;
    nxsim::ObjectAnswer selectObject(const std::string& message, const std::string& title,
                                     int scope) override;

signals:
    /// The platform's state may have changed (listing, cue line, stoplight, display part).
    void activity();
    /// A text for the cue line's side: why an action was refused.
    void notice(const QString& text);
    /// A list picker, screen position request or object selection ended: the prompt that asked
    /// for it is no longer current.
    void requestEnded();

private:
    /// The nesting depth for journal lines taken now.
    int depth() const { return static_cast<int>(m_windows.size()); }
    void record(const nxsim::JournalStep& step);
    void screenshot(QWidget& window, const std::string& name);
    void pause();
    /// Hides the dialog windows while the user picks in the graphics window.
    struct HiddenWindow {
        QPointer<DialogWindow> window;
        QRect geometry;
    };
    std::vector<HiddenWindow> hideWindows();
    /// Shows them again at the place and size they had.
    void restoreWindows(const std::vector<HiddenWindow>& hidden);
    /// Hides the dialogs and waits for a click in the graphics window: `connectAnswer` connects
    /// the graphics window's answer to what takes it and quits the loop; a cancelled pick quits
    /// it too. The dialogs are shown again afterwards.
    void waitForPick(GraphicsView::PickMode mode, const std::string& prompt,
                     const std::function<QMetaObject::Connection(QEventLoop&)>& connectAnswer);

    QWidget* m_mainWindow;
    Mode m_mode = Mode::Interactive;
    nxsim::JournalRunner* m_script = nullptr;
    SessionRecorder* m_recorder = nullptr;
    Screenshots* m_screenshots = nullptr;
    GraphicsView* m_graphics = nullptr;
    const WindowLayout* m_layout = nullptr;
    int m_pauseMs = 0;
    std::vector<DialogWindow*> m_windows;
};

} // namespace QorfmtHost
