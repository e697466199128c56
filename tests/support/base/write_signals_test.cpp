// A write into a pipe whose reader has gone must fail with EPIPE, not end the process (in NX: the
// CAD session) with SIGPIPE; and the signal must not be left pending for later.
#include "base/write_signals.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Runs `body` in a child with SIGPIPE at its default action (ending the process) and returns how
// the child ended: its exit status, or 128 plus the signal that ended it.
template <class Body>
int inChild(Body body) {
    const pid_t child = ::fork();
    if (child == 0) {
        std::signal(SIGPIPE, SIG_DFL);
        ::_exit(body());
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child) {
        return -1;
    }
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

// Writes into a pipe whose read end is closed; 0 when the write failed with EPIPE.
int writeIntoAClosedPipe() {
    int ends[2];
    if (::pipe(ends) != 0) {
        return 3;
    }
    ::close(ends[0]);
    const char byte = 'x';
    const ssize_t written = ::write(ends[1], &byte, 1);
    const int error = errno;
    ::close(ends[1]);
    return written < 0 && error == EPIPE ? 0 : 4;
}

} // namespace

TEST(WriteSignals, AWriteIntoAClosedPipeFailsWithEpipeWhileHeld) {
    EXPECT_EQ(inChild([] {
                  int result = 0;
                  {
                      Base::WriteSignalsHeld held;
                      result = writeIntoAClosedPipe();
                  }
                  // Still here after the signals are unblocked again: nothing was left pending.
                  return result;
              }),
              0);
}

TEST(WriteSignals, WithoutTheGuardTheSameWriteEndsTheProcess) {
    EXPECT_EQ(inChild([] { return writeIntoAClosedPipe(); }), 128 + SIGPIPE);
}

TEST(WriteSignals, ASignalPendingBeforeTheGuardIsLeftPending) {
    EXPECT_EQ(inChild([] {
                  sigset_t pipe;
                  sigemptyset(&pipe);
                  sigaddset(&pipe, SIGPIPE);
                  ::sigprocmask(SIG_BLOCK, &pipe, nullptr);
                  ::raise(SIGPIPE);
                  { Base::WriteSignalsHeld held; }
                  sigset_t pending;
                  ::sigpending(&pending);
                  return sigismember(&pending, SIGPIPE) ? 0 : 5;
              }),
              0);
}
