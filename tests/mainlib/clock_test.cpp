// Goal: both clocks count nanoseconds, the one from 1970, the other without jumps, and neither ends
// in 2038 on a 32-bit machine.
#include "mainlib/clock.h"

#include <chrono>
#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "zuSaHpi_mainlib.h"

using zusahpi::mainlib::nanosecondsOf;

TEST(Clock, TimeOfDayIsTheSystemClock) {
    const auto before = std::chrono::system_clock::now().time_since_epoch();
    const SaHpiTimeT now = zuSaHpiGetTimeofDay();
    const auto after = std::chrono::system_clock::now().time_since_epoch();
    EXPECT_LE(std::chrono::nanoseconds(before).count(), now);
    EXPECT_GE(std::chrono::nanoseconds(after).count(), now);
}

TEST(Clock, ReferenceIsTheMonotonicClock) {
    const auto before = std::chrono::steady_clock::now().time_since_epoch();
    const SaHpiTimeT first = zuSaHpiGetTimeRef();
    const SaHpiTimeT second = zuSaHpiGetTimeRef();
    const auto after = std::chrono::steady_clock::now().time_since_epoch();
    EXPECT_LE(std::chrono::nanoseconds(before).count(), first);
    EXPECT_LE(first, second);
    EXPECT_GE(std::chrono::nanoseconds(after).count(), second);
}

TEST(Clock, SecondsPast2038Fit) {
    EXPECT_EQ(nanosecondsOf({.tv_sec = 2'147'483'648, .tv_nsec = 999'999'999}),
              2'147'483'648'999'999'999);
    EXPECT_EQ(nanosecondsOf({.tv_sec = 0, .tv_nsec = 1}), 1);
}

TEST(Clock, SecondsPast2262StandStill) {
    const std::int64_t last = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(nanosecondsOf({.tv_sec = 9'223'372'036, .tv_nsec = 854'775'807}), last);
    EXPECT_EQ(nanosecondsOf({.tv_sec = 9'223'372'036, .tv_nsec = 854'775'808}), last);
    EXPECT_EQ(nanosecondsOf({.tv_sec = 9'223'372'037, .tv_nsec = 0}), last);
    EXPECT_EQ(nanosecondsOf({.tv_sec = last, .tv_nsec = 0}), last);
}
