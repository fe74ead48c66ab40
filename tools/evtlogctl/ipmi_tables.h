// What the numbers in a System Event Log record mean, by the IPMI 2.0 tables: sensor types, the
// events of each type with how much they matter, the states of the ACPI power event type.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "hpi/SaHpi.h"
#include "tools/evtlogctl/sel_record.h"

namespace zusahpi::sel {

// An event of a sensor whose states are its type's own (event type 6Fh).
struct SpecificEvent {
    std::uint8_t sensorType;
    std::uint8_t offset;
    SaHpiSeverityT severity; // of its assertion
    std::string_view text;
};

// Ordered by sensor type and offset.
[[nodiscard]] std::span<const SpecificEvent> specificEvents();

// "Temperature"; "OEM type E1h" and "Type 2Dh" for those that have no name.
[[nodiscard]] std::string sensorTypeName(std::uint8_t sensorType);

// What a record of a system event says beyond a numbered state: "IERR". Empty when the state has no
// name here; the states of event types 01h to 0Bh have theirs in the HPI standard.
[[nodiscard]] std::string_view eventText(const Record &record);

} // namespace zusahpi::sel
