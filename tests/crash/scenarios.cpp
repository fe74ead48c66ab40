// The tables of operations, and their recording.

#include "tests/crash/scenarios.h"

#include <cerrno>
#include <random>

#include "tests/support/faults.h"
#include "tests/support/files.h"

namespace crash_test {
namespace {

using store_test::circular;
using store_test::controlBlock;
using store_test::drop;
using store_test::linked;
using store_test::simple;
using store_test::wrap;
using store_test::writeLast;

constexpr std::uint8_t newSeed = 0x55;
constexpr SaHpiTimeT timeOfOperation = 2'000'000'000;

using Seeds = std::vector<int>;
using Action = std::function<void()>;

void must(SaErrorT result) {
    EXPECT_EQ(result, SA_OK);
}

// Adds seeds 1 to `last`, which become entries 1 to `last` of a new log.
Action adds(std::uint8_t last, std::vector<SaHpiEventLogEntryIdT> deleted = {}) {
    return [last, deleted] {
        for (std::uint8_t seed = 1; seed <= last; ++seed) {
            must(addEvent(seed));
        }
        for (const SaHpiEventLogEntryIdT number : deleted) {
            must(zuSaHpiEventLogEntryDel(number, 0));
        }
    };
}

void addNew() {
    must(addEvent(newSeed));
}

void addRefused() {
    EXPECT_EQ(addEvent(newSeed), SA_ERR_HPI_OUT_OF_SPACE);
}

Action deletes(SaHpiEventLogEntryIdT number) {
    return [number] { must(zuSaHpiEventLogEntryDel(number, 0)); };
}

void clears() {
    must(zuSaHpiEventLogClear());
}

void resets() {
    must(zuSaHpiEventLogResetOverflow());
}

void setsTime() {
    must(zuSaHpiEventLogTimeSet(77));
}

void disables() {
    must(zuSaHpiEventLogStateSet(0));
}

// A full log that has refused an entry.
Action overflowed(std::uint8_t size) {
    return [size] {
        adds(size)();
        addRefused();
    };
}

// The same, and an add of the next seed that fails once its flag and its first record are written.
Action waits(std::uint8_t last) {
    return [last] {
        adds(last)();
        test_support::failCall(test_support::Call::write, EIO, 3);
        EXPECT_EQ(addEvent(static_cast<std::uint8_t>(last + 1)), SA_ERR_HPI_NO_RESPONSE);
    };
}

Scenario operation(const std::string &name, const EventLogControlBlock &block, Action prepare,
                   Action cut, Seeds before, Seeds after) {
    return {
        name, block, std::move(prepare), std::move(cut), {}, std::move(before), std::move(after)};
}

Scenario start(const std::string &name, const EventLogControlBlock &block, Action prepare,
               const EventLogControlBlock &restart, Seeds before, Seeds after) {
    return {name, block, std::move(prepare), nullptr, restart, std::move(before), std::move(after)};
}

EventLogControlBlock reinitialising(EventLogControlBlock block) {
    block.reinitialize = 1;
    return block;
}

EventLogControlBlock otherSettings(EventLogControlBlock block) {
    block.info.sa.Enabled = 0;
    block.info.sa.UserEventMaxSize = 17;
    block.info.sa.OverflowResetable = 0;
    block.info.overflowAction = writeLast;
    return block;
}

// What every type can do.
void addCommonScenarios(std::uint32_t type, std::vector<Scenario> &table) {
    const EventLogControlBlock dropping = controlBlock(type, drop, 4);
    table.push_back(operation("add to an empty log", dropping, adds(0), addNew, {}, {newSeed}));
    table.push_back(operation("add", dropping, adds(2), addNew, {1, 2}, {1, 2, newSeed}));
    table.push_back(operation("add that fills the log", dropping, adds(3), addNew, {1, 2, 3},
                              {1, 2, 3, newSeed}));
    table.push_back(
        operation("add refused", dropping, adds(4), addRefused, {1, 2, 3, 4}, {1, 2, 3, 4}));
    table.push_back(
        operation("delete of the tail", dropping, adds(4), deletes(4), {1, 2, 3, 4}, {1, 2, 3}));
    table.push_back(operation("delete of the only entry", dropping, adds(1), deletes(1), {1}, {}));
    table.push_back(operation("add after a delete of the tail", dropping, adds(4, {4}), addNew,
                              {1, 2, 3}, {1, 2, 3, newSeed}));
    table.push_back(operation("clear", dropping, overflowed(4), clears, {1, 2, 3, 4}, {}));
    table.push_back(operation("clear of an empty log", dropping, adds(0), clears, {}, {}));
    table.push_back(
        operation("overflow reset", dropping, overflowed(4), resets, {1, 2, 3, 4}, {1, 2, 3, 4}));
    table.push_back(operation("time set", dropping, adds(2), setsTime, {1, 2}, {1, 2}));
    table.push_back(operation("state set", dropping, adds(2), disables, {1, 2}, {1, 2}));
    for (const std::uint8_t size : std::initializer_list<std::uint8_t>{1, 2, 5}) {
        Seeds full;
        for (int seed = 1; seed <= size; ++seed) {
            full.push_back(seed);
        }
        Seeds written(full.begin(), full.end() - 1);
        written.push_back(newSeed);
        table.push_back(operation("write last in a log of " + std::to_string(size),
                                  controlBlock(type, writeLast, size), adds(size), addNew, full,
                                  written));
    }
}

void addWrapScenarios(std::uint32_t type, std::vector<Scenario> &table) {
    table.push_back(
        operation("wrap of 1", controlBlock(type, wrap, 1), adds(1), addNew, {1}, {newSeed}));
    table.push_back(
        operation("wrap of 2", controlBlock(type, wrap, 2), adds(2), addNew, {1, 2}, {2, newSeed}));
    table.push_back(operation("wrap of 5", controlBlock(type, wrap, 5), adds(5), addNew,
                              {1, 2, 3, 4, 5}, {2, 3, 4, 5, newSeed}));
    table.push_back(operation("wrap of a log that has wrapped", controlBlock(type, wrap, 3),
                              adds(7), addNew, {5, 6, 7}, {6, 7, newSeed}));
}

void addStartScenarios(std::uint32_t type, std::vector<Scenario> &table) {
    const EventLogControlBlock block = controlBlock(type, drop, 4);
    const std::uint32_t otherType = type == linked ? circular : linked;
    const Action made = overflowed(4);
    const Seeds all{1, 2, 3, 4};
    table.push_back(start("start", block, made, block, all, all));
    table.push_back(start("start of an empty log", block, adds(0), block, {}, {}));
    table.push_back(
        start("start with other settings", block, made, otherSettings(block), all, all));
    table.push_back(start("start that reinitialises", block, made, reinitialising(block), all, {}));
    table.push_back(
        start("start as another type", block, made, controlBlock(otherType, drop, 4), all, {}));
    const bool keepsEntries = type != circular;
    table.push_back(start("start that grows the log", block, made, controlBlock(type, drop, 9), all,
                          keepsEntries ? all : Seeds{}));
    table.push_back(start("start that shrinks the log", controlBlock(type, drop, 9), adds(4), block,
                          all, keepsEntries ? all : Seeds{}));
    table.push_back(start("start that shrinks the log too far", block, made,
                          controlBlock(type, drop, 3), all, {}));
}

// Operations that meet a commit that waits to be finished.
void addWaitingScenarios(std::vector<Scenario> &table) {
    const EventLogControlBlock block = controlBlock(linked, wrap, 5);
    const Seeds all{1, 2, 3, 4};
    table.push_back(operation("add over a waiting commit", block, waits(3), addNew, all,
                              {1, 2, 3, 4, newSeed}));
    table.push_back(
        operation("delete over a waiting commit", block, waits(3), deletes(4), all, {1, 2, 3}));
    table.push_back(operation("clear over a waiting commit", block, waits(3), clears, all, {}));
    table.push_back(
        operation("time set over a waiting commit", block, waits(3), setsTime, all, all));
}

EventLogControlBlock randomBlock(std::mt19937 &random) {
    const std::uint32_t action = static_cast<std::uint32_t>(random() % 3);
    return controlBlock(linked, action, static_cast<std::uint32_t>(2 + random() % 11));
}

// Events with seeds 1 and up, as a log of this size and overflow action keeps them.
struct Past {
    EventLogControlBlock block;
    std::uint8_t nextSeed = 1;
    Seeds kept;
    std::vector<int> steps; // -1: add the next seed; else: delete the entry at this place
};

void stepAdd(Past &past) {
    const bool full = past.kept.size() == past.block.info.sa.Size;
    if (full && past.block.info.overflowAction == wrap) {
        past.kept.erase(past.kept.begin());
    } else if (full && past.block.info.overflowAction == writeLast) {
        past.kept.pop_back();
    }
    if (past.kept.size() < past.block.info.sa.Size) {
        past.kept.push_back(past.nextSeed);
    }
    ++past.nextSeed;
    past.steps.push_back(-1);
}

void stepDelete(Past &past, std::size_t place) {
    past.kept.erase(past.kept.begin() + static_cast<std::ptrdiff_t>(place));
    past.steps.push_back(static_cast<int>(place));
}

void randomStep(Past &past, std::mt19937 &random) {
    if (past.kept.empty() || random() % 3 != 0) {
        stepAdd(past);
    } else {
        stepDelete(past, random() % past.kept.size());
    }
}

void deleteAtPlace(std::size_t place) {
    const LogState state = logState();
    ASSERT_LT(place, state.entries.size());
    must(zuSaHpiEventLogEntryDel(state.entries[place].entry.EntryId, 0));
}

void carryOut(const std::vector<int> &steps, std::size_t from, std::uint8_t seed) {
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (i >= from && steps[i] < 0) {
            (void)addEvent(seed); // refused by a full log that drops
        } else if (i >= from) {
            deleteAtPlace(static_cast<std::size_t>(steps[i]));
        }
        seed = static_cast<std::uint8_t>(seed + (steps[i] < 0 ? 1 : 0));
    }
}

} // namespace

