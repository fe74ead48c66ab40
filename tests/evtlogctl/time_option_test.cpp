// Goal: whatever a user writes as a time means what it says, in local time, and nothing else is
// taken for one.
#include "tests/support/times.h"
#include "tools/evtlogctl/time_option.h"

#include <cstdlib>
#include <ctime>
#include <limits>

#include <gtest/gtest.h>

namespace {

using times::day;
using times::hour;
using times::second;
using zusahpi::evtlogctl::parseEnd;
using zusahpi::evtlogctl::parseMoment;

constexpr SaHpiTimeT now = 1'702'959'411 * second; // 2023-12-19T05:16:51+01:00, a Tuesday
constexpr SaHpiTimeT today = now - 5 * hour - 16 * 60 * second - 51 * second;

class TimeOption : public testing::Test {
  protected:
    TimeOption() {
        setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
        tzset();
    }
};

TEST_F(TimeOption, Words) {
    EXPECT_EQ(parseMoment("now", now), now);
    EXPECT_EQ(parseMoment("today", now), today);
    EXPECT_EQ(parseMoment("Yesterday", now), today - day);
    EXPECT_EQ(parseMoment("TOMORROW", now), today + day);
}

// The night in which the clocks go back has 25 hours, so its day begins 25 hours before the next.
TEST_F(TimeOption, DaysOfOtherLengths) {
    constexpr SaHpiTimeT monday = 1'698'660'000 * second; // 2023-10-30T11:00+01:00
    EXPECT_EQ(*parseMoment("today", monday) - *parseMoment("yesterday", monday), 25 * hour);
}

TEST_F(TimeOption, SpansBeforeNow) {
    EXPECT_EQ(parseMoment("-1h", now), now - hour);
    EXPECT_EQ(parseMoment("-90s", now), now - 90 * second);
    EXPECT_EQ(parseMoment("-2d3h", now), now - 2 * day - 3 * hour);
    EXPECT_EQ(parseMoment("1h30m ago", now), now - hour - 1800 * second);
    EXPECT_EQ(parseMoment("-0.5s", now), now - second / 2);
}

TEST_F(TimeOption, LocalTimes) {
    EXPECT_EQ(parseMoment("2023-12-19", now), today);
    EXPECT_EQ(parseMoment("2023-12-19 05:16:51", now), now);
    EXPECT_EQ(parseMoment("2023-12-19T05:16:51", now), now);
    EXPECT_EQ(parseMoment("05:16:51", now), now);
    EXPECT_EQ(parseMoment("5:16", now), now - 51 * second);
    EXPECT_EQ(parseMoment("5:16:51.25 pm", now), now + 12 * hour + second / 4);
    EXPECT_EQ(parseMoment("2023-07-19 05:56:51", now), 1'689'739'011 * second);
    // Half an hour after local midnight it is yesterday in UTC still.
    EXPECT_EQ(parseMoment("0:10", today + 1800 * second), today + 600 * second);
}

TEST_F(TimeOption, TimesWithAZone) {
    EXPECT_EQ(parseMoment("2023-12-19T04:16:51Z", now), now);
    EXPECT_EQ(parseMoment("2023-12-19 04:16:51 UTC", now), now);
    EXPECT_EQ(parseMoment("2023-12-18T20:16:51-08:00", now), now);
    EXPECT_EQ(parseMoment("2023-12-19T05:16:51.000000000+01:00", now), now);
}

// As the counts and the report show them.
TEST_F(TimeOption, TimesOfOtherCommands) {
    EXPECT_EQ(parseMoment("2023-12-19T05:16", now), now - 51 * second);
    EXPECT_EQ(parseMoment("2023-12-19 04:16:51Z", now), now);
    EXPECT_EQ(parseMoment("2023-12-19 05:16:51+01:00", now), now);
}

TEST_F(TimeOption, TimesOfTheController) {
    EXPECT_EQ(parseMoment("+0d00:00:42", now), 42 * second);
    EXPECT_EQ(parseMoment("-0d00:00:42.000000001", now), -42 * second - 1);
    EXPECT_EQ(parseMoment("unspecified", now), SAHPI_TIME_UNSPECIFIED);
}

// A listed time is cut off at the millisecond; as an end it stands for all of it.
TEST_F(TimeOption, AnEndToTheMillisecond) {
    EXPECT_EQ(parseEnd("2023-12-19T05:16:51+01:00", now), now);
    EXPECT_EQ(parseEnd("2023-12-19T05:16:51.250+01:00", now), now + 250'999'999);
    EXPECT_EQ(parseEnd("2023-12-19T05:16:51.250000000+01:00", now), now + 250'000'000);
    EXPECT_EQ(parseEnd("2023-12-19T05:16:51.25+01:00", now), now + 250'000'000);
    EXPECT_EQ(parseEnd("+0d00:00:42.001", now), 42 * second + 1'999'999);
    EXPECT_EQ(parseEnd("-0d00:00:42.001", now), -42 * second - 1'000'000);
    EXPECT_EQ(parseEnd("2262-04-11T23:47:16.854Z", now), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(parseEnd("soon", now), std::nullopt);
}

// What lies outside the times that an entry can have stands for the first or the last of them.
// Below the first lie the times that count from the start of the controller.
TEST_F(TimeOption, BeyondTheTimesOfEntries) {
    constexpr std::int64_t first = SAHPI_TIME_MAX_RELATIVE + 1;
    constexpr std::int64_t last = std::numeric_limits<std::int64_t>::max();
    for (const char *const text :
         {"1990-01-01", "1990-01-01 12:00", "1969-12-31T00:00:00Z", "0001-01-01", "01/01/1500",
          "-11000d", "1000000d ago", "-400000000000000d"}) {
        EXPECT_EQ(parseMoment(text, now), first) << text;
        EXPECT_EQ(parseEnd(text, now), first) << text;
    }
    for (const char *const text :
         {"2300-01-01", "2262-04-11T23:47:16.855Z", "9999-12-31 23:59", "12/31/2262"}) {
        EXPECT_EQ(parseMoment(text, now), last) << text;
        EXPECT_EQ(parseEnd(text, now), last) << text;
    }
    // A zone may take a time over the border.
    EXPECT_EQ(parseMoment("1997-05-27 00:00", now), parseMoment("1997-05-26T22:00:00Z", now));
    setenv("TZ", "WEST12", 1);
    tzset();
    EXPECT_EQ(parseMoment("2262-04-11 23:00", now), last);
}

TEST_F(TimeOption, WhatIsNoTime) {
    for (const char *const text : {"",
                                   " ",
                                   "-",
                                   "ago",
                                   " ago",
                                   "-h",
                                   "-1",
                                   "1",
                                   "soon",
                                   "2023-13-01",
                                   "2023-02-29",
                                   "25:00",
                                   "2023-12-19T05:16:51+1",
                                   "-1h ago",
                                   "now UTC",
                                   "today 5:16",
                                   "--1h",
                                   "-now",
                                   "-99999999999999999999s",
                                   "1969-02-29",
                                   "2300-13-01",
                                   "1h",
                                   "1.5s",
                                   " 90s",
                                   "2d 3h",
                                   "0d00:00:42"}) {
        EXPECT_EQ(parseMoment(text, now), std::nullopt) << text;
    }
    EXPECT_EQ(parseMoment(std::string_view("now\0", 4), now), std::nullopt);
}

} // namespace
