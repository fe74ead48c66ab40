// What a check found, as lines for the user: gathered by likeness, so that a file full of the same
// mistake does not bury the others.
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
};

struct FindingGroup {
    std::string likeness;
    std::vector<std::string> lines; // the first few
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

} // namespace zusahpi::evtlogctl
