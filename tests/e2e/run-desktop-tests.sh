#!/usr/bin/env bash
# Runs the end-to-end tests that need a taskbar (inside scripts/wine-env.sh). Wine's own root desktop has
# none: `explorer /desktop` makes one with a taskbar and a notification area, and Lumora started by the
# driver lands on the same desktop. Explorer does not pass the driver's exit code on, so the result is read
# from the driver's XML report. Usage: run-desktop-tests.sh BUILD_DIR
set -euo pipefail
build=$(cd "$1" && pwd)
report=$build/e2e-desktop.xml
rm -f "$report"
LUMORA_EXE="Z:$build/Lumora.exe" wine explorer /desktop=LumoraE2E,1280x1024 \
    "$build/tests/lumora_e2e_tests.exe" --gtest_filter='*.Desktop*' --gtest_output="xml:Z:$report"
[ -f "$report" ] || { echo "run-desktop-tests: the driver left no report" >&2; exit 1; }
grep -q '<testcase ' "$report" || { echo "run-desktop-tests: no test ran" >&2; exit 1; }
! grep -q '<failure' "$report"
