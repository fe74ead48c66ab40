// Initialisation: the block, the name, new and existing files, the exit handler.

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "eventlog/store_state.h"
#include "tests/eventlog/store_fixture.h"
#include "tests/support/patience.h"

using namespace store_test;
using test_support::Call;
using test_support::ChildResult;
using test_support::failCall;
using test_support::inChild;
using test_support::recordCalls;
using test_support::recordedCalls;
using test_support::runInChild;

namespace {

using Calls = std::vector<std::string>;

class Startup : public StoreTest {
  protected:
    static ChildResult startWith(const EventLogControlBlock &block) {
        return runInChild([&block] { start(block); });
    }
    static ChildResult startNamed(const std::string &name) {
        EventLogControlBlock block = controlBlock(linked, wrap, 5);
        std::memset(block.fileName, 0, sizeof block.fileName);
        std::memcpy(block.fileName, name.data(), name.size());
        return startWith(block);
    }
};

constexpr char illegalBlock[] = "Illegal Event Log Control Block passed to zuSaHpiEventLogInit\n";
constexpr char nameTooLong[] = "Eventlog Filename in configuration too long.\n";

TEST_F(Startup, IllegalBlocksAreRefused) {
    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    block.size = 207;
    ChildResult result = startWith(block);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, illegalBlock);

    block = controlBlock(linked, wrap, 5);
    block.magic = 0x17394284;
    result = startWith(block);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, illegalBlock);

    result = runInChild([] { (void)zuSaHpiEventLogInit(nullptr); });
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, illegalBlock);
    EXPECT_FALSE(test_support::exists(logPath()));
}

TEST_F(Startup, InitialisedIsSaidOnlyAfterwards) {
    EXPECT_EQ(zuSaHpiEventLogInitialized(), 0);
    start(linked, wrap, 5);
    EXPECT_NE(zuSaHpiEventLogInitialized(), 0);
}

TEST_F(Startup, RootAndNameTogetherHoldNinetyEightCharacters) {
    const test_support::ScratchFolder scratch;
    const std::string root = scratch.path() + "/" + std::string(89 - scratch.path().size(), 'r');
    ASSERT_EQ(root.size(), 90U);
    ASSERT_EQ(mkdir(root.c_str(), 0777), 0);
    ASSERT_EQ(mkdir((root + "/evtlog").c_str(), 0777), 0);
    zuSaHpiRoot = root.c_str();
    EXPECT_EQ(startNamed("12345678").exitStatus, 0);
    EXPECT_TRUE(test_support::exists(root + "/evtlog/12345678"));
    const ChildResult result = startNamed("123456789");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, nameTooLong);
}

TEST_F(Startup, ARootThatIsTooLongByItselfIsRefused) {
    const std::string root = "/" + std::string(200, 'r');
    zuSaHpiRoot = root.c_str();
    const ChildResult result = startNamed("x");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, nameTooLong);
}

TEST_F(Startup, ANameThatFillsItsFieldWithoutNulIsRefused) {
    const ChildResult result = startNamed(std::string(100, '/'));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, nameTooLong);
}

TEST_F(Startup, AbsoluteAndDotSlashNamesAreUsedAsTheyStand) {
    const test_support::ScratchFolder scratch;
    std::string longName = scratch.path() + "/";
    longName += std::string(99 - longName.size(), 'n');
    ASSERT_EQ(startNamed(longName).exitStatus, 0); // 99 characters: no length check here
    EXPECT_TRUE(test_support::exists(longName));

    ASSERT_EQ(chdir(scratch.path().c_str()), 0);
    const ChildResult result = runInChild([] {
        EventLogControlBlock block = controlBlock(linked, wrap, 5);
        std::strcpy(block.fileName, "./here");
        start(block);
        EXPECT_TRUE(test_support::exists("here.lck"));
        EXPECT_STREQ(zusahpi::eventlog::store.lockPath.data(), "./here.lck");
    });
    EXPECT_EQ(result.exitStatus, 0) << result.diagnostics;
    EXPECT_TRUE(test_support::exists(scratch.file("here")));
}

