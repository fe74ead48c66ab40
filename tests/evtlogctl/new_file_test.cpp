// Goal: a file that is being made has no name before it is whole, and what ends its making, be it
// SIGKILL, leaves nothing behind; a file that must be new replaces nothing, one that replaces
// another does so at once; and all of that but for SIGKILL also where no file without a name can be
// made.
#include "tools/evtlogctl/new_file.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <set>

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/evtlogctl/sample_logs.h"
#include "tests/support/child.h"
#include "tests/support/files.h"
#include "tools/evtlogctl/failure.h"

namespace {

using test_support::inChild;
using test_support::readFile;
using test_support::ScratchFolder;
using test_support::writeFile;
using zusahpi::evtlogctl::Failure;
using zusahpi::evtlogctl::NewFile;

// From now on this process finds a file system that knows no files without a name.
void forbidNameless() {
    constexpr auto nameless = static_cast<std::uint32_t>(O_TMPFILE & ~O_DIRECTORY);
    std::array<sock_filter, 6> filter = {{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_openat, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args[2])),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, nameless, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EOPNOTSUPP),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog program = {.len = filter.size(), .filter = filter.data()};
    ASSERT_EQ(prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
    ASSERT_EQ(prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program), 0);
    ASSERT_EQ(open("/tmp", O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600), -1);
    ASSERT_EQ(errno, EOPNOTSUPP);
}

class NewFiles : public testing::Test {
  protected:
    NewFiles() {
        umask(022);
    }
    std::set<std::string> names() {
        std::set<std::string> found;
        for (const auto &entry : std::filesystem::directory_iterator(folder.path())) {
            found.insert(entry.path().filename().string());
        }
        return found;
    }
    void fill(NewFile &file) {
        file.write("whole", 5);
    }
    // In a process of its own, with and without files that have no name.
    void everywhere(const std::function<void()> &body) {
        inChild(body);
        inChild([&] {
            forbidNameless();
            body();
        });
    }

    ScratchFolder folder;
    std::string name = folder.file("new");
    using Names = std::set<std::string>;
};

TEST_F(NewFiles, OneThatMustBeNew) {
    struct stat like {};
    like.st_mode = 0640;
    like.st_uid = geteuid();
    like.st_gid = getegid();
    everywhere([&] {
        {
            NewFile file(name);
            fill(file);
            EXPECT_FALSE(test_support::exists(name));
            file.keepAsNew(like);
        }
        EXPECT_EQ(readFile(name), "whole");
        struct stat status {};
        EXPECT_EQ(stat(name.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, 0640U);
        EXPECT_EQ(names(), Names{"new"});
        writeFile(name, "mine");
        {
            NewFile file(name);
            fill(file);
            EXPECT_THROW(file.keepAsNew(like), Failure);
        }
        EXPECT_EQ(readFile(name), "mine");
        EXPECT_EQ(names(), Names{"new"});
        unlink(name.c_str());
    });
}

TEST_F(NewFiles, OneInThePlaceOfAnother) {
    everywhere([&] {
        for (const char *const before : {"", "old"}) {
            if (*before != '\0') {
                writeFile(name, before);
                EXPECT_EQ(chmod(name.c_str(), 0604), 0);
            }
            {
                NewFile file(name);
                fill(file);
                file.keepInPlace();
            }
            EXPECT_EQ(readFile(name), "whole");
            struct stat status {};
            EXPECT_EQ(stat(name.c_str(), &status), 0);
            EXPECT_EQ(status.st_mode & 07777U, *before != '\0' ? 0604U : 0644U);
            EXPECT_EQ(names(), Names{"new"});
        }
        unlink(name.c_str());
    });
}

// A plain name lies in the folder that the process is in.
TEST_F(NewFiles, APlainName) {
    everywhere([&] {
        ASSERT_EQ(chdir(folder.path().c_str()), 0);
        {
            NewFile file("new");
            fill(file);
            file.keepInPlace();
        }
        EXPECT_EQ(names(), Names{"new"});
        unlink("new");
    });
}

TEST_F(NewFiles, OneThatIsNotKept) {
    everywhere([&] {
        {
            NewFile file(name);
            fill(file);
        }
        EXPECT_EQ(names(), Names{});
    });
}

// ---- Killed -------------------------------------------------------------------------------------

// Runs the program, which the system kills once it has written so many bytes to a file.
void runUntilKilled(const std::vector<const char *> &arguments) {
    const pid_t child = fork();
    if (child == 0) {
        const rlimit most = {.rlim_cur = 4096, .rlim_max = 4096};
        const rlimit nothing = {.rlim_cur = 0, .rlim_max = 0};
        setrlimit(RLIMIT_FSIZE, &most);
        setrlimit(RLIMIT_CORE, &nothing);
        execv(EVTLOGCTL_PROGRAM, const_cast<char *const *>(arguments.data()));
        _exit(126);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    ASSERT_EQ(WTERMSIG(status), SIGXFSZ);
}

TEST_F(NewFiles, AReportThatIsKilled) {
    const std::string log = folder.file("log");
    writeFile(log, sample_logs::bytesOf(sample_logs::Kind::simple));
    runUntilKilled({"evtlogctl", "report", "-o", name.c_str(), log.c_str(), nullptr});
    EXPECT_EQ(names(), Names{"log"});
    writeFile(name, "old");
    runUntilKilled({"evtlogctl", "report", "-o", name.c_str(), log.c_str(), nullptr});
    EXPECT_EQ(readFile(name), "old");
    EXPECT_EQ(names(), (Names{"log", "new"}));
}

TEST_F(NewFiles, ASalvageThatIsKilled) {
    const std::string log = folder.file("log");
    writeFile(log, sample_logs::bytesOf(sample_logs::Kind::simple));
    sample_logs::age(log);
    runUntilKilled({"evtlogctl", "check", "--salvage", name.c_str(), log.c_str(), nullptr});
    EXPECT_EQ(names(), Names{"log"});
}

} // namespace
