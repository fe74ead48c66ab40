// One added event as one line of the system log, dump lines behind it where its data are binary.
//
// A record may hold anything: what cannot be named appears as a number, and what does not fit is
// cut.

#include <cstdio>

#include "config/line_text.h"
#include "config/syslog_map.h"
#include "constants/type_ids.h"
#include "display/display_form.h"
#include "display/event_state.h"
#include "display/text_buffer.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi::config {
namespace {

using display::Text;

// An event on its way, with the texts that most lines share.
struct Forwarding {
    int priority;
    const EventLogAddRecord &record;
    char resource[25] = {}; // "Resource 5 ", or empty
    Text tag = {};          // of the resource, or empty
    Text idString = {};     // of the RDR, or empty
};

// Tags and id strings of unknown types are shown as text: only what is known to be no text is not.
[[nodiscard]] bool mayBeText(const SaHpiTextBufferT &buffer) {
    return buffer.DataType != SAHPI_TL_TYPE_UNICODE && buffer.DataType != SAHPI_TL_TYPE_BINARY;
}

[[nodiscard]] Forwarding forwardingOf(const EventLogAddRecord &record, int priority) {
    Forwarding forwarding{.priority = priority, .record = record};
    const bool namesResource = zuSaHpiSyslogSuppressResource == 0;
    if (namesResource) {
        (void)std::snprintf(forwarding.resource, sizeof forwarding.resource, "Resource %u ",
                            record.event.Source);
    }
    const bool hasRpt = record.rpt.ResourceCapabilities != 0;
    if (namesResource && hasRpt && mayBeText(record.rpt.ResourceTag)) {
        forwarding.tag = display::textOf(record.rpt.ResourceTag);
    }
    if (record.rdr.RdrType != SAHPI_NO_RECORD && mayBeText(record.rdr.IdString)) {
        forwarding.idString = display::textOf(record.rdr.IdString);
    }
    return forwarding;
}

[[nodiscard]] const char *separatorBefore(const char *text) {
    return *text == '\0' ? "" : " - ";
}

template <std::size_t size = display::nameSize>
struct ValueText {
    char text[size];
};

template <std::size_t size = display::nameSize>
[[nodiscard]] ValueText<size> named(uint32_t value, uint32_t typeId, const char *prefix) {
    ValueText<size> name;
    zuSaHpiValueString(value, 0, typeId, prefix, name.text, sizeof name.text);
    return name;
}

[[nodiscard]] auto sensorTypeOf(SaHpiSensorTypeT type) {
    return named(type, type_id::sensorType, "SAHPI_");
}

[[nodiscard]] auto manufacturerOf(SaHpiManufacturerIdT id) {
    return named(id, type_id::manufacturerId, "SAHPI_MANUFACTURER_ID_");
}

[[nodiscard]] auto hotSwapStateOf(SaHpiHsStateT state) {
    return named(state, type_id::hsState, "SAHPI_HS_STATE_");
}

[[nodiscard]] Text dataTextOf(const SaHpiTextBufferT &data) {
    return display::isPrintable(data) ? display::textOf(data) : Text{};
}

void dumpUnlessText(int priority, const SaHpiTextBufferT &data) {
    if (!display::isPrintable(data)) {
        syslogDump(priority, data.Data, data.DataLength);
    }
}

[[nodiscard]] const char *resourceEventName(SaHpiResourceEventTypeT type) {
    switch (type) {
    case SAHPI_RESE_RESOURCE_FAILURE:
        return "Failure";
    case SAHPI_RESE_RESOURCE_RESTORED:
        return "Restored";
    case SAHPI_RESE_RESOURCE_ADDED:
        return "Added";
    default:
        return "Undefined Resource Event";
    }
}

void forwardResourceEvent(const Forwarding &forwarding) {
    const SaHpiEventT &event = forwarding.record.event;
    const SaHpiResourceEventT &data = event.EventDataUnion.ResourceEvent;
    zuSaHpiSyslog(forwarding.priority, "HPI: Resource %d %s%s%s\n", static_cast<int>(event.Source),
                  resourceEventName(data.ResourceEventType), separatorBefore(forwarding.tag.text),
                  forwarding.tag.text);
}

void forwardDomainEvent(const Forwarding &forwarding) {
    const SaHpiDomainEventT &data = forwarding.record.event.EventDataUnion.DomainEvent;
    zuSaHpiSyslog(forwarding.priority, "HPI: Domain Reference %s - Domain %d\n",
                  data.Type == SAHPI_DOMAIN_REF_ADDED ? "Added" : "Removed",
                  static_cast<int>(data.DomainId));
}

void appendReading(LineText &text, const char *title, const SaHpiSensorReadingT &reading) {
    append(text, "%s", title);
    const std::uint32_t room = text.size - text.used;
    text.used +=
        static_cast<std::uint32_t>(displayReading(&reading, text.buffer + text.used, room));
}

// Current state comes before previous state, unlike their bits.
void appendOptionalData(LineText &text, const SaHpiSensorEventT &data) {
    const SaHpiSensorOptionalDataT present = data.OptionalDataPresent;
    if ((present & SAHPI_SOD_TRIGGER_READING) != 0) {
        appendReading(text, "Reading:", data.TriggerReading);
    }
    if ((present & SAHPI_SOD_TRIGGER_THRESHOLD) != 0) {
        appendReading(text, "Threshold:", data.TriggerThreshold);
    }
    if ((present & SAHPI_SOD_CURRENT_STATE) != 0) {
        append(text, "Current State:0x%.4x ", static_cast<unsigned>(data.CurrentState));
    }
    if ((present & SAHPI_SOD_PREVIOUS_STATE) != 0) {
        append(text, "Previous State:0x%.4x ", static_cast<unsigned>(data.PreviousState));
    }
    if ((present & SAHPI_SOD_OEM) != 0) {
        append(text, "Oem Event Data: %d ", static_cast<int>(data.Oem));
    }
    if ((present & SAHPI_SOD_SENSOR_SPECIFIC) != 0) {
        append(text, "Sensor Specific Data: %d ", static_cast<int>(data.SensorSpecific));
    }
}

void forwardSensorEvent(const Forwarding &forwarding) {
    const SaHpiSensorEventT &data = forwarding.record.event.EventDataUnion.SensorEvent;
    const auto states = named(data.EventState, display::eventStateKey(data.EventCategory),
                              display::eventStatePrefix);
    char buffer[1000];
    LineText optional = emptyText(buffer, sizeof buffer);
    appendOptionalData(optional, data);
    zuSaHpiSyslog(
        forwarding.priority, "HPI: Sensor %u - %s%s %s (%s) %s 0x%.4x %s%s%s\n", data.SensorNum,
        forwarding.resource, forwarding.tag.text, forwarding.idString.text,
        sensorTypeOf(data.SensorType).text, data.Assertion != SAHPI_FALSE ? "Asserted" : "Cleared",
        static_cast<unsigned>(data.EventState), states.text, separatorBefore(buffer), buffer);
    // The option bit alone says that there is a reading; the threshold's bytes are never dumped.
    if ((data.OptionalDataPresent & SAHPI_SOD_TRIGGER_READING) != 0 &&
        data.TriggerReading.Type == SAHPI_SENSOR_READING_TYPE_BUFFER) {
        syslogDump(forwarding.priority, data.TriggerReading.Value.SensorBuffer,
                   SAHPI_SENSOR_BUFFER_LENGTH);
    }
}

void forwardSensorEnableChange(const Forwarding &forwarding) {
    const SaHpiSensorEnableChangeEventT &data =
        forwarding.record.event.EventDataUnion.SensorEnableChangeEvent;
    char buffer[25];
    LineText currentState = emptyText(buffer, sizeof buffer);
    if ((data.OptionalDataPresent & SAHPI_SEOD_CURRENT_STATE) != 0) {
        append(currentState, "Current State:0x%.4x ", static_cast<unsigned>(data.CurrentState));
    }
    zuSaHpiSyslog(forwarding.priority,
                  "HPI: Sensor %u Enable Change; %s%s %s (%s) %s - %s -  Assert Mask: 0x%.4x "
                  "Deassert Mask: 0x%.4x %s\n",
                  data.SensorNum, forwarding.resource, forwarding.tag.text,
                  forwarding.idString.text, sensorTypeOf(data.SensorType).text,
                  data.SensorEnable != SAHPI_FALSE ? "Sensor Enabled" : "Sensor Disabled",
                  data.SensorEventEnable != SAHPI_FALSE ? "Events Enabled" : "Events Disabled",
                  static_cast<unsigned>(data.AssertEventMask),
                  static_cast<unsigned>(data.DeassertEventMask), buffer);
}

void forwardHotSwapEvent(const Forwarding &forwarding) {
    const SaHpiHotSwapEventT &data = forwarding.record.event.EventDataUnion.HotSwapEvent;
    zuSaHpiSyslog(forwarding.priority, "HPI: Hot Swap; %s%s New State: %s - Previous State: %s\n",
                  forwarding.resource, forwarding.tag.text, hotSwapStateOf(data.HotSwapState).text,
                  hotSwapStateOf(data.PreviousHotSwapState).text);
}

void forwardWatchdogEvent(const Forwarding &forwarding) {
    const SaHpiWatchdogEventT &data = forwarding.record.event.EventDataUnion.WatchdogEvent;
    const auto action = named(data.WatchdogAction, type_id::watchdogActionEvent, "SAHPI_WAE_");
    const auto preTimer =
        named(data.WatchdogPreTimerAction, type_id::watchdogPretimerInterrupt, "SAHPI_WPI_");
    const auto use = named(data.WatchdogUse, type_id::watchdogTimerUse, "SAHPI_WTU_");
    zuSaHpiSyslog(forwarding.priority,
                  "HPI: Watchdog %u - %s%s %s - Action: %s PreTimerAction: %s Use: %s\n",
                  data.WatchdogNum, forwarding.resource, forwarding.tag.text,
                  forwarding.idString.text, action.text, preTimer.text, use.text);
}

void forwardSoftwareEvent(const Forwarding &forwarding) {
    const SaHpiHpiSwEventT &data = forwarding.record.event.EventDataUnion.HpiSwEvent;
    const auto type = named<25>(data.Type, type_id::swEventType, "SAHPI_HPIE_");
    zuSaHpiSyslog(forwarding.priority, "HPI: HPI Software Event; Type= %s - %s%s Mfg= %s - %s\n",
                  type.text, forwarding.resource, forwarding.tag.text,
                  manufacturerOf(data.MId).text, dataTextOf(data.EventData).text);
    dumpUnlessText(forwarding.priority, data.EventData);
}

void forwardOemEvent(const Forwarding &forwarding) {
    const SaHpiOemEventT &data = forwarding.record.event.EventDataUnion.OemEvent;
    zuSaHpiSyslog(forwarding.priority, "HPI: OEM Event; %s%s Mfg= %s - %s\n", forwarding.resource,
                  forwarding.tag.text, manufacturerOf(data.MId).text,
                  dataTextOf(data.OemEventData).text);
    dumpUnlessText(forwarding.priority, data.OemEventData);
}

void forwardUserEvent(const Forwarding &forwarding) {
    const SaHpiUserEventT &data = forwarding.record.event.EventDataUnion.UserEvent;
    zuSaHpiSyslog(forwarding.priority, "HPI: User Event; %s\n",
                  dataTextOf(data.UserEventData).text);
    dumpUnlessText(forwarding.priority, data.UserEventData);
}

void forwardUndefinedEvent(const Forwarding &forwarding) {
    zuSaHpiSyslog(forwarding.priority, "HPI: Undefined event\n");
    syslogDump(forwarding.priority, &forwarding.record.event, sizeof forwarding.record.event);
}

} // namespace
} // namespace zusahpi::config

