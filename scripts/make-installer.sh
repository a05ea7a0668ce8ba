#!/usr/bin/env bash
# Makes Lumora's per-user installer from a Windows build folder (its Lumora.exe, tooltip.dll and icon).
# Usage: make-installer.sh BUILD_DIR OUT.exe
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "$1" && pwd)
out=$(realpath -m "$2")
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
[ -n "$version" ] || { echo "make-installer: no project version in $build/CMakeCache.txt" >&2; exit 1; }
for f in Lumora.exe tooltip.dll res/Lumora.ico; do
    [ -f "$build/$f" ] || { echo "make-installer: $build/$f is missing (build first)" >&2; exit 1; }
done
mkdir -p "$(dirname "$out")"
wizard=$(mktemp --suffix=.bmp)
trap 'rm -f "$wizard"' EXIT
python3 "$here/res/make-icon.py" --wizard "$wizard"
makensis -V2 -INPUTCHARSET UTF8 -DLUMORA_VERSION="$version" -DLUMORA_BIN="$build" \
    -DLUMORA_ICON="$build/res/Lumora.ico" -DLUMORA_WIZARD="$wizard" -DLUMORA_OUT="$out" "$here/installer/Lumora.nsi"
