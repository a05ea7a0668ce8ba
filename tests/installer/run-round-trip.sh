#!/usr/bin/env bash
# The installer's round trip under Wine, in a Wine prefix of its own: a silent install, the installed
# Lumora started and closed, a silent uninstall; then nothing that Lumora or its installer wrote may be
# left in the user's profile or registry.
# Usage: run-round-trip.sh BUILD_DIR [SETUP.exe]   (inside scripts/wine-env.sh)
# Without SETUP, the installer is made from BUILD_DIR's program by scripts/make-installer.sh.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$(cd "$1" && pwd)
work=$build/install-round-trip
rm -rf "$work"
mkdir -p "$work"
setup=${2:-$work/Lumora-setup.exe}
[ $# -ge 2 ] || "$root/scripts/make-installer.sh" "$build" "$setup"
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")

# A prefix of its own: what other tests left must not count, and nothing of this one stays for them.
# The window manager setting follows the environment's prefix; the shortcut makes no menu entry on the host.
managed=$(cat "${WINEPREFIX:-}/.lumora-managed" 2>/dev/null || echo Y)
export WINEPREFIX=$work/prefix
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:+$WINEDLLOVERRIDES;}winemenubuilder.exe=d"
trap 'wineserver -k 2>/dev/null || true' EXIT
wineboot -i >"$work/wineboot.log" 2>&1
wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d "$managed" /f >/dev/null 2>&1
wineserver -w

fail=0
check() {
    local what=$1
    shift
    if "$@"; then echo "round trip: $what: ok"; else echo "round trip: $what: FAILED"; fail=1; fi
}
key() { wine reg query "$1" >/dev/null 2>&1; }
no_key() { ! key "$1"; }
value() { wine reg query "$1" /v "$2" 2>/dev/null | tr -d '\r' | awk -v n="$2" '$1 == n { sub(/^ *[^ ]+ +[^ ]+ +/, ""); print }'; }
is() { [ "$1" = "$2" ] || { echo "  \"$1\" is not \"$2\""; return 1; }; }
unix() { winepath -u "$1" 2>/dev/null; }

# What the user's and the machine's scope hold, one line a key, value or file: HKEY_CURRENT_USER, all
# of HKEY_LOCAL_MACHINE (a limited account may write nothing there, so neither may Lumora), the user's
# profile and the Windows directory. Left out: Wine's own keys, the hardware state Wine writes again at
# each display start (HKEY_LOCAL_MACHINE\System), the temporary folders (where the uninstaller runs from and stays until the next start of Windows)
# and the shared places the installer may be the first to make, which Windows keeps (the Uninstall key
# itself and the per-user Programs folder).
snapshot() {
    wine regedit /E "$work/$1-user.reg" HKEY_CURRENT_USER
    wine regedit /E "$work/$1-machine.reg" HKEY_LOCAL_MACHINE
    {
        python3 - "$work/$1-user.reg" "$work/$1-machine.reg" <<'EOF'
import sys
for path in sys.argv[1:]:
    key = None
    text = open(path, 'rb').read().decode('utf-16').replace('\r', '').replace('\\\n', '')
    for line in text.split('\n'):
        if line.startswith('['):
            key = line
            print(key)
        elif line.strip() and key and not line.startswith('#'):
            print(key, line.strip())
EOF
        (cd "$profile" && find . -path ./Temp -prune -o -print)
        (cd "$windows" && find . -path ./temp -prune -o -print | sed 's|^\.|windows|')
    } | grep -v -e '^\[HKEY_CURRENT_USER\\Software\\Wine[]\\]' -e '^\[HKEY_LOCAL_MACHINE\\System[]\\]' \
        -e '^\[HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\]$' \
        -e '^\./AppData/Local/Programs$' | sort >"$work/$1.txt"
}

IFS=';' read -r appdata localappdata < <(wine cmd /c 'echo %APPDATA%;%LOCALAPPDATA%' 2>/dev/null | tr -d '\r')
profile=$(unix "${appdata%\\AppData\\*}")
windows=$(unix 'C:\windows')
# Windows always has the user's classes key; a fresh Wine prefix may not, and it stays once made.
wine reg add 'HKCU\Software\Classes' /f >/dev/null 2>&1
snapshot before

wine "$setup" /S
uninstall='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Lumora'
folder="$localappdata\\Programs\\Lumora"
check "the program's files are in $folder" \
    test -f "$(unix "$folder\\Lumora.exe")" -a -f "$(unix "$folder\\tooltip.dll")" -a -f "$(unix "$folder\\Uninstall.exe")"
check "the Start menu entry" test -f "$(unix "$appdata\\Microsoft\\Windows\\Start Menu\\Programs\\Lumora.lnk")"
check "the uninstall entry's name" is "$(value "$uninstall" DisplayName)" Lumora
check "its version" is "$(value "$uninstall" DisplayVersion)" "$version"
check "its folder" is "$(value "$uninstall" InstallLocation)" "$folder"
check "its silent uninstall" is "$(value "$uninstall" QuietUninstallString)" "\"$folder\\Uninstall.exe\" /S"

# The installed program, started as the installer's last page starts it to choose file types, and closed
# as its close button does: it registers its balloon-tip component, ".mp3" and the folder verb, and keeps
# its settings, all of which the uninstaller must then take away.
check "the installed Lumora starts and closes" env LUMORA_EXE="$folder\\Lumora.exe" \
    wine "$build/tests/lumora_e2e_tests.exe" --gtest_filter=Installed.* --gtest_brief=1
registered() { key 'HKCU\Software\Classes\TT.Tooltip' || key 'HKLM\Software\Classes\TT.Tooltip'; }
check "it registered its balloon-tip component" registered
check "and the folder verb" key 'HKCU\Software\Classes\Directory\shell\ZEV-PLAYER\command'

# The uninstaller copies itself to the temporary folder and returns at once; the copy is done when
# the prefix's last process has ended.
wine "$(unix "$folder\\Uninstall.exe")" /S
wineserver -w
check "no install folder" test ! -e "$(unix "$folder")"
check "no Start menu entry" test ! -e "$(unix "$appdata\\Microsoft\\Windows\\Start Menu\\Programs\\Lumora.lnk")"
check "no uninstall entry" no_key "$uninstall"
check "no settings" no_key 'HKCU\Software\Tavrinsoft'
check "no data folder" test ! -e "$(unix "$appdata\\Lumora")"
check "no component registration" no_key 'HKCU\Software\Classes\TT.Tooltip'
check "no component registration in the machine's classes" no_key 'HKLM\Software\Classes\TT.Tooltip'
check "no file type" no_key 'HKCU\Software\Classes\ZEV_.mp3'
check "no folder verb" no_key 'HKCU\Software\Classes\Directory\shell\ZEV-PLAYER'
snapshot after
check "nothing else left in the registry, the profile or the Windows directory" diff "$work/before.txt" "$work/after.txt"

[ $fail -eq 0 ]
