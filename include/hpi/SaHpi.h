/*
 * Types and constants of the HPI standard (Service Availability Forum Hardware Platform
 * Interface, release B.01.01) as far as this system uses them.
 *
 * A platform that has a SaHpi.h of its own uses that one in this one's place: zuSaHpi_layout.h says
 * how, and asserts the layout that the library needs. This one takes the standard's own include
 * guard, and lies in a folder of its own, which no search path leads to: <SaHpi.h> is never it.
 *
 * Invariants: every 64-bit type is aligned to 8 bytes on every ABI, every enumeration is an
 * unsigned 32-bit value, and no record has a different layout on i386 and x86-64. Records arrive
 * from files and from other processes, so an enumeration may hold any 32-bit value.
 */
#ifndef __SAHPI_H
#define __SAHPI_H

#ifdef __cplusplus
extern "C" {
#endif

/* C++11 fixes the width of an enumeration, so that reading an unknown value is defined there. */
#if defined(__cplusplus) && __cplusplus >= 201103L
#define SAHPI_ENUM_U32 : unsigned int
#else
#define SAHPI_ENUM_U32
#endif

/* ---- Basic types ---------------------------------------------------------------------------- */

typedef unsigned char SaHpiUint8T;
typedef unsigned short SaHpiUint16T;
typedef unsigned int SaHpiUint32T;
typedef signed char SaHpiInt8T;
typedef short SaHpiInt16T;
typedef int SaHpiInt32T;

/* i386 alone would put these on 4 bytes. C89 and C++98 take long long for an extension. */
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wlong-long"
typedef unsigned long long SaHpiUint64T __attribute__((aligned(8)));
typedef long long SaHpiInt64T __attribute__((aligned(8)));
#pragma GCC diagnostic pop
typedef double SaHpiFloat64T __attribute__((aligned(8)));

/* False is 0; any other value is true. */
typedef SaHpiUint8T SaHpiBoolT;
#define SAHPI_FALSE ((SaHpiBoolT)0)
#define SAHPI_TRUE ((SaHpiBoolT)1)

/* An IANA enterprise number. */
typedef SaHpiUint32T SaHpiManufacturerIdT;
#define SAHPI_MANUFACTURER_ID_UNSPECIFIED ((SaHpiManufacturerIdT)0)

typedef SaHpiUint32T SaHpiVersionT;
#define SAHPI_INTERFACE_VERSION ((SaHpiVersionT)0x20101)

/* ---- Return codes --------------------------------------------------------------------------- */

typedef SaHpiInt32T SaErrorT;
#define SA_OK ((SaErrorT)0)
#define SA_ERR_HPI_ERROR ((SaErrorT)(-1001))
#define SA_ERR_HPI_UNSUPPORTED_API ((SaErrorT)(-1002))
#define SA_ERR_HPI_BUSY ((SaErrorT)(-1003))
#define SA_ERR_HPI_INTERNAL_ERROR ((SaErrorT)(-1004))
#define SA_ERR_HPI_INVALID_CMD ((SaErrorT)(-1005))
#define SA_ERR_HPI_TIMEOUT ((SaErrorT)(-1006))
#define SA_ERR_HPI_OUT_OF_SPACE ((SaErrorT)(-1007))
#define SA_ERR_HPI_OUT_OF_MEMORY ((SaErrorT)(-1008))
#define SA_ERR_HPI_INVALID_PARAMS ((SaErrorT)(-1009))
#define SA_ERR_HPI_INVALID_DATA ((SaErrorT)(-1010))
#define SA_ERR_HPI_NOT_PRESENT ((SaErrorT)(-1011))
#define SA_ERR_HPI_NO_RESPONSE ((SaErrorT)(-1012))
#define SA_ERR_HPI_DUPLICATE ((SaErrorT)(-1013))
#define SA_ERR_HPI_INVALID_SESSION ((SaErrorT)(-1014))
#define SA_ERR_HPI_INVALID_DOMAIN ((SaErrorT)(-1015))
#define SA_ERR_HPI_INVALID_RESOURCE ((SaErrorT)(-1016))
#define SA_ERR_HPI_INVALID_REQUEST ((SaErrorT)(-1017))
#define SA_ERR_HPI_ENTITY_NOT_PRESENT ((SaErrorT)(-1018))
#define SA_ERR_HPI_READ_ONLY ((SaErrorT)(-1019))
#define SA_ERR_HPI_CAPABILITY ((SaErrorT)(-1020))
#define SA_ERR_HPI_UNKNOWN ((SaErrorT)(-1021))

/* ---- Identifiers ---------------------------------------------------------------------------- */

typedef SaHpiUint32T SaHpiDomainIdT;
#define SAHPI_UNSPECIFIED_DOMAIN_ID ((SaHpiDomainIdT)0xFFFFFFFFU)

typedef SaHpiUint32T SaHpiResourceIdT;
#define SAHPI_UNSPECIFIED_RESOURCE_ID ((SaHpiResourceIdT)0xFFFFFFFFU)

typedef SaHpiUint32T SaHpiEntryIdT;
#define SAHPI_FIRST_ENTRY ((SaHpiEntryIdT)0)
#define SAHPI_LAST_ENTRY ((SaHpiEntryIdT)0xFFFFFFFFU)

/* ---- Time ----------------------------------------------------------------------------------- */

/*
 * Nanoseconds. A value up to SAHPI_TIME_MAX_RELATIVE counts from an arbitrary moment (as a rule the
 * start of the system), a greater one from 1970-01-01T00:00:00Z.
 */
typedef SaHpiInt64T SaHpiTimeT;
#define SAHPI_TIME_UNSPECIFIED ((SaHpiTimeT)0x8000000000000000ULL)
#define SAHPI_TIME_MAX_RELATIVE ((SaHpiTimeT)0x0C00000000000000LL)

/* Nanoseconds. */
typedef SaHpiInt64T SaHpiTimeoutT;
#define SAHPI_TIMEOUT_IMMEDIATE ((SaHpiTimeoutT)0)
#define SAHPI_TIMEOUT_BLOCK ((SaHpiTimeoutT)(-1))

/* ---- Text ----------------------------------------------------------------------------------- */

typedef enum SAHPI_ENUM_U32 {
    SAHPI_LANG_UNDEF = 0,
    SAHPI_LANG_AFAR = 1,
    SAHPI_LANG_ABKHAZIAN = 2,
    SAHPI_LANG_AFRIKAANS = 3,
    SAHPI_LANG_AMHARIC = 4,
    SAHPI_LANG_ARABIC = 5,
    SAHPI_LANG_ASSAMESE = 6,
    SAHPI_LANG_AYMARA = 7,
    SAHPI_LANG_AZERBAIJANI = 8,
    SAHPI_LANG_BASHKIR = 9,
    SAHPI_LANG_BYELORUSSIAN = 0xA,
    SAHPI_LANG_BULGARIAN = 0xB,
    SAHPI_LANG_BIHARI = 0xC,
    SAHPI_LANG_BISLAMA = 0xD,
    SAHPI_LANG_BENGALI = 0xE,
    SAHPI_LANG_TIBETAN = 0xF,
    SAHPI_LANG_BRETON = 0x10,
    SAHPI_LANG_CATALAN = 0x11,
    SAHPI_LANG_CORSICAN = 0x12,
    SAHPI_LANG_CZECH = 0x13,
    SAHPI_LANG_WELSH = 0x14,
    SAHPI_LANG_DANISH = 0x15,
    SAHPI_LANG_GERMAN = 0x16,
    SAHPI_LANG_BHUTANI = 0x17,
    SAHPI_LANG_GREEK = 0x18,
    SAHPI_LANG_ENGLISH = 0x19,
    SAHPI_LANG_ESPERANTO = 0x1A,
    SAHPI_LANG_SPANISH = 0x1B,
    SAHPI_LANG_ESTONIAN = 0x1C,
    SAHPI_LANG_BASQUE = 0x1D,
    SAHPI_LANG_PERSIAN = 0x1E,
    SAHPI_LANG_FINNISH = 0x1F,
    SAHPI_LANG_FIJI = 0x20,
    SAHPI_LANG_FAEROESE = 0x21,
    SAHPI_LANG_FRENCH = 0x22,
    SAHPI_LANG_FRISIAN = 0x23,
    SAHPI_LANG_IRISH = 0x24,
    SAHPI_LANG_SCOTSGAELIC = 0x25,
    SAHPI_LANG_GALICIAN = 0x26,
    SAHPI_LANG_GUARANI = 0x27,
    SAHPI_LANG_GUJARATI = 0x28,
    SAHPI_LANG_HAUSA = 0x29,
    SAHPI_LANG_HINDI = 0x2A,
    SAHPI_LANG_CROATIAN = 0x2B,
    SAHPI_LANG_HUNGARIAN = 0x2C,
    SAHPI_LANG_ARMENIAN = 0x2D,
    SAHPI_LANG_INTERLINGUA = 0x2E,
    SAHPI_LANG_INTERLINGUE = 0x2F,
    SAHPI_LANG_INUPIAK = 0x30,
    SAHPI_LANG_INDONESIAN = 0x31,
    SAHPI_LANG_ICELANDIC = 0x32,
    SAHPI_LANG_ITALIAN = 0x33,
    SAHPI_LANG_HEBREW = 0x34,
    SAHPI_LANG_JAPANESE = 0x35,
    SAHPI_LANG_YIDDISH = 0x36,
    SAHPI_LANG_JAVANESE = 0x37,
    SAHPI_LANG_GEORGIAN = 0x38,
    SAHPI_LANG_KAZAKH = 0x39,
    SAHPI_LANG_GREENLANDIC = 0x3A,
    SAHPI_LANG_CAMBODIAN = 0x3B,
    SAHPI_LANG_KANNADA = 0x3C,
    SAHPI_LANG_KOREAN = 0x3D,
    SAHPI_LANG_KASHMIRI = 0x3E,
    SAHPI_LANG_KURDISH = 0x3F,
    SAHPI_LANG_KIRGHIZ = 0x40,
    SAHPI_LANG_LATIN = 0x41,
    SAHPI_LANG_LINGALA = 0x42,
    SAHPI_LANG_LAOTHIAN = 0x43,
    SAHPI_LANG_LITHUANIAN = 0x44,
    SAHPI_LANG_LATVIANLETTISH = 0x45,
    SAHPI_LANG_MALAGASY = 0x46,
    SAHPI_LANG_MAORI = 0x47,
    SAHPI_LANG_MACEDONIAN = 0x48,
    SAHPI_LANG_MALAYALAM = 0x49,
    SAHPI_LANG_MONGOLIAN = 0x4A,
    SAHPI_LANG_MOLDAVIAN = 0x4B,
    SAHPI_LANG_MARATHI = 0x4C,
    SAHPI_LANG_MALAY = 0x4D,
    SAHPI_LANG_MALTESE = 0x4E,
    SAHPI_LANG_BURMESE = 0x4F,
    SAHPI_LANG_NAURU = 0x50,
    SAHPI_LANG_NEPALI = 0x51,
    SAHPI_LANG_DUTCH = 0x52,
    SAHPI_LANG_NORWEGIAN = 0x53,
    SAHPI_LANG_OCCITAN = 0x54,
    SAHPI_LANG_AFANOROMO = 0x55,
    SAHPI_LANG_ORIYA = 0x56,
    SAHPI_LANG_PUNJABI = 0x57,
    SAHPI_LANG_POLISH = 0x58,
    SAHPI_LANG_PASHTOPUSHTO = 0x59,
    SAHPI_LANG_PORTUGUESE = 0x5A,
    SAHPI_LANG_QUECHUA = 0x5B,
    SAHPI_LANG_RHAETOROMANCE = 0x5C,
    SAHPI_LANG_KIRUNDI = 0x5D,
    SAHPI_LANG_ROMANIAN = 0x5E,
    SAHPI_LANG_RUSSIAN = 0x5F,
    SAHPI_LANG_KINYARWANDA = 0x60,
    SAHPI_LANG_SANSKRIT = 0x61,
    SAHPI_LANG_SINDHI = 0x62,
    SAHPI_LANG_SANGRO = 0x63,
    SAHPI_LANG_SERBOCROATIAN = 0x64,
    SAHPI_LANG_SINGHALESE = 0x65,
    SAHPI_LANG_SLOVAK = 0x66,
    SAHPI_LANG_SLOVENIAN = 0x67,
    SAHPI_LANG_SAMOAN = 0x68,
    SAHPI_LANG_SHONA = 0x69,
    SAHPI_LANG_SOMALI = 0x6A,
    SAHPI_LANG_ALBANIAN = 0x6B,
    SAHPI_LANG_SERBIAN = 0x6C,
    SAHPI_LANG_SISWATI = 0x6D,
    SAHPI_LANG_SESOTHO = 0x6E,
    SAHPI_LANG_SUDANESE = 0x6F,
    SAHPI_LANG_SWEDISH = 0x70,
    SAHPI_LANG_SWAHILI = 0x71,
    SAHPI_LANG_TAMIL = 0x72,
    SAHPI_LANG_TELUGU = 0x73,
    SAHPI_LANG_TAJIK = 0x74,
    SAHPI_LANG_THAI = 0x75,
    SAHPI_LANG_TIGRINYA = 0x76,
    SAHPI_LANG_TURKMEN = 0x77,
    SAHPI_LANG_TAGALOG = 0x78,
    SAHPI_LANG_SETSWANA = 0x79,
    SAHPI_LANG_TONGA = 0x7A,
    SAHPI_LANG_TURKISH = 0x7B,
    SAHPI_LANG_TSONGA = 0x7C,
    SAHPI_LANG_TATAR = 0x7D,
    SAHPI_LANG_TWI = 0x7E,
    SAHPI_LANG_UKRAINIAN = 0x7F,
    SAHPI_LANG_URDU = 0x80,
    SAHPI_LANG_UZBEK = 0x81,
    SAHPI_LANG_VIETNAMESE = 0x82,
    SAHPI_LANG_VOLAPUK = 0x83,
    SAHPI_LANG_WOLOF = 0x84,
    SAHPI_LANG_XHOSA = 0x85,
    SAHPI_LANG_YORUBA = 0x86,
    SAHPI_LANG_CHINESE = 0x87,
    SAHPI_LANG_ZULU = 0x88
} SaHpiLanguageT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_TL_TYPE_UNICODE = 0,
    SAHPI_TL_TYPE_BCDPLUS = 1,
    SAHPI_TL_TYPE_ASCII6 = 2,
    SAHPI_TL_TYPE_TEXT = 3,
    SAHPI_TL_TYPE_BINARY = 4
} SaHpiTextTypeT;

