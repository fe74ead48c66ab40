// What libfmt's shared library defines, compiled once into the tool: Debian has that library for
// the machine's own ABI alone, and compiling it into every file took most of the build's time.

#include <fmt/format-inl.h>

template FMT_API auto fmt::detail::thousands_sep_impl<char>(locale_ref)
    -> thousands_sep_result<char>;
template FMT_API auto fmt::detail::decimal_point_impl<char>(locale_ref) -> char;
