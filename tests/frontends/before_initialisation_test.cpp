// Goal: what the public header says that each function of the event log does before the log is
// initialised. Each test is a process of its own, in which nothing has happened yet.

#include <cstring>

#include "tests/eventlog/store_fixture.h"
#include "tests/frontends/sample_log.h"
#include "zuSaHpi_messages.h"

using namespace store_test;
using test_support::recordCalls;
using test_support::recordedCalls;

namespace {

using Calls = std::vector<std::string>;

class BeforeInitialisation : public StoreTest {
  protected:
    static SaHpiEventLogInfoT info() {
        SaHpiEventLogInfoT record;
        std::memset(&record, 0xEE, sizeof record);
        EXPECT_EQ(zuSaHpiEventLogInfoGet(&record), SA_OK);
        return record;
    }
    // Whether the record is still as it was filled.
    template <typename T>
    static bool untouched(const T &record) {
        T filled;
        std::memset(&filled, 0xEE, sizeof filled);
        return std::memcmp(&record, &filled, sizeof record) == 0;
    }
};

TEST_F(BeforeInitialisation, NothingIsStoredAndNothingFound) {
    recordCalls();
    EXPECT_EQ(zuSaHpiEventLogInitialized(), 0);
    const EventLogAddRecord added = sample_log::boardEvent();
    const EventLogAddRecord tooLong = userEvent(255);
    for (const int force : {0, 1}) {
        EXPECT_EQ(zuSaHpiEventLogEntryAdd(&added, force), SA_OK);
        EXPECT_EQ(zuSaHpiEventLogEntryAdd(&tooLong, force), SA_OK);
        EXPECT_EQ(zuSaHpiEventLogEntryDel(1, force), SA_ERR_HPI_NOT_PRESENT);
    }
    EventLogEntryRecord entry;
    SaHpiRptEntryT rpt;
    SaHpiRdrT rdr;
    std::memset(&entry, 0xEE, sizeof entry);
    std::memset(&rpt, 0xEE, sizeof rpt);
    std::memset(&rdr, 0xEE, sizeof rdr);
    for (const std::uint32_t id : {SAHPI_OLDEST_ENTRY, 1U, SAHPI_NEWEST_ENTRY}) {
        EXPECT_EQ(zuSaHpiEventLogEntryGet(id, &entry), SA_ERR_HPI_NOT_PRESENT);
        EXPECT_EQ(zuSaHpiEventLogEntRptGet(id, &rpt), SA_ERR_HPI_NOT_PRESENT);
        EXPECT_EQ(zuSaHpiEventLogEntRdrGet(id, &rdr), SA_ERR_HPI_NOT_PRESENT);
    }
    EXPECT_TRUE(untouched(entry) && untouched(rpt) && untouched(rdr));
    EXPECT_EQ(zuSaHpiEventLogClear(), SA_OK);
    EXPECT_EQ(zuSaHpiEventLogResetOverflow(), SA_OK);
    EXPECT_EQ(info().Entries, 0U);
    EXPECT_TRUE(recordedCalls().empty());
    EXPECT_TRUE(test_mainlib::state().syslog.empty());
    EXPECT_EQ(diagnostics(), "");
}

TEST_F(BeforeInitialisation, TheInfoIsOfAnEmptyLog) {
    SaHpiEventLogInfoT expected;
    std::memset(&expected, 0, sizeof expected);
    expected.CurrentTime = test_mainlib::state().timeOfDay;
    const SaHpiEventLogInfoT found = info();
    EXPECT_EQ(std::memcmp(&found, &expected, sizeof found), 0);
}

TEST_F(BeforeInitialisation, TimeAndStateAreForgottenByTheInitialisation) {
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 1'000'000'000);
    EXPECT_EQ(zuSaHpiEventLogTimeSet(-1), SA_ERR_HPI_INVALID_PARAMS);
    EXPECT_EQ(zuSaHpiEventLogTimeSet(5), SA_OK);
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 5);
    EXPECT_EQ(info().CurrentTime, 5);
    EXPECT_EQ(zuSaHpiEventLogStateGet(), SAHPI_FALSE);
    EXPECT_EQ(zuSaHpiEventLogStateSet(SAHPI_TRUE), SA_OK);
    EXPECT_EQ(zuSaHpiEventLogStateGet(), SAHPI_FALSE);
    EXPECT_EQ(info().Enabled, 1);

    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    block.info.sa.Enabled = 0;
    start(block);
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 1'000'000'000);
    EXPECT_EQ(info().Enabled, 0);
}

TEST_F(BeforeInitialisation, ProtectionSyncsAndHoldsForTheLogThatIsStarted) {
    recordCalls();
    EXPECT_EQ(zuSaHpiEventLogProtectSet(1), SA_OK);
    EXPECT_EQ(recordedCalls(), (Calls{"sync"}));
    start(circular, wrap, 5);
    recordCalls();
    add(1);
    EXPECT_EQ(recordedCalls().back(), "sync");
}

TEST_F(BeforeInitialisation, FrontEndsSayThatThereIsNoLog) {
    for (const std::uint32_t type : {ZUSAHPI_MSG_CLEAR, ZUSAHPI_MSG_INFO_GET_REPLY, 0U}) {
        zuSaHpiMessageT message;
        std::memset(&message, 0xEE, sizeof message);
        message.type = type;
        zuSaHpiMessageT expected = message;
        expected.returnCode = SA_ERR_HPI_INVALID_CMD;
        EXPECT_EQ(zuSaHpiEvtLogRequest(&message), 0);
        EXPECT_EQ(std::memcmp(&message, &expected, sizeof message), 0) << type;
    }
    std::string text;
    char line[] = "evtlog clear";
    std::strtok(line, " \t");
    zuSaHpiProcessEventLogCommand(test_mainlib::handleOf(text));
    EXPECT_EQ(text, "No event log configured.\n");
    EXPECT_EQ(zuSaHpiPrintEventLog(test_mainlib::handleOf(text), 0), 0);
    EXPECT_EQ(text, "No event log configured.\n");
    EXPECT_EQ(diagnostics(), "");
}

} // namespace
