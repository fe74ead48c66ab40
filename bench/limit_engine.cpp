// The bare limit: the seeks and writes that the format asks of an add, and nothing else. No record
// is made, looked at, linked or counted.

#include <array>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include "bench/engine.h"
#include "eventlog/log_format.h"

namespace bench {
namespace {

using namespace zusahpi::eventlog;

struct Limit {
    int fd;
    bool durable;
    bool wraps;
    std::uint32_t capacity;
    std::uint32_t added;
    std::array<char, infoSize> info;
    std::array<Record, transactionSlots> slots;
};

Limit limit;

void put(off_t offset, const void *bytes, std::size_t size) {
    require(lseek(limit.fd, offset, SEEK_SET) == offset, "lseek");
    require(write(limit.fd, bytes, size) == static_cast<ssize_t>(size), "write");
}

void open(const Setup &setup) {
    const std::string path = setup.folder + "/limit";
    limit = {};
    limit.durable = setup.durable;
    limit.wraps = setup.wraps;
    limit.capacity = setup.capacity;
    limit.fd = ::open(path.c_str(), O_RDWR | O_CREAT | (setup.durable ? O_SYNC : 0), 0600);
    require(limit.fd >= 0, "open", path);
    const off_t length = lseek(limit.fd, 0, SEEK_END);
    if (length >= entriesOffset) {
        limit.added = static_cast<std::uint32_t>((length - entriesOffset) / entrySize);
    } else {
        put(infoOffset, limit.info.data(), limit.info.size());
        put(transactionLogOffset, limit.slots.data(), sizeof limit.slots);
    }
}

// A record of its own, the one before it and, in a full log, the one after the oldest are changed.
void addDurably(const Record &record, std::uint32_t number, bool full) {
    const std::size_t changed = full ? 3 : number > 1 ? 2 : 1;
    put(transactionLogOffset, limit.slots.data(), (changed + 1) * sizeof record);
    put(infoOffset, limit.info.data(), limit.info.size());
    for (std::size_t i = 0; i < changed; ++i) {
        const auto other = static_cast<std::uint32_t>((number - 1 + i) % limit.capacity + 1);
        put(entryOffset(full ? other : number - static_cast<std::uint32_t>(i)), &record,
            sizeof record);
    }
    put(infoOffset, limit.info.data(), limit.info.size());
}

void add(const Record &record) {
    const bool full = limit.added >= limit.capacity;
    require(!full || limit.wraps, "the limit's file is full");
    const std::uint32_t number = limit.added % limit.capacity + 1;
    if (limit.durable) {
        addDurably(record, number, full);
    } else {
        put(entryOffset(number), &record, sizeof record);
        put(infoOffset, limit.info.data(), limit.info.size());
    }
    ++limit.added;
}

void read(std::uint32_t number, Record &record) {
    require(pread(limit.fd, &record, sizeof record, entryOffset(number)) == entrySize, "pread");
}

void readNewest(Record &record) {
    read(limit.added, record);
}

void close() {
    require(::close(limit.fd) == 0, "close");
}

} // namespace

const Engine limitEngine = {"limit", open, add, read, readNewest, close};

} // namespace bench