#define SAHPI_MAX_TEXT_BUFFER_LENGTH 255

typedef struct {
    SaHpiTextTypeT DataType;
    SaHpiLanguageT Language;
    SaHpiUint8T DataLength; /* bytes of Data in use */
    SaHpiUint8T Data[SAHPI_MAX_TEXT_BUFFER_LENGTH];
} SaHpiTextBufferT;

/* ---- Entities ------------------------------------------------------------------------------- */

typedef enum SAHPI_ENUM_U32 {
    SAHPI_ENT_UNSPECIFIED = 0,
    SAHPI_ENT_OTHER = 1,
    SAHPI_ENT_UNKNOWN = 2,
    SAHPI_ENT_PROCESSOR = 3,
    SAHPI_ENT_DISK_BAY = 4,
    SAHPI_ENT_PERIPHERAL_BAY = 5,
    SAHPI_ENT_SYS_MGMNT_MODULE = 6,
    SAHPI_ENT_SYSTEM_BOARD = 7,
    SAHPI_ENT_MEMORY_MODULE = 8,
    SAHPI_ENT_PROCESSOR_MODULE = 9,
    SAHPI_ENT_POWER_SUPPLY = 0xA,
    SAHPI_ENT_ADD_IN_CARD = 0xB,
    SAHPI_ENT_FRONT_PANEL_BOARD = 0xC,
    SAHPI_ENT_BACK_PANEL_BOARD = 0xD,
    SAHPI_ENT_POWER_SYSTEM_BOARD = 0xE,
    SAHPI_ENT_DRIVE_BACKPLANE = 0xF,
    SAHPI_ENT_SYS_EXPANSION_BOARD = 0x10,
    SAHPI_ENT_OTHER_SYSTEM_BOARD = 0x11,
    SAHPI_ENT_PROCESSOR_BOARD = 0x12,
    SAHPI_ENT_POWER_UNIT = 0x13,
    SAHPI_ENT_POWER_MODULE = 0x14,
    SAHPI_ENT_POWER_MGMNT = 0x15,
    SAHPI_ENT_CHASSIS_BACK_PANEL_BOARD = 0x16,
    SAHPI_ENT_SYSTEM_CHASSIS = 0x17,
    SAHPI_ENT_SUB_CHASSIS = 0x18,
    SAHPI_ENT_OTHER_CHASSIS_BOARD = 0x19,
    SAHPI_ENT_DISK_DRIVE_BAY = 0x1A,
    SAHPI_ENT_PERIPHERAL_BAY_2 = 0x1B,
    SAHPI_ENT_DEVICE_BAY = 0x1C,
    SAHPI_ENT_COOLING_DEVICE = 0x1D,
    SAHPI_ENT_COOLING_UNIT = 0x1E,
    SAHPI_ENT_INTERCONNECT = 0x1F,
    SAHPI_ENT_MEMORY_DEVICE = 0x20,
    SAHPI_ENT_SYS_MGMNT_SOFTWARE = 0x21,
    SAHPI_ENT_BIOS = 0x22,
    SAHPI_ENT_OPERATING_SYSTEM = 0x23,
    SAHPI_ENT_SYSTEM_BUS = 0x24,
    SAHPI_ENT_GROUP = 0x25,
    SAHPI_ENT_REMOTE = 0x26,
    SAHPI_ENT_EXTERNAL_ENVIRONMENT = 0x27,
    SAHPI_ENT_BATTERY = 0x28,
    SAHPI_ENT_CHASSIS_SPECIFIC = 0x90,
    SAHPI_ENT_BOARD_SET_SPECIFIC = 0xB0,
    SAHPI_ENT_OEM_SYSINT_SPECIFIC = 0xD0,
    SAHPI_ENT_ROOT = 0xFFFF,
    SAHPI_ENT_RACK = 0x10000,
    SAHPI_ENT_SUBRACK = 0x10001,
    SAHPI_ENT_COMPACTPCI_CHASSIS = 0x10002,
    SAHPI_ENT_ADVANCEDTCA_CHASSIS = 0x10003,
    SAHPI_ENT_RACK_MOUNTED_SERVER = 0x10004,
    SAHPI_ENT_SYSTEM_BLADE = 0x10005,
    SAHPI_ENT_SWITCH = 0x10006,
    SAHPI_ENT_SWITCH_BLADE = 0x10007,
    SAHPI_ENT_SBC_BLADE = 0x10008,
    SAHPI_ENT_IO_BLADE = 0x10009,
    SAHPI_ENT_DISK_BLADE = 0x1000A,
    SAHPI_ENT_DISK_DRIVE = 0x1000B,
    SAHPI_ENT_FAN = 0x1000C,
    SAHPI_ENT_POWER_DISTRIBUTION_UNIT = 0x1000D,
    SAHPI_ENT_SPEC_PROC_BLADE = 0x1000E,
    SAHPI_ENT_IO_SUBBOARD = 0x1000F,
    SAHPI_ENT_SBC_SUBBOARD = 0x10010,
    SAHPI_ENT_ALARM_MANAGER = 0x10011,
    SAHPI_ENT_SHELF_MANAGER = 0x10012,
    SAHPI_ENT_DISPLAY_PANEL = 0x10013,
    SAHPI_ENT_SUBBOARD_CARRIER_BLADE = 0x10014,
    SAHPI_ENT_PHYSICAL_SLOT = 0x10015
} SaHpiEntityTypeT;

