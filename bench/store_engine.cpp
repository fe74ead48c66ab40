// The event log: Linked where adds are durable, otherwise Simple while it grows and Circular where
// it wraps.

#include <cstddef>
#include <cstring>

#include "bench/engine.h"

namespace bench {
namespace {

void open(const Setup &setup) {
    EventLogControlBlock block{};
    block.size = ZUSAHPI_EL_CONTROL_BLOCK_SIZE;
    block.magic = ZUSAHPI_EL_CONTROL_BLOCK_MAGIC;
    block.info.sa.Size = setup.capacity;
    block.info.sa.UserEventMaxSize = SAHPI_MAX_TEXT_BUFFER_LENGTH;
    block.info.sa.Enabled = SAHPI_TRUE;
    block.info.sa.OverflowResetable = SAHPI_TRUE;
    block.info.type = setup.durable ? ZUSAHPI_EL_TYPE_LINKED
                      : setup.wraps ? ZUSAHPI_EL_TYPE_CIRCULAR
                                    : ZUSAHPI_EL_TYPE_SIMPLE;
    block.info.overflowAction = setup.wraps ? ZUSAHPI_EL_WRAP : ZUSAHPI_EL_DROP;
    block.info.oldest = ZUSAHPI_EL_NO_ENTRY;
    block.info.newest = ZUSAHPI_EL_NO_ENTRY;
    block.info.freeHead = ZUSAHPI_EL_NO_ENTRY;
    block.fileEnabled = 1;
    const std::string path = setup.folder + "/log";
    require(path.size() < sizeof block.fileName, "the folder's name is too long", path);
    std::memcpy(block.fileName, path.c_str(), path.size() + 1);
    require(zuSaHpiEventLogInit(&block) == SA_OK, "zuSaHpiEventLogInit");
}

// A program has its event as the library takes it, as it has its bytes for the other engines.
void add(const Record &record) {
    constexpr std::size_t event = offsetof(Record, entry.Event);
    static_assert(offsetof(Record, rpt) - event == offsetof(EventLogAddRecord, rpt));
    static_assert(offsetof(Record, rdr) - event == offsetof(EventLogAddRecord, rdr));
    const auto *added = reinterpret_cast<const EventLogAddRecord *>(&record.entry.Event);
    require(zuSaHpiEventLogEntryAdd(added, 0) == SA_OK, "zuSaHpiEventLogEntryAdd");
}

void read(std::uint32_t number, Record &record) {
    require(zuSaHpiEventLogEntryGet(number, &record) == SA_OK, "zuSaHpiEventLogEntryGet");
}

void readNewest(Record &record) {
    read(SAHPI_NEWEST_ENTRY, record);
}

void close() { // at exit
}

} // namespace

const Engine storeEngine = {"zuSaHpi_util", open, add, read, readNewest, close};

} // namespace bench
