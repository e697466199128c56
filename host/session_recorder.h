#pragma once

#include <nxsim/journal.h>

#include <boost/filesystem/path.hpp>

#include <string>
#include <vector>

namespace QorfmtHost {

/// Writes the user's session as a journal that qorfmt-replay can replay. The file is rewritten
/// after every line, so that it is complete up to the last action even if the host is killed.
class SessionRecorder {
public:
    /// Creates (truncates) the journal; throws std::runtime_error naming the file on failure.
    explicit SessionRecorder(boost::filesystem::path file);

    /// Writes pending values, then `step` at nesting `depth`.
    void step(const nxsim::JournalStep& step, int depth);
    void comment(const std::string& text, int depth);
    /// Remembers a typed value of `item` in the dialog `owner`; it is written as one `set` line
    /// before the next step, so that typing a word gives one line, not one per key.
    void pendingSet(const void* owner, const std::string& item, const std::string& value,
                    int depth);
    void flushPending();

    /// The number of lines written; retract(n) removes the lines after the first n (an action
    /// that the dialog refused leaves no line).
    std::size_t lineCount() const { return m_lines.size(); }
    void retract(std::size_t lineCount);

    const boost::filesystem::path& file() const { return m_file; }
    /// The whole journal as written so far.
    std::string text() const;

private:
    struct Pending {
        const void* owner;
        std::string item;
        std::string value;
        int depth;
    };

    void append(const nxsim::JournalStep& step, int depth);
    void save() const;

    boost::filesystem::path m_file;
    std::vector<std::string> m_lines;
    std::vector<Pending> m_pending;
};

} // namespace QorfmtHost
