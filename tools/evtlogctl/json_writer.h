// The parts that every JSON output is put together from. Keys are the names of the HPI standard
// where it has any:
//
//   numbers     as they are; beside a constant X stands XName, its name in the standard or null
//   masks       as numbers; beside a mask X stands XNames, the names of its bits
//   times       in nanoseconds; beside a time X stands XTime, as RFC 3339 or null where it is no
//               time of day
//   texts       UTF-8, whatever the log holds
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "hpi/SaHpi.h"

namespace zusahpi::evtlogctl {

using JsonWriter = rapidjson::Writer<rapidjson::StringBuffer>;

// The text must be UTF-8.
void putString(JsonWriter &out, std::string_view text);
void putKey(JsonWriter &out, std::string_view name, std::string_view suffix = {});

// Members: a key and its value.
void putNumber(JsonWriter &out, std::string_view name, std::uint64_t value);
void putFlag(JsonWriter &out, std::string_view name, bool value);
void putNull(JsonWriter &out, std::string_view name);
void putText(JsonWriter &out, std::string_view name, std::string_view text);

// Any bytes; each that belongs to no UTF-8 character becomes U+FFFD.
void putForeignText(JsonWriter &out, std::string_view name, std::string_view bytes);

// The name of a constant alone, or null.
void putName(JsonWriter &out, std::uint32_t value, std::uint32_t typeKey);

void putConstant(JsonWriter &out, std::string_view name, std::uint32_t value,
                 std::uint32_t typeKey);
void putMask(JsonWriter &out, std::string_view name, std::uint32_t value, std::uint32_t typeKey);
void putTime(JsonWriter &out, std::string_view name, SaHpiTimeT time);

// In hexadecimal.
void putBytes(JsonWriter &out, std::string_view name, const unsigned char *bytes,
              std::size_t count);

// An object under `name`, whose members `put` writes.
template <typename Put, typename Part>
void putObject(JsonWriter &out, std::string_view name, Put put, const Part &part) {
    putKey(out, name);
    out.StartObject();
    put(out, part);
    out.EndObject();
}

// An object of its own, whose members `put` writes, as text without a newline.
template <typename Put>
[[nodiscard]] std::string jsonObject(Put put) {
    rapidjson::StringBuffer buffer;
    JsonWriter out(buffer);
    out.StartObject();
    put(out);
    out.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

} // namespace zusahpi::evtlogctl
