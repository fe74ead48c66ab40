// The errors that a system call can fail with, by call, and the system's texts of them.
#pragma once

#include <cerrno>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/faults.h"

namespace failing_calls {

struct Error {
    int number;
    const char *text;
};

// Also what a write that moves nothing is taken for.
inline constexpr Error noSpace = {ENOSPC, "No space left on device"};

// What a call is made to fail with. Empty for a call that cannot fail.
[[nodiscard]] const std::vector<Error> &errorsOf(test_support::Call call);

// The call that a recorded line such as "lseek 80" stands for.
[[nodiscard]] test_support::Call callOf(std::string_view line);

// A message with the system's text in the place of its "%s".
[[nodiscard]] std::string withText(std::string message, std::string_view text);

// How many of the process's file descriptors are open.
[[nodiscard]] std::size_t openDescriptors();

// Count a call that was made to fail, or to stop short, and a crash in the add that follows one.
// The sums are printed when the program ends.
void countFailedCall();
void countCrashAfterwards();

} // namespace failing_calls
