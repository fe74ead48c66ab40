// Names of the constants of the HPI standard, each looked up once: the entries of a log have few
// among them, and the registry is walked from its beginning.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "hpi/SaHpi.h"

namespace zusahpi::evtlogctl {

// "sensor_enable_change", as the configuration file and the command line call it; the number of a
// type that has no name.
[[nodiscard]] std::string eventTypeName(std::uint32_t type);

// The form for people of a constant's name, or its number; valid until the next call. `prefix` is
// the part of the name that is left out, always the same for a type key.
[[nodiscard]] std::string_view displayName(std::uint32_t value, std::uint32_t typeKey,
                                           const char *prefix);

// The name in the standard; empty for a value without one; valid until the next call.
[[nodiscard]] std::optional<std::string_view> standardName(std::uint32_t value,
                                                           std::uint32_t typeKey);

// Of the event states of a category: some categories have names of their own for them.
[[nodiscard]] std::uint32_t stateKey(SaHpiEventCategoryT category);

} // namespace zusahpi::evtlogctl
