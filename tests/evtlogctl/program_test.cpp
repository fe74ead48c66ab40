// Goal: the program does what its manual says, from end to end: every command, every option, every
// way to go wrong, with the exit status and the line that tells the user what to do.
#include <algorithm>
#include <csignal>
#include <filesystem>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/evtlogctl/program.h"
#include "tests/evtlogctl/sample_logs.h"
#include "tests/evtlogctl/sel_samples.h"
#include "tests/support/files.h"
#include "tests/support/patience.h"

namespace {

using program::Result;
using sel_samples::bytesOf;
using sel_samples::dataFile;
using sel_samples::exampleFile;
using test_support::exists;
using test_support::readFile;
using test_support::ScratchFolder;
using test_support::writeFile;

// Each test has a root of its own. Most use a Circular log: it is not written synchronously.
class Program : public testing::Test {
  protected:
    Program() {
        configure("circular", "Size=2000\nOverflow=wrap");
    }

    void configure(const std::string &type, const std::string &keywords) {
        writeFile(config,
                  "EventLog=" + type + " {\nFilename=\"evtlog.dat\"\n" + keywords + "\n}\n");
    }
    Result run(std::vector<std::string> arguments, const std::string &input = "") {
        arguments.insert(arguments.begin(), {"--root", root, "--config", config});
        return program::run(arguments, input);
    }
    Result import(const std::string &file) {
        return run({"import", file});
    }
    void expectImport(const std::string &file, const std::string &counts,
                      const std::string &shown = "") {
        const Result result = import(file);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(result.output, (shown.empty() ? file : shown) + ": " + counts + "\n");
        EXPECT_EQ(result.errors, "");
    }
    // 4: the system said no.
    void expectFailure(const Result &result, const std::string &line, int status = 4) {
        EXPECT_EQ(result.exitStatus, status);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors, "evtlogctl: " + line + "\n");
    }

    ScratchFolder folder;
    std::string root = folder.file("root");
    std::string config = folder.file("config");
    std::string log = root + "/evtlog/evtlog.dat";
};

// ---- Import, export and list --------------------------------------------------------------------

TEST_F(Program, SampleFilesAreImportedListedAndExported) {
    std::string all;
    std::size_t count = 0;
    for (const std::string &file : sel_samples::sampleFiles()) {
        const std::string bytes = readFile(file);
        const std::string records = std::to_string(bytes.size() / 16);
        expectImport(file, records + " records read, " + records + " added, 0 already known");
        all += bytes;
        count += bytes.size() / 16;
    }
    const Result exported = run({"export", "--format=sel"});
    EXPECT_EQ(exported.exitStatus, 0);
    EXPECT_EQ(exported.errors, "");
    EXPECT_EQ(exported.output, all);
    const Result list = run({"list"});
    EXPECT_EQ(list.exitStatus, 0);
    EXPECT_EQ(program::lineCount(list.output), count);
    EXPECT_FALSE(exists(log + ".lck"));
}

// The lines as the reviewed lists have them, but for the time of logging.
TEST_F(Program, ListShowsTheReviewedLines) {
    (void)import(exampleFile("server.sel"));
    EXPECT_EQ(run({"list"}).output, readFile(dataFile("server.list.txt")));
    EXPECT_EQ(run({"list", log}).output, readFile(dataFile("server.list.txt")));
}

TEST_F(Program, ImportingAgainAddsNothing) {
    const std::string file = dataFile("misc-30.sel");
    expectImport(file, "30 records read, 30 added, 0 already known");
    const std::string before = readFile(log);
    expectImport(file, "30 records read, 0 added, 30 already known");
    EXPECT_EQ(readFile(log).size(), before.size());
    expectImport(dataFile("spaced-bytes.txt"), "30 records read, 0 added, 30 already known");
}

TEST_F(Program, RecordsAreCountedAsOftenAsTheyOccur) {
    const std::string twice = folder.file("twice");
    const std::string record = readFile(exampleFile("server.sel")).substr(0, 16);
    writeFile(twice, record + record);
    expectImport(twice, "2 records read, 2 added, 0 already known");
    expectImport(twice, "2 records read, 0 added, 2 already known");
    writeFile(twice, record + record + record);
    expectImport(twice, "3 records read, 1 added, 2 already known");
}

