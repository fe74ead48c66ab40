// Every named constant of the HPI standard, and the implementation's own manufacturer id. A row
// takes its value from the public headers, where each value stands once.
//
// The order of the rows is part of the interface: where one type has two names for a value, the
// first row is the name that the value gets.

#include "constants/type_ids.h"
#include "zuSaHpi_util.h"

namespace zusahpi {
namespace {

// Event states mean different things in different categories: the category is their sub-type.
[[nodiscard]] constexpr uint32_t stateOf(SaHpiEventCategoryT category) {
    return typeKey(category, type_id::eventState);
}

} // namespace
} // namespace zusahpi

using namespace zusahpi;

// clang-format off
#define ROW(name, type) {#name, static_cast<SaHpiInt64T>(name), type}

constexpr zuSaHpiConstantT zuSaHpiConstants[ZUSAHPI_CONSTANTS + 1] = {
    // SaHpiManufacturerIdT
    ROW(SAHPI_MANUFACTURER_ID_KORVANTIS, type_id::manufacturerId),
    ROW(SAHPI_MANUFACTURER_ID_UNSPECIFIED, type_id::manufacturerId),

    // SaHpiVersionT
    ROW(SAHPI_INTERFACE_VERSION, type_id::version),

    // SaErrorT
    ROW(SA_OK, type_id::error),
    ROW(SA_ERR_HPI_ERROR, type_id::error),
    ROW(SA_ERR_HPI_UNSUPPORTED_API, type_id::error),
    ROW(SA_ERR_HPI_BUSY, type_id::error),
    ROW(SA_ERR_HPI_INTERNAL_ERROR, type_id::error),
    ROW(SA_ERR_HPI_INVALID_CMD, type_id::error),
    ROW(SA_ERR_HPI_TIMEOUT, type_id::error),
    ROW(SA_ERR_HPI_OUT_OF_SPACE, type_id::error),
    ROW(SA_ERR_HPI_OUT_OF_MEMORY, type_id::error),
    ROW(SA_ERR_HPI_INVALID_PARAMS, type_id::error),
    ROW(SA_ERR_HPI_INVALID_DATA, type_id::error),
    ROW(SA_ERR_HPI_NOT_PRESENT, type_id::error),
    ROW(SA_ERR_HPI_NO_RESPONSE, type_id::error),
    ROW(SA_ERR_HPI_DUPLICATE, type_id::error),
    ROW(SA_ERR_HPI_INVALID_SESSION, type_id::error),
    ROW(SA_ERR_HPI_INVALID_DOMAIN, type_id::error),
    ROW(SA_ERR_HPI_INVALID_RESOURCE, type_id::error),
    ROW(SA_ERR_HPI_INVALID_REQUEST, type_id::error),
    ROW(SA_ERR_HPI_ENTITY_NOT_PRESENT, type_id::error),
    ROW(SA_ERR_HPI_READ_ONLY, type_id::error),
    ROW(SA_ERR_HPI_CAPABILITY, type_id::error),
    ROW(SA_ERR_HPI_UNKNOWN, type_id::error),

    // SaHpiDomainIdT
    ROW(SAHPI_UNSPECIFIED_DOMAIN_ID, type_id::domainId),

    // SaHpiResourceIdT
    ROW(SAHPI_UNSPECIFIED_RESOURCE_ID, type_id::resourceId),

    // SaHpiEntryIdT
    ROW(SAHPI_FIRST_ENTRY, type_id::entryId),
    ROW(SAHPI_LAST_ENTRY, type_id::entryId),

    // SaHpiTimeT
    ROW(SAHPI_TIME_UNSPECIFIED, type_id::time),
    ROW(SAHPI_TIME_MAX_RELATIVE, type_id::time),

    // SaHpiTimeoutT
    ROW(SAHPI_TIMEOUT_IMMEDIATE, type_id::timeout),
    ROW(SAHPI_TIMEOUT_BLOCK, type_id::timeout),

    // SaHpiLanguageT
    ROW(SAHPI_LANG_RHAETOROMANCE, type_id::language),
    ROW(SAHPI_LANG_BURMESE, type_id::language),
    ROW(SAHPI_LANG_SERBOCROATIAN, type_id::language),
    ROW(SAHPI_LANG_KANNADA, type_id::language),
    ROW(SAHPI_LANG_SISWATI, type_id::language),
    ROW(SAHPI_LANG_ROMANIAN, type_id::language),
    ROW(SAHPI_LANG_AFRIKAANS, type_id::language),
    ROW(SAHPI_LANG_GUARANI, type_id::language),
    ROW(SAHPI_LANG_BYELORUSSIAN, type_id::language),
    ROW(SAHPI_LANG_AFANOROMO, type_id::language),
    ROW(SAHPI_LANG_JAVANESE, type_id::language),
    ROW(SAHPI_LANG_VIETNAMESE, type_id::language),
    ROW(SAHPI_LANG_AMHARIC, type_id::language),
    ROW(SAHPI_LANG_FRISIAN, type_id::language),
    ROW(SAHPI_LANG_NEPALI, type_id::language),
    ROW(SAHPI_LANG_KASHMIRI, type_id::language),
    ROW(SAHPI_LANG_LAOTHIAN, type_id::language),
    ROW(SAHPI_LANG_KIRGHIZ, type_id::language),
    ROW(SAHPI_LANG_SERBIAN, type_id::language),
    ROW(SAHPI_LANG_AZERBAIJANI, type_id::language),
    ROW(SAHPI_LANG_SANSKRIT, type_id::language),
    ROW(SAHPI_LANG_INUPIAK, type_id::language),
    ROW(SAHPI_LANG_CAMBODIAN, type_id::language),
    ROW(SAHPI_LANG_TELUGU, type_id::language),
    ROW(SAHPI_LANG_ICELANDIC, type_id::language),
    ROW(SAHPI_LANG_SWAHILI, type_id::language),
    ROW(SAHPI_LANG_PASHTOPUSHTO, type_id::language),
    ROW(SAHPI_LANG_BASHKIR, type_id::language),
    ROW(SAHPI_LANG_KURDISH, type_id::language),
    ROW(SAHPI_LANG_HUNGARIAN, type_id::language),
    ROW(SAHPI_LANG_RUSSIAN, type_id::language),
    ROW(SAHPI_LANG_SAMOAN, type_id::language),
    ROW(SAHPI_LANG_NORWEGIAN, type_id::language),
    ROW(SAHPI_LANG_MOLDAVIAN, type_id::language),
    ROW(SAHPI_LANG_GERMAN, type_id::language),
    ROW(SAHPI_LANG_CZECH, type_id::language),
    ROW(SAHPI_LANG_BENGALI, type_id::language),
    ROW(SAHPI_LANG_MALAY, type_id::language),
    ROW(SAHPI_LANG_CORSICAN, type_id::language),
    ROW(SAHPI_LANG_TAGALOG, type_id::language),
    ROW(SAHPI_LANG_ORIYA, type_id::language),
    ROW(SAHPI_LANG_SUDANESE, type_id::language),
    ROW(SAHPI_LANG_JAPANESE, type_id::language),
    ROW(SAHPI_LANG_UKRAINIAN, type_id::language),
    ROW(SAHPI_LANG_QUECHUA, type_id::language),
    ROW(SAHPI_LANG_BIHARI, type_id::language),
    ROW(SAHPI_LANG_HEBREW, type_id::language),
    ROW(SAHPI_LANG_SANGRO, type_id::language),
    ROW(SAHPI_LANG_NAURU, type_id::language),
    ROW(SAHPI_LANG_IRISH, type_id::language),
    ROW(SAHPI_LANG_SINDHI, type_id::language),
    ROW(SAHPI_LANG_DUTCH, type_id::language),
    ROW(SAHPI_LANG_BULGARIAN, type_id::language),
    ROW(SAHPI_LANG_PORTUGUESE, type_id::language),
    ROW(SAHPI_LANG_OCCITAN, type_id::language),
    ROW(SAHPI_LANG_MALAGASY, type_id::language),
    ROW(SAHPI_LANG_URDU, type_id::language),
    ROW(SAHPI_LANG_LITHUANIAN, type_id::language),
    ROW(SAHPI_LANG_WELSH, type_id::language),
    ROW(SAHPI_LANG_FIJI, type_id::language),
    ROW(SAHPI_LANG_KAZAKH, type_id::language),
    ROW(SAHPI_LANG_INTERLINGUA, type_id::language),
    ROW(SAHPI_LANG_BRETON, type_id::language),
    ROW(SAHPI_LANG_SHONA, type_id::language),
    ROW(SAHPI_LANG_DANISH, type_id::language),
    ROW(SAHPI_LANG_TAMIL, type_id::language),
    ROW(SAHPI_LANG_TURKISH, type_id::language),
    ROW(SAHPI_LANG_INTERLINGUE, type_id::language),
    ROW(SAHPI_LANG_MONGOLIAN, type_id::language),
    ROW(SAHPI_LANG_GREENLANDIC, type_id::language),
    ROW(SAHPI_LANG_MARATHI, type_id::language),
    ROW(SAHPI_LANG_YIDDISH, type_id::language),
    ROW(SAHPI_LANG_ABKHAZIAN, type_id::language),
    ROW(SAHPI_LANG_HINDI, type_id::language),
    ROW(SAHPI_LANG_PUNJABI, type_id::language),
    ROW(SAHPI_LANG_ENGLISH, type_id::language),
    ROW(SAHPI_LANG_SOMALI, type_id::language),
    ROW(SAHPI_LANG_FAEROESE, type_id::language),
    ROW(SAHPI_LANG_THAI, type_id::language),
    ROW(SAHPI_LANG_TWI, type_id::language),
    ROW(SAHPI_LANG_ZULU, type_id::language),
    ROW(SAHPI_LANG_ARMENIAN, type_id::language),
    ROW(SAHPI_LANG_SINGHALESE, type_id::language),
    ROW(SAHPI_LANG_SPANISH, type_id::language),
    ROW(SAHPI_LANG_PERSIAN, type_id::language),
    ROW(SAHPI_LANG_MACEDONIAN, type_id::language),
    ROW(SAHPI_LANG_INDONESIAN, type_id::language),
    ROW(SAHPI_LANG_AFAR, type_id::language),
    ROW(SAHPI_LANG_SESOTHO, type_id::language),
    ROW(SAHPI_LANG_CATALAN, type_id::language),
    ROW(SAHPI_LANG_XHOSA, type_id::language),
    ROW(SAHPI_LANG_ALBANIAN, type_id::language),
    ROW(SAHPI_LANG_MAORI, type_id::language),
    ROW(SAHPI_LANG_TAJIK, type_id::language),
    ROW(SAHPI_LANG_BISLAMA, type_id::language),
    ROW(SAHPI_LANG_YORUBA, type_id::language),
    ROW(SAHPI_LANG_FINNISH, type_id::language),
    ROW(SAHPI_LANG_SCOTSGAELIC, type_id::language),
    ROW(SAHPI_LANG_TATAR, type_id::language),
    ROW(SAHPI_LANG_MALTESE, type_id::language),
    ROW(SAHPI_LANG_GEORGIAN, type_id::language),
    ROW(SAHPI_LANG_AYMARA, type_id::language),
    ROW(SAHPI_LANG_BHUTANI, type_id::language),
    ROW(SAHPI_LANG_TONGA, type_id::language),
    ROW(SAHPI_LANG_KOREAN, type_id::language),
    ROW(SAHPI_LANG_TSONGA, type_id::language),
    ROW(SAHPI_LANG_MALAYALAM, type_id::language),
    ROW(SAHPI_LANG_LATVIANLETTISH, type_id::language),
    ROW(SAHPI_LANG_ESTONIAN, type_id::language),
    ROW(SAHPI_LANG_KIRUNDI, type_id::language),
    ROW(SAHPI_LANG_TIBETAN, type_id::language),
    ROW(SAHPI_LANG_UNDEF, type_id::language),
    ROW(SAHPI_LANG_SLOVAK, type_id::language),
    ROW(SAHPI_LANG_POLISH, type_id::language),
    ROW(SAHPI_LANG_HAUSA, type_id::language),
    ROW(SAHPI_LANG_VOLAPUK, type_id::language),
    ROW(SAHPI_LANG_SWEDISH, type_id::language),
    ROW(SAHPI_LANG_LINGALA, type_id::language),
    ROW(SAHPI_LANG_GREEK, type_id::language),
    ROW(SAHPI_LANG_TIGRINYA, type_id::language),
    ROW(SAHPI_LANG_FRENCH, type_id::language),
    ROW(SAHPI_LANG_GALICIAN, type_id::language),
    ROW(SAHPI_LANG_CROATIAN, type_id::language),
    ROW(SAHPI_LANG_SETSWANA, type_id::language),
    ROW(SAHPI_LANG_ARABIC, type_id::language),
    ROW(SAHPI_LANG_ITALIAN, type_id::language),
    ROW(SAHPI_LANG_GUJARATI, type_id::language),
    ROW(SAHPI_LANG_KINYARWANDA, type_id::language),
    ROW(SAHPI_LANG_CHINESE, type_id::language),
    ROW(SAHPI_LANG_UZBEK, type_id::language),
    ROW(SAHPI_LANG_TURKMEN, type_id::language),
    ROW(SAHPI_LANG_SLOVENIAN, type_id::language),
    ROW(SAHPI_LANG_LATIN, type_id::language),
    ROW(SAHPI_LANG_ESPERANTO, type_id::language),
    ROW(SAHPI_LANG_WOLOF, type_id::language),
    ROW(SAHPI_LANG_BASQUE, type_id::language),
    ROW(SAHPI_LANG_ASSAMESE, type_id::language),

    // SaHpiTextTypeT
    ROW(SAHPI_TL_TYPE_BCDPLUS, type_id::textType),
    ROW(SAHPI_TL_TYPE_BINARY, type_id::textType),
    ROW(SAHPI_TL_TYPE_ASCII6, type_id::textType),
    ROW(SAHPI_TL_TYPE_TEXT, type_id::textType),
    ROW(SAHPI_TL_TYPE_UNICODE, type_id::textType),

    // SaHpiEntityTypeT
    ROW(SAHPI_ENT_PERIPHERAL_BAY, type_id::entityType),
    ROW(SAHPI_ENT_SBC_SUBBOARD, type_id::entityType),
    ROW(SAHPI_ENT_EXTERNAL_ENVIRONMENT, type_id::entityType),
    ROW(SAHPI_ENT_DISK_BLADE, type_id::entityType),
    ROW(SAHPI_ENT_DISPLAY_PANEL, type_id::entityType),
    ROW(SAHPI_ENT_DEVICE_BAY, type_id::entityType),
    ROW(SAHPI_ENT_POWER_DISTRIBUTION_UNIT, type_id::entityType),
    ROW(SAHPI_ENT_GROUP, type_id::entityType),
    ROW(SAHPI_ENT_FAN, type_id::entityType),
    ROW(SAHPI_ENT_RACK, type_id::entityType),
    ROW(SAHPI_ENT_RACK_MOUNTED_SERVER, type_id::entityType),
    ROW(SAHPI_ENT_CHASSIS_SPECIFIC, type_id::entityType),
    ROW(SAHPI_ENT_POWER_SYSTEM_BOARD, type_id::entityType),
    ROW(SAHPI_ENT_POWER_MGMNT, type_id::entityType),
    ROW(SAHPI_ENT_SYS_MGMNT_SOFTWARE, type_id::entityType),
    ROW(SAHPI_ENT_OTHER_CHASSIS_BOARD, type_id::entityType),
    ROW(SAHPI_ENT_SUBRACK, type_id::entityType),
    ROW(SAHPI_ENT_BOARD_SET_SPECIFIC, type_id::entityType),
    ROW(SAHPI_ENT_IO_BLADE, type_id::entityType),
    ROW(SAHPI_ENT_BIOS, type_id::entityType),
    ROW(SAHPI_ENT_SWITCH, type_id::entityType),
    ROW(SAHPI_ENT_DISK_DRIVE_BAY, type_id::entityType),
    ROW(SAHPI_ENT_SWITCH_BLADE, type_id::entityType),
    ROW(SAHPI_ENT_PERIPHERAL_BAY_2, type_id::entityType),
    ROW(SAHPI_ENT_PROCESSOR_BOARD, type_id::entityType),
    ROW(SAHPI_ENT_MEMORY_MODULE, type_id::entityType),
    ROW(SAHPI_ENT_OTHER_SYSTEM_BOARD, type_id::entityType),
    ROW(SAHPI_ENT_SBC_BLADE, type_id::entityType),
    ROW(SAHPI_ENT_POWER_SUPPLY, type_id::entityType),
    ROW(SAHPI_ENT_DISK_BAY, type_id::entityType),
    ROW(SAHPI_ENT_OPERATING_SYSTEM, type_id::entityType),
    ROW(SAHPI_ENT_SYS_MGMNT_MODULE, type_id::entityType),
    ROW(SAHPI_ENT_BATTERY, type_id::entityType),
    ROW(SAHPI_ENT_POWER_MODULE, type_id::entityType),
    ROW(SAHPI_ENT_SYSTEM_BUS, type_id::entityType),
    ROW(SAHPI_ENT_BACK_PANEL_BOARD, type_id::entityType),
    ROW(SAHPI_ENT_CHASSIS_BACK_PANEL_BOARD, type_id::entityType),
    ROW(SAHPI_ENT_ROOT, type_id::entityType),
    ROW(SAHPI_ENT_FRONT_PANEL_BOARD, type_id::entityType),
    ROW(SAHPI_ENT_MEMORY_DEVICE, type_id::entityType),
    ROW(SAHPI_ENT_REMOTE, type_id::entityType),
    ROW(SAHPI_ENT_PHYSICAL_SLOT, type_id::entityType),
    ROW(SAHPI_ENT_OEM_SYSINT_SPECIFIC, type_id::entityType),
    ROW(SAHPI_ENT_SYSTEM_BOARD, type_id::entityType),
    ROW(SAHPI_ENT_SYSTEM_BLADE, type_id::entityType),
    ROW(SAHPI_ENT_COMPACTPCI_CHASSIS, type_id::entityType),
    ROW(SAHPI_ENT_SPEC_PROC_BLADE, type_id::entityType),
    ROW(SAHPI_ENT_DISK_DRIVE, type_id::entityType),
    ROW(SAHPI_ENT_PROCESSOR, type_id::entityType),
    ROW(SAHPI_ENT_SYSTEM_CHASSIS, type_id::entityType),
    ROW(SAHPI_ENT_OTHER, type_id::entityType),
    ROW(SAHPI_ENT_COOLING_UNIT, type_id::entityType),
    ROW(SAHPI_ENT_COOLING_DEVICE, type_id::entityType),
    ROW(SAHPI_ENT_ADVANCEDTCA_CHASSIS, type_id::entityType),
    ROW(SAHPI_ENT_ADD_IN_CARD, type_id::entityType),
    ROW(SAHPI_ENT_SUBBOARD_CARRIER_BLADE, type_id::entityType),
    ROW(SAHPI_ENT_SHELF_MANAGER, type_id::entityType),
    ROW(SAHPI_ENT_SUB_CHASSIS, type_id::entityType),
    ROW(SAHPI_ENT_IO_SUBBOARD, type_id::entityType),
    ROW(SAHPI_ENT_POWER_UNIT, type_id::entityType),
    ROW(SAHPI_ENT_DRIVE_BACKPLANE, type_id::entityType),
    ROW(SAHPI_ENT_SYS_EXPANSION_BOARD, type_id::entityType),
    ROW(SAHPI_ENT_UNSPECIFIED, type_id::entityType),
    ROW(SAHPI_ENT_INTERCONNECT, type_id::entityType),
    ROW(SAHPI_ENT_PROCESSOR_MODULE, type_id::entityType),
    ROW(SAHPI_ENT_UNKNOWN, type_id::entityType),
    ROW(SAHPI_ENT_ALARM_MANAGER, type_id::entityType),

    // SaHpiEventCategoryT
    ROW(SAHPI_EC_UNSPECIFIED, type_id::eventCategory),
    ROW(SAHPI_EC_THRESHOLD, type_id::eventCategory),
    ROW(SAHPI_EC_USAGE, type_id::eventCategory),
    ROW(SAHPI_EC_STATE, type_id::eventCategory),
    ROW(SAHPI_EC_PRED_FAIL, type_id::eventCategory),
    ROW(SAHPI_EC_LIMIT, type_id::eventCategory),
    ROW(SAHPI_EC_PERFORMANCE, type_id::eventCategory),
    ROW(SAHPI_EC_SEVERITY, type_id::eventCategory),
    ROW(SAHPI_EC_PRESENCE, type_id::eventCategory),
    ROW(SAHPI_EC_ENABLE, type_id::eventCategory),
    ROW(SAHPI_EC_AVAILABILITY, type_id::eventCategory),
    ROW(SAHPI_EC_REDUNDANCY, type_id::eventCategory),
    ROW(SAHPI_EC_SENSOR_SPECIFIC, type_id::eventCategory),
    ROW(SAHPI_EC_GENERIC, type_id::eventCategory),

    // SaHpiEventStateT, any category
    ROW(SAHPI_ES_UNSPECIFIED, type_id::eventState),

    // SaHpiEventStateT, SAHPI_EC_THRESHOLD
    ROW(SAHPI_ES_LOWER_MINOR, stateOf(SAHPI_EC_THRESHOLD)),
    ROW(SAHPI_ES_LOWER_MAJOR, stateOf(SAHPI_EC_THRESHOLD)),
    ROW(SAHPI_ES_LOWER_CRIT, stateOf(SAHPI_EC_THRESHOLD)),
    ROW(SAHPI_ES_UPPER_MINOR, stateOf(SAHPI_EC_THRESHOLD)),
    ROW(SAHPI_ES_UPPER_MAJOR, stateOf(SAHPI_EC_THRESHOLD)),
    ROW(SAHPI_ES_UPPER_CRIT, stateOf(SAHPI_EC_THRESHOLD)),

    // SaHpiEventStateT, SAHPI_EC_USAGE
    ROW(SAHPI_ES_IDLE, stateOf(SAHPI_EC_USAGE)),
    ROW(SAHPI_ES_ACTIVE, stateOf(SAHPI_EC_USAGE)),
    ROW(SAHPI_ES_BUSY, stateOf(SAHPI_EC_USAGE)),

    // SaHpiEventStateT, SAHPI_EC_STATE
    ROW(SAHPI_ES_STATE_DEASSERTED, stateOf(SAHPI_EC_STATE)),
    ROW(SAHPI_ES_STATE_ASSERTED, stateOf(SAHPI_EC_STATE)),

    // SaHpiEventStateT, SAHPI_EC_PRED_FAIL
    ROW(SAHPI_ES_PRED_FAILURE_DEASSERT, stateOf(SAHPI_EC_PRED_FAIL)),
    ROW(SAHPI_ES_PRED_FAILURE_ASSERT, stateOf(SAHPI_EC_PRED_FAIL)),

    // SaHpiEventStateT, SAHPI_EC_LIMIT
    ROW(SAHPI_ES_LIMIT_NOT_EXCEEDED, stateOf(SAHPI_EC_LIMIT)),
    ROW(SAHPI_ES_LIMIT_EXCEEDED, stateOf(SAHPI_EC_LIMIT)),

    // SaHpiEventStateT, SAHPI_EC_PERFORMANCE
    ROW(SAHPI_ES_PERFORMANCE_MET, stateOf(SAHPI_EC_PERFORMANCE)),
    ROW(SAHPI_ES_PERFORMANCE_LAGS, stateOf(SAHPI_EC_PERFORMANCE)),

    // SaHpiEventStateT, SAHPI_EC_SEVERITY
    ROW(SAHPI_ES_OK, stateOf(SAHPI_EC_SEVERITY)),
    ROW(SAHPI_ES_MINOR_FROM_OK, stateOf(SAHPI_EC_SEVERITY)),
    ROW(SAHPI_ES_MAJOR_FROM_LESS, stateOf(SAHPI_EC_SEVERITY)),
    ROW(SAHPI_ES_CRITICAL_FROM_LESS, stateOf(SAHPI_EC_SEVERITY)),
    ROW(SAHPI_ES_MINOR_FROM_MORE, stateOf(SAHPI_EC_SEVERITY)),
    ROW(SAHPI_ES_MAJOR_FROM_CRITICAL, stateOf(SAHPI_EC_SEVERITY)),
    ROW(SAHPI_ES_CRITICAL, stateOf(SAHPI_EC_SEVERITY)),
    ROW(SAHPI_ES_MONITOR, stateOf(SAHPI_EC_SEVERITY)),
    ROW(SAHPI_ES_INFORMATIONAL, stateOf(SAHPI_EC_SEVERITY)),

    // SaHpiEventStateT, SAHPI_EC_PRESENCE
    ROW(SAHPI_ES_ABSENT, stateOf(SAHPI_EC_PRESENCE)),
    ROW(SAHPI_ES_PRESENT, stateOf(SAHPI_EC_PRESENCE)),

    // SaHpiEventStateT, SAHPI_EC_ENABLE
    ROW(SAHPI_ES_DISABLED, stateOf(SAHPI_EC_ENABLE)),
    ROW(SAHPI_ES_ENABLED, stateOf(SAHPI_EC_ENABLE)),

    // SaHpiEventStateT, SAHPI_EC_AVAILABILITY
    ROW(SAHPI_ES_RUNNING, stateOf(SAHPI_EC_AVAILABILITY)),
    ROW(SAHPI_ES_TEST, stateOf(SAHPI_EC_AVAILABILITY)),
    ROW(SAHPI_ES_POWER_OFF, stateOf(SAHPI_EC_AVAILABILITY)),
    ROW(SAHPI_ES_ON_LINE, stateOf(SAHPI_EC_AVAILABILITY)),
    ROW(SAHPI_ES_OFF_LINE, stateOf(SAHPI_EC_AVAILABILITY)),
    ROW(SAHPI_ES_OFF_DUTY, stateOf(SAHPI_EC_AVAILABILITY)),
    ROW(SAHPI_ES_DEGRADED, stateOf(SAHPI_EC_AVAILABILITY)),
    ROW(SAHPI_ES_POWER_SAVE, stateOf(SAHPI_EC_AVAILABILITY)),
    ROW(SAHPI_ES_INSTALL_ERROR, stateOf(SAHPI_EC_AVAILABILITY)),

    // SaHpiEventStateT, SAHPI_EC_REDUNDANCY
    ROW(SAHPI_ES_FULLY_REDUNDANT, stateOf(SAHPI_EC_REDUNDANCY)),
    ROW(SAHPI_ES_REDUNDANCY_LOST, stateOf(SAHPI_EC_REDUNDANCY)),
    ROW(SAHPI_ES_REDUNDANCY_DEGRADED, stateOf(SAHPI_EC_REDUNDANCY)),
    ROW(SAHPI_ES_REDUNDANCY_LOST_SUFFICIENT_RESOURCES, stateOf(SAHPI_EC_REDUNDANCY)),
    ROW(SAHPI_ES_NON_REDUNDANT_SUFFICIENT_RESOURCES, stateOf(SAHPI_EC_REDUNDANCY)),
    ROW(SAHPI_ES_NON_REDUNDANT_INSUFFICIENT_RESOURCES, stateOf(SAHPI_EC_REDUNDANCY)),
    ROW(SAHPI_ES_REDUNDANCY_DEGRADED_FROM_FULL, stateOf(SAHPI_EC_REDUNDANCY)),
    ROW(SAHPI_ES_REDUNDANCY_DEGRADED_FROM_NON, stateOf(SAHPI_EC_REDUNDANCY)),

    // SaHpiEventStateT, any category
    ROW(SAHPI_ES_STATE_00, type_id::eventState),
    ROW(SAHPI_ES_STATE_01, type_id::eventState),
    ROW(SAHPI_ES_STATE_02, type_id::eventState),
    ROW(SAHPI_ES_STATE_03, type_id::eventState),
    ROW(SAHPI_ES_STATE_04, type_id::eventState),
    ROW(SAHPI_ES_STATE_05, type_id::eventState),
    ROW(SAHPI_ES_STATE_06, type_id::eventState),
    ROW(SAHPI_ES_STATE_07, type_id::eventState),
    ROW(SAHPI_ES_STATE_08, type_id::eventState),
    ROW(SAHPI_ES_STATE_09, type_id::eventState),
    ROW(SAHPI_ES_STATE_10, type_id::eventState),
    ROW(SAHPI_ES_STATE_11, type_id::eventState),
    ROW(SAHPI_ES_STATE_12, type_id::eventState),
    ROW(SAHPI_ES_STATE_13, type_id::eventState),
    ROW(SAHPI_ES_STATE_14, type_id::eventState),

    // SaHpiSensorNumT
    ROW(SAHPI_STANDARD_SENSOR_MIN, type_id::sensorNum),
    ROW(SAHPI_STANDARD_SENSOR_MAX, type_id::sensorNum),

    // SaHpiSensorTypeT
    ROW(SAHPI_OEM_SENSOR, type_id::sensorType),
    ROW(SAHPI_SYSTEM_ACPI_POWER_STATE, type_id::sensorType),
    ROW(SAHPI_OPERATIONAL, type_id::sensorType),
    ROW(SAHPI_MICROCONTROLLER_COPROCESSOR, type_id::sensorType),
    ROW(SAHPI_DRIVE_SLOT, type_id::sensorType),
    ROW(SAHPI_MONITOR_ASIC_IC, type_id::sensorType),
    ROW(SAHPI_VOLTAGE, type_id::sensorType),
    ROW(SAHPI_SYSTEM_FW_PROGRESS, type_id::sensorType),
    ROW(SAHPI_RESERVED1, type_id::sensorType),
    ROW(SAHPI_RESERVED2, type_id::sensorType),
    ROW(SAHPI_OTHER_FRU, type_id::sensorType),
    ROW(SAHPI_BOOT_ERROR, type_id::sensorType),
    ROW(SAHPI_CHIP_SET, type_id::sensorType),
    ROW(SAHPI_FAN, type_id::sensorType),
    ROW(SAHPI_ADDIN_CARD, type_id::sensorType),
    ROW(SAHPI_SYSTEM_BOOT_INITIATED, type_id::sensorType),
    ROW(SAHPI_TERMINATOR, type_id::sensorType),
    ROW(SAHPI_TEMPERATURE, type_id::sensorType),
    ROW(SAHPI_OTHER_UNITS_BASED_SENSOR, type_id::sensorType),
    ROW(SAHPI_SYSTEM_EVENT, type_id::sensorType),
    ROW(SAHPI_SLOT_CONNECTOR, type_id::sensorType),
    ROW(SAHPI_ENTITY_PRESENCE, type_id::sensorType),
    ROW(SAHPI_POWER_UNIT, type_id::sensorType),
    ROW(SAHPI_POST_MEMORY_RESIZE, type_id::sensorType),
    ROW(SAHPI_PLATFORM_ALERT, type_id::sensorType),
    ROW(SAHPI_BATTERY, type_id::sensorType),
    ROW(SAHPI_CRITICAL_INTERRUPT, type_id::sensorType),
    ROW(SAHPI_CHASSIS, type_id::sensorType),
    ROW(SAHPI_LAN, type_id::sensorType),
    ROW(SAHPI_CURRENT, type_id::sensorType),
    ROW(SAHPI_EVENT_LOGGING_DISABLED, type_id::sensorType),
    ROW(SAHPI_MANAGEMENT_SUBSYSTEM_HEALTH, type_id::sensorType),
    ROW(SAHPI_COOLING_DEVICE, type_id::sensorType),
    ROW(SAHPI_BUTTON, type_id::sensorType),
    ROW(SAHPI_MEMORY, type_id::sensorType),
    ROW(SAHPI_MODULE_BOARD, type_id::sensorType),
    ROW(SAHPI_OS_CRITICAL_STOP, type_id::sensorType),
    ROW(SAHPI_PHYSICAL_SECURITY, type_id::sensorType),
    ROW(SAHPI_PLATFORM_VIOLATION, type_id::sensorType),
    ROW(SAHPI_PROCESSOR, type_id::sensorType),
    ROW(SAHPI_CABLE_INTERCONNECT, type_id::sensorType),
    ROW(SAHPI_POWER_SUPPLY, type_id::sensorType),
    ROW(SAHPI_OS_BOOT, type_id::sensorType),

    // SaHpiSensorReadingTypeT
    ROW(SAHPI_SENSOR_READING_TYPE_INT64, type_id::sensorReadingType),
    ROW(SAHPI_SENSOR_READING_TYPE_UINT64, type_id::sensorReadingType),
    ROW(SAHPI_SENSOR_READING_TYPE_FLOAT64, type_id::sensorReadingType),
    ROW(SAHPI_SENSOR_READING_TYPE_BUFFER, type_id::sensorReadingType),

    // SaHpiSensorEventMaskActionT
    ROW(SAHPI_SENS_REMOVE_EVENTS_FROM_MASKS, type_id::sensorEventMaskAction),
    ROW(SAHPI_SENS_ADD_EVENTS_TO_MASKS, type_id::sensorEventMaskAction),

    // SaHpiEventStateT, any category
    ROW(SAHPI_ALL_EVENT_STATES, type_id::eventState),

    // SaHpiSensorRangeFlagsT
    ROW(SAHPI_SRF_MIN, type_id::sensorRangeFlags),
    ROW(SAHPI_SRF_MAX, type_id::sensorRangeFlags),
    ROW(SAHPI_SRF_NORMAL_MIN, type_id::sensorRangeFlags),
    ROW(SAHPI_SRF_NORMAL_MAX, type_id::sensorRangeFlags),
    ROW(SAHPI_SRF_NOMINAL, type_id::sensorRangeFlags),

    // SaHpiSensorUnitsT
    ROW(SAHPI_SU_MIL, type_id::sensorUnits),
    ROW(SAHPI_SU_JOULES, type_id::sensorUnits),
    ROW(SAHPI_SU_RADIANS, type_id::sensorUnits),
    ROW(SAHPI_SU_FLUID_OUNCE, type_id::sensorUnits),
    ROW(SAHPI_SU_GIGABYTE, type_id::sensorUnits),
    ROW(SAHPI_SU_MICROFARAD, type_id::sensorUnits),
    ROW(SAHPI_SU_MM, type_id::sensorUnits),
    ROW(SAHPI_SU_CU_M, type_id::sensorUnits),
    ROW(SAHPI_SU_CU_IN, type_id::sensorUnits),
    ROW(SAHPI_SU_UNCORRECTABLE_ERRORS, type_id::sensorUnits),
    ROW(SAHPI_SU_GRAY, type_id::sensorUnits),
    ROW(SAHPI_SU_OHMS, type_id::sensorUnits),
    ROW(SAHPI_SU_FT_LB, type_id::sensorUnits),
    ROW(SAHPI_SU_KPA, type_id::sensorUnits),
    ROW(SAHPI_SU_MILLISECOND, type_id::sensorUnits),
    ROW(SAHPI_SU_MICROSECOND, type_id::sensorUnits),
    ROW(SAHPI_SU_LUMEN, type_id::sensorUnits),
    ROW(SAHPI_SU_LITERS, type_id::sensorUnits),
    ROW(SAHPI_SU_DWORD, type_id::sensorUnits),
    ROW(SAHPI_SU_BYTE, type_id::sensorUnits),
    ROW(SAHPI_SU_MINUTE, type_id::sensorUnits),
    ROW(SAHPI_SU_LUX, type_id::sensorUnits),
    ROW(SAHPI_SU_CFM, type_id::sensorUnits),
    ROW(SAHPI_SU_LINE, type_id::sensorUnits),
    ROW(SAHPI_SU_M, type_id::sensorUnits),
    ROW(SAHPI_SU_MEGABYTE, type_id::sensorUnits),
    ROW(SAHPI_SU_DBA, type_id::sensorUnits),
    ROW(SAHPI_SU_DBC, type_id::sensorUnits),
    ROW(SAHPI_SU_RESET, type_id::sensorUnits),
    ROW(SAHPI_SU_GAUSS, type_id::sensorUnits),
    ROW(SAHPI_SU_WEEK, type_id::sensorUnits),
    ROW(SAHPI_SU_COLLISION, type_id::sensorUnits),
    ROW(SAHPI_SU_WORD, type_id::sensorUnits),
    ROW(SAHPI_SU_SIEVERT, type_id::sensorUnits),
    ROW(SAHPI_SU_GIGABIT, type_id::sensorUnits),
    ROW(SAHPI_SU_NITS, type_id::sensorUnits),
    ROW(SAHPI_SU_MESSAGES, type_id::sensorUnits),
    ROW(SAHPI_SU_ERRORS, type_id::sensorUnits),
    ROW(SAHPI_SU_GILBERTS, type_id::sensorUnits),
    ROW(SAHPI_SU_SIEMENS, type_id::sensorUnits),
    ROW(SAHPI_SU_SECOND, type_id::sensorUnits),
    ROW(SAHPI_SU_DEGREES_C, type_id::sensorUnits),
    ROW(SAHPI_SU_PPM, type_id::sensorUnits),
    ROW(SAHPI_SU_DEGREES_F, type_id::sensorUnits),
    ROW(SAHPI_SU_CHARACTERS, type_id::sensorUnits),
    ROW(SAHPI_SU_RETRY, type_id::sensorUnits),
    ROW(SAHPI_SU_INCHES, type_id::sensorUnits),
    ROW(SAHPI_SU_MOLE, type_id::sensorUnits),
    ROW(SAHPI_SU_DEGREES_K, type_id::sensorUnits),
    ROW(SAHPI_SU_DECIBELS, type_id::sensorUnits),
    ROW(SAHPI_SU_COULOMBS, type_id::sensorUnits),
    ROW(SAHPI_SU_FEET, type_id::sensorUnits),
    ROW(SAHPI_SU_HZ, type_id::sensorUnits),
    ROW(SAHPI_SU_NEWTON, type_id::sensorUnits),
    ROW(SAHPI_SU_OVERRUN, type_id::sensorUnits),
    ROW(SAHPI_SU_CORRECTABLE_ERRORS, type_id::sensorUnits),
    ROW(SAHPI_SU_UNSPECIFIED, type_id::sensorUnits),
    ROW(SAHPI_SU_WATTS, type_id::sensorUnits),
    ROW(SAHPI_SU_OUNCE, type_id::sensorUnits),
    ROW(SAHPI_SU_GRAVITIES, type_id::sensorUnits),
    ROW(SAHPI_SU_BIT, type_id::sensorUnits),
    ROW(SAHPI_SU_RESERVED, type_id::sensorUnits),
    ROW(SAHPI_SU_AMPS, type_id::sensorUnits),
    ROW(SAHPI_SU_COLOR_TEMP_DEG_K, type_id::sensorUnits),
    ROW(SAHPI_SU_CANDELA, type_id::sensorUnits),
    ROW(SAHPI_SU_VA, type_id::sensorUnits),
    ROW(SAHPI_SU_UNDERRUN, type_id::sensorUnits),
    ROW(SAHPI_SU_QWORD, type_id::sensorUnits),
    ROW(SAHPI_SU_KILOBYTE, type_id::sensorUnits),
    ROW(SAHPI_SU_CU_FEET, type_id::sensorUnits),
    ROW(SAHPI_SU_MILLIHENRY, type_id::sensorUnits),
    ROW(SAHPI_SU_STERADIANS, type_id::sensorUnits),
    ROW(SAHPI_SU_CM, type_id::sensorUnits),
    ROW(SAHPI_SU_RPM, type_id::sensorUnits),
    ROW(SAHPI_SU_PACKETS, type_id::sensorUnits),
    ROW(SAHPI_SU_FARAD, type_id::sensorUnits),
    ROW(SAHPI_SU_VOLTS, type_id::sensorUnits),
    ROW(SAHPI_SU_HENRY, type_id::sensorUnits),
    ROW(SAHPI_SU_POUND, type_id::sensorUnits),
    ROW(SAHPI_SU_MISS, type_id::sensorUnits),
    ROW(SAHPI_SU_HOUR, type_id::sensorUnits),
    ROW(SAHPI_SU_MEGABIT, type_id::sensorUnits),
    ROW(SAHPI_SU_DAY, type_id::sensorUnits),
    ROW(SAHPI_SU_BECQUEREL, type_id::sensorUnits),
    ROW(SAHPI_SU_KILOBIT, type_id::sensorUnits),
    ROW(SAHPI_SU_REVOLUTIONS, type_id::sensorUnits),
    ROW(SAHPI_SU_PSI, type_id::sensorUnits),
    ROW(SAHPI_SU_CU_CM, type_id::sensorUnits),
    ROW(SAHPI_SU_HIT, type_id::sensorUnits),
    ROW(SAHPI_SU_OZ_IN, type_id::sensorUnits),
    ROW(SAHPI_SU_CYCLES, type_id::sensorUnits),

    // SaHpiSensorModUnitUseT
    ROW(SAHPI_SMUU_BASIC_TIMES_MODIFIER, type_id::sensorModUnitUse),
    ROW(SAHPI_SMUU_BASIC_OVER_MODIFIER, type_id::sensorModUnitUse),
    ROW(SAHPI_SMUU_NONE, type_id::sensorModUnitUse),

    // SaHpiSensorThdMaskT
    ROW(SAHPI_STM_LOW_MINOR, type_id::sensorThdMask),
    ROW(SAHPI_STM_LOW_MAJOR, type_id::sensorThdMask),
    ROW(SAHPI_STM_LOW_CRIT, type_id::sensorThdMask),
    ROW(SAHPI_STM_UP_MINOR, type_id::sensorThdMask),
    ROW(SAHPI_STM_UP_MAJOR, type_id::sensorThdMask),
    ROW(SAHPI_STM_UP_CRIT, type_id::sensorThdMask),
    ROW(SAHPI_STM_UP_HYSTERESIS, type_id::sensorThdMask),
    ROW(SAHPI_STM_LOW_HYSTERESIS, type_id::sensorThdMask),

    // SaHpiSensorEventCtrlT
    ROW(SAHPI_SEC_READ_ONLY_MASKS, type_id::sensorEventCtrl),
    ROW(SAHPI_SEC_READ_ONLY, type_id::sensorEventCtrl),
    ROW(SAHPI_SEC_PER_EVENT, type_id::sensorEventCtrl),

    // SaHpiSensorNumT
    ROW(SAHPI_DEFAGSENS_OPER, type_id::sensorNum),
    ROW(SAHPI_DEFAGSENS_PWR, type_id::sensorNum),
    ROW(SAHPI_DEFAGSENS_TEMP, type_id::sensorNum),
    ROW(SAHPI_DEFAGSENS_MIN, type_id::sensorNum),
    ROW(SAHPI_DEFAGSENS_MAX, type_id::sensorNum),

    // SaHpiCtrlTypeT
    ROW(SAHPI_CTRL_TYPE_ANALOG, type_id::ctrlType),
    ROW(SAHPI_CTRL_TYPE_OEM, type_id::ctrlType),
    ROW(SAHPI_CTRL_TYPE_STREAM, type_id::ctrlType),
    ROW(SAHPI_CTRL_TYPE_DIGITAL, type_id::ctrlType),
    ROW(SAHPI_CTRL_TYPE_TEXT, type_id::ctrlType),
    ROW(SAHPI_CTRL_TYPE_DISCRETE, type_id::ctrlType),

    // SaHpiCtrlStateDigitalT
    ROW(SAHPI_CTRL_STATE_PULSE_ON, type_id::ctrlStateDigital),
    ROW(SAHPI_CTRL_STATE_ON, type_id::ctrlStateDigital),
    ROW(SAHPI_CTRL_STATE_OFF, type_id::ctrlStateDigital),
    ROW(SAHPI_CTRL_STATE_PULSE_OFF, type_id::ctrlStateDigital),

    // SaHpiTxtLineNumT
    ROW(SAHPI_TLN_ALL_LINES, type_id::txtLineNum),

    // SaHpiCtrlModeT
    ROW(SAHPI_CTRL_MODE_AUTO, type_id::ctrlMode),
    ROW(SAHPI_CTRL_MODE_MANUAL, type_id::ctrlMode),

    // SaHpiCtrlOutputTypeT
    ROW(SAHPI_CTRL_AUDIBLE, type_id::ctrlOutputType),
    ROW(SAHPI_CTRL_POWER_STATE, type_id::ctrlOutputType),
    ROW(SAHPI_CTRL_POWER_INTERLOCK, type_id::ctrlOutputType),
    ROW(SAHPI_CTRL_POWER_SUPPLY_INHIBIT, type_id::ctrlOutputType),
    ROW(SAHPI_CTRL_OEM, type_id::ctrlOutputType),
    ROW(SAHPI_CTRL_FRONT_PANEL_LOCKOUT, type_id::ctrlOutputType),
    ROW(SAHPI_CTRL_DRY_CONTACT_CLOSURE, type_id::ctrlOutputType),
    ROW(SAHPI_CTRL_LED, type_id::ctrlOutputType),
    ROW(SAHPI_CTRL_LCD_DISPLAY, type_id::ctrlOutputType),
    ROW(SAHPI_CTRL_FAN_SPEED, type_id::ctrlOutputType),
    ROW(SAHPI_CTRL_GENERIC, type_id::ctrlOutputType),

    // SaHpiIdrIdT
    ROW(SAHPI_DEFAULT_INVENTORY_ID, type_id::idrId),

    // SaHpiIdrAreaTypeT
    ROW(SAHPI_IDR_AREATYPE_UNSPECIFIED, type_id::idrAreaType),
    ROW(SAHPI_IDR_AREATYPE_CHASSIS_INFO, type_id::idrAreaType),
    ROW(SAHPI_IDR_AREATYPE_BOARD_INFO, type_id::idrAreaType),
    ROW(SAHPI_IDR_AREATYPE_INTERNAL_USE, type_id::idrAreaType),
    ROW(SAHPI_IDR_AREATYPE_OEM, type_id::idrAreaType),
    ROW(SAHPI_IDR_AREATYPE_PRODUCT_INFO, type_id::idrAreaType),

    // SaHpiIdrFieldTypeT
    ROW(SAHPI_IDR_FIELDTYPE_FILE_ID, type_id::idrFieldType),
    ROW(SAHPI_IDR_FIELDTYPE_MANUFACTURER, type_id::idrFieldType),
    ROW(SAHPI_IDR_FIELDTYPE_CHASSIS_TYPE, type_id::idrFieldType),
    ROW(SAHPI_IDR_FIELDTYPE_SERIAL_NUMBER, type_id::idrFieldType),
    ROW(SAHPI_IDR_FIELDTYPE_PRODUCT_VERSION, type_id::idrFieldType),
    ROW(SAHPI_IDR_FIELDTYPE_MFG_DATETIME, type_id::idrFieldType),
    ROW(SAHPI_IDR_FIELDTYPE_UNSPECIFIED, type_id::idrFieldType),
    ROW(SAHPI_IDR_FIELDTYPE_PRODUCT_NAME, type_id::idrFieldType),
    ROW(SAHPI_IDR_FIELDTYPE_PART_NUMBER, type_id::idrFieldType),
    ROW(SAHPI_IDR_FIELDTYPE_ASSET_TAG, type_id::idrFieldType),
    ROW(SAHPI_IDR_FIELDTYPE_CUSTOM, type_id::idrFieldType),

    // SaHpiWatchdogNumT
    ROW(SAHPI_DEFAULT_WATCHDOG_NUM, type_id::watchdogNum),

    // SaHpiWatchdogActionT
    ROW(SAHPI_WA_POWER_CYCLE, type_id::watchdogAction),
    ROW(SAHPI_WA_RESET, type_id::watchdogAction),
    ROW(SAHPI_WA_NO_ACTION, type_id::watchdogAction),
    ROW(SAHPI_WA_POWER_DOWN, type_id::watchdogAction),

    // SaHpiWatchdogActionEventT
    ROW(SAHPI_WAE_NO_ACTION, type_id::watchdogActionEvent),
    ROW(SAHPI_WAE_POWER_CYCLE, type_id::watchdogActionEvent),
    ROW(SAHPI_WAE_POWER_DOWN, type_id::watchdogActionEvent),
    ROW(SAHPI_WAE_TIMER_INT, type_id::watchdogActionEvent),
    ROW(SAHPI_WAE_RESET, type_id::watchdogActionEvent),

    // SaHpiWatchdogPretimerInterruptT
    ROW(SAHPI_WPI_OEM, type_id::watchdogPretimerInterrupt),
    ROW(SAHPI_WPI_MESSAGE_INTERRUPT, type_id::watchdogPretimerInterrupt),
    ROW(SAHPI_WPI_NONE, type_id::watchdogPretimerInterrupt),
    ROW(SAHPI_WPI_SMI, type_id::watchdogPretimerInterrupt),
    ROW(SAHPI_WPI_NMI, type_id::watchdogPretimerInterrupt),

    // SaHpiWatchdogTimerUseT
    ROW(SAHPI_WTU_UNSPECIFIED, type_id::watchdogTimerUse),
    ROW(SAHPI_WTU_SMS_OS, type_id::watchdogTimerUse),
    ROW(SAHPI_WTU_OS_LOAD, type_id::watchdogTimerUse),
    ROW(SAHPI_WTU_BIOS_POST, type_id::watchdogTimerUse),
    ROW(SAHPI_WTU_NONE, type_id::watchdogTimerUse),
    ROW(SAHPI_WTU_BIOS_FRB2, type_id::watchdogTimerUse),
    ROW(SAHPI_WTU_OEM, type_id::watchdogTimerUse),

    // SaHpiWatchdogExpFlagsT
    ROW(SAHPI_WATCHDOG_EXP_BIOS_FRB2, type_id::watchdogExpFlags),
    ROW(SAHPI_WATCHDOG_EXP_BIOS_POST, type_id::watchdogExpFlags),
    ROW(SAHPI_WATCHDOG_EXP_OS_LOAD, type_id::watchdogExpFlags),
    ROW(SAHPI_WATCHDOG_EXP_SMS_OS, type_id::watchdogExpFlags),
    ROW(SAHPI_WATCHDOG_EXP_OEM, type_id::watchdogExpFlags),

    // SaHpiHsIndicatorStateT
    ROW(SAHPI_HS_INDICATOR_OFF, type_id::hsIndicatorState),
    ROW(SAHPI_HS_INDICATOR_ON, type_id::hsIndicatorState),

    // SaHpiHsActionT
    ROW(SAHPI_HS_ACTION_INSERTION, type_id::hsAction),
    ROW(SAHPI_HS_ACTION_EXTRACTION, type_id::hsAction),

    // SaHpiHsStateT
    ROW(SAHPI_HS_STATE_EXTRACTION_PENDING, type_id::hsState),
    ROW(SAHPI_HS_STATE_INACTIVE, type_id::hsState),
    ROW(SAHPI_HS_STATE_NOT_PRESENT, type_id::hsState),
    ROW(SAHPI_HS_STATE_INSERTION_PENDING, type_id::hsState),
    ROW(SAHPI_HS_STATE_ACTIVE, type_id::hsState),

    // SaHpiSeverityT
    ROW(SAHPI_ALL_SEVERITIES, type_id::severity),
    ROW(SAHPI_MAJOR, type_id::severity),
    ROW(SAHPI_MINOR, type_id::severity),
    ROW(SAHPI_OK, type_id::severity),
    ROW(SAHPI_INFORMATIONAL, type_id::severity),
    ROW(SAHPI_DEBUG, type_id::severity),
    ROW(SAHPI_CRITICAL, type_id::severity),

    // SaHpiResourceEventTypeT
    ROW(SAHPI_RESE_RESOURCE_ADDED, type_id::resourceEventType),
    ROW(SAHPI_RESE_RESOURCE_RESTORED, type_id::resourceEventType),
    ROW(SAHPI_RESE_RESOURCE_FAILURE, type_id::resourceEventType),

    // SaHpiDomainEventTypeT
    ROW(SAHPI_DOMAIN_REF_REMOVED, type_id::domainEventType),
    ROW(SAHPI_DOMAIN_REF_ADDED, type_id::domainEventType),

    // SaHpiSensorOptionalDataT
    ROW(SAHPI_SOD_TRIGGER_READING, type_id::sensorOptionalData),
    ROW(SAHPI_SOD_TRIGGER_THRESHOLD, type_id::sensorOptionalData),
    ROW(SAHPI_SOD_OEM, type_id::sensorOptionalData),
    ROW(SAHPI_SOD_PREVIOUS_STATE, type_id::sensorOptionalData),
    ROW(SAHPI_SOD_CURRENT_STATE, type_id::sensorOptionalData),
    ROW(SAHPI_SOD_SENSOR_SPECIFIC, type_id::sensorOptionalData),

    // SaHpiSensorEnableOptDataT
    ROW(SAHPI_SEOD_CURRENT_STATE, type_id::sensorEnableOptData),

    // SaHpiSwEventTypeT
    ROW(SAHPI_HPIE_OTHER, type_id::swEventType),
    ROW(SAHPI_HPIE_AUDIT, type_id::swEventType),
    ROW(SAHPI_HPIE_STARTUP, type_id::swEventType),

    // SaHpiEventTypeT
    ROW(SAHPI_ET_DOMAIN, type_id::eventType),
    ROW(SAHPI_ET_WATCHDOG, type_id::eventType),
    ROW(SAHPI_ET_USER, type_id::eventType),
    ROW(SAHPI_ET_HPI_SW, type_id::eventType),
    ROW(SAHPI_ET_OEM, type_id::eventType),
    ROW(SAHPI_ET_HOTSWAP, type_id::eventType),
    ROW(SAHPI_ET_SENSOR_ENABLE_CHANGE, type_id::eventType),
    ROW(SAHPI_ET_SENSOR, type_id::eventType),
    ROW(SAHPI_ET_RESOURCE, type_id::eventType),

    // SaHpiEvtQueueStatusT
    ROW(SAHPI_EVT_QUEUE_OVERFLOW, type_id::evtQueueStatus),

    // SaHpiStatusCondTypeT
    ROW(SAHPI_STATUS_COND_TYPE_USER, type_id::statusCondType),
    ROW(SAHPI_STATUS_COND_TYPE_RESOURCE, type_id::statusCondType),
    ROW(SAHPI_STATUS_COND_TYPE_OEM, type_id::statusCondType),
    ROW(SAHPI_STATUS_COND_TYPE_SENSOR, type_id::statusCondType),

    // SaHpiAnnunciatorModeT
    ROW(SAHPI_ANNUNCIATOR_MODE_AUTO, type_id::annunciatorMode),
    ROW(SAHPI_ANNUNCIATOR_MODE_SHARED, type_id::annunciatorMode),
    ROW(SAHPI_ANNUNCIATOR_MODE_USER, type_id::annunciatorMode),

    // SaHpiAnnunciatorTypeT
    ROW(SAHPI_ANNUNCIATOR_TYPE_LCD_DISPLAY, type_id::annunciatorType),
    ROW(SAHPI_ANNUNCIATOR_TYPE_COMPOSITE, type_id::annunciatorType),
    ROW(SAHPI_ANNUNCIATOR_TYPE_MESSAGE, type_id::annunciatorType),
    ROW(SAHPI_ANNUNCIATOR_TYPE_AUDIBLE, type_id::annunciatorType),
    ROW(SAHPI_ANNUNCIATOR_TYPE_OEM, type_id::annunciatorType),
    ROW(SAHPI_ANNUNCIATOR_TYPE_DRY_CONTACT_CLOSURE, type_id::annunciatorType),
    ROW(SAHPI_ANNUNCIATOR_TYPE_LED, type_id::annunciatorType),

    // SaHpiRdrTypeT
    ROW(SAHPI_SENSOR_RDR, type_id::rdrType),
    ROW(SAHPI_INVENTORY_RDR, type_id::rdrType),
    ROW(SAHPI_WATCHDOG_RDR, type_id::rdrType),
    ROW(SAHPI_NO_RECORD, type_id::rdrType),
    ROW(SAHPI_ANNUNCIATOR_RDR, type_id::rdrType),
    ROW(SAHPI_CTRL_RDR, type_id::rdrType),

    // SaHpiParmActionT
    ROW(SAHPI_RESTORE_PARM, type_id::parmAction),
    ROW(SAHPI_SAVE_PARM, type_id::parmAction),
    ROW(SAHPI_DEFAULT_PARM, type_id::parmAction),

    // SaHpiResetActionT
    ROW(SAHPI_WARM_RESET, type_id::resetAction),
    ROW(SAHPI_RESET_DEASSERT, type_id::resetAction),
    ROW(SAHPI_COLD_RESET, type_id::resetAction),
    ROW(SAHPI_RESET_ASSERT, type_id::resetAction),

    // SaHpiPowerStateT
    ROW(SAHPI_POWER_CYCLE, type_id::powerState),
    ROW(SAHPI_POWER_ON, type_id::powerState),
    ROW(SAHPI_POWER_OFF, type_id::powerState),

    // SaHpiCapabilitiesT
    ROW(SAHPI_CAPABILITY_RESOURCE, type_id::capabilities),
    ROW(SAHPI_CAPABILITY_EVT_DEASSERTS, type_id::capabilities),
    ROW(SAHPI_CAPABILITY_AGGREGATE_STATUS, type_id::capabilities),
    ROW(SAHPI_CAPABILITY_CONFIGURATION, type_id::capabilities),
    ROW(SAHPI_CAPABILITY_MANAGED_HOTSWAP, type_id::capabilities),
    ROW(SAHPI_CAPABILITY_WATCHDOG, type_id::capabilities),
    ROW(SAHPI_CAPABILITY_CONTROL, type_id::capabilities),
    ROW(SAHPI_CAPABILITY_FRU, type_id::capabilities),
    ROW(SAHPI_CAPABILITY_ANNUNCIATOR, type_id::capabilities),
    ROW(SAHPI_CAPABILITY_POWER, type_id::capabilities),
    ROW(SAHPI_CAPABILITY_RESET, type_id::capabilities),
    ROW(SAHPI_CAPABILITY_INVENTORY_DATA, type_id::capabilities),
    ROW(SAHPI_CAPABILITY_EVENT_LOG, type_id::capabilities),
    ROW(SAHPI_CAPABILITY_RDR, type_id::capabilities),
    ROW(SAHPI_CAPABILITY_SENSOR, type_id::capabilities),

    // SaHpiHsCapabilitiesT
    ROW(SAHPI_HS_CAPABILITY_AUTOEXTRACT_READ_ONLY, type_id::hsCapabilities),
    ROW(SAHPI_HS_CAPABILITY_INDICATOR_SUPPORTED, type_id::hsCapabilities),

    // SaHpiDomainCapabilitiesT
    ROW(SAHPI_DOMAIN_CAP_AUTOINSERT_READ_ONLY, type_id::domainCapabilities),

    // SaHpiEventLogOverflowActionT
    ROW(SAHPI_EL_OVERFLOW_OVERWRITE, type_id::eventLogOverflowAction),
    ROW(SAHPI_EL_OVERFLOW_DROP, type_id::eventLogOverflowAction),

    // SaHpiEventLogEntryIdT
    ROW(SAHPI_OLDEST_ENTRY, type_id::eventLogEntryId),
    ROW(SAHPI_NEWEST_ENTRY, type_id::eventLogEntryId),
    ROW(SAHPI_NO_MORE_ENTRIES, type_id::eventLogEntryId),

    {nullptr, 0, 0},
};

#undef ROW
// clang-format on

static_assert(zuSaHpiConstants[ZUSAHPI_CONSTANTS - 1].name != nullptr);
static_assert(zuSaHpiConstants[ZUSAHPI_CONSTANTS].name == nullptr);
