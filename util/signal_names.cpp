// Names of signals, by their numbers on Linux for x86.

#include <array>

#include "zuSaHpi_util.h"

namespace zusahpi {
namespace {

constexpr const char *undefinedSignal = "Undefined Signal";

constexpr std::array signalNames = {
    undefinedSignal, "SIGHUP",  "SIGINT",    "SIGQUIT",   "SIGILL",  "SIGTRAP",   "SIGABRT",
    "SIGBUS",        "SIGFPE",  "SIGKILL",   "SIGUSR1",   "SIGSEGV", "SIGUSR2",   "SIGPIPE",
    "SIGALRM",       "SIGTERM", "SIGSTKFLT", "SIGCHLD",   "SIGCONT", "SIGSTOP",   "SIGTSTP",
    "SIGTTIN",       "SIGTTOU", "SIGURG",    "SIGXCPU",   "SIGXFSZ", "SIGVTALRM", "SIGPROF",
    "SIGWINCH",      "SIGIO",   "SIGPWR",    "SIGUNUSED",
};
static_assert(signalNames.size() == 32);

} // namespace
} // namespace zusahpi

const char *zuSaHpi_strsignal(uint32_t signal) {
    using namespace zusahpi;
    return signal < signalNames.size() ? signalNames[signal] : undefinedSignal;
}
