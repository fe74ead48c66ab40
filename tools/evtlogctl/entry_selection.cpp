// Cursors are found by number and fingerprint, without reading an entry again; a filter in front of
// a number of newest entries needs a reading of its own.
#include "tools/evtlogctl/entry_selection.h"

#include <algorithm>
#include <deque>

namespace zusahpi::evtlogctl {
namespace {

// False when the log does not hold the entry of the cursor.
[[nodiscard]] bool cutUntil(Snapshot &snapshot, const Cursor &cursor) {
    auto &entries = snapshot.entries;
    const auto place = std::find_if(entries.begin(), entries.end(), [&](const FoundEntry &entry) {
        return entry.number == cursor.number && entry.fingerprint == cursor.fingerprint;
    });
    if (place == entries.end()) {
        return false;
    }
    entries.erase(entries.begin(), place + 1);
    return true;
}

void keepNewest(Snapshot &snapshot, std::size_t newest) {
    auto &entries = snapshot.entries;
    if (entries.size() > newest) {
        entries.erase(entries.begin(), entries.end() - static_cast<std::ptrdiff_t>(newest));
    }
}

void keepMatching(const LogFile &file, Snapshot &snapshot, const EntryFilter &filter,
                  std::size_t newest) {
    std::deque<FoundEntry> kept;
    SnapshotReader entries(file, snapshot);
    while (const EventLogEntryRecord *const entry = entries.next()) {
        if (matches(filter, *entry)) {
            kept.push_back({entry->entry.EntryId, fingerprint(*entry)});
        }
        if (kept.size() > newest) {
            kept.pop_front();
        }
    }
    snapshot.entries.assign(kept.begin(), kept.end());
    snapshot.overwritten += entries.overwritten(); // whether they would fit nobody knows
}

} // namespace

std::size_t entriesToRead(const ListOptions &options) {
    const bool newestFirst = options.newest && isEmpty(options.filter) && !options.after;
    return newestFirst ? std::max<std::size_t>(*options.newest, 1) : allEntries;
}

EntryFilter selectEntries(const LogFile &file, Snapshot &snapshot, const ListOptions &options) {
    EntryFilter filter = options.filter;
    if (options.after && !cutUntil(snapshot, *options.after)) {
        filter.loggedAfter = options.after->logged;
    }
    if (options.newest && isEmpty(filter)) {
        keepNewest(snapshot, *options.newest);
    } else if (options.newest) {
        keepMatching(file, snapshot, filter, *options.newest);
    }
    return filter;
}

std::optional<Cursor> newestCursor(const LogFile &file, const Snapshot &snapshot) {
    EntryReader reader(file, snapshot.overlay);
    for (auto found = snapshot.entries.rbegin(); found != snapshot.entries.rend(); ++found) {
        const EventLogEntryRecord *const entry = reader.at(found->number);
        if (entry != nullptr && fingerprint(*entry) == found->fingerprint) {
            return cursorOf(*entry);
        }
    }
    return std::nullopt;
}

} // namespace zusahpi::evtlogctl
