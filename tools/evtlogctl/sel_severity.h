// How severe an event is. A System Event Log record does not say, so a table does: the built-in
// one, or a user's in its place.
//
// A table is a list of rules; the first rule that fits an event decides, and an event that none
// fits is informational. As text, a rule is a line of four words:
//
//   CATEGORY[/SENSOR-TYPE]  STATE  DIRECTION  SEVERITY
//
//   CATEGORY     unspecified, threshold, usage, state, pred-fail, limit, performance, severity,
//                presence, enable, availability, redundancy, sensor-specific, generic or oem
//   SENSOR-TYPE  byte 10 of the record as 0x00 to 0xFF; without it every sensor type fits
//   STATE        number of the state, 0 to 14; "-" for an event without a state; "*" for all
//   DIRECTION    asserted, deasserted, or "*" for both
//   SEVERITY     critical, major, minor, informational, ok or debug
//
// '#' begins a comment, empty lines do not count.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hpi/SaHpi.h"

namespace zusahpi::sel {

// Category of an OEM record in a table: it is no sensor event and has none.
inline constexpr SaHpiEventCategoryT oemCategory = 0xFF;

// What the severity of an event depends on.
struct Occasion {
    SaHpiEventCategoryT category = SAHPI_EC_UNSPECIFIED;
    std::uint8_t sensorType = 0;
    std::optional<unsigned> state; // number of its bit
    bool asserted = true;
};

struct SeverityRule {
    SaHpiEventCategoryT category = SAHPI_EC_UNSPECIFIED;
    std::optional<std::uint8_t> sensorType;
    bool everyState = false;
    std::optional<unsigned> state; // meaningless when everyState is set
    std::optional<bool> asserted;
    SaHpiSeverityT severity = SAHPI_INFORMATIONAL;

    bool operator==(const SeverityRule &) const = default;
};

using SeverityTable = std::vector<SeverityRule>;

[[nodiscard]] const SeverityTable &builtInSeverities();

[[nodiscard]] SaHpiSeverityT severityOf(const Occasion &occasion, const SeverityTable &table);

// Reads a table. Throws Failure with "name:line: what is wrong".
[[nodiscard]] SeverityTable parseSeverities(std::string_view text, std::string_view name);

// A table as text that parseSeverities reads back.
[[nodiscard]] std::string severityText(const SeverityTable &table);

// The most severe first.
inline constexpr std::array<SaHpiSeverityT, 6> severitiesByRank = {
    SAHPI_CRITICAL, SAHPI_MAJOR, SAHPI_MINOR, SAHPI_INFORMATIONAL, SAHPI_OK, SAHPI_DEBUG};

// "critical"; a number when the value is no severity.
[[nodiscard]] std::string severityName(SaHpiSeverityT severity);

} // namespace zusahpi::sel
