// Goal: of a log that is read again and again every record arrives exactly once, whatever the
// controller and the readings go through; where records cannot be told apart, none that may be new
// is lost.
//
// A failure of the random test is repeated by its seed: it is printed, and ZUSAHPI_TEST_SEED sets
// it.
#include "tools/evtlogctl/sel_news.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "tests/evtlogctl/sel_samples.h"

namespace {

using namespace zusahpi::sel;
using Places = std::vector<std::size_t>;
using Records = std::vector<Record>;

// One record for each letter: "abc".
Records records(std::string_view letters) {
    Records result;
    for (const char letter : letters) {
        result.emplace_back().bytes[0] = static_cast<std::uint8_t>(letter);
    }
    return result;
}

std::string letters(const Records &of) {
    std::string result;
    for (const Record &record : of) {
        result += static_cast<char>(record.bytes[0]);
    }
    return result;
}

std::string newIn(const News &news, const Records &reading) {
    Records taken;
    for (const std::size_t place : news.places) {
        taken.push_back(reading.at(place));
    }
    return letters(taken);
}

struct Step {
    std::string fresh;
    bool replaced;
    std::string knownAfter;

    bool operator==(const Step &) const = default;
};

std::ostream &operator<<(std::ostream &to, const Step &step) {
    return to << step.fresh << (step.replaced ? ", replaced" : "") << ", then " << step.knownAfter;
}

Step step(const Known &known, std::string_view reading) {
    const Records read = records(reading);
    const News news = newsOf(known, read);
    const Known after = knownAfter(known, read, news, news.places.size());
    return {newIn(news, read), news.replaced, letters(after.records)};
}

Step afterReading(std::string_view known, std::string_view reading) {
    return step({.records = records(known), .ofLog = false}, reading);
}

Step afterStart(std::string_view log, std::string_view reading) {
    return step({.records = records(log), .ofLog = true}, reading);
}

constexpr bool replaced = true;
constexpr bool goesOn = false;

// ---- From one reading to the next ---------------------------------------------------------------

TEST(SelNews, NothingNew) {
    EXPECT_EQ(afterReading("abc", "abc"), (Step{"", goesOn, "abc"}));
    EXPECT_EQ(afterReading("", ""), (Step{"", goesOn, ""}));
}

TEST(SelNews, RecordsAtTheEnd) {
    EXPECT_EQ(afterReading("", "ab"), (Step{"ab", goesOn, "ab"}));
    EXPECT_EQ(afterReading("abc", "abcde"), (Step{"de", goesOn, "abcde"}));
}

TEST(SelNews, ALogThatGoesRoundLosesItsOldest) {
    EXPECT_EQ(afterReading("abcd", "cdef"), (Step{"ef", goesOn, "cdef"}));
    EXPECT_EQ(afterReading("abcd", "defg"), (Step{"efg", goesOn, "defg"}));
    EXPECT_EQ(afterReading("abcd", "d"), (Step{"", goesOn, "d"}));
}

TEST(SelNews, ALogThatWentRoundWholly) {
    EXPECT_EQ(afterReading("abcd", "mnop"), (Step{"mnop", replaced, "mnop"}));
}

TEST(SelNews, ALogThatWasCleared) {
    EXPECT_EQ(afterReading("abc", "x"), (Step{"x", replaced, "x"}));
    // The same ids, times and events as before, and then another: all happened again.
    EXPECT_EQ(afterReading("abc", "abx"), (Step{"abx", replaced, "abx"}));
}

TEST(SelNews, AReadingThatBreaksOffIsNoClearedLog) {
    for (const char *part : {"", "a", "ab", "b", "bc"}) {
        EXPECT_EQ(afterReading("abcd", part), (Step{"", goesOn, "abcd"})) << part;
    }
    EXPECT_EQ(afterReading("abcd", "abcd"), (Step{"", goesOn, "abcd"}));
}

TEST(SelNews, AReadingThatBreaksOffAmongTheNewRecords) {
    EXPECT_EQ(afterReading("abc", "abcd"), (Step{"d", goesOn, "abcd"}));
    EXPECT_EQ(afterReading("abcd", "abcdef"), (Step{"ef", goesOn, "abcdef"}));
}

TEST(SelNews, RecordsThatWereDeleted) {
    EXPECT_EQ(afterReading("abcd", "acd"), (Step{"", goesOn, "acd"}));
    EXPECT_EQ(afterReading("abcd", "bdef"), (Step{"ef", goesOn, "bdef"}));
}

TEST(SelNews, NewRecordsInThePlacesOfOldOnes) {
    EXPECT_EQ(afterReading("abcd", "efcd"), (Step{"ef", goesOn, "efcd"}));
}

TEST(SelNews, RecordsThatAreAlikeAreCounted) {
    EXPECT_EQ(afterReading("xx", "xxx"), (Step{"x", goesOn, "xxx"}));
    EXPECT_EQ(afterReading("axx", "xxx"), (Step{"x", goesOn, "xxx"}));
    EXPECT_EQ(afterReading("abab", "ababab"), (Step{"ab", goesOn, "ababab"}));
}

// ---- After a start ------------------------------------------------------------------------------

TEST(SelNews, AfterAStartTheLogSaysWhatIsKnown) {
    EXPECT_EQ(afterStart("", "abc"), (Step{"abc", goesOn, "abc"}));
    EXPECT_EQ(afterStart("abc", "abc"), (Step{"", goesOn, "abc"}));
    EXPECT_EQ(afterStart("abc", "abcd"), (Step{"d", goesOn, "abcd"}));
    EXPECT_EQ(afterStart("abcabc", "abcd"), (Step{"d", goesOn, "abcd"}));
}

TEST(SelNews, RecordsThatTheLogHasLostAreNotAddedAgain) {
    EXPECT_EQ(afterStart("cd", "abcd"), (Step{"", goesOn, "abcd"}));
    EXPECT_EQ(afterStart("cd", "abcdef"), (Step{"ef", goesOn, "abcdef"}));
    EXPECT_EQ(afterStart("c", "abcdef"), (Step{"def", goesOn, "abcdef"}));
}

TEST(SelNews, ALogWithRecordsOfOtherControllers) {
    EXPECT_EQ(afterStart("abcxyz", "abcd"), (Step{"d", goesOn, "abcd"}));
    EXPECT_EQ(afterStart("abcxyz", "abc"), (Step{"", goesOn, "abcxyz"}));
    EXPECT_EQ(afterStart("xyz", "abc"), (Step{"abc", replaced, "abc"}));
}

TEST(SelNews, AfterAStartAReadingThatBreaksOff) {
    EXPECT_EQ(afterStart("abcd", "ab"), (Step{"", goesOn, "abcd"}));
    EXPECT_EQ(afterStart("abcd", ""), (Step{"", goesOn, "abcd"}));
    EXPECT_EQ(afterStart("cd", "abc"), (Step{"", goesOn, "cd"}));
}

// ---- What arrived -------------------------------------------------------------------------------

TEST(SelNews, WhatDidNotArriveIsFoundAgain) {
    const Known known{.records = records("ab"), .ofLog = false};
    const Records reading = records("abcde");
    const News news = newsOf(known, reading);
    for (std::size_t added = 0; added <= 3; ++added) {
        const Known after = knownAfter(known, reading, news, added);
        const News later = newsOf(after, reading);
        EXPECT_EQ(newIn(later, reading), std::string("cde").substr(added)) << added;
        EXPECT_FALSE(later.replaced) << added;
    }
}

TEST(SelNews, WhatDidNotArriveOfAnotherLogIsFoundAgain) {
    const Known known{.records = records("ab"), .ofLog = false};
    const Records reading = records("xyz");
    const News news = newsOf(known, reading);
    for (std::size_t added = 0; added <= 3; ++added) {
        const News later = newsOf(knownAfter(known, reading, news, added), reading);
        EXPECT_EQ(newIn(later, reading), std::string("xyz").substr(added)) << added;
        EXPECT_EQ(later.replaced, added == 0) << added;
    }
}

// ---- A controller and a watch, at random --------------------------------------------------------

// Ids begin anew when the log is cleared, times stand still for long: only the last bytes tell
// records apart.
class Controller {
  public:
    Controller(std::size_t capacity, bool goesRound) : capacity_(capacity), goesRound_(goesRound) {
    }
    void add() {
        if (log_.size() == capacity_) {
            if (!goesRound_) {
                return;
            }
            log_.erase(log_.begin());
        }
        Record record;
        putLittleEndian(record, offset::id, 2, static_cast<std::uint32_t>(++id_ % 0xFFFF));
        record.bytes[offset::type] = 2;
        putLittleEndian(record, offset::data1 - 3, 3, ++serial_);
        log_.push_back(record);
    }
    void clear() {
        log_.clear();
        id_ = 0;
    }
    // The newest stays.
    void removeOne(std::mt19937_64 &random) {
        if (log_.size() > 1) {
            const std::size_t place = sel_samples::below(log_.size() - 1, random);
            log_.erase(log_.begin() + static_cast<std::ptrdiff_t>(place));
        }
    }
    [[nodiscard]] const Records &log() const {
        return log_;
    }

