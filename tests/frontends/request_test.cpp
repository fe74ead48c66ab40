// Goal: for every request, each byte of the message after it: what the reply writes, and that all
// else stays. Messages end with the last byte that their request may touch, at an odd address, so
// that the sanitizers see a step outside; the bytes are those of the protocol, written down here.

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include <unistd.h>

#include "tests/eventlog/store_fixture.h"
#include "tests/frontends/sample_log.h"
#include "tests/frontends/stubs.h"
#include "zuSaHpi_messages.h"

using namespace store_test;
using test_support::Call;
using test_support::failCall;
using test_support::inChild;
using test_support::runInChild;

namespace {

constexpr std::uint32_t clientSize = 0x01020304; // what the client left in the size field

class Message {
  public:
    // A message with the payload's first `payload` bytes, `shift` bytes into its memory.
    explicit Message(std::uint32_t type, std::size_t payload = 0, std::size_t shift = 3)
        : size_(128 + payload), shift_(shift),
          memory_(std::make_unique<unsigned char[]>(shift + size_)) {
        for (std::size_t i = 0; i < shift + size_; ++i) {
            memory_[i] = static_cast<unsigned char>(0xA0 + (i - shift) % 89);
        }
        set(108, clientSize);
        set(112, type);
    }
    template <typename T>
    void set(std::size_t offset, const T &value) {
        ASSERT_LE(offset + sizeof value, size_);
        std::memcpy(memory_.get() + shift_ + offset, &value, sizeof value);
    }
    void setBytes(std::size_t offset, const void *bytes, std::size_t count) {
        ASSERT_LE(offset + count, size_);
        std::memcpy(memory_.get() + shift_ + offset, bytes, count);
    }
    [[nodiscard]] std::string bytes() const {
        return {reinterpret_cast<const char *>(memory_.get()) + shift_, size_};
    }
    // Lets the dispatcher serve the message.
    void serve() {
        EXPECT_EQ(zuSaHpiEvtLogRequest(memory_.get() + shift_), 0);
    }

  private:
    std::size_t size_;
    std::size_t shift_;
    std::unique_ptr<unsigned char[]> memory_;
};

// Serves the message, which must then be `expected`.
void expectReply(Message message, const Message &expected) {
    message.serve();
    const std::string bytes = message.bytes();
    const std::string expectedBytes = expected.bytes();
    ASSERT_EQ(bytes.size(), expectedBytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        ASSERT_EQ(static_cast<unsigned char>(bytes[i]),
                  static_cast<unsigned char>(expectedBytes[i]))
            << "offset " << i;
    }
}

// The message of a request and what becomes of it.
struct Exchange {
    Message request;
    Message reply;

    Exchange(std::uint32_t type, std::size_t payload, std::size_t shift = 3)
        : request(type, payload, shift), reply(type, payload, shift) {
    }
    // A field of the request that the reply leaves alone.
    template <typename T>
    void ask(std::size_t offset, const T &value) {
        request.set(offset, value);
        reply.set(offset, value);
    }
    void expect(std::int32_t returnCode) {
        reply.set(116, returnCode);
        expectReply(std::move(request), reply);
    }
    void expect(std::int32_t returnCode, std::uint32_t replyType, std::uint32_t size) {
        reply.set(112, replyType);
        reply.set(108, size);
        expect(returnCode);
    }
};

class RequestTest : public StoreTest {
  protected:
    static SaHpiEventLogInfoT info() {
        SaHpiEventLogInfoT record;
        EXPECT_EQ(zuSaHpiEventLogInfoGet(&record), SA_OK);
        return record;
    }
    static void addBoardEvent() {
        const EventLogAddRecord record = sample_log::boardEvent();
        ASSERT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_OK);
    }
    // An entry get that must answer with the entry as the store has it and with these neighbours.
    static void expectEntry(std::uint32_t asked, std::uint32_t id, std::uint32_t previous,
                            std::uint32_t next, bool rptValid, bool rdrValid,
                            std::size_t shift = 3) {
        SCOPED_TRACE(asked);
        EventLogEntryRecord record;
        ASSERT_EQ(zuSaHpiEventLogEntryGet(id, &record), SA_OK);
        ASSERT_EQ(record.entry.EntryId, id);
        Exchange exchange(12, 324, shift);
        exchange.request.set(128, asked);
        exchange.reply.setBytes(128, &record.entry, 312);
        exchange.reply.set(128 + 312, static_cast<std::uint8_t>(rptValid));
        exchange.reply.set(128 + 313, static_cast<std::uint8_t>(rdrValid));
        exchange.reply.set(128 + 316, previous);
        exchange.reply.set(128 + 320, next);
        exchange.expect(0, 13, 344);
    }
};

