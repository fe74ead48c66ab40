// Records between memory and file; entry records go through the read cache.

#include "eventlog/entry_io.h"

#include <cerrno>
#include <cstring>

#include "eventlog/failure.h"
#include "eventlog/log_file.h"
#include "eventlog/store_state.h"
#include "util/diagnostics.h"

namespace zusahpi::eventlog {
namespace {

// Round robin: the slot that the next record goes to.
EventLogEntryRecord &nextReadCacheSlot() {
    store.readCacheCursor = (store.readCacheCursor + 1) % static_cast<int>(readCacheSlots);
    return store.readCache[static_cast<std::size_t>(store.readCacheCursor)];
}

EventLogEntryRecord *readCacheSlotOf(std::uint32_t number) {
    for (EventLogEntryRecord &slot : store.readCache) {
        if (slot.entry.EntryId == number) {
            return &slot;
        }
    }
    return nullptr;
}

const EventLogEntryRecord *changedRecord(std::uint32_t number) {
    for (const EventLogEntryRecord &slot : store.transactionCache) {
        if (slotIsEmpty(slot)) {
            break;
        }
        if (slot.entry.EntryId == number) {
            return &slot;
        }
    }
    return nullptr;
}

SaErrorT readFromFile(std::uint32_t number, EventLogEntryRecord &record) {
    if (!seekTo(entryOffset(number))) {
        zuSaHpiPrintf(diagnostics(), "Error on lseek of logfile to entry # %u: %s\n", number,
                      std::strerror(errno));
        return SA_ERR_HPI_NO_RESPONSE;
    }
    const ssize_t count = readNext(std::as_writable_bytes(std::span(&record, 1)));
    if (count < 0) {
        zuSaHpiPrintf(diagnostics(), "Error on read of logfile entry # %u: %s\n", number,
                      std::strerror(errno));
        return SA_ERR_HPI_NO_RESPONSE;
    }
    if (count != entrySize) {
        zuSaHpiPrintf(diagnostics(), "Read of logfile entry # %u read only %d bytes\n", number,
                      static_cast<int>(count));
        return SA_ERR_HPI_NO_RESPONSE;
    }
    return SA_OK;
}

} // namespace

bool readInfo(EventLogInfoRecord &info) {
    if (readNext(std::as_writable_bytes(std::span(&info, 1))) != infoSize) {
        zuSaHpiPrintf(diagnostics(), "Unable to read Event Log Info from existing log file.\n");
        return false;
    }
    return true;
}

bool writeInfo(const EventLogInfoRecord &info) {
    if (!seekTo(infoOffset)) {
        reportSystemError("lseek on logfile to info record");
        return false;
    }
    if (!writeWhole(bytesOf(info))) {
        reportSystemError("write of info record to logfile");
        return false;
    }
    return true;
}

SaErrorT readEntry(std::uint32_t number, EventLogEntryRecord &record) {
    if (const EventLogEntryRecord *changed = changedRecord(number)) {
        record = *changed;
        return SA_OK;
    }
    if (const EventLogEntryRecord *cached = readCacheSlotOf(number)) {
        record = *cached;
        return SA_OK;
    }
    EventLogEntryRecord fromFile;
    if (const SaErrorT result = readFromFile(number, fromFile); result != SA_OK) {
        return result;
    }
    if (fromFile.entry.EntryId == number) { // else damaged, and it would be found as another entry
        nextReadCacheSlot() = fromFile;
    }
    record = fromFile;
    return SA_OK;
}

SaErrorT writeEntryInPlace(const EventLogEntryRecord &record) {
    const std::uint32_t number = record.entry.EntryId;
    const EventLogInfoRecord &info = currentInfo();
    if (number == 0 || number > info.maxUsed || number > info.sa.Size) {
        return SA_ERR_HPI_INVALID_PARAMS;
    }
    EventLogEntryRecord *cached = readCacheSlotOf(number);
    if (cached == nullptr) {
        cached = &nextReadCacheSlot();
    }
    *cached = record;
    if (!seekTo(entryOffset(number))) {
        zuSaHpiPrintf(diagnostics(), "Error: lseek for writing event log entry # %u: %s\n", number,
                      std::strerror(errno));
        emptySlot(*cached);
        return SA_ERR_HPI_NO_RESPONSE;
    }
    // Only a failed write is an error here: a short one goes undetected.
    if (writeNext(bytesOf(record)) < 0) {
        zuSaHpiPrintf(diagnostics(), "Error: write of event log entry # %u: %s\n", number,
                      std::strerror(errno));
        emptySlot(*cached);
        return SA_ERR_HPI_NO_RESPONSE;
    }
    return SA_OK;
}

} // namespace zusahpi::eventlog
