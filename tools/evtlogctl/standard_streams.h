// The three standard streams, which whoever starts a program may have closed.
#pragma once

namespace zusahpi::evtlogctl {

// Gives a closed standard stream a descriptor that refuses every read and write. Without it the
// next file to be opened, the log perhaps, would take its place and get what the program prints.
void keepStandardStreams();

} // namespace zusahpi::evtlogctl
