// Signals as a note.
#include "tools/evtlogctl/interruption.h"

#include <csignal>

namespace zusahpi::evtlogctl {
namespace {

volatile std::sig_atomic_t noted = 0;

void note(int) {
    noted = 1;
}

void handle(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART; // no call of the library is to fail for it
    sigaction(signal, &action, nullptr);
}

} // namespace

void noteInterruptions() {
    handle(SIGINT, note);
    handle(SIGTERM, note);
    handle(SIGHUP, note);
    handle(SIGPIPE, SIG_IGN);
}

bool interrupted() {
    return noted != 0;
}

} // namespace zusahpi::evtlogctl
