// Goal: the check of a whole log file that the other tests rely on accepts sound files of every
// type and says of each damage by itself what is wrong, no more and no less.

#include "tests/support/log_soundness.h"

#include <cstring>

#include <gtest/gtest.h>

#include "zuSaHpi_util.h"

using test_support::unsoundness;

namespace {

constexpr std::uint32_t none = 0xFFFFFFFF;

using Findings = std::vector<std::string>;

// A log file under construction or destruction.
struct Image {
    std::string bytes = std::string(6064, '\0');

    void set(std::size_t offset, std::uint32_t value) {
        std::memcpy(bytes.data() + offset, &value, sizeof value);
    }
    void setByte(std::size_t offset, char value) {
        bytes[offset] = value;
    }
    static std::size_t place(std::uint32_t number) {
        return 6064 + (std::size_t{number} - 1) * 1496;
    }
    void setDeleted(std::uint32_t number, std::uint32_t value) {
        set(place(number), value);
    }
    void setPrev(std::uint32_t number, std::uint32_t value) {
        set(place(number) + 4, value);
    }
    void setNext(std::uint32_t number, std::uint32_t value) {
        set(place(number) + 8, value);
    }
    void setId(std::uint32_t number, std::uint32_t value) {
        set(place(number) + 16, value);
    }
    void setEntries(std::uint32_t value) {
        set(0, value);
    }
    void setSize(std::uint32_t value) {
        set(4, value);
    }
    void setOldest(std::uint32_t value) {
        set(48, value);
    }
    void setNewest(std::uint32_t value) {
        set(52, value);
    }
    void setFreeHead(std::uint32_t value) {
        set(56, value);
    }
    void setMaxUsed(std::uint32_t value) {
        set(60, value);
    }
};

// Records 1 to `records`, all of them active and without links.
Image logOf(std::uint32_t type, std::uint32_t size, std::uint32_t records, std::uint32_t oldest,
            std::uint32_t newest, std::uint32_t entries) {
    Image image;
    image.setEntries(entries);
    image.setSize(size);
    image.set(40, type);
    image.setOldest(oldest);
    image.setNewest(newest);
    image.setFreeHead(none);
    image.setMaxUsed(records);
    image.bytes.resize(6064 + std::size_t{records} * 1496);
    for (std::uint32_t number = 1; number <= records; ++number) {
        image.setPrev(number, none);
        image.setNext(number, none);
        image.setId(number, number);
    }
    return image;
}

Image emptyLog(std::uint32_t type) {
    return logOf(type, 5, 0, none, none, 0);
}

Image simpleLog() {
    return logOf(0, 5, 3, 1, 3, 3);
}

// 2, 3: the ring has not come round yet.
Image openRing() {
    return logOf(1, 5, 3, 2, 3, 2);
}

// 4, 5, 1: the ring has come round; 2 and 3 are dead.
Image closedRing() {
    return logOf(1, 5, 5, 4, 1, 3);
}

// The chain 3, 1, 5 and the free list 4, 2.
Image linkedLog() {
    Image image = logOf(2, 6, 5, 3, 5, 3);
    image.setNext(3, 1);
    image.setPrev(1, 3);
    image.setNext(1, 5);
    image.setPrev(5, 1);
    image.setFreeHead(4);
    image.setDeleted(4, 1);
    image.setNext(4, 2);
    image.setDeleted(2, 1);
    return image;
}

TEST(LogSoundness, SoundLogsOfEveryType) {
    for (std::uint32_t type = 0; type <= 2; ++type) {
        EXPECT_EQ(unsoundness(emptyLog(type).bytes), Findings{}) << type;
    }
    EXPECT_EQ(unsoundness(simpleLog().bytes), Findings{});
    EXPECT_EQ(unsoundness(openRing().bytes), Findings{});
    EXPECT_EQ(unsoundness(closedRing().bytes), Findings{});
    EXPECT_EQ(unsoundness(linkedLog().bytes), Findings{});
}

TEST(LogSoundness, ALinkedLogOfDeletedEntriesAlone) {
    Image image = logOf(2, 2, 2, none, none, 0);
    image.setFreeHead(1);
    image.setNext(1, 2);
    image.setDeleted(1, 1);
    image.setDeleted(2, 1);
    EXPECT_EQ(unsoundness(image.bytes), Findings{});
}

TEST(LogSoundness, DeadBytesAtTheEndAreNotLookedAt) {
    EXPECT_EQ(unsoundness(simpleLog().bytes + "dead"), Findings{});
}

struct Damage {
    const char *name;
    Image (*make)();
    void (*damage)(Image &);
    Findings expected;
};

void PrintTo(const Damage &damage, std::ostream *out) {
    *out << damage.name;
}

class EachDamage : public testing::TestWithParam<Damage> {};

TEST_P(EachDamage, IsNamed) {
    Image image = GetParam().make();
    GetParam().damage(image);
    EXPECT_EQ(unsoundness(image.bytes), GetParam().expected);
}

std::string nameOf(const testing::TestParamInfo<Damage> &info) {
    return info.param.name;
}

const Damage ofFields[] = {
    {"NoBytes",
     simpleLog,
     [](Image &image) { image.bytes.clear(); },
     {"the file has 0 bytes, too few for info record and transaction log area"}},
    {"NoEntryArea",
     simpleLog,
     [](Image &image) { image.bytes.resize(6063); },
     {"the file has 6063 bytes, too few for info record and transaction log area"}},
    {"CutShort",
     simpleLog,
     [](Image &image) { image.bytes.pop_back(); },
     {"the file has 10551 bytes, too few for 3 entries"}},
    {"Enabled",
     simpleLog,
     [](Image &image) { image.setByte(32, 2); },
     {"Enabled is 2, neither 0 nor 1"}},
    {"OverflowFlag",
     simpleLog,
     [](Image &image) { image.setByte(33, -1); },
     {"OverflowFlag is 255, neither 0 nor 1"}},
    {"OverflowResetable",
     simpleLog,
     [](Image &image) { image.setByte(34, 2); },
     {"OverflowResetable is 2, neither 0 nor 1"}},
    {"OverflowAction",
     simpleLog,
     [](Image &image) { image.set(36, 2); },
     {"OverflowAction is 2, neither 0 nor 1"}},
    {"Type", simpleLog, [](Image &image) { image.set(40, 3); }, {"type is 3, none of 0, 1, 2"}},
    {"ActionWhenFull",
     simpleLog,
     [](Image &image) { image.set(44, 3); },
     {"overflowAction is 3, none of 0, 1, 2"}},
    {"Updating",
     linkedLog,
     [](Image &image) { image.set(72, 1); },
     {"updating is 1: a transaction waits"}},
    {"MaxUsedAboveSize",
     simpleLog,
     [](Image &image) { image.setSize(2); },
     {"Entries is 3, more than Size 2", "maxUsed is 3, more than Size 2"}},
    {"HugeMaxUsed",
     simpleLog,
     [](Image &image) { image.setMaxUsed(none); },
     {"maxUsed is 4294967295, more than Size 5",
      "the file has 10552 bytes, too few for 4294967295 entries"}},
    {"FreeHeadOfASimpleLog",
     simpleLog,
     [](Image &image) { image.setFreeHead(1); },
     {"freeHead is 1 though the log is not Linked"}},
    {"EndsOfAnEmptyLog",
     [] { return emptyLog(2); },
     [](Image &image) { image.setOldest(1); },
     {"Entries is 0 but oldest is 1 and newest none"}},
    {"OldestZero",
     simpleLog,
     [](Image &image) { image.setOldest(0); },
     {"oldest is 0, not an entry number up to maxUsed"}},
    {"OldestNone",
     linkedLog,
     [](Image &image) { image.setOldest(none); },
     {"oldest is none, not an entry number up to maxUsed"}},
    {"NewestTooHigh",
     closedRing,
     [](Image &image) { image.setNewest(6); },
     {"newest is 6, not an entry number up to maxUsed"}},
    {"OneId", linkedLog, [](Image &image) { image.setId(4, 2); }, {"entry 4 bears the id 2"}},
};

const Damage ofUnlinkedLogs[] = {
    {"DeletedEntry",
     simpleLog,
     [](Image &image) { image.setDeleted(2, 1); },
     {"entry 2 is marked deleted (1) though the log is not Linked"}},
    {"LinkedEntry",
     closedRing,
     [](Image &image) { image.setNext(2, 3); },
     {"entry 2 has links though the log is not Linked"}},
    {"SimpleEntries",
     simpleLog,
     [](Image &image) { image.setEntries(2); },
     {"Entries is 2 but 3 are reachable"}},
    {"SimpleOldest",
     simpleLog,
     [](Image &image) { image.setOldest(2); },
     {"oldest is 2 in a Simple log, which begins at 1"}},
    {"SimpleNewest",
     simpleLog,
     [](Image &image) { image.setNewest(2); },
     {"maxUsed is 3 instead of 2", "Entries is 3 but 2 are reachable"}},
    {"SimpleEmptyMaxUsed",
     simpleLog,
     [](Image &image) {
         image.setEntries(0);
         image.setOldest(none);
         image.setNewest(none);
     },
     {"maxUsed is 3 instead of 0"}},
    {"OpenRingEntries",
     openRing,
     [](Image &image) { image.setEntries(3); },
     {"Entries is 3 but 2 are reachable"}},
    {"OpenRingMaxUsed",
     openRing,
     [](Image &image) { image.setMaxUsed(2); },
     {"newest is 3, not an entry number up to maxUsed"}},
    {"OpenRingNewest",
     openRing,
     [](Image &image) { image.setNewest(2); },
     {"maxUsed is 3 instead of 2", "Entries is 2 but 1 are reachable"}},
    {"ClosedRingEntries",
     closedRing,
     [](Image &image) { image.setEntries(5); },
     {"Entries is 5 but 3 are reachable"}},
    {"ClosedRingOldest",
     closedRing,
     [](Image &image) { image.setOldest(3); },
     {"Entries is 3 but 4 are reachable"}},
    {"RingClosedBeforeSize",
     closedRing,
     [](Image &image) { image.setSize(6); },
     {"maxUsed is 5 instead of 6"}},
};

const Damage ofLinks[] = {
    {"Entries",
     linkedLog,
     [](Image &image) { image.setEntries(4); },
     {"Entries is 4 but 3 are reachable"}},
    {"ChainLeavesTheLog",
     linkedLog,
     [](Image &image) { image.setNext(1, 6); },
     {"entry 1 leads on to 6, not an entry number up to maxUsed",
      "Entries is 3 but 2 are reachable", "entry 5 is neither in the chain nor on the free list"}},
    {"ChainComesBack",
     linkedLog,
     [](Image &image) { image.setNext(5, 1); },
     {"the chain comes to entry 1 again"}},
    {"ChainEndsEarly",
     linkedLog,
     [](Image &image) { image.setNext(1, none); },
     {"the chain ends at entry 1 but newest is 5", "Entries is 3 but 2 are reachable",
      "entry 5 is neither in the chain nor on the free list"}},
    {"Prev",
     linkedLog,
     [](Image &image) { image.setPrev(5, 3); },
     {"entry 5 has prev 3 but comes after 1"}},
    {"PrevOfTheOldest",
     linkedLog,
     [](Image &image) { image.setPrev(3, 1); },
     {"entry 3 has prev 1 but comes after none"}},
    {"DeletedInTheChain",
     linkedLog,
     [](Image &image) { image.setDeleted(1, 1); },
     {"entry 1 is in the chain but marked deleted (1)"}},
    {"Newest",
     linkedLog,
     [](Image &image) { image.setNewest(1); },
     {"the chain ends at entry 5 but newest is 1"}},
    {"ActiveOnTheFreeList",
     linkedLog,
     [](Image &image) { image.setDeleted(2, 0); },
     {"entry 2 is on the free list but its mark is 0"}},
    {"OtherMarkOnTheFreeList",
     linkedLog,
     [](Image &image) { image.setDeleted(4, 2); },
     {"entry 4 is on the free list but its mark is 2"}},
    {"FreeListLeavesTheLog",
     linkedLog,
     [](Image &image) { image.setNext(2, 0); },
     {"the free list leads to 0, not an entry number up to maxUsed"}},
    {"FreeListComesBack",
     linkedLog,
     [](Image &image) { image.setNext(2, 4); },
     {"the free list comes to entry 4 again"}},
    {"FreeListEndsEarly",
     linkedLog,
     [](Image &image) { image.setNext(4, none); },
     {"entry 2 is neither in the chain nor on the free list"}},
    {"FreeListRunsIntoTheChain",
     linkedLog,
     [](Image &image) { image.setNext(2, 5); },
     {"entry 5 is on the free list but its mark is 0",
      "entry 5 is in the chain and on the free list"}},
    {"FreeHeadNone",
     linkedLog,
     [](Image &image) { image.setFreeHead(none); },
     {"entry 2 is neither in the chain nor on the free list",
      "entry 4 is neither in the chain nor on the free list"}},
};

INSTANTIATE_TEST_SUITE_P(Fields, EachDamage, testing::ValuesIn(ofFields), nameOf);
INSTANTIATE_TEST_SUITE_P(UnlinkedLogs, EachDamage, testing::ValuesIn(ofUnlinkedLogs), nameOf);
INSTANTIATE_TEST_SUITE_P(Links, EachDamage, testing::ValuesIn(ofLinks), nameOf);

} // namespace
