// What the entries of a log come to: how many there are of each severity, event type, source and
// sensor, and over what time.
//
// Memory is bounded whatever the log holds: a tally tells no more than mostGroups groups apart.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "tools/evtlogctl/log_reader.h"
#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {

inline constexpr std::size_t mostGroups = 10'000;

// When events happened, of those that have a time of day.
struct EventTimes {
    std::size_t events = 0;
    SaHpiTimeT first = 0;
    SaHpiTimeT last = 0;
};

// The entries that have one severity, event type, source or sensor.
struct CountedGroup {
    std::uint32_t value = 0; // of a severity or event type
    std::string source;      // of a source or sensor, as the list of entries shows it
    std::string sensor;
    std::size_t entries = 0;
    EventTimes times;
};

struct Tally {
    std::unordered_map<std::string, CountedGroup> groups;
    std::size_t entriesBeyond = 0; // of groups that were not told apart any more
};

struct LogCounts {
    std::size_t entries = 0;
    std::size_t relative = 0; // their time counts from the start of the controller
    std::size_t untimed = 0;
    EventTimes times; // of all others
    Tally severities;
    Tally eventTypes;
    Tally sources;
    Tally sensors; // of the events that are from one
};

// All that the reader still has.
[[nodiscard]] LogCounts countEntries(SnapshotReader &entries);

// The groups of a tally, the one with the most entries first; it must outlive them.
[[nodiscard]] std::vector<const CountedGroup *> busiestFirst(const Tally &tally);

// How many events of a group a day has, over the time of the whole log; nothing where that time has
// no length.
[[nodiscard]] std::optional<double> perDay(const EventTimes &group, const EventTimes &whole);

// From the first event to the last.
[[nodiscard]] double daysOf(const EventTimes &times);

} // namespace zusahpi::evtlogctl
