// Indents that printers compose: an outer indent and blanks that line up what follows a label. A
// composed indent is cut to fit its buffer; an indent that is only passed on never is.
#pragma once

#include <cstddef>
#include <cstdio>

namespace zusahpi::display {

inline constexpr std::size_t indentSize = 50;

struct Indent {
    char text[indentSize];
};

[[nodiscard]] inline Indent composedIndent(const char *outer, std::size_t blanks) {
    Indent indent;
    (void)std::snprintf(indent.text, sizeof indent.text, "%s%*s", outer, static_cast<int>(blanks),
                        "");
    return indent;
}

} // namespace zusahpi::display
