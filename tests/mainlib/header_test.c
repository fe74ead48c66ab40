/* zuSaHpi_default_mainlib.h is C99: this file compiles it alone and is called by state_test.cpp. */
#include "zuSaHpi_default_mainlib.h"

int useDefaultMainlibFromC(void);

int useDefaultMainlibFromC(void) {
    static const char text[] = "EventLog=circular";
    zuSaHpiConfigT config = zuSaHpiConfigTextRead("text", text, sizeof text - 1);
    const int type = config.error == NULL ? (int)config.nodes->intValue : -1;
    zuSaHpiConfigRelease(&config);
    zuSaHpiSyslogStreamSet(NULL);
    return type;
}
