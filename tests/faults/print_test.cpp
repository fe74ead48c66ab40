// Goal: every system call of a printout fails, with every error: what is printed up to there, the
// message, what comes back; nothing of the file, the store or its descriptors changes.

#include <cstddef>
#include <string>
#include <vector>

#include <unistd.h>

#include "tests/display/printed.h"
#include "tests/eventlog/store_fixture.h"
#include "tests/faults/errors.h"
#include "tests/frontends/sample_log.h"

using namespace failing_calls;
using namespace store_test;
using test_support::Call;

namespace {

constexpr char shortInfo[] = "Unable to read Event Log info record, rdcnt=%d.\n";
constexpr char shortSlot[] = "Unable to read transaction log record, rdcnt=%d\n";

struct PrintStep {
    std::string call;
    std::string message;       // "%s" stands for the system's text; empty for a silent end
    const char *printedBefore; // what of the whole printout comes before: all up to this text,
    int occurrence;            // where it stands for that many times
    const char *shortMessage = nullptr;
};

// The printout up to the n-th line that begins with `start`; all of it for none.
std::string upTo(const std::string &all, const char *start, int occurrence) {
    if (start == nullptr) {
        return all;
    }
    std::size_t place = all.find(start);
    for (int i = 1; i < occurrence && place != std::string::npos; ++i) {
        place = all.find(start, place + 1);
    }
    EXPECT_NE(place, std::string::npos) << start;
    return all.substr(0, place);
}

const std::vector<PrintStep> &printSteps() {
    constexpr const char *info = "Event Log Info:\n";
    constexpr const char *slots = "Transaction log data:\n";
    constexpr const char *entry = "Entry ";
    const std::string slotMessage = "Error: read of transaction log record: %s\n";
    static const std::vector<PrintStep> steps = {
        {"lseek 0", "Error: lseek on logfile to info record: %s\n", info, 1},
        {"read 80", "Error: read of Event Log info record: %s\n", info, 1, shortInfo},
        {"read 1496", slotMessage, slots, 1, shortSlot},
        {"read 1496", slotMessage, entry, 2, shortSlot},
        {"read 1496", slotMessage, "Normal Data:\n", 1, shortSlot}, // the end mark
        {"lseek 6064", "Error: lseek for log entry # 1: %s\n", entry, 3},
        {"fstat", "", entry, 3}, // of no length, so without entries
        {"read 1496", "", entry, 3},
        {"read 1496", "", entry, 4},
        {"read 1496", "", nullptr, 0},
    };
    return steps;
}

class FailingPrint : public StoreTest {
  protected:
    // A file with two slots and two entries.
    static FileImage sample() {
        EventLogInfoRecord info = controlBlock(linked, wrap, 5).info;
        info.oldest = 1;
        info.newest = 2;
        info.maxUsed = 2;
        info.sa.Entries = 2;
        FileImage image = sample_log::emptyFile(info);
        image.setSlot(0, sample_log::recordOf(1, userEvent(2), none, 2));
        image.setSlot(1, sample_log::recordOf(2, userEvent(2), 1, none));
        image.setEntry(image.slot(0));
        image.setEntry(image.slot(1));
        return image;
    }

    static Printed dumpLog() {
        return printedBy([](auto out) { return zuSaHpiDumplog(out, "log", 0); });
    }

    static void expectUntouched(const FileImage &image, std::size_t descriptors) {
        EXPECT_EQ(openDescriptors(), descriptors);
        EXPECT_TRUE(file().bytes == image.bytes) << "the file";
        EXPECT_EQ(diagnostics(), "");
    }

