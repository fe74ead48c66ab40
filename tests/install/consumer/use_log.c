/*
 * What a user of the default main library writes: configures a log under the folder given, adds an
 * entry and reads it back. The same file is compiled as C and as C++. Ends with 0 and one line when
 * what comes back is what went in.
 */
#include <stdio.h>
#include <string.h>

#include <zuSaHpi_default_mainlib.h>
#include <zuSaHpi_util.h>

static const char configuration[] = "EventLog=linked { Filename=./use.log Size=10 }";

static int fail(const char *what) {
    fprintf(stderr, "use_log: %s\n", what);
    return 1;
}

static int startLog(void) {
    zuSaHpiConfigT config =
        zuSaHpiConfigTextRead("built in", configuration, sizeof configuration - 1);
    if (config.error != NULL) {
        return fail(config.error);
    }
    EventLogControlBlock *block = zuSaHpiEvtLogConf(config.nodes);
    const SaErrorT result = zuSaHpiEventLogInit(block);
    zuSaHpiConfigRelease(&config);
    return result == SA_OK ? 0 : fail(zuSaHpiReturnCode(result, NULL));
}

static EventLogAddRecord fanFailure(void) {
    EventLogAddRecord record;
    SaHpiSensorEventT *sensor = &record.event.EventDataUnion.SensorEvent;
    memset(&record, 0, sizeof record);
    record.event.Source = 7;
    record.event.EventType = SAHPI_ET_SENSOR;
    record.event.Timestamp = zuSaHpiTime();
    record.event.Severity = SAHPI_MAJOR;
    sensor->SensorNum = 3;
    sensor->SensorType = SAHPI_FAN;
    return record;
}

int main(void) {
    if (startLog() != 0) {
        return 1;
    }
    const EventLogAddRecord added = fanFailure();
    if (zuSaHpiEventLogEntryAdd(&added, 0) != SA_OK) {
        return fail("the entry was not added");
    }
    EventLogEntryRecord found;
    if (zuSaHpiEventLogEntryGet(SAHPI_NEWEST_ENTRY, &found) != SA_OK) {
        return fail("the entry cannot be read");
    }
    if (found.entry.EntryId != 1 ||
        memcmp(&found.entry.Event, &added.event, sizeof added.event) != 0) {
        return fail("the entry is not what was added");
    }
    char time[ZUSAHPI_TIME_TEXT_SIZE];
    const char *text = zuSaHpiTimeT2String(found.entry.Timestamp, 0, time);
    if (strlen(text) != 30 || text[10] != 'T') {
        return fail("the entry's time has no text");
    }
    printf("one entry, as it was added\n");
    return 0;
}
