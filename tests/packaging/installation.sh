#!/usr/bin/env bash
# `cmake --install` into a folder of one's own: the programs run from there, also after the folder was
# moved, and a host of somebody else's is built with the exported targets and loads the package.
source "$(dirname "$0")/common.sh" "$@"

cmake --install "$build" --prefix "$work/first" >"$work/install.log" 2>&1 || fail "$(tail "$work/install.log")"
mv "$work/first" "$work/moved"
check_programs "$work/moved"

mkdir "$work/host"
cp "$(dirname "$0")/otherhost.cpp" "$work/host/main.cpp"
cat >"$work/host/CMakeLists.txt" <<'CMAKE'
cmake_minimum_required(VERSION 3.25)
project(otherhost LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 17)
find_package(lumo 26 REQUIRED)
add_executable(otherhost main.cpp)
target_link_libraries(otherhost PRIVATE lumo::panelhost)
target_compile_definitions(otherhost PRIVATE PACKAGE="$<TARGET_FILE:lumo::lumo>")
CMAKE
cmake -G Ninja -S "$work/host" -B "$work/host/build" -DCMAKE_PREFIX_PATH="$work/moved" >"$work/host.log" 2>&1 &&
    cmake --build "$work/host/build" >>"$work/host.log" 2>&1 || fail "$(tail -n 30 "$work/host.log")"
cd "$work/elsewhere"
said=$(env -i HOME="$work/home" PATH=/usr/bin:/bin QT_QPA_PLATFORM=offscreen "$work/host/build/otherhost" 2>/dev/null) ||
    fail "the other host failed: $said"
[ "$said" = "19 ports, a page" ] || fail "the other host said: $said"
