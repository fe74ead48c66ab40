// Goal: one call is one line with the right level, to a stream byte for byte, and to the system log
// as a daemon receives it.
#include <cstdio>
#include <cstring>
#include <regex>
#include <string>

#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/support/child.h"
#include "tests/support/files.h"
#include "tests/support/mount_namespace.h"
#include "zuSaHpi_default_mainlib.h"

namespace {

// What the body's lines come to on a stream.
template <typename Body>
std::string onStream(const Body &body) {
    const test_support::ScratchFolder folder;
    const std::string path = folder.file("lines");
    FILE *const stream = std::fopen(path.c_str(), "w");
    zuSaHpiSyslogStreamSet(stream);
    body();
    // Lines are flushed: they are in the file before it is closed.
    const std::string lines = test_support::readFile(path);
    zuSaHpiSyslogStreamSet(nullptr);
    std::fclose(stream);
    return lines;
}

// Takes this process into a mount namespace with a /dev of its own, where /dev/log is a socket of
// this test. Returns the socket, -1 where the kernel does not permit that.
int ownSystemLog() {
    if (!test_support::enterMountNamespace() || mount("none", "/dev", "tmpfs", 0, nullptr) != 0) {
        return -1;
    }
    const int log = socket(AF_UNIX, SOCK_DGRAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, "/dev/log");
    if (bind(log, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        return -1;
    }
    return log;
}

std::string received(int log) {
    char buffer[65536];
    const ssize_t length = recv(log, buffer, sizeof buffer, MSG_DONTWAIT);
    return length < 0 ? "nothing" : std::string(buffer, static_cast<std::size_t>(length));
}

// A line as a daemon receives it: <facility and level>, time, identity and process id, text.
std::string received(int log, const std::string &number, const std::string &text) {
    const std::string line = received(log);
    const std::regex form("<(\\d+)>[A-Z][a-z]{2} [ \\d]\\d \\d\\d:\\d\\d:\\d\\d zuSaHpi\\[" +
                          std::to_string(getpid()) + "\\]: ([^]*)");
    std::smatch parts;
    if (!std::regex_match(line, parts, form)) {
        return "malformed: " + line;
    }
    return parts[1] == number && parts[2] == text ? "as expected" : "other: " + line;
}

} // namespace

TEST(Syslog, StreamNamesEveryLevel) {
    const std::string lines = onStream([] {
        for (int level = 0; level <= 7; ++level) {
            zuSaHpiSyslog(level, "HPI: line %d\n", level);
        }
    });
    EXPECT_EQ(lines, "emerg: HPI: line 0\n"
                     "alert: HPI: line 1\n"
                     "crit: HPI: line 2\n"
                     "err: HPI: line 3\n"
                     "warning: HPI: line 4\n"
                     "notice: HPI: line 5\n"
                     "info: HPI: line 6\n"
                     "debug: HPI: line 7\n");
}

TEST(Syslog, LevelsOutOfRangeCountAsTheNearest) {
    EXPECT_EQ(onStream([] {
                  zuSaHpiSyslog(-1, "a");
                  zuSaHpiSyslog(8, "b");
                  zuSaHpiSyslog(-2147483647 - 1, "c");
                  zuSaHpiSyslog(2147483647, "d");
              }),
              "emerg: a\ndebug: b\nemerg: c\ndebug: d\n");
}

TEST(Syslog, NewlinesAtTheEndAreNotPartOfTheLine) {
    EXPECT_EQ(onStream([] {
                  zuSaHpiSyslog(5, "none");
                  zuSaHpiSyslog(5, "two\n\n");
                  zuSaHpiSyslog(5, "%s", "");
                  zuSaHpiSyslog(5, "%s", "\n");
              }),
              "notice: none\nnotice: two\nnotice: \nnotice: \n");
}

TEST(Syslog, TextFromOutsideCannotForgeALine) {
    EXPECT_EQ(onStream([] {
                  zuSaHpiSyslog(3, "tag %s\n", "a\nemerg: forged\x1B[2J\x7F\x01 %s \xC3\xA9");
              }),
              "err: tag a#012emerg: forged#033[2J#177#001 %s \xC3\xA9\n");
}

TEST(Syslog, LongLinesComeOutWhole) {
    const std::string text(200'000, 'y');
    EXPECT_EQ(onStream([&] { zuSaHpiSyslog(6, "%s\n", text.c_str()); }), "info: " + text + "\n");
}

TEST(Syslog, WithoutAStreamLinesGoToTheSystemLog) {
    const test_support::ChildResult child = test_support::runInChild([] {
        const int log = ownSystemLog();
        if (log < 0) {
            std::exit(test_support::notPermitted);
        }
        // LOG_DAEMON is facility 3: 24 and the level.
        zuSaHpiSyslog(2, "HPI: Sensor %u %s\n", 7U, "100%");
        EXPECT_EQ(received(log, "26", "HPI: Sensor 7 100%"), "as expected");
        zuSaHpiSyslog(7, "%s", "two\nlines");
        EXPECT_EQ(received(log, "31", "two#012lines"), "as expected");
        zuSaHpiSyslog(99, "x\n");
        EXPECT_EQ(received(log, "31", "x"), "as expected");
        zuSaHpiSyslog(0, "x\n");
        EXPECT_EQ(received(log, "24", "x"), "as expected");

        // Another user of syslog(3) in the process does not take the facility away.
        openlog("other", 0, LOG_USER);
        zuSaHpiSyslog(6, "x\n");
        EXPECT_EQ(received(log).substr(0, 4), "<30>");
        openlog("zuSaHpi", LOG_PID, LOG_DAEMON);

        // A stream takes the lines away from the system log, and null gives them back.
        zuSaHpiSyslogStreamSet(stderr);
        zuSaHpiSyslog(4, "on the stream\n");
        EXPECT_EQ(received(log), "nothing");
        zuSaHpiSyslogStreamSet(nullptr);
        zuSaHpiSyslog(4, "back\n");
        EXPECT_EQ(received(log, "28", "back"), "as expected");
    });
    // Only the kernel's refusal of a private /dev/log skips: without one the lines would go to the
    // machine's own log, where they could not be compared.
    if (child.exitStatus == test_support::notPermitted) {
        GTEST_SKIP() << "no private mount namespace here: /dev/log cannot be replaced";
    }
    EXPECT_EQ(child.exitStatus, 0) << child.diagnostics;
    EXPECT_EQ(child.diagnostics, "warning: on the stream\n");
}
