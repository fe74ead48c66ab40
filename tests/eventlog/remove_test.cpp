// Deleting: what each type gives up, how links and ends move, and every refusal.

#include "eventlog/remove.h"

#include <cerrno>

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

class Remove : public StoreTest {
  protected:
    static void startWith(std::uint32_t type, int count, std::uint32_t size = 5) {
        start(type, type == simple ? drop : wrap, size);
        for (int seed = 1; seed <= count; ++seed) {
            add(static_cast<std::uint8_t>(seed));
        }
    }
    static SaErrorT remove(std::uint32_t id) {
        return zuSaHpiEventLogEntryDel(id, 0);
    }
    // Writes a changed record to the file behind the store's back, and empties the read cache.
    static void damage(const EventLogEntryRecord &record) {
        damage(record.entry.EntryId, record);
    }
    static void damage(std::uint32_t number, const EventLogEntryRecord &record) {
        FileImage image = file();
        image.setEntry(number, record);
        writeLog(image);
        for (EventLogEntryRecord &slot : store.readCache) {
            zusahpi::eventlog::emptySlot(slot);
        }
    }
};

TEST_F(Remove, NothingIsInAnEmptyLog) {
    for (const std::uint32_t type : {simple, circular, linked}) {
        test_support::inChild([type] {
            unlink(logPath().c_str());
            startWith(type, 0);
            EXPECT_EQ(remove(SAHPI_OLDEST_ENTRY), SA_ERR_HPI_NOT_PRESENT);
            EXPECT_EQ(remove(SAHPI_NEWEST_ENTRY), SA_ERR_HPI_NOT_PRESENT);
            EXPECT_EQ(remove(1), SA_ERR_HPI_NOT_PRESENT);
            EXPECT_EQ(store.transaction, nullptr);
        });
    }
}

