#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
# compare_scenarios.sh EXAMPLES WORK SCENARIOS REFERENCE RUNNER...: goes through the scenarios (names separated by ";", "" for all) with both
# runners and compares their answers byte for byte.
set -euo pipefail
examples=$1 work=$2 reference=$4
IFS=';' read -ra scenarios <<<"$3"
shift 4
data=$(cd "$(dirname "${BASH_SOURCE[0]}")/data" && pwd)
rm -rf "$work"
mkdir -p "$work/expected" "$work/given"
"$reference" "$examples" "$data" "$work/expected" "${scenarios[@]}" >"$work/reference.log" 2>&1 || { cat "$work/reference.log"; exit 1; }
"$@" "$examples" "$data" "$work/given" "${scenarios[@]}" >"$work/runner.log" 2>&1 || { cat "$work/runner.log"; exit 1; }
[ -s "$work/expected/answers.txt" ]
diff "$work/expected/answers.txt" "$work/given/answers.txt" | head -40
