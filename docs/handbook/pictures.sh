#!/usr/bin/env bash
# Makes the handbook's pictures anew: pictures.sh [LUMO-PANEL]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
panel=${1:-$here/../../build/bin/lumo-panel}
made=$(mktemp -d)
trap 'rm -rf "$made"' EXIT
QT_QPA_PLATFORM=offscreen "$panel" --screenshots "$made" --language en
mkdir -p "$here/img"
grep -o 'img/[a-z_]*\.png' "$here/README.md" | sort -u | while read -r picture; do
    cp "$made/en-1280x800-${picture#img/}" "$here/$picture"
done
