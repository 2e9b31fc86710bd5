#!/usr/bin/env bash
# Runs a program of message boxes before a screen of its own, and is the person in front of it.
# Usage: screen.sh WINE PROGRAM [ARGUMENT...], with WINEPREFIX set; the screen's programs get a prefix beside it.
#
# The program works in a scratch directory. Where it puts a file press.txt ("x y KEY", then a caption), the window of
# that caption is looked for, the mouse is pressed at the point and then, unless it is "-", the key. The caption found goes
# into pressed.txt.
set -uo pipefail

say() { echo "screen.sh: $*" >&2; }
for tool in Xvfb xdotool timeout; do
    command -v "$tool" >/dev/null || { say "$tool is missing"; exit 1; }
done

export WINEPREFIX=$WINEPREFIX-screen
wineserver=$(command -v wineserver || echo "$(dirname "$1")/wineserver")
scratch=$(mktemp -d)
screen=
program=
cleanup() {
    trap - EXIT
    [[ -n $program ]] && kill "$program" 2>/dev/null
    "$wineserver" -k 2>/dev/null
    [[ -n $screen ]] && kill "$screen" 2>/dev/null && wait "$screen" 2>/dev/null
    rm -rf "$scratch"
}
trap cleanup EXIT
trap 'exit 1' HUP INT TERM

Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$scratch/display" 2>"$scratch/screen.txt" &
screen=$!
for ((n = 0; n < 600; ++n)); do
    [[ -s $scratch/display ]] && break
    kill -0 "$screen" 2>/dev/null || { say 'the screen did not start:'; cat "$scratch/screen.txt" >&2; exit 1; }
    sleep 0.1
done
[[ -s $scratch/display ]] || { say 'the screen did not come up'; exit 1; }
DISPLAY=:$(<"$scratch/display")
export DISPLAY

wine=$1
shift
# There is no window manager: the windows look after themselves, rather than wait in vain for one.
{
    timeout 240 "$wine" wineboot --init &&
        timeout 60 "$wine" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
} >"$scratch/prefix.txt" 2>&1 || { say 'no prefix could be made:'; cat "$scratch/prefix.txt" >&2; exit 1; }

# await COMMAND...: until it succeeds, for up to twenty seconds.
await() {
    for ((n = 0; n < 400; ++n)); do
        "$@" && return
        sleep 0.05
    done
    return 1
}
window_find() {
    window=$(xdotool search --onlyvisible --name "^$caption\$" 2>/dev/null | head -n 1)
    [[ -n $window ]]
}

answer() {
    await window_find || { echo "no window '$caption' on the screen"; return; }
    name=$(xdotool getwindowname "$window")
    xdotool mousemove "$x" "$y" click 1
    [[ $key == - ]] || xdotool key "$key"
    echo "$name"
}

mkdir "$scratch/work"
NX_TEST_SCRATCH="Z:$scratch/work" timeout 480 "$wine" "$@" &
program=$!
cd "$scratch/work"
while kill -0 "$program" 2>/dev/null; do
    if [[ -e press.txt ]]; then
        { read -r x y key; IFS= read -r caption; } <press.txt
        rm press.txt
        answer >pressed.tmp
        mv pressed.tmp pressed.txt
    fi
    sleep 0.05
done
wait "$program"
status=$?
program=
exit $status
