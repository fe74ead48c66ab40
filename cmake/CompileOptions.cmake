# How every target is compiled: zusahpi_compile for all code (warnings, hardening), zusahpi_library for
# the library on top of it (no C++ run time, nothing exported by default).

include(CheckCXXCompilerFlag)

add_library(zusahpi_compile INTERFACE)
target_compile_features(zusahpi_compile INTERFACE cxx_std_20 c_std_99)
target_compile_definitions(zusahpi_compile INTERFACE _FILE_OFFSET_BITS=64 _TIME_BITS=64)
target_compile_options(
  zusahpi_compile INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wformat=2)

# Unoptimised, the library's sources refer to the C++ run time, and fortification does nothing.
string(TOUPPER "${CMAKE_BUILD_TYPE}" build_type)
set(flags "${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_${build_type}}")
if(NOT ZUSAHPI_COVERAGE AND NOT flags MATCHES "-O([1-3sgz]|fast)")
  target_compile_options(zusahpi_compile INTERFACE $<IF:$<CONFIG:Debug>,-Og,-O2>)
endif()

if(ZUSAHPI_SANITIZE)
  # What the library does to a test's memory is seen, undefined behaviour of the test itself is not.
  set(is_test $<BOOL:$<TARGET_PROPERTY:ZUSAHPI_IS_TEST>>)
  target_compile_options(
    zusahpi_compile INTERFACE -fsanitize=address $<$<NOT:${is_test}>:-fsanitize=undefined>
                              -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(zusahpi_compile INTERFACE -fsanitize=address,undefined)
elseif(ZUSAHPI_FUZZ)
  set(sanitizers -fsanitize=fuzzer-no-link,${ZUSAHPI_FUZZ} -fno-sanitize-recover=all
                 -fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/tests/fuzz/ignored.txt)
  target_compile_options(zusahpi_compile INTERFACE ${sanitizers} -fno-omit-frame-pointer)
  target_link_options(zusahpi_compile INTERFACE ${sanitizers})
elseif(ZUSAHPI_COVERAGE)
  target_compile_options(zusahpi_compile INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(zusahpi_compile INTERFACE --coverage)
else()
  # The sanitizers check what fortification checks, and more; the two do not mix.
  target_compile_definitions(zusahpi_compile INTERFACE _FORTIFY_SOURCE=2)
endif()

add_library(zusahpi_library INTERFACE)
target_link_libraries(zusahpi_library INTERFACE zusahpi_compile)
target_compile_options(
  zusahpi_library INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti
                            -fno-threadsafe-statics> -fvisibility=hidden)
# Who builds it may ask for the assertions of the C++ library, as some distributions do for all that
# they build. They end in that library, on which this one does not depend. The preprocessor takes
# what is said with -Wp last, and a target's options behind CMAKE_CXX_FLAGS.
target_compile_options(
  zusahpi_library
  INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wp,-U_GLIBCXX_ASSERTIONS,-U_GLIBCXX_DEBUG>)
# On i386 the tables for unwinding are a fifth of the library, and nothing there needs them: no
# exception passes through it, and a debugger reads its own. On x86-64 the ABI asks for them. What
# fills up to the next function, loop or jump is up to three kilobytes there.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  target_compile_options(
    zusahpi_library
    INTERFACE -fno-asynchronous-unwind-tables -falign-functions=4
              $<$<CXX_COMPILER_ID:GNU>:-falign-jumps=1 -falign-loops=1 -falign-labels=1>)
endif()
# The library and the tool read files that they do not trust. A flag of another machine is an error to
# GCC and a warning to clang.
set(CMAKE_REQUIRED_FLAGS -Werror)
foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection
             -mbranch-protection=standard)
  string(MAKE_C_IDENTIFIER "HAVE${flag}" have)
  check_cxx_compiler_flag(${flag} ${have})
  if(${have})
    target_compile_options(zusahpi_compile INTERFACE ${flag})
  endif()
endforeach()
unset(CMAKE_REQUIRED_FLAGS)
set(hardened_link -Wl,-z,relro,-z,now,-z,noexecstack)
target_link_options(zusahpi_library INTERFACE ${hardened_link},-z,text)
