// Goal: the numbers 0 to 31 have their signalNames and no other number has one.

#include <array>

#include <gtest/gtest.h>

#include "zuSaHpi_util.h"

namespace {

constexpr std::array signalNames = {
    "Undefined Signal", "SIGHUP",  "SIGINT",    "SIGQUIT",   "SIGILL",  "SIGTRAP",   "SIGABRT",
    "SIGBUS",           "SIGFPE",  "SIGKILL",   "SIGUSR1",   "SIGSEGV", "SIGUSR2",   "SIGPIPE",
    "SIGALRM",          "SIGTERM", "SIGSTKFLT", "SIGCHLD",   "SIGCONT", "SIGSTOP",   "SIGTSTP",
    "SIGTTIN",          "SIGTTOU", "SIGURG",    "SIGXCPU",   "SIGXFSZ", "SIGVTALRM", "SIGPROF",
    "SIGWINCH",         "SIGIO",   "SIGPWR",    "SIGUNUSED",
};

TEST(SignalNames, NamesEverySignal) {
    ASSERT_EQ(signalNames.size(), 32U);
    for (uint32_t signal = 0; signal < signalNames.size(); ++signal) {
        EXPECT_STREQ(zuSaHpi_strsignal(signal), signalNames[signal]) << signal;
    }
}

TEST(SignalNames, OtherNumbersAreUndefined) {
    for (const uint32_t signal : {32U, 33U, 64U, 0x80000000U, static_cast<uint32_t>(-1)}) {
        EXPECT_STREQ(zuSaHpi_strsignal(signal), "Undefined Signal") << signal;
    }
}

} // namespace
