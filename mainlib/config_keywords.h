// The keywords of the configuration file: their texts, where they stand and what values they take.
// Every fact about a keyword is in the one table of config_keywords.cpp.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "zuSaHpi_util.h"

namespace zusahpi::mainlib {

enum class ValueKind : std::uint8_t {
    word,   // one of `words`, or the number of one
    number, // from `lowest` to `highest`
    text,
};

struct Word {
    const char *text;
    std::uint32_t value;
};

struct Keyword {
    const char *text;
    std::uint32_t code;
    std::uint32_t superior; // code of the keyword that it stands under, 0 for the top level
    ValueKind kind;
    std::span<const Word> words = {};
    std::uint32_t lowest = 0;
    std::uint32_t highest = 0;
};

// Null when there is none. Texts match in upper and lower case.
[[nodiscard]] const Keyword *findKeyword(std::string_view text);
[[nodiscard]] const Keyword *findKeyword(std::uint32_t code);

[[nodiscard]] bool hasSubordinates(const Keyword &keyword);

// The value of a text for a keyword of kind word or number, nothing when it takes no such value.
[[nodiscard]] std::optional<std::uint32_t> valueOf(const Keyword &keyword, std::string_view text);

// What such a keyword takes, for a message: "drop, wrap or writelast".
[[nodiscard]] std::string expectation(const Keyword &keyword);

} // namespace zusahpi::mainlib
