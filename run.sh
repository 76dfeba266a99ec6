#!/bin/bash
# ./run.sh [FILE...]   installs what is missing, builds, and opens the files in zepview (without
#                      files an example). Without a display it draws a picture instead.
# ./run.sh --build     stops after building; `cmake --install build/release` then installs.
set -euo pipefail
example=examples/parts/bracket.nc

files=()
build_only=false
for argument in "$@"; do
    case $argument in
    --build) build_only=true ;;
    --help | -h)
        sed -n '2,4s/^# //p' "$0"
        exit 0
        ;;
    *) files+=("$(realpath -- "$argument")") ;;
    esac
done

cd "$(dirname "$0")"
scripts/install-dependencies.sh
cmake --preset release
cmake --build --preset release --target zepview zepstream
$build_only && exit 0

[ ${#files[@]} -eq 0 ] && files=("$example")
zepview=build/release/bin/zepview
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec $zepview "${files[@]}"
fi
picture=build/release/$(basename "${files[0]%.*}").png
echo "No display is set: drawing a picture of ${files[0]}"
scripts/with-display.sh $zepview --picture "$picture" --size 1024x768 "${files[0]}"
echo "The picture is $PWD/$picture"
