// Words that match in upper and lower case, the same in every locale.
#pragma once

#include <algorithm>
#include <string_view>

namespace zusahpi::mainlib {

[[nodiscard]] constexpr char lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

[[nodiscard]] constexpr bool sameWord(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, lower, lower);
}

} // namespace zusahpi::mainlib
