// The transaction engine: its cache, the phases of both commits call by call, and what every failed
// call leaves behind.

#include "eventlog/transaction.h"

#include <cerrno>
#include <cstring>
#include <ostream>

#include "eventlog/entry_io.h"
#include "eventlog/store_state.h"
#include "tests/eventlog/store_fixture.h"

using namespace store_test;
using namespace zusahpi::eventlog;
using test_support::Call;
using test_support::failCall;
using test_support::recordCalls;
using test_support::recordedCalls;

namespace {

using Calls = std::vector<std::string>;

class Transaction : public StoreTest {
  protected:
    // A transaction on a log of five entries that changes entries 1 to `records`.
    void open(std::uint32_t type, std::uint32_t records) {
        start(type, type == simple ? drop : wrap, 20);
        for (std::uint8_t seed = 1; seed <= 5; ++seed) {
            add(seed);
        }
        beginTransaction(workingCopy);
        for (std::uint32_t number = 1; number <= records; ++number) {
            ASSERT_EQ(writeEntry(entryRecord(number, static_cast<std::uint8_t>(0x70 + number))),
                      SA_OK);
        }
    }
    static int tagInFile(std::uint32_t number) {
        return file().entry(number).rpt.ResourceTag.Data[0];
    }
    static void expectIdle() {
        EXPECT_EQ(store.transaction, nullptr);
        EXPECT_EQ(store.transactionCache[0].entry.EntryId, none);
    }

