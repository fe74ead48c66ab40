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
#include "zuSaHpi_messages.h"

namespace zusahpi::frontends {
namespace {

// The sizes of the printed table are those that replies carry.
static_assert(sizeOf(MessageFormat::hdrOnly) == ZUSAHPI_MSG_HEADER_SIZE);
static_assert(sizeOf(MessageFormat::eventLogInfo) == ZUSAHPI_MSG_INFO_SIZE);
static_assert(sizeOf(MessageFormat::eventLogEntry) == ZUSAHPI_MSG_ENTRY_SIZE);
static_assert(sizeOf(MessageFormat::rptEnt) == ZUSAHPI_MSG_RPT_SIZE);
static_assert(sizeOf(MessageFormat::rdr) == ZUSAHPI_MSG_RDR_SIZE);

// Offsets in the message.
constexpr std::size_t sizeOffset = offsetof(zuSaHpiMessageT, size);
constexpr std::size_t typeOffset = offsetof(zuSaHpiMessageT, type);
constexpr std::size_t returnCodeOffset = offsetof(zuSaHpiMessageT, returnCode);

constexpr std::size_t requestEntryId = offsetof(zuSaHpiMessageT, payload.entryId);
constexpr std::size_t requestEvent = offsetof(zuSaHpiMessageT, payload.event);
constexpr std::size_t requestTime = offsetof(zuSaHpiMessageT, payload.info.CurrentTime);
constexpr std::size_t requestEnabled = offsetof(zuSaHpiMessageT, payload.info.Enabled);

constexpr std::size_t replyInfo = offsetof(zuSaHpiMessageT, payload.info);

constexpr std::size_t replyEntry = offsetof(zuSaHpiMessageT, payload.entry.entry);
constexpr std::size_t replyRptValid = offsetof(zuSaHpiMessageT, payload.entry.rptValid);
constexpr std::size_t replyRdrValid = offsetof(zuSaHpiMessageT, payload.entry.rdrValid);
constexpr std::size_t replyPrevious = offsetof(zuSaHpiMessageT, payload.entry.previous);
constexpr std::size_t replyNext = offsetof(zuSaHpiMessageT, payload.entry.next);

constexpr std::size_t replyRpt = offsetof(zuSaHpiMessageT, payload.rpt.rpt);
constexpr std::size_t replyRptNext = offsetof(zuSaHpiMessageT, payload.rpt.next);

constexpr std::size_t replyRdr = offsetof(zuSaHpiMessageT, payload.rdr.rdr);
constexpr std::size_t replyRdrNext = offsetof(zuSaHpiMessageT, payload.rdr.next);

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

void setReply(std::byte *message, std::uint32_t type, std::uint32_t size) {
    setField(message, typeOffset, type);
    setField(message, sizeOffset, size);
}

[[nodiscard]] SaErrorT serveInfoGet(std::byte *message) {
    SaHpiEventLogInfoT info;
    const SaErrorT result = zuSaHpiEventLogInfoGet(&info);
    if (result == SA_OK) {
        setReply(message, ZUSAHPI_MSG_INFO_GET_REPLY, ZUSAHPI_MSG_INFO_SIZE);
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
    setReply(message, ZUSAHPI_MSG_ENTRY_GET_REPLY, ZUSAHPI_MSG_ENTRY_SIZE);
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
        setReply(message, ZUSAHPI_MSG_RPT_GET_REPLY, ZUSAHPI_MSG_RPT_SIZE);
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
        setReply(message, ZUSAHPI_MSG_RDR_GET_REPLY, ZUSAHPI_MSG_RDR_SIZE);
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
    setReply(message, ZUSAHPI_MSG_ADD_REPLY, ZUSAHPI_MSG_HEADER_SIZE);
    return zuSaHpiEventLogEntryAdd(&record, 1);
}

[[nodiscard]] SaErrorT serveSetTime(std::byte *message) {
    setReply(message, ZUSAHPI_MSG_SET_TIME_REPLY, ZUSAHPI_MSG_HEADER_SIZE);
    return zuSaHpiEventLogTimeSet(fieldOf<SaHpiTimeT>(message, requestTime));
}

[[nodiscard]] SaErrorT serveSetState(std::byte *message) {
    setReply(message, ZUSAHPI_MSG_SET_STATE_REPLY, ZUSAHPI_MSG_HEADER_SIZE);
    return zuSaHpiEventLogStateSet(fieldOf<SaHpiBoolT>(message, requestEnabled));
}

// Two sides that disagree about the protocol must not go on talking.
[[noreturn]] void refuse() {
    zuSaHpiPrintf(diagnostics(), "zuSaHpiEvtLogRequest:Undefined Event Log request type.\n");
    std::exit(EXIT_FAILURE);
}

[[nodiscard]] SaErrorT serve(std::byte *message) {
    switch (fieldOf<std::uint32_t>(message, typeOffset)) {
    case ZUSAHPI_MSG_INFO_GET:
        return serveInfoGet(message);
    case ZUSAHPI_MSG_ENTRY_GET:
        return serveEntryGet(message);
    case ZUSAHPI_MSG_RPT_GET:
        return serveRptGet(message);
    case ZUSAHPI_MSG_RDR_GET:
        return serveRdrGet(message);
    case ZUSAHPI_MSG_ADD:
        return serveAdd(message);
    case ZUSAHPI_MSG_CLEAR:
        return zuSaHpiEventLogClear();
    case ZUSAHPI_MSG_RESET_OVERFLOW:
        return zuSaHpiEventLogResetOverflow();
    case ZUSAHPI_MSG_SET_TIME:
        return serveSetTime(message);
    case ZUSAHPI_MSG_SET_STATE:
        return serveSetState(message);
    default:
        refuse();
    }
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
