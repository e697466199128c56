#include <nxsim/platform.h>

#include "internal.h"
#include "platform_state.h"

#include <nxsim/error_codes.h>
#include <nxsim/presenter.h>
#include <nxsim/runtime.h>

#include <algorithm>

namespace nxsim {

namespace detail {

PlatformState& state() {
    // Never destroyed: libraries unloaded late may still reach it.
    static PlatformState* s = new PlatformState();
    return *s;
}

std::function<void(bool)>& stoplightListener() {
    static auto* listener = new std::function<void(bool)>();
    return *listener;
}

int enterCall(const char* call) {
    PlatformState& s = state();
    s.calls.emplace_back(call);
    auto it = s.faults.find(call);
    if (it == s.faults.end()) {
        return 0;
    }
    int code = it->second.code;
    if (it->second.remaining > 0 && --it->second.remaining == 0) {
        s.faults.erase(it);
    }
    return code;
}

void enterMethod(const char* call) {
    if (int code = enterCall(call)) {
        raise(code, std::string("injected fault of ") + call);
    }
}

void pushShown(RuntimeDialog* dialog) {
    state().shown.push_back(dialog);
}

void popShown(RuntimeDialog* dialog) {
    auto& shown = state().shown;
    shown.erase(std::remove(shown.begin(), shown.end(), dialog), shown.end());
}

SimPart* partWithTag(unsigned int tag) {
    for (LoadedPart& p : state().parts) {
        if (p.sim->object(tag)) {
            return p.sim.get();
        }
        for (const SimDrawing& d : p.sim->drawings) {
            if (d.tag == tag) {
                return p.sim.get();
            }
        }
    }
    return nullptr;
}

const SimObject* objectWithTag(unsigned int tag) {
    for (LoadedPart& p : state().parts) {
        if (const SimObject* o = p.sim->object(tag)) {
            return o;
        }
    }
    return nullptr;
}

const SimDrawing* drawingWithTag(unsigned int tag) {
    for (LoadedPart& p : state().parts) {
        for (const SimDrawing& d : p.sim->drawings) {
            if (d.tag == tag) {
                return &d;
            }
        }
    }
    return nullptr;
}

} // namespace detail

using detail::state;

const char* messageKindWord(MessageKind kind) {
    switch (kind) {
    case MessageKind::Error:
        return "error";
    case MessageKind::Warning:
        return "warning";
    case MessageKind::Information:
        return "information";
    case MessageKind::Question:
        return "question";
    }
    return "?";
}

void Presenter::runDialog(RuntimeDialog& dialog) {
    detail::raise(ErrorCode::Unanswered, "no answer for the dialog " + dialog.journalName());
}

void Presenter::showMessage(MessageKind kind, const std::string& title, const std::string& text) {
    detail::raise(ErrorCode::Unanswered, std::string("no answer for the ") + messageKindWord(kind) +
                                             " message \"" + title + "\": " + text);
}

int Presenter::pickFromList(const std::string& title, const std::string& /*prompt*/,
                            const std::vector<std::string>& /*items*/, int /*initialSelection*/) {
    detail::raise(ErrorCode::Unanswered, "no answer for the list picker \"" + title + "\"");
}

PointAnswer Presenter::indicatePoint(const std::string& cue) {
    detail::raise(ErrorCode::Unanswered, "no answer for the screen position \"" + cue + "\"");
}

ObjectAnswer Presenter::selectObject(const std::string& message, const std::string& title,
                                     int /*scope*/) {
    detail::raise(ErrorCode::Unanswered,
                  "no answer for the object selection \"" + title + "\": " + message);
}

void setPresenter(Presenter* p) {
    state().presenter = p;
}

Presenter* presenter() {
    return state().presenter;
}

ScopedPresenter::ScopedPresenter(Presenter* p) : m_previous(presenter()) {
    setPresenter(p);
}

ScopedPresenter::~ScopedPresenter() {
    setPresenter(m_previous);
}

void showMessageBox(MessageKind kind, const std::string& title, const std::string& text) {
    state().messages.push_back(ShownMessage{kind, title, text});
    Presenter* p = presenter();
    if (!p) {
        detail::raise(ErrorCode::NoPresenter, "cannot show message box \"" + title + "\"");
    }
    p->showMessage(kind, title, text);
}

int pickFromList(const std::string& title, const std::string& prompt,
                 const std::vector<std::string>& items, int initialSelection) {
    Presenter* p = presenter();
    if (!p) {
        detail::raise(ErrorCode::NoPresenter, "cannot show list picker \"" + title + "\"");
    }
    int chosen = p->pickFromList(title, prompt, items, initialSelection);
    if (chosen >= static_cast<int>(items.size())) {
        detail::raise(ErrorCode::InvalidArgument, "the presenter chose row " +
                                                      std::to_string(chosen) + " of " +
                                                      std::to_string(items.size()));
    }
    if (chosen < 0) {
        chosen = -1;
    }
    state().pickers.push_back(ShownPicker{title, prompt, items, chosen});
    return chosen;
}

std::vector<ShownMessage> shownMessages() {
    return state().messages;
}

std::vector<ShownPicker> shownPickers() {
    return state().pickers;
}

std::vector<BoundControl> boundControls() {
    return state().boundControls;
}

std::string listingText() {
    return state().listing;
}

bool listingOpen() {
    return state().listingOpen;
}

std::string cueLine() {
    return state().cue;
}

std::uint64_t cueLineSets() {
    return state().cueSets;
}

std::vector<int> stoplightToggles() {
    return state().toggles;
}

void setStoplightListener(std::function<void(bool on)> listener) {
    detail::stoplightListener() = std::move(listener);
}

std::vector<int> takeStoplightToggles() {
    std::vector<int> toggles;
    toggles.swap(state().toggles);
    return toggles;
}

std::vector<std::string> callLog() {
    return state().calls;
}

int initializeDepth() {
    return state().initializeDepth;
}

bool highlighted(unsigned int tag) {
    return state().highlights.count(tag) != 0;
}

std::string displayPartFile() {
    return state().display ? nxsim::detail::simPart(*state().display).file.string() : std::string();
}

std::string workPartFile() {
    return state().work ? nxsim::detail::simPart(*state().work).file.string() : std::string();
}

std::vector<std::string> loadedPartFiles() {
    std::vector<std::string> files;
    for (const auto& p : state().parts) {
        files.push_back(p.sim->file.string());
    }
    return files;
}

std::vector<RuntimeDialog*> shownDialogs() {
    return state().shown;
}

void injectFault(const std::string& call, int errorCode, int times) {
    state().faults[call] = detail::Fault{errorCode, times < 0 ? 0 : times};
}

void clearFaults() {
    state().faults.clear();
}

void reset() {
    detail::PlatformState& s = state();
    Presenter* keep = s.presenter;
    std::vector<RuntimeDialog*> shown = s.shown;
    s = detail::PlatformState();
    s.presenter = keep;
    s.shown = shown;
}

} // namespace nxsim
