// Binary data as an operator types them: pairs of hexadecimal digits, blanks between them at will.
#pragma once

#include <cstdint>
#include <span>

namespace zusahpi::frontends {

// Decodes the characters into bytes, from the start of the same memory. A blank or the end finishes
// a byte of a single digit. Returns the number of bytes; -1 at a character that is neither digit
// nor blank, which leaves the characters from there on as they are.
[[nodiscard]] std::int32_t decodeHex(std::span<char> text);

} // namespace zusahpi::frontends
