// Text from outside that must become UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace zusahpi::evtlogctl {

// The text, with U+FFFD for every byte that belongs to no UTF-8 character. Overlong forms,
// surrogates and what lies beyond U+10FFFF are no characters.
[[nodiscard]] std::string validUtf8(std::string_view bytes);

} // namespace zusahpi::evtlogctl