typedef SaHpiUint32T SaHpiEntityLocationT;

typedef struct {
    SaHpiEntityTypeT EntityType;
    SaHpiEntityLocationT EntityLocation;
} SaHpiEntityT;

#define SAHPI_MAX_ENTITY_PATH 16

/* Ends at the first element of type SAHPI_ENT_ROOT, or after 16 elements. */
typedef struct {
    SaHpiEntityT Entry[SAHPI_MAX_ENTITY_PATH];
} SaHpiEntityPathT;

#define SAHPI_MAX_NAME_LENGTH 256

typedef struct {
    SaHpiUint16T Length;
    SaHpiUint8T Value[SAHPI_MAX_NAME_LENGTH];
} SaHpiNameT;

/* ---- Event categories and states ------------------------------------------------------------ */

typedef SaHpiUint8T SaHpiEventCategoryT;
#define SAHPI_EC_UNSPECIFIED ((SaHpiEventCategoryT)0)
#define SAHPI_EC_THRESHOLD ((SaHpiEventCategoryT)1)
#define SAHPI_EC_USAGE ((SaHpiEventCategoryT)2)
#define SAHPI_EC_STATE ((SaHpiEventCategoryT)3)
#define SAHPI_EC_PRED_FAIL ((SaHpiEventCategoryT)4)
#define SAHPI_EC_LIMIT ((SaHpiEventCategoryT)5)
#define SAHPI_EC_PERFORMANCE ((SaHpiEventCategoryT)6)
#define SAHPI_EC_SEVERITY ((SaHpiEventCategoryT)7)
#define SAHPI_EC_PRESENCE ((SaHpiEventCategoryT)8)
#define SAHPI_EC_ENABLE ((SaHpiEventCategoryT)9)
#define SAHPI_EC_AVAILABILITY ((SaHpiEventCategoryT)0xA)
#define SAHPI_EC_REDUNDANCY ((SaHpiEventCategoryT)0xB)
#define SAHPI_EC_SENSOR_SPECIFIC ((SaHpiEventCategoryT)0x7E)
#define SAHPI_EC_GENERIC ((SaHpiEventCategoryT)0x7F)

/* A mask; which bit means what depends on the event category. */
typedef SaHpiUint16T SaHpiEventStateT;

/* Every category, and SAHPI_EC_GENERIC in particular. */
#define SAHPI_ES_UNSPECIFIED ((SaHpiEventStateT)0x0000)
#define SAHPI_ES_STATE_00 ((SaHpiEventStateT)0x0001)
#define SAHPI_ES_STATE_01 ((SaHpiEventStateT)0x0002)
#define SAHPI_ES_STATE_02 ((SaHpiEventStateT)0x0004)
#define SAHPI_ES_STATE_03 ((SaHpiEventStateT)0x0008)
#define SAHPI_ES_STATE_04 ((SaHpiEventStateT)0x0010)
#define SAHPI_ES_STATE_05 ((SaHpiEventStateT)0x0020)
#define SAHPI_ES_STATE_06 ((SaHpiEventStateT)0x0040)
#define SAHPI_ES_STATE_07 ((SaHpiEventStateT)0x0080)
#define SAHPI_ES_STATE_08 ((SaHpiEventStateT)0x0100)
#define SAHPI_ES_STATE_09 ((SaHpiEventStateT)0x0200)
#define SAHPI_ES_STATE_10 ((SaHpiEventStateT)0x0400)
#define SAHPI_ES_STATE_11 ((SaHpiEventStateT)0x0800)
#define SAHPI_ES_STATE_12 ((SaHpiEventStateT)0x1000)
#define SAHPI_ES_STATE_13 ((SaHpiEventStateT)0x2000)
#define SAHPI_ES_STATE_14 ((SaHpiEventStateT)0x4000)
#define SAHPI_ALL_EVENT_STATES ((SaHpiEventStateT)0xFFFF)

/* SAHPI_EC_THRESHOLD */
#define SAHPI_ES_LOWER_MINOR ((SaHpiEventStateT)0x0001)
#define SAHPI_ES_LOWER_MAJOR ((SaHpiEventStateT)0x0002)
#define SAHPI_ES_LOWER_CRIT ((SaHpiEventStateT)0x0004)
#define SAHPI_ES_UPPER_MINOR ((SaHpiEventStateT)0x0008)
#define SAHPI_ES_UPPER_MAJOR ((SaHpiEventStateT)0x0010)
#define SAHPI_ES_UPPER_CRIT ((SaHpiEventStateT)0x0020)

/* SAHPI_EC_USAGE */
#define SAHPI_ES_IDLE ((SaHpiEventStateT)0x0001)
#define SAHPI_ES_ACTIVE ((SaHpiEventStateT)0x0002)
#define SAHPI_ES_BUSY ((SaHpiEventStateT)0x0004)

/* SAHPI_EC_STATE */
#define SAHPI_ES_STATE_DEASSERTED ((SaHpiEventStateT)0x0001)
#define SAHPI_ES_STATE_ASSERTED ((SaHpiEventStateT)0x0002)

/* SAHPI_EC_PRED_FAIL */
#define SAHPI_ES_PRED_FAILURE_DEASSERT ((SaHpiEventStateT)0x0001)
#define SAHPI_ES_PRED_FAILURE_ASSERT ((SaHpiEventStateT)0x0002)

