// From a System Event Log record to the HPI event that stands for it, with the RPT entry and RDR of
// its source, and back. Nothing is lost: whatever the sixteen bytes, importedRecord gives them
// back.
#pragma once

#include <cstdint>
#include <optional>

#include "tools/evtlogctl/sel_record.h"
#include "tools/evtlogctl/sel_severity.h"
#include "zuSaHpi_util.h"

namespace zusahpi::sel {

struct Mapping {
    std::int32_t utcOffset = 0; // minutes by which the clock of the records was before UTC
    OemOrder oemOrder = OemOrder::wire;
    const SeverityTable *severities = &builtInSeverities();
};

// Every byte of the result is set, padding included.
[[nodiscard]] EventLogAddRecord toEvent(const Record &record, const Mapping &mapping);

// The record that an entry was made from; empty for an entry that was not. The entry's severity
// does not matter (it depends on a table), nor do the texts that name its source.
[[nodiscard]] std::optional<Record> importedRecord(const EventLogEntryRecord &entry);

} // namespace zusahpi::sel