  private:
    Records log_;
    std::size_t capacity_;
    bool goesRound_;
    std::size_t id_ = 0;
    std::uint32_t serial_ = 0;
};

class Watcher {
  public:
    explicit Watcher(std::size_t logSize) : logSize_(logSize) {
    }
    // What it knows is what its own log still holds.
    void restart() {
        const std::size_t kept = std::min(logSize_, arrived_.size());
        known_ = {.records =
                      Records(arrived_.end() - static_cast<std::ptrdiff_t>(kept), arrived_.end()),
                  .ofLog = true};
    }
    // The first reading may break off; one that is read to be sure does not.
    void look(const Records &reading, const Records &again, std::mt19937_64 &random) {
        const Records *used = &reading;
        News news = newsOf(known_, reading);
        if (news.replaced) {
            used = &again;
            news = newsOf(known_, again);
        }
        const bool all = random() % 4 != 0;
        const std::size_t added =
            all ? news.places.size() : sel_samples::below(news.places.size() + 1, random);
        for (std::size_t i = 0; i < added; ++i) {
            arrived_.push_back(used->at(news.places[i]));
        }
        known_ = knownAfter(known_, *used, news, added);
    }
    void lookAtAll(const Records &log) {
        const News news = newsOf(known_, log);
        for (const std::size_t place : news.places) {
            arrived_.push_back(log[place]);
        }
        known_ = knownAfter(known_, log, news, news.places.size());
    }
    [[nodiscard]] const Records &arrived() const {
        return arrived_;
    }

