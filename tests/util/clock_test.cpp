// Goal: the clock reads the host's time until it is set, then the reference clock from the time
// set; any time counts as set, sums wrap instead of trapping, and no reader sees half of a setting.

#include <csignal>
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

#if defined(__x86_64__) || defined(__i386__)

// What the clock read between any two instructions of the call that sets it.
struct Readings {
    int steps = 0;
    int before = 0;
    int after = 0;
    SaHpiTimeT other = 0; // neither of the two
};
Readings readings;

constexpr SaHpiTimeT timeBefore = 0x1111'1111'2222'2222;
constexpr SaHpiTimeT timeAfter = 0x5555'5555'6666'6666;

void readClock(int) {
    ++readings.steps;
    const SaHpiTimeT time = zuSaHpiTime();
    if (time == timeBefore) {
        ++readings.before;
    } else if (time == timeAfter) {
        ++readings.after;
    } else {
        readings.other = time;
    }
}

// The processor's trap flag: a signal after every instruction.
[[gnu::noinline]] void stepFromHere() {
#if defined(__x86_64__)
    asm volatile("pushfq; orq $0x100, (%%rsp); popfq" ::: "memory", "cc");
#else
    asm volatile("pushfl; orl $0x100, (%%esp); popfl" ::: "memory", "cc");
#endif
}

[[gnu::noinline]] void stepNoMore() {
#if defined(__x86_64__)
    asm volatile("pushfq; andq $~0x100, (%%rsp); popfq" ::: "memory", "cc");
#else
    asm volatile("pushfl; andl $~0x100, (%%esp); popfl" ::: "memory", "cc");
#endif
}

// A signal handler may read the clock while it is being set for the first time.
TEST(Clock, GoesFromOneTimeToTheOtherInOneInstruction) {
    state().timeOfDay = timeBefore;
    state().timeRef = 0x0fff'ffff'0fff'ffff;
    (void)zuSaHpiTime(); // binds its names
    (void)std::signal(SIGTRAP, readClock);
    stepFromHere();
    zuSaHpiSetTime(timeAfter);
    stepNoMore();
    EXPECT_EQ(readings.other, 0) << std::hex << readings.other;
    EXPECT_GT(readings.before, 5);
    EXPECT_GT(readings.after, 0);
    EXPECT_EQ(readings.before + readings.after, readings.steps);
}

#endif

} // namespace
