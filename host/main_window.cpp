#include "main_window.h"

#include "graphics_view.h"
#include "listing_window.h"
#include "qt_presenter.h"
#include "screenshots.h"
#include "session_recorder.h"

#include <nxsim/platform.h>

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

#include <boost/filesystem/operations.hpp>

#include <algorithm>
#include <iostream>

namespace fs = boost::filesystem;

namespace QorfmtHost {

MainWindow::MainWindow(const HostOptions& options, LibraryCache& libraries,
                       SessionRecorder* recorder, Screenshots* screenshots, QWidget* parent)
    : QMainWindow(parent), m_options(options), m_libraries(libraries), m_recorder(recorder),
      m_screenshots(screenshots), m_presenter(new QtPresenter(this)), m_graphics(new GraphicsView),
      m_layout(false), m_listingWindow(new ListingWindow), m_cue(new QLabel),
      m_position(new QLabel), m_poll(new QTimer(this)) {
    setObjectName("main_window");
    setWindowTitle(tr("qorfmt-host - %1").arg(QString::fromStdString(options.site.string())));
    setCentralWidget(m_graphics);

    m_cue->setObjectName("cue");
    m_position->setObjectName("position");
    statusBar()->addWidget(m_cue, 1);
    statusBar()->addPermanentWidget(m_position);

    m_presenter->setGraphics(m_graphics);
    m_presenter->setRecorder(recorder);
    m_presenter->setScreenshots(screenshots);
    m_presenter->setPause(options.pauseMs);
    m_presenter->setLayout(&m_layout);
    connect(m_presenter, &QtPresenter::activity, this, &MainWindow::refreshPlatform);
    connect(m_presenter, &QtPresenter::notice, this,
            [this](const QString& text) { statusBar()->showMessage(text, 8000); });
    connect(m_graphics, &GraphicsView::hovered, m_position, &QLabel::setText);
    connect(m_presenter, &QtPresenter::requestEnded, this, [this] {
        m_endedCue = nxsim::cueLineSets();
        refreshPlatform();
    });

    buildMenus();
    // The stoplight is switched inside handlers, without a return to the event loop: only a
    // listener sees it. The rest is read on every dialog event and polled.
    connect(m_poll, &QTimer::timeout, this, &MainWindow::refreshPlatform);
    m_poll->start(200);
    nxsim::setStoplightListener([this](bool on) { setBusy(on); });
    resize(960, 720);
    refreshPlatform();
}

MainWindow::~MainWindow() {
    nxsim::setStoplightListener({});
    delete m_listingWindow;
    if (m_busy) {
        QApplication::restoreOverrideCursor();
    }
}

void MainWindow::buildMenus() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    QAction* run = file->addAction(tr("Run &Configurator"), this, &MainWindow::runConfigurator);
    run->setObjectName("run_configurator");
    run->setShortcut(QKeySequence(tr("Ctrl+R")));
    run->setToolTip(QString::fromStdString(m_options.library.string()));
    QToolBar* tools = addToolBar(tr("User Functions"));
    tools->setObjectName("user_functions");
    tools->setMovable(false);
    tools->addAction(run);
    QAction* other =
        file->addAction(tr("Run &User Function..."), this, &MainWindow::runOtherUserFunction);
    tools->addAction(other);
    other->setObjectName("run_user_function");
    other->setShortcut(QKeySequence(tr("Ctrl+U")));
    file->addSeparator();
    QAction* quit = file->addAction(tr("&Quit"), this, &QWidget::close);
    quit->setShortcut(QKeySequence::Quit);

    QMenu* view = menuBar()->addMenu(tr("&View"));
    QAction* listing = view->addAction(tr("&Listing Window"));
    listing->setObjectName("show_listing");
    listing->setCheckable(true);
    listing->setShortcut(QKeySequence(tr("Ctrl+L")));
    connect(listing, &QAction::toggled, this, [this](bool on) {
        if (on) {
            m_listingWindow->show();
            m_listingWindow->raise();
            m_listingWindow->activateWindow();
        } else {
            m_listingWindow->hide();
        }
    });
    connect(m_listingWindow, &ListingWindow::visibilityChanged, listing, [this, listing](bool on) {
        if (on && !m_listingPlaced) {
            m_listingPlaced = true;
            if (!m_layout.restore(*m_listingWindow, "listing_window") && screen()) {
                // Below the main window where there is room, else as low as the screen allows.
                const QRect main = frameGeometry();
                const QRect area = screen()->availableGeometry();
                const int height = m_listingWindow->frameGeometry().height();
                m_listingWindow->move(
                    main.left(),
                    std::max(area.top(), std::min(main.bottom() + 1, area.bottom() + 1 - height)));
            }
        }
        listing->setChecked(on);
    });
    // Only the view is cleared; the platform keeps the whole text for expectations.
    view->addAction(tr("&Clear Listing Window"), m_listingWindow, &ListingWindow::clear);

    QMenu* help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&Command Line"), this, [this] {
        QMessageBox::information(this, tr("Command Line"),
                                 QString::fromStdString("<pre>" + usageText() + "</pre>"));
    });
}

