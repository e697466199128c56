#pragma once

#include <csignal>

namespace Base {

/// While it lives, SIGXFSZ and SIGPIPE are blocked in this thread: a write beyond the file size
/// limit or into a closed pipe then fails with EFBIG or EPIPE instead of ending the process. A
/// signal raised meanwhile is taken back before they are unblocked again.
class WriteSignalsHeld {
public:
    WriteSignalsHeld();
    ~WriteSignalsHeld();
    WriteSignalsHeld(const WriteSignalsHeld&) = delete;
    WriteSignalsHeld& operator=(const WriteSignalsHeld&) = delete;

private:
    sigset_t m_signals;
    sigset_t m_previous;
    sigset_t m_pendingBefore;
};

} // namespace Base
