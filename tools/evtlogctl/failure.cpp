// One line of trouble on standard error.
#include "tools/evtlogctl/failure.h"

#include <cerrno>
#include <cstdio>

namespace zusahpi::evtlogctl {

void complain(const std::string &line) {
    // A line goes out in one call, so that it stays whole beside the lines of other processes.
    const std::string text = fmt::format("{}: {}\n", programName, line);
    (void)std::fputs(text.c_str(), stderr);
}

std::string systemError() {
    return std::strerror(errno);
}

} // namespace zusahpi::evtlogctl
