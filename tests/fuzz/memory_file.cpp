// The one file in memory of a target.

#include "tests/fuzz/harness.h"

#include <sys/mman.h>
#include <unistd.h>

namespace fuzz {

int memoryFile(Bytes contents) {
    static int fd =
        -1; // opened once: a file of its own for each input would cost more than the run
    if (fd < 0) {
        fd = memfd_create("fuzz", MFD_CLOEXEC);
        require(fd >= 0, "there is a file in memory");
    }
    require(ftruncate(fd, 0) == 0, "the file can be emptied");
    require(pwrite(fd, contents.data(), contents.size(), 0) ==
                static_cast<ssize_t>(contents.size()),
            "the file can be written");
    require(lseek(fd, 0, SEEK_SET) == 0, "the file can be rewound");
    return fd;
}

} // namespace fuzz
