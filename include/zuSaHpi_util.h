/*
 * libzuSaHpi_util: the utility library of an implementation of the HPI standard.
 *
 * It holds a persistent, crash-safe event log, the log's configuration, its forwarding to the
 * system log, printers for HPI data, a registry of the standard's named constants and small
 * utilities. It runs beside the implementation's main library, which lends it output, clocks and
 * more: zuSaHpi_mainlib.h says what.
 *
 * Read this first
 *
 *   A host becomes a daemon first and initialises the log afterwards. Only the process that took
 *   the lock gives it up: a child that it forks leaves the lock alone when it exits, and cannot
 * keep it when the process that initialised the log exits. After a fork the two share the log
 * file's descriptor, so only one of them may go on using the log.
 *
 *   One log per process. The store keeps its state in process-wide variables and takes no mutex:
 *   callers serialise every call of an event log function (one thread, or a lock of their own).
 *   Printers, registry and hex dump keep no state and may be called from any thread.
 *
 *   One process per log file. A lock file beside the log file ("<log file>.lck") keeps a second
 *   process off. It is removed when the process exits through exit(). A process that is killed
 *   leaves it behind, and every later start then fails until the file is removed by hand: look
 *   first that no process uses the log. The lock is a hard link, so it needs a file system whose
 *   link() is atomic; local ones are.
 *
 *   Only a log of type "Linked" survives a crash in the middle of an update. It is written
 *   synchronously. Logs of type "Simple" and "Circular" are not written synchronously unless
 *   zuSaHpiEventLogProtectSet asks for it.
 *
 *   Before zuSaHpiEventLogInit there is a log that keeps no file, holds no entries and forwards
 *   nothing: no function of the log fails there or prints but as its comment says. What is set then
 *   is lost when the log is initialised, protection apart.
 *
 *   Errors of the store are SaErrorT codes. Where this header says "prints", one line goes out
 *   through zuSaHpiPrintf, to standard error unless an output handle is given. Failures of
 *   configuration and of initialisation end the process: the message, then exit(1).
 *
 *   Indent and label arguments are NUL-terminated strings, never null unless the function says so,
 *   and never taken as formats. Every printer returns what its last print returned.
 *
 * Invariant: every record that crosses the border or lies in the log file has the same layout on
 * i386 and x86-64 (the records with pointers, which never leave the process, excepted).
 */
#ifndef ZUSAHPI_UTIL_H
#define ZUSAHPI_UTIL_H

#include <stdint.h>

#include "zuSaHpi_layout.h"

/* The version of the library; the build reads it from here. */
#define ZUSAHPI_UTIL_VERSION "1.0.0"

