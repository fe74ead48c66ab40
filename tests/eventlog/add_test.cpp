// Adding: numbers by type, every overflow action, links, refusals and their messages, forwarding.

#include <cerrno>
#include <cstring>
#include <ostream>

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

class Add : public StoreTest {
  protected:
    static SaErrorT tryAdd(std::uint8_t seed, int force = 0) {
        const EventLogAddRecord record = event(seed);
        return zuSaHpiEventLogEntryAdd(&record, force);
    }
    static void addAll(int count) {
        for (int seed = 1; seed <= count; ++seed) {
            add(static_cast<std::uint8_t>(seed));
        }
    }
    // Starts on a file whose info record says what `change` makes of it.
    template <typename Change>
    static void startDamaged(std::uint32_t type, std::uint32_t action, Change change) {
        FileImage image;
        EventLogInfoRecord info = controlBlock(type, action, 5).info;
        info.sa.Entries = 2;
        info.oldest = 1;
        info.newest = 2;
        info.maxUsed = 2;
        change(info);
        image.setInfo(info);
        image.setEntry(entryRecord(1, 1, none, 2));
        image.setEntry(entryRecord(2, 2, 1, none));
        writeLog(image);
        start(type, action, 5);
        store.info.type = info.type; // an unknown type would not survive the start
        store.info.overflowAction = info.overflowAction;
    }
};

