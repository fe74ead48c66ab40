/*
 * What a platform's own SaHpi.h may look like: the types of the HPI standard that the library's
 * headers name, with a guard, macros and an order that are not those of include/hpi/SaHpi.h. Events
 * and text stand before identifiers, most enumerations are numbers, records have tags.
 *
 * PLATFORM_ALIGNED is what i386 needs; a test takes it away.
 */
#ifndef PLATFORM_HPI_H_INCLUDED
#define PLATFORM_HPI_H_INCLUDED

#ifndef PLATFORM_ALIGNED
#define PLATFORM_ALIGNED __attribute__((__aligned__(8)))
#endif
#define PLATFORM_RECORD(name) typedef struct name##_ name

__extension__ typedef signed long long int SaHpiInt64T PLATFORM_ALIGNED;
__extension__ typedef unsigned long long int SaHpiUint64T PLATFORM_ALIGNED;
typedef double SaHpiFloat64T PLATFORM_ALIGNED;
typedef unsigned SaHpiUint32T;
typedef unsigned short int SaHpiUint16T;
typedef unsigned char SaHpiUint8T, SaHpiBoolT;
typedef signed int SaHpiInt32T, SaErrorT;
typedef SaHpiUint32T SaHpiVersionT;
typedef SaHpiInt64T SaHpiTimeT;

enum { SA_OK = 0, SAHPI_FALSE = 0, SAHPI_TRUE };
#define SAHPI_INTERFACE_VERSION (SaHpiVersionT)0x020101
#define SAHPI_TIME_UNSPECIFIED (SaHpiTimeT)0x8000000000000000ull

/* ---- Numbers, masks and enumerations -------------------------------------------------------- */

typedef SaHpiUint32T SaHpiEntryIdT, SaHpiResourceIdT, SaHpiDomainIdT, SaHpiManufacturerIdT;
typedef SaHpiUint32T SaHpiSensorNumT, SaHpiCtrlNumT, SaHpiIdrIdT, SaHpiWatchdogNumT;
typedef SaHpiUint32T SaHpiAnnunciatorNumT, SaHpiEventLogEntryIdT, SaHpiEntityLocationT;
typedef SaHpiUint32T SaHpiCapabilitiesT, SaHpiHsCapabilitiesT;
typedef SaHpiUint32T SaHpiSensorTypeT, SaHpiSensorReadingTypeT, SaHpiSensorUnitsT;
typedef SaHpiUint32T SaHpiSensorModUnitUseT, SaHpiSensorEventCtrlT, SaHpiLanguageT, SaHpiTextTypeT;
typedef SaHpiUint32T SaHpiCtrlTypeT, SaHpiCtrlOutputTypeT, SaHpiCtrlModeT, SaHpiCtrlStateDigitalT;
typedef SaHpiUint32T SaHpiEventLogOverflowActionT, SaHpiStatusCondTypeT, SaHpiAnnunciatorTypeT;
typedef SaHpiUint16T SaHpiEventStateT;
typedef SaHpiUint8T SaHpiEventCategoryT;

typedef enum { SAHPI_CRITICAL, SAHPI_MAJOR, SAHPI_MINOR, SAHPI_INFORMATIONAL } SaHpiSeverityT;
typedef enum { SAHPI_ET_RESOURCE, SAHPI_ET_SENSOR = 2, SAHPI_ET_USER = 9 } SaHpiEventTypeT;
typedef enum { SAHPI_NO_RECORD, SAHPI_CTRL_RDR, SAHPI_SENSOR_RDR } SaHpiRdrTypeT;
typedef enum { SAHPI_ENT_UNKNOWN = 1, SAHPI_ENT_ROOT = 0xFFFF } SaHpiEntityTypeT;

#define SAHPI_FAN 4
#define SAHPI_LANG_ENGLISH 0x19
#define SAHPI_TL_TYPE_TEXT 3
#define SAHPI_EC_THRESHOLD 1
#define SAHPI_ES_LOWER_MAJOR 2
#define SAHPI_CAPABILITY_RESOURCE 0x40000000u
#define SAHPI_CAPABILITY_SENSOR 1u

