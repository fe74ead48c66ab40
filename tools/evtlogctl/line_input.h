// Lines from standard input, waited for in a way that a signal can end.
#pragma once

#include <optional>
#include <string>

namespace zusahpi::evtlogctl {

// The next line, without its newline. Nothing at the end of the input, or when this process is
// asked to end. The caller has called noteInterruptions() and deferInterruptions().
[[nodiscard]] std::optional<std::string> readLine();

// Waits for input. False when this process is asked to end.
[[nodiscard]] bool awaitInput();

} // namespace zusahpi::evtlogctl
