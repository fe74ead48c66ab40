// Says whether the bytes of a log file agree with themselves. Written from the file's format alone:
// it shares no code and no number with the store, so that a mistake there cannot hide here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace test_support {

// Everything in the file that no sequence of operations leaves behind, one sentence each; nothing
// for a sound log. A waiting transaction (`updating`) has a sentence of its own, and the records
// are then judged as they lie, without it. Bytes behind entry `maxUsed` are dead and not looked at.
// Any bytes may be given; nothing outside them is read.
std::vector<std::string> unsoundness(std::string_view fileBytes);

} // namespace test_support
