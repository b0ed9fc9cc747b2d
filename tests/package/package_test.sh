#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
# package_test.sh SOURCE BUILD CXX CC
set -euo pipefail
source=$1 build=$2 cxx=$3 cc=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix outside=$source/tests/package/outside

cmake --install "$build" --prefix "$prefix" >"$work/log" || { cat "$work/log"; exit 1; }
"$source/tools/pack-examples" "$prefix/bin/hzep" "$work/examples"
cd "$work/examples"
hzep_text=$("$prefix/bin/hzep" show minnow/minnow.zpfm)

cmake -S "$outside" -B "$work/by-cmake" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_C_COMPILER="$cc" \
    >"$work/log" 2>&1 && cmake --build "$work/by-cmake" >>"$work/log" 2>&1 || { cat "$work/log"; exit 1; }

export PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name hzep_platform.pc)")
"$cxx" "$outside/from_cxx.cpp" -o "$work/from_cxx" $(pkg-config --cflags --libs hzep_platform)
"$cc" -std=c11 -Wall -Wextra -Wpedantic -Werror "$outside/from_c.c" -o "$work/from_c" \
    $(pkg-config --cflags --libs hzep_platform | sed 's/-std=[^ ]*//')
export LD_LIBRARY_PATH=$(pkg-config --variable=libdir hzep_platform)

for program in "$work/by-cmake/from_c" "$work/from_c"; do
    [ "$("$program" minnow/minnow.zpfm)" = "$hzep_text" ] || { echo "$program prints another document than hzep"; exit 1; }
    [ "$("$program" none.zpfm 2>&1)" = "none.zpfm: no such file" ] || { echo "$program does not say what is wrong"; exit 1; }
done
for program in "$work/by-cmake/from_cxx" "$work/from_cxx"; do
    [ "$("$program" kestrel/kestrel.zpfm)" = "kestrel_gen3x16_base: 44 bus interfaces, default clock clk_kernel" ] ||
        { echo "$program: $("$program" kestrel/kestrel.zpfm)"; exit 1; }
done

# Every installed header stands by itself.
include=$(pkg-config --variable=includedir hzep_platform)
for header in "$include"/*.h; do echo "#include \"${header##*/}\""; done | sort -r >"$work/all.cpp"
"$cxx" -std=c++20 -fsyntax-only -I"$include" "$work/all.cpp"

# Only marked names are exported: the classes, namespaces and free functions that an installed header has.
grep -hoE '\b(class|struct|namespace) +([A-Z]+_EXPORT +)?[A-Za-z0-9_:]+|\bhzep_[a-z_]+' "$include"/*.h | sed 's/.*[ :]//' | sort -u >"$work/declared"
nm -DC --defined-only "$LD_LIBRARY_PATH/libhzep_platform.so" | "$source/tests/package/exported-names" | sed 's/.*[ :]//' | sort -u >"$work/exported"
[ "$(wc -l <"$work/exported")" -gt 100 ] && [ -z "$(comm -23 "$work/exported" "$work/declared" | tee /dev/stderr)" ] ||
    { echo "These names are exported, and no installed header has them"; exit 1; }
