# shellcheck shell=bash
# Functions of ./run and ./test for installing packages and building. Source it with `root` set to the project's
# folder. Messages go to standard error, because standard output belongs to the programs.
: "${root:?}"

say() { printf '%s\n' "$*" >&2; }
die() {
    say "error: $1"
    shift
    local line
    for line in "$@"; do say "       $line"; done
    exit 1
}

# packages_of GROUP…: prints the packages of these groups.
packages_of() {
    local group
    for group in "$@"; do
        awk -v group="$group" '$1 == group { print $2 }' "$root/cmake/packages.txt"
    done
}

# missing_of PACKAGE…: prints those that are not installed.
missing_of() {
    local package
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || echo "$package"
    done
}

# Sets `as_root` to the command that gives root rights; fails when there is none.
find_root() {
    as_root=()
    [ "$(id -u)" -eq 0 ] && return 0
    command -v sudo >/dev/null || return 1
    # Without a terminal for a password, sudo must not need one.
    if sudo -n true 2>/dev/null || [ -t 0 ]; then
        as_root=(sudo)
        return 0
    fi
    return 1
}

# install_packages GROUP…: installs the missing packages of these groups, or prints why it cannot.
install_packages() {
    local wanted missing log
    mapfile -t wanted < <(packages_of "$@")
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        command -v cmake >/dev/null && command -v ninja >/dev/null && command -v c++ >/dev/null && return
        die "this is not a Debian system, and cmake, ninja or a C++ compiler is missing." \
            "Install the contents of these Debian packages, then try again:" "${wanted[*]}"
    fi
    mapfile -t missing < <(missing_of "${wanted[@]}")
    [ "${#missing[@]}" -eq 0 ] && return
    find_root || die "packages are missing, and installing them needs root rights." \
        "Run this, then try again:" "apt-get install --no-install-recommends ${missing[*]}"

    say "Installing ${missing[*]} …"
    mkdir -p "$root/build" || die "cannot write to $root."
    log=$root/build/install.log
    local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=120)
    "${apt[@]}" update >"$log" 2>&1 || true # old lists may suffice; otherwise the installation fails
    if ! "${apt[@]}" install --no-install-recommends "${missing[@]}" >>"$log" 2>&1; then
        grep -E '^[EW]: ' "$log" | head -n 4 >&2
        die "apt-get could not install ${missing[*]}." \
            "It needs a network; its messages are in $log."
    fi
}

# build_preset PRESET [TARGET…]: configures if necessary and builds; prints messages only on failure.
build_preset() {
    local preset=$1 folder=$root/build/$1 log=$root/build/$1.log targets=() target
    shift
    for target in "$@"; do targets+=(--target "$target"); done
    if ! mkdir -p "$root/build" || [ ! -w "$root/build" ]; then
        die "cannot write to $root/build."
    fi
    (
        flock 9 # one build at a time in this folder
        if [ -f "$folder/CMakeCache.txt" ] &&
            ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt"; then
            rm -rf "$folder" # configured in another folder
        fi
        cd "$root" || exit 1
        if [ ! -f "$folder/build.ninja" ]; then
            say "Configuring ($preset) …"
            cmake --preset "$preset" >"$log" 2>&1 || { cat "$log" >&2 && exit 1; }
        fi
        # On a terminal Ninja shows progress in one line.
        if [ -t 2 ]; then
            NINJA_STATUS="Building ($preset) [%f/%t] " cmake --build "$folder" "${targets[@]}" >&2
        else
            cmake --build "$folder" "${targets[@]}" >"$log" 2>&1 || { grep -v '^\[' "$log" >&2; exit 1; }
        fi
    ) 9>"$root/build/.lock"
}
