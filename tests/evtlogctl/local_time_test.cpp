// Goal: people see times in their zone with its offset, every digit that is there, and what they
// see is taken back as the same moment.
#include "tools/evtlogctl/local_time.h"

#include <cstdlib>
#include <ctime>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "tests/support/times.h"
#include "tools/evtlogctl/time_option.h"

namespace {

using times::second;
using namespace zusahpi::evtlogctl;

constexpr SaHpiTimeT winter = 1'702'959'411 * second; // 2023-12-19T04:16:51Z
constexpr SaHpiTimeT summer = 1'689'739'011 * second; // 2023-07-19T03:56:51Z

// Zones as rules, so that no table of zones is needed. One process for each test: the offset is
// remembered.
void useZone(const char *rule) {
    setenv("TZ", rule, 1);
    tzset();
}
constexpr const char *berlin = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr const char *newfoundland = "NST3:30NDT,M3.2.0,M11.1.0";

std::string isoText(SaHpiTimeT time) {
    std::string text;
    appendTime(text, time, Precision::nanoseconds);
    return text;
}

TEST(LocalTime, OffsetOfTheMoment) {
    useZone(berlin);
    EXPECT_EQ(timeText(winter), "2023-12-19T05:16:51+01:00");
    EXPECT_EQ(timeText(summer), "2023-07-19T05:56:51+02:00");
    EXPECT_EQ(utcOffsetAt(summer / second), 7200);
}

TEST(LocalTime, WestOfGreenwichAndHalfAnHour) {
    useZone(newfoundland);
    EXPECT_EQ(timeText(winter), "2023-12-19T00:46:51-03:30");
    EXPECT_EQ(timeText(summer), "2023-07-19T01:26:51-02:30");
}

TEST(LocalTime, NoOffsetIsZ) {
    useZone("UTC0");
    EXPECT_EQ(timeText(winter), "2023-12-19T04:16:51Z");
    useZone("WET0WEST,M3.5.0/1,M10.5.0");
    EXPECT_EQ(timeText(winter), "2023-12-19T04:16:51Z");
}

TEST(LocalTime, UtcOnDemand) {
    useZone(berlin);
    useUtc();
    EXPECT_EQ(timeText(winter), "2023-12-19T04:16:51Z");
}

TEST(LocalTime, Fractions) {
    useZone(berlin);
    EXPECT_EQ(timeText(winter + 1), "2023-12-19T05:16:51.000+01:00");
    EXPECT_EQ(timeText(winter + 250'000'000), "2023-12-19T05:16:51.250+01:00");
    EXPECT_EQ(isoText(winter), "2023-12-19T05:16:51.000000000+01:00");
    EXPECT_EQ(isoText(winter + 1), "2023-12-19T05:16:51.000000001+01:00");
}

TEST(LocalTime, TimesThatAreNoTimesOfDay) {
    useZone(berlin);
    EXPECT_EQ(timeText(42 * second), "+0d00:00:42");
    EXPECT_EQ(timeText(42'999'999'999), "+0d00:00:42.999");
    EXPECT_EQ(isoText(42 * second), "+0d00:00:42.000000000");
    EXPECT_EQ(timeText(-1), "-0d00:00:00.000");
    EXPECT_EQ(timeText(SAHPI_TIME_UNSPECIFIED), "unspecified");
    EXPECT_EQ(isoText(SAHPI_TIME_UNSPECIFIED), "unspecified");
}

// Where local time would leave the range of the standard, or its offset that of RFC 3339.
TEST(LocalTime, UtcWhereLocalTimeCannotBeWritten) {
    useZone(berlin);
    EXPECT_EQ(isoText(std::numeric_limits<std::int64_t>::max()), "2262-04-11T23:47:16.854775807Z");
    useZone("AAA0:00:30");
    EXPECT_EQ(timeText(winter + 3600 * second), "2023-12-19T05:16:51Z");
    useZone(newfoundland);
    EXPECT_EQ(isoText(SAHPI_TIME_MAX_RELATIVE + 1).back(), 'Z');
}

// The quarter of an hour around a change of the offset.
TEST(LocalTime, TheHourThatComesTwice) {
    useZone(berlin);
    constexpr SaHpiTimeT change = 1'698'541'200 * second; // 2023-10-29T01:00:00Z
    EXPECT_EQ(timeText(change - second), "2023-10-29T02:59:59+02:00");
    EXPECT_EQ(timeText(change), "2023-10-29T02:00:00+01:00");
}

TEST(LocalTime, EveryTextIsTakenBack) {
    for (const char *const zone : {berlin, newfoundland, "UTC0"}) {
        useZone(zone);
        std::mt19937_64 random(20261121);
        std::uniform_int_distribution<std::int64_t> any(std::numeric_limits<std::int64_t>::min());
        for (int i = 0; i < 20'000; ++i) {
            const SaHpiTimeT time = any(random);
            ASSERT_EQ(parseMoment(isoText(time), winter), time) << isoText(time);
            ASSERT_EQ(parseMoment(timeText(time), winter), time / 1'000'000 * 1'000'000);
            ASSERT_GE(parseEnd(timeText(time), winter), time) << timeText(time);
        }
        EXPECT_EQ(parseMoment("unspecified", winter), SAHPI_TIME_UNSPECIFIED);
    }
}

} // namespace
