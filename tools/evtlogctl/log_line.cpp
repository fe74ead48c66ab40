// Lines of the list command. Values that a log of another program may hold and that have no name
// are shown as numbers.
#include "tools/evtlogctl/log_line.h"

#include <algorithm>
#include <array>
#include <bit>
#include <iterator>
#include <optional>
#include <string_view>
#include <type_traits>

#include <fmt/compile.h>
#include <fmt/format.h>

#include "constants/type_ids.h"
#include "tools/evtlogctl/ipmi_tables.h"
#include "tools/evtlogctl/names.h"
#include "tools/evtlogctl/sel_mapping.h"
#include "tools/evtlogctl/sel_severity.h"

namespace zusahpi::evtlogctl {

bool isText(const SaHpiTextBufferT &buffer) {
    return buffer.DataType == SAHPI_TL_TYPE_BCDPLUS || buffer.DataType == SAHPI_TL_TYPE_ASCII6 ||
           buffer.DataType == SAHPI_TL_TYPE_TEXT;
}

namespace {

constexpr std::string_view unknownSource = "-";

template <typename... Values>
void append(std::string &text, const Values &...values) {
    const auto one = [&text](const auto &value) {
        if constexpr (std::is_integral_v<std::remove_cvref_t<decltype(value)>>) {
            const fmt::format_int digits(value);
            text.append(digits.data(), digits.size());
        } else {
            text.append(std::string_view(value));
        }
    };
    (one(values), ...);
}

void appendHexBytes(std::string &text, const unsigned char *bytes, std::size_t count) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) {
            text += ' ';
        }
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 0x0F];
    }
}

void appendPrintable(std::string &text, const unsigned char *from, std::size_t length) {
    const std::size_t before = text.size();
    text.append(from, from + length);
    std::replace_if(
        text.begin() + static_cast<std::ptrdiff_t>(before), text.end(),
        [](char letter) { return letter < 0x20 || letter > 0x7E; }, '.');
}

void appendText(std::string &text, const SaHpiTextBufferT &buffer) {
    if (isText(buffer)) {
        appendPrintable(text, buffer.Data, buffer.DataLength);
    } else {
        appendHexBytes(text, buffer.Data, buffer.DataLength);
    }
}

} // namespace

void appendSource(std::string &text, const EventLogEntryRecord &entry) {
    const SaHpiTextBufferT &tag = entry.rpt.ResourceTag;
    const SaHpiResourceIdT source = entry.entry.Event.Source;
    if (entry.rpt.ResourceCapabilities != 0 && isText(tag) && tag.DataLength > 0) {
        appendText(text, tag);
    } else if (source == SAHPI_UNSPECIFIED_RESOURCE_ID) {
        text += unknownSource;
    } else {
        append(text, "resource ", source);
    }
}

namespace {

// The id string of the instrument; false when the entry has none.
[[nodiscard]] bool appendedIdString(std::string &text, const EventLogEntryRecord &entry) {
    const SaHpiTextBufferT &id = entry.rdr.IdString;
    if (entry.rdr.RdrType == SAHPI_NO_RECORD || !isText(id) || id.DataLength == 0) {
        return false;
    }
    appendText(text, id);
    return true;
}

void appendSensor(std::string &text, SaHpiSensorTypeT type, SaHpiSensorNumT number) {
    append(text, displayName(type, type_id::sensorType, "SAHPI_"), " sensor ", number);
}

} // namespace

void appendSensorName(std::string &text, const EventLogEntryRecord &entry) {
    const SaHpiEventUnionT &data = entry.entry.Event.EventDataUnion;
    switch (entry.entry.Event.EventType) {
    case SAHPI_ET_SENSOR:
        if (!appendedIdString(text, entry)) {
            appendSensor(text, data.SensorEvent.SensorType, data.SensorEvent.SensorNum);
        }
        break;
    case SAHPI_ET_SENSOR_ENABLE_CHANGE:
        if (!appendedIdString(text, entry)) {
            appendSensor(text, data.SensorEnableChangeEvent.SensorType,
                         data.SensorEnableChangeEvent.SensorNum);
        }
        break;
    case SAHPI_ET_WATCHDOG:
        if (!appendedIdString(text, entry)) {
            append(text, "Watchdog ", data.WatchdogEvent.WatchdogNum);
        }
        break;
    default:
        break;
    }
}

