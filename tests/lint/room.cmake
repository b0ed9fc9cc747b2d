# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors

target_compile_definitions(test_lint PRIVATE HZEP_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
