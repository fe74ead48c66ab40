// Log files as text or as hex dumps. The file is read record by record, straight from its format,
// and never locked: a printout shows what is there, a transaction in flight included.
//
// Invariants:
//   1. The file is only read. Its bytes are hostile: nothing in them is an index or a length.
//   2. A printout ends where the file ended when it began, so that a file that takes in its own
//      printout, or a device without end, ends too.

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "eventlog/retrieval.h"
#include "eventlog/store_state.h"
#include "frontends/entry_number.h"
#include "util/time_arithmetic.h"
#include "zuSaHpi_mainlib.h"

namespace zusahpi::frontends {
namespace {

using eventlog::LogType;
using eventlog::OverflowAction;

// The longest name that is used as it stands; also of a plain name together with the root.
constexpr std::size_t longestName = eventlog::longestRootAndName;

[[nodiscard]] const char *nameOf(LogType type) {
    switch (type) {
    case LogType::simple:
        return "Simple";
    case LogType::circular:
        return "Circular";
    case LogType::linked:
        return "Linked";
    }
    return "Unknown";
}

[[nodiscard]] const char *nameOf(OverflowAction action) {
    switch (action) {
    case OverflowAction::drop:
        return "Drop";
    case OverflowAction::wrap:
        return "Wrap";
    case OverflowAction::writeLast:
        return "WriteLast";
    }
    return "Unknown";
}

// Only a Linked log's records hold their neighbours.
[[nodiscard]] bool showsLinks(const EventLogInfoRecord &info) {
    return eventlog::typeOf(info) == LogType::linked;
}

int printSystemError(zuSaHpiHandleT out, const char *purpose) {
    return zuSaHpiPrintf(out, "Error: %s: %s\n", purpose, std::strerror(errno));
}

[[nodiscard]] bool seekIn(int fd, off_t offset) {
    return lseek(fd, offset, SEEK_SET) != -1;
}

// Reads the next record; what the file does not hold of it is zero.
template <typename Record>
[[nodiscard]] ssize_t readRecord(int fd, Record &record) {
    std::memset(&record, 0, sizeof record);
    return read(fd, &record, sizeof record);
}

// Where the file ends now; 0 for what has no length.
[[nodiscard]] off_t endOf(int fd) {
    struct stat status;
    return fstat(fd, &status) == 0 ? status.st_size : 0;
}

int printInfo(zuSaHpiHandleT out, const EventLogInfoRecord &info) {
    char timeText[ZUSAHPI_TIME_TEXT_SIZE];
    const SaHpiTimeT logTime = timeSum(zuSaHpiGetTimeofDay(), info.timeOffset);
    zuSaHpiPrintf(out, "Event Log Info:\n");
    zuSaHpiPrintEventLogInfo(out, &info.sa, "     sa.");
    zuSaHpiPrintf(out, "\n");
    zuSaHpiPrintf(out, "     type                    %s\n", nameOf(eventlog::typeOf(info)));
    zuSaHpiPrintf(out, "     overflow action (int)   %s\n",
                  nameOf(eventlog::overflowActionOf(info)));
    printEntryNumber(out, "     oldest                  ", info.oldest);
    printEntryNumber(out, "     newest                  ", info.newest);
    if (showsLinks(info)) {
        printEntryNumber(out, "     freeHead                ", info.freeHead);
    }
    zuSaHpiPrintf(out, "     timeOffset (cur time)   %s\n",
                  zuSaHpiTimeT2String(logTime, 0, timeText));
    zuSaHpiPrintf(out, "     maxUsed                 %u\n", info.maxUsed);
    zuSaHpiPrintf(out, "     updating                %s\n", info.updating != 0 ? "Yes" : "No");
    return zuSaHpiPrintf(out, "\n");
}

int printEntry(zuSaHpiHandleT out, const EventLogEntryRecord &record, bool withLinks) {
    zuSaHpiPrintf(out, "%sEntry %u:\n", record.deleted != 0 ? "Deleted " : "",
                  record.entry.EntryId);
    zuSaHpiPrintEventLogEntry(out, &record.entry, "      ");
    zuSaHpiPrintf(out, "\n");
    if (record.rpt.ResourceCapabilities != 0) {
        zuSaHpiPrintf(out, "      RPT Entry:\n");
        zuSaHpiRptDisplay(out, &record.rpt, "      ");
        zuSaHpiPrintf(out, "\n");
    } else {
        zuSaHpiPrintf(out, "      No RPT Entry\n");
    }
    if (record.rdr.RdrType != SAHPI_NO_RECORD) {
        zuSaHpiPrintf(out, "      RDR:\n");
        zuSaHpiRdrDisplay(out, &record.rdr, "      ", 0);
    } else {
        zuSaHpiPrintf(out, "      No RDR\n");
    }
    if (withLinks) {
        printEntryNumber(out, "      Previous Entry: ", record.prev);
        printEntryNumber(out, "      Next Entry:     ", record.next);
    }
    return zuSaHpiPrintf(out, "\n");
}

// What a step of a printout came to: whether it goes on, and what its last print or read returned.
struct Step {
    bool goesOn;
    int result;
};

[[nodiscard]] Step stopAfter(int result) {
    return {.goesOn = false, .result = result};
}

[[nodiscard]] Step goOnAfter(int result) {
    return {.goesOn = true, .result = result};
}

[[nodiscard]] Step showInfo(zuSaHpiHandleT out, int fd, int dump, EventLogInfoRecord &info) {
    if (!seekIn(fd, eventlog::infoOffset)) {
        return stopAfter(printSystemError(out, "lseek on logfile to info record"));
    }
    const ssize_t count = readRecord(fd, info);
    if (count < 0) {
        return stopAfter(printSystemError(out, "read of Event Log info record"));
    }
    if (count != eventlog::infoSize) {
        return stopAfter(zuSaHpiPrintf(out, "Unable to read Event Log info record, rdcnt=%d.\n",
                                       static_cast<int>(count)));
    }
    return goOnAfter(dump != 0 ? zuSaHpiDprint(out, &info, sizeof info, "") : printInfo(out, info));
}

int showRecord(zuSaHpiHandleT out, int dump, const EventLogEntryRecord &record, bool withLinks) {
    return dump != 0 ? zuSaHpiDprint(out, &record, sizeof record, "")
                     : printEntry(out, record, withLinks);
}

// The slots in use lead the transaction log area; whether they still wait to be applied is not
// asked.
[[nodiscard]] Step showTransactionLog(zuSaHpiHandleT out, int fd, int dump,
                                      const EventLogInfoRecord &info) {
    int result = 0;
    std::uint32_t slot = 0;
    for (; slot < eventlog::transactionSlots; ++slot) {
        EventLogEntryRecord record;
        const ssize_t count = readRecord(fd, record);
        if (count < 0) {
            return stopAfter(printSystemError(out, "read of transaction log record"));
        }
        if (count != eventlog::entrySize) {
            return stopAfter(zuSaHpiPrintf(out, "Unable to read transaction log record, rdcnt=%d\n",
                                           static_cast<int>(count)));
        }
        if (eventlog::slotIsEmpty(record)) {
            break;
        }
        if (slot == 0) {
            zuSaHpiPrintf(out, "Transaction log data:\n");
        }
        result = showRecord(out, dump, record, showsLinks(info));
    }
    if (slot > 0) {
        result = zuSaHpiPrintf(out, "Normal Data:\n");
    }
    return goOnAfter(result);
}

// Whether the record is no entry of the log any more. Deleted records of a Linked log are marked by
// their own flag instead.
[[nodiscard]] bool isInactive(const EventLogEntryRecord &record, const EventLogInfoRecord &info) {
    const std::uint32_t number = record.entry.EntryId;
    return number > info.maxUsed ||
           (eventlog::typeOf(info) == LogType::circular && eventlog::outsideRing(number, info));
}

[[nodiscard]] int showEntries(zuSaHpiHandleT out, int fd, int dump,
                              const EventLogInfoRecord &info) {
    if (!seekIn(fd, eventlog::entriesOffset)) {
        return printSystemError(out, "lseek for log entry # 1");
    }
    const off_t end = endOf(fd);
    for (off_t offset = eventlog::entriesOffset;; offset += eventlog::entrySize) {
        EventLogEntryRecord record;
        const ssize_t count = readRecord(fd, record);
        if (count <= 0 || offset >= end) {
            return static_cast<int>(count);
        }
        if (isInactive(record, info)) {
            zuSaHpiPrintf(out, "(Inactive) ");
        }
        if (dump != 0) {
            zuSaHpiPrintf(out, "Entry %d:\n", static_cast<int>(record.entry.EntryId));
        }
        (void)showRecord(out, dump, record, showsLinks(info)); // a read follows
    }
}

using LogPath = char[eventlog::logPathSize];
static_assert(sizeof(LogPath) > longestName + eventlog::logFolderLength);

// The path of the file that the name stands for, in `path` where it has to be made; null when the
// name is too long, `result` then being what the message's print returned.
[[nodiscard]] const char *logPathOf(zuSaHpiHandleT out, const char *fileName, LogPath &path,
                                    int &result) {
    if (eventlog::usedAsItStands(fileName)) {
        if (std::strlen(fileName) > longestName) {
            result = zuSaHpiPrintf(out, "Filename passed to zuSaHpiDumplog too long.\n");
            return nullptr;
        }
        return fileName;
    }
    const int length =
        std::snprintf(path, sizeof path, "%s%s%s", zuSaHpiRoot, eventlog::logFolder, fileName);
    // The folder does not count.
    if (static_cast<std::size_t>(length) > longestName + eventlog::logFolderLength) {
        result = zuSaHpiPrintf(out, "Log filename too long.\n");
        return nullptr;
    }
    return &path[0];
}

} // namespace
} // namespace zusahpi::frontends

