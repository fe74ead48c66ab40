// Goal: the fields of a record are taken from the right bytes, for every kind of record.
#include "tools/evtlogctl/sel_record.h"

#include <gtest/gtest.h>

#include "tests/evtlogctl/sel_samples.h"

namespace {

using namespace zusahpi::sel;
using sel_samples::record;

TEST(SelRecord, FieldsOfASystemEvent) {
    const Record event = record("cc 07 02 a5 07 94 67 20 01 04 01 5a 81 59 7f 6b");
    EXPECT_EQ(kindOf(event), zusahpi::sel::Kind::systemEvent);
    EXPECT_EQ(recordId(event), 0x07CCU);
    EXPECT_EQ(timeOf(event), 0x679407A5U);
    EXPECT_EQ(littleEndian(event, offset::generator, 2), 0x0120U);
    EXPECT_EQ(event.bytes[offset::messageRevision], 0x04);
    EXPECT_EQ(event.bytes[offset::sensorType], 0x01);
    EXPECT_EQ(event.bytes[offset::sensorNumber], 0x5A);
    EXPECT_EQ(eventTypeOf(event), 0x01);
    EXPECT_TRUE(isDeassertion(event));
    EXPECT_EQ(eventOffset(event), 9U);
    EXPECT_EQ(data2Holds(event), Holds::reading);
    EXPECT_EQ(data3Holds(event), Holds::reading);
}

TEST(SelRecord, KindsByType) {
    Record each;
    for (unsigned type = 0; type <= 0xFF; ++type) {
        each.bytes[offset::type] = static_cast<std::uint8_t>(type);
        const zusahpi::sel::Kind expected = type < 0xC0   ? zusahpi::sel::Kind::systemEvent
                                            : type < 0xE0 ? zusahpi::sel::Kind::timedOem
                                                          : zusahpi::sel::Kind::untimedOem;
        EXPECT_EQ(kindOf(each), expected) << type;
    }
}

TEST(SelRecord, WhatTheDataBytesHold) {
    Record each;
    const std::array<Holds, 4> kinds = {Holds::nothing, Holds::reading, Holds::oem,
                                        Holds::extension};
    for (unsigned data1 = 0; data1 <= 0xFF; ++data1) {
        each.bytes[offset::data1] = static_cast<std::uint8_t>(data1);
        EXPECT_EQ(data2Holds(each), kinds[data1 >> 6]) << data1;
        EXPECT_EQ(data3Holds(each), kinds[data1 >> 4 & 3]) << data1;
        EXPECT_EQ(eventOffset(each), data1 & 15) << data1;
    }
}

TEST(SelRecord, ManufacturerInBothOrders) {
    const Record oem = record("02 00 df 5c d2 99 63 37 01 00 04 00 00 00 00 00");
    EXPECT_EQ(manufacturerOf(oem, OemOrder::wire), 0x000137U);
    EXPECT_EQ(manufacturerOf(oem, OemOrder::reversed), 0x370100U);
}

TEST(SelRecord, WatchdogIsASensorSpecificSystemEvent) {
    EXPECT_TRUE(isWatchdog(record("b9 00 02 85 21 ae 65 20 00 04 23 ca 6f 09 0f 00")));
    EXPECT_TRUE(isWatchdog(record("b9 00 03 85 21 ae 65 20 00 04 23 ca ef 09 0f 00")));
    EXPECT_FALSE(isWatchdog(record("b9 00 02 85 21 ae 65 20 00 04 23 ca 03 01 0f 00")));
    EXPECT_FALSE(isWatchdog(record("b9 00 02 85 21 ae 65 20 00 04 22 ca 6f 09 0f 00")));
    EXPECT_FALSE(isWatchdog(record("b9 00 c0 85 21 ae 65 20 00 04 23 ca 6f 09 0f 00")));
}

TEST(SelRecord, NumbersArePutAsTheyAreRead) {
    Record each;
    putLittleEndian(each, offset::time, 4, 0x12345678);
    EXPECT_EQ(timeOf(each), 0x12345678U);
    EXPECT_EQ(each.bytes[3], 0x78);
    EXPECT_EQ(each.bytes[6], 0x12);
}

} // namespace
