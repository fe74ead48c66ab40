// The arguments of `list`: as they stand on the command line, and what they mean.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/evtlogctl/list_options.h"

namespace zusahpi::evtlogctl {

// The words that need a look, beside the options that stand for themselves.
struct ListArguments {
    ListOptions options;
    std::string form = "short";
    std::optional<std::string> priority;
    std::vector<std::string> types;
    std::optional<std::string> since;
    std::optional<std::string> until;
    std::optional<std::string> pattern;
    std::optional<std::string> cursor;
};

// The words that stand for the forms of an entry.
[[nodiscard]] std::vector<std::string> listFormWords();

// To be called once the zone of times is known. Throws Failure when a word means nothing.
[[nodiscard]] ListOptions settledOptions(const ListArguments &arguments);

} // namespace zusahpi::evtlogctl
