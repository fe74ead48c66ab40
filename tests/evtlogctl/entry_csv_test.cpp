// Goal: an entry is one line of comma-separated values with as many columns as the header names,
// whatever its texts hold.
#include "tools/evtlogctl/entry_csv.h"

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/evtlogctl/plain_entries.h"
#include "tests/evtlogctl/sel_samples.h"

namespace {

using namespace zusahpi;

std::string csvOf(const EventLogEntryRecord &entry) {
    std::string text;
    evtlogctl::appendEntryCsv(text, entry);
    return text;
}

EventLogEntryRecord userEvent(const std::string &text) {
    EventLogEntryRecord entry = plain_entries::plainEntry(SAHPI_ET_USER);
    entry.entry.Event.Source = SAHPI_UNSPECIFIED_RESOURCE_ID;
    entry.entry.Event.Timestamp = 42'000'000'000;
    entry.entry.Event.Severity = SAHPI_OK;
    plain_entries::putText(entry.entry.Event.EventDataUnion.UserEvent.UserEventData, text);
    return entry;
}

TEST(EntryCsv, AWholeLine) {
    setenv("TZ", "CET-1", 1);
    tzset();
    const EventLogEntryRecord entry = sel_samples::entryOf(
        sel_samples::record("e7 00 02 2b 11 d4 65 01 00 04 13 a1 6f ab 00 09"), 231);
    EXPECT_EQ(csvOf(entry),
              "231,2023-11-14T23:13:20.000000000+01:00,2024-02-20T03:40:43.000000000+01:00,"
              "major,sensor,\"BIOS\",\"Critical Interrupt 0xA1\",\"Critical Interrupt 0xA1: bus "
              "degraded asserted, OEM data 0x0009\"");
}

TEST(EntryCsv, QuotesAndCommasInTexts) {
    setenv("TZ", "UTC0", 1);
    tzset();
    EXPECT_EQ(csvOf(userEvent("say \"no\", twice\n")),
              "7,2023-11-14T22:13:20.000000000Z,+0d00:00:42.000000000,ok,user,\"-\",\"\","
              "\"User: say \"\"no\"\", twice.\"");
}

TEST(EntryCsv, NumbersWithoutAName) {
    EventLogEntryRecord entry = userEvent("");
    const std::uint32_t odd = 77;
    std::memcpy(&entry.entry.Event.EventType, &odd, sizeof odd);
    std::memcpy(&entry.entry.Event.Severity, &odd, sizeof odd);
    const std::string line = csvOf(entry);
    const std::uint32_t everyType = 0xFFFFFFFF;
    std::memcpy(&entry.entry.Event.EventType, &everyType, sizeof everyType);
    EXPECT_NE(csvOf(entry).find(",77,4294967295,"), std::string::npos);
    EXPECT_NE(line.find(",77,77,\"-\",\"\",\"event of unknown type 77\""), std::string::npos)
        << line;
}

// The values of a line, read as RFC 4180 says.
std::vector<std::string> valuesOf(const std::string &line) {
    std::vector<std::string> values(1);
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const bool doubled = quoted && line.compare(i, 2, "\"\"") == 0;
        if (line[i] == '"' && !doubled) {
            quoted = !quoted;
        } else if (line[i] == ',' && !quoted) {
            values.emplace_back();
        } else {
            values.back() += line[i];
            i += doubled ? 1 : 0;
        }
    }
    EXPECT_FALSE(quoted) << line;
    return values;
}

TEST(EntryCsv, AsManyColumnsAsTheHeader) {
    std::string header = evtlogctl::csvHeader();
    ASSERT_EQ(header.back(), '\n');
    header.pop_back();
    const std::size_t columns = valuesOf(header).size();
    std::string every;
    for (int byte = 0; byte < 256; ++byte) {
        every += static_cast<char>(byte);
    }
    for (const std::string &text :
         {every.substr(0, 128), every.substr(128), std::string("\"\",\"\r\n,")}) {
        const std::string line = csvOf(userEvent(text));
        EXPECT_EQ(valuesOf(line).size(), columns);
        EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos);
    }
    EXPECT_EQ(valuesOf(csvOf(userEvent("a\"b,c"))).back(), "User: a\"b,c");
}

} // namespace
