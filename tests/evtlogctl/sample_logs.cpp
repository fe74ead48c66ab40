// The sample logs are made by the store, each in a process of its own.
#include "tests/evtlogctl/sample_logs.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <map>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "eventlog/log_format.h"
#include "tests/support/child.h"
#include "tests/support/files.h"

namespace sample_logs {
namespace {

using namespace zusahpi;

void putText(SaHpiTextBufferT &buffer, SaHpiTextTypeT type, std::string_view text) {
    buffer.DataType = type;
    buffer.Language = SAHPI_LANG_ENGLISH;
    buffer.DataLength = static_cast<SaHpiUint8T>(text.size());
    std::copy(text.begin(), text.end(), buffer.Data);
}

void putReading(SaHpiSensorReadingT &reading, SaHpiInt64T value) {
    reading.IsSupported = SAHPI_TRUE;
    reading.Type = SAHPI_SENSOR_READING_TYPE_INT64;
    reading.Value.SensorInt64 = value;
}

void putPath(SaHpiEntityPathT &path) {
    path.Entry[0] = {.EntityType = SAHPI_ENT_FAN, .EntityLocation = 2};
    path.Entry[1] = {.EntityType = SAHPI_ENT_ROOT, .EntityLocation = 0};
}

void putResource(SaHpiRptEntryT &rpt) {
    rpt.EntryId = 7;
    rpt.ResourceId = 11;
    rpt.ResourceCapabilities = SAHPI_CAPABILITY_RESOURCE | SAHPI_CAPABILITY_SENSOR;
    rpt.ResourceSeverity = SAHPI_MAJOR;
    putPath(rpt.ResourceEntity);
    putText(rpt.ResourceTag, SAHPI_TL_TYPE_TEXT, "Shelf");
}

void putSensorEvent(SaHpiEventT &event) {
    event.EventType = SAHPI_ET_SENSOR;
    SaHpiSensorEventT &sensor = event.EventDataUnion.SensorEvent;
    sensor.SensorNum = 3;
    sensor.SensorType = SAHPI_FAN;
    sensor.EventCategory = SAHPI_EC_THRESHOLD;
    sensor.Assertion = SAHPI_TRUE;
    sensor.EventState = SAHPI_ES_LOWER_MAJOR;
    sensor.OptionalDataPresent = SAHPI_SOD_TRIGGER_READING | SAHPI_SOD_TRIGGER_THRESHOLD;
    putReading(sensor.TriggerReading, 1200);
    putReading(sensor.TriggerThreshold, 1500);
}

void putSensor(SaHpiRdrT &rdr) {
    rdr.RdrType = SAHPI_SENSOR_RDR;
    putPath(rdr.Entity);
    putText(rdr.IdString, SAHPI_TL_TYPE_TEXT, "Fan speed");
    SaHpiSensorRecT &sensor = rdr.RdrTypeUnion.SensorRec;
    sensor.Num = 3;
    sensor.Type = SAHPI_FAN;
    sensor.Category = SAHPI_EC_THRESHOLD;
    sensor.DataFormat.IsSupported = SAHPI_TRUE;
    sensor.DataFormat.BaseUnits = SAHPI_SU_RPM;
    sensor.DataFormat.Range.Flags = SAHPI_SRF_MAX;
    putReading(sensor.DataFormat.Range.Max, 9000);
    sensor.ThresholdDefn.IsAccessible = SAHPI_TRUE;
}

void putControl(SaHpiRdrT &rdr) {
    rdr.RdrType = SAHPI_CTRL_RDR;
    putPath(rdr.Entity);
    putText(rdr.IdString, SAHPI_TL_TYPE_TEXT, "Display");
    SaHpiCtrlRecT &control = rdr.RdrTypeUnion.CtrlRec;
    control.OutputType = SAHPI_CTRL_LCD_DISPLAY;
    control.Type = SAHPI_CTRL_TYPE_TEXT;
    control.TypeUnion.Text.MaxChars = 20;
    control.TypeUnion.Text.MaxLines = 2;
    control.TypeUnion.Text.Language = SAHPI_LANG_ENGLISH;
    control.TypeUnion.Text.DataType = SAHPI_TL_TYPE_TEXT;
    putText(control.TypeUnion.Text.Default.Text, SAHPI_TL_TYPE_TEXT, "hello");
}

void putEvent(SaHpiEventT &event, std::uint32_t serial) {
    switch (serial) {
    case 1:
        event.EventType = SAHPI_ET_USER;
        return putText(event.EventDataUnion.UserEvent.UserEventData, SAHPI_TL_TYPE_TEXT,
                       "fan 3 replaced");
    case 2:
        event.EventType = SAHPI_ET_HPI_SW;
        event.EventDataUnion.HpiSwEvent.Type = SAHPI_HPIE_STARTUP;
        return putText(event.EventDataUnion.HpiSwEvent.EventData, SAHPI_TL_TYPE_UNICODE,
                       std::string_view("o\0k\0", 4));
    case 3:
        return putSensorEvent(event);
    case 4:
        event.EventType = SAHPI_ET_HOTSWAP;
        event.EventDataUnion.HotSwapEvent.HotSwapState = SAHPI_HS_STATE_ACTIVE;
        return;
    case 5:
        event.EventType = SAHPI_ET_WATCHDOG;
        event.EventDataUnion.WatchdogEvent.WatchdogAction = SAHPI_WAE_RESET;
        return;
    default:
        event.EventType = SAHPI_ET_SENSOR_ENABLE_CHANGE;
        event.EventDataUnion.SensorEnableChangeEvent.SensorType = SAHPI_VOLTAGE;
        event.EventDataUnion.SensorEnableChangeEvent.EventCategory = SAHPI_EC_THRESHOLD;
        return;
    }
}

void addAll(std::initializer_list<std::uint32_t> serials) {
    std::for_each(serials.begin(), serials.end(), add);
}

[[nodiscard]] std::string logOf(const std::string &path, Kind kind) {
    test_support::inChild([&] {
        switch (kind) {
        case Kind::simple:
            startStore(path, ZUSAHPI_EL_TYPE_SIMPLE, 5, ZUSAHPI_EL_DROP);
            return addAll({1, 2, 3});
        case Kind::circular:
            startStore(path, ZUSAHPI_EL_TYPE_CIRCULAR, 3, ZUSAHPI_EL_WRAP);
            return addAll({4, 1, 3, 5});
        default:
            startStore(path, ZUSAHPI_EL_TYPE_LINKED, 10, ZUSAHPI_EL_WRAP);
            addAll({1, 2, 3, 4, 5});
            ASSERT_EQ(zuSaHpiEventLogEntryDel(2, 0), SA_OK);
            ASSERT_EQ(zuSaHpiEventLogEntryDel(4, 0), SA_OK);
            return;
        }
    });
    return test_support::readFile(path);
}

// What a crash leaves when the flagged info record is on disk and no record is in place yet.
[[nodiscard]] std::string interruptedLog(const std::string &path) {
    const std::string before = logOf(path, Kind::linked);
    test_support::inChild([&] {
        startStore(path, ZUSAHPI_EL_TYPE_LINKED, 10, ZUSAHPI_EL_WRAP);
        add(6);
    });
    std::string bytes = test_support::readFile(path);
    put(bytes, offsetof(EventLogInfoRecord, updating), std::uint32_t{1});
    return bytes.substr(0, eventlog::entriesOffset) + before.substr(eventlog::entriesOffset);
}

} // namespace

const char *nameOf(Kind kind) {
    switch (kind) {
    case Kind::simple:
        return "simple";
    case Kind::circular:
        return "circular";
    case Kind::linked:
        return "linked";
    default:
        return "interrupted";
    }
}

EventLogAddRecord recordOf(std::uint32_t serial) {
    EventLogAddRecord record;
    std::memset(&record, 0, sizeof record);
    record.event.Source = serial;
    record.event.Timestamp = 1'700'000'000'000'000'000;
    record.event.Severity = SAHPI_MINOR;
    putEvent(record.event, serial);
    if (serial >= 3) {
        putResource(record.rpt);
        serial == 3 ? putSensor(record.rdr) : putControl(record.rdr);
    }
    return record;
}

void startStore(const std::string &path, std::uint32_t type, std::uint32_t size,
                std::uint32_t overflowAction) {
    EventLogControlBlock block{};
    block.size = ZUSAHPI_EL_CONTROL_BLOCK_SIZE;
    block.magic = ZUSAHPI_EL_CONTROL_BLOCK_MAGIC;
    block.info.sa.Size = size;
    block.info.sa.UserEventMaxSize = SAHPI_MAX_TEXT_BUFFER_LENGTH;
    block.info.sa.Enabled = SAHPI_TRUE;
    block.info.type = type;
    block.info.overflowAction = overflowAction;
    block.info.oldest = eventlog::noEntry;
    block.info.newest = eventlog::noEntry;
    block.info.freeHead = eventlog::noEntry;
    block.fileEnabled = 1;
    std::strncpy(block.fileName, path.c_str(), sizeof block.fileName - 1);
    ASSERT_EQ(zuSaHpiEventLogInit(&block), SA_OK);
}

void add(std::uint32_t serial) {
    const EventLogAddRecord record = recordOf(serial);
    ASSERT_EQ(zuSaHpiEventLogEntryAdd(&record, 1), SA_OK);
}

void age(const std::string &path) {
    const timespec old{.tv_sec = 1'000'000, .tv_nsec = 0};
    const timespec times[2] = {old, old};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

std::string bytesOf(Kind kind) {
    static std::map<Kind, std::string> made;
    if (!made.contains(kind)) {
        const test_support::ScratchFolder folder;
        const std::string path = folder.file("log");
        made[kind] = kind == Kind::interrupted ? interruptedLog(path) : logOf(path, kind);
    }
    return made[kind];
}

} // namespace sample_logs
