// Running a piece of a test in a forked process and collecting what it wrote.

#include "tests/support/child.h"

#include <array>
#include <cstdio>
#include <cstdlib>

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace test_support {

ChildResult runInChild(const std::function<void()> &body) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        std::abort();
    }
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        dup2(ends[1], STDERR_FILENO);
        dup2(ends[1], STDOUT_FILENO);
        close(ends[1]);
        body();
        std::exit(testing::Test::HasFailure() ? 99 : 0);
    }
    close(ends[1]);
    ChildResult result;
    std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = read(ends[0], buffer.data(), buffer.size())) > 0;) {
        result.diagnostics.append(buffer.data(), static_cast<std::size_t>(count));
    }
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    result.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

void inChild(const std::function<void()> &body) {
    const ChildResult result = runInChild(body);
    EXPECT_EQ(result.exitStatus, 0) << result.diagnostics;
}

} // namespace test_support
