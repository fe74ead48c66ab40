// The runner: the files that the calls of an operation leave behind one by one, then each call
// failing.

#include "tests/faults/scenario.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <ostream>

#include <unistd.h>

#include "eventlog/store_state.h"
#include "tests/faults/errors.h"
#include "tests/support/log_soundness.h"
#include "tests/support/times.h"

using namespace store_test;
using test_support::Call;
using test_support::inChild;
using zusahpi::eventlog::store;

namespace failing_calls {
namespace {

using times::second;

constexpr std::uint8_t nextSeed = 0x77;

// The files of a scenario: untouched[i] is what is left when all calls but those from the i-th on
// are made, its last element what the whole operation leaves.
struct Files {
    std::string base;
    std::vector<FileImage> untouched;
};

enum class Mode { once, persistently };

std::string text(std::uint32_t number) {
    return std::to_string(number);
}

std::string placeOf(std::uint32_t number) {
    return std::to_string(6064 + (number - 1) * 1496);
}

// How many earlier calls are of the same kind.
int earlierOfItsKind(const Steps &steps, std::size_t index) {
    const Call call = callOf(steps[index].call);
    return static_cast<int>(
        std::count_if(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(index),
                      [call](const Step &step) { return callOf(step.call) == call; }));
}

std::size_t bytesMoved(const Step &step) {
    return std::stoul(step.call.substr(step.call.find(' ')));
}

void expectIdle() {
    EXPECT_EQ(store.transaction, nullptr);
    EXPECT_EQ(store.transactionCache[0].entry.EntryId, none);
}

// Every number that may hold an entry: what the store returns of it is what the file holds.
void expectEntriesOf(const FileImage &file) {
    for (std::uint32_t number = 1; number <= store.info.maxUsed; ++number) {
        EventLogEntryRecord got;
        const SaErrorT result = zuSaHpiEventLogEntryGet(number, &got);
        if (store.info.type == circular && result == SA_ERR_HPI_NOT_PRESENT) {
            continue; // outside of the ring
        }
        EventLogEntryRecord held = file.entry(number);
        EXPECT_EQ(result, held.deleted != 0 ? SA_ERR_HPI_NOT_PRESENT : SA_OK) << number;
        if (store.info.type != linked) { // whose neighbours follow from the numbers
            held.prev = got.prev;
            held.next = got.next;
        }
        EXPECT_TRUE(equalBytes(&got, &held, sizeof got)) << "entry " << number;
    }
}

void expectInfo(Memory memory, const EventLogInfoRecord &before, const EventLogInfoRecord &after) {
    EventLogInfoRecord expected = memory == Memory::after ? after : before;
    if (memory == Memory::flagged) {
        expected.updating = 1;
    }
    EXPECT_TRUE(equalBytes(&store.info, &expected, sizeof expected)) << "the info record in memory";
}

// Starts the log as the operation finds it.
void startFor(const Scenario &scenario) {
    EventLogControlBlock block = scenario.block;
    ASSERT_EQ(zuSaHpiEventLogInit(&block), SA_OK);
    scenario.prepare();
    test_mainlib::state().timeOfDay += second;
    test_mainlib::state().diagnostics.clear();
}

std::string takeDiagnostics() {
    std::string taken;
    taken.swap(test_mainlib::state().diagnostics);
    return taken;
}

} // namespace

void PrintTo(const Scenario &scenario, std::ostream *out) {
    *out << scenario.name;
}

std::string nameOf(const testing::TestParamInfo<Scenario> &info) {
    return info.param.name;
}

Steps operator+(Steps steps, const Steps &more) {
    steps.insert(steps.end(), more.begin(), more.end());
    return steps;
}

Steps entryRead(std::uint32_t number) {
    const std::string entry = "entry # " + text(number);
    return {
        {.call = "lseek " + placeOf(number),
         .message = "Error on lseek of logfile to " + entry + ": %s\n"},
        {.call = "read 1496",
         .message = "Error on read of logfile " + entry + ": %s\n",
         .shortOne = Short::isReported,
         .shortMessage = "Read of logfile " + entry + " read only %d bytes\n"},
    };
}

Steps linkedCommit(const std::vector<std::uint32_t> &entries) {
    const std::size_t slots = std::min<std::size_t>(entries.size() + 1, 4);
    Steps steps = {
        {.call = "lseek 80", .message = "lseek on logfile to transaction log area:%s\n"},
        {.call = "write " + std::to_string(slots * 1496),
         .message = "write of entry to transaction log:%s\n",
         .shortOne = Short::isContinued},
        {.call = "lseek 0",
         .message = "lseek on logfile to info record for flagging:%s\n",
         .memory = Memory::flagged},
        {.call = "write 80",
         .message = "write of flagged info record to logfile:%s\n",
         .memory = Memory::flagged,
         .shortOne = Short::isContinued},
    };
    for (const std::uint32_t number : entries) {
        const std::string entry = "event log entry # " + text(number);
        steps.push_back({.call = "lseek " + placeOf(number),
                         .message = "Error: lseek for writing " + entry + ": %s\n",
                         .memory = Memory::flagged,
                         .restart = Restart::after});
        steps.push_back({.call = "write 1496",
                         .message = "Error: write of " + entry + ": %s\n",
                         .memory = Memory::flagged,
                         .restart = Restart::after,
                         .shortOne = Short::goesUnnoticed});
    }
    steps.push_back({.call = "lseek 0",
                     .message = "lseek on logfile to info record:%s\n",
                     .memory = Memory::after,
                     .restart = Restart::after});
    steps.push_back({.call = "write 80",
                     .message = "write of info record to logfile:%s\n",
                     .memory = Memory::after,
                     .restart = Restart::after,
                     .shortOne = Short::isContinued});
    return steps;
}

Steps plainCommit(const std::vector<std::uint32_t> &entries, Restart restart) {
    Steps steps;
    for (const std::uint32_t number : entries) {
        const std::string entry = "event log entry # " + text(number);
        steps.push_back({.call = "lseek " + placeOf(number),
                         .message = "Error: lseek for writing " + entry + ": %s\n"});
        steps.push_back({.call = "write 1496",
                         .message = "Error: write of " + entry + ": %s\n",
                         .shortOne = Short::goesUnnoticed});
    }
    steps.push_back({.call = "lseek 0",
                     .message = "lseek on logfile to info record:%s\n",
                     .memory = Memory::after,
                     .restart = restart});
    steps.push_back({.call = "write 80",
                     .message = "write of info record to logfile:%s\n",
                     .memory = Memory::after,
                     .restart = restart,
                     .shortOne = Short::isContinued});
    return steps;
}

Steps truncateOfClear() {
    return {{.call = "ftruncate 6064",
             .message = "truncate of log file during clear operation:%s\n",
             .memory = Memory::after,
             .restart = Restart::after}};
}

SaErrorT forcedAdd(std::uint8_t seed) {
    const EventLogAddRecord record = event(seed);
    return zuSaHpiEventLogEntryAdd(&record, 1);
}

SaErrorT addNine() {
    return forcedAdd(9);
}

std::function<SaErrorT()> removing(SaHpiEventLogEntryIdT entryId) {
    return [entryId] { return zuSaHpiEventLogEntryDel(entryId, 0); };
}

std::function<void()> addAll(std::vector<std::uint8_t> seeds) {
    return [seeds = std::move(seeds)] {
        for (const std::uint8_t seed : seeds) {
            ASSERT_EQ(forcedAdd(seed), SA_OK);
        }
    };
}

std::function<void()> readAll(std::vector<std::uint32_t> numbers) {
    return [numbers = std::move(numbers)] {
        for (const std::uint32_t number : numbers) {
            EventLogEntryRecord record;
            (void)zuSaHpiEventLogEntryGet(number, &record); // a deleted one is read as well
        }
    };
}

std::vector<int> seedsIn(const FileImage &file) {
    std::vector<int> found;
    std::uint32_t number = file.oldest();
    while (number != none && found.size() < 100) {
        const EventLogEntryRecord record = file.entry(number);
        found.push_back(record.rpt.ResourceTag.Data[0]);
        if (number == file.newest()) {
            break;
        }
        const bool atTheEnd = file.info().type == circular && number == file.maxUsed();
        number = file.info().type == linked ? record.next : atTheEnd ? 1 : number + 1;
    }
    return found;
}

namespace {

// The entries of the log that the process goes on with after the failure, which left the file.
std::vector<int> seedsLeft(const Scenario &scenario, const Step &step, const FileImage &file) {
    const bool durable = step.memory == Memory::flagged && file.updating() != 0;
    return durable || step.memory == Memory::after ? scenario.after : scenario.before;
}

// And after one more add.
std::vector<int> withNextAdd(const Scenario &scenario, std::vector<int> seeds) {
    if (scenario.nextAdd != SA_OK) {
        return seeds;
    }
    const EventLogInfoRecord &info = scenario.block.info;
    if (seeds.size() == info.sa.Size) {
        seeds.erase(info.overflowAction == wrap ? seeds.begin() : seeds.end() - 1);
    }
    seeds.push_back(nextSeed);
    return seeds;
}

// Runs a part of a test on a store of its own.
using Runner = void (*)(const std::function<void()> &);

// In this process: a hundred times cheaper than a process of its own. The store begins as a fresh
// process has it, and ends as the end of a process leaves it.
void inSession(const std::function<void()> &body) {
    const test_mainlib::State outside = test_mainlib::state();
    const std::string lock = std::string(zuSaHpiRoot) + "/evtlog/log.lck";
    store = zusahpi::eventlog::StoreState{};
    body();
    test_support::clearFaults();
    EXPECT_EQ(close(store.fd), 0);
    EXPECT_EQ(unlink(lock.c_str()), 0);
    store = zusahpi::eventlog::StoreState{};
    test_mainlib::state() = outside;
}

// One step of a scenario. Each of its functions runs the operation with a fault at that step, on a
// store of its own, and checks all that the table and the runner promise.
class Run {
  public:
    Run(const Scenario &scenario, const Files &files, std::size_t index)
        : scenario_(scenario), files_(files), step_(scenario.steps[index]), index_(index),
          call_(callOf(step_.call)), skip_(earlierOfItsKind(scenario.steps, index)) {
    }