TEST_F(Remove, WithoutFileNothingIsPresent) {
    EXPECT_EQ(remove(1), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(zuSaHpiEventLogEntryDel(1, 1), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(diagnostics(), "");
}

TEST_F(Remove, SimpleGivesUpItsNewest) {
    startWith(simple, 3);
    test_mainlib::state().timeOfDay += 9;
    recordCalls();
    EXPECT_EQ(remove(3), SA_OK);
    EXPECT_EQ(recordedCalls(), (Calls{"lseek 0", "write 80"})); // no record is written
    EXPECT_EQ(file().newest(), 2U);
    EXPECT_EQ(file().maxUsed(), 2U);
    EXPECT_EQ(file().entries(), 2U);
    EXPECT_EQ(file().i64(16), 1'000'000'009);
    EXPECT_EQ(remove(1), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnostics(),
              "Event log error: Attempt to delete non-newest entry in Simple-type log.\n");
    EXPECT_EQ(remove(3), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(remove(SAHPI_NEWEST_ENTRY), SA_OK);
    EXPECT_EQ(remove(SAHPI_OLDEST_ENTRY), SA_OK); // the only entry is both
    EXPECT_EQ(file().oldest(), none);
    EXPECT_EQ(file().newest(), none);
    EXPECT_EQ(file().maxUsed(), 0U);
    add(9);
    EXPECT_EQ(file().newest(), 1U);
}

TEST_F(Remove, CircularGivesUpItsEnds) {
    startWith(circular, 4);
    EXPECT_EQ(remove(2), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnosticPrints(),
              (Prints{"Attempt to delete non-end entry in ", "Circular-type log.\n"}));
    EXPECT_EQ(remove(1), SA_OK);
    EXPECT_EQ(remove(1), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(file().maxUsed(), 4U);
    EXPECT_EQ(remove(4), SA_OK);
    EXPECT_EQ(file().maxUsed(), 3U); // follows newest while the log has not wrapped
    EXPECT_EQ(seeds(), (std::vector<int>{2, 3}));
    EXPECT_EQ(remove(SAHPI_OLDEST_ENTRY), SA_OK);
    EXPECT_EQ(remove(SAHPI_NEWEST_ENTRY), SA_OK);
    EXPECT_EQ(file().maxUsed(), 0U);
    EXPECT_EQ(file().newest(), none);
    EXPECT_EQ(file().oldest(), none);
}

TEST_F(Remove, WrappedCircularKeepsItsMaxUsed) {
    startWith(circular, 4, 3); // entries 2, 3, 1
    EXPECT_EQ(remove(3), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnostics(), "Attempt to delete non-end entry in Circular-type log.\n");
    EXPECT_EQ(remove(2), SA_OK); // entries 3, 1
    EXPECT_EQ(file().oldest(), 3U);
    EXPECT_EQ(file().maxUsed(), 3U);
    EXPECT_EQ(remove(2), SA_ERR_HPI_NOT_PRESENT); // strictly between newest and oldest
    EXPECT_EQ(remove(1), SA_OK);                  // the newest: back across the seam
    EXPECT_EQ(file().newest(), 3U);
    EXPECT_EQ(file().maxUsed(), 3U);
    EXPECT_EQ(seeds(), (std::vector<int>{3}));
}

TEST_F(Remove, OldestOfAWrappedCircularWrapsAtMaxUsed) {
    startWith(circular, 5, 3); // entries 3, 1, 2
    EXPECT_EQ(file().oldest(), 3U);
    EXPECT_EQ(remove(3), SA_OK);
    EXPECT_EQ(file().oldest(), 1U);
    EXPECT_EQ(file().maxUsed(), 2U); // no longer wrapped
    EXPECT_EQ(seeds(), (std::vector<int>{4, 5}));
}

TEST_F(Remove, CircularWithOneEntryLeftEndsAtIt) {
    startWith(circular, 2);
    EXPECT_EQ(remove(SAHPI_NEWEST_ENTRY), SA_OK);
    EXPECT_EQ(file().newest(), 1U);
    EXPECT_EQ(file().maxUsed(), 1U);
}

// A ring that wrapped below its Size: the seam is at maxUsed, for both ends.
TEST_F(Remove, EndsOfACircularLogWrapAtMaxUsedNotAtSize) {
    const auto startOn = [](std::uint32_t oldest, std::uint32_t newest) {
        FileImage image;
        EventLogInfoRecord info = controlBlock(circular, wrap, 10).info;
        info.sa.Entries = 3;
        info.oldest = oldest;
        info.newest = newest;
        info.maxUsed = 5;
        image.setInfo(info);
        for (std::uint32_t number = 1; number <= 5; ++number) {
            image.setEntry(entryRecord(number, static_cast<std::uint8_t>(number)));
        }
        writeLog(image);
        start(circular, wrap, 10);
    };
    test_support::inChild([&] {
        startOn(4, 1);
        EXPECT_EQ(remove(SAHPI_NEWEST_ENTRY), SA_OK);
        EXPECT_EQ(file().newest(), 5U);
    });
    startOn(5, 2);
    EXPECT_EQ(remove(SAHPI_OLDEST_ENTRY), SA_OK);
    EXPECT_EQ(file().oldest(), 1U);
    EXPECT_EQ(file().maxUsed(), 2U);
}

TEST_F(Remove, LinkedUnlinksTheMiddle) {
    startWith(linked, 3);
    EXPECT_EQ(remove(2), SA_OK);
    const FileImage image = file();
    EXPECT_EQ(image.entry(1).next, 3U);
    EXPECT_EQ(image.entry(3).prev, 1U);
    EXPECT_EQ(image.entry(2).deleted, 1U);
    EXPECT_EQ(image.entry(2).prev, 1U); // as it was
    EXPECT_EQ(image.entry(2).next, none);
    EXPECT_EQ(image.freeHead(), 2U);
    EXPECT_EQ(image.maxUsed(), 3U);
    EXPECT_EQ(image.entries(), 2U);
    EXPECT_EQ(remove(2), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(diagnostics(), "");
}

TEST_F(Remove, LinkedGivesUpItsEndsAndKeepsAFreeList) {
    startWith(linked, 3);
    EXPECT_EQ(remove(SAHPI_OLDEST_ENTRY), SA_OK);
    EXPECT_EQ(file().oldest(), 2U);
    EXPECT_EQ(file().entry(2).prev, none);
    EXPECT_EQ(remove(SAHPI_NEWEST_ENTRY), SA_OK);
    EXPECT_EQ(file().newest(), 2U);
    EXPECT_EQ(file().entry(2).next, none);
    EXPECT_EQ(remove(2), SA_OK);
    EXPECT_EQ(file().oldest(), none);
    EXPECT_EQ(file().newest(), none);
    EXPECT_EQ(file().maxUsed(), 3U);
    EXPECT_EQ(file().freeHead(), 2U);
    EXPECT_EQ(file().entry(2).next, 3U);
    EXPECT_EQ(file().entry(3).next, 1U);
    EXPECT_EQ(file().entry(1).next, none);
    add(7); // the list is used from its head
    EXPECT_EQ(file().newest(), 2U);
    EXPECT_EQ(file().freeHead(), 3U);
}

TEST_F(Remove, NumbersCompareUnsigned) {
    startWith(linked, 2);
    EXPECT_EQ(remove(0x80000000), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(remove(0xFFFFFFFE), SA_ERR_HPI_NOT_PRESENT);
}

TEST_F(Remove, ForceWorksOnlyInATransactionAndLeavesItOpen) {
    startWith(linked, 3);
    EXPECT_EQ(zuSaHpiEventLogEntryDel(1, 1), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnostics(),
              "Event log error - force deleting an entry when no transaction is inprocess.\n");
    EventLogInfoRecord workingCopy;
    zusahpi::eventlog::beginTransaction(workingCopy);
    EXPECT_EQ(zuSaHpiEventLogEntryDel(1, 0x100), SA_OK);
    EXPECT_EQ(store.transaction, &workingCopy);
    EXPECT_EQ(workingCopy.oldest, 2U);
    EXPECT_EQ(file().oldest(), 1U);
    EXPECT_EQ(zuSaHpiEventLogEntryDel(9, 1), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(store.transaction, &workingCopy); // nothing is aborted either
    EXPECT_EQ(zusahpi::eventlog::commitTransaction(), SA_OK);
    EXPECT_EQ(file().oldest(), 2U);
}

TEST_F(Remove, GuardsRefuseACallInTheMiddleOfAnother) {
    startWith(linked, 2);
    EventLogInfoRecord workingCopy;
    zusahpi::eventlog::beginTransaction(workingCopy);
    EXPECT_EQ(remove(1), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnosticPrints(), Prints{"Event log error - attempt to delete an entry when "
                                         "transaction already in process.\n"});
    zusahpi::eventlog::abortTransaction();
    store.transactionCache[0] = entryRecord(1, 1);
    EXPECT_EQ(remove(1), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnosticPrints(), Prints{"Event log error - attempt to delete an entry when "
                                         "transaction cache is not empty.\n"});
}

TEST_F(Remove, BrokenLinksAreReportedAndChangeNothing) {
    startWith(linked, 3);
    const auto expectRefused = [](const Prints &message) {
        const std::string before = file().bytes;
        recordCalls();
        EXPECT_EQ(remove(2), SA_ERR_HPI_INTERNAL_ERROR);
        const Calls calls = recordedCalls();
        EXPECT_EQ(diagnosticPrints(), message);
        EXPECT_EQ(file().bytes, before);
        EXPECT_EQ(store.transaction, nullptr);
        return calls;
    };
    const Prints previousIsDeleted = {
        "Event log error - previous entry in active record is deleted.\n"};
    const Prints nextIsDeleted = {"Event log error - next entry in",
                                  " active record is deleted.\n"};
    damage(entryRecord(2, 2, none, 3));
    expectRefused({"Event log error - non-oldest record has no previous link\n"});
    damage(entryRecord(2, 2, 1, none));
    expectRefused({"Event log error - non-newest record has no next link\n"});

    EventLogEntryRecord deleted = entryRecord(1, 1, none, 2);
    deleted.deleted = 1;
    damage(entryRecord(2, 2, 1, 3));
    damage(deleted);
    expectRefused(previousIsDeleted);
    damage(entryRecord(1, 1, none, 2));
    deleted = entryRecord(3, 3, 2, none);
    deleted.deleted = 1;
    damage(deleted);
    expectRefused(nextIsDeleted);
    damage(entryRecord(3, 3, 2, none));

    // Not a record of the log: not present, without a look at the file.
    for (const std::uint32_t link : {0U, 4U, 6U, 0x80000000U, 0xFFFFFFFEU}) {
        damage(entryRecord(2, 2, link, 3));
        EXPECT_EQ(expectRefused(previousIsDeleted), (Calls{"lseek 7560", "read 1496"}));
        damage(entryRecord(2, 2, 1, link));
        EXPECT_EQ(expectRefused(nextIsDeleted),
                  (Calls{"lseek 7560", "read 1496", "lseek 6064", "read 1496"}));
    }
}

// Its own record, the one before and the one behind are written to the numbers that they bear.
TEST_F(Remove, RecordsWithAnotherNumberAreReportedAndChangeNothing) {
    for (const std::uint32_t damaged : {1U, 2U, 3U}) {
        for (const std::uint32_t number : {0U, damaged % 3 + 1, 77U, none}) {
            test_support::inChild([damaged, number] {
                startWith(linked, 3);
                const EventLogEntryRecord records[] = {entryRecord(1, 1, none, 2),
                                                       entryRecord(2, 2, 1, 3),
                                                       entryRecord(3, 3, 2, none)};
                EventLogEntryRecord other = records[damaged - 1];
                other.entry.EntryId = number;
                damage(damaged, other);
                const std::string before = file().bytes;
                EXPECT_EQ(remove(2), SA_ERR_HPI_INTERNAL_ERROR);
                EXPECT_EQ(diagnostics(), "Event log error - entry number does not fit the log\n");
                EXPECT_EQ(file().bytes, before);
                EXPECT_EQ(store.transaction, nullptr);
            });
            std::remove(logPath().c_str());
        }
    }
}

// A file may say that it has more records than its Size.
TEST_F(Remove, EntriesAboveTheSizeAreReported) {
    startWith(linked, 3);
    store.info.sa.Size = 2;
    EXPECT_EQ(remove(3), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnostics(), "Event log error - entry number does not fit the log\n");
    EXPECT_EQ(file().updating(), 0U);
}

TEST_F(Remove, FailedReadsAreNoResponse) {
    test_support::inChild([] { startWith(linked, 3); });
    start(linked, wrap, 5); // with an empty read cache
    const char *numbers[] = {"2", "1", "3"};
    for (int read = 0; read < 3; ++read) {
        for (EventLogEntryRecord &slot : store.readCache) {
            zusahpi::eventlog::emptySlot(slot);
        }
        failCall(Call::read, EIO, read);
        EXPECT_EQ(remove(2), SA_ERR_HPI_NO_RESPONSE);
        EXPECT_EQ(diagnostics(), "Error on read of logfile entry # " + std::string(numbers[read]) +
                                     ": Input/output error\n");
        EXPECT_EQ(store.transaction, nullptr);
    }
    EXPECT_EQ(remove(2), SA_OK);
}

TEST_F(Remove, UnknownTypeIsReported) {
    startWith(linked, 2);
    store.info.type = 7;
    EXPECT_EQ(remove(1), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnostics(), "Event log error: undefined log type.\n");
}

TEST_F(Remove, ACommitThatFailsGivesItsResult) {
    startWith(linked, 2);
    failCall(Call::write, EIO);
    EXPECT_EQ(remove(1), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "write of entry to transaction log:Input/output error\n");
    EXPECT_EQ(seeds(), (std::vector<int>{1, 2}));
}

} // namespace
