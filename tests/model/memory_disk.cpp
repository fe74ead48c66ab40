// The calls of the C library that the store makes on files, for those under `folder`; every other
// path goes on to the C library. The headers redirect the names to those of 64-bit offsets and
// times, so each definition here stands for the very symbol that the store asks for.

#undef _FORTIFY_SOURCE

#include "tests/model/memory_disk.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <utility>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace memory_disk {
namespace {

constexpr int firstDescriptor = 1'000'000; // no descriptor of the real system is so high

bool isHere(const char *path) {
    return std::strncmp(path, folder, sizeof folder - 1) == 0;
}

Descriptor *descriptorOf(int fd) {
    const int index = fd - firstDescriptor;
    if (index < 0 || static_cast<std::size_t>(index) >= machine().descriptors.size()) {
        return nullptr;
    }
    return &machine().descriptors[static_cast<std::size_t>(index)];
}

File &fileAt(int index) {
    return machine().files.at(static_cast<std::size_t>(index));
}

int newFile() {
    std::vector<File> &files = machine().files;
    const auto unused = std::find_if(files.begin(), files.end(), [](const File &file) {
        return file.names == 0 && file.descriptors == 0;
    });
    const auto index = static_cast<int>(unused - files.begin());
    if (unused == files.end()) {
        files.emplace_back();
    } else {
        unused->bytes.clear();
    }
    return index;
}

int openFile(const char *path, bool create, bool truncate) {
    const auto named = machine().names.find(path);
    int file = -1;
    if (named != machine().names.end()) {
        file = named->second;
    } else if (create) {
        file = newFile();
        machine().names[path] = file;
        fileAt(file).names = 1;
    } else {
        errno = ENOENT;
        return -1;
    }
    if (truncate) {
        fileAt(file).bytes.clear();
    }
    std::vector<Descriptor> &all = machine().descriptors;
    const auto closed = std::find_if(all.begin(), all.end(),
                                     [](const Descriptor &each) { return each.file == -1; });
    const auto index = static_cast<int>(closed - all.begin());
    if (closed == all.end()) {
        all.emplace_back();
    }
    all[static_cast<std::size_t>(index)] = {file, 0};
    ++fileAt(file).descriptors;
    return firstDescriptor + index;
}

void closeDescriptor(Descriptor &descriptor) {
    --fileAt(descriptor.file).descriptors;
    descriptor.file = -1;
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
#else
constexpr char statName[] = "stat64";
#endif

bool syncGoesThrough = false;

} // namespace

Machine &machine() {
    static Machine instance;
    return instance;
}

const std::string &contents(const std::string &path) {
    return fileAt(machine().names.at(path)).bytes;
}

void letSyncThrough() {
    syncGoesThrough = true;
}

void killProcess() {
    for (Descriptor &each : machine().descriptors) {
        if (each.file != -1) {
            closeDescriptor(each);
        }
    }
    machine().exitHandlers.clear();
}

void exitProcess() {
    const std::vector<void (*)()> handlers = std::exchange(machine().exitHandlers, {});
    std::for_each(handlers.rbegin(), handlers.rend(), [](void (*handler)()) { handler(); });
    killProcess();
}

} // namespace memory_disk

using namespace memory_disk;

