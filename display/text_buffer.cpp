// Text buffers, in four formats. What stands behind the label on the first line is lined up by the
// continuation indent on the lines after it.

#include "display/text_buffer.h"

#include <cstdio>
#include <cstring>

#include "display/display_form.h"
#include "display/indent.h"
#include "display/named_type.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi::display {

bool isPrintable(const SaHpiTextBufferT &buffer) {
    switch (buffer.DataType) {
    case SAHPI_TL_TYPE_BCDPLUS:
    case SAHPI_TL_TYPE_ASCII6:
    case SAHPI_TL_TYPE_TEXT:
        return true;
    default:
        return false;
    }
}

Text textOf(const SaHpiTextBufferT &buffer) {
    Text text;
    std::memcpy(text.text, buffer.Data, buffer.DataLength);
    text.text[buffer.DataLength] = '\0';
    return text;
}

namespace {

// What one call prints, and where.
struct Printing {
    zuSaHpiHandleT out;
    const SaHpiTextBufferT &buffer;
    const char *label; // empty for none
    const char *indent;
};

struct Label {
    Indent continuation; // lines up with what follows the label
    int result;          // of the print
};

[[nodiscard]] Label printLabel(const Printing &printing) {
    const auto &[out, buffer, label, indent] = printing;
    const std::size_t length = std::strlen(label);
    if (length == 0) {
        return {composedIndent(indent, 0), zuSaHpiPrintf(out, "%s", indent)};
    }
    if (std::strchr(label, ':') != nullptr) {
        return {composedIndent(indent, length), zuSaHpiPrintf(out, "%s%s", indent, label)};
    }
    constexpr std::size_t addedColon = sizeof ": " - 1;
    return {composedIndent(indent, length + addedColon),
            zuSaHpiPrintf(out, "%s%s: ", indent, label)};
}

int printQuoted(zuSaHpiHandleT out, const SaHpiTextBufferT &buffer) {
    return zuSaHpiPrintf(out, "\"%s\"\n", textOf(buffer).text);
}

int printDump(zuSaHpiHandleT out, const SaHpiTextBufferT &buffer, const char *indent) {
    return zuSaHpiDprint(out, buffer.Data, buffer.DataLength, indent);
}

int printFull(const Printing &printing, const Indent &continuation) {
    const auto &[out, buffer, label, indent] = printing;
    const char *lines = continuation.text;
    zuSaHpiPrintf(out, "\n");
    printValue(out, "DataType    ", buffer.DataType, named_type::textType, lines);
    printValue(out, "Language    ", buffer.Language, named_type::language, lines);
    zuSaHpiPrintf(out, "%sDataLength   %u\n", lines, static_cast<unsigned>(buffer.DataLength));
    if (isPrintable(buffer)) {
        return zuSaHpiPrintf(out, "%sData = \"%s\"\n", lines, textOf(buffer).text);
    }
    zuSaHpiPrintf(out, "%s%s Data follows:\n", lines, label);
    return printDump(out, buffer, lines);
}

// The language as one word: the last segment of its constant's name.
[[nodiscard]] Name languageWord(SaHpiLanguageT language) {
    Name name = registryText(static_cast<std::uint32_t>(language), type_id::language);
    if (const char *last = std::strrchr(name.text, '_'); last != nullptr) {
        std::memmove(name.text, last + 1, std::strlen(last + 1) + 1);
    }
    makeWords(name.text);
    return name;
}

void printTypeTag(zuSaHpiHandleT out, const SaHpiTextBufferT &buffer) {
    switch (buffer.DataType) {
    case SAHPI_TL_TYPE_UNICODE:
        zuSaHpiPrintf(out, "(%s:%s)", "Unicode", languageWord(buffer.Language).text);
        return;
    case SAHPI_TL_TYPE_TEXT:
        zuSaHpiPrintf(out, "(%s:%s)", "Text", languageWord(buffer.Language).text);
        return;
    case SAHPI_TL_TYPE_BCDPLUS:
        zuSaHpiPrintf(out, "(%s)", "BCDPlus");
        return;
    case SAHPI_TL_TYPE_ASCII6:
        zuSaHpiPrintf(out, "(%s)", "ASCII6");
        return;
    case SAHPI_TL_TYPE_BINARY:
        zuSaHpiPrintf(out, "(%s)", "Binary");
        return;
    default:
        zuSaHpiPrintf(out, "(%d,%d)", static_cast<int>(buffer.DataType),
                      static_cast<int>(buffer.Language));
        return;
    }
}

int printTagged(const Printing &printing) {
    const auto &[out, buffer, label, indent] = printing;
    printTypeTag(out, buffer);
    if (isPrintable(buffer)) {
        return printQuoted(out, buffer);
    }
    zuSaHpiPrintf(out, "\n");
    return printDump(out, buffer, indent);
}

} // namespace
} // namespace zusahpi::display

int zuSaHpiTextBufferDisplay(zuSaHpiHandleT out, const SaHpiTextBufferT *textBuffer,
                             const char *label, int format, const char *indent) {
    using namespace zusahpi::display;
    const Printing printing{.out = out,
                            .buffer = *textBuffer,
                            .label = label == nullptr ? "" : label,
                            .indent = indent};
    const Label printed = printLabel(printing);
    switch (format) {
    case text_format::valueOnly:
        return isPrintable(*textBuffer) ? printQuoted(out, *textBuffer)
                                        : printDump(out, *textBuffer, indent);
    case text_format::full:
        return printFull(printing, printed.continuation);
    case text_format::bareText:
        return isPrintable(*textBuffer) ? zuSaHpiPrintf(out, "%s", textOf(*textBuffer).text)
                                        : printed.result;
    case text_format::typeTag:
        return printTagged(printing);
    default:
        return zuSaHpiPrintf(out, "Undefined format code passed to zuSaHpiTextBufferDisplay: %d\n",
                             format);
    }
}
