#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
# run_page_example.sh PAGE LANGUAGE EXAMPLES FILE COMMAND...: writes the page's first block in the language to FILE, runs the command on it in
# the folder of the examples, and compares what it prints with the block of text that comes after it.
set -euo pipefail
page=$1 language=$2 examples=$3 file=$4
shift 4
mkdir -p "$(dirname "$file")"
awk -v language="$language" '/^```/ { if (inside) exit; if ($0 == "```" language) { inside = 1; next } } inside' "$page" >"$file"
awk -v language="$language" '
    /^```/ { if (inside) exit; if ($0 == "```" language) seen = 1; else if (seen && $0 == "```text") { inside = 1; next } }
    inside' "$page" >"$file.expected"
[ -s "$file" ] && [ -s "$file.expected" ]
cd "$examples"
"$@" "$file" >"$file.given"
diff "$file.expected" "$file.given"