/* SAHPI_EC_LIMIT */
#define SAHPI_ES_LIMIT_NOT_EXCEEDED ((SaHpiEventStateT)0x0001)
#define SAHPI_ES_LIMIT_EXCEEDED ((SaHpiEventStateT)0x0002)

/* SAHPI_EC_PERFORMANCE */
#define SAHPI_ES_PERFORMANCE_MET ((SaHpiEventStateT)0x0001)
#define SAHPI_ES_PERFORMANCE_LAGS ((SaHpiEventStateT)0x0002)

/* SAHPI_EC_SEVERITY */
#define SAHPI_ES_OK ((SaHpiEventStateT)0x0001)
#define SAHPI_ES_MINOR_FROM_OK ((SaHpiEventStateT)0x0002)
#define SAHPI_ES_MAJOR_FROM_LESS ((SaHpiEventStateT)0x0004)
#define SAHPI_ES_CRITICAL_FROM_LESS ((SaHpiEventStateT)0x0008)
#define SAHPI_ES_MINOR_FROM_MORE ((SaHpiEventStateT)0x0010)
#define SAHPI_ES_MAJOR_FROM_CRITICAL ((SaHpiEventStateT)0x0020)
#define SAHPI_ES_CRITICAL ((SaHpiEventStateT)0x0040)
#define SAHPI_ES_MONITOR ((SaHpiEventStateT)0x0080)
#define SAHPI_ES_INFORMATIONAL ((SaHpiEventStateT)0x0100)

/* SAHPI_EC_PRESENCE */
#define SAHPI_ES_ABSENT ((SaHpiEventStateT)0x0001)
#define SAHPI_ES_PRESENT ((SaHpiEventStateT)0x0002)

/* SAHPI_EC_ENABLE */
#define SAHPI_ES_DISABLED ((SaHpiEventStateT)0x0001)
#define SAHPI_ES_ENABLED ((SaHpiEventStateT)0x0002)

/* SAHPI_EC_AVAILABILITY */
#define SAHPI_ES_RUNNING ((SaHpiEventStateT)0x0001)
#define SAHPI_ES_TEST ((SaHpiEventStateT)0x0002)
#define SAHPI_ES_POWER_OFF ((SaHpiEventStateT)0x0004)
#define SAHPI_ES_ON_LINE ((SaHpiEventStateT)0x0008)
#define SAHPI_ES_OFF_LINE ((SaHpiEventStateT)0x0010)
#define SAHPI_ES_OFF_DUTY ((SaHpiEventStateT)0x0020)
#define SAHPI_ES_DEGRADED ((SaHpiEventStateT)0x0040)
#define SAHPI_ES_POWER_SAVE ((SaHpiEventStateT)0x0080)
#define SAHPI_ES_INSTALL_ERROR ((SaHpiEventStateT)0x0100)

/* SAHPI_EC_REDUNDANCY */
#define SAHPI_ES_FULLY_REDUNDANT ((SaHpiEventStateT)0x0001)
#define SAHPI_ES_REDUNDANCY_LOST ((SaHpiEventStateT)0x0002)
#define SAHPI_ES_REDUNDANCY_DEGRADED ((SaHpiEventStateT)0x0004)
#define SAHPI_ES_REDUNDANCY_LOST_SUFFICIENT_RESOURCES ((SaHpiEventStateT)0x0008)
#define SAHPI_ES_NON_REDUNDANT_SUFFICIENT_RESOURCES ((SaHpiEventStateT)0x0010)
#define SAHPI_ES_NON_REDUNDANT_INSUFFICIENT_RESOURCES ((SaHpiEventStateT)0x0020)
#define SAHPI_ES_REDUNDANCY_DEGRADED_FROM_FULL ((SaHpiEventStateT)0x0040)
#define SAHPI_ES_REDUNDANCY_DEGRADED_FROM_NON ((SaHpiEventStateT)0x0080)

/* ---- Sensors -------------------------------------------------------------------------------- */

typedef SaHpiUint32T SaHpiSensorNumT;
#define SAHPI_STANDARD_SENSOR_MIN ((SaHpiSensorNumT)0x100)
#define SAHPI_STANDARD_SENSOR_MAX ((SaHpiSensorNumT)0x1FF)
#define SAHPI_DEFAGSENS_OPER ((SaHpiSensorNumT)0x100)
#define SAHPI_DEFAGSENS_PWR ((SaHpiSensorNumT)0x101)
#define SAHPI_DEFAGSENS_TEMP ((SaHpiSensorNumT)0x102)
#define SAHPI_DEFAGSENS_MIN ((SaHpiSensorNumT)0x100)
#define SAHPI_DEFAGSENS_MAX ((SaHpiSensorNumT)0x10F)

typedef enum SAHPI_ENUM_U32 {
    SAHPI_TEMPERATURE = 1,
    SAHPI_VOLTAGE = 2,
    SAHPI_CURRENT = 3,
    SAHPI_FAN = 4,
    SAHPI_PHYSICAL_SECURITY = 5,
    SAHPI_PLATFORM_VIOLATION = 6,
    SAHPI_PROCESSOR = 7,
    SAHPI_POWER_SUPPLY = 8,
    SAHPI_POWER_UNIT = 9,
    SAHPI_COOLING_DEVICE = 0xA,
    SAHPI_OTHER_UNITS_BASED_SENSOR = 0xB,
    SAHPI_MEMORY = 0xC,
    SAHPI_DRIVE_SLOT = 0xD,
    SAHPI_POST_MEMORY_RESIZE = 0xE,
    SAHPI_SYSTEM_FW_PROGRESS = 0xF,
    SAHPI_EVENT_LOGGING_DISABLED = 0x10,
    SAHPI_RESERVED1 = 0x11,
    SAHPI_SYSTEM_EVENT = 0x12,
    SAHPI_CRITICAL_INTERRUPT = 0x13,
    SAHPI_BUTTON = 0x14,
    SAHPI_MODULE_BOARD = 0x15,
    SAHPI_MICROCONTROLLER_COPROCESSOR = 0x16,
    SAHPI_ADDIN_CARD = 0x17,
    SAHPI_CHASSIS = 0x18,
    SAHPI_CHIP_SET = 0x19,
    SAHPI_OTHER_FRU = 0x1A,
    SAHPI_CABLE_INTERCONNECT = 0x1B,
    SAHPI_TERMINATOR = 0x1C,
    SAHPI_SYSTEM_BOOT_INITIATED = 0x1D,
    SAHPI_BOOT_ERROR = 0x1E,
    SAHPI_OS_BOOT = 0x1F,
    SAHPI_OS_CRITICAL_STOP = 0x20,
    SAHPI_SLOT_CONNECTOR = 0x21,
    SAHPI_SYSTEM_ACPI_POWER_STATE = 0x22,
    SAHPI_RESERVED2 = 0x23,
    SAHPI_PLATFORM_ALERT = 0x24,
    SAHPI_ENTITY_PRESENCE = 0x25,
    SAHPI_MONITOR_ASIC_IC = 0x26,
    SAHPI_LAN = 0x27,
    SAHPI_MANAGEMENT_SUBSYSTEM_HEALTH = 0x28,
    SAHPI_BATTERY = 0x29,
    SAHPI_OPERATIONAL = 0xA0,
    SAHPI_OEM_SENSOR = 0xC0
} SaHpiSensorTypeT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_SENSOR_READING_TYPE_INT64 = 0,
    SAHPI_SENSOR_READING_TYPE_UINT64 = 1,
    SAHPI_SENSOR_READING_TYPE_FLOAT64 = 2,
    SAHPI_SENSOR_READING_TYPE_BUFFER = 3
} SaHpiSensorReadingTypeT;

#define SAHPI_SENSOR_BUFFER_LENGTH 32

typedef union {
    SaHpiInt64T SensorInt64;
    SaHpiUint64T SensorUint64;
    SaHpiFloat64T SensorFloat64;
    SaHpiUint8T SensorBuffer[SAHPI_SENSOR_BUFFER_LENGTH];
} SaHpiSensorReadingUnionT;

typedef struct {
    SaHpiBoolT IsSupported;
    SaHpiSensorReadingTypeT Type;
    SaHpiSensorReadingUnionT Value;
} SaHpiSensorReadingT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_SENS_ADD_EVENTS_TO_MASKS = 0,
    SAHPI_SENS_REMOVE_EVENTS_FROM_MASKS = 1
} SaHpiSensorEventMaskActionT;

