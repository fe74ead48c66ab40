// What a start makes of an existing log file: its info record is held against the configuration,
// and a commit that a crash interrupted is finished.
#pragma once

#include "eventlog/log_format.h"

namespace zusahpi::eventlog {

// Brings the info record read from the file into line with the configured one. A log that does not
// fit becomes empty (printed).
void reconcile(EventLogInfoRecord &info, const EventLogInfoRecord &configured);

// If `updating` is set, writes the records of the transaction log area to their places and clears
// it in memory. Doing so twice gives the same file. Prints and exits on failure.
void replayTransactionLog();

} // namespace zusahpi::eventlog
