// The lock: who holds it, what its names look like, and every way in which taking it fails.

#include "eventlog/lock.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/eventlog/store_fixture.h"

using namespace store_test;
using test_support::Call;
using test_support::ChildResult;
using test_support::failCall;
using test_support::runInChild;

namespace {

class Lock : public StoreTest {
  protected:
    static ChildResult startIn(const std::function<void()> &before) {
        return runInChild([&before] {
            before();
            start(linked, wrap, 5);
        });
    }
    static std::size_t filesInLogFolder() {
        std::size_t count = 0;
        for (const auto &entry :
             std::filesystem::directory_iterator(std::string(zuSaHpiRoot) + "/evtlog")) {
            (void)entry;
            ++count;
        }
        return count;
    }
};

TEST_F(Lock, IsHeldWhileTheProcessLivesAndGoneAfterwards) {
    const ChildResult result = runInChild([] {
        start(linked, wrap, 5);
        struct stat status {};
        EXPECT_EQ(stat(lockPath().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, 0600U);
        EXPECT_EQ(status.st_nlink, 1U);
        EXPECT_EQ(filesInLogFolder(), 2U); // the log and its lock, no temporary file
    });
    EXPECT_EQ(result.exitStatus, 0) << result.diagnostics;
    EXPECT_FALSE(test_support::exists(lockPath()));
    EXPECT_TRUE(test_support::exists(logPath()));
}

TEST_F(Lock, AnExistingLockFileOfAnyContentStopsTheStart) {
    test_support::writeFile(lockPath(), "anything");
    const ChildResult result = startIn([] {});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "Cannot establish lock on event log file.\n");
    EXPECT_EQ(test_support::readFile(lockPath()), "anything");
    EXPECT_FALSE(test_support::exists(logPath()));
    EXPECT_EQ(filesInLogFolder(), 1U);
}

TEST_F(Lock, ASecondStartInTheSameProcessFailsToTakeIt) {
    const ChildResult result = runInChild([] {
        start(linked, wrap, 5);
        start(linked, wrap, 5);
    });
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "Cannot establish lock on event log file.\n");
}

// A network file system may report failure for a link that it made, or lose one: the count decides.
TEST_F(Lock, TheResultOfLinkDoesNotDecide) {
    const ChildResult taken =
        startIn([] { makeNextLinkLie(test_support::LinkLie::failureWhenMade); });
    EXPECT_EQ(taken.exitStatus, 0) << taken.diagnostics;
    EXPECT_FALSE(test_support::exists(lockPath()));
    unlink(logPath().c_str());

    const ChildResult lost =
        startIn([] { makeNextLinkLie(test_support::LinkLie::successWhenNotMade); });
    EXPECT_EQ(lost.exitStatus, 1);
    EXPECT_EQ(lost.diagnostics, "Cannot establish lock on event log file.\n");

    const ChildResult refused = startIn([] { failCall(Call::link, EEXIST); });
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_EQ(refused.diagnostics, "Cannot establish lock on event log file.\n");
    EXPECT_EQ(filesInLogFolder(), 0U);
}

TEST_F(Lock, FailedCallsAreReported) {
    ChildResult result = startIn([] { failCall(Call::gethostname, EPERM); });
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "gethostname:Operation not permitted\n");

    result = startIn([] { failCall(Call::creat, EACCES); });
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "create of temporary lockfile:Permission denied\n");

    result = startIn([] { failCall(Call::stat, EIO); });
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics,
              "stat: cannot access event log temporary lockfile:Input/output error\n");
    EXPECT_EQ(filesInLogFolder(), 1U); // the temporary file is gone, the lock stays
    unlink(lockPath().c_str());

    result = startIn([] {
        failCall(Call::stat, EIO);
        failCall(Call::unlink, EPERM);
    });
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics,
              "stat: cannot access event log temporary lockfile:Input/output error\n"
              "unlink of temporary lockfile:Operation not permitted\n");
    std::filesystem::remove_all(std::string(zuSaHpiRoot) + "/evtlog");
    std::filesystem::create_directory(std::string(zuSaHpiRoot) + "/evtlog");

    result = startIn([] { failCall(Call::unlink, EPERM); });
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "unlink of temporary lockfile:Operation not permitted\n");
}

TEST_F(Lock, AMissingFolderIsReportedAsTheCreateThatFailed) {
    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    std::strcpy(block.fileName, "missing/log");
    const ChildResult result = runInChild([&block] { start(block); });
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "create of temporary lockfile:No such file or directory\n");
}

// A buffer of 195 bytes: the longest lock name has 110 characters, a host name at most 64, the
// seconds 11; with a process id of six digits the name just fits.
TEST_F(Lock, ATemporaryNameThatDoesNotFitIsRefused) {
    const test_support::ScratchFolder scratch;
    const std::string root = scratch.path() + "/" + std::string(89 - scratch.path().size(), 'r');
    std::filesystem::create_directories(root + "/evtlog");
    zuSaHpiRoot = root.c_str();
    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    std::strcpy(block.fileName, "12345678");
    test_support::pretendHost(std::string(64, 'h'));
    test_support::pretendProcessId(123456);
    ChildResult result = runInChild([&block] { start(block); });
    EXPECT_EQ(result.exitStatus, 0) << result.diagnostics;
    test_support::pretendProcessId(1234567);
    result = runInChild([&block] { start(block); });
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "Cannot form temporary lockfile name - too long.\n");
}

TEST_F(Lock, OfTwoProcessesOneWins) {
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe(ready.data()), 0);
    const pid_t holder = fork();
    if (holder == 0) {
        start(linked, wrap, 5);
        (void)!write(ready[1], "x", 1);
        pause();
        _exit(0);
    }
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    const ChildResult result = startIn([] {});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "Cannot establish lock on event log file.\n");
    kill(holder, SIGKILL);
    waitpid(holder, nullptr, 0);

    // The killed holder left the lock behind; it goes by hand.
    EXPECT_EQ(startIn([] {}).exitStatus, 1);
    ASSERT_EQ(unlink(lockPath().c_str()), 0);
    EXPECT_EQ(startIn([] {}).exitStatus, 0);
}

} // namespace
