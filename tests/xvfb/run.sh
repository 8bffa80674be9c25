#!/usr/bin/env bash
# run.sh PROGRAM: runs a test program on an X server of its own, with a window manager. Returns 77 (skipped) only
# where there is no Xvfb.
set -u
command -v Xvfb >/dev/null || { echo "skipped: Xvfb is not installed"; exit 77; }
for tool in openbox xdotool xclip timeout; do
    command -v $tool >/dev/null || { echo "$tool is missing: scripts/install-packages.sh test"; exit 1; }
done

work=$(mktemp -d)
server=
manager=
cleanup() {
    [ -z "$manager" ] || kill "$manager" 2>/dev/null
    [ -z "$server" ] || kill "$server" 2>/dev/null
    wait 2>/dev/null
    rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 1' INT TERM

# wait_for SECONDS COMMAND...: until the command succeeds.
wait_for() {
    local tries=$(($1 * 20))
    shift
    while ! "$@" >/dev/null 2>&1; do
        [ $((tries -= 1)) -gt 0 ] || return 1
        sleep 0.05
    done
}

# The server chooses a free number and tells it.
Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp -noreset 3>"$work/display" 2>"$work/server.log" &
server=$!
wait_for 20 test -s "$work/display" || { echo "no X server:"; cat "$work/server.log"; exit 1; }
export DISPLAY=:$(<"$work/display")
export HOME=$work XDG_CONFIG_HOME=$work XDG_CACHE_HOME=$work XDG_RUNTIME_DIR=$work
openbox --sm-disable >"$work/manager.log" 2>&1 &
manager=$!
wait_for 20 xdotool get_num_desktops || { echo "no window manager:"; cat "$work/manager.log"; exit 1; }
QT_QPA_PLATFORM=xcb timeout --kill-after=5 100 "$@"
