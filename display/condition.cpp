// Conditions of an annunciator.

#include "display/named_type.h"
#include "display/text_buffer.h"
#include "util/hex_dump.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi::display {
namespace {

// The parts of a condition. Each returns the result of its last print, 0 when it prints nothing.

int printPlace(zuSaHpiHandleT out, const SaHpiConditionT &condition, const char *indent) {
    int result = zuSaHpiEntityPathDisplay(out, &condition.Entity, "Entity", indent);
    if (condition.DomainId != SAHPI_UNSPECIFIED_DOMAIN_ID) {
        result = zuSaHpiPrintf(out, "%sDomain Id: %u\n", indent, condition.DomainId);
    }
    if (condition.ResourceId != SAHPI_UNSPECIFIED_RESOURCE_ID) {
        result = zuSaHpiPrintf(out, "%sResource Id: %u\n", indent, condition.ResourceId);
    }
    return result;
}

int printOrigin(zuSaHpiHandleT out, const SaHpiConditionT &condition, const char *indent) {
    switch (condition.Type) {
    case SAHPI_STATUS_COND_TYPE_SENSOR:
        zuSaHpiPrintf(out, "%sSensor Number: %u\n", indent, condition.SensorNum);
        return zuSaHpiPrintf(out, "%sEvent State: 0x%.4x\n", indent, condition.EventState);
    case SAHPI_STATUS_COND_TYPE_OEM:
        return printValue(out, "ManufacturerId", condition.Mid, named_type::manufacturerId, indent);
    default:
        return 0;
    }
}

// A name that claims to be longer than its array is not shown at all.
int printName(zuSaHpiHandleT out, const SaHpiNameT &name, const char *indent) {
    if (name.Length == 0 || name.Length > sizeof name.Value) {
        return 0;
    }
    zuSaHpiPrintf(out, "%sName:%s", indent, name.Length <= hexDumpBytesPerLine ? " " : "\n");
    return zuSaHpiDprint(out, name.Value, name.Length, indent);
}

int printData(zuSaHpiHandleT out, const SaHpiTextBufferT &data, const char *indent) {
    if (data.DataLength == 0) {
        return 0;
    }
    return zuSaHpiTextBufferDisplay(out, &data, "Data", text_format::typeTag, indent);
}

[[nodiscard]] constexpr int lastOf(int before, int result) {
    return result != 0 ? result : before;
}

} // namespace
} // namespace zusahpi::display

int zuSaHpiConditionDisplay(zuSaHpiHandleT out, const SaHpiConditionT *condition,
                            const char *indent) {
    using namespace zusahpi::display;
    int result = printValue(out, "Type", condition->Type, named_type::statusCondType, indent);
    result = lastOf(result, printPlace(out, *condition, indent));
    result = lastOf(result, printOrigin(out, *condition, indent));
    result = lastOf(result, printName(out, condition->Name, indent));
    return lastOf(result, printData(out, condition->Data, indent));
}