TEST_F(Add, SimpleNumbersRiseAndDropRefuses) {
    start(simple, drop, 3);
    addAll(3);
    EXPECT_EQ(tryAdd(4), SA_ERR_HPI_OUT_OF_SPACE);
    EXPECT_EQ(seeds(), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(file().overflowFlag(), 1);
    EXPECT_EQ(file().entries(), 3U);
    EXPECT_EQ(diagnostics(), "");
}

TEST_F(Add, ASecondRefusedAddWritesNothing) {
    for (const std::uint32_t type : {simple, circular}) {
        test_support::inChild([type] {
            unlink(logPath().c_str());
            start(type, drop, 2);
            addAll(2);
            recordCalls();
            EXPECT_EQ(tryAdd(3), SA_ERR_HPI_OUT_OF_SPACE);
            EXPECT_EQ(recordedCalls(), (Calls{"lseek 0", "write 80"}));
            recordCalls();
            EXPECT_EQ(tryAdd(3), SA_ERR_HPI_OUT_OF_SPACE);
            EXPECT_TRUE(recordedCalls().empty());
        });
    }
}

TEST_F(Add, ARefusedAddToALinkedLogStillCommits) {
    start(linked, drop, 1);
    addAll(1);
    EXPECT_EQ(tryAdd(2), SA_ERR_HPI_OUT_OF_SPACE);
    recordCalls();
    EXPECT_EQ(tryAdd(2), SA_ERR_HPI_OUT_OF_SPACE);
    EXPECT_EQ(recordedCalls(),
              (Calls{"lseek 80", "write 1496", "lseek 0", "write 80", "lseek 0", "write 80"}));
}

TEST_F(Add, ARefusalDoesNotMoveTheUpdateTime) {
    start(simple, drop, 1);
    addAll(1);
    test_mainlib::state().timeOfDay += 50;
    EXPECT_EQ(tryAdd(2), SA_ERR_HPI_OUT_OF_SPACE);
    EXPECT_EQ(file().i64(16), 1'000'000'000);
}

TEST_F(Add, ARefusalStandsWhenItsCommitFails) {
    start(simple, drop, 1);
    addAll(1);
    failCall(Call::write, EIO);
    EXPECT_EQ(tryAdd(2), SA_ERR_HPI_OUT_OF_SPACE);
    EXPECT_EQ(diagnostics(), "write of info record to logfile:Input/output error\n");
}

TEST_F(Add, SimpleWriteLastReplacesTheNewest) {
    start(simple, writeLast, 3);
    addAll(4);
    EXPECT_EQ(seeds(), (std::vector<int>{1, 2, 4}));
    EXPECT_EQ(file().newest(), 3U);
    EXPECT_EQ(file().overflowFlag(), 1);
}

TEST_F(Add, SimpleWithWrapCannotMakeRoom) {
    start(simple, wrap, 2);
    addAll(2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(tryAdd(3), SA_ERR_HPI_INTERNAL_ERROR);
        EXPECT_EQ(diagnostics(),
                  "Event log error: Attempt to delete non-newest entry in Simple-type log.\n"
                  "Event log error - unable to delete oldest entry\n");
    }
    EXPECT_EQ(file().overflowFlag(), 0); // aborted
    EXPECT_EQ(seeds(), (std::vector<int>{1, 2}));
}

TEST_F(Add, CircularWrapOverwritesTheOldest) {
    start(circular, wrap, 3);
    addAll(4);
    EXPECT_EQ(file().oldest(), 2U);
    EXPECT_EQ(file().newest(), 1U);
    EXPECT_EQ(file().maxUsed(), 3U);
    EXPECT_EQ(seeds(), (std::vector<int>{2, 3, 4}));
    addAll(7);
    EXPECT_EQ(seeds(), (std::vector<int>{5, 6, 7}));
    EXPECT_EQ(file().bytes.size(), 6064U + 3 * 1496);
}

TEST_F(Add, CircularWriteLastAndDrop) {
    test_support::inChild([] {
        start(circular, writeLast, 3);
        addAll(5);
        EXPECT_EQ(seeds(), (std::vector<int>{1, 2, 5}));
    });
    start(circular, drop, 3);
    EXPECT_EQ(tryAdd(6), SA_ERR_HPI_OUT_OF_SPACE);
    EXPECT_EQ(seeds(), (std::vector<int>{1, 2, 5}));
}

TEST_F(Add, LogsOfSizeOneWork) {
    for (const std::uint32_t type : {circular, linked}) {
        for (const std::uint32_t action : {wrap, writeLast}) {
            test_support::inChild([=] {
                unlink(logPath().c_str());
                start(type, action, 1);
                addAll(3);
                EXPECT_EQ(seeds(), (std::vector<int>{3})) << type << action;
                EXPECT_EQ(file().entries(), 1U);
                EXPECT_EQ(file().newest(), 1U);
                EXPECT_EQ(file().oldest(), 1U);
            });
        }
    }
}

TEST_F(Add, LinkedChainsItsEntries) {
    start(linked, wrap, 5);
    addAll(3);
    const FileImage image = file();
    EXPECT_EQ(image.entry(1).prev, none);
    EXPECT_EQ(image.entry(1).next, 2U);
    EXPECT_EQ(image.entry(2).prev, 1U);
    EXPECT_EQ(image.entry(2).next, 3U);
    EXPECT_EQ(image.entry(3).prev, 2U);
    EXPECT_EQ(image.entry(3).next, none);
}

TEST_F(Add, LinkedReusesDeletedNumbers) {
    start(linked, wrap, 5);
    addAll(3);
    ASSERT_EQ(zuSaHpiEventLogEntryDel(2, 0), SA_OK);
    EXPECT_EQ(file().freeHead(), 2U);
    add(4);
    EXPECT_EQ(seeds(), (std::vector<int>{1, 3, 4}));
    EXPECT_EQ(file().newest(), 2U);
    EXPECT_EQ(file().freeHead(), none);
    EXPECT_EQ(file().entry(2).prev, 3U);
    EXPECT_EQ(file().maxUsed(), 3U);
    EXPECT_EQ(file().entry(2).deleted, 0U);
}

TEST_F(Add, LinkedWrapAndWriteLast) {
    test_support::inChild([] {
        start(linked, wrap, 3);
        addAll(5);
        EXPECT_EQ(seeds(), (std::vector<int>{3, 4, 5}));
        EXPECT_EQ(file().freeHead(), none);
    });
    start(linked, writeLast, 3);
    add(6);
    EXPECT_EQ(seeds(), (std::vector<int>{3, 4, 6}));
    EXPECT_EQ(file().overflowFlag(), 1);
}

TEST_F(Add, DurableAddCostsFiveWrites) {
    start(linked, wrap, 5);
    recordCalls();
    add(1); // no newest entry yet
    EXPECT_EQ(recordedCalls(), (Calls{"lseek 80", "write 2992", "lseek 0", "write 80", "lseek 6064",
                                      "write 1496", "lseek 0", "write 80"}));
    recordCalls();
    add(2);
    EXPECT_EQ(recordedCalls(),
              (Calls{"lseek 80", "write 4488", "lseek 0", "write 80", "lseek 7560", "write 1496",
                     "lseek 6064", "write 1496", "lseek 0", "write 80"}));
}

TEST_F(Add, PlainAddCostsTwoSeeksAndTwoWrites) {
    start(circular, wrap, 2);
    addAll(2);
    recordCalls();
    add(3);
    EXPECT_EQ(recordedCalls(), (Calls{"lseek 6064", "write 1496", "lseek 0", "write 80"}));
}

TEST_F(Add, EntryCarriesTheLogTimeAndTheEventItsOwn) {
    start(linked, wrap, 5);
    ASSERT_EQ(zuSaHpiEventLogTimeSet(700), SA_OK);
    test_mainlib::state().timeOfDay += 5;
    EventLogAddRecord record = userEvent(3);
    record.event.Timestamp = 12345;
    ASSERT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_OK);
    EXPECT_EQ(file().entry(1).entry.Timestamp, 705);
    EXPECT_EQ(file().entry(1).entry.Event.Timestamp, 12345);
    EXPECT_EQ(file().i64(16), 705);
}

TEST_F(Add, UserEventsUpToTheLimitAreTaken) {
    EventLogControlBlock block = controlBlock(simple, drop, 1);
    block.info.sa.UserEventMaxSize = 10;
    start(block);
    EventLogAddRecord record = userEvent(10);
    EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_OK);
    record = userEvent(11);
    // The log is full by now: the length is looked at first, so no overflow is recorded.
    EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_ERR_HPI_INVALID_DATA);
    EXPECT_EQ(file().overflowFlag(), 0);
    EXPECT_EQ(diagnostics(), "");
    record.event.EventType = SAHPI_ET_OEM; // only user events are limited
    EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_ERR_HPI_OUT_OF_SPACE);
}

