#pragma once

#include <nxsim/journal.h>
#include <nxsim/presenter.h>

#include <boost/filesystem/path.hpp>

#include <functional>
#include <string>

namespace nxsim {

/// The outcome of replaying a journal.
struct JournalResult {
    bool passed = false;
    /// "FILE:LINE: reason" of the first failure; empty when passed.
    std::string message;
};

/// The scripted presenter: replays a journal. While run() runs, it is the active presenter; every
/// modal request takes the next journal line, which must be of the matching kind, and a dialog
/// takes the lines that follow its `dialog` line up to the action that ends it.
class JournalRunner : public Presenter {
public:
    /// `siteDirectory` is the base of `expect file` paths.
    explicit JournalRunner(Journal journal, boost::filesystem::path siteDirectory = {});

    /// Replays the whole journal; each `run` line calls `entry` (a library's ufusr). Stops at the
    /// first failure. An exception that leaves `entry` is a failure of its `run` line.
    JournalResult run(const std::function<void()>& entry);
    /// As run(entry), but installs `front` as the presenter instead: a presenter that draws each
    /// request (the Qt host replaying in its windows) and hands it on to this runner's methods.
    JournalResult run(const std::function<void()>& entry, Presenter& front);

    void runDialog(RuntimeDialog& dialog) override;
    void showMessage(MessageKind kind, const std::string& title, const std::string& text) override;
    int pickFromList(const std::string& title, const std::string& prompt,
                     const std::vector<std::string>& items, int initialSelection) override;
    PointAnswer indicatePoint(const std::string& cue) override;
    ObjectAnswer selectObject(const std::string& message, const std::string& title,
                              int scope) override;

private:
    struct Failure {
        std::string message;
    };

    const JournalStep* next();
    const JournalStep& take(const std::string& expectedWhat);
    [[noreturn]] void fail(int line, const std::string& reason);
    [[noreturn]] void failAt(const JournalStep& step, const std::string& reason);
    void perform(RuntimeDialog& dialog, const JournalStep& step);
    void check(RuntimeDialog* dialog, const JournalStep& step);
    bool checkGlobal(const JournalStep& step);

    Journal m_journal;
    boost::filesystem::path m_site;
    std::size_t m_position = 0;
    bool m_failed = false;
    std::string m_failure;
};

/// A user-function library loaded with dlopen; stays loaded until destroyed, as the CAD system
/// keeps a loaded library.
class UserFunctionLibrary {
public:
    /// Loads `file` and finds its `ufusr`; throws std::runtime_error naming the file and why.
    explicit UserFunctionLibrary(const boost::filesystem::path& file);
    ~UserFunctionLibrary();
    UserFunctionLibrary(const UserFunctionLibrary&) = delete;
    UserFunctionLibrary& operator=(const UserFunctionLibrary&) = delete;

    /// Calls ufusr with an empty parameter, as the CAD system does for a user function.
    void callUfusr();

private:
    void* m_handle = nullptr;
    void (*m_ufusr)(char*, int*, int) = nullptr;
};

/// What the headless runner does: sets QORFMT_SITE, QORFMT_CONFIGURATION (when not empty) and
/// QORFMT_SEARCH_PATH (when not empty), loads the library and replays the journal.
struct ReplaySetup {
    boost::filesystem::path journal;
    boost::filesystem::path site;
    std::string configuration;
    std::string searchPath;
    boost::filesystem::path library;
};

/// The result of a replay and its exit code: 0 passed, 1 journal failure ("FILE:LINE: ..."),
/// 2 setup error (unreadable journal, library that does not load).
struct ReplayOutcome {
    int exitCode = 2;
    std::string message;
};
ReplayOutcome replay(const ReplaySetup& setup);
/// The environment part of replay(): QORFMT_SITE (when the site is not empty),
/// QORFMT_CONFIGURATION and QORFMT_SEARCH_PATH (when not empty). Shared with the Qt host.
void applyReplayEnvironment(const ReplaySetup& setup);

} // namespace nxsim
