// The descriptor is read directly: what a stream had taken before could not be waited for.
#include "tools/evtlogctl/line_input.h"

#include <array>
#include <cerrno>
#include <utility>

#include <poll.h>
#include <unistd.h>

#include "tools/evtlogctl/interruption.h"

namespace zusahpi::evtlogctl {

bool awaitInput() {
    std::array<pollfd, 1> input{{{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0}}};
    while (!interrupted() && input[0].revents == 0) {
        waitForAny(input, std::nullopt);
    }
    return !interrupted();
}

std::optional<std::string> readLine() {
    static std::string text; // that was read and not yet given out
    std::array<char, 4096> buffer{};
    std::size_t newline = 0;
    while ((newline = text.find('\n')) == std::string::npos) {
        if (!awaitInput()) {
            return std::nullopt;
        }
        const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) { // a last line may have no newline
            return text.empty() ? std::nullopt : std::optional(std::exchange(text, {}));
        }
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    std::string line = text.substr(0, newline);
    text.erase(0, newline + 1);
    return line;
}

} // namespace zusahpi::evtlogctl
