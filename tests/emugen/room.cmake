# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors

find_package(Tclsh REQUIRED)
target_compile_definitions(test_emugen PRIVATE
  HZEP_ROOM="${CMAKE_CURRENT_SOURCE_DIR}/emugen/"
  HZEP_TCLSH="${TCL_TCLSH}")
