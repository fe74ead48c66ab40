// A moment as a user writes it on the command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "hpi/SaHpi.h"

namespace zusahpi::evtlogctl {

// Nothing when the text is no time. Accepted are, in upper and lower case:
//
//   now, today, yesterday, tomorrow   the words for days mean their beginning in local time
//   -1h, -90s, -2d3h, 1h ago          so long before now
//   2026-11-21                        its beginning in local time
//   2026-11-21 09:06, 09:06:12.5      local time; a time alone is today's
//   2026-11-21T09:06:12.250+01:00     a time with an offset or Z
//   +0d00:00:42, -0d00:00:01, +1h     a time that counts from the start of the controller
//   unspecified                       SAHPI_TIME_UNSPECIFIED, which comes before all others
//
// A date before or behind all that an entry can have stands for the first or the last of these.
[[nodiscard]] std::optional<std::int64_t> parseMoment(std::string_view text, SaHpiTimeT now);

// The same for the end of a period: a time that was listed to the millisecond, and so cut off
// there, stands for all of its millisecond.
[[nodiscard]] std::optional<std::int64_t> parseEnd(std::string_view text, SaHpiTimeT now);

} // namespace zusahpi::evtlogctl
