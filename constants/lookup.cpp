// The four lookups of the registry. Each walks its table from the first row and takes the first
// match; the row that ends a table never matches. Type key and value are compared before any text.

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "constants/decimal.h"
#include "constants/type_ids.h"
#include "util/number_base.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi {
namespace {

constexpr uint32_t notFound = 0xFFFFFFFF;

[[nodiscard]] bool startsWithDigit(const char *text) {
    return *text >= '0' && *text <= '9';
}

// Numbers are limited to 32 bits on every host, as they are where a long has 32.
[[nodiscard]] SaHpiInt64T unsignedNumber(const char *text, char **rest) {
    constexpr unsigned long long limit = std::numeric_limits<uint32_t>::max();
    return static_cast<SaHpiInt64T>(std::min(std::strtoull(text, rest, baseOf(text)), limit));
}

[[nodiscard]] SaHpiInt64T signedNumber(const char *text, char **rest) {
    constexpr long long lowest = std::numeric_limits<int32_t>::min();
    constexpr long long highest = std::numeric_limits<int32_t>::max();
    return std::clamp(std::strtoll(text, rest, baseOf(text)), lowest, highest);
}

[[nodiscard]] SaHpiInt64T numberOf(const char *text, uint32_t *foundType) {
    char *rest = nullptr;
    const SaHpiInt64T value =
        *text == '-' ? signedNumber(text, &rest) : unsignedNumber(text, &rest);
    *foundType = *rest == '\0' ? 0 : notFound;
    return value;
}

[[nodiscard]] const zuSaHpiConstantT *constantOf(uint32_t type, SaHpiInt64T value) {
    const zuSaHpiConstantT *row = zuSaHpiConstants;
    while (row->name != nullptr && !(row->type == type && row->value == value)) {
        ++row;
    }
    return row->name == nullptr ? nullptr : row;
}

// Times without a name are shown as times, given room for the longest text of one.
[[nodiscard]] bool isShownAsTime(SaHpiInt64T value, uint32_t bufferSize, uint32_t typeId) {
    if (bufferSize < ZUSAHPI_TIME_TEXT_SIZE) {
        return false;
    }
    if (typeId == type_id::time) {
        return value != SAHPI_TIME_UNSPECIFIED && value != SAHPI_TIME_MAX_RELATIVE;
    }
    return typeId == type_id::timeout && value != SAHPI_TIMEOUT_IMMEDIATE &&
           value != SAHPI_TIMEOUT_BLOCK;
}

} // namespace
} // namespace zusahpi

SaHpiInt64T zuSaHpiStr2Val(const char *text, uint32_t typeId, uint32_t *foundType) {
    using namespace zusahpi;
    if (startsWithDigit(text) || *text == '-') {
        return numberOf(text, foundType);
    }
    // A plain type id admits every sub-type of its type.
    const uint32_t mask = (typeId & ~typeIdMask) == 0 ? typeIdMask : ~uint32_t{0};
    for (const zuSaHpiConstantT *row = zuSaHpiConstants; row->name != nullptr; ++row) {
        const bool typeMatches = typeId == 0 || (row->type & mask) == typeId;
        if (typeMatches && std::strcmp(row->name, text) == 0) {
            *foundType = row->type;
            return row->value;
        }
    }
    *foundType = notFound;
    return 0;
}

char *zuSaHpiVal2Str(SaHpiInt64T value, char *buffer, uint32_t bufferSize, uint32_t typeId) {
    using namespace zusahpi;
    if (isShownAsTime(value, bufferSize, typeId)) {
        return zuSaHpiTimeT2String(value, 0, buffer);
    }
    const zuSaHpiConstantT *constant = typeId == 0 ? nullptr : constantOf(typeId, value);
    const std::size_t length = constant == nullptr ? 0 : std::strlen(constant->name);
    if (constant == nullptr || length >= bufferSize) {
        constants::int64ToDecimal(value, buffer, bufferSize);
        return buffer;
    }
    std::memcpy(buffer, constant->name, length + 1);
    return buffer;
}

uint32_t zuSaHpiGetTypeId(const char *typeName) {
    const zuSaHpiTypeT *row = zuSaHpiTypes;
    while (row->name != nullptr && std::strcmp(row->name, typeName) != 0) {
        ++row;
    }
    return row->id;
}

int zuSaHpiCheckSubType(uint32_t typeId, uint32_t subType) {
    const uint32_t key = zusahpi::typeKey(subType, typeId);
    const zuSaHpiConstantT *row = zuSaHpiConstants;
    while (row->name != nullptr && row->type != key) {
        ++row;
    }
    return row->name != nullptr ? 1 : 0;
}
