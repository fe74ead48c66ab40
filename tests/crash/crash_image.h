// The files that a crash may leave behind: made from the file as it was and the journal of what was
// then done to it.
//
// The disk that is assumed: it writes whole sectors of 512 bytes; the sectors of one write reach it
// in any order; a write begins only when the one before it is whole (a Linked log's file is opened
// so). A file that a write makes longer may already have its new length while sectors of the write
// are missing, which then read as zeros, or end behind the last one that arrived. A truncation
// happens or does not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/file_journal.h"

namespace crash_test {

inline constexpr std::size_t sectorSize = 512;

struct CrashImage {
    std::string bytes;
    std::size_t whole = 0;      // that many events are in it whole
    bool torn = false;          // and the next one in part:
    std::uint32_t arrived = 0;  // its sectors that are, bit 0 the first one
    bool longerAlready = false; // the file has the length that the write gives it
};

// Such as "after 2 events, sectors 0x5 of the next".
std::string nameOf(const CrashImage &image);

// The event done to the file, whole.
void apply(const test_support::FileEvent &event, std::string &bytes);

// Visits every image: for n = 0, 1, ... the one with n events whole, then those with the next event
// in part: all subsets of its sectors, and again where it makes the file longer. Sectors that the
// write leaves as they are do not count, with or without them it is the same image.
void forEachCrashImage(const std::string &before,
                       const std::vector<test_support::FileEvent> &events,
                       const std::function<void(const CrashImage &)> &visit);

} // namespace crash_test
