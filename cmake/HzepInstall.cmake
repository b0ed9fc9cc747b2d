# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors

# The installed package: library, program, every public header flat in one folder, CMake package and pkg-config file.

include(CMakePackageConfigHelpers)

set(header_dir ${CMAKE_INSTALL_INCLUDEDIR}/hzep_platform)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/hzep_platform)

install(TARGETS hzep_platform EXPORT hzep_platform_targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS hzep RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
get_property(public_header_dirs GLOBAL PROPERTY HZEP_PUBLIC_HEADER_DIRS)
foreach(dir IN LISTS public_header_dirs)
  install(DIRECTORY ${dir}/ DESTINATION ${header_dir} FILES_MATCHING PATTERN "*.h")
endforeach()

install(EXPORT hzep_platform_targets NAMESPACE hzep:: DESTINATION ${package_dir})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/hzep_platformConfig.cmake.in
  ${PROJECT_BINARY_DIR}/hzep_platformConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/hzep_platformConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/hzep_platformConfig.cmake ${PROJECT_BINARY_DIR}/hzep_platformConfigVersion.cmake
  DESTINATION ${package_dir})

file(RELATIVE_PATH include_from_lib ${CMAKE_INSTALL_FULL_LIBDIR} ${CMAKE_INSTALL_FULL_INCLUDEDIR}/hzep_platform)
configure_file(${CMAKE_CURRENT_LIST_DIR}/hzep_platform.pc.in ${PROJECT_BINARY_DIR}/hzep_platform.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/hzep_platform.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
