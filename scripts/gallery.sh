#!/bin/bash
# gallery.sh: draws the pictures of docs/gallery/ and writes docs/gallery.md. Needs a build, Xvfb, and
# ImageMagick for the picture of the window. A scene is one line below.
set -euo pipefail
cd "$(dirname "$0")/.."

bin=$PWD/build/release/bin
zepview=$bin/zepview
parts=examples/parts
drawings=examples/drawings
models=examples/models
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

example() { # NAME CAPTION
    "$bin/zep_$1" --picture "$out/$1.png"
    entry "$1" "zep_$1" "$2"
}

window() { # NAME PROGRAM FILE CAPTION
    "$bin/$2" $3 &
    local program=$!
    sleep "${GALLERY_WAIT:-4}"
    # Without the black of the screen around a window that does not fill it.
    import -window root "$out/$1.png"
    mogrify -trim +repage "$out/$1.png"
    kill $program
    wait $program 2>/dev/null || true
    entry "$1" "$2${3:+ $3}" "$4"
}

look() { # NAME CAPTION FILE SETTING...
    local name=$1 caption=$2 file=$3
    shift 3
    mkdir -p "$home/zep"
    printf '%s\n' '[view]' "$@" >"$home/zep/zepview.conf"
    window "$name" zepview "$file" "$caption"
    rm "$home/zep/zepview.conf"
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

section "Drawings"
picture drawing top $drawings/flange.dxf "Layers in their colours, inserted blocks, hatching, text."
look drawing-bright "The same before a bright background: what is white elsewhere is black." $drawings/flange.dxf background=#f4f4f0

section "Models"
picture lighthouse iso $models/lighthouse.3ds "Materials, a picture for the bricks, smooth faces between sharp edges, lit by the headlight beside the lights of the file."
picture gears iso $models/gears.3ds "Gears on a plate."
look model-edges "View, Surfaces, Shaded with edges." $models/gears.3ds faces=1
look model-hidden "The same as a line drawing without hidden lines, before a bright background." $models/gears.3ds faces=2 background=#f4f4f0

section "The window"
window window zepview $parts/bracket.nc "Left button: orbit. Right button: pan. Wheel: nearer and farther. The status line tells what is in the file, its size and the grid's."
window contents zepview examples/models/lighthouse.3ds "The contents of a model: its boxes show and hide, what is selected there is selected in the view."
window start zepview "" "Before a file is opened: solids, pictures on them, glass and text, under lamps that circle above."
look start-wire "View, Surfaces, Wire frame." "" faces=3
look start-fog "View, Fog, Exponential, before a bright background." "" fog=2 background=#c8d0d8
look start-flat "View, Flat shading, and the headlight." "" flat=true headlight=true
look start-dark "View, Lights, off: what is left comes from all sides." "" lights=false

section "Examples"
example solids "Every solid in a colour and, in front of that, with a picture; labels tell their names."
example view "A headlight, a fitted camera, and a backdrop with grid, axes and directions."
example lights "Spots that stand on glowing balls: a narrow one that fades to its rim, a cone with a sharp rim, one without a cone that gets weaker with the distance, and a weak light at infinity."
example shadows "A room under two lamps: each shadow lacks the light of one, and where two meet that of both. The mirror shows the room without them. The knot turns."
example forest "Three trees, shown five hundred times by proxies, each turned and sized in its own way; their shadows fall on the ground and on each other."
example carving "A cube without a ball, a cube that a cutter drills, and what a cube and a ball have in common, above a floor that mirrors them. All of it moves: the shapes are cut anew in every frame."
example section "Solids cut open at a plane: each shows its own colour there."
example measure "A plate with its dimensions: a distance, a radius and an angle, as large on the screen however near one looks."
example heightfield "A function of x and y, coloured by its height."
window fog zep_fog "" "Fog of a panel in its three modes: linear, exponential, exponential of the squared distance."
window two-panels zep_two-panels "" "One scene in two panels. On the left a drag orbits, on the right it selects."

# A palette is a third of the size.
mogrify -dither None -colors 256 "$out"/*.png
