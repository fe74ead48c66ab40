// Every change to the log is a transaction: the changed records and a working copy of the info
// record are gathered in memory and go out with one commit.
//
//   idle --beginTransaction--> open --commitTransaction--> idle
//                               |----abortTransaction----> idle
//
// Whoever opens a transaction ends it on every path before it returns.
#pragma once

#include "eventlog/log_format.h"

namespace zusahpi::eventlog {

// Whether a changing operation must be refused: a transaction is open or its cache is not empty.
// Prints "Event log error - attempt to <attempt> when ..." then.
[[nodiscard]] bool transactionRefused(const char *attempt);

// Opens a transaction on `workingCopy`, which the caller keeps until the transaction ends and which
// starts as the in-memory info record.
void beginTransaction(EventLogInfoRecord &workingCopy);

// Puts a changed record into the transaction. Returns SA_OK; SA_ERR_HPI_INTERNAL_ERROR (printed)
// without a transaction, or for a fifth entry.
[[nodiscard]] SaErrorT writeEntry(const EventLogEntryRecord &record);

// Writes the transaction out and ends it, also when it fails. A Linked log goes through the
// transaction log area, so that a crash at any moment leaves the state before or after. Returns
// SA_OK; SA_ERR_HPI_NO_RESPONSE (printed); SA_ERR_HPI_INVALID_PARAMS for an entry outside the log;
// SA_ERR_HPI_INTERNAL_ERROR (printed) without a transaction.
[[nodiscard]] SaErrorT commitTransaction();

// Ends the transaction without writing.
void abortTransaction();

} // namespace zusahpi::eventlog
