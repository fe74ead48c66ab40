// Whether the values of an entry are ones that the HPI standard has: enumerations, masks, booleans
// and lengths of the event, the RPT entry and the RDR.
//
// The log keeps what it is given, so a value out of range may be a program's mistake as well as a
// broken file: all findings are notices. Only fields that count are looked at: of a union the
// member in use, of a text its type, of an RPT entry or RDR only one that is present.
#pragma once

#include "eventlog/log_format.h"
#include "tools/evtlogctl/findings.h"

namespace zusahpi::evtlogctl {

// `place` is that of the record.
void checkValues(const EventLogEntryRecord &record, const Place &place, Findings &findings);

// Whether the type has a constant of that value.
[[nodiscard]] bool isConstant(std::uint32_t value, std::uint32_t typeId);

} // namespace zusahpi::evtlogctl
