// Goal: what each function of the sorted index returns, the pages that it keeps, the three ways to
// run out of memory, and the whole against std::map with the two ends that walks never reach.

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/child.h"
#include "zuSaHpi_util.h"

namespace {

int pagesLeft = -1; // how many allocations still succeed; -1 for all
int allocations = 0;

} // namespace

extern "C" void *__real_malloc(std::size_t size);
extern "C" void *__wrap_malloc(std::size_t size);
extern "C" void *__wrap_malloc(std::size_t size) {
    ++allocations;
    if (pagesLeft == 0) {
        pagesLeft = -1;
        errno = ENOMEM;
        return nullptr;
    }
    pagesLeft -= pagesLeft > 0 ? 1 : 0;
    // What the allocator hands out is not cleared.
    void *memory = __real_malloc(size);
    std::memset(memory, 0xA5, size);
    return memory;
}

namespace {

using Keys = std::vector<std::uint32_t>;

// A value that tells which key it belongs to: for keys that a pointer can hold beside a set bit.
void *valueOf(std::uint32_t key) {
    return reinterpret_cast<void *>((std::uintptr_t{key} << 1) | 1);
}

// Values of no particular key.
std::array<char, 8> objects;

class Index : public testing::Test {
  protected:
    void *index = nullptr;

