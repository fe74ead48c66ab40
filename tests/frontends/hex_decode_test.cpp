// Goal: bytes of one and two digits, what separates them, what is refused, and that the decoder
// stays within the text.

#include "frontends/hex_decode.h"

#include <algorithm>
#include <cctype>
#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

struct Decoded {
    int result;
    std::string text; // the memory afterwards
};

// Decodes in memory that ends with the text.
Decoded decode(std::string_view text) {
    const auto memory = std::make_unique<char[]>(text.size());
    text.copy(memory.get(), text.size());
    const int result = zusahpi::frontends::decodeHex({memory.get(), text.size()});
    return {result, {memory.get(), text.size()}};
}

std::string bytesOf(std::string_view text) {
    const Decoded decoded = decode(text);
    EXPECT_GE(decoded.result, 0);
    return decoded.text.substr(0, static_cast<std::size_t>(std::max(decoded.result, 0)));
}

TEST(HexDecode, NothingIsNoBytes) {
    EXPECT_EQ(decode("").result, 0);
    EXPECT_EQ(decode(" \t ").result, 0);
}

TEST(HexDecode, PairsOfDigits) {
    EXPECT_EQ(bytesOf("00ff"), "\x00\xFF"s);
    EXPECT_EQ(bytesOf("0123456789abcdefABCDEF"), "\x01\x23\x45\x67\x89\xAB\xCD\xEF\xAB\xCD\xEF"s);
    EXPECT_EQ(bytesOf("aF"), "\xAF"s);
}

TEST(HexDecode, ABlankOrTheEndFinishesAByte) {
    EXPECT_EQ(bytesOf("1 23"), "\x01\x23"s);
    EXPECT_EQ(bytesOf("1\t23"), "\x01\x23"s);
    EXPECT_EQ(bytesOf("123"), "\x12\x03"s);
    EXPECT_EQ(bytesOf(" 12  34 "), "\x12\x34"s);
    EXPECT_EQ(bytesOf("1 2 3 4"), "\x01\x02\x03\x04"s);
    EXPECT_EQ(bytesOf("f"), "\x0F"s);
}

TEST(HexDecode, AnythingElseIsRefused) {
    for (int code = 0; code < 256; ++code) {
        const char character = static_cast<char>(code);
        const bool known = code < 128 && (std::isxdigit(code) != 0 || code == ' ' || code == '\t');
        EXPECT_EQ(decode("12"s + character).result >= 0, known) << code;
        EXPECT_EQ(decode(std::string(1, character)).result >= 0, known) << code;
    }
}

TEST(HexDecode, WhatFollowsARefusedCharacterStays) {
    const Decoded decoded = decode("12 3g45");
    EXPECT_EQ(decoded.result, -1);
    EXPECT_EQ(decoded.text, "\x12\x03 3g45"s);
    EXPECT_EQ(decode("0g").text, "\0g"s);
}

} // namespace
