// Operations on the log as a whole: info, clear, overflow reset, log time, state, protection.
// Without a file their settings live in memory only.

#include <cstring>

#include <unistd.h>

#include "eventlog/failure.h"
#include "eventlog/log_file.h"
#include "eventlog/store_state.h"
#include "eventlog/transaction.h"
#include "util/time_arithmetic.h"
#include "zuSaHpi_mainlib.h"

using namespace zusahpi;
using namespace zusahpi::eventlog;

namespace {

// A change of time or state counts as served once it is allowed: what failed of it is printed.
SaErrorT servedUnlessForbidden(SaErrorT result) {
    return result == SA_ERR_HPI_NO_RESPONSE ? SA_OK : result;
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
    if (const SaErrorT result = prepareTransaction("clear log"); result != SA_OK) {
        return result;
    }
    EventLogInfoRecord workingCopy;
    beginTransaction(workingCopy);
    workingCopy.oldest = noEntry;
    workingCopy.newest = noEntry;
    workingCopy.freeHead = noEntry;
    workingCopy.maxUsed = 0;
    workingCopy.sa.Entries = 0;
    workingCopy.sa.UpdateTimestamp = zuSaHpiEventLogTimeGet();
    workingCopy.sa.OverflowFlag = 0;
    if (const SaErrorT result = commitTransaction(); result != SA_OK) {
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
    if (const SaErrorT result = prepareTransaction("reset log"); result != SA_OK) {
        return result;
    }
    if (store.info.sa.OverflowResetable == 0) {
        return SA_ERR_HPI_INVALID_CMD;
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
    return timeSum(zuSaHpiGetTimeofDay(), currentInfo().timeOffset);
}

SaErrorT zuSaHpiEventLogTimeSet(SaHpiTimeT time) {
    if (time < 0) {
        return SA_ERR_HPI_INVALID_PARAMS;
    }
    if (!store.fileEnabled) {
        store.info.timeOffset = timeDifference(time, zuSaHpiGetTimeofDay());
        return SA_OK;
    }
    if (const SaErrorT result = prepareTransaction("set time"); result != SA_OK) {
        return servedUnlessForbidden(result);
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
    if (const SaErrorT result = prepareTransaction("set state"); result != SA_OK) {
        return servedUnlessForbidden(result);
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
