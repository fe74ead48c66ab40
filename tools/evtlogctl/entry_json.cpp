// Entries as JSON. What has no place in JSON, such as a reading that is no number, is null.
#include "tools/evtlogctl/entry_json.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>

#include <rapidjson/stringbuffer.h>

#include "constants/type_ids.h"
#include "tools/evtlogctl/json_writer.h"
#include "tools/evtlogctl/log_line.h"
#include "tools/evtlogctl/names.h"
#include "tools/evtlogctl/sel_mapping.h"

namespace zusahpi::evtlogctl {
namespace {

using Writer = JsonWriter;

void putTextBuffer(Writer &out, std::string_view name, const SaHpiTextBufferT &buffer) {
    putKey(out, name);
    out.StartObject();
    putConstant(out, "DataType", buffer.DataType, type_id::textType);
    putConstant(out, "Language", buffer.Language, type_id::language);
    if (isText(buffer)) {
        putForeignText(out, "Text",
                       {reinterpret_cast<const char *>(buffer.Data), buffer.DataLength});
    } else {
        putNull(out, "Text");
    }
    putBytes(out, "Data", buffer.Data, buffer.DataLength);
    out.EndObject();
}

void putEntityPath(Writer &out, std::string_view name, const SaHpiEntityPathT &path) {
    putKey(out, name);
    out.StartArray();
    for (const SaHpiEntityT &entity : path.Entry) {
        out.StartObject();
        putConstant(out, "EntityType", entity.EntityType, type_id::entityType);
        putNumber(out, "EntityLocation", entity.EntityLocation);
        out.EndObject();
        if (entity.EntityType == SAHPI_ENT_ROOT) {
            break;
        }
    }
    out.EndArray();
}

void putReadingValue(Writer &out, const SaHpiSensorReadingT &reading) {
    switch (reading.Type) {
    case SAHPI_SENSOR_READING_TYPE_INT64:
        putKey(out, "Value");
        out.Int64(reading.Value.SensorInt64);
        break;
    case SAHPI_SENSOR_READING_TYPE_UINT64:
        putKey(out, "Value");
        out.Uint64(reading.Value.SensorUint64);
        break;
    case SAHPI_SENSOR_READING_TYPE_FLOAT64:
        if (std::isfinite(reading.Value.SensorFloat64)) {
            putKey(out, "Value");
            out.Double(reading.Value.SensorFloat64);
        } else {
            putNull(out, "Value");
        }
        break;
    case SAHPI_SENSOR_READING_TYPE_BUFFER:
        putBytes(out, "Value", reading.Value.SensorBuffer, sizeof reading.Value.SensorBuffer);
        break;
    default:
        putNull(out, "Value");
    }
}

void putReading(Writer &out, std::string_view name, const SaHpiSensorReadingT &reading,
                bool present) {
    if (!present || reading.IsSupported == SAHPI_FALSE) {
        putNull(out, name);
        return;
    }
    putKey(out, name);
    out.StartObject();
    putConstant(out, "Type", reading.Type, type_id::sensorReadingType);
    putReadingValue(out, reading);
    out.EndObject();
}

void putStates(Writer &out, std::string_view name, SaHpiEventStateT states,
               SaHpiEventCategoryT category, bool present = true) {
    if (present) {
        putMask(out, name, states, stateKey(category));
    } else {
        putNull(out, name);
        putKey(out, name, "Names");
        out.Null();
    }
}

void putOptionalNumber(Writer &out, std::string_view name, std::uint32_t value, bool present) {
    if (present) {
        putNumber(out, name, value);
    } else {
        putNull(out, name);
    }
}

void putSensorEvent(Writer &out, const SaHpiSensorEventT &event) {
    const auto has = [&event](unsigned option) {
        return (event.OptionalDataPresent & option) != 0;
    };
    putNumber(out, "SensorNum", event.SensorNum);
    putConstant(out, "SensorType", event.SensorType, type_id::sensorType);
    putConstant(out, "EventCategory", event.EventCategory, type_id::eventCategory);
    putFlag(out, "Assertion", event.Assertion != SAHPI_FALSE);
    putStates(out, "EventState", event.EventState, event.EventCategory);
    putReading(out, "TriggerReading", event.TriggerReading, has(SAHPI_SOD_TRIGGER_READING));
    putReading(out, "TriggerThreshold", event.TriggerThreshold, has(SAHPI_SOD_TRIGGER_THRESHOLD));
    putStates(out, "PreviousState", event.PreviousState, event.EventCategory,
              has(SAHPI_SOD_PREVIOUS_STATE));
    putStates(out, "CurrentState", event.CurrentState, event.EventCategory,
              has(SAHPI_SOD_CURRENT_STATE));
    putOptionalNumber(out, "Oem", event.Oem, has(SAHPI_SOD_OEM));
    putOptionalNumber(out, "SensorSpecific", event.SensorSpecific, has(SAHPI_SOD_SENSOR_SPECIFIC));
}

void putEnableChange(Writer &out, const SaHpiSensorEnableChangeEventT &event) {
    putNumber(out, "SensorNum", event.SensorNum);
    putConstant(out, "SensorType", event.SensorType, type_id::sensorType);
    putConstant(out, "EventCategory", event.EventCategory, type_id::eventCategory);
    putFlag(out, "SensorEnable", event.SensorEnable != SAHPI_FALSE);
    putFlag(out, "SensorEventEnable", event.SensorEventEnable != SAHPI_FALSE);
    putStates(out, "AssertEventMask", event.AssertEventMask, event.EventCategory);
    putStates(out, "DeassertEventMask", event.DeassertEventMask, event.EventCategory);
    putStates(out, "CurrentState", event.CurrentState, event.EventCategory,
              (event.OptionalDataPresent & SAHPI_SEOD_CURRENT_STATE) != 0);
}

void putHotSwapEvent(Writer &out, const SaHpiHotSwapEventT &event) {
    putConstant(out, "HotSwapState", event.HotSwapState, type_id::hsState);
    putConstant(out, "PreviousHotSwapState", event.PreviousHotSwapState, type_id::hsState);
}

void putWatchdogEvent(Writer &out, const SaHpiWatchdogEventT &event) {
    putNumber(out, "WatchdogNum", event.WatchdogNum);
    putConstant(out, "WatchdogAction", event.WatchdogAction, type_id::watchdogActionEvent);
    putConstant(out, "WatchdogPreTimerAction", event.WatchdogPreTimerAction,
                type_id::watchdogPretimerInterrupt);
    putConstant(out, "WatchdogUse", event.WatchdogUse, type_id::watchdogTimerUse);
}

void putSoftwareEvent(Writer &out, const SaHpiHpiSwEventT &event) {
    putNumber(out, "MId", event.MId);
    putConstant(out, "Type", event.Type, type_id::swEventType);
    putTextBuffer(out, "EventData", event.EventData);
}

void putDomainEvent(Writer &out, const SaHpiDomainEventT &event) {
    putConstant(out, "Type", event.Type, type_id::domainEventType);
    putNumber(out, "DomainId", event.DomainId);
}

void putOemEvent(Writer &out, const SaHpiOemEventT &event) {
    putNumber(out, "MId", event.MId);
    putTextBuffer(out, "OemEventData", event.OemEventData);
}

// The member of the union that the type of the event names; none for an unknown type.
void putEventData(Writer &out, SaHpiEventTypeT type, const SaHpiEventUnionT &data) {
    switch (type) {
    case SAHPI_ET_RESOURCE:
        putObject(
            out, "ResourceEvent",
            [](Writer &to, const SaHpiResourceEventT &event) {
                putConstant(to, "ResourceEventType", event.ResourceEventType,
                            type_id::resourceEventType);
            },
            data.ResourceEvent);
        break;
    case SAHPI_ET_DOMAIN:
        putObject(out, "DomainEvent", putDomainEvent, data.DomainEvent);
        break;
    case SAHPI_ET_SENSOR:
        putObject(out, "SensorEvent", putSensorEvent, data.SensorEvent);
        break;
    case SAHPI_ET_SENSOR_ENABLE_CHANGE:
        putObject(out, "SensorEnableChangeEvent", putEnableChange, data.SensorEnableChangeEvent);
        break;
    case SAHPI_ET_HOTSWAP:
        putObject(out, "HotSwapEvent", putHotSwapEvent, data.HotSwapEvent);
        break;
    case SAHPI_ET_WATCHDOG:
        putObject(out, "WatchdogEvent", putWatchdogEvent, data.WatchdogEvent);
        break;
    case SAHPI_ET_HPI_SW:
        putObject(out, "HpiSwEvent", putSoftwareEvent, data.HpiSwEvent);
        break;
    case SAHPI_ET_OEM:
        putObject(out, "OemEvent", putOemEvent, data.OemEvent);
        break;
    case SAHPI_ET_USER:
        putObject(
            out, "UserEvent",
            [](Writer &to, const SaHpiUserEventT &event) {
                putTextBuffer(to, "UserEventData", event.UserEventData);
            },
            data.UserEvent);
        break;
    default:
        break;
    }
}

void putEvent(Writer &out, const SaHpiEventT &event) {
    putConstant(out, "Source", event.Source, type_id::resourceId);
    putConstant(out, "EventType", event.EventType, type_id::eventType);
    putTime(out, "Timestamp", event.Timestamp);
    putConstant(out, "Severity", event.Severity, type_id::severity);
    putEventData(out, event.EventType, event.EventDataUnion);
}

void putResourceInfo(Writer &out, const SaHpiResourceInfoT &info) {
    putNumber(out, "ResourceRev", info.ResourceRev);
    putNumber(out, "SpecificVer", info.SpecificVer);
    putNumber(out, "DeviceSupport", info.DeviceSupport);
    putConstant(out, "ManufacturerId", info.ManufacturerId, type_id::manufacturerId);
    putNumber(out, "ProductId", info.ProductId);
    putNumber(out, "FirmwareMajorRev", info.FirmwareMajorRev);
    putNumber(out, "FirmwareMinorRev", info.FirmwareMinorRev);
    putNumber(out, "AuxFirmwareRev", info.AuxFirmwareRev);
    putBytes(out, "Guid", info.Guid, sizeof info.Guid);
}

void putRpt(Writer &out, const SaHpiRptEntryT &rpt) {
    putNumber(out, "EntryId", rpt.EntryId);
    putConstant(out, "ResourceId", rpt.ResourceId, type_id::resourceId);
    putObject(out, "ResourceInfo", putResourceInfo, rpt.ResourceInfo);
    putEntityPath(out, "ResourceEntity", rpt.ResourceEntity);
    putMask(out, "ResourceCapabilities", rpt.ResourceCapabilities, type_id::capabilities);
    putMask(out, "HotSwapCapabilities", rpt.HotSwapCapabilities, type_id::hsCapabilities);
    putConstant(out, "ResourceSeverity", rpt.ResourceSeverity, type_id::severity);
    putFlag(out, "ResourceFailed", rpt.ResourceFailed != SAHPI_FALSE);
    putTextBuffer(out, "ResourceTag", rpt.ResourceTag);
}

void putSensorRec(Writer &out, const SaHpiSensorRecT &rec) {
    putNumber(out, "Num", rec.Num);
    putConstant(out, "Type", rec.Type, type_id::sensorType);
    putConstant(out, "Category", rec.Category, type_id::eventCategory);
    putFlag(out, "EnableCtrl", rec.EnableCtrl != SAHPI_FALSE);
    putConstant(out, "EventCtrl", rec.EventCtrl, type_id::sensorEventCtrl);
    putStates(out, "Events", rec.Events, rec.Category);
    putNumber(out, "Oem", rec.Oem);
}

void putCtrlRec(Writer &out, const SaHpiCtrlRecT &rec) {
    putNumber(out, "Num", rec.Num);
    putConstant(out, "OutputType", rec.OutputType, type_id::ctrlOutputType);
    putConstant(out, "Type", rec.Type, type_id::ctrlType);
    putFlag(out, "WriteOnly", rec.WriteOnly != SAHPI_FALSE);
    putNumber(out, "Oem", rec.Oem);
}

void putInventoryRec(Writer &out, const SaHpiInventoryRecT &rec) {
    putNumber(out, "IdrId", rec.IdrId);
    putFlag(out, "Persistent", rec.Persistent != SAHPI_FALSE);
    putNumber(out, "Oem", rec.Oem);
}

void putWatchdogRec(Writer &out, const SaHpiWatchdogRecT &rec) {
    putNumber(out, "WatchdogNum", rec.WatchdogNum);
    putNumber(out, "Oem", rec.Oem);
}

void putAnnunciatorRec(Writer &out, const SaHpiAnnunciatorRecT &rec) {
    putNumber(out, "AnnunciatorNum", rec.AnnunciatorNum);
    putConstant(out, "AnnunciatorType", rec.AnnunciatorType, type_id::annunciatorType);
    putFlag(out, "ModeReadOnly", rec.ModeReadOnly != SAHPI_FALSE);
    putNumber(out, "MaxConditions", rec.MaxConditions);
    putNumber(out, "Oem", rec.Oem);
}

// The member of the union that the type of the record names; none for an unknown type.
void putRecord(Writer &out, SaHpiRdrTypeT type, const SaHpiRdrTypeUnionT &data) {
    switch (type) {
    case SAHPI_CTRL_RDR:
        putObject(out, "CtrlRec", putCtrlRec, data.CtrlRec);
        break;
    case SAHPI_SENSOR_RDR:
        putObject(out, "SensorRec", putSensorRec, data.SensorRec);
        break;
    case SAHPI_INVENTORY_RDR:
        putObject(out, "InventoryRec", putInventoryRec, data.InventoryRec);
        break;
    case SAHPI_WATCHDOG_RDR:
        putObject(out, "WatchdogRec", putWatchdogRec, data.WatchdogRec);
        break;
    case SAHPI_ANNUNCIATOR_RDR:
        putObject(out, "AnnunciatorRec", putAnnunciatorRec, data.AnnunciatorRec);
        break;
    default:
        break;
    }
}

void putRdr(Writer &out, const SaHpiRdrT &rdr) {
    putNumber(out, "RecordId", rdr.RecordId);
    putConstant(out, "RdrType", rdr.RdrType, type_id::rdrType);
    putEntityPath(out, "Entity", rdr.Entity);
    putFlag(out, "IsFru", rdr.IsFru != SAHPI_FALSE);
    putRecord(out, rdr.RdrType, rdr.RdrTypeUnion);
    putTextBuffer(out, "IdString", rdr.IdString);
}

void putEntry(Writer &out, const EventLogEntryRecord &entry) {
    putNumber(out, "EntryId", entry.entry.EntryId);
    putTime(out, "Timestamp", entry.entry.Timestamp);
    putKey(out, "Message");
    std::string message;
    appendMessage(message, entry);
    putString(out, message);
    putObject(out, "Event", putEvent, entry.entry.Event);
    if (entry.rpt.ResourceCapabilities != 0) {
        putObject(out, "Rpt", putRpt, entry.rpt);
    } else {
        putNull(out, "Rpt");
    }
    if (entry.rdr.RdrType != SAHPI_NO_RECORD) {
        putObject(out, "Rdr", putRdr, entry.rdr);
    } else {
        putNull(out, "Rdr");
    }
    if (const auto record = sel::importedRecord(entry)) {
        putBytes(out, "SelRecord", record->bytes.data(), record->bytes.size());
    } else {
        putNull(out, "SelRecord");
    }
}

} // namespace

void appendEntryJson(std::string &text, const EventLogEntryRecord &entry) {
    static rapidjson::StringBuffer buffer;
    buffer.Clear();
    Writer out(buffer);
    out.StartObject();
    putEntry(out, entry);
    out.EndObject();
    text.append(buffer.GetString(), buffer.GetSize());
}

} // namespace zusahpi::evtlogctl
