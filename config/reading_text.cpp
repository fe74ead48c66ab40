// A sensor reading as a piece of a syslog line. Unsigned readings are not shown, like those of
// unknown types.

#include <cstdio>

#include "zuSaHpi_util.h"

namespace zusahpi::config {
namespace {

int formatReading(const SaHpiSensorReadingT &reading, char *buffer, uint32_t size) {
    if (reading.IsSupported == SAHPI_FALSE) {
        return std::snprintf(buffer, size, "(no reading) ");
    }
    switch (reading.Type) {
    case SAHPI_SENSOR_READING_TYPE_INT64:
        return std::snprintf(buffer, size, "%lld ", reading.Value.SensorInt64);
    case SAHPI_SENSOR_READING_TYPE_FLOAT64:
        return std::snprintf(buffer, size, "%g ", reading.Value.SensorFloat64);
    case SAHPI_SENSOR_READING_TYPE_BUFFER:
        return std::snprintf(buffer, size, "(buffer) ");
    default:
        return std::snprintf(buffer, size, "(unknown reading type) ");
    }
}

} // namespace
} // namespace zusahpi::config

int displayReading(const SaHpiSensorReadingT *reading, char *buffer, uint32_t size) {
    if (size == 0) {
        return 0;
    }
    const int length = zusahpi::config::formatReading(*reading, buffer, size);
    const bool isCut = static_cast<uint32_t>(length) >= size;
    return isCut ? static_cast<int>(size - 1) : length;
}
