// The layout of hex dumps and the rule for folding their repeated lines, and the dump that printers
// use.

#include "util/hex_dump.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi {
namespace {

constexpr std::size_t bytesPerGroup = 4;

// Folding compares this many bytes, so a line is folded only when the line after it repeats too,
// and the end of the data is always shown in full.
constexpr std::size_t foldBlock = 2 * hexDumpBytesPerLine;

[[nodiscard]] char characterOf(std::byte byte) {
    const auto code = std::to_integer<unsigned char>(byte);
    return code >= 0x20 && code <= 0x7E ? static_cast<char>(code) : '.';
}

char *putByte(char *out, std::byte byte) {
    constexpr char digits[] = "0123456789abcdef";
    *out++ = digits[std::to_integer<unsigned>(byte >> 4)];
    *out++ = digits[std::to_integer<unsigned>(byte & std::byte{0x0F})];
    return out;
}

char *putBlanks(char *out, std::size_t count) {
    return std::fill_n(out, count, ' ');
}

void formatLine(const HexDump &dump, HexDumpLine &line) {
    const std::size_t left = dump.data.size() - dump.position;
    const auto bytes = dump.data.subspan(dump.position, std::min(left, hexDumpBytesPerLine));
    const bool aligned = hexDumpHasOffsets(dump);
    const std::size_t columns = aligned ? hexDumpBytesPerLine : bytes.size();
    char *out = line.text;
    if (aligned) {
        out += std::snprintf(out, sizeof line.text, "%.4x: ", static_cast<unsigned>(dump.position));
    }
    for (std::size_t i = 0; i < columns; ++i) {
        out = i < bytes.size() ? putByte(out, bytes[i]) : putBlanks(out, 2);
        if ((i + 1) % bytesPerGroup == 0) {
            out = putBlanks(out, 1);
        }
    }
    if (columns < hexDumpBytesPerLine) {
        out = putBlanks(out, 2);
    }
    *out++ = '|';
    out = std::transform(bytes.begin(), bytes.end(), out, characterOf);
    out = putBlanks(out, columns - bytes.size());
    *out++ = '|';
    *out = '\0';
}

void formatFold(const HexDump &dump, HexDumpLine &line) {
    (void)std::snprintf(
        line.text, sizeof line.text, "     %.4x - %.4x   same as above          /                /",
        static_cast<unsigned>(dump.position), static_cast<unsigned>(dump.foldEnd - 1));
}

// Where the lines after the full line at `shown` stop repeating it; the line after it when there is
// nothing to fold. A single repeat is not worth a line of its own.
[[nodiscard]] std::size_t foldEndAfter(std::span<const std::byte> data, std::size_t shown) {
    const std::size_t next = shown + hexDumpBytesPerLine;
    std::size_t end = next;
    while (end + foldBlock <= data.size() &&
           std::memcmp(&data[shown], &data[end], foldBlock) == 0) {
        end += hexDumpBytesPerLine;
    }
    return end > next + hexDumpBytesPerLine ? end : next;
}

} // namespace

HexDump hexDumpOf(const void *data, std::uint32_t length) {
    return {.data = {static_cast<const std::byte *>(data), length}, .position = 0, .foldEnd = 0};
}

bool hexDumpHasOffsets(const HexDump &dump) {
    return dump.data.size() > hexDumpBytesPerLine;
}

bool nextHexDumpLine(HexDump &dump, HexDumpLine &line) {
    if (dump.position == dump.data.size()) {
        return false;
    }
    if (dump.foldEnd > dump.position) {
        formatFold(dump, line);
        dump.position = dump.foldEnd;
        return true;
    }
    formatLine(dump, line);
    const std::size_t left = dump.data.size() - dump.position;
    if (left <= hexDumpBytesPerLine) {
        dump.position = dump.data.size();
        return true;
    }
    dump.foldEnd = foldEndAfter(dump.data, dump.position);
    dump.position += hexDumpBytesPerLine;
    return true;
}

} // namespace zusahpi

int zuSaHpiDprint(zuSaHpiHandleT out, const void *data, uint32_t length, const char *prefix) {
    using namespace zusahpi;
    if (length == 0) {
        return zuSaHpiPrintf(out, "%s<null>\n", prefix);
    }
    HexDump dump = hexDumpOf(data, length);
    HexDumpLine line;
    int result = 0;
    while (nextHexDumpLine(dump, line)) {
        result = zuSaHpiPrintf(out, "%s%s\n", prefix, line.text);
    }
    if (hexDumpHasOffsets(dump)) {
        result = zuSaHpiPrintf(out, "\n");
    }
    return result;
}
