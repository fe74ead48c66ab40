/*
 * A main library of one's own, as small as it can be: what libzuSaHpi_util imports, and a first use
 * of the log. Build it with
 *
 *   cc -Iinclude examples/minimal_mainlib.c -Lbuild/native -Wl,-rpath,"$PWD/build/native" \
 *      -lzuSaHpi_util -o minimal_mainlib
 *
 * and run it with the name of a log file: ./minimal_mainlib ./my.log
 * With "-d" before the name it goes on as a daemon.
 */
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_messages.h"
#include "zuSaHpi_util.h"

/* ---- What the library imports --------------------------------------------------------------- */

int zuSaHpiLibInitialized = 1;
const char *zuSaHpiRoot = ".";
uid_t zuSaHpiEuId;
gid_t zuSaHpiGroupId;

int zuSaHpiPrintf(zuSaHpiHandleT handle, const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int result = vfprintf((FILE *)handle, format, arguments);
    va_end(arguments);
    return result;
}

void zuSaHpiSyslog(int priority, const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    printf("syslog level %d: ", priority);
    vprintf(format, arguments);
    va_end(arguments);
}

SaHpiTimeT zuSaHpiGetTimeofDay(void) {
    return (SaHpiTimeT)time(NULL) * 1000000000;
}

SaHpiTimeT zuSaHpiGetTimeRef(void) {
    return zuSaHpiGetTimeofDay();
}

char *zuSaHpiTimeT2String(SaHpiTimeT value, int flags, char *buffer) {
    const time_t seconds = (time_t)(value / 1000000000);
    struct tm parts;
    (void)flags;
    gmtime_r(&seconds, &parts);
    strftime(buffer, ZUSAHPI_TIME_TEXT_SIZE, "%Y-%m-%d %H:%M:%S", &parts);
    return buffer;
}

SaHpiTimeT zuSaHpiString2TimeT(const char *text, int flags, int *errorIndex) {
    long long seconds = 0;
    (void)flags;
    *errorIndex = sscanf(text, "%lld", &seconds) == 1 ? 0 : 1;
    return *errorIndex == 0 ? (SaHpiTimeT)seconds * 1000000000 : SAHPI_TIME_UNSPECIFIED;
}

/* ---- A first use ---------------------------------------------------------------------------- */

static void startLog(const char *fileName) {
    static ConfigNode log, name, size, forwarding;
    log.code = ZUSAHPI_CONF_EVENT_LOG;
    log.intValue = ZUSAHPI_EL_TYPE_LINKED;
    log.firstChild = &name;
    name.code = ZUSAHPI_CONF_FILE_NAME;
    name.intValue = (uint32_t)strlen(fileName);
    memcpy(name.strValue, fileName, name.intValue);
    name.nextSibling = &size;
    size.code = ZUSAHPI_CONF_SIZE;
    size.intValue = 100;
    size.nextSibling = &forwarding;
    forwarding.code = ZUSAHPI_CONF_SYSLOG;
    forwarding.intValue = 1;
    zuSaHpiEventLogInit(zuSaHpiEvtLogConf(&log));
}

static void putText(SaHpiTextBufferT *buffer, const char *text) {
    buffer->DataType = SAHPI_TL_TYPE_TEXT;
    buffer->Language = SAHPI_LANG_ENGLISH;
    buffer->DataLength = (SaHpiUint8T)strlen(text);
    memcpy(buffer->Data, text, buffer->DataLength);
}

/* A fan of blade 7 has become too slow: the event, its resource and its instrument. */
static SaErrorT addSensorEvent(void) {
    EventLogAddRecord record;
    SaHpiSensorEventT *sensor = &record.event.EventDataUnion.SensorEvent;
    memset(&record, 0, sizeof record);
    record.event.Source = 7;
    record.event.EventType = SAHPI_ET_SENSOR;
    record.event.Timestamp = zuSaHpiTime();
    record.event.Severity = SAHPI_MAJOR;
    sensor->SensorNum = 3;
    sensor->SensorType = SAHPI_FAN;
    sensor->EventCategory = SAHPI_EC_THRESHOLD;
    sensor->Assertion = SAHPI_TRUE;
    sensor->EventState = SAHPI_ES_LOWER_MAJOR;
    record.rpt.ResourceId = 7;
    record.rpt.ResourceEntity.Entry[0].EntityType = SAHPI_ENT_ROOT;
    record.rpt.ResourceCapabilities = SAHPI_CAPABILITY_RESOURCE | SAHPI_CAPABILITY_SENSOR;
    putText(&record.rpt.ResourceTag, "Blade 7");
    record.rdr.RdrType = SAHPI_SENSOR_RDR;
    record.rdr.Entity.Entry[0].EntityType = SAHPI_ENT_ROOT;
    record.rdr.RdrTypeUnion.SensorRec.Num = 3;
    putText(&record.rdr.IdString, "Fan 3");
    return zuSaHpiEventLogEntryAdd(&record, 0);
}

/* What a client does, and the one question that a main library asks first of what clients send. */
static uint32_t entriesByRequest(void) {
    static zuSaHpiMessageT message;
    message.type = ZUSAHPI_MSG_INFO_GET;
    if (ZUSAHPI_MSG_IS_REQUEST(message.type)) {
        zuSaHpiEvtLogRequest(&message);
    }
    return message.payload.info.Entries;
}

int main(int argc, char **argv) {
    const int asDaemon = argc == 3 && strcmp(argv[1], "-d") == 0;
    const char *fileName = argv[argc - 1];
    if (argc != (asDaemon ? 3 : 2) || strlen(fileName) > 98) {
        fprintf(stderr, "usage: minimal_mainlib [-d] LOGFILE\n");
        return 2;
    }
    /* Before the log is started: its lock is the process's that starts it. */
    if (asDaemon && daemon(1, 1) != 0) {
        perror("daemon");
        return 1;
    }
    /* The log gives its lock up in exit(), which a closed pipe must not prevent. */
    signal(SIGPIPE, SIG_IGN);
    zuSaHpiEuId = geteuid();
    zuSaHpiGroupId = getegid();
    startLog(fileName);
    printf("add: %s\n", zuSaHpiReturnCode(addSensorEvent(), NULL));
    printf("entries, says the dispatcher: %u\n", entriesByRequest());
    zuSaHpiPrintEventLog((zuSaHpiHandleT)stdout, 0);
    return fflush(stdout) == 0 && !ferror(stdout) ? 0 : 1;
}
