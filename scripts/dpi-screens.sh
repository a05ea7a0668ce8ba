#!/usr/bin/env bash
# Screenshots of Lumora's main, list and lyrics windows at several screen DPIs, to look at by eye:
# nothing may be clipped, overlap or come out blurred at any of them.
#   dpi-screens.sh BUILD_DIR OUT_DIR [DPI...]      (default DPIs: 96 144 192)
# LUMORA_SKIN=N shows skin N (L35) with the coloured progress track; LUMORA_SETTINGS=1 shows the settings
# dialog instead of the three windows (scripts/skin-screens.sh uses both).
# Writes OUT_DIR/dpi-<DPI>.png. Wine reads the DPI ("LogPixels") as each program starts, its virtual
# desktop included, so each DPI gets a session of its own, in a prefix of its own (build/wine-dpi) that
# the tests never use, with Wine's "light" visual styles on.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd)
mkdir -p "$2"
out=$(cd "$2" && pwd)
shift 2
[ $# -gt 0 ] || set -- 96 144 192
export LUMORA_WINE_ROOT=${LUMORA_DPI_WINE_ROOT:-$here/../build/wine-dpi}
mkdir -p "$LUMORA_WINE_ROOT"
media=$LUMORA_WINE_ROOT/media
mkdir -p "$media"

# A quiet minute with lyrics beside it: the lyrics window opens by itself for a file with lyrics.
song="$media/演示歌曲.wav"
[ -s "$song" ] || sox -n -r 22050 -c 1 "$song" synth 60 sine 440 vol 0.01
# (the first line is the heading, never shown)
printf '[00:00.00]演示\r\n[00:01.00]第一句歌词：窗口的每个部分都随 DPI 缩放，字迹清晰，一个字也不缺\r\n[00:40.00]第二句歌词\r\n' |
    iconv -f UTF-8 -t GB18030 >"$media/演示歌曲.lrc"

# A display large enough for all three windows at 192 DPI.
n=$(for d in $(seq 150 199); do [ -e "/tmp/.X$d-lock" ] || [ -e "/tmp/.X11-unix/X$d" ] || { echo "$d"; break; }; done)
Xvfb ":$n" -screen 0 2000x1400x24 -nolisten tcp >"$LUMORA_WINE_ROOT/xvfb.log" 2>&1 &
xvfb=$!
trap 'kill "$xvfb" 2>/dev/null || true' EXIT
for _ in $(seq 1 100); do [ -e "/tmp/.X11-unix/X$n" ] && break; sleep 0.1; done
export DISPLAY=:$n

for dpi in "$@"; do
    "$here/wine-env.sh" run bash -c '
        set -euo pipefail
        dpi=$1 exe=$2 song=$3 png=$4
        wine reg add "HKCU\\Control Panel\\Desktop" /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null
        wine reg add "HKLM\\System\\CurrentControlSet\\Hardware Profiles\\Current\\Software\\Fonts" \
            /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null
        # A fresh start with the main window at the top left (15 pixels, kept as 225 twips), away from the
        # pointer in the middle of the display; the list and lyrics windows come beside and under it.
        key="HKCU\\Software\\Tavrinsoft\\TavrinPlayer\\setup"
        wine reg delete "HKCU\\Software\\Tavrinsoft" /f >/dev/null 2>&1 || true
        wine reg add "$key" /v LEFT /t REG_BINARY /d 323235 /f >/dev/null
        wine reg add "$key" /v TOP /t REG_BINARY /d 323235 /f >/dev/null
        if [ -n "${LUMORA_SKIN:-}" ]; then
            wine reg add "$key" /v L35 /t REG_BINARY /d "3$LUMORA_SKIN" /f >/dev/null
            wine reg add "$key" /v L43 /t REG_BINARY /d 31 /f >/dev/null
        fi
        # Visual styles on, as on Windows 10 and 11: the themed controls must go with Lumora'"'"'s colours.
        theme="HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\ThemeManager"
        wine reg add "$theme" /v DllName /d "C:\\windows\\resources\\themes\\light\\light.msstyles" /f >/dev/null
        wine reg add "$theme" /v ColorName /d NormalColor /f >/dev/null
        wine reg add "$theme" /v SizeName /d NormalSize /f >/dev/null
        wine reg add "$theme" /v ThemeActive /d 1 /f >/dev/null
        # A new session: the desktop too at this DPI.
        wineserver -k 2>/dev/null || true
        wineserver -w
        arg=$(winepath -w "$song")
        # The windows at the top left; the settings dialog in the middle of the desktop.
        crop="$((dpi * 17 / 2)):$((dpi * 11 / 2)):0:0"
        if [ "${LUMORA_SETTINGS:-}" = 1 ]; then
            arg=set
            crop="$((dpi * 11)):$((dpi * 17 / 2)):$((1000 - dpi * 11 / 2)):$((700 - dpi * 17 / 4))"
        fi
        wine explorer /desktop=LumoraDpi,2000x1400 "$exe" "$arg" &
        pid=$!
        sleep 14
        ffmpeg -loglevel error -y -f x11grab -video_size 2000x1400 -i "$DISPLAY" -frames:v 1 -vf "crop=$crop" "$png"
        kill "$pid" 2>/dev/null || true
        wineserver -k 2>/dev/null || true
    ' _ "$dpi" "$build/Lumora.exe" "$song" "$out/dpi-$dpi.png"
    echo "dpi-screens: $out/dpi-$dpi.png"
done
