// The sample event and the texts.

#include "tests/frontends/sample_log.h"

#include <cstring>
#include <string_view>

using namespace store_test;

namespace sample_log {
namespace {

void setText(SaHpiTextBufferT &buffer, std::string_view text) {
    buffer.DataType = SAHPI_TL_TYPE_TEXT;
    buffer.Language = SAHPI_LANG_ENGLISH;
    buffer.DataLength = static_cast<SaHpiUint8T>(text.size());
    std::memcpy(buffer.Data, text.data(), text.size());
}

void setBoard(SaHpiEntityPathT &path) {
    path.Entry[0].EntityType = SAHPI_ENT_SYSTEM_BOARD;
    path.Entry[0].EntityLocation = 2;
    path.Entry[1].EntityType = SAHPI_ENT_ROOT;
}

} // namespace

EventLogAddRecord boardEvent() {
    EventLogAddRecord record;
    std::memset(&record, 0, sizeof record);
    record.event.Source = 17;
    record.event.EventType = SAHPI_ET_USER;
    record.event.Timestamp = SAHPI_TIME_UNSPECIFIED;
    record.event.Severity = SAHPI_MINOR;
    setText(record.event.EventDataUnion.UserEvent.UserEventData, "disk full");
    SaHpiRptEntryT &rpt = record.rpt;
    rpt.EntryId = 3;
    rpt.ResourceId = 17;
    rpt.ResourceInfo.ResourceRev = 1;
    rpt.ResourceInfo.SpecificVer = 2;
    rpt.ResourceInfo.DeviceSupport = 3;
    rpt.ResourceInfo.ProductId = 4;
    rpt.ResourceInfo.FirmwareMajorRev = 5;
    rpt.ResourceInfo.FirmwareMinorRev = 6;
    rpt.ResourceInfo.AuxFirmwareRev = 7;
    for (std::uint8_t i = 0; i < sizeof rpt.ResourceInfo.Guid; ++i) {
        rpt.ResourceInfo.Guid[i] = i;
    }
    setBoard(rpt.ResourceEntity);
    rpt.ResourceCapabilities = SAHPI_CAPABILITY_RESOURCE | SAHPI_CAPABILITY_RDR;
    rpt.ResourceSeverity = SAHPI_MINOR;
    setText(rpt.ResourceTag, "board");
    SaHpiRdrT &rdr = record.rdr;
    rdr.RecordId = 9;
    rdr.RdrType = SAHPI_INVENTORY_RDR;
    setBoard(rdr.Entity);
    rdr.IsFru = 1;
    rdr.RdrTypeUnion.InventoryRec.IdrId = 4;
    rdr.RdrTypeUnion.InventoryRec.Persistent = 1;
    rdr.RdrTypeUnion.InventoryRec.Oem = 12;
    setText(rdr.IdString, "parts");
    return record;
}

EventLogEntryRecord recordOf(std::uint32_t id, const EventLogAddRecord &added, std::uint32_t prev,
                             std::uint32_t next) {
    EventLogEntryRecord record = entryRecord(id, 0, prev, next);
    record.entry.Event = added.event;
    record.rpt = added.rpt;
    record.rdr = added.rdr;
    return record;
}

FileImage emptyFile(const EventLogInfoRecord &info) {
    FileImage image;
    image.setInfo(info);
    EventLogEntryRecord unused;
    std::memset(&unused, 0, sizeof unused);
    unused.entry.EntryId = none;
    for (std::uint32_t slot = 0; slot < 4; ++slot) {
        image.setSlot(slot, unused);
    }
    return image;
}

std::string userEventText(std::uint32_t id, const std::string &indent) {
    return indent + "EntryId: " + std::to_string(id) + "\n" + //
           indent + "Timestamp: time(1000000000,0)\n" +       //
           indent + "Event:\n" +                              //
           indent + "      Source:      0\n" +                //
           indent + "      Event Type:  8: User\n" +          //
           indent + "      Timestamp:   time(0,0)\n" +        //
           indent + "      Severity:    0: Critical\n" +      //
           indent + "      User Event:\n" +                   //
           indent + "        (Text:Undef)\"xx\"\n";
}

std::string expectedText(const std::string &name) {
    return test_support::readFile(std::string(ZUSAHPI_TEST_DATA) + "/frontends/data/" + name);
}

} // namespace sample_log
