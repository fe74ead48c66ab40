// Event states, by the names that they have in their category.

#include "display/event_state.h"

#include "constants/type_ids.h"
#include "zuSaHpi_util.h"

namespace zusahpi::display {

std::uint32_t eventStateKey(SaHpiEventCategoryT category) {
    if (zuSaHpiCheckSubType(type_id::eventState, category) == 0) {
        return type_id::eventState;
    }
    return typeKey(category, type_id::eventState);
}

} // namespace zusahpi::display

int zuSaHpiEventStateDisplay(zuSaHpiHandleT out, SaHpiEventStateT states,
                             SaHpiEventCategoryT category, int startColumn, int wrapIndent,
                             const char *indent) {
    using namespace zusahpi::display;
    return zuSaHpiBitFlagsDisplay(out, states, eventStateKey(category), eventStatePrefix,
                                  startColumn, wrapIndent, indent);
}
