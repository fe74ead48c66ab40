// Gathering findings.
#include "tools/evtlogctl/findings.h"

#include <algorithm>

#include <fmt/format.h>

namespace zusahpi::evtlogctl {
namespace {

[[nodiscard]] FindingGroup &groupOf(Findings &findings, std::string_view likeness) {
    const auto found = std::find_if(findings.groups.begin(), findings.groups.end(),
                                    [&](const auto &group) { return group.likeness == likeness; });
    if (found != findings.groups.end()) {
        return *found;
    }
    findings.groups.push_back({.likeness = std::string(likeness), .lines = {}, .count = 0});
    return findings.groups.back();
}

} // namespace

void report(Findings &findings, Weight weight, const Place &place, std::string_view likeness,
            std::string_view text) {
    ++(weight == Weight::damage ? findings.damages : findings.notices);
    FindingGroup &group = groupOf(findings, likeness);
    ++group.count;
    if (group.lines.size() < findings.mostOfAKind) {
        group.lines.push_back(fmt::format("offset {}{}{}: {}: {}", place.offset,
                                          place.what.empty() ? "" : ", ", place.what,
                                          weight == Weight::damage ? "damage" : "notice", text));
    }
}

std::string linesOf(const Findings &findings) {
    std::string text;
    for (const FindingGroup &group : findings.groups) {
        for (const std::string &line : group.lines) {
            text += line + "\n";
        }
        if (group.count > group.lines.size()) {
            text += fmt::format("and {} more like it; --all prints every one\n",
                                group.count - group.lines.size());
        }
    }
    return text;
}

} // namespace zusahpi::evtlogctl
