// The exported map and the look-up in it.

#include "config/syslog_map.h"

#include <array>

#include <syslog.h>

using zusahpi::config::everyEventType;

SyslogMapEntry zuSaHpiSyslogMapDefault = {
    .eventType = everyEventType,
    .level = {LOG_CRIT, LOG_ERR, LOG_WARNING, LOG_NOTICE, LOG_NOTICE, LOG_DEBUG},
    .next = nullptr,
};

SyslogMapEntry *zuSaHpiSyslogMapHead = &zuSaHpiSyslogMapDefault;

uint32_t zuSaHpiSyslogSuppressResource = 0;

namespace zusahpi::config {
namespace {

// What a level of the map is to the system log.
constexpr std::array<int, syslogLevels> priorities = {LOG_EMERG,   LOG_ALERT,  LOG_CRIT, LOG_ERR,
                                                      LOG_WARNING, LOG_NOTICE, LOG_INFO, LOG_DEBUG};

} // namespace

std::uint32_t slotOf(SaHpiSeverityT severity) {
    const auto slot = static_cast<std::uint32_t>(severity);
    return slot < otherSeveritySlot ? slot : otherSeveritySlot;
}

const SyslogMapEntry *findMapEntry(std::uint32_t eventType) {
    const SyslogMapEntry *entry = zuSaHpiSyslogMapHead;
    while (entry != nullptr && entry->eventType != eventType) {
        entry = entry->next;
    }
    return entry;
}

std::optional<int> syslogPriority(SaHpiEventTypeT eventType, SaHpiSeverityT severity) {
    const SyslogMapEntry *entry = findMapEntry(static_cast<std::uint32_t>(eventType));
    if (entry == nullptr) {
        entry = &zuSaHpiSyslogMapDefault;
    }
    const auto level = static_cast<std::uint32_t>(entry->level[slotOf(severity)]);
    if (level >= priorities.size()) {
        return std::nullopt;
    }
    return priorities[level];
}

} // namespace zusahpi::config
