// Goal: the map before any configuration, the slot of every severity, the entry of every event
// type, and that no level leads outside the table of priorities.

#include <array>
#include <climits>
#include <cstdint>
#include <optional>

#include <gtest/gtest.h>

#include "config/syslog_map.h"

namespace {

using namespace zusahpi::config;

std::optional<int> priorityOf(uint32_t eventType, uint32_t severity) {
    return syslogPriority(static_cast<SaHpiEventTypeT>(eventType),
                          static_cast<SaHpiSeverityT>(severity));
}

uint32_t slot(uint32_t severity) {
    return slotOf(static_cast<SaHpiSeverityT>(severity));
}

TEST(SyslogMap, StartsWithTheDefaultEntry) {
    EXPECT_EQ(zuSaHpiSyslogMapHead, &zuSaHpiSyslogMapDefault);
    EXPECT_EQ(zuSaHpiSyslogMapDefault.eventType, 0xFFFFFFFF);
    EXPECT_EQ(zuSaHpiSyslogMapDefault.next, nullptr);
    constexpr std::array levels = {2, 3, 4, 5, 5, 7};
    for (std::size_t i = 0; i < levels.size(); ++i) {
        EXPECT_EQ(zuSaHpiSyslogMapDefault.level[i], levels[i]) << i;
    }
    EXPECT_EQ(zuSaHpiSyslogSuppressResource, 0U);
}

TEST(SyslogMap, EverySeverityHasASlot) {
    for (uint32_t severity = 0; severity <= 4; ++severity) {
        EXPECT_EQ(slot(severity), severity);
    }
    for (const uint32_t severity : {5U, 6U, 0xF0U, 0xFFU, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(slot(severity), 5U) << severity;
    }
}

TEST(SyslogMap, DefaultPriorities) {
    EXPECT_EQ(priorityOf(SAHPI_ET_SENSOR, SAHPI_CRITICAL), 2);
    EXPECT_EQ(priorityOf(SAHPI_ET_SENSOR, SAHPI_MAJOR), 3);
    EXPECT_EQ(priorityOf(SAHPI_ET_SENSOR, SAHPI_MINOR), 4);
    EXPECT_EQ(priorityOf(SAHPI_ET_SENSOR, SAHPI_INFORMATIONAL), 5);
    EXPECT_EQ(priorityOf(SAHPI_ET_SENSOR, SAHPI_OK), 5);
    EXPECT_EQ(priorityOf(SAHPI_ET_SENSOR, SAHPI_DEBUG), 7);
    EXPECT_EQ(priorityOf(0xFFFFFFFF, 0xFFFFFFFF), 7);
}

TEST(SyslogMap, AnEntryOfTheTypeGoesFirst) {
    SyslogMapEntry user{SAHPI_ET_USER, {0, 1, 2, 6, 7, -1}, &zuSaHpiSyslogMapDefault};
    SyslogMapEntry sensor{SAHPI_ET_SENSOR, {6, 6, 6, 6, 6, 6}, &user};
    zuSaHpiSyslogMapHead = &sensor;
    EXPECT_EQ(findMapEntry(SAHPI_ET_USER), &user);
    EXPECT_EQ(findMapEntry(SAHPI_ET_SENSOR), &sensor);
    EXPECT_EQ(findMapEntry(SAHPI_ET_OEM), nullptr);
    EXPECT_EQ(priorityOf(SAHPI_ET_USER, SAHPI_CRITICAL), 0);
    EXPECT_EQ(priorityOf(SAHPI_ET_USER, SAHPI_OK), 7);
    EXPECT_EQ(priorityOf(SAHPI_ET_USER, SAHPI_DEBUG), std::nullopt);
    EXPECT_EQ(priorityOf(SAHPI_ET_SENSOR, SAHPI_DEBUG), 6);
    EXPECT_EQ(priorityOf(SAHPI_ET_OEM, SAHPI_DEBUG), 7);
    zuSaHpiSyslogMapHead = &zuSaHpiSyslogMapDefault;
}

TEST(SyslogMap, ALevelThatIsNoneForwardsNothing) {
    SyslogMapEntry entry{SAHPI_ET_USER, {-1, 8, 9, INT_MAX, INT_MIN, -2}, nullptr};
    zuSaHpiSyslogMapHead = &entry;
    for (const uint32_t severity : {0U, 1U, 2U, 3U, 4U, 5U}) {
        EXPECT_EQ(priorityOf(SAHPI_ET_USER, severity), std::nullopt) << severity;
    }
    EXPECT_EQ(priorityOf(SAHPI_ET_OEM, SAHPI_CRITICAL), 2);
    zuSaHpiSyslogMapHead = &zuSaHpiSyslogMapDefault;
}

} // namespace
