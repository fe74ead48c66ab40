// A commit to a Linked log that failed once it had begun to flag its transaction: the next change
// in the same process finishes it first, by these calls, with these messages when it cannot.

#include <cerrno>
#include <functional>
#include <ostream>

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
    "lseek 0",    "read 80",                                // the info record
    "lseek 80",   "read 1496",  "lseek 7560", "write 1496", // each slot, and its record in place
    "lseek 1576", "read 1496",  "lseek 6064", "write 1496", "lseek 3072",
    "read 1496",  "lseek 9056", "write 1496", "lseek 4568", "read 1496", // the end mark
    "lseek 0",    "write 80",
};

TEST_F(WaitingCommit, IsFinishedOnceBeforeTheNextTransaction) {
    failAdd();
    recordCalls();
    EXPECT_EQ(prepareTransaction("add an entry"), SA_OK);
    EXPECT_EQ(recordedCalls(), finishingCalls);
    EXPECT_EQ(seeds(), (std::vector<int>{2, 3, 4}));
    EXPECT_EQ(file().updating(), 0U);
    recordCalls();
    EXPECT_EQ(prepareTransaction("add an entry"), SA_OK);
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
    EXPECT_EQ(prepareTransaction("add an entry"), SA_OK);
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
                    Change{"Clear", zuSaHpiEventLogClear},
                    Change{"ResetOverflow", zuSaHpiEventLogResetOverflow},
                    Change{"TimeSet", [] { return zuSaHpiEventLogTimeSet(7); }, SA_OK},
                    Change{"StateSet", [] { return zuSaHpiEventLogStateSet(SAHPI_FALSE); }, SA_OK}),
    [](const testing::TestParamInfo<Change> &change) { return std::string(change.param.name); });

} // namespace
