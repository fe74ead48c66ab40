// Adds events to a fresh log, for counting what one add costs.
//
//   add_cost FILE TYPE SIZE COUNT     TYPE and overflow action wrap as in the info record

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "zuSaHpi_util.h"

namespace {

std::uint32_t number(const char *text) {
    return static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10));
}

} // namespace

int main(int argumentCount, char **arguments) {
    if (argumentCount != 5) {
        return EXIT_FAILURE;
    }
    EventLogControlBlock block{};
    block.size = ZUSAHPI_EL_CONTROL_BLOCK_SIZE;
    block.magic = ZUSAHPI_EL_CONTROL_BLOCK_MAGIC;
    block.info.type = number(arguments[2]);
    block.info.overflowAction = ZUSAHPI_EL_WRAP;
    block.info.sa.Size = number(arguments[3]);
    block.info.sa.Enabled = SAHPI_TRUE;
    block.info.oldest = block.info.newest = block.info.freeHead = ZUSAHPI_EL_NO_ENTRY;
    block.fileEnabled = 1;
    std::strncpy(block.fileName, arguments[1], sizeof block.fileName - 1);
    if (zuSaHpiEventLogInit(&block) != SA_OK) {
        return EXIT_FAILURE;
    }
    EventLogAddRecord record;
    std::memset(&record, 0, sizeof record);
    record.event.EventType = SAHPI_ET_RESOURCE;
    record.rpt.ResourceCapabilities = SAHPI_CAPABILITY_RESOURCE;
    record.rdr.RdrType = SAHPI_SENSOR_RDR;
    const std::uint32_t count = number(arguments[4]);
    for (std::uint32_t i = 0; i < count; ++i) {
        if (zuSaHpiEventLogEntryAdd(&record, 0) != SA_OK) {
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
