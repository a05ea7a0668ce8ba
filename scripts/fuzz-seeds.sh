#!/usr/bin/env bash
# Gathers the first inputs of every fuzz target into OUT/<target>: what Lumora's own writers make (the
# make_fuzz_seeds program of the fuzz build), the shared corpus of real files by kind (see its MANIFEST.md),
# and the inputs that once made a target fail (fuzz/regressions/<target>). Usage: fuzz-seeds.sh BUILD OUT
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:?build folder of the fuzz preset}
out=${2:?seed folder}
corpus=${LUMORA_CORPUS:-../shared/corpus}
[ -f "$corpus/MANIFEST.md" ] || { echo "fuzz-seeds: no corpus at $corpus" >&2; exit 1; }
rm -rf "$out"
mkdir -p "$out"
"$build/fuzz/make_fuzz_seeds" "$out"

# copy TARGET FOLDER...: the files of the corpus folders; "tail:" before a folder keeps only the last 4 KB of
# each file, where the tags lie, so that the short runs' length limit keeps them.
copy() {
    local target=$1; shift
    mkdir -p "$out/$target"
    for folder in "$@"; do
        local keep=all
        if [[ $folder == tail:* ]]; then keep=tail; folder=${folder#tail:}; fi
        for f in "$corpus/$folder"/*; do
            if [ $keep = tail ]; then tail -c 4096 "$f" >"$out/$target/$folder-$(basename "$f")"
            else cp "$f" "$out/$target/$folder-$(basename "$f")"; fi
        done
    done
}
copy mpeg_audio mpeg id3v1 video
copy id3v1 tail:mpeg tail:id3v1 tail:lyrics3
copy info_block tail:id3v1 tail:lyrics3
copy lrc lrc
copy smi smi
# head_check: a byte that picks the name (0 WAVE, 1 icon, 3 AVI), then a file's head.
mkdir -p "$out/head_check"
for f in "$corpus"/video/*; do { printf '\003'; head -c 4096 "$f"; } >"$out/head_check/video-$(basename "$f")"; done
printf '\000RIFF\044\0\0\0WAVEfmt \020\0\0\0\001\0\001\0\100\037\0\0\100\037\0\0\001\0\010\0data\0\0\0\0' \
    >"$out/head_check/wave"
printf '\001\0\0\001\0\001\0\020\020\0\0\001\0\040\0\050\0\0\0\026\0\0\0' >"$out/head_check/icon"
# file_registry: a portable copy's registry file with a key, a binary and a text value.
mkdir -p "$out/file_registry"
printf '[HKEY_CURRENT_USER\\SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup]\r\nL44=b:31\r\nName=t:E591A8\r\n' \
    >"$out/file_registry/setup"
for dir in fuzz/regressions/*/; do
    target=$(basename "$dir")
    mkdir -p "$out/$target"
    cp "$dir"* "$out/$target/"
done
