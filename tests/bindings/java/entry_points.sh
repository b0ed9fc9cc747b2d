#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
# entry_points.sh TABLE NM LIBRARY: counts the library's entry points by class and prints them beside the table's numbers; fails for a class
# that is missing or has fewer than the table says without a reason there, and for names of another form.
set -euo pipefail
table=$1 nm=$2 library=$3
"$nm" -D --defined-only "$library" | awk '$2 == "T" && $3 != "JNI_OnLoad" { print $3 }' | awk -v table="$table" '
    BEGIN { prefix = "Java_ui_data_platform_platform_" }
    index($0, prefix) != 1 { print "not an entry point: " $0; failed = 1; next }
    {
        name = substr($0, length(prefix) + 1)
        named[name] = 1
        ++total
        if (name ~ /^(new|delete)_1/) { sub(/^(new|delete)_1/, "", name); sub(/_1_1SWIG_1[0-9]+$/, "", name) }
        else sub(/_1.*/, "", name)
        ++count[name]
    }
    END {
        printf "%-34s %6s %6s\n", "class", "known", "here"
        while ((getline line < table) > 0) {
            if (line ~ /^#/) continue
            split(line, field, " ")
            reason = line
            sub(/^[^ ]+ [0-9]+ ?/, "", reason)
            listed[field[1]] = 1
            known += field[2]
            bad = !(field[1] in count) || (count[field[1]] < field[2] && reason == "")
            printf "%-34s %6d %6d  %s%s\n", field[1], field[2], count[field[1]], bad ? "TOO FEW " : "", reason
            failed = failed || bad
        }
        for (name in count)
            if (!(name in listed)) { printf "%-34s %6s %6d\n", name, "-", count[name] | "sort"; }
        close("sort")
        printf "%-34s %6d %6d\n", "all", known, total
        for (i = split("new_1ZEPPlatform delete_1ZEPPlatform ZEPPlatform_1getUniqueName ZEPPlatform_1SWIGUpcast " \
                 "ZEPPlatformMgr_1addPlatformsFromDirs_1_1SWIG_10 ZEPPlatformMgr_1addPlatformsFromDirs_1_1SWIG_11 StringVector_1size " \
                 "new_1StringVector StringIter_1hasNext StringIter_1next JSONSerializable_1toJSONString", expected, " "); i > 0; --i)
            if (!(expected[i] in named)) { print "no " prefix expected[i]; failed = 1 }
        exit failed
    }'
