// The operations on the log as a whole, with a file and without, and their refusals.

#include <cerrno>
#include <climits>
#include <cstring>

#include "eventlog/store_state.h"
#include "eventlog/transaction.h"
#include "tests/eventlog/store_fixture.h"

using namespace store_test;
using test_support::Call;
using test_support::failCall;
using test_support::recordCalls;
using test_support::recordedCalls;
using zusahpi::eventlog::store;

namespace {

using Calls = std::vector<std::string>;

class LogOperations : public StoreTest {
  protected:
    static void startWithoutFile() {
        EventLogControlBlock block = controlBlock(linked, wrap, 5);
        block.fileEnabled = 0;
        start(block);
    }
    static SaHpiEventLogInfoT info() {
        SaHpiEventLogInfoT record;
        std::memset(&record, 0xEE, sizeof record);
        EXPECT_EQ(zuSaHpiEventLogInfoGet(&record), SA_OK);
        return record;
    }
    // Calls `operation` in an open transaction and with a cache that is not empty.
    template <typename Operation>
    static void expectGuarded(const char *attempt, Operation operation) {
        const std::string head = std::string("Event log error - attempt to ") + attempt + " when ";
        const std::string before = file().bytes;
        EventLogInfoRecord workingCopy;
        zusahpi::eventlog::beginTransaction(workingCopy);
        EXPECT_EQ(operation(), SA_ERR_HPI_INTERNAL_ERROR);
        EXPECT_EQ(diagnosticPrints(), (Prints{head, "transaction already in process.\n"}));
        zusahpi::eventlog::abortTransaction();
        store.transactionCache[0] = entryRecord(1, 1);
        EXPECT_EQ(operation(), SA_ERR_HPI_INTERNAL_ERROR);
        EXPECT_EQ(diagnosticPrints(), (Prints{head, "transaction cache is not empty.\n"}));
        zusahpi::eventlog::emptySlot(store.transactionCache[0]);
        EXPECT_EQ(file().bytes, before);
    }
};

TEST_F(LogOperations, InfoWorksBeforeInitialisation) {
    const SaHpiEventLogInfoT record = info();
    EXPECT_EQ(record.Entries, 0U);
    EXPECT_EQ(record.CurrentTime, 1'000'000'000);
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 1'000'000'000);
    EXPECT_EQ(zuSaHpiEventLogStateGet(), SAHPI_FALSE);
}

// A start that fails ends the process, whose exit handlers may still ask.
TEST_F(LogOperations, ALogWhoseStartFailedTakesNoEvents) {
    test_support::inChild([] { start(simple, drop, 3); });
    const test_support::ChildResult result = test_support::runInChild([] {
        std::atexit([] {
            std::fputs(zuSaHpiEventLogStateGet() == SAHPI_FALSE ? "no events" : "events", stderr);
        });
        failCall(Call::ftruncate, EIO);
        start(simple, drop, 3);
    });
    EXPECT_EQ(result.exitStatus, EXIT_FAILURE);
    EXPECT_NE(result.diagnostics.find("no events"), std::string::npos) << result.diagnostics;
}

TEST_F(LogOperations, InfoIsTheRecordWithTheCurrentLogTime) {
    start(linked, drop, 3);
    add(1);
    ASSERT_EQ(zuSaHpiEventLogTimeSet(40), SA_OK);
    test_mainlib::state().timeOfDay += 2;
    const SaHpiEventLogInfoT record = info();
    EXPECT_EQ(record.Entries, 1U);
    EXPECT_EQ(record.Size, 3U);
    EXPECT_EQ(record.UserEventMaxSize, 255U);
    EXPECT_EQ(record.UpdateTimestamp, 1'000'000'000);
    EXPECT_EQ(record.CurrentTime, 42);
    EXPECT_EQ(record.Enabled, 1);
    EXPECT_EQ(record.OverflowFlag, 0);
    EXPECT_EQ(record.OverflowResetable, 1);
    EXPECT_EQ(record.OverflowAction, SAHPI_EL_OVERFLOW_DROP);
    EXPECT_EQ(file().i64(24), 0); // never kept in the file
}

TEST_F(LogOperations, ClearRemovesAllEntriesOfAnyType) {
    for (const std::uint32_t type : {simple, circular, linked}) {
        test_support::inChild([type] {
            unlink(logPath().c_str());
            start(type, drop, 2);
            add(1);
            add(2);
            const EventLogAddRecord record = event(3);
            EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_ERR_HPI_OUT_OF_SPACE);
            test_mainlib::state().timeOfDay += 7;
            EXPECT_EQ(zuSaHpiEventLogClear(), SA_OK);
            const FileImage image = file();
            EXPECT_EQ(image.bytes.size(), 6064U);
            EXPECT_EQ(image.entries(), 0U);
            EXPECT_EQ(image.oldest(), none);
            EXPECT_EQ(image.newest(), none);
            EXPECT_EQ(image.freeHead(), none);
            EXPECT_EQ(image.maxUsed(), 0U);
            EXPECT_EQ(image.overflowFlag(), 0);
            EXPECT_EQ(image.i64(16), 1'000'000'007);
            add(4);
            EXPECT_EQ(file().newest(), 1U);
            EXPECT_EQ(seeds(), (std::vector<int>{4}));
        });
    }
}

// The read cache is not emptied by a clear: what becomes valid again was written over it.
TEST_F(LogOperations, NothingOfAClearedLogIsReadAgain) {
    start(linked, wrap, 5);
    for (std::uint8_t seed = 1; seed <= 4; ++seed) {
        add(seed);
    }
    ASSERT_EQ(zuSaHpiEventLogClear(), SA_OK);
    for (std::uint8_t seed = 11; seed <= 13; ++seed) {
        add(seed);
    }
    EXPECT_EQ(seeds(), (std::vector<int>{11, 12, 13}));
    EventLogEntryRecord record;
    EXPECT_EQ(zuSaHpiEventLogEntryGet(4, &record), SA_ERR_HPI_NOT_PRESENT);
}

TEST_F(LogOperations, ClearOfALinkedLogGoesThroughTheTransactionLog) {
    start(linked, wrap, 5);
    add(1);
    recordCalls();
    ASSERT_EQ(zuSaHpiEventLogClear(), SA_OK);
    EXPECT_EQ(recordedCalls(), (Calls{"lseek 80", "write 1496", "lseek 0", "write 80", "lseek 0",
                                      "write 80", "ftruncate 6064"}));
}

TEST_F(LogOperations, ClearForgetsTheFreeList) {
    start(linked, wrap, 5);
    add(1);
    add(2);
    ASSERT_EQ(zuSaHpiEventLogEntryDel(1, 0), SA_OK);
    ASSERT_EQ(file().freeHead(), 1U);
    ASSERT_EQ(zuSaHpiEventLogClear(), SA_OK);
    EXPECT_EQ(file().freeHead(), none);
    add(3);
    EXPECT_EQ(file().newest(), 1U);
    EXPECT_EQ(seeds(), (std::vector<int>{3}));
}

TEST_F(LogOperations, ClearReportsItsFailures) {
    start(linked, wrap, 5);
    add(1);
    failCall(Call::write, EIO);
    EXPECT_EQ(zuSaHpiEventLogClear(), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "write of entry to transaction log:Input/output error\n");
    EXPECT_EQ(seeds(), (std::vector<int>{1}));
    failCall(Call::ftruncate, EIO);
    EXPECT_EQ(zuSaHpiEventLogClear(), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "truncate of log file during clear operation:Input/output error\n");
    EXPECT_TRUE(seeds().empty());
    expectGuarded("clear log", zuSaHpiEventLogClear);
}

TEST_F(LogOperations, ClearWithoutFileMovesTheUpdateTime) {
    startWithoutFile();
    test_mainlib::state().timeOfDay += 7;
    EXPECT_EQ(zuSaHpiEventLogClear(), SA_OK);
    EXPECT_EQ(info().UpdateTimestamp, 1'000'000'007);
}

TEST_F(LogOperations, ResetOverflowTakesTheFlagOff) {
    start(simple, drop, 1);
    add(1);
    const EventLogAddRecord record = event(2);
    EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_ERR_HPI_OUT_OF_SPACE);
    test_mainlib::state().timeOfDay += 7;
    EXPECT_EQ(zuSaHpiEventLogResetOverflow(), SA_OK);
    EXPECT_EQ(file().overflowFlag(), 0);
    EXPECT_EQ(file().i64(16), 1'000'000'007);
    recordCalls();
    EXPECT_EQ(zuSaHpiEventLogResetOverflow(), SA_OK);
    EXPECT_TRUE(recordedCalls().empty());
}

TEST_F(LogOperations, ResetOverflowReportsAFailedCommit) {
    start(simple, drop, 0);
    const EventLogAddRecord record = event(2);
    EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_ERR_HPI_OUT_OF_SPACE);
    failCall(Call::lseek, EIO);
    EXPECT_EQ(zuSaHpiEventLogResetOverflow(), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "lseek on logfile to info record:Input/output error\n");
}

TEST_F(LogOperations, ResetOverflowMayBeForbidden) {
    EventLogControlBlock block = controlBlock(simple, drop, 5);
    block.info.sa.OverflowResetable = 0;
    start(block);
    EXPECT_EQ(zuSaHpiEventLogResetOverflow(), SA_ERR_HPI_INVALID_CMD);
    expectGuarded("reset log", zuSaHpiEventLogResetOverflow); // looked at first
}

TEST_F(LogOperations, ResetOverflowWithoutFileDoesNothing) {
    startWithoutFile();
    store.info.sa.OverflowResetable = 0;
    EXPECT_EQ(zuSaHpiEventLogResetOverflow(), SA_OK);
}

TEST_F(LogOperations, TimeIsKeptAsAnOffset) {
    start(simple, drop, 5);
    add(1);
    EXPECT_EQ(zuSaHpiEventLogTimeSet(0), SA_OK);
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 0);
    test_mainlib::state().timeOfDay += 3;
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 3);
    EXPECT_EQ(file().i64(64), -1'000'000'000);
    EXPECT_EQ(file().i64(16), 1'000'000'000); // UpdateTimestamp stays
    EXPECT_EQ(zuSaHpiEventLogTimeSet(LLONG_MAX), SA_OK);
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), LLONG_MAX);
}

TEST_F(LogOperations, NegativeTimesAreRefusedBeforeTheGuards) {
    start(simple, drop, 5);
    EventLogInfoRecord workingCopy;
    zusahpi::eventlog::beginTransaction(workingCopy);
    EXPECT_EQ(zuSaHpiEventLogTimeSet(-1), SA_ERR_HPI_INVALID_PARAMS);
    EXPECT_EQ(zuSaHpiEventLogTimeSet(SAHPI_TIME_UNSPECIFIED), SA_ERR_HPI_INVALID_PARAMS);
    EXPECT_EQ(diagnostics(), "");
    zusahpi::eventlog::abortTransaction();
    expectGuarded("set time", [] { return zuSaHpiEventLogTimeSet(5); });
}

TEST_F(LogOperations, TimeInATransactionIsThatOfItsWorkingCopy) {
    start(simple, drop, 5);
    EventLogInfoRecord workingCopy;
    zusahpi::eventlog::beginTransaction(workingCopy);
    workingCopy.timeOffset = 11;
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 1'000'000'011);
    workingCopy.sa.Enabled = 0;
    EXPECT_EQ(zuSaHpiEventLogStateGet(), SAHPI_FALSE);
    zusahpi::eventlog::abortTransaction();
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 1'000'000'000);
    EXPECT_EQ(zuSaHpiEventLogStateGet(), SAHPI_TRUE);
}

TEST_F(LogOperations, TimeAndStateReportSuccessWhenTheirCommitFails) {
    start(simple, drop, 5);
    failCall(Call::write, EIO);
    EXPECT_EQ(zuSaHpiEventLogTimeSet(5), SA_OK);
    EXPECT_EQ(diagnostics(), "write of info record to logfile:Input/output error\n");
    failCall(Call::write, EIO);
    EXPECT_EQ(zuSaHpiEventLogStateSet(0), SA_OK);
    EXPECT_EQ(diagnostics(), "write of info record to logfile:Input/output error\n");
}

TEST_F(LogOperations, TimeWithoutFileIsKeptInMemory) {
    startWithoutFile();
    EXPECT_EQ(zuSaHpiEventLogTimeSet(-5), SA_ERR_HPI_INVALID_PARAMS);
    EXPECT_EQ(zuSaHpiEventLogTimeSet(5), SA_OK);
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 5);
}

