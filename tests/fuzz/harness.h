// What the fuzz targets share: findings, the taking apart of an input, heap copies that are exactly
// as long as their bytes. Nothing here needs the C++ run time, so that the targets of the library
// alone can run under the memory sanitizer, which must see every piece of code.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>

#if defined(__has_feature)
#if __has_feature(memory_sanitizer)
#include <sanitizer/msan_interface.h>
#define ZUSAHPI_FUZZ_MEMORY
#endif
#endif

#include "zuSaHpi_util.h"

namespace fuzz {

using Bytes = std::span<const std::uint8_t>;

// Ends the process, which every run counts as a finding, unless the condition holds.
inline void require(bool holds, const char *what) {
    if (!holds) {
        std::fprintf(stderr, "finding: not so: %s\n", what);
        std::abort();
    }
}

// That every byte was written by somebody. Only the memory sanitizer knows.
inline void requireInitialised([[maybe_unused]] const void *bytes,
                               [[maybe_unused]] std::size_t size) {
#if defined(ZUSAHPI_FUZZ_MEMORY)
    __msan_check_mem_is_initialized(bytes, size);
#endif
}

// Takes up to `count` bytes off the front of the input.
inline Bytes take(Bytes &input, std::size_t count) {
    const std::size_t taken = count < input.size() ? count : input.size();
    const Bytes front = input.first(taken);
    input = input.last(input.size() - taken);
    return front;
}

// Takes a number or a record; what the input does not hold of it is zero.
template <typename Value>
[[nodiscard]] Value takeValue(Bytes &input) {
    Value value{};
    const Bytes bytes = take(input, sizeof value);
    if (!bytes.empty()) {
        std::memcpy(&value, bytes.data(), bytes.size());
    }
    return value;
}

[[nodiscard]] inline std::uint8_t takeByte(Bytes &input) {
    return takeValue<std::uint8_t>(input);
}

struct Free {
    void operator()(void *memory) const {
        std::free(memory);
    }
};

template <typename T>
using Memory = std::unique_ptr<T, Free>;

// Zeros of exactly that size, so that the sanitizers see any access past the end.
template <typename T>
[[nodiscard]] Memory<T> zeros(std::size_t size) {
    void *memory = std::calloc(1, size > 0 ? size : 1);
    require(memory != nullptr, "there is memory");
    return Memory<T>(static_cast<T *>(memory));
}

// The text, and a NUL right behind it.
[[nodiscard]] inline Memory<char> textOf(Bytes text) {
    Memory<char> copy = zeros<char>(text.size() + 1);
    if (!text.empty()) {
        std::memcpy(copy.get(), text.data(), text.size());
    }
    return copy;
}

// The handle under which the harness takes output and drops it.
[[nodiscard]] zuSaHpiHandleT output();

// A file in memory that holds just these bytes, its position at the start. There is one: the next
// call changes it.
[[nodiscard]] int memoryFile(Bytes contents);

} // namespace fuzz
