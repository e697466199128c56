#pragma once

#include "host_options.h"
#include "host_session.h"
#include "window_layout.h"

#include <QMainWindow>

#include <cstdint>
#include <optional>
#include <string>

class QLabel;
class QPlainTextEdit;
class QTimer;

namespace QorfmtHost {

class GraphicsView;
class ListingWindow;
class QtPresenter;
class Screenshots;
class SessionRecorder;

/// The CAD system's main window as the host plays it: menus to run the configurator and other
/// user-function libraries, the graphics window with the display part, the listing window and
/// the cue line, and a busy cursor while the stoplight is on.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// `recorder` and `screenshots` may be null.
    MainWindow(const HostOptions& options, LibraryCache& libraries, SessionRecorder* recorder,
               Screenshots* screenshots, QWidget* parent = nullptr);
    ~MainWindow() override;

    QtPresenter& presenter() const { return *m_presenter; }
    GraphicsView& graphics() const { return *m_graphics; }
    /// The text of the listing window.
    QPlainTextEdit& listing() const;
    ListingWindow& listingWindow() const { return *m_listingWindow; }
    QLabel& cueLine() const { return *m_cue; }

    /// Runs ufusr of the library; `recordable` is false for a library other than --library,
    /// whose runs a journal cannot name. Returns false when it could not be loaded or an
    /// exception left it (both reported in a message box).
    bool runLibrary(const boost::filesystem::path& file, bool recordable);
    /// Replays `journal` in the windows (see replayInWindows); the host counts as running a user
    /// function meanwhile.
    nxsim::ReplayOutcome replayJournal(const boost::filesystem::path& journal);
    bool running() const { return m_running; }
    /// Whether a user function ran since the start, so that quitting may lose documents.
    bool ranUserFunction() const { return m_ranUserFunction; }
    /// Keeps where the windows and dialogs are left, and their sizes, across runs, and puts the
    /// main window where it was left (interactive sessions only: replays and offscreen runs
    /// neither depend on nor change an earlier session).
    void keepLayout();
    const WindowLayout& layout() const { return m_layout; }
    /// Ask before quitting after a user function ran (off for replays and offscreen runs).
    void setConfirmQuit(bool confirm) { m_confirmQuit = confirm; }

    /// Brings listing, cue line, busy cursor and graphics up to date with the platform.
    void refreshPlatform();
    bool busy() const { return m_busy; }

signals:
    /// The busy cursor went on or off (the library's stoplight).
    void busyChanged(bool busy);

public slots:
    void runConfigurator();
    void runOtherUserFunction();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    void saveLayout() const;
    void setBusy(bool busy);

    HostOptions m_options;
    LibraryCache& m_libraries;
    SessionRecorder* m_recorder;
    Screenshots* m_screenshots;
    QtPresenter* m_presenter;
    GraphicsView* m_graphics;
    WindowLayout m_layout;
    /// A window of its own (no parent), so that modal dialogs do not block it.
    ListingWindow* m_listingWindow;
    bool m_listingPlaced = false;
    QLabel* m_cue;
    QLabel* m_position;
    QTimer* m_poll;
    std::string m_shownListing;
    /// The prompt of a request that ended: not shown until the program sets another one.
    /// The count of prompts set when the last pick or list ended, while its prompt stands.
    std::optional<std::uint64_t> m_endedCue;
    bool m_running = false;
    bool m_ranUserFunction = false;
    bool m_confirmQuit = true;
    bool m_busy = false;
};

} // namespace QorfmtHost
