// The one spelling of "no entry" in readable text.

#include "frontends/entry_number.h"

#include "zuSaHpi_mainlib.h"

namespace zusahpi::frontends {

int printEntryNumber(zuSaHpiHandleT out, const char *label, std::uint32_t number) {
    if (number == ZUSAHPI_EL_NO_ENTRY) {
        return zuSaHpiPrintf(out, "%sSAHPI_LAST_ENTRY\n", label);
    }
    return zuSaHpiPrintf(out, "%s%u\n", label, number);
}

} // namespace zusahpi::frontends
