// Counting what the block log has between two marks. Medians, as file systems also write by the
// clock. A file gets a new time with each tick of the clock, so every write has one of its own
// here, as it has on a disk that is slower than the clock.

#include "tests/blocks/block_counts.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <vector>

#include <sys/mount.h>

#include "tests/blocks/block_log.h"
#include "tests/blocks/device_mapper.h"
#include "tests/blocks/disks.h"
#include "tests/blocks/images.h"
#include "tests/blocks/library_calls.h"
#include "tests/model/store_check.h"

namespace block_test {
namespace {

constexpr std::uint32_t logSize = 24;
constexpr std::uint32_t wraps = 24;
constexpr unsigned moreThanATick = 20'000; // microseconds; the guest's clock has 100 a second

struct Counts {
    std::vector<std::size_t> writes;
    std::vector<std::size_t> kibibytes;
    std::vector<std::size_t> flushes;
    std::vector<std::size_t> forced;

    void begin() {
        for (auto *const each : {&writes, &kibibytes, &flushes, &forced}) {
            each->push_back(0);
        }
    }
    void count(const LoggedEvent &event) {
        flushes.back() += event.flush ? 1 : 0;
        if (event.kind == LoggedEvent::Kind::write) {
            ++writes.back();
            kibibytes.back() += event.bytes.size();
            forced.back() += event.forced ? 1 : 0;
        }
    }
};

std::size_t median(std::vector<std::size_t> numbers) {
    std::sort(numbers.begin(), numbers.end());
    return numbers.at(numbers.size() / 2);
}

unsigned long flagsOf(const std::string &times) {
    if (times == "relatime") {
        return MS_RELATIME;
    }
    if (times == "lazytime") {
        return MS_RELATIME | MS_LAZYTIME;
    }
    if (times == "noatime") {
        return MS_NOATIME;
    }
    throw std::runtime_error("unknown: " + times);
}

void add(const FileSystem &system, unsigned long flags) {
    const std::string disks = std::string(dataDisk) + " " + logDisk;
    MappedDevice logged("logged", {{system.sectors, "log-writes", disks}});
    const Mounted mounted(system, logged.path(), flags);
    store_model::Settings settings;
    settings.type = store_model::Type::linked;
    settings.whenFull = store_model::WhenFull::wrap;
    settings.size = logSize;
    std::string difference;
    store_model::Pair pair = store_model::startPair(logPath, settings, difference);
    waitBeforeWrites(moreThanATick);
    for (std::uint32_t count = 0; count < logSize + wraps; ++count) {
        markMoment(logged, count);
        store_model::tick(pair);
        difference += store_model::step(pair, {store_model::Kind::add, 3});
    }
    markMoment(logged, logSize + wraps);
    memory_disk::exitProcess();
    if (!difference.empty()) {
        throw std::runtime_error(difference);
    }
}

void print(const char *what, const Counts &counts, std::size_t from, std::size_t to) {
    const auto part = [&](const std::vector<std::size_t> &all) {
        return median({all.begin() + static_cast<std::ptrdiff_t>(from),
                       all.begin() + static_cast<std::ptrdiff_t>(to)});
    };
    std::printf("%s: writes %zu KiB %zu flushes %zu forced %zu; ", what, part(counts.writes),
                part(counts.kibibytes) / 1024, part(counts.flushes), part(counts.forced));
}

} // namespace

void countBlocks(const FileSystem &system, const std::string &times) {
    makeFileSystem(system, dataDisk);
    add(system, flagsOf(times));
    const Disk logged(logDisk);
    BlockLog log(
        [&](std::uint64_t offset, std::uint64_t size) { return logged.read(offset, size); });
    Counts counts;
    std::size_t marks = 0;
    for (LoggedEvent event; log.next(event);) {
        if (event.kind == LoggedEvent::Kind::mark) {
            counts.begin();
            ++marks;
        } else if (marks > 0) {
            counts.count(event);
        }
    }
    print("growing", counts, 5, logSize);
    print("wrapping", counts, logSize + 5, logSize + wraps);
    std::printf("\n");
}

} // namespace block_test
