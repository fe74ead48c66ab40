// What libfmt's shared library defines, compiled once into the tool: Debian has that library for
// the machine's own ABI alone, and compiling it into every file took most of the build's time.
// Which of these the header leaves to the library depends on its version.

#include <fmt/format-inl.h>

template FMT_API void fmt::detail::vformat_to<char>(buffer<char> &, string_view, format_args,
                                                    locale_ref);
template FMT_API auto fmt::detail::thousands_sep_impl<char>(locale_ref)
    -> thousands_sep_result<char>;
template FMT_API auto fmt::detail::decimal_point_impl<char>(locale_ref) -> char;
template FMT_API auto fmt::detail::dragonbox::to_decimal(float) noexcept -> decimal_fp<float>;
template FMT_API auto fmt::detail::dragonbox::to_decimal(double) noexcept -> decimal_fp<double>;
