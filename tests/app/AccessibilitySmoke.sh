#!/usr/bin/env bash
# Runs the real program on a demo root under a virtual X server and a private session bus, and
# drives it as a screen reader does, over AT-SPI, with AccessibilitySmoke.py.
#   AccessibilitySmoke.sh PROGRAM TOOL
# Exit status: 0 passed, 77 skipped (what is missing is said), anything else failed.
set -u

skip() {
    echo "SKIPPED: $*"
    exit 77
}

if [ "${1:-}" = "--inside" ]; then
    # Inside the session bus: the program, then the script that reads it.
    shift
    program="$1" root="$2" expected="$3" python="$4" script="$5"
    export QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
    "$program" --root "$root" >"$root/../program.log" 2>&1 &
    pid=$!
    timeout --kill-after=5 90 "$python" "$script" --pid "$pid" --expected "$expected"
    status=$?
    kill "$pid" 2>/dev/null
    wait "$pid" 2>/dev/null
    if [ "$status" -eq 124 ] || [ "$status" -eq 137 ]; then
        echo "FAILED: the script did not finish within 90 seconds"
    fi
    exit "$status"
fi

program="${1:?usage: AccessibilitySmoke.sh PROGRAM TOOL}"
tool="${2:?usage: AccessibilitySmoke.sh PROGRAM TOOL}"
script="$(dirname "$0")/AccessibilitySmoke.py"

command -v Xvfb >/dev/null || skip "Xvfb is not installed (package xvfb)"
command -v dbus-run-session >/dev/null || skip "dbus-run-session is not installed (package dbus)"
[ -x /usr/libexec/at-spi-bus-launcher ] || [ -x /usr/lib/at-spi2-core/at-spi-bus-launcher ] ||
    skip "the accessibility bus is not installed (package at-spi2-core)"
python=""
for candidate in /usr/bin/python3 python3; do
    if "$candidate" -c "import pyatspi" 2>/dev/null; then
        python="$candidate"
        break
    fi
done
[ -n "$python" ] || skip "no python3 can import pyatspi (package python3-pyatspi)"

work="$(mktemp -d "${TMPDIR:-/tmp}/nutrovex-atspi-XXXXXX")"
xvfb=""
cleanup() {
    if [ -n "$xvfb" ]; then
        kill "$xvfb" 2>/dev/null
        wait "$xvfb" 2>/dev/null
    fi
    rm -rf "$work"
}
trap cleanup EXIT

# A free display from :98 upwards; Xvfb writes its number once it accepts clients.
display=""
for n in $(seq 98 120); do
    [ -e "/tmp/.X$n-lock" ] && continue
    : >"$work/display"
    Xvfb ":$n" -displayfd 5 -screen 0 1024x768x24 -nolisten tcp 5>"$work/display" \
        >"$work/xvfb.log" 2>&1 &
    xvfb=$!
    for _ in $(seq 100); do
        [ -s "$work/display" ] && break
        kill -0 "$xvfb" 2>/dev/null || break
        sleep 0.1
    done
    if [ -s "$work/display" ]; then
        display=":$n"
        break
    fi
    kill "$xvfb" 2>/dev/null
    wait "$xvfb" 2>/dev/null
    xvfb=""
done
[ -n "$display" ] || skip "no virtual X server could be started on :98 to :120"
export DISPLAY="$display"

mkdir -p "$work/root"
"$tool" --root "$work/root" demo >"$work/demo.log" 2>&1 ||
    { echo "FAILED: the tool could not make the demo root:"; cat "$work/demo.log"; exit 1; }
"$tool" dump-user "$work/root/Users/Demo/UserDB.ddb" >"$work/user.json" ||
    { echo "FAILED: the tool could not dump the demo user"; exit 1; }

# The bus daemon starts the accessibility registry, which needs the display to send keys.
dbus-run-session -- bash "$0" --inside "$program" "$work/root" "$work/user.json" "$python" "$script"
status=$?
if [ "$status" -ne 0 ] && [ "$status" -ne 77 ]; then
    echo "--- the program said:"
    cat "$work/program.log" 2>/dev/null
fi
exit "$status"
