#!/usr/bin/env bash
# Sets up the machine, builds Lumora for Windows and starts it under Wine.
# With no display, Lumora runs on a virtual one and a screenshot is saved to build/screenshot.png.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh win64 >/dev/null
scripts/make-demo.sh build/demo >/dev/null
exe=build/win64/Lumora.exe
echo "run: built $exe"
# With no arguments Lumora plays the bundled demo.
if [ $# -eq 0 ]; then set -- "Z:$(pwd -P | tr / '\\')\\build\\demo\\欢迎使用Lumora.mp3"; fi

if [ -n "${DISPLAY:-}" ]; then
    exec scripts/wine-env.sh run wine "$exe" "$@"
fi

# Headless: a desktop with window frames on the virtual display, then a screenshot.
export LUMORA_RUN_SECONDS=${LUMORA_RUN_SECONDS:-8}
scripts/wine-env.sh run bash -c '
    wine explorer /desktop=Lumora,1024x768 "$0" "${@}" &
    pid=$!
    sleep "$LUMORA_RUN_SECONDS"
    ffmpeg -loglevel error -y -f x11grab -video_size 1024x768 -i "$DISPLAY" -frames:v 1 build/screenshot.png \
        && echo "run: screenshot saved to build/screenshot.png"
    kill "$pid" 2>/dev/null || true
' "$exe" "$@"