    void failing(const std::string &path, const Error &error, Mode mode, Runner run) const {
        run([&] {
            startFor(scenario_);
            const EventLogInfoRecord before = store.info;
            const std::size_t descriptors = openDescriptors();
            arm(error, mode, skip_);
            EXPECT_EQ(scenario_.operation(), scenario_.failure);
            test_support::clearFaults();
            EXPECT_EQ(takeDiagnostics(), withText(step_.message, error.text));
            const FileImage &left = files_.untouched[index_];
            checkState(path, before, left);
            std::vector<int> seeds = seedsLeft(scenario_, step_, left);
            if (mode == Mode::persistently && addWhileFailing(error) == SA_OK) {
                seeds = withNextAdd(scenario_, seeds);
            }
            EXPECT_EQ(openDescriptors(), descriptors);
            addAfterwards(path, seeds);
        });
    }

    // The call stops after `count` bytes, and the one that continues it, if any, fails.
    void cutAndFailing(const std::string &path, std::size_t count, const Error &error) const {
        inSession([&] {
            startFor(scenario_);
            const EventLogInfoRecord before = store.info;
            test_support::cutCall(call_, count, skip_);
            if (count > 0) {
                test_support::failCall(call_, error.number, skip_ + 1);
            }
            EXPECT_EQ(scenario_.operation(), scenario_.failure);
            test_support::clearFaults();
            EXPECT_EQ(takeDiagnostics(), withText(step_.message, error.text));
            const FileImage left = withBytesMoved(files_.untouched[index_], count);
            checkState(path, before, left);
            addAfterwards(path, seedsLeft(scenario_, step_, left));
        });
    }

