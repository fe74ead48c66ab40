// Building configuration trees node by node, as a main library would hand them over.

#include "tests/config/config_tree.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <new>

#include <gtest/gtest.h>

#include "tests/support/child.h"

namespace config_tree {
namespace {

constexpr std::array keywords = {"EventLog",
                                 "Filename",
                                 "Reinitialize",
                                 "Size",
                                 "Overflow",
                                 "UserEventMaxSize",
                                 "Enabled",
                                 "RelativeTime",
                                 "OverflowResetable",
                                 "Syslog",
                                 "EventLogSyslogEventType",
                                 "EventLogSyslogSeverity",
                                 "EventLogSyslogLevel",
                                 "SyslogFollowsState",
                                 "SyslogSuppressResource"};

std::string keywordOf(const Node &node) {
    const std::uint32_t index = node.code - ZUSAHPI_CONF_EVENT_LOG;
    if (!node.keyword.empty() || index >= keywords.size()) {
        return node.keyword;
    }
    return keywords[index];
}

// As long as the value's text needs, so that a read behind it is found out.
ConfigNode *allocate(std::size_t textLength) {
    const std::size_t bytes = offsetof(ConfigNode, strValue) + textLength;
    void *memory = ::operator new(bytes);
    std::memset(memory, 0, bytes);
    return static_cast<ConfigNode *>(memory);
}

} // namespace

Node number(std::uint32_t code, std::uint32_t value, std::vector<Node> children) {
    return {.code = code, .value = value, .children = std::move(children)};
}

Node string(std::uint32_t code, std::string text) {
    const auto length = static_cast<std::uint32_t>(text.size());
    return {.code = code, .value = length, .text = std::move(text)};
}

Node eventLog(std::uint32_t type, std::vector<Node> children) {
    return number(ZUSAHPI_CONF_EVENT_LOG, type, std::move(children));
}

Node fileName(std::string text) {
    return string(ZUSAHPI_CONF_FILE_NAME, std::move(text));
}

Node size(std::uint32_t entries) {
    return number(ZUSAHPI_CONF_SIZE, entries);
}

Node overflow(std::uint32_t action) {
    return number(ZUSAHPI_CONF_OVERFLOW, action);
}

Node syslog(std::vector<Node> children) {
    return number(ZUSAHPI_CONF_SYSLOG, 1, std::move(children));
}

Node eventType(std::uint32_t type, std::vector<Node> severities) {
    return number(ZUSAHPI_CONF_SYSLOG_EVENT_TYPE, type, std::move(severities));
}

Node allEventTypes(std::vector<Node> severities) {
    return eventType(ZUSAHPI_CONF_ALL, std::move(severities));
}

Node severity(std::uint32_t severity, std::uint32_t level) {
    return number(ZUSAHPI_CONF_SYSLOG_SEVERITY, severity,
                  {number(ZUSAHPI_CONF_SYSLOG_LEVEL, level)});
}

Node allSeverities(std::uint32_t level) {
    return severity(SAHPI_ALL_SEVERITIES, level);
}

Node unknown(std::string keyword) {
    return {.code = 42, .value = 1, .keyword = std::move(keyword)};
}

std::vector<Node> linkedLog(std::vector<Node> more) {
    std::vector<Node> children = {fileName("log"), size(1)};
    children.insert(children.end(), more.begin(), more.end());
    return {eventLog(ZUSAHPI_EL_TYPE_LINKED, std::move(children))};
}

Tree::Tree(const std::vector<Node> &nodes) : first_(add(nodes, nullptr)) {
}

void Tree::Free::operator()(ConfigNode *node) const {
    ::operator delete(node);
}

ConfigNode *Tree::add(const std::vector<Node> &nodes, ConfigNode *parent) {
    ConfigNode *first = nullptr;
    ConfigNode *last = nullptr;
    for (const Node &node : nodes) {
        ConfigNode *added = allocate(node.text.size());
        storage_.emplace_back(added);
        const std::string keyword = keywordOf(node);
        std::memcpy(added->keyword, keyword.data(),
                    std::min(keyword.size(), sizeof added->keyword));
        std::memcpy(reinterpret_cast<char *>(added) + offsetof(ConfigNode, strValue),
                    node.text.data(), node.text.size());
        added->code = node.code;
        added->intValue = node.value;
        added->line = ++line_;
        added->parent = parent;
        added->firstChild = add(node.children, added);
        (last == nullptr ? first : last->nextSibling) = added;
        last = added;
    }
    return first;
}

std::string refusalOf(const std::vector<Node> &nodes) {
    const Tree tree(nodes);
    const test_support::ChildResult result = test_support::runInChild([&] {
        zuSaHpiEvtLogConf(tree.first());
        ADD_FAILURE() << "accepted";
    });
    EXPECT_EQ(result.exitStatus, 1);
    return result.diagnostics;
}

} // namespace config_tree
