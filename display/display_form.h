// The display form of a value: the name of its constant less the prefix of its type, in words.
// "SAHPI_ENT_SYSTEM_BOARD" less "SAHPI_ENT_" is "System Board".
#pragma once

#include <cstddef>
#include <cstdint>

#include "hpi/SaHpi.h"

namespace zusahpi::display {

inline constexpr std::size_t nameSize = 50;

// Invariant: always NUL-terminated, whatever the registry or the main library's time text gave.
struct Name {
    char text[nameSize];
};

// The registry's text for a value of the type, which is no name for a value that it does not know.
[[nodiscard]] Name registryText(SaHpiInt64T value, std::uint32_t typeId);

// Fills `name` with the value's display form and returns true, or with the registry's text
// unchanged and returns false when that text does not begin with the prefix.
bool displayForm(SaHpiInt64T value, std::uint32_t typeId, const char *prefix, Name &name);

// Makes words of a name: each underscore becomes a blank, and every letter but the first of a word
// becomes lower case.
void makeWords(char *name);

} // namespace zusahpi::display