    // The call stops after `count` bytes and is continued: nobody notices.
    void cutAndContinued(const std::string &path, std::size_t count) const {
        inSession([&] {
            startFor(scenario_);
            test_support::recordCalls();
            test_support::cutCall(call_, count, skip_);
            EXPECT_EQ(scenario_.operation(), scenario_.result);
            std::vector<std::string> calls = test_support::recordedCalls();
            EXPECT_EQ(takeDiagnostics(), "");
            expectIdle();
            EXPECT_EQ(FileImage{test_support::readFile(path)}.bytes, files_.untouched.back().bytes);
            const auto rest = calls.begin() + static_cast<std::ptrdiff_t>(index_) + 1;
            EXPECT_EQ(*rest, "write " + std::to_string(bytesMoved(step_) - count));
            calls.erase(rest);
            EXPECT_EQ(calls.size(), scenario_.steps.size());
        });
    }

    // The call writes a part of a record and the operation goes on as if it were the whole.
    void cutUnnoticed(const std::string &path, std::size_t count) const {
        inSession([&] {
            startFor(scenario_);
            test_support::cutCall(call_, count, skip_);
            EXPECT_EQ(scenario_.operation(), scenario_.result);
            test_support::clearFaults();
            EXPECT_EQ(takeDiagnostics(), "");
            expectIdle();
            EXPECT_EQ(FileImage{test_support::readFile(path)}.bytes, tornFile(count).bytes);
        });
    }

