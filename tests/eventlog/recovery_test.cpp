// What a start makes of an existing file: every case of reconciliation, and every state in which a
// crash or damage may have left the transaction log area.

#include "eventlog/recovery.h"

#include <cerrno>
#include <cstring>

#include "tests/eventlog/store_fixture.h"
#include "tests/support/file_journal.h"

using namespace store_test;
using test_support::Call;
using test_support::ChildResult;
using test_support::failCall;
using test_support::inChild;
using test_support::runInChild;

namespace {

class Recovery : public StoreTest {
  protected:
    // A file with entries 1 to `count`, made by the store.
    static void make(std::uint32_t type, std::uint32_t size, std::uint8_t count) {
        inChild([=] {
            start(type, type == simple ? drop : wrap, size);
            for (std::uint8_t seed = 1; seed <= count; ++seed) {
                add(seed);
            }
        });
    }
    // Sets the flag and the slots by hand, as a crash in a commit leaves them.
    static void leaveTransaction(const std::vector<EventLogEntryRecord> &slots,
                                 std::uint32_t updating = 1) {
        FileImage image = file();
        EventLogInfoRecord info = image.info();
        info.updating = updating;
        image.setInfo(info);
        EventLogEntryRecord endMark = entryRecord(none, 0);
        for (std::uint32_t slot = 0; slot < 4; ++slot) {
            image.setSlot(slot, slot < slots.size() ? slots[slot] : endMark);
        }
        writeLog(image);
    }
    static int tagInFile(std::uint32_t number) {
        return file().entry(number).rpt.ResourceTag.Data[0];
    }
};

constexpr char otherType[] = "Specified log file type doesn't match existing log file.\n"
                             "Deleting current log data\n";
constexpr char resizedCircular[] = "Resizing circular log file\nDeleting current log data\n";
constexpr char lossOfData[] = "Resizing log file results inloss of data.\n"
                              "Deleting all current log data\n";

TEST_F(Recovery, AnotherTypeEmptiesTheLog) {
    make(simple, 5, 3);
    start(linked, wrap, 5);
    EXPECT_EQ(diagnostics(), otherType);
    EXPECT_EQ(file().bytes.size(), 6064U);
    EXPECT_EQ(file().entries(), 0U);
    EXPECT_EQ(file().u32(40), linked);
}

TEST_F(Recovery, AnotherTypeAndSizeIsReportedOnce) {
    make(circular, 5, 3);
    start(linked, wrap, 2);
    EXPECT_EQ(diagnostics(), otherType);
    EXPECT_EQ(file().u32(4), 2U);
}

TEST_F(Recovery, ACircularLogOfAnotherSizeLosesItsEntries) {
    make(circular, 5, 3);
    start(circular, wrap, 6);
    EXPECT_EQ(diagnostics(), resizedCircular);
    EXPECT_EQ(file().entries(), 0U);
    EXPECT_EQ(file().maxUsed(), 0U);
    EXPECT_EQ(file().u32(4), 6U);
    EXPECT_EQ(file().bytes.size(), 6064U);
}

TEST_F(Recovery, AShrunkCircularLogIsReportedOnce) {
    make(circular, 5, 5);
    start(circular, wrap, 2);
    EXPECT_EQ(diagnostics(), resizedCircular); // nothing was left that could be lost
}

// As a file system leaves it that makes a file longer before its data are there.
TEST_F(Recovery, AnInfoRecordOfZerosBecomesAnEmptySimpleLog) {
    writeLog(FileImage{std::string(80, '\0')});
    inChild([] {
        start(simple, drop, 5);
        EXPECT_EQ(diagnostics(), "");
        EXPECT_EQ(file().info().oldest, none);
        EXPECT_EQ(file().info().newest, none);
        EXPECT_EQ(file().info().freeHead, none);
        add(1);
        add(2);
    });
    EXPECT_EQ(file().entries(), 2U);
    EXPECT_EQ(tagInFile(1), 1);
    EXPECT_EQ(tagInFile(2), 2);
}

// Zeros alone are an info record that never reached the disk; what else is damaged stays as it is.
TEST_F(Recovery, EndsThatDoNotFitTheEntriesAreKept) {
    struct Ends {
        std::uint32_t entries;
        std::uint32_t oldest;
        std::uint32_t newest;
    };
    for (const Ends ends : {Ends{1, 0, 0}, Ends{0, 1, 0}, Ends{0, 0, 1}, Ends{0, 1, 1}}) {
        make(simple, 5, 1);
        FileImage image = file();
        EventLogInfoRecord info = image.info();
        info.sa.Entries = ends.entries;
        info.oldest = ends.oldest;
        info.newest = ends.newest;
        image.setInfo(info);
        writeLog(image);
        inChild([] { start(simple, drop, 5); });
        EXPECT_EQ(file().bytes, image.bytes);
        std::remove(logPath().c_str());
    }
}

TEST_F(Recovery, ASimpleLogKeepsItsEntriesDownToMaxUsed) {
    make(simple, 8, 5);
    inChild([] {
        start(simple, drop, 5);
        EXPECT_EQ(diagnostics(), "");
        EXPECT_EQ(seeds(), (std::vector<int>{1, 2, 3, 4, 5}));
        EXPECT_EQ(file().u32(4), 5U);
    });
    inChild([] {
        start(simple, drop, 100);
        EXPECT_EQ(seeds(), (std::vector<int>{1, 2, 3, 4, 5}));
        EXPECT_EQ(file().u32(4), 100U);
    });
    start(simple, drop, 4);
    EXPECT_EQ(diagnostics(), lossOfData);
    EXPECT_TRUE(seeds().empty());
    EXPECT_EQ(file().u32(4), 4U);
    EXPECT_EQ(file().bytes.size(), 6064U);
}

TEST_F(Recovery, ALinkedLogShrinksDownToMaxUsedNotToItsEntries) {
    make(linked, 8, 5);
    inChild([] {
        start(linked, wrap, 8);
        EXPECT_EQ(zuSaHpiEventLogEntryDel(2, 0), SA_OK);
    });
    inChild([] {
        start(linked, wrap, 5);
        EXPECT_EQ(seeds(), (std::vector<int>{1, 3, 4, 5}));
        EXPECT_EQ(file().freeHead(), 2U);
    });
    start(linked, wrap, 4);
    EXPECT_EQ(diagnostics(), lossOfData);
    EXPECT_EQ(file().freeHead(), none);
}

TEST_F(Recovery, SettingsComeFromTheBlockAndTheRestFromTheFile) {
    make(linked, 3, 3);
    inChild([] {
        start(linked, drop, 3);
        const EventLogAddRecord record = event(4);
        EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_ERR_HPI_OUT_OF_SPACE);
        EXPECT_EQ(zuSaHpiEventLogStateSet(0), SA_OK);
    });
    EventLogControlBlock block = controlBlock(linked, writeLast, 3);
    block.info.sa.Enabled = 1;
    block.info.sa.UserEventMaxSize = 17;
    block.info.sa.OverflowResetable = 0;
    test_mainlib::state().timeOfDay = 2'000'000'000;
    start(block);
    const FileImage image = file();
    EXPECT_EQ(image.u8(32), 1);
    EXPECT_EQ(image.u32(8), 17U);
    EXPECT_EQ(image.u8(34), 0);
    EXPECT_EQ(image.u32(36), 1U);
    EXPECT_EQ(image.u32(44), writeLast);
    EXPECT_EQ(image.overflowFlag(), 1);
    EXPECT_EQ(image.i64(16), 1'000'000'000); // UpdateTimestamp
    EXPECT_EQ(image.entries(), 3U);
}

TEST_F(Recovery, AnotherTypeStillTakesTheBlocksSettings) {
    make(simple, 5, 1);
    EventLogControlBlock block = controlBlock(linked, drop, 5);
    block.info.sa.Enabled = 0;
    start(block);
    EXPECT_EQ(file().u8(32), 0);
    EXPECT_EQ(file().u32(44), drop);
}

TEST_F(Recovery, WithoutFlagTheSlotsAreNotLookedAt) {
    make(linked, 5, 3);
    leaveTransaction({entryRecord(2, 0x72)}, 0);
    start(linked, wrap, 5);
    EXPECT_EQ(tagInFile(2), 2);
}

TEST_F(Recovery, SlotsUpToTheEndMarkAreReplayed) {
    make(linked, 5, 4);
    leaveTransaction(
        {entryRecord(2, 0x72), entryRecord(1, 0x71), entryRecord(none, 0), entryRecord(3, 0x73)});
    start(linked, wrap, 5);
    EXPECT_EQ(tagInFile(1), 0x71);
    EXPECT_EQ(tagInFile(2), 0x72);
    EXPECT_EQ(tagInFile(3), 3); // behind the end mark
    EXPECT_EQ(file().updating(), 0U);
}

TEST_F(Recovery, FourSlotsNeedNoEndMark) {
    make(linked, 5, 4);
    leaveTransaction(
        {entryRecord(1, 0x71), entryRecord(2, 0x72), entryRecord(3, 0x73), entryRecord(4, 0x74)});
    start(linked, wrap, 5);
    for (std::uint32_t number = 1; number <= 4; ++number) {
        EXPECT_EQ(tagInFile(number), static_cast<int>(0x70 + number));
    }
}

TEST_F(Recovery, AnEndMarkInTheFirstSlotReplaysNothing) {
    make(linked, 5, 4);
    leaveTransaction({});
    start(linked, wrap, 5);
    EXPECT_EQ(tagInFile(1), 1);
    EXPECT_EQ(file().updating(), 0U);
}

TEST_F(Recovery, RunsForAnyTypeAndAnyNonzeroFlag) {
    for (const std::uint32_t type : {simple, circular, linked}) {
        unlink(logPath().c_str());
        make(type, 5, 3);
        leaveTransaction({entryRecord(2, 0x72)}, 0x80000000);
        inChild([type] { start(type, type == simple ? drop : wrap, 5); });
        EXPECT_EQ(tagInFile(2), 0x72) << type;
        EXPECT_EQ(file().updating(), 0U) << type;
    }
}

TEST_F(Recovery, ReplayingTwiceGivesTheSameFile) {
    make(linked, 5, 3);
    leaveTransaction({entryRecord(2, 0x72), entryRecord(3, 0x73)});
    const FileImage crashed = file();
    inChild([] { start(linked, wrap, 5); });
    const FileImage once = file();
    FileImage again = once;
    again.setInfo(crashed.info());
    writeLog(again);
    start(linked, wrap, 5);
    EXPECT_EQ(file().bytes, once.bytes);
}

TEST_F(Recovery, AnAddThatGrewTheFileIsFinished) {
    make(linked, 5, 2);
    FileImage image = file();
    EventLogInfoRecord info = image.info();
    info.updating = 1;
    info.maxUsed = 3;
    info.sa.Entries = 3;
    info.newest = 3;
    image.setInfo(info);
    image.setSlot(0, entryRecord(3, 3, 2, none));
    image.setSlot(1, entryRecord(2, 2, 1, 3));
    image.setSlot(2, entryRecord(none, 0));
    writeLog(image); // the file ends after entry 2
    start(linked, wrap, 5);
    EXPECT_EQ(seeds(), (std::vector<int>{1, 2, 3}));
}

TEST_F(Recovery, AReplacedLogIsNotRepaired) {
    make(linked, 5, 3);
    leaveTransaction({entryRecord(2, 0x72)});
    start(circular, wrap, 5);
    EXPECT_EQ(file().updating(), 0U);
    EXPECT_EQ(file().bytes.size(), 6064U);
}

TEST_F(Recovery, AReinitialisedLogIsNotRepaired) {
    make(linked, 5, 3);
    leaveTransaction({entryRecord(9, 0x72)}); // would stop the start
    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    block.reinitialize = 1;
    start(block);
    EXPECT_EQ(file().entries(), 0U);
}

TEST_F(Recovery, ASlotOutsideTheLogStopsTheStart) {
    for (const std::uint32_t number : {0U, 4U, 0x80000000U}) {
        unlink(logPath().c_str());
        make(linked, 5, 3);
        leaveTransaction({entryRecord(number, 0x72)});
        const ChildResult result = runInChild([] { start(linked, wrap, 5); });
        EXPECT_EQ(result.exitStatus, 1) << number;
        EXPECT_EQ(result.diagnostics, "Error transacting logged record on existing log file.\n");
        EXPECT_EQ(file().updating(), 1U);
        EXPECT_FALSE(test_support::exists(lockPath()));
    }
}

TEST_F(Recovery, ASlotCutShortStopsTheStart) {
    make(linked, 5, 3);
    leaveTransaction({entryRecord(2, 0x72)});
    FileImage image = file();
    image.bytes.resize(80 + 1000);
    writeLog(image);
    const ChildResult result = runInChild([] { start(linked, wrap, 5); });
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "Unable to read logged entry from existing log file.\n");
}

