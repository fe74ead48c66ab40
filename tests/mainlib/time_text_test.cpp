// Goal: the exact text of absolute, relative and unspecified times, at the limits of each, equal to
// what the C library's calendar says, and unmoved by locale and time zone.
#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "tests/mainlib/random_text.h"
#include "tests/support/times.h"
#include "zuSaHpi_mainlib.h"

namespace {

using namespace times;

std::string timeText(SaHpiTimeT time) {
    char buffer[ZUSAHPI_TIME_TEXT_SIZE];
    std::memset(buffer, '#', sizeof buffer);
    char *const result = zuSaHpiTimeT2String(time, 0, buffer);
    EXPECT_EQ(result, buffer);
    EXPECT_NE(std::memchr(buffer, '\0', sizeof buffer), nullptr);
    return buffer;
}

} // namespace

TEST(TimeText, AbsoluteTimesAreIso8601InUtc) {
    EXPECT_EQ(timeText(1'795'248'372'123'456'789), "2026-11-21T08:06:12.123456789Z");
    EXPECT_EQ(timeText(1'795'219'200 * second), "2026-11-21T00:00:00.000000000Z");
    EXPECT_EQ(timeText(1'709'164'800 * second), "2024-02-29T00:00:00.000000000Z");
    EXPECT_EQ(timeText(4'107'542'400 * second - 1), "2100-02-28T23:59:59.999999999Z");
    EXPECT_EQ(timeText(4'107'542'400 * second), "2100-03-01T00:00:00.000000000Z");
}

TEST(TimeText, RelativeTimesAreDaysAndClock) {
    EXPECT_EQ(timeText(0), "+0d00:00:00.000000000");
    EXPECT_EQ(timeText(1), "+0d00:00:00.000000001");
    EXPECT_EQ(timeText(3 * day + 14'706 * second + 7), "+3d04:05:06.000000007");
    EXPECT_EQ(timeText(day - 1), "+0d23:59:59.999999999");
    EXPECT_EQ(timeText(day), "+1d00:00:00.000000000");
    EXPECT_EQ(timeText(10 * day), "+10d00:00:00.000000000");
}

TEST(TimeText, NegativeTimesHaveASign) {
    EXPECT_EQ(timeText(-1), "-0d00:00:00.000000001");
    EXPECT_EQ(timeText(-day), "-1d00:00:00.000000000");
    EXPECT_EQ(timeText(-last), "-106751d23:47:16.854775807");
}

TEST(TimeText, LimitsOfTheForms) {
    EXPECT_EQ(timeText(SAHPI_TIME_MAX_RELATIVE), "+10007d23:58:48.455135232");
    EXPECT_EQ(timeText(SAHPI_TIME_MAX_RELATIVE + 1), "1997-05-26T23:58:48.455135233Z");
    EXPECT_EQ(timeText(last), "2262-04-11T23:47:16.854775807Z");
    EXPECT_EQ(timeText(SAHPI_TIME_UNSPECIFIED), "unspecified");
}

TEST(TimeText, AgreesWithTheCalendarOfTheCLibrary) {
    constexpr unsigned seed = 20261121;
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    std::uniform_int_distribution<std::int64_t> times(SAHPI_TIME_MAX_RELATIVE + 1, last);
    for (int i = 0; i < 20'000; ++i) {
        const std::int64_t time = times(random);
        const auto seconds = static_cast<std::time_t>(time / second);
        std::tm parts{};
        gmtime_r(&seconds, &parts);
        char expected[64];
        const std::size_t length = std::strftime(expected, sizeof expected, "%FT%T.", &parts);
        std::snprintf(expected + length, sizeof expected - length, "%09dZ",
                      static_cast<int>(time % second));
        ASSERT_EQ(timeText(time), expected);
    }
}

TEST(TimeText, NeverMoreThanThirtyCharacters) {
    constexpr unsigned seed = 7;
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    for (int i = 0; i < 100'000; ++i) {
        ASSERT_LE(timeText(random_text::time(random)).size(), 30U);
    }
}

TEST(TimeText, LocaleAndTimeZoneChangeNothing) {
    setenv("TZ", "Pacific/Auckland", 1);
    tzset();
    // Where a locale is not installed the call fails and changes nothing.
    (void)std::setlocale(LC_ALL, "de_DE.UTF-8");
    EXPECT_EQ(timeText(1'795'248'372'123'456'789), "2026-11-21T08:06:12.123456789Z");
    EXPECT_EQ(timeText(3 * day + 7), "+3d00:00:00.000000007");
}
