// evtlogctl unlock: removes the lock file that a killed process left behind.
//
// A live holder has the log open, or is about to open it: so the lock must have been there for a
// while, and nobody may have the log open. As long as the lock is there nobody can take it, so
// between the look and the removal only another unlock could put someone else's lock in its place;
// unlocks keep each other off by a lock on the folder. The lock file belongs to the user whose
// process took it: all processes of that user must be open to view, those of others need not be.
// Where one is not, the system itself must say that nobody has the log open for writing; and where
// it says that someone has, the lock stays whatever the processes show.
#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <ctime>
#include <fstream>
#include <ios>
#include <optional>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/lock_users.h"
#include "tools/evtlogctl/output.h"
#include "tools/evtlogctl/path.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr uid_t superuser = 0;

// From taking the lock to opening the log is a matter of microseconds.
constexpr std::time_t longEnough = 2; // seconds

// Of the id of a process in a lock file, with the blanks before it.
constexpr std::streamsize longestNumber = 64; // bytes

// Held while it lives.
class FolderLock {
  public:
    explicit FolderLock(const std::string &folder)
        : descriptor_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        if (descriptor_ < 0 || flock(descriptor_, LOCK_EX) != 0) {
            fail(Status::systemRefused, "the folder {} cannot be locked: {}; check its permissions",
                 folder, systemError());
        }
    }
    ~FolderLock() {
        close(descriptor_);
    }
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

  private:
    int descriptor_;
};

// False when it is not there.
[[nodiscard]] bool examine(const std::string &path, struct stat &status) {
    if (stat(path.c_str(), &status) == 0) {
        return true;
    }
    if (errno != ENOENT && errno != ENOTDIR) {
        fail(Status::systemRefused, "{} cannot be examined: {}; check its permissions", path,
             systemError());
    }
    return false;
}

// Some programs write their process id into the lock file; the library leaves it empty.
[[nodiscard]] std::optional<Process> namedIn(const std::string &lock) {
    std::ifstream file(lock, std::ios::binary);
    std::string text(longestNumber, '\0');
    file.read(text.data(), longestNumber);
    text.resize(static_cast<std::size_t>(file.gcount()));
    const std::size_t begin = std::min(text.find_first_not_of(" \t\n"), text.size());
    pid_t id = 0;
    const auto [end, error] = std::from_chars(text.data() + begin, text.data() + text.size(), id);
    return error == std::errc{} ? processOf(id) : std::nullopt;
}

[[noreturn]] void refuseUsed(const std::string &path, const Process &process) {
    fail(Status::systemRefused, "{} is in use by process {} ({}); its lock stays", path, process.id,
         process.command);
}

void refuseOthersLock(const std::string &path, uid_t owner) {
    const uid_t user = geteuid();
    if (user != superuser && owner != user) {
        fail(Status::systemRefused,
             "the lock of {} belongs to user {}, whose processes only root can look into; run this "
             "as root",
             path, owner);
    }
}

// A holder of the lock has the log open for writing. `unknown` is a process that may have it open.
void refuseUnseenUse(const std::string &path, const std::optional<Process> &unknown) {
    const Writers writers = writersOf(path);
    if (writers == Writers::none) {
        return;
    }
    if (unknown) {
        fail(Status::systemRefused, "it cannot be seen whether process {} ({}) has {} open; {}",
             unknown->id, unknown->command, path,
             geteuid() == superuser ? "run this as a root that may look into it (CAP_SYS_PTRACE)"
                                    : "run this as root");
    }
    if (writers == Writers::some) {
        fail(Status::systemRefused,
             "{} is in use by a process that cannot be seen from here, as one of another container "
             "may be; its lock stays",
             path);
    }
}

void refuseUnlessUnused(const std::string &path, const std::string &lock, uid_t owner) {
    if (const std::optional<Process> holder = namedIn(lock)) {
        refuseUsed(path, *holder);
    }
    struct stat log {};
    if (!examine(path, log)) {
        return; // a log that is not there is open nowhere
    }
    const Users users = usersOf(log, owner);
    if (users.first) {
        refuseUsed(path, *users.first);
    }
    refuseUnseenUse(path, users.unknown);
}

void waitUntilOldEnough(const struct stat &lock) {
    const std::time_t age = std::time(nullptr) - lock.st_ctim.tv_sec;
    if (age >= 0 && age < longEnough) {
        std::this_thread::sleep_for(std::chrono::seconds(longEnough - age));
    }
}

[[nodiscard]] bool same(const struct stat &a, const struct stat &b) {
    return a.st_ino == b.st_ino && a.st_dev == b.st_dev && a.st_ctim.tv_sec == b.st_ctim.tv_sec &&
           a.st_ctim.tv_nsec == b.st_ctim.tv_nsec;
}

[[nodiscard]] Status noLock(const std::string &path) {
    complain(fmt::format("{} is not locked", path));
    return Status::findings;
}

} // namespace

Status unlockLog(const Settings &settings, const std::string &file) {
    const std::string path = file.empty() ? configuredLog(settings) : file;
    const std::string lock = lockOf(path);
    struct stat before {};
    if (!examine(lock, before)) {
        return noLock(path);
    }
    if (!S_ISREG(before.st_mode)) {
        fail(Status::systemRefused, "{} is no lock file; look at it before you remove it", lock);
    }
    const FolderLock only(folderOf(path));
    waitUntilOldEnough(before);
    refuseOthersLock(path, before.st_uid);
    refuseUnlessUnused(path, lock, before.st_uid);
    struct stat after {};
    if (!examine(lock, after)) {
        return noLock(path);
    }
    if (!same(before, after)) {
        fail(Status::systemRefused, "another process has just locked {}; its lock stays", path);
    }
    if (unlink(lock.c_str()) != 0) {
        fail(Status::systemRefused, "{} cannot be removed: {}; check the permissions of its folder",
             lock, systemError());
    }
    writeAll(stdout, fmt::format("{}: no process uses it; its lock was removed\n", shown(path)),
             standardOutput);
    flushAll(stdout, standardOutput);
    return Status::done;
}

} // namespace zusahpi::evtlogctl
