// Numbers to operations, and what the operations' arguments mean.

#include "tests/model/operation.h"

#include <array>
#include <cstring>

namespace store_model {
namespace {

struct Weighted {
    Kind kind;
    std::uint32_t weight;
    const char *name;
};

constexpr std::array<Weighted, 19> kinds{{{Kind::add, 400, "add"},
                                          {Kind::addForced, 40, "add with force"},
                                          {Kind::deleteOldest, 90, "delete oldest"},
                                          {Kind::deleteNewest, 90, "delete newest"},
                                          {Kind::deleteNumber, 150, "delete number"},
                                          {Kind::clear, 4, "clear"},
                                          {Kind::resetOverflow, 40, "reset overflow"},
                                          {Kind::setTime, 30, "set time"},
                                          {Kind::setState, 30, "set state"},
                                          {Kind::protect, 16, "protect"},
                                          {Kind::read, 64, "read"},
                                          {Kind::restart, 30, "restart"},
                                          {Kind::kill, 16, "kill"},
                                          {Kind::resize, 4, "resize"},
                                          {Kind::changeWhenFull, 6, "change overflow action"},
                                          {Kind::changeType, 2, "change type"},
                                          {Kind::changeOthers, 8, "change other settings"},
                                          {Kind::reinitialize, 2, "reinitialize"},
                                          {Kind::runWithoutFile, 2, "run without file"}}};

constexpr std::uint32_t sumOfWeights() {
    std::uint32_t sum = 0;
    for (const Weighted &each : kinds) {
        sum += each.weight;
    }
    return sum;
}

constexpr std::uint32_t sorts = 1024;
static_assert(sumOfWeights() == sorts);

} // namespace

Operation decode(std::uint32_t code) {
    std::uint32_t left = code % sorts;
    for (const Weighted &each : kinds) {
        if (left < each.weight) {
            return {each.kind, code / sorts};
        }
        left -= each.weight;
    }
    return {};
}

std::string nameOf(const Operation &operation) {
    for (const Weighted &each : kinds) {
        if (each.kind == operation.kind) {
            return std::string(each.name) + " " + std::to_string(operation.argument);
        }
    }
    return "?";
}

std::string nameOf(Type type) {
    constexpr std::array<const char *, 3> names{"Simple", "Circular", "Linked"};
    return names[static_cast<std::size_t>(type)];
}

std::string nameOf(WhenFull action) {
    constexpr std::array<const char *, 3> names{"Drop", "Wrap", "WriteLast"};
    return names[static_cast<std::size_t>(action)];
}

std::string nameOf(const Settings &settings) {
    return nameOf(settings.type) + " " + nameOf(settings.whenFull) + " of Size " +
           std::to_string(settings.size);
}

Settings settingsOfStart(const Operation &operation, Settings settings) {
    const std::uint32_t argument = operation.argument;
    settings.reinitialize = operation.kind == Kind::reinitialize;
    settings.fileEnabled = operation.kind != Kind::runWithoutFile;
    switch (operation.kind) {
    case Kind::resize: // by one up or down, or to any small size
        if (argument == 0) {
            settings.size += 1;
        } else if (argument == 1) {
            settings.size -= settings.size == 0 ? 0 : 1;
        } else {
            settings.size = argument % 40;
        }
        break;
    case Kind::changeWhenFull:
        settings.whenFull = static_cast<WhenFull>(argument % 3);
        break;
    case Kind::changeType:
        settings.type = static_cast<Type>(argument % 3);
        break;
    case Kind::changeOthers:
        settings.enabled = argument % 8 != 0;
        settings.overflowResetable = (argument & 8) == 0;
        settings.relativeTime = (argument & 16) != 0;
        settings.userEventMaxSize = (argument & 32) != 0 ? 90 : 120;
        break;
    default:
        break;
    }
    return settings;
}

SaHpiEventLogEntryIdT idOf(const Operation &operation, std::uint32_t size) {
    switch (operation.argument) {
    case 1023:
        return SAHPI_NO_MORE_ENTRIES;
    case 1022:
        return SAHPI_NEWEST_ENTRY;
    case 1021:
        return 0x80000000;
    default:
        return operation.argument % (size + 3);
    }
}

bool turnsOn(const Operation &operation) {
    return operation.argument % 8 != 0; // mostly: a disabled log has little to do
}

SaHpiTimeT timeOf(const Operation &operation) {
    switch (operation.argument) {
    case 1023:
        return SAHPI_TIME_UNSPECIFIED;
    case 1022:
        return -1;
    default:
        return SaHpiTimeT{operation.argument} * 7'000'000'001;
    }
}

EventLogAddRecord contentOf(std::uint32_t argument, std::uint32_t serial) {
    EventLogAddRecord record;
    std::memset(&record, static_cast<int>(serial % 251 + 1), sizeof record);
    std::memcpy(record.rpt.ResourceTag.Data, &serial, sizeof serial);
    std::memcpy(record.rdr.IdString.Data, &serial, sizeof serial);
    record.event.Source = serial;
    record.event.EventType = (argument & 4) != 0 ? SAHPI_ET_USER : SAHPI_ET_OEM;
    record.event.EventDataUnion.UserEvent.UserEventData.DataLength =
        static_cast<SaHpiUint8T>(argument >> 3);
    record.rpt.ResourceCapabilities = (argument & 1) != 0 ? SAHPI_CAPABILITY_RDR : 0;
    record.rdr.RdrType = (argument & 2) != 0 ? SAHPI_SENSOR_RDR : SAHPI_NO_RECORD;
    return record;
}

} // namespace store_model
