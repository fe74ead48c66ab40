// The bar is drawn over itself a few times a second.
#include "tools/evtlogctl/progress.h"

#include <cstdio>
#include <string>

#include <unistd.h>

#include <fmt/format.h>

namespace zusahpi::evtlogctl {
namespace {

constexpr std::size_t fewestSteps = 200;
constexpr std::size_t barWidth = 40;
constexpr auto interval = std::chrono::milliseconds{100};

} // namespace

Progress::Progress(std::size_t steps)
    : steps_(steps), visible_(steps >= fewestSteps && isatty(STDERR_FILENO) != 0),
      next_(std::chrono::steady_clock::now()) {
}

Progress::~Progress() {
    if (visible_) {
        (void)std::fputs("\r\033[K", stderr);
    }
}

void Progress::show(std::size_t done) {
    const auto now = std::chrono::steady_clock::now();
    if (!visible_ || now < next_) {
        return;
    }
    next_ = now + interval;
    const std::size_t filled = barWidth * done / steps_;
    const std::string text = fmt::format("\r[{:<{}}] {:>3}%  {}/{}", std::string(filled, '#'),
                                         barWidth, 100 * done / steps_, done, steps_);
    (void)std::fputs(text.c_str(), stderr);
}

} // namespace zusahpi::evtlogctl
