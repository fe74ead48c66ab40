// The mapping of System Event Log records to HPI events.
#include "tools/evtlogctl/sel_mapping.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "tools/evtlogctl/bytes.h"
#include "tools/evtlogctl/ipmi_tables.h"
#include "tools/evtlogctl/sel_packing.h"

namespace zusahpi::sel {
namespace {

constexpr unsigned offsetWithoutState = 0x0F;

void putText(SaHpiTextBufferT &buffer, std::string_view text) {
    const std::size_t length = std::min(text.size(), sizeof buffer.Data);
    buffer.DataType = SAHPI_TL_TYPE_TEXT;
    buffer.Language = SAHPI_LANG_ENGLISH;
    buffer.DataLength = static_cast<SaHpiUint8T>(length);
    std::copy_n(text.begin(), length, buffer.Data);
}

// The two agree on the numbers of the categories that IPMI calls generic.
[[nodiscard]] SaHpiEventCategoryT categoryOf(const Record &record) {
    const std::uint8_t type = eventTypeOf(record);
    if (type >= SAHPI_EC_THRESHOLD && type <= SAHPI_EC_REDUNDANCY) {
        return type;
    }
    if (type == sensorSpecificType) {
        return SAHPI_EC_SENSOR_SPECIFIC;
    }
    return type == acpiPowerType || type >= firstOemType ? SAHPI_EC_GENERIC : SAHPI_EC_UNSPECIFIED;
}

// The state that an event is about, and whether the sensor entered it.
struct Change {
    std::optional<unsigned> state; // number of its bit
    bool asserted = true;
};

// The offsets of a threshold event come in pairs, going low and going high, one pair a state: three
// lower thresholds, which are passed downwards, then three upper ones.
[[nodiscard]] Change thresholdChange(const Record &record) {
    constexpr unsigned lowerStates = 3;
    constexpr unsigned states = 6;
    const unsigned state = eventOffset(record) / 2;
    if (state >= states) {
        return {.state = {}, .asserted = !isDeassertion(record)};
    }
    const bool goesHigh = eventOffset(record) % 2 != 0;
    const bool entersState = goesHigh == (state >= lowerStates);
    return {.state = state, .asserted = entersState != isDeassertion(record)};
}

[[nodiscard]] Change changeOf(const Record &record) {
    const SaHpiEventCategoryT category = categoryOf(record);
    if (category == SAHPI_EC_THRESHOLD) {
        return thresholdChange(record);
    }
    Change change{.state = {}, .asserted = !isDeassertion(record)};
    if (category != SAHPI_EC_UNSPECIFIED && eventOffset(record) != offsetWithoutState) {
        change.state = eventOffset(record);
    }
    return change;
}

[[nodiscard]] SaHpiSensorTypeT sensorTypeOf(const Record &record) {
    const unsigned type = record.bytes[offset::sensorType];
    const bool known =
        (type >= SAHPI_TEMPERATURE && type <= SAHPI_BATTERY) || type == SAHPI_OPERATIONAL;
    return known ? static_cast<SaHpiSensorTypeT>(type) : SAHPI_OEM_SENSOR;
}

[[nodiscard]] SaHpiEventStateT stateMask(std::optional<unsigned> state) {
    return state ? static_cast<SaHpiEventStateT>(1U << *state) : SAHPI_ES_UNSPECIFIED;
}

// Raw counts, as a type of reading that every printer shows.
void putReading(SaHpiSensorReadingT &reading, std::uint8_t count) {
    reading.IsSupported = SAHPI_TRUE;
    reading.Type = SAHPI_SENSOR_READING_TYPE_INT64;
    reading.Value.SensorInt64 = count;
}

void putOptionalData(const Record &record, SaHpiSensorEventT &sensor) {
    const bool threshold = sensor.EventCategory == SAHPI_EC_THRESHOLD;
    const unsigned previous = record.bytes[offset::data2] & 0x0FU;
    unsigned present = 0;
    if (data2Holds(record) == Holds::reading && threshold) {
        present |= SAHPI_SOD_TRIGGER_READING;
        putReading(sensor.TriggerReading, record.bytes[offset::data2]);
    } else if (data2Holds(record) == Holds::reading && previous != offsetWithoutState) {
        present |= SAHPI_SOD_PREVIOUS_STATE;
        sensor.PreviousState = stateMask(previous);
    }
    if (data3Holds(record) == Holds::reading && threshold) {
        present |= SAHPI_SOD_TRIGGER_THRESHOLD;
        putReading(sensor.TriggerThreshold, record.bytes[offset::data3]);
    }
    if (data2Holds(record) == Holds::oem || data3Holds(record) == Holds::oem) {
        present |= SAHPI_SOD_OEM;
    }
    if (data2Holds(record) == Holds::extension || data3Holds(record) == Holds::extension) {
        present |= SAHPI_SOD_SENSOR_SPECIFIC;
        sensor.SensorSpecific = packDataBytes(record);
    }
    sensor.Oem = packDataBytes(record);
    sensor.OptionalDataPresent = static_cast<SaHpiSensorOptionalDataT>(present);
}

[[nodiscard]] std::string generatorName(std::uint32_t generator) {
    switch (generator) {
    case 0x01:
        return "BIOS";
    case 0x20:
        return "BMC";
    case 0x33:
        return "SMI handler";
    case 0x41:
        return "System software";
    default:
        return fmt::format("0x{:02X}", generator);
    }
}

void putResource(const Record &record, SaHpiEntryIdT utcOffset, SaHpiCapabilitiesT instrument,
                 SaHpiRptEntryT &rpt) {
    const std::uint32_t generator = littleEndian(record, offset::generator, 2);
    rpt.EntryId = utcOffset;
    rpt.ResourceId = generator;
    rpt.ResourceInfo.SpecificVer = record.bytes[offset::messageRevision];
    rpt.ResourceEntity.Entry[0].EntityType = SAHPI_ENT_ROOT;
    rpt.ResourceCapabilities = SAHPI_CAPABILITY_RESOURCE | instrument;
    rpt.ResourceSeverity = SAHPI_INFORMATIONAL;
}

void putInstrument(const Record &record, SaHpiRdrTypeT type, SaHpiRdrT &rdr) {
    rdr.RecordId = recordId(record);
    rdr.RdrType = type;
    rdr.Entity.Entry[0].EntityType = SAHPI_ENT_ROOT;
}

// An OEM record does not say where it comes from.
void nameSource(const Record &record, EventLogAddRecord &out) {
    if (kindOf(record) == Kind::systemEvent) {
        putText(out.rpt.ResourceTag, generatorName(littleEndian(record, offset::generator, 2)));
        putText(out.rdr.IdString,
                fmt::format("{} 0x{:02X}", sensorTypeName(record.bytes[offset::sensorType]),
                            record.bytes[offset::sensorNumber]));
    }
}

void mapSensor(const Record &record, const Change &change, EventLogAddRecord &out) {
    SaHpiSensorEventT &sensor = out.event.EventDataUnion.SensorEvent;
    out.event.EventType = SAHPI_ET_SENSOR;
    sensor.SensorNum = record.bytes[offset::sensorNumber];
    sensor.SensorType = sensorTypeOf(record);
    sensor.EventCategory = categoryOf(record);
    sensor.Assertion = change.asserted ? SAHPI_TRUE : SAHPI_FALSE;
    sensor.EventState = stateMask(change.state);
    putOptionalData(record, sensor);

    putInstrument(record, SAHPI_SENSOR_RDR, out.rdr);
    SaHpiSensorRecT &rec = out.rdr.RdrTypeUnion.SensorRec;
    rec.Num = sensor.SensorNum;
    rec.Type = sensor.SensorType;
    rec.Category = sensor.EventCategory;
    rec.EventCtrl = SAHPI_SEC_READ_ONLY;
    rec.Events = sensor.EventState;
    rec.Oem = packSensorRdr(record);
}

void mapWatchdog(const Record &record, EventLogAddRecord &out) {
    SaHpiWatchdogEventT &watchdog = out.event.EventDataUnion.WatchdogEvent;
    const unsigned data2 = record.bytes[offset::data2];
    const bool told = data2Holds(record) == Holds::extension;
    out.event.EventType = SAHPI_ET_WATCHDOG;
    watchdog.WatchdogNum = record.bytes[offset::sensorNumber];
    // The numbers of actions, interrupts and uses are the same on both sides; reserved ones stay.
    watchdog.WatchdogAction = static_cast<SaHpiWatchdogActionEventT>(eventOffset(record));
    watchdog.WatchdogPreTimerAction =
        told ? static_cast<SaHpiWatchdogPretimerInterruptT>(data2 >> 4) : SAHPI_WPI_NONE;
    watchdog.WatchdogUse =
        told ? static_cast<SaHpiWatchdogTimerUseT>(data2 & 0x0F) : SAHPI_WTU_UNSPECIFIED;

    putInstrument(record, SAHPI_WATCHDOG_RDR, out.rdr);
    out.rdr.RdrTypeUnion.WatchdogRec.WatchdogNum = watchdog.WatchdogNum;
    out.rdr.RdrTypeUnion.WatchdogRec.Oem = packWatchdogRdr(record);
}

void mapSystemEvent(const Record &record, const Mapping &mapping, EventLogAddRecord &out) {
    const Change change = changeOf(record);
    const PackedTime time = packTime(timeOf(record), mapping.utcOffset);
    out.event.Source = littleEndian(record, offset::generator, 2);
    out.event.Timestamp = time.timestamp;
    out.event.Severity = severityOf({.category = categoryOf(record),
                                     .sensorType = record.bytes[offset::sensorType],
                                     .state = change.state,
                                     .asserted = change.asserted},
                                    *mapping.severities);
    if (isWatchdog(record)) {
        mapWatchdog(record, out);
        putResource(record, time.utcOffset, SAHPI_CAPABILITY_WATCHDOG, out.rpt);
    } else {
        mapSensor(record, change, out);
        putResource(record, time.utcOffset, SAHPI_CAPABILITY_SENSOR, out.rpt);
    }
}

void mapOem(const Record &record, const Mapping &mapping, EventLogAddRecord &out) {
    const bool timed = kindOf(record) == Kind::timedOem;
    SaHpiOemEventT &oem = out.event.EventDataUnion.OemEvent;
    out.event.Source = SAHPI_UNSPECIFIED_RESOURCE_ID;
    out.event.EventType = SAHPI_ET_OEM;
    out.event.Timestamp =
        packTime(timed ? timeOf(record) : unspecifiedTime, mapping.utcOffset).timestamp;
    out.event.Severity =
        severityOf({.category = oemCategory, .sensorType = 0, .state = {}, .asserted = true},
                   *mapping.severities);
    oem.MId = timed ? manufacturerOf(record, mapping.oemOrder) : SAHPI_MANUFACTURER_ID_UNSPECIFIED;
    oem.OemEventData.DataType = SAHPI_TL_TYPE_BINARY;
    oem.OemEventData.DataLength = recordSize;
    std::copy(record.bytes.begin(), record.bytes.end(), oem.OemEventData.Data);
}

// How the record must have been mapped if the entry is its image. The order of the manufacturer id
// shows in the id, the offset from UTC in the time.
[[nodiscard]] std::optional<Mapping> mappingOf(const EventLogEntryRecord &entry,
                                               const Record &record) {
    const SaHpiEventT &event = entry.entry.Event;
    const bool oem = event.EventType == SAHPI_ET_OEM;
    const auto utcOffset = oem ? utcOffsetBetween(record, event.Timestamp) : utcOffsetOf(entry.rpt);
    if (!utcOffset) {
        return std::nullopt;
    }
    const bool wire =
        !oem || event.EventDataUnion.OemEvent.MId == manufacturerOf(record, OemOrder::wire);
    static const SeverityTable noSeverities;
    return Mapping{.utcOffset = *utcOffset,
                   .oemOrder = wire ? OemOrder::wire : OemOrder::reversed,
                   .severities = &noSeverities};
}

// All but the names of the event's source.
[[nodiscard]] EventLogAddRecord mapNameless(const Record &record, const Mapping &mapping) {
    EventLogAddRecord out;
    std::memset(&out, 0, sizeof out); // padding too: what reaches the disk is always the same
    if (kindOf(record) == Kind::systemEvent) {
        mapSystemEvent(record, mapping, out);
    } else {
        mapOem(record, mapping, out);
    }
    return out;
}

} // namespace

EventLogAddRecord toEvent(const Record &record, const Mapping &mapping) {
    EventLogAddRecord out = mapNameless(record, mapping);
    nameSource(record, out);
    return out;
}

std::optional<Record> importedRecord(const EventLogEntryRecord &entry) {
    const auto record = unpack(entry.entry.Event, entry.rpt, entry.rdr);
    const auto mapping = record ? mappingOf(entry, *record) : std::nullopt;
    if (!mapping) {
        return std::nullopt;
    }
    EventLogAddRecord again = mapNameless(*record, *mapping);
    again.event.Severity = entry.entry.Event.Severity;
    again.rpt.ResourceTag = entry.rpt.ResourceTag;
    again.rdr.IdString = entry.rdr.IdString;
    const bool same = sameBytes(again.event, entry.entry.Event) &&
                      sameBytes(again.rpt, entry.rpt) && sameBytes(again.rdr, entry.rdr);
    return same ? record : std::nullopt;
}

} // namespace zusahpi::sel
