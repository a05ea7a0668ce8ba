#!/usr/bin/env bash
# Playback figures: runs lumora_playback_bench while recording the null sink, then finds each
# program's first sound after its logged start. Usage (inside scripts/wine-env.sh): playback.sh BUILD_DIR
set -euo pipefail
build=$(cd "$1" && pwd)
work=$build/bench-playback
rm -rf "$work"
mkdir -p "$work"
sox -n -r 44100 -c 2 "$work/tone.wav" synth 10 sine 440 vol 0.5
lame --quiet -b 128 "$work/tone.wav" "$work/tone.mp3"

pacat --raw --format=s16le --rate=44100 --channels=2 --latency-msec=20 /dev/zero &
keepalive=$!
sleep 0.3
parec -d nul.monitor --format=s16le --rate=44100 --channels=2 --latency-msec=20 --raw > "$work/rec.raw" &
rec=$!
for _ in $(seq 1 200); do [ -s "$work/rec.raw" ] && break; sleep 0.02; done
t0=$(( $(date +%s%3N) - $(stat -c %s "$work/rec.raw") * 1000 / 176400 ))

wine "$build/bench/lumora_playback_bench.exe" "Z:$build/Lumora.exe" "Z:$build/bench/lumora_mci_floor.exe" \
    "Z:$work/tone.mp3" "Z:$work/starts.txt" &
bench=$!
# CPU time the kernel counts for the programs under test, sampled ten times a second.
hz=$(getconf CLK_TCK)
while kill -0 "$bench" 2>/dev/null; do
    ticks=0
    for pid in $(pgrep -f 'Lumora.exe|lumora_mci_floor.exe' || true); do
        grep -q playback_bench "/proc/$pid/cmdline" 2>/dev/null && continue
        t=$(awk '{print $14 + $15}' "/proc/$pid/stat" 2>/dev/null || echo 0)
        ticks=$((ticks + t))
    done
    echo "$(date +%s%3N) $ticks" >> "$work/cpu.txt"
    sleep 0.1
done
wait "$bench" || true
kill "$rec" "$keepalive" 2>/dev/null || true
wait "$rec" "$keepalive" 2>/dev/null || true

# CPU in each stretch: the growth of the sampled tick count over the stretch.
while read -r what name from to; do
    [ "$what" = playing ] || [ "$what" = paused ] || continue
    awk -v a="$from" -v b="$to" -v hz="$hz" -v n="$name" -v w="$what" '
        $1 >= a && first == "" { first = $2; t1 = $1 }
        $1 <= b { last = $2; t2 = $1 }
        END { if (t2 > t1) printf "%-10s CPU while %-8s %5.1f%% of one core\n", n, w, 100 * (last - first) / hz / ((t2 - t1) / 1000) }
    ' "$work/cpu.txt"
done < <(tr -d '\r' < "$work/starts.txt")

# First sound: the length of leading silence after each start, found by sox's silence effect.
while read -r what name at _; do
    [ "$what" = start ] || continue
    from=$(awk -v a="$at" -v t="$t0" 'BEGIN{printf "%.3f", (a-t)/1000}')
    left=$(sox -t raw -r 44100 -e signed -b 16 -c 2 "$work/rec.raw" -n trim "$from" 4 stat 2>&1 |
           awk '/Length \(seconds\)/{print $3}')
    after=$(sox -t raw -r 44100 -e signed -b 16 -c 2 "$work/rec.raw" -n trim "$from" 4 silence 1 0.005 1% stat 2>&1 |
            awk '/Length \(seconds\)/{print $3}')
    awk -v n="$name" -v l="${left:-0}" -v a="${after:-0}" 'BEGIN{printf "%-18s first sound after %4.0f ms\n", n, (l-a)*1000}'
done < <(tr -d '\r' < "$work/starts.txt")
