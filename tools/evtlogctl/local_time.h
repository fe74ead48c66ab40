// Times for people: in local time with its offset from UTC, or in UTC when TZ says so.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "hpi/SaHpi.h"

namespace zusahpi::evtlogctl {

enum class Precision : std::uint8_t {
    milliseconds, // no fraction at all when it is zero
    nanoseconds,  // always nine digits, so that equal times have equal texts
};

//   2026-11-21T09:06:12.250+01:00   RFC 3339; Z for the offset zero
//   +3d04:05:06                     a time that counts from the start of the controller
//   unspecified                     SAHPI_TIME_UNSPECIFIED
void appendTime(std::string &text, SaHpiTimeT time, Precision precision);

// The same as a text of its own, to the millisecond.
[[nodiscard]] std::string timeText(SaHpiTimeT time);

// How long the longest of the usual texts is, in the zone of the process.
[[nodiscard]] std::size_t timeWidth(Precision precision);

// How many seconds local time is ahead of UTC at a moment, in seconds since 1970.
[[nodiscard]] std::int64_t utcOffsetAt(std::int64_t moment);

// Local time is UTC from now on, for this process.
void useUtc();

} // namespace zusahpi::evtlogctl
