// The messages of the main library's time parser. The index is the parser's error number, so the
// order is part of the interface.

#include "zuSaHpi_util.h"

const char *const zuSaHpiTimeErrMsg[ZUSAHPI_TIME_ERRORS] = {
    "",
    "Illegal field",
    "Illegal last character of field",
    "Unexpected date field",
    "Illegal month in date",
    "Illegal day in date",
    "Illegal year in date",
    "Unexpected time field",
    "Illegal hour in time",
    "Illegal minute in time",
    "Illegal second in time",
    "Illegal subseconds in time",
    "Unexpected AM/PM indicator",
    "Unexpected DST indicator",
    "Unexpected STD time indicator",
    "Unexpected relative time field",
    "Illegal days field",
    "Illegal hours field",
    "Illegal minutes field",
    "Illegal seconds field",
    "Illegal subseconds field",
    "Component range error in relative time",
    "Relative time out of range",
    "Component range error in time",
    "Component range error in date",
    "Date out of range",
};
