// Goal: `list` finds and shows entries as its manual says: which ones, in which order and form, on
// a terminal and elsewhere, and with -f each entry once, as it comes, whatever happens to the log.
#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/evtlogctl/program.h"
#include "tests/evtlogctl/sel_samples.h"
#include "tests/support/files.h"
#include "tests/support/patience.h"

namespace {

using program::Result;
using sel_samples::dataFile;
using sel_samples::exampleFile;
using test_support::readFile;
using test_support::ScratchFolder;
using test_support::writeFile;

// A root of its own, with the events of the sample server in a Circular log: it is not written
// synchronously. Times are in UTC.
class List : public testing::Test {
  protected:
    List() {
        setenv("TZ", "UTC0", 1);
        configure(2000);
        EXPECT_EQ(run({"import", exampleFile("server.sel")}).exitStatus, 0);
    }

    void configure(int size) {
        writeFile(config, "EventLog=circular {\nFilename=\"evtlog.dat\"\nSize=" +
                              std::to_string(size) + "\nOverflow=wrap\n}\n");
    }
    std::vector<std::string> withRoot(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--root", root, "--config", config});
        return arguments;
    }
    Result run(const std::vector<std::string> &arguments) {
        return program::run(withRoot(arguments));
    }
    // `list` with these arguments must succeed without a word on standard error.
    std::string list(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "list");
        const Result result = run(arguments);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(result.errors, "");
        return result.output;
    }
    void add(const std::string &text) {
        EXPECT_EQ(run({"evtlog", "add", text}).exitStatus, 0);
    }
    void clear() {
        EXPECT_EQ(run({"evtlog", "clear"}).exitStatus, 0);
    }

    ScratchFolder folder;
    std::string root = folder.file("root");
    std::string config = folder.file("config");
    std::string log = root + "/evtlog/evtlog.dat";
    const std::string all = readFile(dataFile("server.list.txt"));
};

// The lines of a listing that hold a word.
std::string linesWith(const std::string &text, const std::string &word) {
    std::string found;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = text.find('\n', begin) + 1;
        const std::string line = text.substr(begin, end - begin);
        found += line.find(word) != std::string::npos ? line : "";
        begin = end;
    }
    return found;
}

std::string lastLine(const std::string &text) {
    return text.substr(text.rfind('\n', text.size() - 2) + 1);
}

// ---- Which entries ------------------------------------------------------------------------------

TEST_F(List, NewestThatFit) {
    EXPECT_EQ(list({"-n", "1"}), lastLine(all));
    EXPECT_EQ(list({"--lines=10000"}), all);
    EXPECT_EQ(list({"-n", "0"}), "");
    const std::string critical = linesWith(all, "  critical  ");
    ASSERT_GT(program::lineCount(critical), 2U);
    EXPECT_EQ(list({"-p", "critical", "-n", "1"}), lastLine(critical));
    EXPECT_EQ(list({"-p", "critical", "-n", "10000"}), critical);
}

TEST_F(List, Reversed) {
    const std::string reversed = list({"-r"});
    EXPECT_EQ(program::lineCount(reversed), program::lineCount(all));
    EXPECT_EQ(reversed.substr(0, reversed.find('\n') + 1), lastLine(all));
    EXPECT_EQ(lastLine(reversed), all.substr(0, all.find('\n') + 1));
    EXPECT_EQ(list({"-r", "-n", "1"}), lastLine(all));
}

TEST_F(List, BySeverity) {
    EXPECT_EQ(list({"-p", "critical"}), linesWith(all, "  critical  "));
    EXPECT_EQ(list({"--priority=minor..minor"}), linesWith(all, "  minor  "));
    EXPECT_EQ(list({"-p", "debug"}), all);
}

TEST_F(List, ByType) {
    EXPECT_EQ(list({"-t", "oem"}), linesWith(all, "OEM record"));
    const std::string watchdog = linesWith(all, " Watchdog 2 ");
    ASSERT_EQ(program::lineCount(watchdog), 1U);
    EXPECT_EQ(list({"-t", "watchdog"}), watchdog);
    EXPECT_EQ(list({"-t", "sensor,oem,watchdog"}), all);
    EXPECT_EQ(list({"-t", "sensor", "--type=oem", "-t", "watchdog"}), all);
}

