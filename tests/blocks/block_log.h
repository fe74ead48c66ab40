// The log that the kernel's dm-log-writes keeps of a device: every write in the order in which it
// became durable, and the marks that a test set among them.
//
// Sector 0 is a super block; behind it each entry has a sector of its own, then its data. A write
// that no flush followed is not in it: what a prefix of the log makes is what a disk may hold that
// loses all it was not told to flush.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace block_test {

inline constexpr std::uint64_t sectorSize = 512;

struct LoggedEvent {
    enum class Kind { write, flush, discard, mark };
    Kind kind = Kind::write;
    std::uint64_t offset = 0; // of a write and of a discard, in bytes
    std::uint64_t length = 0;
    std::string bytes;   // that a write wrote, or the mark's text
    bool flush = false;  // what was written before is durable
    bool forced = false; // a write that was durable itself when it was done (FUA)
};

class BlockLog {
  public:
    // Returns `size` bytes of the log from `offset` on; fewer at its end.
    using Source = std::function<std::string(std::uint64_t offset, std::uint64_t size)>;

    // Throws std::runtime_error, as next() does, when the bytes are no such log.
    explicit BlockLog(Source source);

    [[nodiscard]] std::uint64_t count() const {
        return count_;
    }

    // Takes the next event; false at the end.
    bool next(LoggedEvent &event);

  private:
    std::string read(std::uint64_t size);

    Source source_;
    std::uint64_t count_ = 0;
    std::uint64_t taken_ = 0;
    std::uint64_t place_ = 0;
    std::uint64_t logSector_ = 0; // how much room an entry takes
};

} // namespace block_test
