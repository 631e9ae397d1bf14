#!/usr/bin/env bash
# Makes the handbook's pictures anew in each of its languages: pictures.sh [LUMO-PICTURES]
# ImageMagick, where it is installed, makes them a third as large.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
tool=${1:-$here/../../build/bin/lumo-pictures}
made=$(mktemp -d)
trap 'rm -rf "$made"' EXIT

# take LANGUAGE HANDBOOK
take() {
    local picture
    "$tool" --language "$1" --size 1280x800 "$made"
    grep -o 'img/[a-z_/]*\.png' "$here/$2" | sort -u | while read -r picture; do
        mkdir -p "$(dirname "$here/$picture")"
        if command -v convert >/dev/null; then
            convert "$made/$1-1280x800-${picture##*/}" +dither -colors 200 "png8:$here/$picture"
        else
            cp "$made/$1-1280x800-${picture##*/}" "$here/$picture"
        fi
    done
}

take cn handbook.cn.md
take ru handbook.ru.md
take en README.md
cp "$made/look.png" "$here/../img/look.png"
