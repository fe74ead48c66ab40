// Deleting an entry, by log type. Simple and Circular logs move an end and write no record; a
// Linked log unlinks the record and puts it at the head of the free list.

#include "eventlog/remove.h"

#include "eventlog/failure.h"
#include "eventlog/recovery.h"
#include "eventlog/retrieval.h"
#include "eventlog/store_state.h"
#include "eventlog/transaction.h"
#include "util/diagnostics.h"

namespace zusahpi::eventlog {
namespace {

void becomeEmpty(EventLogInfoRecord &info) {
    info.oldest = noEntry;
    info.newest = noEntry;
    info.maxUsed = 0;
}

SaErrorT removeFromSimple(EventLogInfoRecord &info, std::uint32_t number) {
    if (number != info.newest) {
        return internalError(
            "Event log error: Attempt to delete non-newest entry in Simple-type log.\n");
    }
    if (info.newest == 1) {
        becomeEmpty(info);
    } else {
        --info.newest;
        --info.maxUsed;
    }
    return SA_OK;
}

SaErrorT removeFromCircular(EventLogInfoRecord &info, std::uint32_t number) {
    if (outsideRing(number, info)) {
        return SA_ERR_HPI_NOT_PRESENT;
    }
    if (info.oldest == info.newest) {
        becomeEmpty(info);
        return SA_OK;
    }
    if (number == info.newest) {
        info.newest = info.newest == 1 ? info.maxUsed : info.newest - 1;
    } else if (number == info.oldest) {
        info.oldest = number == info.maxUsed ? 1 : number + 1;
    } else {
        return internalError("Attempt to delete non-end entry in ", "Circular-type log.\n");
    }
    if (info.newest >= info.oldest) { // not wrapped: nothing above newest is in use
        info.maxUsed = info.newest;
    }
    return SA_OK;
}

SaErrorT writeNeighbour(const EventLogEntryRecord &record) {
    return writeEntry(record) == SA_OK ? SA_OK : SA_ERR_HPI_NO_RESPONSE;
}

SaErrorT unlinkFromOlder(EventLogInfoRecord &info, const EventLogEntryRecord &removed) {
    if (removed.prev == noEntry) {
        if (removed.entry.EntryId != info.oldest) {
            return internalError("Event log error - non-oldest record has no previous link\n");
        }
        info.oldest = removed.next;
        return SA_OK;
    }
    EventLogEntryRecord older;
    const SaErrorT result = getEntryToChange(removed.prev, older);
    if (result == SA_ERR_HPI_NOT_PRESENT) {
        return internalError("Event log error - previous entry in active record is deleted.\n");
    }
    if (result != SA_OK) {
        return result;
    }
    older.next = removed.next;
    return writeNeighbour(older);
}

SaErrorT unlinkFromNewer(EventLogInfoRecord &info, const EventLogEntryRecord &removed) {
    if (removed.next == noEntry) {
        if (removed.entry.EntryId != info.newest) {
            return internalError("Event log error - non-newest record has no next link\n");
        }
        info.newest = removed.prev;
        return SA_OK;
    }
    EventLogEntryRecord newer;
    const SaErrorT result = getEntryToChange(removed.next, newer);
    if (result == SA_ERR_HPI_NOT_PRESENT) {
        return internalError("Event log error - next entry in", " active record is deleted.\n");
    }
    if (result != SA_OK) {
        return result;
    }
    newer.prev = removed.prev;
    return writeNeighbour(newer);
}

SaErrorT removeFromLinked(EventLogInfoRecord &info, std::uint32_t number) {
    EventLogEntryRecord removed;
    SaErrorT result = getEntryToChange(number, removed);
    if (result == SA_OK) {
        result = unlinkFromOlder(info, removed);
    }
    if (result == SA_OK) {
        result = unlinkFromNewer(info, removed);
    }
    if (result != SA_OK) {
        return result;
    }
    removed.next = info.freeHead;
    removed.deleted = 1;
    if (writeEntry(removed) != SA_OK) {
        return SA_ERR_HPI_NO_RESPONSE;
    }
    info.freeHead = number;
    return SA_OK;
}

SaErrorT removeByType(EventLogInfoRecord &info, std::uint32_t number) {
    switch (typeOf(info)) {
    case LogType::simple:
        return removeFromSimple(info, number);
    case LogType::circular:
        return removeFromCircular(info, number);
    case LogType::linked:
        return removeFromLinked(info, number);
    }
    return internalError("Event log error: undefined log type.\n");
}

// In one print, unlike the other operations.
SaErrorT refuse(const char *reason) {
    zuSaHpiPrintf(diagnostics(), "Event log error - attempt to delete an entry when %s", reason);
    return SA_ERR_HPI_INTERNAL_ERROR;
}

} // namespace

SaErrorT removeEntry(EventLogInfoRecord &workingCopy, SaHpiEventLogEntryIdT entryId) {
    const std::uint32_t number = numberOf(entryId, workingCopy);
    if (number > workingCopy.maxUsed) { // an empty log's ends among them
        return SA_ERR_HPI_NOT_PRESENT;
    }
    if (const SaErrorT result = removeByType(workingCopy, number); result != SA_OK) {
        return result;
    }
    --workingCopy.sa.Entries;
    workingCopy.sa.UpdateTimestamp = zuSaHpiEventLogTimeGet();
    return SA_OK;
}

} // namespace zusahpi::eventlog

SaErrorT zuSaHpiEventLogEntryDel(SaHpiEventLogEntryIdT entryId, int force) {
    using namespace zusahpi::eventlog;
    if (!store.fileEnabled) {
        return SA_ERR_HPI_NOT_PRESENT;
    }
    if (force != 0) {
        if (store.transaction == nullptr) {
            return internalError(
                "Event log error - force deleting an entry when no transaction is inprocess.\n");
        }
        return removeEntry(*store.transaction, entryId);
    }
    if (const char *reason = hindrance()) {
        return refuse(reason);
    }
    if (!finishWaitingCommit()) {
        return SA_ERR_HPI_NO_RESPONSE;
    }
    EventLogInfoRecord workingCopy;
    beginTransaction(workingCopy);
    if (const SaErrorT result = removeEntry(workingCopy, entryId); result != SA_OK) {
        abortTransaction();
        return result;
    }
    return commitTransaction();
}
