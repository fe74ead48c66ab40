# The library: one set of object files, from which the shared and the static library are made.

include(CheckLinkerFlag)
include(GNUInstallDirs)

# An installed tree keeps the headers in a folder of their own. SaHpi.h lies below it, in hpi/, which
# no search path leads to: a platform's own SaHpi.h counts wherever it stands on the path.
set(header_folder ${CMAKE_INSTALL_INCLUDEDIR}/zuSaHpi)
set(public_headers $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                   $<INSTALL_INTERFACE:${header_folder}>)

add_library(zuSaHpi_util_objects OBJECT)
# Each file is an object of its own, whatever else is compiled together: what is tested is what is
# shipped, and programs take from the static library what they use.
set_target_properties(zuSaHpi_util_objects PROPERTIES POSITION_INDEPENDENT_CODE ON
                                                      UNITY_BUILD OFF)
target_include_directories(zuSaHpi_util_objects PRIVATE ${PROJECT_SOURCE_DIR}/include
                                                        ${PROJECT_SOURCE_DIR})
target_link_libraries(zuSaHpi_util_objects PRIVATE zusahpi_library)
foreach(folder util constants display config eventlog frontends)
  include(${PROJECT_SOURCE_DIR}/${folder}/sources.cmake)
endforeach()

# The library depends on the C library alone: it is linked by the C driver, without the libraries
# that CMake would add for C++ sources.
set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")

set(exports ${PROJECT_SOURCE_DIR}/cmake/exports.map)
add_library(zuSaHpi_util SHARED $<TARGET_OBJECTS:zuSaHpi_util_objects>)
add_library(zuSaHpi_util::zuSaHpi_util ALIAS zuSaHpi_util)
target_include_directories(zuSaHpi_util INTERFACE ${public_headers})
target_link_libraries(zuSaHpi_util PRIVATE zusahpi_library)
target_link_options(zuSaHpi_util PRIVATE -static-libgcc -Wl,--version-script=${exports})
# The tables of names are full of addresses; packed, their relocations are a tenth of the size. A
# linker that cannot pack those of this machine says so in a warning.
check_linker_flag(C -Wl,--fatal-warnings,-z,pack-relative-relocs HAVE_PACKED_RELOCATIONS)
if(HAVE_PACKED_RELOCATIONS)
  target_link_options(zuSaHpi_util PRIVATE -Wl,-z,pack-relative-relocs)
endif()
set_target_properties(
  zuSaHpi_util
  PROPERTIES LINKER_LANGUAGE C
             VERSION ${PROJECT_VERSION}
             SOVERSION ${PROJECT_VERSION_MAJOR}
             LINK_DEPENDS ${exports}
             LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})

add_library(zuSaHpi_util_static STATIC $<TARGET_OBJECTS:zuSaHpi_util_objects>)
add_library(zuSaHpi_util::zuSaHpi_util_static ALIAS zuSaHpi_util_static)
target_include_directories(zuSaHpi_util_static INTERFACE ${public_headers})
set_target_properties(
  zuSaHpi_util_static PROPERTIES OUTPUT_NAME zuSaHpi_util
                                 LINKER_LANGUAGE C
                                 ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
