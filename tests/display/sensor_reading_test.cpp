// Goal: every reading type in every mode, and the framing that each mode adds.

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "tests/display/printed.h"
#include "tests/display/records.h"
#include "zuSaHpi_util.h"

namespace {

Printed display(const SaHpiSensorReadingT &reading, int mode, const char *label = "Label",
                const char *indent = "> ") {
    return printedBy([&](zuSaHpiHandleT out) {
        return zuSaHpiSensorReadingDisplay(out, label, &reading, mode, indent);
    });
}

std::string textOf(const SaHpiSensorReadingT &reading, int mode) {
    return display(reading, mode).text;
}

const std::string fullDump = "> 0000: 41414141 41414141 41414141 41414141 |AAAAAAAAAAAAAAAA|\n"
                             "> 0010: 41414141 41414141 41414141 41414141 |AAAAAAAAAAAAAAAA|\n"
                             "\n";

TEST(SensorReading, Integers) {
    EXPECT_EQ(textOf(intReading(-42), 0), "> Label (int)  -42\n");
    EXPECT_EQ(textOf(intReading(-42), 1), "-42\n");
    EXPECT_EQ(textOf(intReading(-42), 2), "-42");
    EXPECT_EQ(textOf(intReading(-42), 3), "-42\n");
    EXPECT_EQ(textOf(intReading(-42), -1), "-42\n");
}

TEST(SensorReading, IntegersHaveAllTheirBits) {
    EXPECT_EQ(textOf(intReading(0), 1), "0\n");
    EXPECT_EQ(textOf(intReading(0x1'0000'0000), 1), "4294967296\n");
    EXPECT_EQ(textOf(intReading(std::numeric_limits<long long>::max()), 1),
              "9223372036854775807\n");
    EXPECT_EQ(textOf(intReading(std::numeric_limits<long long>::min()), 1),
              "-9223372036854775808\n");
}

TEST(SensorReading, FloatingPoint) {
    EXPECT_EQ(textOf(floatReading(3.5), 0), "> Label (real) 3.5\n");
    EXPECT_EQ(textOf(floatReading(3.5), 1), "3.5\n");
    EXPECT_EQ(textOf(floatReading(3.5), 2), "3.5");
    EXPECT_EQ(textOf(floatReading(1234567.0), 1), "1.23457e+06\n");
    EXPECT_EQ(textOf(floatReading(-std::numeric_limits<double>::infinity()), 1), "-inf\n");
    EXPECT_EQ(textOf(floatReading(std::numeric_limits<double>::max()), 1), "1.79769e+308\n");
}

TEST(SensorReading, BuffersAreDumpedWholeInEveryMode) {
    const SaHpiSensorReadingT reading = readingOfBytes(SAHPI_SENSOR_READING_TYPE_BUFFER, 'A');
    EXPECT_EQ(textOf(reading, 0), "> Label (buffer)\n" + fullDump);
    for (const int mode : {1, 2, 7, -1}) {
        const Printed printed = display(reading, mode);
        EXPECT_EQ(printed.text, fullDump) << mode;
        EXPECT_EQ(printed.result, 1) << mode;
    }
}

TEST(SensorReading, UnsignedAndUnknownTypesAreNotShown) {
    for (const uint32_t type : {1U, 4U, 0x80000000U, 0xFFFFFFFFU}) {
        const SaHpiSensorReadingT reading = readingOfBytes(type, 1);
        EXPECT_EQ(textOf(reading, 0), "> Label  (Unknown reading type)\n");
        EXPECT_EQ(textOf(reading, 1), " (Unknown reading type)\n");
        EXPECT_EQ(textOf(reading, 2), " (Unknown reading type)");
        EXPECT_EQ(textOf(reading, 99), " (Unknown reading type)\n");
    }
}

TEST(SensorReading, AnAbsentReadingIsNotSetWhateverItHolds) {
    for (const uint32_t type : {0U, 1U, 2U, 3U, 0xFFFFFFFFU}) {
        SaHpiSensorReadingT reading = readingOfBytes(type, 1);
        reading.IsSupported = SAHPI_FALSE;
        EXPECT_EQ(textOf(reading, 0), "> Label (Not set)\n");
        EXPECT_EQ(textOf(reading, 1), "(Not set)\n");
        EXPECT_EQ(textOf(reading, 2), "(Not set)");
        EXPECT_EQ(textOf(reading, -9), "(Not set)\n");
    }
}

TEST(SensorReading, AnyByteButZeroMeansSupported) {
    SaHpiSensorReadingT reading = intReading(7);
    reading.IsSupported = 0x80;
    EXPECT_EQ(textOf(reading, 1), "7\n");
}

TEST(SensorReading, AnEmptyLabelAddsNoBlank) {
    EXPECT_EQ(display(intReading(7), 0, "").text, "> (int)  7\n");
}

TEST(SensorReading, ReturnsTheResultOfTheLastPrint) {
    EXPECT_EQ(display(intReading(7), 0).result, 9);
    EXPECT_EQ(display(floatReading(1), 2).result, 1);
    EXPECT_EQ(display(readingOfBytes(1, 0), 1).result, 24);
}

TEST(SensorReading, LabelAndIndentAreNoFormats) {
    EXPECT_EQ(display(intReading(7), 0, "%s", "%n").text, "%n%s (int)  7\n");
}

} // namespace
