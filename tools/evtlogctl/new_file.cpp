// The system calls that make a file whole before it has its name.
#include "tools/evtlogctl/new_file.h"

#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/path.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr mode_t allRights = 0777;

// What the system gives a file that is made for all to read and write.
[[nodiscard]] mode_t usualRights() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

} // namespace

NewFile::NewFile(const std::string &name) : name_(name), temporary_(name + ".XXXXXX") {
    const int descriptor = mkostemp(temporary_.data(), O_CLOEXEC);
    if (descriptor >= 0) {
        stream_ = fdopen(descriptor, "wb");
    }
    if (stream_ == nullptr) {
        fail(Status::systemRefused, "{} cannot be made: {}; check the name and its permissions",
             name_, systemError());
    }
}

NewFile::~NewFile() {
    (void)std::fclose(stream_); // what counts was flushed before it got its name
    if (!named_) {
        unlink(temporary_.c_str());
    }
}

void NewFile::write(const void *bytes, std::size_t count) {
    require(std::fwrite(bytes, 1, count, stream_) == count);
}

void NewFile::keepAsNew(const struct stat &other) {
    takeOver(other);
    require(std::fflush(stream_) == 0 && fsync(fileno(stream_)) == 0);
    named_ =
        renameat2(AT_FDCWD, temporary_.c_str(), AT_FDCWD, name_.c_str(), RENAME_NOREPLACE) == 0;
    // Not every file system knows how to leave a file alone; a link does so everywhere.
    const bool linked = !named_ && errno == EINVAL && link(temporary_.c_str(), name_.c_str()) == 0;
    if (!named_ && !linked) {
        refuse();
    }
    syncFolder();
}

void NewFile::keepInPlace() {
    struct stat old {};
    if (stat(name_.c_str(), &old) == 0) {
        takeOver(old);
    } else {
        require(fchmod(fileno(stream_), usualRights()) == 0);
    }
    require(std::fflush(stream_) == 0 && fsync(fileno(stream_)) == 0);
    named_ = std::rename(temporary_.c_str(), name_.c_str()) == 0;
    require(named_);
    syncFolder();
}

void NewFile::require(bool success) {
    if (!success) {
        fail(Status::systemRefused, "{} cannot be written: {}; check the disk", name_,
             systemError());
    }
}

void NewFile::refuse() {
    fail(Status::systemRefused, "{} cannot be made: {}; name a new file", name_, systemError());
}

void NewFile::takeOver(const struct stat &other) {
    const int ignored = fchown(fileno(stream_), other.st_uid, other.st_gid);
    (void)ignored; // only the superuser may
    require(fchmod(fileno(stream_), other.st_mode & allRights) == 0);
}

// Without it a crash of the machine could still take the name away.
void NewFile::syncFolder() {
    const int descriptor = open(folderOf(name_).c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor >= 0) {
        (void)fsync(descriptor); // the file is whole either way
        close(descriptor);
    }
}

} // namespace zusahpi::evtlogctl