int zuSaHpiDumplog(zuSaHpiHandleT out, const char *fileName, int dump) {
    using namespace zusahpi::frontends;
    if (zuSaHpiLibInitialized == 0) {
        return zuSaHpiPrintf(out, "zuSaHpiDumplog called, but library not initialized.\n");
    }
    LogPath buffer;
    int result = 0;
    const char *path = logPathOf(out, fileName, buffer, result);
    if (path == nullptr) {
        return result;
    }
    // Without waiting: a name may be that of a pipe, which then fails to be positioned.
    const int fd = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) {
        return zuSaHpiPrintf(out, "Unable to open %s: %s\n", path, std::strerror(errno));
    }
    (void)zuSaHpiPrintlog(out, fd, dump); // what it printed says all
    return close(fd);
}

int zuSaHpiPrintlog(zuSaHpiHandleT out, int fd, int dump) {
    using namespace zusahpi::frontends;
    EventLogInfoRecord info;
    if (const Step step = showInfo(out, fd, dump, info); !step.goesOn) {
        return step.result;
    }
    if (const Step step = showTransactionLog(out, fd, dump, info); !step.goesOn) {
        return step.result;
    }
    return showEntries(out, fd, dump, info);
}

int zuSaHpiPrintEventLog(zuSaHpiHandleT out, int dump) {
    using namespace zusahpi::eventlog;
    return store.fileEnabled ? zuSaHpiPrintlog(out, store.fd, dump) : 0;
}