namespace {

void appendStates(std::string &text, SaHpiEventStateT states, SaHpiEventCategoryT category) {
    const std::uint32_t key = stateKey(category);
    std::string_view gap;
    for (std::uint32_t rest = states & SAHPI_ALL_EVENT_STATES; rest != 0; rest &= rest - 1) {
        append(text, gap, displayName(1U << std::countr_zero(rest), key, "SAHPI_ES_"));
        gap = " + ";
    }
    if (gap.empty()) {
        text += "unspecified state";
    }
}

void appendReading(std::string &text, const SaHpiSensorReadingT &reading) {
    if (reading.IsSupported == SAHPI_FALSE) {
        text += "none";
        return;
    }
    switch (reading.Type) {
    case SAHPI_SENSOR_READING_TYPE_INT64:
        append(text, static_cast<std::int64_t>(reading.Value.SensorInt64));
        break;
    case SAHPI_SENSOR_READING_TYPE_UINT64:
        append(text, static_cast<std::uint64_t>(reading.Value.SensorUint64));
        break;
    case SAHPI_SENSOR_READING_TYPE_FLOAT64:
        fmt::format_to(std::back_inserter(text), FMT_COMPILE("{:g}"),
                       static_cast<double>(reading.Value.SensorFloat64));
        break;
    case SAHPI_SENSOR_READING_TYPE_BUFFER:
        appendHexBytes(text, reading.Value.SensorBuffer, sizeof reading.Value.SensorBuffer);
        break;
    default:
        append(text, "of type ", static_cast<std::uint32_t>(reading.Type));
    }
}

// The record that an imported entry was made from knows its state by name where the HPI standard
// has only a number.
void appendSensorEvent(std::string &text, const EventLogEntryRecord &entry,
                       const std::optional<sel::Record> &record) {
    const SaHpiSensorEventT &event = entry.entry.Event.EventDataUnion.SensorEvent;
    appendSensorName(text, entry);
    text += ": ";
    const std::string_view special = record ? sel::eventText(*record) : std::string_view{};
    if (special.empty()) {
        appendStates(text, event.EventState, event.EventCategory);
    } else {
        text += special;
    }
    text += event.Assertion != SAHPI_FALSE ? " asserted" : " deasserted";
    const unsigned present = event.OptionalDataPresent;
    if ((present & SAHPI_SOD_TRIGGER_READING) != 0) {
        text += ", reading ";
        appendReading(text, event.TriggerReading);
    }
    if ((present & SAHPI_SOD_TRIGGER_THRESHOLD) != 0) {
        text += ", threshold ";
        appendReading(text, event.TriggerThreshold);
    }
    if ((present & SAHPI_SOD_PREVIOUS_STATE) != 0) {
        text += ", previously ";
        appendStates(text, event.PreviousState, event.EventCategory);
    }
    if ((present & SAHPI_SOD_CURRENT_STATE) != 0) {
        text += ", currently ";
        appendStates(text, event.CurrentState, event.EventCategory);
    }
    if ((present & SAHPI_SOD_OEM) != 0) {
        text += fmt::format(", OEM data 0x{:04X}", event.Oem);
    }
    if ((present & SAHPI_SOD_SENSOR_SPECIFIC) != 0) {
        text += fmt::format(", sensor data 0x{:04X}", event.SensorSpecific);
    }
}

void appendEnableChange(std::string &text, const EventLogEntryRecord &entry) {
    const auto &event = entry.entry.Event.EventDataUnion.SensorEnableChangeEvent;
    appendSensorName(text, entry);
    append(text, ": sensor ", event.SensorEnable != SAHPI_FALSE ? "enabled" : "disabled",
           ", events ", event.SensorEventEnable != SAHPI_FALSE ? "enabled" : "disabled");
}

void appendWatchdogEvent(std::string &text, const EventLogEntryRecord &entry,
                         const std::optional<sel::Record> &record) {
    const SaHpiWatchdogEventT &event = entry.entry.Event.EventDataUnion.WatchdogEvent;
    appendSensorName(text, entry);
    append(text, ": action ",
           displayName(event.WatchdogAction, type_id::watchdogActionEvent, "SAHPI_WAE_"));
    if (record) {
        text += sel::isDeassertion(*record) ? " deasserted" : " asserted";
    }
    append(text, ", pre-timer interrupt ",
           displayName(event.WatchdogPreTimerAction, type_id::watchdogPretimerInterrupt,
                       "SAHPI_WPI_"));
    append(text, ", use ", displayName(event.WatchdogUse, type_id::watchdogTimerUse, "SAHPI_WTU_"));
}

// A piece of text whose unused end is filled with zeros.
void appendRecordText(std::string &text, const sel::Record &record) {
    const auto begin = record.bytes.begin() + sel::offset::oemText;
    const auto end = std::find(begin, record.bytes.end(), std::uint8_t{0});
    appendPrintable(text, &*begin, static_cast<std::size_t>(end - begin));
}

void appendOemRecord(std::string &text, const sel::Record &record, SaHpiManufacturerIdT maker) {
    const unsigned type = record.bytes[sel::offset::type];
    text += fmt::format("OEM record {:02X}h", type);
    if (type == sel::textRecord) {
        text += ": \"";
        appendRecordText(text, record);
        text += '"';
        return;
    }
    const bool timed = sel::kindOf(record) == sel::Kind::timedOem;
    const std::size_t begin = timed ? sel::offset::oemData : sel::offset::untimedOemData;
    if (timed) {
        text += fmt::format(", manufacturer 0x{:06X}", maker);
    }
    text += ": ";
    appendHexBytes(text, &record.bytes[begin], record.bytes.size() - begin);
}

void appendOemEvent(std::string &text, const SaHpiOemEventT &event,
                    const std::optional<sel::Record> &record) {
    if (record) {
        appendOemRecord(text, *record, event.MId);
        return;
    }
    text += fmt::format("OEM event, manufacturer 0x{:06X}: ", event.MId);
    appendText(text, event.OemEventData);
}

void appendSoftwareEvent(std::string &text, const SaHpiHpiSwEventT &event) {
    text += fmt::format("HPI software, manufacturer 0x{:06X}: ", event.MId);
    append(text, displayName(event.Type, type_id::swEventType, "SAHPI_HPIE_"), ": ");
    appendText(text, event.EventData);
}

void appendHotSwapEvent(std::string &text, const SaHpiHotSwapEventT &event) {
    append(text,
           "Hot swap: ", displayName(event.HotSwapState, type_id::hsState, "SAHPI_HS_STATE_"));
    append(text, ", previously ",
           displayName(event.PreviousHotSwapState, type_id::hsState, "SAHPI_HS_STATE_"));
}

} // namespace

