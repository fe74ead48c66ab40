// The workloads.

#include "bench/workloads.h"

#include <cstring>

#include <time.h>

namespace bench {
namespace {

void putText(SaHpiTextBufferT &buffer, std::string_view text) {
    buffer.DataType = SAHPI_TL_TYPE_TEXT;
    buffer.Language = SAHPI_LANG_ENGLISH;
    buffer.DataLength = static_cast<SaHpiUint8T>(text.size());
    std::memcpy(buffer.Data, text.data(), text.size());
}

SaHpiSensorReadingT degrees(double value) {
    SaHpiSensorReadingT reading{};
    reading.IsSupported = SAHPI_TRUE;
    reading.Type = SAHPI_SENSOR_READING_TYPE_FLOAT64;
    reading.Value.SensorFloat64 = value;
    return reading;
}

// A board that is too hot, with its resource and its sensor.
Record sampleRecord() {
    constexpr SaHpiSensorNumT sensor = 7;
    Record record;
    std::memset(&record, 0, sizeof record);
    record.entry.Event.Source = 1;
    record.entry.Event.EventType = SAHPI_ET_SENSOR;
    record.entry.Event.Severity = SAHPI_MAJOR;
    record.entry.Event.Timestamp = 1'700'000'000'000'000'000;
    SaHpiSensorEventT &event = record.entry.Event.EventDataUnion.SensorEvent;
    event.SensorNum = sensor;
    event.SensorType = SAHPI_TEMPERATURE;
    event.EventCategory = SAHPI_EC_THRESHOLD;
    event.Assertion = SAHPI_TRUE;
    event.EventState = SAHPI_ES_UPPER_MAJOR;
    event.OptionalDataPresent = SAHPI_SOD_TRIGGER_READING | SAHPI_SOD_TRIGGER_THRESHOLD;
    event.TriggerReading = degrees(91.5);
    event.TriggerThreshold = degrees(90);

    const SaHpiEntityPathT board = {
        {{SAHPI_ENT_SYSTEM_BOARD, 1}, {SAHPI_ENT_ROOT, 0}},
    };
    record.rpt.EntryId = 1;
    record.rpt.ResourceId = 1;
    record.rpt.ResourceEntity = board;
    record.rpt.ResourceCapabilities = SAHPI_CAPABILITY_RESOURCE | SAHPI_CAPABILITY_SENSOR;
    record.rpt.ResourceSeverity = SAHPI_MAJOR;
    putText(record.rpt.ResourceTag, "a system board of the second chassis");
    record.rdr.RecordId = 1;
    record.rdr.RdrType = SAHPI_SENSOR_RDR;
    record.rdr.Entity = board;
    record.rdr.RdrTypeUnion.SensorRec.Num = sensor;
    record.rdr.RdrTypeUnion.SensorRec.Type = SAHPI_TEMPERATURE;
    record.rdr.RdrTypeUnion.SensorRec.Category = SAHPI_EC_THRESHOLD;
    record.rdr.RdrTypeUnion.SensorRec.Events = SAHPI_ES_UPPER_MAJOR;
    putText(record.rdr.IdString, "Temperature at the air outlet");
    return record;
}

std::int64_t now() {
    timespec time{};
    require(clock_gettime(CLOCK_MONOTONIC, &time) == 0, "clock_gettime");
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

// Events some seconds apart, whose readings move.
void addMany(const Task &task, std::uint32_t count) {
    constexpr SaHpiTimeT gap = 7'013'000'000;
    constexpr double step = 0.1;
    constexpr std::uint32_t steps = 300;
    Record record = sampleRecord();
    SaHpiEventT &event = record.entry.Event;
    SaHpiSensorReadingT &reading = event.EventDataUnion.SensorEvent.TriggerReading;
    const double lowest = reading.Value.SensorFloat64;
    for (std::uint32_t i = 0; i < count; ++i) {
        reading.Value.SensorFloat64 = lowest + step * (i % steps);
        task.engine->add(record);
        event.Timestamp += gap;
    }
}

std::int64_t timedAdds(const Task &task) {
    const std::int64_t begin = now();
    addMany(task, task.count);
    return now() - begin;
}

// `numberOf` gives the number of the i-th read.
template <typename NumberOf>
std::int64_t timedReads(const Task &task, NumberOf numberOf) {
    Record record;
    std::uint32_t tags = 0; // uses what was read
    const std::int64_t begin = now();
    for (std::uint32_t i = 0; i < task.count; ++i) {
        task.engine->read(numberOf(i), record);
        tags += record.rpt.ResourceTag.Data[0];
    }
    const std::int64_t elapsed = now() - begin;
    require(tags == task.count * 'a', "the records are not those that were added");
    return elapsed;
}

std::int64_t timedReadsOfNewest(const Task &task) {
    Record record;
    const std::int64_t begin = now();
    for (std::uint32_t i = 0; i < task.count; ++i) {
        task.engine->readNewest(record);
    }
    return now() - begin;
}

std::int64_t timedOpen(const Task &task) {
    const std::int64_t begin = now();
    task.engine->open(task.setup);
    return now() - begin;
}

std::int64_t timedDeletes(const Task &task) {
    const std::int64_t begin = now();
    for (std::uint32_t i = 0; i < task.count; ++i) {
        require(zuSaHpiEventLogEntryDel(SAHPI_NEWEST_ENTRY, 0) == SA_OK, "delete");
    }
    return now() - begin;
}

std::int64_t timedClear() {
    const std::int64_t begin = now();
    require(zuSaHpiEventLogClear() == SA_OK, "clear");
    return now() - begin;
}

} // namespace

std::optional<std::int64_t> run(std::string_view workload, const Task &task) {
    const std::uint32_t size = task.setup.capacity;
    std::int64_t elapsed = timedOpen(task);
    if (workload == "grow") {
        elapsed = timedAdds(task);
    } else if (workload == "wrap") {
        addMany(task, size);
        elapsed = timedAdds(task);
    } else if (workload == "fill") {
        addMany(task, task.count);
    } else if (workload == "newest") {
        elapsed = timedReadsOfNewest(task);
    } else if (workload == "scan") {
        elapsed = timedReads(task, [size](std::uint32_t i) { return i % size + 1; });
    } else if (workload == "random") {
        elapsed = timedReads(task, [size, state = std::uint64_t{1}](std::uint32_t) mutable {
            state = state * 6364136223846793005U + 1442695040888963407U;
            return static_cast<std::uint32_t>((state >> 33) % size) + 1;
        });
    } else if (workload == "delete") {
        elapsed = timedDeletes(task);
    } else if (workload == "clear") {
        elapsed = timedClear();
    } else if (workload != "start") {
        return std::nullopt;
    }
    task.engine->close();
    return elapsed;
}

} // namespace bench