TEST_F(RequestTest, BeforeInitialisationEveryTypeIsRefused) {
    for (std::uint32_t type = 0; type < 300; ++type) {
        Exchange(type, 0).expect(-1005);
    }
    Exchange(0xFFFFFFFF, 0).expect(-1005);
    EXPECT_EQ(diagnostics(), "");
}

// Requests by type, with their reply's type and size; 0 where the field stays.
struct Served {
    std::uint32_t type;
    std::uint32_t replyType;
    std::uint32_t replySize;
};
static_assert(ZUSAHPI_MSG_INFO_GET == 10 && ZUSAHPI_MSG_INFO_GET_REPLY == 11);
static_assert(ZUSAHPI_MSG_ENTRY_GET == 12 && ZUSAHPI_MSG_ENTRY_GET_REPLY == 13);
static_assert(ZUSAHPI_MSG_RPT_GET == 14 && ZUSAHPI_MSG_RPT_GET_REPLY == 15);
static_assert(ZUSAHPI_MSG_RDR_GET == 16 && ZUSAHPI_MSG_RDR_GET_REPLY == 17);
static_assert(ZUSAHPI_MSG_ADD == 18 && ZUSAHPI_MSG_ADD_REPLY == 19);
static_assert(ZUSAHPI_MSG_CLEAR == 20 && ZUSAHPI_MSG_RESET_OVERFLOW == 21);
static_assert(ZUSAHPI_MSG_SET_TIME == 22 && ZUSAHPI_MSG_SET_TIME_REPLY == 23);
static_assert(ZUSAHPI_MSG_SET_STATE == 24 && ZUSAHPI_MSG_SET_STATE_REPLY == 25);
constexpr std::array<Served, 9> servedTypes = {{{10, 11, 56},
                                                {12, 13, 344},
                                                {14, 15, 468},
                                                {16, 17, 744},
                                                {18, 19, 16},
                                                {20, 20, clientSize},
                                                {21, 21, clientSize},
                                                {22, 23, 16},
                                                {24, 25, 16}}};

// What becomes of a message of that type, in a process of its own.
void expectServedOrFatal(std::uint32_t type, const std::function<void()> &startLog) {
    const auto *served =
        std::find_if(servedTypes.begin(), servedTypes.end(),
                     [&](const Served &candidate) { return candidate.type == type; });
    const bool known = served != servedTypes.end();
    EXPECT_EQ(ZUSAHPI_MSG_IS_REQUEST(type), known) << type;
    const test_support::ChildResult result = runInChild([&] {
        startLog();
        Message message(type, 728);
        message.set(128, std::uint32_t{1});
        message.serve();
        const std::string bytes = message.bytes();
        std::array<std::uint32_t, 3> fields{}; // size, type, return code
        std::memcpy(fields.data(), bytes.data() + 108, sizeof fields);
        ASSERT_TRUE(known);
        EXPECT_EQ(fields[1], served->replyType);
        EXPECT_EQ(fields[0], served->replySize);
    });
    EXPECT_EQ(result.exitStatus, known ? 0 : 1) << type;
    EXPECT_EQ(result.diagnostics,
              known ? "" : "zuSaHpiEvtLogRequest:Undefined Event Log request type.\n")
        << type;
}

TEST_F(RequestTest, EveryTypeIsServedOrFatal) {
    const auto startLog = [] {
        unlink(logPath().c_str());
        start(simple, drop, 5);
        addBoardEvent();
    };
    for (std::uint32_t type = 0; type <= 256; ++type) {
        expectServedOrFatal(type, startLog);
    }
    // What a byte, a 16-bit number or a signed number would take for a request.
    for (const std::uint32_t type : {266U, 0x1000AU, 0x8000000AU, 0xFFFFFFF6U, 0xFFFFFFFFU}) {
        expectServedOrFatal(type, startLog);
    }
}

