// Goal: nothing of a record is lost. The sixteen bytes of every record come back from its entry,
// whatever they are and however they were mapped; no entry of another origin passes for imported.
#include "tools/evtlogctl/sel_packing.h"

#include <cstring>

#include <gtest/gtest.h>

#include "tests/evtlogctl/sel_samples.h"
#include "tools/evtlogctl/sel_mapping.h"

namespace {

using namespace zusahpi::sel;
using sel_samples::entryOf;
using sel_samples::record;

// A sanitizer makes each of them several times as slow.
#if defined(__SANITIZE_ADDRESS__)
constexpr int randomRecords = 1'000'000 / 10;
#else
constexpr int randomRecords = 1'000'000;
#endif

TEST(SelPacking, EveryRecordOfTheSampleFilesComesBack) {
    std::size_t count = 0;
    for (const std::string &file : sel_samples::sampleFiles()) {
        for (const Record &each : sel_samples::recordsOf(file)) {
            EXPECT_EQ(importedRecord(entryOf(each)), each) << file;
            ++count;
        }
    }
    EXPECT_EQ(count, 234U + 10U + 30U);
}

TEST(SelPacking, RandomRecordsComeBack) {
    const std::uint64_t seed = 0x5E1;
    std::mt19937_64 random(seed);
    for (int i = 0; i < randomRecords; ++i) {
        const Record each = sel_samples::randomRecord(random);
        ASSERT_EQ(importedRecord(entryOf(each)), each) << "seed " << seed << ", record " << i;
    }
}

// Random bytes are hardly ever a watchdog event, and seldom a common one.
TEST(SelPacking, RandomWatchdogAndThresholdRecordsComeBack) {
    const std::uint64_t seed = 0x5E2;
    std::mt19937_64 random(seed);
    for (int i = 0; i < randomRecords / 20; ++i) {
        Record each = sel_samples::randomRecord(random);
        each.bytes[offset::type] %= 0xC0;
        if (i % 2 == 0) {
            each.bytes[offset::sensorType] = watchdogSensor;
            each.bytes[offset::eventType] = sensorSpecificType | (random() % 2 == 0 ? 0x80 : 0);
        } else {
            each.bytes[offset::eventType] = thresholdType | (random() % 2 == 0 ? 0x80 : 0);
        }
        ASSERT_EQ(importedRecord(entryOf(each)), each) << "seed " << seed << ", record " << i;
    }
}

TEST(SelPacking, EveryValueOfEveryByteComesBack) {
    for (const char *base : {"40 00 02 33 19 81 65 20 00 04 28 ee 6f c4 35 ff",
                             "b9 00 02 85 21 ae 65 20 00 04 23 ca 6f 09 0f 00",
                             "cc 07 02 a5 07 94 67 20 00 04 01 5a 01 59 7f 6b",
                             "03 00 dd 33 19 81 65 37 01 00 00 01 00 02 80 00",
                             "fe 00 f0 20 00 4c 69 63 65 6e 73 65 20 65 78 70"}) {
        for (std::size_t at = 0; at < recordSize; ++at) {
            for (unsigned value = 0; value <= 0xFF; ++value) {
                Record each = record(base);
                each.bytes[at] = static_cast<std::uint8_t>(value);
                EXPECT_EQ(importedRecord(entryOf(each)), each) << base << " " << at << " " << value;
            }
        }
    }
}

TEST(SelPacking, OffsetsFromUtcAndTheOrderOfTheManufacturerDoNotMatter) {
    std::mt19937_64 random(0x5E3);
    for (int i = 0; i < 20'000; ++i) {
        Record each = sel_samples::randomRecord(random);
        if (i % 4 == 0) { // around the end of relative times
            putLittleEndian(each, offset::time, 4,
                            lastRelativeTime - 100'000 +
                                static_cast<std::uint32_t>(random() % 200'000));
        }
        const Mapping mapping{.utcOffset = static_cast<std::int32_t>(random() % 1681) - 840,
                              .oemOrder = i % 2 == 0 ? OemOrder::wire : OemOrder::reversed,
                              .severities = &builtInSeverities()};
        ASSERT_EQ(importedRecord(entryOf(each, 1, mapping)), each) << i;
    }
}

TEST(SelPacking, SeverityAndTextsDoNotMatter) {
    const Record each = record("cc 07 02 a5 07 94 67 20 00 04 01 5a 01 59 7f 6b");
    EventLogEntryRecord entry = entryOf(each);
    entry.entry.Event.Severity = SAHPI_DEBUG;
    entry.rpt.ResourceTag.DataLength = 1;
    entry.rdr.IdString.Data[0] = 'X';
    EXPECT_EQ(importedRecord(entry), each);
}

TEST(SelPacking, WhereTheBytesLie) {
    const EventLogEntryRecord sensor =
        entryOf(record("cc 07 03 a5 07 94 67 20 60 04 2a 5a ef c2 7f 6b"), 1, {.utcOffset = -300});
    EXPECT_EQ(sensor.rdr.RecordId, 0x07CCU);
    EXPECT_EQ(sensor.rdr.RdrTypeUnion.SensorRec.Oem, 0x032AEFC2U);
    EXPECT_EQ(sensor.entry.Event.EventDataUnion.SensorEvent.Oem, 0x7F6BU);
    EXPECT_EQ(sensor.entry.Event.Source, 0x6020U);
    EXPECT_EQ(sensor.rpt.ResourceInfo.SpecificVer, 4);
    EXPECT_EQ(sensor.rpt.EntryId, static_cast<SaHpiEntryIdT>(-300));

    const EventLogEntryRecord watchdog =
        entryOf(record("b9 00 02 85 21 ae 65 20 00 04 23 ca ef c9 0f 5a"));
    EXPECT_EQ(watchdog.rdr.RdrTypeUnion.WatchdogRec.Oem, 0x02C10F5AU);
    EXPECT_EQ(watchdog.entry.Event.EventDataUnion.WatchdogEvent.WatchdogAction, 9U);
    EXPECT_EQ(watchdog.rpt.EntryId, 0U);
}

TEST(SelPacking, OtherEntriesAreNotImported) {
    EventLogEntryRecord entry{};
    for (unsigned type = 0; type <= 9; ++type) {
        entry.entry.Event.EventType = static_cast<SaHpiEventTypeT>(type);
        EXPECT_EQ(importedRecord(entry), std::nullopt) << type;
    }
    // A sensor event of another program, with an RPT entry and an RDR of its own.
    entry.entry.Event.EventType = SAHPI_ET_SENSOR;
    entry.rpt.ResourceCapabilities = SAHPI_CAPABILITY_RESOURCE | SAHPI_CAPABILITY_SENSOR;
    entry.rdr.RdrType = SAHPI_SENSOR_RDR;
    EXPECT_EQ(importedRecord(entry), std::nullopt);
}

// The bytes of an entry that do not tell whether it was imported.
bool isFree(std::size_t byte) {
    const auto within = [byte](std::size_t begin, std::size_t size) {
        return byte >= begin && byte < begin + size;
    };
    return within(offsetof(EventLogEntryRecord, entry.Event.Severity), sizeof(SaHpiSeverityT)) ||
           within(offsetof(EventLogEntryRecord, rpt.ResourceTag), sizeof(SaHpiTextBufferT)) ||
           within(offsetof(EventLogEntryRecord, rdr.IdString), sizeof(SaHpiTextBufferT));
}

// Whichever bit of the event, RPT entry or RDR changes, the entry is no image of its record any
// more: it is that of another record, or of none.
TEST(SelPacking, AChangedEntryIsNotTakenForItsRecord) {
    for (const char *base : {"cc 07 02 a5 07 94 67 20 00 04 01 5a 01 59 7f 6b",
                             "b9 00 02 85 21 ae 65 20 00 04 23 ca 6f c9 0f 00",
                             "03 00 dd 33 19 81 65 37 01 00 00 01 00 02 80 00"}) {
        const Record original = record(base);
        const EventLogEntryRecord entry = entryOf(original);
        constexpr std::size_t begin = offsetof(EventLogEntryRecord, entry.Event);
        for (std::size_t bit = begin * 8; bit < sizeof entry * 8; ++bit) {
            EventLogEntryRecord changed;
            std::memcpy(&changed, &entry, sizeof changed);
            auto *bytes = reinterpret_cast<unsigned char *>(&changed);
            bytes[bit / 8] = static_cast<unsigned char>(bytes[bit / 8] ^ 1U << bit % 8);
            EXPECT_EQ(importedRecord(changed) == original, isFree(bit / 8))
                << base << " byte " << bit / 8 << " bit " << bit % 8;
        }
    }
}

TEST(SelPacking, HostileEntriesBreakNothing) {
    std::mt19937_64 random(0x5E4);
    for (int i = 0; i < 20'000; ++i) {
        EventLogEntryRecord entry = entryOf(sel_samples::randomRecord(random));
        auto *bytes = reinterpret_cast<unsigned char *>(&entry);
        for (int change = 0; change < 4; ++change) {
            bytes[sel_samples::below(sizeof entry, random)] = static_cast<unsigned char>(random());
        }
        (void)importedRecord(entry); // the sanitizers judge
    }
    for (const SaHpiTimeT time : {SAHPI_TIME_UNSPECIFIED + 1, SaHpiTimeT{-1},
                                  static_cast<SaHpiTimeT>(0x7FFFFFFFFFFFFFFFLL)}) {
        for (const char *base : {"cc 07 02 a5 07 94 67 20 00 04 01 5a 01 59 7f 6b",
                                 "03 00 dd 33 19 81 65 37 01 00 00 01 00 02 80 00"}) {
            EventLogEntryRecord entry = entryOf(record(base));
            entry.entry.Event.Timestamp = time;
            EXPECT_EQ(importedRecord(entry), std::nullopt);
        }
    }
}

TEST(SelPacking, OffsetsThatNoClockHasAreRefused) {
    EventLogEntryRecord entry = entryOf(record("cc 07 02 a5 07 94 67 20 00 04 01 5a 01 59 7f 6b"));
    entry.rpt.EntryId = 24 * 60 + 1;
    EXPECT_EQ(utcOffsetOf(entry.rpt), std::nullopt);
    EXPECT_EQ(importedRecord(entry), std::nullopt);
    entry.rpt.EntryId = 0x80000000U;
    EXPECT_EQ(utcOffsetOf(entry.rpt), std::nullopt);
}

} // namespace