    EventLogInfoRecord workingCopy{};
};

TEST_F(Transaction, WriteEntryOutsideOfOneIsRefused) {
    start(linked, wrap, 5);
    EXPECT_EQ(writeEntry(entryRecord(1, 1)), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnostics(), "Event log error: call to writeEntry outside of transaction.\n");
}

TEST_F(Transaction, FifthEntryOverflowsButTheSameEntryReplacesItsSlot) {
    open(linked, 4);
    EXPECT_EQ(writeEntry(entryRecord(3, 0x55)), SA_OK);
    EXPECT_EQ(store.transactionCache[2].rpt.ResourceTag.Data[0], 0x55);
    EXPECT_EQ(writeEntry(entryRecord(5, 1)), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnostics(), "Event log error - transaction cache overflow.\n");
    EXPECT_EQ(commitTransaction(), SA_OK);
    EXPECT_EQ(tagInFile(3), 0x55);
}

TEST_F(Transaction, ReadsSeeWhatIsNotYetWritten) {
    open(linked, 2);
    EventLogEntryRecord record;
    ASSERT_EQ(zuSaHpiEventLogEntryGet(2, &record), SA_OK);
    EXPECT_EQ(record.rpt.ResourceTag.Data[0], 0x72);
    EXPECT_EQ(tagInFile(2), 2);
    abortTransaction();
    ASSERT_EQ(zuSaHpiEventLogEntryGet(2, &record), SA_OK);
    EXPECT_EQ(record.rpt.ResourceTag.Data[0], 2);
}

// Slots behind the end mark hold records of earlier transactions: nothing may see them.
TEST_F(Transaction, StaleSlotsAreNeverRead) {
    open(linked, 4);
    abortTransaction();
    EventLogEntryRecord record;
    ASSERT_EQ(readEntry(2, record), SA_OK);
    EXPECT_EQ(record.rpt.ResourceTag.Data[0], 2);
    beginTransaction(workingCopy);
    ASSERT_EQ(writeEntry(entryRecord(1, 0x61)), SA_OK);
    ASSERT_EQ(readEntry(2, record), SA_OK);
    EXPECT_EQ(record.rpt.ResourceTag.Data[0], 2);
    ASSERT_EQ(commitTransaction(), SA_OK);
    EXPECT_EQ(tagInFile(1), 0x61);
    EXPECT_EQ(tagInFile(2), 2);
}

TEST_F(Transaction, LinkedCommitOfTwoWritesThreeSlotsInOneWrite) {
    open(linked, 2);
    recordCalls();
    ASSERT_EQ(commitTransaction(), SA_OK);
    EXPECT_EQ(recordedCalls(),
              (Calls{"lseek 80", "write 4488", "lseek 0", "write 80", "lseek 6064", "write 1496",
                     "lseek 7560", "write 1496", "lseek 0", "write 80"}));
    const FileImage image = file();
    EXPECT_EQ(image.slot(0).entry.EntryId, 1U);
    EXPECT_EQ(image.slot(1).entry.EntryId, 2U);
    EXPECT_EQ(image.slot(2).entry.EntryId, none);
    EXPECT_EQ(image.updating(), 0U);
    expectIdle();
}

TEST_F(Transaction, LinkedCommitOfFourWritesFourSlotsWithoutEndMark) {
    open(linked, 4);
    recordCalls();
    ASSERT_EQ(commitTransaction(), SA_OK);
    EXPECT_EQ(recordedCalls()[1], "write 5984");
    for (std::uint32_t slot = 0; slot < 4; ++slot) {
        EXPECT_EQ(file().slot(slot).entry.EntryId, slot + 1);
        EXPECT_EQ(tagInFile(slot + 1), static_cast<int>(0x71 + slot));
    }
}

TEST_F(Transaction, LinkedCommitWithoutRecordsStillWritesItsEndMarkAndFlag) {
    open(linked, 0);
    recordCalls();
    ASSERT_EQ(commitTransaction(), SA_OK);
    EXPECT_EQ(recordedCalls(),
              (Calls{"lseek 80", "write 1496", "lseek 0", "write 80", "lseek 0", "write 80"}));
    EXPECT_EQ(file().slot(0).entry.EntryId, none);
}

TEST_F(Transaction, SimpleCommitThatChangesNoInfoWritesNone) {
    open(simple, 1);
    recordCalls();
    ASSERT_EQ(commitTransaction(), SA_OK);
    EXPECT_EQ(recordedCalls(), (Calls{"lseek 6064", "write 1496"}));
    EXPECT_EQ(tagInFile(1), 0x71);
}

TEST_F(Transaction, SimpleCommitWritesRecordsBeforeTheInfo) {
    open(simple, 1);
    workingCopy.sa.OverflowFlag = 1;
    recordCalls();
    ASSERT_EQ(commitTransaction(), SA_OK);
    EXPECT_EQ(recordedCalls(), (Calls{"lseek 6064", "write 1496", "lseek 0", "write 80"}));
    EXPECT_EQ(file().overflowFlag(), 1);
}

TEST_F(Transaction, SyncOnCommitEndsEveryCommit) {
    open(circular, 1);
    store.syncOnCommit = 2;
    recordCalls();
    ASSERT_EQ(commitTransaction(), SA_OK);
    EXPECT_EQ(recordedCalls(), (Calls{"lseek 6064", "write 1496", "sync"}));
}

TEST_F(Transaction, CommitOfNoneIsRefused) {
    start(linked, wrap, 5);
    EXPECT_EQ(commitTransaction(), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnostics(), "Attempt to commit a transaction that is not there\n");
    expectIdle();
}

TEST_F(Transaction, RecordOutsideTheLogFailsTheCommit) {
    open(simple, 0);
    ASSERT_EQ(writeEntry(entryRecord(6, 1)), SA_OK);
    EXPECT_EQ(commitTransaction(), SA_ERR_HPI_INVALID_PARAMS);
    EXPECT_EQ(diagnostics(), "");
    expectIdle();
}

struct FailedCall {
    Call call;
    int skip;
    const char *message;
    bool flaggedInFile; // the file then waits for replay
    bool newInfoInMemory;

    friend void PrintTo(const FailedCall &failed, std::ostream *out) {
        *out << failed.message;
    }
};

class LinkedCommitFailure : public Transaction, public testing::WithParamInterface<FailedCall> {};

TEST_P(LinkedCommitFailure, IsReportedAndLeavesTheLogAsItSays) {
    const FailedCall &failed = GetParam();
    open(linked, 2);
    workingCopy.sa.OverflowFlag = 1;
    failCall(failed.call, EIO, failed.skip);
    EXPECT_EQ(commitTransaction(), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), failed.message);
    EXPECT_EQ(file().updating(), failed.flaggedInFile ? 1U : 0U);
    EXPECT_EQ(store.info.sa.OverflowFlag, failed.newInfoInMemory ? 1 : 0);
    expectIdle();

