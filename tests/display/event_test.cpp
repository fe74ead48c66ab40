// Goal: the head of every event, and title and body of every event type, whole texts.

#include <cstring>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "tests/display/printed.h"
#include "tests/display/records.h"
#include "zuSaHpi_util.h"

namespace {

// Unused bytes of the union are not 0.
SaHpiEventT eventOf(uint32_t type) {
    SaHpiEventT event;
    std::memset(&event, 0xA5, sizeof event);
    event.Source = 5;
    event.EventType = static_cast<SaHpiEventTypeT>(type);
    event.Timestamp = 1'000'000'000;
    event.Severity = SAHPI_MAJOR;
    return event;
}

std::string headOf(const std::string &type, const std::string &indent = "") {
    return indent + "Source:      5\n" + indent + "Event Type:  " + type + "\n" + indent +
           "Timestamp:   time(1000000000,0)\n" + indent + "Severity:    1: Major\n";
}

Printed display(const SaHpiEventT &event, const char *indent = "") {
    const auto copy = std::make_unique<SaHpiEventT>(event);
    return printedBy(
        [&](zuSaHpiHandleT out) { return zuSaHpiPrintEvent(out, copy.get(), indent); });
}

TEST(EventHead, UnspecifiedSourceAndTimeAreSaidSo) {
    SaHpiEventT event = eventOf(SAHPI_ET_DOMAIN);
    event.Source = SAHPI_UNSPECIFIED_RESOURCE_ID;
    event.Timestamp = SAHPI_TIME_UNSPECIFIED;
    EXPECT_EQ(display(event, "> ").text, "> Source is unspecified\n"
                                         "> Event Type:  1: Domain\n"
                                         "> Timestamp is unspecified\n"
                                         "> Severity:    1: Major\n"
                                         "> Undefined Event Type\n");
}

TEST(EventHead, EveryOtherSourceAndTimeIsShown) {
    SaHpiEventT event = eventOf(SAHPI_ET_DOMAIN);
    event.Source = 0xFFFFFFFE;
    event.Timestamp = SAHPI_TIME_UNSPECIFIED + 1;
    event.Severity = SAHPI_CRITICAL;
    EXPECT_EQ(display(event).text, "Source:      4294967294\n"
                                   "Event Type:  1: Domain\n"
                                   "Timestamp:   time(-9223372036854775807,0)\n"
                                   "Severity:    0: Critical\n"
                                   "Undefined Event Type\n");
}

TEST(EventHead, UnknownSeveritiesAreNumbers) {
    SaHpiEventT event = eventOf(SAHPI_ET_DOMAIN);
    event.Severity = static_cast<SaHpiSeverityT>(0xFFFFFFFF);
    EXPECT_NE(display(event).text.find("\nSeverity:    4294967295\n"), std::string::npos);
}

TEST(Event, DomainAndUnknownTypesHaveNoBody) {
    EXPECT_EQ(display(eventOf(1), "  ").text,
              headOf("1: Domain", "  ") + "  Undefined Event Type\n");
    for (const uint32_t type : {9U, 0x80000000U, 0xFFFFFFFFU}) {
        const Printed printed = display(eventOf(type), "  ");
        EXPECT_EQ(printed.text, headOf(std::to_string(type), "  ") + "  Undefined Event Type\n");
        EXPECT_EQ(printed.result, 23);
    }
}

TEST(Event, Resource) {
    SaHpiEventT event = eventOf(SAHPI_ET_RESOURCE);
    event.EventDataUnion.ResourceEvent.ResourceEventType = SAHPI_RESE_RESOURCE_RESTORED;
    EXPECT_EQ(display(event, "> ").text, headOf("0: Resource", "> ") +
                                             "> Resource Event:\n"
                                             ">   Event Type 1: Resource Restored\n");
    event.EventDataUnion.ResourceEvent.ResourceEventType =
        static_cast<SaHpiResourceEventTypeT>(0xFFFFFFFF);
    EXPECT_EQ(display(event).text, headOf("0: Resource") + "Resource Event:\n"
                                                           "  Event Type 4294967295\n");
}

TEST(Event, Sensor) {
    SaHpiEventT event = eventOf(SAHPI_ET_SENSOR);
    SaHpiSensorEventT &sensor = event.EventDataUnion.SensorEvent;
    sensor.SensorNum = 0xFFFFFFFF;
    sensor.SensorType = SAHPI_TEMPERATURE;
    sensor.EventCategory = SAHPI_EC_THRESHOLD;
    sensor.EventState = 0x3F;
    sensor.OptionalDataPresent = 0x3F;
    sensor.TriggerReading = intReading(-42);
    sensor.TriggerThreshold = floatReading(3.5);
    sensor.PreviousState = 0x8001;
    sensor.CurrentState = 0x18;
    sensor.Oem = 0xFFFFFFFF;
    sensor.SensorSpecific = 0x80000000;
    const Printed printed = display(event);
    EXPECT_EQ(printed.text, expectedText("sensor_event.txt"));
    EXPECT_EQ(printed.result, static_cast<int>(std::strlen("  Sensor Specific Data 2147483648\n")));
}

TEST(Event, ABufferReadingGoesOnWithTheLine) {
    SaHpiEventT event = eventOf(SAHPI_ET_SENSOR);
    SaHpiSensorEventT &sensor = event.EventDataUnion.SensorEvent;
    sensor.SensorNum = 1;
    sensor.SensorType = SAHPI_OEM_SENSOR;
    sensor.EventCategory = SAHPI_EC_GENERIC;
    sensor.Assertion = SAHPI_FALSE;
    sensor.EventState = SAHPI_ES_STATE_01;
    sensor.OptionalDataPresent = SAHPI_SOD_TRIGGER_READING | SAHPI_SOD_TRIGGER_THRESHOLD;
    sensor.TriggerReading = readingOfBytes(SAHPI_SENSOR_READING_TYPE_BUFFER, 'A');
    sensor.TriggerThreshold.IsSupported = SAHPI_FALSE;
    EXPECT_EQ(display(event, "> ").text,
              headOf("2: Sensor", "> ") + expectedText("sensor_event_buffers.txt"));
}

TEST(Event, SensorEnableChange) {
    SaHpiEventT event = eventOf(SAHPI_ET_SENSOR_ENABLE_CHANGE);
    event.Source = SAHPI_UNSPECIFIED_RESOURCE_ID;
    event.Timestamp = SAHPI_TIME_UNSPECIFIED;
    event.Severity = SAHPI_OK;
    SaHpiSensorEnableChangeEventT &change = event.EventDataUnion.SensorEnableChangeEvent;
    change.SensorNum = 0x102;
    change.SensorType = SAHPI_VOLTAGE;
    change.EventCategory = SAHPI_EC_AVAILABILITY;
    change.SensorEnable = SAHPI_TRUE;
    change.SensorEventEnable = SAHPI_FALSE;
    change.AssertEventMask = 0x1FF;
    change.DeassertEventMask = 0;
    change.OptionalDataPresent = 0x10;
    change.CurrentState = 0x1FF;
    EXPECT_EQ(display(event, "  ").text, expectedText("sensor_enable_change_event.txt"));
}

TEST(Event, HotSwap) {
    SaHpiEventT event = eventOf(SAHPI_ET_HOTSWAP);
    event.EventDataUnion.HotSwapEvent = {SAHPI_HS_STATE_EXTRACTION_PENDING, SAHPI_HS_STATE_ACTIVE};
    EXPECT_EQ(display(event).text, headOf("4: Hotswap") +
                                       "HotSwap Event:\n"
                                       "  New HotSwap State 3: Extraction Pending\n"
                                       "  Previous HotSwap State 2: Active\n");
}

TEST(Event, Watchdog) {
    SaHpiEventT event = eventOf(SAHPI_ET_WATCHDOG);
    event.EventDataUnion.WatchdogEvent = {0xFFFFFFFF, SAHPI_WAE_TIMER_INT,
                                          SAHPI_WPI_MESSAGE_INTERRUPT, SAHPI_WTU_BIOS_FRB2};
    EXPECT_EQ(display(event).text, headOf("5: Watchdog") +
                                       "Watchdog Event:\n"
                                       "  Watchdog Number 4294967295\n"
                                       "  Watchdog Action  8: Timer Int\n"
                                       "  PreTimer Action  3: Message Interrupt\n"
                                       "  Watchdog Use     1: Bios Frb2\n");
}

TEST(Event, HpiSoftware) {
    SaHpiEventT event = eventOf(SAHPI_ET_HPI_SW);
    event.EventDataUnion.HpiSwEvent = {SAHPI_MANUFACTURER_ID_KORVANTIS, SAHPI_HPIE_STARTUP,
                                       textBuffer(SAHPI_TL_TYPE_TEXT, "up")};
    EXPECT_EQ(display(event).text, headOf("6: Hpi Sw") + "HPI SW Event:\n"
                                                         "  Manufacturer Id  24377: Korvantis\n"
                                                         "  Sw Event Type  1: Startup\n"
                                                         "  (Text:English)\"up\"\n");
}

TEST(Event, Oem) {
    SaHpiEventT event = eventOf(SAHPI_ET_OEM);
    event.EventDataUnion.OemEvent = {0xFFFFFFFF, textBuffer(SAHPI_TL_TYPE_BINARY, "ABC")};
    EXPECT_EQ(display(event, "> ").text, headOf("7: Oem", "> ") +
                                             "> OEM Event:\n"
                                             ">   Manufacturer Id  4294967295\n"
                                             ">   (Binary)\n"
                                             ">   414243  |ABC|\n");
}

TEST(Event, User) {
    SaHpiEventT event = eventOf(SAHPI_ET_USER);
    event.EventDataUnion.UserEvent.UserEventData = textBuffer(SAHPI_TL_TYPE_UNICODE, "hi");
    EXPECT_EQ(display(event).text, headOf("8: User") + "User Event:\n"
                                                       "  (Unicode:English)\n"
                                                       "  6869  |hi|\n");
}

TEST(Event, ABodyIndentIsCutAtFortyNine) {
    SaHpiEventT event = eventOf(SAHPI_ET_USER);
    event.EventDataUnion.UserEvent.UserEventData = textBuffer(SAHPI_TL_TYPE_ASCII6, "hi");
    const std::string indent(60, '-');
    EXPECT_EQ(display(event, indent.c_str()).text, headOf("8: User", indent) + indent +
                                                       "User Event:\n" + std::string(49, '-') +
                                                       "(ASCII6)\"hi\"\n");
}

TEST(Event, DataAndIndentAreNoFormats) {
    SaHpiEventT event = eventOf(SAHPI_ET_USER);
    event.EventDataUnion.UserEvent.UserEventData = textBuffer(SAHPI_TL_TYPE_TEXT, "%n%s");
    EXPECT_EQ(display(event, "%d").text, headOf("8: User", "%d") + "%dUser Event:\n"
                                                                   "%d  (Text:English)\"%n%s\"\n");
}

} // namespace
