// Goal: every kind of record becomes the HPI event that it means, with the right type, category,
// state, direction, time, severity and optional data, and with an RPT entry and RDR that name it.
#include "tools/evtlogctl/sel_mapping.h"

#include <cstring>

#include <gtest/gtest.h>

#include "tests/evtlogctl/sel_samples.h"
#include "tests/support/times.h"

namespace {

using times::second;
using namespace zusahpi::sel;
using sel_samples::record;

using Bytes = std::initializer_list<std::uint8_t>;

SaHpiEventT eventOf(const Record &from, const Mapping &mapping = {}) {
    return toEvent(from, mapping).event;
}

// A system event with these bytes from 10 on, at 2023-12-19T04:16:51Z from the BMC.
Record systemEvent(std::uint8_t sensorType, std::uint8_t eventType, std::uint8_t data1,
                   std::uint8_t data2 = 0xFF, std::uint8_t data3 = 0xFF) {
    return {{0x40, 0x00, 0x02, 0x33, 0x19, 0x81, 0x65, 0x20, 0x00, 0x04, sensorType, 0xEE,
             eventType, data1, data2, data3}};
}

SaHpiSensorEventT sensorOf(const Record &from) {
    const SaHpiEventT event = eventOf(from);
    EXPECT_EQ(event.EventType, SAHPI_ET_SENSOR);
    return event.EventDataUnion.SensorEvent;
}

std::string textOf(const SaHpiTextBufferT &buffer) {
    EXPECT_EQ(buffer.DataType, SAHPI_TL_TYPE_TEXT);
    EXPECT_EQ(buffer.Language, SAHPI_LANG_ENGLISH);
    return {buffer.Data, buffer.Data + buffer.DataLength};
}

TEST(SelMapping, CategoryOfEveryEventType) {
    for (unsigned type = 0; type < 0x80; ++type) {
        const unsigned expected = type >= 0x01 && type <= 0x0B   ? type
                                  : type == 0x0C                 ? SAHPI_EC_GENERIC
                                  : type == 0x6F                 ? SAHPI_EC_SENSOR_SPECIFIC
                                  : type >= 0x70 && type <= 0x7F ? SAHPI_EC_GENERIC
                                                                 : SAHPI_EC_UNSPECIFIED;
        const auto sensor = sensorOf(systemEvent(0x07, static_cast<std::uint8_t>(type), 0x01));
        EXPECT_EQ(sensor.EventCategory, expected) << type;
        if (expected == SAHPI_EC_UNSPECIFIED) {
            EXPECT_EQ(sensor.EventState, SAHPI_ES_UNSPECIFIED) << type;
        } else {
            EXPECT_NE(sensor.EventState, SAHPI_ES_UNSPECIFIED) << type;
        }
    }
}

TEST(SelMapping, SensorTypesThatHpiKnowsStay) {
    for (unsigned type = 0; type <= 0xFF; ++type) {
        const unsigned expected =
            (type >= 0x01 && type <= 0x29) || type == 0xA0 ? type : SAHPI_OEM_SENSOR;
        EXPECT_EQ(sensorOf(systemEvent(static_cast<std::uint8_t>(type), 0x03, 1)).SensorType,
                  expected)
            << type;
    }
}

TEST(SelMapping, RecordTypesWithoutATableAreSystemEvents) {
    for (unsigned type = 0; type < 0xC0; ++type) {
        Record each = systemEvent(0x07, 0x6F, 0x00);
        each.bytes[offset::type] = static_cast<std::uint8_t>(type);
        EXPECT_EQ(sensorOf(each).SensorType, SAHPI_PROCESSOR) << type;
    }
}

TEST(SelMapping, StateIsTheBitOfTheOffset) {
    for (const std::uint8_t type : Bytes{0x02, 0x03, 0x07, 0x0B, 0x0C, 0x6F, 0x70, 0x7F}) {
        for (std::uint8_t state = 0; state <= 14; ++state) {
            EXPECT_EQ(sensorOf(systemEvent(0x07, type, state)).EventState, 1U << state);
        }
        EXPECT_EQ(sensorOf(systemEvent(0x07, type, 15)).EventState, SAHPI_ES_UNSPECIFIED);
    }
}

TEST(SelMapping, DirectionIsBitSevenOfTheEventType) {
    EXPECT_EQ(sensorOf(systemEvent(0x07, 0x6F, 0)).Assertion, SAHPI_TRUE);
    EXPECT_EQ(sensorOf(systemEvent(0x07, 0xEF, 0)).Assertion, SAHPI_FALSE);
}

TEST(SelMapping, ThresholdOffsetsFoldIntoStatesAndDirections) {
    struct Row {
        std::uint8_t offset;
        SaHpiEventStateT state;
        bool asserted; // when byte 12 says assertion
    };
    const Row rows[] = {
        {0, SAHPI_ES_LOWER_MINOR, true},  {1, SAHPI_ES_LOWER_MINOR, false},
        {2, SAHPI_ES_LOWER_MAJOR, true},  {3, SAHPI_ES_LOWER_MAJOR, false},
        {4, SAHPI_ES_LOWER_CRIT, true},   {5, SAHPI_ES_LOWER_CRIT, false},
        {6, SAHPI_ES_UPPER_MINOR, false}, {7, SAHPI_ES_UPPER_MINOR, true},
        {8, SAHPI_ES_UPPER_MAJOR, false}, {9, SAHPI_ES_UPPER_MAJOR, true},
        {10, SAHPI_ES_UPPER_CRIT, false}, {11, SAHPI_ES_UPPER_CRIT, true},
        {12, SAHPI_ES_UNSPECIFIED, true}, {13, SAHPI_ES_UNSPECIFIED, true},
        {14, SAHPI_ES_UNSPECIFIED, true}, {15, SAHPI_ES_UNSPECIFIED, true},
    };
    for (const Row &row : rows) {
        const auto asserted = sensorOf(systemEvent(0x01, 0x01, row.offset));
        EXPECT_EQ(asserted.EventState, row.state) << int{row.offset};
        EXPECT_EQ(asserted.Assertion != 0, row.asserted) << int{row.offset};
        const auto deasserted = sensorOf(systemEvent(0x01, 0x81, row.offset));
        EXPECT_EQ(deasserted.EventState, row.state) << int{row.offset};
        EXPECT_EQ(deasserted.Assertion != 0, !row.asserted) << int{row.offset};
    }
}

TEST(SelMapping, ThresholdReadingsAreRawCounts) {
    const auto both = sensorOf(systemEvent(0x02, 0x01, 0x52, 0xB5, 0xF7));
    EXPECT_EQ(both.OptionalDataPresent, SAHPI_SOD_TRIGGER_READING | SAHPI_SOD_TRIGGER_THRESHOLD);
    EXPECT_EQ(both.TriggerReading.IsSupported, SAHPI_TRUE);
    EXPECT_EQ(both.TriggerReading.Type, SAHPI_SENSOR_READING_TYPE_INT64);
    EXPECT_EQ(both.TriggerReading.Value.SensorInt64, 0xB5);
    EXPECT_EQ(both.TriggerThreshold.IsSupported, SAHPI_TRUE);
    EXPECT_EQ(both.TriggerThreshold.Type, SAHPI_SENSOR_READING_TYPE_INT64);
    EXPECT_EQ(both.TriggerThreshold.Value.SensorInt64, 0xF7);

    const auto reading = sensorOf(systemEvent(0x02, 0x01, 0x42, 0xB5, 0xF7));
    EXPECT_EQ(reading.OptionalDataPresent, SAHPI_SOD_TRIGGER_READING);
    EXPECT_EQ(reading.TriggerThreshold.IsSupported, SAHPI_FALSE);
    const auto threshold = sensorOf(systemEvent(0x02, 0x01, 0x12, 0xB5, 0xF7));
    EXPECT_EQ(threshold.OptionalDataPresent, SAHPI_SOD_TRIGGER_THRESHOLD);
    EXPECT_EQ(threshold.TriggerReading.IsSupported, SAHPI_FALSE);
}

TEST(SelMapping, DiscretePreviousState) {
    const auto known = sensorOf(systemEvent(0x09, 0x0B, 0x43, 0x71));
    EXPECT_EQ(known.OptionalDataPresent, SAHPI_SOD_PREVIOUS_STATE);
    EXPECT_EQ(known.PreviousState, SAHPI_ES_REDUNDANCY_LOST);
    const auto unknown = sensorOf(systemEvent(0x09, 0x0B, 0x43, 0x7F));
    EXPECT_EQ(unknown.OptionalDataPresent, 0);
    EXPECT_EQ(unknown.PreviousState, 0);
    // Bits 5-4 = 01 mean something for thresholds alone.
    EXPECT_EQ(sensorOf(systemEvent(0x09, 0x0B, 0x13, 0x71)).OptionalDataPresent, 0);
}

TEST(SelMapping, OemAndSensorSpecificData) {
    for (const std::uint8_t type : Bytes{0x01, 0x03, 0x6F, 0x70, 0x00}) {
        for (const std::uint8_t data1 : Bytes{0x80, 0x20, 0xA0}) {
            const auto sensor = sensorOf(systemEvent(0x02, type, data1, 0xED, 0x2E));
            EXPECT_EQ(sensor.OptionalDataPresent, SAHPI_SOD_OEM) << int{type} << " " << int{data1};
            EXPECT_EQ(sensor.Oem, 0xED2EU);
        }
        for (const std::uint8_t data1 : Bytes{0xC0, 0x30, 0xF0}) {
            const auto sensor = sensorOf(systemEvent(0x02, type, data1, 0xED, 0x2E));
            EXPECT_EQ(sensor.OptionalDataPresent, SAHPI_SOD_SENSOR_SPECIFIC)
                << int{type} << " " << int{data1};
            EXPECT_EQ(sensor.SensorSpecific, 0xED2EU);
        }
        for (const std::uint8_t data1 : Bytes{0xB0, 0xE0}) {
            const auto sensor = sensorOf(systemEvent(0x02, type, data1, 0xED, 0x2E));
            EXPECT_EQ(sensor.OptionalDataPresent, SAHPI_SOD_OEM | SAHPI_SOD_SENSOR_SPECIFIC);
            EXPECT_EQ(sensor.Oem, 0xED2EU);
            EXPECT_EQ(sensor.SensorSpecific, 0xED2EU);
        }
    }
}

TEST(SelMapping, NoFlagWithoutData) {
    for (const std::uint8_t type : Bytes{0x01, 0x03, 0x6F, 0x70, 0x00}) {
        EXPECT_EQ(sensorOf(systemEvent(0x02, type, 0x00, 0xED, 0x2E)).OptionalDataPresent, 0);
    }
}

TEST(SelMapping, Times) {
    struct Row {
        const char *bytes;
        SaHpiTimeT utc;
        SaHpiTimeT oneHourEast;
    };
    const Row rows[] = {
        {"00 00 00 00", 0, 0},
        {"2a 00 00 00", 42 * second, 42 * second},
        {"00 00 00 20", 0x20000000LL * second, 0x20000000LL * second},
        {"01 00 00 20", 0x20000001LL * second, (0x20000001LL - 3600) * second},
        {"33 19 81 65", 1702959411LL * second, (1702959411LL - 3600) * second},
        {"fe ff ff ff", 0xFFFFFFFELL * second, (0xFFFFFFFELL - 3600) * second},
        {"ff ff ff ff", SAHPI_TIME_UNSPECIFIED, SAHPI_TIME_UNSPECIFIED},
    };
    for (const Row &row : rows) {
        for (const char *type : {"02", "c0"}) {
            const Record each = record(std::string("01 00 ") + type + " " + row.bytes +
                                       " 20 00 04 07 01 6f 00 ff ff");
            EXPECT_EQ(eventOf(each).Timestamp, row.utc) << row.bytes;
            EXPECT_EQ(eventOf(each, {.utcOffset = 60}).Timestamp, row.oneHourEast) << row.bytes;
        }
    }
    const Record west = record("01 00 02 33 19 81 65 20 00 04 07 01 6f 00 ff ff");
    EXPECT_EQ(eventOf(west, {.utcOffset = -90}).Timestamp, (1702959411LL + 5400) * second);
}

TEST(SelMapping, WatchdogEvent) {
    const EventLogAddRecord added =
        toEvent(record("b9 00 02 85 21 ae 65 20 00 04 23 ca 6f c1 24 00"), {});
    EXPECT_EQ(added.event.EventType, SAHPI_ET_WATCHDOG);
    EXPECT_EQ(added.event.Source, 0x20U);
    EXPECT_EQ(added.event.Severity, SAHPI_MAJOR);
    const SaHpiWatchdogEventT &watchdog = added.event.EventDataUnion.WatchdogEvent;
    EXPECT_EQ(watchdog.WatchdogNum, 0xCAU);
    EXPECT_EQ(watchdog.WatchdogAction, SAHPI_WAE_RESET);
    EXPECT_EQ(watchdog.WatchdogPreTimerAction, SAHPI_WPI_NMI);
    EXPECT_EQ(watchdog.WatchdogUse, SAHPI_WTU_SMS_OS);
    EXPECT_EQ(added.rpt.ResourceCapabilities,
              SAHPI_CAPABILITY_RESOURCE | SAHPI_CAPABILITY_WATCHDOG);
    EXPECT_EQ(added.rdr.RdrType, SAHPI_WATCHDOG_RDR);
    EXPECT_EQ(added.rdr.RecordId, 0xB9U);
    EXPECT_EQ(added.rdr.RdrTypeUnion.WatchdogRec.WatchdogNum, 0xCAU);
    EXPECT_EQ(textOf(added.rdr.IdString), "Watchdog 2 0xCA");
}

TEST(SelMapping, WatchdogActionsInterruptsAndUses) {
    const std::pair<unsigned, SaHpiWatchdogActionEventT> actions[] = {
        {0, SAHPI_WAE_NO_ACTION},   {1, SAHPI_WAE_RESET},     {2, SAHPI_WAE_POWER_DOWN},
        {3, SAHPI_WAE_POWER_CYCLE}, {8, SAHPI_WAE_TIMER_INT},
    };
    for (const auto &[number, action] : actions) {
        const auto event = eventOf(systemEvent(0x23, 0x6F, static_cast<std::uint8_t>(number)));
        EXPECT_EQ(event.EventDataUnion.WatchdogEvent.WatchdogAction, action);
    }
    const std::pair<unsigned, SaHpiWatchdogPretimerInterruptT> interrupts[] = {
        {0, SAHPI_WPI_NONE}, {1, SAHPI_WPI_SMI},
        {2, SAHPI_WPI_NMI},  {3, SAHPI_WPI_MESSAGE_INTERRUPT},
        {15, SAHPI_WPI_OEM},
    };
    for (const auto &[number, interrupt] : interrupts) {
        const auto event =
            eventOf(systemEvent(0x23, 0x6F, 0xC0, static_cast<std::uint8_t>(number << 4)));
        EXPECT_EQ(event.EventDataUnion.WatchdogEvent.WatchdogPreTimerAction, interrupt);
    }
    const std::pair<unsigned, SaHpiWatchdogTimerUseT> uses[] = {
        {1, SAHPI_WTU_BIOS_FRB2}, {2, SAHPI_WTU_BIOS_POST}, {3, SAHPI_WTU_OS_LOAD},
        {4, SAHPI_WTU_SMS_OS},    {5, SAHPI_WTU_OEM},       {15, SAHPI_WTU_UNSPECIFIED},
    };
    for (const auto &[number, use] : uses) {
        const auto event =
            eventOf(systemEvent(0x23, 0x6F, 0xC0, static_cast<std::uint8_t>(number)));
        EXPECT_EQ(event.EventDataUnion.WatchdogEvent.WatchdogUse, use);
    }
}

TEST(SelMapping, WatchdogWithoutData2SaysNothingOfInterruptAndUse) {
    for (const std::uint8_t data1 : Bytes{0x00, 0x40, 0x80}) {
        const auto event = eventOf(systemEvent(0x23, 0x6F, data1, 0x24));
        EXPECT_EQ(event.EventDataUnion.WatchdogEvent.WatchdogPreTimerAction, SAHPI_WPI_NONE);
        EXPECT_EQ(event.EventDataUnion.WatchdogEvent.WatchdogUse, SAHPI_WTU_UNSPECIFIED);
    }
}

TEST(SelMapping, Watchdog23hOfAnotherEventTypeIsASensor) {
    EXPECT_EQ(sensorOf(systemEvent(0x23, 0x03, 1)).SensorType, SAHPI_RESERVED2);
}

TEST(SelMapping, OemRecordWithTime) {
    const Record each = record("03 00 dd 33 19 81 65 37 01 00 00 01 00 02 80 00");
    const EventLogAddRecord added = toEvent(each, {});
    EXPECT_EQ(added.event.EventType, SAHPI_ET_OEM);
    EXPECT_EQ(added.event.Severity, SAHPI_INFORMATIONAL);
    EXPECT_EQ(added.event.Timestamp, 1702959411LL * second);
    const SaHpiOemEventT &oem = added.event.EventDataUnion.OemEvent;
    EXPECT_EQ(oem.MId, 0x000137U);
    EXPECT_EQ(oem.OemEventData.DataType, SAHPI_TL_TYPE_BINARY);
    ASSERT_EQ(oem.OemEventData.DataLength, 16);
    EXPECT_EQ(std::vector(oem.OemEventData.Data, oem.OemEventData.Data + 16),
              std::vector(each.bytes.begin(), each.bytes.end()));
    EXPECT_EQ(added.rpt.ResourceCapabilities, 0U);
    EXPECT_EQ(added.rdr.RdrType, SAHPI_NO_RECORD);
    EXPECT_EQ(eventOf(each, {.oemOrder = OemOrder::reversed}).EventDataUnion.OemEvent.MId,
              0x370100U);
}

TEST(SelMapping, OemRecordWithoutTime) {
    const Record each = record("fe 00 f0 20 00 4c 69 63 65 6e 73 65 20 65 78 70");
    const SaHpiEventT event = eventOf(each, {.utcOffset = 60});
    EXPECT_EQ(event.EventType, SAHPI_ET_OEM);
    EXPECT_EQ(event.Timestamp, SAHPI_TIME_UNSPECIFIED);
    EXPECT_EQ(event.EventDataUnion.OemEvent.MId, SAHPI_MANUFACTURER_ID_UNSPECIFIED);
    EXPECT_EQ(event.EventDataUnion.OemEvent.OemEventData.DataLength, 16);
}

TEST(SelMapping, SourceTagAndIdString) {
    const EventLogAddRecord added =
        toEvent(record("cc 07 02 a5 07 94 67 20 00 03 01 30 01 59 7f 6b"), {});
    EXPECT_EQ(added.event.Source, 0x20U);
    EXPECT_EQ(added.event.EventDataUnion.SensorEvent.SensorNum, 0x30U);
    EXPECT_EQ(added.rpt.ResourceId, 0x20U);
    EXPECT_EQ(added.rpt.ResourceInfo.SpecificVer, 3);
    EXPECT_EQ(added.rpt.ResourceCapabilities, SAHPI_CAPABILITY_RESOURCE | SAHPI_CAPABILITY_SENSOR);
    EXPECT_EQ(added.rpt.ResourceEntity.Entry[0].EntityType, SAHPI_ENT_ROOT);
    EXPECT_EQ(textOf(added.rpt.ResourceTag), "BMC");
    EXPECT_EQ(added.rdr.RecordId, 0x07CCU);
    EXPECT_EQ(added.rdr.RdrType, SAHPI_SENSOR_RDR);
    EXPECT_EQ(added.rdr.Entity.Entry[0].EntityType, SAHPI_ENT_ROOT);
    EXPECT_EQ(added.rdr.RdrTypeUnion.SensorRec.Num, 0x30U);
    EXPECT_EQ(added.rdr.RdrTypeUnion.SensorRec.Type, SAHPI_TEMPERATURE);
    EXPECT_EQ(added.rdr.RdrTypeUnion.SensorRec.Category, SAHPI_EC_THRESHOLD);
    EXPECT_EQ(textOf(added.rdr.IdString), "Temperature 0x30");
}

TEST(SelMapping, TagsOfGenerators) {
    const std::pair<const char *, const char *> rows[] = {
        {"20 00", "BMC"},         {"01 00", "BIOS"},
        {"33 00", "SMI handler"}, {"41 00", "System software"},
        {"7e 00", "0x7E"},        {"00 00", "0x00"},
        {"20 60", "0x6020"},
    };
    for (const auto &[bytes, tag] : rows) {
        const Record each =
            record(std::string("01 00 02 a5 07 94 67 ") + bytes + " 04 01 30 01 59 7f 6b");
        EXPECT_EQ(textOf(toEvent(each, {}).rpt.ResourceTag), tag);
    }
}

TEST(SelMapping, EveryByteOfTheResultIsSet) {
    std::mt19937_64 random(4711);
    for (int i = 0; i < 1000; ++i) {
        const Record each = sel_samples::randomRecord(random);
        const EventLogAddRecord once = toEvent(each, {});
        const EventLogAddRecord again = toEvent(each, {});
        EXPECT_EQ(std::memcmp(&once, &again, sizeof once), 0);
    }
}

} // namespace
