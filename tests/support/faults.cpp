// Definitions of the C library's calls that take their place in a test program, count, and pass on.
// The headers redirect the names to those of 64-bit offsets and times, so each definition here
// stands for the very symbol that the library under test asks for.

#undef _FORTIFY_SOURCE

#include "tests/support/faults.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <optional>
#include <utility>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/file_journal.h"

namespace test_support {
namespace {

struct Fault {
    int errorNumber = 0;
    int skip = 0;
    bool persistent = false;
};

struct Cut {
    bool armed = false;
    int skip = 0;
    std::size_t bytes = 0;
};

struct FaultState {
    std::array<Fault, static_cast<std::size_t>(Call::count)> faults;
    std::array<Cut, static_cast<std::size_t>(Call::count)> cuts;
    std::optional<int> callsToTheEnd;
    std::optional<int> callsThatCount; // from then on they are lost
    bool recording = false;
    std::vector<std::string> calls;
    std::optional<LinkLie> linkLie;
    std::string host;
    int processId = 0;
};

FaultState &faultState() {
    static FaultState instance;
    return instance;
}

bool fails(Call call) {
    Fault &fault = faultState().faults[static_cast<std::size_t>(call)];
    if (fault.errorNumber == 0 || fault.skip-- > 0) {
        return false;
    }
    errno = fault.errorNumber;
    if (fault.persistent) {
        fault.skip = 0;
    } else {
        fault.errorNumber = 0;
    }
    return true;
}

// How many of `size` bytes a read or a write moves.
std::size_t moved(Call call, std::size_t size) {
    Cut &cut = faultState().cuts[static_cast<std::size_t>(call)];
    if (!cut.armed || cut.skip-- > 0) {
        return size;
    }
    cut.armed = false;
    return std::min(size, cut.bytes);
}

void note(const std::string &line) {
    if (faultState().callsToTheEnd && (*faultState().callsToTheEnd)-- == 0) {
        _exit(endedByFault);
    }
    if (faultState().callsThatCount) {
        --*faultState().callsThatCount;
    }
    if (faultState().recording) {
        faultState().calls.push_back(line);
    }
}

template <typename Function>
Function *real(const char *name) {
    void *symbol = dlsym(RTLD_NEXT, name);
    if (symbol == nullptr) {
        std::abort();
    }
    return reinterpret_cast<Function *>(symbol);
}

#if defined(__i386__)
constexpr char statName[] = "__stat64_time64";
constexpr char fstatName[] = "__fstat64_time64";
#else
constexpr char statName[] = "stat64";
constexpr char fstatName[] = "fstat64";
#endif

} // namespace

void failCall(Call call, int errorNumber, int skip) {
    faultState().faults[static_cast<std::size_t>(call)] = {errorNumber, skip, false};
}

void failCallsFrom(Call call, int errorNumber, int skip) {
    faultState().faults[static_cast<std::size_t>(call)] = {errorNumber, skip, true};
}

void clearFaults() {
    faultState().faults = {};
    faultState().cuts = {};
    faultState().callsThatCount.reset();
}

void cutCall(Call call, std::size_t bytes, int skip) {
    faultState().cuts[static_cast<std::size_t>(call)] = {true, skip, bytes};
}

void cutNextWrite(std::size_t bytes) {
    cutCall(Call::write, bytes);
}

void endProcessBeforeCall(int skip) {
    faultState().callsToTheEnd = skip;
}

void loseCallsFrom(int skip) {
    faultState().callsThatCount = skip;
}

bool callsWereLost() {
    return faultState().callsThatCount && *faultState().callsThatCount < 0;
}

void makeNextLinkLie(LinkLie lie) {
    faultState().linkLie = lie;
}

void pretendHost(const std::string &name) {
    faultState().host = name;
}

void pretendProcessId(int id) {
    faultState().processId = id;
}

void recordCalls() {
    faultState().calls.clear();
    faultState().recording = true;
}

std::vector<std::string> recordedCalls() {
    faultState().recording = false;
    return faultState().calls;
}

} // namespace test_support

using namespace test_support;

