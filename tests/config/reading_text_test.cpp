// Goal: the text of each kind of reading, its length, and how it is cut to every size.

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "zuSaHpi_util.h"

namespace {

SaHpiSensorReadingT reading(uint32_t type) {
    SaHpiSensorReadingT reading{};
    reading.IsSupported = SAHPI_TRUE;
    reading.Type = static_cast<SaHpiSensorReadingTypeT>(type);
    return reading;
}

SaHpiSensorReadingT integer(std::int64_t value) {
    SaHpiSensorReadingT result = reading(SAHPI_SENSOR_READING_TYPE_INT64);
    result.Value.SensorInt64 = value;
    return result;
}

SaHpiSensorReadingT real(double value) {
    SaHpiSensorReadingT result = reading(SAHPI_SENSOR_READING_TYPE_FLOAT64);
    result.Value.SensorFloat64 = value;
    return result;
}

std::string textOf(const SaHpiSensorReadingT &value, uint32_t size = 100) {
    std::vector<char> buffer(size + 1, '#');
    const int length = displayReading(&value, buffer.data(), size);
    EXPECT_EQ(buffer[size], '#');
    const std::string text = buffer.data();
    EXPECT_EQ(length, static_cast<int>(text.size()));
    return text;
}

TEST(ReadingText, EachType) {
    EXPECT_EQ(textOf(integer(-42)), "-42 ");
    EXPECT_EQ(textOf(integer(INT64_MIN)), "-9223372036854775808 ");
    EXPECT_EQ(textOf(integer(5'000'000'000)), "5000000000 ");
    EXPECT_EQ(textOf(real(3.25)), "3.25 ");
    EXPECT_EQ(textOf(real(1e100)), "1e+100 ");
    EXPECT_EQ(textOf(reading(SAHPI_SENSOR_READING_TYPE_BUFFER)), "(buffer) ");
}

TEST(ReadingText, UnsignedReadingsAreNotShown) {
    EXPECT_EQ(textOf(reading(SAHPI_SENSOR_READING_TYPE_UINT64)), "(unknown reading type) ");
    EXPECT_EQ(textOf(reading(4)), "(unknown reading type) ");
    EXPECT_EQ(textOf(reading(0xFFFFFFFF)), "(unknown reading type) ");
}

TEST(ReadingText, WhatIsNotSupportedIsNoReading) {
    SaHpiSensorReadingT value = integer(7);
    value.IsSupported = SAHPI_FALSE;
    EXPECT_EQ(textOf(value), "(no reading) ");
    value.IsSupported = 2;
    EXPECT_EQ(textOf(value), "7 ");
}

TEST(ReadingText, IsCutToEverySize) {
    const std::string whole = "12345 ";
    for (uint32_t size = 1; size <= 10; ++size) {
        EXPECT_EQ(textOf(integer(12345), size), whole.substr(0, size - 1));
    }
    char small[6];
    const SaHpiSensorReadingT value = integer(12345);
    EXPECT_EQ(displayReading(&value, small, sizeof small), 5);
    EXPECT_STREQ(small, "12345");
}

TEST(ReadingText, NothingIsWrittenIntoNoBytes) {
    char untouched = '#';
    const SaHpiSensorReadingT value = integer(1);
    EXPECT_EQ(displayReading(&value, &untouched, 0), 0);
    EXPECT_EQ(untouched, '#');
}

} // namespace
