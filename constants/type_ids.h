// The ids of the types that the registry knows, and how a sub-type joins an id to make a type key.
// The ids are part of the library's interface; 0 means no type.
#pragma once

#include <cstdint>

namespace zusahpi::type_id {

inline constexpr std::uint32_t ctrlMode = 1;
inline constexpr std::uint32_t domainId = 2;
inline constexpr std::uint32_t language = 3;
inline constexpr std::uint32_t hsCapabilities = 4;
inline constexpr std::uint32_t idrAreaType = 5;
inline constexpr std::uint32_t ctrlStateDigital = 6;
inline constexpr std::uint32_t hsState = 7;
inline constexpr std::uint32_t sensorReadingType = 8;
inline constexpr std::uint32_t sensorEnableOptData = 9;
inline constexpr std::uint32_t entityType = 10;
inline constexpr std::uint32_t eventType = 11;
inline constexpr std::uint32_t idrId = 12;
inline constexpr std::uint32_t idrFieldType = 13;
inline constexpr std::uint32_t txtLineNum = 14;
inline constexpr std::uint32_t sensorEventCtrl = 15;
inline constexpr std::uint32_t severity = 16;
inline constexpr std::uint32_t error = 17;
inline constexpr std::uint32_t watchdogPretimerInterrupt = 18;
inline constexpr std::uint32_t sensorModUnitUse = 19;
inline constexpr std::uint32_t ctrlType = 20;
inline constexpr std::uint32_t eventState = 21;
inline constexpr std::uint32_t evtQueueStatus = 22;
inline constexpr std::uint32_t manufacturerId = 23;
inline constexpr std::uint32_t parmAction = 24;
inline constexpr std::uint32_t sensorThdMask = 25;
inline constexpr std::uint32_t eventLogOverflowAction = 26;
inline constexpr std::uint32_t sensorRangeFlags = 27;
inline constexpr std::uint32_t ctrlOutputType = 28;
inline constexpr std::uint32_t watchdogTimerUse = 29;
inline constexpr std::uint32_t domainEventType = 30;
inline constexpr std::uint32_t sensorType = 31;
inline constexpr std::uint32_t domainCapabilities = 32;
inline constexpr std::uint32_t swEventType = 33;
inline constexpr std::uint32_t watchdogExpFlags = 34;
inline constexpr std::uint32_t entryId = 35;
inline constexpr std::uint32_t annunciatorMode = 36;
inline constexpr std::uint32_t timeout = 37;
inline constexpr std::uint32_t resetAction = 38;
inline constexpr std::uint32_t sensorOptionalData = 39;
inline constexpr std::uint32_t hsIndicatorState = 40;
inline constexpr std::uint32_t textType = 41;
inline constexpr std::uint32_t time = 42;
inline constexpr std::uint32_t eventCategory = 43;
inline constexpr std::uint32_t watchdogNum = 44;
inline constexpr std::uint32_t sensorUnits = 45;
inline constexpr std::uint32_t capabilities = 46;
inline constexpr std::uint32_t version = 47;
inline constexpr std::uint32_t sensorEventMaskAction = 48;
inline constexpr std::uint32_t statusCondType = 49;
inline constexpr std::uint32_t annunciatorType = 50;
inline constexpr std::uint32_t watchdogActionEvent = 51;
inline constexpr std::uint32_t rdrType = 52;
inline constexpr std::uint32_t resourceId = 53;
inline constexpr std::uint32_t eventLogEntryId = 54;
inline constexpr std::uint32_t sensorNum = 55;
inline constexpr std::uint32_t hsAction = 56;
inline constexpr std::uint32_t powerState = 57;
inline constexpr std::uint32_t resourceEventType = 58;
inline constexpr std::uint32_t watchdogAction = 59;

} // namespace zusahpi::type_id

namespace zusahpi {

inline constexpr unsigned subTypeShift = 24;
inline constexpr std::uint32_t typeIdMask = (1U << subTypeShift) - 1;

[[nodiscard]] constexpr std::uint32_t typeKey(std::uint32_t subType, std::uint32_t typeId) {
    return subType << subTypeShift | typeId;
}

} // namespace zusahpi
