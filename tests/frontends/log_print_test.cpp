// Goal: the whole text of printed log files in both forms, each mark and each message; files that
// are cut, damaged or no log files at all; and which file a name stands for.

#include <array>
#include <cerrno>
#include <cstring>
#include <random>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/display/printed.h"
#include "tests/eventlog/store_fixture.h"
#include "tests/frontends/sample_log.h"

using namespace store_test;
using test_support::Call;
using test_support::failCall;

namespace {

// What the printed form of an info record made by infoOf() depends on.
struct Shown {
    std::string type;
    std::string action;
    std::string oldest;
    std::string newest;
    std::string freeHead; // empty where it is not shown
    std::string maxUsed;
    std::string updating = "No";
};

std::string infoText(const Shown &shown) {
    const std::string freeHead =
        shown.freeHead.empty() ? "" : "     freeHead                " + shown.freeHead + "\n";
    return "Event Log Info:\n"
           "     sa.Entries              0\n"
           "     sa.Size                 5\n"
           "     sa.UserEventMaxSize     255\n"
           "     sa.UpdateTimestamp      time(0,0)\n"
           "     sa.CurrentTime          time(0,0)\n"
           "     sa.Enabled              Yes\n"
           "     sa.OverflowFlag         No\n"
           "     sa.OverflowResetable    Yes\n"
           "     sa.OverflowAction      0: Drop\n"
           "\n"
           "     type                    " +
           shown.type + "\n     overflow action (int)   " + shown.action +
           "\n     oldest                  " + shown.oldest + "\n     newest                  " +
           shown.newest + "\n" + freeHead +
           "     timeOffset (cur time)   time(1000000000,0)\n"
           "     maxUsed                 " +
           shown.maxUsed + "\n     updating                " + shown.updating + "\n\n";
}

EventLogInfoRecord infoOf(std::uint32_t type, std::uint32_t oldest, std::uint32_t newest,
                          std::uint32_t maxUsed) {
    EventLogInfoRecord info = controlBlock(type, drop, 5).info;
    info.oldest = oldest;
    info.newest = newest;
    info.maxUsed = maxUsed;
    return info;
}

EventLogEntryRecord userRecord(std::uint32_t id, std::uint32_t prev = none,
                               std::uint32_t next = none) {
    return sample_log::recordOf(id, userEvent(2), prev, next);
}

// An entry of userRecord(id), without links.
std::string entryText(std::uint32_t id) {
    return "Entry " + std::to_string(id) + ":\n" + sample_log::userEventText(id, "      ") +
           "\n      No RPT Entry\n      No RDR\n\n";
}

std::string dumpText(const void *data, std::uint32_t length) {
    return printedBy([&](auto out) { return zuSaHpiDprint(out, data, length, ""); }).text;
}

std::string dumpText(const EventLogEntryRecord &record) {
    return dumpText(&record, sizeof record);
}

class LogPrint : public StoreTest {
  protected:
    // Prints a file of these bytes through its open descriptor, which stands at the file's end.
    static Printed print(const std::string &bytes, int dump = 0) {
        test_support::writeFile(logPath(), bytes);
        const int fd = open(logPath().c_str(), O_RDONLY | O_CLOEXEC);
        EXPECT_GE(fd, 0);
        lseek(fd, 0, SEEK_END);
        const Printed printed = printedBy([&](auto out) { return zuSaHpiPrintlog(out, fd, dump); });
        close(fd);
        return printed;
    }
    static Printed print(const FileImage &image, int dump = 0) {
        return print(image.bytes, dump);
    }
    static Printed printNamed(const std::string &name, int dump = 0) {
        return printedBy([&](auto out) { return zuSaHpiDumplog(out, name.c_str(), dump); });
    }
    // A Circular log that has wrapped: entries 4, 5, 1, 2.
    static FileImage wrappedLog() {
        FileImage image = sample_log::emptyFile(infoOf(circular, 4, 2, 5));
        for (std::uint32_t id = 1; id <= 5; ++id) {
            image.setEntry(userRecord(id));
        }
        return image;
    }
};

TEST_F(LogPrint, AFreshLog) {
    const Shown expected = {.type = "Linked",
                            .action = "Drop",
                            .oldest = "SAHPI_LAST_ENTRY",
                            .newest = "SAHPI_LAST_ENTRY",
                            .freeHead = "SAHPI_LAST_ENTRY",
                            .maxUsed = "0"};
    const FileImage image = sample_log::emptyFile(infoOf(linked, none, none, 0));
    ASSERT_EQ(image.bytes.size(), 6064U);
    const Printed printed = print(image);
    EXPECT_EQ(printed.text, infoText(expected));
    EXPECT_EQ(printed.result, 0); // of the read at the file's end
    const EventLogInfoRecord info = image.info();
    EXPECT_EQ(print(image, 1).text, dumpText(&info, 80));
}

TEST_F(LogPrint, TypesAndOverflowActions) {
    const std::array<const char *, 4> types = {"Simple", "Circular", "Linked", "Unknown"};
    const std::array<const char *, 4> actions = {"Drop", "Wrap", "WriteLast", "Unknown"};
    for (std::uint32_t code = 0; code < 4; ++code) {
        EventLogInfoRecord info = infoOf(code, 7, 9, 0);
        info.overflowAction = code;
        info.freeHead = 3;
        Shown expected = {.type = types[code],
                          .action = actions[code],
                          .oldest = "7",
                          .newest = "9",
                          .freeHead = code == linked ? "3" : "",
                          .maxUsed = "0"};
        EXPECT_EQ(print(sample_log::emptyFile(info)).text, infoText(expected));
    }
}

TEST_F(LogPrint, NoCodeIsTakenForAnIndex) {
    for (const std::uint32_t code : {4U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        EventLogInfoRecord info = infoOf(code, 0xFFFFFFFE, 0, 0xFFFFFFFF);
        info.overflowAction = code;
        info.updating = code;
        const Shown expected = {.type = "Unknown",
                                .action = "Unknown",
                                .oldest = "4294967294",
                                .newest = "0",
                                .freeHead = "",
                                .maxUsed = "4294967295",
                                .updating = "Yes"};
        EXPECT_EQ(print(sample_log::emptyFile(info)).text, infoText(expected));
    }
}

// The log's time now, whatever the file holds: sums wrap.
TEST_F(LogPrint, TheCurrentTimeOfTheLog) {
    EventLogInfoRecord info = infoOf(simple, none, none, 0);
    info.timeOffset = 23;
    EXPECT_NE(print(sample_log::emptyFile(info))
                  .text.find("     timeOffset (cur time)   time(1000000023,0)\n"),
              std::string::npos);
    info.timeOffset = 0x7FFFFFFFFFFFFFFF;
    EXPECT_NE(print(sample_log::emptyFile(info))
                  .text.find("     timeOffset (cur time)   time(-9223372035854775809,0)\n"),
              std::string::npos);
}

TEST_F(LogPrint, ALinkedLogInFull) {
    EventLogInfoRecord info = infoOf(linked, 1, 3, 3);
    info.sa.Entries = 2;
    info.sa.UpdateTimestamp = 12;
    info.sa.OverflowAction = SAHPI_EL_OVERFLOW_OVERWRITE;
    info.overflowAction = wrap;
    info.freeHead = 2;
    info.timeOffset = 34;
    FileImage image = sample_log::emptyFile(info);
    image.setEntry(sample_log::recordOf(1, sample_log::boardEvent(), none, 3));
    EventLogEntryRecord deleted = userRecord(2);
    deleted.deleted = 0x100; // any value but 0
    image.setEntry(deleted);
    image.setEntry(userRecord(3, 1));
    EXPECT_EQ(print(image).text, sample_log::expectedText("print_linked.txt"));
    const std::string dump = dumpText(&info, 80) +                     //
                             "Entry 1:\n" + dumpText(image.entry(1)) + //
                             "Entry 2:\n" + dumpText(deleted) +        //
                             "Entry 3:\n" + dumpText(image.entry(3));
    EXPECT_EQ(print(image, 1).text, dump);
}

TEST_F(LogPrint, LinksAreShownForALinkedLogAlone) {
    for (const std::uint32_t type : {simple, circular, 3U}) {
        FileImage image = sample_log::emptyFile(infoOf(type, 1, 1, 1));
        image.setSlot(0, userRecord(1, 5, 6));
        image.setEntry(userRecord(1, 5, 6));
        const std::string text = print(image).text;
        EXPECT_TRUE(text.ends_with("updating                No\n\nTransaction log data:\n" +
                                   entryText(1) + "Normal Data:\n" + entryText(1)))
            << text;
    }
}

// Committed or not, the slots are shown as they are.
TEST_F(LogPrint, TransactionLogSlots) {
    for (const std::uint32_t updating : {0U, 1U}) {
        EventLogInfoRecord info = infoOf(linked, 1, 1, 1);
        info.updating = updating;
        Shown shown = {.type = "Linked",
                       .action = "Drop",
                       .oldest = "1",
                       .newest = "1",
                       .freeHead = "SAHPI_LAST_ENTRY",
                       .maxUsed = "1",
                       .updating = updating != 0 ? "Yes" : "No"};
        FileImage image = sample_log::emptyFile(info);
        image.setSlot(0, userRecord(9, 4, none));
        image.setEntry(userRecord(1, none, 9));
        image.setSlot(2, userRecord(8)); // behind the first unused slot
        std::string slot = entryText(9);
        slot.insert(slot.size() - 1, "      Previous Entry: 4\n"
                                     "      Next Entry:     SAHPI_LAST_ENTRY\n");
        std::string entry = entryText(1);
        entry.insert(entry.size() - 1, "      Previous Entry: SAHPI_LAST_ENTRY\n"
                                       "      Next Entry:     9\n");
        EXPECT_EQ(print(image).text,
                  infoText(shown) + "Transaction log data:\n" + slot + "Normal Data:\n" + entry);
        EXPECT_EQ(print(image, 1).text, dumpText(&info, 80) + "Transaction log data:\n" +
                                            dumpText(image.slot(0)) + "Normal Data:\nEntry 1:\n" +
                                            dumpText(image.entry(1)));
    }
}

TEST_F(LogPrint, AllFourSlots) {
    FileImage image = sample_log::emptyFile(infoOf(simple, none, none, 0));
    std::string expected = infoText({.type = "Simple",
                                     .action = "Drop",
                                     .oldest = "SAHPI_LAST_ENTRY",
                                     .newest = "SAHPI_LAST_ENTRY",
                                     .freeHead = "",
                                     .maxUsed = "0"}) +
                           "Transaction log data:\n";
    for (std::uint32_t slot = 0; slot < 4; ++slot) {
        image.setSlot(slot, userRecord(slot + 1));
        expected += entryText(slot + 1);
    }
    EXPECT_EQ(print(image).text, expected + "Normal Data:\n");
}

TEST_F(LogPrint, EntriesOutsideTheRingAreInactive) {
    const FileImage image = wrappedLog();
    const Shown shown = {.type = "Circular",
                         .action = "Drop",
                         .oldest = "4",
                         .newest = "2",
                         .freeHead = "",
                         .maxUsed = "5"};
    EXPECT_EQ(print(image).text, infoText(shown) + entryText(1) + entryText(2) + "(Inactive) " +
                                     entryText(3) + entryText(4) + entryText(5));
    const EventLogInfoRecord info = image.info();
    std::string dump = dumpText(&info, 80);
    for (std::uint32_t id = 1; id <= 5; ++id) {
        dump += (id == 3 ? "(Inactive) Entry " : "Entry ") + std::to_string(id) + ":\n" +
                dumpText(image.entry(id));
    }
    EXPECT_EQ(print(image, 1).text, dump);
}

// The numbers that are marked in a log of five entries.
std::vector<int> inactiveNumbers(const std::string &text) {
    std::vector<int> numbers;
    const std::string mark = "(Inactive) Entry ";
    for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos; at += mark.size()) {
        numbers.push_back(std::stoi(text.substr(at + mark.size())));
    }
    return numbers;
}

TEST_F(LogPrint, WhichEntriesAreInactive) {
    const auto inactive = [](std::uint32_t type, std::uint32_t oldest, std::uint32_t newest,
                             std::uint32_t maxUsed) {
        FileImage image = wrappedLog();
        image.setInfo(infoOf(type, oldest, newest, maxUsed));
        return inactiveNumbers(print(image).text);
    };
    EXPECT_EQ(inactive(circular, 2, 4, 5), (std::vector<int>{1}));
    EXPECT_EQ(inactive(circular, 3, 3, 5), (std::vector<int>{1, 2}));
    EXPECT_EQ(inactive(circular, 5, 1, 5), (std::vector<int>{2, 3, 4}));
    EXPECT_EQ(inactive(circular, 4, 2, 4), (std::vector<int>{3, 5}));
    EXPECT_EQ(inactive(circular, none, none, 5), (std::vector<int>{1, 2, 3, 4, 5}));
    EXPECT_EQ(inactive(simple, 4, 2, 3), (std::vector<int>{4, 5}));
    EXPECT_EQ(inactive(linked, 4, 2, 3), (std::vector<int>{4, 5}));
    EXPECT_EQ(inactive(linked, none, none, 0), (std::vector<int>{1, 2, 3, 4, 5}));
}

TEST_F(LogPrint, NumbersOfEntriesAreSignedInDumpsOnly) {
    FileImage image = sample_log::emptyFile(infoOf(simple, 1, 1, 1));
    EventLogEntryRecord record = userRecord(1);
    image.setEntry(record);
    record.entry.EntryId = 0xFFFFFFFE;
    std::memcpy(image.bytes.data() + 6064, &record, sizeof record);
    const EventLogInfoRecord info = image.info();
    EXPECT_EQ(print(image, 1).text,
              dumpText(&info, 80) + "(Inactive) Entry -2:\n" + dumpText(record));
    EXPECT_NE(print(image).text.find("(Inactive) Entry 4294967294:\n      EntryId: 4294967294\n"),
              std::string::npos);
}

// The record of a file that ends within it is shown with zeros for what is missing.
TEST_F(LogPrint, APartialRecordIsTheLast) {
    FileImage image = wrappedLog();
    image.bytes.resize(6064 + 1496 + 20);
    const Shown shown = {.type = "Circular",
                         .action = "Drop",
                         .oldest = "4",
                         .newest = "2",
                         .freeHead = "",
                         .maxUsed = "5"};
    EXPECT_EQ(print(image).text, infoText(shown) + entryText(1) +
                                     "Entry 2:\n"
                                     "      EntryId: 2\n"
                                     "      Timestamp: time(0,0)\n"
                                     "      Event:\n"
                                     "            Source:      0\n"
                                     "            Event Type:  0: Resource\n"
                                     "            Timestamp:   time(0,0)\n"
                                     "            Severity:    0: Critical\n"
                                     "            Resource Event:\n"
                                     "              Event Type 0: Resource Failure\n"
                                     "\n      No RPT Entry\n      No RDR\n\n");
    EventLogEntryRecord partial;
    std::memset(&partial, 0, sizeof partial);
    std::memcpy(&partial, image.bytes.data() + 6064 + 1496, 20);
    const EventLogInfoRecord info = image.info();
    EXPECT_EQ(print(image, 1).text, dumpText(&info, 80) + "Entry 1:\n" + dumpText(image.entry(1)) +
                                        "Entry 2:\n" + dumpText(partial));
}

TEST_F(LogPrint, AShortInfoRecord) {
    const std::string whole = wrappedLog().bytes;
    for (const std::size_t size : {0U, 1U, 79U}) {
        for (const int dump : {0, 1}) {
            const Printed printed = print(whole.substr(0, size), dump);
            EXPECT_EQ(printed.text, "Unable to read Event Log info record, rdcnt=" +
                                        std::to_string(size) + ".\n");
            EXPECT_EQ(printed.result, static_cast<int>(printed.text.size()));
        }
    }
}

TEST_F(LogPrint, AShortTransactionLog) {
    FileImage image = wrappedLog();
    const std::string head = print(image).text.substr(0, print(image).text.find("Entry 1:"));
    EXPECT_EQ(print(image.bytes.substr(0, 80)).text,
              head + "Unable to read transaction log record, rdcnt=0\n");
    EXPECT_EQ(print(image.bytes.substr(0, 80 + 1495)).text,
              head + "Unable to read transaction log record, rdcnt=1495\n");
    image.setSlot(0, userRecord(2));
    EXPECT_EQ(print(image.bytes.substr(0, 80 + 1496 + 7)).text,
              head + "Transaction log data:\n" + entryText(2) +
                  "Unable to read transaction log record, rdcnt=7\n");
    EXPECT_EQ(print(image.bytes.substr(0, 80 + 1496), 1).result, 47);
}

// An unused first slot ends the slots, so that nothing of the others is missed.
TEST_F(LogPrint, TheAreaBehindTheFirstUnusedSlotIsNotRead) {
    const std::string whole = sample_log::emptyFile(infoOf(linked, none, none, 0)).bytes;
    EXPECT_EQ(print(whole.substr(0, 80 + 1496)).text, print(whole).text);
}

TEST_F(LogPrint, CallsThatFail) {
    FileImage image = wrappedLog();
    const std::string all = print(image).text;
    const std::string head = all.substr(0, all.find("Entry 1:"));
    test_support::writeFile(logPath(), image.bytes);
    const auto failing = [](Call call, int skip) {
        failCall(call, EIO, skip);
        return printNamed("log");
    };
    EXPECT_EQ(failing(Call::lseek, 0).text,
              "Error: lseek on logfile to info record: Input/output error\n");
    EXPECT_EQ(failing(Call::read, 0).text,
              "Error: read of Event Log info record: Input/output error\n");
    EXPECT_EQ(failing(Call::read, 1).text,
              head + "Error: read of transaction log record: Input/output error\n");
    EXPECT_EQ(failing(Call::lseek, 1).text,
              head + "Error: lseek for log entry # 1: Input/output error\n");
    EXPECT_EQ(failing(Call::read, 2).text, head);
    EXPECT_EQ(failing(Call::read, 3).text, head + entryText(1));
    image.setSlot(0, userRecord(2));
    test_support::writeFile(logPath(), image.bytes);
    EXPECT_EQ(failing(Call::read, 2).text,
              head + "Transaction log data:\n" + entryText(2) +
                  "Error: read of transaction log record: Input/output error\n");
    EXPECT_EQ(diagnostics(), "");
}

TEST_F(LogPrint, ResultsAreThoseOfTheLastCall) {
    test_support::writeFile(logPath(), wrappedLog().bytes);
    EXPECT_EQ(printNamed("log").result, 0);
    failCall(Call::close, EIO);
    EXPECT_EQ(printNamed("log").result, -1);
    const int fd = open(logPath().c_str(), O_RDONLY | O_CLOEXEC);
    const auto result = [&] {
        return printedBy([&](auto out) { return zuSaHpiPrintlog(out, fd, 0); }).result;
    };
    EXPECT_EQ(result(), 0);
    failCall(Call::read, EIO, 3);
    EXPECT_EQ(result(), -1);
    failCall(Call::lseek, EIO, 1);
    EXPECT_EQ(result(), 51);
    failCall(Call::lseek, EIO);
    EXPECT_EQ(result(), 59);
    failCall(Call::read, EIO);
    EXPECT_EQ(result(), 57);
    close(fd);
}

TEST_F(LogPrint, AClosedDescriptor) {
    const Printed printed = printedBy([](auto out) { return zuSaHpiPrintlog(out, -1, 0); });
    EXPECT_EQ(printed.text, "Error: lseek on logfile to info record: Bad file descriptor\n");
}

TEST_F(LogPrint, WithoutMainLibraryNothingIsOpened) {
    test_support::writeFile(logPath(), wrappedLog().bytes);
    zuSaHpiLibInitialized = 0;
    const Printed printed = printNamed("log");
    EXPECT_EQ(printed.text, "zuSaHpiDumplog called, but library not initialized.\n");
    EXPECT_EQ(printed.result, static_cast<int>(printed.text.size()));
}

TEST_F(LogPrint, NamesStandForFiles) {
    const std::string bytes = wrappedLog().bytes;
    const std::string text = print(bytes).text;
    ASSERT_EQ(unlink(logPath().c_str()), 0);
    ASSERT_EQ(chdir(zuSaHpiRoot), 0);
    test_support::writeFile("x", bytes);
    EXPECT_EQ(printNamed("./x").text, text);
    EXPECT_EQ(printNamed(std::string(zuSaHpiRoot) + "/x").text, text);
    EXPECT_EQ(printNamed("x").text, std::string("Unable to open ") + zuSaHpiRoot +
                                        "/evtlog/x: No such file or directory\n");
    test_support::writeFile("evtlog/y", bytes);
    EXPECT_EQ(printNamed("y").text, text);
    EXPECT_EQ(printNamed("../x").text, text); // from the folder of logs
    EXPECT_EQ(printNamed("./y").text, "Unable to open ./y: No such file or directory\n");
    test_support::writeFile("evtlog/.y", bytes);
    EXPECT_EQ(printNamed(".y").text, text);
}

TEST_F(LogPrint, NamesThatAreUsedAsTheyStandHold98Characters) {
    for (const std::string start : {"/", "./"}) {
        const std::string longest = start + std::string(98 - start.size(), 'n');
        EXPECT_EQ(printNamed(longest).text,
                  "Unable to open " + longest + ": No such file or directory\n");
        for (const std::string &name : {longest + 'n', longest + std::string(5000, 'n')}) {
            const Printed printed = printNamed(name);
            EXPECT_EQ(printed.text, "Filename passed to zuSaHpiDumplog too long.\n");
            EXPECT_EQ(printed.result, static_cast<int>(printed.text.size()));
        }
    }
}

TEST_F(LogPrint, PlainNamesAndTheRootHold98CharactersTogether) {
    for (const std::size_t rootLength : {0U, 1U, 90U, 98U}) {
        const std::string root(rootLength, 'r');
        zuSaHpiRoot = root.c_str();
        const std::string longest(98 - rootLength, 'n');
        EXPECT_EQ(printNamed(longest).text, "Unable to open " + root + "/evtlog/" + longest +
                                                ": No such file or directory\n");
        for (const std::string &name : {longest + 'n', longest + std::string(5000, 'n')}) {
            const Printed printed = printNamed(name);
            EXPECT_EQ(printed.text, "Log filename too long.\n");
            EXPECT_EQ(printed.result, static_cast<int>(printed.text.size()));
        }
    }
    const std::string root(99, 'r');
    zuSaHpiRoot = root.c_str();
    EXPECT_EQ(printNamed("n").text, "Log filename too long.\n");
    EXPECT_EQ(printNamed("").text, "Log filename too long.\n");
}

TEST_F(LogPrint, AFileThatCannotBeOpened) {
    test_support::writeFile(logPath(), wrappedLog().bytes);
    failCall(Call::open, EACCES);
    const Printed printed = printNamed("log");
    EXPECT_EQ(printed.text, "Unable to open " + logPath() + ": Permission denied\n");
    EXPECT_EQ(printed.result, static_cast<int>(printed.text.size()));
}

TEST_F(LogPrint, TextInANameIsNoFormat) {
    EXPECT_EQ(printNamed("./%s%n").text, "Unable to open ./%s%n: No such file or directory\n");
}

// What is no regular file ends too.
TEST_F(LogPrint, FoldersPipesAndDevices) {
    EXPECT_EQ(printNamed("").text, "Error: read of Event Log info record: Is a directory\n");
    ASSERT_EQ(mkfifo(logPath().c_str(), 0600), 0);
    EXPECT_EQ(printNamed("log").text, "Error: lseek on logfile to info record: Illegal seek\n");
    EXPECT_EQ(printNamed("/dev/null").text, "Unable to read Event Log info record, rdcnt=0.\n");
    const std::string zeros = printNamed("/dev/zero", 1).text;
    EXPECT_TRUE(zeros.ends_with("Normal Data:\n"));
    EXPECT_EQ(zeros.find("Entry"), std::string::npos);
}

TEST_F(LogPrint, TheFileIsOnlyRead) {
    const FileImage image = wrappedLog();
    test_support::writeFile(logPath(), image.bytes);
    ASSERT_EQ(chmod(logPath().c_str(), 0400), 0);
    test_support::recordCalls();
    printNamed("log");
    EXPECT_EQ(test_support::recordedCalls(),
              (std::vector<std::string>{"open", "lseek 0", "read 80", "read 1496", "lseek 6064",
                                        "fstat", "read 1496", "read 1496", "read 1496", "read 1496",
                                        "read 1496", "read 1496", "close"}));
    EXPECT_EQ(file().bytes, image.bytes);
    EXPECT_FALSE(test_support::exists(lockPath()));
}

TEST_F(LogPrint, TheRunningLog) {
    const auto printRunning = [](int dump) {
        return printedBy([&](auto out) { return zuSaHpiPrintEventLog(out, dump); });
    };
    EXPECT_EQ(printRunning(0).text, ""); // there is none yet
    EXPECT_EQ(printRunning(0).result, 0);
    start(linked, wrap, 5);
    add(1);
    for (const int dump : {0, 1}) {
        const std::string text = printRunning(dump).text;
        EXPECT_EQ(text, printNamed("log", dump).text);
        EXPECT_NE(text, "");
    }
    add(2);
    EXPECT_EQ(seeds(), (std::vector<int>{1, 2}));
}

TEST_F(LogPrint, ARunningLogWithoutFile) {
    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    block.fileEnabled = 0;
    start(block);
    const Printed printed = printedBy([](auto out) { return zuSaHpiPrintEventLog(out, 0); });
    EXPECT_EQ(printed.text, "");
    EXPECT_EQ(printed.result, 0);
}

std::size_t below(std::mt19937_64 &random, std::size_t limit) {
    return static_cast<std::size_t>(random() % limit);
}

// Bytes of any kind, a length of any kind: each form ends, and ends its last line.
TEST_F(LogPrint, RandomFiles) {
    const std::uint64_t seed = 20'260'104;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937_64 random(seed);
    for (int round = 0; round < 150; ++round) {
        FileImage image = wrappedLog();
        image.bytes.resize(image.bytes.size() - below(random, 3000));
        const std::size_t changes = round % 3 == 0 ? image.bytes.size() : below(random, 400);
        for (std::size_t change = 0; change < changes; ++change) {
            const std::size_t at = below(random, image.bytes.size());
            // Small numbers are codes, lengths and flags more often than others.
            image.bytes[at] = static_cast<char>(random() % 2 == 0 ? random() : random() % 8);
        }
        for (const int dump : {0, 1}) {
            const Printed printed = print(image, dump);
            ASSERT_EQ(printed.text.back(), '\n') << round;
            ASSERT_LT(printed.text.size(), 1'000'000U) << round;
        }
    }
    EXPECT_EQ(diagnostics(), "");
}

} // namespace
