// qorfmt-host: plays the CAD system's part on a desktop. It loads a user-function library, calls
// its ufusr and shows what the library asks for in Qt windows.

#include "host_options.h"
#include "host_session.h"
#include "listing_window.h"
#include "main_window.h"
#include "qt_presenter.h"
#include "screenshots.h"
#include "session_recorder.h"
#include "window_layout.h"

#include <nxsim/presenter.h>

#include <QApplication>
#include <QLabel>
#include <QTimer>

#include <boost/filesystem/operations.hpp>

#include <iostream>
#include <memory>

namespace fs = boost::filesystem;
using namespace QorfmtHost;

namespace {

// The main window at the end of a replay or an offscreen run (cue line and graphics), and the
// listing window when something was written to it.
void saveFinalPicture(MainWindow& window, Screenshots& screenshots) {
    try {
        window.refreshPlatform();
        screenshots.save(window, "main_window");
        if (window.listingWindow().isVisible()) {
            screenshots.save(window.listingWindow(), "listing_window");
        }
    } catch (const std::exception& e) {
        std::cerr << "qorfmt-host: " << e.what() << '\n';
    }
}

} // namespace

int main(int argc, char** argv) {
    HostOptions options;
    try {
        options = parseHostOptions(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const UsageError& e) {
        std::cerr << "qorfmt-host: " << e.what() << "\n" << usageText();
        return 2;
    }
    if (options.help) {
        std::cout << usageText();
        return 0;
    }
    if (options.version) {
        std::cout << versionText();
        return 0;
    }
    quietPlatformNoise();
    if (options.offscreen) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    } else if (!displayAvailable()) {
        std::cerr << "qorfmt-host: no display (neither DISPLAY nor WAYLAND_DISPLAY is set).\n"
                     "Run it offscreen, which saves pictures instead of showing windows:\n"
                     "  qorfmt-host --offscreen --screenshots DIR [other options]\n"
                     "or under a virtual display:\n"
                     "  xvfb-run -a qorfmt-host [options]\n";
        return 2;
    }

    QApplication app(argc, argv);
    QApplication::setOrganizationName("qorfmt");
    QApplication::setApplicationName("qorfmt-host");
    if (options.resetLayout) {
        WindowLayout::forget();
    }
    applyDefaults(options, fs::path(QCoreApplication::applicationDirPath().toStdString()));
    try {
        applySetup(options);
    } catch (const std::exception& e) {
        std::cerr << "qorfmt-host: " << e.what() << '\n';
        return 2;
    }

    std::unique_ptr<SessionRecorder> recorder;
    if (!options.record.empty()) {
        try {
            recorder = std::make_unique<SessionRecorder>(options.record);
        } catch (const std::exception& e) {
            std::cerr << "qorfmt-host: " << e.what() << '\n';
            return 2;
        }
    }
    Screenshots screenshots(options.screenshots);
    LibraryCache libraries;
    MainWindow window(options, libraries, recorder.get(), &screenshots);
    QtPresenter& presenter = window.presenter();
    // Every modal request of the platform, also outside a run, goes to the windows.
    nxsim::setPresenter(&presenter);
    if (options.replay.empty() && !options.offscreen) {
        window.keepLayout();
    }
    window.show();

    int exitCode = 0;
    // Each start action runs once the event loop runs (queued, so that nothing of it is left
    // over when the action quits the application).
    if (!options.replay.empty()) {
        window.setConfirmQuit(false);
        QMetaObject::invokeMethod(
            &window,
            [&] {
                nxsim::ReplayOutcome outcome = window.replayJournal(options.replay);
                if (outcome.exitCode != 0) {
                    std::cerr << (outcome.exitCode == 2 ? "qorfmt-host: " : "") << outcome.message
                              << '\n';
                }
                exitCode = outcome.exitCode;
                saveFinalPicture(window, screenshots);
                QApplication::exit(exitCode);
            },
            Qt::QueuedConnection);
    } else if (options.offscreen) {
        // Nobody can answer offscreen: show what the library shows, take the pictures, close.
        window.setConfirmQuit(false);
        presenter.setMode(QtPresenter::Mode::AutoClose);
        QMetaObject::invokeMethod(
            &window,
            [&] {
                if (!options.runAtStart) {
                    QApplication::exit(0);
                    return;
                }
                boost::system::error_code ec;
                if (!fs::is_regular_file(options.library, ec)) {
                    std::cerr << "qorfmt-host: " << options.library.string()
                              << ": the user-function library does not exist (is it built?)\n";
                    exitCode = 2;
                } else if (!window.runLibrary(options.library, true)) {
                    exitCode = 1;
                }
                saveFinalPicture(window, screenshots);
                QApplication::exit(exitCode);
            },
            Qt::QueuedConnection);
    } else if (options.runAtStart) {
        QMetaObject::invokeMethod(
            &window,
            [&] {
                boost::system::error_code ec;
                if (fs::is_regular_file(options.library, ec)) {
                    window.runLibrary(options.library, true);
                } else {
                    window.cueLine().setText(QString::fromStdString(
                        options.library.string() + ": not found; use File > Run User Function..."));
                }
            },
            Qt::QueuedConnection);
    }
    const int result = app.exec();
    nxsim::setPresenter(nullptr);
    return !options.replay.empty() || options.offscreen ? exitCode : result;
}
