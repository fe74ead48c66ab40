// Writing the log's blocks one by one.

#include "tests/blocks/replay.h"

#include <algorithm>

namespace block_test {

namespace {

class ReplayedDisk {
  public:
    explicit ReplayedDisk(const Replay &visitor) : visitor_(visitor) {
    }

    void put(std::uint64_t offset, std::string_view bytes) {
        while (!bytes.empty()) {
            const std::size_t size =
                std::min<std::size_t>(blockSize - offset % blockSize, bytes.size());
            putBlock(offset, bytes.substr(0, size));
            offset += size;
            bytes.remove_prefix(size);
        }
    }

    // Shows what the disk holds, unless it was shown before.
    void show() {
        if (fresh_) {
            visitor_.image();
        }
        fresh_ = false;
    }

  private:
    void putBlock(std::uint64_t offset, std::string_view bytes) {
        if (visitor_.read(offset, bytes.size()) == bytes) {
            return;
        }
        show();
        visitor_.write(offset, bytes);
        fresh_ = true;
    }

    const Replay &visitor_;
    bool fresh_ = true;
};

} // namespace

void replay(BlockLog &log, const Replay &visitor) {
    ReplayedDisk disk(visitor);
    for (LoggedEvent event; log.next(event);) {
        if (event.kind == LoggedEvent::Kind::mark) {
            visitor.mark(event.bytes);
        } else if (event.kind == LoggedEvent::Kind::write) {
            disk.put(event.offset, event.bytes);
        }
    }
    disk.show();
}

} // namespace block_test
