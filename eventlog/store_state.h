// The state of the process's one log. Everything that the store remembers between calls is here.
//
// Invariants, which comments cite by their numbers:
//   1. Between calls no transaction is open and the transaction cache is empty.
//   2. `info` is what the log is, but while a transaction is open its working copy is.
//   3. The transaction cache is a list from slot 0, ended by a slot whose EntryId is noEntry.
//   4. The read cache holds records as they are in the file, never ones that wait for a commit.
//   5. Unless fileEnabled, there is no file, no lock and no entry.
//   6. Unless commitWaits, the info record in the file is not flagged. While a commit waits, the
//      transaction log area stays as it is: it may be all that is left of the changed records.
#pragma once

#include <array>
#include <cstdint>

#include <unistd.h>

#include "eventlog/log_format.h"
#include "eventlog/log_path.h"

namespace zusahpi::eventlog {

inline constexpr std::uint32_t readCacheSlots = 4;

// Room for any file name of a control block behind root and log folder: a plain name and the root
// hold 98 characters together, a name that is used as it stands 99.
inline constexpr std::size_t logPathSize = ZUSAHPI_EL_FILE_NAME_SIZE + logFolderLength;
inline constexpr std::size_t lockPathSize = logPathSize + sizeof(".lck") - 1;

struct StoreState {
    bool initialised;
    bool fileEnabled;
    bool syslogEnabled;
    bool syslogFollowsState;
    SaHpiBoolT syncOnCommit;

    int fd;       // the log file, open from initialisation until exit
    pid_t holder; // the process that took the lock
    std::array<char, lockPathSize> lockPath;

    EventLogInfoRecord info;
    EventLogInfoRecord *transaction; // working copy of the open transaction, or null
    bool commitWaits;                // a commit to a Linked log failed once it had begun to flag
    std::array<EventLogEntryRecord, transactionSlots> transactionCache;
    std::array<EventLogEntryRecord, readCacheSlots> readCache;
    int readCacheCursor; // the slot filled last, -1 at first
};

// NOLINTNEXTLINE(bugprone-dynamic-static-initializers): constinit rules that out
extern constinit StoreState store;

// The info record that counts (invariant 2).
[[nodiscard]] inline EventLogInfoRecord &currentInfo() {
    return store.transaction != nullptr ? *store.transaction : store.info;
}

[[nodiscard]] inline bool slotIsEmpty(const EventLogEntryRecord &slot) {
    return slot.entry.EntryId == noEntry;
}

inline void emptySlot(EventLogEntryRecord &slot) {
    slot.entry.EntryId = noEntry;
}

} // namespace zusahpi::eventlog
