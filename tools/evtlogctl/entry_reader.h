// Entries of an open log file by their numbers, each as the next start of the log would find it:
// what an interrupted update left in its slots takes the place of what stands in the file.
#pragma once

#include <cstdint>
#include <vector>

#include "tools/evtlogctl/log_file.h"
#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {

// The records of an interrupted or running update, in the order of their slots.
using Overlay = std::vector<EventLogEntryRecord>;

[[nodiscard]] Overlay readOverlay(const LogFile &file, const EventLogInfoRecord &info);

// A walk from neighbour to neighbour, in either direction, reads many entries at once. The file and
// the overlay must outlive the reader.
class EntryReader {
  public:
    EntryReader(const LogFile &file, const Overlay &overlay);

    // The record at the place of `number` (1 and up), valid until the next call; null when the file
    // ends before its end. What the record says of itself is not checked.
    [[nodiscard]] const EventLogEntryRecord *at(std::uint32_t number);

  private:
    void readAround(std::uint32_t number);

    const LogFile &file_;
    const Overlay &overlay_;
    std::vector<EventLogEntryRecord> window_; // of entries first_ and up, held_ of them
    std::uint32_t first_ = 0;
    std::uint32_t held_ = 0;
    std::uint32_t previous_ = 0; // the number that was asked for before
};

// A number that tells entries apart by what they hold, but for their links, which change when their
// neighbours do. Two different entries have the same one by chance only, once in 2^64.
[[nodiscard]] std::uint64_t fingerprint(const EventLogEntryRecord &entry);

} // namespace zusahpi::evtlogctl
