// What a check found: gathered by likeness, so that a file full of the same mistake does not bury
// the others. It is shown as lines for the user or as lines of JSON.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace zusahpi::evtlogctl {

enum class Weight : std::uint8_t {
    notice, // the log can be used
    damage, // entries are lost or will be, or the log cannot be started or added to
};

// A place in the file. `what` names the record there ("entry 3"); empty in the info record.
struct Place {
    off_t offset = 0;
    std::string what;
    std::uint32_t entry = 0; // its number; 0 for none
};

struct Finding {
    Place place;
    Weight weight = Weight::notice;
    std::string text;
};

struct FindingGroup {
    std::string likeness;
    std::vector<Finding> findings; // the first few
    std::size_t count = 0;
};

struct Findings {
    std::size_t mostOfAKind = 10;
    std::vector<FindingGroup> groups; // in the order of their first finding
    std::size_t notices = 0;
    std::size_t damages = 0;
};

inline constexpr std::size_t allOfAKind = std::numeric_limits<std::size_t>::max();

// `likeness` is the same for findings that differ in their place and numbers alone.
void report(Findings &findings, Weight weight, const Place &place, std::string_view likeness,
            std::string_view text);

// A line for each finding, and after each group cut short one that says how many more there are.
[[nodiscard]] std::string linesOf(const Findings &findings);

// The same findings as a line of JSON each. What was cut short is for the reader's own summary.
[[nodiscard]] std::string jsonLinesOf(const Findings &findings);

// How many findings a group cut short left out, in all groups together.
[[nodiscard]] std::size_t leftOut(const Findings &findings);

} // namespace zusahpi::evtlogctl
