# Shared by the scripts of this folder: where the project lies, how it speaks, configures and builds.
# To be sourced by bash; it changes nothing but the variables that it sets.
# shellcheck shell=bash

set -euo pipefail

ROOT=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd -P)
PROGRAM=$(basename -- "$0")

say() { printf '%s: %s\n' "$PROGRAM" "$*" >&2; }

die() {
    say "$*"
    exit 1
}

# Prints the comment that heads a script, as its help text.
usage() { sed -n '2,/^[^#]/{/^#/!q;s/^# \{0,1\}//;p}' "$0"; }

cores() { nproc 2>/dev/null || echo 2; }

# Qt and the compilers' messages want a UTF-8 locale; a bare machine has C.UTF-8 and often nothing else.
utf8_locale() {
    case "${LC_ALL:-${LC_CTYPE:-${LANG:-}}}" in
    *[Uu][Tt][Ff]-8 | *[Uu][Tt][Ff]8) ;;
    *) export LC_ALL=C.UTF-8 ;;
    esac
}

# Makes a folder for what tests and benchmarks write, and prints its path: below TMPDIR where that is set, else in memory
# where there is room. A catalog writes each of its statements through to the disk, which takes longer than all else and
# never the same time.
scratch_folder() {
    local parent=${TMPDIR:-/tmp} room options folder
    room=$(df --output=avail --block-size=1M /dev/shm 2>/dev/null | tail -n 1) || room=0
    # Some tests make programs and run them.
    options=$(findmnt --noheadings --output OPTIONS --target /dev/shm 2>/dev/null) || options=noexec
    if [[ -z ${TMPDIR:-} && -w /dev/shm && ,$options, != *,noexec,* ]] && ((room >= 2048)); then
        parent=/dev/shm
    fi
    folder=$(mktemp -d -p "$parent")
    # Some tests go on as an ordinary user.
    chmod 755 "$folder"
    printf '%s\n' "$folder"
}

# The presets that the scripts accept are those of CMakePresets.json that are not hidden.
known_preset() { [[ $(cd "$ROOT" && cmake --list-presets 2>/dev/null) == *"\"$1\""* ]]; }

# configure PRESET: once; Ninja runs CMake again by itself when a CMake file has changed.
configure() {
    local preset=$1
    known_preset "$preset" || die "there is no preset '$preset' (see CMakePresets.json)"
    if [[ -f $ROOT/build/$preset/build.ninja ]]; then
        return
    fi
    say "configuring $preset"
    local options=()
    if [[ -n ${CI:-} ]]; then
        # Nobody debugs there: line numbers are enough, and a quarter of the compilers' time is saved.
        options=(-DCMAKE_CXX_FLAGS_DEBUG=-g1)
    fi
    (cd "$ROOT" && cmake --preset "$preset" "${options[@]}" >&2) || die "configuring $preset failed"
}

# build PRESET [FILE...]: everything, or the named files of the build folder.
build() {
    local preset=$1
    shift
    local targets=()
    if (($# > 0)); then
        targets=(--target "$@")
    fi
    say "building $preset"
    cmake --build "$ROOT/build/$preset" --parallel "$(cores)" "${targets[@]}" >&2 || die "building $preset failed"
}
