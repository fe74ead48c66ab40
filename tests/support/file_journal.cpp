// The journal of one file's changes.

#include "tests/support/file_journal.h"

#include <utility>

#include <fcntl.h>

namespace test_support {
namespace {

struct Journal {
    std::string path; // empty: nothing is watched
    int fd = -1;
    bool synchronous = false;
    std::vector<FileEvent> events;
};

Journal &journal() {
    static Journal instance;
    return instance;
}

bool watched(int fd) {
    return fd >= 0 && fd == journal().fd;
}

} // namespace

void watchFile(const std::string &path) {
    journal() = {};
    journal().path = path;
}

std::vector<FileEvent> takeFileEvents() {
    return std::exchange(journal().events, {});
}

bool watchedFileIsSynchronous() {
    return journal().synchronous;
}

void journalOpen(const char *path, int flags, int fd) {
    if (fd >= 0 && !journal().path.empty() && journal().path == path) {
        journal().fd = fd;
        journal().synchronous = (flags & O_SYNC) == O_SYNC;
    }
}

void journalClose(int fd) {
    if (watched(fd)) {
        journal().fd = -1;
    }
}

void journalWrite(int fd, off_t endOfWrite, const void *bytes, ssize_t count) {
    if (watched(fd) && count > 0) {
        const std::size_t size = static_cast<std::size_t>(count);
        journal().events.push_back({FileEvent::Kind::write,
                                    static_cast<std::size_t>(endOfWrite) - size,
                                    std::string(static_cast<const char *>(bytes), size)});
    }
}

void journalTruncate(int fd, off_t length) {
    if (watched(fd)) {
        journal().events.push_back(
            {FileEvent::Kind::truncate, static_cast<std::size_t>(length), {}});
    }
}

void journalSync() {
    if (journal().fd >= 0) {
        journal().events.push_back({FileEvent::Kind::sync, 0, {}});
    }
}

} // namespace test_support
