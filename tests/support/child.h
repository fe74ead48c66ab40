// Runs a piece of a test in a process of its own: for code that exits, and for one process-wide log
// after another on the same file.
#pragma once

#include <functional>
#include <string>

namespace test_support {

struct ChildResult {
    int exitStatus = -1;     // -1 when the child did not exit by itself
    std::string diagnostics; // all that it wrote to standard error
};

// Forks, runs `body` and leaves through exit(), so that exit handlers run. A failed gtest assertion
// in `body` makes the exit status 99.
ChildResult runInChild(const std::function<void()> &body);

// The same for a body that must succeed; adds a test failure with the child's text otherwise.
void inChild(const std::function<void()> &body);

} // namespace test_support