TEST_F(Add, GuardsComeBeforeTheLengthOfAUserEvent) {
    EventLogControlBlock block = controlBlock(simple, drop, 1);
    block.info.sa.UserEventMaxSize = 0;
    start(block);
    EventLogInfoRecord workingCopy;
    zusahpi::eventlog::beginTransaction(workingCopy);
    const EventLogAddRecord record = userEvent(1);
    EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnosticPrints(), (Prints{"Event log error - attempt to add an entry when ",
                                          "transaction already in process.\n"}));
    zusahpi::eventlog::abortTransaction();
    store.transactionCache[0] = entryRecord(1, 1);
    EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnosticPrints(), (Prints{"Event log error - attempt to add an entry when ",
                                          "transaction cache is not empty.\n"}));
}

TEST_F(Add, ADisabledLogDropsSilentlyUnlessForced) {
    start(linked, wrap, 5);
    ASSERT_EQ(zuSaHpiEventLogStateSet(0), SA_OK);
    EXPECT_EQ(tryAdd(1), SA_OK);
    EXPECT_EQ(file().entries(), 0U);
    EXPECT_EQ(tryAdd(2, 0x100), SA_OK);
    EXPECT_EQ(seeds(), (std::vector<int>{2}));
}

TEST_F(Add, WithoutFileNothingIsStored) {
    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    block.fileEnabled = 0;
    start(block);
    EXPECT_EQ(tryAdd(1, 1), SA_OK);
    SaHpiEventLogInfoT info;
    (void)zuSaHpiEventLogInfoGet(&info);
    EXPECT_EQ(info.Entries, 0U);
}

TEST_F(Add, SizeZeroIsAlwaysFull) {
    start(linked, wrap, 0);
    EXPECT_EQ(tryAdd(1), SA_ERR_HPI_OUT_OF_SPACE);
    EXPECT_EQ(file().overflowFlag(), 1);
    EXPECT_EQ(diagnostics(), "");
}

struct Forwarding {
    bool syslogEnabled;
    bool followsState;
    bool enabled;
    int force;
    std::size_t lines;

    friend void PrintTo(const Forwarding &wanted, std::ostream *out) {
        *out << wanted.syslogEnabled << wanted.followsState << wanted.enabled << wanted.force;
    }
};

class AddForwarding : public Add, public testing::WithParamInterface<Forwarding> {};

