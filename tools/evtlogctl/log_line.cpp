// Lines of the list command. Values that a log of another program may hold and that have no name
// are shown as numbers.
#include "tools/evtlogctl/log_line.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <unordered_map>

#include <fmt/format.h>

#include "constants/type_ids.h"
#include "tools/evtlogctl/ipmi_tables.h"
#include "tools/evtlogctl/sel_mapping.h"
#include "tools/evtlogctl/sel_severity.h"
#include "zuSaHpi_mainlib.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::string_view unknownSource = "-";

// The display form of a constant's name, or its number. The entries of a log have few names among
// them, so each is looked up once; `prefix` is always the same for a key.
[[nodiscard]] std::string nameOf(std::uint32_t value, std::uint32_t key, const char *prefix) {
    constexpr std::size_t most = 1000; // damaged entries may hold any number
    static std::unordered_map<std::uint64_t, std::string> names;
    const std::uint64_t place = std::uint64_t{key} << 32 | value;
    const auto known = names.find(place);
    if (known != names.end()) {
        return known->second;
    }
    std::array<char, 50> buffer{};
    const char *name = zuSaHpiValueString(value, 0, key, prefix, buffer.data(),
                                          static_cast<std::uint32_t>(buffer.size()));
    if (names.size() < most) {
        names.emplace(place, name);
    }
    return name;
}

[[nodiscard]] std::string hexBytes(const unsigned char *bytes, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += fmt::format("{}{:02X}", i == 0 ? "" : " ", bytes[i]);
    }
    return text;
}

[[nodiscard]] bool isText(const SaHpiTextBufferT &buffer) {
    return buffer.DataType == SAHPI_TL_TYPE_BCDPLUS || buffer.DataType == SAHPI_TL_TYPE_ASCII6 ||
           buffer.DataType == SAHPI_TL_TYPE_TEXT;
}

[[nodiscard]] std::string textOf(const SaHpiTextBufferT &buffer) {
    return isText(buffer) ? printable(buffer.Data, buffer.DataLength)
                          : hexBytes(buffer.Data, buffer.DataLength);
}

// The tag of the resource when the entry has one, its number otherwise.
[[nodiscard]] std::string sourceOf(const EventLogEntryRecord &entry) {
    const SaHpiTextBufferT &tag = entry.rpt.ResourceTag;
    if (entry.rpt.ResourceCapabilities != 0 && isText(tag) && tag.DataLength > 0) {
        return textOf(tag);
    }
    const SaHpiResourceIdT source = entry.entry.Event.Source;
    return source == SAHPI_UNSPECIFIED_RESOURCE_ID ? std::string(unknownSource)
                                                   : fmt::format("resource {}", source);
}

// The id string of the instrument when the entry has one.
[[nodiscard]] std::string instrumentOf(const EventLogEntryRecord &entry,
                                       const std::string &otherwise) {
    const SaHpiTextBufferT &id = entry.rdr.IdString;
    return entry.rdr.RdrType != SAHPI_NO_RECORD && isText(id) && id.DataLength > 0 ? textOf(id)
                                                                                   : otherwise;
}

[[nodiscard]] std::uint32_t stateKey(SaHpiEventCategoryT category) {
    return zuSaHpiCheckSubType(type_id::eventState, category) != 0
               ? typeKey(category, type_id::eventState)
               : type_id::eventState;
}

[[nodiscard]] std::string stateNames(SaHpiEventStateT states, SaHpiEventCategoryT category) {
    const std::uint32_t key = stateKey(category);
    std::string names;
    for (std::uint32_t bit = 1; bit <= SAHPI_ALL_EVENT_STATES; bit <<= 1) {
        if ((states & bit) != 0) {
            names += names.empty() ? "" : " + ";
            names += nameOf(bit, key, "SAHPI_ES_");
        }
    }
    return names.empty() ? "unspecified state" : names;
}

[[nodiscard]] std::string readingText(const SaHpiSensorReadingT &reading) {
    if (reading.IsSupported == SAHPI_FALSE) {
        return "none";
    }
    switch (reading.Type) {
    case SAHPI_SENSOR_READING_TYPE_INT64:
        return fmt::format("{}", static_cast<std::int64_t>(reading.Value.SensorInt64));
    case SAHPI_SENSOR_READING_TYPE_UINT64:
        return fmt::format("{}", static_cast<std::uint64_t>(reading.Value.SensorUint64));
    case SAHPI_SENSOR_READING_TYPE_FLOAT64:
        return fmt::format("{:g}", static_cast<double>(reading.Value.SensorFloat64));
    case SAHPI_SENSOR_READING_TYPE_BUFFER:
        return hexBytes(reading.Value.SensorBuffer, sizeof reading.Value.SensorBuffer);
    default:
        return fmt::format("of type {}", static_cast<std::uint32_t>(reading.Type));
    }
}

