// The types whose values printers name: each the registry's type and the prefix that the names of
// its constants share, which is not shown.
#pragma once

#include <cstdint>

#include "constants/type_ids.h"
#include "zuSaHpi_util.h"

namespace zusahpi::display {

struct NamedType {
    std::uint32_t id;
    const char *prefix;
};

namespace named_type {

inline constexpr NamedType annunciatorType{type_id::annunciatorType, "SAHPI_ANNUNCIATOR_TYPE_"};
inline constexpr NamedType capabilities{type_id::capabilities, "SAHPI_CAPABILITY_"};
inline constexpr NamedType ctrlMode{type_id::ctrlMode, "SAHPI_CTRL_MODE_"};
inline constexpr NamedType ctrlOutputType{type_id::ctrlOutputType, "SAHPI_CTRL_"};
inline constexpr NamedType ctrlStateDigital{type_id::ctrlStateDigital, "SAHPI_CTRL_STATE_"};
inline constexpr NamedType ctrlType{type_id::ctrlType, "SAHPI_CTRL_TYPE_"};
inline constexpr NamedType eventCategory{type_id::eventCategory, "SAHPI_EC_"};
inline constexpr NamedType eventType{type_id::eventType, "SAHPI_ET_"};
inline constexpr NamedType hsCapabilities{type_id::hsCapabilities, "SAHPI_HS_CAPABILITY_"};
inline constexpr NamedType hsState{type_id::hsState, "SAHPI_HS_STATE_"};
inline constexpr NamedType language{type_id::language, "SAHPI_LANG_"};
inline constexpr NamedType manufacturerId{type_id::manufacturerId, "SAHPI_MANUFACTURER_ID_"};
inline constexpr NamedType overflowAction{type_id::eventLogOverflowAction, "SAHPI_EL_OVERFLOW_"};
inline constexpr NamedType resourceEventType{type_id::resourceEventType, "SAHPI_RESE_"};
inline constexpr NamedType sensorEventCtrl{type_id::sensorEventCtrl, "SAHPI_SEC_"};
inline constexpr NamedType sensorModUnitUse{type_id::sensorModUnitUse, "SAHPI_SMUU_"};
inline constexpr NamedType sensorOptionalData{type_id::sensorOptionalData, "SAHPI_SOD_"};
inline constexpr NamedType sensorRangeFlags{type_id::sensorRangeFlags, "SAHPI_SRF_"};
inline constexpr NamedType sensorReadingType{type_id::sensorReadingType,
                                             "SAHPI_SENSOR_READING_TYPE_"};
inline constexpr NamedType sensorThdMask{type_id::sensorThdMask, "SAHPI_STM_"};
inline constexpr NamedType sensorType{type_id::sensorType, "SAHPI_"};
inline constexpr NamedType sensorUnits{type_id::sensorUnits, "SAHPI_SU_"};
inline constexpr NamedType severity{type_id::severity, "SAHPI_"};
inline constexpr NamedType statusCondType{type_id::statusCondType, "SAHPI_STATUS_COND_TYPE_"};
inline constexpr NamedType swEventType{type_id::swEventType, "SAHPI_HPIE_"};
inline constexpr NamedType textType{type_id::textType, "SAHPI_TL_TYPE_"};
inline constexpr NamedType txtLineNum{type_id::txtLineNum, "SAHPI_TLN_"};
inline constexpr NamedType watchdogAction{type_id::watchdogActionEvent, "SAHPI_WAE_"};
inline constexpr NamedType watchdogPretimer{type_id::watchdogPretimerInterrupt, "SAHPI_WPI_"};
inline constexpr NamedType watchdogUse{type_id::watchdogTimerUse, "SAHPI_WTU_"};

} // namespace named_type

inline int printValue(zuSaHpiHandleT out, const char *label, std::uint32_t value,
                      const NamedType &type, const char *indent) {
    return zuSaHpiValueDisplay(out, label, value, 0, type.id, type.prefix, indent);
}

// Where a list of names begins and goes on: how far its line has come and how many blanks begin
// the lines after it, the indent not counted in either.
struct Columns {
    int start;
    int wrap;
};

inline int printFlags(zuSaHpiHandleT out, std::uint32_t flags, const NamedType &type,
                      const Columns &columns, const char *indent) {
    return zuSaHpiBitFlagsDisplay(out, flags, type.id, type.prefix, columns.start, columns.wrap,
                                  indent);
}

} // namespace zusahpi::display
