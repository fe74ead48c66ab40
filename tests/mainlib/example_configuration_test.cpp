// Goal: a configuration file ends up in the library as it reads: the example gives exactly its
// control block and syslog map, and what the parser leaves to the library is reported there.
#include <array>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "tests/mainlib/config_tree.h"
#include "tests/support/child.h"
#include "tests/support/files.h"
#include "zuSaHpi_default_mainlib.h"

namespace {

const std::string examplePath = std::string(ZUSAHPI_TEST_DATA) + "/../examples/evtlog.conf";

constexpr std::string_view exampleTree = "4: EventLog 100000 2\n"
                                         "  5: Filename 100001 10 \"events.log\"\n"
                                         "  6: Size 100003 10000\n"
                                         "  7: Overflow 100004 1\n"
                                         "  8: OverflowResetable 100008 1\n"
                                         "  9: UserEventMaxSize 100005 255\n"
                                         "  10: Enabled 100006 1\n"
                                         "  11: RelativeTime 100007 0\n"
                                         "  12: Reinitialize 100002 0\n"
                                         "  14: Syslog 100009 1\n"
                                         "    15: SyslogFollowsState 100013 1\n"
                                         "    16: SyslogSuppressResource 100014 0\n"
                                         "    20: EventLogSyslogEventType 100010 4294967295\n"
                                         "      21: EventLogSyslogSeverity 100011 255\n"
                                         "        21: EventLogSyslogLevel 100012 6\n"
                                         "      22: EventLogSyslogSeverity 100011 0\n"
                                         "        22: EventLogSyslogLevel 100012 2\n"
                                         "      23: EventLogSyslogSeverity 100011 1\n"
                                         "        23: EventLogSyslogLevel 100012 3\n"
                                         "      24: EventLogSyslogSeverity 100011 2\n"
                                         "        24: EventLogSyslogLevel 100012 4\n"
                                         "      25: EventLogSyslogSeverity 100011 3\n"
                                         "        25: EventLogSyslogLevel 100012 5\n"
                                         "      26: EventLogSyslogSeverity 100011 4\n"
                                         "        26: EventLogSyslogLevel 100012 5\n"
                                         "      27: EventLogSyslogSeverity 100011 240\n"
                                         "        27: EventLogSyslogLevel 100012 4294967295\n"
                                         "    32: EventLogSyslogEventType 100010 5\n"
                                         "      33: EventLogSyslogSeverity 100011 0\n"
                                         "        33: EventLogSyslogLevel 100012 1\n"
                                         "    35: EventLogSyslogEventType 100010 8\n"
                                         "      36: EventLogSyslogSeverity 100011 255\n"
                                         "        36: EventLogSyslogLevel 100012 4294967295\n"
                                         "      37: EventLogSyslogSeverity 100011 0\n"
                                         "        37: EventLogSyslogLevel 100012 2\n";

void expectEntry(const SyslogMapEntry &entry, std::uint32_t eventType,
                 const std::array<std::int32_t, ZUSAHPI_SYSLOG_SLOTS> &levels) {
    EXPECT_EQ(entry.eventType, eventType);
    for (std::size_t slot = 0; slot < levels.size(); ++slot) {
        EXPECT_EQ(entry.level[slot], levels[slot]) << "type " << eventType << " slot " << slot;
    }
}

// What the library says about a configuration text, and how the process ends.
test_support::ChildResult configured(const std::string &text) {
    return test_support::runInChild([&] {
        zuSaHpiConfigT config = zuSaHpiConfigTextRead("text", text.data(), text.size());
        ASSERT_STREQ(config.error, nullptr);
        (void)zuSaHpiEvtLogConf(config.nodes);
        zuSaHpiConfigRelease(&config);
    });
}

} // namespace

TEST(ExampleConfiguration, IsTheTreeThatItSays) {
    zuSaHpiConfigT config = zuSaHpiConfigFileRead(examplePath.c_str());
    ASSERT_STREQ(config.error, nullptr);
    config_tree::expectSound(config.nodes);
    EXPECT_EQ(config_tree::textOf(config.nodes), exampleTree);
    zuSaHpiConfigRelease(&config);
}

TEST(ExampleConfiguration, ShowsEveryKeyword) {
    for (std::uint32_t code = ZUSAHPI_CONF_EVENT_LOG; code <= ZUSAHPI_CONF_SYSLOG_SUPPRESS_RESOURCE;
         ++code) {
        const std::string name = std::string(" ") + zuSaHpiConfigKeyword(code) + " ";
        EXPECT_NE((" " + std::string(exampleTree)).find(name), std::string::npos) << name;
    }
}

