// One line of trouble on standard error.
#include "tools/evtlogctl/failure.h"

#include <cerrno>
#include <cstdio>

namespace zusahpi::evtlogctl {

std::string shown(std::string_view text) {
    constexpr char firstPrintable = ' ';
    constexpr char erase = '\x7F';
    constexpr char twoBytes = '\xC2'; // of UTF-8; up to 9F behind it there are controls, too
    std::string result(text);
    for (std::size_t i = 0; i < result.size(); ++i) {
        const auto byte = static_cast<unsigned char>(result[i]);
        const bool second = i > 0 && text[i - 1] == twoBytes && byte >= 0x80 && byte < 0xA0;
        if (byte < firstPrintable || result[i] == erase || second) {
            result[i] = '.';
        }
        if (second) {
            result[i - 1] = '.';
        }
    }
    return result;
}

void complain(const std::string &line) {
    // A line goes out in one call, so that it stays whole beside the lines of other processes.
    const std::string text = fmt::format("{}: {}\n", programName, shown(line));
    (void)std::fputs(text.c_str(), stderr);
}

std::string systemError() {
    return std::strerror(errno);
}

} // namespace zusahpi::evtlogctl
