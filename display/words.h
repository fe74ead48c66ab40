// The words for a boolean, of which any byte but 0 is true.
#pragma once

#include "hpi/SaHpi.h"

namespace zusahpi::display {

[[nodiscard]] constexpr const char *yesOrNo(SaHpiBoolT flag) {
    return flag != SAHPI_FALSE ? "Yes" : "No";
}

[[nodiscard]] constexpr const char *upperYesOrNo(SaHpiBoolT flag) {
    return flag != SAHPI_FALSE ? "YES" : "NO";
}

[[nodiscard]] constexpr const char *enabledOrDisabled(SaHpiBoolT flag) {
    return flag != SAHPI_FALSE ? "Enabled" : "Disabled";
}

} // namespace zusahpi::display
