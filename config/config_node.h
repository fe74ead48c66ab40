// Walking the nodes of the configuration, and what is said of a node that does not belong.
#pragma once

#include <cstdint>
#include <cstdlib>

#include "util/diagnostics.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi::config {

// The first of `nodes` and its later siblings with that code; null when there is none.
[[nodiscard]] inline const ConfigNode *findNode(const ConfigNode *nodes, std::uint32_t code) {
    while (nodes != nullptr && nodes->code != code) {
        nodes = nodes->nextSibling;
    }
    return nodes;
}

// The same for code and value.
[[nodiscard]] inline const ConfigNode *findNode(const ConfigNode *nodes, std::uint32_t code,
                                                std::uint32_t value) {
    while (nodes != nullptr && !(nodes->code == code && nodes->intValue == value)) {
        nodes = nodes->nextSibling;
    }
    return nodes;
}

// A keyword is not trusted to end within its array.
inline void reportUndefinedKeyword(const ConfigNode &superior, const ConfigNode &node) {
    zuSaHpiPrintf(diagnostics(), "Undefined keyword subordinate to %.*s: %.*s\n",
                  ZUSAHPI_CONF_TEXT_SIZE, superior.keyword, ZUSAHPI_CONF_TEXT_SIZE, node.keyword);
}

// Ends the process after a message.
[[noreturn]] inline void fail() {
    std::exit(EXIT_FAILURE);
}

} // namespace zusahpi::config
