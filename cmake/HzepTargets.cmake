# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors

# hzep_host_library(NAME [DEPENDS target...]): one folder of src/host, compiled once and folded into the shared library. One without
# sources has headers alone.
function(hzep_host_library name)
  cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/src/*.cpp)
  if(sources)
    add_library(${name} OBJECT ${sources})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/include)
    target_compile_options(${name} PRIVATE ${HZEP_WARNINGS})
    target_link_libraries(${name} PUBLIC ${arg_DEPENDS})
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${CMAKE_CURRENT_SOURCE_DIR}/include)
    target_link_libraries(${name} INTERFACE ${arg_DEPENDS})
  endif()
  set_property(GLOBAL APPEND PROPERTY HZEP_HOST_LIBRARIES ${name})
  set_property(GLOBAL APPEND PROPERTY HZEP_PUBLIC_HEADER_DIRS ${CMAKE_CURRENT_SOURCE_DIR}/include)
endfunction()

# hzep_test_room(NAME [LINK target...]): tests/NAME/*.cpp as one GoogleTest binary and one ctest entry.
function(hzep_test_room name)
  cmake_parse_arguments(arg "" "" "LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.c)
  add_executable(test_${name} ${sources})
  target_compile_options(test_${name} PRIVATE "$<$<COMPILE_LANGUAGE:CXX>:${HZEP_WARNINGS}>" "$<$<COMPILE_LANGUAGE:C>:-Wall;-Wextra;-Wpedantic;-Werror>")
  target_link_libraries(test_${name} PRIVATE test_support hzep_platform GTest::gmock GTest::gtest_main ${arg_LINK})
  # What a room needs beyond that stands in its room.cmake, which may use test_${name}.
  include(${CMAKE_CURRENT_SOURCE_DIR}/${name}/room.cmake OPTIONAL)
  add_test(NAME ${name} COMMAND test_${name} --gtest_brief=1)
  set_tests_properties(${name} PROPERTIES TIMEOUT 300)
endfunction()
