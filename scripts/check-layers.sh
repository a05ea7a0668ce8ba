#!/usr/bin/env bash
# Portable code never includes <windows.h>: only app/, ui/, platform/ and *_win.cpp files may.
set -euo pipefail
cd "$(dirname "$0")/.."
bad=$(grep -rlE '^\s*#\s*include\s*[<"](windows|winreg|mmsystem|commdlg|shellapi|objbase)\.h[>"]' \
        --include='*.h' --include='*.cpp' settings playback playlist mediainfo shell tools 2>/dev/null \
      | grep -v '_win\.cpp$' || true)
if [ -n "$bad" ]; then
    echo "check-layers: portable code includes Windows headers:" >&2
    echo "$bad" >&2
    exit 1
fi
echo "check-layers: portable code is free of Windows headers"
