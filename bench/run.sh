#!/usr/bin/env bash
# Prints Lumora's measured figures beside their floors. Nothing here passes or fails.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh >/dev/null
scripts/build.sh host win64 >/dev/null
echo "== host (Google Benchmark)"
build/host/bench/lumora_queue_bench --benchmark_min_time=0.2
build/host/bench/lumora_list_file_bench --benchmark_min_time=0.2
build/host/bench/lumora_info_block_bench --benchmark_min_time=0.2
echo "== under Wine"
scripts/wine-env.sh run bash -c 'cd build/win64 && wine bench/lumora_startup_bench.exe "Z:$PWD/Lumora.exe" "Z:$PWD/bench/lumora_floor_window.exe"'
scripts/make-demo.sh build/demo >/dev/null
echo "== playback (10 s tone), under Wine, in one run"
scripts/wine-env.sh run bench/playback.sh build/win64
