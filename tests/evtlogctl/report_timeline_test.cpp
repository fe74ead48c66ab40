// Goal: a timeline has at most a hundred slots of a length that people think in, whatever times a
// log spans, and each event counts in its slot, by its severity.
#include "tests/support/times.h"
#include "tools/evtlogctl/report_timeline.h"

#include <limits>
#include <numeric>

#include <gtest/gtest.h>

namespace {

using times::day;
using times::second;
using namespace zusahpi::evtlogctl;

constexpr SaHpiTimeT beginning = 1'700'000'000 * second;

EventTimes timesFrom(SaHpiTimeT first, SaHpiTimeT last) {
    return {.events = 2, .first = first, .last = last};
}

SaHpiEventT eventOf(SaHpiTimeT time, SaHpiSeverityT severity) {
    SaHpiEventT event{};
    event.Timestamp = time;
    event.Severity = severity;
    return event;
}

std::uint64_t countedIn(const Timeline &timeline) {
    std::uint64_t sum = 0;
    for (const SlotCounts &slot : timeline.slots) {
        sum = std::accumulate(slot.begin(), slot.end(), sum);
    }
    return sum;
}

TEST(ReportTimeline, LengthsOfSlots) {
    EXPECT_EQ(timelineOver(timesFrom(beginning, beginning)).width, second);
    EXPECT_EQ(timelineOver(timesFrom(beginning, beginning)).slots.size(), 1U);
    EXPECT_EQ(timelineOver(timesFrom(beginning, beginning + 99 * second)).width, second);
    EXPECT_EQ(timelineOver(timesFrom(beginning, beginning + 100 * second)).width, 5 * second);
    EXPECT_EQ(timelineOver(timesFrom(beginning, beginning + 60 * day)).width, day);
    EXPECT_EQ(timelineOver(timesFrom(beginning, beginning + 60 * day)).slots.size(), 61U);
    EXPECT_TRUE(timelineOver({}).slots.empty());
}

TEST(ReportTimeline, SlotsBeginAtMidnight) {
    const Timeline timeline = timelineOver(timesFrom(beginning, beginning + 60 * day));
    EXPECT_EQ(timeline.begin % day, 0);
    EXPECT_LE(timeline.begin, beginning);
    EXPECT_GT(timeline.begin + day, beginning);
}

TEST(ReportTimeline, AnySpanHasFewSlotsThatHoldItAll) {
    constexpr SaHpiTimeT earliest = SAHPI_TIME_MAX_RELATIVE + 1;
    constexpr SaHpiTimeT latest = std::numeric_limits<std::int64_t>::max();
    for (const SaHpiTimeT first :
         {earliest, beginning, beginning + 1, beginning + day - 1, latest - 5}) {
        SaHpiTimeT span = 1;
        for (; span < latest - first; span += span / 2 + 1) {
            Timeline timeline = timelineOver(timesFrom(first, first + span));
            ASSERT_LE(timeline.slots.size(), mostSlots);
            addToTimeline(timeline, eventOf(first, SAHPI_OK));
            addToTimeline(timeline, eventOf(first + span, SAHPI_OK));
            ASSERT_EQ(countedIn(timeline), 2U) << first << " and " << span;
            if (span > latest - first - span / 2) {
                break;
            }
        }
        Timeline whole = timelineOver(timesFrom(first, latest));
        addToTimeline(whole, eventOf(latest, SAHPI_OK));
        EXPECT_EQ(countedIn(whole), 1U);
        EXPECT_LE(whole.slots.size(), mostSlots);
    }
}

TEST(ReportTimeline, SeveritiesInTheirOrder) {
    Timeline timeline = timelineOver(timesFrom(beginning, beginning + 2 * second));
    ASSERT_EQ(timeline.slots.size(), 3U);
    std::size_t place = 0;
    for (const SaHpiSeverityT severity : zusahpi::sel::severitiesByRank) {
        addToTimeline(timeline, eventOf(beginning + second, severity));
        EXPECT_EQ(timeline.slots[1][place++], 1U);
    }
    addToTimeline(timeline, eventOf(beginning + second, static_cast<SaHpiSeverityT>(77)));
    EXPECT_EQ(timeline.slots[1].back(), 1U);
    EXPECT_EQ(countedIn(timeline), zusahpi::sel::severitiesByRank.size() + 1);
}

TEST(ReportTimeline, WhatIsOutsideDoesNotCount) {
    Timeline timeline = timelineOver(timesFrom(beginning, beginning + second));
    for (const SaHpiTimeT time :
         {SAHPI_TIME_UNSPECIFIED, SaHpiTimeT{0}, SaHpiTimeT{-1}, beginning - 1,
          beginning + 2 * second,
          static_cast<SaHpiTimeT>(std::numeric_limits<std::int64_t>::max())}) {
        addToTimeline(timeline, eventOf(time, SAHPI_OK));
    }
    EXPECT_EQ(countedIn(timeline), 0U);
    Timeline none;
    addToTimeline(none, eventOf(beginning, SAHPI_OK));
    EXPECT_TRUE(none.slots.empty());
}

} // namespace
