// The steering of random records, and which fields each printer may show.

#include "tests/display/random_records.h"

#include <algorithm>
#include <cstring>

namespace random_records {

std::uint32_t below(Random &random, std::uint32_t limit) {
    return static_cast<std::uint32_t>(random.engine() % limit);
}

void fill(Random &random, std::span<std::byte> bytes) {
    for (std::byte &byte : bytes) {
        byte = static_cast<std::byte>(below(random, 256));
    }
}

std::vector<char> randomIndent(Random &random) {
    std::vector<char> indent(below(random, 70) + 1);
    for (char &character : indent) {
        character = static_cast<char>(' ' + below(random, '~' - ' ' + 1));
    }
    indent.back() = '\0';
    return indent;
}

namespace {

// Seven times in eight a value below the limit, else what the field holds already.
template <typename Field>
void mostlyBelow(Random &random, Field &field, std::uint32_t limit) {
    if (below(random, 8) != 0) {
        field = static_cast<Field>(below(random, limit));
    }
}

// Half of the time the value, else what the field holds already.
template <typename Field>
void oftenIs(Random &random, Field &field, Field value) {
    if (below(random, 2) == 0) {
        field = value;
    }
}

void steer(Random &random, SaHpiTextBufferT &buffer) {
    mostlyBelow(random, buffer.DataType, 6);
    mostlyBelow(random, buffer.Language, 0x8A);
    mostlyBelow(random, buffer.DataLength, 40);
}

void steer(Random &random, SaHpiEntityPathT &path) {
    for (SaHpiEntityT &element : path.Entry) {
        mostlyBelow(random, element.EntityType, 0x2A);
        if (below(random, 4) == 0) {
            element.EntityType = SAHPI_ENT_ROOT;
        }
    }
}

void steer(Random &random, SaHpiSensorEventT &event) {
    mostlyBelow(random, event.SensorType, 0x2A);
    mostlyBelow(random, event.EventCategory, 0x0C);
    mostlyBelow(random, event.OptionalDataPresent, 0x40);
    steer(random, event.TriggerReading);
    steer(random, event.TriggerThreshold);
}

void steer(Random &random, SaHpiCtrlRecT &record) {
    mostlyBelow(random, record.OutputType, 12);
    mostlyBelow(random, record.Type, 7);
    if (record.Type == 6) {
        record.Type = SAHPI_CTRL_TYPE_OEM;
    }
    SaHpiCtrlRecUnionT &data = record.TypeUnion;
    if (record.Type == SAHPI_CTRL_TYPE_STREAM) {
        mostlyBelow(random, data.Stream.Default.StreamLength, 20);
    }
    if (record.Type == SAHPI_CTRL_TYPE_TEXT) {
        mostlyBelow(random, data.Text.MaxChars, 20);
        steer(random, data.Text.Default.Text);
    }
    if (record.Type == SAHPI_CTRL_TYPE_OEM) {
        mostlyBelow(random, data.Oem.Default.BodyLength, 40);
    }
}

void steer(Random &random, SaHpiSensorRecT &record) {
    mostlyBelow(random, record.Category, 0x0C);
    SaHpiSensorDataFormatT &format = record.DataFormat;
    mostlyBelow(random, format.ReadingType, 5);
    mostlyBelow(random, format.BaseUnits, 0x5C);
    mostlyBelow(random, format.Range.Flags, 0x20);
    steer(random, format.Range.Max);
    steer(random, format.Range.Min);
    steer(random, format.Range.Nominal);
    steer(random, format.Range.NormalMax);
    steer(random, format.Range.NormalMin);
    mostlyBelow(random, record.ThresholdDefn.IsAccessible, 2);
}

} // namespace

void steer(Random &random, SaHpiSensorReadingT &reading) {
    mostlyBelow(random, reading.Type, 5);
    mostlyBelow(random, reading.IsSupported, 3);
}

void steer(Random &random, SaHpiEventT &event) {
    oftenIs(random, event.Source, SAHPI_UNSPECIFIED_RESOURCE_ID);
    oftenIs(random, event.Timestamp, SAHPI_TIME_UNSPECIFIED);
    mostlyBelow(random, event.EventType, 10);
    SaHpiEventUnionT &data = event.EventDataUnion;
    switch (event.EventType) {
    case SAHPI_ET_SENSOR:
        steer(random, data.SensorEvent);
        return;
    case SAHPI_ET_SENSOR_ENABLE_CHANGE:
        mostlyBelow(random, data.SensorEnableChangeEvent.EventCategory, 0x0C);
        return;
    case SAHPI_ET_HPI_SW:
        steer(random, data.HpiSwEvent.EventData);
        return;
    case SAHPI_ET_OEM:
        steer(random, data.OemEvent.OemEventData);
        return;
    case SAHPI_ET_USER:
        steer(random, data.UserEvent.UserEventData);
        return;
    default:
        return;
    }
}

void steer(Random &random, SaHpiEventLogEntryT &entry) {
    steer(random, entry.Event);
}

void steer(Random &random, SaHpiEventLogInfoT &info) {
    mostlyBelow(random, info.OverflowAction, 3);
}

void steer(Random &random, SaHpiRptEntryT &rpt) {
    oftenIs(random, rpt.ResourceId, SAHPI_UNSPECIFIED_RESOURCE_ID);
    steer(random, rpt.ResourceEntity);
    mostlyBelow(random, rpt.ResourceSeverity, 5);
    steer(random, rpt.ResourceTag);
}

void steer(Random &random, SaHpiRdrT &rdr) {
    oftenIs(random, rdr.RecordId, SaHpiEntryIdT{0xFFFFFFFF});
    mostlyBelow(random, rdr.RdrType, 7);
    mostlyBelow(random, rdr.IsFru, 2);
    steer(random, rdr.Entity);
    steer(random, rdr.IdString);
    if (rdr.RdrType == SAHPI_CTRL_RDR) {
        steer(random, rdr.RdrTypeUnion.CtrlRec);
    }
    if (rdr.RdrType == SAHPI_SENSOR_RDR) {
        steer(random, rdr.RdrTypeUnion.SensorRec);
    }
}

void steer(Random &random, SaHpiConditionT &condition) {
    mostlyBelow(random, condition.Type, 5);
    steer(random, condition.Entity);
    oftenIs(random, condition.DomainId, SAHPI_UNSPECIFIED_DOMAIN_ID);
    oftenIs(random, condition.ResourceId, SAHPI_UNSPECIFIED_RESOURCE_ID);
    mostlyBelow(random, condition.Name.Length, 260);
    steer(random, condition.Data);
}

namespace {

// `to` keeps its own bits where only the truth is shown.
void copyFlag(SaHpiBoolT from, SaHpiBoolT &to) {
    to = from == SAHPI_FALSE ? SAHPI_FALSE : static_cast<SaHpiBoolT>(to | 1);
}

bool isText(const SaHpiTextBufferT &buffer) {
    return buffer.DataType >= SAHPI_TL_TYPE_BCDPLUS && buffer.DataType <= SAHPI_TL_TYPE_TEXT;
}

// A NUL ends a text early, but for texts of controls.
void copyData(const SaHpiTextBufferT &from, SaHpiTextBufferT &to, bool nulEnds) {
    const SaHpiUint8T *end = from.Data + from.DataLength;
    if (nulEnds && isText(from)) {
        end = std::find(from.Data, end, SaHpiUint8T{0});
    }
    std::copy(from.Data, end, to.Data);
    if (end != from.Data + from.DataLength) {
        to.Data[end - from.Data] = 0;
    }
    to.DataType = from.DataType;
    to.DataLength = from.DataLength;
}

// Below the type's and the language's name.
void copyFull(const SaHpiTextBufferT &from, SaHpiTextBufferT &to) {
    copyData(from, to, true);
    to.Language = from.Language;
}

// Behind a type tag, which has no language for BCD plus, ASCII6 and binary data.
void copyTagged(const SaHpiTextBufferT &from, SaHpiTextBufferT &to) {
    copyData(from, to, true);
    switch (from.DataType) {
    case SAHPI_TL_TYPE_BCDPLUS:
    case SAHPI_TL_TYPE_ASCII6:
    case SAHPI_TL_TYPE_BINARY:
        return;
    default:
        to.Language = from.Language;
        return;
    }
}

// Up to the root, whose location is not shown.
void copyPath(const SaHpiEntityPathT &from, SaHpiEntityPathT &to) {
    for (std::size_t i = 0; i < SAHPI_MAX_ENTITY_PATH; ++i) {
        to.Entry[i].EntityType = from.Entry[i].EntityType;
        if (from.Entry[i].EntityType == SAHPI_ENT_ROOT) {
            return;
        }
        to.Entry[i].EntityLocation = from.Entry[i].EntityLocation;
    }
}

void copySensorEvent(const SaHpiSensorEventT &from, SaHpiSensorEventT &to) {
    to.SensorNum = from.SensorNum;
    to.SensorType = from.SensorType;
    to.EventCategory = from.EventCategory;
    copyFlag(from.Assertion, to.Assertion);
    to.EventState = from.EventState;
    const SaHpiSensorOptionalDataT present = from.OptionalDataPresent;
    to.OptionalDataPresent = present;
    if ((present & 0x01) != 0) {
        copyShown(from.TriggerReading, to.TriggerReading);
    }
    if ((present & 0x02) != 0) {
        copyShown(from.TriggerThreshold, to.TriggerThreshold);
    }
    if ((present & 0x04) != 0) {
        to.Oem = from.Oem;
    }
    if ((present & 0x08) != 0) {
        to.PreviousState = from.PreviousState;
    }
    if ((present & 0x10) != 0) {
        to.CurrentState = from.CurrentState;
    }
    if ((present & 0x20) != 0) {
        to.SensorSpecific = from.SensorSpecific;
    }
}

void copyEnableChange(const SaHpiSensorEnableChangeEventT &from,
                      SaHpiSensorEnableChangeEventT &to) {
    to.SensorNum = from.SensorNum;
    to.SensorType = from.SensorType;
    to.EventCategory = from.EventCategory;
    copyFlag(from.SensorEnable, to.SensorEnable);
    copyFlag(from.SensorEventEnable, to.SensorEventEnable);
    to.AssertEventMask = from.AssertEventMask;
    to.DeassertEventMask = from.DeassertEventMask;
    const int currentState = from.OptionalDataPresent & 0x10;
    to.OptionalDataPresent =
        static_cast<SaHpiSensorEnableOptDataT>((to.OptionalDataPresent & ~0x10) | currentState);
    if (currentState != 0) {
        to.CurrentState = from.CurrentState;
    }
}

void copyEventData(SaHpiEventTypeT type, const SaHpiEventUnionT &from, SaHpiEventUnionT &to) {
    switch (type) {
    case SAHPI_ET_RESOURCE:
        to.ResourceEvent = from.ResourceEvent;
        return;
    case SAHPI_ET_SENSOR:
        copySensorEvent(from.SensorEvent, to.SensorEvent);
        return;
    case SAHPI_ET_SENSOR_ENABLE_CHANGE:
        copyEnableChange(from.SensorEnableChangeEvent, to.SensorEnableChangeEvent);
        return;
    case SAHPI_ET_HOTSWAP:
        to.HotSwapEvent = from.HotSwapEvent;
        return;
    case SAHPI_ET_WATCHDOG:
        to.WatchdogEvent = from.WatchdogEvent;
        return;
    case SAHPI_ET_HPI_SW:
        to.HpiSwEvent.MId = from.HpiSwEvent.MId;
        to.HpiSwEvent.Type = from.HpiSwEvent.Type;
        copyTagged(from.HpiSwEvent.EventData, to.HpiSwEvent.EventData);
        return;
    case SAHPI_ET_OEM:
        to.OemEvent.MId = from.OemEvent.MId;
        copyTagged(from.OemEvent.OemEventData, to.OemEvent.OemEventData);
        return;
    case SAHPI_ET_USER:
        copyTagged(from.UserEvent.UserEventData, to.UserEvent.UserEventData);
        return;
    default:
        return; // a domain event's data are not shown
    }
}

void copyControlDefaults(SaHpiCtrlTypeT type, const SaHpiCtrlRecUnionT &from,
                         SaHpiCtrlRecUnionT &to) {
    switch (type) {
    case SAHPI_CTRL_TYPE_DIGITAL:
        to.Digital = from.Digital;
        return;
    case SAHPI_CTRL_TYPE_DISCRETE:
        to.Discrete = from.Discrete;
        return;
    case SAHPI_CTRL_TYPE_ANALOG:
        to.Analog = from.Analog;
        return;
    case SAHPI_CTRL_TYPE_STREAM: {
        const SaHpiCtrlStateStreamT &stream = from.Stream.Default;
        copyFlag(stream.Repeat, to.Stream.Default.Repeat);
        to.Stream.Default.StreamLength = stream.StreamLength;
        std::copy_n(stream.Stream, std::min(stream.StreamLength, 4U), to.Stream.Default.Stream);
        return;
    }
    case SAHPI_CTRL_TYPE_TEXT:
        to.Text.MaxChars = from.Text.MaxChars;
        to.Text.MaxLines = from.Text.MaxLines;
        to.Text.Language = from.Text.Language;
        to.Text.DataType = from.Text.DataType;
        to.Text.Default.Line = from.Text.Default.Line;
        copyData(from.Text.Default.Text, to.Text.Default.Text, false);
        to.Text.Default.Text.Language = from.Text.Default.Text.Language;
        return;
    case SAHPI_CTRL_TYPE_OEM:
        to.Oem.MId = from.Oem.MId;
        std::copy_n(from.Oem.ConfigData, 10, to.Oem.ConfigData);
        to.Oem.Default.MId = from.Oem.Default.MId;
        to.Oem.Default.BodyLength = from.Oem.Default.BodyLength;
        std::copy_n(from.Oem.Default.Body, from.Oem.Default.BodyLength, to.Oem.Default.Body);
        return;
    default:
        return;
    }
}

void copyControl(const SaHpiCtrlRecT &from, SaHpiCtrlRecT &to) {
    to.Num = from.Num;
    to.OutputType = from.OutputType;
    to.Type = from.Type;
    copyControlDefaults(from.Type, from.TypeUnion, to.TypeUnion);
    to.DefaultMode.Mode = from.DefaultMode.Mode;
    copyFlag(from.DefaultMode.ReadOnly, to.DefaultMode.ReadOnly);
    copyFlag(from.WriteOnly, to.WriteOnly);
    to.Oem = from.Oem;
}

void copyRange(const SaHpiSensorRangeT &from, SaHpiSensorRangeT &to) {
    to.Flags = from.Flags;
    if ((from.Flags & SAHPI_SRF_MAX) != 0) {
        copyShown(from.Max, to.Max);
    }
    if ((from.Flags & SAHPI_SRF_MIN) != 0) {
        copyShown(from.Min, to.Min);
    }
    if ((from.Flags & SAHPI_SRF_NOMINAL) != 0) {
        copyShown(from.Nominal, to.Nominal);
    }
    if ((from.Flags & SAHPI_SRF_NORMAL_MAX) != 0) {
        copyShown(from.NormalMax, to.NormalMax);
    }
    if ((from.Flags & SAHPI_SRF_NORMAL_MIN) != 0) {
        copyShown(from.NormalMin, to.NormalMin);
    }
}

void copySensor(const SaHpiSensorRecT &from, SaHpiSensorRecT &to, std::uint32_t floatAccuracy) {
    to.Num = from.Num;
    to.Type = from.Type;
    to.Category = from.Category;
    copyFlag(from.EnableCtrl, to.EnableCtrl);
    to.EventCtrl = from.EventCtrl;
    to.Events = from.Events;
    const SaHpiSensorDataFormatT &format = from.DataFormat;
    to.DataFormat.ReadingType = format.ReadingType;
    if (format.ReadingType != SAHPI_SENSOR_READING_TYPE_BUFFER) {
        to.DataFormat.BaseUnits = format.BaseUnits;
        to.DataFormat.ModifierUnits = format.ModifierUnits;
        to.DataFormat.ModifierUse = format.ModifierUse;
        copyFlag(format.Percentage, to.DataFormat.Percentage);
        copyRange(format.Range, to.DataFormat.Range);
    }
    std::memcpy(&to.DataFormat.AccuracyFactor, &format.AccuracyFactor, floatAccuracy != 0 ? 8 : 4);
    copyFlag(from.ThresholdDefn.IsAccessible, to.ThresholdDefn.IsAccessible);
    if (from.ThresholdDefn.IsAccessible != SAHPI_FALSE) {
        to.ThresholdDefn.ReadThold = from.ThresholdDefn.ReadThold;
        to.ThresholdDefn.WriteThold = from.ThresholdDefn.WriteThold;
        copyFlag(from.ThresholdDefn.Nonlinear, to.ThresholdDefn.Nonlinear);
    }
    to.Oem = from.Oem;
}

void copyRecord(SaHpiRdrTypeT type, const SaHpiRdrTypeUnionT &from, SaHpiRdrTypeUnionT &to,
                std::uint32_t floatAccuracy) {
    switch (type) {
    case SAHPI_CTRL_RDR:
        copyControl(from.CtrlRec, to.CtrlRec);
        return;
    case SAHPI_SENSOR_RDR:
        copySensor(from.SensorRec, to.SensorRec, floatAccuracy);
        return;
    case SAHPI_INVENTORY_RDR:
        to.InventoryRec.IdrId = from.InventoryRec.IdrId;
        copyFlag(from.InventoryRec.Persistent, to.InventoryRec.Persistent);
        to.InventoryRec.Oem = from.InventoryRec.Oem;
        return;
    case SAHPI_WATCHDOG_RDR:
        to.WatchdogRec = from.WatchdogRec;
        return;
    case SAHPI_ANNUNCIATOR_RDR:
        to.AnnunciatorRec.AnnunciatorNum = from.AnnunciatorRec.AnnunciatorNum;
        to.AnnunciatorRec.AnnunciatorType = from.AnnunciatorRec.AnnunciatorType;
        copyFlag(from.AnnunciatorRec.ModeReadOnly, to.AnnunciatorRec.ModeReadOnly);
        to.AnnunciatorRec.MaxConditions = from.AnnunciatorRec.MaxConditions;
        to.AnnunciatorRec.Oem = from.AnnunciatorRec.Oem;
        return;
    default:
        return;
    }
}

} // namespace

void copyShown(const SaHpiSensorReadingT &from, SaHpiSensorReadingT &to) {
    copyFlag(from.IsSupported, to.IsSupported);
    if (from.IsSupported == SAHPI_FALSE) {
        return;
    }
    to.Type = from.Type;
    switch (from.Type) {
    case SAHPI_SENSOR_READING_TYPE_INT64:
    case SAHPI_SENSOR_READING_TYPE_FLOAT64:
        std::memcpy(&to.Value, &from.Value, 8);
        return;
    case SAHPI_SENSOR_READING_TYPE_BUFFER:
        std::memcpy(&to.Value, &from.Value, SAHPI_SENSOR_BUFFER_LENGTH);
        return;
    default:
        return;
    }
}

void copyShown(const SaHpiEventT &from, SaHpiEventT &to) {
    to.Source = from.Source;
    to.EventType = from.EventType;
    to.Timestamp = from.Timestamp;
    to.Severity = from.Severity;
    copyEventData(from.EventType, from.EventDataUnion, to.EventDataUnion);
}

void copyShown(const SaHpiEventLogEntryT &from, SaHpiEventLogEntryT &to) {
    to.EntryId = from.EntryId;
    to.Timestamp = from.Timestamp;
    copyShown(from.Event, to.Event);
}

void copyShown(const SaHpiEventLogInfoT &from, SaHpiEventLogInfoT &to) {
    to.Entries = from.Entries;
    to.Size = from.Size;
    to.UserEventMaxSize = from.UserEventMaxSize;
    to.UpdateTimestamp = from.UpdateTimestamp;
    to.CurrentTime = from.CurrentTime;
    copyFlag(from.Enabled, to.Enabled);
    copyFlag(from.OverflowFlag, to.OverflowFlag);
    copyFlag(from.OverflowResetable, to.OverflowResetable);
    to.OverflowAction = from.OverflowAction;
}

void copyShown(const SaHpiRptEntryT &from, SaHpiRptEntryT &to) {
    to.EntryId = from.EntryId;
    to.ResourceId = from.ResourceId;
    to.ResourceInfo.ResourceRev = from.ResourceInfo.ResourceRev;
    to.ResourceInfo.SpecificVer = from.ResourceInfo.SpecificVer;
    to.ResourceInfo.DeviceSupport = from.ResourceInfo.DeviceSupport;
    to.ResourceInfo.ManufacturerId = from.ResourceInfo.ManufacturerId;
    to.ResourceInfo.ProductId = from.ResourceInfo.ProductId;
    to.ResourceInfo.FirmwareMajorRev = from.ResourceInfo.FirmwareMajorRev;
    to.ResourceInfo.FirmwareMinorRev = from.ResourceInfo.FirmwareMinorRev;
    to.ResourceInfo.AuxFirmwareRev = from.ResourceInfo.AuxFirmwareRev;
    std::copy_n(from.ResourceInfo.Guid, SAHPI_GUID_LENGTH, to.ResourceInfo.Guid);
    copyPath(from.ResourceEntity, to.ResourceEntity);
    to.ResourceCapabilities = from.ResourceCapabilities;
    if ((from.ResourceCapabilities & SAHPI_CAPABILITY_MANAGED_HOTSWAP) != 0) {
        to.HotSwapCapabilities = from.HotSwapCapabilities;
    }
    to.ResourceSeverity = from.ResourceSeverity;
    copyFlag(from.ResourceFailed, to.ResourceFailed);
    copyFull(from.ResourceTag, to.ResourceTag);
}

void copyShown(const SaHpiRdrT &from, SaHpiRdrT &to, std::uint32_t floatAccuracy) {
    to.RecordId = from.RecordId;
    to.RdrType = from.RdrType;
    copyPath(from.Entity, to.Entity);
    copyFlag(from.IsFru, to.IsFru);
    copyFull(from.IdString, to.IdString);
    copyRecord(from.RdrType, from.RdrTypeUnion, to.RdrTypeUnion, floatAccuracy);
}

void copyShown(const SaHpiConditionT &from, SaHpiConditionT &to) {
    to.Type = from.Type;
    copyPath(from.Entity, to.Entity);
    to.DomainId = from.DomainId;
    to.ResourceId = from.ResourceId;
    if (from.Type == SAHPI_STATUS_COND_TYPE_SENSOR) {
        to.SensorNum = from.SensorNum;
        to.EventState = from.EventState;
    }
    if (from.Type == SAHPI_STATUS_COND_TYPE_OEM) {
        to.Mid = from.Mid;
    }
    to.Name.Length = from.Name.Length;
    if (from.Name.Length <= SAHPI_MAX_NAME_LENGTH) {
        std::copy_n(from.Name.Value, from.Name.Length, to.Name.Value);
    }
    to.Data.DataLength = from.Data.DataLength;
    if (from.Data.DataLength != 0) {
        copyTagged(from.Data, to.Data);
    }
}

} // namespace random_records