TEST_F(Program, AllAddsKnownRecordsToo) {
    const std::string file = dataFile("session-audit-10.sel");
    (void)import(file);
    const Result again = run({"import", "--all", file});
    EXPECT_EQ(again.exitStatus, 0);
    EXPECT_EQ(again.output, file + ": 10 records read, 10 added, 0 already known\n");
    EXPECT_EQ(run({"export"}).output, readFile(file) + readFile(file));
}

TEST_F(Program, RandomRecordsComeBackByteForByte) {
    std::mt19937_64 random(0x5E5);
    std::vector<sel_samples::Record> records;
    for (int i = 0; i < 1500; ++i) {
        records.push_back(sel_samples::randomRecord(random));
    }
    const std::string file = folder.file("random");
    writeFile(file, bytesOf(records));
    ASSERT_EQ(run({"import", "--format=raw", file}).exitStatus, 0);
    EXPECT_TRUE(run({"export"}).output == bytesOf(records));
    const std::string copy = folder.file("copy");
    EXPECT_EQ(run({"export", copy}).output, "");
    EXPECT_TRUE(readFile(copy) == bytesOf(records));
    EXPECT_EQ(run({"import", "--format=raw", file}).output,
              file + ": 1500 records read, 0 added, 1500 already known\n");
}

TEST_F(Program, StandardInput) {
    const Result raw = run({"import", "-"}, readFile(dataFile("misc-30.sel")));
    EXPECT_EQ(raw.exitStatus, 0);
    EXPECT_EQ(raw.output, "-: 30 records read, 30 added, 0 already known\n");
    const Result text = run({"import", "-"}, readFile(dataFile("sel-entries.txt")));
    EXPECT_EQ(text.output, "-: 10 records read, 10 added, 0 already known\n");
}

TEST_F(Program, TextForms) {
    expectImport(dataFile("sel-entries.txt"), "10 records read, 10 added, 0 already known");
    expectImport(dataFile("labelled-bytes.txt"), "2 records read, 2 added, 0 already known");
    EXPECT_EQ(run({"import", "--format=text", dataFile("spaced-bytes.txt")}).output,
              dataFile("spaced-bytes.txt") + ": 30 records read, 28 added, 2 already known\n");
}

TEST_F(Program, AFileLongerThanTheLog) {
    configure("circular", "Size=100\nOverflow=wrap");
    expectImport(exampleFile("server.sel"), "234 records read, 234 added, 0 already known, 134 "
                                            "entries of the full log overwritten");
    EXPECT_EQ(run({"export"}).output, readFile(exampleFile("server.sel")).substr(134 * 16));
}

TEST_F(Program, ALogThatTakesNoMore) {
    configure("circular", "Size=100\nOverflow=drop");
    expectFailure(import(exampleFile("server.sel")),
                  log + " is full and takes no more entries, 100 were added; give it a greater "
                        "Size or another Overflow in the configuration",
                  1);
    EXPECT_FALSE(exists(log + ".lck"));
    EXPECT_EQ(run({"export"}).output, readFile(exampleFile("server.sel")).substr(0, 1600));
}

TEST_F(Program, EmptyFile) {
    const std::string file = folder.file("empty");
    writeFile(file, "");
    expectImport(file, "0 records read, 0 added, 0 already known");
    EXPECT_EQ(run({"list"}).output, "");
    EXPECT_EQ(run({"export"}).output, "");
}

TEST_F(Program, LinkedLogOfTheBuiltInConfiguration) {
    const std::string file = dataFile("session-audit-10.sel");
    EXPECT_EQ(program::run({"--root", root, "import", file}).output,
              file + ": 10 records read, 10 added, 0 already known\n");
    EXPECT_EQ(program::run({"list", "--root", root}).output,
              readFile(dataFile("session-audit-10.list.txt")));
}

// ---- Options of import --------------------------------------------------------------------------

TEST_F(Program, OffsetFromUtc) {
    const std::string file = dataFile("labelled-bytes.txt");
    ASSERT_EQ(run({"import", "--utc-offset=-05:30", file}).exitStatus, 0);
    EXPECT_EQ(run({"list", "-n", "1"}).output.substr(8, 20), "2012-04-17T19:01:48Z");
    // The bytes are those of the file, so the offset makes no difference to what is known.
    expectImport(file, "2 records read, 0 added, 2 already known");
    EXPECT_EQ(run({"export"}).output, readFile(dataFile("misc-30.sel")).substr(22 * 16, 32));
}

