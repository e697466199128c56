#include "base/write_signals.h"

#include <ctime>
#include <initializer_list>
#include <pthread.h>

namespace Base {

WriteSignalsHeld::WriteSignalsHeld() {
    ::sigemptyset(&m_signals);
    ::sigaddset(&m_signals, SIGXFSZ);
    ::sigaddset(&m_signals, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &m_signals, &m_previous);
    ::sigpending(&m_pendingBefore);
}

WriteSignalsHeld::~WriteSignalsHeld() {
    sigset_t pending;
    ::sigpending(&pending);
    for (const int signal : {SIGXFSZ, SIGPIPE}) {
        if (!::sigismember(&m_previous, signal) && ::sigismember(&pending, signal) == 1 &&
            ::sigismember(&m_pendingBefore, signal) != 1) {
            sigset_t one;
            ::sigemptyset(&one);
            ::sigaddset(&one, signal);
            const struct timespec now {};
            ::sigtimedwait(&one, nullptr, &now);
        }
    }
    ::pthread_sigmask(SIG_SETMASK, &m_previous, nullptr);
}

} // namespace Base
