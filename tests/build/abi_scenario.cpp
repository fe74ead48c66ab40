// The same operations on a log of each type, with clocks that stand still: for comparing the log
// files of the two ABIs byte by byte, and for opening one ABI's files with the other.
//
//   abi_scenario write FOLDER   makes FOLDER/simple, FOLDER/circular and FOLDER/linked
//   abi_scenario read FOLDER    opens each and prints its entries from the oldest to the newest

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tests/support/child.h"
#include "tests/support/test_mainlib.h"
#include "zuSaHpi_util.h"

namespace {

struct Kind {
    const char *name;
    SaHpiUint32T type;
    SaHpiUint32T overflowAction;
};

constexpr std::array kinds = {
    Kind{"simple", ZUSAHPI_EL_TYPE_SIMPLE, ZUSAHPI_EL_WRITE_LAST},
    Kind{"circular", ZUSAHPI_EL_TYPE_CIRCULAR, ZUSAHPI_EL_WRAP},
    Kind{"linked", ZUSAHPI_EL_TYPE_LINKED, ZUSAHPI_EL_WRAP},
};

void start(const std::string &folder, const Kind &kind) {
    EventLogControlBlock block;
    std::memset(&block, 0, sizeof block);
    block.size = ZUSAHPI_EL_CONTROL_BLOCK_SIZE;
    block.magic = ZUSAHPI_EL_CONTROL_BLOCK_MAGIC;
    block.info.sa.Size = 6;
    block.info.sa.UserEventMaxSize = 255;
    block.info.sa.Enabled = 1;
    block.info.sa.OverflowAction = SAHPI_EL_OVERFLOW_OVERWRITE;
    block.info.type = kind.type;
    block.info.overflowAction = kind.overflowAction;
    block.info.oldest = block.info.newest = block.info.freeHead = ZUSAHPI_EL_NO_ENTRY;
    block.fileEnabled = 1;
    std::snprintf(block.fileName, sizeof block.fileName, "%s/%s", folder.c_str(), kind.name);
    (void)zuSaHpiEventLogInit(&block);
}

void addEntry(int number) {
    EventLogAddRecord record;
    std::memset(&record, number, sizeof record);
    record.event.EventType = SAHPI_ET_SENSOR;
    SaHpiSensorEventT &sensor = record.event.EventDataUnion.SensorEvent;
    sensor.TriggerReading.Type = SAHPI_SENSOR_READING_TYPE_FLOAT64;
    sensor.TriggerReading.Value.SensorFloat64 = number * 1.5;
    test_mainlib::state().timeOfDay += 1'000'000'007;
    (void)zuSaHpiEventLogEntryAdd(&record, 1);
}

void writeLog(const std::string &folder, const Kind &kind) {
    start(folder, kind);
    for (int number = 1; number <= 4; ++number) {
        addEntry(number);
    }
    (void)zuSaHpiEventLogEntryDel(kind.type == ZUSAHPI_EL_TYPE_LINKED ? 2 : SAHPI_NEWEST_ENTRY, 0);
    (void)zuSaHpiEventLogTimeSet(0x0C00000000000001);
    for (int number = 5; number <= 9; ++number) {
        addEntry(number);
    }
    (void)zuSaHpiEventLogStateSet(0);
}

void readLog(const std::string &folder, const Kind &kind) {
    start(folder, kind);
    EventLogEntryRecord record;
    SaHpiEventLogEntryIdT id = SAHPI_OLDEST_ENTRY;
    while (zuSaHpiEventLogEntryGet(id, &record) == SA_OK) {
        const SaHpiSensorEventT &sensor = record.entry.Event.EventDataUnion.SensorEvent;
        std::printf("%s %u %lld %g\n", kind.name, record.entry.EntryId,
                    static_cast<long long>(record.entry.Timestamp),
                    sensor.TriggerReading.Value.SensorFloat64);
        if (record.next >= SAHPI_NO_MORE_ENTRIES) {
            break;
        }
        id = record.next;
    }
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 3) {
        return EXIT_FAILURE;
    }
    const bool writing = std::string(argv[1]) == "write";
    for (const Kind &kind : kinds) {
        const auto result = test_support::runInChild(
            [&] { writing ? writeLog(argv[2], kind) : readLog(argv[2], kind); });
        std::fputs(result.diagnostics.c_str(), stdout);
        if (result.exitStatus != 0) {
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