void zuSaHpiEventLogSyslogAdd(const EventLogAddRecord *record) {
    using namespace zusahpi::config;
    const SaHpiEventT &event = record->event;
    const std::optional<int> priority = syslogPriority(event.EventType, event.Severity);
    if (!priority) {
        return;
    }
    const Forwarding forwarding = forwardingOf(*record, *priority);
    switch (event.EventType) {
    case SAHPI_ET_RESOURCE:
        return forwardResourceEvent(forwarding);
    case SAHPI_ET_DOMAIN:
        return forwardDomainEvent(forwarding);
    case SAHPI_ET_SENSOR:
        return forwardSensorEvent(forwarding);
    case SAHPI_ET_SENSOR_ENABLE_CHANGE:
        return forwardSensorEnableChange(forwarding);
    case SAHPI_ET_HOTSWAP:
        return forwardHotSwapEvent(forwarding);
    case SAHPI_ET_WATCHDOG:
        return forwardWatchdogEvent(forwarding);
    case SAHPI_ET_HPI_SW:
        return forwardSoftwareEvent(forwarding);
    case SAHPI_ET_OEM:
        return forwardOemEvent(forwarding);
    case SAHPI_ET_USER:
        return forwardUserEvent(forwarding);
    default:
        return forwardUndefinedEvent(forwarding);
    }
}