/* A mask of thresholds. */
typedef SaHpiUint8T SaHpiSensorThdMaskT;
#define SAHPI_STM_LOW_MINOR ((SaHpiSensorThdMaskT)1)
#define SAHPI_STM_LOW_MAJOR ((SaHpiSensorThdMaskT)2)
#define SAHPI_STM_LOW_CRIT ((SaHpiSensorThdMaskT)4)
#define SAHPI_STM_UP_MINOR ((SaHpiSensorThdMaskT)8)
#define SAHPI_STM_UP_MAJOR ((SaHpiSensorThdMaskT)0x10)
#define SAHPI_STM_UP_CRIT ((SaHpiSensorThdMaskT)0x20)
#define SAHPI_STM_UP_HYSTERESIS ((SaHpiSensorThdMaskT)0x40)
#define SAHPI_STM_LOW_HYSTERESIS ((SaHpiSensorThdMaskT)0x80)

/* A mask of the readings that a SaHpiSensorRangeT holds. */
typedef SaHpiUint8T SaHpiSensorRangeFlagsT;
#define SAHPI_SRF_MIN ((SaHpiSensorRangeFlagsT)0x10)
#define SAHPI_SRF_MAX ((SaHpiSensorRangeFlagsT)8)
#define SAHPI_SRF_NORMAL_MIN ((SaHpiSensorRangeFlagsT)4)
#define SAHPI_SRF_NORMAL_MAX ((SaHpiSensorRangeFlagsT)2)
#define SAHPI_SRF_NOMINAL ((SaHpiSensorRangeFlagsT)1)

typedef struct {
    SaHpiSensorRangeFlagsT Flags;
    SaHpiSensorReadingT Max;
    SaHpiSensorReadingT Min;
    SaHpiSensorReadingT Nominal;
    SaHpiSensorReadingT NormalMax;
    SaHpiSensorReadingT NormalMin;
} SaHpiSensorRangeT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_SU_UNSPECIFIED = 0,
    SAHPI_SU_DEGREES_C = 1,
    SAHPI_SU_DEGREES_F = 2,
    SAHPI_SU_DEGREES_K = 3,
    SAHPI_SU_VOLTS = 4,
    SAHPI_SU_AMPS = 5,
    SAHPI_SU_WATTS = 6,
    SAHPI_SU_JOULES = 7,
    SAHPI_SU_COULOMBS = 8,
    SAHPI_SU_VA = 9,
    SAHPI_SU_NITS = 0xA,
    SAHPI_SU_LUMEN = 0xB,
    SAHPI_SU_LUX = 0xC,
    SAHPI_SU_CANDELA = 0xD,
    SAHPI_SU_KPA = 0xE,
    SAHPI_SU_PSI = 0xF,
    SAHPI_SU_NEWTON = 0x10,
    SAHPI_SU_CFM = 0x11,
    SAHPI_SU_RPM = 0x12,
    SAHPI_SU_HZ = 0x13,
    SAHPI_SU_MICROSECOND = 0x14,
    SAHPI_SU_MILLISECOND = 0x15,
    SAHPI_SU_SECOND = 0x16,
    SAHPI_SU_MINUTE = 0x17,
    SAHPI_SU_HOUR = 0x18,
    SAHPI_SU_DAY = 0x19,
    SAHPI_SU_WEEK = 0x1A,
    SAHPI_SU_MIL = 0x1B,
    SAHPI_SU_INCHES = 0x1C,
    SAHPI_SU_FEET = 0x1D,
    SAHPI_SU_CU_IN = 0x1E,
    SAHPI_SU_CU_FEET = 0x1F,
    SAHPI_SU_MM = 0x20,
    SAHPI_SU_CM = 0x21,
    SAHPI_SU_M = 0x22,
    SAHPI_SU_CU_CM = 0x23,
    SAHPI_SU_CU_M = 0x24,
    SAHPI_SU_LITERS = 0x25,
    SAHPI_SU_FLUID_OUNCE = 0x26,
    SAHPI_SU_RADIANS = 0x27,
    SAHPI_SU_STERADIANS = 0x28,
    SAHPI_SU_REVOLUTIONS = 0x29,
    SAHPI_SU_CYCLES = 0x2A,
    SAHPI_SU_GRAVITIES = 0x2B,
    SAHPI_SU_OUNCE = 0x2C,
    SAHPI_SU_POUND = 0x2D,
    SAHPI_SU_FT_LB = 0x2E,
    SAHPI_SU_OZ_IN = 0x2F,
    SAHPI_SU_GAUSS = 0x30,
    SAHPI_SU_GILBERTS = 0x31,
    SAHPI_SU_HENRY = 0x32,
    SAHPI_SU_MILLIHENRY = 0x33,
    SAHPI_SU_FARAD = 0x34,
    SAHPI_SU_MICROFARAD = 0x35,
    SAHPI_SU_OHMS = 0x36,
    SAHPI_SU_SIEMENS = 0x37,
    SAHPI_SU_MOLE = 0x38,
    SAHPI_SU_BECQUEREL = 0x39,
    SAHPI_SU_PPM = 0x3A,
    SAHPI_SU_RESERVED = 0x3B,
    SAHPI_SU_DECIBELS = 0x3C,
    SAHPI_SU_DBA = 0x3D,
    SAHPI_SU_DBC = 0x3E,
    SAHPI_SU_GRAY = 0x3F,
    SAHPI_SU_SIEVERT = 0x40,
    SAHPI_SU_COLOR_TEMP_DEG_K = 0x41,
    SAHPI_SU_BIT = 0x42,
    SAHPI_SU_KILOBIT = 0x43,
    SAHPI_SU_MEGABIT = 0x44,
    SAHPI_SU_GIGABIT = 0x45,
    SAHPI_SU_BYTE = 0x46,
    SAHPI_SU_KILOBYTE = 0x47,
    SAHPI_SU_MEGABYTE = 0x48,
    SAHPI_SU_GIGABYTE = 0x49,
    SAHPI_SU_WORD = 0x4A,
    SAHPI_SU_DWORD = 0x4B,
    SAHPI_SU_QWORD = 0x4C,
    SAHPI_SU_LINE = 0x4D,
    SAHPI_SU_HIT = 0x4E,
    SAHPI_SU_MISS = 0x4F,
    SAHPI_SU_RETRY = 0x50,
    SAHPI_SU_RESET = 0x51,
    SAHPI_SU_OVERRUN = 0x52,
    SAHPI_SU_UNDERRUN = 0x53,
    SAHPI_SU_COLLISION = 0x54,
    SAHPI_SU_PACKETS = 0x55,
    SAHPI_SU_MESSAGES = 0x56,
    SAHPI_SU_CHARACTERS = 0x57,
    SAHPI_SU_ERRORS = 0x58,
    SAHPI_SU_CORRECTABLE_ERRORS = 0x59,
    SAHPI_SU_UNCORRECTABLE_ERRORS = 0x5A
} SaHpiSensorUnitsT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_SMUU_NONE = 0,
    SAHPI_SMUU_BASIC_OVER_MODIFIER = 1,
    SAHPI_SMUU_BASIC_TIMES_MODIFIER = 2
} SaHpiSensorModUnitUseT;

typedef struct {
    SaHpiBoolT IsSupported;
    SaHpiSensorReadingTypeT ReadingType;
    SaHpiSensorUnitsT BaseUnits;
    SaHpiSensorUnitsT ModifierUnits;
    SaHpiSensorModUnitUseT ModifierUse;
    SaHpiBoolT Percentage;
    SaHpiSensorRangeT Range;
    SaHpiFloat64T AccuracyFactor;
} SaHpiSensorDataFormatT;

typedef struct {
    SaHpiBoolT IsAccessible;
    SaHpiSensorThdMaskT ReadThold;
    SaHpiSensorThdMaskT WriteThold;
    SaHpiBoolT Nonlinear;
} SaHpiSensorThdDefnT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_SEC_PER_EVENT = 0,
    SAHPI_SEC_READ_ONLY_MASKS = 1,
    SAHPI_SEC_READ_ONLY = 2
} SaHpiSensorEventCtrlT;

typedef struct {
    SaHpiSensorNumT Num;
    SaHpiSensorTypeT Type;
    SaHpiEventCategoryT Category;
    SaHpiBoolT EnableCtrl;
    SaHpiSensorEventCtrlT EventCtrl;
    SaHpiEventStateT Events;
    SaHpiSensorDataFormatT DataFormat;
    SaHpiSensorThdDefnT ThresholdDefn;
    SaHpiUint32T Oem;
} SaHpiSensorRecT;

