#include "session_recorder.h"

#include <boost/filesystem/operations.hpp>

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace fs = boost::filesystem;

namespace QorfmtHost {

SessionRecorder::SessionRecorder(fs::path file) : m_file(std::move(file)) {
    m_lines.push_back("# recorded by qorfmt-host\n");
    save();
}

void SessionRecorder::step(const nxsim::JournalStep& step, int depth) {
    flushPending();
    append(step, depth);
    save();
}

void SessionRecorder::comment(const std::string& text, int depth) {
    flushPending();
    std::ostringstream out;
    nxsim::JournalWriter(out).comment(text, depth);
    m_lines.push_back(out.str());
    save();
}

void SessionRecorder::pendingSet(const void* owner, const std::string& item,
                                 const std::string& value, int depth) {
    for (Pending& p : m_pending) {
        if (p.owner == owner && p.item == item) {
            p.value = value;
            return;
        }
    }
    m_pending.push_back(Pending{owner, item, value, depth});
}

void SessionRecorder::flushPending() {
    if (m_pending.empty()) {
        return;
    }
    std::vector<Pending> pending;
    pending.swap(m_pending);
    for (const Pending& p : pending) {
        nxsim::JournalStep set;
        set.kind = nxsim::StepKind::Set;
        set.item = p.item;
        set.text = p.value;
        set.quoted = true;
        append(set, p.depth);
    }
    save();
}

void SessionRecorder::retract(std::size_t lineCount) {
    if (lineCount < m_lines.size()) {
        m_lines.resize(lineCount);
        save();
    }
}

std::string SessionRecorder::text() const {
    std::string text;
    for (const std::string& line : m_lines) {
        text += line;
    }
    return text;
}

void SessionRecorder::append(const nxsim::JournalStep& step, int depth) {
    std::ostringstream out;
    nxsim::JournalWriter(out).write(step, depth);
    m_lines.push_back(out.str());
}

void SessionRecorder::save() const {
    // Write beside the journal and rename, so that a reader never sees half a file.
    const fs::path temporary = m_file.string() + ".part";
    {
        std::ofstream out(temporary.string(), std::ios::binary | std::ios::trunc);
        out << text();
        out.flush();
        if (!out) {
            throw std::runtime_error(temporary.string() + ": cannot write the journal");
        }
    }
    boost::system::error_code ec;
    fs::rename(temporary, m_file, ec);
    if (ec) {
        throw std::runtime_error(m_file.string() + ": cannot write the journal (" + ec.message() +
                                 ")");
    }
}

} // namespace QorfmtHost
