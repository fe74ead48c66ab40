// A crash while a new log file is made. Three outcomes: no file, so that the next start makes it;
// a file too short for its info record, which stops every start until somebody removes it; a file
// with its info record, which is an empty log.

#include <cstdio>

#include <gtest/gtest.h>

#include "tests/crash/crash_image.h"
#include "tests/crash/scenarios.h"
#include "tests/support/child.h"
#include "tests/support/files.h"
#include "tests/support/log_soundness.h"

using namespace crash_test;
using store_test::controlBlock;
using store_test::drop;
using test_support::FileEvent;

namespace {

constexpr std::size_t infoLength = 80;

class CreationCrash : public testing::TestWithParam<std::uint32_t> {
  protected:
    static EventLogControlBlock block() {
        return controlBlock(GetParam(), drop, 3);
    }
    static std::vector<FileEvent> creation() {
        removeLog();
        test_support::watchFile(logPath());
        beginSession(block());
        std::vector<FileEvent> events = test_support::takeFileEvents();
        endSession();
        return events;
    }
};

TEST_P(CreationCrash, TheInfoRecordIsWrittenFirstAndInOneWrite) {
    const std::vector<FileEvent> events = creation();
    ASSERT_EQ(events.size(), 5U);
    EXPECT_EQ(events[0].offset, 0U);
    EXPECT_EQ(events[0].bytes.size(), infoLength);
    EXPECT_EQ(test_support::watchedFileIsSynchronous(), GetParam() == store_test::linked);
}

TEST_P(CreationCrash, EveryImageWithAnInfoRecordIsAnEmptyLogThatTakesEntries) {
    std::size_t images = 0;
    forEachCrashImage("", creation(), [&](const CrashImage &image) {
        if (image.whole == 0) {
            return; // the test below
        }
        ++images;
        const LogState state = stateAfterStart(block(), image.bytes);
        EXPECT_EQ(unlikeSeeds(state, {}), "") << nameOf(image);
        EXPECT_EQ(state.messages, "") << nameOf(image);
        EXPECT_EQ(test_support::unsoundness(state.file), std::vector<std::string>())
            << nameOf(image);
        EXPECT_EQ(state.file.size(), 6064U);

        beginSession(block()); // its slots, whatever they hold, do no harm
        EXPECT_EQ(addEvent(1), SA_OK);
        EXPECT_EQ(addEvent(2), SA_OK);
        endSession();
        const LogState filled = stateAfterStart(block(), test_support::readFile(logPath()));
        EXPECT_EQ(unlikeSeeds(filled, {1, 2}), "") << nameOf(image);
        EXPECT_EQ(test_support::unsoundness(filled.file), std::vector<std::string>())
            << nameOf(image);
    });
    EXPECT_GT(images, 50U);
    std::printf("figure: crash images of the creation of a log of type %u: %zu\n", GetParam(),
                images);
}

// The file exists from the moment it is opened, its info record only once it is written.
TEST_P(CreationCrash, AFileWithoutInfoRecordStopsTheStartWithItsMessage) {
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, infoLength - 1}) {
        removeLog();
        test_support::writeFile(logPath(), std::string(length, '\0'));
        const test_support::ChildResult child = test_support::runInChild([] { startLog(block()); });
        EXPECT_EQ(child.exitStatus, 1);
        EXPECT_EQ(child.diagnostics, "Unable to read Event Log Info from existing log file.\n");
        EXPECT_FALSE(test_support::exists(lockPath()));
        EXPECT_EQ(test_support::readFile(logPath()).size(), length);
    }
    removeLog();
    beginSession(block());
    EXPECT_EQ(addEvent(1), SA_OK);
    endSession();
}

// A file system that makes a file longer before its data are there leaves an info record of zeros.
// It is of type Simple: a log of another type replaces it, a Simple one goes on with it, empty.
TEST_P(CreationCrash, AnInfoRecordOfZerosBecomesAnEmptyLog) {
    for (const std::size_t length : {infoLength, std::size_t{6064}}) {
        const LogState state = stateAfterStart(block(), std::string(length, '\0'));
        EXPECT_EQ(state.messages, GetParam() == store_test::simple
                                      ? ""
                                      : "Specified log file type doesn't match existing log file.\n"
                                        "Deleting current log data\n");
        EXPECT_EQ(unlikeSeeds(state, {}), "");
        EXPECT_EQ(test_support::unsoundness(state.file), std::vector<std::string>());
        removeLog();
        test_support::writeFile(logPath(), std::string(length, '\0'));
        beginSession(block());
        EXPECT_EQ(addEvent(1), SA_OK);
        EXPECT_EQ(addEvent(2), SA_OK);
        endSession();
        const LogState filled = stateAfterStart(block(), test_support::readFile(logPath()));
        EXPECT_EQ(unlikeSeeds(filled, {1, 2}), "");
    }
}

INSTANTIATE_TEST_SUITE_P(AllTypes, CreationCrash,
                         testing::Values(store_test::simple, store_test::circular,
                                         store_test::linked));

} // namespace
