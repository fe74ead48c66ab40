// Host clocks in the HPI standard's nanoseconds.
#pragma once

#include <cstdint>
#include <ctime>
#include <limits>

#include "hpi/SaHpi.h"

namespace zusahpi::mainlib {

// A 32-bit second would end in 2038.
static_assert(sizeof(std::timespec::tv_sec) == 8);

inline constexpr SaHpiTimeT nanosecondsPerSecond = 1'000'000'000;

// The last moment that fits, 2262-04-11T23:47:16.854775807Z, stands for all later ones.
[[nodiscard]] constexpr SaHpiTimeT nanosecondsOf(const std::timespec &moment) {
    SaHpiTimeT result = 0;
    if (__builtin_mul_overflow(SaHpiTimeT{moment.tv_sec}, nanosecondsPerSecond, &result) ||
        __builtin_add_overflow(result, SaHpiTimeT{moment.tv_nsec}, &result)) {
        return std::numeric_limits<std::int64_t>::max();
    }
    return result;
}

} // namespace zusahpi::mainlib
