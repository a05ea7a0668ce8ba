#!/usr/bin/env bash
# A private Wine environment for Lumora's tests and demo.
#
#   wine-env.sh start        start Xvfb (when no display is set), PulseAudio with a null
#                            sink, and the Wine prefix; stays up for a series of commands
#   wine-env.sh run CMD...   run CMD inside the environment (starting and stopping it
#                            around CMD unless it is already up)
#   wine-env.sh stop         stop exactly the processes `start` started
#   wine-env.sh shell        print the environment as `export` lines
#
# Everything lives under $LUMORA_WINE_ROOT (default: build/wine): the prefix, the pulse
# runtime folder and a state file with the process ids we started.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=${LUMORA_WINE_ROOT:-$here/../build/wine}
mkdir -p "$root"
root=$(cd "$root" && pwd)
state=$root/state.env
# The caller's display: a state file left by a run that was killed must not lend it a dead one.
caller_display=${DISPLAY:-}

export WINEPREFIX=$root/prefix
export WINEARCH=win64
export WINEDEBUG=${WINEDEBUG:--all}
# No Mono or Gecko installers popping up during the first boot.
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-mscoree,mshtml=}
export LANG=${LUMORA_LANG:-zh_CN.UTF-8}
export LC_ALL=$LANG
export PULSE_RUNTIME_PATH=$root/pulse
export PULSE_SERVER=unix:$root/pulse/native
export PULSE_SINK=nul
export XDG_RUNTIME_DIR=$root/xdg

log() { echo "wine-env: $*" >&2; }

is_up() {
    [ -f "$state" ] || return 1
    # shellcheck disable=SC1090
    . "$state"
    [ -n "${PULSE_PID:-}" ] && kill -0 "$PULSE_PID" 2>/dev/null
}

free_display() {
    local n
    for n in $(seq 90 199); do
        if [ ! -e "/tmp/.X${n}-lock" ] && [ ! -e "/tmp/.X11-unix/X${n}" ]; then
            echo "$n"; return 0
        fi
    done
    return 1
}

start_xvfb() {
    local n
    n=$(free_display) || { log "no free display number"; exit 1; }
    Xvfb ":$n" -screen 0 1280x1024x24 -nolisten tcp >"$root/xvfb.log" 2>&1 &
    XVFB_PID=$!
    for _ in $(seq 1 100); do
        [ -e "/tmp/.X11-unix/X${n}" ] && break
        kill -0 "$XVFB_PID" 2>/dev/null || { log "Xvfb failed: $(cat "$root/xvfb.log")"; exit 1; }
        sleep 0.1
    done
    DISPLAY=":$n"
    log "Xvfb on $DISPLAY (pid $XVFB_PID)"
}

start_pulse() {
    rm -rf "$root/pulse"
    mkdir -p "$root/pulse" "$root/xdg"
    chmod 700 "$root/xdg"
    # --system=false with an explicit runtime path works as root and as a user alike.
    pulseaudio -n --daemonize=no --exit-idle-time=-1 --disallow-exit --use-pid-file=false \
        --system=false --disable-shm=true \
        --load="module-null-sink sink_name=nul" \
        --load="module-native-protocol-unix auth-anonymous=1 socket=$root/pulse/native" \
        --load="module-always-sink" \
        >"$root/pulse.log" 2>&1 &
    PULSE_PID=$!
    for _ in $(seq 1 100); do
        pactl info >/dev/null 2>&1 && break
        kill -0 "$PULSE_PID" 2>/dev/null || { log "PulseAudio failed: $(tail -5 "$root/pulse.log")"; exit 1; }
        sleep 0.1
    done
    pactl set-default-sink nul >/dev/null
    log "PulseAudio with null sink 'nul' (pid $PULSE_PID)"
}

init_prefix() {
    if [ ! -f "$WINEPREFIX/.lumora-ready" ]; then
        log "making Wine prefix $WINEPREFIX"
        wineboot -i >"$root/wineboot.log" 2>&1 || true
        # Chinese text renders only with a font that has the glyphs.
        local reg=$root/fonts.reg
        {
            printf 'REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Wine\\Fonts\\Replacements]\r\n'
            for f in "MS Shell Dlg" "MS Shell Dlg 2" "Tahoma" "SimSun" "NSimSun" "MS Sans Serif"; do
                printf '"%s"="WenQuanYi Micro Hei"\r\n' "$f"
            done
        } >"$reg"
        wine regedit /S "$(winepath -w "$reg" 2>/dev/null)" >/dev/null 2>&1
        # "宋体" as a value name needs a Unicode .reg file.
        { printf '\xff\xfe'; printf 'Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\Software\\Wine\\Fonts\\Replacements]\r\n"宋体"="WenQuanYi Micro Hei"\r\n' | iconv -f UTF-8 -t UTF-16LE; } >"$root/fonts-cn.reg"
        wine regedit /S "$(winepath -w "$root/fonts-cn.reg" 2>/dev/null)" >/dev/null 2>&1
        wineserver -w
        touch "$WINEPREFIX/.lumora-ready"
    fi
}

