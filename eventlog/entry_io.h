// Reading and writing the records of the file: the info record and the entry records.
#pragma once

#include "eventlog/log_format.h"

namespace zusahpi::eventlog {

// Reads the info record at the position, which is the file's start. False on failure (printed).
[[nodiscard]] bool readInfo(EventLogInfoRecord &info);

// Writes the info record to its place. False on failure (printed).
[[nodiscard]] bool writeInfo(const EventLogInfoRecord &info);

// Copies entry `number` out of the transaction cache, the read cache or the file, whichever has it
// first. The caller has checked the number. Returns SA_OK, or SA_ERR_HPI_NO_RESPONSE (printed), and
// then leaves `record` alone.
[[nodiscard]] SaErrorT readEntry(std::uint32_t number, EventLogEntryRecord &record);

// Writes a record to the place of its EntryId and into the read cache. Returns SA_OK;
// SA_ERR_HPI_INVALID_PARAMS for a number outside the log; SA_ERR_HPI_NO_RESPONSE (printed).
[[nodiscard]] SaErrorT writeEntryInPlace(const EventLogEntryRecord &record);

} // namespace zusahpi::eventlog