    // The call reads a part of a record.
    void cutAndReported(const std::string &path, std::size_t count) const {
        inSession([&] {
            startFor(scenario_);
            const EventLogInfoRecord before = store.info;
            test_support::cutCall(call_, count, skip_);
            EXPECT_EQ(scenario_.operation(), scenario_.failure);
            test_support::clearFaults();
            std::string message = step_.shortMessage;
            message.replace(message.find("%d"), 2, std::to_string(count));
            EXPECT_EQ(takeDiagnostics(), message);
            const FileImage &left = files_.untouched[index_];
            checkState(path, before, left);
            addAfterwards(path, seedsLeft(scenario_, step_, left));
        });
    }

  private:
    void arm(const Error &error, Mode mode, int skip) const {
        if (mode == Mode::once) {
            test_support::failCall(call_, error.number, skip);
        } else {
            test_support::failCallsFrom(call_, error.number, skip);
        }
    }

    void checkState(const std::string &path, const EventLogInfoRecord &before,
                    const FileImage &expected) const {
        expectIdle();
        expectInfo(step_.memory, before, files_.untouched.back().info());
        const FileImage file = {test_support::readFile(path)};
        EXPECT_TRUE(file.bytes == expected.bytes) << "the file";
        expectEntriesOf(file);
        EXPECT_TRUE(test_support::exists(path + ".lck"));
    }

    // A second operation while the failure lasts. Returns its result.
    [[nodiscard]] SaErrorT addWhileFailing(const Error &error) const {
        arm(error, Mode::persistently, 0);
        const SaErrorT result = forcedAdd(nextSeed);
        test_support::clearFaults();
        const std::string message = takeDiagnostics();
        expectIdle();
        if (scenario_.nextAdd == SA_OK && (call_ == Call::write || call_ == Call::lseek)) {
            EXPECT_EQ(result, SA_ERR_HPI_NO_RESPONSE);
            EXPECT_NE(message, "");
        }
        return result;
    }

    // `seeds`: of the entries before it.
    void addAfterwards(const std::string &path, const std::vector<int> &seeds) const {
        EXPECT_EQ(forcedAdd(nextSeed), scenario_.nextAdd);
        EXPECT_EQ(takeDiagnostics(), "");
        expectIdle();
        EXPECT_EQ(store.info.updating, 0U);
        const FileImage file = {test_support::readFile(path)};
        expectEntriesOf(file);
        EXPECT_EQ(file.updating(), 0U);
        EXPECT_EQ(seedsIn(file), withNextAdd(scenario_, seeds));
    }

    // The bytes that a write of the step would move, cut after `count`.
    [[nodiscard]] FileImage withBytesMoved(FileImage file, std::size_t count) const {
        const FileImage &done = files_.untouched[index_ + 1];
        const std::size_t offset = offsetOfStep();
        file.bytes.resize(std::max(file.bytes.size(), offset + count));
        file.bytes.replace(offset, count, done.bytes, offset, count);
        return file;
    }

