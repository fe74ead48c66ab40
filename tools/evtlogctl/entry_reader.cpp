// Reading of entries, many at once where they are neighbours.
#include "tools/evtlogctl/entry_reader.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>

#include "eventlog/log_format.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::uint32_t windowEntries = 64;

} // namespace

Overlay readOverlay(const LogFile &file, const EventLogInfoRecord &info) {
    Overlay overlay;
    if (info.updating == 0) {
        return overlay;
    }
    for (std::uint32_t slot = 0; slot < eventlog::transactionSlots; ++slot) {
        EventLogEntryRecord record{};
        if (!file.read(eventlog::slotOffset(slot), &record, sizeof record) ||
            record.entry.EntryId == eventlog::noEntry) {
            break;
        }
        overlay.push_back(record);
    }
    return overlay;
}

EntryReader::EntryReader(const LogFile &file, const Overlay &overlay)
    : file_(file), overlay_(overlay), window_(windowEntries) {
}

void EntryReader::readAround(std::uint32_t number) {
    const bool up = number == previous_ + 1;
    const bool down = number == previous_ - 1;
    first_ = down ? number - std::min(number, windowEntries) + 1 : number;
    const std::uint32_t wanted = up ? windowEntries : number - first_ + 1;
    const std::size_t bytes = file_.readUpTo(eventlog::entryOffset(first_), window_.data(),
                                             wanted * sizeof(EventLogEntryRecord));
    held_ = static_cast<std::uint32_t>(bytes / sizeof(EventLogEntryRecord));
}

const EventLogEntryRecord *EntryReader::at(std::uint32_t number) {
    // Slots are replayed in their order, so the last one of a number counts.
    const auto found = std::find_if(overlay_.rbegin(), overlay_.rend(), [&](const auto &record) {
        return record.entry.EntryId == number;
    });
    if (number - first_ >= held_ && found == overlay_.rend()) {
        readAround(number);
    }
    previous_ = number;
    if (found != overlay_.rend()) {
        return &*found;
    }
    return number - first_ < held_ ? &window_[number - first_] : nullptr;
}

std::uint64_t fingerprint(const EventLogEntryRecord &entry) {
    constexpr std::uint64_t odd = 0x9E3779B97F4A7C15;
    constexpr int turn = 29;
    const auto step = [](std::uint64_t chain, std::uint64_t word) {
        return std::rotl((chain ^ word) * odd, turn);
    };
    constexpr std::size_t begin = offsetof(EventLogEntryRecord, entry);
    constexpr std::size_t words = (sizeof entry - begin) / sizeof(std::uint64_t);
    static_assert(begin + words * sizeof(std::uint64_t) == sizeof entry);
    const auto *const bytes = reinterpret_cast<const unsigned char *>(&entry) + begin;
    const auto wordAt = [bytes](std::size_t place) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes + place * sizeof word, sizeof word);
        return word;
    };
    // Four chains, because each step of one waits for the multiplication of the step before.
    std::uint64_t a = 1;
    std::uint64_t b = 2;
    std::uint64_t c = 3;
    std::uint64_t d = 4;
    std::size_t place = 0;
    for (; place + 4 <= words; place += 4) {
        a = step(a, wordAt(place));
        b = step(b, wordAt(place + 1));
        c = step(c, wordAt(place + 2));
        d = step(d, wordAt(place + 3));
    }
    for (; place < words; ++place) {
        a = step(a, wordAt(place));
    }
    return step(step(step(a, b), c), d);
}

} // namespace zusahpi::evtlogctl
