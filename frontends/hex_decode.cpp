// The decoder walks the characters once. Invariant: it never writes past the character that it has
// just read, since a byte takes a digit at least.

#include "frontends/hex_decode.h"

namespace zusahpi::frontends {
namespace {

// 0 to 15, or -1.
[[nodiscard]] int digitOf(char character) {
    if (character >= '0' && character <= '9') {
        return character - '0';
    }
    if (character >= 'A' && character <= 'F') {
        return character - 'A' + 10;
    }
    if (character >= 'a' && character <= 'f') {
        return character - 'a' + 10;
    }
    return -1;
}

} // namespace

std::int32_t decodeHex(std::span<char> text) {
    std::size_t bytes = 0;
    bool halfBuilt = false; // the last byte so far has one digit
    for (const char character : text) {
        const int digit = digitOf(character);
        if (digit >= 0) {
            if (halfBuilt) {
                const auto first = static_cast<unsigned char>(text[bytes - 1]);
                text[bytes - 1] = static_cast<char>(first * 16 + digit);
            } else {
                text[bytes++] = static_cast<char>(digit);
            }
            halfBuilt = !halfBuilt;
        } else if (character == ' ' || character == '\t') {
            halfBuilt = false;
        } else {
            return -1;
        }
    }
    return static_cast<std::int32_t>(bytes);
}

} // namespace zusahpi::frontends
