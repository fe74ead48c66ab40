// A timeline in slots of a length that people think in.
#include "tools/evtlogctl/report_timeline.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace zusahpi::evtlogctl {
namespace {

constexpr SaHpiTimeT second = 1'000'000'000;
constexpr SaHpiTimeT minute = 60 * second;
constexpr SaHpiTimeT hour = 60 * minute;
constexpr SaHpiTimeT day = 24 * hour;

constexpr std::array lengths = {second,     5 * second,  15 * second, 30 * second, minute,
                                5 * minute, 15 * minute, 30 * minute, hour,        3 * hour,
                                6 * hour,   12 * hour,   day,         2 * day,     7 * day,
                                14 * day,   30 * day,    90 * day,    365 * day,   1825 * day};

[[nodiscard]] std::size_t slotsOf(const EventTimes &times, SaHpiTimeT width) {
    return static_cast<std::size_t>(times.last / width - times.first / width) + 1;
}

// The longest there are let 100 slots hold all times that there can be.
static_assert((std::numeric_limits<std::int64_t>::max() - SAHPI_TIME_MAX_RELATIVE) /
                      lengths.back() +
                  2 <=
              mostSlots);

[[nodiscard]] SaHpiTimeT widthFor(const EventTimes &times) {
    return *std::find_if(lengths.begin(), lengths.end(),
                         [&](SaHpiTimeT width) { return slotsOf(times, width) <= mostSlots; });
}

} // namespace

Timeline timelineOver(const EventTimes &times) {
    if (times.events == 0) {
        return {};
    }
    const SaHpiTimeT width = widthFor(times);
    return {.begin = times.first - times.first % width,
            .width = width,
            .slots = std::vector<SlotCounts>(slotsOf(times, width))};
}

void addToTimeline(Timeline &timeline, const SaHpiEventT &event) {
    if (timeline.slots.empty() || event.Timestamp < timeline.begin) {
        return;
    }
    const SaHpiTimeT slot = (event.Timestamp - timeline.begin) / timeline.width;
    if (std::cmp_greater_equal(slot, timeline.slots.size())) {
        return;
    }
    const auto severity =
        std::find(sel::severitiesByRank.begin(), sel::severitiesByRank.end(), event.Severity);
    SlotCounts &counts = timeline.slots[static_cast<std::size_t>(slot)];
    ++counts[static_cast<std::size_t>(severity - sel::severitiesByRank.begin())];
}

} // namespace zusahpi::evtlogctl
