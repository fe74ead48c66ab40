// Processes that are killed while they write. A child changes a Linked log as fast as it can and
// tells its parent of each change once the store has acknowledged it; the parent kills it at a
// random moment, removes the lock that is left, starts the log and finds every acknowledged change,
// and at most the one that was under way.

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <functional>
#include <random>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/crash/session.h"
#include "tests/support/files.h"
#include "tests/support/log_soundness.h"

using namespace crash_test;
using store_test::controlBlock;
using store_test::linked;
using store_test::wrap;

namespace {

constexpr std::uint32_t logSize = 16;
constexpr std::uint32_t longestRoundInMicroseconds = 6000;
constexpr std::uint32_t randomSeed = 20240229;

EventLogControlBlock block() {
    return controlBlock(linked, wrap, logSize);
}

EventLogAddRecord numbered(std::uint32_t number) {
    EventLogAddRecord record = store_test::event(static_cast<std::uint8_t>(number % 251));
    std::memcpy(record.event.EventDataUnion.UserEvent.UserEventData.Data, &number, sizeof number);
    return record;
}

SaErrorT addNumbered(std::uint32_t number) {
    test_mainlib::state().timeOfDay = number;
    const EventLogAddRecord record = numbered(number);
    return zuSaHpiEventLogEntryAdd(&record, 0);
}

// Empty when the log holds exactly these numbers, oldest first, each record byte for byte.
std::string unlikeNumbers(const LogState &state, const std::vector<std::uint32_t> &numbers) {
    if (state.entries.size() != numbers.size() || state.reported.Entries != numbers.size() ||
        state.backwards.size() != numbers.size()) {
        return std::to_string(state.entries.size()) + " entries instead of " +
               std::to_string(numbers.size());
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const EventLogEntryRecord &found = state.entries[i];
        const EventLogAddRecord added = numbered(numbers[i]);
        if (found.entry.Timestamp != numbers[i] ||
            !store_test::equalBytes(&found.entry.Event, &added.event, sizeof added.event) ||
            !store_test::equalBytes(&found.rpt, &added.rpt, sizeof added.rpt) ||
            !store_test::equalBytes(&found.rdr, &added.rdr, sizeof added.rdr) ||
            !store_test::equalBytes(&found, &state.backwards[numbers.size() - 1 - i],
                                    sizeof found)) {
            return "entry " + std::to_string(i) + " is not number " + std::to_string(numbers[i]);
        }
    }
    return "";
}

struct Rounds {
    std::size_t all = 0;
    std::size_t atTheStart = 0;
    std::size_t locksLeft = 0;
    std::size_t inACommit = 0;
    std::uint64_t acknowledged = 0;
};

// Runs `step` for 0, 1, ... in a child that has started the log, until it is killed: some moments
// after it has started and acknowledged up to two, so that it has come that far on a busy machine,
// too. Every eighth child is killed some moments after it was made, maybe while it starts. Returns
// how many it has acknowledged.
std::uint32_t killedInTheMiddle(std::mt19937 &random,
                                const std::function<void(std::uint32_t)> &step, Rounds &rounds) {
    ++rounds.all;
    const bool atTheStart = rounds.all % 8 == 0;
    rounds.atTheStart += atTheStart ? 1 : 0;
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        startLog(block());
        for (std::uint32_t count = 0;; ++count) {
            if (write(ends[1], "x", 1) != 1) {
                std::abort();
            }
            step(count);
        }
    }
    close(ends[1]);
    std::uint32_t signs = 0; // of the start, and of each change
    const auto readSigns = [&](std::uint32_t most) {
        for (char sign = 0; signs < most && read(ends[0], &sign, 1) == 1;) {
            ++signs;
        }
    };
    readSigns(atTheStart ? 0 : 1 + static_cast<std::uint32_t>(random()) % 3);
    std::this_thread::sleep_for(std::chrono::microseconds(random() % longestRoundInMicroseconds));
    kill(child, SIGKILL);
    readSigns(UINT32_MAX);
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "it ended by itself";
    return std::max(signs, 1U) - 1;
}

// The log as the next start finds it, after the stale lock is removed.
LogState reopened(Rounds &rounds) {
    rounds.locksLeft += unlink(lockPath().c_str()) == 0 ? 1 : 0;
    const std::string left = test_support::readFile(logPath());
    rounds.inACommit += store_test::FileImage{left}.updating() != 0 ? 1 : 0;
    LogState state = stateAfterStart(block(), left);
    EXPECT_EQ(test_support::unsoundness(state.file), std::vector<std::string>());
    return state;
}

