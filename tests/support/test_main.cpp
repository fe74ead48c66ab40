// main() of every test program. Each test is run in a process of its own, since the library has one
// log for each process: ctest starts the program anew for each, and the program itself forks where
// it is to run more than one, so that it can be run directly. Then it says which tests fail, and
// ends at the first one with --gtest_fail_fast.

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include <fnmatch.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned longEnough = 3600; // seconds; a test that takes longer fails, and not for ever

// Who starts a program in the background, or with nohup, may have it ignore signals. Tests send
// them to programs that they start, and those take over what is ignored.
void ignoreNoSignal() {
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGCHLD}) {
        (void)std::signal(signal, SIG_DFL);
    }
}

// True when one of the patterns, which colons part, is that of the name.
bool matches(const std::string &patterns, const std::string &name) {
    std::istringstream parts(patterns);
    for (std::string pattern; std::getline(parts, pattern, ':');) {
        if (fnmatch(pattern.c_str(), name.c_str(), 0) == 0) {
            return true;
        }
    }
    return false;
}

// The names of the tests that --gtest_filter leaves ("these:and-neither:nor").
std::vector<std::string> wantedTests() {
    const std::string filter = testing::GTEST_FLAG(filter);
    const std::size_t dash = filter.find('-');
    const std::string these = filter.substr(0, dash);
    const std::string without = dash == std::string::npos ? "" : filter.substr(dash + 1);
    const testing::UnitTest &program = *testing::UnitTest::GetInstance();
    std::vector<std::string> names;
    for (int s = 0; s < program.total_test_suite_count(); ++s) {
        const testing::TestSuite &suite = *program.GetTestSuite(s);
        for (int t = 0; t < suite.total_test_count(); ++t) {
            const std::string name = std::string(suite.name()) + "." + suite.GetTestInfo(t)->name();
            if ((these.empty() || matches(these, name)) && !matches(without, name)) {
                names.push_back(name);
            }
        }
    }
    return names;
}

bool passesInAChild(const std::string &test) {
    std::cout.flush();
    const pid_t child = fork();
    if (child == 0) {
        alarm(longEnough);
        testing::GTEST_FLAG(filter) = test;
        std::exit(RUN_ALL_TESTS());
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
}

int runEachInAChild(const std::vector<std::string> &tests) {
    int passes = 0;
    int failures = 0;
    for (const std::string &test : tests) {
        if (passesInAChild(test)) {
            ++passes;
            continue;
        }
        ++failures;
        std::cout << "FAILED in a process of its own: " << test << std::endl;
        if (testing::GTEST_FLAG(fail_fast)) {
            break;
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
    const std::vector<std::string> tests = wantedTests();
    return testing::GTEST_FLAG(list_tests) || tests.size() <= 1 ? RUN_ALL_TESTS()
                                                                : runEachInAChild(tests);
}