// The record that an imported entry was made from knows its state by name where the HPI standard
// has only a number.
[[nodiscard]] std::string sensorText(const EventLogEntryRecord &entry,
                                     const std::optional<sel::Record> &record) {
    const SaHpiSensorEventT &event = entry.entry.Event.EventDataUnion.SensorEvent;
    const std::string type = nameOf(event.SensorType, type_id::sensorType, "SAHPI_");
    const std::string_view special = record ? sel::eventText(*record) : std::string_view{};
    std::string text = fmt::format(
        "{}: {} {}", instrumentOf(entry, fmt::format("{} sensor {}", type, event.SensorNum)),
        special.empty() ? stateNames(event.EventState, event.EventCategory) : std::string(special),
        event.Assertion != SAHPI_FALSE ? "asserted" : "deasserted");
    const unsigned present = event.OptionalDataPresent;
    if ((present & SAHPI_SOD_TRIGGER_READING) != 0) {
        text += ", reading " + readingText(event.TriggerReading);
    }
    if ((present & SAHPI_SOD_TRIGGER_THRESHOLD) != 0) {
        text += ", threshold " + readingText(event.TriggerThreshold);
    }
    if ((present & SAHPI_SOD_PREVIOUS_STATE) != 0) {
        text += ", previously " + stateNames(event.PreviousState, event.EventCategory);
    }
    if ((present & SAHPI_SOD_CURRENT_STATE) != 0) {
        text += ", currently " + stateNames(event.CurrentState, event.EventCategory);
    }
    if ((present & SAHPI_SOD_OEM) != 0) {
        text += fmt::format(", OEM data 0x{:04X}", event.Oem);
    }
    if ((present & SAHPI_SOD_SENSOR_SPECIFIC) != 0) {
        text += fmt::format(", sensor data 0x{:04X}", event.SensorSpecific);
    }
    return text;
}

[[nodiscard]] std::string enableChangeText(const EventLogEntryRecord &entry) {
    const auto &event = entry.entry.Event.EventDataUnion.SensorEnableChangeEvent;
    const std::string type = nameOf(event.SensorType, type_id::sensorType, "SAHPI_");
    return fmt::format("{}: sensor {}, events {}",
                       instrumentOf(entry, fmt::format("{} sensor {}", type, event.SensorNum)),
                       event.SensorEnable != SAHPI_FALSE ? "enabled" : "disabled",
                       event.SensorEventEnable != SAHPI_FALSE ? "enabled" : "disabled");
}

[[nodiscard]] std::string watchdogText(const EventLogEntryRecord &entry,
                                       const std::optional<sel::Record> &record) {
    const SaHpiWatchdogEventT &event = entry.entry.Event.EventDataUnion.WatchdogEvent;
    std::string text = fmt::format(
        "{}: action {}", instrumentOf(entry, fmt::format("Watchdog {}", event.WatchdogNum)),
        nameOf(event.WatchdogAction, type_id::watchdogActionEvent, "SAHPI_WAE_"));
    if (record) {
        text += sel::isDeassertion(*record) ? " deasserted" : " asserted";
    }
    return text + fmt::format(", pre-timer interrupt {}, use {}",
                              nameOf(event.WatchdogPreTimerAction,
                                     type_id::watchdogPretimerInterrupt, "SAHPI_WPI_"),
                              nameOf(event.WatchdogUse, type_id::watchdogTimerUse, "SAHPI_WTU_"));
}

// A piece of text whose unused end is filled with zeros.
[[nodiscard]] std::string recordText(const sel::Record &record) {
    const auto begin = record.bytes.begin() + sel::offset::oemText;
    const auto end = std::find(begin, record.bytes.end(), std::uint8_t{0});
    return printable(&*begin, static_cast<std::size_t>(end - begin));
}

[[nodiscard]] std::string oemRecordText(const sel::Record &record, SaHpiManufacturerIdT maker) {
    const unsigned type = record.bytes[sel::offset::type];
    if (type == sel::textRecord) {
        return fmt::format("OEM record {:02X}h: \"{}\"", type, recordText(record));
    }
    const bool timed = sel::kindOf(record) == sel::Kind::timedOem;
    const std::size_t begin = timed ? sel::offset::oemData : sel::offset::untimedOemData;
    return fmt::format("OEM record {:02X}h{}: {}", type,
                       timed ? fmt::format(", manufacturer 0x{:06X}", maker) : std::string(),
                       hexBytes(&record.bytes[begin], record.bytes.size() - begin));
}

