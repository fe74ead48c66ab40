// The guest's disks, in its memory, and copying between them around the page cache.
#pragma once

#include <cstdint>
#include <string>

namespace block_test {

inline constexpr char dataDisk[] = "/dev/ram0";
inline constexpr char logDisk[] = "/dev/ram1";
inline constexpr char replayDisk[] = "/dev/ram2";
inline constexpr char changesDisk[] = "/dev/ram3"; // what a mounted image changes

// Reads and writes whole sectors. Failures throw std::runtime_error.
class Disk {
  public:
    explicit Disk(const std::string &path);
    ~Disk();
    Disk(const Disk &) = delete;
    Disk &operator=(const Disk &) = delete;

    [[nodiscard]] std::string read(std::uint64_t offset, std::uint64_t size) const;
    void write(std::uint64_t offset, std::string_view bytes) const;
    void flush() const;

  private:
    int fd_;
};

// Makes the first `size` bytes of one disk those of the other.
void copyDisk(const Disk &from, const Disk &to, std::uint64_t size);

} // namespace block_test
