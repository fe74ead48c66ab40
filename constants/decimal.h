// Decimal text of 64-bit numbers, in the manner of the registry: whole or not at all.
#pragma once

#include <cstdint>

#include "hpi/SaHpi.h"

namespace zusahpi::constants {

// Writes the signed decimal text of the value and a NUL into the buffer of `size` bytes. Where it
// does not fit the buffer is filled with asterisks, so that a number is never shown cut short.
// Writes nothing into a buffer of 0 bytes.
void int64ToDecimal(SaHpiInt64T value, char *buffer, std::uint32_t size);

} // namespace zusahpi::constants