/* ---- Controls ------------------------------------------------------------------------------- */

typedef SaHpiUint32T SaHpiCtrlNumT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_CTRL_TYPE_DIGITAL = 0,
    SAHPI_CTRL_TYPE_DISCRETE = 1,
    SAHPI_CTRL_TYPE_ANALOG = 2,
    SAHPI_CTRL_TYPE_STREAM = 3,
    SAHPI_CTRL_TYPE_TEXT = 4,
    SAHPI_CTRL_TYPE_OEM = 0xC0
} SaHpiCtrlTypeT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_CTRL_STATE_OFF = 0,
    SAHPI_CTRL_STATE_ON = 1,
    SAHPI_CTRL_STATE_PULSE_OFF = 2,
    SAHPI_CTRL_STATE_PULSE_ON = 3
} SaHpiCtrlStateDigitalT;

typedef SaHpiUint32T SaHpiCtrlStateDiscreteT;
typedef SaHpiInt32T SaHpiCtrlStateAnalogT;

#define SAHPI_CTRL_MAX_STREAM_LENGTH 4

typedef struct {
    SaHpiBoolT Repeat;
    SaHpiUint32T StreamLength;
    SaHpiUint8T Stream[SAHPI_CTRL_MAX_STREAM_LENGTH];
} SaHpiCtrlStateStreamT;

typedef SaHpiUint8T SaHpiTxtLineNumT;
#define SAHPI_TLN_ALL_LINES ((SaHpiTxtLineNumT)0)

typedef struct {
    SaHpiTxtLineNumT Line;
    SaHpiTextBufferT Text;
} SaHpiCtrlStateTextT;

#define SAHPI_CTRL_MAX_OEM_BODY_LENGTH 255

typedef struct {
    SaHpiManufacturerIdT MId;
    SaHpiUint8T BodyLength;
    SaHpiUint8T Body[SAHPI_CTRL_MAX_OEM_BODY_LENGTH];
} SaHpiCtrlStateOemT;

typedef enum SAHPI_ENUM_U32 { SAHPI_CTRL_MODE_AUTO = 0, SAHPI_CTRL_MODE_MANUAL = 1 } SaHpiCtrlModeT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_CTRL_GENERIC = 0,
    SAHPI_CTRL_LED = 1,
    SAHPI_CTRL_FAN_SPEED = 2,
    SAHPI_CTRL_DRY_CONTACT_CLOSURE = 3,
    SAHPI_CTRL_POWER_SUPPLY_INHIBIT = 4,
    SAHPI_CTRL_AUDIBLE = 5,
    SAHPI_CTRL_FRONT_PANEL_LOCKOUT = 6,
    SAHPI_CTRL_POWER_INTERLOCK = 7,
    SAHPI_CTRL_POWER_STATE = 8,
    SAHPI_CTRL_LCD_DISPLAY = 9,
    SAHPI_CTRL_OEM = 0xA
} SaHpiCtrlOutputTypeT;

typedef struct {
    SaHpiCtrlStateDigitalT Default;
} SaHpiCtrlRecDigitalT;

typedef struct {
    SaHpiCtrlStateDiscreteT Default;
} SaHpiCtrlRecDiscreteT;

typedef struct {
    SaHpiCtrlStateAnalogT Min;
    SaHpiCtrlStateAnalogT Max;
    SaHpiCtrlStateAnalogT Default;
} SaHpiCtrlRecAnalogT;

typedef struct {
    SaHpiCtrlStateStreamT Default;
} SaHpiCtrlRecStreamT;

typedef struct {
    SaHpiUint8T MaxChars;
    SaHpiUint8T MaxLines;
    SaHpiLanguageT Language;
    SaHpiTextTypeT DataType;
    SaHpiCtrlStateTextT Default;
} SaHpiCtrlRecTextT;

#define SAHPI_CTRL_OEM_CONFIG_LENGTH 10

typedef struct {
    SaHpiManufacturerIdT MId;
    SaHpiUint8T ConfigData[SAHPI_CTRL_OEM_CONFIG_LENGTH];
    SaHpiCtrlStateOemT Default;
} SaHpiCtrlRecOemT;

typedef union {
    SaHpiCtrlRecDigitalT Digital;
    SaHpiCtrlRecDiscreteT Discrete;
    SaHpiCtrlRecAnalogT Analog;
    SaHpiCtrlRecStreamT Stream;
    SaHpiCtrlRecTextT Text;
    SaHpiCtrlRecOemT Oem;
} SaHpiCtrlRecUnionT;

typedef struct {
    SaHpiCtrlModeT Mode;
    SaHpiBoolT ReadOnly;
} SaHpiCtrlDefaultModeT;

typedef struct {
    SaHpiCtrlNumT Num;
    SaHpiCtrlOutputTypeT OutputType;
    SaHpiCtrlTypeT Type;
    SaHpiCtrlRecUnionT TypeUnion;
    SaHpiCtrlDefaultModeT DefaultMode;
    SaHpiBoolT WriteOnly;
    SaHpiUint32T Oem;
} SaHpiCtrlRecT;

/* ---- Inventory ------------------------------------------------------------------------------ */

typedef SaHpiUint32T SaHpiIdrIdT;
#define SAHPI_DEFAULT_INVENTORY_ID ((SaHpiIdrIdT)0)

typedef enum SAHPI_ENUM_U32 {
    SAHPI_IDR_AREATYPE_INTERNAL_USE = 0xB0,
    SAHPI_IDR_AREATYPE_CHASSIS_INFO = 0xB1,
    SAHPI_IDR_AREATYPE_BOARD_INFO = 0xB2,
    SAHPI_IDR_AREATYPE_PRODUCT_INFO = 0xB3,
    SAHPI_IDR_AREATYPE_OEM = 0xC0,
    SAHPI_IDR_AREATYPE_UNSPECIFIED = 0xFF
} SaHpiIdrAreaTypeT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_IDR_FIELDTYPE_CHASSIS_TYPE = 0,
    SAHPI_IDR_FIELDTYPE_MFG_DATETIME = 1,
    SAHPI_IDR_FIELDTYPE_MANUFACTURER = 2,
    SAHPI_IDR_FIELDTYPE_PRODUCT_NAME = 3,
    SAHPI_IDR_FIELDTYPE_PRODUCT_VERSION = 4,
    SAHPI_IDR_FIELDTYPE_SERIAL_NUMBER = 5,
    SAHPI_IDR_FIELDTYPE_PART_NUMBER = 6,
    SAHPI_IDR_FIELDTYPE_FILE_ID = 7,
    SAHPI_IDR_FIELDTYPE_ASSET_TAG = 8,
    SAHPI_IDR_FIELDTYPE_CUSTOM = 9,
    SAHPI_IDR_FIELDTYPE_UNSPECIFIED = 0xFF
} SaHpiIdrFieldTypeT;

typedef struct {
    SaHpiIdrIdT IdrId;
    SaHpiBoolT Persistent;
    SaHpiUint32T Oem;
} SaHpiInventoryRecT;

/* ---- Watchdogs ------------------------------------------------------------------------------ */

typedef SaHpiUint32T SaHpiWatchdogNumT;
#define SAHPI_DEFAULT_WATCHDOG_NUM ((SaHpiWatchdogNumT)0)

typedef enum SAHPI_ENUM_U32 {
    SAHPI_WA_NO_ACTION = 0,
    SAHPI_WA_RESET = 1,
    SAHPI_WA_POWER_DOWN = 2,
    SAHPI_WA_POWER_CYCLE = 3
} SaHpiWatchdogActionT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_WAE_NO_ACTION = 0,
    SAHPI_WAE_RESET = 1,
    SAHPI_WAE_POWER_DOWN = 2,
    SAHPI_WAE_POWER_CYCLE = 3,
    SAHPI_WAE_TIMER_INT = 8
} SaHpiWatchdogActionEventT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_WPI_NONE = 0,
    SAHPI_WPI_SMI = 1,
    SAHPI_WPI_NMI = 2,
    SAHPI_WPI_MESSAGE_INTERRUPT = 3,
    SAHPI_WPI_OEM = 0xF
} SaHpiWatchdogPretimerInterruptT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_WTU_NONE = 0,
    SAHPI_WTU_BIOS_FRB2 = 1,
    SAHPI_WTU_BIOS_POST = 2,
    SAHPI_WTU_OS_LOAD = 3,
    SAHPI_WTU_SMS_OS = 4,
    SAHPI_WTU_OEM = 5,
    SAHPI_WTU_UNSPECIFIED = 0xF
} SaHpiWatchdogTimerUseT;

