// Decimal text of 64-bit numbers. The magnitude is taken unsigned, so that the lowest number needs
// no case of its own.

#include "constants/decimal.h"

#include <algorithm>
#include <cstring>

namespace zusahpi::constants {

void int64ToDecimal(SaHpiInt64T value, char *buffer, std::uint32_t size) {
    if (size == 0) {
        return;
    }
    char text[sizeof "-9223372036854775808"];
    char *const end = text + sizeof text;
    char *begin = end;
    auto magnitude = static_cast<SaHpiUint64T>(value);
    if (value < 0) {
        magnitude = 0 - magnitude;
    }
    *--begin = '\0';
    do {
        *--begin = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    if (value < 0) {
        *--begin = '-';
    }
    const auto bytes = static_cast<std::size_t>(end - begin);
    if (bytes > size) {
        std::fill_n(buffer, size - 1, '*');
        buffer[size - 1] = '\0';
        return;
    }
    std::memcpy(buffer, begin, bytes);
}

} // namespace zusahpi::constants
