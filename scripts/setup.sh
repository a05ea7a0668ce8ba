#!/usr/bin/env bash
# Installs what building, testing and running Lumora need on a Debian 12 machine.
# Skips what is already there and says what it installs. Safe to run again.
set -euo pipefail

packages=(
    cmake ninja-build g++ pkg-config clang          # host build, sanitizers, libFuzzer
    googletest libbenchmark-dev                     # GoogleTest sources, built per target; benchmarks
    mingw-w64 g++-mingw-w64-x86-64 g++-mingw-w64-i686
    wine wine64                                     # `wine` runs the win64 build
    xvfb xauth                                      # virtual display
    pulseaudio pulseaudio-utils                     # null sink, recorded with parec
    gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-plugins-ugly gstreamer1.0-plugins-bad gstreamer1.0-libav
    locales fonts-wqy-microhei                      # zh_CN.UTF-8 (code page 936) and a CJK font
    sox lame ffmpeg espeak-ng                       # demo media, recordings, screenshots
    python3                                         # the bad-files generator, the icon
    nsis zip                                        # the installer and the portable zips
)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$p")
    fi
done

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; elif command -v sudo >/dev/null; then sudo "$@"; else
        echo "setup: need root (or sudo) to run: $*" >&2; exit 1
    fi
}

if [ ${#missing[@]} -gt 0 ]; then
    echo "setup: installing ${missing[*]}"
    as_root env DEBIAN_FRONTEND=noninteractive apt-get update -qq
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
else
    echo "setup: all packages present"
fi

# Locales: zh_CN.UTF-8 gives Wine code page 936, en_US.UTF-8 gives 1252.
for loc in zh_CN en_US; do
    if ! locale -a 2>/dev/null | grep -qix "${loc}.utf-\?8"; then
        echo "setup: generating locale ${loc}.UTF-8"
        as_root localedef -i "$loc" -c -f UTF-8 "${loc}.UTF-8" || true
    fi
done
