/*
 * The messages that zuSaHpiEvtLogRequest serves: what a client of the event log sends and what it
 * gets back.
 *
 * A client fills a zuSaHpiMessageT as the table below says and sends it to the main library, which
 * has the dispatcher turn it into its reply and sends that back. Transport, and how many bytes of
 * the record travel, are the main library's matter. All numbers are little-endian.
 *
 *   type                            payload read        reply's type  reply's size  its payload
 *   ZUSAHPI_MSG_INFO_GET            -                   ..._REPLY     INFO_SIZE     info
 *   ZUSAHPI_MSG_ENTRY_GET           entryId             ..._REPLY     ENTRY_SIZE    entry
 *   ZUSAHPI_MSG_RPT_GET             entryId             ..._REPLY     RPT_SIZE      rpt
 *   ZUSAHPI_MSG_RDR_GET             entryId             ..._REPLY     RDR_SIZE      rdr
 *   ZUSAHPI_MSG_ADD                 event               ..._REPLY     HEADER_SIZE   -
 *   ZUSAHPI_MSG_CLEAR               -                   as it was     as it was     -
 *   ZUSAHPI_MSG_RESET_OVERFLOW      -                   as it was     as it was     -
 *   ZUSAHPI_MSG_SET_TIME            info.CurrentTime    ..._REPLY     HEADER_SIZE   -
 *   ZUSAHPI_MSG_SET_STATE           info.Enabled        ..._REPLY     HEADER_SIZE   -
 *
 * The reply's returnCode is the outcome of the operation. A get that fails, and any request before
 * the log is initialised, changes the return code alone: type, size and payload stay the request's.
 *
 * The dispatcher takes a message at any address: it copies single fields out of it and into it, and
 * needs only the bytes that a request reads and its reply writes. A program that finds a message in
 * a buffer of its own does likewise, with memcpy and offsetof: a pointer to one of these records
 * must be aligned to 8 bytes.
 */
#ifndef ZUSAHPI_MESSAGES_H
#define ZUSAHPI_MESSAGES_H

#include "zuSaHpi_layout.h"

/* ---- Types ---------------------------------------------------------------------------------- */

#define ZUSAHPI_MSG_INFO_GET 10U
#define ZUSAHPI_MSG_INFO_GET_REPLY 11U
#define ZUSAHPI_MSG_ENTRY_GET 12U
#define ZUSAHPI_MSG_ENTRY_GET_REPLY 13U
#define ZUSAHPI_MSG_RPT_GET 14U
#define ZUSAHPI_MSG_RPT_GET_REPLY 15U
#define ZUSAHPI_MSG_RDR_GET 16U
#define ZUSAHPI_MSG_RDR_GET_REPLY 17U
#define ZUSAHPI_MSG_ADD 18U
#define ZUSAHPI_MSG_ADD_REPLY 19U
#define ZUSAHPI_MSG_CLEAR 20U
#define ZUSAHPI_MSG_RESET_OVERFLOW 21U
#define ZUSAHPI_MSG_SET_TIME 22U
#define ZUSAHPI_MSG_SET_TIME_REPLY 23U
#define ZUSAHPI_MSG_SET_STATE 24U
#define ZUSAHPI_MSG_SET_STATE_REPLY 25U

/*
 * Whether a message of that type may be handed to the dispatcher, which ends the process on any
 * other. A main library asks before it hands over what comes from outside. The type is evaluated
 * more than once.
 */
#define ZUSAHPI_MSG_IS_REQUEST(type)                                                               \
    ((type) == ZUSAHPI_MSG_RESET_OVERFLOW ||                                                       \
     ((type) >= ZUSAHPI_MSG_INFO_GET && (type) <= ZUSAHPI_MSG_SET_STATE && (type) % 2U == 0U))

/* ---- Payloads ------------------------------------------------------------------------------- */

/* An entry. At an end of the log previous or next is SAHPI_NO_MORE_ENTRIES. */
typedef struct {
    SaHpiEventLogEntryT entry;
    SaHpiBoolT rptValid;      /* 1: the entry was stored with an RPT entry, else 0 */
    SaHpiBoolT rdrValid;      /* 1: the entry was stored with an RDR, else 0 */
    SaHpiUint8T reserved1[2]; /* not written */
    SaHpiEventLogEntryIdT previous;
    SaHpiEventLogEntryIdT next;
    SaHpiUint32T reserved2; /* not written */
} zuSaHpiEntryReplyT;
ZUSAHPI_ASSERT_SIZE(zuSaHpiEntryReplyT, 328);
ZUSAHPI_ASSERT_OFFSET(zuSaHpiEntryReplyT, rptValid, 312);
ZUSAHPI_ASSERT_OFFSET(zuSaHpiEntryReplyT, rdrValid, 313);
ZUSAHPI_ASSERT_OFFSET(zuSaHpiEntryReplyT, previous, 316);
ZUSAHPI_ASSERT_OFFSET(zuSaHpiEntryReplyT, next, 320);