void appendMessage(std::string &text, const EventLogEntryRecord &entry) {
    const SaHpiEventT &event = entry.entry.Event;
    const SaHpiEventUnionT &data = event.EventDataUnion;
    switch (event.EventType) {
    case SAHPI_ET_RESOURCE:
        append(text, displayName(data.ResourceEvent.ResourceEventType, type_id::resourceEventType,
                                 "SAHPI_RESE_"));
        break;
    case SAHPI_ET_DOMAIN:
        append(text, "Domain ", data.DomainEvent.DomainId, " reference ",
               data.DomainEvent.Type == SAHPI_DOMAIN_REF_ADDED ? "added" : "removed");
        break;
    case SAHPI_ET_SENSOR:
        appendSensorEvent(text, entry, sel::importedRecord(entry));
        break;
    case SAHPI_ET_SENSOR_ENABLE_CHANGE:
        appendEnableChange(text, entry);
        break;
    case SAHPI_ET_HOTSWAP:
        appendHotSwapEvent(text, data.HotSwapEvent);
        break;
    case SAHPI_ET_WATCHDOG:
        appendWatchdogEvent(text, entry, sel::importedRecord(entry));
        break;
    case SAHPI_ET_HPI_SW:
        appendSoftwareEvent(text, data.HpiSwEvent);
        break;
    case SAHPI_ET_OEM:
        appendOemEvent(text, data.OemEvent, sel::importedRecord(entry));
        break;
    case SAHPI_ET_USER:
        text += "User: ";
        appendText(text, data.UserEvent.UserEventData);
        break;
    default:
        append(text, "event of unknown type ", static_cast<std::uint32_t>(event.EventType));
    }
}

