// Members of JSON objects.
#include "tools/evtlogctl/json_writer.h"

#include <array>
#include <bit>

#include "tools/evtlogctl/names.h"
#include "tools/evtlogctl/utf8.h"
#include "zuSaHpi_mainlib.h"

namespace zusahpi::evtlogctl {

void putString(JsonWriter &out, std::string_view text) {
    out.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void putKey(JsonWriter &out, std::string_view name, std::string_view suffix) {
    static std::string key; // keeps its room from key to key
    key.assign(name).append(suffix);
    out.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
}

void putNumber(JsonWriter &out, std::string_view name, std::uint64_t value) {
    putKey(out, name);
    out.Uint64(value);
}

void putFlag(JsonWriter &out, std::string_view name, bool value) {
    putKey(out, name);
    out.Bool(value);
}

void putNull(JsonWriter &out, std::string_view name) {
    putKey(out, name);
    out.Null();
}

void putText(JsonWriter &out, std::string_view name, std::string_view text) {
    putKey(out, name);
    putString(out, text);
}

void putForeignText(JsonWriter &out, std::string_view name, std::string_view bytes) {
    putText(out, name, validUtf8(bytes));
}

void putName(JsonWriter &out, std::uint32_t value, std::uint32_t typeKey) {
    if (const auto name = standardName(value, typeKey)) {
        putString(out, *name);
    } else {
        out.Null();
    }
}

void putConstant(JsonWriter &out, std::string_view name, std::uint32_t value,
                 std::uint32_t typeKey) {
    putNumber(out, name, value);
    putKey(out, name, "Name");
    putName(out, value, typeKey);
}

void putMask(JsonWriter &out, std::string_view name, std::uint32_t value, std::uint32_t typeKey) {
    putNumber(out, name, value);
    putKey(out, name, "Names");
    out.StartArray();
    for (std::uint32_t rest = value; rest != 0; rest &= rest - 1) {
        putName(out, 1U << std::countr_zero(rest), typeKey);
    }
    out.EndArray();
}

void putTime(JsonWriter &out, std::string_view name, SaHpiTimeT time) {
    putKey(out, name);
    out.Int64(time);
    putKey(out, name, "Time");
    if (time <= SAHPI_TIME_MAX_RELATIVE) { // as the time that means none does
        out.Null();
        return;
    }
    std::array<char, ZUSAHPI_TIME_TEXT_SIZE> buffer{};
    putString(out, zuSaHpiTimeT2String(time, 0, buffer.data()));
}

void putBytes(JsonWriter &out, std::string_view name, const unsigned char *bytes,
              std::size_t count) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 0x0F];
    }
    putText(out, name, text);
}

} // namespace zusahpi::evtlogctl
