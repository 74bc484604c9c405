#!/usr/bin/env bash
# Takes a screenshot of each of the five windows from the real program on a virtual
# display, into the given folder (docs/ by default). QT_FONT_DPI and QT_SCALE_FACTOR
# pass through, to look at the windows at a large font or scale.
# Needs xvfb, xdotool and imagemagick: apt install xvfb xdotool imagemagick
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
out="$(realpath -m "${1:-$root/docs}")"
tarn="${TARN:-$root/build/src/tarn}"
mkdir -p "$out"
data="$(mktemp -d)"
trap 'rm -rf "$data"' EXIT

shoot() { # shoot FILE TITLE: the window of that title, as the display shows it
    sleep 1
    local window
    window="$(xdotool search --sync --onlyvisible --name "^$2\$" | tail -1)"
    xdotool windowfocus --sync "$window"
    import -window "$window" "$out/$1"
    echo "$out/$1"
}

session() {
    "$tarn" --data-dir "$data" &
    local pid=$!
    sleep 3
    shoot main-window.png "KD Tarn Workbench.*"
    xdotool key alt+c Down Return
    shoot class-editor.png "KD TARN 1 - Class Configuration"
    xdotool key Escape
    xdotool key alt+u w
    shoot weapons.png "Edit Weapons"
    xdotool key Escape
    xdotool key alt+u i
    shoot items.png "Edit Items"
    xdotool key Escape
    xdotool key F1
    shoot about.png "About MyApp"
    xdotool key Escape
    sleep 1
    xdotool key ctrl+q
    wait "$pid"
}

if [[ "${TARN_SCREENSHOT_DISPLAY:-}" == yes ]]; then
    session
else
    TARN_SCREENSHOT_DISPLAY=yes xvfb-run -a -s "-screen 0 1600x1200x24" "$0" "$out"
fi
