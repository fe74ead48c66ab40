// Making, repairing and mounting file systems.

#include "tests/blocks/file_systems.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include <sys/mount.h>
#include <sys/wait.h>

namespace block_test {
namespace {

constexpr std::uint64_t mebibyte = 2048; // in sectors

// Each as small as it can be made, so that little has to be copied and repaired.
const std::array<FileSystem, 4> &fileSystems() {
    static const std::array<FileSystem, 4> all{{
        {"ext4", "ext4", "mkfs.ext4 -q -F -b 4096 -N 64", 64 * mebibyte, false},
        {"ext4-nojournal", "ext4", "mkfs.ext4 -q -F -b 4096 -N 64 -O ^has_journal", 64 * mebibyte,
         true},
        {"xfs", "xfs", "mkfs.xfs -q -f -d size=300m", 300 * mebibyte, false},
        {"btrfs", "btrfs", "mkfs.btrfs -q -f -b 134217728", 128 * mebibyte, false},
    }};
    return all;
}

int statusOf(const std::string &command) {
    const int status = std::system((command + " >/dev/null 2>&1").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

const FileSystem &fileSystemNamed(const std::string &name) {
    for (const FileSystem &each : fileSystems()) {
        if (each.name == name) {
            return each;
        }
    }
    throw std::runtime_error("no file system " + name);
}

void makeFileSystem(const FileSystem &system, const std::string &device) {
    std::string command = system.make + " " + device;
    if (system.type == "ext4") {
        command += " " + std::to_string(system.sectors / 2) + "k";
    }
    if (statusOf(command) != 0) {
        throw std::runtime_error("failed: " + command);
    }
}

void repair(const FileSystem &system, const std::string &device) {
    if (system.needsRepair) {
        repairAfterErrors(system, device);
    }
}

// The others are content with a mount.
void repairAfterErrors(const FileSystem &system, const std::string &device) {
    constexpr int corrected = 1;
    const int status = system.type == "ext4" ? statusOf("e2fsck -fy " + device) : 0;
    if (status < 0 || status > corrected) {
        throw std::runtime_error("e2fsck ends with status " + std::to_string(status));
    }
}

Mounted::Mounted(const FileSystem &system, const std::string &device, unsigned long flags) {
    if (mount(device.c_str(), mountPoint, system.type.c_str(), flags, nullptr) != 0) {
        throw std::runtime_error("mount of " + system.name + ": " + std::strerror(errno));
    }
}

Mounted::~Mounted() {
    if (umount(mountPoint) != 0) {
        std::perror("umount");
    }
}

} // namespace block_test
