// zuSaHpiEvtLogRequest: a client's request is served by one operation of the store, and the reply
// written into the same message.
//
// Invariant: the message has any alignment, so that its fields are only ever copied; and nothing of
// it is touched but the fields that the request reads and the reply writes.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "frontends/message_formats.h"
#include "util/diagnostics.h"

namespace zusahpi::frontends {
namespace {

// Offsets in the message. The transport's area comes first, then the size, the header, the payload.
constexpr std::size_t sizeOffset = 108;
constexpr std::size_t headerOffset = sizeOffset + sizeof(std::uint32_t);
constexpr std::size_t typeOffset = headerOffset;
constexpr std::size_t returnCodeOffset = typeOffset + sizeof(std::uint32_t);
constexpr std::size_t headerSize = 16;
constexpr std::size_t payloadOffset = headerOffset + headerSize;
static_assert(payloadOffset == 128);

// What the message type of a request may be. A reply's type is its request's plus one, except that
// clear and reset overflow keep theirs.
enum class Request : std::uint32_t {
    infoGet = 10,
    entryGet = 12,
    rptGet = 14,
    rdrGet = 16,
    add = 18,
    clear = 20,
    resetOverflow = 21,
    setTime = 22,
    setState = 24,
};

// Offsets in the payloads of requests and of replies.
constexpr std::size_t requestEntryId = payloadOffset;
constexpr std::size_t requestEvent = payloadOffset;
constexpr std::size_t requestTime = payloadOffset + offsetof(SaHpiEventLogInfoT, CurrentTime);
constexpr std::size_t requestEnabled = payloadOffset + offsetof(SaHpiEventLogInfoT, Enabled);

constexpr std::size_t replyInfo = payloadOffset;

constexpr std::size_t replyEntry = payloadOffset;
constexpr std::size_t replyRptValid = replyEntry + sizeof(SaHpiEventLogEntryT);
constexpr std::size_t replyRdrValid = replyRptValid + sizeof(SaHpiBoolT);
constexpr std::size_t replyPrevious = replyRdrValid + sizeof(SaHpiBoolT) + 2; // of padding
constexpr std::size_t replyNext = replyPrevious + sizeof(SaHpiEntryIdT);

constexpr std::size_t replyRpt = payloadOffset;
constexpr std::size_t replyRptNext = replyRpt + sizeof(SaHpiRptEntryT);

constexpr std::size_t replyRdr = payloadOffset;
constexpr std::size_t replyRdrNext = replyRdr + sizeof(SaHpiRdrT) + 4; // of padding

static_assert(requestTime == payloadOffset + 24 && requestEnabled == payloadOffset + 32);
static_assert(replyPrevious == payloadOffset + 316 && replyNext == payloadOffset + 320);
static_assert(replyRptNext == payloadOffset + 448 && replyRdrNext == payloadOffset + 724);

// The end of the last field, and the padding of the entry reply behind it, give the table's sizes.
static_assert(sizeOf(MessageFormat::hdrOnly) == headerSize);
static_assert(sizeOf(MessageFormat::eventLogInfo) ==
              replyInfo + sizeof(SaHpiEventLogInfoT) - headerOffset);
static_assert(sizeOf(MessageFormat::eventLogEntry) ==
              replyNext + sizeof(SaHpiEntryIdT) + 4 - headerOffset);
static_assert(sizeOf(MessageFormat::rptEnt) == replyRptNext + sizeof(SaHpiEntryIdT) - headerOffset);
static_assert(sizeOf(MessageFormat::rdr) == replyRdrNext + sizeof(SaHpiEntryIdT) - headerOffset);

template <typename T>
[[nodiscard]] T fieldOf(const std::byte *message, std::size_t offset) {
    T value;
    std::memcpy(&value, message + offset, sizeof value);
    return value;
}

template <typename T>
void setField(std::byte *message, std::size_t offset, const T &value) {
    std::memcpy(message + offset, &value, sizeof value);
}

void setReturnCode(std::byte *message, SaErrorT code) {
    setField(message, returnCodeOffset, static_cast<std::int32_t>(code));
}

void setReply(std::byte *message, Request request, MessageFormat format) {
    setField(message, typeOffset, static_cast<std::uint32_t>(request) + 1);
    setField(message, sizeOffset, sizeOf(format));
}

[[nodiscard]] SaErrorT serveInfoGet(std::byte *message) {
    SaHpiEventLogInfoT info;
    const SaErrorT result = zuSaHpiEventLogInfoGet(&info);
    if (result == SA_OK) {
        setReply(message, Request::infoGet, MessageFormat::eventLogInfo);
        setField(message, replyInfo, info);
    }
    return result;
}

// Clients know one mark for "no neighbour", whatever the type of the log.
[[nodiscard]] std::uint32_t neighbourForClient(std::uint32_t number) {
    return number == ZUSAHPI_EL_NO_ENTRY ? SAHPI_NO_MORE_ENTRIES : number;
}

[[nodiscard]] SaErrorT serveEntryGet(std::byte *message) {
    EventLogEntryRecord record;
    const SaErrorT result =
        zuSaHpiEventLogEntryGet(fieldOf<std::uint32_t>(message, requestEntryId), &record);
    if (result != SA_OK) {
        return result;
    }
    const SaHpiBoolT rptValid = record.rpt.ResourceCapabilities != 0 ? SAHPI_TRUE : SAHPI_FALSE;
    const SaHpiBoolT rdrValid = record.rdr.RdrType != SAHPI_NO_RECORD ? SAHPI_TRUE : SAHPI_FALSE;
    setReply(message, Request::entryGet, MessageFormat::eventLogEntry);
    setField(message, replyEntry, record.entry);
    setField(message, replyRptValid, rptValid);
    setField(message, replyRdrValid, rdrValid);
    setField(message, replyPrevious, neighbourForClient(record.prev));
    setField(message, replyNext, neighbourForClient(record.next));
    return SA_OK;
}

// The reply has room for the id of a next record; there is never one.
constexpr std::uint32_t noNextRecord = SAHPI_LAST_ENTRY;

[[nodiscard]] SaErrorT serveRptGet(std::byte *message) {
    SaHpiRptEntryT rpt;
    const SaErrorT result =
        zuSaHpiEventLogEntRptGet(fieldOf<std::uint32_t>(message, requestEntryId), &rpt);
    if (result == SA_OK) {
        setReply(message, Request::rptGet, MessageFormat::rptEnt);
        setField(message, replyRpt, rpt);
        setField(message, replyRptNext, noNextRecord);
    }
    return result;
}

[[nodiscard]] SaErrorT serveRdrGet(std::byte *message) {
    SaHpiRdrT rdr;
    const SaErrorT result =
        zuSaHpiEventLogEntRdrGet(fieldOf<std::uint32_t>(message, requestEntryId), &rdr);
    if (result == SA_OK) {
        setReply(message, Request::rdrGet, MessageFormat::rdr);
        setField(message, replyRdr, rdr);
        setField(message, replyRdrNext, noNextRecord);
    }
    return result;
}

// Clients add events alone, and also while the log is disabled.
[[nodiscard]] SaErrorT serveAdd(std::byte *message) {
    EventLogAddRecord record;
    std::memset(&record, 0, sizeof record);
    std::memcpy(&record.event, message + requestEvent, sizeof record.event);
    record.rpt.ResourceCapabilities = 0;
    record.rdr.RdrType = SAHPI_NO_RECORD;
    setReply(message, Request::add, MessageFormat::hdrOnly);
    return zuSaHpiEventLogEntryAdd(&record, 1);
}

[[nodiscard]] SaErrorT serveSetTime(std::byte *message) {
    setReply(message, Request::setTime, MessageFormat::hdrOnly);
    return zuSaHpiEventLogTimeSet(fieldOf<SaHpiTimeT>(message, requestTime));
}

[[nodiscard]] SaErrorT serveSetState(std::byte *message) {
    setReply(message, Request::setState, MessageFormat::hdrOnly);
    return zuSaHpiEventLogStateSet(fieldOf<SaHpiBoolT>(message, requestEnabled));
}

// Two sides that disagree about the protocol must not go on talking.
[[noreturn]] void refuse() {
    zuSaHpiPrintf(diagnostics(), "zuSaHpiEvtLogRequest:Undefined Event Log request type.\n");
    std::exit(EXIT_FAILURE);
}

[[nodiscard]] SaErrorT serve(std::byte *message) {
    switch (static_cast<Request>(fieldOf<std::uint32_t>(message, typeOffset))) {
    case Request::infoGet:
        return serveInfoGet(message);
    case Request::entryGet:
        return serveEntryGet(message);
    case Request::rptGet:
        return serveRptGet(message);
    case Request::rdrGet:
        return serveRdrGet(message);
    case Request::add:
        return serveAdd(message);
    case Request::clear:
        return zuSaHpiEventLogClear();
    case Request::resetOverflow:
        return zuSaHpiEventLogResetOverflow();
    case Request::setTime:
        return serveSetTime(message);
    case Request::setState:
        return serveSetState(message);
    }
    refuse();
}

} // namespace
} // namespace zusahpi::frontends

int zuSaHpiEvtLogRequest(void *request) {
    using namespace zusahpi::frontends;
    auto *message = static_cast<std::byte *>(request);
    setReturnCode(message,
                  zuSaHpiEventLogInitialized() == 0 ? SA_ERR_HPI_INVALID_CMD : serve(message));
    return 0;
}