Recording record(const Scenario &scenario) {
    Recording recording;
    removeLog();
    test_support::watchFile(logPath());
    test_mainlib::state().timeOfDay = timeOf(0);
    beginSession(scenario.block);
    scenario.prepare();
    test_mainlib::state().timeOfDay = timeOfOperation;
    (void)test_support::takeFileEvents();
    recording.before = test_support::readFile(logPath());
    if (!scenario.operation) {
        endSession();
        return recordStart(scenario.restart, recording.before);
    }
    scenario.operation();
    recording.events = test_support::takeFileEvents();
    recording.after = test_support::readFile(logPath());
    recording.synchronous = test_support::watchedFileIsSynchronous();
    endSession();
    return recording;
}

Recording recordStart(const EventLogControlBlock &block, const std::string &bytes) {
    Recording recording;
    recording.before = bytes;
    test_support::writeFile(logPath(), bytes);
    test_support::watchFile(logPath());
    beginSession(block);
    recording.events = test_support::takeFileEvents();
    recording.after = test_support::readFile(logPath());
    recording.synchronous = test_support::watchedFileIsSynchronous();
    endSession();
    return recording;
}

std::vector<Scenario> linkedScenarios() {
    std::vector<Scenario> table;
    addCommonScenarios(linked, table);
    addWrapScenarios(linked, table);
    addStartScenarios(linked, table);
    const EventLogControlBlock block = controlBlock(linked, wrap, 5);
    const Seeds all{1, 2, 3, 4, 5};
    table.push_back(operation("delete of the head", block, adds(5), deletes(1), all, {2, 3, 4, 5}));
    table.push_back(
        operation("delete in the middle", block, adds(5), deletes(3), all, {1, 2, 4, 5}));
    table.push_back(operation("delete of one of two", block, adds(2), deletes(1), {1, 2}, {2}));
    table.push_back(operation("delete with a free list", block, adds(5, {2, 4}), deletes(3),
                              {1, 3, 5}, {1, 5}));
    table.push_back(operation("add to the one free number", block, adds(5, {3}), addNew,
                              {1, 2, 4, 5}, {1, 2, 4, 5, newSeed}));
    table.push_back(operation("add to the first of two free numbers", block, adds(5, {2, 4}),
                              addNew, {1, 3, 5}, {1, 3, 5, newSeed}));
    table.push_back(
        operation("add to an emptied log", block, adds(2, {1, 2}), addNew, {}, {newSeed}));
    table.push_back(
        operation("clear with a free list", block, adds(5, {2}), clears, {1, 3, 4, 5}, {}));
    addWaitingScenarios(table);
    return table;
}

