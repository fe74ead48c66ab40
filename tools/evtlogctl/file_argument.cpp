// Names of files on the command line.
#include "tools/evtlogctl/file_argument.h"

#include <CLI/CLI.hpp>

namespace zusahpi::evtlogctl {

void addLogFile(CLI::App &command, std::string &file) {
    command.add_option("FILE", file, "Log file; the configured log without it")
        ->type_name("")
        ->check(wrongName);
}

std::string wrongName(const std::string &name) {
    return name.empty() ? "a file name is needed" : "";
}

} // namespace zusahpi::evtlogctl