    void add(std::initializer_list<std::uint32_t> keys) {
        for (const std::uint32_t key : keys) {
            index = zuSaHpiIndexAdd(valueOf(key), key, index);
        }
    }
    void TearDown() override {
        EXPECT_EQ(zuSaHpiIndexFree(index), nullptr);
    }
};

// A page as it lies in memory: base, next page, slots.
struct Page {
    std::uint32_t base;
    const Page *next;
    std::array<void *, 32> slots;
};

Keys basesOf(const void *index) {
    Keys bases;
    for (auto *page = static_cast<const Page *>(index); page != nullptr; page = page->next) {
        bases.push_back(page->base);
    }
    return bases;
}

TEST_F(Index, NullIsTheEmptyIndex) {
    EXPECT_EQ(zuSaHpiIndexGet(5, nullptr), nullptr);
    EXPECT_EQ(zuSaHpiIndexGetNext(5, nullptr), nullptr);
    EXPECT_EQ(zuSaHpiIndexGetPrev(5, nullptr), nullptr);
    zuSaHpiIndexDel(5, nullptr);
    EXPECT_EQ(zuSaHpiIndexFree(nullptr), nullptr);
}

TEST_F(Index, PagesAreSortedAndTheFirstKeepsItsAddress) {
    add({100});
    void *const first = index;
    EXPECT_EQ(basesOf(index), (Keys{96}));
    add({5});
    EXPECT_EQ(index, first);
    EXPECT_EQ(basesOf(index), (Keys{0, 96}));
    add({70});
    EXPECT_EQ(index, first);
    EXPECT_EQ(basesOf(index), (Keys{0, 64, 96}));
    EXPECT_EQ(zuSaHpiIndexGet(100, index), valueOf(100));
    EXPECT_EQ(zuSaHpiIndexGet(5, index), valueOf(5));
    EXPECT_EQ(zuSaHpiIndexGet(70, index), valueOf(70));
    add({200, 150, 64, 95, 0, 31});
    EXPECT_EQ(index, first);
    EXPECT_EQ(basesOf(index), (Keys{0, 64, 96, 128, 192}));
}

TEST_F(Index, ANewPageHoldsNothingElse) {
    add({100, 5, 70});
    for (std::uint32_t key = 0; key < 200; ++key) {
        const bool present = key == 5 || key == 70 || key == 100;
        EXPECT_EQ(zuSaHpiIndexGet(key, index), present ? valueOf(key) : nullptr) << key;
    }
}

TEST_F(Index, NextIsTheSmallestKeyNotBelow) {
    add({100, 5, 70});
    EXPECT_EQ(zuSaHpiIndexGetNext(0, index), valueOf(5));
    EXPECT_EQ(zuSaHpiIndexGetNext(5, index), valueOf(5));
    EXPECT_EQ(zuSaHpiIndexGetNext(6, index), valueOf(70));
    EXPECT_EQ(zuSaHpiIndexGetNext(31, index), valueOf(70));
    EXPECT_EQ(zuSaHpiIndexGetNext(40, index), valueOf(70)); // its page does not exist
    EXPECT_EQ(zuSaHpiIndexGetNext(70, index), valueOf(70));
    EXPECT_EQ(zuSaHpiIndexGetNext(95, index), valueOf(100));
    EXPECT_EQ(zuSaHpiIndexGetNext(101, index), nullptr);
    EXPECT_EQ(zuSaHpiIndexGetNext(4000, index), nullptr);
}

TEST_F(Index, PrevIsTheLargestKeyNotAbove) {
    add({100, 5, 70});
    EXPECT_EQ(zuSaHpiIndexGetPrev(4, index), nullptr);
    EXPECT_EQ(zuSaHpiIndexGetPrev(5, index), valueOf(5));
    EXPECT_EQ(zuSaHpiIndexGetPrev(40, index), valueOf(5)); // its page does not exist
    EXPECT_EQ(zuSaHpiIndexGetPrev(64, index), valueOf(5));
    EXPECT_EQ(zuSaHpiIndexGetPrev(69, index), valueOf(5));
    EXPECT_EQ(zuSaHpiIndexGetPrev(70, index), valueOf(70));
    EXPECT_EQ(zuSaHpiIndexGetPrev(96, index), valueOf(70));
    EXPECT_EQ(zuSaHpiIndexGetPrev(4000, index), valueOf(100));
    EXPECT_EQ(zuSaHpiIndexGetPrev(0xFFFFFFFF, index), valueOf(100));
}

TEST_F(Index, BelowTheFirstPageThereIsNoPrev) {
    add({100});
    EXPECT_EQ(zuSaHpiIndexGetPrev(95, index), nullptr);
    EXPECT_EQ(zuSaHpiIndexGetPrev(99, index), nullptr);
}

// The two ends of the range can be stored and read, but a walk that starts there finds nothing.
TEST_F(Index, WalksFromTheEndsOfTheRangeFindNothing) {
    add({0});
    index = zuSaHpiIndexAdd(&objects[0], 0xFFFFFFFF, index);
    index = zuSaHpiIndexAdd(&objects[1], 0xFFFFFFFD, index);
    EXPECT_EQ(basesOf(index), (Keys{0, 0xFFFFFFE0}));
    EXPECT_EQ(zuSaHpiIndexGet(0, index), valueOf(0));
    EXPECT_EQ(zuSaHpiIndexGet(0xFFFFFFFF, index), &objects[0]);
    EXPECT_EQ(zuSaHpiIndexGetNext(0xFFFFFFFF, index), nullptr);
    EXPECT_EQ(zuSaHpiIndexGetPrev(0, index), nullptr);
    EXPECT_EQ(zuSaHpiIndexGetNext(0, index), valueOf(0));
    EXPECT_EQ(zuSaHpiIndexGetNext(1, index), &objects[1]);
    EXPECT_EQ(zuSaHpiIndexGetNext(0xFFFFFFFE, index), &objects[0]);
    EXPECT_EQ(zuSaHpiIndexGetPrev(0xFFFFFFFF, index), &objects[0]);
    EXPECT_EQ(zuSaHpiIndexGetPrev(0xFFFFFFFE, index), &objects[1]);
    EXPECT_EQ(zuSaHpiIndexGetPrev(0xFFFFFFFC, index), valueOf(0));
    EXPECT_EQ(zuSaHpiIndexGetPrev(1, index), valueOf(0));
    zuSaHpiIndexDel(0xFFFFFFFF, index);
    EXPECT_EQ(zuSaHpiIndexGetNext(0xFFFFFFFE, index), nullptr);
}

TEST_F(Index, TheLastPageMovesLikeAnyOther) {
    index = zuSaHpiIndexAdd(&objects[0], 0xFFFFFFFF, nullptr);
    index = zuSaHpiIndexAdd(&objects[1], 0xFFFFFFDF, index);
    EXPECT_EQ(basesOf(index), (Keys{0xFFFFFFC0, 0xFFFFFFE0}));
    EXPECT_EQ(zuSaHpiIndexGetNext(0xFFFFFFE0, index), &objects[0]);
    EXPECT_EQ(zuSaHpiIndexGetPrev(0xFFFFFFFE, index), &objects[1]);
}

TEST_F(Index, AnAddOverwritesWithoutNotice) {
    add({7});
    index = zuSaHpiIndexAdd(&objects[0], 7, index);
    EXPECT_EQ(zuSaHpiIndexGet(7, index), &objects[0]);
    EXPECT_EQ(basesOf(index), (Keys{0}));
}

TEST_F(Index, DeletingKeepsThePage) {
    add({1, 40, 63, 100});
    zuSaHpiIndexDel(40, index);
    zuSaHpiIndexDel(63, index);
    zuSaHpiIndexDel(63, index);  // already gone
    zuSaHpiIndexDel(2, index);   // never there
    zuSaHpiIndexDel(500, index); // nor its page
    EXPECT_EQ(basesOf(index), (Keys{0, 32, 96}));
    EXPECT_EQ(zuSaHpiIndexGet(40, index), nullptr);
    EXPECT_EQ(zuSaHpiIndexGet(63, index), nullptr);
    EXPECT_EQ(zuSaHpiIndexGetNext(2, index), valueOf(100));
    EXPECT_EQ(zuSaHpiIndexGetPrev(99, index), valueOf(1));
    EXPECT_EQ(zuSaHpiIndexGetPrev(63, index), valueOf(1));
    zuSaHpiIndexDel(1, index);
    EXPECT_EQ(zuSaHpiIndexGetPrev(63, index), nullptr);
    add({40});
    EXPECT_EQ(zuSaHpiIndexGet(40, index), valueOf(40));
    EXPECT_EQ(basesOf(index), (Keys{0, 32, 96}));
}

TEST_F(Index, AddingNullDeletes) {
    add({7, 8});
    EXPECT_EQ(zuSaHpiIndexAdd(nullptr, 7, index), index);
    EXPECT_EQ(zuSaHpiIndexGet(7, index), nullptr);
    EXPECT_EQ(zuSaHpiIndexGetNext(0, index), valueOf(8));
}

TEST_F(Index, OneAllocationForEachPage) {
    const int before = allocations;
    add({100, 101, 5, 6, 70, 71, 72});
    EXPECT_EQ(allocations - before, 3);
    zuSaHpiIndexDel(70, index);
    (void)zuSaHpiIndexGetNext(0, index);
    EXPECT_EQ(allocations - before, 3);
}

// Runs out of memory when `last` is added to an index of `before`.
void expectDeath(std::initializer_list<std::uint32_t> before, std::uint32_t last,
                 const std::string &message) {
    const test_support::ChildResult result = test_support::runInChild([&] {
        void *index = nullptr;
        for (const std::uint32_t key : before) {
            index = zuSaHpiIndexAdd(valueOf(key), key, index);
        }
        pagesLeft = 0;
        zuSaHpiIndexAdd(valueOf(last), last, index);
        pagesLeft = -1;
    });
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, message);
}