    // Fails, or cuts, the n-th of the calls of a kind.
    static void arm(const Error &error, Call call, int skip, bool lasting) {
        if (lasting) {
            test_support::failCallsFrom(call, error.number, skip);
        } else {
            test_support::failCall(call, error.number, skip);
        }
    }
};

int earlierOfItsKind(std::size_t index) {
    int count = 0;
    for (std::size_t i = 0; i < index; ++i) {
        count += callOf(printSteps()[i].call) == callOf(printSteps()[index].call) ? 1 : 0;
    }
    return count;
}

TEST_F(FailingPrint, TheCallsAreThoseOfTheTable) {
    writeLog(sample());
    std::vector<std::string> expected = {"open"};
    for (const PrintStep &step : printSteps()) {
        expected.push_back(step.call);
    }
    expected.emplace_back("close");
    test_support::recordCalls();
    EXPECT_EQ(dumpLog().result, 0);
    EXPECT_EQ(test_support::recordedCalls(), expected);
}

TEST_F(FailingPrint, EveryCallFails) {
    const FileImage image = sample();
    writeLog(image);
    const std::string all = dumpLog().text;
    const std::size_t descriptors = openDescriptors();
    for (std::size_t index = 0; index < printSteps().size(); ++index) {
        const PrintStep &step = printSteps()[index];
        const Call call = callOf(step.call);
        SCOPED_TRACE("call " + std::to_string(index) + ": " + step.call);
        for (const Error &error : errorsOf(call)) {
            for (const bool lasting : {false, true}) {
                const std::string message = withText(step.message, error.text);
                arm(error, call, earlierOfItsKind(index), lasting);
                const Printed printed = dumpLog();
                test_support::clearFaults();
                EXPECT_EQ(printed.text, upTo(all, step.printedBefore, step.occurrence) + message);
                EXPECT_EQ(printed.result, 0); // of close
                expectUntouched(image, descriptors);
                countFailedCall();
            }
        }
    }
    EXPECT_EQ(dumpLog().text, all);
}

struct RunningLogRow {
    Call call;
    int skip;
    std::string message; // at the end of what is printed; the printout's result is its length
};

const std::vector<RunningLogRow> &runningLogRows() {
    static const std::vector<RunningLogRow> rows = {
        {Call::lseek, 0, "Error: lseek on logfile to info record: Input/output error\n"},
        {Call::read, 0, "Error: read of Event Log info record: Input/output error\n"},
        {Call::read, 1, "Error: read of transaction log record: Input/output error\n"},
        {Call::lseek, 1, "Error: lseek for log entry # 1: Input/output error\n"},
        {Call::read, 4, ""}, // of an entry: silent
    };
    return rows;
}

Printed printRunningLog() {
    return printedBy([](auto out) { return zuSaHpiPrintEventLog(out, 0); });
}

TEST_F(FailingPrint, TheRunningLogGoesOn) {
    unlink(logPath().c_str());
    for (const RunningLogRow &row : runningLogRows()) {
        test_support::inChild([&row] {
            start(linked, wrap, 5);
            add(1);
            add(2); // the transaction log area then begins with two used slots
            const std::string all = printRunningLog().text;
            const FileImage image = file();
            const std::size_t descriptors = openDescriptors();
            test_support::failCall(row.call, EIO, row.skip);
            const Printed printed = printRunningLog();
            test_support::clearFaults();
            EXPECT_EQ(printed.result,
                      row.message.empty() ? -1 : static_cast<int>(row.message.size()));
            EXPECT_TRUE(printed.text.ends_with(row.message)) << printed.text;
            expectUntouched(image, descriptors);
            // The store's position was moved, its log was not.
            EXPECT_EQ(printRunningLog().text, all);
            EXPECT_EQ(seeds(), (std::vector<int>{1, 2}));
            add(3);
            EXPECT_EQ(seeds(), (std::vector<int>{1, 2, 3}));
        });
        unlink(logPath().c_str());
        countFailedCall();
    }
}

TEST_F(FailingPrint, ReadsThatStopShort) {
    const FileImage image = sample();
    writeLog(image);
    const std::string all = dumpLog().text;
    const std::size_t descriptors = openDescriptors();
    for (std::size_t index = 0; index < printSteps().size(); ++index) {
        const PrintStep &step = printSteps()[index];
        if (step.shortMessage == nullptr) {
            continue;
        }
        const std::size_t size = step.call == "read 80" ? 80 : 1496;
        for (const std::size_t count : {std::size_t{0}, std::size_t{1}, size / 2, size - 1}) {
            SCOPED_TRACE(step.call + " stops after " + std::to_string(count));
            std::string message = step.shortMessage;
            message.replace(message.find("%d"), 2, std::to_string(count));
            test_support::cutCall(Call::read, count, earlierOfItsKind(index));
            const Printed printed = dumpLog();
            test_support::clearFaults();
            EXPECT_EQ(printed.text, upTo(all, step.printedBefore, step.occurrence) + message);
            expectUntouched(image, descriptors);
            countFailedCall();
        }
    }
}

TEST_F(FailingPrint, OpenAndClose) {
    const FileImage image = sample();
    writeLog(image);
    const std::string all = dumpLog().text;
    const std::size_t descriptors = openDescriptors();
    for (const Error &error : errorsOf(Call::open)) {
        test_support::failCall(Call::open, error.number);
        const Printed printed = dumpLog();
        const std::string message = "Unable to open " + logPath() + ": " + error.text + "\n";
        EXPECT_EQ(printed.text, message);
        EXPECT_EQ(printed.result, static_cast<int>(message.size()));
        expectUntouched(image, descriptors);
        countFailedCall();
    }
    for (const Error &error : errorsOf(Call::close)) {
        test_support::failCall(Call::close, error.number);
        const Printed printed = dumpLog();
        EXPECT_EQ(printed.text, all);
        EXPECT_EQ(printed.result, -1);
        expectUntouched(image, descriptors);
        countFailedCall();
    }
}

} // namespace