TEST_F(Startup, ABareNameLiesUnderTheRoot) {
    inChild([] {
        start(linked, wrap, 5);
        EXPECT_EQ(std::string(zusahpi::eventlog::store.lockPath.data()),
                  std::string(zuSaHpiRoot) + "/evtlog/log.lck");
    });
    EXPECT_TRUE(test_support::exists(std::string(zuSaHpiRoot) + "/evtlog/log"));
    EXPECT_EQ(startNamed(".hidden").exitStatus, 0);
    EXPECT_TRUE(test_support::exists(std::string(zuSaHpiRoot) + "/evtlog/.hidden"));
}

TEST_F(Startup, ANewFileIsWrittenInOrder) {
    recordCalls();
    start(simple, drop, 5);
    EXPECT_EQ(recordedCalls(), (Calls{"gethostname", "creat", "close", "link", "stat", "unlink",
                                      "open", "open", "fchown", "write 80", "write 1496",
                                      "write 1496", "write 1496", "write 1496"}));
    struct stat status {};
    ASSERT_EQ(stat(logPath().c_str(), &status), 0);
    EXPECT_EQ(status.st_size, 6064);
    EXPECT_EQ(status.st_uid, zuSaHpiEuId);
    EXPECT_EQ(status.st_gid, zuSaHpiGroupId);
}

TEST_F(Startup, OnlyALinkedLogIsOpenedSynchronously) {
    inChild([] {
        recordCalls();
        start(linked, wrap, 5);
        const Calls calls = recordedCalls();
        EXPECT_EQ(calls[6], "open O_SYNC");
        EXPECT_EQ(calls[7], "open O_SYNC");
    });
    recordCalls();
    start(linked, wrap, 5);
    EXPECT_EQ(recordedCalls(),
              (Calls{"gethostname", "creat", "close", "link", "stat", "unlink", "open O_SYNC",
                     "read 80", "lseek 0", "write 80", "ftruncate 6064"}));
}

TEST_F(Startup, ANewFileIsReadableByItsGroup) {
    umask(0);
    start(simple, drop, 5);
    struct stat status {};
    ASSERT_EQ(stat(logPath().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0664U);
}

TEST_F(Startup, WithoutFileThereIsNeitherFileNorLock) {
    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    block.fileEnabled = 0;
    recordCalls();
    start(block);
    EXPECT_TRUE(recordedCalls().empty());
    EXPECT_NE(zuSaHpiEventLogInitialized(), 0);
    EXPECT_FALSE(test_support::exists(logPath()));
    EXPECT_FALSE(test_support::exists(lockPath()));
    SaHpiEventLogInfoT info;
    EXPECT_EQ(zuSaHpiEventLogInfoGet(&info), SA_OK);
    EXPECT_EQ(info.Size, 5U);
}

TEST_F(Startup, SwitchesAreAnyNonzeroValue) {
    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    block.fileEnabled = 0x100;
    block.syslogEnabled = 0x80000000;
    block.syslogFollowsState = 0x10000;
    start(block);
    EXPECT_TRUE(zusahpi::eventlog::store.fileEnabled);
    EXPECT_TRUE(zusahpi::eventlog::store.syslogEnabled);
    EXPECT_TRUE(zusahpi::eventlog::store.syslogFollowsState);
    EXPECT_TRUE(test_support::exists(logPath()));
}

TEST_F(Startup, AbsoluteTimeStartsWithoutOffset) {
    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    block.info.timeOffset = 77;
    ASSERT_EQ(zuSaHpiEventLogInit(&block), SA_OK);
    EXPECT_EQ(block.info.timeOffset, 0);
    EXPECT_EQ(block.info.sa.UpdateTimestamp, 1'000'000'000);
    EXPECT_EQ(file().i64(64), 0);
    EXPECT_EQ(file().i64(16), 1'000'000'000);
}

TEST_F(Startup, RelativeTimeStartsAtZero) {
    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    block.relativeTime = 0x100;
    ASSERT_EQ(zuSaHpiEventLogInit(&block), SA_OK);
    EXPECT_EQ(block.info.timeOffset, -1'000'000'000);
    EXPECT_EQ(block.info.sa.UpdateTimestamp, 0);
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 0);
    test_mainlib::state().timeOfDay += 5;
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 5);
}

TEST_F(Startup, TheMostNegativeTimeOfDayDoesNotOverflow) {
    test_mainlib::state().timeOfDay = LLONG_MIN;
    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    block.relativeTime = 1;
    ASSERT_EQ(zuSaHpiEventLogInit(&block), SA_OK);
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 0);
}

TEST_F(Startup, AnExistingLogKeepsItsTimeOffset) {
    inChild([] {
        start(linked, wrap, 5);
        EXPECT_EQ(zuSaHpiEventLogTimeSet(500), SA_OK);
    });
    const std::int64_t offset = file().i64(64);
    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    block.relativeTime = 1;
    test_mainlib::state().timeOfDay += 100;
    start(block);
    EXPECT_EQ(file().i64(64), offset);
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 600);
}

