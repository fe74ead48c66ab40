// The table of recovery.cpp, enumerated: every value class of the flag, every content of the four
// slots, every place at which the file may end, each for all types where it could matter. A slow
// and plain model says what must come of each; it shares no code with the store.

#include <array>
#include <cstdio>
#include <cstring>

#include <gtest/gtest.h>

#include "tests/crash/session.h"
#include "tests/support/child.h"
#include "tests/support/files.h"

using namespace crash_test;
using store_test::FileImage;
using store_test::none;

namespace {

constexpr std::size_t slotsStart = 80;
constexpr std::size_t idOffset = 16;
constexpr std::size_t updatingOffset = 72;
constexpr std::size_t whole = 0xFFFFFFFF; // a file that is not cut

using Ids = std::array<std::uint32_t, 4>;

struct Found {
    std::uint32_t type;
    std::uint32_t size;
    std::uint32_t maxUsed;
    std::uint32_t updating;
    Ids ids;
    std::size_t length; // where the file ends
};

struct Outcome {
    int exitStatus;
    std::string message;
    std::string file;
};

EventLogControlBlock blockOf(const Found &found) {
    return store_test::controlBlock(found.type, store_test::drop, found.size);
}

std::string fileOf(const Found &found) {
    FileImage image;
    EventLogInfoRecord info = blockOf(found).info;
    info.sa.Entries = found.maxUsed;
    info.oldest = 1;
    info.newest = found.maxUsed;
    info.maxUsed = found.maxUsed;
    info.updating = found.updating;
    image.setInfo(info);
    for (std::uint32_t slot = 0; slot < 4; ++slot) {
        image.setSlot(
            slot, store_test::entryRecord(found.ids[slot], static_cast<std::uint8_t>(0x70 + slot)));
    }
    for (std::uint32_t number = 1; number <= found.maxUsed; ++number) {
        image.setEntry(store_test::entryRecord(number, static_cast<std::uint8_t>(number)));
    }
    image.bytes.resize(std::min(image.bytes.size(), found.length));
    return image.bytes;
}

// What the table says. The slots are taken one after the other: a record that is written in place
// makes a file longer that ends too early, so that what is missing of later slots reads as zeros.
Outcome expected(const Found &found) {
    std::string file = fileOf(found);
    for (std::size_t slot = 0; found.updating != 0 && slot < 4; ++slot) {
        const std::size_t start = slotsStart + slot * recordLength;
        if (file.size() < start + recordLength) {
            return {1, "Unable to read logged entry from existing log file.\n", file};
        }
        const std::string record = file.substr(start, recordLength);
        std::uint32_t id = 0;
        std::memcpy(&id, record.data() + idOffset, sizeof id);
        if (id == none) {
            break;
        }
        if (id < 1 || id > found.maxUsed || id > found.size) {
            return {1, "Error transacting logged record on existing log file.\n", file};
        }
        const std::size_t place = entriesStart + (id - 1) * recordLength;
        file.resize(std::max(file.size(), place + recordLength), '\0');
        file.replace(place, recordLength, record);
    }
    file.replace(updatingOffset, 4, std::string(4, '\0'));
    file.resize(entriesStart + found.maxUsed * recordLength, '\0');
    return {0, "", file};
}

std::string nameOf(const Found &found) {
    std::string name = "type " + std::to_string(found.type) + ", Size " +
                       std::to_string(found.size) + ", maxUsed " + std::to_string(found.maxUsed) +
                       ", updating " + std::to_string(found.updating) + ", slots";
    for (const std::uint32_t id : found.ids) {
        name += " " + std::to_string(id);
    }
    return name + ", file of " + std::to_string(fileOf(found).size());
}

void check(const Found &found) {
    const Outcome outcome = expected(found);
    test_support::writeFile(logPath(), fileOf(found));
    if (outcome.exitStatus == 0) {
        beginSession(blockOf(found));
        const std::string message = test_mainlib::state().diagnostics;
        endSession();
        EXPECT_EQ(message, outcome.message) << nameOf(found);
    } else {
        const test_support::ChildResult child =
            test_support::runInChild([&] { startLog(blockOf(found)); });
        EXPECT_EQ(child.exitStatus, outcome.exitStatus) << nameOf(found);
        EXPECT_EQ(child.diagnostics, outcome.message) << nameOf(found);
        EXPECT_FALSE(test_support::exists(lockPath())) << nameOf(found);
    }
    EXPECT_TRUE(test_support::readFile(logPath()) == outcome.file) << nameOf(found);
}

// First the starts that fail, each in a child of this process, which has started nothing yet.
void checkAll(const std::vector<Found> &rows) {
    std::size_t failures = 0;
    removeLog();
    for (const int exitStatus : {1, 0}) {
        for (const Found &found : rows) {
            if (expected(found).exitStatus == exitStatus) {
                failures += exitStatus == 1 ? 1 : 0;
                check(found);
            }
        }
    }
    EXPECT_GT(failures, 0U);
    EXPECT_LT(failures, rows.size());
    std::printf("figure: rows of the recovery table, %s: %zu\n",
                testing::UnitTest::GetInstance()->current_test_info()->name(), rows.size());
}

std::vector<Ids> everyFourOf(const std::vector<std::uint32_t> &choices) {
    std::vector<Ids> all;
    for (const std::uint32_t a : choices) {
        for (const std::uint32_t b : choices) {
            for (const std::uint32_t c : choices) {
                for (const std::uint32_t d : choices) {
                    all.push_back({a, b, c, d});
                }
            }
        }
    }
    return all;
}

// Numbers inside, below, just above and at the end of the log, and the end mark.
TEST(RecoveryTable, EveryContentOfTheSlots) {
    std::vector<Found> rows;
    for (const Ids &ids : everyFourOf({1, 3, 0, 4, 5, none})) {
        rows.push_back({store_test::linked, 5, 3, 1, ids, whole});
    }
    checkAll(rows);
}

// Size and maxUsed are both limits; a damaged file may have either as the lower one.
TEST(RecoveryTable, EveryLimit) {
    constexpr std::uint32_t size = 3;
    std::vector<Found> rows;
    for (const std::uint32_t maxUsed : {2, 3, 5}) {
        for (const Ids &ids : everyFourOf({2, 3, 4, 0xFFFFFFFE, none})) {
            rows.push_back({store_test::linked, size, maxUsed, 1, ids, whole});
        }
    }
    checkAll(rows);
}

TEST(RecoveryTable, EveryFlagAndType) {
    std::vector<Found> rows;
    for (const std::uint32_t updating : {0U, 1U, 2U, 0x80000000U, 0xFFFFFFFFU}) {
        for (const std::uint32_t type :
             {store_test::simple, store_test::circular, store_test::linked}) {
            for (const Ids &ids : everyFourOf({2, 0, none})) {
                rows.push_back({type, 5, 3, updating, ids, whole});
            }
        }
    }
    checkAll(rows);
}

// The file ends before a slot, in its links, behind its number, one byte short of its end.
TEST(RecoveryTable, EveryPlaceWhereTheFileIsCut) {
    std::vector<Found> rows;
    for (std::size_t slot = 0; slot < 4; ++slot) {
        for (const std::size_t kept :
             {std::size_t{0}, std::size_t{10}, std::size_t{1000}, recordLength - 1}) {
            for (const Ids &ids : everyFourOf({1, 4, none})) {
                for (const std::uint32_t updating : {0U, 1U}) {
                    rows.push_back({store_test::linked, 5, 3, updating, ids,
                                    slotsStart + slot * recordLength + kept});
                }
            }
        }
    }
    checkAll(rows);
}

} // namespace
