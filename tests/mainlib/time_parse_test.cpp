// Goal: the parser reads back every text of the formatter exactly, takes the usual shorter forms,
// reports each of its error numbers for the stated reason, and survives any bytes.
#include "mainlib/time_parse.h"

#include <cstdint>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tests/mainlib/random_text.h"
#include "tests/support/times.h"
#include "zuSaHpi_mainlib.h"

namespace {

using namespace times;
using random_text::below;
using random_text::mutate;
using zusahpi::mainlib::readTime;
using zusahpi::mainlib::TimeError;
using zusahpi::mainlib::TimeReading;

constexpr std::int64_t november21 = 1'795'219'200 * second;       // 2026-11-21, midnight
constexpr std::int64_t now = november21 + 10 * hour + second / 2; // that morning

std::string textOf(std::int64_t time) {
    char buffer[ZUSAHPI_TIME_TEXT_SIZE];
    return zuSaHpiTimeT2String(time, 0, buffer);
}

struct Good {
    const char *text;
    std::int64_t time;
};

void expectTimes(const std::vector<Good> &rows) {
    for (const Good &row : rows) {
        SCOPED_TRACE(row.text);
        const TimeReading reading = readTime(row.text, now);
        EXPECT_EQ(reading.error, TimeError::none);
        EXPECT_EQ(reading.time, row.time);
    }
}

struct Bad {
    const char *message;
    std::vector<const char *> texts;
};

// Every row of the table in time_parse.cpp, by the message that an operator sees.
const std::vector<Bad> badTexts = {
    {"Illegal field",
     {"",
      " \t\n\v\f\r",
      "hello",
      "12",
      "12x",
      "8pm",
      "?",
      "Z",
      "08:06 12",
      "08:06 Z UTC",
      "unspecified unspecified",
      "now now",
      "08:06 now",
      "2026-11-21 unspecified",
      "+x",
      "+1h m",
      ".5s",
      "\xFF\xFE",
      "UTC",
      "08:06 STD Z",
      "1d hello"}},
    {"Illegal last character of field",
     {"2026-11-21x",  "2026-11-21-",  "11/21/2026/", "08:06x",  "08:06:12x", "08:06:12.5x",
      "08:06Zx",      "08:06pmx",     "08:06p",      "08:06+2", "08:06+",    "08:06+02:",
      "08:06+02:00x", "08:06-123:00", "+",           "-",       "+12",       "+2d3",
      "+2d03:04x",    "1.5",          "+5x"}},
    {"Unexpected date field",
     {"2026-11-21 2026-11-22", "11/21/2026 2026-11-21", "+1d 2026-11-21", "now 2026-11-21",
      "unspecified 11/21/2026"}},
    {"Illegal month in date", {"2026-x-21", "2026--21", "2026-123-01", "2026-1x-21", "2026/11/21"}},
    {"Illegal day in date",
     {"2026-11", "2026-11-", "2026-11-x", "2026-11-123", "11/", "11/x/2026", "11/211/2026",
      "11/2x/2026"}},
    {"Illegal year in date",
     {"26-11-21", "20260-11-21", "11/21", "11/21/", "11/21/26", "11/21/20261", "11/21/x",
      "99999999999999999999999999-01-01"}},
    {"Unexpected time field",
     {"08:06 09:00", "2026-11-21T08:06 09:00", "now 09:00", "unspecified 08:06",
      "08:06 2026-11-21T08:06"}},
    {"Illegal hour in time",
     {"123:00", "2026-11-21T", "2026-11-21Tx", "2026-11-21T08x", "2026-11-21T:06"}},
    {"Illegal minute in time",
     {"08:", "08:x", "08:123", "08::12", "2026-11-21T08", "08:99999999999999999999999999999"}},
    {"Illegal second in time", {"08:06:", "08:06:x", "08:06:123", "08:06:.5"}},
    {"Illegal subseconds in time",
     {"08:06:12.", "08:06:12.x", "08:06:12.1234567890", "08:06:12.Z"}},
    {"Unexpected AM/PM indicator",
     {"PM", "2026-11-21 AM", "08:06 PM PM", "08:06pm PM", "08:06Z PM", "08:06+02:00 AM",
      "08:06 DST PM", "+1d PM", "now AM"}},
    {"Unexpected DST indicator",
     {"DST", "2026-11-21 DST", "08:06Z DST", "08:06+02:00 DST", "08:06 DST DST", "08:06 STD DST",
      "+1h DST", "now DST"}},
    {"Unexpected STD time indicator",
     {"STD", "2026-11-21 STD", "08:06Z STD", "08:06-05:00 STD", "08:06 STD STD", "08:06 DST STD",
      "+1h STD", "unspecified STD"}},
    {"Unexpected relative time field",
     {"2026-11-21 +1d", "08:06 1h", "now +1h", "unspecified 5s", "+1d +2h", "1d -2h",
      "2026-11-21 1.5s"}},
    {"Illegal days field",
     {"+d", "-d", "1d 2d", "2h1d", "1000000000000000000d", "99999999999999999999999d"}},
    {"Illegal hours field",
     {"+h", "+1dh", "1h2h", "5m 2h", "+:30", "2h 03:04", "+2d:04", "1000000000000000000h"}},
    {"Illegal minutes field", {"+m", "1m2m", "5s 2m", "+1:", "+1:x", "+2d03:"}},
    {"Illegal seconds field", {"+s", "+1ms", "1s2s", "+1:02:", "+1:02:x", "+.5s", "+1:02:03 4s"}},
    {"Illegal subseconds field",
     {"1.s", "1.", "1.1234567890s", "1.5m", "1.5h", "1.5d", "+1:02:03.", "+1:02:03.x",
      "+1:02:03.1234567890"}},
    {"Component range error in relative time",
     {"1d24h", "1h60m", "1m60s", "1d60m", "+1:60", "+1:00:60", "+1d24:00", "1h 100000000000m"}},
    {"Relative time out of range",
     {"10008d", "+10007d23:58:48.455135233", "864691129s", "999999999999999999s", "-106752d",
      "-106751d23:47:16.854775808", "999999999999999999d"}},
    {"Component range error in time",
     {"24:00", "25:00", "08:60", "08:06:60", "13:00 PM", "00:30 AM", "0:30pm", "08:06+24:00",
      "08:06+02:60", "99:99:99"}},
    {"Component range error in date",
     {"2026-13-01", "2026-00-01", "2026-01-00", "2026-01-32", "2026-02-29", "2100-02-29",
      "13/01/2026", "04/31/2026"}},
    {"Date out of range",
     {"1997-05-26", "1970-01-01", "0000-01-01", "2262-04-12", "9999-12-31T23:59:59Z",
      "1997-05-26T23:58:48.455135232Z", "2262-04-11T23:47:16.854775808Z",
      "2262-04-11T23:47:16.854775807-00:01"}},
};

void expectConsistent(const TimeReading &reading) {
    if (reading.error != TimeError::none) {
        ASSERT_GE(static_cast<int>(reading.error), 1);
        ASSERT_LT(static_cast<int>(reading.error), ZUSAHPI_TIME_ERRORS);
        ASSERT_EQ(reading.time, SAHPI_TIME_UNSPECIFIED);
    }
}

} // namespace

