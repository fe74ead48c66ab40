// Reads a System Event Log by running a command that fetches it from a controller.
//
// A reading is used whole or not at all: what a command printed counts when it ended with success
// and printed whole records. Everything that it prints is input from outside.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "tools/evtlogctl/sel_input.h"

namespace zusahpi::evtlogctl {

// This word of a command stands for a file that the command writes the records to, for commands
// that do not print them.
inline constexpr const char *fileWord = "{}";

struct SelCommand {
    std::vector<std::string> words; // the program and what follows it
    sel::Form form = sel::Form::automatic;
    std::chrono::milliseconds timeLimit{};
    bool ran = false; // it could be started once
};

[[nodiscard]] const std::string &nameOf(const SelCommand &command);

// Empty when this process is asked to end. Throws Failure when there is no whole reading.
[[nodiscard]] std::optional<std::vector<sel::Record>> readSel(SelCommand &command);

} // namespace zusahpi::evtlogctl
