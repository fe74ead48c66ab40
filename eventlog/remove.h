// Deleting an entry inside an open transaction.
#pragma once

#include "eventlog/log_format.h"

namespace zusahpi::eventlog {

// Takes the entry out of the log that `workingCopy` describes; the caller commits or aborts.
// Returns what zuSaHpiEventLogEntryDel returns.
[[nodiscard]] SaErrorT removeEntry(EventLogInfoRecord &workingCopy, SaHpiEventLogEntryIdT entryId);

} // namespace zusahpi::eventlog
