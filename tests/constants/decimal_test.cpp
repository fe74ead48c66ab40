// Goal: a number is shown whole or as asterisks, in a buffer of any size, and no byte behind the
// buffer is written.

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "constants/decimal.h"

namespace {

// What a buffer of `size` bytes holds afterwards; a sentinel stands behind it.
std::string decimal(std::int64_t value, std::uint32_t size) {
    std::vector<char> buffer(size + 1, '#');
    zusahpi::constants::int64ToDecimal(value, buffer.data(), size);
    EXPECT_EQ(buffer[size], '#');
    if (size == 0) {
        return {};
    }
    return buffer.data();
}

TEST(Decimal, TheExamples) {
    EXPECT_EQ(decimal(12345, 5), "****");
    EXPECT_EQ(decimal(12345, 6), "12345");
    EXPECT_EQ(decimal(-7, 3), "-7");
    EXPECT_EQ(decimal(-7, 2), "*");
    EXPECT_EQ(decimal(-7, 1), "");
    EXPECT_EQ(decimal(0, 2), "0");
    EXPECT_EQ(decimal(0, 1), "");
    EXPECT_EQ(decimal(std::numeric_limits<std::int64_t>::min(), 20), std::string(19, '*'));
    EXPECT_EQ(decimal(std::numeric_limits<std::int64_t>::min(), 21), "-9223372036854775808");
}

TEST(Decimal, EveryBufferSize) {
    const std::vector<std::int64_t> values = {0,
                                              9,
                                              10,
                                              -1,
                                              -10,
                                              4294967295,
                                              4294967296,
                                              -4294967296,
                                              5'000'000'000,
                                              std::numeric_limits<std::int64_t>::max(),
                                              -std::numeric_limits<std::int64_t>::max(),
                                              std::numeric_limits<std::int64_t>::min()};
    for (const std::int64_t value : values) {
        const std::string whole = std::to_string(value);
        for (std::uint32_t size = 1; size <= 25; ++size) {
            const bool fits = whole.size() < size;
            EXPECT_EQ(decimal(value, size), fits ? whole : std::string(size - 1, '*'))
                << value << " in " << size;
        }
    }
}

TEST(Decimal, NothingIsWrittenIntoNoBytes) {
    char untouched = '#';
    zusahpi::constants::int64ToDecimal(5, &untouched, 0);
    EXPECT_EQ(untouched, '#');
}

} // namespace
