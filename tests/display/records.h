// Pieces of records that the tests of several printers need, and the texts that they expect.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "hpi/SaHpi.h"
#include "tests/support/files.h"

// A text kept in a file beside the tests. Blanks at the end of a line count.
inline std::string expectedText(const std::string &name) {
    return test_support::readFile(ZUSAHPI_TEST_DATA "/display/data/" + name);
}

// Bytes behind the data are no part of the text, and are not 0.
inline SaHpiTextBufferT textBuffer(std::uint32_t type, std::string_view data,
                                   SaHpiLanguageT language = SAHPI_LANG_ENGLISH) {
    SaHpiTextBufferT buffer{};
    buffer.DataType = static_cast<SaHpiTextTypeT>(type);
    buffer.Language = language;
    buffer.DataLength = static_cast<SaHpiUint8T>(data.size());
    std::memset(buffer.Data, '!', sizeof buffer.Data);
    std::memcpy(buffer.Data, data.data(), data.size());
    return buffer;
}

// Board 3 in rack 0.
inline SaHpiEntityPathT boardPath() {
    SaHpiEntityPathT path{};
    path.Entry[0] = {.EntityType = SAHPI_ENT_SYSTEM_BOARD, .EntityLocation = 3};
    path.Entry[1] = {.EntityType = SAHPI_ENT_RACK, .EntityLocation = 0};
    path.Entry[2] = {.EntityType = SAHPI_ENT_ROOT, .EntityLocation = 0};
    return path;
}

inline SaHpiEntityPathT emptyPath() {
    SaHpiEntityPathT path{};
    path.Entry[0] = {.EntityType = SAHPI_ENT_ROOT, .EntityLocation = 0};
    return path;
}

inline SaHpiSensorReadingT intReading(SaHpiInt64T value) {
    SaHpiSensorReadingT reading{};
    reading.IsSupported = SAHPI_TRUE;
    reading.Type = SAHPI_SENSOR_READING_TYPE_INT64;
    reading.Value.SensorInt64 = value;
    return reading;
}

inline SaHpiSensorReadingT floatReading(double value) {
    SaHpiSensorReadingT reading{};
    reading.IsSupported = SAHPI_TRUE;
    reading.Type = SAHPI_SENSOR_READING_TYPE_FLOAT64;
    reading.Value.SensorFloat64 = value;
    return reading;
}

inline SaHpiSensorReadingT readingOfBytes(std::uint32_t type, int byte) {
    SaHpiSensorReadingT reading{};
    reading.IsSupported = SAHPI_TRUE;
    reading.Type = static_cast<SaHpiSensorReadingTypeT>(type);
    std::memset(reading.Value.SensorBuffer, byte, sizeof reading.Value.SensorBuffer);
    return reading;
}
