// Spans of time in nanoseconds, as the tests of times write them.
#pragma once

#include <cstdint>
#include <limits>

namespace times {

inline constexpr std::int64_t second = 1'000'000'000;
inline constexpr std::int64_t minute = 60 * second;
inline constexpr std::int64_t hour = 60 * minute;
inline constexpr std::int64_t day = 24 * hour;
inline constexpr std::int64_t last = std::numeric_limits<std::int64_t>::max();

} // namespace times
