// Goal: unlock removes the lock file of a process that was killed, and no other: not while a
// process has the log open, not while it cannot be seen whether one has, and not a lock that was
// just taken.
#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstring>
#include <functional>
#include <thread>

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/evtlogctl/program.h"
#include "tests/evtlogctl/sample_logs.h"
#include "tests/evtlogctl/sel_samples.h"
#include "tests/support/files.h"
#include "tests/support/mount_namespace.h"
#include "tests/support/patience.h"

namespace {

using program::Result;
using test_support::exists;
using test_support::readFile;
using test_support::ScratchFolder;
using test_support::writeFile;

// A user of this test alone: tests at the same time look into the processes of theirs.
const auto nobody = static_cast<uid_t>(1'000'000 + getpid());

void pauseForEver() {
    while (true) {
        pause();
    }
}

// A process that runs `body` and then, when the constructor has returned, `rest` until it is
// killed.
class Bystander {
  public:
    explicit Bystander(const std::function<void()> &body,
                       const std::function<void()> &rest = pauseForEver) {
        int ready[2] = {-1, -1};
        EXPECT_EQ(pipe(ready), 0);
        id_ = fork();
        if (id_ == 0) {
            body();
            (void)!write(ready[1], "x", 1);
            rest();
            _exit(1);
        }
        char byte = 0;
        EXPECT_EQ(read(ready[0], &byte, 1), 1);
        close(ready[0]);
        close(ready[1]);
    }
    ~Bystander() {
        kill(id_, SIGKILL);
        waitpid(id_, nullptr, 0);
    }
    Bystander(const Bystander &) = delete;
    Bystander &operator=(const Bystander &) = delete;

    [[nodiscard]] std::string id() const {
        return std::to_string(id_);
    }

  private:
    pid_t id_ = -1;
};

class Unlock : public testing::Test {
  protected:
    Unlock() {
        EXPECT_EQ(
            program::run({"--root", root, "import", sel_samples::dataFile("session-audit-10.sel")})
                .exitStatus,
            0);
        writeFile(lock, "");
    }
    Result unlock() {
        return program::run({"--root", root, "unlock"});
    }
    // Another process does something while unlock gives a new lock its time, which does not end
    // before the clock shows two seconds more than the lock's own time: half a second after the
    // lock was made, when an unlock that does not wait is done. On a machine that is too busy for
    // that it is done again.
    Result unlockWhile(const std::function<void()> &body) {
        using Clock = std::chrono::system_clock;
        Result result;
        const bool done = test_support::comesTrue([&] {
            for (const std::string &file : {lock, out, err}) {
                unlink(file.c_str());
            }
            const auto made = std::chrono::ceil<std::chrono::seconds>(Clock::now());
            // The times of files may be some milliseconds behind.
            std::this_thread::sleep_until(made + std::chrono::milliseconds(20));
            writeFile(lock, "");
            const pid_t unlocking = program::start({"--root", root, "unlock"}, out, err);
            awaitFolderLockedOrEndOf(unlocking);
            std::this_thread::sleep_until(made + std::chrono::milliseconds(500));
            const Bystander other(body);
            const bool inTime = Clock::now() < made + std::chrono::seconds(2);
            result.exitStatus = program::finish(unlocking);
            result.output = readFile(out);
            result.errors = readFile(err);
            return inTime;
        });
        EXPECT_TRUE(done) << "the machine is too busy";
        return result;
    }
    // Unlocks lock the folder of the log against each other.
    void awaitFolderLockedOrEndOf(pid_t process) {
        const int fd = open((root + "/evtlog").c_str(), O_RDONLY | O_CLOEXEC);
        EXPECT_TRUE(test_support::comesTrue([&] {
            siginfo_t ended{};
            return flock(fd, LOCK_EX | LOCK_NB) != 0 || flock(fd, LOCK_UN) != 0 ||
                   waitid(P_PID, static_cast<id_t>(process), &ended, WEXITED | WNOHANG | WNOWAIT) !=
                       0 ||
                   ended.si_pid == process;
        }));
        close(fd);
    }
    void expectRefusal(const Result &result, const std::string &line) {
        EXPECT_EQ(result.exitStatus, 4);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors, "evtlogctl: " + line + "\n");
        EXPECT_TRUE(exists(lock));
    }

    ScratchFolder folder;
    std::string root = folder.file("root");
    std::string log = root + "/evtlog/evtlog.dat";
    std::string lock = log + ".lck";
    std::string out = folder.file("out");
    std::string err = folder.file("err");
};

