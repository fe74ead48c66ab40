// Signals as a note.
#include "tools/evtlogctl/interruption.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace zusahpi::evtlogctl {
namespace {

volatile std::sig_atomic_t noted = 0;
sigset_t usualMask;                      // before the signals were deferred
volatile std::sig_atomic_t nowhere = -1; // descriptor that takes the place of standard output

void note(int) {
    noted = 1;
    if (nowhere >= 0) {
        const int error = errno;
        (void)dup2(nowhere, STDOUT_FILENO);
        errno = error;
    }
}

void handle(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART; // no call of the library is to fail for it
    sigaction(signal, &action, nullptr);
}

// Who started this process may have it outlive a terminal, as nohup does.
void noteUnlessIgnored(int signal) {
    struct sigaction inherited {};
    sigaction(signal, nullptr, &inherited);
    if (inherited.sa_handler != SIG_IGN) {
        handle(signal, note);
    }
}

} // namespace

void noteInterruptions() {
    noteUnlessIgnored(SIGINT);
    handle(SIGTERM, note);
    noteUnlessIgnored(SIGHUP);
    handle(SIGPIPE, SIG_IGN);
}

bool interrupted() {
    return noted != 0;
}

void silenceWhenInterrupted() {
    if (nowhere < 0) {
        nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC); // without it the printout goes on
    }
}

void deferInterruptions() {
    sigset_t deferred;
    sigemptyset(&deferred);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&deferred, signal);
    }
    sigprocmask(SIG_BLOCK, &deferred, &usualMask);
    handle(SIGCHLD, SIG_DFL); // ignored, as it may be from the start, children leave no status
}

void admitInterruptions() {
    sigprocmask(SIG_SETMASK, &usualMask, nullptr);
}

void waitForAny(std::span<pollfd> descriptors, std::optional<std::chrono::milliseconds> time) {
    timespec limit{};
    if (time) {
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(*time);
        limit.tv_sec = static_cast<time_t>(seconds.count());
        limit.tv_nsec = static_cast<long>(std::chrono::nanoseconds(*time - seconds).count());
    }
    for (pollfd &each : descriptors) {
        each.revents = 0; // where the wait is cut short the system leaves them as they are
    }
    (void)ppoll(descriptors.data(), descriptors.size(), time ? &limit : nullptr, &usualMask);
}

} // namespace zusahpi::evtlogctl
