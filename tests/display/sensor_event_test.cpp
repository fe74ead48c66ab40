// Goal: every line of a sensor event and of a change of enabling, optional data in their fixed
// order, and states named in the event's own category.

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "display/sensor_event.h"
#include "tests/display/printed.h"
#include "tests/display/records.h"

namespace {

using namespace zusahpi::display;

// A pressure switch, nothing optional.
SaHpiSensorEventT plainEvent() {
    SaHpiSensorEventT event{};
    event.SensorNum = 9;
    event.SensorType = SAHPI_BUTTON;
    event.EventCategory = SAHPI_EC_STATE;
    event.EventState = SAHPI_ES_STATE_DEASSERTED;
    event.TriggerReading = intReading(1);
    event.TriggerThreshold = intReading(2);
    event.PreviousState = SAHPI_ES_STATE_ASSERTED;
    event.CurrentState = SAHPI_ES_STATE_DEASSERTED;
    event.Oem = 3;
    event.SensorSpecific = 4;
    return event;
}

const std::string plainHead = "Sensor Number 9\n"
                              "Sensor Type 20: Button\n"
                              "Event Category 3: State\n"
                              "DEASSERT Event State 0x0001: State Deasserted\n";

Printed display(const SaHpiSensorEventT &event, const char *indent = "") {
    const auto copy = std::make_unique<SaHpiSensorEventT>(event);
    return printedBy([&](zuSaHpiHandleT out) { return printSensorEvent(out, *copy, indent); });
}

TEST(SensorEvent, NothingOptional) {
    const Printed printed = display(plainEvent());
    EXPECT_EQ(printed.text, plainHead + "Optional Data 0x00\n");
    EXPECT_EQ(printed.result, 1);
}

TEST(SensorEvent, AnyByteButZeroAsserts) {
    for (const int flag : {1, 2, 0x80, 0xFF}) {
        SaHpiSensorEventT event = plainEvent();
        event.Assertion = static_cast<SaHpiBoolT>(flag);
        EXPECT_NE(display(event).text.find("\nASSERT   Event State 0x0001: State Deasserted\n"),
                  std::string::npos);
    }
}

TEST(SensorEvent, EachOptionalDataAlone) {
    const struct {
        int bit;
        const char *name;
        const char *line;
    } cases[] = {
        {0x01, "Trigger Reading", "Trigger Sensor Reading 1\n"},
        {0x02, "Trigger Threshold", "Trigger Threshold      2\n"},
        {0x04, "Oem", "Sensor OEM Data 3\n"},
        {0x08, "Previous State", "Previous Event State 0x0002: State Asserted\n"},
        {0x10, "Current State", "Current Event State  0x0001: State Deasserted\n"},
        {0x20, "Sensor Specific", "Sensor Specific Data 4\n"},
    };
    for (const auto &[bit, name, line] : cases) {
        SaHpiSensorEventT event = plainEvent();
        event.OptionalDataPresent = static_cast<SaHpiSensorOptionalDataT>(bit);
        char mask[8];
        std::snprintf(mask, sizeof mask, "0x%.2x", static_cast<unsigned>(bit));
        EXPECT_EQ(display(event).text,
                  plainHead + "Optional Data " + mask + ": " + name + "\n" + line);
    }
}

TEST(SensorEvent, TheCurrentStateComesBeforeThePreviousOne) {
    SaHpiSensorEventT event = plainEvent();
    event.OptionalDataPresent = SAHPI_SOD_CURRENT_STATE | SAHPI_SOD_PREVIOUS_STATE;
    EXPECT_EQ(display(event, "  ").text, "  Sensor Number 9\n"
                                         "  Sensor Type 20: Button\n"
                                         "  Event Category 3: State\n"
                                         "  DEASSERT Event State 0x0001: State Deasserted\n"
                                         "  Optional Data 0x18: Previous State, Current State\n"
                                         "  Current Event State  0x0001: State Deasserted\n"
                                         "  Previous Event State 0x0002: State Asserted\n");
}

TEST(SensorEvent, UnknownOptionalDataLeaveOnlyTheMask) {
    SaHpiSensorEventT event = plainEvent();
    event.OptionalDataPresent = 0xC0;
    EXPECT_EQ(display(event).text, plainHead + "Optional Data 0xc0: \n");
}

TEST(SensorEvent, UnknownValuesAreNumbers) {
    SaHpiSensorEventT event = plainEvent();
    event.SensorType = static_cast<SaHpiSensorTypeT>(0xFFFFFFFF);
    event.EventCategory = 0xFE;
    event.EventState = 0x8001;
    EXPECT_EQ(display(event).text, "Sensor Number 9\n"
                                   "Sensor Type 4294967295\n"
                                   "Event Category 254\n"
                                   "DEASSERT Event State 0x8001: State 00, \n"
                                   "Optional Data 0x00\n");
}

// Names may end at column 70: the column of the list, ": " and the first name.
TEST(SensorEvent, ListsBreakAtTheirColumns) {
    SaHpiSensorEventT event = plainEvent();
    event.EventCategory = SAHPI_EC_USAGE;
    event.EventState = SAHPI_ES_BUSY;
    event.PreviousState = SAHPI_ES_IDLE;
    event.CurrentState = SAHPI_ES_ACTIVE;
    event.OptionalDataPresent = SAHPI_SOD_CURRENT_STATE | SAHPI_SOD_PREVIOUS_STATE;
    const auto textBehind = [&](const std::string &indent) {
        return display(event, indent.c_str()).text;
    };
    EXPECT_EQ(longestIndentFor("DEASSERT Event State 0x0004", textBehind), 70U - (27 + 2) - 4);
    EXPECT_EQ(longestIndentFor("Current Event State  0x0002", textBehind), 70U - (27 + 2) - 6);
    EXPECT_EQ(longestIndentFor("Previous Event State 0x0001", textBehind), 70U - (27 + 2) - 4);
    EXPECT_EQ(longestIndentFor("Optional Data 0x18", textBehind), 70U - (18 + 2) - 14);
}

SaHpiSensorEnableChangeEventT enableChange() {
    SaHpiSensorEnableChangeEventT event{};
    event.SensorNum = 0xFFFFFFFF;
    event.SensorType = SAHPI_FAN;
    event.EventCategory = SAHPI_EC_PRESENCE;
    event.AssertEventMask = SAHPI_ES_ABSENT;
    event.DeassertEventMask = SAHPI_ES_ABSENT | SAHPI_ES_PRESENT;
    event.CurrentState = SAHPI_ES_PRESENT;
    return event;
}

Printed display(const SaHpiSensorEnableChangeEventT &event, const char *indent = "") {
    const auto copy = std::make_unique<SaHpiSensorEnableChangeEventT>(event);
    return printedBy(
        [&](zuSaHpiHandleT out) { return printSensorEnableChange(out, *copy, indent); });
}

TEST(SensorEnableChange, Disabled) {
    const Printed printed = display(enableChange(), "> ");
    EXPECT_EQ(printed.text, "> Sensor Number 4294967295\n"
                            "> Sensor Type 4: Fan\n"
                            "> Event Category 8: Presence\n"
                            "> Sensor is Disabled\n"
                            "> Sensor Events are Disabled\n"
                            "> Assert Event Mask   0x0001: Absent\n"
                            "> Deassert Event Mask 0x0003: Absent, Present\n");
    EXPECT_EQ(printed.result, 1);
}

TEST(SensorEnableChange, EachFlagHasItsLine) {
    SaHpiSensorEnableChangeEventT event = enableChange();
    event.SensorEnable = 0x80;
    EXPECT_NE(display(event).text.find("Sensor is Enabled\nSensor Events are Disabled\n"),
              std::string::npos);
    event.SensorEnable = 0;
    event.SensorEventEnable = 2;
    EXPECT_NE(display(event).text.find("Sensor is Disabled\nSensor Events are Enabled\n"),
              std::string::npos);
}

TEST(SensorEnableChange, OnlyTheCurrentStateIsOptional) {
    SaHpiSensorEnableChangeEventT event = enableChange();
    const std::string without = display(event).text;
    event.OptionalDataPresent = 0xEF;
    EXPECT_EQ(display(event).text, without);
    event.OptionalDataPresent = SAHPI_SEOD_CURRENT_STATE;
    EXPECT_EQ(display(event).text, without + "Current Event State  0x0002: Present\n");
}

TEST(SensorEnableChange, ListsBreakAtTheirColumns) {
    SaHpiSensorEnableChangeEventT event = enableChange();
    event.OptionalDataPresent = SAHPI_SEOD_CURRENT_STATE;
    const auto textBehind = [&](const std::string &indent) {
        return display(event, indent.c_str()).text;
    };
    EXPECT_EQ(longestIndentFor("Assert Event Mask   0x0001", textBehind), 70U - (26 + 2) - 6);
    EXPECT_EQ(longestIndentFor("Deassert Event Mask 0x0003", textBehind), 70U - (26 + 2) - 6);
    EXPECT_EQ(longestIndentFor("Current Event State  0x0002", textBehind), 70U - (27 + 2) - 7);
}

} // namespace
