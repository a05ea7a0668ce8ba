#!/usr/bin/env bash
# Makes the bundled demo: a few Chinese lines spoken by espeak-ng over a soft chord, encoded
# as MP3 with lame, with an LRC file beside it whose lines are timed to the speech. Made here from
# Debian's tools, never downloaded.
set -euo pipefail
out=${1:-build/demo}
mkdir -p "$out"
target="$out/欢迎使用Lumora.mp3"
lyrics="$out/欢迎使用Lumora.lrc"
[ -s "$target" ] && [ -s "$lyrics" ] && exit 0
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
lines=("欢迎使用 Lumora 播放器。" "这是一段演示音乐。" "歌词随着播放逐行显示。" "祝你听得愉快。")
start=0.5
: >"$tmp/demo.lrc"
parts=()
sox -n -r 44100 -c 2 "$tmp/lead.wav" trim 0 "$start"
parts+=("$tmp/lead.wav")
for i in "${!lines[@]}"; do
    espeak-ng -v cmn -s 150 -w "$tmp/line$i.raw.wav" "${lines[$i]}" 2>/dev/null
    # Each line, then a short breath before the next.
    sox "$tmp/line$i.raw.wav" -r 44100 -c 2 "$tmp/line$i.wav" pad 0 0.6
    parts+=("$tmp/line$i.wav")
    printf '[%02d:%05.2f]%s\r\n' "$(python3 -c "print(int($start // 60))")" \
        "$(python3 -c "print($start % 60)")" "${lines[$i]}" >>"$tmp/demo.lrc"
    start=$(python3 -c "print(round($start + $(soxi -D "$tmp/line$i.wav"), 2))")
done
sox "${parts[@]}" "$tmp/voice44.wav"
len=$(soxi -D "$tmp/voice44.wav")
sox -n -r 44100 -c 2 "$tmp/chord.wav" synth "$len" sine 262 sine 330 sine 392 vol 0.15
sox -m "$tmp/voice44.wav" "$tmp/chord.wav" "$tmp/demo.wav" norm -3
lame --quiet -b 128 "$tmp/demo.wav" "$target"
# Its tag (ID3v1, code page 936 as most Chinese players write it): title, artist, album, year.
python3 - "$target" <<'PY'
import sys
field = lambda text, size: text.encode("gbk")[:size].ljust(size, b"\0")
tag = b"TAG" + field("欢迎使用Lumora", 30) + field("Lumora开发组", 30) + field("演示", 30) + b"2026" + bytes(30) + b"\xff"
open(sys.argv[1], "ab").write(tag)
PY
# Lyrics files as most Chinese players write them: code page 936.
iconv -f UTF-8 -t GBK "$tmp/demo.lrc" >"$lyrics"
echo "make-demo: $target"
