// Records compared as what a file holds of them: every byte counts, padding included.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

namespace zusahpi {

template <typename Record>
[[nodiscard]] bool sameBytes(const Record &a, const Record &b) {
    return std::ranges::equal(std::as_bytes(std::span(&a, 1)), std::as_bytes(std::span(&b, 1)));
}

} // namespace zusahpi
