// Reading the log of dm-log-writes, entry by entry. Its numbers are little-endian.

#include "tests/blocks/block_log.h"

#include <cstring>
#include <stdexcept>
#include <utility>

namespace block_test {
namespace {

constexpr std::uint64_t magic = 0x6a736677736872;
constexpr std::uint64_t version = 1;
constexpr std::uint64_t flushFlag = 1;
constexpr std::uint64_t forcedFlag = 2;
constexpr std::uint64_t discardFlag = 4;
constexpr std::uint64_t markFlag = 8;
constexpr std::uint64_t entryLength = 32;
constexpr std::uint64_t longestEntry = 1U << 26;

template <typename Number>
Number at(const std::string &bytes, std::size_t offset) {
    Number value = 0;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

LoggedEvent::Kind kindOf(std::uint64_t flags, std::uint64_t sectors) {
    if ((flags & markFlag) != 0) {
        return LoggedEvent::Kind::mark;
    }
    if ((flags & discardFlag) != 0) {
        return LoggedEvent::Kind::discard;
    }
    return sectors == 0 ? LoggedEvent::Kind::flush : LoggedEvent::Kind::write;
}

} // namespace

BlockLog::BlockLog(Source source) : source_(std::move(source)) {
    const std::string super = source_(0, sectorSize);
    if (super.size() < sectorSize || at<std::uint64_t>(super, 0) != magic ||
        at<std::uint64_t>(super, 8) != version) {
        throw std::runtime_error("not a log of dm-log-writes");
    }
    count_ = at<std::uint64_t>(super, 16);
    logSector_ = at<std::uint32_t>(super, 24);
    if (logSector_ < sectorSize || logSector_ % sectorSize != 0) {
        throw std::runtime_error("the log's sectors have a strange size");
    }
    place_ = logSector_;
}

std::string BlockLog::read(std::uint64_t size) {
    std::string bytes = source_(place_, size);
    if (bytes.size() != size) {
        throw std::runtime_error("the log ends in the middle of an entry");
    }
    place_ += size;
    return bytes;
}

bool BlockLog::next(LoggedEvent &event) {
    if (taken_ == count_) {
        return false;
    }
    ++taken_;
    const std::string entry = read(logSector_);
    const std::uint64_t sectors = at<std::uint64_t>(entry, 8);
    const std::uint64_t flags = at<std::uint64_t>(entry, 16);
    const std::uint64_t dataLength = at<std::uint64_t>(entry, 24);
    event = {};
    event.kind = kindOf(flags, sectors);
    event.flush = (flags & flushFlag) != 0;
    event.forced = (flags & forcedFlag) != 0;
    if (event.kind == LoggedEvent::Kind::mark) { // its text stands behind the entry itself
        if (dataLength > logSector_ - entryLength) {
            throw std::runtime_error("a mark longer than its sector");
        }
        event.bytes = entry.substr(entryLength, dataLength);
        return true;
    }
    event.offset = at<std::uint64_t>(entry, 0) * logSector_;
    event.length = sectors * logSector_;
    if (event.length > longestEntry && event.kind == LoggedEvent::Kind::write) {
        throw std::runtime_error("an entry too long to be one");
    }
    if (event.kind == LoggedEvent::Kind::write) {
        event.bytes = read(event.length);
    }
    return true;
}

} // namespace block_test
