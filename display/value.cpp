// A single value: printed behind a label with its number, or as text alone.

#include <cstdio>

#include "display/display_form.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi::display {
namespace {

[[nodiscard]] SaHpiInt64T valueOf(uint32_t low, uint32_t high) {
    return static_cast<SaHpiInt64T>(static_cast<SaHpiUint64T>(high) << 32 | low);
}

} // namespace
} // namespace zusahpi::display

int zuSaHpiValueDisplay(zuSaHpiHandleT out, const char *label, uint32_t valueLow,
                        uint32_t valueHigh, uint32_t typeId, const char *prefix,
                        const char *indent) {
    using namespace zusahpi::display;
    zuSaHpiPrintf(out, "%s%s %u", indent, label, valueLow);
    Name name;
    if (displayForm(valueOf(valueLow, valueHigh), typeId, prefix, name)) {
        return zuSaHpiPrintf(out, ": %s\n", name.text);
    }
    return zuSaHpiPrintf(out, "\n");
}

char *zuSaHpiValueString(uint32_t valueLow, uint32_t valueHigh, uint32_t typeId, const char *prefix,
                         char *dest, uint32_t destSize) {
    using namespace zusahpi::display;
    Name name;
    displayForm(valueOf(valueLow, valueHigh), typeId, prefix, name);
    (void)std::snprintf(dest, destSize, "%s", name.text);
    return dest;
}
