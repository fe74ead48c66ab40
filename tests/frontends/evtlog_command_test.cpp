// Goal: every sub-command, its words, its whole output and what it does to the log; the lines that
// are refused and do nothing; data that are longer than the log, the buffer or the line.

#include "eventlog/store_state.h"

#include <cerrno>
#include <cstring>
#include <memory>
#include <random>

#include "tests/display/printed.h"
#include "tests/eventlog/store_fixture.h"
#include "tests/frontends/sample_log.h"
#include "tests/frontends/stubs.h"

using namespace store_test;
using test_support::Call;
using test_support::failCall;
using test_support::recordCalls;
using test_support::recordedCalls;

namespace {

constexpr char returnedOk[] = "Event Log returned SA_OK\n";
constexpr char notPresent[] = "Event Log error: SA_ERR_HPI_NOT_PRESENT\n";

// What the command prints for a line, which lies in memory of its own size.
std::string run(const std::string &line) {
    const auto memory = std::make_unique<char[]>(line.size() + 1);
    line.copy(memory.get(), line.size());
    memory[line.size()] = '\0';
    EXPECT_STREQ(std::strtok(memory.get(), " \t"), "evtlog");
    std::string text;
    zuSaHpiProcessEventLogCommand(test_mainlib::handleOf(text));
    return text;
}

const std::string &usage() {
    static const std::string text = sample_log::expectedText("usage.txt");
    return text;
}

class EvtlogCommand : public StoreTest {
  protected:
    static std::uint32_t entries() {
        return zusahpi::eventlog::store.info.sa.Entries;
    }
    static void addUserEvent() {
        const EventLogAddRecord record = userEvent(2);
        ASSERT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_OK);
    }
    static void startWithLimit(std::uint32_t userEventMaxSize) {
        EventLogControlBlock block = controlBlock(linked, wrap, 5);
        block.info.sa.UserEventMaxSize = userEventMaxSize;
        start(block);
    }
    // The newest entry must be this user event, every byte of it, with neither RPT entry nor RDR.
    static void expectNewest(SaHpiTextTypeT type, std::uint8_t length, const std::string &data) {
        EventLogEntryRecord record;
        ASSERT_EQ(zuSaHpiEventLogEntryGet(SAHPI_NEWEST_ENTRY, &record), SA_OK);
        EventLogAddRecord expected;
        std::memset(&expected, 0, sizeof expected);
        expected.event.Source = 0xFFFFFFFF;
        expected.event.EventType = SAHPI_ET_USER;
        expected.event.Timestamp = zuSaHpiTime();
        expected.event.Severity = SAHPI_INFORMATIONAL;
        SaHpiTextBufferT &buffer = expected.event.EventDataUnion.UserEvent.UserEventData;
        buffer.DataType = type;
        buffer.Language = SAHPI_LANG_UNDEF;
        buffer.DataLength = length;
        ASSERT_LE(data.size(), sizeof buffer.Data);
        std::memcpy(buffer.Data, data.data(), data.size());
        EXPECT_TRUE(equalBytes(&record.entry.Event, &expected.event, sizeof expected.event));
        EXPECT_TRUE(equalBytes(&record.rpt, &expected.rpt, sizeof expected.rpt));
        EXPECT_TRUE(equalBytes(&record.rdr, &expected.rdr, sizeof expected.rdr));
    }
};

TEST_F(EvtlogCommand, WithoutALogNothingIsLookedAt) {
    EXPECT_EQ(run("evtlog"), "No event log configured.\n");
    EXPECT_EQ(run("evtlog i"), "No event log configured.\n");
    EXPECT_EQ(run("evtlog x"), "No event log configured.\n");
}

TEST_F(EvtlogCommand, LinesWithoutSubCommandPrintTheUsageText) {
    start(linked, wrap, 5);
    for (const char *line : {"evtlog", "evtlog  \t", "evtlog x", "evtlog Z", "evtlog 1",
                             "evtlog /0", "evtlog \xE9", "evtlog \x7F", "evtlog [i", "evtlog @"}) {
        EXPECT_EQ(run(line), usage()) << line;
    }
}

