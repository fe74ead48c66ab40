// The transaction engine: the transaction cache, the commit in its phases, the abort.

#include "eventlog/transaction.h"

#include <cstring>

#include "eventlog/entry_io.h"
#include "eventlog/failure.h"
#include "eventlog/log_file.h"
#include "eventlog/store_state.h"

namespace zusahpi::eventlog {
namespace {

void endTransaction() {
    store.transaction = nullptr;
    emptySlot(store.transactionCache[0]);
}

SaErrorT abortWith(SaErrorT result) {
    abortTransaction();
    return result;
}

SaErrorT abortOfSystemError(const char *purpose) {
    reportSystemError(purpose);
    return abortWith(SA_ERR_HPI_NO_RESPONSE);
}

// The changed records: the slots before the end mark (invariant 3).
std::span<const EventLogEntryRecord> changedRecords() {
    std::size_t count = 0;
    while (count < transactionSlots && !slotIsEmpty(store.transactionCache[count])) {
        ++count;
    }
    return std::span(store.transactionCache).first(count);
}

// The changed records with the end mark behind them, where there is room for one.
std::span<const EventLogEntryRecord> transactionLogImage() {
    const std::size_t changed = changedRecords().size();
    return std::span(store.transactionCache)
        .first(changed < transactionSlots ? changed + 1 : changed);
}

SaErrorT writeChangedRecordsInPlace() {
    for (const EventLogEntryRecord &record : changedRecords()) {
        if (const SaErrorT result = writeEntryInPlace(record); result != SA_OK) {
            return abortWith(result);
        }
    }
    return SA_OK;
}

SaErrorT commitLinked(EventLogInfoRecord &workingCopy) {
    if (!seekTo(transactionLogOffset)) {
        return abortOfSystemError("lseek on logfile to transaction log area");
    }
    if (!writeWhole(std::as_bytes(transactionLogImage()))) {
        return abortOfSystemError("write of entry to transaction log");
    }
    // In memory too, so that the two always differ below and the flag is taken off the file again.
    workingCopy.updating = 1;
    store.info.updating = 1;
    store.commitWaits = true;
    if (!seekTo(infoOffset)) {
        return abortOfSystemError("lseek on logfile to info record for flagging");
    }
    if (!writeWhole(bytesOf(workingCopy))) {
        return abortOfSystemError("write of flagged info record to logfile");
    }
    // From here on the transaction is durable: a crash is repaired by replay.
    if (const SaErrorT result = writeChangedRecordsInPlace(); result != SA_OK) {
        return result;
    }
    workingCopy.updating = 0;
    return SA_OK;
}

SaErrorT writeChangedInfo(const EventLogInfoRecord &workingCopy) {
    // What counts is whether a byte of the file would change, and the file holds the padding, too.
    if (std::memcmp(bytesOf(workingCopy).data(), bytesOf(store.info).data(), infoSize) == 0) {
        return SA_OK;
    }
    std::memcpy(&store.info, &workingCopy, sizeof workingCopy);
    if (!writeInfo(store.info)) {
        return abortWith(SA_ERR_HPI_NO_RESPONSE);
    }
    store.commitWaits = false;
    return SA_OK;
}

} // namespace

const char *hindrance() {
    if (store.transaction != nullptr) {
        return "transaction already in process.\n";
    }
    return slotIsEmpty(store.transactionCache[0]) ? nullptr : "transaction cache is not empty.\n";
}

void beginTransaction(EventLogInfoRecord &workingCopy) {
    std::memcpy(&workingCopy, &store.info, sizeof workingCopy);
    store.transaction = &workingCopy;
}

EventLogEntryRecord *changedRecordOf(std::uint32_t number) {
    if (store.transaction == nullptr) {
        (void)internalError("Event log error: call to writeEntry outside of transaction.\n");
        return nullptr;
    }
    for (std::size_t i = 0; i < transactionSlots; ++i) {
        EventLogEntryRecord &slot = store.transactionCache[i];
        if (slot.entry.EntryId == number) {
            return &slot;
        }
        if (slotIsEmpty(slot)) {
            if (i + 1 < transactionSlots) {
                emptySlot(store.transactionCache[i + 1]);
            }
            slot.entry.EntryId = number;
            return &slot;
        }
    }
    (void)internalError("Event log error - transaction cache overflow.\n");
    return nullptr;
}

SaErrorT writeEntry(const EventLogEntryRecord &record) {
    EventLogEntryRecord *const changed = changedRecordOf(record.entry.EntryId);
    if (changed == nullptr) {
        return SA_ERR_HPI_INTERNAL_ERROR;
    }
    *changed = record;
    return SA_OK;
}

SaErrorT commitTransaction() {
    if (store.transaction == nullptr) {
        return abortWith(internalError("Attempt to commit a transaction that is not there\n"));
    }
    EventLogInfoRecord &workingCopy = *store.transaction;
    const SaErrorT applied = typeOf(workingCopy) == LogType::linked ? commitLinked(workingCopy)
                                                                    : writeChangedRecordsInPlace();
    if (applied != SA_OK) {
        return applied;
    }
    if (const SaErrorT result = writeChangedInfo(workingCopy); result != SA_OK) {
        return result;
    }
    if (store.syncOnCommit != 0) {
        sync();
    }
    endTransaction();
    return SA_OK;
}

void abortTransaction() {
    endTransaction();
}

} // namespace zusahpi::eventlog
