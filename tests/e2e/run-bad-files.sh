#!/usr/bin/env bash
# Makes the malformed files afresh and opens each through Lumora (inside scripts/wine-env.sh).
# Usage: run-bad-files.sh BUILD_DIR
set -euo pipefail
build=$(cd "$1" && pwd)
rm -rf "$build/e2e-bad-files"
python3 "$(dirname "$0")/make-bad-files.py" "$build/e2e-bad-files"
LUMORA_EXE="Z:$build/Lumora.exe" LUMORA_BAD_FILES="Z:$build/e2e-bad-files" \
    wine "$build/tests/lumora_e2e_tests.exe" --gtest_filter='BadFiles*'
