// Judging crash images of a log that promises to survive a crash.

#include "tests/crash/judgement.h"

#include <functional>

#include "tests/support/files.h"
#include "tests/support/log_soundness.h"

namespace crash_test {
namespace {

constexpr std::size_t complaintsInFull = 10;
constexpr std::size_t slotsStart = 80;
constexpr std::size_t slotsEnd = 6064;

Side sideOf(const LogState &state, const Expectation &expectation) {
    const bool before = state == expectation.before;
    const bool after = state == expectation.after;
    if (before && after) {
        return Side::both;
    }
    return before ? Side::before : after ? Side::after : Side::neither;
}

Expectation expectation(const EventLogControlBlock &block, const Recording &recording) {
    test_mainlib::state().timeOfDay = timeOfRestart;
    Expectation expected{block, {}, {}};
    expected.before = stateAfterStart(block, recording.before);
    expected.after = stateAfterStart(block, recording.after);
    return expected;
}

} // namespace

std::vector<Expectation> expectationsOf(const Scenario &scenario, const Recording &recording) {
    std::vector<Expectation> expectations{expectation(scenario.block, recording)};
    if (!scenario.operation) {
        expectations.push_back(expectation(scenario.restart, recording));
    }
    EXPECT_EQ(unlikeSeeds(expectations.front().before, scenario.before), "") << scenario.name;
    EXPECT_EQ(unlikeSeeds(expectations.back().after, scenario.after), "") << scenario.name;
    return expectations;
}

void Tally::complain(const std::string &scenario, const CrashImage &image,
                     const std::string &what) {
    complaints.push_back(scenario + ", " + nameOf(image) + ": " + what);
}

void report(const Tally &tally) {
    for (std::size_t i = 0; i < tally.complaints.size() && i < complaintsInFull; ++i) {
        ADD_FAILURE() << tally.complaints[i];
    }
    EXPECT_EQ(tally.complaints.size(), 0U);
}

Side judge(const Expectation &expectation, const CrashImage &image, const std::string &name,
           Tally &tally) {
    ++tally.starts;
    tally.distinct.insert(std::hash<std::string>()(image.bytes));
    sessionName = name + ", " + nameOf(image);
    test_mainlib::state().timeOfDay = timeOfRestart;
    const LogState state = stateAfterStart(expectation.block, image.bytes);
    for (const std::string &finding : test_support::unsoundness(state.file)) {
        tally.complain(name, image, finding);
    }
    const LogState again = stateAfterStart(expectation.block, state.file);
    if (again.file != state.file) {
        tally.complain(name, image, "a second start changes the file");
    }
    if (!(again == state) && state.messages.empty()) {
        tally.complain(name, image, "a second start: " + difference(again, state));
    }
    const std::string_view slotsBefore =
        std::string_view(image.bytes).substr(0, slotsEnd).substr(slotsStart);
    if (std::string_view(state.file).substr(slotsStart, slotsBefore.size()) != slotsBefore) {
        tally.complain(name, image, "the start changed the transaction log area");
    }
    const Side side = sideOf(state, expectation);
    if (side == Side::neither) {
        tally.complain(name, image,
                       "neither before (" + difference(state, expectation.before) +
                           ") nor after (" + difference(state, expectation.after) + ")");
    }
    return side;
}

std::string advance(Progress &progress, const CrashImage &image, std::size_t events, Side side) {
    const bool after = side == Side::after;
    if (side == Side::before && progress.mustBeAfter) {
        return "falls back to the state before";
    }
    if (image.torn) {
        progress.nextWholeIsAfter = progress.nextWholeIsAfter || after;
        return "";
    }
    if (side == Side::before && (progress.nextWholeIsAfter || image.whole == events)) {
        return "shows the state before though more has arrived";
    }
    if (after && image.whole == 0) {
        return "shows the state after though nothing has arrived";
    }
    progress.mustBeAfter = progress.mustBeAfter || after;
    progress.nextWholeIsAfter = false;
    return "";
}

} // namespace crash_test
