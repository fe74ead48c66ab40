// A file gets the lowest descriptor that is free, so the holes are filled from below.
#include "tools/evtlogctl/standard_streams.h"

#include <initializer_list>

#include <fcntl.h>
#include <unistd.h>

namespace zusahpi::evtlogctl {

void keepStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        const int wrongWay = stream == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        if (fcntl(stream, F_GETFD) < 0 && open("/dev/null", wrongWay) != stream) {
            _exit(126); // there is no stream left that could say why
        }
    }
}

} // namespace zusahpi::evtlogctl
