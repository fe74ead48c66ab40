// Goal: whichever allocation fails while a configuration is read, the result says that there was no
// memory, holds nothing, and nothing of what was read until then is left.
#include <cstdlib>
#include <new>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/files.h"
#include "zuSaHpi_default_mainlib.h"

namespace {

long allocationsLeft = -1; // until one fails; negative: none does
bool oneFailed = false;

} // namespace

// In the place of the standard library's, for all of this program. Inlined, the compiler would take
// them for a mismatched pair.
[[gnu::noinline]] void *operator new(std::size_t size) {
    if (allocationsLeft == 0) {
        oneFailed = true;
        throw std::bad_alloc();
    }
    allocationsLeft -= allocationsLeft > 0 ? 1 : 0;
    void *const memory = std::malloc(size > 0 ? size : 1);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}
[[gnu::noinline]] void *operator new(std::size_t size, const std::nothrow_t &) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}
[[gnu::noinline]] void operator delete(void *memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void *memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

constexpr std::size_t longer = 100; // than any string that needs no memory of its own

// Lets every allocation of `read` fail in turn. Returns how many there are.
template <typename Read>
long failEach(const Read &read) {
    for (long count = 0;; ++count) {
        oneFailed = false;
        allocationsLeft = count;
        zuSaHpiConfigT config = read();
        allocationsLeft = -1;
        if (oneFailed) {
            EXPECT_STREQ(config.error, "out of memory") << count;
            EXPECT_EQ(config.nodes, nullptr);
            EXPECT_EQ(config.storage, nullptr);
        }
        zuSaHpiConfigRelease(&config);
        if (!oneFailed) {
            return count;
        }
    }
}

TEST(ConfigMemory, OfATree) {
    const std::string text = "EventLog=linked { Filename=\"" + std::string(longer, 'f') + "\" }\n";
    const auto read = [&] { return zuSaHpiConfigTextRead("name", text.data(), text.size()); };
    EXPECT_GE(failEach(read), 4);
    zuSaHpiConfigT config = read();
    EXPECT_EQ(config.error, nullptr);
    EXPECT_NE(config.nodes, nullptr);
    zuSaHpiConfigRelease(&config);
}

TEST(ConfigMemory, OfAMistake) {
    const std::string text = std::string(longer, 'w') + "={\n";
    const auto read = [&] { return zuSaHpiConfigTextRead("name", text.data(), text.size()); };
    EXPECT_GE(failEach(read), 4);
    zuSaHpiConfigT config = read();
    ASSERT_NE(config.error, nullptr);
    EXPECT_STRNE(config.error, "out of memory");
    zuSaHpiConfigRelease(&config);
}

TEST(ConfigMemory, OfAFile) {
    const test_support::ScratchFolder folder;
    const std::string path = folder.file("config");
    test_support::writeFile(path, "EventLog=linked { Size=3 }\n");
    EXPECT_GE(failEach([&] { return zuSaHpiConfigFileRead(path.c_str()); }), 4);
}

} // namespace
