// Goal: every system call of a start and of the exit handler fails, with every error: exit status,
// message, what is left of the lock, the file, and what the next start then says and finds.

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <optional>
#include <ostream>

#include <unistd.h>

#include "tests/eventlog/store_fixture.h"
#include "tests/faults/errors.h"
#include "tests/faults/scenario.h"
#include "tests/support/log_soundness.h"

using namespace failing_calls;
using namespace store_test;
using test_support::Call;
using test_support::ChildResult;
using test_support::runInChild;

namespace {

// What a failed call leaves of the lock.
enum class Lock {
    gone,
    stays,             // until it is removed by hand
    staysWithTemporary // the same; so does the file that was linked to it
};

// What it leaves of the log file.
enum class Left {
    asIs,     // as the calls before it did
    madeAnew, // emptied: a log that cannot be opened is taken for one that is not there
    whole,    // as the whole start does
};

struct StartStep {
    std::string call; // as recorded
    std::string message;
    int status = 1;
    Lock lock = Lock::gone;
    Left left = Left::asIs;
    std::string nextStart =
        {}; // what the next start prints, once the lock is gone, before it fails
    std::optional<std::string> lasting = std::nullopt; // the message when the failure lasts
    std::optional<int> lastingStatus = std::nullopt;
    Short shortOne = Short::none;
};

using StartSteps = std::vector<StartStep>;

struct Start {
    const char *name;
    EventLogControlBlock block;
    std::function<void()> fill; // makes the file; none for no file
    StartSteps steps;
    std::vector<int> entries; // that a start finds
};

void PrintTo(const Start &start, std::ostream *out) {
    *out << start.name;
}

std::string nameOfStart(const testing::TestParamInfo<Start> &info) {
    return info.param.name;
}

StartSteps operator+(StartSteps steps, const StartSteps &more) {
    steps.insert(steps.end(), more.begin(), more.end());
    return steps;
}

StartSteps lockSteps() {
    return {
        {.call = "gethostname", .message = "gethostname:%s\n"},
        {.call = "creat", .message = "create of temporary lockfile:%s\n"},
        {.call = "close", // of a file that holds nothing
         .message = "",
         .status = 0,
         .left = Left::whole,
         .lasting = "close of log file:%s\n"},
        {.call = "link", .message = "Cannot establish lock on event log file.\n"},
        {.call = "stat",
         .message = "stat: cannot access event log temporary lockfile:%s\n",
         .lock = Lock::stays},
        {.call = "unlink",
         .message = "unlink of temporary lockfile:%s\n",
         .lock = Lock::staysWithTemporary},
    };
}

StartSteps exitSteps() {
    return {
        {.call = "close", .message = "close of log file:%s\n", .status = 0, .left = Left::whole},
        {.call = "unlink",
         .message = "unlink of log lock file:%s\n",
         .status = 0,
         .lock = Lock::stays,
         .left = Left::whole},
    };
}

StartSteps newFile(const std::string &open) {
    const std::string noInfo = "Unable to read Event Log Info from existing log file.\n";
    const StartStep area = {.call = "write 1496",
                            .message = "write of initial transaction log area:%s\n",
                            .shortOne = Short::isContinued};
    return lockSteps() +
           StartSteps{
               {.call = open, // fails by itself: there is no file
                .message = "",
                .status = 0,
                .left = Left::whole,
                .lasting = "create of log file:%s\n",
                .lastingStatus = 1},
               {.call = open, .message = "create of log file:%s\n"},
               {.call = "fchown", .message = "chown of new logfile:%s\n", .nextStart = noInfo},
               {.call = "write 80",
                .message = "write of info record to new logfile:%s\n",
                .nextStart = noInfo,
                .shortOne = Short::isContinued},
               area,
               area,
               area,
               area} +
           exitSteps();
}

StartSteps openExisting(const std::string &open) {
    return {{.call = open,
             .message = "",
             .status = 0,
             .left = Left::madeAnew,
             .lasting = "create of log file:%s\n",
             .lastingStatus = 1},
            {.call = "read 80",
             .message = "Unable to read Event Log Info from existing log file.\n",
             .shortOne = Short::isReported}};
}

StartSteps writeInfo() {
    return {{.call = "lseek 0", .message = "lseek on logfile to info record:%s\n"},
            {.call = "write 80",
             .message = "write of info record to logfile:%s\n",
             .shortOne = Short::isContinued}};
}

// From the info record on, in a log whose highest entry is `maxUsed`.
StartSteps writeInfoAndCut(std::uint32_t maxUsed) {
    return writeInfo() + StartSteps{{.call = "ftruncate " + std::to_string(6064 + maxUsed * 1496),
                                     .message = "truncate of log file at initialization:%s\n"}};
}

StartSteps existingFile(const std::string &open, std::uint32_t maxUsed) {
    return lockSteps() + openExisting(open) + writeInfoAndCut(maxUsed) + exitSteps();
}

// The slot of the transaction log area, read.
StartSteps slotRead(std::uint32_t slot) {
    return {{.call = "lseek " + std::to_string(80 + slot * 1496),
             .message = "lseek on logfile to transaction log area:%s\n"},
            {.call = "read 1496",
             .message = "Unable to read logged entry from existing log file.\n",
             .shortOne = Short::isReported}};
}

// The slot, read and written to its place.
StartSteps replay(std::uint32_t slot, std::uint32_t number) {
    const std::string failed = "Error transacting logged record on existing log file.\n";
    const std::string entry = "event log entry # " + std::to_string(number);
    return slotRead(slot) +
           StartSteps{{.call = "lseek " + std::to_string(6064 + (number - 1) * 1496),
                       .message = "Error: lseek for writing " + entry + ": %s\n" + failed},
                      {.call = "write 1496",
                       .message = "Error: write of " + entry + ": %s\n" + failed,
                       .shortOne = Short::goesUnnoticed}};
}

void startLog(const EventLogControlBlock &block) {
    EventLogControlBlock copy = block;
    ASSERT_EQ(zuSaHpiEventLogInit(&copy), SA_OK);
}

std::function<void()> logOf(const EventLogControlBlock &block, std::vector<std::uint8_t> seeds) {
    return [block, seeds = std::move(seeds)] {
        test_support::inChild([&] {
            startLog(block);
            addAll(seeds)();
        });
    };
}

std::string pathOfLog() {
    return std::string(zuSaHpiRoot) + "/evtlog/log";
}

EventLogControlBlock reinitialising(EventLogControlBlock block) {
    block.reinitialize = 1;
    return block;
}

class FailingStart : public StoreTest, public testing::WithParamInterface<Start> {
  protected:
    void run();