// The command line of this program as unlock shows it: as others see it, since an emulator hides
// itself from the program that it runs.
std::string ownCommand() {
    const Bystander copy([] {});
    std::string text = readFile("/proc/" + copy.id() + "/cmdline");
    text.pop_back();
    std::replace(text.begin(), text.end(), '\0', ' ');
    return text;
}

// Until the first thread of a process is in that state.
void awaitState(const std::string &process, char state) {
    const std::string wanted = std::string("State:\t") + state;
    EXPECT_TRUE(test_support::comesTrue([&] {
        return readFile("/proc/" + process + "/status").find(wanted) != std::string::npos;
    })) << "process "
        << process << " does not come to state " << state;
}

TEST_F(Unlock, ALockThatWasLeftBehind) {
    const Result locked =
        program::run({"--root", root, "import", sel_samples::dataFile("misc-30.sel")});
    EXPECT_EQ(locked.exitStatus, 4);
    EXPECT_EQ(locked.errors, "Cannot establish lock on event log file.\n"
                             "evtlogctl: " +
                                 log +
                                 " is locked by another process; wait until it has ended, or, if "
                                 "it was killed, remove its lock with \"evtlogctl unlock\"\n");
    const Result result = unlock();
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, log + ": no process uses it; its lock was removed\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_FALSE(exists(lock));
    EXPECT_EQ(
        program::run({"--root", root, "import", sel_samples::dataFile("misc-30.sel")}).exitStatus,
        0);
}

TEST_F(Unlock, NoLock) {
    unlink(lock.c_str());
    const Result result = unlock();
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "evtlogctl: " + log + " is not locked\n");
    EXPECT_EQ(program::run({"unlock", folder.file("no/log")}).exitStatus, 1);
}

TEST_F(Unlock, ANamedLogThatIsNotThere) {
    const std::string other = folder.file("other");
    writeFile(other + ".lck", "");
    EXPECT_EQ(program::run({"unlock", other}).output,
              other + ": no process uses it; its lock was removed\n");
    EXPECT_FALSE(exists(other + ".lck"));
    EXPECT_TRUE(exists(lock));
}

TEST_F(Unlock, AProcessThatHasTheLogOpenIsNamed) {
    const Bystander holder([this] { EXPECT_GE(open(log.c_str(), O_RDWR), 0); });
    expectRefusal(unlock(), log + " is in use by process " + holder.id() + " (" + ownCommand() +
                                "); its lock stays");
}

// By another name of the same file.
TEST_F(Unlock, TheFileCountsNotItsName) {
    const std::string alias = folder.file("alias");
    ASSERT_EQ(link(log.c_str(), alias.c_str()), 0);
    const Bystander holder([&] { EXPECT_GE(open(alias.c_str(), O_RDONLY), 0); });
    expectRefusal(unlock(), log + " is in use by process " + holder.id() + " (" + ownCommand() +
                                "); its lock stays");
}

TEST_F(Unlock, AProcessThatTheLockFileNames) {
    const Bystander holder([] {});
    writeFile(lock, " " + holder.id() + "\n");
    expectRefusal(unlock(), log + " is in use by process " + holder.id() + " (" + ownCommand() +
                                "); its lock stays");
    writeFile(lock, "4194305\n"); // no process has an id so high
    EXPECT_EQ(unlock().exitStatus, 0);
}

// The first thread has ended, and with it what the process itself shows of its open files.
TEST_F(Unlock, AProcessWhoseFirstThreadHasEnded) {
    const Bystander holder(
        [this] {
            EXPECT_GE(open(log.c_str(), O_RDWR), 0);
            std::thread(pauseForEver).detach();
        },
        [] { syscall(SYS_exit, 0); });
    awaitState(holder.id(), 'Z');
    expectRefusal(unlock(), log + " is in use by process " + holder.id() + " (" + ownCommand() +
                                "); its lock stays");
}

// A process that was killed holds nothing, although its parent does not want to know yet.
TEST_F(Unlock, AKilledProcessThatNobodyHasWaitedFor) {
    const Bystander killed([] {});
    writeFile(lock, killed.id() + "\n");
    kill(std::stoi(killed.id()), SIGKILL);
    awaitState(killed.id(), 'Z');
    EXPECT_EQ(unlock().exitStatus, 0);
    EXPECT_FALSE(exists(lock));
}

