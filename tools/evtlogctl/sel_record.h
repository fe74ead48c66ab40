// One record of an IPMI System Event Log: sixteen bytes, and what they say by themselves. Fields of
// more than one byte lie least significant byte first.
//
// Every sixteen bytes are a record: nothing here fails, whatever the bytes are.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>

namespace zusahpi::sel {

inline constexpr std::size_t recordSize = 16;

struct Record {
    std::array<std::uint8_t, recordSize> bytes{};

    auto operator<=>(const Record &) const = default;
};
static_assert(sizeof(Record) == recordSize);

// Where a field begins. The fields from `generator` on are those of a system event, `manufacturer`
// and `oemData` those of an OEM record with a time.
namespace offset {
inline constexpr std::size_t id = 0;
inline constexpr std::size_t type = 2;
inline constexpr std::size_t time = 3;
inline constexpr std::size_t generator = 7;
inline constexpr std::size_t messageRevision = 9;
inline constexpr std::size_t sensorType = 10;
inline constexpr std::size_t sensorNumber = 11;
inline constexpr std::size_t eventType = 12;
inline constexpr std::size_t data1 = 13;
inline constexpr std::size_t data2 = 14;
inline constexpr std::size_t data3 = 15;
inline constexpr std::size_t manufacturer = 7;
inline constexpr std::size_t oemData = 10;
inline constexpr std::size_t untimedOemData = 3;
inline constexpr std::size_t oemText = 5; // of a record of type `textRecord`
} // namespace offset

enum class Kind : std::uint8_t {
    systemEvent, // 00h to BFh; a table names 02h alone, but others occur
    timedOem,    // C0h to DFh
    untimedOem,  // E0h to FFh
};

inline constexpr std::uint8_t firstTimedOem = 0xC0;
inline constexpr std::uint8_t firstUntimedOem = 0xE0;
inline constexpr std::uint8_t textRecord = 0xF0; // holds a piece of a text

[[nodiscard]] constexpr Kind kindOf(const Record &record) {
    const std::uint8_t type = record.bytes[offset::type];
    return type < firstTimedOem     ? Kind::systemEvent
           : type < firstUntimedOem ? Kind::timedOem
                                    : Kind::untimedOem;
}

[[nodiscard]] constexpr std::uint32_t littleEndian(const Record &record, std::size_t at,
                                                   std::size_t count) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        value |= static_cast<std::uint32_t>(record.bytes[at + i]) << (8 * i);
    }
    return value;
}

constexpr void putLittleEndian(Record &record, std::size_t at, std::size_t count,
                               std::uint32_t value) {
    for (std::size_t i = 0; i < count; ++i) {
        record.bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

[[nodiscard]] constexpr std::uint32_t recordId(const Record &record) {
    return littleEndian(record, offset::id, 2);
}

// Times: seconds since 1970 of the log's own clock; up to `lastRelativeTime` seconds since the
// start of the controller.
inline constexpr std::uint32_t lastRelativeTime = 0x20000000;
inline constexpr std::uint32_t unspecifiedTime = 0xFFFFFFFF;

[[nodiscard]] constexpr std::uint32_t timeOf(const Record &record) {
    return littleEndian(record, offset::time, 4);
}

// Byte 12 of a system event.
inline constexpr std::uint8_t deassertionBit = 0x80;
inline constexpr std::uint8_t thresholdType = 0x01;
inline constexpr std::uint8_t acpiPowerType = 0x0C;
inline constexpr std::uint8_t sensorSpecificType = 0x6F;
inline constexpr std::uint8_t firstOemType = 0x70;

[[nodiscard]] constexpr std::uint8_t eventTypeOf(const Record &record) {
    return record.bytes[offset::eventType] & static_cast<std::uint8_t>(~deassertionBit);
}

[[nodiscard]] constexpr bool isDeassertion(const Record &record) {
    return (record.bytes[offset::eventType] & deassertionBit) != 0;
}

inline constexpr std::uint8_t watchdogSensor = 0x23;

[[nodiscard]] constexpr bool isWatchdog(const Record &record) {
    return kindOf(record) == Kind::systemEvent &&
           record.bytes[offset::sensorType] == watchdogSensor &&
           eventTypeOf(record) == sensorSpecificType;
}

// Byte 13: what the event is, and what the two bytes after it hold.
[[nodiscard]] constexpr unsigned eventOffset(const Record &record) {
    return record.bytes[offset::data1] & 0x0FU;
}

enum class Holds : std::uint8_t {
    nothing,
    reading,   // of a threshold sensor; the previous state of any other
    oem,       // the maker's own data
    extension, // data that the sensor's type defines
};

[[nodiscard]] constexpr Holds data2Holds(const Record &record) {
    return static_cast<Holds>(record.bytes[offset::data1] >> 6);
}

[[nodiscard]] constexpr Holds data3Holds(const Record &record) {
    return static_cast<Holds>(record.bytes[offset::data1] >> 4 & 3);
}

// The manufacturer id of an OEM record with a time: its three bytes stand in one of two orders.
enum class OemOrder : std::uint8_t {
    wire,     // least significant first, as the controller sends them
    reversed, // most significant first, as `ipmitool sel writeraw` writes them
};

[[nodiscard]] constexpr std::uint32_t manufacturerOf(const Record &record, OemOrder order) {
    const std::uint32_t wire = littleEndian(record, offset::manufacturer, 3);
    return order == OemOrder::wire ? wire : (wire & 0xFF) << 16 | (wire & 0xFF00) | wire >> 16;
}

inline constexpr std::uint32_t lastManufacturer = 0x0FFFFF; // the ids have twenty bits

} // namespace zusahpi::sel