TEST_F(Program, OrderOfManufacturerIds) {
    const std::string file = dataFile("ipmitool-order.sel");
    const Result wrong = import(file);
    EXPECT_EQ(wrong.exitStatus, 0);
    EXPECT_EQ(wrong.errors, "evtlogctl: " + file +
                                ": the manufacturer ids of 6 OEM records make sense only in the "
                                "other byte order; consider importing with --ipmitool-order\n");
    const Result right = run({"import", "--all", "--ipmitool-order", file});
    EXPECT_EQ(right.errors, "");
    EXPECT_NE(run({"list", "-n", "1"}).output.find("manufacturer 0x000137"), std::string::npos);
    EXPECT_EQ(run({"export"}).output, readFile(file) + readFile(file));
    EXPECT_EQ(run({"import", "--ipmitool-order", exampleFile("server.sel")}).errors,
              "evtlogctl: " + exampleFile("server.sel") +
                  ": the manufacturer ids of 135 OEM records make sense only in the other byte "
                  "order; consider importing without --ipmitool-order\n");
}

TEST_F(Program, SeverityTable) {
    const std::string table = folder.file("table");
    writeFile(table, "sensor-specific/0x12 5 * debug\n");
    ASSERT_EQ(run({"import", "--severity-table", table, dataFile("labelled-bytes.txt")}).exitStatus,
              0);
    EXPECT_EQ(run({"list", "-n", "1"}).output.substr(34, 5), "debug");
    writeFile(table, "oem * * loud\n");
    expectFailure(run({"import", "--severity-table", table, dataFile("labelled-bytes.txt")}),
                  table + ":1: \"loud\" is no severity; see \"evtlogctl import --help\"", 2);
    expectFailure(run({"import", "--severity-table", folder.file("no"), dataFile("misc-30.sel")}),
                  folder.file("no") + " cannot be opened: No such file or directory; check the "
                                      "name and its permissions");
}

TEST_F(Program, SyslogOptionForwardsWhateverTheConfigurationSays) {
    configure("circular", "Size=100\nSyslog=no");
    EXPECT_EQ(run({"import", dataFile("labelled-bytes.txt")}).errors, "");
    const Result result =
        run({"--syslog=stderr", "import", "--all", dataFile("labelled-bytes.txt")});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(program::lineCount(result.errors), 2U);
    EXPECT_TRUE(result.errors.starts_with("notice: HPI: Sensor 131")) << result.errors;
}

TEST_F(Program, SyslogLinesToStandardError) {
    configure("circular", "Size=100\nSyslog=yes {}");
    const Result result = run({"--syslog=stderr", "import", dataFile("labelled-bytes.txt")});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(program::lineCount(result.errors), 2U);
    EXPECT_EQ(result.errors.substr(0, result.errors.find('\n')),
              "notice: HPI: Sensor 131 - Resource 51 SMI handler System Event 0x83 (System Event) "
              "Asserted 0x0020 State 05");
}

// ---- Progress -----------------------------------------------------------------------------------

TEST_F(Program, LongFilesGetAProgressBarOnATerminal) {
    const std::string whole = readFile(exampleFile("server.sel"));
    const std::string file = folder.file("long");
    writeFile(file, whole.substr(0, 200 * 16));
    const Result shown =
        program::runOnTerminal({"--root", root, "--config", config, "import", file});
    EXPECT_EQ(shown.exitStatus, 0);
    // Drawn at the first record, and wiped at the end.
    EXPECT_TRUE(shown.errors.starts_with("\r[" + std::string(40, ' ') + "]   0%  1/200\r"))
        << shown.errors;
    EXPECT_EQ(shown.errors.substr(shown.errors.size() - 4), "\r\x1B[K");
    EXPECT_EQ(run({"import", "--all", file}).errors, "");
}

TEST_F(Program, ShortFilesGetNone) {
    const std::string file = folder.file("short");
    writeFile(file, readFile(exampleFile("server.sel")).substr(0, 199 * 16));
    const Result shown =
        program::runOnTerminal({"--root", root, "--config", config, "import", file});
    EXPECT_EQ(shown.exitStatus, 0);
    EXPECT_EQ(shown.errors, "");
}

// ---- Files that are not as they should be -------------------------------------------------------