  private:
    std::size_t logSize_;
    Known known_{.records = {}, .ofLog = true};
    Records arrived_;
};

std::uint64_t chooseSeed() {
    const char *wanted = std::getenv("ZUSAHPI_TEST_SEED");
    const std::uint64_t seed =
        wanted == nullptr ? std::random_device{}() : std::strtoull(wanted, nullptr, 10);
    std::printf("seed: %" PRIu64 " (ZUSAHPI_TEST_SEED=%" PRIu64 " repeats it)\n", seed, seed);
    return seed;
}

void doSomething(Controller &controller, Watcher &watcher, std::mt19937_64 &random) {
    const Records &log = controller.log();
    switch (random() % 16) {
    case 0:
        return controller.clear();
    case 1:
        watcher.lookAtAll(log); // the newest known record is the newest of all, and stays
        return controller.removeOne(random);
    case 2:
        return watcher.restart();
    case 3:
    case 4:
    case 5: {
        const std::size_t length = sel_samples::below(log.size() + 1, random);
        const Records part(log.begin(), log.begin() + static_cast<std::ptrdiff_t>(length));
        return watcher.look(part, log, random);
    }
    case 6:
    case 7:
    case 8:
        return watcher.look(log, log, random);
    default:
        for (std::size_t i = sel_samples::below(6, random); i > 0; --i) {
            controller.add();
        }
    }
}

TEST(SelNews, EveryRecordArrivesOnceWhateverHappens) {
    std::mt19937_64 random(chooseSeed());
    std::size_t total = 0;
    for (int round = 0; round < 100; ++round) {
        Controller controller(1 + sel_samples::below(30, random), random() % 2 == 0);
        Watcher watcher(1 + sel_samples::below(40, random));
        for (int i = 0; i < 300; ++i) {
            doSomething(controller, watcher, random);
            watcher.lookAtAll(controller.log());
            const std::set<Record> once(watcher.arrived().begin(), watcher.arrived().end());
            ASSERT_EQ(once.size(), watcher.arrived().size()) << "a record arrived twice";
            for (const Record &record : controller.log()) {
                ASSERT_TRUE(once.contains(record)) << "a record did not arrive";
            }
            for (int more = static_cast<int>(random() % 4); more > 0; --more) {
                doSomething(controller, watcher, random);
            }
        }
        total += watcher.arrived().size();
    }
    EXPECT_GT(total, 10'000U); // the test saw enough
    std::printf("figure: records of a simulated controller that arrived exactly once: %zu\n",
                total);
}

} // namespace
