// The data that the library reads from its main library. There is nothing to start up, so the
// library counts as initialised from the beginning.
#include <cstring>

#include <unistd.h>

#include "zuSaHpi_default_mainlib.h"

namespace {

constexpr const char *defaultRoot = ".";

char rootText[ZUSAHPI_ROOT_SIZE];

} // namespace

int zuSaHpiLibInitialized = 1;
const char *zuSaHpiRoot = defaultRoot;
uid_t zuSaHpiEuId = geteuid();
gid_t zuSaHpiGroupId = getegid();

int zuSaHpiRootSet(const char *root) {
    if (root == nullptr || root[0] == '\0') {
        zuSaHpiRoot = defaultRoot;
        return 0;
    }
    const std::size_t length = std::strlen(root);
    if (length >= sizeof rootText) {
        return -1;
    }
    // The text may be the present root, or a part of it.
    std::memmove(rootText, root, length + 1);
    zuSaHpiRoot = rootText;
    return 0;
}
