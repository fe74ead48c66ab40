// Entity paths, one line for each element. A path without a root fills all of its elements, so the
// end of the array ends it too.

#include <cstring>

#include "constants/type_ids.h"
#include "display/display_form.h"
#include "display/indent.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi::display {
namespace {

int printElement(zuSaHpiHandleT out, const SaHpiEntityT &element) {
    zuSaHpiPrintf(out, "%d,%u", static_cast<int>(element.EntityType), element.EntityLocation);
    Name name;
    if (displayForm(static_cast<uint32_t>(element.EntityType), type_id::entityType, "SAHPI_ENT_",
                    name)) {
        return zuSaHpiPrintf(out, ": %s %u\n", name.text, element.EntityLocation);
    }
    return zuSaHpiPrintf(out, "\n");
}

} // namespace
} // namespace zusahpi::display

int zuSaHpiEntityPathDisplay(zuSaHpiHandleT out, const SaHpiEntityPathT *entityPath,
                             const char *label, const char *indent) {
    using namespace zusahpi::display;
    constexpr std::size_t separatorLength = sizeof " = " - 1;
    const Indent continuation = composedIndent(indent, std::strlen(label) + separatorLength);
    int result = 0;
    bool first = true;
    for (const SaHpiEntityT &element : entityPath->Entry) {
        if (element.EntityType == SAHPI_ENT_ROOT) {
            break;
        }
        if (first) {
            zuSaHpiPrintf(out, "%s%s = ", indent, label);
        } else {
            zuSaHpiPrintf(out, "%s", continuation.text);
        }
        first = false;
        result = printElement(out, element);
    }
    return result;
}
