// Goal: every entry is one readable line, with the right type, state, direction, severity and time
// for each record of the sample files, and without a character that could disturb a terminal.
#include "tools/evtlogctl/log_line.h"

#include <algorithm>
#include <cstring>

#include <gtest/gtest.h>

#include "tests/evtlogctl/plain_entries.h"
#include "tests/evtlogctl/sel_samples.h"
#include "tests/support/files.h"

namespace {

using namespace zusahpi;
using evtlogctl::logLine;
using plain_entries::plainEntry;
using plain_entries::putText;
using sel_samples::entryOf;

// What comes after the source.
std::string eventPart(const EventLogEntryRecord &entry) {
    const std::string line = logLine(entry);
    constexpr const char *head =
        "     7  2023-12-19T04:16:51.250Z  major          resource 5       ";
    EXPECT_EQ(line.substr(0, std::strlen(head)), head);
    return line.substr(std::strlen(head));
}

TEST(LogLine, SampleFilesAreListedAsReviewed) {
    const std::pair<std::string, std::string> files[] = {
        {sel_samples::exampleFile("server.sel"), "server.list.txt"},
        {sel_samples::dataFile("session-audit-10.sel"), "session-audit-10.list.txt"},
        {sel_samples::dataFile("misc-30.sel"), "misc-30.list.txt"},
    };
    for (const auto &[file, list] : files) {
        std::string lines;
        std::uint32_t id = 0;
        for (const sel::Record &record : sel_samples::recordsOf(file)) {
            lines += logLine(entryOf(record, ++id)) + "\n";
        }
        EXPECT_EQ(lines, test_support::readFile(sel_samples::dataFile(list))) << file;
    }
}

TEST(LogLine, EventWithoutATimeShowsWhenItWasLogged) {
    EventLogEntryRecord entry = plainEntry(SAHPI_ET_RESOURCE);
    entry.entry.Event.Timestamp = SAHPI_TIME_UNSPECIFIED;
    EXPECT_EQ(logLine(entry), "     7  2023-11-14T22:13:20Z      major          resource 5       "
                              "Resource Failure (time of logging)");
}

TEST(LogLine, ResourceAndDomainEvents) {
    EventLogEntryRecord entry = plainEntry(SAHPI_ET_RESOURCE);
    entry.entry.Event.EventDataUnion.ResourceEvent.ResourceEventType = SAHPI_RESE_RESOURCE_ADDED;
    EXPECT_EQ(eventPart(entry), "Resource Added");
    entry = plainEntry(SAHPI_ET_DOMAIN);
    entry.entry.Event.EventDataUnion.DomainEvent = {SAHPI_DOMAIN_REF_ADDED, 3};
    EXPECT_EQ(eventPart(entry), "Domain 3 reference added");
    entry.entry.Event.EventDataUnion.DomainEvent = {SAHPI_DOMAIN_REF_REMOVED, 3};
    EXPECT_EQ(eventPart(entry), "Domain 3 reference removed");
}

TEST(LogLine, SensorEventWithAllOptionalData) {
    EventLogEntryRecord entry = plainEntry(SAHPI_ET_SENSOR);
    SaHpiSensorEventT &sensor = entry.entry.Event.EventDataUnion.SensorEvent;
    sensor.SensorNum = 12;
    sensor.SensorType = SAHPI_TEMPERATURE;
    sensor.EventCategory = SAHPI_EC_THRESHOLD;
    sensor.EventState = SAHPI_ES_UPPER_MINOR | SAHPI_ES_UPPER_MAJOR;
    sensor.Assertion = 2; // any value but 0 is true
    sensor.OptionalDataPresent = 0x3F;
    sensor.TriggerReading.IsSupported = SAHPI_TRUE;
    sensor.TriggerReading.Type = SAHPI_SENSOR_READING_TYPE_FLOAT64;
    sensor.TriggerReading.Value.SensorFloat64 = 71.5;
    sensor.TriggerThreshold.IsSupported = SAHPI_TRUE;
    sensor.TriggerThreshold.Type = SAHPI_SENSOR_READING_TYPE_UINT64;
    sensor.TriggerThreshold.Value.SensorUint64 = 70;
    sensor.PreviousState = SAHPI_ES_UPPER_MINOR;
    sensor.CurrentState = 0;
    sensor.Oem = 0x12;
    sensor.SensorSpecific = 0xABCDEF;
    EXPECT_EQ(eventPart(entry),
              "Temperature sensor 12: Upper Minor + Upper Major asserted, reading 71.5, threshold "
              "70, previously Upper Minor, currently unspecified state, OEM data 0x0012, sensor "
              "data 0xABCDEF");
}

TEST(LogLine, Readings) {
    EventLogEntryRecord entry = plainEntry(SAHPI_ET_SENSOR);
    SaHpiSensorEventT &sensor = entry.entry.Event.EventDataUnion.SensorEvent;
    sensor.SensorType = SAHPI_FAN;
    sensor.OptionalDataPresent = SAHPI_SOD_TRIGGER_READING;
    const std::string head = "Fan sensor 0: unspecified state deasserted, reading ";
    EXPECT_EQ(eventPart(entry), head + "none");
    sensor.TriggerReading.IsSupported = SAHPI_TRUE;
    sensor.TriggerReading.Value.SensorInt64 = -3;
    EXPECT_EQ(eventPart(entry), head + "-3");
    sensor.TriggerReading.Type = SAHPI_SENSOR_READING_TYPE_BUFFER;
    std::fill(std::begin(sensor.TriggerReading.Value.SensorBuffer),
              std::end(sensor.TriggerReading.Value.SensorBuffer), std::uint8_t{0xA5});
    std::string bytes = "A5";
    for (int i = 1; i < SAHPI_SENSOR_BUFFER_LENGTH; ++i) {
        bytes += " A5";
    }
    EXPECT_EQ(eventPart(entry), head + bytes);
    sensor.TriggerReading.Type = static_cast<SaHpiSensorReadingTypeT>(9);
    EXPECT_EQ(eventPart(entry), head + "of type 9");
}

TEST(LogLine, OtherSensorAndHotSwapEvents) {
    EventLogEntryRecord entry = plainEntry(SAHPI_ET_SENSOR_ENABLE_CHANGE);
    auto &change = entry.entry.Event.EventDataUnion.SensorEnableChangeEvent;
    change.SensorNum = 3;
    change.SensorType = SAHPI_VOLTAGE;
    change.SensorEnable = SAHPI_TRUE;
    EXPECT_EQ(eventPart(entry), "Voltage sensor 3: sensor enabled, events disabled");
    entry = plainEntry(SAHPI_ET_HOTSWAP);
    entry.entry.Event.EventDataUnion.HotSwapEvent = {SAHPI_HS_STATE_ACTIVE,
                                                     SAHPI_HS_STATE_INSERTION_PENDING};
    EXPECT_EQ(eventPart(entry), "Hot swap: Active, previously Insertion Pending");
    entry = plainEntry(SAHPI_ET_WATCHDOG);
    entry.entry.Event.EventDataUnion.WatchdogEvent = {1, SAHPI_WAE_POWER_DOWN, SAHPI_WPI_SMI,
                                                      SAHPI_WTU_OS_LOAD};
    EXPECT_EQ(eventPart(entry),
              "Watchdog 1: action Power Down, pre-timer interrupt Smi, use Os Load");
}

TEST(LogLine, TextsAndBytes) {
    EventLogEntryRecord entry = plainEntry(SAHPI_ET_USER);
    SaHpiTextBufferT &text = entry.entry.Event.EventDataUnion.UserEvent.UserEventData;
    putText(text, "door %n open\x1B[2J\n\xC3\xA4");
    EXPECT_EQ(eventPart(entry), "User: door %n open.[2J...");
    putText(text, std::string("\x01\xAB", 2), SAHPI_TL_TYPE_BINARY);
    EXPECT_EQ(eventPart(entry), "User: 01 AB");
    entry = plainEntry(SAHPI_ET_OEM);
    entry.entry.Event.EventDataUnion.OemEvent.MId = 0x137;
    putText(entry.entry.Event.EventDataUnion.OemEvent.OemEventData, "hello");
    EXPECT_EQ(eventPart(entry), "OEM event, manufacturer 0x000137: hello");
    entry = plainEntry(SAHPI_ET_HPI_SW);
    entry.entry.Event.EventDataUnion.HpiSwEvent.Type = SAHPI_HPIE_STARTUP;
    putText(entry.entry.Event.EventDataUnion.HpiSwEvent.EventData, "up");
    EXPECT_EQ(eventPart(entry), "HPI software, manufacturer 0x000000: Startup: up");
    entry = plainEntry(static_cast<SaHpiEventTypeT>(99));
    EXPECT_EQ(eventPart(entry), "event of unknown type 99");
}

TEST(LogLine, TagAndIdStringNameTheSource) {
    EventLogEntryRecord entry = plainEntry(SAHPI_ET_SENSOR);
    entry.rpt.ResourceCapabilities = SAHPI_CAPABILITY_RESOURCE;
    putText(entry.rpt.ResourceTag, "Shelf 1");
    entry.rdr.RdrType = SAHPI_SENSOR_RDR;
    putText(entry.rdr.IdString, "Inlet");
    EXPECT_EQ(logLine(entry), "     7  2023-12-19T04:16:51.250Z  major          Shelf 1          "
                              "Inlet: unspecified state deasserted");
    entry.rpt.ResourceCapabilities = 0;
    entry.rdr.RdrType = SAHPI_NO_RECORD;
    EXPECT_EQ(eventPart(entry), "0 sensor 0: unspecified state deasserted");
}

TEST(LogLine, HostileEntriesGivePrintableLines) {
    std::mt19937_64 random(0x11E);
    for (int i = 0; i < 3000; ++i) {
        EventLogEntryRecord entry;
        auto *bytes = reinterpret_cast<unsigned char *>(&entry);
        for (std::size_t at = 0; at < sizeof entry; ++at) {
            bytes[at] = static_cast<unsigned char>(random());
        }
        entry.entry.Event.EventType = static_cast<SaHpiEventTypeT>(random() % 10);
        const std::string line = logLine(entry);
        EXPECT_TRUE(std::all_of(line.begin(), line.end(), [](char letter) {
            return letter >= 0x20 && letter <= 0x7E;
        })) << line;
    }
}

} // namespace