/* The RPT entry of an entry. */
typedef struct {
    SaHpiRptEntryT rpt;
    SaHpiEntryIdT next; /* always SAHPI_LAST_ENTRY: there is no other */
} zuSaHpiRptReplyT;
ZUSAHPI_ASSERT_SIZE(zuSaHpiRptReplyT, 452);
ZUSAHPI_ASSERT_OFFSET(zuSaHpiRptReplyT, next, 448);

/* The RDR of an entry. */
typedef struct {
    SaHpiRdrT rdr;
    SaHpiUint32T reserved; /* not written */
    SaHpiEntryIdT next;    /* always SAHPI_LAST_ENTRY: there is no other */
} zuSaHpiRdrReplyT;
ZUSAHPI_ASSERT_SIZE(zuSaHpiRdrReplyT, 728);
ZUSAHPI_ASSERT_OFFSET(zuSaHpiRdrReplyT, next, 724);

typedef union {
    SaHpiEventLogEntryIdT entryId; /* an entry's, SAHPI_OLDEST_ENTRY or SAHPI_NEWEST_ENTRY */
    SaHpiEventT event;             /* added without RPT entry and RDR, also to a disabled log */
    SaHpiEventLogInfoT info;       /* of a request one member is read: nothing else need be set */
    zuSaHpiEntryReplyT entry;
    zuSaHpiRptReplyT rpt;
    zuSaHpiRdrReplyT rdr;
} zuSaHpiPayloadT;
ZUSAHPI_ASSERT_SIZE(zuSaHpiPayloadT, 728);

/* ---- The message ---------------------------------------------------------------------------- */

typedef struct {
    SaHpiUint8T transport[108]; /* the transport's; never touched */
    SaHpiUint32T size;          /* of header and payload; of a request it is not read */
    SaHpiUint32T type;          /* the header's first member */
    SaErrorT returnCode;        /* written by every reply */
    SaHpiUint32T reserved[2];   /* the header's last; never touched */
    zuSaHpiPayloadT payload;
} zuSaHpiMessageT;
ZUSAHPI_ASSERT_SIZE(zuSaHpiMessageT, 856);
ZUSAHPI_ASSERT_OFFSET(zuSaHpiMessageT, size, 108);
ZUSAHPI_ASSERT_OFFSET(zuSaHpiMessageT, type, 112);
ZUSAHPI_ASSERT_OFFSET(zuSaHpiMessageT, returnCode, 116);
ZUSAHPI_ASSERT_OFFSET(zuSaHpiMessageT, reserved, 120);
ZUSAHPI_ASSERT_OFFSET(zuSaHpiMessageT, payload, 128);
ZUSAHPI_ASSERT_OFFSET(zuSaHpiMessageT, payload.info.CurrentTime, 152);
ZUSAHPI_ASSERT_OFFSET(zuSaHpiMessageT, payload.info.Enabled, 160);

/* What a reply says in size. */
#define ZUSAHPI_MSG_HEADER_SIZE 16U
#define ZUSAHPI_MSG_INFO_SIZE 56U
#define ZUSAHPI_MSG_ENTRY_SIZE 344U
#define ZUSAHPI_MSG_RPT_SIZE 468U
#define ZUSAHPI_MSG_RDR_SIZE 744U
ZUSAHPI_ASSERT_SIZE(SaHpiEventLogInfoT, ZUSAHPI_MSG_INFO_SIZE - ZUSAHPI_MSG_HEADER_SIZE);
ZUSAHPI_ASSERT_SIZE(zuSaHpiEntryReplyT, ZUSAHPI_MSG_ENTRY_SIZE - ZUSAHPI_MSG_HEADER_SIZE);
ZUSAHPI_ASSERT_SIZE(zuSaHpiRptReplyT, ZUSAHPI_MSG_RPT_SIZE - ZUSAHPI_MSG_HEADER_SIZE);
ZUSAHPI_ASSERT_SIZE(zuSaHpiRdrReplyT, ZUSAHPI_MSG_RDR_SIZE - ZUSAHPI_MSG_HEADER_SIZE);

#endif
