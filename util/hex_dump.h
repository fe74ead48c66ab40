// Hex dumps, a line at a time: the one layout and the one rule for folding repeated lines that
// every dump follows, wherever its lines go.
//
// Up to 16 bytes make one line without an offset; more make lines of 16, each begun with its
// offset, the last one padded so that its columns line up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace zusahpi {

inline constexpr std::size_t hexDumpBytesPerLine = 16;

// Longer than any line: an offset of eight digits, colon and blank; the digits and blanks of four
// groups; the characters between two bars; a NUL.
inline constexpr std::size_t hexDumpLineSize = 80;
static_assert(hexDumpLineSize > (8 + 2) + 4 * (8 + 1) + (1 + 16 + 1));

struct HexDumpLine {
    char text[hexDumpLineSize]; // without a newline
};

// A dump under way. Invariant: position <= data.size(), and foldEnd > position only while the lines
// from position to foldEnd wait to be folded into one.
struct HexDump {
    std::span<const std::byte> data;
    std::size_t position;
    std::size_t foldEnd;
};

[[nodiscard]] HexDump hexDumpOf(const void *data, std::uint32_t length);

// Whether the dump has offsets, as every dump of more than one line has.
[[nodiscard]] bool hexDumpHasOffsets(const HexDump &dump);

// Formats the next line and moves on. Returns false, and leaves the line alone, at the end.
[[nodiscard]] bool nextHexDumpLine(HexDump &dump, HexDumpLine &line);

} // namespace zusahpi