#ifdef __cplusplus
extern "C" {
#endif

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/*
 * Names an output channel of the main library. The library passes it on and never looks into it,
 * but for diagnostics, which go to (zuSaHpiHandleT)stderr. A signed 32-bit integer on i386.
 */
typedef intptr_t zuSaHpiHandleT;

/* The implementation's own manufacturer id; all other constants are the standard's. */
#define SAHPI_MANUFACTURER_ID_KORVANTIS ((SaHpiManufacturerIdT)0x5F39)

/* ============================ Records of the event log store ================================= */

/* Kinds of log: the value of EventLogInfoRecord.type. */
#define ZUSAHPI_EL_TYPE_SIMPLE 0U   /* entries 1 to Size; only the newest may be deleted */
#define ZUSAHPI_EL_TYPE_CIRCULAR 1U /* a ring; only the oldest or the newest may be deleted */
#define ZUSAHPI_EL_TYPE_LINKED 2U   /* crash-safe, synchronous; any entry may be deleted */

/* What an add does when the log is full: the value of EventLogInfoRecord.overflowAction. */
#define ZUSAHPI_EL_DROP 0U       /* refuse the new entry */
#define ZUSAHPI_EL_WRAP 1U       /* delete the oldest entry first */
#define ZUSAHPI_EL_WRITE_LAST 2U /* delete the newest entry first */

/* "No entry" in the links and ends of a log. */
#define ZUSAHPI_EL_NO_ENTRY 0xFFFFFFFFU

/* The log's info record, as it lies at the start of the log file. */
typedef struct {
    SaHpiEventLogInfoT sa;       /* CurrentTime is not maintained here */
    SaHpiUint32T type;           /* ZUSAHPI_EL_TYPE_... */
    SaHpiUint32T overflowAction; /* ZUSAHPI_EL_DROP and so on; sa.OverflowAction is never used */
    SaHpiUint32T oldest;         /* entry number, ZUSAHPI_EL_NO_ENTRY in an empty log */
    SaHpiUint32T newest;         /* entry number, ZUSAHPI_EL_NO_ENTRY in an empty log */
    SaHpiUint32T freeHead;       /* Linked: first deleted entry, else ZUSAHPI_EL_NO_ENTRY */
    SaHpiUint32T maxUsed;        /* highest entry number whose record is in the file, 0 for none */
    SaHpiTimeT timeOffset;       /* nanoseconds; time of day plus this is log time */
    SaHpiUint32T updating;       /* nonzero: the transaction log area waits to be applied */
    SaHpiUint32T reserved;
} EventLogInfoRecord;
ZUSAHPI_ASSERT_SIZE(EventLogInfoRecord, 80);
ZUSAHPI_ASSERT_OFFSET(EventLogInfoRecord, type, 40);
ZUSAHPI_ASSERT_OFFSET(EventLogInfoRecord, overflowAction, 44);
ZUSAHPI_ASSERT_OFFSET(EventLogInfoRecord, oldest, 48);
ZUSAHPI_ASSERT_OFFSET(EventLogInfoRecord, newest, 52);
ZUSAHPI_ASSERT_OFFSET(EventLogInfoRecord, freeHead, 56);
ZUSAHPI_ASSERT_OFFSET(EventLogInfoRecord, maxUsed, 60);
ZUSAHPI_ASSERT_OFFSET(EventLogInfoRecord, timeOffset, 64);
ZUSAHPI_ASSERT_OFFSET(EventLogInfoRecord, updating, 72);

/* One entry of the log, as it lies in the log file. */
typedef struct {
    SaHpiUint32T deleted; /* nonzero: a Linked entry on the free list */
    SaHpiUint32T prev;    /* Linked: the older entry */
    SaHpiUint32T next;    /* Linked: the newer entry, or the next one on the free list */
    SaHpiUint32T reserved;
    SaHpiEventLogEntryT entry;
    SaHpiRptEntryT rpt; /* absent when ResourceCapabilities is 0 */
    SaHpiRdrT rdr;      /* absent when RdrType is SAHPI_NO_RECORD */
} EventLogEntryRecord;
ZUSAHPI_ASSERT_SIZE(EventLogEntryRecord, 1496);
ZUSAHPI_ASSERT_OFFSET(EventLogEntryRecord, prev, 4);
ZUSAHPI_ASSERT_OFFSET(EventLogEntryRecord, next, 8);
ZUSAHPI_ASSERT_OFFSET(EventLogEntryRecord, entry, 16);
ZUSAHPI_ASSERT_OFFSET(EventLogEntryRecord, entry.Timestamp, 24);
ZUSAHPI_ASSERT_OFFSET(EventLogEntryRecord, entry.Event, 32);
ZUSAHPI_ASSERT_OFFSET(EventLogEntryRecord, entry.Event.EventType, 36);
ZUSAHPI_ASSERT_OFFSET(EventLogEntryRecord,
                      entry.Event.EventDataUnion.UserEvent.UserEventData.DataLength, 64);
ZUSAHPI_ASSERT_OFFSET(EventLogEntryRecord, rpt, 328);
ZUSAHPI_ASSERT_OFFSET(EventLogEntryRecord, rpt.ResourceCapabilities, 496);
ZUSAHPI_ASSERT_OFFSET(EventLogEntryRecord, rdr, 776);
ZUSAHPI_ASSERT_OFFSET(EventLogEntryRecord, rdr.RdrType, 780);

/* What a caller adds to the log. */
typedef struct {
    SaHpiEventT event;
    SaHpiRptEntryT rpt; /* of the event's resource; none when ResourceCapabilities is 0 */
    SaHpiRdrT rdr;      /* of the event's instrument; none when RdrType is SAHPI_NO_RECORD */
} EventLogAddRecord;
ZUSAHPI_ASSERT_SIZE(EventLogAddRecord, 1464);
ZUSAHPI_ASSERT_OFFSET(EventLogAddRecord, rpt, 296);
ZUSAHPI_ASSERT_OFFSET(EventLogAddRecord, rdr, 744);

#define ZUSAHPI_EL_CONTROL_BLOCK_SIZE 208U
#define ZUSAHPI_EL_CONTROL_BLOCK_MAGIC 0x17394283U
#define ZUSAHPI_EL_FILE_NAME_SIZE 100

/* How the log is to be set up: the result of configuration, the argument of initialisation. */
typedef struct {
    SaHpiUint32T size;                        /* ZUSAHPI_EL_CONTROL_BLOCK_SIZE */
    SaHpiUint32T magic;                       /* ZUSAHPI_EL_CONTROL_BLOCK_MAGIC */
    EventLogInfoRecord info;                  /* the info record of a new log */
    SaHpiUint32T reinitialize;                /* nonzero: discard what an existing file holds */
    SaHpiUint32T relativeTime;                /* nonzero: a new log's time starts at 0 */
    char fileName[ZUSAHPI_EL_FILE_NAME_SIZE]; /* NUL-terminated; see zuSaHpiEventLogInit */
    SaHpiUint32T fileEnabled;                 /* zero: keep no entries at all */
    SaHpiUint32T syslogEnabled;               /* nonzero: forward added events to syslog */
    SaHpiUint32T syslogFollowsState;          /* nonzero: forward nothing while disabled */
} EventLogControlBlock;
ZUSAHPI_ASSERT_SIZE(EventLogControlBlock, ZUSAHPI_EL_CONTROL_BLOCK_SIZE);
ZUSAHPI_ASSERT_OFFSET(EventLogControlBlock, info, 8);
ZUSAHPI_ASSERT_OFFSET(EventLogControlBlock, reinitialize, 88);
ZUSAHPI_ASSERT_OFFSET(EventLogControlBlock, fileName, 96);
ZUSAHPI_ASSERT_OFFSET(EventLogControlBlock, fileEnabled, 196);

/* ================================== The event log store ====================================== */

/*
 * Starts the log that the block describes. Called once per process, and before every other event
 * log function that is to work on that log.
 *
 *   block  read once, not kept. Its info.timeOffset and info.sa.UpdateTimestamp are written: they
 *          are part of what a new log starts with.
 *
 * The file name is used as it stands when it begins with "/" or "./"; any other name is placed
 * under zuSaHpiRoot "/evtlog/", and root and name together may then hold 98 characters. An existing
 * file is reconciled with the block (a log of another type, a Circular log of another size and a
 * log that would lose entries by shrinking start empty), and a commit that a crash interrupted is
 * finished. With fileEnabled 0 there is neither file nor lock, and the log holds no entries.
 *
 * Returns SA_OK. Every failure prints one line and ends the process with status 1: an illegal
 * block, a name that is too long, a lock that another process holds, every system call that fails
 * but one: a log file that cannot be opened, for whatever reason, is made anew, and what it held is
 * lost if that succeeds.
 */
SaErrorT zuSaHpiEventLogInit(EventLogControlBlock *block);

/* Returns nonzero once zuSaHpiEventLogInit has succeeded, 0 before. */
int zuSaHpiEventLogInitialized(void);

/*
 * Adds an event to the log, and before that offers it to syslog when the log is so configured.
 *
 *   entry  the event with the RPT entry and RDR of its source; copied. The event's own Timestamp is
 *          kept; the entry's is the log time of the add.
 *   force  nonzero: add even while the log is disabled.
 *
 * Returns SA_OK when the entry is stored, and also when nothing is stored because the log keeps no
 * file or is disabled, or is not initialised (nothing then goes to syslog either);
 *   SA_ERR_HPI_INVALID_DATA    a user event whose data are longer than UserEventMaxSize;
 *   SA_ERR_HPI_OUT_OF_SPACE    the log is full and drops new entries (its overflow flag is now
 *                              set), or its size is 0;
 *   SA_ERR_HPI_NO_RESPONSE     the file could not be read or written (printed). A Linked log may
 * have the entry all the same from its next change or start on: repeating the add can store it
 * twice; SA_ERR_HPI_INTERNAL_ERROR  the log cannot take the entry: a call in the middle of another
 * one, or a file whose contents contradict each other (printed).
 */
SaErrorT zuSaHpiEventLogEntryAdd(const EventLogAddRecord *entry, int force);

/*
 * Deletes an entry. A Simple log gives up only its newest entry, a Circular log only its oldest or
 * newest, a Linked log any.
 *
 *   entryId  an entry number, SAHPI_OLDEST_ENTRY or SAHPI_NEWEST_ENTRY.
 *   force    0 from outside the store. Nonzero deletes inside the transaction that an add has open.
 *
 * Returns SA_OK;
 *   SA_ERR_HPI_NOT_PRESENT     no such entry, already deleted, or the log keeps no file or is not
 *                              initialised;
 *   SA_ERR_HPI_INTERNAL_ERROR  an entry that this type of log may not delete, a call in the middle
 *                              of another one, broken links or numbers in the file (printed);
 *   SA_ERR_HPI_NO_RESPONSE     the file could not be read or written (printed). The entry of a
 * Linked log may be gone all the same from its next change or start on: repeating the delete of an
 * end can then delete another one, too.
 */
SaErrorT zuSaHpiEventLogEntryDel(SaHpiEventLogEntryIdT entryId, int force);

/*
 * Reads an entry.
 *
 *   entryId  an entry number, SAHPI_OLDEST_ENTRY or SAHPI_NEWEST_ENTRY.
 *   out      receives the record, prev and next being the ids of its neighbours. At an end a Simple
 *            or Circular log gives SAHPI_NO_MORE_ENTRIES (0xFFFFFFFE), a Linked log 0xFFFFFFFF.
 *
 * Returns SA_OK;
 *   SA_ERR_HPI_NOT_PRESENT  no such entry (out is untouched, as it is before initialisation), or a
 *                           deleted one (out holds it);
 *   SA_ERR_HPI_NO_RESPONSE  the file could not be read (printed).
 */
SaErrorT zuSaHpiEventLogEntryGet(SaHpiEventLogEntryIdT entryId, EventLogEntryRecord *out);

/*
 * Reads the RPT entry stored with an entry into rpt. Returns what zuSaHpiEventLogEntryGet returns,
 * and SA_ERR_HPI_NOT_PRESENT also for an entry that was stored without one. On failure rpt is
 * untouched.
 */
SaErrorT zuSaHpiEventLogEntRptGet(SaHpiEventLogEntryIdT entryId, SaHpiRptEntryT *rpt);

/* The same for the RDR stored with an entry. */
SaErrorT zuSaHpiEventLogEntRdrGet(SaHpiEventLogEntryIdT entryId, SaHpiRdrT *rdr);

/*
 * Fills info, CurrentTime being the log time now. Returns SA_OK, in every state: before
 * initialisation all else is 0, but for what other calls have set.
 */
SaErrorT zuSaHpiEventLogInfoGet(SaHpiEventLogInfoT *info);

/*
 * Removes all entries, resets the overflow flag and cuts the file. Returns SA_OK, also when the log
 * keeps no file or is not initialised;
 *   SA_ERR_HPI_INTERNAL_ERROR  a call in the middle of another one (printed);
 *   SA_ERR_HPI_NO_RESPONSE     the file could not be written or cut (printed).
 */
SaErrorT zuSaHpiEventLogClear(void);

/*
 * Resets the overflow flag. Returns SA_OK, also when it was not set or the log keeps no file or is
 * not initialised;
 *   SA_ERR_HPI_INVALID_CMD     the log does not allow it (OverflowResetable is 0);
 *   SA_ERR_HPI_INTERNAL_ERROR  a call in the middle of another one (printed);
 *   SA_ERR_HPI_NO_RESPONSE     the file could not be written (printed).
 */
SaErrorT zuSaHpiEventLogResetOverflow(void);

/*
 * Returns the log time: nanoseconds, time of day plus the log's offset. Works in every state:
 * before initialisation the offset is 0 unless a time was set.
 */
SaHpiTimeT zuSaHpiEventLogTimeGet(void);

/*
 * Sets the log time, in nanoseconds; the log clock runs on from there. Returns SA_OK, also when the
 * new offset could not be written (printed);
 *   SA_ERR_HPI_INVALID_PARAMS  a negative time, SAHPI_TIME_UNSPECIFIED included;
 *   SA_ERR_HPI_INTERNAL_ERROR  a call in the middle of another one (printed).
 *
 * Set before initialisation, the time holds until then.
 */
SaErrorT zuSaHpiEventLogTimeSet(SaHpiTimeT time);

/*
 * Returns whether the log takes events: it is enabled, or its events go to syslog regardless of
 * that. SAHPI_FALSE before initialisation, whatever was set.
 */
SaHpiBoolT zuSaHpiEventLogStateGet(void);

/*
 * Enables (nonzero) or disables the log, until the next initialisation, which takes the state from
 * the configuration. Returns SA_OK, also when the state could not be written (printed);
 *   SA_ERR_HPI_INTERNAL_ERROR  a call in the middle of another one (printed).
 */
SaErrorT zuSaHpiEventLogStateSet(SaHpiBoolT enable);

/*
 * Nonzero: from now on every change to a Simple or Circular log ends with sync(), and so does this
 * call. A Linked log is always written synchronously and ignores it. Set before initialisation, it
 * holds for the log that is started. Returns SA_OK.
 */
SaErrorT zuSaHpiEventLogProtectSet(SaHpiBoolT protect);

/* ==================================== Front ends of the log ================================== */

/*
 * Serves one event log request of a client and writes the reply into the same message.
 *
 *   request  a message of any alignment, with room for its reply: zuSaHpi_messages.h has the types
 *            of requests and the records.
 *
 * The outcome of the operation is the message's return code. A get request that fails keeps its
 * type, size and payload. Before initialisation every request gets SA_ERR_HPI_INVALID_CMD, whatever
 * its type.
 *
 * Afterwards a type that is no request's prints a message and ends the process with status 1: ask
 * ZUSAHPI_MSG_IS_REQUEST first where messages come from outside. Returns 0.
 */
int zuSaHpiEvtLogRequest(void *request);

/*
 * Prints the message formats, a line "<prefix><name>: <size>" each, the size in bytes with header.
 *
 *   genericSize  receives the size of a buffer that holds any message; null when not wanted.
 *   maxSize      receives the size of the largest format; null when not wanted.
 */
void zuSaHpiPrintMsgSizes(zuSaHpiHandleT out, const char *prefix, int *genericSize, int *maxSize);

/*
 * Carries out the rest of an operator's "evtlog" command line and prints the result. The caller has
 * begun a strtok() scan of the line, with blanks and tabs, and taken the word "evtlog"; this
 * function goes on with the scan. Wrong usage prints the usage text. Before initialisation every
 * line prints "No event log configured.".
 */
void zuSaHpiProcessEventLogCommand(zuSaHpiHandleT out);

/*
 * Prints a log file, the running log's or any other, without lock: settings, a transaction that
 * waits to be applied, and every record, live or dead.
 *
 *   fileName  used as it stands when it begins with "/" or "./"; else under zuSaHpiRoot "/evtlog/".
 *             At most 98 characters, in the second case together with the root.
 *   dump      nonzero: hex dumps of the records instead of readable text.
 *
 * The main library must be up (zuSaHpiLibInitialized). The file may hold anything; it is shown up
 * to where it ended when the printout reached its entries, a record that is cut short with zeros
 * for what is missing. Problems are printed to out. Returns the result of its last print or of
 * close().
 */
int zuSaHpiDumplog(zuSaHpiHandleT out, const char *fileName, int dump);

/* The same for an open file, whose position it moves. Returns that of its last print or read. */
int zuSaHpiPrintlog(zuSaHpiHandleT out, int fd, int dump);

/* The same for the running log's own file; prints nothing and returns 0 when there is none. */
int zuSaHpiPrintEventLog(zuSaHpiHandleT out, int dump);

/* ================================ Configuration of the log =================================== */

/* Keyword codes of a ConfigNode. The text of a keyword is the main library's. */
#define ZUSAHPI_CONF_EVENT_LOG 100000U                /* top level; 0 simple ... 3 syslog only */
#define ZUSAHPI_CONF_FILE_NAME 100001U                /* string of 1 to 98 characters, required */
#define ZUSAHPI_CONF_REINITIALIZE 100002U             /* 0 or 1 */
#define ZUSAHPI_CONF_SIZE 100003U                     /* entries, required */
#define ZUSAHPI_CONF_OVERFLOW 100004U                 /* 0 drop, 1 wrap, 2 write last */
#define ZUSAHPI_CONF_USER_EVENT_MAX_SIZE 100005U      /* bytes */
#define ZUSAHPI_CONF_ENABLED 100006U                  /* boolean */
#define ZUSAHPI_CONF_RELATIVE_TIME 100007U            /* 0 or 1 */
#define ZUSAHPI_CONF_OVERFLOW_RESETABLE 100008U       /* boolean */
#define ZUSAHPI_CONF_SYSLOG 100009U                   /* 0 or 1; its subordinates make the map */
#define ZUSAHPI_CONF_SYSLOG_EVENT_TYPE 100010U        /* SaHpiEventTypeT, or ZUSAHPI_CONF_ALL */
#define ZUSAHPI_CONF_SYSLOG_SEVERITY 100011U          /* SaHpiSeverityT; 255 for all */
#define ZUSAHPI_CONF_SYSLOG_LEVEL 100012U             /* 0 to 7, or ZUSAHPI_CONF_NO_LEVEL */
#define ZUSAHPI_CONF_SYSLOG_FOLLOWS_STATE 100013U     /* 0 or 1 */
#define ZUSAHPI_CONF_SYSLOG_SUPPRESS_RESOURCE 100014U /* 0 or 1 */

#define ZUSAHPI_CONF_ALL 0xFFFFFFFFU
#define ZUSAHPI_CONF_NO_LEVEL 0xFFFFFFFFU
#define ZUSAHPI_CONF_TEXT_SIZE 256

/* A keyword of the configuration, as the main library's parser hands it over. */
typedef struct ConfigNode {
    struct ConfigNode *firstChild;        /* first subordinate keyword, or null */
    struct ConfigNode *nextSibling;       /* next keyword of the same level, or null */
    struct ConfigNode *parent;            /* superior keyword */
    char keyword[ZUSAHPI_CONF_TEXT_SIZE]; /* as written, NUL-terminated; for messages only */
    uint32_t code;                        /* ZUSAHPI_CONF_... */
    uint32_t line;                        /* line number in the configuration file */
    uint32_t reserved1;
    uint32_t intValue; /* the value; of a string its length */
    uint32_t reserved2;
    /*
     * intValue characters of a string, without NUL. The library reads just those, so a parser may
     * allocate a node shorter or longer than the declared array.
     */
    char strValue[ZUSAHPI_CONF_TEXT_SIZE];
} ConfigNode;
ZUSAHPI_ASSERT_OFFSET(ConfigNode, keyword, 3 * sizeof(void *));
ZUSAHPI_ASSERT_OFFSET(ConfigNode, code, 3 * sizeof(void *) + 256);
ZUSAHPI_ASSERT_OFFSET(ConfigNode, line, 3 * sizeof(void *) + 260);
ZUSAHPI_ASSERT_OFFSET(ConfigNode, intValue, 3 * sizeof(void *) + 268);
ZUSAHPI_ASSERT_OFFSET(ConfigNode, strValue, 3 * sizeof(void *) + 276);

/*
 * Makes the control block for zuSaHpiEventLogInit, and the syslog map, from the configuration.
 * Called once per process.
 *
 *   nodes  the first of the top-level keywords, or null; read only during the call.
 *
 * Returns a block that the library owns. An unknown keyword under EventLog or under the syslog
 * keyword prints a warning; every other error prints what is wrong and ends the process with
 * status 1.
 */
EventLogControlBlock *zuSaHpiEvtLogConf(const ConfigNode *nodes);

/* ================================== Forwarding to syslog ===================================== */

#define ZUSAHPI_SYSLOG_SLOTS 6

/* The syslog levels of one event type. */
typedef struct SyslogMapEntry {
    uint32_t eventType; /* SaHpiEventTypeT; 0xFFFFFFFF in the default entry */
    /* by severity: critical, major, minor, informational, OK, every other; 0 to 7, or -1 for none
     */
    int32_t level[ZUSAHPI_SYSLOG_SLOTS];
    struct SyslogMapEntry *next; /* null in the last entry */
} SyslogMapEntry;
ZUSAHPI_ASSERT(sizeof(void *) != 4 || sizeof(SyslogMapEntry) == 32, "SyslogMapEntry on i386");
ZUSAHPI_ASSERT_OFFSET(SyslogMapEntry, level, 4);

/* The entry for every event type that has none of its own; the last of the list. */
extern SyslogMapEntry zuSaHpiSyslogMapDefault;

/* The first entry of the map. Written by zuSaHpiEvtLogConf, only read afterwards. */
extern SyslogMapEntry *zuSaHpiSyslogMapHead;

/* Nonzero: lines name neither the resource id nor the resource tag. */
extern uint32_t zuSaHpiSyslogSuppressResource;

/*
 * Writes an event to the system log, at the level that the map gives its type and severity, or not
 * at all: one line beginning "HPI: " through zuSaHpiSyslog, then dump lines where its data are
 * binary. Reports nothing and cannot fail; text that does not fit is cut.
 */
void zuSaHpiEventLogSyslogAdd(const EventLogAddRecord *record);

/*
 * Writes a hex dump to the system log: the lines of zuSaHpiDprint without the closing empty line.
 *
 *   priority  the syslog level, 0 to 7.
 *   data      length bytes. With length 0 nothing is written.
 */
void syslogDump(int priority, const void *data, uint32_t length);

/*
 * Writes a reading and a blank into buffer (size bytes, at least 1), NUL-terminated. Returns the
 * number of characters, size - 1 when the text was cut.
 */
int displayReading(const SaHpiSensorReadingT *reading, char *buffer, uint32_t size);

/* ==================================== Display primitives ===================================== */

/*
 * "Display form" of a constant: its name less a prefix, its underscores blanks, its letters lower
 * case but for the first of each word: SAHPI_ENT_SYSTEM_BOARD less SAHPI_ENT_ is "System Board".
 */

/*
 * Prints indent, label, a blank, the number valueLow and, when the constant of the value (high and
 * low word) in the type typeId has a name with that prefix, a colon and its display form.
 */
int zuSaHpiValueDisplay(zuSaHpiHandleT out, const char *label, uint32_t valueLow,
                        uint32_t valueHigh, uint32_t typeId, const char *prefix,
                        const char *indent);

/*
 * Writes the display form of a value into dest (destSize bytes), cut to fit and NUL-terminated; of
 * a value without such a name the registry's own text. Prints nothing. Returns dest.
 */
char *zuSaHpiValueString(uint32_t valueLow, uint32_t valueHigh, uint32_t typeId, const char *prefix,
                         char *dest, uint32_t destSize);

/*
 * Ends a line that the caller has begun with ": " and the names of the bits that are set, lowest
 * first, wrapped at column 70. Bits without a name are left out.
 *
 *   startColumn  how far the line has come, the indent not counted.
 *   wrapIndent   how many blanks begin a continuation line, after the indent.
 */
int zuSaHpiBitFlagsDisplay(zuSaHpiHandleT out, uint32_t flags, uint32_t typeId, const char *prefix,
                           int startColumn, int wrapIndent, const char *indent);

/* The same for event states, by the names that they have in the category. */
int zuSaHpiEventStateDisplay(zuSaHpiHandleT out, SaHpiEventStateT states,
                             SaHpiEventCategoryT category, int startColumn, int wrapIndent,
                             const char *indent);

/*
 * Prints a text buffer. Text (BCD plus, ASCII6, text) is printed as it is stored, anything else as
 * a hex dump.
 *
 *   label   printed before it; null or empty for none. A colon is added unless it holds one.
 *   format  0 the value; 1 the value below its type, language and length; 2 the bare text, without
 *           quotes or newline, and nothing for other data; 3 the value behind a tag of its type.
 *           Any other prints "Undefined format code passed to zuSaHpiTextBufferDisplay".
 */
int zuSaHpiTextBufferDisplay(zuSaHpiHandleT out, const SaHpiTextBufferT *textBuffer,
                             const char *label, int format, const char *indent);

/*
 * Prints an entity path, a line for each element, the label before the first. Prints nothing for a
 * path that begins with the root.
 */
int zuSaHpiEntityPathDisplay(zuSaHpiHandleT out, const SaHpiEntityPathT *entityPath,
                             const char *label, const char *indent);

/* ====================================== Record printers ====================================== */

/* Prints the log's info record, nine lines. */
int zuSaHpiPrintEventLogInfo(zuSaHpiHandleT out, const SaHpiEventLogInfoT *info,
                             const char *indent);

/* Prints a log entry: id, time and event. */
int zuSaHpiPrintEventLogEntry(zuSaHpiHandleT out, const SaHpiEventLogEntryT *entry,
                              const char *indent);

/* Prints an event: source, type, time and severity, then what its type holds. */
int zuSaHpiPrintEvent(zuSaHpiHandleT out, const SaHpiEventT *event, const char *indent);

/* Prints an entry of the resource presence table. */
int zuSaHpiRptDisplay(zuSaHpiHandleT out, const SaHpiRptEntryT *rptEntry, const char *indent);

/*
 * Prints a resource data record.
 *
 *   floatAccuracy  nonzero: a sensor's accuracy is the standard's floating point factor; 0: it is
 *                  an unsigned 32-bit number of 0.0001 per cent in the field's first four bytes.
 */
int zuSaHpiRdrDisplay(zuSaHpiHandleT out, const SaHpiRdrT *rdr, const char *indent,
                      uint32_t floatAccuracy);

/* Prints an annunciator's condition. */
int zuSaHpiConditionDisplay(zuSaHpiHandleT out, const SaHpiConditionT *condition,
                            const char *indent);

/*
 * Prints a sensor reading.
 *
 *   label  printed before it in mode 0 only.
 *   mode   0 a line of its own, with label and type; 2 without a line end, so that the caller can
 *          go on with the line; any other the value and a line end.
 */
int zuSaHpiSensorReadingDisplay(zuSaHpiHandleT out, const char *label,
                                const SaHpiSensorReadingT *reading, int mode, const char *indent);

/*
 * Prints the text of a text control: printable text in lines of maxChars characters, Unicode and
 * binary data as hex dumps of as many. With maxChars 0 all of it makes one line or one dump.
 *
 *   data      length bytes.
 *   language  not used.
 *   framed    nonzero: printable text is drawn in a box.
 */
int zuSaHpiTextControlDisplay(zuSaHpiHandleT out, const SaHpiUint8T *data, uint32_t length,
                              SaHpiUint8T maxChars, SaHpiTextTypeT dataType,
                              SaHpiLanguageT language, int framed, const char *indent);

/* =================================== Registry of constants =================================== */

/* Type key: bits 0 to 23 a type id (1 to 59), bits 24 to 31 a sub-type, 0 for none. */

/* A row of zuSaHpiConstants. */
typedef struct {
    const char *name; /* null in the last row, which is no constant */
    SaHpiInt64T value;
    uint32_t type; /* type key */
} zuSaHpiConstantT;

/* A row of zuSaHpiTypes. */
typedef struct {
    const char *name; /* null in the last row, which is no type */
    uint32_t id;
} zuSaHpiTypeT;

#define ZUSAHPI_CONSTANTS 649
#define ZUSAHPI_TYPES 59

/* All constants and all types by name, each table ended by a row whose name is null. */
extern const zuSaHpiConstantT zuSaHpiConstants[ZUSAHPI_CONSTANTS + 1];
extern const zuSaHpiTypeT zuSaHpiTypes[ZUSAHPI_TYPES + 1];

/*
 * Returns the value of a constant's name, or of a number in C notation, limited to 32 bits.
 *
 *   typeId     type key that the constant must have; a plain type id admits every sub-type; 0
 *              admits every type.
 *   foundType  receives the constant's type key, 0 for a number; 0xFFFFFFFF for an unknown name
 *              (the result is then 0) and for a number with something after it.
 */
SaHpiInt64T zuSaHpiStr2Val(const char *text, uint32_t typeId, uint32_t *foundType);

/*
 * Writes the name of a value into buffer (bufferSize bytes) and returns it; a time's text where
 * typeId is that of a time and the buffer is larger than 30 bytes (the result is then
 * zuSaHpiTimeT2String's); in all other cases, and when the name does not fit, the value in decimal;
 * and asterisks when that does not fit.
 *
 *   typeId  type key, sub-type included; 0 asks for the decimal text.
 */
char *zuSaHpiVal2Str(SaHpiInt64T value, char *buffer, uint32_t bufferSize, uint32_t typeId);

/* Returns the id of the type of that name, 0 when there is none. */
uint32_t zuSaHpiGetTypeId(const char *typeName);

/* Returns 1 when the type has constants of that sub-type, else 0. */
int zuSaHpiCheckSubType(uint32_t typeId, uint32_t subType);

/* ======================================= Sorted index ======================================== */

/*
 * A sparse map from 32-bit keys to pointers that are not null, cheap for keys that cluster. The
 * caller holds the index as a pointer, null for an empty one, and serialises all access to it. A
 * value must hold its own key where the key is needed in a walk. Exhausted memory prints a message
 * and ends the process with status 1.
 */

/*
 * Stores value under key, over any earlier one; null deletes. Returns the index: a new one when
 * index was null, else index itself, which stays valid until it is freed.
 */
void *zuSaHpiIndexAdd(void *value, uint32_t key, void *index);

/* Deletes what is stored under key, if anything. */
void zuSaHpiIndexDel(uint32_t key, void *index);

/* Returns the value under key, or null. */
void *zuSaHpiIndexGet(uint32_t key, void *index);

/* Returns the value under the smallest key not below key, or null; always null for 0xFFFFFFFF. */
void *zuSaHpiIndexGetNext(uint32_t key, void *index);

/* Returns the value under the largest key not above key, or null; always null for 0. */
void *zuSaHpiIndexGetPrev(uint32_t key, void *index);

/* Frees the index; the values are the caller's. Returns null, to be stored as the index. */
void *zuSaHpiIndexFree(void *index);

/* ========================================= Utilities ========================================= */

/*
 * Returns the library's time in nanoseconds: the host's time of day, or, once zuSaHpiSetTime was
 * called, the time set then, running on the main library's reference clock.
 */
SaHpiTimeT zuSaHpiTime(void);

/* Sets the library's time, in nanoseconds. It cannot be unset. */
void zuSaHpiSetTime(SaHpiTimeT time);

#define ZUSAHPI_RETURN_CODE_SIZE 35

/*
 * Returns the name of a return code. An unknown code is written into buffer (35 bytes, or null),
 * which is then returned; without a buffer the result is "Undefined Return Code".
 */
const char *zuSaHpiReturnCode(SaErrorT code, char *buffer);

/* Returns the name of a signal (Linux on x86), "Undefined Signal" for a number above 31. */
const char *zuSaHpi_strsignal(uint32_t signal);

/*
 * Prints a hex dump: 16 bytes a line, in hex and as characters, every line begun with prefix, runs
 * of equal lines folded. Up to 16 bytes come as one line without an offset; more are followed by an
 * empty line; none as "<null>". Returns what the last print returned.
 */
int zuSaHpiDprint(zuSaHpiHandleT out, const void *data, uint32_t length, const char *prefix);

/*
 * The error numbers that the main library's time parser reports, each the index of its message.
 * mainlib/time_parse.cpp says when the default main library's parser reports which.
 */
#define ZUSAHPI_TIME_OK 0
#define ZUSAHPI_TIME_ILLEGAL_FIELD 1
#define ZUSAHPI_TIME_ILLEGAL_LAST_CHARACTER 2
#define ZUSAHPI_TIME_UNEXPECTED_DATE 3
#define ZUSAHPI_TIME_ILLEGAL_MONTH 4
#define ZUSAHPI_TIME_ILLEGAL_DAY 5
#define ZUSAHPI_TIME_ILLEGAL_YEAR 6
#define ZUSAHPI_TIME_UNEXPECTED_TIME 7
#define ZUSAHPI_TIME_ILLEGAL_HOUR 8
#define ZUSAHPI_TIME_ILLEGAL_MINUTE 9
#define ZUSAHPI_TIME_ILLEGAL_SECOND 10
#define ZUSAHPI_TIME_ILLEGAL_SUBSECONDS 11
#define ZUSAHPI_TIME_UNEXPECTED_AM_PM 12
#define ZUSAHPI_TIME_UNEXPECTED_DST 13
#define ZUSAHPI_TIME_UNEXPECTED_STD 14
#define ZUSAHPI_TIME_UNEXPECTED_RELATIVE 15
#define ZUSAHPI_TIME_ILLEGAL_RELATIVE_DAYS 16
#define ZUSAHPI_TIME_ILLEGAL_RELATIVE_HOURS 17
#define ZUSAHPI_TIME_ILLEGAL_RELATIVE_MINUTES 18
#define ZUSAHPI_TIME_ILLEGAL_RELATIVE_SECONDS 19
#define ZUSAHPI_TIME_ILLEGAL_RELATIVE_SUBSECONDS 20
#define ZUSAHPI_TIME_RELATIVE_COMPONENT_RANGE 21
#define ZUSAHPI_TIME_RELATIVE_OUT_OF_RANGE 22
#define ZUSAHPI_TIME_COMPONENT_RANGE 23
#define ZUSAHPI_TIME_DATE_COMPONENT_RANGE 24
#define ZUSAHPI_TIME_DATE_OUT_OF_RANGE 25
#define ZUSAHPI_TIME_ERRORS 26 /* how many there are */

extern const char *const zuSaHpiTimeErrMsg[ZUSAHPI_TIME_ERRORS];

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif

#ifdef __cplusplus
}
#endif

#endif
