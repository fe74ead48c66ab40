// A reading after every change; log_news.h says what of it is new.
#include "tools/evtlogctl/follow.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "tools/evtlogctl/entry_printer.h"
#include "tools/evtlogctl/entry_selection.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/log_news.h"
#include "tools/evtlogctl/log_reader.h"
#include "tools/evtlogctl/log_watch.h"
#include "tools/evtlogctl/terminal.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::size_t entriesAtFirst = 10; // as tail(1) and journalctl(1) show

constexpr auto forEver = std::chrono::milliseconds{-1};
constexpr auto patience =
    std::chrono::milliseconds{1000}; // with a file or folder that is being made

struct Following {
    const std::string &path;
    const ListOptions &options;
    EntryPrinter printer;
    std::unique_ptr<LogFile> file; // never null
    KnownEntries known;
};

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

// What is new, and known from now on.
[[nodiscard]] Snapshot readNews(Following &following) {
    News news =
        takeNews(following.known, [&](std::size_t most) { return readLog(*following.file, most); });
    if (news.strange && !following.options.quiet) {
        complain(fmt::format("{} was cleared, replaced or written over; all that it holds now is "
                             "new",
                             following.path));
    }
    return std::move(news.snapshot);
}

// Goes on with the file that has the name now, if there is one.
void openAgain(Following &following) {
    struct stat named {};
    if (stat(following.path.c_str(), &named) != 0) {
        return;
    }
    const struct stat open = following.file->status();
    if (named.st_ino != open.st_ino || named.st_dev != open.st_dev) {
        following.file = std::make_unique<LogFile>(following.path);
    }
}

void showFirst(Following &following) {
    ListOptions options = following.options;
    if (!options.newest && !options.after) {
        options.newest = entriesAtFirst;
    }
    Snapshot log = readLog(*following.file);
    learn(following.known, log);
    const EntryFilter filter = selectEntries(*following.file, log, options);
    show(following, log, filter);
}

// Nothing when the log cannot be read at the moment; `trouble` says why.
[[nodiscard]] std::optional<Snapshot> tryNews(Following &following, std::string &trouble) {
    try {
        openAgain(following);
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
    bool settled = false;
    // A file that is being made is no log for a moment: that is told only if it stays so.
    while (watch.wait(settled && (trouble.empty() || told) ? forEver : patience)) {
        settled = watch.renew();
        const std::string before = std::exchange(trouble, {});
        const std::optional<Snapshot> news = tryNews(following, trouble);
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
} // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): following.file frees what it owns

} // namespace zusahpi::evtlogctl
