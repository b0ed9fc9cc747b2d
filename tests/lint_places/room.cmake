# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors

# Under the sanitizers this compiler sees unset values in the standard library's regular expressions that aren't there.
target_compile_options(test_lint_places PRIVATE -Wno-maybe-uninitialized)
