// Goal: after every sequence of operations up to a length, on every kind of small log, the store
// answers, shows and holds in its file exactly what the model says. Each type with each overflow
// action, Sizes 1 to 4, beginning with an empty log and with a full one, closing and reopening
// among the operations.
//
// The tree of sequences is walked depth first: each prefix is carried out and looked at once, and
// the looks leave no trace in the caches. Time passes when something has changed. An operation that
// changed nothing, not a byte of file and memory, is not gone on from: what follows it follows the
// sequence without it, too. ZUSAHPI_MODEL_LENGTH sets the length.

#include <array>
#include <cstdlib>
#include <memory>

#include <gtest/gtest.h>

#include "tests/model/store_check.h"

using namespace store_model;

namespace {

// With RPT entry and RDR, and in every second sequence a user event.
constexpr std::array<Operation, 11> alphabet{{{Kind::add, 3},
                                              {Kind::deleteOldest, 0},
                                              {Kind::deleteNewest, 0},
                                              {Kind::deleteNumber, 2},
                                              {Kind::deleteNumber, 3},
                                              {Kind::clear, 0},
                                              {Kind::resetOverflow, 0},
                                              {Kind::setTime, 5},
                                              {Kind::setState, 0},
                                              {Kind::restart, 0},
                                              {Kind::resize, 1}}};

#if defined(__SANITIZE_ADDRESS__)
constexpr int usualLength = 4;
#else
constexpr int usualLength = 5;
#endif

int lengthOfSequences() {
    const char *wanted = std::getenv("ZUSAHPI_MODEL_LENGTH");
    return wanted == nullptr ? usualLength : std::atoi(wanted);
}

struct Count {
    long carriedOut = 0;
    long covered = 0; // with those that go on from an operation that changed nothing
};

struct Walk {
    Pair pair;
    std::array<Operation, 16> path;
    int depth = 0;
    int length = 0;
    Count count;
    std::string failure;
};

void fail(Walk &walk, const std::string &difference) {
    walk.failure = nameOf(logOf(walk.pair.model).settings) + "\n";
    for (int i = 0; i < walk.depth; ++i) {
        walk.failure += nameOf(walk.path.at(static_cast<std::size_t>(i))) + "\n";
    }
    walk.failure += difference;
}

long sequencesUpTo(int length) {
    long all = 0;
    long ofThisLength = 1;
    for (int i = 0; i < length; ++i) {
        ofThisLength *= static_cast<long>(alphabet.size());
        all += ofThisLength;
    }
    return all;
}

// Goes on from where the log stands with every operation in turn.
void goOn(Walk &walk) {
    if (walk.depth == walk.length) {
        return;
    }
    const auto here = std::make_unique<Moment>(remember(walk.pair));
    for (const Operation &operation : alphabet) {
        walk.path.at(static_cast<std::size_t>(walk.depth)) = operation;
        ++walk.depth;
        const std::string differs = step(walk.pair, operation);
        ++walk.count.carriedOut;
        ++walk.count.covered;
        if (const std::string all = differs + compareUnseen(walk.pair); !all.empty()) {
            fail(walk, all);
            return;
        }
        if (!isStill(*here, walk.pair)) {
            tick(walk.pair);
            goOn(walk);
        } else {
            walk.count.covered += sequencesUpTo(walk.length - walk.depth);
        }
        if (!walk.failure.empty()) {
            return;
        }
        --walk.depth;
        goBackTo(*here, walk.pair);
    }
}

void walkFrom(const Settings &settings, std::uint32_t entriesBefore, Count &count) {
    Walk walk;
    walk.length = lengthOfSequences();
    std::string difference;
    walk.pair = startPair("/memory/log", settings, difference);
    for (std::uint32_t i = 0; i < entriesBefore && difference.empty(); ++i) {
        difference = step(walk.pair, {Kind::add, 3});
        tick(walk.pair);
    }
    EXPECT_EQ(difference, "");
    goOn(walk);
    EXPECT_EQ(walk.failure, "") << "begun with " << entriesBefore << " entries";
    memory_disk::exitProcess();
    EXPECT_EQ(walk.count.covered, sequencesUpTo(walk.length));
    count.carriedOut += walk.count.carriedOut;
    count.covered += walk.count.covered;
}

class AllSequences : public testing::TestWithParam<std::tuple<Type, WhenFull>> {};

TEST_P(AllSequences, AgreeWithTheModel) {
    keepDiagnosticsOffTheTerminal();
    Settings settings;
    std::tie(settings.type, settings.whenFull) = GetParam();
    Count count;
    for (settings.size = 1; settings.size <= 4 && !HasFailure(); ++settings.size) {
        walkFrom(settings, 0, count);
        walkFrom(settings, settings.size, count);
    }
    const std::string log = nameOf(settings.type) + " " + nameOf(settings.whenFull);
    std::printf("figure: sequences of up to %d operations on small logs, %s: %ld\n",
                lengthOfSequences(), log.c_str(), count.covered);
    std::printf("figure: operations compared with the model for them, %s: %ld\n", log.c_str(),
                count.carriedOut);
}

INSTANTIATE_TEST_SUITE_P(
    Logs, AllSequences,
    testing::Combine(testing::Values(Type::simple, Type::circular, Type::linked),
                     testing::Values(WhenFull::drop, WhenFull::wrap, WhenFull::writeLast)));

} // namespace