/* A mask. */
typedef SaHpiUint8T SaHpiWatchdogExpFlagsT;
#define SAHPI_WATCHDOG_EXP_BIOS_FRB2 ((SaHpiWatchdogExpFlagsT)2)
#define SAHPI_WATCHDOG_EXP_BIOS_POST ((SaHpiWatchdogExpFlagsT)4)
#define SAHPI_WATCHDOG_EXP_OS_LOAD ((SaHpiWatchdogExpFlagsT)8)
#define SAHPI_WATCHDOG_EXP_SMS_OS ((SaHpiWatchdogExpFlagsT)0x10)
#define SAHPI_WATCHDOG_EXP_OEM ((SaHpiWatchdogExpFlagsT)0x20)

typedef struct {
    SaHpiWatchdogNumT WatchdogNum;
    SaHpiUint32T Oem;
} SaHpiWatchdogRecT;

/* ---- Hot swap ------------------------------------------------------------------------------- */

typedef enum SAHPI_ENUM_U32 {
    SAHPI_HS_INDICATOR_OFF = 0,
    SAHPI_HS_INDICATOR_ON = 1
} SaHpiHsIndicatorStateT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_HS_ACTION_INSERTION = 0,
    SAHPI_HS_ACTION_EXTRACTION = 1
} SaHpiHsActionT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_HS_STATE_INACTIVE = 0,
    SAHPI_HS_STATE_INSERTION_PENDING = 1,
    SAHPI_HS_STATE_ACTIVE = 2,
    SAHPI_HS_STATE_EXTRACTION_PENDING = 3,
    SAHPI_HS_STATE_NOT_PRESENT = 4
} SaHpiHsStateT;

/* ---- Events --------------------------------------------------------------------------------- */

typedef enum SAHPI_ENUM_U32 {
    SAHPI_CRITICAL = 0,
    SAHPI_MAJOR = 1,
    SAHPI_MINOR = 2,
    SAHPI_INFORMATIONAL = 3,
    SAHPI_OK = 4,
    SAHPI_DEBUG = 0xF0,
    SAHPI_ALL_SEVERITIES = 0xFF
} SaHpiSeverityT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_RESE_RESOURCE_FAILURE = 0,
    SAHPI_RESE_RESOURCE_RESTORED = 1,
    SAHPI_RESE_RESOURCE_ADDED = 2
} SaHpiResourceEventTypeT;

typedef struct {
    SaHpiResourceEventTypeT ResourceEventType;
} SaHpiResourceEventT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_DOMAIN_REF_ADDED = 0,
    SAHPI_DOMAIN_REF_REMOVED = 1
} SaHpiDomainEventTypeT;

typedef struct {
    SaHpiDomainEventTypeT Type;
    SaHpiDomainIdT DomainId;
} SaHpiDomainEventT;

/* A mask of the optional fields that a sensor event holds. */
typedef SaHpiUint8T SaHpiSensorOptionalDataT;
#define SAHPI_SOD_TRIGGER_READING ((SaHpiSensorOptionalDataT)1)
#define SAHPI_SOD_TRIGGER_THRESHOLD ((SaHpiSensorOptionalDataT)2)
#define SAHPI_SOD_OEM ((SaHpiSensorOptionalDataT)4)
#define SAHPI_SOD_PREVIOUS_STATE ((SaHpiSensorOptionalDataT)8)
#define SAHPI_SOD_CURRENT_STATE ((SaHpiSensorOptionalDataT)0x10)
#define SAHPI_SOD_SENSOR_SPECIFIC ((SaHpiSensorOptionalDataT)0x20)

typedef struct {
    SaHpiSensorNumT SensorNum;
    SaHpiSensorTypeT SensorType;
    SaHpiEventCategoryT EventCategory;
    SaHpiBoolT Assertion;
    SaHpiEventStateT EventState;
    SaHpiSensorOptionalDataT OptionalDataPresent;
    SaHpiSensorReadingT TriggerReading;
    SaHpiSensorReadingT TriggerThreshold;
    SaHpiEventStateT PreviousState;
    SaHpiEventStateT CurrentState;
    SaHpiUint32T Oem;
    SaHpiUint32T SensorSpecific;
} SaHpiSensorEventT;

/* A mask. */
typedef SaHpiUint8T SaHpiSensorEnableOptDataT;
#define SAHPI_SEOD_CURRENT_STATE ((SaHpiSensorEnableOptDataT)0x10)

typedef struct {
    SaHpiSensorNumT SensorNum;
    SaHpiSensorTypeT SensorType;
    SaHpiEventCategoryT EventCategory;
    SaHpiBoolT SensorEnable;
    SaHpiBoolT SensorEventEnable;
    SaHpiEventStateT AssertEventMask;
    SaHpiEventStateT DeassertEventMask;
    SaHpiSensorEnableOptDataT OptionalDataPresent;
    SaHpiEventStateT CurrentState;
} SaHpiSensorEnableChangeEventT;

typedef struct {
    SaHpiHsStateT HotSwapState;
    SaHpiHsStateT PreviousHotSwapState;
} SaHpiHotSwapEventT;

typedef struct {
    SaHpiWatchdogNumT WatchdogNum;
    SaHpiWatchdogActionEventT WatchdogAction;
    SaHpiWatchdogPretimerInterruptT WatchdogPreTimerAction;
    SaHpiWatchdogTimerUseT WatchdogUse;
} SaHpiWatchdogEventT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_HPIE_AUDIT = 0,
    SAHPI_HPIE_STARTUP = 1,
    SAHPI_HPIE_OTHER = 2
} SaHpiSwEventTypeT;

typedef struct {
    SaHpiManufacturerIdT MId;
    SaHpiSwEventTypeT Type;
    SaHpiTextBufferT EventData;
} SaHpiHpiSwEventT;

typedef struct {
    SaHpiManufacturerIdT MId;
    SaHpiTextBufferT OemEventData;
} SaHpiOemEventT;

typedef struct {
    SaHpiTextBufferT UserEventData;
} SaHpiUserEventT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_ET_RESOURCE = 0,
    SAHPI_ET_DOMAIN = 1,
    SAHPI_ET_SENSOR = 2,
    SAHPI_ET_SENSOR_ENABLE_CHANGE = 3,
    SAHPI_ET_HOTSWAP = 4,
    SAHPI_ET_WATCHDOG = 5,
    SAHPI_ET_HPI_SW = 6,
    SAHPI_ET_OEM = 7,
    SAHPI_ET_USER = 8
} SaHpiEventTypeT;

/* The member that holds the data is the one that EventType names. */
typedef union {
    SaHpiResourceEventT ResourceEvent;
    SaHpiDomainEventT DomainEvent;
    SaHpiSensorEventT SensorEvent;
    SaHpiSensorEnableChangeEventT SensorEnableChangeEvent;
    SaHpiHotSwapEventT HotSwapEvent;
    SaHpiWatchdogEventT WatchdogEvent;
    SaHpiHpiSwEventT HpiSwEvent;
    SaHpiOemEventT OemEvent;
    SaHpiUserEventT UserEvent;
} SaHpiEventUnionT;

typedef struct {
    SaHpiResourceIdT Source;
    SaHpiEventTypeT EventType;
    SaHpiTimeT Timestamp;
    SaHpiSeverityT Severity;
    SaHpiEventUnionT EventDataUnion;
} SaHpiEventT;

/* A mask. */
typedef SaHpiUint8T SaHpiEvtQueueStatusT;
#define SAHPI_EVT_QUEUE_OVERFLOW ((SaHpiEvtQueueStatusT)1)

/* ---- Annunciators --------------------------------------------------------------------------- */

typedef SaHpiUint32T SaHpiAnnunciatorNumT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_STATUS_COND_TYPE_SENSOR = 0,
    SAHPI_STATUS_COND_TYPE_RESOURCE = 1,
    SAHPI_STATUS_COND_TYPE_OEM = 2,
    SAHPI_STATUS_COND_TYPE_USER = 3
} SaHpiStatusCondTypeT;

