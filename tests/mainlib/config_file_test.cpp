// Goal: a configuration becomes exactly the tree that it says, a wrong one an error that names the
// place, what was expected and what stood there, and no text at all harms the reader.
#include "mainlib/config_file.h"

#include <cerrno>
#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/mainlib/config_tree.h"
#include "tests/mainlib/random_text.h"
#include "tests/support/files.h"
#include "zuSaHpi_default_mainlib.h"

namespace {

using namespace std::string_literals;
using random_text::below;
using random_text::mutate;
using zusahpi::mainlib::Configuration;
using zusahpi::mainlib::maxFileSize;
using zusahpi::mainlib::readConfiguration;

// The tree as text, or the error.
std::string outcome(std::string_view text) {
    const Configuration configuration = readConfiguration("log.conf", text);
    if (!configuration.error.empty()) {
        EXPECT_TRUE(configuration.nodes.empty());
        return configuration.error;
    }
    if (configuration.nodes.empty()) {
        return "";
    }
    config_tree::expectSound(&configuration.nodes.front());
    return config_tree::textOf(&configuration.nodes.front());
}

void expectErrors(const std::vector<std::pair<std::string, std::string>> &rows) {
    for (const auto &[text, error] : rows) {
        EXPECT_EQ(outcome(text), "log.conf:" + error) << text;
    }
}

constexpr std::string_view wholeMap = "EventLog=linked {\n"
                                      "  Filename=log\n"
                                      "  Size=100\n"
                                      "  Syslog=yes {\n"
                                      "    EventLogSyslogEventType=all {\n"
                                      "      EventLogSyslogSeverity=debug {\n"
                                      "        EventLogSyslogLevel=none\n"
                                      "      }\n"
                                      "    }\n"
                                      "    SyslogFollowsState=yes\n"
                                      "  }\n"
                                      "}\n";

constexpr std::string_view wholeMapTree = "1: EventLog 100000 2\n"
                                          "  2: Filename 100001 3 \"log\"\n"
                                          "  3: Size 100003 100\n"
                                          "  4: Syslog 100009 1\n"
                                          "    5: EventLogSyslogEventType 100010 4294967295\n"
                                          "      6: EventLogSyslogSeverity 100011 240\n"
                                          "        7: EventLogSyslogLevel 100012 4294967295\n"
                                          "    10: SyslogFollowsState 100013 1\n";

} // namespace

TEST(ConfigFile, BracesMakeATree) {
    EXPECT_EQ(outcome(wholeMap), wholeMapTree);
}

TEST(ConfigFile, LineEndsOfOtherSystems) {
    std::string text;
    for (const char character : wholeMap) {
        text += character == '\n' ? "\r\n"s : std::string(1, character);
    }
    EXPECT_EQ(outcome(text), wholeMapTree);
}

TEST(ConfigFile, LayoutIsFree) {
    const std::string oneLine = "EventLog=linked{Filename=log Size=100 Syslog=yes"
                                "{EventLogSyslogEventType=all{}}Enabled=no}";
    EXPECT_EQ(outcome(oneLine), "1: EventLog 100000 2\n"
                                "  1: Filename 100001 3 \"log\"\n"
                                "  1: Size 100003 100\n"
                                "  1: Syslog 100009 1\n"
                                "    1: EventLogSyslogEventType 100010 4294967295\n"
                                "  1: Enabled 100006 0\n");
    EXPECT_EQ(outcome("EventLog \t = \t linked # type\n\n# between\n{\n\tSize\t=5#five\n}"),
              "1: EventLog 100000 2\n"
              "  5: Size 100003 5\n");
}

TEST(ConfigFile, EmptyFilesHaveNoNodes) {
    EXPECT_EQ(outcome(""), "");
    EXPECT_EQ(outcome(" \t\r\n"), "");
    EXPECT_EQ(outcome("# only a comment"), "");
    EXPECT_EQ(outcome("#\0\x01\xFF\n"s), "");
}

TEST(ConfigFile, KeywordsStandAsWritten) {
    EXPECT_EQ(outcome("EVENTLOG=Circular { size=7 }"), "1: EVENTLOG 100000 1\n"
                                                       "  1: size 100003 7\n");
}

