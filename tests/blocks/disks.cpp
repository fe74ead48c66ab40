// Direct I/O, in pieces of one aligned buffer.

#include "tests/blocks/disks.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace block_test {
namespace {

constexpr std::uint64_t pieceSize = 1U << 18;

char *alignedPiece() {
    alignas(4096) static char piece[pieceSize];
    return piece;
}

[[noreturn]] void fail(const char *what) {
    throw std::runtime_error(std::string(what) + " of a disk: " + std::strerror(errno));
}

} // namespace

Disk::Disk(const std::string &path) : fd_(open(path.c_str(), O_RDWR | O_DIRECT | O_CLOEXEC)) {
    if (fd_ < 0) {
        fail(("opening " + path).c_str());
    }
}

Disk::~Disk() {
    close(fd_);
}

std::string Disk::read(std::uint64_t offset, std::uint64_t size) const {
    std::string bytes;
    while (bytes.size() < size) {
        const std::uint64_t wanted = std::min(pieceSize, size - bytes.size());
        const ssize_t count =
            pread(fd_, alignedPiece(), wanted, static_cast<off_t>(offset + bytes.size()));
        if (count < 0) {
            fail("reading");
        }
        if (count == 0) {
            break;
        }
        bytes.append(alignedPiece(), static_cast<std::size_t>(count));
    }
    return bytes;
}

void Disk::write(std::uint64_t offset, std::string_view bytes) const {
    while (!bytes.empty()) {
        const std::size_t size = std::min<std::size_t>(pieceSize, bytes.size());
        bytes.copy(alignedPiece(), size);
        if (pwrite(fd_, alignedPiece(), size, static_cast<off_t>(offset)) !=
            static_cast<ssize_t>(size)) {
            fail("writing");
        }
        bytes.remove_prefix(size);
        offset += size;
    }
}

void Disk::flush() const {
    if (fsync(fd_) != 0) {
        fail("flushing");
    }
}

void copyDisk(const Disk &from, const Disk &to, std::uint64_t size) {
    for (std::uint64_t offset = 0; offset < size; offset += pieceSize) {
        const std::uint64_t length = std::min(pieceSize, size - offset);
        const std::string bytes = from.read(offset, length);
        if (bytes != to.read(offset, length)) { // a disk in memory takes room for what is written
            to.write(offset, bytes);
        }
    }
}

} // namespace block_test
