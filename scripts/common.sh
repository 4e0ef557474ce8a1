# What the scripts of this folder share; sourced, never run.
# shellcheck shell=bash

# The root of the source tree, wherever it was checked out and from wherever the script is called.
root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd -P)
export root

jobs=$(nproc)
export jobs

# Compiled objects are found again in another checkout of the same sources.
export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1

say() { printf '%s\n' "$*"; }

die() {
    printf '%s: %s\n' "$(basename -- "$0")" "$*" >&2
    exit 1
}

# Prints the comment at the head of the calling script, which is its help.
print_help() { sed -n '2,/^[^#]/s/^# \{0,1\}//p' "$0"; }

# For scripts that take no argument but --help.
only_help() {
    case ${1-} in
        '') ;;
        -h | --help)
            print_help
            exit 0
            ;;
        *)
            printf '%s: unknown argument "%s"; see --help\n' "$(basename -- "$0")" "$1" >&2
            exit 2
            ;;
    esac
}

# build PRESET [TARGET...]: configures build/PRESET if need be and builds. Quiet unless it fails.
build() {
    local preset=$1 log=$root/build/$1/build.log
    shift
    mkdir -p "$root/build/$preset"
    if ! {
        if [ ! -f "$root/build/$preset/build.ninja" ]; then
            (cd "$root" && cmake --preset "$preset")
        fi && cmake --build "$root/build/$preset" --parallel "$jobs" ${1:+--target "$@"}
    } >"$log" 2>&1 </dev/null; then
        grep -nE 'error|FAILED|CMake Error' "$log" | head -n 40 >&2 || true
        printf 'The build "%s" failed; all of its output is in build/%s/build.log\n' "$preset" "$preset" >&2
        return 1
    fi
}
