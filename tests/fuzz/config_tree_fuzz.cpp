// Any tree of keywords that a main library may hand over: unknown codes, values out of range, texts
// without an end, in any shape.
//
// The input is a row of nodes, each of four bytes and what they ask for: where it hangs, its code,
// its value, the length of its keyword; a code or a value of four bytes behind 255; of a string the
// characters.

#include <algorithm>

#include "tests/fuzz/configured.h"
#include "tests/fuzz/harness.h"

namespace {

using fuzz::Bytes;

constexpr std::size_t mostNodes = 64;
constexpr std::uint8_t wholeNumber = 0xFF;

struct Tree {
    fuzz::Memory<ConfigNode> nodes[mostNodes];
    std::size_t count = 0;
    ConfigNode *last = nullptr;
};

// A length of at most so many characters is backed by them; the library reads of no longer one.
constexpr std::uint32_t longestName = 98;

void hang(Tree &tree, ConfigNode *node, std::uint8_t where) {
    ConfigNode *before = tree.last;
    for (unsigned up = where % 4; before != nullptr && up > 1; --up) {
        before = before->parent != nullptr ? before->parent : before;
    }
    if (before != nullptr && where % 4 == 0) {
        before->firstChild = node;
        node->parent = before;
    } else if (before != nullptr) {
        before->nextSibling = node;
        node->parent = before->parent;
    }
    tree.last = node;
}

// As long as its text needs, so that a read behind it is found.
void addNode(Tree &tree, Bytes &input) {
    const std::uint8_t where = fuzz::takeByte(input);
    const std::uint8_t code = fuzz::takeByte(input);
    const std::uint8_t value = fuzz::takeByte(input);
    const std::size_t keywordLength = fuzz::takeByte(input);
    const std::uint32_t wholeCode =
        code == wholeNumber ? fuzz::takeValue<std::uint32_t>(input) : ZUSAHPI_CONF_EVENT_LOG + code;
    const std::uint32_t wholeValue =
        value == wholeNumber ? fuzz::takeValue<std::uint32_t>(input) : value;
    const bool isText = wholeCode == ZUSAHPI_CONF_FILE_NAME && wholeValue <= longestName;
    const std::size_t length = isText ? wholeValue : 0;

    fuzz::Memory<ConfigNode> &node = tree.nodes[tree.count++];
    node = fuzz::zeros<ConfigNode>(offsetof(ConfigNode, strValue) + length);
    node->code = wholeCode;
    node->intValue = wholeValue;
    node->line = static_cast<std::uint32_t>(tree.count);
    std::memset(node->keyword, 'k', std::min(keywordLength + 1, sizeof node->keyword));
    const Bytes text = fuzz::take(input, length);
    if (!text.empty()) {
        auto *const bytes = reinterpret_cast<std::uint8_t *>(node.get());
        std::copy(text.begin(), text.end(), bytes + offsetof(ConfigNode, strValue));
    }
    hang(tree, node.get(), where);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    Bytes input(data, size);
    Tree tree;
    while (!input.empty() && tree.count < mostNodes) {
        addNode(tree, input);
    }
    fuzz::configure(tree.nodes[0].get());
    return 0;
}
