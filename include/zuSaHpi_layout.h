/*
 * The types of the HPI standard, and the assertion that they have the layout with which the library
 * was compiled. Every other public header begins here.
 *
 * The types come from hpi/SaHpi.h beside this file, unless the program has a SaHpi.h of its own
 * (docs/own-sahpi-header.md). That one is taken where it was included before this header, and, with
 * ZUSAHPI_OWN_SAHPI_H defined, wherever the compiler finds <SaHpi.h>.
 *
 * C89, C++98 and everything later can read the public headers, with GCC and with clang.
 */
#ifndef ZUSAHPI_LAYOUT_H
#define ZUSAHPI_LAYOUT_H

#include <stddef.h>

/* The standard has every SaHpi.h define this macro, whatever its include guard is called. */
#ifndef SAHPI_INTERFACE_VERSION
#ifdef ZUSAHPI_OWN_SAHPI_H
#include <SaHpi.h>
#else
#include "hpi/SaHpi.h"
#endif
#endif

#ifndef SAHPI_INTERFACE_VERSION
#error "the SaHpi.h that was included is not the HPI standard's: it has no SAHPI_INTERFACE_VERSION"
#endif

/*
 * Strict C89, C99 and C++98 have no assertion, and the C library defines one of that name there
 * that drops its text. A type of negative size then says in its name what the text says elsewhere.
 */
#if defined(__cplusplus) && __cplusplus >= 201103L
#define ZUSAHPI_ASSERT(condition, text) static_assert(condition, text)
#elif !defined(__cplusplus) &&                                                                     \
    (!defined(__STRICT_ANSI__) || (defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L))
#define ZUSAHPI_ASSERT(condition, text) __extension__ _Static_assert(condition, text)
#else
#define ZUSAHPI_ASSERT_TYPE(condition, number)                                                     \
    typedef char zuSaHpi_wrong_layout_see_own_sahpi_header_md_##number[(condition) ? 1 : -1]
#define ZUSAHPI_ASSERT_NUMBERED(condition, number) ZUSAHPI_ASSERT_TYPE(condition, number)
#define ZUSAHPI_ASSERT(condition, text) ZUSAHPI_ASSERT_NUMBERED(condition, __COUNTER__)
#endif

