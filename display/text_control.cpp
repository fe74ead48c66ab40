// The text of a text control: printable text in lines as wide as the control, in a box or without
// one; other data as one dump for each line.
//
// Invariant: every step takes at least one byte of the text. A control without a width is taken to
// be as wide as its text, which then is one line or one dump.

#include <algorithm>
#include <cstddef>
#include <span>

#include "display/text_buffer.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi::display {
namespace {

using Bytes = std::span<const SaHpiUint8T>;

// How the lines are drawn.
struct Box {
    zuSaHpiHandleT out;
    const char *indent;
    std::size_t width;
    bool framed;
};

// A control's line in bytes: 0 only when there is no text.
[[nodiscard]] std::size_t lineSize(Bytes text, SaHpiUint8T maxChars, std::size_t bytesPerChar) {
    return maxChars != 0 ? maxChars * bytesPerChar : text.size();
}

[[nodiscard]] Bytes takeFirst(Bytes &rest, std::size_t count) {
    const Bytes taken = rest.first(std::min(count, rest.size()));
    rest = rest.subspan(taken.size());
    return taken;
}

constexpr std::size_t pieceSize = SAHPI_MAX_TEXT_BUFFER_LENGTH;

// NUL bytes are shown as blanks.
[[nodiscard]] Text shownText(Bytes piece) {
    Text text;
    char *end = std::transform(piece.begin(), piece.end(), text.text, [](SaHpiUint8T byte) {
        return byte == 0 ? ' ' : static_cast<char>(byte);
    });
    *end = '\0';
    return text;
}

// No control is wider than a piece, but a text that is shown as one line may be.
int printLine(const Box &box, Bytes line) {
    const char *border = box.framed ? "|" : "";
    const char *indent = box.indent;
    const char *left = border;
    std::size_t width = box.width;
    while (line.size() > pieceSize) {
        zuSaHpiPrintf(box.out, "%s%s%s", indent, left, shownText(takeFirst(line, pieceSize)).text);
        indent = "";
        left = "";
        width -= pieceSize;
    }
    return zuSaHpiPrintf(box.out, "%s%s%-*s%s\n", indent, left, static_cast<int>(width),
                         shownText(line).text, border);
}

int printBorder(const Box &box) {
    zuSaHpiPrintf(box.out, "%s+", box.indent);
    for (std::size_t i = 0; i < box.width; ++i) {
        zuSaHpiPrintf(box.out, "-");
    }
    return zuSaHpiPrintf(box.out, "+\n");
}

int printLines(const Box &box, Bytes text) {
    int result = 0;
    if (box.framed) {
        printBorder(box);
    }
    while (!text.empty()) {
        result = printLine(box, takeFirst(text, box.width));
    }
    return box.framed ? printBorder(box) : result;
}

int printDumps(zuSaHpiHandleT out, Bytes data, std::size_t bytesPerDump, const char *indent) {
    int result = 0;
    while (!data.empty()) {
        const Bytes part = takeFirst(data, bytesPerDump);
        zuSaHpiDprint(out, part.data(), static_cast<uint32_t>(part.size()), indent);
        result = zuSaHpiPrintf(out, "\n");
    }
    return result;
}

} // namespace
} // namespace zusahpi::display

int zuSaHpiTextControlDisplay(zuSaHpiHandleT out, const SaHpiUint8T *data, uint32_t length,
                              SaHpiUint8T maxChars, SaHpiTextTypeT dataType,
                              SaHpiLanguageT /*language*/, int framed, const char *indent) {
    using namespace zusahpi::display;
    const Bytes text{data, length};
    switch (dataType) {
    case SAHPI_TL_TYPE_UNICODE:
        return printDumps(out, text, lineSize(text, maxChars, 2), indent);
    case SAHPI_TL_TYPE_BINARY:
        return printDumps(out, text, lineSize(text, maxChars, 1), indent);
    default:
        return printLines({.out = out,
                           .indent = indent,
                           .width = lineSize(text, maxChars, 1),
                           .framed = framed != 0},
                          text);
    }
}