TEST(ConfigFile, StringsBareAndQuoted) {
    const auto fileName = [](const std::string &value) {
        return outcome("EventLog=simple { Filename=" + value + " }");
    };
    const std::string before = "1: EventLog 100000 0\n  1: Filename 100001 ";
    EXPECT_EQ(fileName("/var/lib/a-b_c.el,v~"), before + "20 \"/var/lib/a-b_c.el,v~\"\n");
    EXPECT_EQ(fileName("\"with blank {}=#\""), before + "15 \"with blank {}=#\"\n");
    EXPECT_EQ(fileName(R"("a\"b\\c")"), before + "5 \"a\"b\\c\"\n");
    EXPECT_EQ(fileName(R"(a\b)"), before + "3 \"a\\b\"\n");
    EXPECT_EQ(fileName("\xC3\xA9"), before + "2 \"\xC3\xA9\"\n");
    EXPECT_EQ(fileName("100"), before + "3 \"100\"\n");
    EXPECT_EQ(fileName("\"\""), before + "0 \"\"\n");
    EXPECT_EQ(outcome("EventLog=\"linked\" { Size=\"12\" }"), "1: EventLog 100000 2\n"
                                                              "  1: Size 100003 12\n");
}

TEST(ConfigFile, StringsUpToTheArrayOfANode) {
    const std::string longest(256, 'n');
    EXPECT_EQ(outcome("EventLog=simple { Filename=" + longest + " }"),
              "1: EventLog 100000 0\n  1: Filename 100001 256 \"" + longest + "\"\n");
    expectErrors({{"EventLog=simple { Filename=" + longest + "n }",
                   "1:28: expected a text of at most 256 characters, found " +
                       std::string(40, 'n') + "..."}});
}

TEST(ConfigFile, UnknownKeywordsAreForTheLibraryToReport) {
    EXPECT_EQ(outcome("EventLog=linked { Sise=10 Syslog=yes { Lvel=\"a b\" } }"),
              "1: EventLog 100000 2\n"
              "  1: Sise 0 2 \"10\"\n"
              "  1: Syslog 100009 1\n"
              "    1: Lvel 0 3 \"a b\"\n");
}

TEST(ConfigFile, SectionsOfOthersArePassedOver) {
    // Known keywords mean nothing there, so their values are not looked at.
    EXPECT_EQ(outcome("Domain=1 {\n Size=huge { EventLog=x }\n}\nEventLog=linked"),
              "1: Domain 0 1 \"1\"\n"
              "  2: Size 0 4 \"huge\"\n"
              "    2: EventLog 0 1 \"x\"\n"
              "4: EventLog 100000 2\n");
}

TEST(ConfigFile, MisplacedKeywords) {
    expectErrors(
        {{"Size=5", "1:1: expected Size under EventLog, found Size at the top level"},
         {"EventLog=linked {\n  EventLog=linked\n}",
          "2:3: expected EventLog at the top level, found EventLog under EventLog"},
         {"EventLog=linked { Syslog=yes { filename=x } }",
          "1:32: expected Filename under EventLog, found Filename under Syslog"},
         {"EventLog=linked { SyslogFollowsState=yes }",
          "1:19: expected SyslogFollowsState under Syslog, found SyslogFollowsState under "
          "EventLog"},
         {"EventLogSyslogLevel=none", "1:1: expected EventLogSyslogLevel under "
                                      "EventLogSyslogSeverity, found EventLogSyslogLevel at the "
                                      "top level"}});
}

TEST(ConfigFile, WrongValues) {
    expectErrors(
        {{"EventLog=lnked", "1:10: expected simple, circular, linked or syslog, found lnked"},
         {"EventLog=4", "1:10: expected simple, circular, linked or syslog, found 4"},
         {"EventLog=linked {\n\tSize=0\n}", "2:7: expected a number from 1 to 4294967295, found 0"},
         {"EventLog=linked { Size=4294967296 }",
          "1:24: expected a number from 1 to 4294967295, found 4294967296"},
         {"EventLog=linked { Size=-1 }", "1:24: expected a number from 1 to 4294967295, found -1"},
         {"EventLog=linked { Size=" + std::string(1000, '9') + " }",
          "1:24: expected a number from 1 to 4294967295, found " + std::string(40, '9') + "..."},
         {"EventLog=linked { UserEventMaxSize=256 }",
          "1:36: expected a number from 0 to 255, found 256"},
         {"EventLog=linked { Enabled=maybe }", "1:27: expected yes or no, found maybe"},
         {"EventLog=linked { Enabled=2 }", "1:27: expected yes or no, found 2"},
         {"EventLog=linked { Enabled=\"\" }", "1:27: expected yes or no, found \"\""},
         {"EventLog=linked { Overflow=\"wrap around\" }",
          "1:28: expected drop, wrap or writelast, found \"wrap around\""}});
}

TEST(ConfigFile, WrongSyslogMap) {
    const std::string type = "EventLog=linked { Syslog=yes {\nEventLogSyslogEventType=";
    expectErrors(
        {{type + "9", "2:25: expected resource, domain, sensor, sensor_enable_change, hotswap, "
                      "watchdog, hpi_sw, oem, user or all, found 9"},
         {type + "all { EventLogSyslogSeverity=5",
          "2:54: expected critical, major, minor, informational, ok, debug or all, found 5"},
         {type + "all { EventLogSyslogSeverity=ok { EventLogSyslogLevel=8",
          "2:79: expected emerg, alert, crit, err, warning, notice, info, debug or none, found "
          "8"}});
}