// The sub-commands are these letters, in either case; every other first character is none.
TEST_F(EvtlogCommand, TheFirstLetterDecides) {
    start(linked, wrap, 5);
    for (int code = 1; code < 256; ++code) {
        const char letter = static_cast<char>(code);
        if (letter == ' ' || letter == '\t') {
            continue;
        }
        const bool known = std::strchr("iedcrtspaIEDCRTSPA", letter) != nullptr;
        // With a selector, a time, a state, a form and data in one: "d" is all but a time.
        const bool isUsage = run(std::string("evtlog ") + letter + "xyz d") == usage();
        const bool wantsNoWord = std::strchr("icrICR", letter) != nullptr;
        const bool wantsNumber = std::strchr("edED", letter) != nullptr;
        EXPECT_EQ(isUsage, !known || wantsNoWord || wantsNumber) << code;
    }
}

TEST_F(EvtlogCommand, WordsAreSplitAtBlanksAndTabs) {
    start(linked, wrap, 5);
    for (const char *line : {"evtlog c", "evtlog\tC", "evtlog  \t clear \t ", "evtlog Cxyz"}) {
        EXPECT_EQ(run(line), returnedOk) << line;
    }
}

TEST_F(EvtlogCommand, Info) {
    start(linked, wrap, 5);
    addUserEvent();
    test_mainlib::state().timeOfDay += 5;
    for (const char *line : {"evtlog i", "evtlog info", "evtlog Ixyz"}) {
        EXPECT_EQ(run(line), "Entries              1\n"
                             "Size                 5\n"
                             "UserEventMaxSize     255\n"
                             "UpdateTimestamp      time(1000000000,0)\n"
                             "CurrentTime          time(1000000005,0)\n"
                             "Enabled              Yes\n"
                             "OverflowFlag         No\n"
                             "OverflowResetable    Yes\n"
                             "OverflowAction      1: Overwrite\n")
            << line;
    }
    EXPECT_EQ(run("evtlog i x"), usage());
}

TEST_F(EvtlogCommand, InfoThatFails) {
    start(linked, wrap, 5);
    stubs::infoFailure = SA_ERR_HPI_NO_RESPONSE;
    EXPECT_EQ(run("evtlog i"), "Event Log error: SA_ERR_HPI_NO_RESPONSE\n");
    EXPECT_EQ(run("evtlog a text"),
              "Event Log error reading info record: SA_ERR_HPI_NO_RESPONSE\n");
    stubs::infoFailure = 5;
    EXPECT_EQ(run("evtlog i"), "Event Log error: Undefined Return Code: 5\n");
    EXPECT_EQ(entries(), 0U);
}

TEST_F(EvtlogCommand, AnEntryInFull) {
    start(simple, drop, 5);
    const EventLogAddRecord board = sample_log::boardEvent();
    ASSERT_EQ(zuSaHpiEventLogEntryAdd(&board, 0), SA_OK);
    addUserEvent();
    EXPECT_EQ(run("evtlog e o"), sample_log::expectedText("evtlog_entry.txt"));
}

TEST_F(EvtlogCommand, AnEntryWithoutRptEntryAndRdr) {
    start(simple, drop, 5);
    addUserEvent();
    addUserEvent();
    EXPECT_EQ(run("evtlog e n"), "Event Entry:\n" + sample_log::userEventText(2, "     ") +
                                     "No RPT Entry\n\nNo RDR\n\n"
                                     "Previous Entry: 1\n"
                                     "No Later Entries\n\n");
}

TEST_F(EvtlogCommand, TheEndsOfALinkedLogAreCalledOtherwise) {
    start(linked, wrap, 5);
    addUserEvent();
    EXPECT_EQ(run("evtlog e 1"), "Event Entry:\n" + sample_log::userEventText(1, "     ") +
                                     "No RPT Entry\n\nNo RDR\n\n"
                                     "Previous Entry: SAHPI_LAST_ENTRY\n"
                                     "Next Entry:     SAHPI_LAST_ENTRY\n\n");
}

