// The formats of the messages between the main library and its clients: a code, a name and a size
// each. The sizes that replies carry are the ones of this table.
//
// Invariant: names and sizes have a row for each code, in the same order, and end with a row of
// code `end`, which is no format.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "zuSaHpi_util.h"

namespace zusahpi::frontends {

enum class MessageFormat : std::uint32_t {
    generic, // no format: a buffer that can hold any message
    hdrOnly,
    resourceAnnounce,
    resAnnResp,
    name,
    subscribe,
    revent,
    event,
    eventGet,
    recordReq,
    rdrReq,
    eventLogEntry,
    eventLogInfo,
    domainInfo,
    drtEnt,
    rptEnt,
    alarmReq,
    alarm,
    rdr,
    sensorReq,
    sensorReading,
    sensorThold,
    sensorData,
    controlReq,
    controlState,
    wdogReq,
    watchdog,
    idrReq,
    idrInfo,
    idrArea,
    idrField,
    annReq,
    ann,
    hotSwap,
    parm,
    end,
};
static_assert(static_cast<std::uint32_t>(MessageFormat::end) == 35);

struct FormatName {
    MessageFormat code;
    const char *name; // null in the last row
};

struct FormatSize {
    MessageFormat code;
    std::int32_t size; // in bytes, header included; 0 in the last row
};

inline constexpr std::size_t formatRows = static_cast<std::size_t>(MessageFormat::end) + 1;

inline constexpr std::array<FormatSize, formatRows> formatSizes = {{
    {MessageFormat::generic, 800},
    {MessageFormat::hdrOnly, 16},
    {MessageFormat::resourceAnnounce, 592},
    {MessageFormat::resAnnResp, 32},
    {MessageFormat::name, 116},
    {MessageFormat::subscribe, 144},
    {MessageFormat::revent, 560},
    {MessageFormat::event, 328},
    {MessageFormat::eventGet, 128},
    {MessageFormat::recordReq, 20},
    {MessageFormat::rdrReq, 24},
    {MessageFormat::eventLogEntry, 344},
    {MessageFormat::eventLogInfo, 56},
    {MessageFormat::domainInfo, 376},
    {MessageFormat::drtEnt, 32},
    {MessageFormat::rptEnt, 468},
    {MessageFormat::alarmReq, 40},
    {MessageFormat::alarm, 712},
    {MessageFormat::rdr, 744},
    {MessageFormat::sensorReq, 20},
    {MessageFormat::sensorReading, 112},
    {MessageFormat::sensorThold, 344},
    {MessageFormat::sensorData, 36},
    {MessageFormat::controlReq, 24},
    {MessageFormat::controlState, 300},
    {MessageFormat::wdogReq, 20},
    {MessageFormat::watchdog, 52},
    {MessageFormat::idrReq, 36},
    {MessageFormat::idrInfo, 32},
    {MessageFormat::idrArea, 36},
    {MessageFormat::idrField, 304},
    {MessageFormat::annReq, 48},
    {MessageFormat::ann, 728},
    {MessageFormat::hotSwap, 48},
    {MessageFormat::parm, 20},
    {MessageFormat::end, 0},
}};

[[nodiscard]] constexpr std::uint32_t sizeOf(MessageFormat format) {
    return static_cast<std::uint32_t>(formatSizes[static_cast<std::size_t>(format)].size);
}

// What zuSaHpiPrintMsgSizes does, for any pair of tables: both end with a row of code `end`.
void printFormats(zuSaHpiHandleT out, const char *prefix, const FormatName *names,
                  const FormatSize *sizes, int *genericSize, int *maxSize);

} // namespace zusahpi::frontends
