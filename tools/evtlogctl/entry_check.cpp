// The values of one entry, field by field. What values a type has is the registry's to say.
#include "tools/evtlogctl/entry_check.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "constants/type_ids.h"
#include "tools/evtlogctl/sel_mapping.h"

namespace zusahpi::evtlogctl {
namespace {

struct TypeValues {
    std::vector<std::uint32_t> sorted;
    std::uint32_t bits = 0; // all that occur
};

using ValuesByType = std::array<TypeValues, ZUSAHPI_TYPES + 1>;

[[nodiscard]] ValuesByType readRegistry() {
    ValuesByType values;
    for (const zuSaHpiConstantT *constant = zuSaHpiConstants; constant->name != nullptr;
         ++constant) {
        TypeValues &type = values[constant->type & typeIdMask];
        type.sorted.push_back(static_cast<std::uint32_t>(constant->value));
        type.bits |= static_cast<std::uint32_t>(constant->value);
    }
    for (TypeValues &type : values) {
        std::sort(type.sorted.begin(), type.sorted.end());
    }
    return values;
}

[[nodiscard]] const TypeValues &valuesOf(std::uint32_t typeId) {
    static const ValuesByType values = readRegistry();
    return values[typeId];
}

// One record under check. Fields are references into it, so that each knows its offset.
struct Check {
    const EventLogEntryRecord &record;
    const Place &place;
    Findings &findings;
};

template <typename Field>
void note(const Check &check, const Field &field, std::string_view name, std::string_view trouble) {
    const auto *const begin = reinterpret_cast<const std::byte *>(&check.record);
    const auto *const at = reinterpret_cast<const std::byte *>(&field);
    Place place = check.place;
    place.offset += at - begin;
    report(check.findings, Weight::notice, place, name, fmt::format("{} {}", name, trouble));
}

template <typename Field>
void enumeration(const Check &check, const Field &field, std::uint32_t typeId,
                 std::string_view name) {
    const auto value = static_cast<std::uint32_t>(field);
    if (!isConstant(value, typeId)) {
        note(check, field, name, fmt::format("is {}, which stands for nothing", value));
    }
}

template <typename Field>
void mask(const Check &check, const Field &field, std::uint32_t typeId, std::string_view name) {
    const std::uint32_t unknown = field & ~valuesOf(typeId).bits;
    if (unknown != 0) {
        note(check, field, name, fmt::format("has bits 0x{:X}, which stand for nothing", unknown));
    }
}

void boolean(const Check &check, const SaHpiBoolT &field, std::string_view name) {
    if (field > 1) {
        note(check, field, name, fmt::format("is {} instead of 0 or 1", field));
    }
}

void text(const Check &check, const SaHpiTextBufferT &buffer, const std::string &name) {
    enumeration(check, buffer.DataType, type_id::textType, name + ": text type");
    const bool unicode = buffer.DataType == SAHPI_TL_TYPE_UNICODE;
    if (unicode || buffer.DataType == SAHPI_TL_TYPE_TEXT) {
        enumeration(check, buffer.Language, type_id::language, name + ": language");
    }
    if (unicode && buffer.DataLength % 2 != 0) {
        note(check, buffer.DataLength, name + ": length",
             fmt::format("is {}, but Unicode text has two bytes a character", buffer.DataLength));
    }
}

// Three ranges of types belong to the maker of a chassis, board set or system.
[[nodiscard]] bool isMakersEntity(std::uint32_t type) {
    constexpr std::uint32_t last = 0xFF;
    return type >= SAHPI_ENT_CHASSIS_SPECIFIC && type <= last;
}

void entityPath(const Check &check, const SaHpiEntityPathT &path, const std::string &name) {
    for (const SaHpiEntityT &element : path.Entry) {
        if (!isMakersEntity(element.EntityType)) {
            enumeration(check, element.EntityType, type_id::entityType, name + ": entity type");
        }
        if (element.EntityType == SAHPI_ENT_ROOT) {
            break;
        }
    }
}

void reading(const Check &check, const SaHpiSensorReadingT &value, const std::string &name) {
    boolean(check, value.IsSupported, name + ": whether it is supported");
    if (value.IsSupported != SAHPI_FALSE) {
        enumeration(check, value.Type, type_id::sensorReadingType, name + ": reading type");
    }
}

// ---- The event ----------------------------------------------------------------------------------

void sensorEvent(const Check &check, const SaHpiSensorEventT &event) {
    enumeration(check, event.SensorType, type_id::sensorType, "sensor event: sensor type");
    enumeration(check, event.EventCategory, type_id::eventCategory, "sensor event: event category");
    boolean(check, event.Assertion, "sensor event: assertion");
    mask(check, event.OptionalDataPresent, type_id::sensorOptionalData,
         "sensor event: optional data");
    if ((event.OptionalDataPresent & SAHPI_SOD_TRIGGER_READING) != 0) {
        reading(check, event.TriggerReading, "sensor event: trigger reading");
    }
    if ((event.OptionalDataPresent & SAHPI_SOD_TRIGGER_THRESHOLD) != 0) {
        reading(check, event.TriggerThreshold, "sensor event: trigger threshold");
    }
}

void enableChange(const Check &check, const SaHpiSensorEnableChangeEventT &event) {
    enumeration(check, event.SensorType, type_id::sensorType, "enable change: sensor type");
    enumeration(check, event.EventCategory, type_id::eventCategory,
                "enable change: event category");
    boolean(check, event.SensorEnable, "enable change: sensor enabled");
    boolean(check, event.SensorEventEnable, "enable change: events enabled");
    mask(check, event.OptionalDataPresent, type_id::sensorEnableOptData,
         "enable change: optional data");
}

void hotSwap(const Check &check, const SaHpiHotSwapEventT &event) {
    enumeration(check, event.HotSwapState, type_id::hsState, "hot swap: state");
    enumeration(check, event.PreviousHotSwapState, type_id::hsState, "hot swap: previous state");
}

// A System Event Log may hold reserved actions, and the import keeps them.
void watchdog(const Check &check, const SaHpiWatchdogEventT &event) {
    if (!sel::importedRecord(check.record)) {
        enumeration(check, event.WatchdogAction, type_id::watchdogActionEvent, "watchdog: action");
    }
    enumeration(check, event.WatchdogPreTimerAction, type_id::watchdogPretimerInterrupt,
                "watchdog: pre-timer interrupt");
    enumeration(check, event.WatchdogUse, type_id::watchdogTimerUse, "watchdog: use");
}

void eventData(const Check &check, const SaHpiEventT &event) {
    const SaHpiEventUnionT &data = event.EventDataUnion;
    switch (event.EventType) {
    case SAHPI_ET_RESOURCE:
        return enumeration(check, data.ResourceEvent.ResourceEventType, type_id::resourceEventType,
                           "resource event: type");
    case SAHPI_ET_DOMAIN:
        return enumeration(check, data.DomainEvent.Type, type_id::domainEventType,
                           "domain event: type");
    case SAHPI_ET_SENSOR:
        return sensorEvent(check, data.SensorEvent);
    case SAHPI_ET_SENSOR_ENABLE_CHANGE:
        return enableChange(check, data.SensorEnableChangeEvent);
    case SAHPI_ET_HOTSWAP:
        return hotSwap(check, data.HotSwapEvent);
    case SAHPI_ET_WATCHDOG:
        return watchdog(check, data.WatchdogEvent);
    case SAHPI_ET_HPI_SW:
        enumeration(check, data.HpiSwEvent.Type, type_id::swEventType, "software event: type");
        return text(check, data.HpiSwEvent.EventData, "software event");
    case SAHPI_ET_OEM:
        return text(check, data.OemEvent.OemEventData, "OEM event");
    case SAHPI_ET_USER:
        return text(check, data.UserEvent.UserEventData, "user event");
    }
    // An unknown type was reported by itself.
}

// ---- The RPT entry and the RDR ------------------------------------------------------------------

void resource(const Check &check, const SaHpiRptEntryT &rpt) {
    if (rpt.ResourceCapabilities == 0) {
        return;
    }
    entityPath(check, rpt.ResourceEntity, "RPT entry");
    mask(check, rpt.ResourceCapabilities, type_id::capabilities, "RPT entry: capabilities");
    mask(check, rpt.HotSwapCapabilities, type_id::hsCapabilities,
         "RPT entry: hot swap capabilities");
    enumeration(check, rpt.ResourceSeverity, type_id::severity, "RPT entry: severity");
    boolean(check, rpt.ResourceFailed, "RPT entry: failed");
    text(check, rpt.ResourceTag, "RPT entry: tag");
}

void controlState(const Check &check, const SaHpiCtrlRecT &control) {
    switch (control.Type) {
    case SAHPI_CTRL_TYPE_DIGITAL:
        return enumeration(check, control.TypeUnion.Digital.Default, type_id::ctrlStateDigital,
                           "control RDR: default state");
    case SAHPI_CTRL_TYPE_STREAM: {
        const SaHpiCtrlStateStreamT &stream = control.TypeUnion.Stream.Default;
        boolean(check, stream.Repeat, "control RDR: repeat");
        if (stream.StreamLength > SAHPI_CTRL_MAX_STREAM_LENGTH) {
            note(check, stream.StreamLength, "control RDR: stream length",
                 fmt::format("is {} instead of {} at most", stream.StreamLength,
                             SAHPI_CTRL_MAX_STREAM_LENGTH));
        }
        return;
    }
    case SAHPI_CTRL_TYPE_TEXT:
        enumeration(check, control.TypeUnion.Text.Language, type_id::language,
                    "control RDR: language");
        enumeration(check, control.TypeUnion.Text.DataType, type_id::textType,
                    "control RDR: text type");
        return text(check, control.TypeUnion.Text.Default.Text, "control RDR: default text");
    default: // the others have no values that could be out of range
        return;
    }
}

void control(const Check &check, const SaHpiCtrlRecT &record) {
    enumeration(check, record.OutputType, type_id::ctrlOutputType, "control RDR: output type");
    enumeration(check, record.Type, type_id::ctrlType, "control RDR: type");
    controlState(check, record);
    enumeration(check, record.DefaultMode.Mode, type_id::ctrlMode, "control RDR: mode");
    boolean(check, record.DefaultMode.ReadOnly, "control RDR: read only");
    boolean(check, record.WriteOnly, "control RDR: write only");
}

void range(const Check &check, const SaHpiSensorRangeT &limits) {
    mask(check, limits.Flags, type_id::sensorRangeFlags, "sensor RDR: range flags");
    const auto limit = [&](unsigned flag, const SaHpiSensorReadingT &value, const char *name) {
        if ((limits.Flags & flag) != 0) {
            reading(check, value, name);
        }
    };
    limit(SAHPI_SRF_MAX, limits.Max, "sensor RDR: maximum");
    limit(SAHPI_SRF_MIN, limits.Min, "sensor RDR: minimum");
    limit(SAHPI_SRF_NOMINAL, limits.Nominal, "sensor RDR: nominal reading");
    limit(SAHPI_SRF_NORMAL_MAX, limits.NormalMax, "sensor RDR: normal maximum");
    limit(SAHPI_SRF_NORMAL_MIN, limits.NormalMin, "sensor RDR: normal minimum");
}

void sensor(const Check &check, const SaHpiSensorRecT &record) {
    enumeration(check, record.Type, type_id::sensorType, "sensor RDR: type");
    enumeration(check, record.Category, type_id::eventCategory, "sensor RDR: event category");
    boolean(check, record.EnableCtrl, "sensor RDR: enable control");
    enumeration(check, record.EventCtrl, type_id::sensorEventCtrl, "sensor RDR: event control");
    const SaHpiSensorDataFormatT &format = record.DataFormat;
    boolean(check, format.IsSupported, "sensor RDR: readings supported");
    if (format.IsSupported != SAHPI_FALSE) {
        enumeration(check, format.ReadingType, type_id::sensorReadingType,
                    "sensor RDR: reading type");
        enumeration(check, format.BaseUnits, type_id::sensorUnits, "sensor RDR: base units");
        enumeration(check, format.ModifierUnits, type_id::sensorUnits,
                    "sensor RDR: modifier units");
        enumeration(check, format.ModifierUse, type_id::sensorModUnitUse,
                    "sensor RDR: modifier use");
        boolean(check, format.Percentage, "sensor RDR: percentage");
        range(check, format.Range);
    }
    boolean(check, record.ThresholdDefn.IsAccessible, "sensor RDR: thresholds accessible");
    if (record.ThresholdDefn.IsAccessible != SAHPI_FALSE) {
        boolean(check, record.ThresholdDefn.Nonlinear, "sensor RDR: nonlinear");
    }
}

void instrument(const Check &check, const SaHpiRdrT &rdr) {
    if (rdr.RdrType == SAHPI_NO_RECORD) {
        return;
    }
    enumeration(check, rdr.RdrType, type_id::rdrType, "RDR: type");
    entityPath(check, rdr.Entity, "RDR");
    boolean(check, rdr.IsFru, "RDR: whether it is a FRU");
    text(check, rdr.IdString, "RDR: id string");
    switch (rdr.RdrType) {
    case SAHPI_CTRL_RDR:
        return control(check, rdr.RdrTypeUnion.CtrlRec);
    case SAHPI_SENSOR_RDR:
        return sensor(check, rdr.RdrTypeUnion.SensorRec);
    case SAHPI_INVENTORY_RDR:
        return boolean(check, rdr.RdrTypeUnion.InventoryRec.Persistent,
                       "inventory RDR: persistent");
    case SAHPI_ANNUNCIATOR_RDR:
        enumeration(check, rdr.RdrTypeUnion.AnnunciatorRec.AnnunciatorType,
                    type_id::annunciatorType, "annunciator RDR: type");
        return boolean(check, rdr.RdrTypeUnion.AnnunciatorRec.ModeReadOnly,
                       "annunciator RDR: mode read only");
    default: // a watchdog's has no values that could be out of range
        return;
    }
}

} // namespace

bool isConstant(std::uint32_t value, std::uint32_t typeId) {
    const std::vector<std::uint32_t> &values = valuesOf(typeId).sorted;
    return std::binary_search(values.begin(), values.end(), value);
}

void checkValues(const EventLogEntryRecord &record, const Place &place, Findings &findings) {
    const Check check{record, place, findings};
    const SaHpiEventT &event = record.entry.Event;
    enumeration(check, event.EventType, type_id::eventType, "event type");
    enumeration(check, event.Severity, type_id::severity, "severity");
    eventData(check, event);
    resource(check, record.rpt);
    instrument(check, record.rdr);
}

} // namespace zusahpi::evtlogctl
