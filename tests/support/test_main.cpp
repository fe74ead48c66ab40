// main() of every test program. ctest runs each test in a process of its own; so does this program
// by itself when ZUSAHPI_FORK_TESTS is set, for tools that are slow to start, such as valgrind.
// With the value "stop" it ends at the first test that fails. What a filter takes out ("-Suite.*")
// stays out.

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int passed = 0;
constexpr int leftOut = 77; // taken out by the filter

constexpr unsigned longEnough = 900; // seconds; a test that takes longer fails, and not for ever

// Who starts a program in the background, or with nohup, may have it ignore signals. Tests send
// them to programs that they start, and those take over what is ignored.
void ignoreNoSignal() {
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGCHLD}) {
        (void)std::signal(signal, SIG_DFL);
    }
}

// Returns passed, leftOut, or anything else for a failure.
int runInAChild(const std::string &test) {
    const std::string filter = testing::GTEST_FLAG(filter);
    const std::string takenOut = filter.substr(std::min(filter.find('-'), filter.size()));
    std::cout.flush();
    const pid_t child = fork();
    if (child == 0) {
        alarm(longEnough);
        testing::GTEST_FLAG(filter) = test + takenOut;
        testing::GTEST_FLAG(brief) = true;
        const int result = RUN_ALL_TESTS();
        std::exit(testing::UnitTest::GetInstance()->test_to_run_count() == 0 ? leftOut : result);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE;
}

int runEachInAChild(bool stopAtAFailure) {
    const testing::UnitTest &program = *testing::UnitTest::GetInstance();
    int passes = 0;
    int failures = 0;
    for (int s = 0; s < program.total_test_suite_count(); ++s) {
        const testing::TestSuite &suite = *program.GetTestSuite(s);
        for (int t = 0; t < suite.total_test_count(); ++t) {
            const std::string test = std::string(suite.name()) + "." + suite.GetTestInfo(t)->name();
            const int result = runInAChild(test);
            if (result == passed) {
                ++passes;
            } else if (result != leftOut) {
                ++failures;
                std::cout << "FAILED in a process of its own: " << test << std::endl;
                if (stopAtAFailure) {
                    return EXIT_FAILURE;
                }
            }
        }
    }
    std::cout << passes << " passed, " << failures << " failed" << std::endl;
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argumentCount, char **arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    ignoreNoSignal();
    (void)setenv("TZ", "UTC0", 1); // times are in UTC in every text that a test expects
    const char *wanted = std::getenv("ZUSAHPI_FORK_TESTS");
    return wanted != nullptr ? runEachInAChild(std::string_view(wanted) == "stop")
                             : RUN_ALL_TESTS();
}
