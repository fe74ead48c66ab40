// Gathering findings.
#include "tools/evtlogctl/findings.h"

#include <algorithm>

#include <fmt/format.h>

#include "tools/evtlogctl/json_writer.h"

namespace zusahpi::evtlogctl {
namespace {

[[nodiscard]] FindingGroup &groupOf(Findings &findings, std::string_view likeness) {
    const auto found = std::find_if(findings.groups.begin(), findings.groups.end(),
                                    [&](const auto &group) { return group.likeness == likeness; });
    if (found != findings.groups.end()) {
        return *found;
    }
    findings.groups.push_back({.likeness = std::string(likeness), .findings = {}, .count = 0});
    return findings.groups.back();
}

void putFinding(JsonWriter &out, const Finding &finding, std::string_view likeness) {
    putKey(out, "Offset");
    out.Int64(finding.place.offset);
    if (finding.place.entry != 0) {
        putNumber(out, "EntryId", finding.place.entry);
    } else {
        putNull(out, "EntryId");
    }
    if (finding.place.what.empty()) {
        putNull(out, "Record");
    } else {
        putText(out, "Record", finding.place.what);
    }
    putFlag(out, "Damage", finding.weight == Weight::damage);
    putText(out, "Kind", likeness);
    putText(out, "Text", finding.text);
}

} // namespace

void report(Findings &findings, Weight weight, const Place &place, std::string_view likeness,
            std::string_view text) {
    ++(weight == Weight::damage ? findings.damages : findings.notices);
    FindingGroup &group = groupOf(findings, likeness);
    ++group.count;
    if (group.findings.size() < findings.mostOfAKind) {
        group.findings.push_back({.place = place, .weight = weight, .text = std::string(text)});
    }
}

std::string linesOf(const Findings &findings) {
    std::string text;
    for (const FindingGroup &group : findings.groups) {
        for (const Finding &finding : group.findings) {
            text +=
                fmt::format("offset {}{}{}: {}: {}\n", finding.place.offset,
                            finding.place.what.empty() ? "" : ", ", finding.place.what,
                            finding.weight == Weight::damage ? "damage" : "notice", finding.text);
        }
        if (group.count > group.findings.size()) {
            text += fmt::format("and {} more like it; --all prints every one\n",
                                group.count - group.findings.size());
        }
    }
    return text;
}

std::string jsonLinesOf(const Findings &findings) {
    std::string text;
    for (const FindingGroup &group : findings.groups) {
        for (const Finding &finding : group.findings) {
            text += jsonObject([&](JsonWriter &out) { putFinding(out, finding, group.likeness); }) +
                    "\n";
        }
    }
    return text;
}

std::size_t leftOut(const Findings &findings) {
    std::size_t count = 0;
    for (const FindingGroup &group : findings.groups) {
        count += group.count - group.findings.size();
    }
    return count;
}

} // namespace zusahpi::evtlogctl
