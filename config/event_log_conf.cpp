// The control block of the event log, made from the configuration.
//
// Invariant: the block that is handed out has size and magic set; they are set last, so that a
// block that is not finished is never taken for one that is.

#include <cstring>

#include "config/config_node.h"
#include "config/syslog_map_conf.h"

namespace zusahpi::config {
namespace {

EventLogControlBlock controlBlock;

// What must be in the configuration, whatever its value.
struct Given {
    bool fileName;
    bool size;
};

[[nodiscard]] EventLogControlBlock defaultBlock() {
    EventLogControlBlock block;
    std::memset(&block, 0, sizeof block); // padding too: its bytes reach the log file
    block.info.sa.UserEventMaxSize = SAHPI_MAX_TEXT_BUFFER_LENGTH;
    block.info.sa.Enabled = SAHPI_TRUE;
    block.info.sa.OverflowResetable = SAHPI_TRUE;
    block.info.sa.OverflowAction = SAHPI_EL_OVERFLOW_OVERWRITE;
    block.info.overflowAction = ZUSAHPI_EL_WRAP;
    block.info.oldest = ZUSAHPI_EL_NO_ENTRY;
    block.info.newest = ZUSAHPI_EL_NO_ENTRY;
    block.info.freeHead = ZUSAHPI_EL_NO_ENTRY;
    return block;
}

// A boolean has 8 bits in the block and 32 in the configuration.
[[nodiscard]] SaHpiBoolT booleanOf(const ConfigNode &node) {
    return node.intValue != 0 ? SAHPI_TRUE : SAHPI_FALSE;
}

void storeType(const ConfigNode &node, EventLogControlBlock &block) {
    constexpr std::uint32_t syslogOnly = 3;
    block.info.type = node.intValue;
    block.fileEnabled = node.intValue == syslogOnly ? 0 : 1;
    block.syslogEnabled = node.intValue == syslogOnly ? 1 : 0;
}

void storeFileName(const ConfigNode &node, EventLogControlBlock &block) {
    constexpr std::uint32_t longest = ZUSAHPI_EL_FILE_NAME_SIZE - 2;
    const std::uint32_t length = node.intValue;
    if (length == 0 || length > longest) {
        zuSaHpiPrintf(diagnostics(), "Illegal Filename for eventlog in config\n");
        fail();
    }
    std::memcpy(block.fileName, node.strValue, length);
    block.fileName[length] = '\0';
}

void storeOverflow(const ConfigNode &node, EventLogControlBlock &block) {
    block.info.overflowAction = node.intValue;
    block.info.sa.OverflowAction =
        node.intValue == ZUSAHPI_EL_DROP ? SAHPI_EL_OVERFLOW_DROP : SAHPI_EL_OVERFLOW_OVERWRITE;
}

void storeKeyword(const ConfigNode &eventLog, const ConfigNode &node, EventLogControlBlock &block,
                  Given &given) {
    switch (node.code) {
    case ZUSAHPI_CONF_FILE_NAME:
        storeFileName(node, block);
        given.fileName = true;
        return;
    case ZUSAHPI_CONF_REINITIALIZE:
        block.reinitialize = node.intValue;
        return;
    case ZUSAHPI_CONF_SIZE:
        block.info.sa.Size = node.intValue;
        given.size = true;
        return;
    case ZUSAHPI_CONF_OVERFLOW:
        storeOverflow(node, block);
        return;
    case ZUSAHPI_CONF_USER_EVENT_MAX_SIZE:
        block.info.sa.UserEventMaxSize = node.intValue;
        return;
    case ZUSAHPI_CONF_ENABLED:
        block.info.sa.Enabled = booleanOf(node);
        return;
    case ZUSAHPI_CONF_RELATIVE_TIME:
        block.relativeTime = node.intValue;
        return;
    case ZUSAHPI_CONF_OVERFLOW_RESETABLE:
        block.info.sa.OverflowResetable = booleanOf(node);
        return;
    case ZUSAHPI_CONF_SYSLOG:
        block.syslogEnabled = node.intValue;
        configureSyslogMap(node, block);
        return;
    default:
        reportUndefinedKeyword(eventLog, node);
        return;
    }
}

void checkComplete(const EventLogControlBlock &block, const Given &given) {
    if (block.info.overflowAction == ZUSAHPI_EL_WRAP && block.info.type == ZUSAHPI_EL_TYPE_SIMPLE) {
        zuSaHpiPrintf(diagnostics(), "Illegal configuration for event log.\n");
        zuSaHpiPrintf(diagnostics(), "Overflow=wrap not allowed if EventLog=simple.\n");
        fail();
    }
    if (!given.fileName) {
        zuSaHpiPrintf(diagnostics(), "No Filename parameter given for EventLog\n");
        fail();
    }
    if (!given.size) {
        zuSaHpiPrintf(diagnostics(), "No Size parameter given for EventLog\n");
        fail();
    }
}

} // namespace
} // namespace zusahpi::config

EventLogControlBlock *zuSaHpiEvtLogConf(const ConfigNode *nodes) {
    using namespace zusahpi;
    using namespace zusahpi::config;
    EventLogControlBlock &block = controlBlock;
    block = defaultBlock();
    const ConfigNode *eventLog = findNode(nodes, ZUSAHPI_CONF_EVENT_LOG);
    if (eventLog == nullptr) {
        zuSaHpiPrintf(diagnostics(), "No EventLog entry in configuration data.\n");
        fail();
    }
    storeType(*eventLog, block);
    zuSaHpiSyslogSuppressResource = 0;
    Given given{};
    for (const ConfigNode *node = eventLog->firstChild; node != nullptr; node = node->nextSibling) {
        storeKeyword(*eventLog, *node, block, given);
    }
    checkComplete(block, given);
    block.size = ZUSAHPI_EL_CONTROL_BLOCK_SIZE;
    block.magic = ZUSAHPI_EL_CONTROL_BLOCK_MAGIC;
    return &block;
}
