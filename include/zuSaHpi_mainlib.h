/*
 * What libzuSaHpi_util needs from the implementation's main library: ten names that whoever
 * links it provides. The default main library (libzuSaHpi_mainlib.a) has one of each.
 *
 * The library calls these functions on its caller's thread, with the format strings that it owns;
 * text that comes from outside is always an argument, never a format.
 */
#ifndef ZUSAHPI_MAINLIB_H
#define ZUSAHPI_MAINLIB_H

#include <sys/types.h>

#include "zuSaHpi_util.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Seen by the shared library also where a main library is compiled to hide its names. */
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/* Bytes that a buffer for zuSaHpiTimeT2String holds at least: 30 characters and a NUL. */
#define ZUSAHPI_TIME_TEXT_SIZE 31

/*
 * Prints to the channel that the handle names. (zuSaHpiHandleT)stderr must be understood: the
 * library's diagnostics go there. Returns like printf; printers pass the result on.
 */
int zuSaHpiPrintf(zuSaHpiHandleT handle, const char *format, ...)
    __attribute__((format(printf, 2, 3)));

/* Writes one line to the system log. priority is a syslog level, 0 (most urgent) to 7 (debug). */
void zuSaHpiSyslog(int priority, const char *format, ...) __attribute__((format(printf, 2, 3)));

/* Returns the host's time of day: nanoseconds since 1970-01-01T00:00:00Z. */
SaHpiTimeT zuSaHpiGetTimeofDay(void);

/* Returns a clock that never jumps, in nanoseconds. Its zero is the main library's. */
SaHpiTimeT zuSaHpiGetTimeRef(void);

/*
 * Returns the text of a time: at most 30 characters, NUL-terminated, in buffer or elsewhere.
 *
 *   flags   always 0.
 *   buffer  at least ZUSAHPI_TIME_TEXT_SIZE bytes.
 */
char *zuSaHpiTimeT2String(SaHpiTimeT time, int flags, char *buffer);

/*
 * Reads a time from text.
 *
 *   flags       always 0.
 *   errorIndex  receives ZUSAHPI_TIME_OK, or the number of the error, an index into
 *               zuSaHpiTimeErrMsg.
 *
 * Returns the time, SAHPI_TIME_UNSPECIFIED when the text is none.
 */
SaHpiTimeT zuSaHpiString2TimeT(const char *text, int flags, int *errorIndex);

/* Nonzero once the main library is up. */
extern int zuSaHpiLibInitialized;

/* The installation root, NUL-terminated: logs with a plain name lie in its folder "evtlog". */
extern const char *zuSaHpiRoot;

/* The owner of a new log file. */
extern uid_t zuSaHpiEuId;
extern gid_t zuSaHpiGroupId;

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif

#ifdef __cplusplus
}
#endif

#endif