TEST_P(AddForwarding, GoesOutUnlessTheStateIsFollowed) {
    const Forwarding &wanted = GetParam();
    for (const std::uint32_t fileEnabled : {0U, 1U}) {
        test_support::inChild([&] {
            EventLogControlBlock block = controlBlock(simple, drop, 0); // every add is refused
            block.fileEnabled = fileEnabled;
            block.syslogEnabled = wanted.syslogEnabled ? 1 : 0;
            block.syslogFollowsState = wanted.followsState ? 1 : 0;
            block.info.sa.Enabled = wanted.enabled ? 1 : 0;
            start(block);
            const EventLogAddRecord record = userEvent(3);
            (void)zuSaHpiEventLogEntryAdd(&record, wanted.force);
            EXPECT_EQ(test_mainlib::state().syslog.size(), wanted.lines) << fileEnabled;
        });
    }
}

INSTANTIATE_TEST_SUITE_P(
    EverySwitch, AddForwarding,
    testing::Values(Forwarding{false, false, true, 1, 0}, Forwarding{true, false, true, 0, 1},
                    Forwarding{true, false, false, 0, 1}, Forwarding{true, true, true, 0, 1},
                    Forwarding{true, true, false, 0, 0}, Forwarding{true, true, false, 1, 1}));

TEST_F(Add, MoreEntriesThanSizeIsReported) {
    startDamaged(linked, wrap, [](EventLogInfoRecord &info) { info.sa.Entries = 6; });
    EXPECT_EQ(tryAdd(3), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnostics(), "Event log error - reporting more entries than size\n");
    EXPECT_EQ(store.transaction, nullptr);
}

TEST_F(Add, UnknownOverflowActionIsReported) {
    startDamaged(linked, wrap, [](EventLogInfoRecord &info) {
        info.sa.Entries = 5;
        info.overflowAction = 3;
    });
    EXPECT_EQ(tryAdd(3), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnostics(), "Event log error - unknown overflow action.\n");
    EXPECT_EQ(store.info.sa.OverflowFlag, 0);
}

TEST_F(Add, UnknownTypeIsReported) {
    startDamaged(linked, wrap, [](EventLogInfoRecord &) {});
    store.info.type = 3;
    EXPECT_EQ(tryAdd(3), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnostics(), "Event log error - unknown log type.\n");
    store.info.sa.Entries = 5;
    EXPECT_EQ(tryAdd(3), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnostics(), "Event log error: undefined log type.\n"
                             "Event log error - unable to delete oldest entry\n");
}

TEST_F(Add, FailedWriteLastDeleteNamesTheNewest) {
    startDamaged(simple, writeLast, [](EventLogInfoRecord &info) {
        info.sa.Entries = 5;
        info.newest = none;
    });
    EXPECT_EQ(tryAdd(3), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnostics(), "Event log error - unable to delete newest entry\n");
}

TEST_F(Add, AFailedReadWhileMakingRoomIsNoResponse) {
    startDamaged(linked, wrap, [](EventLogInfoRecord &info) { info.sa.Entries = 5; });
    failCall(Call::read, EIO);
    EXPECT_EQ(tryAdd(3), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "Error on read of logfile entry # 1: Input/output error\n");
}

