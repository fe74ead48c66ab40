// Records compared as what a file holds of them: every byte counts, padding included.
#pragma once

#include <cstddef>
#include <cstring>
#include <span>

namespace zusahpi {

template <typename Record>
[[nodiscard]] bool sameBytes(const Record &a, const Record &b) {
    const auto first = std::as_bytes(std::span(&a, 1));
    const auto second = std::as_bytes(std::span(&b, 1));
    return std::memcmp(first.data(), second.data(), sizeof(Record)) == 0;
}

} // namespace zusahpi
