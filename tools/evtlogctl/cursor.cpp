// Cursors and their text.
#include "tools/evtlogctl/cursor.h"

#include <charconv>

#include <fmt/format.h>

#include "tools/evtlogctl/entry_reader.h"

namespace zusahpi::evtlogctl {
namespace {

// Takes a number and, unless it is the last one, the dot behind it from the text.
template <typename Number>
[[nodiscard]] bool takeNumber(std::string_view &text, Number &number, bool last) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    if (error != std::errc{}) {
        return false;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (last) {
        return text.empty();
    }
    if (!text.starts_with('.')) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

} // namespace

Cursor cursorOf(const EventLogEntryRecord &entry) {
    return {.number = entry.entry.EntryId,
            .logged = entry.entry.Timestamp,
            .fingerprint = fingerprint(entry)};
}

std::string cursorText(const Cursor &cursor) {
    return fmt::format("{:x}.{:x}.{:x}", cursor.number, static_cast<std::uint64_t>(cursor.logged),
                       cursor.fingerprint);
}

std::optional<Cursor> parseCursor(std::string_view text) {
    Cursor cursor{};
    std::uint64_t logged = 0;
    if (!takeNumber(text, cursor.number, false) || !takeNumber(text, logged, false) ||
        !takeNumber(text, cursor.fingerprint, true)) {
        return std::nullopt;
    }
    cursor.logged = static_cast<SaHpiTimeT>(logged);
    return cursor;
}

} // namespace zusahpi::evtlogctl
