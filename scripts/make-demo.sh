#!/usr/bin/env bash
# Makes the bundled demo: a few Chinese lines spoken by espeak-ng over a soft chord, encoded
# as MP3 with lame. Made here from Debian's tools, never downloaded.
set -euo pipefail
out=${1:-build/demo}
mkdir -p "$out"
target="$out/欢迎使用Lumora.mp3"
[ -s "$target" ] && exit 0
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
espeak-ng -v cmn -s 150 -w "$tmp/voice.wav" "欢迎使用 Lumora 播放器。这是一段演示音乐。祝你听得愉快。" 2>/dev/null
sox "$tmp/voice.wav" -r 44100 -c 2 "$tmp/voice44.wav"
len=$(soxi -D "$tmp/voice44.wav")
sox -n -r 44100 -c 2 "$tmp/chord.wav" synth "$len" sine 262 sine 330 sine 392 vol 0.15
sox -m "$tmp/voice44.wav" "$tmp/chord.wav" "$tmp/demo.wav" norm -3
lame --quiet -b 128 "$tmp/demo.wav" "$target"
echo "make-demo: $target"
