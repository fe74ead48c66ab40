// Reconciliation and replay.
//
//   found in the file                          what is done                 how it came about
//   -----------------------------------------  ---------------------------  ---------------------
//   updating 0                                 nothing                      the last commit ended,
//                                                                           or never got to flag
//                                                                           its transaction
//   updating set, slots up to an end mark      the slots are written to     a crash while records
//                                              their places, in order       were written in place
//   updating set, four slots, no end mark      all four are written         the same, four records
//   updating set, end mark in the first slot   nothing is written           a change of the info
//                                                                           record alone
//   updating set, the file ends in a slot      the start fails              the file was damaged
//     and none before it was written
//   updating set, a slot's number is outside   the start fails              the file was damaged
//     the log
//
// Whether the slots were written before or not makes no difference: they hold whole records. They
// are taken one after the other, and those before the one that stops the start stay written. A
// record that is written makes a file longer that ends in the slots: what is missing of the later
// ones then reads as zeros.
//
// The flag is written again before the first record is. A write of the flag that failed may stand
// in the system's cache alone, which never writes it by itself: it reads as flagged, and a power
// failure between two records would leave half of the transaction and no flag.
//
// A commit that failed in the running process left the same in the file, and no damage; it is
// finished in the same way, but a failure is one of the operation that wanted to go on.

#include "eventlog/recovery.h"

#include "eventlog/entry_io.h"
#include "eventlog/failure.h"
#include "eventlog/log_file.h"
#include "eventlog/store_state.h"
#include "util/diagnostics.h"

namespace zusahpi::eventlog {

void reconcile(EventLogInfoRecord &info, const EventLogInfoRecord &configured) {
    if (configured.type != info.type) {
        zuSaHpiPrintf(diagnostics(), "Specified log file type doesn't match existing log file.\n"
                                     "Deleting current log data\n");
        info = configured;
    } else if (configured.sa.Size != info.sa.Size) {
        if (typeOf(info) == LogType::circular) {
            zuSaHpiPrintf(diagnostics(), "Resizing circular log file\n"
                                         "Deleting current log data\n");
            info = configured;
        }
        if (configured.sa.Size < info.maxUsed) {
            zuSaHpiPrintf(diagnostics(), "Resizing log file results inloss of data.\n"
                                         "Deleting all current log data\n");
            info = configured;
        }
        info.sa.Size = configured.sa.Size;
    }
    info.sa.Enabled = configured.sa.Enabled;
    info.overflowAction = configured.overflowAction;
    info.sa.OverflowAction = configured.sa.OverflowAction;
    info.sa.UserEventMaxSize = configured.sa.UserEventMaxSize;
    info.sa.OverflowResetable = configured.sa.OverflowResetable;
    // Zeros: the file got its length, but its data never reached the disk. 0 is no entry's number.
    if (info.sa.Entries == 0 && info.oldest == 0 && info.newest == 0) {
        info.oldest = noEntry;
        info.newest = noEntry;
        info.freeHead = noEntry;
    }
}

bool replayTransactionLog(EventLogInfoRecord &info, const EventLogInfoRecord &inFile) {
    if (info.updating == 0) {
        return true;
    }
    if (!writeInfo(inFile)) {
        return false;
    }
    for (std::uint32_t slot = 0; slot < transactionSlots; ++slot) {
        EventLogEntryRecord record;
        if (!seekTo(slotOffset(slot))) {
            reportSystemError("lseek on logfile to transaction log area");
            return false;
        }
        if (readNext(std::as_writable_bytes(std::span(&record, 1))) != entrySize) {
            zuSaHpiPrintf(diagnostics(), "Unable to read logged entry from existing log file.\n");
            return false;
        }
        if (slotIsEmpty(record)) {
            break;
        }
        if (writeEntryInPlace(record) != SA_OK) {
            zuSaHpiPrintf(diagnostics(), "Error transacting logged record on existing log file.\n");
            return false;
        }
    }
    info.updating = 0;
    return true;
}

bool finishWaitingCommit() {
    if (!store.commitWaits) {
        return true;
    }
    EventLogInfoRecord info;
    if (!readWaitingInfo(info)) {
        return false;
    }
    store.transaction = &info; // which the numbers of the slots are held against
    const bool replayed = replayTransactionLog(info, info);
    store.transaction = nullptr;
    if (!replayed) {
        return false;
    }
    store.info = info;
    return settle(info);
}

bool readWaitingInfo(EventLogInfoRecord &info) {
    if (!seekTo(infoOffset)) {
        reportSystemError("lseek on logfile to info record");
        return false;
    }
    return readInfo(info);
}

bool settle(const EventLogInfoRecord &info) {
    if (!writeInfo(info)) {
        return false;
    }
    store.info = info;
    store.commitWaits = false;
    return true;
}

} // namespace zusahpi::eventlog