// The real thing: a process holds the lock as the library takes it, and is killed.
TEST_F(Unlock, AKilledProcess) {
    unlink(lock.c_str());
    {
        const Bystander holder([this] {
            sample_logs::startStore(log, ZUSAHPI_EL_TYPE_LINKED, 10'000, ZUSAHPI_EL_WRAP);
        });
        EXPECT_TRUE(exists(lock));
        expectRefusal(unlock(), log + " is in use by process " + holder.id() + " (" + ownCommand() +
                                    "); its lock stays");
    }
    EXPECT_TRUE(exists(lock));
    EXPECT_EQ(unlock().exitStatus, 0);
    EXPECT_FALSE(exists(lock));
}

// A process between taking the lock and opening the log has the log not open yet.
TEST_F(Unlock, ALockThatWasJustTakenIsGivenTime) {
    const Result result = unlockWhile([this] { EXPECT_GE(open(log.c_str(), O_RDWR), 0); });
    EXPECT_EQ(result.exitStatus, 4) << result.output;
    EXPECT_TRUE(exists(lock));
}

TEST_F(Unlock, ALockThatAnotherProcessTakesInTheMeantime) {
    const Result result = unlockWhile([this] {
        unlink(lock.c_str());
        writeFile(lock, "");
    });
    expectRefusal(result, "another process has just locked " + log + "; its lock stays");
}

TEST_F(Unlock, ALockThatGoesInTheMeantime) {
    const Result result = unlockWhile([this] { unlink(lock.c_str()); });
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.errors, "evtlogctl: " + log + " is not locked\n");
}

TEST_F(Unlock, WhatIsNoLockFile) {
    unlink(lock.c_str());
    ASSERT_EQ(mkdir(lock.c_str(), 0700), 0);
    expectRefusal(unlock(), lock + " is no lock file; look at it before you remove it");
}

// ---- Other users --------------------------------------------------------------------------------

// Opens the file for writing and leaves it to the socket alone.
void sendOpenFile(int socket, const std::string &path) {
    const int fd = open(path.c_str(), O_RDWR);
    ASSERT_GE(fd, 0);
    char byte = 'x';
    iovec data = {.iov_base = &byte, .iov_len = 1};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof fd)> control{};
    msghdr message{};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    cmsghdr *const header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof fd);
    std::memcpy(CMSG_DATA(header), &fd, sizeof fd);
    EXPECT_EQ(sendmsg(socket, &message, 0), 1);
    close(fd);
}

class UnlockAsUser : public Unlock {
  protected:
    void SetUp() override {
        if (geteuid() != 0) {
            GTEST_SKIP() << "only the superuser can be another user";
        }
        ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0);
        ASSERT_EQ(chmod((root + "/evtlog").c_str(), 0777), 0);
    }
    // After `body` has given up what the user is not to have.
    Result unlockAfter(const std::function<void()> &body) {
        const pid_t child = fork();
        if (child == 0) {
            (void)!freopen(out.c_str(), "w", stdout);
            (void)!freopen(err.c_str(), "w", stderr);
            body();
            execl(EVTLOGCTL_PROGRAM, "evtlogctl", "unlock", log.c_str(), nullptr);
            _exit(126);
        }
        Result result;
        result.exitStatus = program::finish(child);
        result.output = readFile(out);
        result.errors = readFile(err);
        return result;
    }
    Result unlockAsNobody() {
        return unlockAfter([] {
            if (setgid(nobody) != 0 || setuid(nobody) != 0) {
                _exit(125);
            }
        });
    }
};

TEST_F(UnlockAsUser, ALockOfAnotherUser) {
    expectRefusal(unlockAsNobody(),
                  "the lock of " + log +
                      " belongs to user 0, whose processes only root can look into; run this as "
                      "root");
}

TEST_F(UnlockAsUser, ALockOfOnesOwn) {
    ASSERT_EQ(chown(lock.c_str(), nobody, nobody), 0);
    const Result result = unlockAsNobody();
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_FALSE(exists(lock));
}

TEST_F(UnlockAsUser, AFolderThatForbidsIt) {
    const std::string logs = root + "/evtlog";
    ASSERT_EQ(chown(lock.c_str(), nobody, nobody), 0);
    ASSERT_EQ(chmod(logs.c_str(), 0755), 0);
    expectRefusal(unlockAsNobody(), lock + " cannot be removed: Permission denied; check the "
                                           "permissions of its folder");
    ASSERT_EQ(chmod(logs.c_str(), 0711), 0);
    expectRefusal(unlockAsNobody(), "the folder " + logs +
                                        " cannot be locked: Permission denied; check its "
                                        "permissions");
    ASSERT_EQ(chmod(logs.c_str(), 0700), 0);
    expectRefusal(unlockAsNobody(),
                  lock + " cannot be examined: Permission denied; check its permissions");
}

