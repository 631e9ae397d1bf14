#!/usr/bin/env bash
# Makes the handbook's pictures anew: pictures.sh [LUMO-PICTURES]
# ImageMagick, where it is installed, makes them a third as large.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
tool=${1:-$here/../../build/bin/lumo-pictures}
made=$(mktemp -d)
trap 'rm -rf "$made"' EXIT
"$tool" --language en --size 1280x800 "$made"
mkdir -p "$here/img"
cp "$made/look.png" "$here/../img/look.png"
grep -o 'img/[a-z_]*\.png' "$here/README.md" | sort -u | while read -r picture; do
    made_picture=$made/en-1280x800-${picture#img/}
    if command -v convert >/dev/null; then
        convert "$made_picture" +dither -colors 200 "png8:$here/$picture"
    else
        cp "$made_picture" "$here/$picture"
    fi
done