TEST_F(LogOperations, StateIsOnDiskUntilTheNextStart) {
    test_support::inChild([] {
        start(linked, wrap, 5);
        EXPECT_EQ(zuSaHpiEventLogStateSet(0), SA_OK);
        EXPECT_EQ(zuSaHpiEventLogStateGet(), SAHPI_FALSE);
        EXPECT_EQ(file().u8(32), 0);
        EXPECT_EQ(zuSaHpiEventLogStateSet(0x80), SA_OK);
        EXPECT_EQ(file().u8(32), 1);
        EXPECT_EQ(zuSaHpiEventLogStateGet(), SAHPI_TRUE);
        EXPECT_EQ(file().i64(16), 1'000'000'000);
        EXPECT_EQ(zuSaHpiEventLogStateSet(0), SA_OK);
    });
    start(linked, wrap, 5);
    EXPECT_EQ(zuSaHpiEventLogStateGet(), SAHPI_TRUE);
    expectGuarded("set state", [] { return zuSaHpiEventLogStateSet(1); });
}

TEST_F(LogOperations, ALogThatStillGoesToSyslogCountsAsEnabled) {
    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    block.syslogEnabled = 1;
    block.info.sa.Enabled = 0;
    start(block);
    EXPECT_EQ(zuSaHpiEventLogStateGet(), SAHPI_TRUE);
    store.syslogFollowsState = true;
    EXPECT_EQ(zuSaHpiEventLogStateGet(), SAHPI_FALSE);
}

TEST_F(LogOperations, StateWithoutFileIsKeptInMemory) {
    startWithoutFile();
    EXPECT_EQ(zuSaHpiEventLogStateSet(0), SA_OK);
    EXPECT_EQ(info().Enabled, 0);
    EXPECT_EQ(zuSaHpiEventLogStateSet(7), SA_OK);
    EXPECT_EQ(info().Enabled, 1);
}

TEST_F(LogOperations, ProtectSyncsNowAndAtEveryCommit) {
    start(circular, wrap, 5);
    recordCalls();
    EXPECT_EQ(zuSaHpiEventLogProtectSet(1), SA_OK);
    EXPECT_EQ(recordedCalls(), (Calls{"sync"}));
    recordCalls();
    add(1);
    EXPECT_EQ(recordedCalls().back(), "sync");
    recordCalls();
    EXPECT_EQ(zuSaHpiEventLogProtectSet(0), SA_OK);
    add(2);
    EXPECT_EQ(recordedCalls(), (Calls{"lseek 7560", "write 1496", "lseek 0", "write 80"}));
}

TEST_F(LogOperations, ALinkedLogNeedsNoProtection) {
    start(linked, wrap, 5);
    recordCalls();
    EXPECT_EQ(zuSaHpiEventLogProtectSet(1), SA_OK);
    EXPECT_TRUE(recordedCalls().empty());
    EXPECT_EQ(store.syncOnCommit, 0);
}

} // namespace
