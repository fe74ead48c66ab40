// Back from an event to the sixteen bytes of its record.
#include "tools/evtlogctl/sel_packing.h"

#include <algorithm>
#include <limits>

namespace zusahpi::sel {
namespace {

constexpr SaHpiTimeT nanosecondsPerSecond = 1'000'000'000;
constexpr std::int64_t secondsPerMinute = 60;
constexpr std::int64_t largestOffset =
    std::int64_t{24} * 60; // minutes; no clock is further from UTC

[[nodiscard]] constexpr bool fitsByte(std::uint32_t value) {
    return value <= 0xFF;
}

[[nodiscard]] constexpr bool fitsTwoBytes(std::uint32_t value) {
    return value <= 0xFFFF;
}

[[nodiscard]] constexpr std::uint8_t byteAt(std::uint32_t value, unsigned shift) {
    return static_cast<std::uint8_t>(value >> shift);
}

[[nodiscard]] constexpr bool isAbsolute(std::uint32_t seconds) {
    return seconds > lastRelativeTime && seconds != unspecifiedTime;
}

[[nodiscard]] std::optional<std::uint32_t> unpackTime(SaHpiTimeT timestamp,
                                                      std::int32_t utcOffset) {
    if (timestamp == SAHPI_TIME_UNSPECIFIED) {
        return unspecifiedTime;
    }
    const std::int64_t seconds = timestamp / nanosecondsPerSecond + utcOffset * secondsPerMinute;
    if (seconds < 0 || seconds > std::numeric_limits<std::uint32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(seconds);
}

void unpackDataBytes(SaHpiUint32T packed, Record &record) {
    record.bytes[offset::data2] = byteAt(packed, 8);
    record.bytes[offset::data3] = byteAt(packed, 0);
}

// What lies in the same fields of sensor and watchdog events.
[[nodiscard]] bool unpackCommon(const SaHpiEventT &event, const SaHpiRptEntryT &rpt,
                                const SaHpiRdrT &rdr, Record &record) {
    const auto utcOffset = utcOffsetOf(rpt);
    const auto time = utcOffset ? unpackTime(event.Timestamp, *utcOffset) : std::nullopt;
    if (!time || !fitsTwoBytes(rdr.RecordId) || !fitsTwoBytes(event.Source)) {
        return false;
    }
    putLittleEndian(record, offset::id, 2, rdr.RecordId);
    putLittleEndian(record, offset::time, 4, *time);
    putLittleEndian(record, offset::generator, 2, event.Source);
    record.bytes[offset::messageRevision] = rpt.ResourceInfo.SpecificVer;
    return true;
}

[[nodiscard]] std::optional<Record> unpackSensor(const SaHpiEventT &event,
                                                 const SaHpiRptEntryT &rpt, const SaHpiRdrT &rdr) {
    const SaHpiSensorEventT &sensor = event.EventDataUnion.SensorEvent;
    Record record;
    if (rdr.RdrType != SAHPI_SENSOR_RDR || !fitsByte(sensor.SensorNum) ||
        !fitsTwoBytes(sensor.Oem) || !unpackCommon(event, rpt, rdr, record)) {
        return std::nullopt;
    }
    const SaHpiUint32T packed = rdr.RdrTypeUnion.SensorRec.Oem;
    record.bytes[offset::type] = byteAt(packed, 24);
    record.bytes[offset::sensorType] = byteAt(packed, 16);
    record.bytes[offset::sensorNumber] = byteAt(sensor.SensorNum, 0);
    record.bytes[offset::eventType] = byteAt(packed, 8);
    record.bytes[offset::data1] = byteAt(packed, 0);
    unpackDataBytes(sensor.Oem, record);
    return record;
}

[[nodiscard]] std::optional<Record>
unpackWatchdog(const SaHpiEventT &event, const SaHpiRptEntryT &rpt, const SaHpiRdrT &rdr) {
    const SaHpiWatchdogEventT &watchdog = event.EventDataUnion.WatchdogEvent;
    const auto action = static_cast<std::uint32_t>(watchdog.WatchdogAction);
    Record record;
    if (rdr.RdrType != SAHPI_WATCHDOG_RDR || !fitsByte(watchdog.WatchdogNum) || action > 0x0F ||
        !unpackCommon(event, rpt, rdr, record)) {
        return std::nullopt;
    }
    const SaHpiUint32T packed = rdr.RdrTypeUnion.WatchdogRec.Oem;
    record.bytes[offset::type] = byteAt(packed, 24);
    record.bytes[offset::sensorType] = watchdogSensor;
    record.bytes[offset::sensorNumber] = byteAt(watchdog.WatchdogNum, 0);
    record.bytes[offset::eventType] =
        sensorSpecificType | ((packed & 1U << 16) != 0 ? deassertionBit : std::uint8_t{0});
    record.bytes[offset::data1] = static_cast<std::uint8_t>((packed >> 16 & 0xF0) | action);
    unpackDataBytes(packed, record);
    return record;
}

[[nodiscard]] std::optional<Record> unpackOem(const SaHpiEventT &event) {
    const SaHpiTextBufferT &data = event.EventDataUnion.OemEvent.OemEventData;
    if (data.DataType != SAHPI_TL_TYPE_BINARY || data.DataLength != recordSize) {
        return std::nullopt;
    }
    Record record;
    std::copy_n(data.Data, recordSize, record.bytes.begin());
    return record;
}

} // namespace

PackedTime packTime(std::uint32_t seconds, std::int32_t utcOffset) {
    if (seconds == unspecifiedTime) {
        return {};
    }
    const std::int32_t applied = isAbsolute(seconds) ? utcOffset : 0;
    return {.timestamp = (SaHpiTimeT{seconds} - applied * secondsPerMinute) * nanosecondsPerSecond,
            .utcOffset = static_cast<SaHpiEntryIdT>(applied)};
}

std::optional<std::int32_t> utcOffsetBetween(const Record &record, SaHpiTimeT timestamp) {
    if (kindOf(record) != Kind::timedOem || !isAbsolute(timeOf(record))) {
        return 0;
    }
    const std::int64_t seconds = std::int64_t{timeOf(record)} - timestamp / nanosecondsPerSecond;
    const std::int64_t minutes = seconds / secondsPerMinute;
    if (seconds % secondsPerMinute != 0 || minutes < -largestOffset || minutes > largestOffset) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(minutes);
}

std::optional<std::int32_t> utcOffsetOf(const SaHpiRptEntryT &rpt) {
    const auto minutes = static_cast<std::int32_t>(rpt.EntryId);
    if (minutes < -largestOffset || minutes > largestOffset) {
        return std::nullopt;
    }
    return minutes;
}

std::optional<Record> unpack(const SaHpiEventT &event, const SaHpiRptEntryT &rpt,
                             const SaHpiRdrT &rdr) {
    switch (event.EventType) {
    case SAHPI_ET_SENSOR:
        return unpackSensor(event, rpt, rdr);
    case SAHPI_ET_WATCHDOG:
        return unpackWatchdog(event, rpt, rdr);
    case SAHPI_ET_OEM:
        return unpackOem(event);
    default:
        return std::nullopt;
    }
}

} // namespace zusahpi::sel
