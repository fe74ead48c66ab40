// The same program as C++.
#include "use_log.c"
