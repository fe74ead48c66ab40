// A commit to a Linked log that failed once it had begun to flag its transaction: the next change
// in the same process finishes it first, by these calls, with these messages when it cannot.

#include <cerrno>
#include <csignal>
#include <functional>
#include <ostream>

#include <sys/resource.h>

#include "eventlog/recovery.h"
#include "eventlog/store_state.h"
#include "eventlog/transaction.h"
#include "tests/eventlog/store_fixture.h"

using namespace store_test;
using namespace zusahpi::eventlog;
using test_support::Call;
using test_support::failCall;
using test_support::recordCalls;
using test_support::recordedCalls;

namespace {

using Calls = std::vector<std::string>;

class WaitingCommit : public StoreTest {
  protected:
    // A full log of 1, 2, 3 whose add of 4 wrote its flag, but not its second record: it deleted 1,
    // changed 2 and linked the new record behind 3.
    static void failAdd() {
        start(linked, wrap, 3);
        for (std::uint8_t seed = 1; seed <= 3; ++seed) {
            add(seed);
        }
        const EventLogAddRecord record = event(4);
        failCall(Call::write, EIO, 3);
        EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_ERR_HPI_NO_RESPONSE);
        EXPECT_EQ(diagnostics(), "Error: write of event log entry # 1: Input/output error\n");
        EXPECT_EQ(file().updating(), 1U);
    }
    static const Calls finishingCalls;
};

const Calls WaitingCommit::finishingCalls = {
    "lseek 0",    "read 80",    "lseek 0",    "write 80", // the info record, and its flag for good
    "lseek 80",   "read 1496",  "lseek 7560", "write 1496", // each slot, and its record in place
    "lseek 1576", "read 1496",  "lseek 6064", "write 1496", "lseek 3072",
    "read 1496",  "lseek 9056", "write 1496", "lseek 4568", "read 1496", // the end mark
    "lseek 0",    "write 80",
};

TEST_F(WaitingCommit, IsFinishedOnceBeforeTheNextTransaction) {
    failAdd();
    recordCalls();
    EXPECT_TRUE(finishWaitingCommit());
    EXPECT_EQ(recordedCalls(), finishingCalls);
    EXPECT_EQ(seeds(), (std::vector<int>{2, 3, 4}));
    EXPECT_EQ(file().updating(), 0U);
    recordCalls();
    EXPECT_TRUE(finishWaitingCommit());
    EXPECT_EQ(recordedCalls(), Calls{});
}

TEST_F(WaitingCommit, ThatNeverGotItsFlagIsForgotten) {
    start(linked, wrap, 3);
    add(1);
    failCall(Call::write, ENOSPC, 1);
    const EventLogAddRecord record = event(2);
    EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "write of flagged info record to logfile:No space left on device\n");
    EXPECT_EQ(store.info.updating, 1U);
    recordCalls();
    EXPECT_TRUE(finishWaitingCommit());
    EXPECT_EQ(recordedCalls(), (Calls{"lseek 0", "read 80", "lseek 0", "write 80"}));
    EXPECT_EQ(store.info.updating, 0U);
    EXPECT_EQ(seeds(), std::vector<int>{1});
}

// The overflow that the failed add came to is in the log once the add is finished.
TEST_F(WaitingCommit, CountsForTheConditionsOfAnOperation) {
    failAdd();
    EXPECT_EQ(store.info.sa.OverflowFlag, 0);
    EXPECT_EQ(zuSaHpiEventLogResetOverflow(), SA_OK);
    EXPECT_EQ(file().entries(), 3U);
    EXPECT_EQ(file().newest(), 1U);
    EXPECT_EQ(file().overflowFlag(), 0);
}

// A write that is reported as failed may have reached the file: the log then is disabled once that
// change is finished, and takes no more.
TEST_F(WaitingCommit, OfADisabledLogDropsTheNextAdd) {
    start(linked, wrap, 3);
    add(1);
    failCall(Call::write, EIO, 1);
    EXPECT_EQ(zuSaHpiEventLogStateSet(SAHPI_FALSE), SA_OK);
    EXPECT_EQ(diagnostics(), "write of flagged info record to logfile:Input/output error\n");
    FileImage image = file();
    EventLogInfoRecord written = image.info();
    written.sa.Enabled = 0;
    written.updating = 1;
    image.setInfo(written);
    writeLog(image);
    EXPECT_NE(store.info.sa.Enabled, 0);
    const EventLogAddRecord record = event(2);
    EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_OK);
    EXPECT_EQ(seeds(), std::vector<int>{1});
    EXPECT_EQ(store.info.sa.Enabled, 0);
    EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 1), SA_OK);
    EXPECT_EQ(seeds(), (std::vector<int>{1, 2}));
}

