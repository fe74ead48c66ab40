/*
 * The library as its implementers meet it: a C99 program with a main library of its own, linked
 * against the shared object. It configures a log, adds an event, reads it back and prints it; the
 * test compares the output.
 */
#include <stdarg.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

int zuSaHpiLibInitialized = 1;
const char *zuSaHpiRoot = ".";
uid_t zuSaHpiEuId;
gid_t zuSaHpiGroupId;

int zuSaHpiPrintf(zuSaHpiHandleT handle, const char *format, ...) {
    va_list arguments;
    int result;
    va_start(arguments, format);
    result = vfprintf((FILE *)handle, format, arguments);
    va_end(arguments);
    return result;
}

void zuSaHpiSyslog(int priority, const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    printf("<%d>", priority);
    vprintf(format, arguments);
    va_end(arguments);
}

SaHpiTimeT zuSaHpiGetTimeofDay(void) {
    return 5000;
}

SaHpiTimeT zuSaHpiGetTimeRef(void) {
    return 0;
}

char *zuSaHpiTimeT2String(SaHpiTimeT time, int flags, char *buffer) {
    (void)flags;
    snprintf(buffer, ZUSAHPI_TIME_TEXT_SIZE, "%lld ns", (long long)time);
    return buffer;
}

SaHpiTimeT zuSaHpiString2TimeT(const char *text, int flags, int *errorIndex) {
    (void)text;
    (void)flags;
    *errorIndex = 1;
    return SAHPI_TIME_UNSPECIFIED;
}

static ConfigNode node(uint32_t code, uint32_t value) {
    ConfigNode result;
    memset(&result, 0, sizeof result);
    result.code = code;
    result.intValue = value;
    return result;
}

int main(int argc, char **argv) {
    ConfigNode log = node(ZUSAHPI_CONF_EVENT_LOG, ZUSAHPI_EL_TYPE_LINKED);
    ConfigNode name = node(ZUSAHPI_CONF_FILE_NAME, 0);
    ConfigNode size = node(ZUSAHPI_CONF_SIZE, 10);
    ConfigNode syslogSwitch = node(ZUSAHPI_CONF_SYSLOG, 1);
    EventLogAddRecord added;
    EventLogEntryRecord read;
    SaHpiSensorEventT *sensor = &added.event.EventDataUnion.SensorEvent;
    const zuSaHpiHandleT out = (zuSaHpiHandleT)stdout;
    char text[50];

    if (argc != 2 || strlen(argv[1]) > 98) {
        return 2;
    }
    zuSaHpiEuId = geteuid();
    zuSaHpiGroupId = getegid();
    log.firstChild = &name;
    name.nextSibling = &size;
    name.intValue = (uint32_t)strlen(argv[1]);
    memcpy(name.strValue, argv[1], name.intValue);
    size.nextSibling = &syslogSwitch;

    if (zuSaHpiEventLogInit(zuSaHpiEvtLogConf(&log)) != SA_OK) {
        return 1;
    }
    memset(&added, 0, sizeof added);
    added.event.Source = 7;
    added.event.EventType = SAHPI_ET_SENSOR;
    added.event.Severity = SAHPI_MAJOR;
    sensor->SensorNum = 3;
    sensor->SensorType = SAHPI_TEMPERATURE;
    sensor->EventCategory = SAHPI_EC_THRESHOLD;
    sensor->Assertion = SAHPI_TRUE;
    sensor->EventState = SAHPI_ES_UPPER_MAJOR;
    printf("add: %s\n", zuSaHpiReturnCode(zuSaHpiEventLogEntryAdd(&added, 0), NULL));
    printf("get: %s\n",
           zuSaHpiReturnCode(zuSaHpiEventLogEntryGet(SAHPI_NEWEST_ENTRY, &read), NULL));
    zuSaHpiValueDisplay(out, "Sensor type:", read.entry.Event.EventDataUnion.SensorEvent.SensorType,
                        0, zuSaHpiGetTypeId("SaHpiSensorTypeT"), "SAHPI_", "  ");
    printf("%s\n", zuSaHpiVal2Str(read.entry.Timestamp, text, sizeof text, 42));
    printf("%d constants, the first %s\n", ZUSAHPI_CONSTANTS, zuSaHpiConstants[0].name);
    return 0;
}
