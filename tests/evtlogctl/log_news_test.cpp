// Goal: whatever happens to a log between two looks, what was added is new once, nothing else is,
// and what is remembered of a log does not grow without end.
#include "tools/evtlogctl/log_news.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace zusahpi::evtlogctl;
using Numbers = std::vector<std::uint32_t>;

// Entries `first` to `last`, of a log that holds so many.
Snapshot snapshotOf(std::uint32_t first, std::uint32_t last, std::uint32_t held) {
    Snapshot snapshot;
    snapshot.info.sa.Entries = held;
    for (std::uint32_t number = first; number <= last; ++number) {
        snapshot.entries.push_back({.number = number, .fingerprint = number * 1000ULL});
    }
    return snapshot;
}

// A log that rests: its newest entries, as many as are asked for.
LogReading resting(std::uint32_t first, std::uint32_t last) {
    return [=](std::size_t most) {
        const std::uint32_t held = last + 1 - first;
        const auto wanted = static_cast<std::uint32_t>(std::min<std::size_t>(most, held));
        return snapshotOf(last + 1 - wanted, last, held);
    };
}

Numbers numbersOf(const News &news) {
    Numbers numbers;
    for (const FoundEntry &entry : news.snapshot.entries) {
        numbers.push_back(entry.number);
    }
    return numbers;
}

Numbers fromTo(std::uint32_t first, std::uint32_t last) {
    Numbers numbers(last + 1 - first);
    std::iota(numbers.begin(), numbers.end(), first);
    return numbers;
}

class LogNews : public testing::Test {
  protected:
    Numbers take(const LogReading &read) {
        const News news = takeNews(known, read);
        EXPECT_EQ(news.strange, strange);
        return numbersOf(news);
    }

    KnownEntries known;
    bool strange = false; // whether nothing known is to be left
};

TEST_F(LogNews, WhatStandsBehindTheLastKnownEntry) {
    EXPECT_EQ(take(resting(1, 3)), fromTo(1, 3));
    EXPECT_EQ(take(resting(1, 3)), Numbers{});
    EXPECT_EQ(take(resting(1, 5)), fromTo(4, 5));
    EXPECT_EQ(take(resting(3, 6)), fromTo(6, 6));
    EXPECT_EQ(take(resting(3, 4)), Numbers{}); // the newest were deleted
    EXPECT_EQ(take(resting(1, 30'000)), fromTo(7, 30'000));
}

TEST_F(LogNews, ALogOfWhichNothingIsKnown) {
    learn(known, snapshotOf(1, 3, 3));
    EXPECT_EQ(takeNews(known, resting(1, 0)).strange, false); // empty
    strange = true;
    EXPECT_EQ(take(resting(1001, 1500)), fromTo(1001, 1500));
}

// While the log is written a reading may give less than was asked for, though there are older
// entries: it goes back further all the same.
TEST_F(LogNews, AShortReadingOfALogThatDoesNotRest) {
    learn(known, snapshotOf(1, 100, 100));
    std::vector<std::size_t> asked;
    const LogReading read = [&](std::size_t most) {
        asked.push_back(most);
        return most < 200 ? snapshotOf(170, 190, 200) : snapshotOf(1, 195, 205);
    };
    EXPECT_EQ(take(read), fromTo(101, 195));
    EXPECT_EQ(asked.size(), 2U);
}

// Where the file is damaged there is nothing older to be had.
TEST_F(LogNews, ADamagedLog) {
    learn(known, snapshotOf(1, 100, 100));
    int readings = 0;
    strange = true;
    const LogReading read = [&](std::size_t) {
        ++readings;
        Snapshot snapshot = snapshotOf(170, 200, 4'000'000'000);
        snapshot.damage = "a hole";
        return snapshot;
    };
    EXPECT_EQ(take(read), fromTo(170, 200));
    EXPECT_EQ(readings, 1);
}

// A count that no file can hold ends the reading all the same.
TEST_F(LogNews, ACountThatIsNotTrue) {
    learn(known, snapshotOf(1, 100, 100));
    std::size_t last = 0;
    strange = true;
    const LogReading read = [&](std::size_t most) {
        EXPECT_GT(most, last);
        last = most;
        return snapshotOf(170, 200, 4'294'967'295);
    };
    EXPECT_EQ(take(read), fromTo(170, 200));
}

// What came between the reading of the news and the look at the whole log is still new.
TEST_F(LogNews, WhatComesWhileTheOldIsForgotten) {
    known.spare = 5;
    learn(known, snapshotOf(1, 16, 10));
    const LogReading read = [](std::size_t most) {
        return most == allEntries ? snapshotOf(10, 20, 10) : snapshotOf(8, 18, 10);
    };
    EXPECT_EQ(take(read), fromTo(17, 18));
    EXPECT_LE(known.keys.size(), 10U);
    EXPECT_EQ(take(resting(10, 20)), fromTo(19, 20));
}

// When the look at the whole log fails, the news were not lost.
TEST_F(LogNews, NothingIsLearnedFromAFailure) {
    known.spare = 5;
    learn(known, snapshotOf(1, 16, 10));
    const LogReading read = [](std::size_t most) {
        return most == allEntries ? throw std::runtime_error("too fast") : snapshotOf(9, 18, 10);
    };
    EXPECT_THROW((void)takeNews(known, read), std::runtime_error);
    EXPECT_EQ(take(resting(9, 18)), fromTo(17, 18));
}

// A look at a log that was written over in between finds nothing known; that is told with the next
// news, and until then what is known stays so.
TEST_F(LogNews, NotAllIsForgotten) {
    known.spare = 5;
    learn(known, snapshotOf(1, 16, 10));
    const LogReading read = [](std::size_t most) {
        return most == allEntries ? snapshotOf(101, 110, 10) : snapshotOf(9, 18, 10);
    };
    EXPECT_EQ(take(read), fromTo(17, 18));
    strange = true;
    EXPECT_EQ(take(resting(101, 110)), fromTo(101, 110));
}

TEST_F(LogNews, TheMemoryOfALogThatWrapsDoesNotGrow) {
    known.spare = 50;
    for (std::uint32_t last = 10; last < 1000; last += 7) {
        (void)takeNews(known, resting(last - 9, last));
        EXPECT_LE(known.keys.size(), 70U);
    }
}

} // namespace
