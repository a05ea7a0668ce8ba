#!/usr/bin/env bash
# The long fuzz run (not part of the test command): every fuzz target, or those named, for MINUTES each
# (default 10) under AddressSanitizer and UndefinedBehaviorSanitizer, starting from the seeds
# (scripts/fuzz-seeds.sh). Writes build/fuzz-long/summary.txt: executions, coverage (edges and features),
# corpus size and failing inputs per target. A failing input is kept in build/fuzz-long/<target>/; fix it and
# keep it in fuzz/regressions/<target>/.
# Usage: scripts/fuzz-long.sh [-m MINUTES] [target...]     e.g. scripts/fuzz-long.sh -m 1 ini lrc
set -euo pipefail
cd "$(dirname "$0")/.."
minutes=10
if [ "${1:-}" = -m ]; then minutes=$2; shift 2; fi
out=build/fuzz-long
scripts/build.sh fuzz >/dev/null
scripts/fuzz-seeds.sh build/fuzz "$out/seeds"
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for f in build/fuzz/fuzz/fuzz_*; do targets+=("$(basename "$f" | sed 's/^fuzz_//')"); done
fi
summary=$out/summary.txt
printf '%-14s %8s %12s %8s %8s %10s %s\n' target minutes execs cov ft corpus failing >"$summary"
for t in "${targets[@]}"; do
    fuzzer=build/fuzz/fuzz/fuzz_$t
    [ -x "$fuzzer" ] || { echo "fuzz-long: no target $t" >&2; exit 1; }
    dir=$out/$t
    mkdir -p "$dir/corpus" "$out/seeds/$t"
    rm -f "$dir"/crash-* "$dir"/leak-* "$dir"/timeout-* "$dir"/oom-*
    echo "== $t: $minutes min"
    # A larger length limit than the short runs: whole tails and headers of real files fit.
    "$fuzzer" -max_total_time=$((minutes * 60)) -max_len=65536 -timeout=10 -rss_limit_mb=2048 \
        -print_final_stats=1 -artifact_prefix="$dir/" "$dir/corpus" "$out/seeds/$t" >"$dir/log.txt" 2>&1 || true
    execs=$(grep -o 'stat::number_of_executed_units: [0-9]*' "$dir/log.txt" | grep -o '[0-9]*$' || true)
    last=$(grep -E '^#[0-9]+' "$dir/log.txt" | tail -1)
    cov=$(grep -o 'cov: [0-9]*' <<<"$last" | grep -o '[0-9]*' || true)
    ft=$(grep -o 'ft: [0-9]*' <<<"$last" | grep -o '[0-9]*' || true)
    corp=$(grep -o 'corp: [0-9]*' <<<"$last" | grep -o '[0-9]*' || true)
    if [ -z "$execs" ]; then execs=$(grep -o '^#[0-9]*' <<<"$last" | tr -d '#' || true); fi
    failing=$(cd "$dir" && ls crash-* leak-* timeout-* oom-* 2>/dev/null | tr '\n' ' ' || true)
    printf '%-14s %8s %12s %8s %8s %10s %s\n' "$t" "$minutes" "${execs:-?}" "${cov:-?}" "${ft:-?}" "${corp:-?}" \
        "${failing:-none}" >>"$summary"
    tail -1 "$summary"
done
echo "summary: $summary"
