#!/usr/bin/env bash
# Makes the handbook's pictures anew in each of its languages: pictures.sh [LUMO-PICTURES]
# ImageMagick, where it is installed, makes them a third as large.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
tool=${1:-$here/../../build/bin/lumo-pictures}
made=$(mktemp -d)
trap 'rm -rf "$made"' EXIT

# put MADE PICTURE: a picture that looks as before stays, as its file would differ by the date in it.
put() {
    mkdir -p "$(dirname "$2")"
    if ! command -v convert >/dev/null; then
        cp "$1" "$2"
    else
        convert "$1" +dither -colors 200 "png8:$made/small.png"
        compare -metric AE "$made/small.png" "$2" null: 2>/dev/null || mv "$made/small.png" "$2"
    fi
}

# take LANGUAGE HANDBOOK
take() {
    local picture
    "$tool" --language "$1" --size 1280x800 "$made"
    grep -o 'img/[a-z_/]*\.png' "$here/$2" | sort -u | while read -r picture; do
        put "$made/$1-1280x800-${picture##*/}" "$here/$picture"
    done
}

take cn handbook.cn.md
take ru handbook.ru.md
take en README.md
put "$made/look.png" "$here/../img/look.png"