// The address sanitizer needs /proc for itself.
#ifndef __SANITIZE_ADDRESS__
// As in a chroot environment.
TEST_F(UnlockAsUser, WhereNoProcessesCanBeSeen) {
    const Result result = unlockAfter([] {
        if (!test_support::enterMountNamespace() ||
            mount("none", "/proc", "tmpfs", 0, nullptr) != 0) {
            _exit(test_support::notPermitted);
        }
    });
    if (result.exitStatus == test_support::notPermitted) {
        GTEST_SKIP() << "no private mount namespace here: /proc cannot be hidden";
    }
    expectRefusal(result, "/proc cannot be read: No such file or directory; without it nobody "
                          "knows who uses a log");
}
#endif

// What ends between two looks is no process that hides its files.
TEST_F(UnlockAsUser, WhileProcessesOfOthersComeAndGo) {
    constexpr int logs = 100;
    for (int i = 0; i < logs; ++i) {
        log = root + "/evtlog/" + std::to_string(i);
        lock = log + ".lck";
        writeFile(log, "");
        writeFile(lock, "");
        ASSERT_EQ(chown(lock.c_str(), nobody, nobody), 0);
    }
    sleep(2); // the locks are old enough then
    const auto comeAndGo = [] {
        while (true) {
            for (int i = 0; i < 20; ++i) {
                if (fork() == 0) {
                    usleep(100);
                    _exit(0);
                }
            }
            while (wait(nullptr) > 0) {
            }
        }
    };
    const Bystander one([] {}, comeAndGo);
    const Bystander another([] {}, comeAndGo);
    for (int i = 0; i < logs; ++i) {
        log = root + "/evtlog/" + std::to_string(i);
        const Result result = unlockAsNobody();
        EXPECT_EQ(result.exitStatus, 0) << result.errors;
    }
}

TEST_F(UnlockAsUser, AProcessOfOnesOwnThatCannotBeLookedInto) {
    ASSERT_EQ(chown(lock.c_str(), nobody, nobody), 0);
    const Bystander hidden([] {
        EXPECT_EQ(setuid(nobody), 0);
        EXPECT_EQ(prctl(PR_SET_DUMPABLE, 0), 0);
    });
    expectRefusal(unlockAsNobody(), "it cannot be seen whether process " + hidden.id() + " (" +
                                        ownCommand() + ") has " + log + " open; run this as root");
}

// The system knows that nobody writes the log, and tells its owner.
TEST_F(UnlockAsUser, AProcessThatCannotBeLookedIntoAndALogThatNobodyWrites) {
    ASSERT_EQ(chown(lock.c_str(), nobody, nobody), 0);
    ASSERT_EQ(chown(log.c_str(), nobody, nobody), 0);
    const auto hide = [] {
        EXPECT_EQ(setuid(nobody), 0);
        EXPECT_EQ(prctl(PR_SET_DUMPABLE, 0), 0);
    };
    {
        const Bystander writer([&] {
            EXPECT_GE(open(log.c_str(), O_RDWR), 0);
            hide();
        });
        expectRefusal(unlockAsNobody(), "it cannot be seen whether process " + writer.id() + " (" +
                                            ownCommand() + ") has " + log +
                                            " open; run this as root");
    }
    const Bystander another(hide);
    EXPECT_EQ(unlockAsNobody().exitStatus, 0);
    EXPECT_FALSE(exists(lock));
}

// On its way from one process to another the log is open, although no process shows it: as those
// of another container show nothing.
TEST_F(UnlockAsUser, AnOpenLogThatNoProcessShows) {
    ASSERT_EQ(chown(lock.c_str(), nobody, nobody), 0);
    ASSERT_EQ(chown(log.c_str(), nobody, nobody), 0);
    int ends[2] = {-1, -1};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    sendOpenFile(ends[0], log);
    expectRefusal(unlockAsNobody(),
                  log + " is in use by a process that cannot be seen from here, as one of another "
                        "container may be; its lock stays");
    close(ends[0]);
    close(ends[1]);
    EXPECT_EQ(unlockAsNobody().exitStatus, 0);
    EXPECT_FALSE(exists(lock));
}

// As root is in most containers.
TEST_F(UnlockAsUser, RootThatMayNotLookIntoOthers) {
    ASSERT_EQ(chown(lock.c_str(), nobody, nobody), 0);
    const Bystander hidden([this] {
        EXPECT_GE(open(log.c_str(), O_RDWR), 0);
        EXPECT_EQ(setuid(nobody), 0);
    });
    const Result result = unlockAfter([] {
        if (prctl(PR_CAPBSET_DROP, CAP_SYS_PTRACE) != 0) {
            _exit(125);
        }
    });
    expectRefusal(result, "it cannot be seen whether process " + hidden.id() + " (" + ownCommand() +
                              ") has " + log +
                              " open; run this as a root that may look into it (CAP_SYS_PTRACE)");
}

} // namespace