TEST(TimeParse, ReadsBackTheLimits) {
    for (const std::int64_t time :
         {std::numeric_limits<std::int64_t>::min(), -last, -last + 1, -day, -second,
          -std::int64_t{1}, std::int64_t{0}, std::int64_t{1}, second - 1, second, day - 1, day,
          std::int64_t{SAHPI_TIME_MAX_RELATIVE} - 1, std::int64_t{SAHPI_TIME_MAX_RELATIVE},
          std::int64_t{SAHPI_TIME_MAX_RELATIVE} + 1, now, last - 1, last}) {
        SCOPED_TRACE(textOf(time));
        const TimeReading reading = readTime(textOf(time), now);
        EXPECT_EQ(reading.error, TimeError::none);
        EXPECT_EQ(reading.time, time);
    }
}

TEST(TimeParse, ReadsBackWhateverTheFormatterWrites) {
    constexpr unsigned seed = 4711;
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    for (int i = 0; i < 200'000; ++i) {
        const std::int64_t time = random_text::time(random);
        const TimeReading reading = readTime(textOf(time), now);
        ASSERT_EQ(reading.error, TimeError::none) << textOf(time);
        ASSERT_EQ(reading.time, time) << textOf(time);
    }
}

TEST(TimeParse, Dates) {
    expectTimes({{"2026-11-21", november21},
                 {"11/21/2026", november21},
                 {"2026-1-5", november21 - 320 * day},
                 {"1/5/2026", november21 - 320 * day},
                 {"2028-02-29", november21 + 465 * day}});
}

TEST(TimeParse, DatesWithTimes) {
    const std::int64_t morning = november21 + 8 * hour + 6 * minute;
    expectTimes({{"2026-11-21T08:06", morning},
                 {"2026-11-21t08:06:12z", morning + 12 * second},
                 {"2026-11-21 08:06:12Z", morning + 12 * second},
                 {"2026-11-21 8:06", morning},
                 {"8:06 2026-11-21", morning},
                 {"11/21/2026\t08:06", morning},
                 {"11/21/2026T08:06", morning},
                 {"2026-11-21 08:06 UTC", morning},
                 {"2026-11-21 08:06 z", morning},
                 {"  2026-11-21 \t 08:06\n", morning}});
}

