#!/usr/bin/env bash
# Screenshots of Lumora in each skin: the main, list and lyrics windows, to look at by eye.
#   skin-screens.sh BUILD_DIR OUT_DIR [DPI [SKIN...]]   (default: 96 DPI, skins 0 1 2 5 6)
# Writes OUT_DIR/skin-<SKIN>.png (at 96 DPI) or OUT_DIR/skin-<SKIN>-<DPI>.png, and with LUMORA_SETTINGS=1
# OUT_DIR/settings-<SKIN>.png, the settings dialog in that skin. Runs in a prefix of its own (build/wine-skins).
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$1
mkdir -p "$2"
out=$(cd "$2" && pwd)
dpi=${3:-96}
shift $(($# < 3 ? $# : 3))
[ $# -gt 0 ] || set -- 0 1 2 5 6
export LUMORA_DPI_WINE_ROOT=${LUMORA_SKIN_WINE_ROOT:-$here/../build/wine-skins}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for skin in "$@"; do
    if [ "${LUMORA_SETTINGS:-}" = 1 ]; then
        png=$out/settings-$skin.png
    elif [ "$dpi" = 96 ]; then
        png=$out/skin-$skin.png
    else
        png=$out/skin-$skin-$dpi.png
    fi
    LUMORA_SKIN=$skin "$here/dpi-screens.sh" "$build" "$work" "$dpi" >/dev/null
    mv "$work/dpi-$dpi.png" "$png"
    echo "skin-screens: $png"
done