TEST_F(EvtlogCommand, EntrySelectors) {
    start(linked, wrap, 40);
    for (int i = 0; i < 20; ++i) {
        addUserEvent();
    }
    const auto shown = [](const std::string &selector) {
        const std::string text = run("evtlog e " + selector);
        const std::string head = "Event Entry:\n     EntryId: ";
        return text.starts_with(head) ? std::stoi(text.substr(head.size())) : -1;
    };
    for (const char *oldest : {"o", "O", "oldest", "oxyz", "0", "0x0", "00", "1", "01", "+1"}) {
        EXPECT_EQ(shown(oldest), 1) << oldest;
    }
    for (const char *newest : {"n", "N", "newest", "20", "0xFFFFFFFF", "4294967295", "-1"}) {
        EXPECT_EQ(shown(newest), 20) << newest;
    }
    EXPECT_EQ(shown("0x10"), 16);
    EXPECT_EQ(shown("0X10"), 16);
    EXPECT_EQ(shown("010"), 8);
    EXPECT_EQ(shown("10"), 10);
    EXPECT_EQ(shown("10 anything 'else"), 10);
    for (const char *missing : {"21", "0xFFFFFFFE", "-5", "2147483648"}) {
        EXPECT_EQ(run(std::string("evtlog e ") + missing), notPresent) << missing;
    }
    for (const char *none : {"", "12abc", "abc", "0x", "08", "0b11", "1.", "-", "+", "/1", "1\n"}) {
        EXPECT_EQ(run(std::string("evtlog e ") + none), usage()) << none;
        EXPECT_EQ(run(std::string("evtlog d ") + none), usage()) << none;
    }
    EXPECT_EQ(entries(), 20U);
}

// Numbers end at 32 bits, with the highest one, on both ABIs.
TEST_F(EvtlogCommand, NumbersPast32BitsAreTheHighest) {
    start(linked, wrap, 5);
    addUserEvent();
    const std::string newest = run("evtlog e newest");
    for (const char *number : {"4294967296", "4294967297", "99999999999999999999999",
                               "-99999999999999999999999", "-4294967297"}) {
        EXPECT_EQ(run(std::string("evtlog e ") + number), newest) << number;
    }
}

TEST_F(EvtlogCommand, AnEntryThatIsNotThere) {
    start(linked, wrap, 5);
    EXPECT_EQ(run("evtlog e o"), notPresent);
    EXPECT_EQ(run("evtlog e n"), notPresent);
    EXPECT_EQ(run("evtlog e 3"), notPresent);
}

TEST_F(EvtlogCommand, Delete) {
    start(linked, wrap, 5);
    for (int i = 0; i < 4; ++i) {
        addUserEvent();
    }
    EXPECT_EQ(run("evtlog d 2 and more"), returnedOk);
    EXPECT_EQ(run("evtlog d 2"), notPresent);
    EXPECT_EQ(run("evtlog delete oldest"), returnedOk);
    EXPECT_EQ(run("evtlog D N"), returnedOk);
    EXPECT_EQ(entries(), 1U);
    EXPECT_EQ(zusahpi::eventlog::store.info.oldest, 3U);
    EXPECT_EQ(diagnostics(), "");
}

TEST_F(EvtlogCommand, DeleteIsNotForced) {
    start(simple, drop, 5);
    addUserEvent();
    addUserEvent();
    EXPECT_EQ(run("evtlog d 1"), "Event Log error: SA_ERR_HPI_INTERNAL_ERROR\n");
    EXPECT_EQ(entries(), 2U);
}