TEST_F(Add, AFreeListThatHoldsAnActiveEntryIsReported) {
    startDamaged(linked, wrap, [](EventLogInfoRecord &info) { info.freeHead = 1; });
    EXPECT_EQ(tryAdd(3), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(diagnostics(), "Event log error - entry read off free list was not marked deleted\n");
}

TEST_F(Add, AnUnreadableFreeListIsNoResponse) {
    startDamaged(linked, wrap, [](EventLogInfoRecord &info) { info.freeHead = 2; });
    failCall(Call::read, EIO);
    EXPECT_EQ(tryAdd(3), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "Error on read of logfile entry # 2: Input/output error\n");
}

TEST_F(Add, NumbersOutsideTheLogAreReported) {
    for (const std::uint32_t head : {0U, 3U, 4U, 0x80000000U, 0xFFFFFFFEU}) {
        test_support::inChild([head] {
            startDamaged(linked, wrap, [head](EventLogInfoRecord &info) { info.freeHead = head; });
            EXPECT_EQ(tryAdd(3), SA_ERR_HPI_INTERNAL_ERROR);
            EXPECT_EQ(diagnostics(), "Event log error - new entryId out of range\n") << head;
        });
    }
    test_support::inChild([] {
        startDamaged(linked, wrap, [](EventLogInfoRecord &) {});
        store.info.sa.Size = 0xFFFFFFFF;
        store.info.maxUsed = 0xFFFFFFFF; // the number after it would be 0
        EXPECT_EQ(tryAdd(3), SA_ERR_HPI_INTERNAL_ERROR);
        store.info.maxUsed = 0xFFFFFFFE; // the number after it would mean "no entry"
        EXPECT_EQ(tryAdd(3), SA_ERR_HPI_INTERNAL_ERROR);
        EXPECT_EQ(diagnostics(), "Event log error - new entryId out of range\n"
                                 "Event log error - new entryId out of range\n");
    });
    test_support::inChild([] {
        startDamaged(linked, wrap, [](EventLogInfoRecord &) {});
        store.info.sa.Size = 2; // as many as are used, but the log is not full
        store.info.sa.Entries = 1;
        EXPECT_EQ(tryAdd(3), SA_ERR_HPI_INTERNAL_ERROR);
        EXPECT_EQ(diagnostics(), "Event log error - new entryId out of range\n");
    });
    startDamaged(simple, drop, [](EventLogInfoRecord &info) { info.newest = 3; });
    EXPECT_EQ(tryAdd(3), SA_ERR_HPI_INTERNAL_ERROR); // maxUsed is 2
    EXPECT_EQ(diagnostics(), "Event log error - new entryId out of range\n");
}

// What is written of the newest entry would go to the number that its record bears: to another
// entry's place, or to none, and then at every later start again.
TEST_F(Add, ANewestEntryWithAnotherNumberIsReportedAndChangesNothing) {
    for (const std::uint32_t number : {0U, 1U, 77U, none}) {
        test_support::inChild([number] {
            startDamaged(linked, wrap, [](EventLogInfoRecord &) {});
            FileImage image = file();
            image.setEntry(2, entryRecord(number, 2, 1, none));
            writeLog(image);
            EXPECT_EQ(tryAdd(3), SA_ERR_HPI_INTERNAL_ERROR);
            EXPECT_EQ(diagnostics(), "Event log error - entry number does not fit the log\n");
            EXPECT_EQ(file().bytes, image.bytes);
            EXPECT_EQ(store.transaction, nullptr);
            EventLogEntryRecord oldest;
            EXPECT_EQ(zuSaHpiEventLogEntryGet(1, &oldest), SA_OK);
            EXPECT_EQ(oldest.entry.EntryId, 1U);
            EXPECT_EQ(zuSaHpiEventLogClear(), SA_OK);
            EXPECT_EQ(tryAdd(3), SA_OK);
        });
        std::remove(logPath().c_str());
    }
}

TEST_F(Add, ADeletedNewestEntryTakesNoSuccessor) {
    startDamaged(linked, wrap, [](EventLogInfoRecord &) {});
    FileImage image = file();
    EventLogEntryRecord newest = image.entry(2);
    newest.deleted = 1;
    image.setEntry(newest);
    writeLog(image);
    EXPECT_EQ(tryAdd(3), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "");
    EXPECT_EQ(file().bytes, image.bytes);
    EXPECT_EQ(store.transaction, nullptr);
}

// It is not present, which is known without a look at the file.
TEST_F(Add, ANewestEntryBeyondTheLogTakesNoSuccessor) {
    startDamaged(linked, wrap, [](EventLogInfoRecord &) {});
    for (const std::uint32_t newest : {3U, 5U, 6U, 0xFFFFFFFEU}) {
        store.info.newest = newest;
        recordCalls();
        EXPECT_EQ(tryAdd(3), SA_ERR_HPI_NO_RESPONSE);
        EXPECT_EQ(recordedCalls(), Calls{});
        EXPECT_EQ(diagnostics(), "");
        EXPECT_EQ(store.transaction, nullptr);
    }
}

TEST_F(Add, AnUnreadableNewestIsNoResponse) {
    startDamaged(linked, wrap, [](EventLogInfoRecord &) {});
    failCall(Call::read, EIO);
    EXPECT_EQ(tryAdd(3), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "Error on read of logfile entry # 2: Input/output error\n");
    EXPECT_EQ(tryAdd(3), SA_OK);
}

} // namespace
