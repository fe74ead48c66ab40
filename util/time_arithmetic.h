// Sums and differences of times. Times come from files and messages, so they may be anything: the
// results wrap in 64 bits, where signed arithmetic would be undefined.
#pragma once

#include "hpi/SaHpi.h"

namespace zusahpi {

[[nodiscard]] constexpr SaHpiTimeT timeSum(SaHpiTimeT a, SaHpiTimeT b) {
    return static_cast<SaHpiTimeT>(static_cast<SaHpiUint64T>(a) + static_cast<SaHpiUint64T>(b));
}

[[nodiscard]] constexpr SaHpiTimeT timeDifference(SaHpiTimeT a, SaHpiTimeT b) {
    return static_cast<SaHpiTimeT>(static_cast<SaHpiUint64T>(a) - static_cast<SaHpiUint64T>(b));
}

} // namespace zusahpi
