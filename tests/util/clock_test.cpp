// Goal: the clock reads the host's time until it is set, then the reference clock from the time
// set; any time counts as set, and sums wrap instead of trapping.

#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "tests/support/test_mainlib.h"
#include "zuSaHpi_util.h"

namespace {

using test_mainlib::state;

constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
constexpr auto highest = std::numeric_limits<std::int64_t>::max();

TEST(Clock, ReadsTheHostTimeUntilSet) {
    state().timeOfDay = 123;
    state().timeRef = 9;
    EXPECT_EQ(zuSaHpiTime(), 123);
    state().timeOfDay = highest;
    EXPECT_EQ(zuSaHpiTime(), highest);
}

TEST(Clock, RunsOnTheReferenceClockOnceSet) {
    state().timeRef = 5'000'000'000'000;
    zuSaHpiSetTime(0);
    EXPECT_EQ(zuSaHpiTime(), 0);
    state().timeRef += 7;
    EXPECT_EQ(zuSaHpiTime(), 7);
    state().timeOfDay = 1;
    EXPECT_EQ(zuSaHpiTime(), 7);
}

TEST(Clock, AnOffsetOfZeroCountsAsSet) {
    state().timeOfDay = 1'000;
    state().timeRef = 40;
    zuSaHpiSetTime(40);
    EXPECT_EQ(zuSaHpiTime(), 40);
    state().timeRef = 41;
    EXPECT_EQ(zuSaHpiTime(), 41);
}

TEST(Clock, CanBeSetAgain) {
    zuSaHpiSetTime(10);
    zuSaHpiSetTime(-5'000'000'000);
    state().timeRef += 1;
    EXPECT_EQ(zuSaHpiTime(), -4'999'999'999);
}

TEST(Clock, WrapsAtTheEndsOfItsRange) {
    state().timeRef = 1;
    zuSaHpiSetTime(lowest);
    EXPECT_EQ(zuSaHpiTime(), lowest);
    state().timeRef = 0;
    EXPECT_EQ(zuSaHpiTime(), highest);
}

} // namespace
