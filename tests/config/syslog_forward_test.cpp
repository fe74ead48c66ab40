// Goal: the line of every event type, whole; what suppression and missing records leave out; where
// data are dumped; and that any record at all can be forwarded.

#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/test_mainlib.h"
#include "zuSaHpi_util.h"

namespace {

using Lines = std::vector<std::pair<int, std::string>>;

void setText(SaHpiTextBufferT &buffer, std::string_view text, uint32_t type = SAHPI_TL_TYPE_TEXT) {
    buffer.DataType = static_cast<SaHpiTextTypeT>(type);
    buffer.Language = SAHPI_LANG_ENGLISH;
    buffer.DataLength = static_cast<SaHpiUint8T>(text.size());
    std::memset(buffer.Data, '!', sizeof buffer.Data);
    std::memcpy(buffer.Data, text.data(), text.size());
}

// An event with a resource tagged "tag" and a record named "id".
EventLogAddRecord recordOf(uint32_t type, uint32_t severity = SAHPI_MINOR) {
    EventLogAddRecord record{};
    record.event.Source = 12;
    record.event.EventType = static_cast<SaHpiEventTypeT>(type);
    record.event.Severity = static_cast<SaHpiSeverityT>(severity);
    record.rpt.ResourceCapabilities = SAHPI_CAPABILITY_RESOURCE;
    setText(record.rpt.ResourceTag, "tag");
    record.rdr.RdrType = SAHPI_SENSOR_RDR;
    setText(record.rdr.IdString, "id");
    return record;
}

Lines forwarded(const EventLogAddRecord &record) {
    test_mainlib::state().syslog.clear();
    zuSaHpiEventLogSyslogAdd(&record);
    return test_mainlib::state().syslog;
}

// The one line of a minor event.
std::string lineOf(const EventLogAddRecord &record) {
    const Lines lines = forwarded(record);
    EXPECT_EQ(lines.size(), 1U);
    if (lines.empty()) {
        return {};
    }
    EXPECT_EQ(lines[0].first, 4);
    return lines[0].second;
}

SaHpiSensorEventT &sensorOf(EventLogAddRecord &record) {
    return record.event.EventDataUnion.SensorEvent;
}

EventLogAddRecord sensorRecord() {
    EventLogAddRecord record = recordOf(SAHPI_ET_SENSOR);
    SaHpiSensorEventT &sensor = sensorOf(record);
    sensor.SensorNum = 7;
    sensor.SensorType = SAHPI_TEMPERATURE;
    sensor.EventCategory = SAHPI_EC_THRESHOLD;
    sensor.Assertion = SAHPI_TRUE;
    sensor.EventState = SAHPI_ES_UPPER_MAJOR;
    sensor.TriggerReading.IsSupported = SAHPI_TRUE;
    sensor.TriggerReading.Value.SensorInt64 = 75;
    sensor.TriggerThreshold.IsSupported = SAHPI_TRUE;
    sensor.TriggerThreshold.Type = SAHPI_SENSOR_READING_TYPE_FLOAT64;
    sensor.TriggerThreshold.Value.SensorFloat64 = 70.5;
    sensor.CurrentState = 0x12;
    sensor.PreviousState = 0xABCD;
    sensor.Oem = 0xFFFFFFFF;
    sensor.SensorSpecific = 99;
    return record;
}

TEST(SyslogForward, PriorityComesFromTheMap) {
    const SyslogMapEntry plain = zuSaHpiSyslogMapDefault;
    EXPECT_EQ(forwarded(recordOf(SAHPI_ET_USER, SAHPI_CRITICAL)).at(0).first, 2);
    EXPECT_EQ(forwarded(recordOf(SAHPI_ET_USER, SAHPI_DEBUG)).at(0).first, 7);
    EXPECT_EQ(forwarded(recordOf(SAHPI_ET_USER, 77)).at(0).first, 7);
    zuSaHpiSyslogMapDefault.level[SAHPI_OK] = -1;
    EXPECT_EQ(forwarded(recordOf(SAHPI_ET_USER, SAHPI_OK)), Lines{});
    zuSaHpiSyslogMapDefault.level[SAHPI_OK] = 8;
    EXPECT_EQ(forwarded(recordOf(SAHPI_ET_USER, SAHPI_OK)), Lines{});
    zuSaHpiSyslogMapDefault = plain;
}

TEST(SyslogForward, DumpLinesHaveTheSamePriority) {
    EventLogAddRecord record = recordOf(SAHPI_ET_USER, SAHPI_MAJOR);
    setText(record.event.EventDataUnion.UserEvent.UserEventData, "hello", SAHPI_TL_TYPE_BINARY);
    EXPECT_EQ(forwarded(record),
              (Lines{{3, "HPI: User Event; \n"}, {3, "68656c6c 6f  |hello|\n"}}));
}

TEST(SyslogForward, ResourceEvents) {
    EventLogAddRecord record = recordOf(SAHPI_ET_RESOURCE);
    auto &type = record.event.EventDataUnion.ResourceEvent.ResourceEventType;
    type = SAHPI_RESE_RESOURCE_FAILURE;
    EXPECT_EQ(lineOf(record), "HPI: Resource 12 Failure - tag\n");
    type = SAHPI_RESE_RESOURCE_RESTORED;
    EXPECT_EQ(lineOf(record), "HPI: Resource 12 Restored - tag\n");
    type = SAHPI_RESE_RESOURCE_ADDED;
    EXPECT_EQ(lineOf(record), "HPI: Resource 12 Added - tag\n");
    type = static_cast<SaHpiResourceEventTypeT>(3);
    EXPECT_EQ(lineOf(record), "HPI: Resource 12 Undefined Resource Event - tag\n");
}

TEST(SyslogForward, IdsOfResourceAndDomainEventsAreSigned) {
    EventLogAddRecord record = recordOf(SAHPI_ET_RESOURCE);
    record.event.Source = 0xFFFFFFFF;
    EXPECT_EQ(lineOf(record), "HPI: Resource -1 Failure - tag\n");
    record = recordOf(SAHPI_ET_DOMAIN);
    record.event.EventDataUnion.DomainEvent.DomainId = 0x80000000;
    EXPECT_EQ(lineOf(record), "HPI: Domain Reference Added - Domain -2147483648\n");
}

TEST(SyslogForward, DomainEvents) {
    EventLogAddRecord record = recordOf(SAHPI_ET_DOMAIN);
    record.event.EventDataUnion.DomainEvent.DomainId = 5;
    EXPECT_EQ(lineOf(record), "HPI: Domain Reference Added - Domain 5\n");
    for (const uint32_t type : {1U, 7U}) {
        record.event.EventDataUnion.DomainEvent.Type = static_cast<SaHpiDomainEventTypeT>(type);
        EXPECT_EQ(lineOf(record), "HPI: Domain Reference Removed - Domain 5\n");
    }
}

TEST(SyslogForward, SensorEventsWithoutOptionalData) {
    EventLogAddRecord record = sensorRecord();
    EXPECT_EQ(lineOf(record), "HPI: Sensor 7 - Resource 12 tag id (Temperature) Asserted 0x0010 "
                              "Upper Major\n");
    sensorOf(record).Assertion = SAHPI_FALSE;
    sensorOf(record).SensorNum = 0xFFFFFFFF;
    EXPECT_EQ(lineOf(record), "HPI: Sensor 4294967295 - Resource 12 tag id (Temperature) Cleared "
                              "0x0010 Upper Major\n");
    sensorOf(record).Assertion = 2;
    EXPECT_NE(lineOf(record).find("Asserted"), std::string::npos);
}

TEST(SyslogForward, SensorEventsWithAllOptionalData) {
    EventLogAddRecord record = sensorRecord();
    sensorOf(record).OptionalDataPresent = 0x3F;
    EXPECT_EQ(lineOf(record),
              "HPI: Sensor 7 - Resource 12 tag id (Temperature) Asserted 0x0010 Upper Major - "
              "Reading:75 Threshold:70.5 Current State:0x0012 Previous State:0xabcd "
              "Oem Event Data: -1 Sensor Specific Data: 99 \n");
}

TEST(SyslogForward, EachPieceOfOptionalDataHasItsBit) {
    EventLogAddRecord record = sensorRecord();
    const std::vector<std::pair<int, std::string>> pieces = {
        {SAHPI_SOD_TRIGGER_READING, "Reading:75 "},
        {SAHPI_SOD_TRIGGER_THRESHOLD, "Threshold:70.5 "},
        {SAHPI_SOD_OEM, "Oem Event Data: -1 "},
        {SAHPI_SOD_PREVIOUS_STATE, "Previous State:0xabcd "},
        {SAHPI_SOD_CURRENT_STATE, "Current State:0x0012 "},
        {SAHPI_SOD_SENSOR_SPECIFIC, "Sensor Specific Data: 99 "}};
    for (const auto &[bit, piece] : pieces) {
        sensorOf(record).OptionalDataPresent = static_cast<SaHpiSensorOptionalDataT>(bit);
        EXPECT_EQ(lineOf(record), "HPI: Sensor 7 - Resource 12 tag id (Temperature) Asserted "
                                  "0x0010 Upper Major - " +
                                      piece + "\n");
    }
    sensorOf(record).OptionalDataPresent = 0xC0;
    EXPECT_EQ(lineOf(record), "HPI: Sensor 7 - Resource 12 tag id (Temperature) Asserted 0x0010 "
                              "Upper Major\n");
}

TEST(SyslogForward, StatesAreNamedByCategory) {
    EventLogAddRecord record = sensorRecord();
    sensorOf(record).EventCategory = SAHPI_EC_GENERIC;
    EXPECT_NE(lineOf(record).find("0x0010 State 04\n"), std::string::npos);
    sensorOf(record).EventCategory = SAHPI_EC_USAGE;
    EXPECT_NE(lineOf(record).find("0x0010 16\n"), std::string::npos);
    sensorOf(record).EventCategory = 0xFF;
    EXPECT_NE(lineOf(record).find("0x0010 State 04\n"), std::string::npos);
}

TEST(SyslogForward, SeveralStatesAreANumber) {
    EventLogAddRecord record = sensorRecord();
    sensorOf(record).EventState = SAHPI_ES_UPPER_MAJOR | SAHPI_ES_UPPER_MINOR;
    EXPECT_NE(lineOf(record).find("Asserted 0x0018 24\n"), std::string::npos);
}

TEST(SyslogForward, TheTriggerReadingsBufferIsDumped) {
    EventLogAddRecord record = sensorRecord();
    sensorOf(record).OptionalDataPresent = SAHPI_SOD_TRIGGER_READING;
    SaHpiSensorReadingT &reading = sensorOf(record).TriggerReading;
    reading.Type = SAHPI_SENSOR_READING_TYPE_BUFFER;
    std::memset(reading.Value.SensorBuffer, 'a', sizeof reading.Value.SensorBuffer);
    const Lines dump = {
        {4, "HPI: Sensor 7 - Resource 12 tag id (Temperature) Asserted 0x0010 Upper Major - "
            "Reading:(buffer) \n"},
        {4, "0000: 61616161 61616161 61616161 61616161 |aaaaaaaaaaaaaaaa|\n"},
        {4, "0010: 61616161 61616161 61616161 61616161 |aaaaaaaaaaaaaaaa|\n"}};
    EXPECT_EQ(forwarded(record), dump);
    reading.IsSupported = SAHPI_FALSE;
    EXPECT_EQ(forwarded(record).size(), 3U);
    EXPECT_NE(forwarded(record).at(0).second.find("Reading:(no reading) \n"), std::string::npos);
    sensorOf(record).OptionalDataPresent = SAHPI_SOD_OEM;
    EXPECT_EQ(forwarded(record).size(), 1U);
}

TEST(SyslogForward, TheThresholdsBufferIsNotDumped) {
    EventLogAddRecord record = sensorRecord();
    sensorOf(record).OptionalDataPresent = SAHPI_SOD_TRIGGER_THRESHOLD;
    sensorOf(record).TriggerThreshold.Type = SAHPI_SENSOR_READING_TYPE_BUFFER;
    EXPECT_EQ(lineOf(record), "HPI: Sensor 7 - Resource 12 tag id (Temperature) Asserted 0x0010 "
                              "Upper Major - Threshold:(buffer) \n");
}

TEST(SyslogForward, SensorEnableChanges) {
    EventLogAddRecord record = recordOf(SAHPI_ET_SENSOR_ENABLE_CHANGE);
    SaHpiSensorEnableChangeEventT &change = record.event.EventDataUnion.SensorEnableChangeEvent;
    change.SensorNum = 3;
    change.SensorType = SAHPI_FAN;
    change.SensorEnable = SAHPI_TRUE;
    change.AssertEventMask = 0x3F;
    change.DeassertEventMask = 0x1;
    change.CurrentState = 0x8;
    EXPECT_EQ(lineOf(record), "HPI: Sensor 3 Enable Change; Resource 12 tag id (Fan) "
                              "Sensor Enabled - Events Disabled -  Assert Mask: 0x003f "
                              "Deassert Mask: 0x0001 \n");
    change.SensorEnable = SAHPI_FALSE;
    change.SensorEventEnable = 5;
    change.OptionalDataPresent = SAHPI_SEOD_CURRENT_STATE;
    EXPECT_EQ(lineOf(record), "HPI: Sensor 3 Enable Change; Resource 12 tag id (Fan) "
                              "Sensor Disabled - Events Enabled -  Assert Mask: 0x003f "
                              "Deassert Mask: 0x0001 Current State:0x0008 \n");
}

TEST(SyslogForward, HotSwapEvents) {
    EventLogAddRecord record = recordOf(SAHPI_ET_HOTSWAP);
    record.event.EventDataUnion.HotSwapEvent.HotSwapState = SAHPI_HS_STATE_ACTIVE;
    record.event.EventDataUnion.HotSwapEvent.PreviousHotSwapState =
        SAHPI_HS_STATE_INSERTION_PENDING;
    EXPECT_EQ(lineOf(record), "HPI: Hot Swap; Resource 12 tag New State: Active - Previous State: "
                              "Insertion Pending\n");
    record.event.EventDataUnion.HotSwapEvent.HotSwapState = static_cast<SaHpiHsStateT>(0xFFFFFFFF);
    EXPECT_EQ(lineOf(record), "HPI: Hot Swap; Resource 12 tag New State: 4294967295 - Previous "
                              "State: Insertion Pending\n");
}

TEST(SyslogForward, WatchdogEvents) {
    EventLogAddRecord record = recordOf(SAHPI_ET_WATCHDOG);
    SaHpiWatchdogEventT &watchdog = record.event.EventDataUnion.WatchdogEvent;
    watchdog.WatchdogNum = 1;
    watchdog.WatchdogAction = SAHPI_WAE_POWER_CYCLE;
    watchdog.WatchdogPreTimerAction = SAHPI_WPI_NMI;
    watchdog.WatchdogUse = SAHPI_WTU_SMS_OS;
    EXPECT_EQ(lineOf(record), "HPI: Watchdog 1 - Resource 12 tag id - Action: Power Cycle "
                              "PreTimerAction: Nmi Use: Sms Os\n");
}

TEST(SyslogForward, SoftwareEvents) {
    EventLogAddRecord record = recordOf(SAHPI_ET_HPI_SW);
    SaHpiHpiSwEventT &software = record.event.EventDataUnion.HpiSwEvent;
    software.MId = SAHPI_MANUFACTURER_ID_KORVANTIS;
    software.Type = SAHPI_HPIE_STARTUP;
    setText(software.EventData, "started");
    EXPECT_EQ(lineOf(record), "HPI: HPI Software Event; Type= Startup - Resource 12 tag Mfg= "
                              "Korvantis - started\n");
    setText(software.EventData, "ab", SAHPI_TL_TYPE_UNICODE);
    EXPECT_EQ(forwarded(record), (Lines{{4, "HPI: HPI Software Event; Type= Startup - Resource 12 "
                                            "tag Mfg= Korvantis - \n"},
                                        {4, "6162  |ab|\n"}}));
}

TEST(SyslogForward, OemEvents) {
    EventLogAddRecord record = recordOf(SAHPI_ET_OEM);
    SaHpiOemEventT &oem = record.event.EventDataUnion.OemEvent;
    oem.MId = 343;
    setText(oem.OemEventData, "data", SAHPI_TL_TYPE_ASCII6);
    EXPECT_EQ(lineOf(record), "HPI: OEM Event; Resource 12 tag Mfg= 343 - data\n");
    setText(oem.OemEventData, "data", 5);
    EXPECT_EQ(forwarded(record), (Lines{{4, "HPI: OEM Event; Resource 12 tag Mfg= 343 - \n"},
                                        {4, "64617461   |data|\n"}}));
}

TEST(SyslogForward, UserEvents) {
    EventLogAddRecord record = recordOf(SAHPI_ET_USER);
    SaHpiTextBufferT &data = record.event.EventDataUnion.UserEvent.UserEventData;
    for (const uint32_t type : {1U, 2U, 3U}) {
        setText(data, "100%n", type);
        EXPECT_EQ(lineOf(record), "HPI: User Event; 100%n\n");
    }
    setText(data, "", SAHPI_TL_TYPE_BINARY);
    EXPECT_EQ(lineOf(record), "HPI: User Event; \n");
}

TEST(SyslogForward, UndefinedEventsAreDumpedWhole) {
    for (const uint32_t type : {9U, 0x80000000U, 0xFFFFFFFFU}) {
        EventLogAddRecord record = recordOf(type);
        std::memset(&record.event.EventDataUnion, 0xEE, sizeof record.event.EventDataUnion);
        const Lines lines = forwarded(record);
        ASSERT_EQ(lines.size(), 7U);
        EXPECT_EQ(lines[0].second, "HPI: Undefined event\n");
        EXPECT_EQ(lines[1].second.substr(0, 15), "0000: 0c000000 ");
        EXPECT_EQ(lines[3].second,
                  "0020: eeeeeeee eeeeeeee eeeeeeee eeeeeeee |................|\n");
        EXPECT_EQ(lines[4].second,
                  "     0030 - 010f   same as above          /                /\n");
        EXPECT_EQ(lines[5].second,
                  "0110: eeeeeeee eeeeeeee eeeeeeee eeeeeeee |................|\n");
        EXPECT_EQ(lines[6].second,
                  "0120: eeeeeeee eeeeeeee                   |........        |\n");
    }
}

TEST(SyslogForward, SuppressionLeavesResourceAndTagOut) {
    zuSaHpiSyslogSuppressResource = 2;
    EXPECT_EQ(lineOf(recordOf(SAHPI_ET_RESOURCE)), "HPI: Resource 12 Failure\n");
    EXPECT_EQ(lineOf(sensorRecord()),
              "HPI: Sensor 7 -  id (Temperature) Asserted 0x0010 Upper Major\n");
    EXPECT_EQ(lineOf(recordOf(SAHPI_ET_HOTSWAP)),
              "HPI: Hot Swap;  New State: Inactive - Previous State: Inactive\n");
    zuSaHpiSyslogSuppressResource = 0;
}

TEST(SyslogForward, WithoutAnRptEntryThereIsNoTag) {
    EventLogAddRecord record = recordOf(SAHPI_ET_RESOURCE);
    record.rpt.ResourceCapabilities = 0;
    EXPECT_EQ(lineOf(record), "HPI: Resource 12 Failure\n");
}

TEST(SyslogForward, WithoutARecordThereIsNoIdString) {
    EventLogAddRecord record = sensorRecord();
    record.rdr.RdrType = SAHPI_NO_RECORD;
    EXPECT_EQ(lineOf(record),
              "HPI: Sensor 7 - Resource 12 tag  (Temperature) Asserted 0x0010 Upper Major\n");
}

TEST(SyslogForward, TagsAndIdStringsThatAreNoTextAreLeftOut) {
    for (const uint32_t type : {SAHPI_TL_TYPE_UNICODE, SAHPI_TL_TYPE_BINARY}) {
        EventLogAddRecord record = sensorRecord();
        setText(record.rpt.ResourceTag, "tag", type);
        setText(record.rdr.IdString, "id", type);
        EXPECT_EQ(lineOf(record),
                  "HPI: Sensor 7 - Resource 12   (Temperature) Asserted 0x0010 Upper Major\n");
    }
    // The type is unknown, so the bytes may be text.
    for (const uint32_t type : {5U, 0xFFFFFFFFU}) {
        EventLogAddRecord record = sensorRecord();
        setText(record.rpt.ResourceTag, "tag", type);
        setText(record.rdr.IdString, "id", type);
        EXPECT_EQ(lineOf(record),
                  "HPI: Sensor 7 - Resource 12 tag id (Temperature) Asserted 0x0010 Upper Major\n");
    }
}

TEST(SyslogForward, FullTextsArePassedWholeAndNeverAsFormats) {
    EventLogAddRecord record = sensorRecord();
    std::string tag;
    while (tag.size() < 255) {
        tag += "%s%n ";
    }
    const std::string id(255, '%');
    setText(record.rpt.ResourceTag, tag);
    setText(record.rdr.IdString, id);
    record.event.Source = 0xFFFFFFFF;
    EXPECT_EQ(lineOf(record), "HPI: Sensor 7 - Resource 4294967295 " + tag + " " + id +
                                  " (Temperature) Asserted 0x0010 Upper Major\n");
}

TEST(SyslogForward, AnyRecordCanBeForwarded) {
    const unsigned seed = 20'260'103;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (unsigned round = 0; round < 5'000; ++round) {
        const auto record = std::make_unique<EventLogAddRecord>();
        auto *bytes = reinterpret_cast<unsigned char *>(record.get());
        for (std::size_t i = 0; i < sizeof *record; ++i) {
            bytes[i] = static_cast<unsigned char>(random());
        }
        record->event.EventType = static_cast<SaHpiEventTypeT>(round % 10);
        const Lines lines = forwarded(*record);
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(lines[0].second.substr(0, 5), "HPI: ");
    }
}

} // namespace
