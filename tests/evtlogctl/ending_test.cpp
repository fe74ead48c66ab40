// Goal: whatever ends a command that holds the log's lock (a signal, a terminal's Ctrl-C, a reader
// that has enough), the lock is given up, the log is sound, and the command ends soon.
#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/evtlogctl/program.h"
#include "tests/evtlogctl/sel_samples.h"
#include "tests/support/files.h"
#include "tests/support/patience.h"

namespace {

using program::Result;
using test_support::exists;
using test_support::readFile;
using test_support::ScratchFolder;
using test_support::writeFile;

struct Pipe {
    Pipe() {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) {
            throw std::runtime_error("cannot make a pipe");
        }
        out = ends[0];
        in = ends[1];
    }
    int out = -1;
    int in = -1;
};

class Ending : public testing::Test {
  protected:
    Ending() {
        writeFile(config, "EventLog=circular { Filename=log Size=5000 }\n");
        EXPECT_EQ(run({"import", sel_samples::exampleFile("server.sel")}).exitStatus, 0);
    }
    std::vector<std::string> withLog(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--root", root, "--config", config});
        return arguments;
    }
    Result run(const std::vector<std::string> &arguments) {
        return program::run(withLog(arguments));
    }
    void expectFreeAndSound() {
        EXPECT_FALSE(exists(lock));
        EXPECT_EQ(run({"check"}).exitStatus, 0);
    }
    // Of another process.
    void awaitLock() {
        EXPECT_TRUE(test_support::comesTrue([this] { return exists(lock); }));
    }

    ScratchFolder folder;
    std::string root = folder.file("root");
    std::string config = folder.file("config");
    std::string lock = root + "/evtlog/log.lck";
    std::string errors = folder.file("errors");
};

TEST_F(Ending, AShellThatWaitsForALine) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const Pipe input;
        const Pipe output;
        const pid_t shell = program::startWith(withLog({"shell"}), output.in, errors, input.out);
        awaitLock();
        EXPECT_EQ(write(input.in, "add one\n", 8), 8);
        char answer = 0;
        EXPECT_EQ(read(output.out, &answer, 1), 1); // the line is carried out
        kill(shell, signal);
        EXPECT_EQ(program::finish(shell), 1) << signal;
        expectFreeAndSound();
    }
}

TEST_F(Ending, AShellOnATerminal) {
    const Result result = program::talkOnTerminal(withLog({"shell"}), {{"evtlog> ", "\x03"}});
    EXPECT_EQ(result.exitStatus, 1);
    expectFreeAndSound();
}

TEST_F(Ending, ALongPrintoutOnATerminal) {
    for (const std::vector<std::string> &arguments :
         {std::vector<std::string>{"evtlog", "print"}, {"evtlog", "print", "dump"}}) {
        const Result result = program::talkOnTerminal(withLog(arguments), {{"Entry 2", "\x03"}});
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_EQ(result.output.find("Entry 234"), std::string::npos);
        expectFreeAndSound();
    }
}

// Nobody reads, from the start: a pipe has no room that could hide it.
TEST_F(Ending, AReaderThatHasEnough) {
    const std::vector<std::vector<std::string>> commands = {
        {"evtlog", "print"},
        {"evtlog", "add", "one"},
        {"import", "--all", sel_samples::dataFile("misc-30.sel")},
        {"list"},
        {"export"},
        {"check"},
        {"info"},
        {"config"},
    };
    for (const std::vector<std::string> &arguments : commands) {
        Pipe output;
        close(output.out);
        const pid_t process = program::startWith(withLog(arguments), output.in, errors);
        close(output.in);
        // By a signal where there is no lock to give up, as other programs end, else by itself.
        const bool holdsLock = arguments[0] == "evtlog" || arguments[0] == "import";
        EXPECT_EQ(program::finish(process), holdsLock ? 1 : -1) << arguments[0];
        EXPECT_EQ(readFile(errors), "") << arguments[0];
        expectFreeAndSound();
    }
}

// A file that is opened must not take the place of a stream that is closed: the log would get what
// is printed.
TEST_F(Ending, AStreamThatIsClosedFromTheStart) {
    const std::string start =
        std::string("exec ") + EVTLOGCTL_PROGRAM + " --root " + root + " --config " + config + " ";
    const std::string import = "import --all " + sel_samples::dataFile("misc-30.sel");
    const auto statusOf = [](const std::string &command) {
        const int status = std::system(command.c_str()); // NOLINT(cert-env33-c): it is the subject
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    };
    const auto betweenInfoAndEntries = [this] { // which a Circular log does not use
        return readFile(root + "/evtlog/log").substr(80, 6064 - 80);
    };
    const std::string before = betweenInfoAndEntries();
    EXPECT_EQ(statusOf(start + import + " >&- 2>" + errors), 4);
    EXPECT_EQ(readFile(errors), "evtlogctl: standard output cannot be written: Bad file "
                                "descriptor; check the disk\n");
    EXPECT_EQ(statusOf(start + "evtlog info >&- 2>/dev/null"), 4);
    EXPECT_EQ(statusOf(start + import + " >/dev/null 2>&- <&-"), 0);
    EXPECT_EQ(statusOf(start + "--syslog stderr " + import + " >&- 2>&- <&-"), 4);
    expectFreeAndSound();
    EXPECT_TRUE(betweenInfoAndEntries() == before);
}

#if defined(EVTLOGCTL_EDITS_LINES)
TEST_F(Ending, LettersOfTheLocaleReachTheLog) {
    setenv("LC_ALL", "C.UTF-8", 1);
    const Result result = program::talkOnTerminal(
        withLog({"shell"}),
        {{"evtlog> ", "add L\u00FCfter 3 \u2014 \U0001F300\r"}, {"SA_OK", "quit\r"}});
    EXPECT_EQ(result.exitStatus, 0) << result.output;
    EXPECT_NE(run({"list", "-n", "1", "-o", "json"})
                  .output.find("\"Text\":\"L\u00FCfter 3 \u2014 \U0001F300\""),
              std::string::npos);
}
#endif

} // namespace