extern "C" {

int open(const char *path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    note((flags & O_SYNC) == O_SYNC ? "open O_SYNC" : "open");
    if (fails(Call::open)) {
        return -1;
    }
    const int fd = real<int(const char *, int, ...)>("open64")(path, flags, mode);
    journalOpen(path, flags, fd);
    return fd;
}

// What fortified code calls for an open() without a mode.
int __open64_2(const char *path, int flags) {
    return open(path, flags);
}

int creat(const char *path, mode_t mode) {
    note("creat");
    return fails(Call::creat) ? -1 : real<int(const char *, mode_t)>("creat64")(path, mode);
}

int close(int fd) {
    note("close");
    journalClose(fd);
    const int result = real<int(int)>("close")(fd); // one that fails gives the descriptor up too
    return fails(Call::close) ? -1 : result;
}

off_t lseek(int fd, off_t offset, int whence) noexcept {
    note("lseek " + std::to_string(offset));
    return fails(Call::lseek) ? -1 : real<off_t(int, off_t, int)>("lseek64")(fd, offset, whence);
}

ssize_t read(int fd, void *buffer, size_t size) {
    note("read " + std::to_string(size));
    if (fails(Call::read)) {
        return -1;
    }
    return real<ssize_t(int, void *, size_t)>("read")(fd, buffer, moved(Call::read, size));
}

ssize_t write(int fd, const void *buffer, size_t size) {
    note("write " + std::to_string(size));
    if (fails(Call::write)) {
        return -1;
    }
    if (callsWereLost()) {
        return static_cast<ssize_t>(size);
    }
    const ssize_t count =
        real<ssize_t(int, const void *, size_t)>("write")(fd, buffer, moved(Call::write, size));
    if (count > 0) { // so that errno stays that of a failed write
        journalWrite(fd, real<off_t(int, off_t, int)>("lseek64")(fd, 0, SEEK_CUR), buffer, count);
    }
    return count;
}

int ftruncate(int fd, off_t length) noexcept {
    note("ftruncate " + std::to_string(length));
    if (fails(Call::ftruncate)) {
        return -1;
    }
    if (callsWereLost()) {
        return 0;
    }
    const int result = real<int(int, off_t)>("ftruncate64")(fd, length);
    if (result == 0) {
        journalTruncate(fd, length);
    }
    return result;
}

int link(const char *from, const char *to) noexcept {
    note("link");
    if (fails(Call::link)) {
        return -1;
    }
    const std::optional<LinkLie> lie = std::exchange(faultState().linkLie, std::nullopt);
    if (lie == LinkLie::successWhenNotMade) {
        return 0;
    }
    const int result = real<int(const char *, const char *)>("link")(from, to);
    return lie == LinkLie::failureWhenMade ? -1 : result;
}

int stat(const char *path, struct stat *status) noexcept {
    note("stat");
    return fails(Call::stat) ? -1 : real<int(const char *, struct stat *)>(statName)(path, status);
}

int fstat(int fd, struct stat *status) noexcept {
    note("fstat");
    return fails(Call::fstat) ? -1 : real<int(int, struct stat *)>(fstatName)(fd, status);
}

int unlink(const char *path) noexcept {
    note("unlink");
    return fails(Call::unlink) ? -1 : real<int(const char *)>("unlink")(path);
}

int fchown(int fd, uid_t owner, gid_t group) noexcept {
    note("fchown");
    return fails(Call::fchown) ? -1 : real<int(int, uid_t, gid_t)>("fchown")(fd, owner, group);
}

int gethostname(char *name, size_t size) noexcept {
    note("gethostname");
    if (fails(Call::gethostname)) {
        return -1;
    }
    const std::string &host = faultState().host;
    if (host.empty()) {
        return real<int(char *, size_t)>("gethostname")(name, size);
    }
    name[host.copy(name, size - 1)] = '\0';
    return 0;
}

pid_t getpid(void) noexcept {
    const int pretended = faultState().processId;
    return pretended != 0 ? pretended : real<pid_t()>("getpid")();
}

void sync(void) noexcept {
    note("sync");
    journalSync();
    real<void()>("sync")();
}

} // extern "C"
