# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors

include(LmxBindings)
lmx_bindings(test_lmx PRIVATE lmx/schema/Probe.xsd lmx/schema/Plain.xsd)
add_dependencies(test_lmx lmxgen)
target_compile_definitions(test_lmx PRIVATE
  LMXGEN="$<TARGET_FILE:lmxgen>"
  PLATFORM_SCHEMA_DIR="${PROJECT_SOURCE_DIR}/src/shared/platform/schema")
