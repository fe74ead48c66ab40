// Goal: the four lookups, on every row of the tables and on every rule of theirs: which types a key
// admits, what a number may look like, which buffers get a name, a time, a number or asterisks.

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/constants/tables.h"
#include "tests/support/test_mainlib.h"
#include "zuSaHpi_util.h"

namespace {

constexpr std::uint32_t notFound = 0xFFFFFFFF;

struct Found {
    std::int64_t value;
    std::uint32_t type;
    bool operator==(const Found &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Found &found) {
    return out << found.value << " of type " << found.type;
}

Found valueOf(const char *text, std::uint32_t typeId = 0) {
    Found found{.value = 0, .type = 0x5A5A5A5A};
    found.value = zuSaHpiStr2Val(text, typeId, &found.type);
    return found;
}

std::string nameOf(std::int64_t value, std::uint32_t typeId, std::uint32_t size = 50) {
    std::vector<char> buffer(size + 1, '#');
    EXPECT_EQ(zuSaHpiVal2Str(value, buffer.data(), size, typeId), buffer.data());
    EXPECT_EQ(buffer[size], '#');
    return buffer.data();
}

TEST(NameToValue, EveryRow) {
    for (const ExpectedConstant &row : expectedConstants()) {
        const Found expected{.value = row.value, .type = row.type};
        const char *name = row.name.c_str();
        EXPECT_EQ(valueOf(name), expected) << name;
        EXPECT_EQ(valueOf(name, row.type), expected) << name;
        EXPECT_EQ(valueOf(name, row.type & 0xFFFFFF), expected) << name;
        EXPECT_EQ(valueOf(name, (row.type & 0xFFFFFF) % 59 + 1), (Found{0, notFound})) << name;
    }
}

TEST(NameToValue, NumbersInEveryBase) {
    EXPECT_EQ(valueOf("0x1A"), (Found{26, 0}));
    EXPECT_EQ(valueOf("0X1a"), (Found{26, 0}));
    EXPECT_EQ(valueOf("017"), (Found{15, 0}));
    EXPECT_EQ(valueOf("0"), (Found{0, 0}));
    EXPECT_EQ(valueOf("42", 31), (Found{42, 0}));
    EXPECT_EQ(valueOf("-5"), (Found{-5, 0}));
    EXPECT_EQ(valueOf("-0x10"), (Found{-16, 0}));
    EXPECT_EQ(valueOf("-010"), (Found{-8, 0}));
}

TEST(NameToValue, NumbersAreLimitedToThirtyTwoBits) {
    EXPECT_EQ(valueOf("4294967295"), (Found{4294967295, 0}));
    EXPECT_EQ(valueOf("4294967296"), (Found{4294967295, 0}));
    EXPECT_EQ(valueOf("0x123456789ABCDEF0123"), (Found{4294967295, 0}));
    EXPECT_EQ(valueOf("18446744073709551617"), (Found{4294967295, 0}));
    EXPECT_EQ(valueOf("-2147483648"), (Found{-2147483648LL, 0}));
    EXPECT_EQ(valueOf("-2147483649"), (Found{-2147483648LL, 0}));
    EXPECT_EQ(valueOf("-99999999999999999999999"), (Found{-2147483648LL, 0}));
    EXPECT_EQ(valueOf("4294967296x"), (Found{4294967295, notFound}));
}

TEST(NameToValue, WhatIsLeftOverIsMarked) {
    EXPECT_EQ(valueOf("12abc"), (Found{12, notFound}));
    EXPECT_EQ(valueOf("12 "), (Found{12, notFound}));
    EXPECT_EQ(valueOf("0x"), (Found{0, notFound}));
    EXPECT_EQ(valueOf("0b11"), (Found{0, notFound}));
    EXPECT_EQ(valueOf("08"), (Found{0, notFound}));
    EXPECT_EQ(valueOf("-5-"), (Found{-5, notFound}));
    EXPECT_EQ(valueOf("-"), (Found{0, notFound}));
    EXPECT_EQ(valueOf("- 5"), (Found{0, notFound}));
    EXPECT_EQ(valueOf("--5"), (Found{0, notFound}));
    EXPECT_EQ(valueOf("-SAHPI_OK"), (Found{0, notFound}));
}

TEST(NameToValue, ANameStandsExactly) {
    EXPECT_EQ(valueOf("SAHPI_OK"), (Found{4, 16}));
    for (const char *text : {"", " 5", "+5", " SAHPI_OK", "SAHPI_OK ", "sahpi_ok", "SAHPI_O",
                             "SAHPI_NO_SUCH_NAME", "(null)"}) {
        EXPECT_EQ(valueOf(text), (Found{0, notFound})) << text;
    }
}

TEST(NameToValue, APlainTypeAdmitsEverySubType) {
    const char *name = "SAHPI_ES_UPPER_MAJOR";
    EXPECT_EQ(valueOf(name, 21), (Found{0x10, 0x01000015}));
    EXPECT_EQ(valueOf(name, 0x01000015), (Found{0x10, 0x01000015}));
    EXPECT_EQ(valueOf(name, 0x02000015), (Found{0, notFound}));
    EXPECT_EQ(valueOf("SAHPI_ES_STATE_04", 0x01000015), (Found{0, notFound}));
    EXPECT_EQ(valueOf("SAHPI_OK", 0x01000000), (Found{0, notFound}));
}

TEST(ValueToName, EveryRow) {
    const auto rows = expectedConstants();
    for (const ExpectedConstant &row : rows) {
        const auto first = std::find_if(rows.begin(), rows.end(), [&](const auto &other) {
            return other.type == row.type && other.value == row.value;
        });
        EXPECT_EQ(nameOf(row.value, row.type), first->name) << row.name;
    }
}

TEST(ValueToName, OnlyOneValueHasSeveralNames) {
    EXPECT_EQ(nameOf(0x100, 55), "SAHPI_STANDARD_SENSOR_MIN");
    for (const ExpectedConstant &row : expectedConstants()) {
        if (row.type != 55 || row.value != 0x100) {
            EXPECT_EQ(nameOf(row.value, row.type), row.name);
        }
    }
}

TEST(ValueToName, TheTypeKeyIsNotMasked) {
    EXPECT_EQ(nameOf(0x10, 21), "SAHPI_ES_STATE_04");
    EXPECT_EQ(nameOf(0x10, 0x01000015), "SAHPI_ES_UPPER_MAJOR");
    EXPECT_EQ(nameOf(0x10, 0x02000015), "16");
    EXPECT_EQ(nameOf(0x10, 0x7E000015), "16");
}

TEST(ValueToName, ComparesAllSixtyFourBits) {
    EXPECT_EQ(nameOf(4294967295, 53), "SAHPI_UNSPECIFIED_RESOURCE_ID");
    EXPECT_EQ(nameOf(-1, 53), "-1");
    EXPECT_EQ(nameOf(0x100000001LL, 31), "4294967297");
    EXPECT_EQ(nameOf(0x80000000, 4), "SAHPI_HS_CAPABILITY_AUTOEXTRACT_READ_ONLY");
    EXPECT_EQ(nameOf(-0x80000000LL, 4), "-2147483648");
}

TEST(ValueToName, UnknownValuesAndTypesGiveTheNumber) {
    EXPECT_EQ(nameOf(3, 21), "3");
    EXPECT_EQ(nameOf(200, 31), "200");
    EXPECT_EQ(nameOf(1, 60), "1");
}

TEST(ValueToName, TypeZeroGivesTheNumber) {
    EXPECT_EQ(nameOf(0, 0), "0");
    EXPECT_EQ(nameOf(24377, 0), "24377");
}

TEST(ValueToName, ANameThatDoesNotFitGivesTheNumber) {
    EXPECT_EQ(nameOf(1, 31, 18), "SAHPI_TEMPERATURE");
    EXPECT_EQ(nameOf(1, 31, 17), "1");
    EXPECT_EQ(nameOf(0xC0, 31, 10), "192");
    EXPECT_EQ(nameOf(0xC0, 31, 3), "**");
    EXPECT_EQ(nameOf(0xC0, 31, 1), "");
}

TEST(ValueToName, NothingIsWrittenIntoNoBytes) {
    char untouched = '#';
    EXPECT_EQ(zuSaHpiVal2Str(4, &untouched, 0, 16), &untouched);
    EXPECT_EQ(untouched, '#');
}

TEST(ValueToName, TimesAreShownAsTimesGivenRoom) {
    EXPECT_EQ(nameOf(1, 42, 31), "time(1,0)");
    EXPECT_EQ(nameOf(1, 42, 30), "1");
    EXPECT_EQ(nameOf(0, 42), "time(0,0)");
    EXPECT_EQ(nameOf(-1, 42), "time(-1,0)");
    EXPECT_EQ(nameOf(INT64_MIN, 42), "SAHPI_TIME_UNSPECIFIED");
    EXPECT_EQ(nameOf(0x0C00000000000000, 42), "SAHPI_TIME_MAX_RELATIVE");
    EXPECT_EQ(nameOf(INT64_MIN, 42, 20), std::string(19, '*'));
}

TEST(ValueToName, TimeoutsAreShownAsTimesGivenRoom) {
    EXPECT_EQ(nameOf(-1, 37), "SAHPI_TIMEOUT_BLOCK");
    EXPECT_EQ(nameOf(0, 37), "SAHPI_TIMEOUT_IMMEDIATE");
    EXPECT_EQ(nameOf(5'000'000'000, 37, 31), "time(5000000000,0)");
    EXPECT_EQ(nameOf(5'000'000'000, 37, 30), "5000000000");
    EXPECT_EQ(nameOf(5'000'000'000, 0, 50), "5000000000");
}

TEST(TypeNames, EveryTypeIsFound) {
    for (const ExpectedType &type : expectedTypes()) {
        EXPECT_EQ(zuSaHpiGetTypeId(type.name.c_str()), type.id);
    }
    EXPECT_EQ(zuSaHpiGetTypeId("SaHpiWatchdogActionT"), 59U);
}

TEST(TypeNames, AnythingElseIsUnknown) {
    for (const char *name : {"sahpiwatchdogactiont", "SaHpiWatchdogAction", "", " SaErrorT"}) {
        EXPECT_EQ(zuSaHpiGetTypeId(name), 0U) << name;
    }
}

TEST(SubTypes, OnlyCategoriesWithStatesHaveOne) {
    for (std::uint32_t category = 0; category <= 11; ++category) {
        EXPECT_EQ(zuSaHpiCheckSubType(21, category), 1) << category;
    }
    for (const std::uint32_t category : {12U, 0x7EU, 0x7FU, 0xFFU}) {
        EXPECT_EQ(zuSaHpiCheckSubType(21, category), 0) << category;
    }
    EXPECT_EQ(zuSaHpiCheckSubType(31, 0), 1);
    EXPECT_EQ(zuSaHpiCheckSubType(31, 1), 0);
    EXPECT_EQ(zuSaHpiCheckSubType(0, 0), 0);
}

} // namespace
