// Printing configuration trees as text, for comparing them whole.

#include "tests/mainlib/config_tree.h"

#include <cstring>

#include <gtest/gtest.h>

namespace config_tree {
namespace {

bool hasText(const ConfigNode &node) {
    return node.code == 0 || node.code == ZUSAHPI_CONF_FILE_NAME;
}

void write(const ConfigNode *node, const std::string &indent, std::string &out) {
    for (; node != nullptr; node = node->nextSibling) {
        out += indent + std::to_string(node->line) + ": " + node->keyword + " " +
               std::to_string(node->code) + " " + std::to_string(node->intValue);
        if (hasText(*node)) {
            out += " \"" + std::string(node->strValue, node->intValue) + "\"";
        }
        out += "\n";
        write(node->firstChild, indent + "  ", out);
    }
}

bool valueAllowed(const ConfigNode &node) {
    const std::uint32_t value = node.intValue;
    switch (node.code) {
    case ZUSAHPI_CONF_EVENT_LOG:
        return value <= 3;
    case ZUSAHPI_CONF_SIZE:
        return value >= 1;
    case ZUSAHPI_CONF_OVERFLOW:
        return value <= 2;
    case ZUSAHPI_CONF_USER_EVENT_MAX_SIZE:
        return value <= 255;
    case ZUSAHPI_CONF_REINITIALIZE:
    case ZUSAHPI_CONF_ENABLED:
    case ZUSAHPI_CONF_RELATIVE_TIME:
    case ZUSAHPI_CONF_OVERFLOW_RESETABLE:
    case ZUSAHPI_CONF_SYSLOG:
    case ZUSAHPI_CONF_SYSLOG_FOLLOWS_STATE:
    case ZUSAHPI_CONF_SYSLOG_SUPPRESS_RESOURCE:
        return value <= 1;
    case ZUSAHPI_CONF_SYSLOG_EVENT_TYPE:
        return value <= 8 || value == 0xFFFFFFFFU;
    case ZUSAHPI_CONF_SYSLOG_SEVERITY:
        return value <= 4 || value == 240 || value == 255;
    case ZUSAHPI_CONF_SYSLOG_LEVEL:
        return value <= 7 || value == 0xFFFFFFFFU;
    case ZUSAHPI_CONF_FILE_NAME:
    case 0:
        return value <= sizeof node.strValue;
    default:
        return false;
    }
}

void expectLevelSound(const ConfigNode *node, const ConfigNode *parent) {
    for (; node != nullptr; node = node->nextSibling) {
        EXPECT_EQ(node->parent, parent);
        EXPECT_NE(std::memchr(node->keyword, '\0', sizeof node->keyword), nullptr);
        EXPECT_GE(node->line, parent == nullptr ? 1 : parent->line);
        EXPECT_TRUE(valueAllowed(*node)) << node->keyword << " " << node->intValue;
        expectLevelSound(node->firstChild, node);
    }
}

} // namespace

std::string textOf(const ConfigNode *first) {
    std::string out;
    write(first, "", out);
    return out;
}

void expectSound(const ConfigNode *first) {
    expectLevelSound(first, nullptr);
}

} // namespace config_tree
