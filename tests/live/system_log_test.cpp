// Goal: what the log forwards arrives at a real system log daemon: every event a line of its own,
// at the level that the configuration's map says, its text whole, whatever bytes it holds.
//
// rsyslogd runs in a mount namespace of the test, where /dev/log is its socket and the machine's
// own log cannot be seen.
#include <algorithm>
#include <csignal>
#include <cstring>
#include <sstream>

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/support/child.h"
#include "tests/support/files.h"
#include "tests/support/mount_namespace.h"
#include "tests/support/patience.h"
#include "zuSaHpi_default_mainlib.h"
#include "zuSaHpi_util.h"

namespace {

using test_support::comesTrue;
using test_support::exists;
using test_support::readFile;
using test_support::writeFile;
using Lines = std::vector<std::string>;

// Every severity has a level of its own, and user events have others.
constexpr const char *configuration = R"(EventLog=syslog {
    Filename=none
    Size=1
    Syslog=yes {
        EventLogSyslogEventType=all {
            EventLogSyslogSeverity=all           { EventLogSyslogLevel=debug }
            EventLogSyslogSeverity=critical      { EventLogSyslogLevel=alert }
            EventLogSyslogSeverity=major         { EventLogSyslogLevel=crit }
            EventLogSyslogSeverity=minor         { EventLogSyslogLevel=err }
            EventLogSyslogSeverity=informational { EventLogSyslogLevel=warning }
            EventLogSyslogSeverity=ok            { EventLogSyslogLevel=notice }
            EventLogSyslogSeverity=debug         { EventLogSyslogLevel=info }
        }
        EventLogSyslogEventType=user {
            EventLogSyslogSeverity=critical      { EventLogSyslogLevel=emerg }
            EventLogSyslogSeverity=minor         { EventLogSyslogLevel=none }
        }
    }
}
)";

