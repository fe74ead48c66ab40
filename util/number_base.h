// The base in which a number is written: 0x for hexadecimal, 0 for octal, decimal otherwise. C's
// own base 0 is not used, because since C23 it may take binary numbers, too: what a number means
// must not depend on the C library that the system has.
#pragma once

namespace zusahpi {

// For the text of a number as strtoll takes it, with blanks and a sign in front.
[[nodiscard]] constexpr int baseOf(const char *text) {
    while (*text == ' ' || (*text >= '\t' && *text <= '\r')) {
        ++text;
    }
    if (*text == '+' || *text == '-') {
        ++text;
    }
    if (*text != '0') {
        return 10;
    }
    return text[1] == 'x' || text[1] == 'X' ? 16 : 8;
}

} // namespace zusahpi
