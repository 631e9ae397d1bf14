# shellcheck shell=bash
# To be sourced with the build folder and an own folder as arguments: `here`, `build`, `work` (empty), `fail`.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
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

# check_programs PREFIX: the runner loads the package from there and welds; each man page has its program's
# options.
check_programs() {
    local prefix=$1 seam out program
    mkdir -p "$work/home" "$work/elsewhere"
    seam=$prefix/share/doc/lumo/examples/lap_seam
    cd "$work/elsewhere"
    out=$(run "$prefix" lumo-run "$seam/lap_seam.json" --trace seam.jsonl 2>&1) || fail "lumo-run: $out"
    grep -q '"finished"' seam.jsonl || fail "the seam was not finished: $out"
    for program in lumo-run lumo-panel; do
        diff <(run "$prefix" "$program" --help | grep -oE '^  --[a-z-]+' | tr -d ' ') \
            <(zcat "$prefix/share/man/man1/$program.1.gz" | sed 's/\\-/-/g' | grep -E '^\.B[IR]* --[a-z-]+( |$)' |
                cut -d' ' -f2) || fail "the man page of $program has other options"
    done
}

# check_panel PREFIX: the panel shows each page with the package from there, in each language: no picture is
# missing, which it says itself, none is empty, and hardly any is another one's.
check_panel() {
    local out
    cd "$work/elsewhere"
    out=$(run "$1" lumo-panel --screenshots pictures 2>&1) || fail "lumo-panel: $out"
    [ -z "$(find pictures -name '*.png' -size -4k)" ] || fail "there are empty pictures"
    [ "$(md5sum pictures/*.png | cut -d' ' -f1 | sort -u | wc -l)" -gt 500 ] || fail "pages look the same"
}

# check_host PREFIX: the host of the integrator's guide is what the guide shows, builds with what is installed
# and welds a seam.
check_host() {
    local prefix=$1 docs=$1/share/doc/lumo/docs file
    for file in main.cpp CMakeLists.txt; do
        awk -v file="$file" '/^```$/ { shown = 0 } shown; $0 ~ "^```.* " file "$" { shown = 1 }' "$docs/integrator.md" |
            diff - "$docs/host/$file" || fail "integrator.md shows another host/$file"
    done
    cmake -G Ninja -S "$docs/host" -B "$work/host" -DCMAKE_PREFIX_PATH="$prefix" >"$work/host.log" 2>&1 &&
        cmake --build "$work/host" >>"$work/host.log" 2>&1 || fail "$(tail -n 30 "$work/host.log")"
    cp -r "$prefix/share/doc/lumo/examples/lap_seam" "$work/seam"
    env -i HOME="$work/home" PATH=/usr/bin:/bin QT_QPA_PLATFORM=offscreen \
        timeout 60 "$work/host/minihost" "$work/seam" lap_seam.json || fail "the host did not weld the seam"
}
