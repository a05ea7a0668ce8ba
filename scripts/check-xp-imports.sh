#!/usr/bin/env bash
# The 32-bit build runs on Windows XP: it must not import what only Vista and later export.
# Usage: check-xp-imports.sh [BUILD_DIR]   (default: build/win32)
set -euo pipefail
cd "$(dirname "$0")/.."
dir=${1:-build/win32}
vista_only='GetTickCount64|InitializeSRWLock|AcquireSRWLock|ReleaseSRWLock|InitializeConditionVariable|SleepConditionVariable|WakeConditionVariable|InitOnceExecuteOnce|CreateSymbolicLink|GetFinalPathNameByHandle|RegDeleteTree|RegGetValue|CompareStringEx|LCMapStringEx|GetLocaleInfoEx|SetFileInformationByHandle|GetFileInformationByHandleEx|CancelIoEx|CreateEventEx|CreateMutexEx|FlsAlloc|InitializeCriticalSectionEx|GetDpiForWindow|SetProcessDPIAware|TaskDialog|SHGetKnownFolderPath|IFileDialog|ChangeWindowMessageFilter|GetThreadId|GetProcessId'
bad=0
for f in "$dir/Lumora.exe" "$dir/tooltip.dll"; do
    [ -f "$f" ] || { echo "check-xp-imports: $f is missing" >&2; exit 1; }
    hits=$(x86_64-w64-mingw32-objdump -p "$f" | sed -n '/Import Tables/,/Export Table/p' | grep -oE "\b($vista_only)\w*" | sort -u || true)
    if [ -n "$hits" ]; then echo "check-xp-imports: $f imports functions XP lacks: $hits" >&2; bad=1; fi
done
[ $bad -eq 0 ] && echo "check-xp-imports: $dir imports nothing XP lacks"
exit $bad