TEST_F(Index, ExhaustedMemoryEndsTheProcess) {
    expectDeath({}, 5, "malloc of initial index page: Cannot allocate memory\n");
    expectDeath({5}, 50, "malloc of new index page: Cannot allocate memory\n");
    expectDeath({5, 100}, 50, "malloc of new index page: Cannot allocate memory\n");
    expectDeath({100}, 50, "malloc of add-on index page: Cannot allocate memory\n");
}

TEST_F(Index, AKeyOfAKnownPageNeedsNoMemory) {
    test_support::inChild([&] {
        add({5, 100});
        pagesLeft = 0;
        add({6, 127});
        pagesLeft = -1;
        EXPECT_EQ(zuSaHpiIndexGet(127, index), valueOf(127));
    });
}

using Map = std::map<std::uint32_t, void *>;

void *expectedNext(const Map &map, std::uint32_t key) {
    const auto found = map.lower_bound(key);
    return key == 0xFFFFFFFF || found == map.end() ? nullptr : found->second;
}

void *expectedPrev(const Map &map, std::uint32_t key) {
    const auto above = map.upper_bound(key);
    return key == 0 || above == map.begin() ? nullptr : std::prev(above)->second;
}

std::size_t below(std::mt19937_64 &random, std::size_t limit) {
    return static_cast<std::size_t>(random() % limit);
}

// Keys cluster at both ends of the range and around a few places of it.
std::uint32_t randomKey(std::mt19937_64 &random) {
    constexpr std::array<std::uint32_t, 5> centres = {0, 0xFFFFFFFF, 0x80000000, 1000, 0x12345678};
    const std::uint32_t centre = centres[below(random, centres.size())];
    return centre + static_cast<std::uint32_t>(random() % 401) - 200;
}

TEST_F(Index, BehavesLikeAMap) {
    const std::uint64_t seed = 20'260'102;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937_64 random(seed);
    Map map;
    const void *first = nullptr;
    for (int step = 0; step < 20'000; ++step) {
        const std::uint32_t key = randomKey(random);
        void *value = &objects[below(random, objects.size())];
        switch (random() % 4) {
        case 0:
            value = nullptr;
            [[fallthrough]];
        case 1:
            index = zuSaHpiIndexAdd(value, key, index);
            map.erase(key);
            if (value != nullptr) {
                map[key] = value;
            }
            break;
        case 2:
            zuSaHpiIndexDel(key, index);
            map.erase(key);
            break;
        default:
            break;
        }
        first = first == nullptr ? index : first;
        ASSERT_EQ(index, first);
        const std::uint32_t asked = randomKey(random);
        const auto found = map.find(asked);
        ASSERT_EQ(zuSaHpiIndexGet(asked, index), found == map.end() ? nullptr : found->second);
        ASSERT_EQ(zuSaHpiIndexGetNext(asked, index), expectedNext(map, asked)) << asked;
        ASSERT_EQ(zuSaHpiIndexGetPrev(asked, index), expectedPrev(map, asked)) << asked;
    }
    const Keys bases = basesOf(index);
    EXPECT_TRUE(std::is_sorted(bases.begin(), bases.end(), std::less_equal<>()));
}

} // namespace
