// A call of the C library that this memory sanitizer takes for code that it does not see: what it
// writes is declared written.

#include "tests/fuzz/harness.h"

#include <sys/stat.h>

extern "C" {
int __real_fstat64(int fd, struct stat *status);
int __wrap_fstat64(int fd, struct stat *status);
}

int __wrap_fstat64(int fd, struct stat *status) {
    const int result = __real_fstat64(fd, status);
    if (result == 0) {
        __msan_unpoison(status, sizeof *status);
    }
    return result;
}
