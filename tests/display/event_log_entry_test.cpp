// Goal: the nine lines of the log's info record, and an entry's lines with its event's indents.

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "tests/display/printed.h"
#include "tests/display/records.h"
#include "zuSaHpi_util.h"

namespace {

Printed display(const SaHpiEventLogInfoT &info, const char *indent) {
    const auto copy = std::make_unique<SaHpiEventLogInfoT>(info);
    return printedBy(
        [&](zuSaHpiHandleT out) { return zuSaHpiPrintEventLogInfo(out, copy.get(), indent); });
}

Printed display(const SaHpiEventLogEntryT &entry, const char *indent) {
    const auto copy = std::make_unique<SaHpiEventLogEntryT>(entry);
    return printedBy(
        [&](zuSaHpiHandleT out) { return zuSaHpiPrintEventLogEntry(out, copy.get(), indent); });
}

TEST(EventLogInfo, NineLines) {
    SaHpiEventLogInfoT info{};
    info.Entries = 0xFFFFFFFF;
    info.Size = 0x80000000;
    info.UserEventMaxSize = 255;
    info.UpdateTimestamp = -1;
    info.CurrentTime = SAHPI_TIME_UNSPECIFIED;
    info.Enabled = 0x80;
    info.OverflowFlag = SAHPI_FALSE;
    info.OverflowResetable = SAHPI_TRUE;
    info.OverflowAction = SAHPI_EL_OVERFLOW_OVERWRITE;
    const Printed printed = display(info, ">");
    EXPECT_EQ(printed.text, expectedText("log_info.txt"));
    EXPECT_EQ(printed.result, static_cast<int>(std::string(": Overwrite\n").size()));
}

TEST(EventLogInfo, EachFlagHasItsLine) {
    SaHpiEventLogInfoT info{};
    info.OverflowFlag = 2;
    info.OverflowAction = static_cast<SaHpiEventLogOverflowActionT>(2);
    EXPECT_EQ(display(info, "").text, "Entries              0\n"
                                      "Size                 0\n"
                                      "UserEventMaxSize     0\n"
                                      "UpdateTimestamp      time(0,0)\n"
                                      "CurrentTime          time(0,0)\n"
                                      "Enabled              No\n"
                                      "OverflowFlag         Yes\n"
                                      "OverflowResetable    No\n"
                                      "OverflowAction      2\n");
}

TEST(EventLogInfo, TheIndentIsNoFormatAndNeverCut) {
    const std::string indent = "%s%n" + std::string(60, '-');
    const std::string text = display(SaHpiEventLogInfoT{}, indent.c_str()).text;
    EXPECT_EQ(text.substr(0, indent.size() + 9), indent + "Entries  ");
}

SaHpiEventLogEntryT userEntry() {
    SaHpiEventLogEntryT entry{};
    entry.EntryId = 0xFFFFFFFF;
    entry.Timestamp = SAHPI_TIME_UNSPECIFIED;
    entry.Event.Source = 0;
    entry.Event.EventType = SAHPI_ET_USER;
    entry.Event.Timestamp = -1;
    entry.Event.Severity = SAHPI_INFORMATIONAL;
    entry.Event.EventDataUnion.UserEvent.UserEventData = textBuffer(SAHPI_TL_TYPE_TEXT, "hello");
    return entry;
}

TEST(EventLogEntry, TheEventIsSixBlanksInAndItsBodyEight) {
    const Printed printed = display(userEntry(), "  ");
    EXPECT_EQ(printed.text, expectedText("log_entry.txt"));
    EXPECT_EQ(printed.result, static_cast<int>(std::string("\"hello\"\n").size()));
}

TEST(EventLogEntry, TheEventsUnspecifiedTimeIsSaidSo) {
    SaHpiEventLogEntryT entry = userEntry();
    entry.Event.EventType = SAHPI_ET_DOMAIN;
    entry.Event.Timestamp = SAHPI_TIME_UNSPECIFIED;
    EXPECT_EQ(display(entry, "").text, "EntryId: 4294967295\n"
                                       "Timestamp: time(-9223372036854775808,0)\n"
                                       "Event:\n"
                                       "      Source:      0\n"
                                       "      Event Type:  1: Domain\n"
                                       "      Timestamp is unspecified\n"
                                       "      Severity:    3: Informational\n"
                                       "      Undefined Event Type\n");
}

TEST(EventLogEntry, TheEventsIndentIsCutAtFortyNine) {
    SaHpiEventLogEntryT entry = userEntry();
    entry.Event.EventType = SAHPI_ET_DOMAIN;
    const std::string indent(47, '-');
    const std::string cut = indent + "  ";
    EXPECT_EQ(display(entry, indent.c_str()).text,
              indent + "EntryId: 4294967295\n" + indent +
                  "Timestamp: time(-9223372036854775808,0)\n" + indent + "Event:\n" + cut +
                  "Source:      0\n" + cut + "Event Type:  1: Domain\n" + cut +
                  "Timestamp:   time(-1,0)\n" + cut + "Severity:    3: Informational\n" + cut +
                  "Undefined Event Type\n");
}

} // namespace
