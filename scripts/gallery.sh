#!/bin/bash
# gallery.sh: draws the pictures of docs/gallery/ and writes docs/gallery.md. Needs a build, Xvfb, and
# ImageMagick for the picture of the window. A scene is one line below.
set -euo pipefail
cd "$(dirname "$0")/.."

zepview=$PWD/build/release/bin/zepview
parts=examples/parts
size=800x560
[ -x "$zepview" ] || { echo "Please build first: ./run.sh --build" >&2; exit 1; }
command -v import >/dev/null || { echo "Please install imagemagick" >&2; exit 1; }
if [ -z "${GALLERY_DISPLAY:-}" ]; then
    export GALLERY_DISPLAY=1 ZEP_TEST_SCREEN=1100x800x24
    exec scripts/with-display.sh scripts/gallery.sh "$@"
fi

# Pictures are the same whatever the user has set or opened last.
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export HOME=$home XDG_CONFIG_HOME=$home XDG_RUNTIME_DIR=$home QT_SCALE_FACTOR=1 LC_ALL=C.UTF-8

out=docs/gallery
page=docs/gallery.md
mkdir -p "$out"
rm -f "$out"/*.png

section() { printf '\n## %s\n' "$1" >>"$page"; }

entry() { # NAME COMMAND CAPTION
    printf '\n![%s](gallery/%s.png)\n\n%s\n\n    %s\n' "$1" "$1" "$3" "$2" >>"$page"
}

picture() { # NAME VIEW FILE CAPTION
    "$zepview" --picture "$out/$1.png" --size "$size" --view "$2" "$3"
    entry "$1" "zepview --picture $1.png --view $2 $3" "$4"
}

window() { # NAME FILE CAPTION
    "$zepview" "$2" &
    local viewer=$!
    sleep "${GALLERY_WAIT:-4}"
    import -window root "$out/$1.png"
    kill $viewer
    wait $viewer 2>/dev/null || true
    entry "$1" "zepview $2" "$3"
}

cat >"$page" <<'END'
# Gallery

Each picture is drawn by `scripts/gallery.sh` with the command below it.
END

section "Tool paths"
picture bracket iso $parts/bracket.nc "Milling of a bracket with three tools, each in its own colour. Rapid moves are dotted; the grid lies at the deepest point."
picture flange iso $parts/flange-inch.nc "A flange in inches: arcs and drilling cycles."
picture flange-top top $parts/flange-inch.nc "The same from the top."
picture surface iso $parts/surface.nc "Finishing of a free-form surface in parallel passes."
picture surface-front front $parts/surface.nc "The same from the front, along y."
picture bores iso $parts/helix-bores.ngc "Bores and a countersink, milled along helices."
picture planes iso $parts/planes.nc "Arcs in all three planes."
picture drill-plate iso $parts/drill-plate.nc "Canned cycles: every hole with its approach, its depth and its retreat."
picture lettering iso $parts/lettering.nc "Engraved letters in a rounded frame."

section "The window"
window window $parts/bracket.nc "Left button: orbit. Right button: pan. Wheel: nearer and farther. The status line tells what is in the file, its size and the grid's."

# A palette is a third of the size.
mogrify -dither None -colors 256 "$out"/*.png