std::vector<Scenario> simpleScenarios() {
    std::vector<Scenario> table;
    addCommonScenarios(simple, table);
    addStartScenarios(simple, table);
    return table;
}

std::vector<Scenario> circularScenarios() {
    std::vector<Scenario> table;
    addCommonScenarios(circular, table);
    addWrapScenarios(circular, table);
    addStartScenarios(circular, table);
    const EventLogControlBlock block = controlBlock(circular, wrap, 4);
    table.push_back(
        operation("delete of the head", block, adds(4), deletes(1), {1, 2, 3, 4}, {2, 3, 4}));
    table.push_back(operation("delete of the head of a log that has wrapped", block, adds(6),
                              deletes(3), {3, 4, 5, 6}, {4, 5, 6}));
    table.push_back(operation("delete of the tail of a log that has wrapped", block, adds(6),
                              deletes(2), {3, 4, 5, 6}, {3, 4, 5}));
    return table;
}

Scenario randomScenario(std::uint32_t seed) {
    std::mt19937 random(seed);
    Past past;
    past.block = randomBlock(random);
    const std::uint32_t length = static_cast<std::uint32_t>(random() % 40);
    for (std::uint32_t step = 0; step < length; ++step) {
        randomStep(past, random);
    }
    Past cut = past;
    randomStep(cut, random);
    Scenario scenario;
    scenario.name = "random past " + std::to_string(seed);
    scenario.block = past.block;
    scenario.prepare = [steps = past.steps] { carryOut(steps, 0, 1); };
    scenario.operation = [steps = cut.steps, from = past.steps.size()] {
        carryOut(steps, from, 1);
    };
    scenario.restart = {};
    scenario.before = past.kept;
    scenario.after = cut.kept;
    return scenario;
}

} // namespace crash_test
