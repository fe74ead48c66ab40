// Where each of the sixteen bytes of a record lies in the event, RPT entry and RDR that it became,
// so that the record can be rebuilt. This is the one description of the packing; the manual
// docs/sel-import.md repeats it for users.
//
//   byte   field        sensor event                         watchdog event
//   0-1    record id    RDR RecordId                         the same
//   2      type         RDR SensorRec.Oem bits 31-24         RDR WatchdogRec.Oem bits 31-24
//   3-6    time         event Timestamp                      the same
//   7-8    generator    event Source                         the same
//   9      revision     RPT entry ResourceInfo.SpecificVer   the same
//   10     sensor type  RDR SensorRec.Oem bits 23-16         always 23h
//   11     number       event SensorNum                      event WatchdogNum
//   12     event type   RDR SensorRec.Oem bits 15-8          bit 7: WatchdogRec.Oem bit 16; always
//                                                            6Fh apart from that
//   13     data 1       RDR SensorRec.Oem bits 7-0           bits 7-4: WatchdogRec.Oem bits 23-20;
//                                                            bits 3-0: event WatchdogAction
//   14     data 2       event Oem bits 15-8                  WatchdogRec.Oem bits 15-8
//   15     data 3       event Oem bits 7-0                   WatchdogRec.Oem bits 7-0
//
// An OEM event holds all sixteen bytes in its OemEventData.
//
// The event's time is that of the record less the offset from UTC of the log's clock. The offset
// stands in minutes, as a two's complement number, in the RPT entry's EntryId, and is 0 where none
// was applied: in times that count from the start of the controller and in unspecified ones.
#pragma once

#include <cstdint>
#include <optional>

#include "hpi/SaHpi.h"
#include "tools/evtlogctl/sel_record.h"

namespace zusahpi::sel {

[[nodiscard]] constexpr SaHpiUint32T packDataBytes(const Record &record) {
    return static_cast<SaHpiUint32T>(record.bytes[offset::data2]) << 8 |
           record.bytes[offset::data3];
}

[[nodiscard]] constexpr SaHpiUint32T packSensorRdr(const Record &record) {
    return static_cast<SaHpiUint32T>(record.bytes[offset::type]) << 24 |
           static_cast<SaHpiUint32T>(record.bytes[offset::sensorType]) << 16 |
           static_cast<SaHpiUint32T>(record.bytes[offset::eventType]) << 8 |
           record.bytes[offset::data1];
}

[[nodiscard]] constexpr SaHpiUint32T packWatchdogRdr(const Record &record) {
    return static_cast<SaHpiUint32T>(record.bytes[offset::type]) << 24 |
           (static_cast<SaHpiUint32T>(record.bytes[offset::data1]) & 0xF0) << 16 |
           static_cast<SaHpiUint32T>(isDeassertion(record)) << 16 | packDataBytes(record);
}

// A record's time as an event has it.
struct PackedTime {
    SaHpiTimeT timestamp = SAHPI_TIME_UNSPECIFIED;
    SaHpiEntryIdT utcOffset = 0; // minutes, for the RPT entry
};

// `seconds` is that of the record, `utcOffset` in minutes is how far its clock was before UTC.
[[nodiscard]] PackedTime packTime(std::uint32_t seconds, std::int32_t utcOffset);

// The offset that takes an OEM record's time to the event's. Empty when none does.
[[nodiscard]] std::optional<std::int32_t> utcOffsetBetween(const Record &record,
                                                           SaHpiTimeT timestamp);

// The offset that an RPT entry holds. Empty for a number that is none.
[[nodiscard]] std::optional<std::int32_t> utcOffsetOf(const SaHpiRptEntryT &rpt);

// The sixteen bytes that the fields hold. Empty when some field holds more than its bytes could:
// the entry was not made from a record. A result may still differ from what made the entry; only
// mapping it again tells (importedRecord in sel_mapping.h).
[[nodiscard]] std::optional<Record> unpack(const SaHpiEventT &event, const SaHpiRptEntryT &rpt,
                                           const SaHpiRdrT &rdr);

} // namespace zusahpi::sel
