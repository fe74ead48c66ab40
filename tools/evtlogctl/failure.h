// How a command ends early: with one line for the user, which says what failed, on what, and what
// to do about it, and with the exit status for that.
#pragma once

#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "tools/evtlogctl/status.h"

namespace zusahpi::evtlogctl {

struct Failure : std::runtime_error {
    // Without a text nothing is printed: nobody is there to read it.
    Failure(Status exitStatus, const std::string &text)
        : std::runtime_error(text), status(exitStatus) {
    }
    Status status;
};

template <typename... Arguments>
[[noreturn]] void fail(Status status, fmt::format_string<Arguments...> format,
                       Arguments &&...arguments) {
    throw Failure(status, fmt::format(format, std::forward<Arguments>(arguments)...));
}

inline constexpr const char *programName = "evtlogctl";

// A text from outside, such as the name of a file, as a terminal may show it: without control
// characters, dots in their place.
[[nodiscard]] std::string shown(std::string_view text);

// Writes one line to standard error, the program's name before it, as a terminal may show it.
void complain(const std::string &line);

// The system's text for the last failed call.
[[nodiscard]] std::string systemError();

} // namespace zusahpi::evtlogctl
