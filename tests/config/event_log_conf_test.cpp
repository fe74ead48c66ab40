// Goal: the control block that each keyword gives, the defaults, and every message with which a
// configuration is refused or a keyword is passed over.

#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/config/config_tree.h"
#include "tests/support/test_mainlib.h"
#include "zuSaHpi_util.h"

namespace {

using namespace config_tree;

EventLogControlBlock blockOf(const std::vector<Node> &nodes) {
    return *zuSaHpiEvtLogConf(Tree(nodes).first());
}

std::string diagnosticsOf(const std::vector<Node> &nodes) {
    test_mainlib::state().diagnostics.clear();
    blockOf(nodes);
    return test_mainlib::state().diagnostics;
}

TEST(EventLogConf, Defaults) {
    EventLogControlBlock expected{};
    expected.size = 208;
    expected.magic = 0x17394283;
    expected.info.sa.Size = 1;
    expected.info.sa.UserEventMaxSize = 255;
    expected.info.sa.Enabled = 1;
    expected.info.sa.OverflowResetable = 1;
    expected.info.sa.OverflowAction = SAHPI_EL_OVERFLOW_OVERWRITE;
    expected.info.type = 2;
    expected.info.overflowAction = 1;
    expected.info.oldest = 0xFFFFFFFF;
    expected.info.newest = 0xFFFFFFFF;
    expected.info.freeHead = 0xFFFFFFFF;
    std::strcpy(expected.fileName, "log");
    expected.fileEnabled = 1;
    zuSaHpiSyslogSuppressResource = 1;
    const EventLogControlBlock block = blockOf(linkedLog());
    EXPECT_EQ(std::memcmp(&block, &expected, sizeof block), 0);
    EXPECT_EQ(zuSaHpiSyslogSuppressResource, 0U);
    EXPECT_EQ(zuSaHpiSyslogMapHead, &zuSaHpiSyslogMapDefault);
    EXPECT_EQ(test_mainlib::state().diagnostics, "");
}

TEST(EventLogConf, EveryKeyword) {
    const EventLogControlBlock block = blockOf({eventLog(
        ZUSAHPI_EL_TYPE_CIRCULAR,
        {fileName("/var/a log"), number(ZUSAHPI_CONF_REINITIALIZE, 1), size(70'000), overflow(2),
         number(ZUSAHPI_CONF_USER_EVENT_MAX_SIZE, 100), number(ZUSAHPI_CONF_ENABLED, 0),
         number(ZUSAHPI_CONF_RELATIVE_TIME, 1), number(ZUSAHPI_CONF_OVERFLOW_RESETABLE, 0),
         number(ZUSAHPI_CONF_SYSLOG, 1,
                {number(ZUSAHPI_CONF_SYSLOG_FOLLOWS_STATE, 1),
                 number(ZUSAHPI_CONF_SYSLOG_SUPPRESS_RESOURCE, 1)})})});
    EXPECT_EQ(block.info.type, 1U);
    EXPECT_STREQ(block.fileName, "/var/a log");
    EXPECT_EQ(block.reinitialize, 1U);
    EXPECT_EQ(block.info.sa.Size, 70'000U);
    EXPECT_EQ(block.info.overflowAction, 2U);
    EXPECT_EQ(block.info.sa.OverflowAction, SAHPI_EL_OVERFLOW_OVERWRITE);
    EXPECT_EQ(block.info.sa.UserEventMaxSize, 100U);
    EXPECT_EQ(block.info.sa.Enabled, 0);
    EXPECT_EQ(block.relativeTime, 1U);
    EXPECT_EQ(block.info.sa.OverflowResetable, 0);
    EXPECT_EQ(block.fileEnabled, 1U);
    EXPECT_EQ(block.syslogEnabled, 1U);
    EXPECT_EQ(block.syslogFollowsState, 1U);
    EXPECT_EQ(zuSaHpiSyslogSuppressResource, 1U);
    EXPECT_EQ(test_mainlib::state().diagnostics, "");
}

TEST(EventLogConf, OverflowActions) {
    const EventLogControlBlock drop = blockOf(linkedLog({overflow(0)}));
    EXPECT_EQ(drop.info.overflowAction, 0U);
    EXPECT_EQ(drop.info.sa.OverflowAction, SAHPI_EL_OVERFLOW_DROP);
    const EventLogControlBlock wrap = blockOf(linkedLog({overflow(0), overflow(1)}));
    EXPECT_EQ(wrap.info.overflowAction, 1U);
    EXPECT_EQ(wrap.info.sa.OverflowAction, SAHPI_EL_OVERFLOW_OVERWRITE);
}

TEST(EventLogConf, AnyNonzeroBooleanIsTrue) {
    const EventLogControlBlock block = blockOf(linkedLog(
        {number(ZUSAHPI_CONF_ENABLED, 256), number(ZUSAHPI_CONF_OVERFLOW_RESETABLE, 0x80000000)}));
    EXPECT_EQ(block.info.sa.Enabled, 1);
    EXPECT_EQ(block.info.sa.OverflowResetable, 1);
}

TEST(EventLogConf, SyslogOnlyKeepsNoFile) {
    const EventLogControlBlock block = blockOf({eventLog(3, {fileName("x"), size(9)})});
    EXPECT_EQ(block.info.type, 3U);
    EXPECT_EQ(block.fileEnabled, 0U);
    EXPECT_EQ(block.syslogEnabled, 1U);
}

TEST(EventLogConf, TheSyslogKeywordOverridesTheType) {
    const EventLogControlBlock block =
        blockOf({eventLog(3, {fileName("x"), size(9), number(ZUSAHPI_CONF_SYSLOG, 0)})});
    EXPECT_EQ(block.fileEnabled, 0U);
    EXPECT_EQ(block.syslogEnabled, 0U);
}

TEST(EventLogConf, SyslogOnlyStillNeedsFileNameAndSize) {
    EXPECT_EQ(refusalOf({eventLog(3, {size(9)})}), "No Filename parameter given for EventLog\n");
    EXPECT_EQ(refusalOf({eventLog(3, {fileName("x")})}), "No Size parameter given for EventLog\n");
}

TEST(EventLogConf, OtherTopLevelKeywordsArePassedOver) {
    std::vector<Node> nodes = {number(7, 1), number(ZUSAHPI_CONF_SIZE, 4)};
    nodes.push_back(linkedLog().front());
    nodes.push_back(eventLog(ZUSAHPI_EL_TYPE_SIMPLE, {}));
    EXPECT_EQ(blockOf(nodes).info.type, 2U);
    EXPECT_EQ(test_mainlib::state().diagnostics, "");
}

TEST(EventLogConf, ASectionIsNeeded) {
    EXPECT_EQ(refusalOf({}), "No EventLog entry in configuration data.\n");
    EXPECT_EQ(refusalOf({number(ZUSAHPI_CONF_SIZE, 4)}),
              "No EventLog entry in configuration data.\n");
}

TEST(EventLogConf, FileNamesHaveOneToNinetyEightCharacters) {
    const std::string longest(98, 'n');
    const EventLogControlBlock block = blockOf({eventLog(2, {fileName(longest), size(1)})});
    EXPECT_EQ(std::string(block.fileName), longest);
    const std::string message = "Illegal Filename for eventlog in config\n";
    EXPECT_EQ(refusalOf({eventLog(2, {fileName(longest + "n"), size(1)})}), message);
    EXPECT_EQ(refusalOf({eventLog(2, {fileName(""), size(1)})}), message);
    EXPECT_EQ(refusalOf({eventLog(2, {number(ZUSAHPI_CONF_FILE_NAME, 0xFFFFFFFF)})}), message);
}

TEST(EventLogConf, TheLaterFileNameCounts) {
    const EventLogControlBlock block =
        blockOf({eventLog(2, {fileName("a longer name"), fileName("short"), size(1)})});
    EXPECT_STREQ(block.fileName, "short");
}

TEST(EventLogConf, UnknownKeywordsAreReportedAndPassedOver) {
    EXPECT_EQ(diagnosticsOf(linkedLog({unknown("Colour"), size(5)})),
              "Undefined keyword subordinate to EventLog: Colour\n");
    EXPECT_EQ(diagnosticsOf(linkedLog({number(ZUSAHPI_CONF_SYSLOG_EVENT_TYPE, 1)})),
              "Undefined keyword subordinate to EventLog: EventLogSyslogEventType\n");
    EXPECT_EQ(diagnosticsOf(linkedLog({eventLog(1, {})})),
              "Undefined keyword subordinate to EventLog: EventLog\n");
}

TEST(EventLogConf, KeywordsAreNoFormatsAndMayFillTheirArray) {
    EXPECT_EQ(diagnosticsOf(linkedLog({unknown("%s%n")})),
              "Undefined keyword subordinate to EventLog: %s%n\n");
    const std::string full(256, 'k');
    EXPECT_EQ(diagnosticsOf(linkedLog({unknown(full)})),
              "Undefined keyword subordinate to EventLog: " + full + "\n");
}

TEST(EventLogConf, ASimpleLogMustNameItsOverflow) {
    const std::string message = "Illegal configuration for event log.\n"
                                "Overflow=wrap not allowed if EventLog=simple.\n";
    EXPECT_EQ(refusalOf({eventLog(0, {fileName("x"), size(1)})}), message);
    EXPECT_EQ(refusalOf({eventLog(0, {fileName("x"), size(1), overflow(1)})}), message);
    EXPECT_EQ(refusalOf({eventLog(0, {})}), message);
    EXPECT_EQ(blockOf({eventLog(0, {fileName("x"), size(1), overflow(0)})}).info.type, 0U);
    EXPECT_EQ(blockOf({eventLog(0, {fileName("x"), size(1), overflow(2)})}).info.type, 0U);
}

TEST(EventLogConf, FileNameIsAskedForBeforeSize) {
    EXPECT_EQ(refusalOf({eventLog(2, {})}), "No Filename parameter given for EventLog\n");
    EXPECT_EQ(refusalOf({eventLog(2, {fileName("x")})}), "No Size parameter given for EventLog\n");
}

TEST(EventLogConf, ASizeOfZeroIsGiven) {
    EXPECT_EQ(blockOf({eventLog(2, {fileName("x"), size(0)})}).info.sa.Size, 0U);
}

TEST(EventLogConf, TheBlockIsAlwaysTheSameObject) {
    const Tree tree(linkedLog());
    EXPECT_EQ(zuSaHpiEvtLogConf(tree.first()), zuSaHpiEvtLogConf(tree.first()));
}

} // namespace
