#!/usr/bin/env bash
# End-to-end playback tests with their sound: records the null sink while the driver plays files
# through Lumora, then checks each stretch the driver marked as sounding or silent.
# Usage: run-sound-tests.sh BUILD_DIR   (inside scripts/wine-env.sh)
set -euo pipefail
build=$(cd "$1" && pwd)
work=$build/e2e-sound
rm -rf "$work"
mkdir -p "$work/media"

# Short tones (distinct pitches) and a longer one for pause and seek.
mkdir -p "$work/media/tones"
for i in 1 2 3; do
    sox -n -r 44100 -c 2 "$work/t$i.wav" synth 2 sine $((300 + 200 * i)) vol 0.5
    lame --quiet -b 128 "$work/t$i.wav" "$work/media/tones/tone$i.mp3"
done
sox -n -r 44100 -c 2 "$work/long.wav" synth 20 sine 500 vol 0.5
lame --quiet -b 128 "$work/long.wav" "$work/media/long.mp3"
# Variable bit rate at every MPEG version's rates: lame -V 2 and -V 9 of a 4 s tone.
mkdir -p "$work/media/vbr"
for clip in v2:44100:44.1 v9:44100:44.1 v2:22050:22.05 v9:11025:11.025 v9:8000:8; do
    IFS=: read -r q rate khz <<<"$clip"
    sox -n -r "$rate" -c 2 "$work/vbr.wav" synth 4 sine 440 vol 0.5
    lame --quiet -V "${q#v}" --resample "$khz" "$work/vbr.wav" "$work/media/vbr/$q-${khz%%.*}k.mp3"
done
# A short video in the two codecs every Windows and Wine decode.
for clip in "clip.avi -c:v msvideo1" "clip-cinepak.avi -c:v cinepak"; do
    # shellcheck disable=SC2086
    ffmpeg -loglevel error -y -f lavfi -i testsrc=size=320x240:rate=15 -f lavfi -i sine=frequency=600:sample_rate=22050 \
        -t 4 ${clip#* } -c:a pcm_s16le -shortest "$work/media/${clip%% *}"
done
# An MPEG-1 program stream, as VCD-era files are: the movie device plays it through the system's
# MPEG filters.
ffmpeg -loglevel error -y -f lavfi -i testsrc=size=352x240:rate=25 -f lavfi -i sine=frequency=600:sample_rate=44100 \
    -t 8 -af volume=3 -c:v mpeg1video -b:v 1000k -c:a mp2 -b:a 192k -shortest -f mpeg "$work/media/clip.mpg"
# A file with a media name that no decoder can play.
head -c 100000 /dev/zero > "$work/media/zeros.mp3"

# The null sink renders only while something plays into it; a stream of zeros keeps it running,
# so the recording's clock is the wall clock the driver marks its stretches with.
pacat --raw --format=s16le --rate=44100 --channels=2 --latency-msec=20 /dev/zero &
keepalive=$!
sleep 0.3
parec -d nul.monitor --format=s16le --rate=44100 --channels=2 --latency-msec=20 --raw > "$work/rec.raw" &
rec=$!
# The recording's first bytes arrive a while after parec starts: take the wall-clock time of its
# first sample from the first bytes that are there.
for _ in $(seq 1 200); do
    [ -s "$work/rec.raw" ] && break
    sleep 0.02
done
now=$(date +%s%3N)
bytes=$(stat -c %s "$work/rec.raw")
t0=$(( now - bytes * 1000 / 176400 ))
echo "$t0" > "$work/t0"
set +e
LUMORA_EXE="Z:$build/Lumora.exe" LUMORA_E2E_MEDIA="Z:$work/media" LUMORA_EVENT_LOG="Z:$work/events.txt" \
    wine "$build/tests/lumora_e2e_tests.exe" --gtest_filter="${LUMORA_SOUND_FILTER:-Sound*}"
rc=$?
set -e
kill "$rec" "$keepalive" 2>/dev/null || true
wait "$rec" "$keepalive" 2>/dev/null || true

fail=0
if [ -f "$work/events.txt" ]; then
    while read -r kind from to label; do
        [ -n "$kind" ] || continue
        read -r start len < <(awk -v a="$from" -v b="$to" -v t="$t0" 'BEGIN{printf "%.3f %.3f\n", (a-t)/1000, (b-a)/1000}')
        rms=$(sox -t raw -r 44100 -e signed -b 16 -c 2 "$work/rec.raw" -n trim "$start" "$len" stat 2>&1 |
              awk '/RMS +amplitude/{print $3}')
        rms=${rms:-0}
        # The tones play at an RMS of about 0.34; a stretch counts as silent below a tenth of that
        # (a pause may let a few milliseconds the sound server already held slip out).
        # "quieter": still heard, and at most two thirds of the stretch before it.
        ok=$(awk -v r="$rms" -v k="$kind" -v p="${previous:-0}" 'BEGIN{
            good = k=="sound" ? r>0.05 : k=="quieter" ? (r>0.002 && r<p*2/3) : r<0.03; print good ? "ok" : "FAILED"}')
        echo "sound check: $label: expected $kind, RMS $rms ($ok)"
        [ "$ok" = ok ] || fail=1
        previous=$rms
    done < "$work/events.txt"
else
    echo "sound check: the driver left no events" >&2
    fail=1
fi
[ $rc -eq 0 ] && [ $fail -eq 0 ]
