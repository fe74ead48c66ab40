// Bounded appending.

#include "config/line_text.h"

#include <cstdarg>
#include <cstdio>

namespace zusahpi::config {

LineText emptyText(char *buffer, std::uint32_t size) {
    if (size > 0) {
        buffer[0] = '\0';
    }
    return {.buffer = buffer, .size = size, .used = 0};
}

// A printf of its own: the compiler checks the arguments against the format.
// NOLINTNEXTLINE(cert-dcl50-cpp)
void append(LineText &text, const char *format, ...) {
    const std::uint32_t room = text.size - text.used;
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(text.buffer + text.used, room, format, arguments);
    va_end(arguments);
    const bool isCut = static_cast<std::uint32_t>(length) >= room;
    text.used = isCut ? text.size : text.used + static_cast<std::uint32_t>(length);
}

} // namespace zusahpi::config
