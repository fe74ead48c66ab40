// Goal: a watch adds each record once and says so, whatever its command does: fail, hang, print too
// much, half of it or nothing. It says what is wrong once, holds the lock while it adds and no
// longer, and ends in order in a moment.
//
// The commands are shell scripts on the files of a test: `sel` is the log of the controller.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <thread>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/evtlogctl/program.h"
#include "tests/evtlogctl/sel_samples.h"
#include "tests/support/files.h"
#include "tests/support/patience.h"

namespace {

using namespace std::chrono_literals;
using program::Result;
using sel_samples::bytesOf;
using test_support::comesTrue;
using test_support::exists;
using test_support::readFile;
using test_support::ScratchFolder;
using test_support::writeFile;

using Clock = std::chrono::steady_clock;
using Records = std::vector<sel_samples::Record>;

std::size_t linesOf(const std::string &text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

// Records of a temperature sensor; `number` is in the id and the data.
Records someRecords(std::uint8_t first, std::size_t count) {
    Records records(count, sel_samples::record("00 00 02 2a b3 c6 67 20 00 04 01 30 01 59 00 50"));
    for (std::size_t i = 0; i < count; ++i) {
        records[i].bytes[0] = static_cast<std::uint8_t>(first + i);
        records[i].bytes[14] = static_cast<std::uint8_t>(first + i);
    }
    return records;
}

// No file of the process (0: of this one) may grow longer; without a size any may again.
void limitFiles(pid_t process, std::optional<rlim_t> size) {
    rlimit limit{};
    EXPECT_EQ(prlimit(process, RLIMIT_FSIZE, nullptr, &limit), 0);
    limit.rlim_cur = size.value_or(limit.rlim_max);
    EXPECT_EQ(prlimit(process, RLIMIT_FSIZE, &limit, nullptr), 0);
}

// So many that adding them takes a while.
Records manyRecords() {
    std::mt19937_64 random(7);
    Records records(60'000);
    for (sel_samples::Record &record : records) {
        record = sel_samples::randomRecord(random);
        record.bytes[2] = 2; // a sensor's event
    }
    return records;
}

class Watch : public testing::Test {
  protected:
    Watch() {
        configure("Size=2000\nOverflow=wrap");
        writeFile(folder.file("runs"), "");
        control("");
    }
    ~Watch() override {
        if (watch > 0) {
            kill(watch, SIGKILL);
            waitpid(watch, nullptr, 0);
        }
    }

    void configure(const std::string &keywords, const std::string &type = "circular") {
        writeFile(config,
                  "EventLog=" + type + " {\nFilename=\"evtlog.dat\"\n" + keywords + "\n}\n");
    }
    // In one step: the file may be in use.
    void replace(const std::string &file, const std::string &contents) {
        writeFile(folder.file("new"), contents);
        ASSERT_EQ(rename(folder.file("new").c_str(), file.c_str()), 0);
    }
    // What the script does after it has noted that it runs and before it prints the SEL.
    void control(const std::string &commands) {
        replace(folder.file("control"), commands + "\n");
    }
    void controllerHas(const Records &records) {
        replace(sel, bytesOf(records));
    }

    void start(const std::vector<std::string> &options = {}) {
        const std::string script =
            "echo >>" + folder.file("runs") + "; . " + folder.file("control") + "; cat " + sel;
        startCommand({"sh", "-c", script}, options);
    }
    void startCommand(const std::vector<std::string> &command,
                      const std::vector<std::string> &options = {}) {
        std::vector<std::string> arguments = {"--root", root,      "--config",   config,
                                              "import", "--watch", "--interval", "0.1"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.emplace_back("--");
        arguments.insert(arguments.end(), command.begin(), command.end());
        writeFile(out, "");
        writeFile(err, "");
        watch = program::start(arguments, out, err);
    }
    int end(int signal = SIGTERM) {
        EXPECT_EQ(kill(watch, signal), 0);
        return finish();
    }
    int finish() {
        const int status = program::finish(watch);
        watch = -1;
        EXPECT_FALSE(exists(lock));
        return status;
    }

    void expectOutput(const std::string &lines) {
        EXPECT_TRUE(comesTrue([&] { return readFile(out) == lines; }))
            << readFile(out) << readFile(err);
    }
    void expectErrors(const std::string &lines) {
        EXPECT_TRUE(comesTrue([&] { return readFile(err) == lines; })) << readFile(err);
    }
    // The command begins to run `count` times more, so that it has ended all but once of them.
    void expectRuns(std::size_t count) {
        const std::size_t wanted = linesOf(readFile(folder.file("runs"))) + count;
        EXPECT_TRUE(comesTrue([&] { return linesOf(readFile(folder.file("runs"))) >= wanted; }));
    }
    void expectLogged(const Records &records) {
        EXPECT_EQ(program::run({"--root", root, "--config", config, "export"}).output,
                  bytesOf(records));
    }

    ScratchFolder folder;
    std::string root = folder.file("root");
    std::string config = folder.file("config");
    std::string sel = folder.file("sel");
    std::string out = folder.file("out");
    std::string err = folder.file("err");
    std::string log = root + "/evtlog/evtlog.dat";
    std::string lock = log + ".lck";
    pid_t watch = -1;
};

// ---- What is new --------------------------------------------------------------------------------

TEST_F(Watch, AddsWhatIsNewAndSaysSo) {
    controllerHas(someRecords(1, 3));
    start();
    expectOutput("sh: 3 records read, 3 added, 0 already known\n");
    expectLogged(someRecords(1, 3));
    controllerHas(someRecords(1, 4));
    expectOutput("sh: 3 records read, 3 added, 0 already known\n"
                 "sh: 4 records read, 1 added, 3 already known\n");
    expectRuns(3); // without news
    EXPECT_EQ(end(), 0);
    EXPECT_EQ(linesOf(readFile(out)), 2U);
    EXPECT_EQ(readFile(err), "");
    expectLogged(someRecords(1, 4));
}

TEST_F(Watch, AfterARestartNothingIsAddedTwice) {
    configure("Size=3\nOverflow=wrap"); // fewer than the controller has
    controllerHas(someRecords(1, 10));
    start();
    expectOutput("sh: 10 records read, 10 added, 0 already known, 7 entries of the full log "
                 "overwritten\n");
    EXPECT_EQ(end(), 0);
    start();
    expectRuns(3);
    controllerHas(someRecords(1, 12));
    expectOutput("sh: 12 records read, 2 added, 10 already known, 2 entries of the full log "
                 "overwritten\n");
    EXPECT_EQ(end(), 0);
    expectLogged(someRecords(10, 3));
    EXPECT_EQ(readFile(err), "");
}

TEST_F(Watch, AClearedLog) {
    controllerHas(someRecords(1, 5));
    start();
    expectOutput("sh: 5 records read, 5 added, 0 already known\n");
    controllerHas({});
    expectRuns(2);
    controllerHas(someRecords(9, 2));
    expectOutput("sh: 5 records read, 5 added, 0 already known\n"
                 "sh: 2 records read, 2 added, 0 already known; none of them was there before: it "
                 "was cleared or has gone round\n");
    EXPECT_EQ(end(), 0);
    Records all = someRecords(1, 5);
    all.push_back(someRecords(9, 1)[0]);
    all.push_back(someRecords(10, 1)[0]);
    expectLogged(all);
}

TEST_F(Watch, AReadingThatBreaksOffUnseenAddsNothing) {
    controllerHas(someRecords(1, 6));
    start();
    expectOutput("sh: 6 records read, 6 added, 0 already known\n");
    control("head -c 32 " + sel + "; exit 0");
    expectRuns(3);
    control("exit 0");
    expectRuns(3);
    control("");
    expectRuns(3);
    EXPECT_EQ(end(), 0);
    expectLogged(someRecords(1, 6));
    EXPECT_EQ(linesOf(readFile(out)), 1U);
    EXPECT_EQ(readFile(err), "");
}

// Such a reading is not believed before another one says the same.
TEST_F(Watch, AnotherLogIsReadTwice) {
    controllerHas(someRecords(1, 6));
    writeFile(folder.file("other"), bytesOf(someRecords(100, 6)));
    start();
    expectOutput("sh: 6 records read, 6 added, 0 already known\n");
    const std::string once = folder.file("once");
    control("[ -e " + once + " ] || { touch " + once + "; exec cat " + folder.file("other") +
            "; }");
    expectRuns(4);
    EXPECT_TRUE(exists(once));
    EXPECT_EQ(end(), 0);
    expectLogged(someRecords(1, 6));
}

TEST_F(Watch, OptionsOfAnImport) {
    writeFile(folder.file("table"), "threshold * * debug\n");
    controllerHas(someRecords(1, 1));
    start({"--format", "raw", "--severity-table", folder.file("table"), "--utc-offset=+02:00",
           "--syslog", "stderr"});
    expectOutput("sh: 1 records read, 1 added, 0 already known\n");
    EXPECT_EQ(end(), 0);
    const Result list = program::run({"list", log});
    EXPECT_NE(list.output.find("debug"), std::string::npos) << list.output;
    EXPECT_EQ(readFile(err).substr(0, 19), "debug: HPI: Sensor "); // forwarded
    EXPECT_EQ(linesOf(readFile(err)), 1U);
    expectLogged(someRecords(1, 1));
    start({"--all", "--quiet"});
    expectRuns(3);
    EXPECT_EQ(end(), 0);
    expectLogged({someRecords(1, 1)[0], someRecords(1, 1)[0]});
    EXPECT_EQ(readFile(out), "");
}

// ---- The command --------------------------------------------------------------------------------

TEST_F(Watch, TheWordsOfTheCommandAreItsOwn) {
    controllerHas(someRecords(1, 2));
    startCommand({"sh", "-c",
                  "[ $# = 8 ] && [ \"$*\" = '--root x -q info [::1] [a,b] [] [[]' ] && cat " + sel,
                  "list", "--root", "x", "-q", "info", "[::1]", "[a,b]", "[]", "[[]"});
    expectOutput("sh: 2 records read, 2 added, 0 already known\n");
    EXPECT_EQ(end(), 0);
}

TEST_F(Watch, ACommandThatWritesAFile) {
    controllerHas(someRecords(1, 2));
    const std::string name = folder.file("name");
    startCommand({"sh", "-c",
                  "echo 'a list for people'; cat " + sel + " >\"$0\"; echo \"$0\" >" + name, "{}"});
    expectOutput("sh: 2 records read, 2 added, 0 already known\n");
    EXPECT_EQ(end(), 0);
    std::string written = readFile(name);
    written.pop_back();
    EXPECT_EQ(written.substr(0, 1), "/");
    EXPECT_FALSE(exists(written));
}

TEST_F(Watch, ACommandThatRemovesItsFile) {
    startCommand({"rm", "{}"});
    expectErrors("evtlogctl: rm removed the file for the records; check the command\n");
    EXPECT_EQ(end(), 0);
}

TEST_F(Watch, ACommandReadsNothingAndSignalsAreItsOwn) {
    controllerHas(someRecords(1, 1));
    control("[ -z \"$(cat)\" ] || exit 9; (yes; exit 9) | head -n 1 >/dev/null");
    start();
    expectOutput("sh: 1 records read, 1 added, 0 already known\n");
    EXPECT_EQ(end(), 0);
}

TEST_F(Watch, ACommandThatIsNotThere) {
    startCommand({"/no/such/program"});
    EXPECT_EQ(finish(), 4);
    EXPECT_EQ(readFile(err), "evtlogctl: /no/such/program cannot be run: No such file or "
                             "directory; check the command\n");
}

// ---- Trouble ------------------------------------------------------------------------------------

TEST_F(Watch, AFailureIsSaidOnceAndItsReadingNotUsed) {
    controllerHas(someRecords(1, 3));
    control("cat " + sel + "; echo first >&2; echo \"no answer after $$ ms\" >&2; exit 3");
    start();
    expectRuns(4);
    EXPECT_EQ(linesOf(readFile(err)), 1U) << readFile(err);
    EXPECT_TRUE(
        readFile(err).starts_with("evtlogctl: sh ended with exit status 3: no answer after "))
        << readFile(err);
    EXPECT_EQ(readFile(out), "");
    EXPECT_FALSE(exists(log));
    control("");
    expectOutput("sh: 3 records read, 3 added, 0 already known\n");
    EXPECT_TRUE(comesTrue([&] { return linesOf(readFile(err)) == 2; }));
    EXPECT_TRUE(readFile(err).ends_with("evtlogctl: sh: all is well again\n"));
    EXPECT_EQ(end(), 0);
}

TEST_F(Watch, AnotherFailureIsSaidToo) {
    controllerHas(someRecords(1, 3));
    control("exit 1");
    const std::string once = "evtlogctl: sh ended with exit status 1; check the controller, it is "
                             "asked again and again\n";
    start();
    expectErrors(once);
    control("kill -9 $$");
    const std::string both = once + "evtlogctl: sh was killed by signal 9; check the "
                                    "controller, it is asked again and again\n";
    expectErrors(both);
    control("echo 'a\tb\033[2J' >&2; exit 1");
    expectErrors(both + "evtlogctl: sh ended with exit status 1: a.b.[2J; check the controller, "
                        "it is asked again and again\n");
    EXPECT_EQ(end(), 0);
}

TEST_F(Watch, ANameWithControlCharacters) {
    const std::string script = folder.file("no\033[2J\nanswer");
    writeFile(script, "#!/bin/sh\nexit 1\n");
    ASSERT_EQ(chmod(script.c_str(), 0755), 0);
    startCommand({script});
    expectErrors("evtlogctl: " + folder.file("no.[2J.answer") +
                 " ended with exit status 1; check the controller, it is asked again and again\n");
    EXPECT_EQ(end(), 0);
}

TEST_F(Watch, HalfARecordAndWhatIsNoSel) {
    controllerHas(someRecords(1, 3));
    control("head -c 40 " + sel + "; exit 0");
    const std::string half = "evtlogctl: sh gave no whole SEL: at offset 32: a record of 8 bytes "
                             "instead of 16; nothing of it was used\n";
    start();
    expectErrors(half);
    control("head -c 1048576 /dev/zero; exit 0");
    const std::string many = half + "evtlogctl: sh gave no SEL: 65536 records are more than one "
                                    "can hold; check the command\n";
    expectErrors(many);
    control("exec cat /dev/zero");
    expectErrors(many + "evtlogctl: sh printed more than 16 MiB and was stopped; check the "
                        "controller, it is asked again and again\n");
    EXPECT_EQ(end(), 0);
    EXPECT_FALSE(exists(log));
}

TEST_F(Watch, TextWithoutRecords) {
    startCommand({"echo", "SEL has no entries"});
    expectErrors("evtlogctl: echo gave no SEL: no line holds the sixteen bytes of a record; check "
                 "the command\n");
    EXPECT_EQ(end(), 0);
}

TEST_F(Watch, ACommandThatHangsIsStopped) {
    const std::string ids = folder.file("ids");
    const auto noneRuns = [&] {
        std::ifstream file(ids);
        return std::none_of(std::istream_iterator<pid_t>(file), {},
                            [](pid_t id) { return kill(id, 0) == 0; });
    };
    control("echo $$ >>" + ids + "; sleep 100000 & echo $! >>" + ids + "; wait");
    start({"--timeout", "0.5"});
    expectErrors("evtlogctl: sh did not end within 0.5 s and was stopped; check the controller, it "
                 "is asked again and again\n");
    control("trap '' TERM; echo $$ >>" + ids + "; while :; do sleep 100000; done");
    const std::size_t before = linesOf(readFile(ids));
    // On a busy machine it may be stopped before it has come so far.
    EXPECT_TRUE(comesTrue([&] { return linesOf(readFile(ids)) > before; }));
    expectRuns(3);
    EXPECT_EQ(linesOf(readFile(err)), 1U) << readFile(err);
    EXPECT_EQ(end(), 0);
    EXPECT_TRUE(comesTrue(noneRuns));
}

// ---- The end ------------------------------------------------------------------------------------

TEST_F(Watch, SignalsEndItWhileTheCommandRuns) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const std::string ids = folder.file("ids");
        writeFile(ids, "");
        control("sleep 100000 & echo $! >" + ids + "; wait"); // longer than any test may take
        start();
        EXPECT_TRUE(comesTrue([&] { return linesOf(readFile(ids)) == 1; }));
        EXPECT_EQ(end(signal), 0);
        EXPECT_TRUE(comesTrue([&] { return kill(std::stoi(readFile(ids)), 0) != 0; }));
        EXPECT_EQ(readFile(err), "");
    }
}

TEST_F(Watch, SignalsEndItWhileItWaits) {
    controllerHas(someRecords(1, 1));
    startCommand({"cat", sel});
    expectOutput("cat: 1 records read, 1 added, 0 already known\n");
    EXPECT_EQ(end(SIGTERM), 0);
    EXPECT_EQ(readFile(err), "");
}

// As nohup starts it.
TEST_F(Watch, SignalsThatAreIgnoredFromTheStartDoNotEndIt) {
    controllerHas(someRecords(1, 1));
    for (const int signal : {SIGHUP, SIGINT}) {
        std::signal(signal, SIG_IGN);
    }
    start();
    for (const int signal : {SIGHUP, SIGINT}) {
        std::signal(signal, SIG_DFL);
    }
    expectOutput("sh: 1 records read, 1 added, 0 already known\n");
    for (const int signal : {SIGHUP, SIGINT}) {
        EXPECT_EQ(kill(watch, signal), 0);
        expectRuns(3);
    }
    controllerHas(someRecords(1, 2));
    EXPECT_TRUE(comesTrue([&] { return linesOf(readFile(out)) == 2; }));
    EXPECT_EQ(end(SIGTERM), 0);
    EXPECT_EQ(readFile(err), "");
}

// Many records: the signal comes while they are added, or, where the watch is quicker, behind them.
TEST_F(Watch, SignalsEndItWhileItAdds) {
    configure("Size=100000\nOverflow=wrap");
    const Records records = manyRecords();
    controllerHas(records);
    start();
    EXPECT_TRUE(comesTrue([&] { return exists(log); }));
    EXPECT_EQ(end(), 0);
    EXPECT_EQ(readFile(err), "");
    const std::string some = program::run({"--root", root, "--config", config, "export"}).output;
    EXPECT_TRUE(some == bytesOf(records).substr(0, some.size()));
    start(); // adds the rest
    EXPECT_TRUE(comesTrue([&] {
        return program::run({"--root", root, "--config", config, "export"}).output ==
               bytesOf(records);
    })) << readFile(err);
    EXPECT_EQ(end(), 0);
}

TEST_F(Watch, AnOutputThatIsClosed) {
    controllerHas(someRecords(1, 1));
    int ends[2] = {-1, -1};
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    const pid_t watcher = fork();
    if (watcher == 0) {
        dup2(ends[1], STDOUT_FILENO);
        (void)!freopen(err.c_str(), "w", stderr);
        execl(EVTLOGCTL_PROGRAM, "evtlogctl", "--root", root.c_str(), "--config", config.c_str(),
              "import", "--watch", "--", "cat", sel.c_str(), nullptr);
        _exit(126);
    }
    close(ends[1]);
    EXPECT_EQ(program::finish(watcher), 1);
    EXPECT_EQ(readFile(err), "");
    EXPECT_FALSE(exists(lock));
    expectLogged(someRecords(1, 1));
}

// ---- The log ------------------------------------------------------------------------------------

TEST_F(Watch, TheLockIsFreeBetweenAdditions) {
    controllerHas(someRecords(1, 1));
    start();
    expectOutput("sh: 1 records read, 1 added, 0 already known\n");
    EXPECT_FALSE(exists(lock));
    const Result add =
        program::run({"--root", root, "--config", config, "evtlog", "add", "by hand"});
    EXPECT_EQ(add.output, "Event Log returned SA_OK\n");
    controllerHas(someRecords(1, 2));
    EXPECT_TRUE(comesTrue([&] { return linesOf(readFile(out)) == 2; }));
    EXPECT_EQ(end(), 0);
    EXPECT_EQ(linesOf(program::run({"list", log}).output), 3U);
    EXPECT_EQ(readFile(err), "");
}

TEST_F(Watch, ALockThatIsHeldForAMoment) {
    controllerHas(someRecords(1, 1));
    ASSERT_EQ(program::run({"--root", root, "--config", config, "import", "-q", sel}).exitStatus,
              0);
    writeFile(lock, "");
    controllerHas(someRecords(1, 2));
    const auto started = Clock::now();
    start();
    expectRuns(1);
    std::this_thread::sleep_for(500ms);
    EXPECT_EQ(readFile(out), "");
    unlink(lock.c_str());
    // The watch waits five seconds before it says so; a machine may be too busy for this test.
    const bool wasAMoment = Clock::now() - started < 5s;
    expectOutput("sh: 2 records read, 1 added, 1 already known\n");
    EXPECT_EQ(end(), 0);
    EXPECT_TRUE(readFile(err).empty() || !wasAMoment) << readFile(err);
}

TEST_F(Watch, ALockThatIsHeldForLong) {
    controllerHas(someRecords(1, 2));
    ASSERT_EQ(mkdir(root.c_str(), 0755), 0);
    ASSERT_EQ(mkdir((root + "/evtlog").c_str(), 0755), 0);
    writeFile(lock, "");
    start();
    const std::string held = "Cannot establish lock on event log file.\nevtlogctl: " + log +
                             " is locked by another process; wait until it has ended, or, if it "
                             "was killed, remove its lock with \"evtlogctl unlock\"\n";
    expectErrors(held);
    expectRuns(2); // and no second line
    unlink(lock.c_str());
    expectOutput("sh: 2 records read, 2 added, 0 already known\n");
    expectErrors(held + "evtlogctl: sh: all is well again\n");
    EXPECT_EQ(end(), 0);
    expectLogged(someRecords(1, 2));
}

// How many records arrived before only the log knows.
TEST_F(Watch, ACopyThatIsKilledWhileItAdds) {
    configure("Size=100000\nOverflow=wrap");
    const Records records = manyRecords();
    controllerHas(records);
    startCommand({"cat", sel}, {"--all"});
    // Killed before its first bytes are there it would leave a file that no start takes.
    EXPECT_TRUE(
        comesTrue([&] { return exists(log) && std::filesystem::file_size(log) > 100'000; }));
    EXPECT_TRUE(exists(lock));
    const std::string id = std::to_string(watch);
    const std::string copy = readFile("/proc/" + id + "/task/" + id + "/children");
    ASSERT_EQ(kill(std::stoi(copy), SIGKILL), 0);
    const std::string killed = "evtlogctl: " + log +
                               ": the process that adds records was killed by signal 9; remove its "
                               "lock with \"evtlogctl unlock\"\n";
    expectErrors(killed);
    EXPECT_EQ(program::run({"unlock", log}).exitStatus, 0);
    EXPECT_TRUE(comesTrue([&] { return linesOf(readFile(out)) == 1; })) << readFile(err);
    EXPECT_EQ(end(), 0);
    expectLogged(records);
}

// The write of an entry that fails when its transaction is durable: the next start finishes it.
TEST_F(Watch, AWriteThatFailsHalfway) {
    configure("Size=2000\nOverflow=wrap", "linked");
    controllerHas(someRecords(1, 3));
    ASSERT_EQ(program::run({"--root", root, "--config", config, "import", "-q", sel}).exitStatus,
              0);
    const std::size_t length = readFile(log).size();
    controllerHas(someRecords(1, 4));
    ASSERT_EQ(program::run({"--root", root, "--config", config, "import", "-q", sel}).exitStatus,
              0);
    const std::size_t entry = readFile(log).size() - length;
    controllerHas(someRecords(1, 7));
    std::signal(SIGXFSZ, SIG_IGN);     // the write is to fail and not to end the process
    limitFiles(0, length + 2 * entry); // the fifth entry ends there
    start();
    limitFiles(0, std::nullopt);
    const std::string first = "sh: 7 records read, 1 added, 4 already known\n";
    expectOutput(first);
    EXPECT_TRUE(comesTrue([&] {
        return readFile(err).find(log + " took 1 entries, then failed") != std::string::npos;
    })) << readFile(err);
    expectRuns(3);
    limitFiles(watch, std::nullopt);
    expectOutput(first + "sh: 7 records read, 1 added, 6 already known\n");
    expectRuns(3);
    EXPECT_EQ(end(), 0);
    expectLogged(someRecords(1, 7));
    EXPECT_TRUE(readFile(err).ends_with("evtlogctl: sh: all is well again\n")) << readFile(err);
}

// What the log refused once is not forwarded at each reading.
TEST_F(Watch, AFullLogAndForwarding) {
    configure("Size=2\nOverflow=drop");
    controllerHas(someRecords(1, 5));
    start({"--syslog", "stderr"});
    expectOutput("sh: 5 records read, 2 added, 0 already known\n");
    expectRuns(5);
    EXPECT_EQ(end(), 0);
    const std::string lines = readFile(err);
    std::size_t forwarded = 0;
    for (std::size_t at = 0; (at = lines.find(": HPI: ", at)) != std::string::npos; ++at) {
        ++forwarded;
    }
    EXPECT_EQ(forwarded, 3U) << lines;
    EXPECT_NE(lines.find(log + " is full and takes no more entries, 0 were added"),
              std::string::npos)
        << lines;
    EXPECT_NE(program::run({"info", log}).output.find("Overflow flag       yes\n"),
              std::string::npos);
    expectLogged(someRecords(1, 2));
}

TEST_F(Watch, AFullLogThatTakesNoMore) {
    configure("Size=2\nOverflow=drop");
    controllerHas(someRecords(1, 5));
    start();
    expectOutput("sh: 5 records read, 2 added, 0 already known\n");
    const std::string full = "evtlogctl: " + log +
                             " is full and takes no more entries, 2 were added; give it a greater "
                             "Size or another Overflow in the configuration\n";
    expectErrors(full);
    expectRuns(3);
    EXPECT_TRUE(comesTrue([&] { // the watch tries again and again, and holds the lock meanwhile
        return program::run({"--root", root, "--config", config, "evtlog", "clear"}).exitStatus ==
               0;
    }));
    EXPECT_TRUE(comesTrue([&] { return linesOf(readFile(out)) == 2; }));
    EXPECT_TRUE(readFile(out).ends_with("sh: 5 records read, 2 added, 2 already known\n"));
    EXPECT_EQ(end(), 0);
    expectLogged(someRecords(3, 2));
    EXPECT_EQ(readFile(err), full); // numbers alone make no news
}

TEST_F(Watch, ADamagedLog) {
    controllerHas(someRecords(1, 2));
    ASSERT_EQ(program::run({"--root", root, "--config", config, "import", "-q", sel}).exitStatus,
              0);
    const std::string sound = readFile(log);
    replace(log, sound.substr(0, 40));
    start();
    EXPECT_TRUE(comesTrue([&] { return linesOf(readFile(err)) == 1; }));
    expectRuns(2);
    EXPECT_EQ(linesOf(readFile(err)), 1U) << readFile(err);
    replace(log, sound);
    EXPECT_TRUE(comesTrue([&] { return linesOf(readFile(err)) == 2; }));
    controllerHas(someRecords(1, 3));
    expectOutput("sh: 3 records read, 1 added, 2 already known\n");
    EXPECT_EQ(end(), 0);
}

TEST_F(Watch, AConfigurationThatEmptiesTheLogIsRefused) {
    configure("Size=10\nReinitialize=yes");
    start();
    EXPECT_EQ(finish(), 2);
    EXPECT_EQ(readFile(err), "evtlogctl: the configuration " + config +
                                 " empties the log at every start, and a watch starts it for every "
                                 "addition; set Reinitialize=no\n");
}

// ---- Usage --------------------------------------------------------------------------------------

TEST(WatchUsage, IsOneLine) {
    for (const std::vector<std::string> &arguments : std::vector<std::vector<std::string>>{
             {"import", "--watch"},
             {"import", "--watch", "--"},
             {"import", "--interval", "5", "file"},
             {"import", "--timeout", "5", "file"},
             {"import", "--watch", "--interval", "0", "--", "true"},
             {"import", "--watch", "--interval", "never", "--", "true"},
             {"import", "--watch", "--timeout", "1000000", "--", "true"},
             {"import", "--watch", "--interval", "nan", "--", "true"},
             {"import", "--watch", "--timeout", "nan", "--", "true"},
             {"import", "--watch", "--interval", "-NAN", "--", "true"},
             {"import", "--watch", "--interval", "inf", "--", "true"},
             {"import", "--watch", "--timeout", "inf", "--", "true"},
             {"import", "--", "true", "false"},
         }) {
        const Result result = program::run(arguments);
        EXPECT_EQ(result.exitStatus, 2) << result.errors;
        EXPECT_EQ(linesOf(result.errors), 1U) << result.errors;
        EXPECT_NE(result.errors.find("; see \"evtlogctl --help\"\n"), std::string::npos);
    }
}

} // namespace
