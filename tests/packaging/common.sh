# shellcheck shell=bash
# To be sourced with the build folder, an own folder and lumo-pictures as arguments: `here`, `build`, `work` (empty), `fail`,
# and `clean`, which runs a program with nothing of this one's surroundings.
set -Eeuo pipefail
# `set -e` alone ends the script without saying which command failed.
trap 'echo "FAIL: ${BASH_SOURCE[0]}:$LINENO: $BASH_COMMAND" >&2' ERR
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$1 work=$2
rm -rf "$work"
mkdir -p "$work/home" "$work/elsewhere"
clean=(env -i HOME="$work/home" PATH=/usr/bin:/bin LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen)

fail() {
    printf 'FAIL: %s\n' "$@" >&2
    exit 1
}

# check_programs PREFIX: the runner loads the package from there and welds; each man page has its program's
# options.
check_programs() {
    local program out
    cd "$work/elsewhere"
    out=$("${clean[@]}" "$1/bin/lumo-run" "$1/share/doc/lumo/examples/lap_seam/lap_seam.json" 2>&1) || fail "$out"
    for program in lumo-run lumo-panel lumo-conform; do
        diff <("${clean[@]}" "$1/bin/$program" --help | grep -oE '^  --[a-z-]+' | tr -d ' ') \
            <(zcat "$1/share/man/man1/$program.1.gz" | sed 's/\\-/-/g' | grep -E '^\.B[IR]* --[a-z-]+( |$)' |
                cut -d' ' -f2) || fail "the man page of $program has other options"
    done
}

# check_host PREFIX: host and bridge of the integrator's guide are what the guide shows and build with what is
# installed; the host welds a seam, the bridge answers.
check_host() {
    local docs=$1/share/doc/lumo/docs file
    for file in main.cpp CMakeLists.txt; do
        awk -v file="$file" '/^```$/ { shown = 0 } shown; $0 ~ "^```.* " file "$" { shown = 1 }' "$docs/integrator.md" |
            diff - "$docs/host/$file" || fail "integrator.md shows another host/$file"
    done
    cmake -G Ninja -S "$docs/host" -B "$work/host" -DCMAKE_PREFIX_PATH="$1" >"$work/host.log" 2>&1 &&
        cmake --build "$work/host" >>"$work/host.log" 2>&1 || fail "$(tail -n 30 "$work/host.log")"
    for file in backend.cpp CMakeLists.txt; do
        awk -v file="bridge/$file" '/^```$/ { shown = 0 } shown; $0 ~ "^```.* " file "$" { shown = 1 }' "$docs/integrator.md" |
            diff - "$docs/bridge/$file" || fail "integrator.md shows another bridge/$file"
    done
    cmake -G Ninja -S "$docs/bridge" -B "$work/bridge" -DCMAKE_PREFIX_PATH="$1" >"$work/host.log" 2>&1 &&
        cmake --build "$work/bridge" >>"$work/host.log" 2>&1 || fail "$(tail -n 30 "$work/host.log")"
    "${clean[@]}" timeout 60 "$1/bin/lumo-conform" "$work/bridge/mybridge.so" --only one-result,writes >"$work/conform.log" ||
        fail "$(cat "$work/conform.log")"
    "${clean[@]}" timeout 60 "$work/host/minihost" "$docs/../examples/lap_seam" lap_seam.json ||
        fail "the host did not weld the seam"
}
