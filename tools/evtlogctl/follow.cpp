// A reading after every change. Entries are known by number and fingerprint, and what stands behind
// the last known one is new; so a log that wraps, is cleared, loses entries to an operator or is
// replaced by another file is followed alike, and no entry is shown twice. In a log that holds
// nothing known any more everything is new.
#include "tools/evtlogctl/follow.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "tools/evtlogctl/entry_printer.h"
#include "tools/evtlogctl/entry_selection.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/log_reader.h"
#include "tools/evtlogctl/log_watch.h"
#include "tools/evtlogctl/terminal.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::size_t entriesAtFirst = 10;  // as tail(1) and journalctl(1) show
constexpr std::size_t fewNews = 64;         // that are looked for first
constexpr std::size_t knownToSpare = 10000; // known entries that the log may not hold any more

constexpr auto forEver = std::chrono::milliseconds{-1};
constexpr auto patience = std::chrono::milliseconds{1000}; // with a file that is being made

using EntryKey = std::pair<std::uint32_t, std::uint64_t>; // number, fingerprint

struct Following {
    const std::string &path;
    const ListOptions &options;
    EntryPrinter printer;
    std::unique_ptr<LogFile> file; // never null
    std::set<EntryKey> known;
};

[[nodiscard]] EntryKey keyOf(const FoundEntry &entry) {
    return {entry.number, entry.fingerprint};
}

[[nodiscard]] bool isKnown(const Following &following, const FoundEntry &entry) {
    return following.known.contains(keyOf(entry));
}

void learn(Following &following, const Snapshot &snapshot) {
    for (const FoundEntry &entry : snapshot.entries) {
        following.known.insert(keyOf(entry));
    }
}

// So that a log that is followed for years does not fill the memory.
void forgetTheOld(Following &following) {
    const Snapshot whole = readLog(*following.file);
    if (following.known.size() > whole.entries.size() + knownToSpare) {
        following.known.clear();
        learn(following, whole);
    }
}

void show(Following &following, const Snapshot &snapshot, const EntryFilter &filter) {
    SnapshotReader entries(*following.file, snapshot);
    while (const EventLogEntryRecord *const entry = entries.next()) {
        if (matches(filter, *entry)) {
            following.printer.print(*entry);
        }
    }
    following.printer.flush();
    (void)reportReading(*following.file, snapshot, entries, "are listed");
}

// The newest entries of the log, back to one that is known or to the oldest.
[[nodiscard]] Snapshot readNewest(const Following &following) {
    constexpr std::size_t growth = 16;
    for (std::size_t most = fewNews;; most *= growth) {
        Snapshot snapshot = readLog(*following.file, most);
        const bool reached =
            std::any_of(snapshot.entries.begin(), snapshot.entries.end(),
                        [&](const FoundEntry &entry) { return isKnown(following, entry); });
        if (reached || snapshot.entries.size() < most) {
            return snapshot;
        }
    }
}

// What is new, and known from now on.
[[nodiscard]] Snapshot readNews(Following &following) {
    Snapshot snapshot = readNewest(following);
    auto &entries = snapshot.entries;
    const auto lastKnown =
        std::find_if(entries.rbegin(), entries.rend(),
                     [&](const FoundEntry &entry) { return isKnown(following, entry); });
    if (lastKnown == entries.rend() && !entries.empty() && !following.known.empty() &&
        !following.options.quiet) {
        complain(fmt::format("{} was cleared, replaced or written over; all that it holds now is "
                             "new",
                             following.path));
    }
    entries.erase(entries.begin(), lastKnown.base());
    learn(following, snapshot);
    if (following.known.size() > 2 * knownToSpare + snapshot.info.sa.Entries) {
        forgetTheOld(following);
    }
    return snapshot;
}

// Goes on with the file that has the name now, if there is one.
void openAgain(Following &following, LogWatch &watch) {
    struct stat named {};
    if (stat(following.path.c_str(), &named) != 0) {
        return;
    }
    const struct stat open = following.file->status();
    if (named.st_ino != open.st_ino || named.st_dev != open.st_dev) {
        watch.watchFile();
        following.file = std::make_unique<LogFile>(following.path);
    }
}

void showFirst(Following &following) {
    ListOptions options = following.options;
    if (!options.newest && !options.after) {
        options.newest = entriesAtFirst;
    }
    Snapshot log = readLog(*following.file);
    learn(following, log);
    const EntryFilter filter = selectEntries(*following.file, log, options);
    show(following, log, filter);
}

// Nothing when the log cannot be read at the moment; `trouble` says why.
[[nodiscard]] std::optional<Snapshot> tryNews(Following &following, LogWatch &watch,
                                              std::string &trouble) {
    try {
        openAgain(following, watch);
        return readNews(following);
    } catch (const Failure &failure) {
        trouble = failure.what();
        return std::nullopt;
    }
}

} // namespace

Status followLog(const std::string &path, const ListOptions &options) {
    LogWatch watch(path);
    Following following{.path = path,
                        .options = options,
                        .printer = EntryPrinter(options.form, wantsColours()),
                        .file = std::make_unique<LogFile>(path),
                        .known = {}};
    showFirst(following);
    std::string trouble;
    bool told = false;
    // A file that is being made is no log for a moment: that is told only if it stays so.
    while (watch.wait(trouble.empty() || told ? forEver : patience)) {
        const std::string before = std::exchange(trouble, {});
        const std::optional<Snapshot> news = tryNews(following, watch, trouble);
        if (news && !(news->entries.empty() && news->damage.empty())) {
            show(following, *news, options.filter);
        }
        const bool lasts = !trouble.empty() && trouble == before;
        if (lasts && !told) {
            complain(trouble);
        }
        told = lasts;
    }
    return Status::done;
}

} // namespace zusahpi::evtlogctl
