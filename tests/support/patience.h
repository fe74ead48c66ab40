// Waiting for what another process does. Tests wait for the event itself; the deadline only ends
// those that fail, so it is far beyond what a busy machine needs.
#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace test_support {

constexpr auto patience = std::chrono::seconds(120);

// False when the condition was not met in all that time.
inline bool comesTrue(const std::function<bool()> &condition) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

} // namespace test_support
