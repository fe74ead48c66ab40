// Sensor events and changes of a sensor's enabling. Event states are always named in the event's
// own category.

#include "display/sensor_event.h"

#include "display/named_type.h"
#include "display/sensor_reading.h"
#include "display/words.h"
#include "zuSaHpi_mainlib.h"

namespace zusahpi::display {
namespace {

// The sensor that an event of either type is about.
struct Sensor {
    SaHpiSensorNumT number;
    SaHpiSensorTypeT type;
    SaHpiEventCategoryT category;
};

void printSensor(zuSaHpiHandleT out, const Sensor &sensor, const char *indent) {
    zuSaHpiPrintf(out, "%sSensor Number %u\n", indent, sensor.number);
    printValue(out, "Sensor Type", sensor.type, named_type::sensorType, indent);
    printValue(out, "Event Category", sensor.category, named_type::eventCategory, indent);
}

constexpr Columns stateColumns{.start = 27, .wrap = 29};
constexpr Columns maskColumns{.start = 26, .wrap = 28};
constexpr Columns optionalDataColumns{.start = 18, .wrap = 20};

int printStates(zuSaHpiHandleT out, const char *label, SaHpiEventStateT states,
                SaHpiEventCategoryT category, const Columns &columns, const char *indent) {
    zuSaHpiPrintf(out, "%s%s0x%.4x", indent, label, states);
    return zuSaHpiEventStateDisplay(out, states, category, columns.start, columns.wrap, indent);
}

int printCurrentState(zuSaHpiHandleT out, SaHpiEventStateT states, SaHpiEventCategoryT category,
                      const char *indent) {
    return printStates(out, "Current Event State  ", states, category, stateColumns, indent);
}

int printReading(zuSaHpiHandleT out, const char *label, const SaHpiSensorReadingT &reading,
                 const char *indent) {
    zuSaHpiPrintf(out, "%s%s", indent, label);
    return zuSaHpiSensorReadingDisplay(out, "", &reading, reading_mode::valueOnly, indent);
}

} // namespace

int printSensorEvent(zuSaHpiHandleT out, const SaHpiSensorEventT &event, const char *indent) {
    const SaHpiEventCategoryT category = event.EventCategory;
    const SaHpiSensorOptionalDataT present = event.OptionalDataPresent;
    printSensor(out, {event.SensorNum, event.SensorType, category}, indent);
    printStates(out,
                event.Assertion != SAHPI_FALSE ? "ASSERT   Event State " : "DEASSERT Event State ",
                event.EventState, category, stateColumns, indent);
    zuSaHpiPrintf(out, "%sOptional Data 0x%.2x", indent, present);
    int result =
        printFlags(out, present, named_type::sensorOptionalData, optionalDataColumns, indent);
    if ((present & SAHPI_SOD_TRIGGER_READING) != 0) {
        result = printReading(out, "Trigger Sensor Reading ", event.TriggerReading, indent);
    }
    if ((present & SAHPI_SOD_TRIGGER_THRESHOLD) != 0) {
        result = printReading(out, "Trigger Threshold      ", event.TriggerThreshold, indent);
    }
    if ((present & SAHPI_SOD_CURRENT_STATE) != 0) {
        result = printCurrentState(out, event.CurrentState, category, indent);
    }
    if ((present & SAHPI_SOD_PREVIOUS_STATE) != 0) {
        result = printStates(out, "Previous Event State ", event.PreviousState, category,
                             stateColumns, indent);
    }
    if ((present & SAHPI_SOD_OEM) != 0) {
        result = zuSaHpiPrintf(out, "%sSensor OEM Data %u\n", indent, event.Oem);
    }
    if ((present & SAHPI_SOD_SENSOR_SPECIFIC) != 0) {
        result = zuSaHpiPrintf(out, "%sSensor Specific Data %u\n", indent, event.SensorSpecific);
    }
    return result;
}

int printSensorEnableChange(zuSaHpiHandleT out, const SaHpiSensorEnableChangeEventT &event,
                            const char *indent) {
    const SaHpiEventCategoryT category = event.EventCategory;
    printSensor(out, {event.SensorNum, event.SensorType, category}, indent);
    zuSaHpiPrintf(out, "%sSensor is %s\n", indent, enabledOrDisabled(event.SensorEnable));
    zuSaHpiPrintf(out, "%sSensor Events are %s\n", indent,
                  enabledOrDisabled(event.SensorEventEnable));
    printStates(out, "Assert Event Mask   ", event.AssertEventMask, category, maskColumns, indent);
    const int result = printStates(out, "Deassert Event Mask ", event.DeassertEventMask, category,
                                   maskColumns, indent);
    if ((event.OptionalDataPresent & SAHPI_SEOD_CURRENT_STATE) == 0) {
        return result;
    }
    return printCurrentState(out, event.CurrentState, category, indent);
}

} // namespace zusahpi::display
