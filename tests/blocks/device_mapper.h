// Devices of the kernel's device mapper, made by its own calls: a program of its own for each would
// take longer than all else that a test does with the device.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace block_test {

struct Segment {
    std::uint64_t sectors;
    std::string target; // such as "linear"
    std::string arguments;
};

// A device that is there from construction on and gone after destruction. Failures throw
// std::runtime_error, but in the destructor, which prints them.
class MappedDevice {
  public:
    MappedDevice(const std::string &name, const std::vector<Segment> &table);
    ~MappedDevice();
    MappedDevice(const MappedDevice &) = delete;
    MappedDevice &operator=(const MappedDevice &) = delete;

    // Such as "/dev/dm-0".
    [[nodiscard]] const std::string &path() const {
        return path_;
    }
    // Puts another table in place of the one that is there, in the middle of whatever goes on.
    void load(const std::vector<Segment> &table);
    // Tells the device's only target something.
    void message(const std::string &text);

  private:
    std::string name_;
    std::string path_;
};

} // namespace block_test
