// evtlogctl: keeps, shows and fills event logs of the HPI standard.
#include "tools/evtlogctl/command_line.h"

int main(int argumentCount, char **arguments) {
    return zusahpi::evtlogctl::run(argumentCount, arguments);
}
