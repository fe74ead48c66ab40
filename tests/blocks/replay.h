// From a block log to the disks that a power failure may leave, one after the other.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "tests/blocks/block_log.h"

namespace block_test {

// File systems write blocks of this size and rely on nothing larger to be written as a whole.
inline constexpr std::uint64_t blockSize = 4096;

struct Replay {
    // The disk: as it was when the log was begun.
    std::function<std::string(std::uint64_t offset, std::uint64_t size)> read;
    std::function<void(std::uint64_t offset, std::string_view bytes)> write;
    // Called for each mark.
    std::function<void(const std::string &)> mark;
    // Called with the disk as it is at first and after each block that changes it, once all marks
    // are known that were set before the next such block: an acknowledged change is on the disk.
    std::function<void()> image;
};

// Takes the disk through all that the log holds.
void replay(BlockLog &log, const Replay &visitor);

} // namespace block_test
