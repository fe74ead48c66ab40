// evtlogctl: keeps, shows and fills event logs of the HPI standard.
#include "tools/evtlogctl/command_line.h"
#include "tools/evtlogctl/standard_streams.h"

int main(int argumentCount, char **arguments) {
    zusahpi::evtlogctl::keepStandardStreams();
    return zusahpi::evtlogctl::run(argumentCount, arguments);
}
