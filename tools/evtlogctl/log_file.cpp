// The system calls on a log file that is only read.
#include "tools/evtlogctl/log_file.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

#include "tools/evtlogctl/failure.h"

namespace zusahpi::evtlogctl {

LogFile::LogFile(const std::string &path) : path_(path) {
    // Without O_NONBLOCK the opening of a pipe would wait for a writer.
    descriptor_ = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor_ < 0 && errno == ENOENT) {
        fail(Status::systemRefused, "{} does not exist; name an event log file", path);
    }
    if (descriptor_ < 0) {
        fail(Status::systemRefused, "{} cannot be opened: {}; check the name and its permissions",
             path, systemError());
    }
}

LogFile::~LogFile() {
    close(descriptor_);
}

bool LogFile::read(off_t offset, void *to, std::size_t count) const {
    return readUpTo(offset, to, count) == count;
}

std::size_t LogFile::readUpTo(off_t offset, void *to, std::size_t count) const {
    auto *const bytes = static_cast<char *>(to);
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got =
            pread(descriptor_, bytes + done, count - done, offset + static_cast<off_t>(done));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            fail(Status::systemRefused, "{} cannot be read: {}; check the disk", path_,
                 systemError());
        }
        if (got == 0) {
            break;
        }
        done += static_cast<std::size_t>(got);
    }
    return done;
}

struct stat LogFile::status() const {
    struct stat status {};
    if (fstat(descriptor_, &status) != 0) {
        fail(Status::systemRefused, "{} cannot be examined: {}; check the disk", path_,
             systemError());
    }
    if (!S_ISREG(status.st_mode)) {
        fail(Status::damaged, "{} is no log: it is not a regular file; name an event log file",
             path_);
    }
    return status;
}

off_t LogFile::size() const {
    return status().st_size;
}

bool isKnown(eventlog::LogType type) {
    using eventlog::LogType;
    return type == LogType::simple || type == LogType::circular || type == LogType::linked;
}

} // namespace zusahpi::evtlogctl