TEST_F(Startup, ReinitialiseStartsFromTheBlock) {
    inChild([] {
        start(linked, wrap, 5);
        add(1);
        EXPECT_EQ(zuSaHpiEventLogTimeSet(500), SA_OK);
    });
    EventLogControlBlock block = controlBlock(linked, wrap, 5);
    block.reinitialize = 0x100;
    block.relativeTime = 1;
    start(block);
    EXPECT_EQ(diagnostics(), "");
    EXPECT_EQ(file().bytes.size(), 6064U);
    EXPECT_EQ(file().entries(), 0U);
    EXPECT_EQ(zuSaHpiEventLogTimeGet(), 0);
}

TEST_F(Startup, AFileWithoutWholeInfoRecordStopsTheStart) {
    test_support::writeFile(logPath(), std::string(79, '\0'));
    const ChildResult result = startWith(controlBlock(linked, wrap, 5));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "Unable to read Event Log Info from existing log file.\n");
    EXPECT_FALSE(test_support::exists(lockPath())); // the exit handler was there already
    EXPECT_EQ(test_support::readFile(logPath()).size(), 79U);
}

TEST_F(Startup, FailedCallsOnANewFileAreReported) {
    const EventLogControlBlock block = controlBlock(linked, wrap, 5);
    const auto startFailing = [&block](Call call, int errorNumber, int skip) {
        unlink(logPath().c_str());
        return runInChild([&] {
            failCall(call, errorNumber, skip);
            start(block);
        });
    };
    ChildResult result = startFailing(Call::open, ENOENT, 0); // as for a missing file: goes on
    EXPECT_EQ(result.exitStatus, 0);

    result = runInChild([&] {
        test_support::failCallsFrom(Call::open, EACCES);
        start(block);
    });
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "create of log file:Permission denied\n");
    EXPECT_FALSE(test_support::exists(lockPath()));

    result = runInChild([&] {
        test_support::failCallsFrom(Call::open, EACCES);
        failCall(Call::unlink, EPERM, 1); // the first removes the temporary file
        start(block);
    });
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "create of log file:Permission denied\n"
                                  "unlink of log lock file:Operation not permitted\n");
    unlink(lockPath().c_str());

    result = startFailing(Call::fchown, EPERM, 0);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "chown of new logfile:Operation not permitted\n");
    EXPECT_FALSE(test_support::exists(lockPath()));

    result = startFailing(Call::write, ENOSPC, 0);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "write of info record to new logfile:No space left on device\n");

    result = startFailing(Call::write, ENOSPC, 3);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics,
              "write of initial transaction log area:No space left on device\n");
}

TEST_F(Startup, FailedCallsOnAnExistingFileAreReported) {
    const EventLogControlBlock block = controlBlock(linked, wrap, 5);
    ASSERT_EQ(startWith(block).exitStatus, 0);
    const auto startFailing = [&block](Call call, int skip) {
        return runInChild([&] {
            failCall(call, EIO, skip);
            start(block);
        });
    };
    ChildResult result = startFailing(Call::read, 0);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "Unable to read Event Log Info from existing log file.\n");
    result = startFailing(Call::lseek, 0);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "lseek on logfile to info record:Input/output error\n");
    result = startFailing(Call::write, 0);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "write of info record to logfile:Input/output error\n");
    result = startFailing(Call::ftruncate, 0);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.diagnostics, "truncate of log file at initialization:Input/output error\n");
    EXPECT_FALSE(test_support::exists(lockPath()));
}

