// From a journal to the files that a crash may leave.

#include "tests/crash/crash_image.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace crash_test {
namespace {

using test_support::FileEvent;

constexpr std::size_t mostSectors = 16;

void put(const FileEvent &write, std::size_t from, std::size_t to, std::string &bytes) {
    if (bytes.size() < to) {
        bytes.resize(to, '\0');
    }
    bytes.replace(from, to - from, write.bytes, from - write.offset, to - from);
}

// The sectors of the file in which the write changes something: [first byte, end) of each.
std::vector<std::pair<std::size_t, std::size_t>> sectorsChanged(const std::string &bytes,
                                                                const FileEvent &write) {
    const std::size_t end = write.offset + write.bytes.size();
    std::vector<std::pair<std::size_t, std::size_t>> sectors;
    for (std::size_t start = write.offset; start < end;) {
        const std::size_t next = std::min((start / sectorSize + 1) * sectorSize, end);
        if (next > bytes.size() || bytes.compare(start, next - start, write.bytes,
                                                 start - write.offset, next - start) != 0) {
            sectors.emplace_back(start, next);
        }
        start = next;
    }
    return sectors;
}

void visitTornWrite(const CrashImage &whole, const FileEvent &write,
                    const std::function<void(const CrashImage &)> &visit) {
    const std::size_t end = write.offset + write.bytes.size();
    const auto sectors = sectorsChanged(whole.bytes, write);
    if (sectors.size() > mostSectors) {
        throw std::runtime_error("a write of too many sectors");
    }
    const std::uint32_t all = (std::uint32_t{1} << sectors.size()) - 1;
    for (std::uint32_t arrived = 0; arrived < all; ++arrived) {
        CrashImage image = whole;
        image.torn = true;
        image.arrived = arrived;
        for (std::size_t sector = 0; sector < sectors.size(); ++sector) {
            if ((arrived >> sector & 1) != 0) {
                put(write, sectors[sector].first, sectors[sector].second, image.bytes);
            }
        }
        if (arrived != 0) { // else it is the whole image before it
            visit(image);
        }
        if (image.bytes.size() < end) {
            image.bytes.resize(end, '\0');
            image.longerAlready = true;
            visit(image);
        }
    }
}

} // namespace

std::string nameOf(const CrashImage &image) {
    std::ostringstream name;
    name << "after " << image.whole << " events";
    if (image.torn) {
        name << ", sectors 0x" << std::hex << image.arrived << " of the next";
    }
    if (image.longerAlready) {
        name << ", the file as long as it gets";
    }
    return name.str();
}

void apply(const FileEvent &event, std::string &bytes) {
    if (event.kind == FileEvent::Kind::write) {
        put(event, event.offset, event.offset + event.bytes.size(), bytes);
    } else if (event.kind == FileEvent::Kind::truncate) {
        bytes.resize(event.offset, '\0');
    }
}

void forEachCrashImage(const std::string &before, const std::vector<FileEvent> &events,
                       const std::function<void(const CrashImage &)> &visit) {
    CrashImage image;
    image.bytes = before;
    visit(image);
    for (const FileEvent &event : events) {
        if (event.kind == FileEvent::Kind::write) {
            visitTornWrite(image, event, visit);
        }
        apply(event, image.bytes);
        ++image.whole;
        visit(image);
    }
}

} // namespace crash_test
