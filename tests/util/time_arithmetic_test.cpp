// Goal: sums and differences of times are exact where they fit and wrap where they do not.

#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "util/time_arithmetic.h"

namespace {

using zusahpi::timeDifference;
using zusahpi::timeSum;

constexpr auto earliest = std::numeric_limits<std::int64_t>::min();
constexpr auto latest = std::numeric_limits<std::int64_t>::max();

TEST(TimeArithmetic, CarriesBeyondThirtyTwoBits) {
    EXPECT_EQ(timeSum(0xFFFFFFFFLL, 1), 0x100000000LL);
    EXPECT_EQ(timeDifference(0x100000000LL, 1), 0xFFFFFFFFLL);
    EXPECT_EQ(timeDifference(3, 5), -2);
}

TEST(TimeArithmetic, WrapsAtTheEnds) {
    EXPECT_EQ(timeSum(latest, 1), earliest);
    EXPECT_EQ(timeSum(earliest, -1), latest);
    EXPECT_EQ(timeDifference(earliest, 1), latest);
    EXPECT_EQ(timeDifference(0, earliest), earliest);
}

} // namespace
