// Processes that race for one log. However many start at once, one of them gets the lock if it is
// free, never two.
//
// Nobody getting a free lock is not allowed either: linking to the lock's name is one step of the
// kernel, so of those who try while nobody holds it the first succeeds. (A process that tries while
// another still holds the lock gives up, also when that one lets go a moment later.)

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <thread>
#include <vector>

#include <sched.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/crash/session.h"
#include "tests/support/files.h"

using namespace crash_test;

namespace {

constexpr int racers = 3;
#if defined(__SANITIZE_ADDRESS__)
constexpr int rounds = 300; // a fork takes several times as long
#else
constexpr int rounds = 1500;
#endif

// Lies in memory that the processes share.
struct Race {
    std::atomic<int> ready{0};
    std::atomic<bool> go{false};
    std::atomic<bool> letGo{false};
    std::atomic<int> holders{0}; // now
    std::atomic<int> mostHolders{0};
    std::atomic<int> winners{0};
    std::atomic<int> refused{0}; // with the message that says so, and no other
};

Race *race = nullptr;

Race *newRace() {
    void *memory =
        mmap(nullptr, sizeof(Race), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : new (memory) Race;
}

EventLogControlBlock smallBlock() {
    return store_test::controlBlock(store_test::simple, store_test::drop, 3);
}

bool began = false;

void countRefusal() {
    if (!began &&
        test_mainlib::state().diagnostics == "Cannot establish lock on event log file.\n") {
        ++race->refused;
    }
}

void beginHolding() {
    began = true;
    const int now = ++race->holders;
    for (int most = race->mostHolders; most < now;) {
        race->mostHolders.compare_exchange_weak(most, now);
    }
    ++race->winners; // last: who sees it may look at the others
}

// Leaves the processors to the racers.
void rest() {
    std::this_thread::sleep_for(std::chrono::microseconds(200));
}

void silence() {
    if (std::freopen("/dev/null", "w", stderr) == nullptr) {
        std::abort();
    }
}

// A process that starts the log when the race begins and holds it until it is told to let go. It
// leaves through exit(), so that the store's exit handler gives up the lock.
pid_t racer() {
    const pid_t child = fork();
    if (child != 0) {
        return child;
    }
    silence();
    (void)test_mainlib::state(); // made before the exit handler that looks into it is registered
    std::atexit(countRefusal);
    ++race->ready;
    while (!race->go) {
        sched_yield();
    }
    startLog(smallBlock());
    beginHolding();
    do {
        rest();
    } while (!race->letGo);
    --race->holders;
    std::exit(EXIT_SUCCESS);
}

// How many of the processes have ended by now, 1000 if one of them ended in an odd way.
int ended(std::vector<pid_t> &children) {
    int count = 0;
    for (pid_t &child : children) {
        int status = 0;
        if (child > 0 && waitpid(child, &status, WNOHANG) == child) {
            count += WIFEXITED(status) ? 1 : 1000;
            child = 0;
        }
    }
    return count;
}

TEST(LockRace, OfThoseWhoStartAtOnceOneGetsTheLock) {
    race = newRace();
    ASSERT_NE(race, nullptr);
    removeLog();
    for (int round = 0; round < rounds && !HasFailure(); ++round) {
        race = new (race) Race;
        std::vector<pid_t> children;
        for (int i = 0; i < racers; ++i) {
            children.push_back(racer());
        }
        while (race->ready < racers) {
            rest();
        }
        race->go = true;
        int done = 0;
        while (done + race->winners < racers) { // those who lost have ended, those who won wait
            done += ended(children);
            rest();
        }
        EXPECT_EQ(race->winners, 1) << "round " << round;
        EXPECT_EQ(race->mostHolders, 1) << "round " << round;
        EXPECT_EQ(race->refused, racers - 1) << "round " << round;
        EXPECT_EQ(done, racers - 1) << "round " << round;
        EXPECT_TRUE(test_support::exists(lockPath()));
        race->letGo = true;
        while (done < racers) {
            done += ended(children);
            rest();
        }
        EXPECT_EQ(done, racers);
        EXPECT_FALSE(test_support::exists(lockPath()));
    }
    std::printf("figure: races of %d processes for one lock: %d\n", racers, rounds);
}

// Each of some processes starts the log over and over, so that taking the lock meets letting it go.
TEST(LockRace, ThoseWhoComeAndGoNeverHoldItTogether) {
    race = newRace();
    ASSERT_NE(race, nullptr);
    removeLog();
    race->go = true;
    race->letGo = true;
    std::vector<pid_t> loops;
    for (int i = 0; i < racers; ++i) {
        const pid_t loop = fork();
        if (loop == 0) {
            for (int round = 0; round < rounds; ++round) {
                waitpid(racer(), nullptr, 0);
            }
            _exit(EXIT_SUCCESS);
        }
        loops.push_back(loop);
    }
    for (const pid_t loop : loops) {
        waitpid(loop, nullptr, 0);
    }
    EXPECT_EQ(race->mostHolders, 1);
    EXPECT_EQ(race->winners + race->refused, racers * rounds);
    EXPECT_GT(race->winners, 0);
    EXPECT_GT(race->refused, 0) << "they never met";
    EXPECT_FALSE(test_support::exists(lockPath()));
    std::printf("figure: starts that came and went beside each other: %d\n", racers * rounds);
    std::printf("figure: of these refused because another process held the lock: %d\n",
                race->refused.load());
}

} // namespace
