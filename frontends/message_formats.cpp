// The names of the message formats, and the printed table.

#include "frontends/message_formats.h"

#include <algorithm>

#include "zuSaHpi_mainlib.h"

namespace zusahpi::frontends {
namespace {

constexpr std::array<FormatName, formatRows> formatNames = {{
    {MessageFormat::generic, "Generic"},
    {MessageFormat::hdrOnly, "HdrOnly"},
    {MessageFormat::resourceAnnounce, "ResourceAnnounce"},
    {MessageFormat::resAnnResp, "ResAnnResp"},
    {MessageFormat::name, "Name"},
    {MessageFormat::subscribe, "Subscribe"},
    {MessageFormat::revent, "Revent"},
    {MessageFormat::event, "Event"},
    {MessageFormat::eventGet, "EventGet"},
    {MessageFormat::recordReq, "RecordReq"},
    {MessageFormat::rdrReq, "RdrReq"},
    {MessageFormat::eventLogEntry, "EventLogEntry"},
    {MessageFormat::eventLogInfo, "EventLogInfo"},
    {MessageFormat::domainInfo, "DomainInfo"},
    {MessageFormat::drtEnt, "DrtEnt"},
    {MessageFormat::rptEnt, "RptEnt"},
    {MessageFormat::alarmReq, "AlarmReq"},
    {MessageFormat::alarm, "Alarm"},
    {MessageFormat::rdr, "Rdr"},
    {MessageFormat::sensorReq, "SensorReq"},
    {MessageFormat::sensorReading, "SensorReading"},
    {MessageFormat::sensorThold, "SensorThold"},
    {MessageFormat::sensorData, "SensorData"},
    {MessageFormat::controlReq, "ControlReq"},
    {MessageFormat::controlState, "ControlState"},
    {MessageFormat::wdogReq, "WdogReq"},
    {MessageFormat::watchdog, "Watchdog"},
    {MessageFormat::idrReq, "IdrReq"},
    {MessageFormat::idrInfo, "IdrInfo"},
    {MessageFormat::idrArea, "IdrArea"},
    {MessageFormat::idrField, "IdrField"},
    {MessageFormat::annReq, "AnnReq"},
    {MessageFormat::ann, "Ann"},
    {MessageFormat::hotSwap, "HotSwap"},
    {MessageFormat::parm, "Parm"},
    {MessageFormat::end, nullptr},
}};

[[nodiscard]] constexpr bool rowsAreInOrder() {
    for (std::size_t row = 0; row < formatRows; ++row) {
        const auto code = static_cast<MessageFormat>(row);
        if (formatNames[row].code != code || formatSizes[row].code != code) {
            return false;
        }
    }
    return true;
}
static_assert(rowsAreInOrder());

} // namespace

void printFormats(zuSaHpiHandleT out, const char *prefix, const FormatName *names,
                  const FormatSize *sizes, int *genericSize, int *maxSize) {
    int largest = 0;
    for (; names->code != MessageFormat::end; ++names, ++sizes) {
        zuSaHpiPrintf(out, "%s%s: %d\n", prefix, names->name, sizes->size);
        if (names->code != MessageFormat::generic) {
            largest = std::max(largest, sizes->size);
        } else if (genericSize != nullptr) {
            *genericSize = sizes->size;
        }
    }
    if (maxSize != nullptr) {
        *maxSize = largest;
    }
}

} // namespace zusahpi::frontends

void zuSaHpiPrintMsgSizes(zuSaHpiHandleT out, const char *prefix, int *genericSize, int *maxSize) {
    using namespace zusahpi::frontends;
    printFormats(out, prefix, formatNames.data(), formatSizes.data(), genericSize, maxSize);
}