namespace {

constexpr std::string_view columnGap = "  ";
constexpr std::size_t numberWidth = 6;
constexpr std::size_t severityWidth = 13;
constexpr std::size_t sourceWidth = 15;

// Fills the column that begins at `begin` up to its width.
void endColumn(std::string &text, std::size_t begin, std::size_t width) {
    const std::size_t used = text.size() - begin;
    text.append(used < width ? width - used : 0, ' ');
    text += columnGap;
}

constexpr std::string_view colourEnd = "\033[0m";

// What asks for an eye has a colour of its own.
[[nodiscard]] std::string_view colourOf(SaHpiSeverityT severity) {
    switch (severity) {
    case SAHPI_CRITICAL:
        return "\033[1;31m"; // bold red
    case SAHPI_MAJOR:
        return "\033[31m"; // red
    case SAHPI_MINOR:
        return "\033[33m"; // yellow
    case SAHPI_OK:
        return "\033[32m"; // green
    case SAHPI_DEBUG:
        return "\033[2m"; // faint
    default:
        return {};
    }
}

} // namespace

std::string printable(const unsigned char *text, std::size_t length) {
    std::string result;
    appendPrintable(result, text, length);
    return result;
}

std::string sourceText(const EventLogEntryRecord &entry) {
    std::string text;
    appendSource(text, entry);
    return text;
}

std::string sensorText(const EventLogEntryRecord &entry) {
    std::string text;
    appendSensorName(text, entry);
    return text;
}

SaHpiTimeT shownTime(const EventLogEntryRecord &entry) {
    const SaHpiTimeT time = entry.entry.Event.Timestamp;
    return time != SAHPI_TIME_UNSPECIFIED ? time : entry.entry.Timestamp;
}

void appendLogLine(std::string &text, const EventLogEntryRecord &entry, const LineStyle &style) {
    const SaHpiEventT &event = entry.entry.Event;
    const fmt::format_int number(entry.entry.EntryId);
    text.append(number.size() < numberWidth ? numberWidth - number.size() : 0, ' ');
    text.append(number.data(), number.size());
    text += columnGap;
    std::size_t column = text.size();
    appendTime(text, shownTime(entry), style.precision);
    endColumn(text, column, timeWidth(style.precision));
    const std::string_view colour = style.coloured ? colourOf(event.Severity) : std::string_view{};
    text += colour;
    column = text.size();
    text += sel::severityName(event.Severity);
    endColumn(text, column, severityWidth);
    column = text.size();
    appendSource(text, entry);
    endColumn(text, column, sourceWidth);
    appendMessage(text, entry);
    text += event.Timestamp != SAHPI_TIME_UNSPECIFIED ? std::string_view{} : timeOfLoggingNote;
    text += colour.empty() ? std::string_view{} : colourEnd;
}

std::string logLine(const EventLogEntryRecord &entry) {
    std::string line;
    appendLogLine(line, entry);
    return line;
}

} // namespace zusahpi::evtlogctl
