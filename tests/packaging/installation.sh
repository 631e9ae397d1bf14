#!/usr/bin/env bash
# `cmake --install` into a folder of one's own: the programs run from there, also after the folder was moved, and every
# link of the documents leads to a file. package.sh builds a host with what is installed.
source "$(dirname "$0")/common.sh" "$@"

cmake --install "$build" --prefix "$work/first" >"$work/install.log" 2>&1 || fail "$(tail "$work/install.log")"
mv "$work/first" "$work/moved"
check_programs "$work/moved"
"$here/links.py" "$work/moved/share/doc/lumo" || fail "there are links that lead nowhere"
