// What a start makes of an existing log file: its info record is held against the configuration,
// and a commit that a crash interrupted is finished. A running log finishes its own failed commits
// in the same way.
#pragma once

#include "eventlog/log_format.h"

namespace zusahpi::eventlog {

// Brings the info record read from the file into line with the configured one. A log that does not
// fit becomes empty (printed).
void reconcile(EventLogInfoRecord &info, const EventLogInfoRecord &configured);

// If `updating` is set in the info record, which is the one that counts, writes the records of the
// transaction log area to their places and clears it in memory. Before that it writes the info
// record as it was read from the file, flag and all. Doing so twice gives the same file. False on
// failure (printed).
[[nodiscard]] bool replayTransactionLog(EventLogInfoRecord &info, const EventLogInfoRecord &inFile);

// Finishes the commit that failed in this process, if one did. Where the file got flagged, the
// transaction is durable: its records go to their places, and only then does its info record count.
// Where it did not, nothing came of the transaction. Either way the file's info record is written
// again, without the flag. False on failure (printed): the commit waits on.
[[nodiscard]] bool finishWaitingCommit();

// Reads the info record that the waiting commit left in the file. False on failure (printed).
[[nodiscard]] bool readWaitingInfo(EventLogInfoRecord &info);

// Writes an info record without a flag, which ends the waiting of a commit. False on failure
// (printed): it waits on, and nothing has changed in memory.
[[nodiscard]] bool settle(const EventLogInfoRecord &info);

} // namespace zusahpi::eventlog
