// Scratch folders and whole files for tests.

#include "tests/support/files.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <unistd.h>

namespace test_support {

ScratchFolder::ScratchFolder()
    : path_((std::filesystem::temp_directory_path() / "zutest.XXXXXX").string()), owner_(getpid()) {
    if (mkdtemp(path_.data()) == nullptr) {
        throw std::runtime_error("cannot make a scratch folder");
    }
}

ScratchFolder::~ScratchFolder() {
    if (getpid() == owner_) {
        std::error_code ignored; // a leftover in the system's scratch folder harms no test
        std::filesystem::remove_all(path_, ignored);
    }
}

std::string ScratchFolder::file(std::string_view name) const {
    return path_ + "/" + std::string(name);
}

bool exists(const std::string &path) {
    return access(path.c_str(), F_OK) == 0;
}

std::string readFile(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot open " + path);
    }
    std::string contents;
    std::array<char, 16384> buffer{};
    while (file.read(buffer.data(), buffer.size()) || file.gcount() > 0) {
        contents.append(buffer.data(), static_cast<std::size_t>(file.gcount()));
    }
    return contents;
}

void writeFile(const std::string &path, std::string_view contents) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(contents.data(), static_cast<std::streamsize>(contents.size()));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}

} // namespace test_support
