// What the shell completes: sub-commands, and the words that may follow each.
#include <array>
#include <span>
#include <string_view>

#include "tools/evtlogctl/line_editor.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::array<std::string_view, 11> subCommands = {
    "info", "entry", "delete", "clear", "reset", "time", "state", "print", "add", "help", "quit"};
constexpr std::array<std::string_view, 2> selectors = {"oldest", "newest"};
constexpr std::array<std::string_view, 4> stateWords = {"enabled", "disabled", "protect",
                                                        "unprotect"};
constexpr std::array<std::string_view, 1> forms = {"dump"};

[[nodiscard]] std::span<const std::string_view> candidates(const std::vector<std::string> &before) {
    const std::size_t skipped = !before.empty() && before.front() == "evtlog" ? 1 : 0;
    if (before.size() == skipped) {
        return subCommands;
    }
    if (before.size() > skipped + 1 || before[skipped].empty()) {
        return {};
    }
    switch (before[skipped].front()) { // sub-commands go by their first letter
    case 'e':
    case 'd':
        return selectors;
    case 's':
        return stateWords;
    case 'p':
        return forms;
    default:
        return {};
    }
}

} // namespace

std::vector<std::string> completions(const std::vector<std::string> &before,
                                     const std::string &typed) {
    std::vector<std::string> found;
    for (const std::string_view candidate : candidates(before)) {
        if (candidate.starts_with(typed)) {
            found.emplace_back(candidate);
        }
    }
    return found;
}

} // namespace zusahpi::evtlogctl