Lines linesOf(const std::string &text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

// A file of the machine's /dev in the new one.
bool carryOver(const std::string &from, const std::string &name) {
    writeFile("/dev/" + name, "");
    return mount((from + "/" + name).c_str(), ("/dev/" + name).c_str(), "none", MS_BIND, nullptr) ==
           0;
}

// An empty /dev but for what a daemon needs.
bool ownDevices(const std::string &oldDevices) {
    return test_support::enterMountNamespace() && mkdir(oldDevices.c_str(), 0700) == 0 &&
           mount("/dev", oldDevices.c_str(), "none", MS_BIND | MS_REC, nullptr) == 0 &&
           mount("none", "/dev", "tmpfs", 0, nullptr) == 0 && carryOver(oldDevices, "null") &&
           carryOver(oldDevices, "urandom");
}

// rsyslogd with a configuration of the test, which writes a line "facility.level program: text" for
// each that comes in.
class Daemon {
  public:
    explicit Daemon(const test_support::ScratchFolder &folder) : lines_(folder.file("lines")) {
        const std::string settings = folder.file("rsyslog.conf");
        writeFile(settings,
                  "global(workDirectory=\"" + folder.path() +
                      "\")\n"
                      "module(load=\"imuxsock\" SysSock.Use=\"off\")\n"
                      "input(type=\"imuxsock\" Socket=\"/dev/log\")\n"
                      "template(name=\"line\" type=\"string\" string=\"%syslogfacility-text%."
                      "%syslogseverity-text% %programname%:%msg:::sp-if-no-1st-sp%%msg%\\n\")\n"
                      "if $programname == 'zuSaHpi' then action(type=\"omfile\" template=\"line\" "
                      "file=\"" +
                      lines_ + "\")\n");
        const std::string output = folder.file("daemon");
        id_ = fork();
        if (id_ == 0) {
            const int descriptor = open(output.c_str(), O_WRONLY | O_CREAT, 0600);
            dup2(descriptor, STDOUT_FILENO);
            dup2(descriptor, STDERR_FILENO);
            execlp("rsyslogd", "rsyslogd", "-n", "-f", settings.c_str(), "-i",
                   folder.file("pid").c_str(), nullptr);
            _exit(126);
        }
        EXPECT_TRUE(comesTrue([] { return exists("/dev/log"); })) << readFile(output);
    }
    ~Daemon() {
        kill(id_, SIGKILL);
        waitpid(id_, nullptr, 0);
    }
    Daemon(const Daemon &) = delete;
    Daemon &operator=(const Daemon &) = delete;

    // What has come in, when there are that many lines, or no more come.
    [[nodiscard]] Lines received(std::size_t count) const {
        Lines lines;
        (void)comesTrue([&] {
            lines = exists(lines_) ? linesOf(readFile(lines_)) : Lines{};
            return lines.size() >= count;
        });
        return lines;
    }

  private:
    std::string lines_;
    pid_t id_ = -1;
};

// Runs `body` where /dev/log is rsyslogd's. Only the kernel's refusal of a private /dev/log skips:
// without one the lines would go to the machine's own log.
void withDaemon(
    const std::function<void(const Daemon &, const test_support::ScratchFolder &)> &body) {
    const test_support::ScratchFolder folder;
    const test_support::ChildResult child = test_support::runInChild([&] {
        if (!ownDevices(folder.file("devices"))) {
            std::exit(test_support::notPermitted);
        }
        const Daemon daemon(folder);
        body(daemon, folder);
        umount2(folder.file("devices").c_str(), MNT_DETACH); // or the folder could not be removed
    });
    if (child.exitStatus == test_support::notPermitted) {
        GTEST_SKIP() << "no private mount namespace here: /dev/log cannot be replaced";
    }
    EXPECT_EQ(child.exitStatus, 0) << child.diagnostics;
}

// ---- Events -------------------------------------------------------------------------------------

void startLog() {
    zuSaHpiConfigT tree = zuSaHpiConfigTextRead("test", configuration, std::strlen(configuration));
    ASSERT_EQ(tree.error, nullptr) << tree.error;
    (void)zuSaHpiEventLogInit(zuSaHpiEvtLogConf(tree.nodes));
    zuSaHpiConfigRelease(&tree);
}

void put(SaHpiTextBufferT &buffer, const std::string &text) {
    buffer.DataType = SAHPI_TL_TYPE_TEXT;
    buffer.Language = SAHPI_LANG_ENGLISH;
    buffer.DataLength = static_cast<SaHpiUint8T>(text.size());
    std::memcpy(buffer.Data, text.data(), text.size());
}

EventLogAddRecord emptyRecord(SaHpiEventTypeT type, SaHpiSeverityT severity) {
    EventLogAddRecord record;
    std::memset(&record, 0, sizeof record);
    record.event.EventType = type;
    record.event.Severity = severity;
    return record;
}

void addUserEvent(SaHpiSeverityT severity, const std::string &text) {
    EventLogAddRecord record = emptyRecord(SAHPI_ET_USER, severity);
    put(record.event.EventDataUnion.UserEvent.UserEventData, text);
    EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_OK);
}

void addResourceEvent(SaHpiSeverityT severity, const std::string &tag) {
    EventLogAddRecord record = emptyRecord(SAHPI_ET_RESOURCE, severity);
    record.event.Source = 7;
    record.event.EventDataUnion.ResourceEvent.ResourceEventType = SAHPI_RESE_RESOURCE_ADDED;
    record.rpt.ResourceCapabilities = SAHPI_CAPABILITY_RESOURCE;
    put(record.rpt.ResourceTag, tag);
    EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_OK);
}

