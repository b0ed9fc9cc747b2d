# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors

# lmx_bindings(TARGET [PRIVATE] SCHEMA...): compiles each schema to <Family>LMX.h and <Family>LMX.cpp in the build tree and adds them to
# the target. Unless they are PRIVATE, the headers are part of the target's interface and are installed.
function(lmx_bindings target)
  cmake_parse_arguments(arg "PRIVATE" "" "" ${ARGN})
  set(out ${CMAKE_CURRENT_BINARY_DIR}/bindings)
  file(MAKE_DIRECTORY ${out})
  foreach(schema IN LISTS arg_UNPARSED_ARGUMENTS)
    get_filename_component(schema ${schema} ABSOLUTE)
    get_filename_component(family ${schema} NAME_WE)
    add_custom_command(
      OUTPUT ${out}/${family}LMX.h ${out}/${family}LMX.cpp
      COMMAND lmxgen ${schema} ${out}
      DEPENDS lmxgen ${schema}
      COMMENT "Compiling schema ${family}" VERBATIM)
    target_sources(${target} PRIVATE ${out}/${family}LMX.cpp ${out}/${family}LMX.h)
    set_source_files_properties(${out}/${family}LMX.cpp PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
  endforeach()
  if(arg_PRIVATE)
    target_include_directories(${target} PRIVATE ${out})
  else()
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${out}>)
    set_property(GLOBAL APPEND PROPERTY HZEP_PUBLIC_HEADER_DIRS ${out})
  endif()
endfunction()
