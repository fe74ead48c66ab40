// The bytes of a log file: that every field of the store's records lies where the format has it.

#include "eventlog/log_format.h"

#include <cstring>

#include "tests/eventlog/store_fixture.h"

using namespace store_test;

namespace {

class LogFormat : public StoreTest {};

TEST_F(LogFormat, NewFileIsInfoRecordAndFourUnusedSlots) {
    start(linked, wrap, 10);
    std::string expected(6064, '\0');
    const auto put32 = [&](std::size_t offset, std::uint32_t value) {
        std::memcpy(expected.data() + offset, &value, 4);
    };
    put32(4, 10);  // Size
    put32(8, 255); // UserEventMaxSize
    const std::int64_t now = 1'000'000'000;
    std::memcpy(expected.data() + 16, &now, 8); // UpdateTimestamp
    expected[32] = 1;                           // Enabled
    expected[34] = 1;                           // OverflowResetable
    put32(36, 1);                               // OverflowAction: overwrite
    put32(40, 2);                               // type: Linked
    put32(44, 1);                               // overflowAction: Wrap
    put32(48, none);
    put32(52, none);
    put32(56, none);
    for (std::size_t slot = 0; slot < 4; ++slot) {
        put32(80 + slot * 1496 + 16, none); // EntryId
    }
    EXPECT_EQ(file().bytes, expected);
}

TEST_F(LogFormat, EntryRecordLiesAsTheFormatHasIt) {
    test_mainlib::state().timeOfDay = 0x0102030405060708;
    start(linked, wrap, 10);
    const EventLogAddRecord added = event(0x5A);
    ASSERT_EQ(zuSaHpiEventLogEntryAdd(&added, 0), SA_OK);
    std::string expected(1496, '\0');
    const std::uint32_t id = 1;
    const std::int64_t time = 0x0102030405060708;
    std::memset(expected.data() + 4, 0xFF, 8); // prev, next
    std::memcpy(expected.data() + 16, &id, 4);
    std::memcpy(expected.data() + 24, &time, 8);
    std::memcpy(expected.data() + 32, &added, 1464);
    EXPECT_EQ(file().bytes.substr(6064), expected);
}

TEST_F(LogFormat, EntryNumbersArePlaces) {
    start(simple, drop, 10);
    for (std::uint8_t seed = 1; seed <= 7; ++seed) {
        add(seed);
    }
    const FileImage image = file();
    EXPECT_EQ(image.bytes.size(), 16536U);
    EXPECT_EQ(image.u32(6064 + 16), 1U);
    EXPECT_EQ(image.u32(7560 + 16), 2U);
    EXPECT_EQ(image.maxUsed(), 7U);
    EXPECT_EQ(image.newest(), 7U);
}

TEST_F(LogFormat, FileWithSevenRecordsIsCutToSevenRecordsAtTheNextStart) {
    test_support::inChild([] {
        start(simple, drop, 10);
        for (std::uint8_t seed = 1; seed <= 9; ++seed) {
            add(seed);
        }
        EXPECT_EQ(zuSaHpiEventLogEntryDel(SAHPI_NEWEST_ENTRY, 0), SA_OK);
        EXPECT_EQ(zuSaHpiEventLogEntryDel(SAHPI_NEWEST_ENTRY, 0), SA_OK);
        EXPECT_EQ(file().bytes.size(), 6064U + 9 * 1496);
    });
    start(simple, drop, 10);
    EXPECT_EQ(file().bytes.size(), 16536U);
}

TEST_F(LogFormat, OffsetsReachPastTwoGigabytes) {
    using namespace zusahpi::eventlog;
    EXPECT_EQ(entryOffset(0xFFFFFFFE), 6064 + 0xFFFFFFFDLL * 1496);
    EXPECT_EQ(fileSize(0), 6064);
    EXPECT_EQ(slotOffset(2), 80 + 2 * 1496);
}

} // namespace
