#!/bin/bash
# with-display.sh COMMAND...: runs the command on an X display of its own, so that tests neither see
# nor disturb a desktop, nor each other. ZEP_TEST_DISPLAY names a display to use instead. Without
# Xvfb the command runs with whatever display there is.
set -u
screen=${ZEP_TEST_SCREEN:-1280x1024x24}

if [ -n "${ZEP_TEST_DISPLAY:-}" ]; then
    DISPLAY=$ZEP_TEST_DISPLAY exec "$@"
fi
if ! command -v Xvfb >/dev/null; then
    echo "with-display.sh: Xvfb is not installed" >&2
    exec "$@"
fi

number=$(mktemp)
Xvfb -displayfd 3 -screen 0 "$screen" -nolisten tcp -noreset 3>"$number" 2>/dev/null &
server=$!
trap 'kill $server 2>/dev/null; rm -f "$number"' EXIT
for ((wait = 0; wait < 300; wait++)); do
    [ -s "$number" ] && break
    kill -0 $server 2>/dev/null || break
    sleep 0.05
done
if [ ! -s "$number" ]; then
    echo "with-display.sh: Xvfb did not start" >&2
    exit 1
fi
DISPLAY=:$(<"$number") LIBGL_ALWAYS_SOFTWARE=1 QT_QPA_PLATFORM=xcb "$@"
