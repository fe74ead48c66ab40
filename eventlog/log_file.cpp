// lseek, read, write and ftruncate on the store's descriptor.

#include "eventlog/log_file.h"

#include <cerrno>

#include <unistd.h>

#include "eventlog/store_state.h"

namespace zusahpi::eventlog {

bool seekTo(off_t offset) {
    return lseek(store.fd, offset, SEEK_SET) != -1;
}

ssize_t readNext(std::span<std::byte> bytes) {
    return read(store.fd, bytes.data(), bytes.size());
}

ssize_t writeNext(std::span<const std::byte> bytes) {
    return write(store.fd, bytes.data(), bytes.size());
}

bool writeWhole(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = writeNext(bytes);
        if (written < 0) {
            return false;
        }
        if (written == 0) { // a device that takes nothing more without saying so
            errno = ENOSPC;
            return false;
        }
        bytes = bytes.last(bytes.size() - static_cast<std::size_t>(written));
    }
    return true;
}

bool truncateAfter(std::uint32_t maxUsed) {
    return ftruncate(store.fd, fileSize(maxUsed)) == 0;
}

} // namespace zusahpi::eventlog
