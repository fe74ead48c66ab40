// zuSaHpiEventLogInit: from a control block to a running log, in this order: the block is checked,
// the time base fixed, the state emptied, the lock taken, the file opened or made, an existing file
// reconciled, repaired and cut to its length. Every failure ends the process.

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include "eventlog/entry_io.h"
#include "eventlog/failure.h"
#include "eventlog/lock.h"
#include "eventlog/log_file.h"
#include "eventlog/recovery.h"
#include "eventlog/store_state.h"
#include "util/time_arithmetic.h"
#include "zuSaHpi_mainlib.h"

namespace zusahpi::eventlog {
namespace {

constexpr mode_t logFileMode = 0664;

// Only the process that took the lock gives it up: a child that it forked may exit at any time.
void closeLogAtExit() {
    if (getpid() != store.holder) {
        return;
    }
    if (close(store.fd) != 0) {
        reportSystemError("close of log file");
    }
    store.fd = -1;
    dropLock();
    store.holder = 0; // a child that starts a log of its own inherits this handler and adds one
}

void registerExitHandler() {
    // Should there be no memory for it, the lock stays behind as it does when the process is
    // killed.
    (void)std::atexit(closeLogAtExit);
}

// What a new or emptied log starts its clock with.
void fixTimeBase(EventLogControlBlock &block) {
    const SaHpiTimeT now = zuSaHpiGetTimeofDay();
    const bool relative = block.relativeTime != 0;
    block.info.timeOffset = relative ? timeDifference(0, now) : 0;
    block.info.sa.UpdateTimestamp = relative ? 0 : now;
}

void emptyTransactionAndCaches() {
    store.transaction = nullptr;
    store.commitWaits = false;
    emptySlot(store.transactionCache[0]);
    for (EventLogEntryRecord &slot : store.readCache) {
        emptySlot(slot);
    }
    store.readCacheCursor = -1;
}

using LogPath = std::array<char, logPathSize>;

LogPath logPath(const EventLogControlBlock &block) {
    LogPath path{};
    const char *name = block.fileName;
    const std::size_t length = strnlen(name, ZUSAHPI_EL_FILE_NAME_SIZE);
    const bool asItStands = usedAsItStands(name);
    const std::size_t rootLength = asItStands ? 0 : std::strlen(zuSaHpiRoot);
    if (length == ZUSAHPI_EL_FILE_NAME_SIZE ||
        (!asItStands && length + rootLength > longestRootAndName)) {
        die("Eventlog Filename in configuration too long.\n");
    }
    if (asItStands) {
        (void)std::snprintf(path.data(), path.size(), "%s", name);
    } else {
        (void)std::snprintf(path.data(), path.size(), "%s%s%s", zuSaHpiRoot, logFolder, name);
    }
    return path;
}

int syncFlagOf(const EventLogControlBlock &block) {
    return typeOf(block.info) == LogType::linked ? O_SYNC : 0;
}

void startFromExistingFile(const EventLogControlBlock &block) {
    registerExitHandler();
    if (!readInfo(store.info)) {
        std::exit(EXIT_FAILURE);
    }
    if (block.reinitialize != 0) {
        store.info = block.info;
    } else {
        const EventLogInfoRecord inFile = store.info;
        reconcile(store.info, block.info);
        if (!replayTransactionLog(store.info, inFile)) {
            std::exit(EXIT_FAILURE);
        }
    }
    if (!writeInfo(store.info)) {
        std::exit(EXIT_FAILURE);
    }
    if (!truncateAfter(store.info.maxUsed)) {
        dieOfSystemError("truncate of log file at initialization");
    }
}

void startNewFile(const EventLogControlBlock &block, const LogPath &path) {
    store.fd = open(path.data(), O_RDWR | O_CREAT | O_CLOEXEC | syncFlagOf(block), logFileMode);
    if (store.fd < 0) {
        reportSystemError("create of log file");
        dropLock();
        std::exit(EXIT_FAILURE);
    }
    registerExitHandler();
    if (fchown(store.fd, zuSaHpiEuId, zuSaHpiGroupId) != 0) {
        dieOfSystemError("chown of new logfile");
    }
    store.info = block.info;
    if (!writeWhole(bytesOf(store.info))) {
        dieOfSystemError("write of info record to new logfile");
    }
    EventLogEntryRecord unused;
    std::memset(&unused, 0, sizeof unused);
    emptySlot(unused);
    for (std::uint32_t slot = 0; slot < transactionSlots; ++slot) {
        if (!writeWhole(bytesOf(unused))) {
            dieOfSystemError("write of initial transaction log area");
        }
    }
}

void openLogFile(const EventLogControlBlock &block) {
    const LogPath path = logPath(block);
    (void)std::snprintf(store.lockPath.data(), store.lockPath.size(), "%s.lck", path.data());
    takeLock();
    store.holder = getpid();
    store.fd = open(path.data(), O_RDWR | O_CLOEXEC | syncFlagOf(block));
    if (store.fd >= 0) {
        startFromExistingFile(block);
    } else {
        startNewFile(block, path);
    }
}

} // namespace
} // namespace zusahpi::eventlog

SaErrorT zuSaHpiEventLogInit(EventLogControlBlock *block) {
    using namespace zusahpi::eventlog;
    if (block == nullptr || block->size != ZUSAHPI_EL_CONTROL_BLOCK_SIZE ||
        block->magic != ZUSAHPI_EL_CONTROL_BLOCK_MAGIC) {
        die("Illegal Event Log Control Block passed to zuSaHpiEventLogInit\n");
    }
    store.fileEnabled = block->fileEnabled != 0;
    store.syslogEnabled = block->syslogEnabled != 0;
    store.syslogFollowsState = block->syslogFollowsState != 0;
    fixTimeBase(*block);
    emptyTransactionAndCaches();
    if (store.fileEnabled) {
        openLogFile(*block);
    } else {
        store.info = block->info;
    }
    store.initialised = true;
    return SA_OK;
}

int zuSaHpiEventLogInitialized(void) {
    return zusahpi::eventlog::store.initialised ? 1 : 0;
}
