// Entering a mount namespace.

#include "tests/support/mount_namespace.h"

#include <string>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include "tests/support/files.h"

namespace test_support {
namespace {

bool unshareMounts() {
    const std::string user = "0 " + std::to_string(geteuid()) + " 1";
    const std::string group = "0 " + std::to_string(getegid()) + " 1";
    if (unshare(CLONE_NEWNS) == 0) {
        return true;
    }
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
        return false;
    }
    // Files can only be made by ids that the namespace knows.
    writeFile("/proc/self/setgroups", "deny");
    writeFile("/proc/self/uid_map", user);
    writeFile("/proc/self/gid_map", group);
    return true;
}

} // namespace

bool enterMountNamespace() {
    return unshareMounts() && mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0;
}

} // namespace test_support
