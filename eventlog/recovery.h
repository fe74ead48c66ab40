// What a start makes of an existing log file: its info record is held against the configuration,
// and a commit that a crash interrupted is finished. A running log finishes its own failed commits
// in the same way.
#pragma once

#include "eventlog/log_format.h"

namespace zusahpi::eventlog {

// Brings the info record read from the file into line with the configured one. A log that does not
// fit becomes empty (printed).
void reconcile(EventLogInfoRecord &info, const EventLogInfoRecord &configured);

// If `updating` is set, writes the records of the transaction log area to their places and clears
// it in memory. Doing so twice gives the same file. False on failure (printed).
[[nodiscard]] bool replayTransactionLog();

// Finishes the commit that failed in this process. Where the file got flagged, the transaction is
// durable: its info record is taken from the file and its records go to their places. Where it did
// not, nothing came of the transaction. Either way the info record is written again, without the
// flag. False on failure (printed): the commit waits on.
[[nodiscard]] bool finishWaitingCommit();

} // namespace zusahpi::eventlog
