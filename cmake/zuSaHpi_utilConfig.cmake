# find_package(zuSaHpi_util): the targets zuSaHpi_util::zuSaHpi_util (shared), ..._util_static and,
# where it was installed, zuSaHpi_util::zuSaHpi_mainlib. On a link line the main library stands
# behind the library.

include(${CMAKE_CURRENT_LIST_DIR}/zuSaHpi_utilTargets.cmake)
