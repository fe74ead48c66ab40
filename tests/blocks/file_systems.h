// The file systems that are tried, each on a device of its own.
#pragma once

#include <cstdint>
#include <string>

namespace block_test {

struct FileSystem {
    std::string name;
    std::string type; // as mount() takes it
    std::string make; // the command; the device's path follows
    std::uint64_t sectors = 0;
    bool needsRepair = false; // after a power failure, before it is mounted
};

// Throws std::runtime_error for an unknown name.
const FileSystem &fileSystemNamed(const std::string &name);

inline constexpr char mountPoint[] = "/mnt/fs";

// These throw std::runtime_error on failure.
void makeFileSystem(const FileSystem &system, const std::string &device);
void repair(const FileSystem &system, const std::string &device);
void repairAfterErrors(const FileSystem &system, const std::string &device);

// A mounted file system, until the end of its life.
class Mounted {
  public:
    Mounted(const FileSystem &system, const std::string &device, unsigned long flags = 0);
    ~Mounted();
    Mounted(const Mounted &) = delete;
    Mounted &operator=(const Mounted &) = delete;
};

} // namespace block_test
