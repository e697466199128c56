#pragma once

#include <nxsim/presenter.h>
#include <nxsim/runtime.h>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace TestUtil {

/// The tests' presenter: each kind of request is answered by the function the test sets, and a
/// kind left unset is refused by the platform's presenter with a message naming the request.
class TestPresenter : public nxsim::Presenter {
public:
    using DialogScript = std::function<void(nxsim::RuntimeDialog&)>;

    /// Runs every dialog shown.
    DialogScript dialog;
    std::function<void(nxsim::MessageKind, const std::string& title, const std::string& text)>
        message;
    std::function<int(const std::string& title, const std::vector<std::string>& items)> pick;
    std::function<nxsim::PointAnswer(const std::string& cue)> point;
    std::function<nxsim::ObjectAnswer(const std::string& title)> object;

    /// Makes `dialog` run the scripts in order, one per dialog shown; a dialog that its script
    /// leaves open is aborted, and a dialog without a script fails the test. `shown` receives
    /// "NAME: TITLE" of every dialog.
    void scriptDialogs(std::deque<DialogScript> scripts) {
        m_scripts = std::move(scripts);
        dialog = [this](nxsim::RuntimeDialog& next) {
            shown.push_back(next.journalName() + ": " + next.title());
            if (m_scripts.empty()) {
                ADD_FAILURE() << "no script for the dialog " << next.journalName();
                next.abort();
                return;
            }
            const DialogScript script = std::move(m_scripts.front());
            m_scripts.pop_front();
            script(next);
            if (!next.ended()) {
                next.abort();
            }
        };
    }
    /// The scripts not run yet.
    const std::deque<DialogScript>& scriptsLeft() const { return m_scripts; }
    std::vector<std::string> shown;

    void runDialog(nxsim::RuntimeDialog& shownDialog) override {
        dialog ? dialog(shownDialog) : Presenter::runDialog(shownDialog);
    }
    void showMessage(nxsim::MessageKind kind, const std::string& title,
                     const std::string& text) override {
        message ? message(kind, title, text) : Presenter::showMessage(kind, title, text);
    }
    int pickFromList(const std::string& title, const std::string& prompt,
                     const std::vector<std::string>& items, int initialSelection) override {
        return pick ? pick(title, items)
                    : Presenter::pickFromList(title, prompt, items, initialSelection);
    }
    nxsim::PointAnswer indicatePoint(const std::string& cue) override {
        return point ? point(cue) : Presenter::indicatePoint(cue);
    }
    nxsim::ObjectAnswer selectObject(const std::string& messageText, const std::string& title,
                                     int scope) override {
        return object ? object(title) : Presenter::selectObject(messageText, title, scope);
    }

private:
    std::deque<DialogScript> m_scripts;
};

} // namespace TestUtil
