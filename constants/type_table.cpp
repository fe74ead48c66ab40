// The types of the registry by name. The ids run from 1 without a gap, in the order of the rows.

#include "constants/type_ids.h"
#include "zuSaHpi_util.h"

constexpr zuSaHpiTypeT zuSaHpiTypes[ZUSAHPI_TYPES + 1] = {
    {"SaHpiCtrlModeT", zusahpi::type_id::ctrlMode},
    {"SaHpiDomainIdT", zusahpi::type_id::domainId},
    {"SaHpiLanguageT", zusahpi::type_id::language},
    {"SaHpiHsCapabilitiesT", zusahpi::type_id::hsCapabilities},
    {"SaHpiIdrAreaTypeT", zusahpi::type_id::idrAreaType},
    {"SaHpiCtrlStateDigitalT", zusahpi::type_id::ctrlStateDigital},
    {"SaHpiHsStateT", zusahpi::type_id::hsState},
    {"SaHpiSensorReadingTypeT", zusahpi::type_id::sensorReadingType},
    {"SaHpiSensorEnableOptDataT", zusahpi::type_id::sensorEnableOptData},
    {"SaHpiEntityTypeT", zusahpi::type_id::entityType},
    {"SaHpiEventTypeT", zusahpi::type_id::eventType},
    {"SaHpiIdrIdT", zusahpi::type_id::idrId},
    {"SaHpiIdrFieldTypeT", zusahpi::type_id::idrFieldType},
    {"SaHpiTxtLineNumT", zusahpi::type_id::txtLineNum},
    {"SaHpiSensorEventCtrlT", zusahpi::type_id::sensorEventCtrl},
    {"SaHpiSeverityT", zusahpi::type_id::severity},
    {"SaErrorT", zusahpi::type_id::error},
    {"SaHpiWatchdogPretimerInterruptT", zusahpi::type_id::watchdogPretimerInterrupt},
    {"SaHpiSensorModUnitUseT", zusahpi::type_id::sensorModUnitUse},
    {"SaHpiCtrlTypeT", zusahpi::type_id::ctrlType},
    {"SaHpiEventStateT", zusahpi::type_id::eventState},
    {"SaHpiEvtQueueStatusT", zusahpi::type_id::evtQueueStatus},
    {"SaHpiManufacturerIdT", zusahpi::type_id::manufacturerId},
    {"SaHpiParmActionT", zusahpi::type_id::parmAction},
    {"SaHpiSensorThdMaskT", zusahpi::type_id::sensorThdMask},
    {"SaHpiEventLogOverflowActionT", zusahpi::type_id::eventLogOverflowAction},
    {"SaHpiSensorRangeFlagsT", zusahpi::type_id::sensorRangeFlags},
    {"SaHpiCtrlOutputTypeT", zusahpi::type_id::ctrlOutputType},
    {"SaHpiWatchdogTimerUseT", zusahpi::type_id::watchdogTimerUse},
    {"SaHpiDomainEventTypeT", zusahpi::type_id::domainEventType},
    {"SaHpiSensorTypeT", zusahpi::type_id::sensorType},
    {"SaHpiDomainCapabilitiesT", zusahpi::type_id::domainCapabilities},
    {"SaHpiSwEventTypeT", zusahpi::type_id::swEventType},
    {"SaHpiWatchdogExpFlagsT", zusahpi::type_id::watchdogExpFlags},
    {"SaHpiEntryIdT", zusahpi::type_id::entryId},
    {"SaHpiAnnunciatorModeT", zusahpi::type_id::annunciatorMode},
    {"SaHpiTimeoutT", zusahpi::type_id::timeout},
    {"SaHpiResetActionT", zusahpi::type_id::resetAction},
    {"SaHpiSensorOptionalDataT", zusahpi::type_id::sensorOptionalData},
    {"SaHpiHsIndicatorStateT", zusahpi::type_id::hsIndicatorState},
    {"SaHpiTextTypeT", zusahpi::type_id::textType},
    {"SaHpiTimeT", zusahpi::type_id::time},
    {"SaHpiEventCategoryT", zusahpi::type_id::eventCategory},
    {"SaHpiWatchdogNumT", zusahpi::type_id::watchdogNum},
    {"SaHpiSensorUnitsT", zusahpi::type_id::sensorUnits},
    {"SaHpiCapabilitiesT", zusahpi::type_id::capabilities},
    {"SaHpiVersionT", zusahpi::type_id::version},
    {"SaHpiSensorEventMaskActionT", zusahpi::type_id::sensorEventMaskAction},
    {"SaHpiStatusCondTypeT", zusahpi::type_id::statusCondType},
    {"SaHpiAnnunciatorTypeT", zusahpi::type_id::annunciatorType},
    {"SaHpiWatchdogActionEventT", zusahpi::type_id::watchdogActionEvent},
    {"SaHpiRdrTypeT", zusahpi::type_id::rdrType},
    {"SaHpiResourceIdT", zusahpi::type_id::resourceId},
    {"SaHpiEventLogEntryIdT", zusahpi::type_id::eventLogEntryId},
    {"SaHpiSensorNumT", zusahpi::type_id::sensorNum},
    {"SaHpiHsActionT", zusahpi::type_id::hsAction},
    {"SaHpiPowerStateT", zusahpi::type_id::powerState},
    {"SaHpiResourceEventTypeT", zusahpi::type_id::resourceEventType},
    {"SaHpiWatchdogActionT", zusahpi::type_id::watchdogAction},
    {nullptr, 0},
};

namespace {

[[nodiscard]] constexpr bool idsAreDense() {
    for (uint32_t i = 0; i < ZUSAHPI_TYPES; ++i) {
        if (zuSaHpiTypes[i].id != i + 1) {
            return false;
        }
    }
    return true;
}
static_assert(idsAreDense());

} // namespace