TEST_F(List, BySourceAndSensor) {
    EXPECT_EQ(list({"--source", "BIOS"}), linesWith(all, "  BIOS  "));
    EXPECT_EQ(list({"--sensor", "Processor 0x8B"}), linesWith(all, " Processor 0x8B: "));
    EXPECT_EQ(list({"--sensor", "0x8B"}), linesWith(all, " Processor 0x8B: "));
}

TEST_F(List, ByText) {
    EXPECT_EQ(list({"-g", "frb[23]"}), linesWith(all, "FRB"));
    EXPECT_EQ(list({"--grep=^OS Boot"}), linesWith(all, " OS Boot"));
}

TEST_F(List, BothEndsOfATimeAreListed) {
    const std::string moment = "2024-02-20T02:40:43Z";
    EXPECT_EQ(list({"-S", moment, "-U", moment}), linesWith(all, moment));
    EXPECT_EQ(list({"--since", "2024-02-20 02:40:43", "--until=2024-02-20T03:40:43+01:00"}),
              linesWith(all, moment));
    EXPECT_EQ(list({"--until", "tomorrow"}), all);
    EXPECT_EQ(list({"-S", "-100000h"}), all);
}

// A time before or behind all that an entry can have leaves nothing out.
TEST_F(List, FarAwayTimes) {
    EXPECT_EQ(list({"-S", "1970-01-01", "-U", "2300-01-01"}), all);
}

TEST_F(List, ASpanNeedsItsSign) {
    EXPECT_EQ(
        run({"list", "-S", "1h"}).errors,
        "evtlogctl: \"1h\" is no time without a sign: -1h is so long before now, +1h after the "
        "start of the controller; see \"evtlogctl list --help\"\n");
    EXPECT_EQ(run({"list", "-U", "soon"}).errors,
              "evtlogctl: \"soon\" is no time; see \"evtlogctl list --help\"\n");
}

// A time is one of the zone that the output is in, wherever the option for the zone stands.
TEST_F(List, LocalTimeAndUtc) {
    setenv("TZ", "CET-1", 1);
    EXPECT_NE(list({"-n", "1"}).find("  2024-02-20T03:40:43+01:00      minor  "),
              std::string::npos);
    EXPECT_EQ(list({"-n", "1", "--utc"}), lastLine(all));
    EXPECT_EQ(list({"-S", "2024-02-20 02:40:43", "-U", "2024-02-20 02:40:43", "--utc"}),
              linesWith(all, "2024-02-20T02:40:43Z"));
    EXPECT_EQ(program::lineCount(list({"-S", "2024-02-20 03:40:43", "-U", "2024-02-20 03:40:43"})),
              program::lineCount(linesWith(all, "2024-02-20T02:40:43Z")));
}