TEST(ConfigFile, WrongSyntax) {
    expectErrors(
        {{"EventLog", "1:9: expected '=', found end of file"},
         {"EventLog\n=linked", "1:9: expected '=', found end of line"},
         {"EventLog linked", "1:10: expected '=', found linked"},
         {"EventLog { Size=1 }", "1:10: expected '=', found '{'"},
         {"EventLog=", "1:10: expected a value, found end of file"},
         {"EventLog=\r\nlinked", "1:10: expected a value, found end of line"},
         {"EventLog= # none", "1:11: expected a value, found a comment"},
         {"EventLog=={", "1:10: expected a value, found '='"},
         {"EventLog={", "1:10: expected a value, found '{'"},
         {"EventLog=linked=2", "1:16: expected a blank after the value, found '='"},
         {"EventLog=\"linked\"2", "1:18: expected a blank after the value, found 2"},
         {"EventLog=linked \"x\"", "1:17: expected a keyword, found \"x\""},
         {"EventLog=linked 5=5", "1:17: expected a keyword, found 5"},
         {"EventLog=linked }", "1:17: expected a keyword, found '}'"},
         {"{", "1:1: expected a keyword, found '{'"},
         {"EventLog=linked { { } }", "1:19: expected a keyword or '}', found '{'"},
         {"EventLog=linked { } { }", "1:21: expected a keyword, found '{'"},
         {"EventLog=linked { Size=5 { } }", "1:26: expected a keyword or '}', found '{'"}});
}

