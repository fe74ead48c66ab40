// How a command ends early: with one line for the user, which says what failed, on what, and what
// to do about it.
#pragma once

#include <cstring>
#include <stdexcept>
#include <string>
#include <utility>

#include <fmt/format.h>

namespace zusahpi::evtlogctl {

struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

template <typename... Arguments>
[[noreturn]] void fail(fmt::format_string<Arguments...> format, Arguments &&...arguments) {
    throw Failure(fmt::format(format, std::forward<Arguments>(arguments)...));
}

inline constexpr const char *programName = "evtlogctl";

// Writes one line to standard error, the program's name before it.
void complain(const std::string &line);

// The system's text for the last failed call.
[[nodiscard]] std::string systemError();

} // namespace zusahpi::evtlogctl
