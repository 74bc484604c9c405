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
export XDG_CONFIG_HOME="$data/config" # windows at their first-run size, whatever you keep

main="KD Tarn Workbench.*"

focus() { # focus TITLE: the window of that title gets the keyboard
    local window
    window="$(xdotool search --sync --onlyvisible --name "^$1\$" | tail -1)"
    xdotool windowfocus --sync "$window"
    echo "$window"
}

keys() { # keys TITLE KEY...: types the keys into the window of that title
    focus "$1" >/dev/null
    shift
    xdotool key --delay 200 "$@"
}

shoot() { # shoot FILE TITLE: the window of that title, as the display shows it
    sleep 1
    import -window "$(focus "$2")" "$out/$1"
    echo "$out/$1"
}

session() {
    "$tarn" --data-dir "$data" &
    local pid=$!
    shoot main-window.png "$main"
    keys "$main" alt+c Down Return
    shoot class-editor.png "KD TARN 1 - Class Configuration"
    keys "KD TARN 1 - Class Configuration" alt+v l alt+v v
    shoot class-editor-panels.png "KD TARN 1 - Class Configuration"
    keys "KD TARN 1 - Class Configuration" alt+v l alt+v v Escape
    keys "$main" alt+u w
    shoot weapons.png "Edit Weapons"
    keys "Edit Weapons" Escape
    keys "$main" alt+u i
    shoot items.png "Edit Items"
    keys "Edit Items" Escape
    keys "$main" F1
    shoot about.png "About MyApp"
    keys "About MyApp" Escape
    keys "$main" ctrl+q
    wait "$pid"
}

if [[ "${TARN_SCREENSHOT_DISPLAY:-}" == yes ]]; then
    session
else
    TARN_SCREENSHOT_DISPLAY=yes xvfb-run -a -s "-screen 0 1600x1200x24" "$0" "$out"
fi
