// The usage text, in three prints: a main library may bound what it takes at once.

#include "frontends/usage_text.h"

#include "zuSaHpi_mainlib.h"

namespace zusahpi::frontends {

void printUsage(zuSaHpiHandleT out) {
    zuSaHpiPrintf(out, "Usage: evtlog <subcmd>\n"
                       "  subcmd = i[nfo] - get and print Event Log info.\n"
                       "         = e[ntry] {oldest|newest|<entryId>} - get and print entry\n"
                       "         = d[elete] {oldest|newest|<entryId>} - delete entry\n"
                       "         = c[lear] - clear the event log\n");
    zuSaHpiPrintf(out, "         = r[eset] - reset overflow flag\n"
                       "         = t[ime] <newtime>\n"
                       "         = s[tate] {enabled|disabled|protect|unprotect}\n"
                       "         = p[rint] [d[ump]] - print entire log\n"
                       "         = a[dd] <data to end of line> - add entry to Event Log\n");
    zuSaHpiPrintf(out, "           If data begins with \"/\" data is binary, coded as hex.\n"
                       "           Otherwise, data is ASCII text, language SAHPI_TL_UNDEF.\n"
                       "           If text begins with \"'\" that character will be skipped;\n"
                       "           allows leading blanks or slashes in text data.\n");
}

} // namespace zusahpi::frontends
