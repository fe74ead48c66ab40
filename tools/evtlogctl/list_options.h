// What the options of `list` come to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "tools/evtlogctl/cursor.h"
#include "tools/evtlogctl/entry_filter.h"

namespace zusahpi::evtlogctl {

enum class ListForm : std::uint8_t {
    line,        // one for each entry
    lineIso,     // the same, with all nine digits of a time
    verbose,     // everything, as the library prints it
    json,        // a line of JSON for each entry
    jsonJournal, // the same, in the form of the systemd journal
    message,     // a line of what happened alone
    csv,         // comma-separated values, under a line with the names of the columns
};

// People read it, so that remarks may stand between entries.
[[nodiscard]] constexpr bool isForPeople(ListForm form) {
    return form == ListForm::line || form == ListForm::lineIso || form == ListForm::verbose;
}

struct ListOptions {
    std::string file; // empty: the configured log
    ListForm form = ListForm::line;
    std::optional<std::size_t> newest; // only so many, the newest ones that fit
    EntryFilter filter;
    std::optional<Cursor> after; // only entries behind this place
    bool reverse = false;        // the newest one first
    bool follow = false;         // goes on with entries that come
    bool pagerEnd = false;       // the pager begins at the end
    bool noPager = false;
    bool showCursor = false;
    bool quiet = false; // no remarks, only complaints
};

} // namespace zusahpi::evtlogctl
