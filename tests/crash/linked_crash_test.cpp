// A crash at any moment of any operation on a Linked log leaves the log as it was before or after
// it, to the byte. Also when the operation is the start of the store, and also when the crash meets
// the start that repairs an earlier crash.

#include <cstdio>

#include <gtest/gtest.h>

#include "tests/crash/judgement.h"
#include "tests/support/child.h"
#include "tests/support/files.h"

using namespace crash_test;
using test_support::FileEvent;

namespace {

constexpr std::size_t imagesInShortForm = 10'000; // at least
constexpr std::size_t imagesInLongForm = 100'000;

std::vector<Scenario> scenarios(std::uint32_t randomPasts) {
    std::vector<Scenario> all = linkedScenarios();
    for (std::uint32_t seed = 1; seed <= randomPasts; ++seed) {
        all.push_back(randomScenario(seed));
    }
    return all;
}

// The images rest on it that each write is whole before the next begins, and that nothing else
// happens to the file.
void expectFaithful(const Scenario &scenario, const Recording &recording) {
    const EventLogControlBlock &block = scenario.operation ? scenario.block : scenario.restart;
    EXPECT_EQ(recording.synchronous, block.info.type == store_test::linked) << scenario.name;
    std::string replayed = recording.before;
    for (const FileEvent &event : recording.events) {
        apply(event, replayed);
    }
    EXPECT_TRUE(replayed == recording.after) << scenario.name;
}

void judgeOperation(const Scenario &scenario, const Recording &recording,
                    const Expectation &expectation, Tally &tally) {
    Progress progress;
    forEachCrashImage(recording.before, recording.events, [&](const CrashImage &image) {
        const Side side = judge(expectation, image, scenario.name, tally);
        const std::string wrong = advance(progress, image, recording.events.size(), side);
        if (!wrong.empty()) {
            tally.complain(scenario.name, image, wrong);
        }
    });
}

LogState withoutMessages(LogState state) {
    state.messages.clear();
    return state;
}

// A crash of the start on `crashed`: the start after it comes to the same log. (It says nothing any
// more of a log that the first start had already emptied.)
void judgeRecovery(const std::string &name, const EventLogControlBlock &block,
                   const CrashImage &crashed, Tally &tally) {
    test_mainlib::state().timeOfDay = timeOfRestart;
    const Recording recovery = recordStart(block, crashed.bytes);
    const Expectation expectation{block, stateAfterStart(block, crashed.bytes),
                                  stateAfterStart(block, recovery.after)};
    const std::string nested = name + ", " + nameOf(crashed) + ", then recovery";
    if (!(withoutMessages(expectation.before) == withoutMessages(expectation.after))) {
        tally.complain(nested, crashed, difference(expectation.before, expectation.after));
    }
    forEachCrashImage(crashed.bytes, recovery.events, [&](const CrashImage &image) {
        (void)judge(expectation, image, nested, tally); // complains when it is neither
    });
}

void printFigure(const char *what, std::size_t number) {
    std::printf("figure: %s: %zu\n", what, number);
}

TEST(LinkedCrash, EveryImageOfEveryOperationIsTheStateBeforeOrAfter) {
    Tally tally;
    for (const Scenario &scenario : scenarios(longTests() ? 900 : 100)) {
        const Recording recording = record(scenario);
        expectFaithful(scenario, recording);
        for (const Expectation &expectation : expectationsOf(scenario, recording)) {
            judgeOperation(scenario, recording, expectation, tally);
        }
    }
    report(tally);
    EXPECT_GE(tally.distinct.size(), longTests() ? imagesInLongForm : imagesInShortForm);
    printFigure("crash images of operations on Linked logs, distinct", tally.distinct.size());
    printFigure("starts on crash images of operations on Linked logs", 2 * tally.starts);
}

// Of the torn images those that wait for replay matter.
TEST(LinkedCrash, ACrashOfTheRepairIsRepairedToTheSameLog) {
    Tally tally;
    for (const Scenario &scenario : scenarios(longTests() ? 200 : 20)) {
        const Recording recording = record(scenario);
        const EventLogControlBlock &block = scenario.operation ? scenario.block : scenario.restart;
        forEachCrashImage(recording.before, recording.events, [&](const CrashImage &image) {
            if (!image.torn || store_test::FileImage{image.bytes}.updating() != 0) {
                judgeRecovery(scenario.name, block, image, tally);
            }
        });
    }
    report(tally);
    EXPECT_GE(tally.distinct.size(), 500U);
    printFigure("crash images of recovery itself, distinct", tally.distinct.size());
}

// Many starts in one process are as good as one process each: a sample of images, and for each the
// file that a session made of it, against a process that starts nothing else.
TEST(LinkedCrash, AProcessOfItsOwnMakesTheSameOfAnImage) {
    constexpr std::size_t step = 61;
    const test_support::ScratchFolder samples;
    const auto fileOf = [&](const char *what, std::size_t number) {
        return samples.file(what + std::to_string(number));
    };
    const EventLogControlBlock block = store_test::controlBlock(store_test::linked, 0, 5);
    test_support::inChild([&] {
        std::size_t images = 0;
        std::size_t taken = 0;
        for (const Scenario &scenario : linkedScenarios()) {
            const Recording recording = record(scenario);
            test_mainlib::state().timeOfDay = timeOf(99);
            forEachCrashImage(recording.before, recording.events, [&](const CrashImage &image) {
                if (++images % step == 0) {
                    const std::string file = stateAfterStart(block, image.bytes).file;
                    test_support::writeFile(fileOf("image", taken), image.bytes);
                    test_support::writeFile(fileOf("result", taken), file);
                    ++taken;
                }
            });
        }
    });
    test_mainlib::state().timeOfDay = timeOf(99);
    std::size_t sample = 0;
    for (; test_support::exists(fileOf("image", sample)); ++sample) {
        test_support::writeFile(logPath(), test_support::readFile(fileOf("image", sample)));
        test_support::inChild([&] { startLog(block); });
        EXPECT_TRUE(test_support::readFile(logPath()) ==
                    test_support::readFile(fileOf("result", sample)));
        EXPECT_FALSE(test_support::exists(lockPath()));
    }
    EXPECT_GE(sample, 20U);
}

} // namespace
