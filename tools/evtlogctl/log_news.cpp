// A reading of the newest entries, which goes back further until it reaches something known.
#include "tools/evtlogctl/log_news.h"

#include <algorithm>
#include <cstddef>

namespace zusahpi::evtlogctl {
namespace {

constexpr std::size_t fewNews = 64; // that are looked for first

[[nodiscard]] EntryKey keyOf(const FoundEntry &entry) {
    return {entry.number, entry.fingerprint};
}

[[nodiscard]] bool wasShown(const KnownEntries &known, const FoundEntry &entry) {
    return std::binary_search(known.keys.begin(), known.keys.end(), keyOf(entry));
}

// The newest entries of the log, back to one that is known or to the oldest. A reading of a log
// that does not rest may give less than was asked for, though the log has more.
[[nodiscard]] Snapshot readNewest(const KnownEntries &known, const LogReading &read) {
    constexpr std::size_t growth = 16;
    for (std::size_t most = fewNews;;
         most = most < allEntries / growth ? most * growth : allEntries) {
        Snapshot snapshot = read(most);
        const bool reached =
            std::any_of(snapshot.entries.begin(), snapshot.entries.end(),
                        [&](const FoundEntry &entry) { return wasShown(known, entry); });
        if (reached || most >= snapshot.info.sa.Entries || !snapshot.damage.empty()) {
            return snapshot;
        }
    }
}

// So that a log that is followed for years does not fill the memory. What the log holds by now and
// is not known stays so: nobody was told of it yet.
void forgetTheOld(KnownEntries &known, const LogReading &read) {
    std::vector<EntryKey> kept;
    for (const FoundEntry &entry : read(allEntries).entries) {
        if (wasShown(known, entry)) {
            kept.push_back(keyOf(entry));
        }
    }
    if (!kept.empty()) { // otherwise the log is another one, which the next news will tell
        std::sort(kept.begin(), kept.end());
        known.keys = std::move(kept);
    }
}

} // namespace

void learn(KnownEntries &known, const Snapshot &snapshot) {
    auto &keys = known.keys;
    const auto before = static_cast<std::ptrdiff_t>(keys.size());
    keys.resize(keys.size() + snapshot.entries.size());
    std::transform(snapshot.entries.begin(), snapshot.entries.end(), keys.begin() + before, keyOf);
    std::sort(keys.begin() + before, keys.end());
    std::inplace_merge(keys.begin(), keys.begin() + before, keys.end());
}

News takeNews(KnownEntries &known, const LogReading &read) {
    News news{.snapshot = readNewest(known, read)};
    auto &entries = news.snapshot.entries;
    const auto lastKnown =
        std::find_if(entries.rbegin(), entries.rend(),
                     [&](const FoundEntry &entry) { return wasShown(known, entry); });
    news.strange = lastKnown == entries.rend() && !entries.empty() && !known.keys.empty();
    entries.erase(entries.begin(), lastKnown.base());
    if (known.keys.size() > known.spare + news.snapshot.info.sa.Entries) {
        forgetTheOld(known, read);
    }
    learn(known, news.snapshot); // last, so that no news is lost when a reading fails
    return news;
}

} // namespace zusahpi::evtlogctl
