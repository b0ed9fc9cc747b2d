# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors

target_compile_definitions(test_cli PRIVATE
  HZEP_PROGRAM="$<TARGET_FILE:hzep>"
  HZEP_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
add_dependencies(test_cli hzep)
