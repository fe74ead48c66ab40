// Pieces of a line, appended to a buffer of fixed size. A piece that does not fit is cut and leaves
// the buffer full: later pieces add nothing.
#pragma once

#include <cstdint>

namespace zusahpi::config {

// Invariant: used <= size, and the text is NUL-terminated unless size is 0.
struct LineText {
    char *buffer;
    std::uint32_t size;
    std::uint32_t used; // equal to size when full
};

[[nodiscard]] LineText emptyText(char *buffer, std::uint32_t size);

void append(LineText &text, const char *format, ...) __attribute__((format(printf, 2, 3)));

} // namespace zusahpi::config