TEST_F(List, NothingFits) {
    Result result = run({"list", "--sensor", "no such"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "evtlogctl: " + log + ": no entry fits\n");
    result = run({"list", "-q", "--sensor", "no such"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.errors, "");
}

TEST_F(List, WrongWords) {
    for (const std::vector<std::string> &arguments :
         std::vector<std::vector<std::string>>{{"-p", "warning"},
                                               {"-t", "sensor,none"},
                                               {"-S", "soon"},
                                               {"-S", "1h"},
                                               {"-U", ""},
                                               {"-g", "("},
                                               {"--after-cursor", "1"},
                                               {"-o", "xml"},
                                               {"-r", "-f"},
                                               {"-f", "--show-cursor"},
                                               {"-n", "-1"}}) {
        std::vector<std::string> words = arguments;
        words.insert(words.begin(), "list");
        const Result result = run(words);
        EXPECT_EQ(result.exitStatus, 2) << arguments[0];
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(program::lineCount(result.errors), 1U) << result.errors;
    }
}

// ---- Cursors ------------------------------------------------------------------------------------

std::string cursorIn(const std::string &output) {
    constexpr const char *mark = "-- cursor: ";
    const std::string line = lastLine(output);
    EXPECT_EQ(line.substr(0, std::strlen(mark)), mark);
    return line.substr(std::strlen(mark), line.size() - std::strlen(mark) - 1);
}

TEST_F(List, FromACursorOn) {
    const std::string cursor = cursorIn(list({"--show-cursor"}));
    const Result none = run({"list", "--after-cursor", cursor, "--show-cursor", "-q"});
    EXPECT_EQ(none.exitStatus, 1);
    EXPECT_EQ(cursorIn(none.output), cursor);
    add("one");
    add("two");
    const std::string news = list({"--after-cursor", cursor, "-o", "cat"});
    EXPECT_EQ(news, "User: one\nUser: two\n");
    EXPECT_EQ(list({"--after-cursor", cursor, "-o", "cat", "-n", "1"}), "User: two\n");
    // The place is that of the newest entry, also when others are shown.
    const std::string later = cursorIn(list({"-t", "oem", "--show-cursor"}));
    add("three");
    EXPECT_EQ(list({"--after-cursor=" + later, "-o", "cat"}), "User: three\n");
}

// An entry that the log has lost is found again by the time of its logging.
TEST_F(List, FromACursorThatIsGone) {
    const std::string cursor = cursorIn(list({"--show-cursor"}));
    clear();
    EXPECT_EQ(run({"list", "--after-cursor", cursor}).exitStatus, 1);
    add("after");
    EXPECT_EQ(list({"--after-cursor", cursor, "-o", "cat"}), "User: after\n");
}

// Beside machine-readable forms the cursor goes to standard error.
TEST_F(List, NothingButEntriesInJson) {
    for (const char *const form : {"json", "json-journal", "cat", "csv"}) {
        const Result result = run({"list", "-n1", "-o", form, "--show-cursor"});
        EXPECT_EQ(result.output.find("cursor: "), std::string::npos) << form;
        EXPECT_EQ(program::lineCount(result.output), std::string(form) == "csv" ? 2U : 1U);
        EXPECT_NE(cursorIn(result.errors), "");
    }
}

// ---- Forms --------------------------------------------------------------------------------------

TEST_F(List, Forms) {
    EXPECT_EQ(list({"-o", "short"}), all);
    EXPECT_EQ(list({"-o", "short-iso", "-n", "1"}).substr(0, 55),
              "   234  2024-02-20T02:40:43.000000000Z  minor          ");
    EXPECT_EQ(list({"-o", "cat", "-n", "1"}), lastLine(all).substr(66));
    EXPECT_EQ(program::lineCount(list({"-o", "csv"})), program::lineCount(all) + 1);
    EXPECT_EQ(program::lineCount(list({"-o", "json-journal"})), program::lineCount(all));
    EXPECT_EQ(list({"-o", "verbose", "-n", "1"}).substr(0, 13), "EntryId: 234\n");
}

// ---- Terminals ----------------------------------------------------------------------------------

// All its streams are a terminal; `variables` are set.
Result onTerminal(const std::vector<std::string> &arguments,
                  const program::Environment &variables) {
    program::Environment environment = {{"TERM", "xterm"}, {"NO_COLOR", ""}, {"PAGER", "cat"}};
    environment.insert(environment.end(), variables.begin(), variables.end());
    for (const auto &[name, value] : environment) {
        setenv(name.c_str(), value.c_str(), 1);
    }
    return program::talkOnTerminal(arguments, {}, environment.front().second);
}

TEST_F(List, ColoursOnATerminal) {
    const auto arguments = withRoot({"list", "-n", "2", "-r", "--no-pager"});
    const std::string shown = onTerminal(arguments, {}).output;
    EXPECT_NE(shown.find("\033[33mminor  "), std::string::npos) << shown;
    EXPECT_NE(shown.find("\033[1;31mcritical  "), std::string::npos) << shown;
    EXPECT_NE(shown.find("\033[0m\r\n"), std::string::npos) << shown;
    EXPECT_EQ(onTerminal(arguments, {{"NO_COLOR", "1"}}).output.find('\033'), std::string::npos);
    EXPECT_EQ(list({"-n", "2", "-r"}).find('\033'), std::string::npos);
}

TEST_F(List, PagerOnATerminal) {
    const auto arguments = withRoot({"list", "-n", "2"});
    const program::Environment pager = {{"PAGER", "sed 's/^/paged: /'; echo end"},
                                        {"NO_COLOR", "1"}};
    const Result paged = onTerminal(arguments, pager);
    EXPECT_EQ(paged.exitStatus, 0);
    EXPECT_EQ(paged.output.substr(0, 10), "paged:    ");
    EXPECT_EQ(paged.output.substr(paged.output.size() - 5), "end\r\n");
    EXPECT_EQ(onTerminal(withRoot({"list", "-n", "2", "--no-pager"}), pager).output.find("paged"),
              std::string::npos);
    EXPECT_EQ(onTerminal(arguments, {{"PAGER", ""}}).output.find("paged"), std::string::npos);
}

// A program in the place of less, to see what it is given.
TEST_F(List, PagesWithLessUnlessToldElse) {
    const std::string programs = folder.file("programs");
    const std::string less = programs + "/less";
    std::filesystem::create_directory(programs);
    writeFile(less, "#!/bin/sh\necho \"LESS=$LESS less $*\"\nhead -n 1\n");
    std::filesystem::permissions(less, std::filesystem::perms::owner_all);
    setenv("PATH", (programs + ":" + std::getenv("PATH")).c_str(), 1);
    unsetenv("PAGER");
    unsetenv("LESS");
    const std::string newest = lastLine(all);
    const std::string shown = newest.substr(0, newest.size() - 1) + "\r\n";
    const auto onTerminal = [&](const std::vector<std::string> &arguments) {
        return program::talkOnTerminal(withRoot(arguments), {}).output;
    };
    EXPECT_EQ(onTerminal({"list", "-n1"}), "LESS=FRSXMK less \r\n" + shown);
    EXPECT_EQ(onTerminal({"list", "-n1", "-e"}), "LESS=+G$FRSXMK less \r\n" + shown);
    // Who names it has it the same way, with words of their own.
    setenv("PAGER", "less -i", 1);
    EXPECT_EQ(onTerminal({"list", "-n1"}), "LESS=FRSXMK less -i\r\n" + shown);
    EXPECT_EQ(onTerminal({"list", "-n1", "-e"}), "LESS=+G$FRSXMK less -i\r\n" + shown);
    setenv("LESS", "S", 1);
    EXPECT_EQ(onTerminal({"list", "-n1"}), "LESS=S less -i\r\n" + shown);
    EXPECT_EQ(onTerminal({"list", "-n1", "-e"}), "LESS=+G$S less -i\r\n" + shown);
}

TEST_F(List, LeavingThePagerIsNoFailure) {
    const Result left = onTerminal(withRoot({"list"}), {{"PAGER", "head -n 1"}});
    EXPECT_EQ(left.exitStatus, 0);
    EXPECT_EQ(program::lineCount(left.output), 1U);
}

// Of a log of 1234 entries it gets the newest 1000, unless it is told how many.
TEST_F(List, PagerAtItsEnd) {
    std::string lines;
    for (int i = 0; i < 1000; ++i) {
        lines += "add more\n";
    }
    EXPECT_EQ(program::run(withRoot({"shell"}), lines).exitStatus, 0);
    const program::Environment pager = {{"PAGER", "sed -n '1p;$p'"}};
    const auto ends = [&](const std::vector<std::string> &arguments) {
        const std::string shown = onTerminal(withRoot(arguments), pager).output;
        EXPECT_EQ(program::lineCount(shown), 2U);
        return shown.substr(0, 8) + lastLine(shown).substr(0, 8);
    };
    EXPECT_EQ(ends({"list"}), "     1    1234  ");
    EXPECT_EQ(ends({"list", "-e"}), "   235    1234  ");
    EXPECT_EQ(ends({"list", "-e", "-n", "5"}), "  1230    1234  ");
}

// ---- Following ----------------------------------------------------------------------------------

// A running program whose output is read line by line as it comes.
class Follower {
  public:
    explicit Follower(const std::vector<std::string> &arguments, const std::string &errors) {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) { // so that the program holds no reading end
            throw std::runtime_error("cannot make a pipe");
        }
        process_ = program::startWith(arguments, ends[1], errors);
        close(ends[1]);
        output_ = ends[0];
    }
    ~Follower() {
        (void)end();
    }
    Follower(const Follower &) = delete;
    Follower &operator=(const Follower &) = delete;

    // The next line; what there is in the end when it does not come.
    std::string line() {
        while (text_.find('\n') == std::string::npos && fill(test_support::patience)) {
        }
        return take(std::min(text_.find('\n'), text_.size() - 1) + 1);
    }
    // Nothing more comes within a while, and the program waits for a change: it had the time to
    // see those before.
    bool isQuiet() {
        while (text_.empty() && (fill(std::chrono::milliseconds(300)) || !sleeps())) {
        }
        return text_.empty();
    }
    // Nobody reads any more. Returns the exit status.
    int leave() {
        close(std::exchange(output_, -1));
        return program::finish(std::exchange(process_, -1));
    }
    // -1 when it was still there.
    int end() {
        if (process_ < 0) {
            return 0;
        }
        kill(process_, SIGTERM);
        return leave();
    }

  private:
    [[nodiscard]] bool sleeps() const {
        const std::string status = readFile("/proc/" + std::to_string(process_) + "/status");
        return status.find("\nState:\tS") != std::string::npos;
    }
    bool fill(std::chrono::milliseconds time) {
        std::array<char, 4096> buffer{};
        pollfd ready{.fd = output_, .events = POLLIN, .revents = 0};
        if (poll(&ready, 1, static_cast<int>(time.count())) != 1) {
            return false;
        }
        const ssize_t count = read(output_, buffer.data(), buffer.size());
        text_.append(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        return count > 0;
    }
    std::string take(std::size_t count) {
        std::string taken = text_.substr(0, count);
        text_.erase(0, count);
        return taken;
    }

    pid_t process_ = -1;
    int output_ = -1;
    std::string text_;
};

class Follow : public List {
  protected:
    std::vector<std::string> following(std::vector<std::string> options = {}) {
        options.insert(options.begin(), {"list", "-f", "-o", "cat"});
        return withRoot(options);
    }
    // Begins with the newest entry; from there on nothing is missed.
    std::vector<std::string> followingTheNewest() {
        return following({"-n", "1"});
    }
    // The first add makes the folder and the file.
    void expectNewLogFollowed(Follower &follower) {
        for (const std::string text : {"new", "newest"}) {
            add(text);
            EXPECT_EQ(follower.line(), "User: " + text + "\n");
        }
    }
    std::string errors = folder.file("errors");
};

TEST_F(Follow, BeginsWithTheNewestTen) {
    Follower follower(following(), errors);
    const std::string newest = list({"-n", "10", "-o", "cat"});
    std::string shown;
    for (int i = 0; i < 10; ++i) {
        shown += follower.line();
    }
    EXPECT_EQ(shown, newest);
    add("here");
    EXPECT_EQ(follower.line(), "User: here\n");
    EXPECT_TRUE(follower.isQuiet());
    EXPECT_EQ(follower.end(), -1);
    EXPECT_EQ(readFile(errors), "");
}

TEST_F(Follow, OnlyWhatFits) {
    add("zero");
    Follower follower(following({"-n", "1", "-t", "user"}), errors);
    EXPECT_EQ(follower.line(), "User: zero\n");
    add("one");
    EXPECT_EQ(follower.line(), "User: one\n");
    EXPECT_EQ(run({"import", dataFile("misc-30.sel")}).exitStatus, 0);
    add("two");
    EXPECT_EQ(follower.line(), "User: two\n");
}

TEST_F(Follow, FromACursorOn) {
    const std::string cursor = cursorIn(list({"--show-cursor"}));
    add("one");
    Follower follower(following({"--after-cursor", cursor}), errors);
    EXPECT_EQ(follower.line(), "User: one\n");
    add("two");
    EXPECT_EQ(follower.line(), "User: two\n");
}

// Every entry once and in order, while a full log overwrites its oldest ones.
TEST_F(Follow, AcrossTheWrap) {
    clear();
    std::filesystem::remove(log);
    configure(5);
    add("first");
    Follower follower(following(), errors);
    EXPECT_EQ(follower.line(), "User: first\n");
    for (int i = 0; i < 17; ++i) {
        add(std::to_string(i));
        EXPECT_EQ(follower.line(), "User: " + std::to_string(i) + "\n");
    }
    EXPECT_TRUE(follower.isQuiet());
    EXPECT_EQ(readFile(errors), "");
}

TEST_F(Follow, AcrossAClear) {
    Follower follower(followingTheNewest(), errors);
    EXPECT_NE(follower.line(), "");
    add("before");
    EXPECT_EQ(follower.line(), "User: before\n");
    clear();
    EXPECT_TRUE(follower.isQuiet());
    add("after");
    EXPECT_EQ(follower.line(), "User: after\n");
    add("more");
    EXPECT_EQ(follower.line(), "User: more\n");
    EXPECT_TRUE(follower.isQuiet());
    EXPECT_EQ(readFile(errors), "evtlogctl: " + log +
                                    " was cleared, replaced or written over; all that it holds "
                                    "now is new\n");
}

// An operator's deletion of the newest entry makes no old entry new.
TEST_F(Follow, AcrossADeletion) {
    Follower follower(followingTheNewest(), errors);
    EXPECT_NE(follower.line(), "");
    add("one");
    EXPECT_EQ(follower.line(), "User: one\n");
    EXPECT_EQ(run({"evtlog", "delete", "newest"}).exitStatus, 0);
    EXPECT_TRUE(follower.isQuiet());
    add("two");
    EXPECT_EQ(follower.line(), "User: two\n");
    EXPECT_EQ(readFile(errors), "");
}

// Another file takes the name: at once, and after a while without any.
TEST_F(Follow, AcrossAReplacement) {
    const std::string other = folder.file("other");
    std::filesystem::copy(log, other);
    add("old");
    Follower follower(followingTheNewest(), errors);
    EXPECT_EQ(follower.line(), "User: old\n");
    std::filesystem::rename(other, log); // holds nothing that is new
    EXPECT_TRUE(follower.isQuiet());
    add("new");
    EXPECT_EQ(follower.line(), "User: new\n");
    std::filesystem::remove(log);
    EXPECT_TRUE(follower.isQuiet());
    add("newest"); // makes the file
    EXPECT_EQ(follower.line(), "User: newest\n");
}

// A file that is no log is told once, and a log after it is followed on.
TEST_F(Follow, AcrossAFileThatIsNoLog) {
    Follower follower(followingTheNewest(), errors);
    EXPECT_NE(follower.line(), "");
    std::filesystem::copy(log, folder.file("other"));
    std::filesystem::remove(log);
    writeFile(log, "no log");
    const std::string line = "evtlogctl: " + log +
                             " is no log: it is shorter than an empty log; name an event log "
                             "file\n";
    EXPECT_TRUE(test_support::comesTrue([&] { return readFile(errors) == line; }))
        << readFile(errors);
    std::filesystem::rename(folder.file("other"), log);
    add("back");
    EXPECT_EQ(follower.line(), "User: back\n");
}

// Its folder goes, and another one takes the name after a while.
TEST_F(Follow, AcrossAFolderThatIsMovedAway) {
    add("old");
    Follower follower(followingTheNewest(), errors);
    EXPECT_EQ(follower.line(), "User: old\n");
    std::filesystem::rename(root + "/evtlog", root + "/moved");
    EXPECT_TRUE(follower.isQuiet());
    expectNewLogFollowed(follower);
}

TEST_F(Follow, AcrossAFolderThatIsRemoved) {
    add("old");
    Follower follower(followingTheNewest(), errors);
    EXPECT_EQ(follower.line(), "User: old\n");
    std::filesystem::remove_all(root + "/evtlog");
    EXPECT_TRUE(follower.isQuiet());
    expectNewLogFollowed(follower);
}

// The system does not tell that a folder goes while a file that was in it is still open.
TEST_F(Follow, AcrossAFolderThatIsRemovedAfterItsFile) {
    add("old");
    Follower follower(followingTheNewest(), errors);
    EXPECT_EQ(follower.line(), "User: old\n");
    std::filesystem::remove(log);
    EXPECT_TRUE(follower.isQuiet());
    std::filesystem::remove_all(root + "/evtlog");
    EXPECT_TRUE(follower.isQuiet());
    expectNewLogFollowed(follower);
}

// The log is known by a link in another folder: its target goes, comes back, and the link comes to
// lead elsewhere.
TEST_F(Follow, ThroughALink) {
    const std::string link = folder.file("link");
    std::filesystem::create_symlink(log, link);
    add("old");
    Follower follower(following({"-n", "1", link}), errors);
    EXPECT_EQ(follower.line(), "User: old\n");
    std::filesystem::copy(log, folder.file("other"));
    std::filesystem::remove(log);
    EXPECT_TRUE(follower.isQuiet());
    add("new"); // makes the file
    EXPECT_EQ(follower.line(), "User: new\n");
    add("newer");
    EXPECT_EQ(follower.line(), "User: newer\n");
    std::filesystem::rename(root + "/evtlog", root + "/moved");
    EXPECT_TRUE(follower.isQuiet());
    add("newest");
    EXPECT_EQ(follower.line(), "User: newest\n");
    std::filesystem::create_symlink(folder.file("other"), folder.file("next"));
    std::filesystem::rename(folder.file("next"), link);
    EXPECT_TRUE(follower.isQuiet()); // what it holds was shown
}

TEST_F(Follow, EndsWhenNobodyReads) {
    Follower follower(followingTheNewest(), errors);
    EXPECT_NE(follower.line(), "");
    EXPECT_EQ(follower.leave(), 0);
}

TEST_F(Follow, ALogThatIsNotThere) {
    const Result result = run({"list", "-f", folder.file("nothing")});
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_EQ(result.output, "");
}

// Adds user events 0, 1, 2 and so on, as fast as it can.
void addNumbers(const std::vector<std::string> &shell, int count) {
    std::string lines;
    for (int i = 0; i < count; ++i) {
        lines += "add " + std::to_string(i) + "\n";
    }
    EXPECT_EQ(program::run(shell, lines).exitStatus, 0);
}

int numberIn(const std::string &line) {
    const std::string mark = "User: ";
    EXPECT_EQ(line.substr(0, mark.size()), mark);
    return std::atoi(line.substr(std::min(mark.size(), line.size())).c_str());
}

// In a log that it writes over again and again: what is shown is in order and without doubles, and
// the last entry is shown.
TEST_F(Follow, AFastWriter) {
    std::filesystem::remove(log);
    configure(50);
    add("first");
    Follower follower(followingTheNewest(), errors);
    EXPECT_EQ(follower.line(), "User: first\n");
    constexpr int events = 3000;
    addNumbers(withRoot({"shell"}), events);
    for (int last = -1; last < events - 1;) {
        const int number = numberIn(follower.line());
        ASSERT_GT(number, last);
        last = number;
    }
    EXPECT_TRUE(follower.isQuiet());
}

// In a log that holds all of them nothing is lost.
TEST_F(Follow, AFastWriterInALargeLog) {
    std::filesystem::remove(log);
    configure(40'000);
    add("first");
    Follower follower(followingTheNewest(), errors);
    EXPECT_EQ(follower.line(), "User: first\n");
    constexpr int events = 30'000;
    addNumbers(withRoot({"shell"}), events);
    for (int number = 0; number < events; ++number) {
        ASSERT_EQ(numberIn(follower.line()), number);
    }
    EXPECT_TRUE(follower.isQuiet());
    EXPECT_EQ(readFile(errors), "");
}

} // namespace
