// Scratch folders and whole files for tests.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace test_support {

// A folder that is empty at first and removed with all that it holds. Removed only by the process
// that made it, so that a forked child leaves it alone.
class ScratchFolder {
  public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder &) = delete;
    ScratchFolder &operator=(const ScratchFolder &) = delete;

    [[nodiscard]] const std::string &path() const {
        return path_;
    }
    [[nodiscard]] std::string file(std::string_view name) const;

  private:
    std::string path_;
    int owner_;
};

bool exists(const std::string &path);
std::string readFile(const std::string &path);
void writeFile(const std::string &path, std::string_view contents);

} // namespace test_support