    // What the whole operation leaves when this write stopped after `count` bytes.
    [[nodiscard]] FileImage tornFile(std::size_t count) const {
        FileImage file = files_.untouched.back();
        const FileImage &earlier = files_.untouched[index_];
        const std::size_t size = bytesMoved(step_);
        const std::size_t offset = offsetOfStep();
        const bool atTheEnd = offset + size == file.bytes.size();
        if (atTheEnd && earlier.bytes.size() <= offset + count) {
            file.bytes.resize(count == 0 ? earlier.bytes.size() : offset + count);
            return file;
        }
        std::string rest(size - count, '\0');
        if (earlier.bytes.size() > offset + count) {
            rest = earlier.bytes.substr(offset + count, size - count);
        }
        file.bytes.replace(offset + count, size - count, rest);
        return file;
    }

    // Where the step's write begins: each is preceded by its seek.
    [[nodiscard]] std::size_t offsetOfStep() const {
        return bytesMoved(scenario_.steps[index_ - 1]);
    }

    const Scenario &scenario_;
    const Files &files_;
    const Step &step_;
    std::size_t index_;
    Call call_;
    int skip_;
};

// The clean run: the calls are those of the table, and the operation does what it should.
void runClean(const Scenario &scenario) {
    inChild([&] {
        startFor(scenario);
        const std::size_t descriptors = openDescriptors();
        test_support::recordCalls();
        EXPECT_EQ(scenario.operation(), scenario.result);
        const std::vector<std::string> calls = test_support::recordedCalls();
        std::vector<std::string> expected;
        for (const Step &step : scenario.steps) {
            expected.push_back(step.call);
        }
        EXPECT_EQ(calls, expected);
        EXPECT_EQ(takeDiagnostics(), "");
        EXPECT_EQ(openDescriptors(), descriptors);
    });
}

// What is left when the process ends in place of the call after the next `calls` ones.
FileImage fileAfter(const Scenario &scenario, const Files &files, const std::string &path,
                    std::size_t calls) {
    test_support::writeFile(path, files.base);
    inSession([&] {
        startFor(scenario);
        test_support::loseCallsFrom(static_cast<int>(calls));
        (void)scenario.operation(); // what it does up to that call is what counts
        EXPECT_EQ(test_support::callsWereLost(), calls < scenario.steps.size());
    });
    return {test_support::readFile(path)};
}

// The log that the next start finds: sound, with one of the lists of entries.
void checkRestart(const Scenario &scenario, const std::vector<std::vector<int>> &possible,
                  const std::string &path) {
    inSession([&] {
        EventLogControlBlock block = scenario.block;
        EXPECT_EQ(zuSaHpiEventLogInit(&block), SA_OK);
        const FileImage file = {test_support::readFile(path)};
        EXPECT_EQ(test_support::unsoundness(file.bytes), std::vector<std::string>{});
        const std::vector<int> found = seedsIn(file);
        EXPECT_NE(std::count(possible.begin(), possible.end(), found), 0)
            << "entries " << testing::PrintToString(found) << ", not one of "
            << testing::PrintToString(possible);
        EXPECT_EQ(file.updating(), 0U);
        expectEntriesOf(file);
    });
}

// What the process that saw the failure left: a start of its own finds the same entries.
void checkLeftBehind(const Scenario &scenario, const std::vector<int> &seeds,
                     const std::string &path) {
    EXPECT_FALSE(test_support::exists(path + ".lck"));
    const FileImage file = {test_support::readFile(path)};
    EXPECT_EQ(test_support::unsoundness(file.bytes), std::vector<std::string>{});
    checkRestart(scenario, {seeds}, path);
}

// The next add is cut short by a crash, at each of its calls.
void crashNextAdd(const Scenario &scenario, const Files &files, std::size_t index,
                  const std::string &path) {
    const Step &step = scenario.steps[index];
    const std::vector<int> left = seedsLeft(scenario, step, files.untouched[index]);
    const std::vector<int> last = withNextAdd(scenario, left);
    bool added = false;
    for (int calls = 0; !added; ++calls) {
        SCOPED_TRACE("crash after " + std::to_string(calls) + " calls of the next add");
        test_support::writeFile(path, files.base);
        inSession([&] {
            startFor(scenario);
            test_support::failCall(callOf(step.call), EIO, earlierOfItsKind(scenario.steps, index));
            (void)scenario.operation(); // what its failure comes to is checked elsewhere
            test_support::clearFaults();
            test_support::loseCallsFrom(calls);
            (void)forcedAdd(nextSeed);
            added = !test_support::callsWereLost();
        });
        if (added) {
            checkRestart(scenario, {last}, path);
        } else {
            checkRestart(scenario, {left, last}, path);
            countCrashAfterwards();
        }
    }
}

void failStep(const Scenario &scenario, const Files &files, std::size_t index,
              const std::string &path) {
    const Step &step = scenario.steps[index];
    const Run run(scenario, files, index);
    const auto eachFrom = [&](const std::function<void()> &body) {
        test_support::writeFile(path, files.base);
        body();
        countFailedCall();
        (void)unlink((path + ".lck").c_str()); // of a run that went wrong
    };
    Runner runner = inChild; // once, for what the end of the process does after a failure
    for (const Error &error : errorsOf(callOf(step.call))) {
        for (const Mode mode : {Mode::once, Mode::persistently}) {
            SCOPED_TRACE(std::string(error.text) + (mode == Mode::once ? ", once" : ", lasting"));
            eachFrom([&] {
                run.failing(path, error, mode, runner);
                runner = inSession;
                if (mode == Mode::once) {
                    checkLeftBehind(
                        scenario,
                        withNextAdd(scenario, seedsLeft(scenario, step, files.untouched[index])),
                        path);
                }
            });
        }
    }
    if (scenario.block.info.type == linked) {
        crashNextAdd(scenario, files, index, path);
    }
    if (step.shortOne == Short::none) {
        return;
    }
    const std::size_t size = bytesMoved(step);
    for (const std::size_t count : {std::size_t{1}, size / 2, size - 1}) {
        SCOPED_TRACE("short by " + std::to_string(size - count));
        switch (step.shortOne) {
        case Short::isContinued:
            eachFrom([&] { run.cutAndContinued(path, count); });
            eachFrom([&] { run.cutAndFailing(path, count, noSpace); });
            break;
        case Short::goesUnnoticed:
            eachFrom([&] { run.cutUnnoticed(path, count); });
            break;
        case Short::isReported:
            eachFrom([&] { run.cutAndReported(path, count); });
            break;
        case Short::none:
            break;
        }
    }
    SCOPED_TRACE("nothing moved");
    eachFrom([&] {
        if (step.shortOne == Short::isContinued) {
            run.cutAndFailing(path, 0, noSpace);
        } else if (step.shortOne == Short::goesUnnoticed) {
            run.cutUnnoticed(path, 0);
        } else {
            run.cutAndReported(path, 0);
        }
    });
}

} // namespace

void FailingCalls::run(const Scenario &scenario) {
    SCOPED_TRACE(scenario.name);
    const std::string path = logPath();
    (void)unlink(path.c_str()); // of an earlier scenario
    inChild([&] {
        start(scenario.block);
        scenario.fill();
    });
    Files files{.base = test_support::readFile(path), .untouched = {}};
    for (std::size_t calls = 0; calls <= scenario.steps.size(); ++calls) {
        files.untouched.push_back(fileAfter(scenario, files, path, calls));
    }
    test_support::writeFile(path, files.base);
    runClean(scenario);
    EXPECT_TRUE(file().bytes == files.untouched.back().bytes);
    EXPECT_EQ(seedsIn(files.untouched.front()), scenario.before);
    EXPECT_EQ(seedsIn(files.untouched.back()), scenario.after);
    for (std::size_t index = 0; index < scenario.steps.size() && !HasFailure(); ++index) {
        const Step &step = scenario.steps[index];
        SCOPED_TRACE("call " + std::to_string(index) + ": " + step.call);
        test_support::writeFile(path, files.untouched[index].bytes);
        checkRestart(scenario,
                     {step.restart == Restart::before  ? scenario.before
                      : step.restart == Restart::after ? scenario.after
                                                       : scenario.overwritten},
                     path);
        failStep(scenario, files, index, path);
    }
}

} // namespace failing_calls
