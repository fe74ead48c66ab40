// Builds configuration trees as a parser would hand them over: strings without a NUL, nodes no
// longer than they need be, line numbers in reading order.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "zuSaHpi_util.h"

namespace config_tree {

struct Node {
    std::uint32_t code;
    std::uint32_t value;
    std::string text = {};           // of a string keyword; its length is then the value
    std::vector<Node> children = {}; // subordinates
    std::string keyword = {};        // where it is not the usual text of the code
};

Node number(std::uint32_t code, std::uint32_t value, std::vector<Node> children = {});
Node string(std::uint32_t code, std::string text);

// Keywords by name.
Node eventLog(std::uint32_t type, std::vector<Node> children);
Node fileName(std::string text);
Node size(std::uint32_t entries);
Node overflow(std::uint32_t action);
Node syslog(std::vector<Node> children);
Node eventType(std::uint32_t type, std::vector<Node> severities);
Node allEventTypes(std::vector<Node> severities);
Node severity(std::uint32_t severity, std::uint32_t level);
Node allSeverities(std::uint32_t level);
Node unknown(std::string keyword);

// The least that is accepted, with more keywords behind it: a Linked log of one entry.
std::vector<Node> linkedLog(std::vector<Node> more = {});

// A tree of ConfigNodes. Lives as long as the nodes are used.
class Tree {
  public:
    explicit Tree(const std::vector<Node> &nodes);
    [[nodiscard]] const ConfigNode *first() const {
        return first_;
    }

  private:
    struct Free {
        void operator()(ConfigNode *node) const;
    };
    ConfigNode *add(const std::vector<Node> &nodes, ConfigNode *parent);

    std::vector<std::unique_ptr<ConfigNode, Free>> storage_;
    std::uint32_t line_ = 0;
    ConfigNode *first_;
};

// What is printed and how the process ends when these nodes are refused; a test failure when they
// are not.
std::string refusalOf(const std::vector<Node> &nodes);

} // namespace config_tree
