# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors

target_compile_definitions(test_facade PRIVATE HZEP_EXAMPLES="${PROJECT_SOURCE_DIR}/examples")