TEST_F(Program, ShortTail) {
    const std::string whole = readFile(exampleFile("server.sel"));
    const std::string file = folder.file("cut");
    writeFile(file, whole.substr(0, 10 * 16 + 7));
    const Result result = import(file);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.output, file + ": 10 records read, 10 added, 0 already known\n");
    EXPECT_EQ(result.errors, "evtlogctl: " + file +
                                 ": at offset 160: a record of 7 bytes instead of 16; left out, "
                                 "all else was read\n");
    EXPECT_EQ(run({"export"}).output, whole.substr(0, 160));
}

TEST_F(Program, BrokenLines) {
    const std::string file = folder.file("lines");
    std::string text = readFile(dataFile("labelled-bytes.txt"));
    for (int i = 0; i < 7; ++i) {
        text += "SEL Entry: 010002\nSEL Entry: 0100022ab3\n";
    }
    writeFile(file, text);
    const Result result = import(file);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.output, file + ": 2 records read, 2 added, 0 already known\n");
    EXPECT_EQ(program::lineCount(result.errors), 6U);
    EXPECT_EQ(result.errors.substr(0, result.errors.find('\n')),
              "evtlogctl: " + file + ": at offset " +
                  std::to_string(readFile(dataFile("labelled-bytes.txt")).size() + 18) +
                  " (line 4): a record of 5 bytes instead of 16; left out, all else was read");
    EXPECT_NE(result.errors.find(file + ": 2 more places like these\n"), std::string::npos);
}

TEST_F(Program, TextWithoutRecords) {
    const std::string file = folder.file("letter");
    writeFile(file, "Dear Sir or Madam,\n");
    expectFailure(
        import(file),
        file + ": no line holds the sixteen bytes of a record; name a file of SEL records", 1);
    EXPECT_FALSE(exists(root));
}

TEST_F(Program, NamesInBracketsStayAsTheyAre) {
    for (const std::string name : {"[x]", "[a,b]", "[]", "[[x]]"}) {
        expectFailure(import(name), name +
                                        " cannot be opened: No such file or directory; check the "
                                        "name and its permissions");
        expectFailure(run({"info", name}), name + " does not exist; name an event log file");
    }
}

TEST_F(Program, MissingFiles) {
    const std::string file = folder.file("missing");
    expectFailure(import(file), file + " cannot be opened: No such file or directory; check the "
                                       "name and its permissions");
    EXPECT_FALSE(exists(root));
    expectFailure(run({"list", file}), file + " does not exist; name an event log file");
    expectFailure(run({"info", file}), file + " does not exist; name an event log file");
    expectFailure(import(folder.path()),
                  folder.path() + " cannot be read: Is a directory; name a file of records");
}

TEST_F(Program, NoLogYet) {
    for (const char *command : {"list", "info", "stat", "export"}) {
        expectFailure(run({command}), "there is no log yet at " + log +
                                          "; make one with \"evtlogctl import FILE\"");
    }
    EXPECT_FALSE(exists(root));
}

TEST_F(Program, NoLogFileAtAll) {
    configure("syslog", "Size=10");
    expectFailure(
        run({"list"}),
        "the configuration " + config + " keeps no log file; name a log file, or configure one", 2);
    expectImport(dataFile("misc-30.sel"), "30 records read, 30 added, 0 already known");
    EXPECT_FALSE(exists(root));
}

TEST_F(Program, DamagedLog) {
    (void)import(dataFile("session-audit-10.sel"));
    std::string bytes = readFile(log);
    bytes[6064 + 3 * 1496 + 16] = 99; // the id of entry 4
    writeFile(log, bytes);
    const Result list = run({"list"});
    EXPECT_EQ(list.exitStatus, 3);
    EXPECT_EQ(program::lineCount(list.output), 6U);
    EXPECT_EQ(list.errors, "evtlogctl: " + log +
                               " is damaged: entry 4 calls itself 99; only the "
                               "entries after that are listed\n");
    const Result exported = run({"export"});
    EXPECT_EQ(exported.exitStatus, 3);
    EXPECT_EQ(exported.output, readFile(dataFile("session-audit-10.sel")).substr(4 * 16));
    expectFailure(import(dataFile("misc-30.sel")),
                  log + " is damaged (entry 4 calls itself 99), so it cannot be told which records "
                        "it holds; add them all with --all",
                  3);
    EXPECT_FALSE(exists(log + ".lck"));
}

