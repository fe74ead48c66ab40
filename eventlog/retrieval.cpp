// The read side of the store: an entry with its neighbours, its RPT entry, its RDR.

#include "eventlog/retrieval.h"

#include "eventlog/entry_io.h"
#include "eventlog/failure.h"
#include "eventlog/store_state.h"

namespace zusahpi::eventlog {
namespace {

// A Linked log's records hold their neighbours; the other types' neighbours follow from the number.
void setNeighbours(EventLogEntryRecord &record, std::uint32_t number,
                   const EventLogInfoRecord &info) {
    const LogType type = typeOf(info);
    if (type != LogType::simple && type != LogType::circular) {
        return;
    }
    const bool ring = type == LogType::circular;
    if (number == info.oldest) {
        record.prev = SAHPI_NO_MORE_ENTRIES;
    } else {
        record.prev = ring && number == 1 ? info.maxUsed : number - 1;
    }
    if (number == info.newest) {
        record.next = SAHPI_NO_MORE_ENTRIES;
    } else {
        record.next = ring && number == info.maxUsed ? 1 : number + 1;
    }
}

} // namespace

std::uint32_t numberOf(SaHpiEventLogEntryIdT entryId, const EventLogInfoRecord &info) {
    if (entryId == SAHPI_NEWEST_ENTRY) {
        return info.newest;
    }
    return entryId == SAHPI_OLDEST_ENTRY ? info.oldest : entryId;
}

SaErrorT getEntry(std::uint32_t number, EventLogEntryRecord &record) {
    const EventLogInfoRecord &info = currentInfo();
    if (number == noEntry || number == 0) { // 0 only where a file's links or ends are damaged
        return SA_ERR_HPI_NOT_PRESENT;
    }
    if (typeOf(info) == LogType::circular && outsideRing(number, info)) {
        return SA_ERR_HPI_NOT_PRESENT;
    }
    if (const SaErrorT result = readEntry(number, record); result != SA_OK) {
        return result;
    }
    setNeighbours(record, number, info);
    return record.deleted != 0 ? SA_ERR_HPI_NOT_PRESENT : SA_OK;
}

SaErrorT getEntryToChange(std::uint32_t number, EventLogEntryRecord &record) {
    const EventLogInfoRecord &info = currentInfo();
    if (number > info.maxUsed) {
        return SA_ERR_HPI_NOT_PRESENT;
    }
    if (const SaErrorT result = getEntry(number, record); result != SA_OK) {
        return result;
    }
    if (record.entry.EntryId != number || number > info.sa.Size) {
        return internalError("Event log error - entry number does not fit the log\n");
    }
    return SA_OK;
}

} // namespace zusahpi::eventlog

SaErrorT zuSaHpiEventLogEntryGet(SaHpiEventLogEntryIdT entryId, EventLogEntryRecord *out) {
    using namespace zusahpi::eventlog;
    if (!store.fileEnabled) {
        return SA_ERR_HPI_NOT_PRESENT;
    }
    const EventLogInfoRecord &info = currentInfo();
    const std::uint32_t number = numberOf(entryId, info);
    if (number == entryId && number > info.maxUsed) {
        return SA_ERR_HPI_NOT_PRESENT;
    }
    return getEntry(number, *out);
}

SaErrorT zuSaHpiEventLogEntRptGet(SaHpiEventLogEntryIdT entryId, SaHpiRptEntryT *rpt) {
    EventLogEntryRecord record;
    if (const SaErrorT result = zuSaHpiEventLogEntryGet(entryId, &record); result != SA_OK) {
        return result;
    }
    if (record.rpt.ResourceCapabilities == 0) {
        return SA_ERR_HPI_NOT_PRESENT;
    }
    *rpt = record.rpt;
    return SA_OK;
}

SaErrorT zuSaHpiEventLogEntRdrGet(SaHpiEventLogEntryIdT entryId, SaHpiRdrT *rdr) {
    EventLogEntryRecord record;
    if (const SaErrorT result = zuSaHpiEventLogEntryGet(entryId, &record); result != SA_OK) {
        return result;
    }
    if (record.rdr.RdrType == SAHPI_NO_RECORD) {
        return SA_ERR_HPI_NOT_PRESENT;
    }
    *rdr = record.rdr;
    return SA_OK;
}
