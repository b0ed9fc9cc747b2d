# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
# Sourced by ./run and ./test: installs what is missing, and builds a preset.

# ensure_packages TOP [LIST...]: installs the Debian packages of tools/packages.txt, and of further lists there, that are missing.
ensure_packages() {
    local wanted missing log sudo=
    mapfile -t wanted < <(cd "$1/tools" && shift && cat packages.txt "$@" | grep -v '^#')
    mapfile -t missing < <(comm -23 <(printf '%s\n' "${wanted[@]}" | sort) \
        <(dpkg-query -W -f '${db:Status-Status} ${binary:Package}\n' | sed -n 's/^installed \([^:]*\).*/\1/p' | sort -u))
    [ ${#missing[@]} -eq 0 ] && return
    echo "Installing from Debian: ${missing[*]}" >&2
    [ "$(id -u)" -eq 0 ] || sudo=sudo
    log=$(mktemp)
    { $sudo apt-get update -qq && $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"; } \
        >"$log" 2>&1 || { cat "$log" >&2; rm -f "$log"; echo "These Debian packages could not be installed: ${missing[*]}" >&2; exit 2; }
    rm -f "$log"
}

# build_preset TOP PRESET: configures when needed and builds; all that is said goes to stderr, and nothing when nothing is to be done.
build_preset() {
    local dir="$1/build/$2" log
    # Lets the compiler cache serve precompiled headers, and every clone alike.
    export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime CCACHE_BASEDIR="$1" CCACHE_NOHASHDIR=1
    log=$(mktemp)
    if [ ! -f "$dir/build.ninja" ]; then
        cmake -S "$1" --preset "$2" >"$log" 2>&1 || { cat "$log" >&2; rm -f "$log"; exit 2; }
    fi
    # The first step that does work announces the build; a build with nothing to do says nothing.
    ninja -C "$dir" 2>&1 | awk -v preset="$2" -v log_file="$log" '
        !said && /^\[[0-9]+\/[0-9]+\] [A-Z][a-z]+ing [^ ]+ / { print "Building (" preset ") ..." >"/dev/stderr"; said = 1 }
        { print >log_file }' || { grep -vE '^\[[0-9]+/[0-9]+\] [A-Z][a-z]+ing ' "$log" >&2; rm -f "$log"; exit 2; }
    rm -f "$log"
}
