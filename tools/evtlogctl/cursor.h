// A place in a log that is found again later: an entry's number, when it was logged and its
// fingerprint. The number alone does not do, because a log uses its numbers again.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {

struct Cursor {
    std::uint32_t number;
    SaHpiTimeT logged;
    std::uint64_t fingerprint;
};

[[nodiscard]] Cursor cursorOf(const EventLogEntryRecord &entry);

// As text: three hexadecimal numbers with dots between them.
[[nodiscard]] std::string cursorText(const Cursor &cursor);

// Nothing when the text is no cursor.
[[nodiscard]] std::optional<Cursor> parseCursor(std::string_view text);

} // namespace zusahpi::evtlogctl
