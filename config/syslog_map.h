// The syslog map: which events go to the system log, and at which level. The map itself is exported
// data; here is how it is read.
//
// Invariant: the list ends with the default entry. Levels are not trusted: whoever links the
// library may have written the map.
#pragma once

#include <cstdint>
#include <optional>

#include "zuSaHpi_util.h"

namespace zusahpi::config {

// "Every event type" and "do not forward" in an entry of the map.
inline constexpr std::uint32_t everyEventType = 0xFFFFFFFF;
inline constexpr std::int32_t doNotForward = -1;

inline constexpr std::uint32_t syslogLevels = 8;

// The slot of every severity that has none of its own.
inline constexpr std::uint32_t otherSeveritySlot = ZUSAHPI_SYSLOG_SLOTS - 1;

[[nodiscard]] std::uint32_t slotOf(SaHpiSeverityT severity);

// The map's own entry of an event type, or null.
[[nodiscard]] const SyslogMapEntry *findMapEntry(std::uint32_t eventType);

// The priority for an event of that type and severity; none when it is not to be forwarded.
[[nodiscard]] std::optional<int> syslogPriority(SaHpiEventTypeT eventType, SaHpiSeverityT severity);

} // namespace zusahpi::config
