// Arguments that name a file.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace zusahpi::evtlogctl {

// The argument FILE of a command that reads a log, or the configured log without one.
void addLogFile(CLI::App &command, std::string &file);

// What is wrong with the name: an empty one, as of a variable of a script that was never set, would
// stand for no name. Empty when nothing is.
[[nodiscard]] std::string wrongName(const std::string &name);

} // namespace zusahpi::evtlogctl
