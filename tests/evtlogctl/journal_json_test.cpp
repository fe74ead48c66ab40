// Goal: an entry has the keys and the forms of values that readers of the systemd journal expect.
#include "tools/evtlogctl/journal_json.h"

#include <cstring>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "tests/evtlogctl/plain_entries.h"
#include "tools/evtlogctl/cursor.h"

namespace {

using namespace zusahpi;

EventLogEntryRecord plainEntry() {
    EventLogEntryRecord entry = plain_entries::plainEntry(SAHPI_ET_RESOURCE);
    entry.entry.Event.Timestamp += 999; // less than is told
    return entry;
}

std::string member(const EventLogEntryRecord &entry, const char *key) {
    std::string text;
    evtlogctl::appendJournalJson(text, entry);
    rapidjson::Document document;
    document.Parse(text.c_str());
    EXPECT_FALSE(document.HasParseError()) << text;
    return document.HasMember(key) ? document[key].GetString() : "no member";
}

TEST(JournalJson, AWholeEntry) {
    const EventLogEntryRecord entry = plainEntry();
    std::string text;
    evtlogctl::appendJournalJson(text, entry);
    EXPECT_EQ(text, R"({"__CURSOR":")" + evtlogctl::cursorText(evtlogctl::cursorOf(entry)) +
                        R"(","__REALTIME_TIMESTAMP":"1702959411250000","PRIORITY":"3",)"
                        R"("SYSLOG_IDENTIFIER":"resource 5","MESSAGE":"Resource Failure",)"
                        R"("HPI_ENTRY_ID":"7","HPI_SEVERITY":"1","HPI_EVENT_TYPE":"0",)"
                        R"("HPI_SOURCE":"5"})");
}

TEST(JournalJson, Priorities) {
    const std::pair<std::uint32_t, const char *> priorities[] = {
        {0, "2"}, {1, "3"}, {2, "4"}, {3, "5"}, {4, "5"}, {0xF0, "7"}, {99, "7"}};
    for (const auto &[severity, priority] : priorities) {
        EventLogEntryRecord entry = plainEntry();
        std::memcpy(&entry.entry.Event.Severity, &severity, sizeof severity);
        EXPECT_EQ(member(entry, "PRIORITY"), priority) << severity;
    }
}

TEST(JournalJson, WithoutATimeOfDayWhenItWasLogged) {
    EventLogEntryRecord entry = plainEntry();
    for (const SaHpiTimeT time :
         {SAHPI_TIME_UNSPECIFIED, SaHpiTimeT{42'000'000'000}, SAHPI_TIME_MAX_RELATIVE}) {
        entry.entry.Event.Timestamp = time;
        EXPECT_EQ(member(entry, "__REALTIME_TIMESTAMP"), "1700000000000000");
    }
    entry.entry.Timestamp = -5'000'000;
    EXPECT_EQ(member(entry, "__REALTIME_TIMESTAMP"), "0");
}

} // namespace
