// Operations on the log as a whole: info, clear, overflow reset, log time, state, protection.
// Without a file their settings live in memory only.

#include <cstring>

#include <unistd.h>

#include "eventlog/failure.h"
#include "eventlog/log_file.h"
#include "eventlog/recovery.h"
#include "eventlog/store_state.h"
#include "eventlog/transaction.h"
#include "util/time_arithmetic.h"
#include "zuSaHpi_mainlib.h"

using namespace zusahpi;
using namespace zusahpi::eventlog;

namespace {

SaHpiTimeT logTime(const EventLogInfoRecord &info) {
    return timeSum(zuSaHpiGetTimeofDay(), info.timeOffset);
}

void makeEmpty(EventLogInfoRecord &info) {
    info.oldest = noEntry;
    info.newest = noEntry;
    info.freeHead = noEntry;
    info.maxUsed = 0;
    info.sa.Entries = 0;
    info.sa.UpdateTimestamp = logTime(info);
    info.sa.OverflowFlag = 0;
}

SaErrorT clearInTransaction() {
    EventLogInfoRecord workingCopy;
    beginTransaction(workingCopy);
    makeEmpty(workingCopy);
    return commitTransaction();
}

// Nothing of the records that the waiting commit wants written is left, so it need not be finished,
// which a full disk might never let it be: one write over the info record that it leaves, which
// takes no room, ends it and empties the log.
SaErrorT clearOverWaitingCommit() {
    EventLogInfoRecord info;
    if (!readWaitingInfo(info)) {
        return SA_ERR_HPI_NO_RESPONSE;
    }
    makeEmpty(info);
    info.updating = 0;
    return settle(info) ? SA_OK : SA_ERR_HPI_NO_RESPONSE;
}

} // namespace

SaErrorT zuSaHpiEventLogInfoGet(SaHpiEventLogInfoT *info) {
    std::memcpy(info, &store.info.sa, sizeof *info);
    info->CurrentTime = zuSaHpiEventLogTimeGet();
    return SA_OK;
}

SaErrorT zuSaHpiEventLogClear(void) {
    if (!store.fileEnabled) {
        store.info.sa.UpdateTimestamp = zuSaHpiEventLogTimeGet();
        return SA_OK;
    }
    if (const char *reason = hindrance()) {
        return internalError("Event log error - attempt to clear log when ", reason);
    }
    const SaErrorT result = store.commitWaits ? clearOverWaitingCommit() : clearInTransaction();
    if (result != SA_OK) {
        return result;
    }
    if (!truncateAfter(store.info.maxUsed)) {
        reportSystemError("truncate of log file during clear operation");
        return SA_ERR_HPI_NO_RESPONSE;
    }
    return SA_OK;
}

SaErrorT zuSaHpiEventLogResetOverflow(void) {
    if (!store.fileEnabled) {
        return SA_OK;
    }
    if (const char *reason = hindrance()) {
        return internalError("Event log error - attempt to reset log when ", reason);
    }
    if (store.info.sa.OverflowResetable == 0) {
        return SA_ERR_HPI_INVALID_CMD;
    }
    if (!finishWaitingCommit()) {
        return SA_ERR_HPI_NO_RESPONSE;
    }
    if (store.info.sa.OverflowFlag == 0) {
        return SA_OK;
    }
    EventLogInfoRecord workingCopy;
    beginTransaction(workingCopy);
    workingCopy.sa.UpdateTimestamp = zuSaHpiEventLogTimeGet();
    workingCopy.sa.OverflowFlag = 0;
    return commitTransaction();
}

SaHpiTimeT zuSaHpiEventLogTimeGet(void) {
    return logTime(currentInfo());
}

SaErrorT zuSaHpiEventLogTimeSet(SaHpiTimeT time) {
    if (time < 0) {
        return SA_ERR_HPI_INVALID_PARAMS;
    }
    if (!store.fileEnabled) {
        store.info.timeOffset = timeDifference(time, zuSaHpiGetTimeofDay());
        return SA_OK;
    }
    if (const char *reason = hindrance()) {
        return internalError("Event log error - attempt to set time when ", reason);
    }
    if (!finishWaitingCommit()) {
        return SA_OK; // served also when it fails, which is printed
    }
    EventLogInfoRecord workingCopy;
    beginTransaction(workingCopy);
    workingCopy.timeOffset = timeDifference(time, zuSaHpiGetTimeofDay());
    (void)commitTransaction(); // served also when it fails, which is printed
    return SA_OK;
}

SaHpiBoolT zuSaHpiEventLogStateGet(void) {
    if (!store.initialised) {
        return SAHPI_FALSE;
    }
    const bool takesEvents =
        currentInfo().sa.Enabled != 0 || (store.syslogEnabled && !store.syslogFollowsState);
    return takesEvents ? SAHPI_TRUE : SAHPI_FALSE;
}

SaErrorT zuSaHpiEventLogStateSet(SaHpiBoolT enable) {
    const SaHpiBoolT enabled = enable != 0 ? 1 : 0;
    if (!store.fileEnabled) {
        store.info.sa.Enabled = enabled;
        return SA_OK;
    }
    if (const char *reason = hindrance()) {
        return internalError("Event log error - attempt to set state when ", reason);
    }
    if (!finishWaitingCommit()) {
        return SA_OK; // served also when it fails, which is printed
    }
    EventLogInfoRecord workingCopy;
    beginTransaction(workingCopy);
    workingCopy.sa.Enabled = enabled;
    (void)commitTransaction(); // served also when it fails, which is printed
    return SA_OK;
}

SaErrorT zuSaHpiEventLogProtectSet(SaHpiBoolT protect) {
    if (typeOf(store.info) == LogType::linked) { // always written synchronously
        return SA_OK;
    }
    store.syncOnCommit = protect;
    if (protect != 0) {
        sync();
    }
    return SA_OK;
}