TEST_F(Program, OutputThatCannotBeWritten) {
    (void)import(dataFile("misc-30.sel"));
    expectFailure(run({"export", folder.file("no/such/folder")}),
                  folder.file("no/such/folder") + " cannot be written: No such file or directory; "
                                                  "check the name and its permissions");
    if (exists("/dev/full")) {
        expectFailure(run({"export", "/dev/full"}),
                      "/dev/full cannot be written: No space left on device; check the disk");
    }
}

// ---- Info and config ----------------------------------------------------------------------------

std::string valueOf(const std::string &text, const std::string &label) {
    const std::size_t begin = text.find(label);
    const std::size_t value = text.find_first_not_of(' ', begin + label.size());
    return begin == std::string::npos ? "" : text.substr(value, text.find('\n', value) - value);
}

TEST_F(Program, Info) {
    configure("circular", "Size=100\nOverflow=wrap\nUserEventMaxSize=80\nOverflowResetable=no");
    (void)import(exampleFile("server.sel"));
    for (const Result &info : {run({"info"}), run({"info", log})}) {
        EXPECT_EQ(info.exitStatus, 0);
        EXPECT_EQ(info.errors, "");
        EXPECT_EQ(valueOf(info.output, "File  "), log);
        EXPECT_EQ(valueOf(info.output, "File size"), "155664 bytes");
        EXPECT_EQ(valueOf(info.output, "Type"), "circular");
        EXPECT_EQ(valueOf(info.output, "When full"), "wrap");
        EXPECT_EQ(valueOf(info.output, "\nSize"), "100 entries");
        EXPECT_EQ(valueOf(info.output, "\nEntries"), "100");
        EXPECT_EQ(valueOf(info.output, "Oldest entry"), "35");
        EXPECT_EQ(valueOf(info.output, "Newest entry"), "34");
        EXPECT_EQ(valueOf(info.output, "Highest number used"), "100");
        EXPECT_EQ(valueOf(info.output, "First free entry"), "none");
        EXPECT_EQ(valueOf(info.output, "Overflow flag"), "yes");
        EXPECT_EQ(valueOf(info.output, "Overflow resetable"), "no");
        EXPECT_EQ(valueOf(info.output, "Enabled"), "yes");
        EXPECT_EQ(valueOf(info.output, "User event data"), "at most 80 bytes");
        EXPECT_EQ(valueOf(info.output, "Interrupted update"), "no");
        EXPECT_EQ(program::lineCount(info.output), 17U);
    }
}

TEST_F(Program, ConfigOfTheBuiltInConfiguration) {
    const Result result = program::run({"config", "--root", root});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output,
              "Configuration           built in\n"
              "Root                    " +
                  root +
                  "\n"
                  "Log file                " +
                  log +
                  "\n"
                  "EventLog                linked\n"
                  "Filename                evtlog.dat\n"
                  "Reinitialize            no\n"
                  "Size                    10000\n"
                  "Overflow                wrap\n"
                  "UserEventMaxSize        255\n"
                  "Enabled                 yes\n"
                  "RelativeTime            no\n"
                  "OverflowResetable       yes\n"
                  "Syslog                  no\n"
                  "SyslogFollowsState      no\n"
                  "SyslogSuppressResource  no\n"
                  "Syslog map              critical  major     minor     informational  ok        "
                  "others\n"
                  "  other event types     crit      err       warning   notice         notice    "
                  "debug\n");
    EXPECT_FALSE(exists(root));
}

