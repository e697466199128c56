#include <nxsim/journal_runner.h>

#include "internal.h"
#include "platform_state.h"
#include "regular_file.h"

#include <nxsim/platform.h>
#include <nxsim/runtime.h>

#include <NXOpen/NXException.hxx>

#include <boost/filesystem/operations.hpp>

#include <dlfcn.h>

#include <cmath>
#include <cstdlib>
#include <sstream>

namespace fs = boost::filesystem;

namespace nxsim {

namespace {

std::string joinToggles(const std::vector<int>& toggles) {
    std::string text;
    for (int t : toggles) {
        text += (text.empty() ? "" : " ") + std::to_string(t);
    }
    return text;
}

std::string normalizeToggles(const std::string& text) {
    std::istringstream words(text);
    std::string out;
    for (std::string w; words >> w;) {
        out += (out.empty() ? "" : " ") + w;
    }
    return out;
}

std::string quoted(const std::string& text) {
    return quoteJournalText(text);
}

std::string quotedList(const std::vector<std::string>& items) {
    std::string out;
    for (const std::string& i : items) {
        out += (out.empty() ? "" : ", ") + quoted(i);
    }
    return "[" + out + "]";
}

bool isAction(StepKind kind) {
    switch (kind) {
    case StepKind::Press:
    case StepKind::Select:
    case StepKind::Deselect:
    case StepKind::DoubleClick:
    case StepKind::Choose:
    case StepKind::Set:
    case StepKind::Enter:
    case StepKind::Toggle:
    case StepKind::Ok:
    case StepKind::Cancel:
    case StepKind::Close:
        return true;
    default:
        return false;
    }
}

bool isExpectation(StepKind kind) {
    return kind >= StepKind::ExpectValue;
}

int navigationIndex(const std::string& name) {
    if (name == "OK") {
        return 0;
    }
    if (name == "APPLY") {
        return 1;
    }
    if (name == "BACK") {
        return 2;
    }
    if (name == "CANCEL") {
        return 3;
    }
    return -1;
}

} // namespace

JournalRunner::JournalRunner(Journal journal, fs::path siteDirectory)
    : m_journal(std::move(journal)), m_site(std::move(siteDirectory)) {}

void JournalRunner::fail(int line, const std::string& reason) {
    if (!m_failed) {
        m_failed = true;
        // A control character in a name would make two different names read alike.
        m_failure = m_journal.file + ":" + std::to_string(line) + ": " +
                    detail::visibleText(reason, detail::KeepLineBreaks::Yes);
    }
    throw Failure{m_failure};
}

void JournalRunner::failAt(const JournalStep& step, const std::string& reason) {
    fail(step.line, reason);
}

const JournalStep* JournalRunner::next() {
    return m_position < m_journal.steps.size() ? &m_journal.steps[m_position] : nullptr;
}

const JournalStep& JournalRunner::take(const std::string& expectedWhat) {
    if (m_position >= m_journal.steps.size()) {
        fail(m_journal.lineCount + 1, "the journal ends, but " + expectedWhat);
    }
    return m_journal.steps[m_position++];
}

JournalResult JournalRunner::run(const std::function<void()>& entry) {
    return run(entry, *this);
}

JournalResult JournalRunner::run(const std::function<void()>& entry, Presenter& front) {
    ScopedPresenter scoped(&front);
    m_position = 0;
    m_failed = false;
    m_failure.clear();
    takeStoplightToggles();
    try {
        while (m_position < m_journal.steps.size()) {
            const JournalStep& step = m_journal.steps[m_position++];
            if (step.kind == StepKind::Run) {
                try {
                    entry();
                } catch (const Failure&) {
                    throw;
                } catch (const std::exception& e) {
                    failAt(step, std::string("an exception left the user function: ") + e.what());
                } catch (...) {
                    failAt(step, "an exception of unknown type left the user function");
                }
                if (m_failed) {
                    throw Failure{m_failure};
                }
            } else if (!checkGlobal(step)) {
                if (isAction(step.kind) || isExpectation(step.kind)) {
                    failAt(step, "`" + formatStep(step) + "` needs a shown dialog, but none is");
                }
                std::string what = step.kind == StepKind::Dialog    ? "no dialog is shown"
                                   : step.kind == StepKind::Message ? "no message box is shown"
                                   : step.kind == StepKind::Pick    ? "no list picker is shown"
                                   : step.kind == StepKind::Point
                                       ? "no screen position is asked for"
                                       : "no object selection is asked for";
                failAt(step, "expected `run` or a top-level expectation, found `" +
                                 formatStep(step) + "`: " + what);
            }
        }
    } catch (const Failure& failure) {
        return JournalResult{false, failure.message};
    }
    return JournalResult{true, ""};
}

void JournalRunner::runDialog(RuntimeDialog& dialog) {
    const std::string name = dialog.journalName();
    if (m_failed) {
        dialog.abort();
        return;
    }
    const JournalStep& start = take("dialog " + name + " is shown");
    if (start.kind != StepKind::Dialog) {
        failAt(start,
               "dialog " + name + " is shown, but the journal expects `" + formatStep(start) + "`");
    }
    if (start.item != name) {
        failAt(start, "dialog " + name + " is shown, but the journal expects dialog " + start.item);
    }
    while (!dialog.ended()) {
        if (m_position >= m_journal.steps.size()) {
            fail(m_journal.lineCount + 1,
                 "the journal ends while dialog " + name + " is still shown");
        }
        const JournalStep& step = m_journal.steps[m_position++];
        if (isAction(step.kind)) {
            perform(dialog, step);
        } else if (isExpectation(step.kind)) {
            check(&dialog, step);
        } else {
            std::string found = "`" + formatStep(step) + "`";
            std::string why = step.kind == StepKind::Dialog    ? "no other dialog was opened"
                              : step.kind == StepKind::Message ? "no message box is shown"
                              : step.kind == StepKind::Pick    ? "no list picker is shown"
                              : step.kind == StepKind::Point   ? "no screen position is asked for"
                              : step.kind == StepKind::Object  ? "no object selection is asked for"
                                                               : "`run` is for the top level only";
            failAt(step, "dialog " + name + " expects an action or an expectation, found " + found +
                             ": " + why);
        }
    }
}

void JournalRunner::perform(RuntimeDialog& dialog, const JournalStep& step) {
    try {
        const int n = static_cast<int>(step.number);
        switch (step.kind) {
        case StepKind::Press:
            dialog.press(step.item);
            break;
        case StepKind::Select:
            dialog.select(step.item, n);
            break;
        case StepKind::Deselect:
            dialog.deselect(step.item);
            break;
        case StepKind::DoubleClick:
            dialog.doubleClick(step.item, n);
            break;
        case StepKind::Choose:
            if (step.byText) {
                dialog.choose(step.item, step.text);
            } else {
                dialog.choose(step.item, n);
            }
            break;
        case StepKind::Set:
            dialog.setValue(step.item, step.text);
            break;
        case StepKind::Enter:
            dialog.enter(step.item);
            break;
        case StepKind::Toggle:
            dialog.toggle(step.item, step.flag);
            break;
        case StepKind::Ok:
            dialog.ok();
            break;
        case StepKind::Cancel:
            dialog.cancel();
            break;
        case StepKind::Close:
            dialog.close();
            break;
        default:
            break;
        }
    } catch (const ActionRefused& refused) {
        failAt(step, refused.what());
    }
}

bool JournalRunner::checkGlobal(const JournalStep& step) {
    switch (step.kind) {
    case StepKind::ExpectCue:
        if (cueLine() != step.text) {
            failAt(step, "expected cue " + quoted(step.text) + ", found " + quoted(cueLine()));
        }
        return true;
    case StepKind::ExpectListing:
        if (listingText() != step.text) {
            failAt(step,
                   "expected listing " + quoted(step.text) + ", found " + quoted(listingText()));
        }
        return true;
    case StepKind::ExpectFile: {
        fs::path path = m_site.empty() ? fs::path(step.item) : m_site / step.item;
        boost::system::error_code ec;
        bool exists = fs::exists(path, ec);
        if (exists != step.flag) {
            failAt(step, "expected " + path.string() + (step.flag ? " to exist" : " missing") +
                             ", but it " + (exists ? "exists" : "does not exist"));
        }
        return true;
    }
    case StepKind::ExpectStoplight: {
        std::string found = joinToggles(takeStoplightToggles());
        std::string expected = normalizeToggles(step.text);
        if (found != expected) {
            failAt(step, "expected busy-indicator toggles " + quoted(expected) + ", found " +
                             quoted(found));
        }
        return true;
    }
    default:
        return false;
    }
}

void JournalRunner::check(RuntimeDialog* dialog, const JournalStep& step) {
    if (checkGlobal(step)) {
        return;
    }
    const std::string where = "dialog " + dialog->journalName();
    if (step.kind == StepKind::ExpectTitle) {
        if (dialog->title() != step.text) {
            failAt(step, "expected title " + quoted(step.text) + " of " + where + ", found " +
                             quoted(dialog->title()));
        }
        return;
    }
    RuntimeItem* item = dialog->item(step.item);
    if (!item && (step.kind == StepKind::ExpectSensitive || step.kind == StepKind::ExpectVisible)) {
        int nav = navigationIndex(step.item);
        if (nav >= 0) {
            const DlgNavigation& n = dialog->layout().navigation;
            bool present = nav == 0 ? n.ok : nav == 1 ? n.apply : nav == 2 ? n.back : n.cancel;
            bool actual = present && (step.kind == StepKind::ExpectVisible ||
                                      dialog->navigationSensitive(nav));
            if (actual != step.flag) {
                failAt(step, "expected " + step.item + " of " + where + " to be " +
                                 (step.kind == StepKind::ExpectVisible
                                      ? (step.flag ? "visible" : "hidden")
                                      : (step.flag ? "sensitive" : "insensitive")) +
                                 ", but it is not" + (present ? "" : " (the dialog has none)"));
            }
            return;
        }
    }
    if (!item) {
        failAt(step, where + " has no item " + step.item);
    }
    const std::string itemName = step.item + " of " + where;
    auto wrongKind = [&](const char* what) {
        failAt(step, "`" + formatStep(step) + "` needs " + what + ", but " + step.item + " is a " +
                         kindDescription(item->kind()));
    };
    switch (step.kind) {
    case StepKind::ExpectValue: {
        const ItemKind k = item->kind();
        if (k == ItemKind::PushButton || k == ItemKind::GroupBox || k == ItemKind::LabelItem ||
            k == ItemKind::SingleSelectList) {
            wrongKind("a text, number, toggle, colour, option or radio item");
        }
        std::string found = item->valueText();
        bool same = found == step.text;
        if (!same && k == ItemKind::RealItem) {
            char* end = nullptr;
            double expected = std::strtod(step.text.c_str(), &end);
            same = !step.text.empty() && *end == '\0' &&
                   std::fabs(expected - item->realValue()) <=
                       1e-9 * std::max(1.0, std::fabs(expected));
        }
        if (!same) {
            failAt(step, "expected value " + quoted(step.text) + " of " + itemName + ", found " +
                             quoted(found));
        }
        break;
    }
    case StepKind::ExpectIndex:
        if (item->kind() != ItemKind::OptionMenu && item->kind() != ItemKind::RadioBox) {
            wrongKind("an option menu or radio box");
        }
        if (item->intValue() != step.number) {
            failAt(step, "expected entry " + std::to_string(step.number) + " of " + itemName +
                             ", found " + std::to_string(item->intValue()));
        }
        break;
    case StepKind::ExpectLabel:
        if (item->label() != step.text) {
            failAt(step, "expected label " + quoted(step.text) + " of " + itemName + ", found " +
                             quoted(item->label()));
        }
        break;
    case StepKind::ExpectItems:
        if (item->kind() != ItemKind::SingleSelectList && item->kind() != ItemKind::OptionMenu &&
            item->kind() != ItemKind::RadioBox) {
            wrongKind("a list, option menu or radio box");
        }
        if (item->entries() != step.list) {
            failAt(step, "expected items " + quotedList(step.list) + " of " + itemName +
                             ", found " + quotedList(item->entries()));
        }
        break;
    case StepKind::ExpectSelected:
        if (item->kind() != ItemKind::SingleSelectList) {
            wrongKind("a list");
        }
        if (item->selected() != step.number) {
            failAt(step, "expected selected row " + std::to_string(step.number) + " of " +
                             itemName + ", found " + std::to_string(item->selected()));
        }
        break;
    case StepKind::ExpectSensitive: {
        bool actual = false;
        std::string subject = itemName;
        if (step.entry >= 0) {
            if (item->kind() != ItemKind::OptionMenu && item->kind() != ItemKind::RadioBox) {
                wrongKind("an option menu or radio box for an entry index");
            }
            if (step.entry >= static_cast<int>(item->entries().size())) {
                failAt(step, "entry " + std::to_string(step.entry) + " of " + itemName +
                                 " does not exist: it has " +
                                 std::to_string(item->entries().size()) + " entries");
            }
            actual = item->entrySensitive(step.entry);
            subject = "entry " + std::to_string(step.entry) + " of " + itemName;
        } else {
            actual = item->effectivelySensitive();
        }
        if (actual != step.flag) {
            std::string because;
            if (step.entry < 0 && item->sensitive() && !actual) {
                because = " (an enclosing group is insensitive)";
            }
            failAt(step, "expected " + subject + " to be " +
                             (step.flag ? "sensitive" : "insensitive") + ", but it is " +
                             (actual ? "sensitive" : "insensitive") + because);
        }
        break;
    }
    case StepKind::ExpectVisible: {
        bool actual = item->effectivelyVisible();
        if (actual != step.flag) {
            std::string because =
                item->visible() && !actual ? " (an enclosing group is hidden)" : "";
            failAt(step, "expected " + itemName + " to be " + (step.flag ? "visible" : "hidden") +
                             ", but it is " + (actual ? "visible" : "hidden") + because);
        }
        break;
    }
    case StepKind::ExpectFocus:
        if (dialog->focus() != item) {
            failAt(step, "expected the focus on " + itemName + ", found it " +
                             (dialog->focus() ? "on " + dialog->focus()->name()
                                              : std::string("on no item")));
        }
        break;
    default:
        break;
    }
}

void JournalRunner::showMessage(MessageKind kind, const std::string& title,
                                const std::string& text) {
    if (m_failed) {
        return;
    }
    const std::string shown =
        "message " + std::string(messageKindWord(kind)) + " " + quoted(title) + " " + quoted(text);
    const JournalStep& step = take("a message box is shown: `" + shown + "`");
    if (step.kind != StepKind::Message) {
        failAt(step, "a message box is shown (`" + shown + "`), but the journal expects `" +
                         formatStep(step) + "`");
    }
    if (step.word != messageKindWord(kind) || step.title != title || step.text != text) {
        failAt(step, "the message box shown is `" + shown + "`, not `" + formatStep(step) + "`");
    }
}

int JournalRunner::pickFromList(const std::string& title, const std::string&,
                                const std::vector<std::string>& items, int) {
    if (m_failed) {
        return -1;
    }
    const std::string shown =
        "the list picker " + quoted(title) + " with " + std::to_string(items.size()) + " rows";
    const JournalStep& step = take(shown + " is shown");
    if (step.kind != StepKind::Pick) {
        failAt(step, shown + " is shown, but the journal expects `" + formatStep(step) + "`");
    }
    if (step.title != title) {
        failAt(step, shown + " is shown, not the list picker " + quoted(step.title));
    }
    if (step.cancel) {
        return -1;
    }
    if (step.number < 0 || step.number >= static_cast<long>(items.size())) {
        failAt(step, "cannot pick row " + std::to_string(step.number) + ": " + shown + " " +
                         quotedList(items));
    }
    return static_cast<int>(step.number);
}

PointAnswer JournalRunner::indicatePoint(const std::string& cue) {
    PointAnswer answer;
    if (m_failed) {
        return answer;
    }
    const std::string asked = "a screen position is asked for (" + quoted(cue) + ")";
    const JournalStep& step = take(asked);
    if (step.kind != StepKind::Point) {
        failAt(step, asked + ", but the journal expects `" + formatStep(step) + "`");
    }
    if (!step.cancel) {
        answer.status = PointAnswer::Point;
        answer.point[0] = step.x;
        answer.point[1] = step.y;
        answer.point[2] = 0.0;
    }
    return answer;
}

ObjectAnswer JournalRunner::selectObject(const std::string& message, const std::string& title,
                                         int) {
    ObjectAnswer answer;
    if (m_failed) {
        return answer;
    }
    const std::string asked =
        "an object selection is asked for (" + quoted(title) + ", " + quoted(message) + ")";
    const JournalStep& step = take(asked);
    if (step.kind != StepKind::Object) {
        failAt(step, asked + ", but the journal expects `" + formatStep(step) + "`");
    }
    if (step.cancel) {
        return answer;
    }
    auto tag = static_cast<unsigned int>(step.number);
    detail::PlatformState& s = detail::state();
    if (!s.display) {
        failAt(step, "cannot select object " + std::to_string(tag) + ": there is no display part");
    }
    if (!nxsim::detail::simPart(*s.display).object(tag)) {
        failAt(step, "the display part " + nxsim::detail::simPart(*s.display).file.string() +
                         " has no object with tag " + std::to_string(tag));
    }
    answer.status = ObjectAnswer::Selected;
    answer.tag = tag;
    return answer;
}

// ---- UserFunctionLibrary ----

UserFunctionLibrary::UserFunctionLibrary(const fs::path& file) {
    // Never unloaded from the process, as NX keeps a loaded library for its session: what the
    // library still holds (its open documents) stays reachable.
    m_handle = ::dlopen(file.string().c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (!m_handle) {
        const char* why = ::dlerror();
        throw std::runtime_error(file.string() + ": cannot load the user-function library: " +
                                 (why ? why : "unknown reason"));
    }
    void* symbol = ::dlsym(m_handle, "ufusr");
    if (!symbol) {
        ::dlclose(m_handle);
        m_handle = nullptr;
        throw std::runtime_error(file.string() + ": the library exports no ufusr");
    }
    m_ufusr = reinterpret_cast<void (*)(char*, int*, int)>(symbol);
}

UserFunctionLibrary::~UserFunctionLibrary() {
    if (m_handle) {
        ::dlclose(m_handle);
    }
}

void UserFunctionLibrary::callUfusr() {
    char parameter[1] = {'\0'};
    int returnCode = 0;
    m_ufusr(parameter, &returnCode, 0);
}

// ---- replay ----

void applyReplayEnvironment(const ReplaySetup& setup) {
    if (!setup.site.empty()) {
        ::setenv("QORFMT_SITE", setup.site.string().c_str(), 1);
    }
    if (!setup.configuration.empty()) {
        ::setenv("QORFMT_CONFIGURATION", setup.configuration.c_str(), 1);
    }
    if (!setup.searchPath.empty()) {
        ::setenv("QORFMT_SEARCH_PATH", setup.searchPath.c_str(), 1);
    }
}

ReplayOutcome replay(const ReplaySetup& setup) {
    Journal journal;
    try {
        journal = readJournal(setup.journal);
    } catch (const JournalSyntaxError& e) {
        return ReplayOutcome{1, e.what()};
    } catch (const std::exception& e) {
        return ReplayOutcome{2, e.what()};
    }
    boost::system::error_code ec;
    if (!fs::is_regular_file(setup.library, ec)) {
        return ReplayOutcome{2, setup.library.string() +
                                    ": the user-function library does not exist (is it built?)"};
    }
    applyReplayEnvironment(setup);
    std::unique_ptr<UserFunctionLibrary> library;
    try {
        library = std::make_unique<UserFunctionLibrary>(setup.library);
    } catch (const std::exception& e) {
        return ReplayOutcome{2, e.what()};
    }
    JournalRunner runner(std::move(journal), setup.site);
    JournalResult result = runner.run([&library] { library->callUfusr(); });
    return ReplayOutcome{result.passed ? 0 : 1, result.message};
}

} // namespace nxsim