// What is refused without a transaction is refused, whether or not the commit could be finished.
TEST_F(WaitingCommit, ComesAfterWhatAnOperationRefuses) {
    failAdd();
    store.info.sa.OverflowResetable = 0;
    store.info.sa.UserEventMaxSize = 9;
    const EventLogAddRecord tooLong = userEvent(10);
    recordCalls();
    EXPECT_EQ(zuSaHpiEventLogEntryAdd(&tooLong, 0), SA_ERR_HPI_INVALID_DATA);
    EXPECT_EQ(zuSaHpiEventLogResetOverflow(), SA_ERR_HPI_INVALID_CMD);
    EventLogInfoRecord workingCopy;
    beginTransaction(workingCopy);
    EXPECT_EQ(zuSaHpiEventLogResetOverflow(), SA_ERR_HPI_INTERNAL_ERROR);
    EXPECT_EQ(zuSaHpiEventLogClear(), SA_ERR_HPI_INTERNAL_ERROR);
    abortTransaction();
    EXPECT_EQ(recordedCalls(), Calls{});
    EXPECT_EQ(file().updating(), 1U);
}

// Until its records are all in their places, reads and info go by the log of before.
TEST_F(WaitingCommit, CountsOnceItsRecordsAreWritten) {
    failAdd();
    const auto overflowFlag = [] {
        SaHpiEventLogInfoT info;
        EXPECT_EQ(zuSaHpiEventLogInfoGet(&info), SA_OK);
        return info.OverflowFlag;
    };
    EventLogEntryRecord record;
    for (const int failing : {0, 1, 2, 3}) {
        failCall(Call::write, EIO, failing);
        EXPECT_FALSE(finishWaitingCommit());
        EXPECT_EQ(store.info.oldest, 1U);
        EXPECT_EQ(overflowFlag(), 0);
        ASSERT_EQ(zuSaHpiEventLogEntryGet(SAHPI_NEWEST_ENTRY, &record), SA_OK);
        EXPECT_EQ(record.entry.EntryId, 3U);
    }
    failCall(Call::write, EIO, 4); // the info record, when all else is done
    EXPECT_FALSE(finishWaitingCommit());
    EXPECT_EQ(overflowFlag(), 1);
    EXPECT_EQ(seeds(), (std::vector<int>{2, 3, 4}));
    EXPECT_TRUE(finishWaitingCommit());
    EXPECT_EQ(seeds(), (std::vector<int>{2, 3, 4}));
}

// A change of the time of which all is written but the last info record.
class WaitingTime : public StoreTest {
  protected:
    static void failTimeSet() {
        start(linked, wrap, 3);
        add(1);
        add(2);
        ASSERT_EQ(zuSaHpiEventLogStateSet(SAHPI_FALSE), SA_OK);
        failCall(Call::write, ENOSPC, 2);
        ASSERT_EQ(zuSaHpiEventLogTimeSet(7), SA_OK);
        ASSERT_EQ(diagnostics(), "write of info record to logfile:No space left on device\n");
        ASSERT_TRUE(store.commitWaits);
    }
    static void expectEmptied() {
        const FileImage image = file();
        EXPECT_EQ(image.bytes.size(), 6064U);
        EXPECT_EQ(image.updating(), 0U);
        EXPECT_EQ(image.entries(), 0U);
        EXPECT_EQ(image.maxUsed(), 0U);
        EXPECT_EQ(image.oldest(), none);
        EXPECT_EQ(image.newest(), none);
        EXPECT_EQ(image.freeHead(), none);
        EXPECT_EQ(image.overflowFlag(), 0);
        EXPECT_EQ(image.info().timeOffset, 7 - test_mainlib::state().timeOfDay);
        EXPECT_EQ(image.info().sa.UpdateTimestamp, 7);
        EXPECT_EQ(image.info().sa.Enabled, 0);
        EXPECT_FALSE(store.commitWaits);
        EXPECT_EQ(zuSaHpiEventLogTimeGet(), 7);
    }
};

TEST_F(WaitingTime, IsEndedByAClearThatKeepsItsTimeAndState) {
    failTimeSet();
    recordCalls();
    EXPECT_EQ(zuSaHpiEventLogClear(), SA_OK);
    EXPECT_EQ(recordedCalls(),
              (Calls{"lseek 0", "read 80", "lseek 0", "write 80", "ftruncate 6064"}));
    expectEmptied();
}

TEST_F(WaitingTime, WaitsOnWhenTheClearFails) {
    struct Failure {
        Call call;
        int skip;
        const char *message;
    };
    const Failure failures[] = {
        {Call::lseek, 0, "lseek on logfile to info record:Input/output error\n"},
        {Call::read, 0, "Unable to read Event Log Info from existing log file.\n"},
        {Call::lseek, 1, "lseek on logfile to info record:Input/output error\n"},
        {Call::write, 0, "write of info record to logfile:Input/output error\n"},
    };
    failTimeSet();
    const std::string before = file().bytes;
    for (const Failure &failure : failures) {
        failCall(failure.call, EIO, failure.skip);
        EXPECT_EQ(zuSaHpiEventLogClear(), SA_ERR_HPI_NO_RESPONSE);
        EXPECT_EQ(diagnostics(), failure.message);
        EXPECT_EQ(file().bytes, before);
        EXPECT_TRUE(store.commitWaits);
        EXPECT_EQ(store.transaction, nullptr);
        EXPECT_EQ(store.info.sa.Entries, 2U);
    }
    failCall(Call::ftruncate, EIO);
    EXPECT_EQ(zuSaHpiEventLogClear(), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "truncate of log file during clear operation:Input/output error\n");
    EXPECT_EQ(file().entries(), 0U);
    EXPECT_EQ(zuSaHpiEventLogClear(), SA_OK);
    expectEmptied();
}