TEST_F(EvtlogCommand, Clear) {
    start(linked, wrap, 5);
    addUserEvent();
    EXPECT_EQ(run("evtlog c now"), usage());
    EXPECT_EQ(entries(), 1U);
    failCall(Call::write, EIO);
    EXPECT_EQ(run("evtlog clear"), "Event Log error: SA_ERR_HPI_NO_RESPONSE\n");
    EXPECT_EQ(run("evtlog clear"), returnedOk);
    EXPECT_EQ(entries(), 0U);
}

TEST_F(EvtlogCommand, ResetOverflow) {
    start(linked, drop, 1);
    addUserEvent();
    EXPECT_EQ(run("evtlog a more"), "Event Log error: SA_ERR_HPI_OUT_OF_SPACE\n");
    EXPECT_EQ(file().overflowFlag(), 1);
    EXPECT_EQ(run("evtlog r now"), usage());
    EXPECT_EQ(file().overflowFlag(), 1);
    EXPECT_EQ(run("evtlog reset"), returnedOk);
    EXPECT_EQ(file().overflowFlag(), 0);
}

TEST_F(EvtlogCommand, ResetOverflowMayBeForbidden) {
    EventLogControlBlock block = controlBlock(linked, drop, 1);
    block.info.sa.OverflowResetable = 0;
    start(block);
    EXPECT_EQ(run("evtlog R"), "Event Log error: SA_ERR_HPI_INVALID_CMD\n");
}

// The parser gets all that follows the one blank behind the sub-command.
TEST_F(EvtlogCommand, TimeIsTheRestOfTheLine) {
    start(linked, wrap, 5);
    EXPECT_EQ(run("evtlog t 77"), returnedOk);
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 77);
    EXPECT_EQ(stubs::timeParser.text, "77");
    EXPECT_EQ(stubs::timeParser.flags, 0);
    EXPECT_EQ(run("evtlog time  78"), returnedOk);
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 78);
    EXPECT_EQ(stubs::timeParser.text, " 78");
    EXPECT_EQ(run("evtlog T\t\t1 \tx "), "Time conversion error: Illegal field\n");
    EXPECT_EQ(stubs::timeParser.text, "\t1 \tx ");
    EXPECT_EQ(run("evtlog t -5"), "Event Log error: SA_ERR_HPI_INVALID_PARAMS\n");
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 78);
    EXPECT_EQ(run("evtlog t"), usage());
    EXPECT_EQ(run("evtlog t "), usage());
}

TEST_F(EvtlogCommand, TimeErrorsAreThoseOfTheParser) {
    start(linked, wrap, 5);
    stubs::timeParser.result = SAHPI_TIME_UNSPECIFIED;
    for (int index = 0; index < ZUSAHPI_TIME_ERRORS; ++index) {
        stubs::timeParser.errorIndex = index;
        EXPECT_EQ(run("evtlog t x"),
                  std::string("Time conversion error: ") + zuSaHpiTimeErrMsg[index] + "\n");
    }
    for (const int index : {-1, ZUSAHPI_TIME_ERRORS, 1'000'000}) { // no error of the table
        stubs::timeParser.errorIndex = index;
        EXPECT_EQ(run("evtlog t x"), "Time conversion error: \n");
    }
    stubs::timeParser = {.text = {}, .flags = -1, .result = 9, .errorIndex = 3};
    EXPECT_EQ(run("evtlog t x"), returnedOk); // the result alone tells
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 9);
}

TEST_F(EvtlogCommand, State) {
    start(circular, wrap, 5);
    EXPECT_EQ(run("evtlog s d"), returnedOk);
    EXPECT_EQ(file().u8(32), 0);
    EXPECT_EQ(run("evtlog state Enabled"), returnedOk);
    EXPECT_EQ(file().u8(32), 1);
    EXPECT_EQ(run("evtlog S Disabled"), returnedOk);
    EXPECT_EQ(file().u8(32), 0);
    recordCalls();
    EXPECT_EQ(run("evtlog s protect"), returnedOk);
    EXPECT_EQ(recordedCalls(), (std::vector<std::string>{"sync"}));
    EXPECT_EQ(zusahpi::eventlog::store.syncOnCommit, 1);
    recordCalls();
    EXPECT_EQ(run("evtlog s U"), returnedOk);
    EXPECT_TRUE(recordedCalls().empty());
    EXPECT_EQ(zusahpi::eventlog::store.syncOnCommit, 0);
    const std::string expected = usage();
    recordCalls();
    for (const char *line : {"evtlog s", "evtlog s  ", "evtlog s x", "evtlog s 1"}) {
        EXPECT_EQ(run(line), expected) << line;
    }
    EXPECT_TRUE(recordedCalls().empty());
}

