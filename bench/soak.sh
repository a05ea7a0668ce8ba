#!/usr/bin/env bash
# The soak: twenty short files in a list, played in repeat-all mode with each decoder in turn, while
# Lumora's private memory, handles and GDI and USER objects are sampled. Half an hour a decoder
# unless told otherwise. Usage (inside scripts/wine-env.sh):
#   soak.sh BUILD_DIR [MINUTES] [SAMPLE_SECONDS] [DECODERS]   (DECODERS: "0 1", "0" or "1")
set -euo pipefail
build=$(cd "$1" && pwd)
minutes=${2:-30}
every=${3:-300}
decoders=${4:-0 1}
work=$build/bench-soak
rm -rf "$work"
mkdir -p "$work"
names=""
for i in $(seq 1 20); do
    # Tones of 2 to 4 s, constant and variable bit rates, 44.1 and 22.05 kHz.
    sox -n -r $((i % 3 ? 44100 : 22050)) -c 2 "$work/t.wav" synth $((2 + i % 3)) sine $((200 + 40 * i)) vol 0.3
    if [ $((i % 2)) -eq 0 ]; then lame --quiet -b 128 "$work/t.wav" "$work/$i.mp3"; else lame --quiet -V 4 "$work/t.wav" "$work/$i.mp3"; fi
    names="$names*$i.mp3"
done
rm "$work/t.wav"
folder="Z:${work//\//\\}"
{ printf '这是ZEV-Lumora-正式版-的列表文件请不要修改以下参数，以免造成错误。\r\n20*1\r\n' | iconv -f UTF-8 -t CP936
  printf '%s%s\r\n' "$folder" "$names"; } > "$work/soak.qlb"
for decoder in $decoders; do
    wine "$build/bench/lumora_soak_probe.exe" "Z:$build/Lumora.exe" "$folder\\soak.qlb" "$decoder" "$minutes" "$every"
done
