// Sensor records: the sensor, its data format with units and ranges, its accuracy, its thresholds.

#include "display/sensor_record.h"

#include <cstring>

#include "display/indent.h"
#include "display/named_type.h"
#include "display/sensor_reading.h"
#include "display/words.h"
#include "zuSaHpi_mainlib.h"

namespace zusahpi::display {
namespace {

constexpr std::size_t rangeBlanks = 13;
constexpr std::size_t thresholdBlanks = 5;

constexpr Columns eventColumns{.start = 25, .wrap = 27};
constexpr Columns rangeColumns{.start = 18, .wrap = 20};
constexpr Columns thresholdColumns{.start = 26, .wrap = 28};

struct RangeReading {
    SaHpiSensorRangeFlagsT flag;
    const char *label;
    SaHpiSensorReadingT SaHpiSensorRangeT::*reading;
};

constexpr RangeReading rangeReadings[] = {
    {SAHPI_SRF_MIN, "   Minimum   ", &SaHpiSensorRangeT::Min},
    {SAHPI_SRF_MAX, "   Maximum   ", &SaHpiSensorRangeT::Max},
    {SAHPI_SRF_NORMAL_MIN, "   Normal Min", &SaHpiSensorRangeT::NormalMin},
    {SAHPI_SRF_NORMAL_MAX, "   Normal Max", &SaHpiSensorRangeT::NormalMax},
    {SAHPI_SRF_NOMINAL, "   Nominal   ", &SaHpiSensorRangeT::Nominal},
};

void printSensor(zuSaHpiHandleT out, const SaHpiSensorRecT &record, const char *indent) {
    printValue(out, "Sensor Type   ", record.Type, named_type::sensorType, indent);
    printValue(out, "Event Category", record.Category, named_type::eventCategory, indent);
    zuSaHpiPrintf(out, "%sEnable Control is %s\n", indent,
                  record.EnableCtrl != SAHPI_FALSE ? "supported" : "not supported");
    printValue(out, "Event Control ", record.EventCtrl, named_type::sensorEventCtrl, indent);
    zuSaHpiPrintf(out, "%sEvents Supported = 0x%.4hx", indent, record.Events);
    zuSaHpiEventStateDisplay(out, record.Events, record.Category, eventColumns.start,
                             eventColumns.wrap, indent);
    printValue(out, "Reading Type  ", record.DataFormat.ReadingType, named_type::sensorReadingType,
               indent);
}

void printFormat(zuSaHpiHandleT out, const SaHpiSensorDataFormatT &format, const char *indent) {
    printValue(out, "BaseUnits    ", format.BaseUnits, named_type::sensorUnits, indent);
    printValue(out, "ModifierUnits", format.ModifierUnits, named_type::sensorUnits, indent);
    printValue(out, "ModifierUse  ", format.ModifierUse, named_type::sensorModUnitUse, indent);
    zuSaHpiPrintf(out, "%sPercentage    %s\n", indent, upperYesOrNo(format.Percentage));
    zuSaHpiPrintf(out, "%sRanges        0x%.2x", indent, format.Range.Flags);
    printFlags(out, format.Range.Flags, named_type::sensorRangeFlags, rangeColumns, indent);
    for (const auto &[flag, label, reading] : rangeReadings) {
        if ((format.Range.Flags & flag) != 0) {
            zuSaHpiSensorReadingDisplay(out, label, &(format.Range.*reading), reading_mode::ownLine,
                                        indent);
        }
    }
}

void printFloatAccuracy(zuSaHpiHandleT out, const SaHpiFloat64T &factor, const char *indent) {
    double fraction = 0;
    std::memcpy(&fraction, &factor, sizeof fraction);
    zuSaHpiPrintf(out, "%sAccuracy      %-.4f%%\n", indent, 100.0 * fraction);
}

// The remainder has no leading zeros: 500 prints as 0.500, 10050 as 1.50.
void printIntegerAccuracy(zuSaHpiHandleT out, const SaHpiFloat64T &factor, const char *indent) {
    constexpr std::uint32_t unitsPerPercent = 10000;
    std::uint32_t units = 0;
    std::memcpy(&units, &factor, sizeof units);
    zuSaHpiPrintf(out, "%sAccuracy      %d.%d%%\n", indent,
                  static_cast<int>(units / unitsPerPercent),
                  static_cast<int>(units % unitsPerPercent));
}

// The names take the length of the indent as part of their columns, and go on without it.
void printThresholds(zuSaHpiHandleT out, const char *label, SaHpiSensorThdMaskT mask,
                     const char *indent) {
    const int length = static_cast<int>(std::strlen(indent));
    zuSaHpiPrintf(out, "%s%s0x%.2x", indent, label, mask);
    printFlags(out, mask, named_type::sensorThdMask,
               {.start = length + thresholdColumns.start, .wrap = length + thresholdColumns.wrap},
               "");
}

void printThresholdDefinition(zuSaHpiHandleT out, const SaHpiSensorThdDefnT &definition,
                              const char *indent) {
    if (definition.IsAccessible == SAHPI_FALSE) {
        zuSaHpiPrintf(out, "%sThreshold Definition: %s\n", indent, "No Accessible Thresholds");
        return;
    }
    zuSaHpiPrintf(out, "%sThreshold Definition: %s\n", indent,
                  definition.Nonlinear != SAHPI_FALSE ? "NonLinear" : "Normal");
    const Indent thresholds = composedIndent(indent, thresholdBlanks);
    printThresholds(out, "Readable Thresholds   ", definition.ReadThold, thresholds.text);
    printThresholds(out, "Writeable Thresholds  ", definition.WriteThold, thresholds.text);
}

} // namespace

int printSensorRecord(zuSaHpiHandleT out, const SaHpiSensorRecT &record, const char *indent,
                      std::uint32_t floatAccuracy) {
    const SaHpiSensorDataFormatT &format = record.DataFormat;
    const Indent ranges = composedIndent(indent, rangeBlanks);
    zuSaHpiPrintf(out, "\n");
    printSensor(out, record, indent);
    if (format.ReadingType != SAHPI_SENSOR_READING_TYPE_BUFFER) {
        printFormat(out, format, ranges.text);
    }
    if (floatAccuracy != 0) {
        printFloatAccuracy(out, format.AccuracyFactor, ranges.text);
    } else {
        printIntegerAccuracy(out, format.AccuracyFactor, ranges.text);
    }
    printThresholdDefinition(out, record.ThresholdDefn, indent);
    return zuSaHpiPrintf(out, "%sOem Value: %u\n", indent, record.Oem);
}

} // namespace zusahpi::display