TEST_F(EvtlogCommand, StateActsBeforeItCountsTheWords) {
    start(circular, wrap, 5);
    EXPECT_EQ(run("evtlog s d extra"), usage());
    EXPECT_EQ(file().u8(32), 0);
    EXPECT_EQ(run("evtlog s e extra"), usage());
    EXPECT_EQ(file().u8(32), 1);
    EXPECT_EQ(run("evtlog s p extra"), usage());
    EXPECT_EQ(zusahpi::eventlog::store.syncOnCommit, 1);
    EXPECT_EQ(run("evtlog s u extra"), usage());
    EXPECT_EQ(zusahpi::eventlog::store.syncOnCommit, 0);
}

TEST_F(EvtlogCommand, Print) {
    start(linked, wrap, 5);
    addUserEvent();
    const std::string text = printedBy([](auto out) { return zuSaHpiPrintEventLog(out, 0); }).text;
    const std::string dump = printedBy([](auto out) { return zuSaHpiPrintEventLog(out, 1); }).text;
    EXPECT_TRUE(text.starts_with("Event Log Info:\n"));
    EXPECT_TRUE(dump.starts_with("0000: 01000000 "));
    EXPECT_EQ(run("evtlog p"), text);
    EXPECT_EQ(run("evtlog Print \t"), text);
    EXPECT_EQ(run("evtlog p d"), dump);
    EXPECT_EQ(run("evtlog p dump"), dump);
    EXPECT_EQ(run("evtlog p D"), dump);
    EXPECT_EQ(run("evtlog p x"), usage());
    EXPECT_EQ(run("evtlog p 1"), usage());
    addUserEvent(); // the store goes on from wherever the printout left the file
    EXPECT_EQ(run("evtlog d o"), returnedOk);
    EXPECT_EQ(entries(), 1U);
}

TEST_F(EvtlogCommand, AddText) {
    start(linked, wrap, 5);
    EXPECT_EQ(run("evtlog a hello"), returnedOk);
    expectNewest(SAHPI_TL_TYPE_TEXT, 5, "hello");
    EXPECT_EQ(run("evtlog add  \t hello  world \t"), returnedOk);
    expectNewest(SAHPI_TL_TYPE_TEXT, 14, "hello  world \t");
    EXPECT_EQ(run("evtlog A 'hello"), returnedOk);
    expectNewest(SAHPI_TL_TYPE_TEXT, 5, "hello");
    EXPECT_EQ(run("evtlog a ' /x"), returnedOk);
    expectNewest(SAHPI_TL_TYPE_TEXT, 3, " /x");
    EXPECT_EQ(run("evtlog a '/x"), returnedOk);
    expectNewest(SAHPI_TL_TYPE_TEXT, 2, "/x");
    EXPECT_EQ(run("evtlog a ''x"), returnedOk);
    expectNewest(SAHPI_TL_TYPE_TEXT, 2, "'x");
    EXPECT_EQ(run("evtlog a '"), returnedOk);
    expectNewest(SAHPI_TL_TYPE_TEXT, 0, "");
    EXPECT_EQ(run("evtlog a %s%n \x01\xFF"), returnedOk);
    expectNewest(SAHPI_TL_TYPE_TEXT, 7, "%s%n \x01\xFF");
}