TEST(SystemLog, EverySeverityArrivesAtItsLevel) {
    withDaemon([](const Daemon &daemon, const test_support::ScratchFolder &) {
        startLog();
        for (const SaHpiSeverityT severity : {SAHPI_CRITICAL, SAHPI_MAJOR, SAHPI_MINOR,
                                              SAHPI_INFORMATIONAL, SAHPI_OK, SAHPI_DEBUG}) {
            addResourceEvent(severity, "fan");
            addUserEvent(severity, "text " + std::to_string(severity));
        }
        EXPECT_EQ(daemon.received(11), (Lines{"daemon.alert zuSaHpi: HPI: Resource 7 Added - fan",
                                              "daemon.emerg zuSaHpi: HPI: User Event; text 0",
                                              "daemon.crit zuSaHpi: HPI: Resource 7 Added - fan",
                                              "daemon.crit zuSaHpi: HPI: User Event; text 1",
                                              "daemon.err zuSaHpi: HPI: Resource 7 Added - fan",
                                              // the map forwards no minor user events
                                              "daemon.warning zuSaHpi: HPI: Resource 7 Added - fan",
                                              "daemon.warning zuSaHpi: HPI: User Event; text 3",
                                              "daemon.notice zuSaHpi: HPI: Resource 7 Added - fan",
                                              "daemon.notice zuSaHpi: HPI: User Event; text 4",
                                              "daemon.info zuSaHpi: HPI: Resource 7 Added - fan",
                                              "daemon.info zuSaHpi: HPI: User Event; text 240"}));
    });
}

TEST(SystemLog, TextsArriveWholeAndForgeNothing) {
    withDaemon([](const Daemon &daemon, const test_support::ScratchFolder &) {
        startLog();
        const std::string longest(SAHPI_MAX_TEXT_BUFFER_LENGTH, 'x');
        addUserEvent(SAHPI_OK, longest);
        addUserEvent(SAHPI_OK, "a\n<8>forged\r\x1B[2J\x7F%s %n \"$msg\" \\n");
        addUserEvent(SAHPI_OK, "Gr\xC3\xBC\xC3\x9F"
                               "e, \xFF\xFE\x80");
        addResourceEvent(SAHPI_OK, "tag\twith\nlines");
        EXPECT_EQ(daemon.received(4),
                  (Lines{"daemon.notice zuSaHpi: HPI: User Event; " + longest,
                         "daemon.notice zuSaHpi: HPI: User Event; a#012<8>forged#015#033[2J#177%s "
                         "%n \"$msg\" \\n",
                         "daemon.notice zuSaHpi: HPI: User Event; Gr\xC3\xBC\xC3\x9F"
                         "e, "
                         "\xFF\xFE\x80",
                         "daemon.notice zuSaHpi: HPI: Resource 7 Added - tag#011with#012lines"}));
    });
}

// ---- The program --------------------------------------------------------------------------------

int runProgram(const std::vector<std::string> &arguments, const std::string &errors) {
    const pid_t child = fork();
    if (child == 0) {
        std::vector<std::string> words = arguments;
        words.insert(words.begin(), "evtlogctl");
        std::vector<char *> pointers;
        for (std::string &word : words) {
            pointers.push_back(word.data());
        }
        pointers.push_back(nullptr);
        dup2(open(errors.c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
        execv(EVTLOGCTL_PROGRAM, pointers.data());
        _exit(126);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// The lines that the program writes to a stream are those that it sends.
TEST(SystemLog, AnImportedLogArrivesLineByLine) {
    withDaemon([](const Daemon &daemon, const test_support::ScratchFolder &folder) {
        const std::string file = std::string(ZUSAHPI_TEST_DATA) + "/../examples/server.sel";
        const std::string written = folder.file("written");
        ASSERT_EQ(
            runProgram({"--root", folder.file("one"), "--syslog", "stderr", "import", "-q", file},
                       written),
            0);
        ASSERT_EQ(
            runProgram({"--root", folder.file("two"), "--syslog", "syslog", "import", "-q", file},
                       folder.file("nothing")),
            0);
        EXPECT_EQ(readFile(folder.file("nothing")), "");
        Lines expected = linesOf(readFile(written));
        EXPECT_GE(expected.size(), 234U); // an event is a line, and a dump where it has data
        for (std::string &line : expected) {
            const std::size_t colon = line.find(": ");
            line = "daemon." + line.substr(0, colon) + " zuSaHpi: " + line.substr(colon + 2);
        }
        EXPECT_EQ(daemon.received(expected.size()), expected);
    });
}

} // namespace
