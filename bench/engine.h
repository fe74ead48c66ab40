// What the benchmark asks of every engine: records of 1,496 bytes under running numbers, one record
// a transaction, the oldest deleted in the same transaction once the capacity is reached.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "zuSaHpi_util.h"

namespace bench {

using Record = EventLogEntryRecord;

struct Setup {
    std::string folder; // exists; empty for a fresh store
    bool durable;       // each add is on the disk when it returns; otherwise with the kernel
    bool wraps;         // of a full store the oldest record goes with each add
    std::uint32_t capacity;
};

// Free functions on one store that is open at a time. Each ends the process when it fails.
struct Engine {
    const char *name;
    void (*open)(const Setup &setup);
    void (*add)(const Record &record);
    void (*read)(std::uint32_t number, Record &record); // numbers from 1
    void (*readNewest)(Record &record);
    void (*close)();
};

extern const Engine limitEngine;
extern const Engine storeEngine;
extern const Engine sqliteJournalEngine; // the rollback journal, SQLite's default
extern const Engine sqliteWalEngine;
extern const Engine lmdbEngine;
extern const Engine leveldbEngine;

// Prints and exits unless `success`.
void require(bool success, const char *what, std::string_view detail = {});

} // namespace bench
