#!/usr/bin/env bash
# Configures and builds the given presets (default: win64).
set -euo pipefail
cd "$(dirname "$0")/.."
for preset in "${@:-win64}"; do
    echo "== build $preset"
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset"
done
