#!/usr/bin/env bash
# Screenshots of Lumora in each skin: the main, list and lyrics windows, to look at by eye.
#   skin-screens.sh BUILD_DIR OUT_DIR [DPI [SKIN...]]   (default: 96 DPI, skins 0 1 2 5 6)
# Writes OUT_DIR/skin-<SKIN>.png (at 96 DPI) or OUT_DIR/skin-<SKIN>-<DPI>.png, and with LUMORA_SETTINGS=1
# OUT_DIR/settings-<SKIN>.png, the settings dialog in that skin. Runs in a prefix of its own (build/wine-skins).
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd)
mkdir -p "$2"
out=$(cd "$2" && pwd)
dpi=${3:-96}
shift $(($# < 3 ? $# : 3))
[ $# -gt 0 ] || set -- 0 1 2 5 6
export LUMORA_WINE_ROOT=${LUMORA_SKIN_WINE_ROOT:-$here/../build/wine-skins}
mkdir -p "$LUMORA_WINE_ROOT/media"
song="$LUMORA_WINE_ROOT/media/演示歌曲.wav"
[ -s "$song" ] || sox -n -r 22050 -c 1 "$song" synth 60 sine 440 vol 0.01
printf '[00:00.00]演示\r\n[00:01.00]第一句歌词：界面随心换\r\n[00:40.00]第二句歌词\r\n' |
    iconv -f UTF-8 -t GB18030 >"$LUMORA_WINE_ROOT/media/演示歌曲.lrc"

n=$(for d in $(seq 150 199); do [ -e "/tmp/.X$d-lock" ] || [ -e "/tmp/.X11-unix/X$d" ] || { echo "$d"; break; }; done)
Xvfb ":$n" -screen 0 2000x1400x24 -nolisten tcp >"$LUMORA_WINE_ROOT/xvfb.log" 2>&1 &
xvfb=$!
trap 'kill "$xvfb" 2>/dev/null || true' EXIT
for _ in $(seq 1 100); do [ -e "/tmp/.X11-unix/X$n" ] && break; sleep 0.1; done
export DISPLAY=:$n

for skin in "$@"; do
    for what in main ${LUMORA_SETTINGS:+settings}; do
        if [ "$what" = main ]; then
            png=$out/skin-$skin.png
            [ "$dpi" = 96 ] || png=$out/skin-$skin-$dpi.png
        else
            png=$out/settings-$skin.png
        fi
        "$here/wine-env.sh" run bash -c '
            set -euo pipefail
            dpi=$1 exe=$2 song=$3 png=$4 skin=$5 what=$6
            wine reg add "HKCU\\Control Panel\\Desktop" /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null
            wine reg add "HKLM\\System\\CurrentControlSet\\Hardware Profiles\\Current\\Software\\Fonts" \
                /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null
            key="HKCU\\Software\\Tavrinsoft\\TavrinPlayer\\setup"
            wine reg delete "HKCU\\Software\\Tavrinsoft" /f >/dev/null 2>&1 || true
            wine reg add "$key" /v LEFT /t REG_BINARY /d 323235 /f >/dev/null
            wine reg add "$key" /v TOP /t REG_BINARY /d 323235 /f >/dev/null
            wine reg add "$key" /v L35 /t REG_BINARY /d "3$skin" /f >/dev/null
            wine reg add "$key" /v L43 /t REG_BINARY /d 31 /f >/dev/null
            wineserver -k 2>/dev/null || true
            wineserver -w
            arg=$(winepath -w "$song")
            [ "$what" = main ] || arg=set
            wine explorer /desktop=LumoraSkins,2000x1400 "$exe" "$arg" &
            pid=$!
            sleep 14
            # The windows at the top left; the dialog in the middle of the desktop.
            crop="$((dpi * 17 / 2)):$((dpi * 11 / 2)):0:0"
            [ "$what" = main ] || crop="$((dpi * 11)):$((dpi * 17 / 2)):$((1000 - dpi * 11 / 2)):$((700 - dpi * 17 / 4))"
            ffmpeg -loglevel error -y -f x11grab -video_size 2000x1400 -i "$DISPLAY" -frames:v 1 \
                -vf "crop=$crop" "$png"
            kill "$pid" 2>/dev/null || true
            wineserver -k 2>/dev/null || true
        ' _ "$dpi" "$build/Lumora.exe" "$song" "$png" "$skin" "$what"
        echo "skin-screens: $png"
    done
done
