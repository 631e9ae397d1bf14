#!/usr/bin/env bash
# The Debian packages: unpacked into an empty folder the programs run from there, and a host is built; they
# name what is loaded and needed, and lintian finds nothing.
source "$(dirname "$0")/common.sh" "$@"

(cd "$build" && cpack -G DEB -B "$work/made") >"$work/log" 2>&1 || fail "cpack: $(tail -n 20 "$work/log")"
package=$(echo "$work"/made/lumo_*.deb)
development=$(echo "$work"/made/lumo-dev_*.deb)
prefix=$work/unpacked/usr
dpkg-deb -x "$package" "$work/unpacked"
[ ! -e "$prefix/include" ] || fail "headers are in the package of the programs"
check_programs "$prefix"
# The panel shows each page with the library of the package: the tool finds every page, no picture is empty, and
# hardly two are the same.
mkdir -p "$work/tour/bin"
cp "$3" "$work/tour/bin"
ln -s "$prefix/lib" "$prefix/share" "$work/tour"
out=$("${clean[@]}" LD_LIBRARY_PATH="$(echo "$prefix"/lib/*/lumo)" "$work/tour/bin/lumo-pictures" --language en --size 1280x800 pictures 2>&1) ||
    fail "lumo-pictures: $out"
[ -z "$(find pictures -name '*.png' -size -4k)" ] || fail "there are empty pictures"
[ "$(md5sum pictures/*.png | cut -d' ' -f1 | sort -u | wc -l)" -gt 80 ] || fail "pages look the same"
dpkg-deb -x "$development" "$work/unpacked"
check_host "$prefix"

needed="lumo (= $(dpkg-deb -f "$package" Version)), qtbase5-dev"
[ "$(dpkg-deb -f "$development" Depends)" = "$needed" ] || fail "$development does not need $needed"
depends=$(dpkg-deb -f "$package" Depends)
tr -s ' ,|' '\n' <<<"$depends" >"$work/depends"
linuxcnc=$(echo "$work"/made/lumo-bridge-linuxcnc_*.deb)
dpkg-deb -x "$linuxcnc" "$work/unpacked"
out=$("${clean[@]}" "$prefix/bin/lumo-run" --controller linuxcnc --check "$prefix/share/doc/lumo/examples/lap_seam/lap_seam.json" 2>&1) ||
    fail "lumo-run with the bridge to LinuxCNC: $out"
[[ ", $(dpkg-deb -f "$linuxcnc" Depends)," == *", linuxcnc-uspace,"* ]] || fail "$linuxcnc does not need LinuxCNC"
dpkg-deb -f "$linuxcnc" Depends | tr -s ' ,|' '\n' >>"$work/depends"
# Into files, as a reader of a pipe that ends early makes its writer fail.
ldconfig -p >"$work/libraries"
# Not what was built: that would hide a library which is not in the package.
objects=$(find "$prefix" -type f \( -path '*/bin/lumo-*' ! -name lumo-linuxcnc -o -name '*.so*' \))
while read -r library; do
    [ -z "$(find "$prefix" -name "$library")" ] || continue
    file=$(awk -v name="$library" '$1 == name { print $NF; exit }' "$work/libraries")
    [ -n "$file" ] || fail "$library is loaded and nowhere to be found"
    file=$(readlink -f "$file")
    owner=$(dpkg-query -S "$file" "${file#/usr}" 2>/dev/null | sed -n '1s/:.*//p') || true
    grep -qxF "$owner" "$work/depends" || fail "$library is of $owner; declared: $depends"
done < <(for object in $objects; do objdump -p "$object" | awk '$1 == "NEEDED" { print $2 }'; done | sort -u)

# What is loaded when it is used.
recommends=", $(dpkg-deb -f "$package" Recommends),"
[[ $recommends == *", libmosquitto1,"* && $recommends == *", libgooglepinyin0,"* ]] || fail "recommended:$recommends"

# The bridge to Modbus devices finds its libraries in the package lumo; nothing answers at the address of its example.
bridge=$(echo "$work"/made/lumo-bridge-modbus_*.deb)
dpkg-deb -x "$bridge" "$work/unpacked"
depends=$(dpkg-deb -f "$bridge" Depends)
[[ $depends == *"lumo (= $(dpkg-deb -f "$package" Version))"* && $depends == *libqt5serialbus5* ]] ||
    fail "lumo-bridge-modbus depends on $depends"
[ -z "$(ldd "$prefix"/lib/*/lumo/bridges/lumo-modbus.so | grep 'not found')" ] || fail "lumo-modbus.so does not load"
status=0
out=$("${clean[@]}" timeout 60 "$prefix/bin/lumo-modbus" \
    "$prefix/share/doc/lumo-bridge-modbus/examples/modbus_map.json" time LUMO_DO.#3 2>&1) || status=$?
[[ $status = 1 && $out == *"link down: no connection to 127.0.0.1:502"* ]] || fail "lumo-modbus: $status, $out"

desktop-file-validate "$prefix"/share/applications/*.desktop
appstreamcli validate --no-net --pedantic "$prefix"/share/metainfo/*.xml
# Building as root is what a container does.
lintian --allow-root --fail-on error,warning,info "$package" "$development" "$linuxcnc" "$bridge"