void makeNewLog() {
    removeLog();
    beginSession(block());
    endSession();
}

void report(const char *what, const Rounds &rounds) {
    EXPECT_GT(rounds.inACommit, 0U) << "no kill met a commit: this tested nothing";
    EXPECT_GE(rounds.locksLeft, rounds.all - rounds.atTheStart);
    std::printf("figure: processes killed, %s: %zu\n", what, rounds.all);
    std::printf("figure: of these in the middle of a commit, %s: %zu\n", what, rounds.inACommit);
    std::printf("figure: acknowledged changes found again, %s: %llu\n", what,
                static_cast<unsigned long long>(rounds.acknowledged));
}

TEST(Kill, EveryAcknowledgedEntryIsFound) {
    constexpr int roundsOfALog = 50;
    constexpr int logs = 10;
    std::mt19937 random(randomSeed);
    Rounds rounds;
    std::uint32_t last = 0; // the newest number
    for (int round = 0; round < logs * roundsOfALog && !testing::Test::HasFailure(); ++round) {
        if (round % roundsOfALog == 0) {
            makeNewLog();
            last = 0;
        }
        const std::uint32_t acknowledged = killedInTheMiddle(
            random,
            [last](std::uint32_t count) {
                if (addNumbered(last + count + 1) != SA_OK) {
                    std::abort();
                }
            },
            rounds);
        last += acknowledged;
        rounds.acknowledged += acknowledged;
        const LogState state = reopened(rounds);
        const bool oneMore = !state.entries.empty() && state.entries.back().entry.Timestamp > last;
        last += oneMore ? 1 : 0; // it was under way
        std::vector<std::uint32_t> numbers;
        for (std::uint32_t number = last > logSize ? last - logSize + 1 : 1; number <= last;
             ++number) {
            numbers.push_back(number);
        }
        EXPECT_EQ(unlikeNumbers(state, numbers), "") << "round " << round << ", " << last;
    }
    report("adding", rounds);
}

// Adds and deletes in a fixed order: change number n is the same in child and parent.
struct Changes {
    std::uint32_t done = 0;
    std::vector<std::uint32_t> numbers;
};

// The place of the entry that change `n` deletes from a log of `entries`; -1: the change is an add.
int deletedPlace(std::uint32_t n, std::size_t entries) {
    std::mt19937 random(n);
    const bool deletes = random() % 5 < 2 && entries > 0;
    return deletes ? static_cast<int>(random() % entries) : -1;
}

void change(Changes &changes) {
    const int place = deletedPlace(changes.done, changes.numbers.size());
    if (place >= 0) {
        changes.numbers.erase(changes.numbers.begin() + place);
    } else {
        if (changes.numbers.size() == logSize) {
            changes.numbers.erase(changes.numbers.begin());
        }
        changes.numbers.push_back(changes.done);
    }
    ++changes.done;
}

// The same change, done to the log.
void changeLog(std::uint32_t n) {
    SaHpiEventLogInfoT info;
    (void)zuSaHpiEventLogInfoGet(&info);
    const int place = deletedPlace(n, info.Entries);
    EventLogEntryRecord record;
    SaHpiEventLogEntryIdT id = SAHPI_OLDEST_ENTRY;
    for (int i = 0; i <= place; ++i) {
        if (zuSaHpiEventLogEntryGet(id, &record) != SA_OK) {
            std::abort();
        }
        id = record.next;
    }
    const SaErrorT result =
        place < 0 ? addNumbered(n) : zuSaHpiEventLogEntryDel(record.entry.EntryId, 0);
    if (result != SA_OK) {
        std::abort();
    }
}

TEST(Kill, EveryAcknowledgedChangeIsFoundAmongAddsAndDeletes) {
    constexpr int count = 200;
    std::mt19937 random(randomSeed);
    Rounds rounds;
    Changes changes;
    makeNewLog();
    for (int round = 0; round < count && !testing::Test::HasFailure(); ++round) {
        const std::uint32_t acknowledged = killedInTheMiddle(
            random, [&](std::uint32_t step) { changeLog(changes.done + step); }, rounds);
        rounds.acknowledged += acknowledged;
        for (std::uint32_t i = 0; i < acknowledged; ++i) {
            change(changes);
        }
        const LogState state = reopened(rounds);
        Changes oneMore = changes;
        change(oneMore);
        if (unlikeNumbers(state, oneMore.numbers).empty()) {
            changes = oneMore; // it was under way
        }
        EXPECT_EQ(unlikeNumbers(state, changes.numbers), "") << "round " << round;
    }
    report("adding and deleting", rounds);
}

} // namespace