[[nodiscard]] std::string oemText(const SaHpiOemEventT &event,
                                  const std::optional<sel::Record> &record) {
    return record ? oemRecordText(*record, event.MId)
                  : fmt::format("OEM event, manufacturer 0x{:06X}: {}", event.MId,
                                textOf(event.OemEventData));
}

[[nodiscard]] std::string softwareText(const SaHpiHpiSwEventT &event) {
    return fmt::format("HPI software, manufacturer 0x{:06X}: {}: {}", event.MId,
                       nameOf(event.Type, type_id::swEventType, "SAHPI_HPIE_"),
                       textOf(event.EventData));
}

[[nodiscard]] std::string hotSwapText(const SaHpiHotSwapEventT &event) {
    return fmt::format("Hot swap: {}, previously {}",
                       nameOf(event.HotSwapState, type_id::hsState, "SAHPI_HS_STATE_"),
                       nameOf(event.PreviousHotSwapState, type_id::hsState, "SAHPI_HS_STATE_"));
}

[[nodiscard]] std::string eventText(const EventLogEntryRecord &entry) {
    const SaHpiEventT &event = entry.entry.Event;
    const SaHpiEventUnionT &data = event.EventDataUnion;
    const std::optional<sel::Record> record = sel::importedRecord(entry);
    switch (event.EventType) {
    case SAHPI_ET_RESOURCE:
        return nameOf(data.ResourceEvent.ResourceEventType, type_id::resourceEventType,
                      "SAHPI_RESE_");
    case SAHPI_ET_DOMAIN:
        return fmt::format("Domain {} reference {}", data.DomainEvent.DomainId,
                           data.DomainEvent.Type == SAHPI_DOMAIN_REF_ADDED ? "added" : "removed");
    case SAHPI_ET_SENSOR:
        return sensorText(entry, record);
    case SAHPI_ET_SENSOR_ENABLE_CHANGE:
        return enableChangeText(entry);
    case SAHPI_ET_HOTSWAP:
        return hotSwapText(data.HotSwapEvent);
    case SAHPI_ET_WATCHDOG:
        return watchdogText(entry, record);
    case SAHPI_ET_HPI_SW:
        return softwareText(data.HpiSwEvent);
    case SAHPI_ET_OEM:
        return oemText(data.OemEvent, record);
    case SAHPI_ET_USER:
        return "User: " + textOf(data.UserEvent.UserEventData);
    default:
        return fmt::format("event of unknown type {}", static_cast<std::uint32_t>(event.EventType));
    }
}

constexpr std::string_view columnGap = "  ";
constexpr std::size_t numberWidth = 6;
constexpr std::size_t timeWidth = 24;
constexpr std::size_t severityWidth = 13;
constexpr std::size_t sourceWidth = 15;

void putColumn(std::string &line, std::string_view text, std::size_t width) {
    line += text;
    line.append(text.size() < width ? width - text.size() : 0, ' ');
    line += columnGap;
}

} // namespace

std::string printable(const unsigned char *text, std::size_t length) {
    std::string result(text, text + length);
    std::replace_if(
        result.begin(), result.end(), [](char letter) { return letter < 0x20 || letter > 0x7E; },
        '.');
    return result;
}

std::string timeText(SaHpiTimeT time) {
    std::array<char, ZUSAHPI_TIME_TEXT_SIZE> buffer{};
    std::string text = zuSaHpiTimeT2String(time, 0, buffer.data());
    const std::size_t point = text.find('.');
    constexpr std::size_t milliseconds = 3;
    constexpr std::size_t digits = 9;
    if (point == std::string::npos || text.size() < point + 1 + digits) {
        return text;
    }
    const bool whole = text.find_first_not_of('0', point + 1) >= point + 1 + digits;
    return whole ? text.erase(point, 1 + digits)
                 : text.erase(point + 1 + milliseconds, digits - milliseconds);
}

std::string logLine(const EventLogEntryRecord &entry) {
    const SaHpiEventT &event = entry.entry.Event;
    const bool timed = event.Timestamp != SAHPI_TIME_UNSPECIFIED;
    const std::string number = fmt::format_int(entry.entry.EntryId).str();
    std::string line(number.size() < numberWidth ? numberWidth - number.size() : 0, ' ');
    line += number;
    line += columnGap;
    putColumn(line, timeText(timed ? event.Timestamp : entry.entry.Timestamp), timeWidth);
    putColumn(line, sel::severityName(event.Severity), severityWidth);
    putColumn(line, sourceOf(entry), sourceWidth);
    line += eventText(entry);
    line += timed ? "" : " (time of logging)";
    return line;
}

} // namespace zusahpi::evtlogctl
