// Entry records between memory and file: the read cache, the range check of the in-place write, and
// every message of a call that fails.

#include "eventlog/entry_io.h"

#include <cerrno>
#include <cstring>

#include "eventlog/store_state.h"
#include "tests/eventlog/store_fixture.h"

using namespace store_test;
using namespace zusahpi::eventlog;
using test_support::Call;
using test_support::failCall;
using test_support::recordCalls;
using test_support::recordedCalls;

namespace {

class EntryIo : public StoreTest {
  protected:
    static SaErrorT read(std::uint32_t number) {
        EventLogEntryRecord record;
        return readEntry(number, record);
    }
    // A Linked log of `count` entries with an empty read cache.
    static void startWith(std::uint8_t count) {
        test_support::inChild([count] {
            start(linked, wrap, 20);
            for (std::uint8_t seed = 1; seed <= count; ++seed) {
                add(seed);
            }
        });
        start(linked, wrap, 20);
    }
};

TEST_F(EntryIo, AnUncachedReadIsASeekAndARead) {
    startWith(5);
    recordCalls();
    EXPECT_EQ(read(2), SA_OK);
    EXPECT_EQ(recordedCalls(), (std::vector<std::string>{"lseek 7560", "read 1496"}));
    recordCalls();
    EXPECT_EQ(read(2), SA_OK);
    EXPECT_TRUE(recordedCalls().empty());
}

TEST_F(EntryIo, TheCacheHoldsTheFourRecordsReadLast) {
    startWith(6);
    for (const std::uint32_t number : {1, 2, 3, 4, 5}) { // 5 takes the place of 1
        EXPECT_EQ(read(number), SA_OK);
    }
    recordCalls();
    for (const std::uint32_t number : {2, 3, 4, 5}) {
        EXPECT_EQ(read(number), SA_OK);
    }
    EXPECT_TRUE(recordedCalls().empty());
    recordCalls();
    EXPECT_EQ(read(1), SA_OK);
    EXPECT_EQ(recordedCalls().size(), 2U);
    recordCalls();
    EXPECT_EQ(read(3), SA_OK); // 1 took the place of 2
    EXPECT_TRUE(recordedCalls().empty());
}

// In the cache it would be found as the entry that it says it is.
TEST_F(EntryIo, ARecordWithAnotherNumberIsReadButNotCached) {
    startWith(3);
    const EventLogEntryRecord own = file().entry(2);
    FileImage image = file();
    EventLogEntryRecord other = image.entry(3);
    other.entry.EntryId = 2;
    image.setEntry(3, other);
    writeLog(image);
    EventLogEntryRecord record;
    EXPECT_EQ(readEntry(3, record), SA_OK);
    EXPECT_TRUE(equalBytes(&record, &other, sizeof record));
    EXPECT_EQ(readEntry(2, record), SA_OK);
    EXPECT_TRUE(equalBytes(&record, &own, sizeof record));
}

TEST_F(EntryIo, AWriteInPlaceUpdatesTheCachedRecord) {
    startWith(3);
    EXPECT_EQ(read(2), SA_OK);
    ASSERT_EQ(writeEntryInPlace(entryRecord(2, 0x77)), SA_OK);
    EventLogEntryRecord record;
    recordCalls();
    ASSERT_EQ(readEntry(2, record), SA_OK);
    EXPECT_TRUE(recordedCalls().empty());
    EXPECT_EQ(record.rpt.ResourceTag.Data[0], 0x77);
    EXPECT_EQ(file().entry(2).rpt.ResourceTag.Data[0], 0x77);
    int slotsOfEntry = 0;
    for (const EventLogEntryRecord &slot : store.readCache) {
        slotsOfEntry += slot.entry.EntryId == 2 ? 1 : 0;
    }
    EXPECT_EQ(slotsOfEntry, 1);
}

TEST_F(EntryIo, AWriteInPlaceFillsTheNextCacheSlot) {
    startWith(3);
    EXPECT_EQ(store.readCacheCursor, -1);
    ASSERT_EQ(writeEntryInPlace(entryRecord(3, 0x77)), SA_OK);
    EXPECT_EQ(store.readCacheCursor, 0);
    EXPECT_EQ(store.readCache[0].entry.EntryId, 3U);
}

TEST_F(EntryIo, AWriteOutsideTheLogIsRefusedWithoutAMessage) {
    startWith(3);
    for (const std::uint32_t number : {0U, 4U, 0x80000000U, 0xFFFFFFFEU}) {
        EXPECT_EQ(writeEntryInPlace(entryRecord(number, 1)), SA_ERR_HPI_INVALID_PARAMS) << number;
    }
    store.info.sa.Size = 2;
    EXPECT_EQ(writeEntryInPlace(entryRecord(3, 1)), SA_ERR_HPI_INVALID_PARAMS);
    EXPECT_EQ(writeEntryInPlace(entryRecord(2, 1)), SA_OK);
    EXPECT_EQ(diagnostics(), "");
}

TEST_F(EntryIo, InATransactionTheWorkingCopyDecidesTheRange) {
    startWith(3);
    EventLogInfoRecord workingCopy = store.info;
    workingCopy.maxUsed = 4;
    store.transaction = &workingCopy;
    EXPECT_EQ(writeEntryInPlace(entryRecord(4, 1)), SA_OK);
    store.transaction = nullptr;
    EXPECT_EQ(writeEntryInPlace(entryRecord(4, 1)), SA_ERR_HPI_INVALID_PARAMS);
}

TEST_F(EntryIo, FailedReadsAreReportedAndCacheNothing) {
    startWith(5);
    failCall(Call::lseek, EIO);
    EXPECT_EQ(read(4), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "Error on lseek of logfile to entry # 4: Input/output error\n");
    failCall(Call::read, EIO);
    EXPECT_EQ(read(4), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "Error on read of logfile entry # 4: Input/output error\n");
    ASSERT_EQ(ftruncate(store.fd, 6064 + 3 * 1496 + 100), 0);
    EXPECT_EQ(read(4), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "Read of logfile entry # 4 read only 100 bytes\n");
    EXPECT_EQ(store.readCacheCursor, -1);
    EXPECT_EQ(read(3), SA_OK);
}

TEST_F(EntryIo, AFailedReadLeavesTheOutputAlone) {
    startWith(5);
    EventLogEntryRecord record;
    std::memset(&record, 0x11, sizeof record);
    failCall(Call::read, EIO);
    EXPECT_EQ(readEntry(4, record), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(record.entry.EntryId, 0x11111111U);
}

TEST_F(EntryIo, AFailedWriteIsReportedAndEmptiesItsCacheSlot) {
    startWith(3);
    EXPECT_EQ(read(2), SA_OK);
    failCall(Call::lseek, EIO);
    EXPECT_EQ(writeEntryInPlace(entryRecord(2, 0x77)), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "Error: lseek for writing event log entry # 2: Input/output error\n");
    EXPECT_EQ(store.readCache[0].entry.EntryId, none);
    EventLogEntryRecord record;
    ASSERT_EQ(readEntry(2, record), SA_OK);
    EXPECT_EQ(record.rpt.ResourceTag.Data[0], 2); // from the file

    failCall(Call::write, ENOSPC);
    EXPECT_EQ(writeEntryInPlace(entryRecord(2, 0x77)), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "Error: write of event log entry # 2: No space left on device\n");
    ASSERT_EQ(readEntry(2, record), SA_OK);
    EXPECT_EQ(record.rpt.ResourceTag.Data[0], 2);
}

TEST_F(EntryIo, AShortWriteInPlaceIsNotDetected) {
    startWith(3);
    test_support::cutNextWrite(100);
    EXPECT_EQ(writeEntryInPlace(entryRecord(2, 0x77)), SA_OK);
    EXPECT_EQ(diagnostics(), "");
}

TEST_F(EntryIo, AChangedRecordIsReadBeforeItIsWritten) {
    startWith(3);
    store.transactionCache[0] = entryRecord(2, 0x77);
    emptySlot(store.transactionCache[1]);
    store.transactionCache[2] = entryRecord(3, 0x78); // behind the end mark
    EventLogEntryRecord record;
    ASSERT_EQ(readEntry(2, record), SA_OK);
    EXPECT_EQ(record.rpt.ResourceTag.Data[0], 0x77);
    ASSERT_EQ(readEntry(3, record), SA_OK);
    EXPECT_EQ(record.rpt.ResourceTag.Data[0], 3);
    for (EventLogEntryRecord &slot : store.transactionCache) {
        slot = entryRecord(2, 0x79); // no end mark
    }
    ASSERT_EQ(readEntry(1, record), SA_OK);
    EXPECT_EQ(record.rpt.ResourceTag.Data[0], 1);
    emptySlot(store.transactionCache[0]);
}

} // namespace