TEST_F(Recovery, FailedCallsAreReported) {
    struct Failure {
        Call call;
        int skip;
        const char *message;
    };
    // A flag that may stand in the system's cache alone is written again before it is relied on.
    const Failure failures[] = {
        {Call::lseek, 0, "lseek on logfile to info record:Input/output error\n"},
        {Call::write, 0, "write of info record to logfile:Input/output error\n"},
        {Call::lseek, 1, "lseek on logfile to transaction log area:Input/output error\n"},
        {Call::read, 1, "Unable to read logged entry from existing log file.\n"},
        {Call::write, 1,
         "Error: write of event log entry # 2: Input/output error\n"
         "Error transacting logged record on existing log file.\n"},
    };
    make(linked, 5, 3);
    leaveTransaction({entryRecord(2, 0x72)});
    const std::string before = file().bytes;
    for (const Failure &failure : failures) {
        const ChildResult result = runInChild([&failure] {
            failCall(failure.call, EIO, failure.skip);
            start(linked, wrap, 5);
        });
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_EQ(result.diagnostics, failure.message);
        EXPECT_EQ(file().bytes, before);
    }
    inChild([] { start(linked, wrap, 5); });
    EXPECT_EQ(tagInFile(2), 0x72);
}

// As it was read: what the configuration changes of it is written when all else is done.
TEST_F(Recovery, TheFlagIsWrittenBeforeTheRecordsAre) {
    make(linked, 5, 3);
    leaveTransaction({entryRecord(2, 0x72)});
    const std::string info = file().bytes.substr(0, 80);
    test_support::watchFile(logPath());
    EventLogControlBlock block = controlBlock(linked, writeLast, 9);
    start(block);
    const std::vector<test_support::FileEvent> events = test_support::takeFileEvents();
    ASSERT_GE(events.size(), 3U);
    EXPECT_EQ(events[0].offset, 0U);
    EXPECT_TRUE(events[0].bytes == info);
    EXPECT_EQ(events[1].offset, 7560U);
    EXPECT_EQ(events[2].offset, 0U);
    EXPECT_EQ(file().u32(4), 9U);
}

} // namespace
