// How many events of each severity there were in each part of the time of a log.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "tools/evtlogctl/sel_severity.h"
#include "tools/evtlogctl/stat_counts.h"
#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {

// In the order of their rank; every other value counts as one more.
using SlotCounts = std::array<std::uint32_t, sel::severitiesByRank.size() + 1>;

// All slots are `width` long and begin at a multiple of it, so that days begin at midnight in UTC.
struct Timeline {
    SaHpiTimeT begin = 0;
    SaHpiTimeT width = 0;
    std::vector<SlotCounts> slots;
};

inline constexpr std::size_t mostSlots = 100;

// Of at most mostSlots slots, none for a log without a time of day.
[[nodiscard]] Timeline timelineOver(const EventTimes &times);

// An event outside the timeline, or without a time of day, does not count.
void addToTimeline(Timeline &timeline, const SaHpiEventT &event);

} // namespace zusahpi::evtlogctl