// Where the write of a clear is reported as failed and reached the file, the log is empty from the
// next change on: half of the commit that waited is nothing to go on with.
TEST_F(WaitingCommit, ThatAClearEndedInTheFileAloneIsNotRevived) {
    failAdd();
    FileImage image = file();
    EventLogInfoRecord emptied = image.info();
    emptied.sa.Entries = 0;
    emptied.oldest = none;
    emptied.newest = none;
    emptied.maxUsed = 0;
    emptied.updating = 0;
    image.setInfo(emptied);
    writeLog(image);
    add(5);
    EXPECT_EQ(seeds(), std::vector<int>{5});
    EXPECT_EQ(file().entries(), 1U);
}

// No room for the record of an add: neither it nor what comes after can be written, but a clear
// makes room.
TEST_F(WaitingCommit, IsEndedByAClearOnAFullDisk) {
    start(linked, wrap, 9);
    for (std::uint8_t seed = 1; seed <= 3; ++seed) {
        add(seed);
    }
    (void)std::signal(SIGXFSZ, SIG_IGN);
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
    const rlimit full{6064 + 3 * 1496, usual.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &full), 0);
    const EventLogAddRecord record = event(4);
    for (int attempt = 0; attempt < 2; ++attempt) {
        EXPECT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_ERR_HPI_NO_RESPONSE);
        EXPECT_NE(diagnostics().find("Error: write of event log entry # 4: File too large\n"),
                  std::string::npos);
    }
    EXPECT_EQ(seeds(), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(zuSaHpiEventLogClear(), SA_OK);
    EXPECT_EQ(diagnostics(), "");
    add(5);
    EXPECT_EQ(seeds(), std::vector<int>{5});
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &usual),
              0); // a test that counts what it reaches writes a file
}

struct Change {
    const char *name;
    std::function<SaErrorT()> make;
    SaErrorT refusal = SA_ERR_HPI_NO_RESPONSE; // while the commit cannot be finished

    friend void PrintTo(const Change &change, std::ostream *out) {
        *out << change.name;
    }
};

class RefusedChange : public WaitingCommit, public testing::WithParamInterface<Change> {};

TEST_P(RefusedChange, WhileTheCommitCannotBeFinished) {
    const char *const messages[] = {
        "lseek on logfile to info record:Input/output error\n",
        "Unable to read Event Log Info from existing log file.\n",
        "lseek on logfile to info record:Input/output error\n",
        "write of info record to logfile:Input/output error\n",
        "lseek on logfile to transaction log area:Input/output error\n",
        "Unable to read logged entry from existing log file.\n",
        "Error: lseek for writing event log entry # 2: Input/output error\n"
        "Error transacting logged record on existing log file.\n",
        "Error: write of event log entry # 2: Input/output error\n"
        "Error transacting logged record on existing log file.\n",
    };
    failAdd();
    for (std::size_t i = 0; i < finishingCalls.size(); ++i) {
        SCOPED_TRACE(finishingCalls[i]);
        const std::string call = finishingCalls[i].substr(0, finishingCalls[i].find(' '));
        int skip = 0;
        for (std::size_t earlier = 0; earlier < i; ++earlier) {
            skip += finishingCalls[earlier].compare(0, call.size(), call) == 0 ? 1 : 0;
        }
        failCall(call == "lseek"  ? Call::lseek
                 : call == "read" ? Call::read
                                  : Call::write,
                 EIO, skip);
        EXPECT_EQ(GetParam().make(), GetParam().refusal);
        const std::string message = diagnostics();
        if (i < std::size(messages)) {
            EXPECT_EQ(message, messages[i]);
        }
        EXPECT_NE(message, "");
        EXPECT_EQ(file().updating(), 1U);
        EXPECT_EQ(store.transaction, nullptr);
    }
    EXPECT_EQ(GetParam().make(), SA_OK);
    EXPECT_EQ(diagnostics(), "");
    EXPECT_EQ(file().updating(), 0U);
}

INSTANTIATE_TEST_SUITE_P(
    All, RefusedChange,
    testing::Values(Change{"Add",
                           [] {
                               const EventLogAddRecord record = event(5);
                               return zuSaHpiEventLogEntryAdd(&record, 0);
                           }},
                    Change{"Delete", [] { return zuSaHpiEventLogEntryDel(1, 0); }},
                    Change{"ResetOverflow", zuSaHpiEventLogResetOverflow},
                    Change{"TimeSet", [] { return zuSaHpiEventLogTimeSet(7); }, SA_OK},
                    Change{"StateSet", [] { return zuSaHpiEventLogStateSet(SAHPI_FALSE); }, SA_OK}),
    [](const testing::TestParamInfo<Change> &change) { return std::string(change.param.name); });

} // namespace
