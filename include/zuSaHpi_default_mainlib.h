/*
 * The default main library, beside the names of zuSaHpi_mainlib.h: where it keeps its logs, where
 * syslog lines go, and its configuration file.
 *
 * What the names of zuSaHpi_mainlib.h do here
 *
 *   zuSaHpiPrintf           takes a FILE * as handle: (zuSaHpiHandleT)stdout.
 *   zuSaHpiSyslog           see zuSaHpiSyslogStreamSet.
 *   zuSaHpiGetTimeofDay     CLOCK_REALTIME.
 *   zuSaHpiGetTimeRef       CLOCK_MONOTONIC: zero is about the start of the machine.
 *   zuSaHpiTimeT2String     always fills the buffer and returns it: 2026-11-21T08:06:12.123456789Z,
 *                           +3d04:05:06.000000007 for a relative time, or "unspecified".
 *   zuSaHpiString2TimeT     reads these and what people write: "2026-11-21 8:06 PM", "11/21/2026",
 *                           "08:06:12.5+02:00" (today's), "+2d3h", "-90s", "now". A time without an
 *                           offset is UTC.
 *   zuSaHpiLibInitialized   1 from the start: there is nothing to initialise.
 *   zuSaHpiRoot             "." until zuSaHpiRootSet is called.
 *   zuSaHpiEuId, -GroupId   the effective ids of the process when it was loaded.
 *
 * Root and stream are process-wide and meant to be set before threads start.
 */
#ifndef ZUSAHPI_DEFAULT_MAINLIB_H
#define ZUSAHPI_DEFAULT_MAINLIB_H

#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

#include "zuSaHpi_mainlib.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Bytes that a root takes at most, its NUL included. */
#define ZUSAHPI_ROOT_SIZE 4096

/*
 * Sets zuSaHpiRoot to a copy of the text; null or empty means ".". Returns 0, or -1 when the text
 * is too long; the root is then as before.
 */
int zuSaHpiRootSet(const char *root);

/*
 * Chooses where zuSaHpiSyslog writes: a stream, or syslog(3) when it is null, as it is at first.
 *
 *   syslog(3)  identity "zuSaHpi" with the process id, facility LOG_DAEMON.
 *   a stream   one line: the level's name (emerg, alert, crit, err, warning, notice, info, debug),
 *              a colon, a blank, the text; flushed at once. "notice: HPI: Resource 7 Added".
 *
 * In both, newlines that end the text are dropped, and every other control character is written as
 * '#' and three octal digits, so that text from outside cannot forge a line. A level below 0 counts
 * as 0, above 7 as 7.
 */
void zuSaHpiSyslogStreamSet(FILE *stream);

/* What a configuration came to. Copies share what they point to: release one of them. */
typedef struct {
    const ConfigNode *nodes; /* first top-level keyword; null when there is none, and on error */
    const char *error;       /* null; or what is wrong, one line without a newline */
    void *storage;           /* holds the two above until it is released */
} zuSaHpiConfigT;

/*
 * Reads a configuration file (zusahpi-evtlog.conf(5) describes it). An error has the form
 * "file:line:column: expected ..., found ...", or "file: cannot be read: ..." where it is the file
 * that fails, or is "out of memory". The tree holds no value that zuSaHpiEvtLogConf must not see.
 */
zuSaHpiConfigT zuSaHpiConfigFileRead(const char *path);

/* The same for a text of that length in memory; name stands for the file in messages. */
zuSaHpiConfigT zuSaHpiConfigTextRead(const char *name, const char *text, size_t length);

/* Frees nodes and error. May be called again, and on a record of zeros. */
void zuSaHpiConfigRelease(zuSaHpiConfigT *config);

/* Returns the text of a keyword's code (ZUSAHPI_CONF_...), null when there is no such code. */
const char *zuSaHpiConfigKeyword(uint32_t code);

/*
 * Returns the word for a value of that keyword ("wrap", "critical", "all", "none"), null when the
 * value has none: numbers, strings, values that the keyword does not take.
 */
const char *zuSaHpiConfigWord(uint32_t code, uint32_t value);

#ifdef __cplusplus
}
#endif

#endif
