// Reads a configuration text into the tree of nodes that zuSaHpiEvtLogConf takes.
#pragma once

#include <deque>
#include <string>
#include <string_view>

#include "zuSaHpi_util.h"

namespace zusahpi::mainlib {

// The nodes point to each other: a record may be moved but not copied. The first node is the first
// of the top level. With an error there are none.
struct Configuration {
    std::deque<ConfigNode> nodes;
    std::string error;

    Configuration() = default;
    Configuration(Configuration &&) = default;
    Configuration &operator=(Configuration &&) = default;
};

// Limits that no sensible configuration meets, so that a hostile one costs little.
inline constexpr std::size_t maxFileSize = std::size_t{4} << 20U; // bytes
inline constexpr std::size_t maxKeywords = 10'000;
inline constexpr std::size_t maxDepth = 32; // open braces

// `name` stands for the file in the error. Throws std::bad_alloc and nothing else.
[[nodiscard]] Configuration readConfiguration(std::string_view name, std::string_view text);

} // namespace zusahpi::mainlib
