# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors

# lmx_bindings(TARGET SCHEMA...): compiles each schema to <Family>LMX.h and <Family>LMX.cpp in the build tree and adds them to the target.
function(lmx_bindings target)
  set(out ${CMAKE_CURRENT_BINARY_DIR}/bindings)
  file(MAKE_DIRECTORY ${out})
  foreach(schema IN LISTS ARGN)
    get_filename_component(family ${schema} NAME_WE)
    add_custom_command(
      OUTPUT ${out}/${family}LMX.h ${out}/${family}LMX.cpp
      COMMAND lmxgen ${CMAKE_CURRENT_SOURCE_DIR}/${schema} ${out}
      DEPENDS lmxgen ${CMAKE_CURRENT_SOURCE_DIR}/${schema}
      COMMENT "Compiling schema ${family}" VERBATIM)
    target_sources(${target} PRIVATE ${out}/${family}LMX.cpp ${out}/${family}LMX.h)
  endforeach()
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${out}>)
  set_property(GLOBAL APPEND PROPERTY HZEP_PUBLIC_HEADER_DIRS ${out})
endfunction()