TEST(ConfigFile, WrongQuotes) {
    expectErrors({{"EventLog=linked {\n Filename=\"log\n}",
                   "2:15: expected '\"' on this line, found end of line"},
                  {"EventLog=linked { Filename=\"log",
                   "1:32: expected '\"' on this line, found end of file"},
                  {"EventLog=linked { Filename=\"a\tb\" }",
                   "1:30: expected '\"' on this line, found a blank"},
                  {R"(EventLog=linked { Filename="a\nb" })",
                   R"(1:31: expected '"' or '\' after '\', found nb)"},
                  {R"(EventLog=linked { Filename="a\)",
                   R"(1:31: expected '"' or '\' after '\', found end of file)"}});
}

TEST(ConfigFile, BracesThatStayOpen) {
    expectErrors({{"EventLog=linked {\n  Size=5\n",
                   "3:1: expected '}' for the '{' in line 1, found end of file"},
                  {"EventLog=linked {\n  Syslog=yes\n  {\n  Enabled=no }",
                   "4:3: expected Enabled under EventLog, found Enabled under Syslog"},
                  {"EventLog=linked {\n  Syslog=yes\n  {\n",
                   "4:1: expected '}' for the '{' in line 3, found end of file"}});
}

TEST(ConfigFile, BytesThatAreNoText) {
    expectErrors({{"\0"s, "1:1: expected a keyword, found \\x00"},
                  {"\xEF\xBB\xBF"s, "1:1: expected a keyword, found \\xEF\\xBB\\xBF"},
                  {"EventLog=\0"s, "1:10: expected a value, found \\x00"},
                  {"EventLog=linked\0"s, "1:16: expected a blank after the value, found \\x00"},
                  {"EventLog\x1B[2J=linked", "1:9: expected '=', found \\x1B[2J"},
                  {"EventLog=linked { Filename=\"\0\" }"s,
                   "1:29: expected '\"' on this line, found \\x00"}});
}

TEST(ConfigFile, LongKeywords) {
    const std::string longest(255, 'k');
    EXPECT_EQ(outcome(longest + "=1"), "1: " + longest + " 0 1 \"1\"\n");
    expectErrors({{longest + "k=1", "1:1: expected a keyword of at most 255 characters, found " +
                                        std::string(40, 'k') + "..."}});
}

TEST(ConfigFile, DepthIsBounded) {
    std::string text;
    for (int i = 0; i < 32; ++i) {
        text += "a=1{";
    }
    EXPECT_EQ(outcome(text + "a=1" + std::string(32, '}')).substr(0, 11), "1: a 0 1 \"1");
    expectErrors({{text + "a=1{", "1:132: expected at most 32 levels of braces, found '{'"}});
    for (int i = 0; i < 100'000; ++i) {
        text += "a=1{";
    }
    expectErrors({{text, "1:132: expected at most 32 levels of braces, found '{'"}});
    expectErrors({{std::string(1'000'000, '{'), "1:1: expected a keyword, found '{'"}});
}

TEST(ConfigFile, NumberOfKeywordsIsBounded) {
    std::string text;
    for (int i = 0; i < 10'000; ++i) {
        text += "a=1\n";
    }
    EXPECT_EQ(outcome(text).size(), std::string("1: a 0 1 \"1\"\n").size() * 10'000 + 28'894);
    expectErrors({{text + "a=1\n", "10001:1: expected at most 10000 keywords, found a"}});
}

TEST(ConfigFile, LongLines) {
    const std::string million(1U << 20U, 'x');
    EXPECT_EQ(outcome("EventLog=linked #" + million), "1: EventLog 100000 2\n");
    EXPECT_EQ(outcome(std::string(1U << 20U, ' ') + "EventLog=linked"), "1: EventLog 100000 2\n");
    expectErrors(
        {{"EventLog=" + million, "1:10: expected simple, circular, linked or syslog, "
                                 "found " +
                                     std::string(40, 'x') + "..."},
         {"EventLog=linked { Filename=\"" + million + "\" }",
          "1:28: expected a text of at most 256 characters, found \"" + std::string(39, 'x') +
              "..."},
         {std::string(1U << 20U, '\n') + "}", "1048577:1: expected a keyword, found '}'"}});
}

TEST(ConfigFile, TextsThatAreTooLarge) {
    EXPECT_EQ(outcome(std::string(maxFileSize, '\n')), "");
    EXPECT_EQ(outcome(std::string(maxFileSize + 1, '\n')),
              "log.conf: cannot be read: larger than 4194304 bytes");
}

TEST(ConfigFile, AnyChangeGivesATreeOrAnError) {
    constexpr unsigned seed = 321;
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    constexpr std::string_view pieces = "{}=#\"\\ \n\r\t0123456789azAZ_-x";
    for (int i = 0; i < 30'000; ++i) {
        std::string text(wholeMap);
        for (std::size_t changes = 1 + below(random, 6); changes > 0; --changes) {
            mutate(random, pieces, text);
        }
        const std::string result = outcome(text);
        ASSERT_TRUE(result.starts_with("log.conf:") == (result.find(": expected ") < 30)) << text;
    }
}

TEST(ConfigFile, FilesAreRead) {
    const test_support::ScratchFolder folder;
    const std::string path = folder.file("log.conf");
    test_support::writeFile(path, wholeMap);
    zuSaHpiConfigT config = zuSaHpiConfigFileRead(path.c_str());
    EXPECT_EQ(config.error, nullptr);
    EXPECT_EQ(config_tree::textOf(config.nodes), wholeMapTree);
    zuSaHpiConfigRelease(&config);
    EXPECT_EQ(config.nodes, nullptr);
    EXPECT_EQ(config.storage, nullptr);
    zuSaHpiConfigRelease(&config);
}

TEST(ConfigFile, ErrorsNameTheFile) {
    const test_support::ScratchFolder folder;
    const std::string path = folder.file("log.conf");
    test_support::writeFile(path, "EventLog=linked\n{ Size=0 }");
    zuSaHpiConfigT config = zuSaHpiConfigFileRead(path.c_str());
    EXPECT_EQ(config.nodes, nullptr);
    EXPECT_EQ(config.error, path + ":2:8: expected a number from 1 to 4294967295, found 0");
    zuSaHpiConfigRelease(&config);
    EXPECT_EQ(config.error, nullptr);
}

TEST(ConfigFile, FilesThatCannotBeRead) {
    const test_support::ScratchFolder folder;
    const std::string missing = folder.file("missing");
    zuSaHpiConfigT config = zuSaHpiConfigFileRead(missing.c_str());
    EXPECT_EQ(config.nodes, nullptr);
    EXPECT_EQ(config.error, missing + ": cannot be read: No such file or directory");
    zuSaHpiConfigRelease(&config);

    config = zuSaHpiConfigFileRead(folder.path().c_str());
    EXPECT_EQ(config.error, folder.path() + ": cannot be read: Is a directory");
    zuSaHpiConfigRelease(&config);

    config = zuSaHpiConfigFileRead("/dev/zero");
    EXPECT_STREQ(config.error, "/dev/zero: cannot be read: larger than 4194304 bytes");
    zuSaHpiConfigRelease(&config);
}

TEST(ConfigFile, TextsInMemoryNeedNoNul) {
    const char text[] = {'E', 'v', 'e', 'n', 't', 'L', 'o', 'g', '=', '1', '2'};
    zuSaHpiConfigT config = zuSaHpiConfigTextRead("memory", text, sizeof text - 1);
    EXPECT_EQ(config_tree::textOf(config.nodes), "1: EventLog 100000 1\n");
    zuSaHpiConfigRelease(&config);
    config = zuSaHpiConfigTextRead("memory", text, 0);
    EXPECT_EQ(config.nodes, nullptr);
    EXPECT_EQ(config.error, nullptr);
    zuSaHpiConfigRelease(&config);
}
