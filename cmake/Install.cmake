# What an installed tree holds: headers, libraries, the CMake package, pkg-config files, the tool
# with its completion, and examples. The manual pages are installed by man/CMakeLists.txt.

include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/zuSaHpi_util)
set(installed zuSaHpi_util zuSaHpi_util_static)
if(ZUSAHPI_MAINLIB)
  list(APPEND installed zuSaHpi_mainlib)
endif()
install(TARGETS ${installed} EXPORT zuSaHpi_utilTargets)
install(DIRECTORY include/ DESTINATION ${header_folder})

install(
  EXPORT zuSaHpi_utilTargets
  NAMESPACE zuSaHpi_util::
  DESTINATION ${package_folder})
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/zuSaHpi_utilConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES cmake/zuSaHpi_utilConfig.cmake
              ${PROJECT_BINARY_DIR}/zuSaHpi_utilConfigVersion.cmake
        DESTINATION ${package_folder})

# The pkg-config files find the tree from where they lie, so that it can be moved as a whole.
file(RELATIVE_PATH tree_from_pc ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
cmake_path(APPEND pc_includedir "\${prefix}" ${header_folder})
cmake_path(APPEND pc_libdir "\${prefix}" ${CMAKE_INSTALL_LIBDIR})
set(pc_files zuSaHpi_util)
if(ZUSAHPI_MAINLIB)
  list(APPEND pc_files zuSaHpi_mainlib)
endif()
foreach(name ${pc_files})
  configure_file(cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

if(ZUSAHPI_TOOL)
  install(TARGETS evtlogctl)
  install(FILES tools/evtlogctl/evtlogctl.bash-completion
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
          RENAME evtlogctl)
endif()

install(FILES examples/evtlog.conf examples/minimal_mainlib.c examples/server.sel
              examples/severity.table
        DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
if(ZUSAHPI_TOOL)
  install(DIRECTORY examples/systemd DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
endif()
