// Goal: of a log of dm-log-writes each disk image is shown once, in order, and with all that was
// acknowledged before the next block reached the disk; what is no such log is refused.

#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/blocks/block_log.h"
#include "tests/blocks/replay.h"

using namespace block_test;

namespace {

constexpr std::uint64_t flush = 1;
constexpr std::uint64_t forced = 2;
constexpr std::uint64_t discard = 4;
constexpr std::uint64_t mark = 8;

std::string words(const std::vector<std::uint64_t> &numbers) {
    std::string bytes(sectorSize, '\0');
    std::memcpy(bytes.data(), numbers.data(), numbers.size() * sizeof numbers[0]);
    return bytes;
}

// A log as the kernel writes it.
class WrittenLog {
  public:
    void add(std::uint64_t sector, std::uint64_t sectors, std::uint64_t flags,
             const std::string &bytes) {
        std::string entry = words({sector, sectors, flags, (flags & mark) != 0 ? bytes.size() : 0});
        if ((flags & mark) != 0) {
            entry.replace(32, bytes.size(), bytes);
        }
        entries_ += entry + ((flags & mark) != 0 ? "" : bytes);
        ++count_;
    }
    [[nodiscard]] std::string bytes() const {
        return words({0x6a736677736872, 1, count_, sectorSize}) + entries_;
    }

  private:
    std::string entries_;
    std::uint64_t count_ = 0;
};

BlockLog::Source sourceOf(const std::string &bytes) {
    return [bytes](std::uint64_t offset, std::uint64_t size) {
        return offset < bytes.size() ? bytes.substr(offset, size) : std::string();
    };
}

// A disk of three blocks, each of one letter, and every image of it with the marks before it.
std::vector<std::string> imagesOf(const WrittenLog &written) {
    std::string disk(3 * blockSize, '-');
    std::string marks;
    std::vector<std::string> images;
    Replay visitor;
    visitor.read = [&](std::uint64_t offset, std::uint64_t size) {
        return disk.substr(offset, size);
    };
    visitor.write = [&](std::uint64_t offset, std::string_view bytes) {
        disk.replace(offset, bytes.size(), bytes);
    };
    visitor.mark = [&](const std::string &text) { marks += text; };
    visitor.image = [&] {
        images.push_back(std::string{disk[0], disk[blockSize], disk[2 * blockSize]} + marks);
    };
    BlockLog log(sourceOf(written.bytes()));
    replay(log, visitor);
    return images;
}

std::string blocks(const std::string &letters) {
    std::string bytes;
    for (const char letter : letters) {
        bytes += std::string(blockSize, letter);
    }
    return bytes;
}

TEST(BlockLog, GivesEachEventAsItWasWritten) {
    WrittenLog written;
    written.add(8, 8, forced, blocks("a"));
    written.add(0, 0, flush, "");
    written.add(0, 0, mark, "acknowledged");
    written.add(16, 4, discard, "");
    BlockLog log(sourceOf(written.bytes()));
    EXPECT_EQ(log.count(), 4U);
    LoggedEvent event;
    ASSERT_TRUE(log.next(event));
    EXPECT_EQ(event.kind, LoggedEvent::Kind::write);
    EXPECT_EQ(event.offset, 4096U);
    EXPECT_EQ(event.bytes, blocks("a"));
    EXPECT_TRUE(event.forced);
    EXPECT_FALSE(event.flush);
    ASSERT_TRUE(log.next(event));
    EXPECT_EQ(event.kind, LoggedEvent::Kind::flush);
    EXPECT_TRUE(event.flush);
    ASSERT_TRUE(log.next(event));
    EXPECT_EQ(event.kind, LoggedEvent::Kind::mark);
    EXPECT_EQ(event.bytes, "acknowledged");
    ASSERT_TRUE(log.next(event));
    EXPECT_EQ(event.kind, LoggedEvent::Kind::discard);
    EXPECT_EQ(event.offset, 8192U);
    EXPECT_EQ(event.length, 2048U);
    EXPECT_FALSE(log.next(event));
}

TEST(BlockLog, RefusesWhatIsNoLog) {
    EXPECT_THROW(BlockLog(sourceOf("")), std::runtime_error);
    EXPECT_THROW(BlockLog(sourceOf(std::string(4096, '\0'))), std::runtime_error);
    WrittenLog written;
    written.add(8, 8, 0, blocks("a"));
    const std::string bytes = written.bytes();
    LoggedEvent event;
    for (const std::size_t length : {sectorSize, sectorSize + 1, bytes.size() - 1}) {
        BlockLog log(sourceOf(bytes.substr(0, length)));
        EXPECT_THROW(log.next(event), std::runtime_error) << length;
    }
    WrittenLog endless;
    endless.add(0, UINT64_MAX / sectorSize, 0, "");
    BlockLog log(sourceOf(endless.bytes()));
    EXPECT_THROW(log.next(event), std::runtime_error);
}

TEST(Replay, ShowsTheDiskAfterEachBlock) {
    WrittenLog written;
    written.add(0, 16, 0, blocks("ab"));
    written.add(0, 0, flush, "");
    written.add(16, 8, forced, blocks("c"));
    EXPECT_EQ(imagesOf(written), (std::vector<std::string>{"---", "a--", "ab-", "abc"}));
}

TEST(Replay, ShowsNoDiskTwice) {
    WrittenLog written;
    written.add(0, 8, 0, blocks("a"));
    written.add(0, 16, 0, blocks("ab"));
    written.add(8, 8, 0, blocks("b"));
    written.add(0, 0, flush, "");
    EXPECT_EQ(imagesOf(written), (std::vector<std::string>{"---", "a--", "ab-"}));
}

// What was acknowledged when a block reached the disk must have been there without it.
TEST(Replay, AMarkBelongsToTheDiskBeforeTheNextBlock) {
    WrittenLog written;
    written.add(0, 8, 0, blocks("a"));
    written.add(0, 0, mark, "1");
    written.add(0, 8, 0, blocks("a")); // changes nothing
    written.add(0, 0, mark, "2");
    written.add(0, 8, 0, blocks("b"));
    written.add(0, 0, mark, "3");
    EXPECT_EQ(imagesOf(written), (std::vector<std::string>{"---", "a--12", "b--123"}));
}

TEST(Replay, AWriteFromTheMiddleOfABlockEndsWithTheBlock) {
    WrittenLog written;
    written.add(4, 8, 0, std::string(4096, 'x'));
    written.add(15, 2, 0, std::string(1024, 'y'));
    EXPECT_EQ(imagesOf(written), (std::vector<std::string>{"---", "---", "-x-", "-x-", "-xy"}));
}

} // namespace
