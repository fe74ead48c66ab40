// The device mapper's ioctls.

#include "tests/blocks/device_mapper.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include <fcntl.h>
#include <linux/dm-ioctl.h>
#include <sys/ioctl.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace block_test {
namespace {

struct Request {
    dm_ioctl head{};
    char payload[16384]{};
};

int control() {
    static const int fd = open("/dev/mapper/control", O_RDWR | O_CLOEXEC);
    return fd;
}

Request requestFor(const std::string &name) {
    Request request;
    request.head.version[0] = DM_VERSION_MAJOR;
    request.head.data_size = sizeof request;
    request.head.data_start = offsetof(Request, payload);
    name.copy(request.head.name, sizeof request.head.name - 1);
    return request;
}

void send(unsigned long command, Request &request, const char *what) {
    if (ioctl(control(), command, &request) != 0) {
        throw std::runtime_error(std::string(what) + " of " + request.head.name + ": " +
                                 std::strerror(errno));
    }
}

std::uint32_t putSegment(char *to, std::uint64_t start, const Segment &segment) {
    dm_target_spec spec{};
    const std::size_t length = sizeof spec + segment.arguments.size() + 1;
    spec.sector_start = start;
    spec.length = segment.sectors;
    spec.next = static_cast<std::uint32_t>((length + 7) / 8 * 8);
    segment.target.copy(spec.target_type, sizeof spec.target_type - 1);
    std::memcpy(to, &spec, sizeof spec);
    std::memcpy(to + sizeof spec, segment.arguments.c_str(), segment.arguments.size() + 1);
    return spec.next;
}

} // namespace

MappedDevice::MappedDevice(const std::string &name, const std::vector<Segment> &table)
    : name_(name) {
    Request request = requestFor(name_);
    send(DM_DEV_CREATE, request, "creation");
    path_ = "/dev/dm-" + std::to_string(minor(request.head.dev));
    load(table);
}

MappedDevice::~MappedDevice() {
    Request request = requestFor(name_);
    if (ioctl(control(), DM_DEV_REMOVE, &request) != 0) {
        std::perror(("removal of " + name_).c_str());
    }
}

void MappedDevice::load(const std::vector<Segment> &table) {
    Request request = requestFor(name_);
    std::uint64_t start = 0;
    std::size_t place = 0;
    for (const Segment &segment : table) {
        if (place + sizeof(dm_target_spec) + segment.arguments.size() + 8 >
            sizeof request.payload) {
            throw std::runtime_error("a table too long");
        }
        place += putSegment(request.payload + place, start, segment);
        start += segment.sectors;
    }
    request.head.target_count = static_cast<std::uint32_t>(table.size());
    send(DM_TABLE_LOAD, request, "table");
    // Whoever uses the device is not asked to come to rest first: a disk fails in the middle.
    request = requestFor(name_);
    request.head.flags = DM_SUSPEND_FLAG | DM_SKIP_LOCKFS_FLAG;
    send(DM_DEV_SUSPEND, request, "suspension");
    request = requestFor(name_);
    send(DM_DEV_SUSPEND, request, "resumption");
}

void MappedDevice::message(const std::string &text) {
    Request request = requestFor(name_);
    if (sizeof(dm_target_msg) + text.size() + 1 > sizeof request.payload) {
        throw std::runtime_error("a message too long");
    }
    std::memcpy(request.payload + sizeof(dm_target_msg), text.c_str(), text.size() + 1);
    send(DM_TARGET_MSG, request, "message");
}

} // namespace block_test
