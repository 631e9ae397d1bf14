# shellcheck shell=bash
# To be sourced with the build folder and an own folder as arguments: `build`, `work` (empty), `fail`.
set -euo pipefail
build=$1
work=$2
rm -rf "$work"
mkdir -p "$work"

fail() {
    printf 'FAIL: %s\n' "$@" >&2
    exit 1
}

# run PREFIX PROGRAM ARGUMENT…: a program of an installation, with nothing of this one's surroundings.
run() {
    local prefix=$1 program=$2
    shift 2
    env -i HOME="$work/home" PATH=/usr/bin:/bin LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen \
        "$prefix/bin/$program" "$@"
}

# check_programs PREFIX: both programs load the package from there and do their work.
check_programs() {
    local prefix=$1 seam out
    mkdir -p "$work/home" "$work/elsewhere"
    seam=$prefix/share/doc/lumo/examples/lap_seam
    cd "$work/elsewhere"
    out=$(run "$prefix" lumo-run "$seam/lap_seam.json" --trace seam.jsonl 2>&1) || fail "lumo-run: $out"
    grep -q '"finished"' seam.jsonl || fail "the seam was not finished: $out"
    out=$(run "$prefix" lumo-panel --screenshots pictures --language ru 2>&1) || fail "lumo-panel: $out"
    [ -s pictures/ru-1280x800-editor.png ] || fail "lumo-panel took no picture: $out"
}
