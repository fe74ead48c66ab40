// Goal: every line of a sensor's record, which of them depend on what, both encodings of the
// accuracy, and the columns of names behind indents of every kind.

#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "display/sensor_record.h"
#include "tests/display/printed.h"
#include "tests/display/records.h"

namespace {

using zusahpi::display::printSensorRecord;

void setIntegerAccuracy(SaHpiSensorRecT &record, uint32_t units) {
    std::memcpy(&record.DataFormat.AccuracyFactor, &units, sizeof units);
}

// A thermometer that has nothing to say but its readings, 1 to 5 in the order of the record.
SaHpiSensorRecT thermometer() {
    SaHpiSensorRecT record{};
    record.Type = SAHPI_TEMPERATURE;
    record.Category = SAHPI_EC_THRESHOLD;
    record.DataFormat.ReadingType = SAHPI_SENSOR_READING_TYPE_INT64;
    record.DataFormat.BaseUnits = SAHPI_SU_DEGREES_C;
    SaHpiSensorRangeT &range = record.DataFormat.Range;
    range.Max = intReading(1);
    range.Min = intReading(2);
    range.Nominal = intReading(3);
    range.NormalMax = intReading(4);
    range.NormalMin = intReading(5);
    return record;
}

Printed display(const SaHpiSensorRecT &record, const char *indent = "",
                uint32_t floatAccuracy = 0) {
    const auto copy = std::make_unique<SaHpiSensorRecT>(record);
    return printedBy(
        [&](zuSaHpiHandleT out) { return printSensorRecord(out, *copy, indent, floatAccuracy); });
}

// The lines from the one that holds `first` up to the one that holds `last`.
std::string linesBetween(const std::string &text, std::string_view first, std::string_view last) {
    const std::size_t from = text.rfind('\n', text.find(first)) + 1;
    const std::size_t to = text.rfind('\n', text.find(last)) + 1;
    EXPECT_NE(text.find(first), std::string::npos) << first;
    EXPECT_NE(text.find(last), std::string::npos) << last;
    return text.substr(from, to - from);
}

std::string accuracyOf(const SaHpiSensorRecT &record, uint32_t floatAccuracy) {
    return linesBetween(display(record, "", floatAccuracy).text, "Accuracy",
                        "Threshold Definition");
}

TEST(SensorRecord, APlainSensor) {
    const Printed printed = display(thermometer());
    EXPECT_EQ(printed.text, "\n"
                            "Sensor Type    1: Temperature\n"
                            "Event Category 1: Threshold\n"
                            "Enable Control is not supported\n"
                            "Event Control  0: Per Event\n"
                            "Events Supported = 0x0000\n"
                            "Reading Type   0: Int64\n"
                            "             BaseUnits     1: Degrees C\n"
                            "             ModifierUnits 0: Unspecified\n"
                            "             ModifierUse   0: None\n"
                            "             Percentage    NO\n"
                            "             Ranges        0x00\n"
                            "             Accuracy      0.0%\n"
                            "Threshold Definition: No Accessible Thresholds\n"
                            "Oem Value: 0\n");
    EXPECT_EQ(printed.result, 13);
}

TEST(SensorRecord, ABufferSensorHasNoUnitsAndNoRanges) {
    SaHpiSensorRecT record = thermometer();
    record.Type = SAHPI_OPERATIONAL;
    record.Category = SAHPI_EC_SENSOR_SPECIFIC;
    record.EventCtrl = SAHPI_SEC_READ_ONLY;
    record.DataFormat.ReadingType = SAHPI_SENSOR_READING_TYPE_BUFFER;
    record.DataFormat.Range.Flags = 0x1F;
    EXPECT_EQ(display(record, "> ").text, expectedText("sensor_record_buffer.txt"));
}

TEST(SensorRecord, ABufferSensorHasThresholds) {
    SaHpiSensorRecT record = thermometer();
    record.DataFormat.ReadingType = SAHPI_SENSOR_READING_TYPE_BUFFER;
    record.ThresholdDefn = {
        .IsAccessible = 1, .ReadThold = SAHPI_STM_UP_CRIT, .WriteThold = 0, .Nonlinear = 0};
    EXPECT_EQ(linesBetween(display(record, "> ").text, "Accuracy", "Oem"),
              ">              Accuracy      0.0%\n"
              "> Threshold Definition: Normal\n"
              ">      Readable Thresholds   0x20: Up Crit\n"
              ">      Writeable Thresholds  0x00\n");
}

TEST(SensorRecord, UnknownValuesAreNumbers) {
    SaHpiSensorRecT record = thermometer();
    record.Type = static_cast<SaHpiSensorTypeT>(0xFFFFFFFF);
    record.Category = 0xFE;
    record.EnableCtrl = 0x80;
    record.EventCtrl = static_cast<SaHpiSensorEventCtrlT>(0x80000000);
    record.Events = 0x8000;
    record.DataFormat.ReadingType = static_cast<SaHpiSensorReadingTypeT>(0xFFFFFFFE);
    record.DataFormat.BaseUnits = static_cast<SaHpiSensorUnitsT>(0x5B);
    record.DataFormat.ModifierUnits = static_cast<SaHpiSensorUnitsT>(0xFFFFFFFF);
    record.DataFormat.ModifierUse = static_cast<SaHpiSensorModUnitUseT>(3);
    record.DataFormat.Percentage = 0x80;
    record.DataFormat.Range.Flags = 0xE0;
    record.Oem = 0xFFFFFFFF;
    EXPECT_EQ(display(record).text, "\n"
                                    "Sensor Type    4294967295\n"
                                    "Event Category 254\n"
                                    "Enable Control is supported\n"
                                    "Event Control  2147483648\n"
                                    "Events Supported = 0x8000: \n"
                                    "Reading Type   4294967294\n"
                                    "             BaseUnits     91\n"
                                    "             ModifierUnits 4294967295\n"
                                    "             ModifierUse   3\n"
                                    "             Percentage    YES\n"
                                    "             Ranges        0xe0: \n"
                                    "             Accuracy      0.0%\n"
                                    "Threshold Definition: No Accessible Thresholds\n"
                                    "Oem Value: 4294967295\n");
}

TEST(SensorRecord, EachRangeFlagShowsItsReading) {
    const struct {
        int flag;
        const char *lines;
    } cases[] = {
        {0x10, "             Ranges        0x10: Min\n"
               "                Minimum    (int)  2\n"},
        {0x08, "             Ranges        0x08: Max\n"
               "                Maximum    (int)  1\n"},
        {0x04, "             Ranges        0x04: Normal Min\n"
               "                Normal Min (int)  5\n"},
        {0x02, "             Ranges        0x02: Normal Max\n"
               "                Normal Max (int)  4\n"},
        {0x01, "             Ranges        0x01: Nominal\n"
               "                Nominal    (int)  3\n"},
        {0x1F, "             Ranges        0x1f: Nominal, Normal Max, Normal Min, Max, \n"
               "                                 Min\n"
               "                Minimum    (int)  2\n"
               "                Maximum    (int)  1\n"
               "                Normal Min (int)  5\n"
               "                Normal Max (int)  4\n"
               "                Nominal    (int)  3\n"},
    };
    for (const auto &[flag, lines] : cases) {
        SaHpiSensorRecT record = thermometer();
        record.DataFormat.Range.Flags = static_cast<SaHpiSensorRangeFlagsT>(flag);
        EXPECT_EQ(linesBetween(display(record).text, "Ranges", "Accuracy"), lines);
    }
}

TEST(SensorRecord, NamesOfRangesGoOnBehindTheRangeIndent) {
    SaHpiSensorRecT record = thermometer();
    record.DataFormat.Range.Flags = 0x1F;
    const std::string text = display(record, ">>").text;
    EXPECT_NE(text.find("\n>>             Ranges        0x1f: Nominal, Normal Max, Normal Min, \n"
                        ">>                                 Max, Min\n"),
              std::string::npos);
}

TEST(SensorRecord, IntegerAccuracyHasNoLeadingZeros) {
    const struct {
        uint32_t units;
        const char *text;
    } cases[] = {{500, "0.500%"},
                 {10050, "1.50%"},
                 {0, "0.0%"},
                 {9999, "0.9999%"},
                 {10000, "1.0%"},
                 {0x80000000, "214748.3648%"},
                 {0xFFFFFFFF, "429496.7295%"}};
    for (const auto &[units, text] : cases) {
        SaHpiSensorRecT record = thermometer();
        record.DataFormat.AccuracyFactor = 0.5; // the last four bytes do not count
        setIntegerAccuracy(record, units);
        EXPECT_EQ(accuracyOf(record, 0), std::string("             Accuracy      ") + text + "\n");
    }
}

TEST(SensorRecord, FloatAccuracyIsAFactor) {
    const struct {
        double factor;
        const char *text;
    } cases[] = {{0.05, "5.0000%"},
                 {0, "0.0000%"},
                 {-0.015, "-1.5000%"},
                 {1234.5, "123450.0000%"},
                 {std::numeric_limits<double>::infinity(), "inf%"}};
    for (const auto &[factor, text] : cases) {
        SaHpiSensorRecT record = thermometer();
        record.DataFormat.AccuracyFactor = factor;
        for (const uint32_t flag : {1U, 0x80000000U}) {
            EXPECT_EQ(accuracyOf(record, flag),
                      std::string("             Accuracy      ") + text + "\n");
        }
    }
}

TEST(SensorRecord, ThresholdDefinitions) {
    SaHpiSensorRecT record = thermometer();
    record.ThresholdDefn = {.IsAccessible = 0,
                            .ReadThold = SAHPI_STM_LOW_MINOR,
                            .WriteThold = SAHPI_STM_LOW_MINOR,
                            .Nonlinear = 1};
    EXPECT_EQ(linesBetween(display(record).text, "Threshold Definition", "Oem"),
              "Threshold Definition: No Accessible Thresholds\n");
    record.ThresholdDefn.IsAccessible = 0x80;
    record.ThresholdDefn.Nonlinear = 0x80;
    EXPECT_EQ(linesBetween(display(record).text, "Threshold Definition", "Oem"),
              "Threshold Definition: NonLinear\n"
              "     Readable Thresholds   0x01: Low Minor\n"
              "     Writeable Thresholds  0x01: Low Minor\n");
    record.ThresholdDefn.Nonlinear = 0;
    EXPECT_EQ(linesBetween(display(record).text, "Threshold Definition", "Readable"),
              "Threshold Definition: Normal\n");
}

TEST(SensorRecord, NamesOfThresholdsGoOnWithoutTheIndent) {
    SaHpiSensorRecT record = thermometer();
    record.ThresholdDefn = {
        .IsAccessible = 1, .ReadThold = 0x0F, .WriteThold = 0x0F, .Nonlinear = 0};
    EXPECT_EQ(linesBetween(display(record, "> ").text, "Readable", "Oem"),
              ">      Readable Thresholds   0x0f: Low Minor, Low Major, Low Crit, \n" +
                  std::string(7 + 28, ' ') +
                  "Up Minor\n"
                  ">      Writeable Thresholds  0x0f: Low Minor, Low Major, Low Crit, \n" +
                  std::string(7 + 28, ' ') + "Up Minor\n");
}

TEST(SensorRecord, ColumnsOfThresholdsCountTheCutIndent) {
    SaHpiSensorRecT record = thermometer();
    record.ThresholdDefn = {.IsAccessible = 1, .ReadThold = 0x03, .WriteThold = 0, .Nonlinear = 0};
    for (const std::size_t length : {44U, 47U, 60U}) {
        const std::string indent(length, '-');
        const std::string cut = (indent + "     ").substr(0, 49);
        const std::string wrapped = "\n" + std::string(49 + 28, ' ');
        EXPECT_EQ(linesBetween(display(record, indent.c_str()).text, "Readable", "Oem"),
                  cut + "Readable Thresholds   0x03: " + wrapped + "Low Minor, " + wrapped +
                      "Low Major\n" + cut + "Writeable Thresholds  0x00\n");
    }
}

// Names may end at column 70: what stands before the mask, the mask, ": " and the first name.
TEST(SensorRecord, ListsBreakAtTheirColumns) {
    SaHpiSensorRecT record = thermometer();
    record.Events = SAHPI_ES_LOWER_MINOR;
    record.DataFormat.Range.Flags = SAHPI_SRF_NOMINAL;
    record.ThresholdDefn = {.IsAccessible = 1, .ReadThold = 1, .WriteThold = 2, .Nonlinear = 0};
    const auto textBehind = [&](const std::string &indent) {
        return display(record, indent.c_str()).text;
    };
    EXPECT_EQ(longestIndentFor("Events Supported = 0x0001", textBehind), 70U - (25 + 2) - 11);
    EXPECT_EQ(longestIndentFor("Ranges        0x01", textBehind), 70U - 13 - (18 + 2) - 7);
    EXPECT_EQ(longestIndentFor("Readable Thresholds   0x01", textBehind), 70U - 5 - (26 + 2) - 9);
    EXPECT_EQ(longestIndentFor("Writeable Thresholds  0x02", textBehind), 70U - 5 - (26 + 2) - 9);
}

TEST(SensorRecord, RangesAreIndentedToTheCut) {
    SaHpiSensorRecT record = thermometer();
    record.DataFormat.Range.Flags = SAHPI_SRF_MIN;
    const std::string indent(40, '-');
    const std::string cut = indent + std::string(9, ' ');
    EXPECT_EQ(
        linesBetween(display(record, indent.c_str()).text, "Percentage", "Threshold Definition"),
        cut + "Percentage    NO\n" + cut + "Ranges        0x10: \n" + cut + std::string(20, ' ') +
            "Min\n" + cut + "   Minimum    (int)  2\n" + cut + "Accuracy      0.0%\n");
}

} // namespace
