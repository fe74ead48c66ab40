// Entries of the resource presence table. Ids and severity are shown as the registry has them, no
// prefix removed.

#include "display/display_form.h"
#include "display/named_type.h"
#include "display/text_buffer.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi::display {
namespace {

constexpr Columns capabilityColumns{.start = 32, .wrap = 23};

void printGuid(zuSaHpiHandleT out, const SaHpiGuidT &guid, const char *indent) {
    zuSaHpiPrintf(out,
                  "%s             Guid =             "
                  "%02x%02x%02x%02x-%02x%02x-%02x%02x-%02x%02x-%02x%02x%02x%02x%02x%02x\n",
                  indent, guid[0], guid[1], guid[2], guid[3], guid[4], guid[5], guid[6], guid[7],
                  guid[8], guid[9], guid[10], guid[11], guid[12], guid[13], guid[14], guid[15]);
}

void printInfo(zuSaHpiHandleT out, const SaHpiResourceInfoT &info, const char *indent) {
    zuSaHpiPrintf(out, "%sResourceInfo:\n", indent);
    zuSaHpiPrintf(out, "%s             ResourceRev =      %u\n", indent, info.ResourceRev);
    zuSaHpiPrintf(out, "%s             SpecificVer =      %u\n", indent, info.SpecificVer);
    zuSaHpiPrintf(out, "%s             DeviceSupport =    %u\n", indent, info.DeviceSupport);
    zuSaHpiPrintf(out, "%s             ManufacturerId =    %s\n", indent,
                  registryText(info.ManufacturerId, type_id::manufacturerId).text);
    zuSaHpiPrintf(out, "%s             ProductId =        %hu\n", indent, info.ProductId);
    zuSaHpiPrintf(out, "%s             FirmwareMajorRev = %u\n", indent, info.FirmwareMajorRev);
    zuSaHpiPrintf(out, "%s             FirmwareMinorRev = %u\n", indent, info.FirmwareMinorRev);
    zuSaHpiPrintf(out, "%s             AuxFirmwareRev =   %u\n", indent, info.AuxFirmwareRev);
    printGuid(out, info.Guid, indent);
}

void printCapabilities(zuSaHpiHandleT out, const SaHpiRptEntryT &rpt, const char *indent) {
    zuSaHpiPrintf(out, "%sResourceCapabilities = 0x%.8x", indent, rpt.ResourceCapabilities);
    printFlags(out, rpt.ResourceCapabilities, named_type::capabilities, capabilityColumns, indent);
    // Other resources have no hot swap capabilities, whatever the field holds.
    if ((rpt.ResourceCapabilities & SAHPI_CAPABILITY_MANAGED_HOTSWAP) != 0) {
        zuSaHpiPrintf(out, "%sHotSwapCapabilities  = 0x%.8x", indent, rpt.HotSwapCapabilities);
        printFlags(out, rpt.HotSwapCapabilities, named_type::hsCapabilities, capabilityColumns,
                   indent);
    }
}

} // namespace
} // namespace zusahpi::display

int zuSaHpiRptDisplay(zuSaHpiHandleT out, const SaHpiRptEntryT *rptEntry, const char *indent) {
    using namespace zusahpi;
    using namespace zusahpi::display;
    zuSaHpiPrintf(out, "%sEntryId = %u\n", indent, rptEntry->EntryId);
    zuSaHpiPrintf(out, "%sResourceId = %s\n", indent,
                  registryText(rptEntry->ResourceId, type_id::resourceId).text);
    printInfo(out, rptEntry->ResourceInfo, indent);
    zuSaHpiEntityPathDisplay(out, &rptEntry->ResourceEntity, "ResourceEntity", indent);
    printCapabilities(out, *rptEntry, indent);
    zuSaHpiPrintf(out, "%sResourceSeverity = %s\n", indent,
                  registryText(rptEntry->ResourceSeverity, type_id::severity).text);
    if (rptEntry->ResourceFailed != SAHPI_FALSE) {
        zuSaHpiPrintf(out, "%sResource flagged as FAILED\n", indent);
    }
    zuSaHpiTextBufferDisplay(out, &rptEntry->ResourceTag, "ResourceTag", text_format::full, indent);
    return zuSaHpiPrintf(out, "\n");
}