TEST(TimeParse, FractionsOfOneToNineDigits) {
    expectTimes({{"2026-11-21T00:00:00.1", november21 + 100'000'000},
                 {"2026-11-21T00:00:00.12", november21 + 120'000'000},
                 {"2026-11-21T00:00:00.12345678", november21 + 123'456'780},
                 {"2026-11-21T00:00:00.123456789Z", november21 + 123'456'789},
                 {"2026-11-21T00:00:00.000000001Z", november21 + 1}});
}

TEST(TimeParse, OffsetsFromUtc) {
    expectTimes({{"2026-11-21T08:00+02:00", november21 + 6 * hour},
                 {"2026-11-21 08:00:00-05:30", november21 + 13 * hour + 30 * minute},
                 {"2026-11-21T00:00+0:00", november21},
                 {"2026-11-21T00:30+01:00", november21 - 30 * minute}});
}

TEST(TimeParse, TimeAloneIsToday) {
    expectTimes({{"08:06", november21 + 8 * hour + 6 * minute},
                 {"00:00", november21},
                 {"23:59:59.999999999", november21 + day - 1}});
    // Today is the day in UTC, from its first to its last nanosecond.
    EXPECT_EQ(readTime("12:00", november21).time, november21 + 12 * hour);
    EXPECT_EQ(readTime("12:00", november21 + day - 1).time, november21 + 12 * hour);
    EXPECT_EQ(readTime("12:00", november21 - 1).time, november21 - 12 * hour);
    // A host whose clock was never set has no day that could be told from a relative time.
    EXPECT_EQ(readTime("12:00", 0).error, TimeError::dateOutOfRange);
    EXPECT_EQ(readTime("12:00", SAHPI_TIME_UNSPECIFIED).error, TimeError::dateOutOfRange);
    EXPECT_EQ(readTime("12:00", last).time, last - 42'436'854'775'807);
}

TEST(TimeParse, TwelveHourClock) {
    expectTimes({{"12:00 AM", november21},
                 {"12:59am", november21 + 59 * minute},
                 {"1:00 am", november21 + hour},
                 {"11:59 AM", november21 + 11 * hour + 59 * minute},
                 {"12:00 PM", november21 + 12 * hour},
                 {"12:30:15.5 pm", november21 + 12 * hour + 30 * minute + 15 * second + second / 2},
                 {"1:00pm", november21 + 13 * hour},
                 {"11:59 Pm", november21 + 23 * hour + 59 * minute},
                 {"11/21/2026 8:06 PM", november21 + 20 * hour + 6 * minute},
                 {"8:06 PM 11/21/2026", november21 + 20 * hour + 6 * minute}});
}

TEST(TimeParse, StandardAndDaylightSavingTime) {
    expectTimes({{"08:00 STD", november21 + 8 * hour},
                 {"08:00 DST", november21 + 7 * hour},
                 {"2026-11-21 08:00 pm dst", november21 + 19 * hour},
                 {"2026-11-21T00:30 DST", november21 - 30 * minute}});
}