TEST_F(Startup, TheExitHandlerReportsAndGoesOn) {
    const ChildResult result = runInChild([] {
        start(linked, wrap, 5);
        failCall(Call::close, EIO);
        failCall(Call::unlink, EPERM);
    });
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.diagnostics, "close of log file:Input/output error\n"
                                  "unlink of log lock file:Operation not permitted\n");
}

TEST_F(Startup, AForkedChildThatExitsLeavesTheLockAlone) {
    inChild([] {
        start(linked, wrap, 5);
        const pid_t child = fork();
        if (child == 0) {
            std::exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        EXPECT_TRUE(test_support::exists(lockPath()));
        add(1);
    });
    EXPECT_FALSE(test_support::exists(lockPath()));
}

TEST_F(Startup, AChildOfAForkedChildLeavesTheLockAloneToo) {
    inChild([] {
        start(linked, wrap, 5);
        const ChildResult child = runInChild([] {
            const ChildResult grandchild = runInChild([] { std::exit(0); });
            EXPECT_EQ(grandchild.exitStatus, 0);
            EXPECT_TRUE(test_support::exists(lockPath()));
        });
        EXPECT_EQ(child.exitStatus, 0) << child.diagnostics;
        EXPECT_TRUE(test_support::exists(lockPath()));
        add(1);
    });
    EXPECT_FALSE(test_support::exists(lockPath()));
}

// A daemon takes the lock after its forks: the processes that it leaves behind never had it.
TEST_F(Startup, ADaemonKeepsTheLockThatItTook) {
    const ChildResult result = runInChild([] {
        for (int forks = 0; forks < 2; ++forks) {
            const pid_t parent = getpid();
            if (fork() != 0) {
                std::exit(0);
            }
            EXPECT_TRUE(test_support::comesTrue([parent] { return getppid() != parent; }));
        }
        start(linked, wrap, 5);
        EXPECT_TRUE(test_support::exists(lockPath()));
        add(1);
    });
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.diagnostics, "");
    EXPECT_FALSE(test_support::exists(lockPath())); // the daemon has ended: it held the pipe
    inChild([] {
        start(linked, wrap, 5);
        EXPECT_EQ(seeds(), std::vector<int>{1});
    });
}

// The lock of a killed process stays, as it does without a child: the child took none.
TEST_F(Startup, AChildThatOutlivesTheHolderLeavesItsLock) {
    const ChildResult result = runInChild([] {
        start(linked, wrap, 5);
        const pid_t holder = getpid();
        if (fork() == 0) {
            EXPECT_TRUE(test_support::comesTrue([holder] { return getppid() != holder; }));
            EXPECT_TRUE(test_support::exists(lockPath()));
            std::exit(testing::Test::HasFailure() ? 1 : 0);
        }
        (void)raise(SIGKILL);
    });
    EXPECT_EQ(result.diagnostics, "");
    EXPECT_TRUE(test_support::exists(lockPath())); // the child has ended, too
}

// It has the handler twice, inherited and its own; what runs second must leave alone what another
// process may have locked meanwhile.
TEST_F(Startup, AForkedChildWithALogOfItsOwnGivesItUpOnce) {
    inChild([] {
        start(linked, wrap, 5);
        const ChildResult child = runInChild([] {
            EventLogControlBlock block = controlBlock(linked, wrap, 5);
            std::strcpy(block.fileName, "other");
            start(block);
        });
        EXPECT_EQ(child.exitStatus, 0);
        EXPECT_EQ(child.diagnostics, "");
        EXPECT_TRUE(test_support::exists(lockPath()));
    });
    EXPECT_FALSE(test_support::exists(lockPath()));
}

TEST_F(Startup, EntriesSurviveARestart) {
    inChild([] {
        start(linked, wrap, 5);
        add(1);
        add(2);
        add(3);
    });
    start(linked, wrap, 5);
    EXPECT_EQ(seeds(), (std::vector<int>{1, 2, 3}));
    add(4);
    EXPECT_EQ(seeds(), (std::vector<int>{1, 2, 3, 4}));
}

} // namespace
