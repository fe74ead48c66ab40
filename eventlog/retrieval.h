// Reading entries by number.
#pragma once

#include "eventlog/log_format.h"

namespace zusahpi::eventlog {

// The number that an entry id stands for: the ends of the log, or the id itself.
[[nodiscard]] std::uint32_t numberOf(SaHpiEventLogEntryIdT entryId, const EventLogInfoRecord &info);

// Whether `number` falls outside the used part of a Circular log: between its ends when it has
// wrapped, before its oldest entry when not.
[[nodiscard]] inline bool outsideRing(std::uint32_t number, const EventLogInfoRecord &info) {
    const bool wrapped = info.newest < info.oldest;
    return number < info.oldest && (!wrapped || number > info.newest);
}

// Reads entry `number` with the ids of its neighbours. Returns what zuSaHpiEventLogEntryGet
// returns.
[[nodiscard]] SaErrorT getEntry(std::uint32_t number, EventLogEntryRecord &record);

// The same for an entry that is to be changed; what a link or an end of the log names may lie
// beyond the log, and is not present then. A changed record is written to the number that it bears,
// so that must be its own and one of the log: otherwise the file is damaged, and the result is
// SA_ERR_HPI_INTERNAL_ERROR (printed).
[[nodiscard]] SaErrorT getEntryToChange(std::uint32_t number, EventLogEntryRecord &record);

} // namespace zusahpi::eventlog