TEST_F(EvtlogCommand, AddWithoutData) {
    start(linked, wrap, 5);
    for (const char *line : {"evtlog a", "evtlog a ", "evtlog a  \t \t"}) {
        EXPECT_EQ(run(line), usage()) << line;
    }
    EXPECT_EQ(entries(), 0U);
}

TEST_F(EvtlogCommand, AddBinary) {
    start(linked, wrap, 5);
    EXPECT_EQ(run("evtlog a /00ffAb"), returnedOk);
    expectNewest(SAHPI_TL_TYPE_BINARY, 3, std::string("\x00\xFF\xAB", 3));
    EXPECT_EQ(run("evtlog a /1 23"), returnedOk);
    expectNewest(SAHPI_TL_TYPE_BINARY, 2, "\x01\x23");
    EXPECT_EQ(run("evtlog a /123"), returnedOk);
    expectNewest(SAHPI_TL_TYPE_BINARY, 2, "\x12\x03");
    EXPECT_EQ(run("evtlog a /"), returnedOk);
    expectNewest(SAHPI_TL_TYPE_BINARY, 0, "");
    EXPECT_EQ(run("evtlog a / \t"), returnedOk);
    expectNewest(SAHPI_TL_TYPE_BINARY, 0, "");
}

// What was decoded and what follows it in the line are added, then zeros up to the limit.
TEST_F(EvtlogCommand, BadBinaryDataAreAddedWithTheLengthOfTheLimit) {
    startWithLimit(10);
    const std::string messages = "Bad binary data\nUser Event truncated to 10 characters.\n";
    EXPECT_EQ(run("evtlog a /0g"), messages + returnedOk);
    expectNewest(SAHPI_TL_TYPE_BINARY, 10, std::string("\0g", 2));
    EXPECT_EQ(run("evtlog a /g"), messages + returnedOk);
    expectNewest(SAHPI_TL_TYPE_BINARY, 10, "g");
    EXPECT_EQ(run("evtlog a /12345678 zABCDEFGH"), messages + returnedOk);
    expectNewest(SAHPI_TL_TYPE_BINARY, 10,
                 "\x12\x34\x56\x78"
                 "5678 z");
}

TEST_F(EvtlogCommand, DataLongerThanTheLimitAreCut) {
    startWithLimit(4);
    EXPECT_EQ(run("evtlog a 1234"), returnedOk);
    expectNewest(SAHPI_TL_TYPE_TEXT, 4, "1234");
    EXPECT_EQ(run("evtlog a 12345"),
              std::string("User Event truncated to 4 characters.\n") + returnedOk);
    expectNewest(SAHPI_TL_TYPE_TEXT, 4, "1234");
    EXPECT_EQ(run("evtlog a /0102030405"),
              std::string("User Event truncated to 4 characters.\n") + returnedOk);
    expectNewest(SAHPI_TL_TYPE_BINARY, 4, "\x01\x02\x03\x04");
}

TEST_F(EvtlogCommand, ALimitOfNothing) {
    startWithLimit(0);
    EXPECT_EQ(run("evtlog a x"),
              std::string("User Event truncated to 0 characters.\n") + returnedOk);
    expectNewest(SAHPI_TL_TYPE_TEXT, 0, "");
    EXPECT_EQ(run("evtlog a '"), returnedOk);
}

// A limit above what a text buffer holds: the length keeps its low 8 bits, the data what fits.
TEST_F(EvtlogCommand, DataLongerThanABuffer) {
    startWithLimit(1000);
    const std::string text(300, 'q');
    EXPECT_EQ(run("evtlog a " + text), returnedOk);
    expectNewest(SAHPI_TL_TYPE_TEXT, 300 - 256, text.substr(0, 255));
    EXPECT_EQ(run("evtlog a " + text.substr(0, 256)), returnedOk);
    expectNewest(SAHPI_TL_TYPE_TEXT, 0, text.substr(0, 255));
    EXPECT_EQ(run("evtlog a " + text.substr(0, 255)), returnedOk);
    expectNewest(SAHPI_TL_TYPE_TEXT, 255, text.substr(0, 255));
    EXPECT_EQ(run("evtlog a /-"), std::string("Bad binary data\nUser Event truncated to 1000 "
                                              "characters.\n") +
                                      returnedOk);
    expectNewest(SAHPI_TL_TYPE_BINARY, 1000 - 3 * 256, "-");
}

