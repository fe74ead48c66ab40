// What stands between the library and the C library. Files in memory are further on.

#include "tests/blocks/library_calls.h"

#include <cstdarg>
#include <string>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "eventlog/log_format.h"
#include "eventlog/store_state.h"

namespace block_test {
namespace {

using zusahpi::eventlog::store;

int writesLeft = -1; // -1: the action was called, or there is none
std::function<void()> actionBeforeWrite;
unsigned pauseInMicroseconds = 0;
Defect planted = Defect::none;
std::string heldBack; // of the transaction log area

int plantedFlags(int flags) {
    return planted == Defect::unsynced ? flags & ~O_SYNC : flags;
}

// True when the write is held back.
bool holdsBack(int fd, const void *bytes, std::size_t size) {
    const bool isLog =
        planted == Defect::turned && fd == store.fd && store.info.type == ZUSAHPI_EL_TYPE_LINKED;
    if (!isLog || lseek(fd, 0, SEEK_CUR) != zusahpi::eventlog::transactionLogOffset) {
        return false;
    }
    heldBack.assign(static_cast<const char *>(bytes), size);
    return true;
}

// Writes it after all, behind the flag. False when that fails.
bool writeHeldBack(int fd) {
    const std::string bytes = std::exchange(heldBack, {});
    return bytes.empty() ||
           pwrite(fd, bytes.data(), bytes.size(), zusahpi::eventlog::transactionLogOffset) ==
               static_cast<ssize_t>(bytes.size());
}

} // namespace

void beforeWrite(int skip, std::function<void()> action) {
    writesLeft = skip;
    actionBeforeWrite = std::move(action);
}

bool endBeforeWrite() {
    const bool called = writesLeft < 0;
    writesLeft = -1;
    return called;
}

void waitBeforeWrites(unsigned microseconds) {
    pauseInMicroseconds = microseconds;
}

void plantDefect(Defect defect) {
    planted = defect;
}

} // namespace block_test

using namespace block_test;

extern "C" {

int __real_open64(const char *path, int flags, ...);
int __real___open64_2(const char *path, int flags);
ssize_t __real_write(int fd, const void *bytes, std::size_t size);

int __wrap_open64(const char *path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return __real_open64(path, plantedFlags(flags), mode);
}

int __wrap___open64_2(const char *path, int flags) {
    return __real___open64_2(path, plantedFlags(flags));
}

ssize_t __wrap_write(int fd, const void *bytes, std::size_t size) {
    if (fd == store.fd && writesLeft >= 0 && writesLeft-- == 0) {
        actionBeforeWrite();
    }
    if (fd == store.fd && pauseInMicroseconds != 0) {
        usleep(pauseInMicroseconds);
    }
    if (holdsBack(fd, bytes, size)) {
        return static_cast<ssize_t>(size);
    }
    const ssize_t written = __real_write(fd, bytes, size);
    return fd != store.fd || writeHeldBack(fd) ? written : -1;
}

} // extern "C"