    // After a failure that has passed, the next operation works and takes the flag off the file.
    add(9);
    EXPECT_EQ(file().updating(), 0U);
    EventLogEntryRecord newest;
    ASSERT_EQ(zuSaHpiEventLogEntryGet(SAHPI_NEWEST_ENTRY, &newest), SA_OK);
    EXPECT_EQ(newest.rpt.ResourceTag.Data[0], 9);
}

INSTANTIATE_TEST_SUITE_P(
    EveryCall, LinkedCommitFailure,
    testing::Values(
        FailedCall{Call::lseek, 0, "lseek on logfile to transaction log area:Input/output error\n",
                   false, false},
        FailedCall{Call::write, 0, "write of entry to transaction log:Input/output error\n", false,
                   false},
        FailedCall{Call::lseek, 1,
                   "lseek on logfile to info record for flagging:Input/output error\n", false,
                   false},
        FailedCall{Call::write, 1, "write of flagged info record to logfile:Input/output error\n",
                   false, false},
        FailedCall{Call::lseek, 2,
                   "Error: lseek for writing event log entry # 1: Input/output error\n", true,
                   false},
        FailedCall{Call::write, 3, "Error: write of event log entry # 2: Input/output error\n",
                   true, false},
        FailedCall{Call::lseek, 4, "lseek on logfile to info record:Input/output error\n", true,
                   true},
        FailedCall{Call::write, 4, "write of info record to logfile:Input/output error\n", true,
                   true}));

TEST_F(Transaction, AFailureAfterTheFlagIsRepairedAtTheNextStart) {
    test_support::inChild([this] {
        open(linked, 2);
        failCall(Call::write, EIO, 3); // the second record in place
        EXPECT_EQ(commitTransaction(), SA_ERR_HPI_NO_RESPONSE);
        EXPECT_EQ(tagInFile(1), 0x71);
        EXPECT_EQ(tagInFile(2), 2);
        EXPECT_EQ(store.info.updating, 1U);
    });
    start(linked, wrap, 20);
    EXPECT_EQ(tagInFile(2), 0x72);
    EXPECT_EQ(file().updating(), 0U);
}

TEST_F(Transaction, AFailedRecordOfASimpleLogLeavesItsInfoAlone) {
    open(simple, 2);
    workingCopy.sa.OverflowFlag = 1;
    failCall(Call::write, EIO, 1);
    EXPECT_EQ(commitTransaction(), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "Error: write of event log entry # 2: Input/output error\n");
    EXPECT_EQ(tagInFile(1), 0x71); // written, and stays written
    EXPECT_EQ(file().overflowFlag(), 0);
    EXPECT_EQ(store.info.sa.OverflowFlag, 0);
    expectIdle();
}

TEST_F(Transaction, AWriteThatStopsShortIsContinued) {
    open(linked, 2);
    test_support::cutNextWrite(1000);
    recordCalls();
    ASSERT_EQ(commitTransaction(), SA_OK);
    const Calls calls = recordedCalls();
    EXPECT_EQ(calls[1], "write 4488");
    EXPECT_EQ(calls[2], "write 3488");
    EXPECT_EQ(file().slot(1).rpt.ResourceTag.Data[0], 0x72);
}

TEST_F(Transaction, OneInTheMiddleOfAnotherIsHindered) {
    start(linked, wrap, 5);
    EXPECT_EQ(hindrance(), nullptr);
    beginTransaction(workingCopy);
    EXPECT_STREQ(hindrance(), "transaction already in process.\n");
    store.transaction = nullptr;
    store.transactionCache[0] = entryRecord(1, 1);
    EXPECT_STREQ(hindrance(), "transaction cache is not empty.\n");
    emptySlot(store.transactionCache[0]);
    EXPECT_EQ(hindrance(), nullptr);
}

} // namespace
