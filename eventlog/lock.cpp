// Taking the lock: a temporary file of a name that no other process uses is hard-linked to the lock
// file's name. Its link count afterwards, and nothing else, says who won: the result of link() may
// be wrong on a network file system, the count is not.

#include "eventlog/lock.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "eventlog/failure.h"
#include "eventlog/store_state.h"

namespace zusahpi::eventlog {
namespace {

constexpr std::size_t hostNameSize = 65;
constexpr std::size_t temporaryNameSize = 195;
constexpr nlink_t linksOfHolder = 2;

using TemporaryName = std::array<char, temporaryNameSize>;

TemporaryName temporaryName() {
    std::array<char, hostNameSize> host{};
    if (gethostname(host.data(), host.size()) != 0) {
        dieOfSystemError("gethostname");
    }
    host.back() = '\0';
    TemporaryName name{};
    const int length =
        std::snprintf(name.data(), name.size(), "%s.%s.%05d.%011lld", store.lockPath.data(),
                      host.data(), getpid(), static_cast<long long>(std::time(nullptr)));
    if (static_cast<std::size_t>(length) != std::strlen(name.data())) {
        die("Cannot form temporary lockfile name - too long.\n");
    }
    return name;
}

bool removeTemporary(const TemporaryName &name) {
    if (unlink(name.data()) != 0) {
        reportSystemError("unlink of temporary lockfile");
        return false;
    }
    return true;
}

} // namespace

void takeLock() {
    const TemporaryName temporary = temporaryName();
    const int fd = creat(temporary.data(), 0600);
    if (fd < 0) {
        dieOfSystemError("create of temporary lockfile");
    }
    (void)close(fd); // nothing was written that could be lost

    const int linked = link(temporary.data(), store.lockPath.data());
    (void)linked; // the link count decides

    struct stat status {};
    if (stat(temporary.data(), &status) != 0) {
        reportSystemError("stat: cannot access event log temporary lockfile");
        (void)removeTemporary(temporary); // exits either way
        std::exit(EXIT_FAILURE);
    }
    if (!removeTemporary(temporary)) {
        std::exit(EXIT_FAILURE);
    }
    if (status.st_nlink != linksOfHolder) {
        die("Cannot establish lock on event log file.\n");
    }
}

void dropLock() {
    if (unlink(store.lockPath.data()) != 0) {
        reportSystemError("unlink of log lock file");
    }
}

} // namespace zusahpi::eventlog
