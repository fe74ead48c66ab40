/*
 * What the public headers need to fix the layout of their records on every ABI: an assertion that
 * C99, C11 and C++ accept, and the alignment of 64-bit members (i386 would put them on 4 bytes).
 */
#ifndef ZUSAHPI_LAYOUT_H
#define ZUSAHPI_LAYOUT_H

#include <stddef.h>

#ifdef __cplusplus
#define ZUSAHPI_ASSERT(condition, text) static_assert(condition, text)
#else
#define ZUSAHPI_ASSERT(condition, text) __extension__ _Static_assert(condition, text)
#endif

#define ZUSAHPI_ASSERT_SIZE(type, bytes) ZUSAHPI_ASSERT(sizeof(type) == (bytes), #type)
#define ZUSAHPI_ASSERT_OFFSET(type, member, bytes)                                                 \
    ZUSAHPI_ASSERT(offsetof(type, member) == (bytes), #type "." #member)

#define ZUSAHPI_ALIGNED_8 __attribute__((aligned(8)))

#endif
