// Any text as a configuration file of the default main library, and what it becomes as the
// library's configuration.

#include <cstring>

#include "tests/fuzz/configured.h"
#include "tests/fuzz/harness.h"
#include "zuSaHpi_default_mainlib.h"

namespace {

void requireOneLine(const char *text) {
    for (; *text != '\0'; ++text) {
        fuzz::require(*text >= ' ' && *text <= '~', "an error is one printable line");
    }
}

void requireLinked(const ConfigNode *node, const ConfigNode *parent) {
    for (; node != nullptr; node = node->nextSibling) {
        fuzz::require(node->parent == parent, "a node knows its superior");
        fuzz::require(strnlen(node->keyword, sizeof node->keyword) < sizeof node->keyword,
                      "a keyword ends");
        requireLinked(node->firstChild, node);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    // Without the NUL: the parser must go by the length.
    const fuzz::Memory<char> text = fuzz::zeros<char>(size);
    if (size > 0) {
        std::memcpy(text.get(), data, size);
    }
    zuSaHpiConfigT config = zuSaHpiConfigTextRead("fuzz", text.get(), size);
    if (config.error != nullptr) {
        fuzz::require(config.nodes == nullptr, "an error leaves no nodes");
        requireOneLine(config.error);
    }
    requireLinked(config.nodes, nullptr);
    fuzz::configure(config.nodes);
    zuSaHpiConfigRelease(&config);
    return 0;
}