/* ---- Text and events ------------------------------------------------------------------------ */

PLATFORM_RECORD(SaHpiTextBufferT);
struct SaHpiTextBufferT_ {
    SaHpiTextTypeT DataType;
    SaHpiLanguageT Language;
    SaHpiUint8T DataLength, Data[255];
};

PLATFORM_RECORD(SaHpiSensorReadingT);
struct SaHpiSensorReadingT_ {
    SaHpiBoolT IsSupported;
    SaHpiSensorReadingTypeT Type;
    union {
        SaHpiUint8T SensorBuffer[32];
        SaHpiInt64T SensorInt64;
        SaHpiUint64T SensorUint64;
        SaHpiFloat64T SensorFloat64;
    } Value;
};

PLATFORM_RECORD(SaHpiSensorEventT);
struct SaHpiSensorEventT_ {
    SaHpiSensorNumT SensorNum;
    SaHpiSensorTypeT SensorType;
    SaHpiEventCategoryT EventCategory;
    SaHpiBoolT Assertion;
    SaHpiEventStateT EventState;
    SaHpiUint8T OptionalDataPresent;
    SaHpiSensorReadingT TriggerReading, TriggerThreshold;
    SaHpiEventStateT PreviousState, CurrentState;
    SaHpiUint32T Oem, SensorSpecific;
};

PLATFORM_RECORD(SaHpiHpiSwEventT);
struct SaHpiHpiSwEventT_ {
    SaHpiManufacturerIdT MId;
    SaHpiUint32T Type;
    SaHpiTextBufferT EventData;
};

PLATFORM_RECORD(SaHpiUserEventT);
struct SaHpiUserEventT_ {
    SaHpiTextBufferT UserEventData;
};

typedef union {
    SaHpiUserEventT UserEvent;
    SaHpiHpiSwEventT HpiSwEvent;
    SaHpiSensorEventT SensorEvent;
} SaHpiEventUnionT;

PLATFORM_RECORD(SaHpiEventT);
struct SaHpiEventT_ {
    SaHpiResourceIdT Source;
    SaHpiEventTypeT EventType;
    SaHpiTimeT Timestamp;
    SaHpiSeverityT Severity;
    SaHpiEventUnionT EventDataUnion;
};

/* ---- The event log -------------------------------------------------------------------------- */

PLATFORM_RECORD(SaHpiEventLogEntryT);
struct SaHpiEventLogEntryT_ {
    SaHpiEventLogEntryIdT EntryId;
    SaHpiTimeT Timestamp;
    SaHpiEventT Event;
};

PLATFORM_RECORD(SaHpiEventLogInfoT);
struct SaHpiEventLogInfoT_ {
    SaHpiUint32T Entries, Size, UserEventMaxSize;
    SaHpiTimeT UpdateTimestamp, CurrentTime;
    SaHpiBoolT Enabled, OverflowFlag, OverflowResetable;
    SaHpiEventLogOverflowActionT OverflowAction;
};

/* ---- Entities and names --------------------------------------------------------------------- */

PLATFORM_RECORD(SaHpiEntityPathT);
struct SaHpiEntityPathT_ {
    struct {
        SaHpiEntityTypeT EntityType;
        SaHpiEntityLocationT EntityLocation;
    } Entry[16];
};

PLATFORM_RECORD(SaHpiNameT);
struct SaHpiNameT_ {
    SaHpiUint16T Length;
    SaHpiUint8T Value[256];
};

PLATFORM_RECORD(SaHpiConditionT);
struct SaHpiConditionT_ {
    SaHpiStatusCondTypeT Type;
    SaHpiEntityPathT Entity;
    SaHpiDomainIdT DomainId;
    SaHpiResourceIdT ResourceId;
    SaHpiSensorNumT SensorNum;
    SaHpiEventStateT EventState;
    SaHpiNameT Name;
    SaHpiManufacturerIdT Mid;
    SaHpiTextBufferT Data;
};

/* ---- Resources and their records ------------------------------------------------------------ */

