#!/usr/bin/env bash
# Builds a release into build/package/: the size-optimised 64- and 32-bit programs, the per-user
# installer (it carries the 64-bit program), a portable zip for each and a zip of their symbols.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh release-win64 release-win32 >/dev/null
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/release-win64/CMakeCache.txt)
out=build/package
rm -rf "$out"
mkdir -p "$out"

# The program stays small: a size over this means something heavy came in.
limit=$((1536 * 1024))
for arch in win64 win32; do
    size=$(stat -c %s "build/release-$arch/Lumora.exe")
    echo "package: $arch Lumora.exe is $size bytes"
    [ "$size" -le "$limit" ] || { echo "package: $arch Lumora.exe is over $limit bytes" >&2; exit 1; }
done

scripts/check-xp-imports.sh build/release-win32
scripts/make-installer.sh build/release-win64 "$out/Lumora-$version-setup.exe"

for arch in win64 win32; do
    case $arch in
        win64) systems="64 位 Windows 7 及以上版本" ;;
        win32) systems="Windows XP 及以上版本" ;;
    esac
    stage=$out/stage-$arch/Lumora
    mkdir -p "$stage"
    cp "build/release-$arch/Lumora.exe" "build/release-$arch/tooltip.dll" "$stage/"
    : >"$stage/Lumora.portable"
    # Notepad before Windows 10 reads UTF-8 only with its mark, and lines only with CR LF.
    { printf '\xef\xbb\xbf'; sed -e "s/@VERSION@/$version/" -e "s/@SYSTEMS@/$systems/" -e 's/$/\r/' installer/Portable.txt; } \
        >"$stage/README.txt"
    (cd "$stage/.." && zip -q -X -r "../Lumora-$version-$arch-portable.zip" Lumora)
    rm -rf "$out/stage-$arch"
done

# The symbols of exactly these binaries, for reading their crash dumps.
(cd build && zip -q -X "package/Lumora-$version-symbols.zip" release-win64/*.debug release-win32/*.debug)
ls -l "$out"