TEST_F(EvtlogCommand, TheLimitIsPrintedSignedAndComparedUnsigned) {
    startWithLimit(0xFFFFFFFE);
    EXPECT_EQ(run("evtlog a /-"),
              std::string("Bad binary data\nUser Event truncated to -2 characters.\n") +
                  returnedOk);
    expectNewest(SAHPI_TL_TYPE_BINARY, 0xFE, "-");
    EXPECT_EQ(run("evtlog a x"), returnedOk);
}

TEST_F(EvtlogCommand, TheHighestLimitCutsNothing) {
    startWithLimit(0xFFFFFFFF);
    EXPECT_EQ(run("evtlog a /-"), std::string("Bad binary data\n") + returnedOk);
    expectNewest(SAHPI_TL_TYPE_BINARY, 255, "-");
}

TEST_F(EvtlogCommand, ADisabledLogTakesWhatAnOperatorAdds) {
    start(linked, wrap, 5);
    ASSERT_EQ(zuSaHpiEventLogStateSet(0), SA_OK);
    EXPECT_EQ(run("evtlog a x"), returnedOk);
    EXPECT_EQ(entries(), 1U);
}

TEST_F(EvtlogCommand, AnEventHasTheLibrarysTimeAndItsEntryTheLogs) {
    start(linked, wrap, 5);
    zuSaHpiSetTime(5);
    ASSERT_EQ(zuSaHpiEventLogTimeSet(7), SA_OK);
    EXPECT_EQ(run("evtlog a x"), returnedOk);
    EventLogEntryRecord record;
    ASSERT_EQ(zuSaHpiEventLogEntryGet(1, &record), SA_OK);
    EXPECT_EQ(record.entry.Event.Timestamp, 5);
    EXPECT_EQ(record.entry.Timestamp, 7);
}

TEST_F(EvtlogCommand, AnAddThatFails) {
    start(linked, wrap, 5);
    failCall(Call::write, EIO);
    EXPECT_EQ(run("evtlog a x"), "Event Log error: SA_ERR_HPI_NO_RESPONSE\n");
}

TEST_F(EvtlogCommand, ALogWithoutFile) {
    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    block.fileEnabled = 0;
    start(block);
    EXPECT_EQ(run("evtlog e o"), notPresent);
    EXPECT_EQ(run("evtlog p"), "");
    EXPECT_EQ(run("evtlog p d"), "");
    EXPECT_EQ(run("evtlog c"), returnedOk);
    EXPECT_EQ(run("evtlog a x"), returnedOk);
    EXPECT_EQ(run("evtlog s d"), returnedOk);
}

// Any line at all: it ends in a newline and leaves a log that works.
TEST_F(EvtlogCommand, RandomLines) {
    start(linked, wrap, 5);
    const std::uint64_t seed = 20'260'103;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937_64 random(seed);
    const std::string characters = "ieEdcrtspaonx/'019afFzZ \t \t %\xFF\x80-+";
    for (int round = 0; round < 3000; ++round) {
        std::string line = "evtlog";
        for (std::uint64_t length = random() % 24; length > 0; --length) {
            line += characters[static_cast<std::size_t>(random() % characters.size())];
        }
        line.insert(6, " ");
        const std::string text = run(line);
        ASSERT_FALSE(text.empty()) << line;
        ASSERT_EQ(text.back(), '\n') << line;
        ASSERT_EQ(diagnostics(), "") << line;
    }
    ASSERT_EQ(run("evtlog c"), returnedOk);
    EXPECT_EQ(run("evtlog a x"), returnedOk);
    EXPECT_EQ(entries(), 1U);
}

} // namespace
