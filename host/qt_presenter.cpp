#include "qt_presenter.h"

#include "dialog_window.h"
#include "graphics_view.h"
#include "list_picker.h"
#include "screenshots.h"
#include "session_recorder.h"
#include "window_layout.h"

#include <nxsim/journal_runner.h>
#include <nxsim/runtime.h>

#include <QApplication>
#include <QEventLoop>
#include <QGuiApplication>
#include <QListWidget>
#include <QMessageBox>
#include <QTimer>

#include <iostream>

namespace QorfmtHost {

using nxsim::JournalStep;
using nxsim::StepKind;

namespace {

QMessageBox::Icon iconFor(nxsim::MessageKind kind) {
    switch (kind) {
    case nxsim::MessageKind::Error:
        return QMessageBox::Critical;
    case nxsim::MessageKind::Warning:
        return QMessageBox::Warning;
    case nxsim::MessageKind::Question:
        return QMessageBox::Question;
    case nxsim::MessageKind::Information:
        break;
    }
    return QMessageBox::Information;
}

// Pops the innermost window when runDialog leaves, however it leaves.
struct WindowStackGuard {
    std::vector<DialogWindow*>& windows;
    ~WindowStackGuard() { windows.pop_back(); }
};

} // namespace

QtPresenter::QtPresenter(QWidget* mainWindow) : QObject(mainWindow), m_mainWindow(mainWindow) {}

QtPresenter::~QtPresenter() = default;

void QtPresenter::record(const JournalStep& step) {
    if (m_recorder) {
        m_recorder->step(step, depth());
    }
}

void QtPresenter::screenshot(QWidget& window, const std::string& name) {
    if (!m_screenshots || !m_screenshots->enabled()) {
        return;
    }
    try {
        m_screenshots->save(window, name);
    } catch (const std::exception& e) {
        // A missing picture must not break the user function's run.
        std::cerr << "qorfmt-host: " << e.what() << '\n';
        emit notice(QString::fromStdString(e.what()));
    }
}

void QtPresenter::pause() {
    if (m_pauseMs <= 0 || QGuiApplication::platformName() == "offscreen") {
        return;
    }
    QEventLoop wait;
    QTimer::singleShot(m_pauseMs, &wait, &QEventLoop::quit);
    wait.exec(QEventLoop::ExcludeUserInputEvents);
}

void QtPresenter::runDialog(nxsim::RuntimeDialog& dialog) {
    JournalStep shown;
    shown.kind = StepKind::Dialog;
    shown.item = dialog.journalName();
    record(shown);

    QWidget* parent = m_windows.empty() ? m_mainWindow : m_windows.back();
    DialogWindow window(dialog, m_mode == Mode::Interactive, parent);
    window.setRecorder(m_recorder, depth() + 1);
    connect(&window, &DialogWindow::notice, this, &QtPresenter::notice);
    connect(&window, &DialogWindow::activity, this, &QtPresenter::activity);
    if (m_mode == Mode::Scripted && QGuiApplication::platformName() != "offscreen") {
        // A journal drives the dialog without returning to the event loop; let the watcher
        // see each step.
        connect(&window, &DialogWindow::activity, this,
                [] { QApplication::processEvents(QEventLoop::ExcludeUserInputEvents); });
    }
    connect(&window, &DialogWindow::ended, this, [this, &window] {
        if (onDialogEnded) {
            onDialogEnded(window);
        }
    });
    m_windows.push_back(&window);
    WindowStackGuard guard{m_windows};

    emit activity();
    // Where the user left this dialog last time, else beside the graphics window.
    if ((!m_layout || !m_layout->restore(window, dialog.journalName())) && m_mainWindow) {
        window.adjustSize();
        placeBeside(window, *m_mainWindow, depth() - 1);
    }
    window.show();
    window.raise();
    window.activateWindow();
    screenshot(window, dialog.journalName());
    if (onDialogShown) {
        onDialogShown(window);
    }

    switch (m_mode) {
    case Mode::Scripted:
        if (m_script && !dialog.ended()) {
            pause();
            m_script->runDialog(dialog);
            pause();
        }
        // A replay also pictures each dialog as the journal leaves it, so that its pictures
        // show what the steps did, not only how each dialog opened.
        if (dialog.ended()) {
            screenshot(window, dialog.journalName() + "-ended");
        }
        break;
    case Mode::AutoClose:
        if (!dialog.ended()) {
            JournalStep close;
            close.kind = StepKind::Close;
            if (m_recorder) {
                m_recorder->step(close, depth());
            }
            dialog.close();
        }
        break;
    case Mode::Interactive: {
        QEventLoop loop;
        connect(&window, &DialogWindow::ended, &loop, &QEventLoop::quit);
        connect(&window, &DialogWindow::failed, &loop, &QEventLoop::quit);
        if (!dialog.ended()) {
            loop.exec();
        }
        if (std::exception_ptr error = window.takeError()) {
            window.hide();
            std::rethrow_exception(error);
        }
        break;
    }
    }
    // The application may be quitting, which ends every event loop.
    if (!dialog.ended()) {
        dialog.abort();
    }
    if (m_layout) {
        m_layout->save(window, dialog.journalName());
    }
    window.hide();
    emit activity();
}

void QtPresenter::showMessage(nxsim::MessageKind kind, const std::string& title,
                              const std::string& text) {
    JournalStep step;
    step.kind = StepKind::Message;
    step.word = nxsim::messageKindWord(kind);
    step.title = title;
    step.text = text;
    record(step);
    emit activity();

    QWidget* parent = m_windows.empty() ? m_mainWindow : m_windows.back();
    QMessageBox box(iconFor(kind), QString::fromStdString(title), QString::fromStdString(text),
                    QMessageBox::Ok, parent);
    box.setObjectName("message_box");
    box.setWindowModality(Qt::WindowModal);
    box.show();
    screenshot(box, "message-" + title);
    switch (m_mode) {
    case Mode::Scripted:
        if (m_script) {
            pause();
            m_script->showMessage(kind, title, text);
        }
        break;
    case Mode::AutoClose:
        break;
    case Mode::Interactive:
        box.exec();
        break;
    }
    box.hide();
}

int QtPresenter::pickFromList(const std::string& title, const std::string& prompt,
                              const std::vector<std::string>& items, int initialSelection) {
    emit activity();
    QWidget* parent = m_windows.empty() ? m_mainWindow : m_windows.back();
    ListPicker picker(title, prompt, items, initialSelection, parent);
    picker.show();
    screenshot(picker, "pick-" + title);
    int chosen = -1;
    switch (m_mode) {
    case Mode::Scripted:
        if (m_script) {
            pause();
            chosen = m_script->pickFromList(title, prompt, items, initialSelection);
            if (chosen >= 0 && chosen < picker.list()->count()) {
                picker.list()->setCurrentRow(chosen);
                pause();
            }
        }
        break;
    case Mode::AutoClose:
        break;
    case Mode::Interactive:
        picker.exec();
        chosen = picker.chosenRow();
        break;
    }
    picker.hide();
    emit requestEnded();
    if (m_mode != Mode::Scripted) {
        JournalStep step;
        step.kind = StepKind::Pick;
        step.title = title;
        step.cancel = chosen < 0;
        step.number = chosen;
        record(step);
    }
    return chosen;
}

std::vector<QtPresenter::HiddenWindow> QtPresenter::hideWindows() {
    std::vector<HiddenWindow> hidden;
    for (DialogWindow* w : m_windows) {
        if (w->isVisible()) {
            hidden.push_back({w, w->geometry()});
            w->hide();
        }
    }
    return hidden;
}

void QtPresenter::restoreWindows(const std::vector<HiddenWindow>& hidden) {
    for (const HiddenWindow& h : hidden) {
        if (h.window) {
            // A window manager may place a window shown again anew; it comes back where it was.
            h.window->setGeometry(h.geometry);
            h.window->show();
            h.window->setGeometry(h.geometry);
        }
    }
}

void QtPresenter::waitForPick(
    GraphicsView::PickMode mode, const std::string& prompt,
    const std::function<QMetaObject::Connection(QEventLoop&)>& connectAnswer) {
    m_graphics->refresh();
    const auto hidden = hideWindows();
    QEventLoop loop;
    const QMetaObject::Connection answered = connectAnswer(loop);
    const QMetaObject::Connection cancelled =
        connect(m_graphics, &GraphicsView::pickCancelled, &loop, &QEventLoop::quit);
    m_graphics->beginPick(mode, QString::fromStdString(prompt));
    if (m_mainWindow) {
        m_mainWindow->raise();
        m_mainWindow->activateWindow();
    }
    loop.exec();
    disconnect(answered);
    disconnect(cancelled);
    m_graphics->endPick();
    restoreWindows(hidden);
}

nxsim::PointAnswer QtPresenter::indicatePoint(const std::string& cue) {
    emit activity();
    nxsim::PointAnswer answer;
    answer.status = nxsim::PointAnswer::Cancel;
    if (m_mode == Mode::Scripted) {
        if (m_script) {
            answer = m_script->indicatePoint(cue);
        }
        if (m_graphics && answer.status == nxsim::PointAnswer::Point) {
            m_graphics->markPoint(answer.point[0], answer.point[1]);
        }
        emit requestEnded();
        return answer;
    }
    if (m_mode == Mode::Interactive && m_graphics) {
        waitForPick(GraphicsView::PickMode::Point, cue, [&](QEventLoop& loop) {
            return connect(m_graphics, &GraphicsView::pointPicked, &loop, [&](double x, double y) {
                answer.status = nxsim::PointAnswer::Point;
                answer.point[0] = x;
                answer.point[1] = y;
                answer.point[2] = 0.0;
                loop.quit();
            });
        });
    }
    emit requestEnded();
    JournalStep step;
    step.kind = StepKind::Point;
    step.cancel = answer.status != nxsim::PointAnswer::Point;
    step.x = answer.point[0];
    step.y = answer.point[1];
    record(step);
    return answer;
}

nxsim::ObjectAnswer QtPresenter::selectObject(const std::string& message, const std::string& title,
                                              int scope) {
    emit activity();
    nxsim::ObjectAnswer answer;
    answer.status = nxsim::ObjectAnswer::Cancel;
    if (m_mode == Mode::Scripted) {
        if (m_script) {
            answer = m_script->selectObject(message, title, scope);
        }
        emit requestEnded();
        return answer;
    }
    if (m_mode == Mode::Interactive && m_graphics) {
        const std::string prompt = title.empty() ? message : title + ": " + message;
        waitForPick(GraphicsView::PickMode::Object, prompt, [&](QEventLoop& loop) {
            return connect(m_graphics, &GraphicsView::objectPicked, &loop, [&](unsigned int tag) {
                answer.status = nxsim::ObjectAnswer::Selected;
                answer.tag = tag;
                loop.quit();
            });
        });
    }
    emit requestEnded();
    JournalStep step;
    step.kind = StepKind::Object;
    step.cancel = answer.status != nxsim::ObjectAnswer::Selected;
    step.number = answer.tag;
    record(step);
    return answer;
}

} // namespace QorfmtHost
