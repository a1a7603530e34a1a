# Sourced by ./run, ./test and scripts/check: what this machine must have, and a build that keeps quiet.
# shellcheck shell=bash

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { printf '%s\n' "$*" >&2; }

# packages GROUP...: the names that packaging/apt-packages.txt lists for the groups.
packages() {
    local groups=" $* "
    awk -v groups="$groups" '$1 !~ /^#/ && NF && index(groups, " " $1 " ") { print $2 }' \
        "$top/packaging/apt-packages.txt" | sort -u
}

# missing_packages GROUP...: those of them that are not installed.
missing_packages() {
    local name
    for name in $(packages "$@"); do
        [[ $(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null) == installed ]] || echo "$name"
    done
}

as_root() {
    if [[ $(id -u) == 0 ]]; then
        "$@"
    else
        sudo "$@"
    fi
}

# ensure_packages GROUP...: asks apt for what is missing, and for nothing when all is there.
ensure_packages() {
    if ! command -v dpkg-query >/dev/null; then
        return 0 # not a Debian system: configuring says what it misses
    fi
    local missing
    missing=$(missing_packages "$@")
    [[ -n $missing ]] || return 0
    say "Installing:" $missing
    as_root apt-get update -qq >&2
    # shellcheck disable=SC2086
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >&2
}

# logged FILE COMMAND...: runs quietly; on a terminal its output is seen, else only when it failed.
logged() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    if [[ -t 2 ]]; then
        "$@" >&2
    elif ! "$@" >"$log" 2>&1 </dev/null; then
        cat "$log" >&2
        return 1
    fi
}

# configure_release: without tests and benchmarks, which only cost time for a user; a folder that was configured
# otherwise stays as it is.
configure_release() {
    [[ ! -f $top/build/release/build.ninja ]] || return 0
    say "Configuring release"
    logged "$top/build/release/configure.log" cmake -S "$top" --preset release -DZU_TESTS=OFF -DZU_BENCH=OFF
}

# build PRESET TARGET...: configures where that has not happened yet, then builds; silent with nothing to do.
build() {
    local preset=$1
    shift
    local dir=$top/build/$preset
    if [[ ! -f $dir/build.ninja ]]; then
        say "Configuring $preset"
        logged "$dir/configure.log" cmake -S "$top" --preset "$preset" || return 1
    fi
    if ninja -C "$dir" -n "$@" 2>/dev/null | grep -q 'no work to do'; then
        return 0
    fi
    say "Building $preset ($*)"
    logged "$dir/build.log" cmake --build "$dir" --target "$@"
}