TEST(TimeParse, RelativeTimes) {
    expectTimes({{"+2d3h", 2 * day + 3 * hour},
                 {"+1h30m", hour + 30 * minute},
                 {"+90s", 90 * second},
                 {"+2d03:04:05.5", 2 * day + 3 * hour + 4 * minute + 5 * second + second / 2},
                 {"1d 2h", day + 2 * hour},
                 {"1d 03:04", day + 3 * hour + 4 * minute},
                 {"+1D 2H 3M 4S", day + 2 * hour + 3 * minute + 4 * second},
                 {"1.5s", second + second / 2},
                 {"0s", 0},
                 {"-0s", 0},
                 {"-1h30m", -hour - 30 * minute},
                 {"-1d 2h", -day - 2 * hour},
                 {"+30:00:00", 30 * hour},
                 {"+03:04", 3 * hour + 4 * minute},
                 {"1d5s", day + 5 * second},
                 {"100000m", 100'000 * minute},
                 {"000000000000000007s", 7 * second},
                 {"+10007d23:58:48.455135232", SAHPI_TIME_MAX_RELATIVE}});
}

TEST(TimeParse, WordsThatStandAlone) {
    expectTimes({{"now", now}, {" NOW ", now}, {"unspecified", SAHPI_TIME_UNSPECIFIED}});
    EXPECT_EQ(readTime("Unspecified", now).error, TimeError::none);
}

TEST(TimeParse, EveryErrorHasItsReasons) {
    std::set<int> seen;
    for (const Bad &row : badTexts) {
        for (const char *const text : row.texts) {
            SCOPED_TRACE(text);
            const TimeReading reading = readTime(text, now);
            EXPECT_STREQ(zuSaHpiTimeErrMsg[static_cast<int>(reading.error)], row.message);
            EXPECT_EQ(reading.time, SAHPI_TIME_UNSPECIFIED);
            seen.insert(static_cast<int>(reading.error));
        }
    }
    EXPECT_EQ(seen.size(), std::size_t{ZUSAHPI_TIME_ERRORS - 1});
    EXPECT_FALSE(seen.contains(ZUSAHPI_TIME_OK));
}

TEST(TimeParse, TheImportedFunctionUsesTheHostClock) {
    int error = -1;
    SaHpiTimeT time = 0;
    std::int64_t before = 0;
    std::int64_t after = 0;
    do { // once more when midnight passes in between
        before = zuSaHpiGetTimeofDay() / day;
        time = zuSaHpiString2TimeT(" 00:00:01", 0, &error);
        after = zuSaHpiGetTimeofDay() / day;
    } while (before != after);
    EXPECT_EQ(error, ZUSAHPI_TIME_OK);
    EXPECT_EQ(time, before * day + second);
}

TEST(TimeParse, TheImportedFunctionAlwaysSetsTheError) {
    int error = -1;
    EXPECT_EQ(zuSaHpiString2TimeT("2026-11-21T08:06:12.123456789Z", 0, &error),
              1'795'248'372'123'456'789);
    EXPECT_EQ(error, ZUSAHPI_TIME_OK);
    error = -1;
    EXPECT_EQ(zuSaHpiString2TimeT("unspecified", 0, &error), SAHPI_TIME_UNSPECIFIED);
    EXPECT_EQ(error, ZUSAHPI_TIME_OK);
    EXPECT_EQ(zuSaHpiString2TimeT("2026-13-01", 0, &error), SAHPI_TIME_UNSPECIFIED);
    EXPECT_EQ(error, ZUSAHPI_TIME_DATE_COMPONENT_RANGE);
    EXPECT_EQ(zuSaHpiString2TimeT(nullptr, 0, &error), SAHPI_TIME_UNSPECIFIED);
    EXPECT_EQ(error, ZUSAHPI_TIME_ILLEGAL_FIELD);
}

TEST(TimeParse, NulsAndHighBytesAreNoFields) {
    using namespace std::string_view_literals;
    EXPECT_EQ(readTime("\0"sv, now).error, TimeError::illegalField);
    EXPECT_EQ(readTime("08:06\0"sv, now).error, TimeError::illegalLastCharacter);
    EXPECT_EQ(readTime("1\0d"sv, now).error, TimeError::illegalField);
    EXPECT_EQ(readTime("2026-11-21\x80"sv, now).error, TimeError::illegalLastCharacter);
}

TEST(TimeParse, LongTextsAreRefused) {
    EXPECT_EQ(readTime(std::string(1'000'000, '9') + "d", now).error,
              TimeError::illegalRelativeDays);
    EXPECT_EQ(readTime("08:06:12." + std::string(1'000'000, '0'), now).error,
              TimeError::illegalSubseconds);
    EXPECT_EQ(readTime(std::string(1'000'000, 'a'), now).error, TimeError::illegalField);
    EXPECT_EQ(readTime(std::string(1'000'000, ' ') + "now", now).time, now);
}

TEST(TimeParse, AnyBytesGiveATimeOrAnError) {
    constexpr unsigned seed = 99;
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    using namespace std::string_view_literals;
    constexpr std::string_view alphabet = "0123456789-/:.+dhms TZapPM\0\xFF"sv;
    for (int i = 0; i < 300'000; ++i) {
        std::string text;
        for (std::size_t length = below(random, 24); text.size() < length;) {
            text += alphabet[below(random, alphabet.size())];
        }
        expectConsistent(readTime(text, random_text::time(random)));
    }
}

TEST(TimeParse, MutationsOfGoodTextsGiveATimeOrAnError) {
    constexpr unsigned seed = 100;
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    for (int i = 0; i < 300'000; ++i) {
        std::string text = textOf(random_text::time(random));
        for (std::size_t changes = 1 + below(random, 3); changes > 0; --changes) {
            mutate(random, "0123456789-/:.+dhms TZPM", text);
        }
        expectConsistent(readTime(text, now));
    }
}
