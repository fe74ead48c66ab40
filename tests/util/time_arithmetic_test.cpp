// Goal: sums and differences of times are exact where they fit and wrap where they do not.

#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "util/time_arithmetic.h"

namespace {

using zusahpi::timeDifference;
using zusahpi::timeSum;

constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
constexpr auto highest = std::numeric_limits<std::int64_t>::max();

TEST(TimeArithmetic, CarriesBeyondThirtyTwoBits) {
    EXPECT_EQ(timeSum(0xFFFFFFFFLL, 1), 0x100000000LL);
    EXPECT_EQ(timeDifference(0x100000000LL, 1), 0xFFFFFFFFLL);
    EXPECT_EQ(timeDifference(3, 5), -2);
}

TEST(TimeArithmetic, WrapsAtTheEnds) {
    EXPECT_EQ(timeSum(highest, 1), lowest);
    EXPECT_EQ(timeSum(lowest, -1), highest);
    EXPECT_EQ(timeDifference(lowest, 1), highest);
    EXPECT_EQ(timeDifference(0, lowest), lowest);
}

} // namespace
