// How the syslog map comes from the configuration.
//
// What is said of all event types is applied first, wherever it stands, so that it is the ground on
// which the entry of each type starts. Within a type the same holds for all severities. Whatever is
// said twice is an error, but for one severity of a type: the later one wins.
//
// Invariant: every level stored is one of the system log's or "do not forward", and every severity
// stored under has a slot. Anything else is refused here, so that no entry can lead outside an
// array.

#include "config/syslog_map_conf.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "config/config_node.h"
#include "config/syslog_map.h"

namespace zusahpi::config {
namespace {

[[noreturn]] void failMisconfigured(const ConfigNode &severity) {
    zuSaHpiPrintf(diagnostics(), "Misconfigured Syslog map, line number %d\n",
                  static_cast<int>(severity.line));
    fail();
}

[[nodiscard]] bool hasSlot(std::uint32_t severity) {
    return severity < otherSeveritySlot || severity == SAHPI_DEBUG;
}

// The level that stands under a severity, as its only subordinate.
[[nodiscard]] std::int32_t levelUnder(const ConfigNode &severity) {
    const ConfigNode *level = severity.firstChild;
    if (level == nullptr || level->code != ZUSAHPI_CONF_SYSLOG_LEVEL ||
        level->nextSibling != nullptr) {
        failMisconfigured(severity);
    }
    if (level->intValue == ZUSAHPI_CONF_NO_LEVEL) {
        return doNotForward;
    }
    if (level->intValue >= syslogLevels) {
        failMisconfigured(severity);
    }
    return static_cast<std::int32_t>(level->intValue);
}

[[nodiscard]] const ConfigNode *findAllSeverities(const ConfigNode *nodes) {
    return findNode(nodes, ZUSAHPI_CONF_SYSLOG_SEVERITY, SAHPI_ALL_SEVERITIES);
}

void applyAllSeverities(const ConfigNode &eventType, SyslogMapEntry &entry) {
    const ConfigNode *all = findAllSeverities(eventType.firstChild);
    if (all == nullptr) {
        return;
    }
    std::fill_n(entry.level, ZUSAHPI_SYSLOG_SLOTS, levelUnder(*all));
    if (const ConfigNode *again = findAllSeverities(all->nextSibling); again != nullptr) {
        zuSaHpiPrintf(diagnostics(),
                      "Multiple \"EventLogSyslogSeverity=all\" entries in config file, line %d\n",
                      static_cast<int>(again->line));
        fail();
    }
}

void applySeverities(const ConfigNode &eventType, SyslogMapEntry &entry) {
    applyAllSeverities(eventType, entry);
    for (const ConfigNode *node = eventType.firstChild; node != nullptr; node = node->nextSibling) {
        if (node->code != ZUSAHPI_CONF_SYSLOG_SEVERITY) {
            reportUndefinedKeyword(eventType, *node);
            fail();
        }
        if (node->intValue == SAHPI_ALL_SEVERITIES) {
            continue;
        }
        if (!hasSlot(node->intValue)) {
            failMisconfigured(*node);
        }
        entry.level[slotOf(static_cast<SaHpiSeverityT>(node->intValue))] = levelUnder(*node);
    }
}

[[nodiscard]] const ConfigNode *findAllEventTypes(const ConfigNode *nodes) {
    return findNode(nodes, ZUSAHPI_CONF_SYSLOG_EVENT_TYPE, ZUSAHPI_CONF_ALL);
}

void applyAllEventTypes(const ConfigNode &syslog) {
    const ConfigNode *all = findAllEventTypes(syslog.firstChild);
    if (all == nullptr) {
        return;
    }
    applySeverities(*all, zuSaHpiSyslogMapDefault);
    if (findAllEventTypes(all->nextSibling) != nullptr) {
        zuSaHpiPrintf(diagnostics(),
                      "Multiple \"EventLogSyslogEventType=all\" entries in config file\n");
        fail();
    }
}

void addEventType(const ConfigNode &node) {
    if (findMapEntry(node.intValue) != nullptr) {
        zuSaHpiPrintf(diagnostics(),
                      "Duplicate \"EventLogSyslogEventType\" entry in config file\n"
                      "Configuration file line %d\n",
                      static_cast<int>(node.line));
        fail();
    }
    auto *entry = static_cast<SyslogMapEntry *>(std::malloc(sizeof(SyslogMapEntry)));
    if (entry == nullptr) {
        zuSaHpiPrintf(diagnostics(), "Unable to malloc syslog map: %s\n", std::strerror(errno));
        fail();
    }
    *entry = zuSaHpiSyslogMapDefault;
    entry->eventType = node.intValue;
    entry->next = zuSaHpiSyslogMapHead;
    zuSaHpiSyslogMapHead = entry;
    applySeverities(node, *entry);
}

} // namespace

void configureSyslogMap(const ConfigNode &syslog, EventLogControlBlock &block) {
    applyAllEventTypes(syslog);
    for (const ConfigNode *node = syslog.firstChild; node != nullptr; node = node->nextSibling) {
        switch (node->code) {
        case ZUSAHPI_CONF_SYSLOG_EVENT_TYPE:
            if (node->intValue != ZUSAHPI_CONF_ALL) {
                addEventType(*node);
            }
            break;
        case ZUSAHPI_CONF_SYSLOG_FOLLOWS_STATE:
            block.syslogFollowsState = node->intValue;
            break;
        case ZUSAHPI_CONF_SYSLOG_SUPPRESS_RESOURCE:
            zuSaHpiSyslogSuppressResource = node->intValue;
            break;
        default:
            reportUndefinedKeyword(syslog, *node);
            break;
        }
    }
}

} // namespace zusahpi::config
