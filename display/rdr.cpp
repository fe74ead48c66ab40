// Resource data records: the head that all have in common, then a body by type, then an empty line.

#include "display/control_record.h"
#include "display/named_type.h"
#include "display/sensor_record.h"
#include "display/text_buffer.h"
#include "display/words.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi::display {
namespace {

constexpr SaHpiEntryIdT privateRecord = 0xFFFFFFFF;

// What a record describes: its kind in a word, and its number among those of its kind.
struct Instrument {
    const char *word;
    std::uint32_t number;
};

[[nodiscard]] Instrument instrumentOf(const SaHpiRdrT &rdr) {
    const SaHpiRdrTypeUnionT &record = rdr.RdrTypeUnion;
    switch (rdr.RdrType) {
    case SAHPI_CTRL_RDR:
        return {"Control", record.CtrlRec.Num};
    case SAHPI_SENSOR_RDR:
        return {"Sensor", record.SensorRec.Num};
    case SAHPI_INVENTORY_RDR:
        return {"Inventory", record.InventoryRec.IdrId};
    case SAHPI_WATCHDOG_RDR:
        return {"Watchdog", record.WatchdogRec.WatchdogNum};
    case SAHPI_ANNUNCIATOR_RDR:
        return {"Annunciator", record.AnnunciatorRec.AnnunciatorNum};
    default:
        return {"???", 0};
    }
}

void printHead(zuSaHpiHandleT out, const SaHpiRdrT &rdr, const char *indent) {
    if (rdr.RecordId != privateRecord) {
        zuSaHpiPrintf(out, "%sRDR Record # %u\n", indent, rdr.RecordId);
    } else {
        zuSaHpiPrintf(out, "%sPrivate RDR Record\n", indent);
    }
    const auto [word, number] = instrumentOf(rdr);
    zuSaHpiPrintf(out, "%s%s %u\n", indent, word, number);
    zuSaHpiEntityPathDisplay(out, &rdr.Entity, "Entity", indent);
    if (rdr.IsFru != SAHPI_FALSE) {
        zuSaHpiPrintf(out, "%sEntity IsFru flag is set\n", indent);
    }
    zuSaHpiTextBufferDisplay(out, &rdr.IdString, "IdString", text_format::full, indent);
}

void printOem(zuSaHpiHandleT out, SaHpiUint32T oem, const char *indent) {
    zuSaHpiPrintf(out, "%sOem = %u\n", indent, oem);
}

void printInventory(zuSaHpiHandleT out, const SaHpiInventoryRecT &record, const char *indent) {
    zuSaHpiPrintf(out, "%sPersistent = %s\n", indent, yesOrNo(record.Persistent));
    printOem(out, record.Oem, indent);
}

void printAnnunciator(zuSaHpiHandleT out, const SaHpiAnnunciatorRecT &record, const char *indent) {
    printValue(out, "Type", record.AnnunciatorType, named_type::annunciatorType, indent);
    if (record.ModeReadOnly != SAHPI_FALSE) {
        zuSaHpiPrintf(out, "%sRead Only Mode\n", indent);
    }
    zuSaHpiPrintf(out, "%sMax Conditions = %u\n", indent, record.MaxConditions);
    printOem(out, record.Oem, indent);
}

void printBody(zuSaHpiHandleT out, const SaHpiRdrT &rdr, const char *indent,
               std::uint32_t floatAccuracy) {
    const SaHpiRdrTypeUnionT &record = rdr.RdrTypeUnion;
    switch (rdr.RdrType) {
    case SAHPI_CTRL_RDR:
        printControlRecord(out, record.CtrlRec, indent);
        return;
    case SAHPI_SENSOR_RDR:
        printSensorRecord(out, record.SensorRec, indent, floatAccuracy);
        return;
    case SAHPI_INVENTORY_RDR:
        printInventory(out, record.InventoryRec, indent);
        return;
    case SAHPI_WATCHDOG_RDR:
        printOem(out, record.WatchdogRec.Oem, indent);
        return;
    case SAHPI_ANNUNCIATOR_RDR:
        printAnnunciator(out, record.AnnunciatorRec, indent);
        return;
    default:
        zuSaHpiPrintf(out, "Unknown RDR Type\n");
        return;
    }
}

} // namespace
} // namespace zusahpi::display

int zuSaHpiRdrDisplay(zuSaHpiHandleT out, const SaHpiRdrT *rdr, const char *indent,
                      uint32_t floatAccuracy) {
    using namespace zusahpi::display;
    printHead(out, *rdr, indent);
    printBody(out, *rdr, indent, floatAccuracy);
    return zuSaHpiPrintf(out, "\n");
}
