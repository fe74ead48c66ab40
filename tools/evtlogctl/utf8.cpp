// Recognises UTF-8.
#include "tools/evtlogctl/utf8.h"

#include <cstddef>
#include <cstdint>

namespace zusahpi::evtlogctl {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

// How long the character at the begin of `bytes` is; 0 when there is none.
[[nodiscard]] std::size_t characterLength(std::string_view bytes) {
    const auto at = [bytes](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
    const std::uint8_t first = at(0);
    if (first < 0x80) {
        return 1;
    }
    if (first < 0xC2 || first > 0xF4) {
        return 0;
    }
    const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (bytes.size() < length) {
        return 0;
    }
    // What the second byte must be keeps out overlong forms, surrogates and too high characters.
    const std::uint8_t lowest = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const std::uint8_t highest = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    if (at(1) < lowest || at(1) > highest) {
        return 0;
    }
    for (std::size_t i = 2; i < length; ++i) {
        if (at(i) < 0x80 || at(i) > 0xBF) {
            return 0;
        }
    }
    return length;
}

} // namespace

std::string validUtf8(std::string_view bytes) {
    std::string text;
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes);
        if (length == 0) {
            text += replacement;
            bytes.remove_prefix(1);
        } else {
            text += bytes.substr(0, length);
            bytes.remove_prefix(length);
        }
    }
    return text;
}

} // namespace zusahpi::evtlogctl