TEST_F(Program, ConfigWithASyslogMap) {
    configure("syslog", "Size=7\nSyslog=yes {\n"
                        "EventLogSyslogEventType=sensor {\n"
                        "EventLogSyslogSeverity=critical { EventLogSyslogLevel=emerg }\n"
                        "EventLogSyslogSeverity=ok { EventLogSyslogLevel=none }\n}\n"
                        "SyslogFollowsState=yes\n}");
    const Result result = run({"config"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(valueOf(result.output, "Configuration"), config);
    EXPECT_EQ(valueOf(result.output, "Log file"), "none");
    EXPECT_EQ(valueOf(result.output, "\nEventLog"), "syslog");
    EXPECT_EQ(valueOf(result.output, "Syslog "), "yes");
    EXPECT_EQ(valueOf(result.output, "SyslogFollowsState"), "yes");
    EXPECT_EQ(valueOf(result.output, "  sensor"),
              "emerg     err       warning   notice         none      debug");
    EXPECT_EQ(valueOf(result.output, "  other event types"),
              "crit      err       warning   notice         notice    debug");
}

TEST_F(Program, ErrorsOfTheConfiguration) {
    writeFile(config, "EventLog=round\n");
    const Result wrong = run({"config"});
    EXPECT_EQ(wrong.exitStatus, 2);
    EXPECT_EQ(program::lineCount(wrong.errors), 1U);
    EXPECT_EQ(wrong.errors.substr(0, 15 + config.size()), "evtlogctl: " + config + ":1:1");
    const Result missing = program::run({"config", "--config", folder.file("none")});
    expectFailure(missing, folder.file("none") + ": cannot be read: No such file or directory; "
                                                 "correct the configuration");
}

// ---- Wrong usage --------------------------------------------------------------------------------

TEST_F(Program, WrongUsageIsOneLineAndStatusTwo) {
    const std::vector<std::vector<std::string>> wrong = {
        {},
        {"fly"},
        {"list", "--fly"},
        {"--fly", "list"},
        {"import"},
        {"import", "a", "b"},
        {"import", "a", "--format=jpeg"},
        {"import", "a", "--utc-offset=+25:00"},
        {"import", "a", "--utc-offset=5"},
        {"export", "--format=csv"},
        {"list", "-n", "many"},
        {"list", "--syslog=nowhere"},
        {"config", "extra"},
        {"check", "--salvage"},
        {"check", "--salvage", ""},
        {"unlock", "a", "b"},
        {"info", "-o", "verbose"},
        {"config", "--output=xml"},
        {"check", "-o"},
        {"stat", "-n", "many"},
        {"stat", "--all", "-n", "3"},
        {"report", "a"},
        {"report", "-o", ""},
        {"report", "-o", "page", ""},
        {"--root", root, "unlock", ""},
        {"list", ""},
        {"check", ""},
        {"stat", ""},
        {"info", ""},
        {"print", ""},
        {"dump", ""},
        {"export", ""},
    };
    for (const auto &arguments : wrong) {
        const Result result = program::run(arguments);
        const std::string last = arguments.empty() ? "" : arguments.back();
        EXPECT_EQ(result.exitStatus, 2) << last;
        EXPECT_EQ(result.output, "") << last;
        EXPECT_EQ(program::lineCount(result.errors), 1U) << result.errors;
        EXPECT_EQ(result.errors.substr(0, 11), "evtlogctl: ") << last;
        EXPECT_NE(result.errors.find("; see \"evtlogctl --help\"\n"), std::string::npos) << last;
    }
}

TEST_F(Program, WhatIsWrongWithTheCommandLine) {
    EXPECT_EQ(program::run({}).errors,
              "evtlogctl: A subcommand is required; see \"evtlogctl --help\"\n");
    EXPECT_EQ(program::run({"fly"}).errors,
              "evtlogctl: fly is no command; see \"evtlogctl --help\"\n");
    EXPECT_EQ(program::run({"import", "a", "--utc-offset=5"}).errors,
              "evtlogctl: --utc-offset: 5 is no offset of the form +hh:mm or -hh:mm; see "
              "\"evtlogctl --help\"\n");
}

TEST_F(Program, HelpAndVersion) {
    const Result version = program::run({"--version"});
    EXPECT_EQ(version.exitStatus, 0);
    EXPECT_EQ(version.output, "evtlogctl " ZUSAHPI_UTIL_VERSION "\n");
    for (const auto &arguments : std::vector<std::vector<std::string>>{{"--help"},
                                                                       {"import", "--help"},
                                                                       {"export", "--help"},
                                                                       {"list", "-h"},
                                                                       {"info", "--help"},
                                                                       {"stat", "--help"},
                                                                       {"report", "--help"},
                                                                       {"check", "--help"},
                                                                       {"unlock", "--help"},
                                                                       {"config", "--help"}}) {
        const Result help = program::run(arguments);
        EXPECT_EQ(help.exitStatus, 0);
        EXPECT_EQ(help.errors, "");
        EXPECT_NE(help.output.find("Usage: evtlogctl"), std::string::npos) << help.output;
    }
    for (const char *command :
         {"import", "export", "list", "info", "stat", "report", "check", "unlock", "config"}) {
        EXPECT_NE(program::run({"--help"}).output.find(command), std::string::npos);
    }
}

// The numbers in the help text are those of the manual.
TEST_F(Program, ExitStatusesAreExplained) {
    const std::string help = program::run({"--help"}).output;
    EXPECT_TRUE(help.ends_with(
        "Exit status:\n"
        "  0  done\n"
        "  1  nothing matched, something was left out, or a check found something that is no "
        "damage\n"
        "  2  wrong usage: command line, configuration, severity table\n"
        "  3  a damaged log, or a file that is no log\n"
        "  4  the system said no: a missing file, a permission, a full disk, a lock\n"))
        << help;
}

TEST_F(Program, AnEmptyLogListedWholeIsDone) {
    writeFile(folder.file("empty"), "");
    EXPECT_EQ(import(folder.file("empty")).exitStatus, 0);
    const Result list = run({"list"});
    EXPECT_EQ(list.exitStatus, 0);
    EXPECT_EQ(list.output, "");
}

// The library's own exit status is 1 for every failed start.
TEST_F(Program, ADamagedLogThatCannotBeStarted) {
    configure("linked", "Size=10");
    (void)import(dataFile("session-audit-10.sel"));
    std::string bytes = readFile(log);
    bytes[72] = 1;       // an update waits
    bytes[80 + 16] = 77; // for an entry that the log does not have
    writeFile(log, bytes);
    for (const auto &arguments : {std::vector<std::string>{"import", dataFile("misc-30.sel")},
                                  {"evtlog", "info"},
                                  {"shell"}}) {
        const Result result = run(arguments);
        EXPECT_EQ(result.exitStatus, 3);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors, "Error transacting logged record on existing log file.\n"
                                 "evtlogctl: the log " +
                                     log +
                                     " is damaged, see the line above; \"evtlogctl check\" says "
                                     "where, and with --salvage saves its entries\n");
        EXPECT_FALSE(exists(log + ".lck"));
    }
    writeFile(log, "short");
    EXPECT_EQ(run({"evtlog", "info"}).exitStatus, 3);
}

// ---- Other processes ----------------------------------------------------------------------------

// A name may hold any byte but NUL and '/'; none of them reaches the terminal as a control.
TEST_F(Program, NamesWithControlCharacters) {
    const std::string name = folder.file("\x1B[31mred\n\x7F\xC2\x9B"
                                         "\xC3\xBC\xFF");
    const std::string as = folder.file(".[31mred...."
                                       "\xC3\xBC\xFF");
    expectFailure(run({"list", name}), as + " does not exist; name an event log file");
    (void)import(dataFile("misc-30.sel"));
    std::filesystem::copy_file(log, name);
    for (const std::vector<std::string> &arguments :
         {std::vector<std::string>{"info", name}, {"stat", name}, {"check", name}}) {
        const Result result = run(arguments);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_NE(result.output.find(as), std::string::npos) << result.output;
        EXPECT_EQ(result.output.find('\x1B'), std::string::npos);
    }
    const std::string records = folder.file("\x1B");
    std::filesystem::copy_file(dataFile("misc-30.sel"), records);
    expectImport(records, "30 records read, 0 added, 30 already known", folder.file("."));
}

TEST_F(Program, HeldLock) {
    (void)import(dataFile("misc-30.sel"));
    writeFile(log + ".lck", "");
    const Result refused = import(dataFile("misc-30.sel"));
    EXPECT_EQ(refused.exitStatus, 4);
    EXPECT_EQ(refused.output, "");
    EXPECT_EQ(refused.errors, "Cannot establish lock on event log file.\n"
                              "evtlogctl: " +
                                  log +
                                  " is locked by another process; wait until it has ended, or, if "
                                  "it was killed, remove its lock with \"evtlogctl unlock\"\n");
    EXPECT_EQ(program::lineCount(run({"list"}).output), 30U);
    EXPECT_EQ(run({"info"}).exitStatus, 0);
    EXPECT_EQ(run({"export"}).output, readFile(dataFile("misc-30.sel")));
    EXPECT_TRUE(exists(log + ".lck"));
}

TEST_F(Program, ALogThatCannotBeStarted) {
    writeFile(config, "EventLog=linked {\nFilename=\"/dev/null/log\"\nSize=3\n}\n");
    const Result result = import(dataFile("misc-30.sel"));
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_EQ(result.errors, "create of temporary lockfile:Not a directory\n"
                             "evtlogctl: the log /dev/null/log could not be started, see the line "
                             "above; check its folder, its permissions and --root\n");
    writeFile(folder.file("file"), "");
    const std::string below = folder.file("file/root");
    expectFailure(program::run({"--root", below, "import", dataFile("misc-30.sel")}),
                  "the folder " + below +
                      "/evtlog cannot be made: Not a directory; choose another with --root");
}

// The advice is right: with the file gone the next start makes the log.
TEST_F(Program, ALogThatACrashCutWhileItWasMade) {
    std::filesystem::create_directories(root + "/evtlog");
    writeFile(log, std::string(79, '\0'));
    const Result result = import(dataFile("misc-30.sel"));
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_EQ(result.errors,
              "Unable to read Event Log Info from existing log file.\n"
              "evtlogctl: the log " +
                  log + " was cut short by a crash while it was made, and holds nothing; \"rm " +
                  log + "\" lets the next start make it anew\n");
    EXPECT_FALSE(exists(log + ".lck"));
    std::remove(log.c_str());
    EXPECT_EQ(import(dataFile("misc-30.sel")).exitStatus, 0);
}

TEST_F(Program, AnInterruptedUpdateThatTheDiskDoesNotTake) {
    configure("linked", "Size=100");
    std::filesystem::create_directories(root + "/evtlog");
    writeFile(log, sample_logs::bytesOf(sample_logs::Kind::interrupted));
    sample_logs::age(log);
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
    const rlimit full{.rlim_cur = 6064, .rlim_max = usual.rlim_max};
    (void)std::signal(SIGXFSZ, SIG_IGN); // programs that it starts take that over
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &full), 0);
    const Result result = import(dataFile("misc-30.sel"));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &usual), 0);
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_EQ(result.errors.find("Error: write of event log entry # "), 0U) << result.errors;
    EXPECT_NE(result.errors.find(
                  "\nError transacting logged record on existing log file.\n"
                  "evtlogctl: an interrupted update of the log " +
                  log +
                  " could not be finished, see the line above; it is safe and waits: make room on "
                  "the disk, and try again\n"),
              std::string::npos)
        << result.errors;
    const std::string found = run({"check"}).output;
    EXPECT_NE(found.find("an interrupted update of 2 records waits"), std::string::npos) << found;
    EXPECT_EQ(import(dataFile("misc-30.sel")).exitStatus, 0);
    EXPECT_EQ(run({"check"}).exitStatus, 0);
}