  private:
    struct File {
        bool there = false;
        std::string bytes = {};
        bool operator==(const File &) const = default;
    };

    static File fileNow() {
        return test_support::exists(logPath()) ? File{true, file().bytes} : File{};
    }
    static void put(const File &left) {
        unlink(logPath().c_str());
        if (left.there) {
            test_support::writeFile(logPath(), left.bytes);
        }
    }
    // The names in the log folder but for the log's.
    static std::vector<std::string> otherNames() {
        std::vector<std::string> names;
        for (const auto &entry :
             std::filesystem::directory_iterator(std::string(zuSaHpiRoot) + "/evtlog")) {
            if (const std::string name = entry.path().filename(); name != "log") {
                names.push_back(name);
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    static void removeOtherNames() {
        for (const std::string &name : otherNames()) {
            unlink((std::string(zuSaHpiRoot) + "/evtlog/" + name).c_str());
        }
    }

    ChildResult startWith(const std::function<void()> &fault) const;
    void runClean();
    [[nodiscard]] File expectedFile(const StartStep &step, std::size_t index) const;
    static void checkLock(Lock lock);
    void checkNextStart(const StartStep &step) const;
    void failOnce(std::size_t index, const Error &error);
    void failLastingly(std::size_t index, const Error &error);
    void cut(std::size_t index);
    void cutAndContinue(std::size_t index, std::size_t count);
    [[nodiscard]] int earlierOfItsKind(std::size_t index) const;

    const Start &start_ = GetParam();
    File base_;
    std::vector<File> untouched_; // what is left without the calls from the i-th on
};

ChildResult FailingStart::startWith(const std::function<void()> &fault) const {
    put(base_);
    ChildResult result = runInChild([&] {
        fault();
        startLog(start_.block);
        if (HasFailure()) {
            _exit(98);
        }
    });
    return result;
}

// The calls are those of the table, and one descriptor stays open.
void FailingStart::runClean() {
    put(base_);
    test_support::inChild([&] {
        const std::size_t descriptors = openDescriptors();
        test_support::recordCalls();
        startLog(start_.block);
        const std::vector<std::string> calls = test_support::recordedCalls();
        std::vector<std::string> expected;
        for (std::size_t i = 0; i + 2 < start_.steps.size(); ++i) { // the exit handler's come later
            expected.push_back(start_.steps[i].call);
        }
        EXPECT_EQ(calls, expected);
        EXPECT_EQ(openDescriptors(), descriptors + 1);
        EXPECT_EQ(seeds(), start_.entries);
    });
    EXPECT_EQ(otherNames(), std::vector<std::string>{});
    for (std::size_t calls = 0; calls < start_.steps.size(); ++calls) {
        const ChildResult result =
            startWith([calls] { test_support::endProcessBeforeCall(static_cast<int>(calls)); });
        EXPECT_EQ(result.exitStatus, test_support::endedByFault) << result.diagnostics;
        untouched_.push_back(fileNow());
        removeOtherNames();
    }
}

FailingStart::File FailingStart::expectedFile(const StartStep &step, std::size_t index) const {
    if (step.left == Left::whole) {
        return untouched_.back();
    }
    File expected = untouched_[index];
    if (step.left == Left::madeAnew) {
        FileImage image = {expected.bytes};
        EventLogInfoRecord info = start_.block.info;
        info.sa.UpdateTimestamp = test_mainlib::state().timeOfDay;
        image.setInfo(info);
        EventLogEntryRecord unused;
        std::memset(&unused, 0, sizeof unused);
        unused.entry.EntryId = none;
        for (std::uint32_t slot = 0; slot < 4; ++slot) {
            image.setSlot(slot, unused);
        }
        expected.bytes = image.bytes;
    }
    return expected;
}

void FailingStart::checkLock(Lock lock) {
    const std::vector<std::string> names = otherNames();
    ASSERT_EQ(names.size(), static_cast<std::size_t>(lock));
    if (lock != Lock::gone) {
        EXPECT_EQ(names[0], "log.lck");
    }
    if (lock == Lock::staysWithTemporary) {
        EXPECT_TRUE(names[1].starts_with("log.lck.")) << names[1];
    }
}

// The lock that was left keeps a next start out. Without it the start finds a sound log, or says
// what the table says.
void FailingStart::checkNextStart(const StartStep &step) const {
    if (step.lock != Lock::gone) {
        const ChildResult result = runInChild([&] { startLog(start_.block); });
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_EQ(result.diagnostics, "Cannot establish lock on event log file.\n");
        removeOtherNames();
    }
    const ChildResult result = runInChild([&] {
        startLog(start_.block);
        EXPECT_EQ(seeds(), step.left == Left::madeAnew ? std::vector<int>{} : start_.entries);
        EXPECT_EQ(test_support::unsoundness(file().bytes), std::vector<std::string>{});
        EXPECT_EQ(file().updating(), 0U);
        EXPECT_EQ(forcedAdd(9), SA_OK);
    });
    EXPECT_EQ(result.exitStatus, step.nextStart.empty() ? 0 : 1);
    EXPECT_EQ(result.diagnostics, step.nextStart);
    removeOtherNames();
}

int FailingStart::earlierOfItsKind(std::size_t index) const {
    const Call call = callOf(start_.steps[index].call);
    return static_cast<int>(std::count_if(
        start_.steps.begin(), start_.steps.begin() + static_cast<std::ptrdiff_t>(index),
        [call](const StartStep &step) { return callOf(step.call) == call; }));
}

void FailingStart::failOnce(std::size_t index, const Error &error) {
    SCOPED_TRACE(std::string(error.text) + ", once");
    const StartStep &step = start_.steps[index];
    const ChildResult result = startWith(
        [&] { test_support::failCall(callOf(step.call), error.number, earlierOfItsKind(index)); });
    EXPECT_EQ(result.exitStatus, step.status);
    EXPECT_EQ(result.diagnostics, withText(step.message, error.text));
    EXPECT_TRUE(fileNow() == expectedFile(step, index)) << "the file";
    checkLock(step.lock);
    checkNextStart(step);
    countFailedCall();
}

void FailingStart::failLastingly(std::size_t index, const Error &error) {
    SCOPED_TRACE(std::string(error.text) + ", lasting");
    const StartStep &step = start_.steps[index];
    const ChildResult result = startWith([&] {
        test_support::failCallsFrom(callOf(step.call), error.number, earlierOfItsKind(index));
    });
    EXPECT_EQ(result.exitStatus, step.lastingStatus.value_or(step.status));
    EXPECT_EQ(result.diagnostics, withText(step.lasting.value_or(step.message), error.text));
    const bool stopped = step.lastingStatus.has_value(); // where one failure would not have
    EXPECT_TRUE(fileNow() == (stopped ? untouched_[index] : expectedFile(step, index)))
        << "the file";
    checkLock(step.lock);
    removeOtherNames();
    countFailedCall();
}

// A write that stops short is continued; when that fails, what was written stays.
void FailingStart::cutAndContinue(std::size_t index, std::size_t count) {
    const StartStep &step = start_.steps[index];
    const int skip = earlierOfItsKind(index);
    ChildResult result = startWith([&] { test_support::cutCall(Call::write, count, skip); });
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.diagnostics, "");
    EXPECT_TRUE(fileNow() == untouched_.back()) << "the file";
    checkLock(Lock::gone);

    result = startWith([&] {
        test_support::cutCall(Call::write, count, skip);
        test_support::failCall(Call::write, EDQUOT, skip + 1);
    });
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, withText(step.message, "Disk quota exceeded"));
    File expected = untouched_[index + 1];
    const std::string &earlier = untouched_[index].bytes;
    const bool isInfo = step.call == "write 80";
    const std::size_t written = (isInfo ? 0 : earlier.size()) + count;
    expected.bytes.resize(std::max(written, earlier.size()));
    if (written < earlier.size()) {
        expected.bytes.replace(written, std::string::npos, earlier.substr(written));
    }
    EXPECT_TRUE(fileNow() == expected) << "the file";
    checkLock(Lock::gone);
}

void FailingStart::cut(std::size_t index) {
    const StartStep &step = start_.steps[index];
    if (step.shortOne == Short::none) {
        return;
    }
    const std::size_t size = std::stoul(step.call.substr(step.call.find(' ')));
    const int skip = earlierOfItsKind(index);
    for (const std::size_t count : {std::size_t{0}, std::size_t{1}, size / 2, size - 1}) {
        SCOPED_TRACE("short by " + std::to_string(size - count));
        if (step.shortOne == Short::isContinued && count > 0) {
            cutAndContinue(index, count);
        } else {
            const ChildResult result =
                startWith([&] { test_support::cutCall(callOf(step.call), count, skip); });
            const bool unnoticed = step.shortOne == Short::goesUnnoticed;
            EXPECT_EQ(result.exitStatus, unnoticed ? 0 : 1);
            EXPECT_EQ(result.diagnostics,
                      unnoticed ? "" : withText(step.message, "No space left on device"));
            File expected = untouched_[index];
            if (unnoticed) { // the end of the record is as it was
                const std::string &seek = start_.steps[index - 1].call;
                const std::size_t rest = std::stoul(seek.substr(seek.find(' '))) + count;
                const std::string before = expected.bytes.substr(rest, size - count);
                expected = untouched_.back();
                expected.bytes.replace(rest, before.size(), before);
            }
            EXPECT_TRUE(fileNow() == expected) << "the file";
            checkLock(Lock::gone);
        }
        countFailedCall();
    }
}

void FailingStart::run() {
    put({}); // of an earlier test
    if (start_.fill) {
        start_.fill();
        base_ = {true, file().bytes};
    }
    runClean();
    for (std::size_t index = 0; index < start_.steps.size() && !HasFailure(); ++index) {
        const StartStep &step = start_.steps[index];
        SCOPED_TRACE("call " + std::to_string(index) + ": " + step.call);
        for (const Error &error : errorsOf(callOf(step.call))) {
            failOnce(index, error);
            failLastingly(index, error);
        }
        cut(index);
    }
}

TEST_P(FailingStart, EveryCallFails) {
    run();
}

const EventLogControlBlock simpleLog = controlBlock(simple, drop, 5);
const EventLogControlBlock circularLog = controlBlock(circular, wrap, 3);
const EventLogControlBlock linkedLog = controlBlock(linked, wrap, 5);

// A delete of the middle one of three entries that ended when it was flagged, before any of its
// records was in its place.
void leaveDeleteWaiting() {
    const ChildResult result = runInChild([] {
        startLog(linkedLog);
        addAll({1, 2, 3})();
        readAll({1, 2, 3})();
        test_support::endProcessBeforeCall(4);
        (void)zuSaHpiEventLogEntryDel(2, 0); // ends here
    });
    ASSERT_EQ(result.exitStatus, test_support::endedByFault) << result.diagnostics;
    ASSERT_EQ(unlink((pathOfLog() + ".lck").c_str()), 0);
}

// Four slots without an end mark: new contents for each of four entries.
void leaveFourSlotsWaiting() {
    test_support::inChild([] {
        startLog(linkedLog);
        addAll({1, 2, 3, 4})();
    });
    FileImage image = {test_support::readFile(pathOfLog())};
    EventLogInfoRecord info = image.info();
    info.updating = 1;
    image.setInfo(info);
    for (std::uint32_t number = 1; number <= 4; ++number) {
        image.setSlot(number - 1, entryRecord(number, static_cast<std::uint8_t>(0x10 + number),
                                              number == 1 ? none : number - 1,
                                              number == 4 ? none : number + 1));
    }
    test_support::writeFile(pathOfLog(), image.bytes);
}

INSTANTIATE_TEST_SUITE_P(NewFile, FailingStart,
                         testing::Values(Start{"Simple", simpleLog, {}, newFile("open"), {}},
                                         Start{"Circular", circularLog, {}, newFile("open"), {}},
                                         Start{
                                             "Linked", linkedLog, {}, newFile("open O_SYNC"), {}}),
                         nameOfStart);

INSTANTIATE_TEST_SUITE_P(
    ExistingFile, FailingStart,
    testing::Values(
        Start{"Simple", simpleLog, logOf(simpleLog, {1, 2}), existingFile("open", 2), {1, 2}},
        Start{"Circular",
              circularLog,
              logOf(circularLog, {1, 2, 3, 4}),
              existingFile("open", 3),
              {2, 3, 4}},
        Start{"Linked",
              linkedLog,
              logOf(linkedLog, {1, 2, 3}),
              existingFile("open O_SYNC", 3),
              {1, 2, 3}},
        Start{"Reinitialised",
              reinitialising(linkedLog),
              logOf(linkedLog, {1, 2, 3}),
              existingFile("open O_SYNC", 0),
              {}}),
    nameOfStart);

INSTANTIATE_TEST_SUITE_P(
    Recovery, FailingStart,
    testing::Values(
        Start{"ThreeSlotsAndEndMark",
              linkedLog,
              leaveDeleteWaiting,
              lockSteps() + openExisting("open O_SYNC") + writeInfo() + replay(0, 1) +
                  replay(1, 3) + replay(2, 2) + slotRead(3) + writeInfoAndCut(3) + exitSteps(),
              {1, 3}},
        Start{"FourSlots",
              linkedLog,
              leaveFourSlotsWaiting,
              lockSteps() + openExisting("open O_SYNC") + writeInfo() + replay(0, 1) +
                  replay(1, 2) + replay(2, 3) + replay(3, 4) + writeInfoAndCut(4) + exitSteps(),
              {0x11, 0x12, 0x13, 0x14}}),
    nameOfStart);

} // namespace
