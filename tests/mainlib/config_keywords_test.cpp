// Goal: every keyword has its code, every word its value, and nothing else is accepted.
#include "mainlib/config_keywords.h"

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "zuSaHpi_default_mainlib.h"

namespace {

using zusahpi::mainlib::findKeyword;
using zusahpi::mainlib::Keyword;
using zusahpi::mainlib::valueOf;

const std::vector<std::string> texts = {"EventLog",
                                        "Filename",
                                        "Reinitialize",
                                        "Size",
                                        "Overflow",
                                        "UserEventMaxSize",
                                        "Enabled",
                                        "RelativeTime",
                                        "OverflowResetable",
                                        "Syslog",
                                        "EventLogSyslogEventType",
                                        "EventLogSyslogSeverity",
                                        "EventLogSyslogLevel",
                                        "SyslogFollowsState",
                                        "SyslogSuppressResource"};

struct Row {
    std::string word;
    std::uint32_t value;
};

const std::vector<Row> booleans = {{"yes", 1}, {"no", 0}};

void expectWords(const char *keywordText, const std::vector<Row> &rows) {
    SCOPED_TRACE(keywordText);
    const Keyword *const keyword = findKeyword(std::string_view(keywordText));
    ASSERT_NE(keyword, nullptr);
    EXPECT_EQ(keyword->words.size(), rows.size());
    for (const Row &row : rows) {
        SCOPED_TRACE(row.word);
        EXPECT_EQ(valueOf(*keyword, row.word), row.value);
        EXPECT_EQ(valueOf(*keyword, std::to_string(row.value)), row.value);
        EXPECT_EQ(zuSaHpiConfigWord(keyword->code, row.value), row.word);
    }
}

void expectRefused(const char *keywordText, const std::vector<std::string> &values) {
    const Keyword *const keyword = findKeyword(std::string_view(keywordText));
    ASSERT_NE(keyword, nullptr);
    for (const std::string &value : values) {
        EXPECT_EQ(valueOf(*keyword, value), std::nullopt) << keywordText << "=" << value;
    }
}

} // namespace

TEST(ConfigKeywords, CodesFollowEachOther) {
    for (std::uint32_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(zuSaHpiConfigKeyword(100'000 + i), texts[i]);
        ASSERT_NE(findKeyword(std::string_view(texts[i])), nullptr);
        EXPECT_EQ(findKeyword(std::string_view(texts[i]))->code, 100'000 + i);
    }
    EXPECT_EQ(zuSaHpiConfigKeyword(99'999), nullptr);
    EXPECT_EQ(zuSaHpiConfigKeyword(100'015), nullptr);
    EXPECT_EQ(zuSaHpiConfigKeyword(0), nullptr);
}

TEST(ConfigKeywords, MatchInUpperAndLowerCase) {
    EXPECT_EQ(findKeyword("EVENTLOG"), findKeyword("eventlog"));
    EXPECT_NE(findKeyword("EVENTLOG"), nullptr);
    EXPECT_EQ(findKeyword("EventLo"), nullptr);
    EXPECT_EQ(findKeyword("EventLogs"), nullptr);
    EXPECT_EQ(findKeyword(std::string_view("")), nullptr);
    EXPECT_EQ(valueOf(*findKeyword("Overflow"), "WriteLast"), 2U);
}

TEST(ConfigKeywords, Words) {
    expectWords("EventLog", {{"simple", 0}, {"circular", 1}, {"linked", 2}, {"syslog", 3}});
    expectWords("Overflow", {{"drop", 0}, {"wrap", 1}, {"writelast", 2}});
    for (const char *const keyword :
         {"Reinitialize", "Enabled", "RelativeTime", "OverflowResetable", "Syslog",
          "SyslogFollowsState", "SyslogSuppressResource"}) {
        expectWords(keyword, booleans);
    }
    expectWords("EventLogSyslogEventType", {{"resource", 0},
                                            {"domain", 1},
                                            {"sensor", 2},
                                            {"sensor_enable_change", 3},
                                            {"hotswap", 4},
                                            {"watchdog", 5},
                                            {"hpi_sw", 6},
                                            {"oem", 7},
                                            {"user", 8},
                                            {"all", 0xFFFFFFFF}});
    expectWords("EventLogSyslogSeverity", {{"critical", 0},
                                           {"major", 1},
                                           {"minor", 2},
                                           {"informational", 3},
                                           {"ok", 4},
                                           {"debug", 240},
                                           {"all", 255}});
    expectWords("EventLogSyslogLevel", {{"emerg", 0},
                                        {"alert", 1},
                                        {"crit", 2},
                                        {"err", 3},
                                        {"warning", 4},
                                        {"notice", 5},
                                        {"info", 6},
                                        {"debug", 7},
                                        {"none", 0xFFFFFFFF}});
}

TEST(ConfigKeywords, OtherValuesAreRefused) {
    const std::vector<std::string> never = {"",   "-1", "+1", "1x",          "0x",  "x",
                                            " 1", "1 ", "--", "99999999999", "1.0", "yess"};
    for (const std::string &text : texts) {
        if (text != "Filename") {
            expectRefused(text.c_str(), never);
        }
    }
    expectRefused("EventLog", {"4", "0xFFFFFFFF", "wrap"});
    expectRefused("Overflow", {"3", "linked"});
    expectRefused("Enabled", {"2", "255", "true", "on", "0xFFFFFFFF"});
    expectRefused("EventLogSyslogEventType", {"9", "4294967294", "255"});
    expectRefused("EventLogSyslogSeverity", {"5", "239", "241", "254", "256", "4294967295"});
    expectRefused("EventLogSyslogLevel", {"8", "255", "4294967294", "all"});
}

TEST(ConfigKeywords, Numbers) {
    const Keyword &size = *findKeyword("Size");
    EXPECT_EQ(valueOf(size, "1"), 1U);
    EXPECT_EQ(valueOf(size, "10000"), 10'000U);
    EXPECT_EQ(valueOf(size, "0x10"), 16U);
    EXPECT_EQ(valueOf(size, "0XfF"), 255U);
    EXPECT_EQ(valueOf(size, "010"), 10U);
    EXPECT_EQ(valueOf(size, "4294967295"), 4'294'967'295U);
    expectRefused("Size", {"0", "4294967296", "0x100000000", "18446744073709551617", "all"});
    const Keyword &userEvent = *findKeyword("UserEventMaxSize");
    EXPECT_EQ(valueOf(userEvent, "0"), 0U);
    EXPECT_EQ(valueOf(userEvent, "255"), 255U);
    expectRefused("UserEventMaxSize", {"256", "4294967295"});
}

TEST(ConfigKeywords, ValuesWithoutAWord) {
    EXPECT_EQ(zuSaHpiConfigWord(ZUSAHPI_CONF_EVENT_LOG, 4), nullptr);
    EXPECT_EQ(zuSaHpiConfigWord(ZUSAHPI_CONF_SIZE, 1), nullptr);
    EXPECT_EQ(zuSaHpiConfigWord(ZUSAHPI_CONF_FILE_NAME, 1), nullptr);
    EXPECT_EQ(zuSaHpiConfigWord(0, 0), nullptr);
}

TEST(ConfigKeywords, ExpectationsForMessages) {
    EXPECT_EQ(expectation(*findKeyword("EventLog")), "simple, circular, linked or syslog");
    EXPECT_EQ(expectation(*findKeyword("Enabled")), "yes or no");
    EXPECT_EQ(expectation(*findKeyword("Size")), "a number from 1 to 4294967295");
}
