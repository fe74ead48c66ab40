// The system calls that make a file whole before it has its name.
#include "tools/evtlogctl/new_file.h"

#include <cerrno>
#include <cstdlib>
#include <utility>

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

[[nodiscard]] std::string ownPath(int descriptor) {
    return fmt::format("/proc/self/fd/{}", descriptor);
}

// A file without a name, which is gone with this process however that ends. Negative where the file
// system has none, or where it could not be given a name later.
[[nodiscard]] int openNameless(const std::string &folder) {
    const int descriptor =
        open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor >= 0 && access(ownPath(descriptor).c_str(), F_OK) != 0) {
        close(descriptor);
        return -1;
    }
    return descriptor;
}

} // namespace

NewFile::NewFile(const std::string &name) : name_(name) {
    int descriptor = openNameless(folderOf(name));
    if (descriptor < 0) {
        temporary_ = name + ".XXXXXX";
        descriptor = mkostemp(temporary_.data(), O_CLOEXEC);
    }
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
    if (!temporary_.empty()) {
        unlink(temporary_.c_str());
    }
}

void NewFile::write(const void *bytes, std::size_t count) {
    require(std::fwrite(bytes, 1, count, stream_) == count);
}

void NewFile::keepAsNew(const struct stat &other) {
    takeOver(other);
    require(std::fflush(stream_) == 0 && fsync(fileno(stream_)) == 0);
    bool kept = false;
    if (temporary_.empty()) {
        kept = link(name_);
    } else if (renameat2(AT_FDCWD, temporary_.c_str(), AT_FDCWD, name_.c_str(), RENAME_NOREPLACE) ==
               0) {
        kept = true;
        temporary_.clear();
    } else if (errno == EINVAL) {
        // Not every file system knows how to leave a file alone; a link does so everywhere.
        kept = ::link(temporary_.c_str(), name_.c_str()) == 0;
    }
    if (!kept) {
        fail(Status::systemRefused, "{} cannot be made: {}; name a new file", name_, systemError());
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
    nameForNow();
    require(std::rename(temporary_.c_str(), name_.c_str()) == 0);
    temporary_.clear();
    syncFolder();
}

// A link does not replace a file, a renaming does: so it takes another name first, for a moment.
void NewFile::nameForNow() {
    for (int attempt = 0; temporary_.empty(); ++attempt) {
        std::string free = fmt::format("{}.{}.{}", name_, getpid(), attempt);
        if (link(free)) {
            temporary_ = std::move(free);
        } else {
            require(errno == EEXIST);
        }
    }
}

bool NewFile::link(const std::string &name) {
    return linkat(AT_FDCWD, ownPath(fileno(stream_)).c_str(), AT_FDCWD, name.c_str(),
                  AT_SYMLINK_FOLLOW) == 0;
}

void NewFile::require(bool success) {
    if (!success) {
        fail(Status::systemRefused, "{} cannot be written: {}; check the disk", name_,
             systemError());
    }
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