TEST(ExampleConfiguration, BecomesTheControlBlock) {
    test_support::inChild([] {
        zuSaHpiConfigT config = zuSaHpiConfigFileRead(examplePath.c_str());
        ASSERT_STREQ(config.error, nullptr);
        const EventLogControlBlock *const block = zuSaHpiEvtLogConf(config.nodes);
        zuSaHpiConfigRelease(&config);
        EXPECT_STREQ(block->fileName, "events.log");
        EXPECT_EQ(block->info.type, ZUSAHPI_EL_TYPE_LINKED);
        EXPECT_EQ(block->info.overflowAction, ZUSAHPI_EL_WRAP);
        EXPECT_EQ(block->info.sa.Size, 10'000U);
        EXPECT_EQ(block->info.sa.UserEventMaxSize, 255U);
        EXPECT_EQ(block->info.sa.Enabled, 1);
        EXPECT_EQ(block->info.sa.OverflowResetable, 1);
        EXPECT_EQ(block->reinitialize, 0U);
        EXPECT_EQ(block->relativeTime, 0U);
        EXPECT_EQ(block->fileEnabled, 1U);
        EXPECT_EQ(block->syslogEnabled, 1U);
        EXPECT_EQ(block->syslogFollowsState, 1U);
        EXPECT_EQ(zuSaHpiSyslogSuppressResource, 0U);
    });
}

TEST(ExampleConfiguration, BecomesTheSyslogMap) {
    test_support::inChild([] {
        zuSaHpiConfigT config = zuSaHpiConfigFileRead(examplePath.c_str());
        ASSERT_STREQ(config.error, nullptr);
        (void)zuSaHpiEvtLogConf(config.nodes);
        zuSaHpiConfigRelease(&config);
        const SyslogMapEntry *entry = zuSaHpiSyslogMapHead;
        expectEntry(*entry, SAHPI_ET_USER, {2, -1, -1, -1, -1, -1});
        entry = entry->next;
        ASSERT_NE(entry, nullptr);
        expectEntry(*entry, SAHPI_ET_WATCHDOG, {1, 3, 4, 5, 5, -1});
        entry = entry->next;
        ASSERT_EQ(entry, &zuSaHpiSyslogMapDefault);
        expectEntry(*entry, ZUSAHPI_CONF_ALL, {2, 3, 4, 5, 5, -1});
        EXPECT_EQ(entry->next, nullptr);
    });
}

TEST(ExampleConfiguration, UnknownKeywordsGiveTheLibrarysWarning) {
    const test_support::ChildResult child =
        configured("eventlog=linked {\n Filename=log\n Size=5\n Sise=6\n Syslog=yes { Lvel=1 }\n}");
    EXPECT_EQ(child.exitStatus, 0);
    EXPECT_EQ(child.diagnostics, "Undefined keyword subordinate to eventlog: Sise\n"
                                 "Undefined keyword subordinate to Syslog: Lvel\n");
}

TEST(ExampleConfiguration, WhatTheLogCannotBeIsTheLibrarysError) {
    test_support::ChildResult child = configured("Other=1");
    EXPECT_EQ(child.exitStatus, 1);
    EXPECT_EQ(child.diagnostics, "No EventLog entry in configuration data.\n");

    child = configured("EventLog=simple { Filename=log Size=5 }");
    EXPECT_EQ(child.exitStatus, 1);
    EXPECT_EQ(child.diagnostics, "Illegal configuration for event log.\n"
                                 "Overflow=wrap not allowed if EventLog=simple.\n");

    child = configured("EventLog=linked { Filename=\"\" Size=5 }");
    EXPECT_EQ(child.exitStatus, 1);
    EXPECT_EQ(child.diagnostics, "Illegal Filename for eventlog in config\n");

    child = configured("EventLog=linked { Filename=" + std::string(99, 'n') + " Size=5 }");
    EXPECT_EQ(child.exitStatus, 1);
    EXPECT_EQ(child.diagnostics, "Illegal Filename for eventlog in config\n");

    child = configured("EventLog=linked { Filename=log Size=5 Syslog=yes {\n"
                       "EventLogSyslogEventType=user {\nEventLogSyslogSeverity=ok } } }");
    EXPECT_EQ(child.exitStatus, 1);
    EXPECT_EQ(child.diagnostics, "Misconfigured Syslog map, line number 3\n");

    child = configured("EventLog=linked { Filename=log Size=5 Syslog=yes {\n"
                       "EventLogSyslogEventType=user { Level=1 } } }");
    EXPECT_EQ(child.exitStatus, 1);
    EXPECT_EQ(child.diagnostics,
              "Undefined keyword subordinate to EventLogSyslogEventType: Level\n");
}

TEST(ExampleConfiguration, ALongFileNameArrivesWhole) {
    const test_support::ChildResult child = test_support::runInChild([] {
        const std::string name(98, 'n');
        const std::string text = "EventLog=circular { Filename=" + name + " Size=0xFFFFFFFF }";
        zuSaHpiConfigT config = zuSaHpiConfigTextRead("text", text.data(), text.size());
        const EventLogControlBlock *const block = zuSaHpiEvtLogConf(config.nodes);
        zuSaHpiConfigRelease(&config);
        EXPECT_EQ(block->fileName, name);
        EXPECT_EQ(block->info.sa.Size, 0xFFFFFFFFU);
        EXPECT_EQ(block->info.type, ZUSAHPI_EL_TYPE_CIRCULAR);
    });
    EXPECT_EQ(child.exitStatus, 0) << child.diagnostics;
}