PLATFORM_RECORD(SaHpiResourceInfoT);
struct SaHpiResourceInfoT_ {
    SaHpiUint8T ResourceRev, SpecificVer, DeviceSupport;
    SaHpiManufacturerIdT ManufacturerId;
    SaHpiUint16T ProductId;
    SaHpiUint8T FirmwareMajorRev, FirmwareMinorRev, AuxFirmwareRev, Guid[16];
};

PLATFORM_RECORD(SaHpiRptEntryT);
struct SaHpiRptEntryT_ {
    SaHpiEntryIdT EntryId;
    SaHpiResourceIdT ResourceId;
    SaHpiResourceInfoT ResourceInfo;
    SaHpiEntityPathT ResourceEntity;
    SaHpiCapabilitiesT ResourceCapabilities;
    SaHpiHsCapabilitiesT HotSwapCapabilities;
    SaHpiSeverityT ResourceSeverity;
    SaHpiBoolT ResourceFailed;
    SaHpiTextBufferT ResourceTag;
};

PLATFORM_RECORD(SaHpiSensorRangeT);
struct SaHpiSensorRangeT_ {
    SaHpiUint8T Flags;
    SaHpiSensorReadingT Max, Min, Nominal, NormalMax, NormalMin;
};

PLATFORM_RECORD(SaHpiSensorDataFormatT);
struct SaHpiSensorDataFormatT_ {
    SaHpiBoolT IsSupported;
    SaHpiSensorReadingTypeT ReadingType;
    SaHpiSensorUnitsT BaseUnits, ModifierUnits;
    SaHpiSensorModUnitUseT ModifierUse;
    SaHpiBoolT Percentage;
    SaHpiSensorRangeT Range;
    SaHpiFloat64T AccuracyFactor;
};

PLATFORM_RECORD(SaHpiSensorRecT);
struct SaHpiSensorRecT_ {
    SaHpiSensorNumT Num;
    SaHpiSensorTypeT Type;
    SaHpiEventCategoryT Category;
    SaHpiBoolT EnableCtrl;
    SaHpiSensorEventCtrlT EventCtrl;
    SaHpiEventStateT Events;
    SaHpiSensorDataFormatT DataFormat;
    SaHpiUint8T ThresholdDefn[4];
    SaHpiUint32T Oem;
};

PLATFORM_RECORD(SaHpiCtrlStateTextT);
struct SaHpiCtrlStateTextT_ {
    SaHpiUint8T Line;
    SaHpiTextBufferT Text;
};

PLATFORM_RECORD(SaHpiCtrlStateOemT);
struct SaHpiCtrlStateOemT_ {
    SaHpiManufacturerIdT MId;
    SaHpiUint8T BodyLength, Body[255];
};

typedef union {
    struct {
        SaHpiUint8T MaxChars, MaxLines;
        SaHpiLanguageT Language;
        SaHpiTextTypeT DataType;
        SaHpiCtrlStateTextT Default;
    } Text;
    struct {
        SaHpiManufacturerIdT MId;
        SaHpiUint8T ConfigData[10];
        SaHpiCtrlStateOemT Default;
    } Oem;
} SaHpiCtrlRecUnionT;

PLATFORM_RECORD(SaHpiCtrlRecT);
struct SaHpiCtrlRecT_ {
    SaHpiCtrlNumT Num;
    SaHpiCtrlOutputTypeT OutputType;
    SaHpiCtrlTypeT Type;
    SaHpiCtrlRecUnionT TypeUnion;
    struct {
        SaHpiCtrlModeT Mode;
        SaHpiBoolT ReadOnly;
    } DefaultMode;
    SaHpiBoolT WriteOnly;
    SaHpiUint32T Oem;
};

typedef union {
    SaHpiSensorRecT SensorRec;
    SaHpiCtrlRecT CtrlRec;
} SaHpiRdrTypeUnionT;

PLATFORM_RECORD(SaHpiRdrT);
struct SaHpiRdrT_ {
    SaHpiEntryIdT RecordId;
    SaHpiRdrTypeT RdrType;
    SaHpiEntityPathT Entity;
    SaHpiBoolT IsFru;
    SaHpiRdrTypeUnionT RdrTypeUnion;
    SaHpiTextBufferT IdString;
};

#endif
