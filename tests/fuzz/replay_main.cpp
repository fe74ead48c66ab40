// Runs a target on the files of a folder, and on an empty input: every input that was ever worth
// keeping is thus a test, with every compiler and on every ABI.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

using Contents = std::vector<std::uint8_t>;

// Exactly as long as the file, so that the sanitizers see any access past it.
Contents contentsOf(const std::filesystem::path &file) {
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream),
                                  std::istreambuf_iterator<char>()};
    return {bytes.begin(), bytes.end()};
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    std::vector<std::filesystem::path> files;
    for (const auto &file : std::filesystem::directory_iterator(argv[1])) {
        files.push_back(file.path());
    }
    std::sort(files.begin(), files.end());
    for (const auto &file : files) {
        std::printf("%s\n", file.filename().c_str());
        std::fflush(stdout); // the name must be out when the input ends the process
        const Contents contents = contentsOf(file);
        (void)LLVMFuzzerTestOneInput(contents.data(), contents.size()); // it is always 0
    }
    (void)LLVMFuzzerTestOneInput(nullptr, 0);
    std::printf("%zu inputs and the empty one\n", files.size());
    return files.empty() ? 1 : 0;
}
