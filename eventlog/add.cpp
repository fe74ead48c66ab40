// zuSaHpiEventLogEntryAdd: forwarding to syslog, then one transaction that makes room when the log
// is full, chooses the new entry's number, and links and writes the record.

#include <cstddef>
#include <cstring>

#include "eventlog/failure.h"
#include "eventlog/recovery.h"
#include "eventlog/remove.h"
#include "eventlog/retrieval.h"
#include "eventlog/store_state.h"
#include "eventlog/transaction.h"

namespace zusahpi::eventlog {
namespace {

bool userEventTooLong(const SaHpiEventT &event) {
    return event.EventType == SAHPI_ET_USER &&
           event.EventDataUnion.UserEvent.UserEventData.DataLength >
               currentInfo().sa.UserEventMaxSize;
}

SaErrorT deleteToMakeRoom(EventLogInfoRecord &info, SaHpiEventLogEntryIdT victim,
                          const char *failure) {
    const SaErrorT result = removeEntry(info, victim);
    if (result == SA_OK || result == SA_ERR_HPI_NO_RESPONSE) {
        return result;
    }
    return internalError(failure);
}

// Called on a full log. SA_ERR_HPI_OUT_OF_SPACE: the entry is refused, but the overflow counts.
SaErrorT overflow(EventLogInfoRecord &info) {
    info.sa.OverflowFlag = 1;
    if (info.sa.Size == 0) {
        return SA_ERR_HPI_OUT_OF_SPACE;
    }
    switch (overflowActionOf(info)) {
    case OverflowAction::drop:
        return SA_ERR_HPI_OUT_OF_SPACE;
    case OverflowAction::wrap:
        return deleteToMakeRoom(info, SAHPI_OLDEST_ENTRY,
                                "Event log error - unable to delete oldest entry\n");
    case OverflowAction::writeLast:
        return deleteToMakeRoom(info, SAHPI_NEWEST_ENTRY,
                                "Event log error - unable to delete newest entry\n");
    }
    return internalError("Event log error - unknown overflow action.\n");
}

SaErrorT makeRoom(EventLogInfoRecord &info) {
    if (info.sa.Entries > info.sa.Size) {
        return internalError("Event log error - reporting more entries than size\n");
    }
    if (info.sa.Entries == info.sa.Size) {
        if (const SaErrorT result = overflow(info); result != SA_OK) {
            return result;
        }
    }
    if (info.sa.Entries >= info.sa.Size) {
        return internalError("Event log error - no room when there should be\n");
    }
    return SA_OK;
}

constexpr char numberOutOfRange[] = "Event log error - new entryId out of range\n";

// Takes the first record off the free list.
SaErrorT takeFreeNumber(EventLogInfoRecord &info, std::uint32_t &number) {
    number = info.freeHead;
    if (number == 0 || number > info.maxUsed) { // a damaged file: there is no such record to read
        return internalError(numberOutOfRange);
    }
    EventLogEntryRecord record;
    const SaErrorT result = getEntry(number, record);
    if (result == SA_OK) {
        return internalError("Event log error - entry read off free list was not marked deleted\n");
    }
    if (result != SA_ERR_HPI_NOT_PRESENT) {
        return SA_ERR_HPI_NO_RESPONSE;
    }
    info.freeHead = record.next;
    return SA_OK;
}

SaErrorT chooseNumber(EventLogInfoRecord &info, std::uint32_t &number) {
    const std::uint32_t afterNewest = info.newest == noEntry ? 1 : info.newest + 1;
    switch (typeOf(info)) {
    case LogType::simple:
        number = afterNewest;
        break;
    case LogType::circular:
        number = afterNewest > info.sa.Size ? 1 : afterNewest;
        break;
    case LogType::linked:
        if (info.freeHead != noEntry) {
            if (const SaErrorT result = takeFreeNumber(info, number); result != SA_OK) {
                return result;
            }
        } else {
            number = info.maxUsed + 1;
        }
        break;
    default:
        return internalError("Event log error - unknown log type.\n");
    }
    // 0 and noEntry come of a damaged file alone: no record bears them.
    const bool isNumber = number != 0 && number != noEntry;
    if (!isNumber || number > std::uint64_t{info.maxUsed} + 1 || number > info.sa.Size) {
        return internalError(numberOutOfRange);
    }
    return SA_OK;
}

// Every byte in the file is a known one: what lies between the members that are set is none.
static_assert(offsetof(EventLogEntryRecord, entry.Event) + sizeof(SaHpiEventT) ==
              offsetof(EventLogEntryRecord, rpt));
static_assert(offsetof(EventLogEntryRecord, rpt) + sizeof(SaHpiRptEntryT) ==
              offsetof(EventLogEntryRecord, rdr));
static_assert(offsetof(EventLogEntryRecord, rdr) + sizeof(SaHpiRdrT) ==
              sizeof(EventLogEntryRecord));

SaErrorT writeNewRecord(const EventLogInfoRecord &info, const EventLogAddRecord &added,
                        std::uint32_t number, SaHpiTimeT time) {
    EventLogEntryRecord *const record = changedRecordOf(number);
    if (record == nullptr) {
        return SA_ERR_HPI_NO_RESPONSE;
    }
    std::memset(record, 0, offsetof(EventLogEntryRecord, entry.Event));
    record->prev = typeOf(info) == LogType::linked ? info.newest : noEntry;
    record->next = noEntry;
    record->entry.EntryId = number;
    record->entry.Timestamp = time;
    record->entry.Event = added.event;
    record->rpt = added.rpt;
    record->rdr = added.rdr;
    return SA_OK;
}

SaErrorT linkFromNewest(const EventLogInfoRecord &info, std::uint32_t number) {
    if (typeOf(info) != LogType::linked || info.newest == noEntry) {
        return SA_OK;
    }
    EventLogEntryRecord newest;
    if (const SaErrorT result = getEntryToChange(info.newest, newest); result != SA_OK) {
        return result == SA_ERR_HPI_NOT_PRESENT ? SA_ERR_HPI_NO_RESPONSE : result;
    }
    newest.next = number;
    return writeEntry(newest) == SA_OK ? SA_OK : SA_ERR_HPI_NO_RESPONSE;
}

void countNewEntry(EventLogInfoRecord &info, std::uint32_t number, SaHpiTimeT time) {
    ++info.sa.Entries;
    info.sa.UpdateTimestamp = time;
    info.newest = number;
    if (info.oldest == noEntry) {
        info.oldest = number;
    }
    if (number == info.maxUsed + 1) {
        info.maxUsed = number;
    }
}

SaErrorT addInTransaction(EventLogInfoRecord &info, const EventLogAddRecord &added) {
    if (const SaErrorT result = makeRoom(info); result != SA_OK) {
        return result;
    }
    std::uint32_t number = 0;
    if (const SaErrorT result = chooseNumber(info, number); result != SA_OK) {
        return result;
    }
    const SaHpiTimeT time = zuSaHpiEventLogTimeGet();
    if (const SaErrorT result = writeNewRecord(info, added, number, time); result != SA_OK) {
        return result;
    }
    if (const SaErrorT result = linkFromNewest(info, number); result != SA_OK) {
        return result;
    }
    countNewEntry(info, number, time);
    return SA_OK;
}

bool isDroppedSilently(int force) {
    return force == 0 && currentInfo().sa.Enabled == 0;
}

void forwardToSyslog(const EventLogAddRecord &added, bool silentlyDropped) {
    if (store.syslogEnabled && !(silentlyDropped && store.syslogFollowsState)) {
        zuSaHpiEventLogSyslogAdd(&added);
    }
}

} // namespace
} // namespace zusahpi::eventlog

SaErrorT zuSaHpiEventLogEntryAdd(const EventLogAddRecord *entry, int force) {
    using namespace zusahpi::eventlog;
    const bool dropped = isDroppedSilently(force);
    forwardToSyslog(*entry, dropped);
    if (!store.fileEnabled || dropped) {
        return SA_OK;
    }
    if (const char *reason = hindrance()) {
        return internalError("Event log error - attempt to add an entry when ", reason);
    }
    if (userEventTooLong(entry->event)) {
        return SA_ERR_HPI_INVALID_DATA;
    }
    if (!finishWaitingCommit()) {
        return SA_ERR_HPI_NO_RESPONSE;
    }
    if (isDroppedSilently(force)) { // by a change that waited until now
        return SA_OK;
    }
    EventLogInfoRecord workingCopy;
    beginTransaction(workingCopy);
    const SaErrorT result = addInTransaction(workingCopy, *entry);
    if (result == SA_ERR_HPI_OUT_OF_SPACE) {
        (void)commitTransaction(); // the refusal stands whether or not the overflow got recorded
        return result;
    }
    if (result != SA_OK) {
        abortTransaction();
        return result;
    }
    return commitTransaction();
}