# Three extra drives for the list tests, on folders under $root/drives: R: removable, S: a
# network drive and T: a CD-ROM, as Wine's mount manager reports them from its registry.
init_drives() {
    [ -f "$WINEPREFIX/.lumora-drives" ] && return 0
    local reg=$root/drives.reg
    printf 'REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Wine\\Drives]\r\n' >"$reg"
    for pair in r:floppy s:network t:cdrom; do
        local letter=${pair%%:*} type=${pair#*:}
        mkdir -p "$root/drives/$letter"
        ln -sfn "$root/drives/$letter" "$WINEPREFIX/dosdevices/$letter:"
        printf '"%s:"="%s"\r\n' "$letter" "$type" >>"$reg"
    done
    wine regedit /S "$(winepath -w "$reg" 2>/dev/null)" >/dev/null 2>&1
    # The mount manager reads the drive types when it starts.
    wineserver -k 2>/dev/null || true
    wineserver -w 2>/dev/null || true
    touch "$WINEPREFIX/.lumora-drives"
}

# On our virtual display no window manager runs, and Wine waits for one (about two seconds) each
# time it hides a window it lets the manager handle: there it hands it none.
init_window_manager() {
    local managed=Y
    [ -n "${XVFB_PID:-}" ] && managed=N
    [ "$(cat "$WINEPREFIX/.lumora-managed" 2>/dev/null)" = "$managed" ] && return 0
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d "$managed" /f >/dev/null 2>&1
    wineserver -w 2>/dev/null || true
    echo "$managed" >"$WINEPREFIX/.lumora-managed"
}

write_state() {
    cat >"$state" <<EOS
XVFB_PID=${XVFB_PID:-}
PULSE_PID=${PULSE_PID:-}
DISPLAY=${DISPLAY:-}
EOS
}

do_start() {
    if is_up; then log "already up"; return 0; fi
    XVFB_PID=
    DISPLAY=$caller_display
    if [ -z "${DISPLAY:-}" ] || [ -n "${LUMORA_FORCE_XVFB:-}" ]; then start_xvfb; fi
    export DISPLAY
    start_pulse
    write_state
    init_prefix
    init_drives
    init_window_manager
}

do_stop() {
    [ -f "$state" ] || return 0
    # shellcheck disable=SC1090
    . "$state"
    export DISPLAY
    wineserver -k >/dev/null 2>&1 || true
    for pid in ${PULSE_PID:-} ${XVFB_PID:-}; do
        if kill -0 "$pid" 2>/dev/null; then
            kill "$pid" 2>/dev/null || true
            for _ in $(seq 1 50); do kill -0 "$pid" 2>/dev/null || break; sleep 0.1; done
            kill -9 "$pid" 2>/dev/null || true
        fi
    done
    rm -f "$state"
    log "stopped"
}

load_env() {
    # shellcheck disable=SC1090
    . "$state"
    export DISPLAY
}

cmd=${1:-}
shift || true
case "$cmd" in
    start) do_start ;;
    stop) do_stop ;;
    shell)
        is_up || { log "not up"; exit 1; }
        load_env
        for v in WINEPREFIX WINEARCH WINEDEBUG WINEDLLOVERRIDES LANG LC_ALL PULSE_RUNTIME_PATH PULSE_SERVER PULSE_SINK XDG_RUNTIME_DIR DISPLAY; do
            printf 'export %s=%q\n' "$v" "${!v}"
        done ;;
    run)
        [ $# -gt 0 ] || { log "run needs a command"; exit 2; }
        if is_up; then
            load_env
            "$@"
        else
            do_start
            load_env
            set +e
            "$@"
            rc=$?
            set -e
            do_stop
            exit $rc
        fi ;;
    *) sed -n '2,12p' "$0" | sed 's/^# \{0,1\}//'; exit 2 ;;
esac