typedef struct {
    SaHpiStatusCondTypeT Type;
    SaHpiEntityPathT Entity;
    SaHpiDomainIdT DomainId;
    SaHpiResourceIdT ResourceId;
    SaHpiSensorNumT SensorNum;
    SaHpiEventStateT EventState;
    SaHpiNameT Name;
    SaHpiManufacturerIdT Mid;
    SaHpiTextBufferT Data;
} SaHpiConditionT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_ANNUNCIATOR_MODE_AUTO = 0,
    SAHPI_ANNUNCIATOR_MODE_USER = 1,
    SAHPI_ANNUNCIATOR_MODE_SHARED = 2
} SaHpiAnnunciatorModeT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_ANNUNCIATOR_TYPE_LED = 0,
    SAHPI_ANNUNCIATOR_TYPE_DRY_CONTACT_CLOSURE = 1,
    SAHPI_ANNUNCIATOR_TYPE_AUDIBLE = 2,
    SAHPI_ANNUNCIATOR_TYPE_LCD_DISPLAY = 3,
    SAHPI_ANNUNCIATOR_TYPE_MESSAGE = 4,
    SAHPI_ANNUNCIATOR_TYPE_COMPOSITE = 5,
    SAHPI_ANNUNCIATOR_TYPE_OEM = 6
} SaHpiAnnunciatorTypeT;

typedef struct {
    SaHpiAnnunciatorNumT AnnunciatorNum;
    SaHpiAnnunciatorTypeT AnnunciatorType;
    SaHpiBoolT ModeReadOnly;
    SaHpiUint32T MaxConditions;
    SaHpiUint32T Oem;
} SaHpiAnnunciatorRecT;

/* ---- Resource data records ------------------------------------------------------------------ */

typedef enum SAHPI_ENUM_U32 {
    SAHPI_NO_RECORD = 0,
    SAHPI_CTRL_RDR = 1,
    SAHPI_SENSOR_RDR = 2,
    SAHPI_INVENTORY_RDR = 3,
    SAHPI_WATCHDOG_RDR = 4,
    SAHPI_ANNUNCIATOR_RDR = 5
} SaHpiRdrTypeT;

/* The member that holds the data is the one that RdrType names. */
typedef union {
    SaHpiCtrlRecT CtrlRec;
    SaHpiSensorRecT SensorRec;
    SaHpiInventoryRecT InventoryRec;
    SaHpiWatchdogRecT WatchdogRec;
    SaHpiAnnunciatorRecT AnnunciatorRec;
} SaHpiRdrTypeUnionT;

typedef struct {
    SaHpiEntryIdT RecordId;
    SaHpiRdrTypeT RdrType;
    SaHpiEntityPathT Entity;
    SaHpiBoolT IsFru;
    SaHpiRdrTypeUnionT RdrTypeUnion;
    SaHpiTextBufferT IdString;
} SaHpiRdrT;

/* ---- Resources ------------------------------------------------------------------------------ */

typedef enum SAHPI_ENUM_U32 {
    SAHPI_DEFAULT_PARM = 0,
    SAHPI_SAVE_PARM = 1,
    SAHPI_RESTORE_PARM = 2
} SaHpiParmActionT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_COLD_RESET = 0,
    SAHPI_WARM_RESET = 1,
    SAHPI_RESET_ASSERT = 2,
    SAHPI_RESET_DEASSERT = 3
} SaHpiResetActionT;

typedef enum SAHPI_ENUM_U32 {
    SAHPI_POWER_OFF = 0,
    SAHPI_POWER_ON = 1,
    SAHPI_POWER_CYCLE = 2
} SaHpiPowerStateT;

#define SAHPI_GUID_LENGTH 16
typedef SaHpiUint8T SaHpiGuidT[SAHPI_GUID_LENGTH];

typedef struct {
    SaHpiUint8T ResourceRev;
    SaHpiUint8T SpecificVer;
    SaHpiUint8T DeviceSupport;
    SaHpiManufacturerIdT ManufacturerId;
    SaHpiUint16T ProductId;
    SaHpiUint8T FirmwareMajorRev;
    SaHpiUint8T FirmwareMinorRev;
    SaHpiUint8T AuxFirmwareRev;
    SaHpiGuidT Guid;
} SaHpiResourceInfoT;

/* A mask. */
typedef SaHpiUint32T SaHpiCapabilitiesT;
#define SAHPI_CAPABILITY_RESOURCE ((SaHpiCapabilitiesT)0x40000000)
#define SAHPI_CAPABILITY_EVT_DEASSERTS ((SaHpiCapabilitiesT)0x00008000)
#define SAHPI_CAPABILITY_AGGREGATE_STATUS ((SaHpiCapabilitiesT)0x00002000)
#define SAHPI_CAPABILITY_CONFIGURATION ((SaHpiCapabilitiesT)0x00001000)
#define SAHPI_CAPABILITY_MANAGED_HOTSWAP ((SaHpiCapabilitiesT)0x00000800)
#define SAHPI_CAPABILITY_WATCHDOG ((SaHpiCapabilitiesT)0x00000400)
#define SAHPI_CAPABILITY_CONTROL ((SaHpiCapabilitiesT)0x00000200)
#define SAHPI_CAPABILITY_FRU ((SaHpiCapabilitiesT)0x00000100)
#define SAHPI_CAPABILITY_ANNUNCIATOR ((SaHpiCapabilitiesT)0x00000040)
#define SAHPI_CAPABILITY_POWER ((SaHpiCapabilitiesT)0x00000020)
#define SAHPI_CAPABILITY_RESET ((SaHpiCapabilitiesT)0x00000010)
#define SAHPI_CAPABILITY_INVENTORY_DATA ((SaHpiCapabilitiesT)0x00000008)
#define SAHPI_CAPABILITY_EVENT_LOG ((SaHpiCapabilitiesT)0x00000004)
#define SAHPI_CAPABILITY_RDR ((SaHpiCapabilitiesT)0x00000002)
#define SAHPI_CAPABILITY_SENSOR ((SaHpiCapabilitiesT)0x00000001)

/* A mask. */
typedef SaHpiUint32T SaHpiHsCapabilitiesT;
#define SAHPI_HS_CAPABILITY_AUTOEXTRACT_READ_ONLY ((SaHpiHsCapabilitiesT)0x80000000U)
#define SAHPI_HS_CAPABILITY_INDICATOR_SUPPORTED ((SaHpiHsCapabilitiesT)0x40000000)

/* An entry of the resource presence table. */
typedef struct {
    SaHpiEntryIdT EntryId;
    SaHpiResourceIdT ResourceId;
    SaHpiResourceInfoT ResourceInfo;
    SaHpiEntityPathT ResourceEntity;
    SaHpiCapabilitiesT ResourceCapabilities;
    SaHpiHsCapabilitiesT HotSwapCapabilities;
    SaHpiSeverityT ResourceSeverity;
    SaHpiBoolT ResourceFailed;
    SaHpiTextBufferT ResourceTag;
} SaHpiRptEntryT;

/* A mask. */
typedef SaHpiUint32T SaHpiDomainCapabilitiesT;
#define SAHPI_DOMAIN_CAP_AUTOINSERT_READ_ONLY ((SaHpiDomainCapabilitiesT)1)

/* ---- Event log ------------------------------------------------------------------------------ */

typedef enum SAHPI_ENUM_U32 {
    SAHPI_EL_OVERFLOW_DROP = 0,
    SAHPI_EL_OVERFLOW_OVERWRITE = 1
} SaHpiEventLogOverflowActionT;

typedef struct {
    SaHpiUint32T Entries;
    SaHpiUint32T Size;
    SaHpiUint32T UserEventMaxSize;
    SaHpiTimeT UpdateTimestamp;
    SaHpiTimeT CurrentTime;
    SaHpiBoolT Enabled;
    SaHpiBoolT OverflowFlag;
    SaHpiBoolT OverflowResetable;
    SaHpiEventLogOverflowActionT OverflowAction;
} SaHpiEventLogInfoT;

typedef SaHpiUint32T SaHpiEventLogEntryIdT;
#define SAHPI_OLDEST_ENTRY ((SaHpiEventLogEntryIdT)0)
#define SAHPI_NEWEST_ENTRY ((SaHpiEventLogEntryIdT)0xFFFFFFFFU)
#define SAHPI_NO_MORE_ENTRIES ((SaHpiEventLogEntryIdT)0xFFFFFFFEU)

typedef struct {
    SaHpiEventLogEntryIdT EntryId;
    SaHpiTimeT Timestamp;
    SaHpiEventT Event;
} SaHpiEventLogEntryT;

#undef SAHPI_ENUM_U32

#ifdef __cplusplus
}
#endif

#endif
