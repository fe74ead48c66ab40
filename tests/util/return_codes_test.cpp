// Goal: each return code has its name, and every other number its text, with and without a buffer.

#include <array>
#include <cstring>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "zuSaHpi_util.h"

namespace {

constexpr std::array codeNames = {
    "SA_ERR_HPI_ERROR",
    "SA_ERR_HPI_UNSUPPORTED_API",
    "SA_ERR_HPI_BUSY",
    "SA_ERR_HPI_INTERNAL_ERROR",
    "SA_ERR_HPI_INVALID_CMD",
    "SA_ERR_HPI_TIMEOUT",
    "SA_ERR_HPI_OUT_OF_SPACE",
    "SA_ERR_HPI_OUT_OF_MEMORY",
    "SA_ERR_HPI_INVALID_PARAMS",
    "SA_ERR_HPI_INVALID_DATA",
    "SA_ERR_HPI_NOT_PRESENT",
    "SA_ERR_HPI_NO_RESPONSE",
    "SA_ERR_HPI_DUPLICATE",
    "SA_ERR_HPI_INVALID_SESSION",
    "SA_ERR_HPI_INVALID_DOMAIN",
    "SA_ERR_HPI_INVALID_RESOURCE",
    "SA_ERR_HPI_INVALID_REQUEST",
    "SA_ERR_HPI_ENTITY_NOT_PRESENT",
    "SA_ERR_HPI_READ_ONLY",
    "SA_ERR_HPI_CAPABILITY",
    "SA_ERR_HPI_UNKNOWN",
};

TEST(ReturnCodes, NamesEveryCodeWithoutTouchingTheBuffer) {
    ASSERT_EQ(codeNames.size(), 21U);
    std::array<char, ZUSAHPI_RETURN_CODE_SIZE> buffer{};
    for (std::size_t i = 0; i < codeNames.size(); ++i) {
        const SaErrorT code = -1001 - static_cast<SaErrorT>(i);
        EXPECT_STREQ(zuSaHpiReturnCode(code, nullptr), codeNames[i]);
        EXPECT_STREQ(zuSaHpiReturnCode(code, buffer.data()), codeNames[i]);
    }
    EXPECT_STREQ(zuSaHpiReturnCode(0, nullptr), "SA_OK");
    EXPECT_STREQ(zuSaHpiReturnCode(0, buffer.data()), "SA_OK");
    EXPECT_EQ(buffer[0], '\0');
}

TEST(ReturnCodes, WritesAnUnknownCodeIntoTheBuffer) {
    std::array<char, ZUSAHPI_RETURN_CODE_SIZE> buffer{};
    for (const SaErrorT code : {-1022, -1000, -1, 1, std::numeric_limits<SaErrorT>::max()}) {
        EXPECT_EQ(zuSaHpiReturnCode(code, buffer.data()), buffer.data());
        EXPECT_EQ(std::string(buffer.data()), "Undefined Return Code: " + std::to_string(code));
        EXPECT_STREQ(zuSaHpiReturnCode(code, nullptr), "Undefined Return Code");
    }
}

TEST(ReturnCodes, TheLongestTextFillsTheBuffer) {
    std::array<char, ZUSAHPI_RETURN_CODE_SIZE> buffer{};
    zuSaHpiReturnCode(std::numeric_limits<SaErrorT>::min(), buffer.data());
    EXPECT_STREQ(buffer.data(), "Undefined Return Code: -2147483648");
    EXPECT_EQ(std::strlen(buffer.data()) + 1, 35U);
}

} // namespace
