// Goal: a filter lets through exactly the entries that its options name, each part by itself and
// all together, whatever numbers an entry holds.
#include "tools/evtlogctl/entry_filter.h"

#include <cstring>

#include <gtest/gtest.h>

#include "tests/evtlogctl/plain_entries.h"
#include "tests/evtlogctl/sel_samples.h"

namespace {

using namespace zusahpi;
using evtlogctl::EntryFilter;
using evtlogctl::matches;
using plain_entries::happened;
using plain_entries::putText;

// Of the sensor 7, "Fan 3" of the resource 5, "Shelf 1".
EventLogEntryRecord sensorEntry() {
    EventLogEntryRecord entry = plain_entries::plainEntry(SAHPI_ET_SENSOR);
    SaHpiEventT &event = entry.entry.Event;
    event.EventDataUnion.SensorEvent.SensorNum = 7;
    event.EventDataUnion.SensorEvent.SensorType = SAHPI_FAN;
    event.EventDataUnion.SensorEvent.Assertion = SAHPI_TRUE;
    event.EventDataUnion.SensorEvent.EventCategory = SAHPI_EC_THRESHOLD;
    event.EventDataUnion.SensorEvent.EventState = SAHPI_ES_LOWER_MAJOR;
    entry.rpt.ResourceCapabilities = SAHPI_CAPABILITY_SENSOR;
    putText(entry.rpt.ResourceTag, "Shelf 1");
    entry.rdr.RdrType = SAHPI_SENSOR_RDR;
    putText(entry.rdr.IdString, "Fan 3");
    return entry;
}

EventLogEntryRecord withSeverity(std::uint32_t severity) {
    EventLogEntryRecord entry = sensorEntry();
    std::memcpy(&entry.entry.Event.Severity, &severity, sizeof severity);
    return entry;
}

TEST(EntryFilter, AnEmptyOneLetsAllThrough) {
    EXPECT_TRUE(evtlogctl::isEmpty({}));
    EXPECT_TRUE(matches({}, sensorEntry()));
    EXPECT_TRUE(matches({}, withSeverity(0xDEADBEEF)));
}

// The severities that a range lets through, of all that there are and of one that is none.
std::string letThrough(std::string_view range) {
    EntryFilter filter;
    filter.severities = evtlogctl::parseSeverityRange(range);
    if (!filter.severities) {
        return "no range";
    }
    EXPECT_FALSE(evtlogctl::isEmpty(filter));
    std::string numbers;
    for (const std::uint32_t severity : {0U, 1U, 2U, 3U, 4U, 5U, 0xF0U, 0xFFU}) {
        numbers += matches(filter, withSeverity(severity)) ? std::to_string(severity) + " " : "";
    }
    return numbers;
}

TEST(EntryFilter, Severities) {
    EXPECT_EQ(letThrough("critical"), "0 ");
    EXPECT_EQ(letThrough("minor"), "0 1 2 ");
    EXPECT_EQ(letThrough("debug"), "0 1 2 3 4 240 ");
    EXPECT_EQ(letThrough("major..informational"), "1 2 3 ");
    EXPECT_EQ(letThrough("informational..major"), "1 2 3 ");
    EXPECT_EQ(letThrough("ok..ok"), "4 ");
    for (const char *const text : {"", "..", "warn", "major..", "..major", "major..minor..ok",
                                   "Major", "1", "major ", "minor...ok"}) {
        EXPECT_EQ(letThrough(text), "no range") << text;
    }
}

TEST(EntryFilter, WordsForMessages) {
    EXPECT_EQ(evtlogctl::severityWords(), "critical, major, minor, informational, ok or debug");
    EXPECT_EQ(evtlogctl::eventTypeWords(),
              "resource, domain, sensor, sensor_enable_change, hotswap, watchdog, hpi_sw, oem or "
              "user");
}

TEST(EntryFilter, EventTypes) {
    EXPECT_EQ(evtlogctl::eventTypeOf("resource"), SAHPI_ET_RESOURCE);
    EXPECT_EQ(evtlogctl::eventTypeOf("user"), SAHPI_ET_USER);
    EXPECT_FALSE(evtlogctl::eventTypeOf("all"));
    EXPECT_FALSE(evtlogctl::eventTypeOf(""));
    EntryFilter filter;
    filter.types = {SAHPI_ET_USER};
    EXPECT_FALSE(evtlogctl::isEmpty(filter));
    EXPECT_FALSE(matches(filter, sensorEntry()));
    filter.types = {SAHPI_ET_USER, SAHPI_ET_SENSOR};
    EXPECT_TRUE(matches(filter, sensorEntry()));
}

TEST(EntryFilter, BothEndsOfATimeBelongToIt) {
    EntryFilter filter;
    filter.since = happened;
    EXPECT_FALSE(evtlogctl::isEmpty(filter));
    EXPECT_TRUE(matches(filter, sensorEntry()));
    filter.since = happened + 1;
    EXPECT_FALSE(matches(filter, sensorEntry()));
    filter = {};
    filter.until = happened;
    EXPECT_TRUE(matches(filter, sensorEntry()));
    filter.until = happened - 1;
    EXPECT_FALSE(matches(filter, sensorEntry()));
}

TEST(EntryFilter, AnEventWithoutATimeCountsWhenItWasLogged) {
    EventLogEntryRecord entry = sensorEntry();
    entry.entry.Event.Timestamp = SAHPI_TIME_UNSPECIFIED;
    EntryFilter filter;
    filter.since = filter.until = sel_samples::loggedAt;
    EXPECT_TRUE(matches(filter, entry));
}

TEST(EntryFilter, TimeOfLogging) {
    EntryFilter filter;
    filter.loggedAfter = sel_samples::loggedAt - 1;
    EXPECT_FALSE(evtlogctl::isEmpty(filter));
    EXPECT_TRUE(matches(filter, sensorEntry()));
    filter.loggedAfter = sel_samples::loggedAt;
    EXPECT_FALSE(matches(filter, sensorEntry()));
}

bool isFrom(const std::string &source, const EventLogEntryRecord &entry = sensorEntry()) {
    EntryFilter filter;
    filter.sources = {"elsewhere", source};
    EXPECT_FALSE(evtlogctl::isEmpty(filter));
    return matches(filter, entry);
}

TEST(EntryFilter, Sources) {
    EXPECT_TRUE(isFrom("Shelf 1"));
    EXPECT_TRUE(isFrom("5"));
    EXPECT_TRUE(isFrom("0x5"));
    EXPECT_FALSE(isFrom("Shelf"));
    EXPECT_FALSE(isFrom("6"));
    EXPECT_FALSE(isFrom("5x"));
    EXPECT_FALSE(isFrom("0x"));
    EXPECT_FALSE(isFrom(""));
    EventLogEntryRecord entry = sensorEntry();
    entry.rpt.ResourceCapabilities = 0;
    EXPECT_FALSE(isFrom("Shelf 1", entry));
    EXPECT_TRUE(isFrom("resource 5", entry));
    entry.entry.Event.Source = SAHPI_UNSPECIFIED_RESOURCE_ID;
    EXPECT_TRUE(isFrom("-", entry));
}

bool isOf(const std::string &sensor, const EventLogEntryRecord &entry = sensorEntry()) {
    EntryFilter filter;
    filter.sensors = {sensor};
    EXPECT_FALSE(evtlogctl::isEmpty(filter));
    return matches(filter, entry);
}

TEST(EntryFilter, Sensors) {
    EXPECT_TRUE(isOf("Fan 3"));
    EXPECT_TRUE(isOf("7"));
    EXPECT_TRUE(isOf("0x07"));
    EXPECT_FALSE(isOf("Fan"));
    EXPECT_FALSE(isOf("fan 3"));
    EXPECT_FALSE(isOf("8"));
    EventLogEntryRecord entry = sensorEntry();
    entry.rdr.RdrType = SAHPI_NO_RECORD;
    EXPECT_FALSE(isOf("Fan 3", entry));
    EXPECT_TRUE(isOf("Fan sensor 7", entry));
    EXPECT_FALSE(isOf("", entry));
    entry.entry.Event.EventType = SAHPI_ET_SENSOR_ENABLE_CHANGE;
    entry.entry.Event.EventDataUnion.SensorEnableChangeEvent.SensorNum = 12;
    EXPECT_TRUE(isOf("12", entry));
    entry.entry.Event.EventType = SAHPI_ET_WATCHDOG;
    entry.entry.Event.EventDataUnion.WatchdogEvent.WatchdogNum = 2;
    EXPECT_TRUE(isOf("Watchdog 2", entry));
    entry.entry.Event.EventType = SAHPI_ET_USER;
    EXPECT_FALSE(isOf("12", entry));
    EXPECT_FALSE(isOf("", entry));
}

bool says(const std::string &pattern) {
    EntryFilter filter;
    std::string error;
    filter.message = evtlogctl::compilePattern(pattern, error);
    EXPECT_EQ(error, "");
    EXPECT_FALSE(evtlogctl::isEmpty(filter));
    return matches(filter, sensorEntry());
}

TEST(EntryFilter, Patterns) { // on "Fan 3: Lower Major asserted"
    EXPECT_TRUE(says("lower (minor|major)"));
    EXPECT_TRUE(says("^Fan [0-9]:"));
    EXPECT_TRUE(says(""));
    EXPECT_FALSE(says("upper"));
    EXPECT_FALSE(says("LOWER"));
    EXPECT_FALSE(says("Shelf"));
    std::string error;
    EXPECT_EQ(evtlogctl::compilePattern("(", error), nullptr);
    EXPECT_NE(error, "");
}

TEST(EntryFilter, EveryPartMustFit) {
    EntryFilter filter;
    filter.severities = evtlogctl::parseSeverityRange("major");
    filter.types = {SAHPI_ET_SENSOR};
    filter.since = filter.until = happened;
    filter.sources = {"Shelf 1"};
    filter.sensors = {"Fan 3"};
    EXPECT_TRUE(matches(filter, sensorEntry()));
    EXPECT_FALSE(matches(filter, withSeverity(SAHPI_MINOR)));
    filter.sensors = {"Fan 4"};
    EXPECT_FALSE(matches(filter, sensorEntry()));
}

} // namespace