TEST_F(RequestTest, InfoGet) {
    start(linked, wrap, 5);
    addBoardEvent();
    test_mainlib::state().timeOfDay += 5;
    const SaHpiEventLogInfoT expected = info();
    ASSERT_EQ(expected.CurrentTime, 1'000'000'005);
    Exchange exchange(10, 40);
    exchange.reply.setBytes(128, &expected, 40);
    exchange.expect(0, 11, 56);
}

TEST_F(RequestTest, AFailedInfoGetChangesTheReturnCodeAlone) {
    start(linked, wrap, 5);
    stubs::infoFailure = SA_ERR_HPI_NO_RESPONSE;
    Exchange(10, 40).expect(-1012);
}

TEST_F(RequestTest, EntryGetOfALinkedLogMarksItsEndsLikeAnyOther) {
    start(linked, wrap, 5);
    add(1);
    addBoardEvent();
    add(3);
    expectEntry(1, 1, 0xFFFFFFFE, 2, true, true);
    expectEntry(2, 2, 1, 3, true, true);
    expectEntry(3, 3, 2, 0xFFFFFFFE, true, true);
    expectEntry(0, 1, 0xFFFFFFFE, 2, true, true);
    expectEntry(0xFFFFFFFF, 3, 2, 0xFFFFFFFE, true, true);
}

TEST_F(RequestTest, EntryGetOfASimpleLog) {
    start(simple, drop, 5);
    add(1);
    add(2);
    expectEntry(0, 1, 0xFFFFFFFE, 2, true, true);
    expectEntry(0xFFFFFFFF, 2, 1, 0xFFFFFFFE, true, true);
}

TEST_F(RequestTest, EntryGetOfACircularLog) {
    start(circular, wrap, 3);
    for (std::uint8_t seed = 1; seed <= 5; ++seed) {
        add(seed);
    }
    expectEntry(0, 3, 0xFFFFFFFE, 1, true, true);
    expectEntry(1, 1, 3, 2, true, true);
    expectEntry(0xFFFFFFFF, 2, 1, 0xFFFFFFFE, true, true);
}

TEST_F(RequestTest, EntryGetSaysWhatTheEntryHolds) {
    start(linked, wrap, 5);
    for (const bool rpt : {false, true}) {
        for (const bool rdr : {false, true}) {
            EventLogAddRecord record = sample_log::boardEvent();
            record.rpt.ResourceCapabilities = rpt ? 0x80000000 : 0;
            record.rdr.RdrType = rdr ? SAHPI_WATCHDOG_RDR : SAHPI_NO_RECORD;
            ASSERT_EQ(zuSaHpiEventLogClear(), SA_OK);
            ASSERT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_OK);
            expectEntry(1, 1, 0xFFFFFFFE, 0xFFFFFFFE, rpt, rdr);
        }
    }
}

TEST_F(RequestTest, AMessageMayLieAtAnyAddress) {
    start(linked, wrap, 5);
    addBoardEvent();
    for (std::size_t shift = 0; shift <= 8; ++shift) {
        expectEntry(1, 1, 0xFFFFFFFE, 0xFFFFFFFE, true, true, shift);
    }
}

