// The configuration, what must hold of it, and the way back.

#include "tests/fuzz/configured.h"

#include "config/syslog_map.h"
#include "tests/fuzz/process_exit.h"

namespace fuzz {
namespace {

void requireSoundBlock(const EventLogControlBlock &block) {
    require(block.size == ZUSAHPI_EL_CONTROL_BLOCK_SIZE &&
                block.magic == ZUSAHPI_EL_CONTROL_BLOCK_MAGIC,
            "the block is finished");
    const std::size_t length = strnlen(block.fileName, sizeof block.fileName);
    require(length < sizeof block.fileName, "the file name ends");
    require(block.info.oldest == ZUSAHPI_EL_NO_ENTRY && block.info.newest == ZUSAHPI_EL_NO_ENTRY &&
                block.info.freeHead == ZUSAHPI_EL_NO_ENTRY && block.info.sa.Entries == 0 &&
                block.info.maxUsed == 0 && block.info.updating == 0,
            "the block describes an empty log");
}

void requireSoundMap() {
    const SyslogMapEntry *entry = zuSaHpiSyslogMapHead;
    for (; entry != nullptr; entry = entry->next) {
        for (const std::int32_t level : entry->level) {
            require(level >= -1 && level <= 7, "a level is one, or none");
        }
        if (entry->next == nullptr) {
            require(entry == &zuSaHpiSyslogMapDefault, "the map ends with the default entry");
        }
    }
}

void forwardEvents() {
    EventLogAddRecord record;
    std::memset(&record, 0, sizeof record);
    for (unsigned type = 0; type < 10; ++type) {
        for (unsigned severity = 0; severity < ZUSAHPI_SYSLOG_SLOTS; ++severity) {
            record.event.EventType = static_cast<SaHpiEventTypeT>(type);
            record.event.Severity = static_cast<SaHpiSeverityT>(severity);
            zuSaHpiEventLogSyslogAdd(&record);
        }
    }
}

void restoreMap(const SyslogMapEntry &standard) {
    while (zuSaHpiSyslogMapHead != &zuSaHpiSyslogMapDefault) {
        SyslogMapEntry *const next = zuSaHpiSyslogMapHead->next;
        std::free(zuSaHpiSyslogMapHead);
        zuSaHpiSyslogMapHead = next;
    }
    zuSaHpiSyslogMapDefault = standard;
    zuSaHpiSyslogSuppressResource = 0;
}

} // namespace

void configure(const ConfigNode *nodes) {
    const SyslogMapEntry standard = zuSaHpiSyslogMapDefault;
    EventLogControlBlock *block = nullptr;
    if (returns([&] { block = zuSaHpiEvtLogConf(nodes); })) {
        requireSoundBlock(*block);
        requireSoundMap();
        forwardEvents();
    } else {
        require(exitState.status == EXIT_FAILURE, "a refusal ends with status 1");
    }
    restoreMap(standard);
}

} // namespace fuzz
