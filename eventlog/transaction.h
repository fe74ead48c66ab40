// Every change to the log is a transaction: the changed records and a working copy of the info
// record are gathered in memory and go out with one commit.
//
//   idle --beginTransaction--> open --commitTransaction--> idle
//                               |----abortTransaction----> idle
//
// Whoever opens a transaction ends it on every path before it returns. What a failed commit to a
// Linked log left to be done is done before the next transaction: it may be durable already. So a
// changing operation asks, in this order: may a transaction be opened (hindrance), does it refuse
// what it was asked for, can a waiting commit be finished (recovery.h).
#pragma once

#include "eventlog/log_format.h"

namespace zusahpi::eventlog {

// Why no transaction may be opened now, as the refusal of an operation ends: a call came in the
// middle of another. Null when one may be.
[[nodiscard]] const char *hindrance();

// Opens a transaction on `workingCopy`, which the caller keeps until the transaction ends and which
// starts as the in-memory info record.
void beginTransaction(EventLogInfoRecord &workingCopy);

// The place in the transaction for what entry `number` becomes; the caller sets every byte. Null
// (printed) without a transaction, or for a fifth entry.
[[nodiscard]] EventLogEntryRecord *changedRecordOf(std::uint32_t number);

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
