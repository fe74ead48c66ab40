// Which names the bits of an event state have.
#pragma once

#include <cstdint>

#include "hpi/SaHpi.h"

namespace zusahpi::display {

// The type key of event states in the category: its own names where it has them, else those that
// serve every category.
[[nodiscard]] std::uint32_t eventStateKey(SaHpiEventCategoryT category);

inline constexpr char eventStatePrefix[] = "SAHPI_ES_";

} // namespace zusahpi::display
