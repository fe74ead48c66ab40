// Sensor readings. Unsigned readings are not shown as numbers, like those of unknown types.

#include "display/sensor_reading.h"

#include "display/display_form.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi::display {
namespace {

constexpr std::uint32_t noType = 0; // asks the registry for the number's text

} // namespace
} // namespace zusahpi::display

int zuSaHpiSensorReadingDisplay(zuSaHpiHandleT out, const char *label,
                                const SaHpiSensorReadingT *reading, int mode, const char *indent) {
    using namespace zusahpi::display;
    const bool labelled = mode == reading_mode::ownLine;
    const char *lineEnd = mode == reading_mode::openLine ? "" : "\n";
    if (labelled) {
        zuSaHpiPrintf(out, "%s%s%s", indent, label, *label != '\0' ? " " : "");
    }
    if (reading->IsSupported == SAHPI_FALSE) {
        return zuSaHpiPrintf(out, "(Not set)%s", lineEnd);
    }
    switch (reading->Type) {
    case SAHPI_SENSOR_READING_TYPE_INT64:
        return zuSaHpiPrintf(out, "%s%s%s", labelled ? "(int)  " : "",
                             registryText(reading->Value.SensorInt64, noType).text, lineEnd);
    case SAHPI_SENSOR_READING_TYPE_FLOAT64:
        return zuSaHpiPrintf(out, "%s%g%s", labelled ? "(real) " : "", reading->Value.SensorFloat64,
                             lineEnd);
    case SAHPI_SENSOR_READING_TYPE_BUFFER:
        if (labelled) {
            zuSaHpiPrintf(out, "(buffer)\n");
        }
        // The dump ends its own lines, in every mode.
        return zuSaHpiDprint(out, reading->Value.SensorBuffer, sizeof reading->Value.SensorBuffer,
                             indent);
    default:
        return zuSaHpiPrintf(out, " (Unknown reading type)%s", lineEnd);
    }
}