TEST_F(Program, ListWhileAnotherProcessAdds) {
    configure("linked", "Size=500");
    const std::string expected = readFile(dataFile("server.list.txt"));
    const pid_t importer =
        program::start({"--root", root, "--config", config, "import", exampleFile("server.sel")});
    EXPECT_TRUE(test_support::comesTrue([this] { return exists(log); }));
    std::size_t lines = 0;
    int status = 0;
    while (waitpid(importer, &status, WNOHANG) == 0) {
        const Result list = run({"list", log});
        if (list.exitStatus == 3) { // the file is there before its first bytes are
            EXPECT_EQ(list.errors, "evtlogctl: " + log +
                                       " is no log: it is shorter than an empty "
                                       "log; name an event log file\n");
            continue;
        }
        EXPECT_EQ(list.exitStatus, 0);
        EXPECT_EQ(list.errors, "");
        EXPECT_EQ(list.output, expected.substr(0, list.output.size()));
        EXPECT_GE(program::lineCount(list.output), lines);
        lines = program::lineCount(list.output);
    }
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(run({"list"}).output, expected);
}

// The lock of a process that a signal ends must not stay behind.
TEST_F(Program, AnInterruptedImportGivesUpItsLock) {
    configure("linked", "Size=100000");
    std::mt19937_64 random(0x5E6);
    std::vector<sel_samples::Record> records(50'000);
    std::generate(records.begin(), records.end(),
                  [&] { return sel_samples::randomRecord(random); });
    const std::string file = folder.file("many");
    writeFile(file, bytesOf(records));
    const pid_t importer =
        program::start({"--root", root, "--config", config, "import", "--format=raw", file});
    EXPECT_TRUE(test_support::comesTrue(
        [this] { return exists(log) && std::filesystem::file_size(log) > 100'000; }));
    ASSERT_EQ(kill(importer, SIGTERM), 0);
    EXPECT_EQ(program::finish(importer), 1);
    EXPECT_FALSE(exists(log + ".lck"));
    const std::string added = run({"export"}).output;
    EXPECT_TRUE(added == bytesOf(records).substr(0, added.size()));
}

} // namespace
