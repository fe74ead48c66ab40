// The command line: what it may hold, and from there to a command.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace zusahpi::evtlogctl {

// Runs the command that the arguments name and returns the exit status. Reports what is wrong on
// standard error; throws nothing.
[[nodiscard]] int run(int argumentCount, char **arguments);

// Minutes that "+hh:mm", "-hh:mm" or "Z" stand for; empty for any other text.
[[nodiscard]] std::optional<std::int32_t> parseUtcOffset(std::string_view text);

} // namespace zusahpi::evtlogctl
