// Goal: the levels that every arrangement of event types and severities gives, and every message
// with which a map is refused, in the order in which the checks are made.

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "config/syslog_map.h"
#include "tests/config/config_tree.h"
#include "tests/support/test_mainlib.h"
#include "zuSaHpi_util.h"

namespace {

bool memoryIsExhausted = false;

} // namespace

extern "C" void *__real_malloc(std::size_t size);
extern "C" void *__wrap_malloc(std::size_t size);
extern "C" void *__wrap_malloc(std::size_t size) {
    if (memoryIsExhausted) {
        memoryIsExhausted = false;
        errno = ENOMEM;
        return nullptr;
    }
    return __real_malloc(size);
}

namespace {

using namespace config_tree;
using Levels = std::vector<int>;

constexpr std::uint32_t none = ZUSAHPI_CONF_NO_LEVEL;

// Configures a map; its lines count from 1 (EventLog), 2 (Filename), 3 (Size), 4 (Syslog).
void configure(std::vector<Node> underSyslog) {
    zuSaHpiEvtLogConf(Tree(linkedLog({syslog(std::move(underSyslog))})).first());
}

std::string refusal(std::vector<Node> underSyslog) {
    return refusalOf(linkedLog({syslog(std::move(underSyslog))}));
}

Levels levelsOf(const SyslogMapEntry &entry) {
    return {std::begin(entry.level), std::end(entry.level)};
}

Levels levelsOf(std::uint32_t eventType) {
    const SyslogMapEntry *entry = zusahpi::config::findMapEntry(eventType);
    return entry == nullptr ? Levels{} : levelsOf(*entry);
}

TEST(SyslogMapConf, ATypeStartsFromTheDefaultEntry) {
    configure({eventType(SAHPI_ET_SENSOR, {severity(SAHPI_MAJOR, 0)})});
    EXPECT_EQ(levelsOf(SAHPI_ET_SENSOR), (Levels{2, 0, 4, 5, 5, 7}));
    EXPECT_EQ(levelsOf(zuSaHpiSyslogMapDefault), (Levels{2, 3, 4, 5, 5, 7}));
}

TEST(SyslogMapConf, EntriesGoToTheHeadOfTheList) {
    configure({eventType(SAHPI_ET_SENSOR, {}), eventType(SAHPI_ET_USER, {})});
    ASSERT_NE(zuSaHpiSyslogMapHead->next, nullptr);
    EXPECT_EQ(zuSaHpiSyslogMapHead->eventType, SAHPI_ET_USER);
    EXPECT_EQ(zuSaHpiSyslogMapHead->next->eventType, SAHPI_ET_SENSOR);
    EXPECT_EQ(zuSaHpiSyslogMapHead->next->next, &zuSaHpiSyslogMapDefault);
    EXPECT_EQ(zuSaHpiSyslogMapDefault.next, nullptr);
}

TEST(SyslogMapConf, EverySeverityHasItsSlot) {
    configure({eventType(SAHPI_ET_USER, {severity(SAHPI_CRITICAL, 7), severity(SAHPI_MAJOR, 6),
                                         severity(SAHPI_MINOR, 1), severity(SAHPI_INFORMATIONAL, 0),
                                         severity(SAHPI_OK, none), severity(SAHPI_DEBUG, 3)})});
    EXPECT_EQ(levelsOf(SAHPI_ET_USER), (Levels{7, 6, 1, 0, -1, 3}));
}

TEST(SyslogMapConf, AllSeveritiesFillEverySlot) {
    configure({eventType(SAHPI_ET_USER, {allSeverities(6)}),
               eventType(SAHPI_ET_OEM, {allSeverities(none)})});
    EXPECT_EQ(levelsOf(SAHPI_ET_USER), (Levels{6, 6, 6, 6, 6, 6}));
    EXPECT_EQ(levelsOf(SAHPI_ET_OEM), (Levels{-1, -1, -1, -1, -1, -1}));
}

TEST(SyslogMapConf, ASpecificSeverityWinsWhereverItStands) {
    configure({eventType(SAHPI_ET_USER, {severity(SAHPI_MAJOR, 1), allSeverities(6)}),
               eventType(SAHPI_ET_OEM, {allSeverities(6), severity(SAHPI_MAJOR, 1)})});
    EXPECT_EQ(levelsOf(SAHPI_ET_USER), (Levels{6, 1, 6, 6, 6, 6}));
    EXPECT_EQ(levelsOf(SAHPI_ET_OEM), (Levels{6, 1, 6, 6, 6, 6}));
}

TEST(SyslogMapConf, TheLaterOfTwoSpecificSeveritiesWins) {
    configure({eventType(SAHPI_ET_USER, {severity(SAHPI_MAJOR, 1), severity(SAHPI_MAJOR, 2)})});
    EXPECT_EQ(levelsOf(SAHPI_ET_USER), (Levels{2, 2, 4, 5, 5, 7}));
}

TEST(SyslogMapConf, AllEventTypesComeFirstWhereverTheyStand) {
    configure({eventType(SAHPI_ET_USER, {severity(SAHPI_MAJOR, 1)}),
               allEventTypes({allSeverities(6), severity(SAHPI_OK, none)}),
               eventType(SAHPI_ET_OEM, {severity(SAHPI_OK, 0)})});
    EXPECT_EQ(levelsOf(zuSaHpiSyslogMapDefault), (Levels{6, 6, 6, 6, -1, 6}));
    EXPECT_EQ(levelsOf(SAHPI_ET_USER), (Levels{6, 1, 6, 6, -1, 6}));
    EXPECT_EQ(levelsOf(SAHPI_ET_OEM), (Levels{6, 6, 6, 6, 0, 6}));
}

TEST(SyslogMapConf, AnEntryKeepsTheDefaultOfItsTime) {
    zuSaHpiEvtLogConf(
        Tree(linkedLog({syslog({eventType(SAHPI_ET_USER, {})}),
                        syslog({allEventTypes({allSeverities(0)}), eventType(SAHPI_ET_OEM, {})})}))
            .first());
    EXPECT_EQ(levelsOf(SAHPI_ET_USER), (Levels{2, 3, 4, 5, 5, 7}));
    EXPECT_EQ(levelsOf(SAHPI_ET_OEM), (Levels{0, 0, 0, 0, 0, 0}));
}

TEST(SyslogMapConf, TheSyslogKeywordStoresItsSwitches) {
    const EventLogControlBlock &block = *zuSaHpiEvtLogConf(
        Tree(linkedLog({number(ZUSAHPI_CONF_SYSLOG, 0,
                               {number(ZUSAHPI_CONF_SYSLOG_FOLLOWS_STATE, 1),
                                number(ZUSAHPI_CONF_SYSLOG_SUPPRESS_RESOURCE, 1)})}))
            .first());
    EXPECT_EQ(block.syslogEnabled, 0U);
    EXPECT_EQ(block.syslogFollowsState, 1U);
    EXPECT_EQ(zuSaHpiSyslogSuppressResource, 1U);
}

TEST(SyslogMapConf, UnknownKeywordsUnderSyslogAreReportedAndPassedOver) {
    configure({unknown("Colour"), number(ZUSAHPI_CONF_SIZE, 5),
               eventType(SAHPI_ET_USER, {allSeverities(1)})});
    EXPECT_EQ(test_mainlib::state().diagnostics, "Undefined keyword subordinate to Syslog: Colour\n"
                                                 "Undefined keyword subordinate to Syslog: Size\n");
    EXPECT_EQ(levelsOf(SAHPI_ET_USER), (Levels{1, 1, 1, 1, 1, 1}));
}

TEST(SyslogMapConf, UnknownKeywordsUnderAnEventTypeAreRefused) {
    EXPECT_EQ(refusal({eventType(SAHPI_ET_USER, {unknown("Colour")})}),
              "Undefined keyword subordinate to EventLogSyslogEventType: Colour\n");
    EXPECT_EQ(refusal({allEventTypes({unknown("%s%n")})}),
              "Undefined keyword subordinate to EventLogSyslogEventType: %s%n\n");
    EXPECT_EQ(refusal({eventType(SAHPI_ET_USER, {number(ZUSAHPI_CONF_SYSLOG_LEVEL, 1)})}),
              "Undefined keyword subordinate to EventLogSyslogEventType: EventLogSyslogLevel\n");
}

TEST(SyslogMapConf, ATypeMayBeGivenOnce) {
    const std::string message = "Duplicate \"EventLogSyslogEventType\" entry in config file\n"
                                "Configuration file line ";
    EXPECT_EQ(refusal({eventType(SAHPI_ET_USER, {}), eventType(SAHPI_ET_OEM, {}),
                       eventType(SAHPI_ET_USER, {})}),
              message + "7\n");
    EXPECT_EQ(refusalOf(linkedLog({syslog({eventType(SAHPI_ET_USER, {})}),
                                   syslog({eventType(SAHPI_ET_USER, {})})})),
              message + "7\n");
}

TEST(SyslogMapConf, ASecondConfigurationFindsTheMapOfTheFirst) {
    configure({eventType(SAHPI_ET_USER, {})});
    EXPECT_EQ(refusal({eventType(SAHPI_ET_USER, {})}),
              "Duplicate \"EventLogSyslogEventType\" entry in config file\n"
              "Configuration file line 5\n");
}

TEST(SyslogMapConf, AllEventTypesMayBeGivenOnce) {
    const std::string message = "Multiple \"EventLogSyslogEventType=all\" entries in config file\n";
    EXPECT_EQ(refusal({allEventTypes({}), eventType(SAHPI_ET_USER, {}), allEventTypes({})}),
              message);
    // Two syslog keywords may have one each.
    zuSaHpiEvtLogConf(Tree(linkedLog({syslog({allEventTypes({allSeverities(1)})}),
                                      syslog({allEventTypes({severity(SAHPI_OK, 2)})})}))
                          .first());
    EXPECT_EQ(levelsOf(zuSaHpiSyslogMapDefault), (Levels{1, 1, 1, 1, 2, 1}));
}

TEST(SyslogMapConf, TheFirstAllIsAppliedWholeBeforeASecondIsLookedFor) {
    EXPECT_EQ(refusal({allEventTypes({severity(SAHPI_OK, 8)}), allEventTypes({})}),
              "Misconfigured Syslog map, line number 6\n");
    EXPECT_EQ(refusal({allEventTypes({}), allEventTypes({severity(SAHPI_OK, 8)})}),
              "Multiple \"EventLogSyslogEventType=all\" entries in config file\n");
}

TEST(SyslogMapConf, AllSeveritiesMayBeGivenOnce) {
    EXPECT_EQ(refusal({eventType(SAHPI_ET_USER,
                                 {allSeverities(1), severity(SAHPI_OK, 2), allSeverities(1)})}),
              "Multiple \"EventLogSyslogSeverity=all\" entries in config file, line 10\n");
}

TEST(SyslogMapConf, AllSeveritiesAreLookedAtBeforeTheOthers) {
    EXPECT_EQ(refusal({eventType(SAHPI_ET_USER, {unknown("Colour"), allSeverities(8)})}),
              "Misconfigured Syslog map, line number 7\n");
    EXPECT_EQ(refusal({eventType(SAHPI_ET_USER,
                                 {unknown("Colour"), allSeverities(1), allSeverities(1)})}),
              "Multiple \"EventLogSyslogSeverity=all\" entries in config file, line 9\n");
    EXPECT_EQ(refusal({eventType(SAHPI_ET_USER, {allSeverities(8), allSeverities(1)})}),
              "Misconfigured Syslog map, line number 6\n");
}

TEST(SyslogMapConf, ASeverityHasOneLevelUnderIt) {
    const std::string message = "Misconfigured Syslog map, line number 6\n";
    const Node level = number(ZUSAHPI_CONF_SYSLOG_LEVEL, 1);
    for (const std::uint32_t value : {std::uint32_t{SAHPI_ALL_SEVERITIES}, std::uint32_t{SAHPI_OK},
                                      std::uint32_t{SAHPI_DEBUG}}) {
        for (const std::vector<Node> &under :
             {std::vector<Node>{}, {unknown("Colour")}, {level, level}, {level, unknown("x")}}) {
            EXPECT_EQ(refusal({eventType(SAHPI_ET_USER,
                                         {number(ZUSAHPI_CONF_SYSLOG_SEVERITY, value, under)})}),
                      message);
        }
    }
}

TEST(SyslogMapConf, ASeverityOutOfRangeIsRefused) {
    for (const std::uint32_t value : {5U, 6U, 239U, 241U, 254U, 256U, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(refusal({eventType(SAHPI_ET_USER, {severity(SAHPI_OK, 1), severity(value, 1)})}),
                  "Misconfigured Syslog map, line number 8\n")
            << value;
    }
}

TEST(SyslogMapConf, ALevelOutOfRangeIsRefused) {
    for (const std::uint32_t level : {8U, 255U, 0x80000000U, 0xFFFFFFFEU}) {
        for (const std::uint32_t value :
             {std::uint32_t{SAHPI_ALL_SEVERITIES}, std::uint32_t{SAHPI_OK}}) {
            EXPECT_EQ(refusal({eventType(SAHPI_ET_USER, {severity(value, level)})}),
                      "Misconfigured Syslog map, line number 6\n")
                << level;
        }
    }
}

TEST(SyslogMapConf, WithoutMemoryThereIsNoMap) {
    memoryIsExhausted = true;
    const std::string message = refusal({eventType(SAHPI_ET_USER, {})});
    memoryIsExhausted = false;
    EXPECT_EQ(message, "Unable to malloc syslog map: Cannot allocate memory\n");
}

} // namespace
