// Goal: sensor types and events have the names that the IPMI 2.0 tables give them.
#include "tools/evtlogctl/ipmi_tables.h"

#include <set>

#include <gtest/gtest.h>

#include "tests/evtlogctl/sel_samples.h"

namespace {

using namespace zusahpi::sel;
using sel_samples::record;

TEST(IpmiTables, SensorTypeNames) {
    EXPECT_EQ(sensorTypeName(0x01), "Temperature");
    EXPECT_EQ(sensorTypeName(0x02), "Voltage");
    EXPECT_EQ(sensorTypeName(0x07), "Processor");
    EXPECT_EQ(sensorTypeName(0x08), "Power Supply");
    EXPECT_EQ(sensorTypeName(0x0C), "Memory");
    EXPECT_EQ(sensorTypeName(0x10), "Event Logging Disabled");
    EXPECT_EQ(sensorTypeName(0x13), "Critical Interrupt");
    EXPECT_EQ(sensorTypeName(0x19), "Chip Set");
    EXPECT_EQ(sensorTypeName(0x20), "OS Critical Stop");
    EXPECT_EQ(sensorTypeName(0x23), "Watchdog 2");
    EXPECT_EQ(sensorTypeName(0x25), "Entity Presence");
    EXPECT_EQ(sensorTypeName(0x29), "Battery");
    EXPECT_EQ(sensorTypeName(0x2C), "FRU State");
    EXPECT_EQ(sensorTypeName(0x2D), "Type 2Dh");
    EXPECT_EQ(sensorTypeName(0x00), "Type 00h");
    EXPECT_EQ(sensorTypeName(0xC0), "OEM type C0h");
    EXPECT_EQ(sensorTypeName(0xFF), "OEM type FFh");
}

TEST(IpmiTables, EventTextsOfSensorSpecificEvents) {
    EXPECT_EQ(eventText(record("12 00 02 33 19 81 65 20 00 04 07 c1 6f 00 ff ff")), "IERR");
    EXPECT_EQ(eventText(record("12 00 02 33 19 81 65 20 00 04 07 c1 ef 00 ff ff")), "IERR");
    EXPECT_EQ(eventText(record("12 00 02 33 19 81 65 20 00 04 20 00 6f 03 ff ff")),
              "OS graceful shutdown");
    EXPECT_EQ(eventText(record("12 00 02 33 19 81 65 20 00 04 29 86 6f 02 ff ff")),
              "presence detected");
    // States that no table names, and events whose states are not the sensor type's.
    EXPECT_EQ(eventText(record("12 00 02 33 19 81 65 20 00 04 23 ca 6f 09 0f 00")), "");
    EXPECT_EQ(eventText(record("12 00 02 33 19 81 65 20 00 04 07 c1 6f 0f ff ff")), "");
    EXPECT_EQ(eventText(record("12 00 02 33 19 81 65 20 00 04 07 c1 03 00 ff ff")), "");
    EXPECT_EQ(eventText(record("12 00 02 33 19 81 65 20 00 04 e1 c1 6f 03 ff ff")), "");
}

TEST(IpmiTables, AcpiPowerStates) {
    EXPECT_EQ(eventText(record("12 00 02 33 19 81 65 20 00 04 22 c1 0c 03 ff ff")),
              "D3 power state");
    EXPECT_EQ(eventText(record("12 00 02 33 19 81 65 20 00 04 22 c1 0c 04 ff ff")), "");
}

TEST(IpmiTables, EverySensorTypeWithEventsIsThere) {
    std::set<unsigned> types;
    for (const SpecificEvent &event : specificEvents()) {
        types.insert(event.sensorType);
        EXPECT_LE(event.offset, 14);
        EXPECT_FALSE(event.text.empty());
    }
    const std::set<unsigned> expected = {
        0x05, 0x06, 0x07, 0x08, 0x09, 0x0C, 0x0D, 0x0F, 0x10, 0x11, 0x12, 0x13, 0x14, 0x19, 0x1B,
        0x1D, 0x1E, 0x1F, 0x20, 0x21, 0x22, 0x23, 0x24, 0x25, 0x27, 0x28, 0x29, 0x2A, 0x2B, 0x2C};
    EXPECT_EQ(types, expected);
}

} // namespace
