// main() of every test program. ctest runs each test in a process of its own; so does this program
// by itself when ZUSAHPI_FORK_TESTS is set, for tools that are slow to start, such as valgrind.

#include <cstdlib>
#include <iostream>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

bool passesInAChild(const std::string &test) {
    std::cout.flush();
    const pid_t child = fork();
    if (child == 0) {
        testing::GTEST_FLAG(filter) = test;
        testing::GTEST_FLAG(brief) = true;
        std::exit(RUN_ALL_TESTS());
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

int runEachInAChild() {
    const testing::UnitTest &program = *testing::UnitTest::GetInstance();
    int passed = 0;
    int failed = 0;
    for (int s = 0; s < program.total_test_suite_count(); ++s) {
        const testing::TestSuite &suite = *program.GetTestSuite(s);
        for (int t = 0; t < suite.total_test_count(); ++t) {
            const std::string test = std::string(suite.name()) + "." + suite.GetTestInfo(t)->name();
            if (passesInAChild(test)) {
                ++passed;
            } else {
                ++failed;
                std::cout << "FAILED in a process of its own: " << test << std::endl;
            }
        }
    }
    std::cout << passed << " passed, " << failed << " failed" << std::endl;
    return failed == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argumentCount, char **arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    return std::getenv("ZUSAHPI_FORK_TESTS") != nullptr ? runEachInAChild() : RUN_ALL_TESTS();
}