// Of a request that fails to get something only the entry id is read, and only the code written.
TEST_F(RequestTest, AFailedGetChangesTheReturnCodeAlone) {
    start(linked, wrap, 5);
    for (const std::uint32_t type : {12U, 14U, 16U}) {
        for (const std::uint32_t id : {0U, 1U, 6U, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
            Exchange exchange(type, 4);
            exchange.ask(128, id);
            exchange.expect(-1011);
        }
    }
    const EventLogAddRecord bare = userEvent(2);
    ASSERT_EQ(zuSaHpiEventLogEntryAdd(&bare, 0), SA_OK);
    for (const std::uint32_t type : {14U, 16U}) { // the entry holds neither
        Exchange exchange(type, 4);
        exchange.ask(128, std::uint32_t{1});
        exchange.expect(-1011);
    }
}

TEST_F(RequestTest, AGetThatCannotReadReportsNoResponse) {
    inChild([] {
        start(simple, drop, 5);
        add(1);
    });
    start(simple, drop, 5);
    for (const std::uint32_t type : {12U, 14U, 16U}) {
        failCall(Call::read, EIO);
        Exchange exchange(type, 4);
        exchange.ask(128, std::uint32_t{1});
        exchange.expect(-1012);
    }
}

TEST_F(RequestTest, RptGet) {
    start(linked, wrap, 5);
    addBoardEvent();
    const SaHpiRptEntryT expected = sample_log::boardEvent().rpt;
    Exchange exchange(14, 452);
    exchange.request.set(128, std::uint32_t{1});
    exchange.reply.setBytes(128, &expected, 448);
    exchange.reply.set(128 + 448, std::uint32_t{0xFFFFFFFF});
    exchange.expect(0, 15, 468);
}

TEST_F(RequestTest, RdrGetLeavesItsPaddingAlone) {
    start(linked, wrap, 5);
    addBoardEvent();
    const SaHpiRdrT expected = sample_log::boardEvent().rdr;
    Exchange exchange(16, 728);
    exchange.request.set(128, std::uint32_t{0xFFFFFFFF});
    exchange.reply.setBytes(128, &expected, 720);
    exchange.reply.set(128 + 724, std::uint32_t{0xFFFFFFFF});
    exchange.expect(0, 17, 744);
}

TEST_F(RequestTest, AddTakesTheEventAloneAlsoWhileTheLogIsDisabled) {
    start(linked, wrap, 5);
    ASSERT_EQ(zuSaHpiEventLogStateSet(0), SA_OK);
    const EventLogAddRecord added = event(0x35);
    Exchange exchange(18, 296);
    exchange.ask(128, added.event);
    exchange.expect(0, 19, 16);
    EventLogEntryRecord record;
    ASSERT_EQ(zuSaHpiEventLogEntryGet(1, &record), SA_OK);
    EXPECT_TRUE(equalBytes(&record.entry.Event, &added.event, 296));
    const std::array<unsigned char, 448 + 720> nothing{};
    EXPECT_TRUE(equalBytes(&record.rpt, nothing.data(), 448));
    EXPECT_TRUE(equalBytes(&record.rdr, nothing.data(), 720));
}

TEST_F(RequestTest, AnAddThatFailsIsAnsweredAllTheSame) {
    EventLogControlBlock block = controlBlock(linked, drop, 1);
    block.info.sa.UserEventMaxSize = 4;
    start(block);
    Exchange tooLong(18, 296);
    tooLong.ask(128, userEvent(5).event);
    tooLong.expect(-1010, 19, 16);
    Exchange fits(18, 296);
    fits.ask(128, userEvent(4).event);
    fits.expect(0, 19, 16);
    Exchange full(18, 296);
    full.ask(128, userEvent(4).event);
    full.expect(-1007, 19, 16);
}

TEST_F(RequestTest, ClearChangesTheReturnCodeAlone) {
    start(linked, wrap, 5);
    add(1);
    Exchange(20, 0).expect(0);
    EXPECT_EQ(info().Entries, 0U);
    failCall(Call::write, EIO);
    Exchange(20, 0).expect(-1012);
}

TEST_F(RequestTest, ResetOverflowChangesTheReturnCodeAlone) {
    start(linked, drop, 1);
    add(1);
    const EventLogAddRecord second = event(2);
    ASSERT_EQ(zuSaHpiEventLogEntryAdd(&second, 0), SA_ERR_HPI_OUT_OF_SPACE);
    ASSERT_EQ(info().OverflowFlag, 1);
    Exchange(21, 0).expect(0);
    EXPECT_EQ(info().OverflowFlag, 0);
}

TEST_F(RequestTest, ResetOverflowMayBeForbidden) {
    EventLogControlBlock block = controlBlock(linked, drop, 1);
    block.info.sa.OverflowResetable = 0;
    start(block);
    Exchange(21, 0).expect(-1005);
}

TEST_F(RequestTest, SetTime) {
    start(linked, wrap, 5);
    Exchange exchange(22, 32);
    exchange.ask(128 + 24, std::int64_t{0x0102030405060708});
    exchange.expect(0, 23, 16);
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 0x0102030405060708);
    Exchange negative(22, 32);
    negative.ask(128 + 24, std::int64_t{-1});
    negative.expect(-1009, 23, 16);
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 0x0102030405060708);
}

TEST_F(RequestTest, SetState) {
    start(linked, wrap, 5);
    for (const int value : {0, 1, 0, 0x80, 0, 0xFF}) {
        Exchange exchange(24, 33);
        exchange.ask(128 + 32, static_cast<std::uint8_t>(value));
        exchange.expect(0, 25, 16);
        EXPECT_EQ(zuSaHpiEventLogStateGet(), value != 0 ? SAHPI_TRUE : SAHPI_FALSE) << value;
    }
}

} // namespace