#define ZUSAHPI_ASSERT_SIZE(type, bytes)                                                           \
    ZUSAHPI_ASSERT(sizeof(type) == (bytes),                                                        \
                   #type " must have " #bytes " bytes, see docs/own-sahpi-header.md")
#define ZUSAHPI_ASSERT_OFFSET(type, member, bytes)                                                 \
    ZUSAHPI_ASSERT(offsetof(type, member) == (bytes),                                              \
                   #type "." #member " must lie at byte " #bytes ", see docs/own-sahpi-header.md")
#define ZUSAHPI_ASSERT_ALIGNED_8(type)                                                             \
    typedef struct {                                                                               \
        SaHpiUint8T before;                                                                        \
        type value;                                                                                \
    } zuSaHpiAlignmentOf##type;                                                                    \
    ZUSAHPI_ASSERT(offsetof(zuSaHpiAlignmentOf##type, value) == 8,                                 \
                   #type " must lie on 8 bytes in every record: give its typedef in SaHpi.h "      \
                         "__attribute__((aligned(8))), see docs/own-sahpi-header.md")

/* ---- Basic types ---------------------------------------------------------------------------- */

ZUSAHPI_ASSERT_ALIGNED_8(SaHpiUint64T);
ZUSAHPI_ASSERT_ALIGNED_8(SaHpiInt64T);
ZUSAHPI_ASSERT_ALIGNED_8(SaHpiFloat64T);
ZUSAHPI_ASSERT_ALIGNED_8(SaHpiTimeT);
ZUSAHPI_ASSERT_SIZE(SaHpiBoolT, 1);
ZUSAHPI_ASSERT_SIZE(SaHpiEntryIdT, 4);
ZUSAHPI_ASSERT_SIZE(SaErrorT, 4);
ZUSAHPI_ASSERT_SIZE(SaHpiEventStateT, 2);
ZUSAHPI_ASSERT_SIZE(SaHpiEventCategoryT, 1);
ZUSAHPI_ASSERT(sizeof(SaHpiSeverityT) == 4,
               "enumerations must have 4 bytes: compile without -fshort-enums");

/* ---- Records -------------------------------------------------------------------------------- */

ZUSAHPI_ASSERT_SIZE(SaHpiTextBufferT, 264);
ZUSAHPI_ASSERT_OFFSET(SaHpiTextBufferT, Language, 4);
ZUSAHPI_ASSERT_OFFSET(SaHpiTextBufferT, DataLength, 8);
ZUSAHPI_ASSERT_OFFSET(SaHpiTextBufferT, Data, 9);

ZUSAHPI_ASSERT_SIZE(SaHpiEntityPathT, 128);
ZUSAHPI_ASSERT_SIZE(SaHpiNameT, 258);

ZUSAHPI_ASSERT_SIZE(SaHpiSensorReadingT, 40);
ZUSAHPI_ASSERT_OFFSET(SaHpiSensorReadingT, Value, 8);
ZUSAHPI_ASSERT_SIZE(SaHpiSensorRangeT, 208);
ZUSAHPI_ASSERT_SIZE(SaHpiSensorDataFormatT, 240);
ZUSAHPI_ASSERT_SIZE(SaHpiSensorRecT, 272);

ZUSAHPI_ASSERT_SIZE(SaHpiCtrlStateTextT, 268);
ZUSAHPI_ASSERT_SIZE(SaHpiCtrlStateOemT, 260);
ZUSAHPI_ASSERT_SIZE(SaHpiCtrlRecUnionT, 280);
ZUSAHPI_ASSERT_SIZE(SaHpiCtrlRecT, 308);

ZUSAHPI_ASSERT_SIZE(SaHpiSensorEventT, 112);
ZUSAHPI_ASSERT_SIZE(SaHpiEventUnionT, 272);
ZUSAHPI_ASSERT_SIZE(SaHpiEventT, 296);
ZUSAHPI_ASSERT_OFFSET(SaHpiEventT, EventType, 4);
ZUSAHPI_ASSERT_OFFSET(SaHpiEventT, Timestamp, 8);
ZUSAHPI_ASSERT_OFFSET(SaHpiEventT, Severity, 16);
ZUSAHPI_ASSERT_OFFSET(SaHpiEventT, EventDataUnion, 24);
ZUSAHPI_ASSERT_OFFSET(SaHpiEventT, EventDataUnion.UserEvent.UserEventData.DataLength, 32);

ZUSAHPI_ASSERT_SIZE(SaHpiConditionT, 672);

ZUSAHPI_ASSERT_SIZE(SaHpiRdrTypeUnionT, 312);
ZUSAHPI_ASSERT_SIZE(SaHpiRdrT, 720);
ZUSAHPI_ASSERT_OFFSET(SaHpiRdrT, RdrType, 4);
ZUSAHPI_ASSERT_OFFSET(SaHpiRdrT, RdrTypeUnion, 144);
ZUSAHPI_ASSERT_OFFSET(SaHpiRdrT, IdString, 456);

ZUSAHPI_ASSERT_SIZE(SaHpiResourceInfoT, 32);
ZUSAHPI_ASSERT_SIZE(SaHpiRptEntryT, 448);
ZUSAHPI_ASSERT_OFFSET(SaHpiRptEntryT, ResourceId, 4);
ZUSAHPI_ASSERT_OFFSET(SaHpiRptEntryT, ResourceEntity, 40);
ZUSAHPI_ASSERT_OFFSET(SaHpiRptEntryT, ResourceCapabilities, 168);
ZUSAHPI_ASSERT_OFFSET(SaHpiRptEntryT, ResourceTag, 184);

ZUSAHPI_ASSERT_SIZE(SaHpiEventLogInfoT, 40);
ZUSAHPI_ASSERT_OFFSET(SaHpiEventLogInfoT, UpdateTimestamp, 16);
ZUSAHPI_ASSERT_OFFSET(SaHpiEventLogInfoT, CurrentTime, 24);
ZUSAHPI_ASSERT_OFFSET(SaHpiEventLogInfoT, Enabled, 32);
ZUSAHPI_ASSERT_OFFSET(SaHpiEventLogInfoT, OverflowAction, 36);

ZUSAHPI_ASSERT_SIZE(SaHpiEventLogEntryT, 312);
ZUSAHPI_ASSERT_OFFSET(SaHpiEventLogEntryT, Timestamp, 8);
ZUSAHPI_ASSERT_OFFSET(SaHpiEventLogEntryT, Event, 16);

#endif
