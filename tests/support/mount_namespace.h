// A view of the file system of this process's own, so that a test can put a file of its own where a
// system has just one.
#pragma once

namespace test_support {

// The exit status of a child that was not permitted to have one: its test is skipped, loudly.
constexpr int notPermitted = 77;

// Takes this process into a mount namespace of its own, as root of the machine or else of a user
// namespace in which this user is root. False where the kernel does not permit that.
bool enterMountNamespace();

} // namespace test_support
