// The names of the bits of a mask, wrapped at column 70.

#include <cstring>

#include "display/display_form.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi::display {
namespace {

constexpr long long lastColumn = 70;
constexpr char opening[] = ": ";
constexpr char separator[] = ", ";

[[nodiscard]] long long lengthOf(const char *text) {
    return static_cast<long long>(std::strlen(text));
}

} // namespace
} // namespace zusahpi::display

int zuSaHpiBitFlagsDisplay(zuSaHpiHandleT out, uint32_t flags, uint32_t typeId, const char *prefix,
                           int startColumn, int wrapIndent, const char *indent) {
    using namespace zusahpi::display;
    if (flags == 0) {
        return zuSaHpiPrintf(out, "\n");
    }
    zuSaHpiPrintf(out, opening);
    long long column = startColumn + lengthOf(indent) + lengthOf(opening);
    uint32_t remaining = flags;
    for (uint32_t bit = 1; remaining != 0; bit <<= 1) {
        Name name;
        const bool isSet = (remaining & bit) != 0;
        remaining &= ~bit;
        if (!isSet || !displayForm(bit, typeId, prefix, name)) {
            continue;
        }
        if (column + lengthOf(name.text) > lastColumn) {
            zuSaHpiPrintf(out, "\n%s%*s", indent, wrapIndent, "");
            column = wrapIndent + lengthOf(indent);
        }
        zuSaHpiPrintf(out, "%s", name.text);
        column += lengthOf(name.text);
        // The bits that remain may all lack a name; the separator then ends the line, and shows
        // that there was more.
        if (remaining != 0) {
            zuSaHpiPrintf(out, separator);
            column += lengthOf(separator);
        }
    }
    return zuSaHpiPrintf(out, "\n");
}
