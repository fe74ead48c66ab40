// Any name, type and value asked of the registry of constants.
//
// The input: a type key of four bytes, a value of eight, the size of a buffer, a name.

#include "tests/fuzz/harness.h"

namespace {

using fuzz::Bytes;

constexpr std::uint32_t notFound = 0xFFFFFFFF;

[[nodiscard]] bool isConstant(const char *name, SaHpiInt64T value, std::uint32_t type) {
    for (const zuSaHpiConstantT *row = zuSaHpiConstants; row->name != nullptr; ++row) {
        if (row->type == type && row->value == value && std::strcmp(row->name, name) == 0) {
            return true;
        }
    }
    return false;
}

[[nodiscard]] bool beginsNumber(const char *text) {
    return (*text >= '0' && *text <= '9') || *text == '-';
}

void lookUpName(const char *name, std::uint32_t typeId) {
    std::uint32_t found = 1;
    const SaHpiInt64T value = zuSaHpiStr2Val(name, typeId, &found);
    if (beginsNumber(name)) {
        fuzz::require(found == 0 || found == notFound, "a number has no type");
        fuzz::require(value >= -0x80000000LL && value <= 0xFFFFFFFFLL, "a number has 32 bits");
    } else if (found == notFound) {
        fuzz::require(value == 0, "an unknown name has the value 0");
    } else {
        fuzz::require(isConstant(name, value, found), "a known name is a constant of its type");
    }
    fuzz::require(zuSaHpiGetTypeId(name) <= ZUSAHPI_TYPES, "a type's id is one, or 0");
}

void lookUpValue(SaHpiInt64T value, std::uint32_t size, std::uint32_t typeId) {
    const fuzz::Memory<char> buffer = fuzz::zeros<char>(size);
    if (size > 0) {
        std::memset(buffer.get(), 'x', size);
    }
    const char *const name = zuSaHpiVal2Str(value, buffer.get(), size, typeId);
    fuzz::require(name == buffer.get(), "the text is in the caller's buffer");
    fuzz::require(size == 0 || strnlen(name, size) < size, "the text ends in its buffer");
    if (size > 0 && *name == 'S') {
        fuzz::require(isConstant(name, value, typeId), "a value's name is that of a constant");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    Bytes input(data, size);
    const auto typeId = fuzz::takeValue<std::uint32_t>(input);
    const auto value = fuzz::takeValue<SaHpiInt64T>(input);
    const std::uint32_t bufferSize = fuzz::takeByte(input);
    lookUpValue(value, bufferSize, typeId);
    const int known = zuSaHpiCheckSubType(typeId & 0xFFFFFFU, typeId >> 24U);
    fuzz::require(known == 0 || known == 1, "a sub-type is known or not");
    lookUpName(fuzz::textOf(input).get(), typeId);
    return 0;
}