extern "C" {

int __cxa_atexit(void (*function)(void *), void *argument, void *library);

int atexit(void (*function)(void)) noexcept {
    if (machine().catchExitHandlers) {
        machine().exitHandlers.push_back(function);
        return 0;
    }
    return __cxa_atexit(reinterpret_cast<void (*)(void *)>(function), nullptr, nullptr);
}

int open(const char *path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (isHere(path)) {
        return openFile(path, (flags & O_CREAT) != 0, (flags & O_TRUNC) != 0);
    }
    static auto *const call = real<int(const char *, int, ...)>("open64");
    return call(path, flags, mode);
}

// What fortified code calls for an open() without a mode.
int __open64_2(const char *path, int flags) {
    return open(path, flags);
}

int creat(const char *path, mode_t mode) {
    if (isHere(path)) {
        return openFile(path, true, true);
    }
    static auto *const call = real<int(const char *, mode_t)>("creat64");
    return call(path, mode);
}

int close(int fd) {
    if (Descriptor *descriptor = descriptorOf(fd)) {
        closeDescriptor(*descriptor);
        return 0;
    }
    static auto *const call = real<int(int)>("close");
    return call(fd);
}

off_t lseek(int fd, off_t offset, int whence) noexcept {
    if (Descriptor *descriptor = descriptorOf(fd)) {
        if (whence != SEEK_SET || offset < 0) { // the store asks for nothing else
            errno = EINVAL;
            return -1;
        }
        descriptor->position = static_cast<std::size_t>(offset);
        return offset;
    }
    static auto *const call = real<off_t(int, off_t, int)>("lseek64");
    return call(fd, offset, whence);
}

ssize_t read(int fd, void *buffer, size_t size) {
    if (Descriptor *descriptor = descriptorOf(fd)) {
        const std::string &bytes = fileAt(descriptor->file).bytes;
        const std::size_t from = std::min(descriptor->position, bytes.size());
        const std::size_t count = std::min(size, bytes.size() - from);
        std::memcpy(buffer, bytes.data() + from, count);
        descriptor->position += count;
        return static_cast<ssize_t>(count);
    }
    static auto *const call = real<ssize_t(int, void *, size_t)>("read");
    return call(fd, buffer, size);
}

ssize_t write(int fd, const void *buffer, size_t size) {
    if (Descriptor *descriptor = descriptorOf(fd)) {
        std::string &bytes = fileAt(descriptor->file).bytes;
        const std::size_t end = descriptor->position + size;
        if (bytes.size() < end) {
            bytes.resize(end);
        }
        std::memcpy(bytes.data() + descriptor->position, buffer, size);
        descriptor->position = end;
        return static_cast<ssize_t>(size);
    }
    static auto *const call = real<ssize_t(int, const void *, size_t)>("write");
    return call(fd, buffer, size);
}

int ftruncate(int fd, off_t length) noexcept {
    if (Descriptor *descriptor = descriptorOf(fd)) {
        fileAt(descriptor->file).bytes.resize(static_cast<std::size_t>(length));
        return 0;
    }
    static auto *const call = real<int(int, off_t)>("ftruncate64");
    return call(fd, length);
}

int link(const char *from, const char *to) noexcept {
    if (isHere(from)) {
        const int file = machine().names.at(from);
        if (!machine().names.emplace(to, file).second) {
            errno = EEXIST;
            return -1;
        }
        ++fileAt(file).names;
        return 0;
    }
    static auto *const call = real<int(const char *, const char *)>("link");
    return call(from, to);
}

int stat(const char *path, struct stat *status) noexcept {
    if (isHere(path)) {
        const auto named = machine().names.find(path);
        if (named == machine().names.end()) {
            errno = ENOENT;
            return -1;
        }
        std::memset(status, 0, sizeof *status);
        status->st_nlink = static_cast<nlink_t>(fileAt(named->second).names);
        status->st_size = static_cast<off_t>(fileAt(named->second).bytes.size());
        return 0;
    }
    static auto *const call = real<int(const char *, struct stat *)>(statName);
    return call(path, status);
}

int unlink(const char *path) noexcept {
    if (isHere(path)) {
        const auto named = machine().names.find(path);
        if (named == machine().names.end()) {
            errno = ENOENT;
            return -1;
        }
        --fileAt(named->second).names;
        machine().names.erase(named);
        return 0;
    }
    static auto *const call = real<int(const char *)>("unlink");
    return call(path);
}

int fchown(int fd, uid_t owner, gid_t group) noexcept {
    if (descriptorOf(fd) != nullptr) {
        return 0;
    }
    static auto *const call = real<int(int, uid_t, gid_t)>("fchown");
    return call(fd, owner, group);
}

// All is on this disk at once; the machine's own disks seldom have a part in tests.
void sync(void) noexcept {
    static auto *const call = real<void()>("sync");
    if (syncGoesThrough) {
        call();
    }
}

} // extern "C"
