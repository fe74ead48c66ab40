// Events: the head that all have in common, then a body by type. A body's title has the event's
// indent, its lines have two blanks more. Domain events have no body, like those of unknown types.

#include "display/indent.h"
#include "display/named_type.h"
#include "display/sensor_event.h"
#include "display/text_buffer.h"
#include "display/time_line.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi::display {
namespace {

constexpr std::size_t bodyBlanks = 2;

void printHead(zuSaHpiHandleT out, const SaHpiEventT &event, const char *indent) {
    if (event.Source != SAHPI_UNSPECIFIED_RESOURCE_ID) {
        zuSaHpiPrintf(out, "%sSource:      %u\n", indent, event.Source);
    } else {
        zuSaHpiPrintf(out, "%sSource is unspecified\n", indent);
    }
    printValue(out, "Event Type: ", event.EventType, named_type::eventType, indent);
    if (event.Timestamp != SAHPI_TIME_UNSPECIFIED) {
        printTime(out, "Timestamp:   ", event.Timestamp, indent);
    } else {
        zuSaHpiPrintf(out, "%sTimestamp is unspecified\n", indent);
    }
    printValue(out, "Severity:   ", event.Severity, named_type::severity, indent);
}

void printTitle(zuSaHpiHandleT out, const char *type, const char *indent) {
    zuSaHpiPrintf(out, "%s%s Event:\n", indent, type);
}

int printHotSwap(zuSaHpiHandleT out, const SaHpiHotSwapEventT &event, const char *indent) {
    printValue(out, "New HotSwap State", event.HotSwapState, named_type::hsState, indent);
    return printValue(out, "Previous HotSwap State", event.PreviousHotSwapState,
                      named_type::hsState, indent);
}

int printWatchdog(zuSaHpiHandleT out, const SaHpiWatchdogEventT &event, const char *indent) {
    zuSaHpiPrintf(out, "%sWatchdog Number %u\n", indent, event.WatchdogNum);
    printValue(out, "Watchdog Action ", event.WatchdogAction, named_type::watchdogAction, indent);
    printValue(out, "PreTimer Action ", event.WatchdogPreTimerAction, named_type::watchdogPretimer,
               indent);
    return printValue(out, "Watchdog Use    ", event.WatchdogUse, named_type::watchdogUse, indent);
}

void printManufacturer(zuSaHpiHandleT out, SaHpiManufacturerIdT id, const char *indent) {
    printValue(out, "Manufacturer Id ", id, named_type::manufacturerId, indent);
}

int printText(zuSaHpiHandleT out, const SaHpiTextBufferT &text, const char *indent) {
    return zuSaHpiTextBufferDisplay(out, &text, "", text_format::typeTag, indent);
}

int printBody(zuSaHpiHandleT out, const SaHpiEventT &event, const char *indent) {
    const SaHpiEventUnionT &data = event.EventDataUnion;
    const Indent composed = composedIndent(indent, bodyBlanks);
    const char *body = composed.text;
    switch (event.EventType) {
    case SAHPI_ET_RESOURCE:
        printTitle(out, "Resource", indent);
        return printValue(out, "Event Type", data.ResourceEvent.ResourceEventType,
                          named_type::resourceEventType, body);
    case SAHPI_ET_SENSOR:
        printTitle(out, "Sensor", indent);
        return printSensorEvent(out, data.SensorEvent, body);
    case SAHPI_ET_SENSOR_ENABLE_CHANGE:
        printTitle(out, "Sensor", indent);
        return printSensorEnableChange(out, data.SensorEnableChangeEvent, body);
    case SAHPI_ET_HOTSWAP:
        printTitle(out, "HotSwap", indent);
        return printHotSwap(out, data.HotSwapEvent, body);
    case SAHPI_ET_WATCHDOG:
        printTitle(out, "Watchdog", indent);
        return printWatchdog(out, data.WatchdogEvent, body);
    case SAHPI_ET_HPI_SW:
        printTitle(out, "HPI SW", indent);
        printManufacturer(out, data.HpiSwEvent.MId, body);
        printValue(out, "Sw Event Type ", data.HpiSwEvent.Type, named_type::swEventType, body);
        return printText(out, data.HpiSwEvent.EventData, body);
    case SAHPI_ET_OEM:
        printTitle(out, "OEM", indent);
        printManufacturer(out, data.OemEvent.MId, body);
        return printText(out, data.OemEvent.OemEventData, body);
    case SAHPI_ET_USER:
        printTitle(out, "User", indent);
        return printText(out, data.UserEvent.UserEventData, body);
    default:
        return zuSaHpiPrintf(out, "%sUndefined Event Type\n", indent);
    }
}

} // namespace
} // namespace zusahpi::display

int zuSaHpiPrintEvent(zuSaHpiHandleT out, const SaHpiEventT *event, const char *indent) {
    using namespace zusahpi::display;
    printHead(out, *event, indent);
    return printBody(out, *event, indent);
}