void MainWindow::refreshPlatform() {
    const std::string listing = nxsim::listingText();
    if (listing != m_shownListing) {
        // The window keeps what it showed for as long as the host runs, also when the platform
        // starts its text anew.
        const bool continued = listing.compare(0, m_shownListing.size(), m_shownListing) == 0;
        m_listingWindow->append(
            QString::fromStdString(continued ? listing.substr(m_shownListing.size()) : listing));
        m_shownListing = listing;
    }
    // As in the CAD system, the prompt of a pick or a list goes when the request ends; a prompt
    // the program sets afterwards shows, also one of the same text.
    if (m_endedCue && *m_endedCue != nxsim::cueLineSets()) {
        m_endedCue.reset();
    }
    const QString cue = QString::fromStdString(m_endedCue ? std::string() : nxsim::cueLine());
    if (m_cue->text() != cue) {
        m_cue->setText(cue);
    }
    if (!m_running) {
        // A stoplight left on ends with the user function.
        setBusy(false);
    }
    m_graphics->refresh();
}

void MainWindow::setBusy(bool busy) {
    if (busy == m_busy) {
        return;
    }
    m_busy = busy;
    if (busy) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
    emit busyChanged(busy);
}

bool MainWindow::runLibrary(const fs::path& file, bool recordable) {
    if (m_running) {
        statusBar()->showMessage(tr("A user function is running already"), 5000);
        return false;
    }
    nxsim::UserFunctionLibrary* library = nullptr;
    try {
        library = &m_libraries.library(file);
    } catch (const std::exception& e) {
        QMessageBox::critical(this, tr("Cannot Load User Function"),
                              QString::fromStdString(e.what()));
        return false;
    }
    if (m_recorder) {
        if (recordable) {
            nxsim::JournalStep run;
            run.kind = nxsim::StepKind::Run;
            m_recorder->step(run, 0);
        } else {
            m_recorder->comment("ran " + file.string() + " (not part of this journal)", 0);
        }
    }
    m_running = true;
    m_ranUserFunction = true;
    bool ok = true;
    std::string failure;
    {
        nxsim::ScopedPresenter windows(m_presenter);
        try {
            library->callUfusr();
        } catch (const std::exception& e) {
            ok = false;
            failure = e.what();
        } catch (...) {
            ok = false;
            failure = "an exception of unknown type left ufusr";
        }
    }
    m_running = false;
    refreshPlatform();
    if (m_recorder && recordable && ok) {
        // The end state, so that a replay checks that it arrives where the session did.
        nxsim::JournalStep listing;
        listing.kind = nxsim::StepKind::ExpectListing;
        listing.text = nxsim::listingText();
        m_recorder->step(listing, 0);
    }
    if (!ok) {
        std::cerr << "qorfmt-host: " << failure << '\n';
        QMessageBox::critical(this, tr("User Function Failed"), QString::fromStdString(failure));
    }
    return ok;
}

nxsim::ReplayOutcome MainWindow::replayJournal(const fs::path& journal) {
    HostOptions options = m_options;
    options.replay = journal;
    m_running = true;
    m_ranUserFunction = true;
    nxsim::ReplayOutcome outcome = replayInWindows(options, m_libraries, *m_presenter);
    m_running = false;
    refreshPlatform();
    return outcome;
}

void MainWindow::runConfigurator() {
    runLibrary(m_options.library, true);
}

void MainWindow::runOtherUserFunction() {
    const QString file = QFileDialog::getOpenFileName(
        this, tr("Run User Function"),
        QString::fromStdString(m_options.library.parent_path().string()),
        tr("User-function libraries (*.so);;All files (*)"));
    if (!file.isEmpty()) {
        const fs::path chosen = file.toStdString();
        runLibrary(chosen, fs::absolute(chosen) == fs::absolute(m_options.library));
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (m_running) {
        // The user function's dialogs must end first; the host cannot take them away.
        statusBar()->showMessage(tr("A user function is running: end its dialogs first"), 5000);
        event->ignore();
        return;
    }
    if (m_confirmQuit && m_ranUserFunction) {
        QMessageBox box(QMessageBox::Question, tr("Quit qorfmt-host"),
                        tr("Documents live only in memory until they are saved. Unsaved "
                           "changes are lost when the host quits.\n\nQuit anyway?"),
                        QMessageBox::NoButton, this);
        box.setObjectName("quit_box");
        QPushButton* quit = box.addButton(tr("Quit"), QMessageBox::AcceptRole);
        QPushButton* stay = box.addButton(tr("Stay"), QMessageBox::RejectRole);
        box.setDefaultButton(stay);
        box.show();
        if (m_screenshots) {
            try {
                m_screenshots->save(box, "quit");
            } catch (const std::exception& e) {
                std::cerr << "qorfmt-host: " << e.what() << '\n';
            }
        }
        box.exec();
        if (box.clickedButton() != quit) {
            event->ignore();
            return;
        }
    }
    saveLayout();
    event->accept();
}

void MainWindow::keepLayout() {
    m_layout = WindowLayout(true);
    m_layout.restore(*this, "main_window");
}

void MainWindow::saveLayout() const {
    m_layout.save(*this, "main_window");
    if (m_listingPlaced) {
        m_layout.save(*m_listingWindow, "listing_window");
    }
}

QPlainTextEdit& MainWindow::listing() const {
    return m_listingWindow->text();
}

} // namespace QorfmtHost
